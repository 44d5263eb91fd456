#pragma once

#include <vector>

#include "host/controls/TForm.h"

namespace kk {

class ICliConsole;
class TComboBox;
class TEdit;
class TLabel;
class TMemo;
class TRadioButton;
class TSpinEdit;

/// One window in text: its caption and labels, then each thing to fill in, in order, then its
/// buttons by number. An empty line keeps what is shown in brackets.
class TCliDialog {
 public:
  /// Both are borrowed.
  TCliDialog(ICliConsole& ioConsole, TForm& ioForm) : FConsole(ioConsole), FForm(ioForm) {}

  /// A window that nobody can answer: it ends by itself.
  bool IsWaitWindow() const;
  /// Caption, labels and status bar.
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
  /// What is shown, in the order in which it is read.
  std::vector<TControl*> Controls() const;
  std::vector<TButton*> Buttons() const;
  /// What names a thing to fill in from behind: a box without a caption is named by the next label,
  /// anything else in a row by a label right behind it. Null if nothing does.
  const TLabel* LabelBehind(TControl& ioControl) const;
  TString NameOf(TControl& ioControl) const;
  /// Whether the label is read together with what it names.
  bool IsName(const TLabel& iLabel) const;
  TString Prompt(TControl& ioControl, TStringView iValue) const;
  void Show(TControl& ioControl) const;
  bool AskControl(TControl& ioControl);
  bool AskText(TEdit& ioEdit);
  bool AskNumber(TSpinEdit& ioSpin);
  bool AskLines(TMemo& ioMemo);
  bool AskCheck(TClickControl& ioBox, bool iChecked);
  bool AskChoice(TRadioButton& ioFirst);
  bool AskEntry(TComboBox& ioBox);
  bool AskButton();

  ICliConsole& FConsole;
  TForm& FForm;
};

}  // namespace kk
