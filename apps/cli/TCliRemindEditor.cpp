#include "apps/cli/TCliRemindEditor.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "apps/cli/ECliUsage.h"
#include "apps/cli/FindControl.h"
#include "apps/cli/ICliConsole.h"
#include "apps/cli/TCliDialog.h"
#include "apps/cli/TCliMoment.h"
#include "apps/cli/TerminalText.h"
#include "host/base/TClock.h"
#include "host/controls/TCheckBox.h"
#include "host/controls/TComboBox.h"
#include "host/controls/TEdit.h"
#include "host/controls/TRadioButton.h"
#include "host/controls/TSpinEdit.h"
#include "host/controls/TStatusBar.h"
#include "host/controls/TfrmMessageDlg.h"

namespace kk {
namespace {

constexpr TStringView cKindBox = u"cmbxRemindType";
constexpr int cChosenTimePanel = 1;
constexpr int64_t cLongestWay = int64_t{20} * 366 * 24 * 60 * 60;  // seconds

struct TKind {
  TStringView Word;
  TStringView Entry;  ///< in the editor's list
};
constexpr auto cKinds = std::to_array<TKind>({{u"sound", u"Nur Sound"},
                                              {u"window", u"Meldungsfenster"},
                                              {u"email", u"E-Mail"},
                                              {u"sms", u"SMS"},
                                              {u"calendar", u"Outlook"}});

// The editor's list of times before the end.
struct TBeforeEnd {
  TStringView Word;
  TStringView Entry;
};
constexpr auto cBeforeEnd = std::to_array<TBeforeEnd>({{u"1m", u"1 Minute"},
                                                       {u"2m", u"2 Minuten"},
                                                       {u"5m", u"5 Minuten"},
                                                       {u"10m", u"10 Minuten"},
                                                       {u"15m", u"15 Minuten"},
                                                       {u"30m", u"30 Minuten"},
                                                       {u"1h", u"1 Stunde"},
                                                       {u"2h", u"2 Stunden"},
                                                       {u"3h", u"3 Stunden"},
                                                       {u"4h", u"4 Stunden"},
                                                       {u"5h", u"5 Stunden"},
                                                       {u"6h", u"6 Stunden"},
                                                       {u"12h", u"12 Stunden"},
                                                       {u"1d", u"1 Tag"}});

template <class Table>
TString Words(const Table& iTable) {
  TString result;
  for (const auto& entry : iTable) result.append(u" ").append(entry.Word);
  return result;
}

int64_t SpanOf(TStringView iText) {
  int64_t seconds = 0;
  if (TCliMoment::TryParseSpan(iText, seconds)) return seconds;
  throw ECliUsage(Format(u"Das ist keine Dauer bis zu zehn Jahren: %s", {ForTerminal(iText)}),
                  u"Richtig wären zum Beispiel 90s, 10m, 2h, 1h30m oder 1d.");
}

// "60m" is "1h".
TString BeforeEndOf(TStringView iText) {
  const int64_t seconds = SpanOf(iText);
  for (const TBeforeEnd& entry : cBeforeEnd) {
    if (SpanOf(entry.Word) == seconds) return TString(entry.Entry);
  }
  throw ECliUsage(Format(u"Diese Zeit vor dem Ende gibt es nicht: %s", {ForTerminal(iText)}),
                  u"Möglich sind:" + Words(cBeforeEnd));
}

TString KindOf(TStringView iText) {
  const auto kind = std::ranges::find(cKinds, iText, &TKind::Word);
  if (kind != cKinds.end()) return TString(kind->Entry);
  throw ECliUsage(Format(u"Diese Art der Erinnerung gibt es nicht: %s", {ForTerminal(iText)}),
                  u"Möglich sind:" + Words(cKinds));
}

void SelectEntry(TForm& ioForm, TStringView iBox, TStringView iEntry) {
  auto& box = ControlOf<TComboBox>(ioForm, iBox);
  const auto& items = box.Items();
  const auto entry = std::ranges::find(items, iEntry);
  if (entry == items.end()) throw Exception(Format(u"Die Auswahl %s gibt es nicht", {iEntry}));
  box.Select(static_cast<int>(entry - items.begin()));
}

int64_t SpanIn(const TForm& iForm) {
  const auto value = [&](TStringView iName) {
    return int64_t{ControlOf<TSpinEdit>(iForm, iName).Value()};
  };
  return value(u"spnedtHours") * 3600 + value(u"spnedtMinutes") * 60 + value(u"spnedtSeconds");
}

}  // namespace

TCliRemindEditor::TCliRemindEditor(ICliConsole& ioConsole, const TCliArguments& iCall)
    : FConsole(ioConsole) {
  if (iCall.Kind) FKind = KindOf(*iCall.Kind);
  if (iCall.Sound) {
    // Whoever plays it later stands in another folder.
    FSoundFile = FromUtf8(std::filesystem::absolute(ToUtf8(*iCall.Sound)).string());
  }
  ReadTime(iCall);
}

void TCliRemindEditor::ReadTime(const TCliArguments& iCall) {
  if (iCall.In) FSpan = SpanOf(*iCall.In);
  if (iCall.BeforeEnd) FBeforeEnd = BeforeEndOf(*iCall.BeforeEnd);
  if (!iCall.At) return;
  TDateTime moment;
  const TDateTime now = Now();
  const bool isKnown = TCliMoment::TryParse(*iCall.At, now, moment);
  const int64_t seconds = (moment.Ms() - now.Ms()) / TDateTime::cMsPerSecond;
  if (!isKnown || seconds > cLongestWay || seconds < -cLongestWay) {
    throw ECliUsage(Format(u"Das ist keine Zeit: %s", {ForTerminal(*iCall.At)}),
                    u"Richtig wären zum Beispiel 18:30, 18:30:15, \"24.12.2026 18:30\" oder "
                    u"2026-12-24T18:30.");
  }
  FMoment = moment;
}

bool TCliRemindEditor::Answer(TForm& ioForm) {
  if (auto* const box = dynamic_cast<TfrmMessageDlg*>(&ioForm)) {
    const TStringView mark = StartsWith(box->Text(), u"Fehler") ? u"" : u"Fehler: ";
    const TString text = ForTerminal(box->Text());
    FConsole.Complain(TString(mark) + text);
    FErrors.Told(text);
    TCliDialog(FConsole, ioForm).PressDefault();
    return true;
  }
  if (FindControl(ioForm, cKindBox) == nullptr) return false;
  if (!FFilled) Fill(ioForm);
  if (!HasTime()) return false;
  ControlOf<TButton>(ioForm, u"btnOK").Click();
  if (ioForm.IsModal()) TCliDialog(FConsole, ioForm).Cancel();
  return true;
}

void TCliRemindEditor::Fill(TForm& ioForm) {
  FFilled = true;
  if (!FKind.empty()) SelectEntry(ioForm, cKindBox, FKind);
  if (!FSoundFile.empty()) FillSound(ioForm);
  if (FSpan) FillSpan(ioForm, *FSpan);
  if (FMoment) FillMoment(ioForm);
  if (FBeforeEnd.empty()) return;
  ControlOf<TRadioButton>(ioForm, u"rdbtnTimeRelative").Click();
  SelectEntry(ioForm, u"cmbxTimeRelative", FBeforeEnd);
}

// A reminder that is a mere sound has no box to tick.
void TCliRemindEditor::FillSound(TForm& ioForm) const {
  auto& box = ControlOf<TCheckBox>(ioForm, u"chckbxSoundfile");
  if (!box.Checked()) box.Click();
  ControlOf<TEdit>(ioForm, u"edtSoundFile").EnterText(FSoundFile);
}

void TCliRemindEditor::FillSpan(TForm& ioForm, int64_t iSeconds) const {
  ControlOf<TRadioButton>(ioForm, u"rdbtnTimeSpan").Click();
  const auto enter = [&](TStringView iName, int64_t iValue) {
    ControlOf<TSpinEdit>(ioForm, iName).EnterValue(static_cast<int>(iValue));
  };
  enter(u"spnedtHours", iSeconds / 3600);
  enter(u"spnedtMinutes", iSeconds / 60 % 60);
  enter(u"spnedtSeconds", iSeconds % 60);
}

// The editor counts from the second in which it was opened. It alone knows which one that was, and
// shows what comes of the span.
void TCliRemindEditor::FillMoment(TForm& ioForm) const {
  ControlOf<TRadioButton>(ioForm, u"rdbtnTimeSpan").Click();
  TDateTime shown;
  const TString& text = ControlOf<TStatusBar>(ioForm, u"stsbrTime").PanelText(cChosenTimePanel);
  if (!TryStrToDateTime(text, shown)) {
    throw Exception(Format(u"Der Zeitpunkt im Fenster ist nicht zu lesen: %s", {text}));
  }
  FillSpan(ioForm, SpanIn(ioForm) + (FMoment->Ms() - shown.Ms()) / TDateTime::cMsPerSecond);
}

}  // namespace kk
