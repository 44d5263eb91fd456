#include "apps/cli/TCliDialog.h"

#include <algorithm>
#include <functional>

#include "apps/cli/ICliConsole.h"
#include "apps/cli/TerminalText.h"
#include "host/controls/TCheckBox.h"
#include "host/controls/TComboBox.h"
#include "host/controls/TEdit.h"
#include "host/controls/TGauge.h"
#include "host/controls/TLabel.h"
#include "host/controls/TMemo.h"
#include "host/controls/TRadioButton.h"

namespace kk {
namespace {

constexpr TStringView cEndOfLines = u".";
constexpr size_t cMaxEntries = 1000;

// Without the marks of the access keys: "&Ja" is "Ja", "&&" is "&".
TString Plain(TStringView iCaption) {
  TString result;
  for (size_t i = 0; i < iCaption.size(); ++i) {
    if (iCaption[i] == u'&' && ++i == iCaption.size()) break;
    result += iCaption[i];
  }
  return ForTerminal(result);
}

// The letter by which the keyboard reaches it; empty if there is none.
TString AccessKey(TStringView iCaption) {
  for (size_t i = 0; i + 1 < iCaption.size(); ++i) {
    if (iCaption[i] != u'&') continue;
    if (iCaption[++i] != u'&') return TString(iCaption.substr(i, 1));
  }
  return {};
}

template <class T>
T* As(TControl* iControl) {
  return dynamic_cast<T*>(iControl);
}

bool IsShown(const TControl& iControl) {
  for (const TControl* control = &iControl; control != nullptr; control = control->Parent()) {
    if (!control->Visible()) return false;
  }
  return true;
}

bool IsInput(TControl* iControl) {
  return As<TEdit>(iControl) != nullptr || As<TMemo>(iControl) != nullptr ||
         As<TComboBox>(iControl) != nullptr || As<TCheckBox>(iControl) != nullptr ||
         As<TRadioButton>(iControl) != nullptr;
}

void Collect(const TControl& iParent, std::vector<TControl*>& ioControls) {
  for (TControl* child : iParent.Children()) {
    if (!IsShown(*child)) continue;
    ioControls.push_back(child);
    Collect(*child, ioControls);
  }
}

bool IsTyped(TControl* iControl) {
  return As<TEdit>(iControl) != nullptr || As<TComboBox>(iControl) != nullptr;
}

// 1 to the maximum; 0 for any other text.
size_t NumberIn(TStringView iText, size_t iMaximum) {
  int64_t number = 0;
  if (!TryStrToInt(iText, number) || number < 1) return 0;
  return static_cast<uint64_t>(number) <= iMaximum ? static_cast<size_t>(number) : 0;
}

}  // namespace

std::vector<TControl*> TCliDialog::Controls() const {
  std::vector<TControl*> result;
  Collect(FForm, result);
  return result;
}

std::vector<TButton*> TCliDialog::Buttons() const {
  std::vector<TButton*> result;
  for (TControl* control : Controls()) {
    TButton* const button = As<TButton>(control);
    if (button != nullptr && button->CanUse()) result.push_back(button);
  }
  return result;
}

bool TCliDialog::IsWaitWindow() const {
  const std::vector<TControl*> controls = Controls();
  const bool hasGauge = std::ranges::any_of(controls, &As<TGauge>);
  return std::ranges::none_of(controls, IsInput) && (hasGauge || Buttons().empty());
}

void TCliDialog::ShowTexts() const {
  if (!FForm.Caption().empty()) FConsole.Complain(Plain(FForm.Caption()));
  for (TControl* control : Controls()) {
    const TLabel* const label = As<TLabel>(control);
    if (label == nullptr) continue;
    TStringList lines;
    lines.SetText(label->Caption());
    for (const TString& line : lines.Lines()) FConsole.Complain(Plain(line));
  }
}

bool TCliDialog::Ask() {
  FConsole.Complain(u"");
  if (!FForm.Caption().empty()) FConsole.Complain(Plain(FForm.Caption()));
  const TControl* group = nullptr;
  for (TControl* control : Controls()) {
    if (As<TRadioButton>(control) != nullptr && std::exchange(group, control->Parent()) == group) {
      continue;
    }
    if (!AskControl(*control)) return false;
  }
  return AskButton();
}

bool TCliDialog::AskControl(TControl& ioControl) {
  if (const TLabel* const label = As<TLabel>(&ioControl)) {
    TStringList lines;
    lines.SetText(label->Caption());
    for (const TString& line : lines.Lines()) FConsole.Complain(Plain(line));
    return true;
  }
  if (!ioControl.CanUse()) return true;
  if (TEdit* const edit = As<TEdit>(&ioControl)) {
    return AskText(edit->Text(), [edit](TStringView iText) { edit->EnterText(iText); });
  }
  if (TMemo* const memo = As<TMemo>(&ioControl)) return AskLines(*memo);
  if (TComboBox* const box = As<TComboBox>(&ioControl)) return AskEntry(*box);
  if (TCheckBox* const box = As<TCheckBox>(&ioControl)) return AskCheck(*box, box->Checked());
  if (TRadioButton* const radio = As<TRadioButton>(&ioControl)) return AskChoice(*radio);
  return true;
}

bool TCliDialog::AskText(TStringView iText, const std::function<void(TStringView)>& iEnter) {
  const auto line = FConsole.ReadLine(Format(u"[%s] ", {ForTerminal(iText)}));
  if (!line) return false;
  if (!line->empty()) iEnter(*line);
  return true;
}

bool TCliDialog::AskLines(TMemo& ioMemo) {
  for (const TString& line : ioMemo.Lines().Lines()) FConsole.Complain(u"  " + ForTerminal(line));
  FConsole.Complain(u"(Neue Zeilen, am Ende ein Punkt; nur Return lässt den Text, wie er ist.)");
  TStringList lines;
  while (true) {
    const auto line = FConsole.ReadLine(u"> ");
    if (!line) return false;
    if (lines.GetCount() == 0 && line->empty()) return true;
    if (*line == cEndOfLines) break;
    lines.Add(*line);
  }
  ioMemo.EnterText(lines.GetText());
  return true;
}

bool TCliDialog::AskCheck(TClickControl& ioBox, bool iChecked) {
  const TString prompt =
      Format(u"%s (j/n) [%s] ", {Plain(ioBox.Caption()), iChecked ? u"j" : u"n"});
  while (true) {
    const auto line = FConsole.ReadLine(prompt);
    if (!line) return false;
    const TString answer = Trim(*line);
    if (answer.empty()) return true;
    const bool yes = SameText(answer, u"j") || SameText(answer, u"ja");
    if (!yes && !SameText(answer, u"n") && !SameText(answer, u"nein")) continue;
    if (yes != iChecked) ioBox.Click();
    return true;
  }
}

bool TCliDialog::AskChoice(TRadioButton& ioFirst) {
  std::vector<TRadioButton*> choices;
  size_t chosen = 0;
  for (TControl* sibling : ioFirst.Parent()->Children()) {
    TRadioButton* const choice = As<TRadioButton>(sibling);
    if (choice == nullptr || !choice->CanUse()) continue;
    choices.push_back(choice);
    if (choice->Checked()) chosen = choices.size();
    FConsole.Complain(Format(u"  %d  %s", {choices.size(), Plain(choice->Caption())}));
  }
  while (true) {
    const auto line = FConsole.ReadLine(Format(u"Nummer [%d] ", {chosen}));
    if (!line) return false;
    if (Trim(*line).empty()) return true;
    const size_t number = NumberIn(*line, choices.size());
    if (number == 0) continue;
    choices[number - 1]->Click();
    return true;
  }
}

bool TCliDialog::AskEntry(TComboBox& ioBox) {
  const auto& items = ioBox.Items();
  for (size_t i = 0; i < std::min(items.size(), cMaxEntries); ++i) {
    FConsole.Complain(Format(u"  %d  %s", {i + 1, ForTerminal(items[i].Text)}));
  }
  const TStringView kind = ioBox.Editable() ? u"Nummer oder neuer Name" : u"Nummer";
  while (true) {
    const auto line = FConsole.ReadLine(Format(u"%s [%s] ", {kind, ForTerminal(ioBox.Text())}));
    if (!line) return false;
    const TString text = Trim(*line);
    if (text.empty()) return true;
    const auto same = std::ranges::find(items, text, &TComboBox::TEntry::Text);
    if (same != items.end()) {
      ioBox.Select(static_cast<int>(same - items.begin()));
    } else if (const size_t number = NumberIn(text, items.size()); number > 0) {
      ioBox.Select(static_cast<int>(number - 1));
    } else if (int64_t unknown = 0; !ioBox.Editable() || TryStrToInt(text, unknown)) {
      FConsole.Complain(Format(u"Die Auswahl %s gibt es nicht.", {ForTerminal(text)}));
      continue;
    } else {
      ioBox.EnterText(text);
    }
    return true;
  }
}

bool TCliDialog::AskButton() {
  const std::vector<TButton*> buttons = Buttons();
  if (buttons.empty()) return false;
  size_t preset = 0;
  for (size_t i = 0; i < buttons.size(); ++i) {
    if (buttons[i] == FForm.DefaultButton()) preset = i + 1;
    TString text = Format(u"  %d  %s", {i + 1, Plain(buttons[i]->Caption())});
    if (!buttons[i]->Description().empty()) text += u" - " + Plain(buttons[i]->Description());
    FConsole.Complain(text);
  }
  // Where the user types, Return means the first button, as it does without a terminal.
  if (preset == 0 && std::ranges::any_of(Controls(), IsTyped)) preset = 1;
  const TString prompt = preset > 0 ? Format(u"Auswahl [%d] ", {preset}) : TString(u"Auswahl ");
  while (true) {
    const auto line = FConsole.ReadLine(prompt);
    if (!line) return false;
    const TString answer = Trim(*line);
    if (answer.empty() && preset == 0) continue;
    const size_t number = answer.empty() ? preset : NumberIn(answer, buttons.size());
    const auto pressed = std::ranges::find_if(buttons, [&](const TButton* iButton) {
      return number > 0 ? iButton == buttons[number - 1]
                        : SameText(answer, AccessKey(iButton->Caption())) ||
                              SameText(answer, Plain(iButton->Caption()));
    });
    if (pressed == buttons.end()) continue;
    (*pressed)->Click();
    return true;
  }
}

void TCliDialog::PressDefault() {
  TButton* const preset = FForm.DefaultButton();
  if (preset != nullptr && preset->CanUse()) {
    preset->Click();
    return;
  }
  // Some windows take Return in the place where the user types.
  for (TControl* control : Controls()) {
    if (FForm.EndModalIfDone()) return;
    if (IsTyped(control)) control->PressKey(cKeyReturn);
  }
  if (FForm.EndModalIfDone() || FForm.ModalResult() != cModalNone) return;
  const std::vector<TButton*> buttons = Buttons();
  buttons.size() == 1 ? (void)buttons[0]->Click() : Cancel();
}

bool TCliDialog::PressYes() {
  if (std::ranges::any_of(Controls(), IsInput)) return false;
  for (TButton* button : Buttons()) {
    if (button->ModalResult() == cModalYes) return button->Click();
  }
  return false;
}

void TCliDialog::Cancel() {
  TButton* const cancel = FForm.CancelButton();
  if (cancel != nullptr && cancel->CanUse()) {
    cancel->Click();
  } else {
    FForm.CloseByUser();
  }
}

}  // namespace kk
