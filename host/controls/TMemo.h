#pragma once

#include "host/base/TStringList.h"
#include "host/controls/TControl.h"

namespace kk {

/// Lines of plain text, with scroll bars.
class TMemo : public TControl {
 public:
  using TControl::TControl;

  const TStringList& Lines() const { return FLines; }
  /// Copies the lines.
  void SetLines(const TStringList& iLines);
  /// The user has changed the text to this one, lines divided by line breaks.
  bool EnterText(TStringView iText);

  bool AcceptsFocus() const override { return true; }

 protected:
  /// Return is a new line here, not a press of the default button.
  bool UseKey(char16_t iKey) override { return iKey == cKeyReturn; }

 private:
  TStringList FLines;
};

}  // namespace kk
