#include "apps/cli/TCliDialog.h"

#include <algorithm>
#include <limits>

#include "apps/cli/ICliConsole.h"
#include "apps/cli/TerminalText.h"
#include "host/controls/TCheckBox.h"
#include "host/controls/TComboBox.h"
#include "host/controls/TEdit.h"
#include "host/controls/TGauge.h"
#include "host/controls/TLabel.h"
#include "host/controls/TMemo.h"
#include "host/controls/TRadioButton.h"
#include "host/controls/TSpinEdit.h"
#include "host/controls/TStatusBar.h"

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

// "...": it opens a dialog for what is typed right here.
bool IsChooser(const TButton& iButton) {
  const TString& caption = iButton.Caption();
  return !caption.empty() && caption.find_first_not_of(u'.') == TString::npos;
}

bool IsShown(const TControl& iControl) {
  for (const TControl* control = &iControl; control != nullptr; control = control->Parent()) {
    if (!control->Visible()) return false;
  }
  return true;
}

bool IsInput(TControl* iControl) {
  return As<TEdit>(iControl) != nullptr || As<TMemo>(iControl) != nullptr ||
         As<TSpinEdit>(iControl) != nullptr || As<TComboBox>(iControl) != nullptr ||
         As<TCheckBox>(iControl) != nullptr || As<TRadioButton>(iControl) != nullptr;
}

// In the order in which they are read, hidden ones included.
void Collect(const TControl& iParent, std::vector<TControl*>& ioControls) {
  for (TControl* child : iParent.Children()) {
    ioControls.push_back(child);
    Collect(*child, ioControls);
  }
}

bool IsTyped(TControl* iControl) {
  return As<TEdit>(iControl) != nullptr || As<TSpinEdit>(iControl) != nullptr ||
         As<TComboBox>(iControl) != nullptr;
}

TLabel* NextSiblingLabel(const TControl& iControl) {
  const std::vector<TControl*>& siblings = iControl.Parent()->Children();
  auto next = std::ranges::find(siblings, &iControl) + 1;
  while (next != siblings.end() && !(*next)->Visible()) ++next;
  return next == siblings.end() ? nullptr : As<TLabel>(*next);
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
  std::erase_if(result, [](const TControl* iControl) { return !IsShown(*iControl); });
  return result;
}

std::vector<TButton*> TCliDialog::Buttons() const {
  std::vector<TButton*> result;
  for (TControl* control : Controls()) {
    TButton* const button = As<TButton>(control);
    if (button != nullptr && button->CanUse() && !IsChooser(*button)) result.push_back(button);
  }
  return result;
}

bool TCliDialog::IsWaitWindow() const {
  const std::vector<TControl*> controls = Controls();
  const bool hasGauge = std::ranges::any_of(controls, &As<TGauge>);
  return std::ranges::none_of(controls, IsInput) && (hasGauge || Buttons().empty());
}

const TLabel* TCliDialog::LabelBehind(TControl& ioControl) const {
  if (!IsInput(&ioControl)) return nullptr;
  if (const auto* const box = As<TClickControl>(&ioControl)) {
    if (!box->Caption().empty()) return nullptr;
    const std::vector<TControl*> controls = Controls();
    const auto label = std::find_if(std::ranges::find(controls, &ioControl), controls.end(),
                                    [](TControl* iNext) { return As<TLabel>(iNext) != nullptr; });
    return label == controls.end() ? nullptr : As<TLabel>(*label);
  }
  const auto* const row = As<TPanel>(ioControl.Parent());
  if (row == nullptr || row->Arrangement() != TArrangement::arRow) return nullptr;
  return NextSiblingLabel(ioControl);
}

TString TCliDialog::NameOf(TControl& ioControl) const {
  const TLabel* const label = LabelBehind(ioControl);
  if (label != nullptr) return Plain(label->Caption());
  const auto* const box = As<TClickControl>(&ioControl);
  return box == nullptr ? TString() : Plain(box->Caption());
}

bool TCliDialog::IsName(const TLabel& iLabel) const {
  return std::ranges::any_of(Controls(), [&](TControl* iControl) {
    return iControl->CanUse() && LabelBehind(*iControl) == &iLabel;
  });
}

void TCliDialog::Show(TControl& ioControl) const {
  if (const auto* const label = As<TLabel>(&ioControl)) {
    if (!label->CanUse() || IsName(*label)) return;
    TStringList lines;
    lines.SetText(label->Caption());
    for (const TString& line : lines.Lines()) FConsole.Complain(Plain(line));
  }
  if (const auto* const bar = As<TStatusBar>(&ioControl)) {
    TString line;
    for (const TString& text : bar->Panels()) line += text;
    if (!line.empty()) FConsole.Complain(ForTerminal(line));
  }
}

void TCliDialog::ShowTexts() const {
  if (!FForm.Caption().empty()) FConsole.Complain(Plain(FForm.Caption()));
  for (TControl* control : Controls()) Show(*control);
}

bool TCliDialog::Ask() {
  FConsole.Complain(u"");
  if (!FForm.Caption().empty()) FConsole.Complain(Plain(FForm.Caption()));
  // Hidden ones, too: an answer can bring up what stands behind it.
  std::vector<TControl*> controls;
  Collect(FForm, controls);
  const TControl* group = nullptr;
  for (TControl* control : controls) {
    if (!IsShown(*control)) continue;
    if (As<TRadioButton>(control) != nullptr && control->CanUse()) {
      if (control->Parent() == group) continue;
      group = control->Parent();
    }
    if (!AskControl(*control)) return false;
  }
  return AskButton();
}

bool TCliDialog::AskControl(TControl& ioControl) {
  Show(ioControl);
  if (!ioControl.CanUse()) return true;
  if (TEdit* const edit = As<TEdit>(&ioControl)) return AskText(*edit);
  if (TMemo* const memo = As<TMemo>(&ioControl)) return AskLines(*memo);
  if (TSpinEdit* const spin = As<TSpinEdit>(&ioControl)) return AskNumber(*spin);
  if (TComboBox* const box = As<TComboBox>(&ioControl)) return AskEntry(*box);
  if (TCheckBox* const box = As<TCheckBox>(&ioControl)) return AskCheck(*box, box->Checked());
  if (TRadioButton* const radio = As<TRadioButton>(&ioControl)) return AskChoice(*radio);
  return true;
}

TString TCliDialog::Prompt(TControl& ioControl, TStringView iValue) const {
  const TString name = NameOf(ioControl);
  return Format(name.empty() ? u"%s[%s] " : u"%s [%s] ", {name, ForTerminal(iValue)});
}

bool TCliDialog::AskText(TEdit& ioEdit) {
  const auto line = FConsole.ReadLine(Prompt(ioEdit, ioEdit.Text()));
  if (!line) return false;
  if (!line->empty()) ioEdit.EnterText(*line);
  return true;
}

bool TCliDialog::AskNumber(TSpinEdit& ioSpin) {
  using TLimits = std::numeric_limits<int>;
  while (true) {
    const auto line = FConsole.ReadLine(Prompt(ioSpin, IntToStr(ioSpin.Value())));
    if (!line) return false;
    if (Trim(*line).empty()) return true;
    int64_t number = 0;
    if (TryStrToInt(*line, number) && number >= TLimits::min() && number <= TLimits::max()) {
      ioSpin.EnterValue(static_cast<int>(number));
      return true;
    }
    FConsole.Complain(Format(u"Das ist keine ganze Zahl: %s", {ForTerminal(*line)}));
  }
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
  const TString prompt = Format(u"%s (j/n) [%s] ", {NameOf(ioBox), iChecked ? u"j" : u"n"});
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
    FConsole.Complain(Format(u"  %d  %s", {choices.size(), NameOf(*choice)}));
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
  const TString name = NameOf(ioBox);
  if (!name.empty()) FConsole.Complain(name);
  for (size_t i = 0; i < std::min(items.size(), cMaxEntries); ++i) {
    FConsole.Complain(Format(u"  %d  %s", {i + 1, ForTerminal(items[i])}));
  }
  const TStringView kind = ioBox.Editable() ? u"Nummer oder neuer Name" : u"Nummer";
  while (true) {
    const auto line = FConsole.ReadLine(Format(u"%s [%s] ", {kind, ForTerminal(ioBox.Text())}));
    if (!line) return false;
    const TString text = Trim(*line);
    if (text.empty()) return true;
    auto same = std::ranges::find(items, text);
    if (same == items.end() && !ioBox.Editable()) {
      same = std::ranges::find_if(items,
                                  [&](const TString& iEntry) { return SameText(iEntry, text); });
    }
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
