#pragma once

#include <functional>
#include <vector>

#include "host/controls/TForm.h"

namespace kk {

class ICliConsole;
class TComboBox;
class TRadioButton;
class TMemo;

/// One window in text: its caption and labels, then each thing to fill in, in order, then its
/// buttons by number. An empty line keeps what is shown in brackets.
class TCliDialog {
 public:
  /// Both are borrowed.
  TCliDialog(ICliConsole& ioConsole, TForm& ioForm) : FConsole(ioConsole), FForm(ioForm) {}

  /// A window that nobody can answer: it ends by itself.
  bool IsWaitWindow() const;
  /// Caption and labels.
  void ShowTexts() const;

  /// Goes through the whole window once, up to the press of a button. False if the user has left
  /// (Ctrl+C, end of the input).
  bool Ask();
  /// The button that Return presses in this window. Where Return presses none: the only button, or
  /// else the way out.
  void PressDefault();
  /// False if the window is not a mere question.
  bool PressYes();
  void Cancel();

 private:
  std::vector<TControl*> Controls() const;
  std::vector<TButton*> Buttons() const;
  bool AskControl(TControl& ioControl);
  bool AskText(TStringView iText, const std::function<void(TStringView)>& iEnter);
  bool AskLines(TMemo& ioMemo);
  bool AskCheck(TClickControl& ioBox, bool iChecked);
  bool AskChoice(TRadioButton& ioFirst);
  bool AskEntry(TComboBox& ioBox);
  bool AskButton();

  ICliConsole& FConsole;
  TForm& FForm;
};

}  // namespace kk
