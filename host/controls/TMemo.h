#pragma once

#include <utility>

#include "host/base/TStringList.h"
#include "host/controls/TControl.h"

namespace kk {

/// Return with the Ctrl key held, which a memo leaves to its form.
inline constexpr char16_t cKeyCtrlReturn = 10;

/// Lines of plain text, with scroll bars.
class TMemo : public TControl {
 public:
  using TControl::TControl;

  const TStringList& Lines() const { return FLines; }
  /// Copies the lines.
  void SetLines(const TStringList& iLines);
  /// The user has changed the text to this one, lines divided by line breaks; not if it is there
  /// to be read alone.
  bool EnterText(TStringView iText);
  /// As many lines as it shows without scrolling; 0 for as many as there is room for.
  int VisibleLines() const { return FVisibleLines; }
  void SetVisibleLines(int iLines) { SetValue(FVisibleLines, iLines); }
  bool ReadOnly() const { return FReadOnly; }
  void SetReadOnly(bool iReadOnly) { SetValue(FReadOnly, iReadOnly); }

  /// Whether Return was pressed since the last call and is a new line: nobody who listens to the
  /// keys has used it. For the skin.
  bool TakeNewLine() { return std::exchange(FHasNewLine, false); }

  bool AcceptsFocus() const override { return true; }

 protected:
  /// Return is a new line here, not a press of the default button.
  bool UseKey(char16_t iKey) override { return FHasNewLine = iKey == cKeyReturn; }

 private:
  bool FHasNewLine = false;
  TStringList FLines;
  bool FReadOnly = false;
  int FVisibleLines = 0;
};

}  // namespace kk
