#include "apps/cli/TCliRemind.h"

#include <algorithm>

#include "apps/cli/ECliUsage.h"
#include "apps/cli/TCliLookup.h"
#include "apps/cli/TCliRemindEditor.h"
#include "apps/cli/TCliReminderText.h"
#include "apps/cli/TerminalText.h"
#include "host/base/TClock.h"

namespace kk {
namespace {

constexpr int cTypeSms = 2;
constexpr int cTypeCalendar = 3;
constexpr TStringView cSmsStays =
    u"Hinweis: Die SMS von vorher liegt schon beim SMS-Dienst; sie wird weder verschoben noch "
    u"zurückgerufen.";

// Services outside of this program look after the others.
bool IsForThisProgram(const TWatchlistReminderInfo& iReminder) {
  return !iReminder.SoundFile.empty() || std::ranges::any_of(iReminder.Types, [](int iType) {
    return iType != cTypeSms && iType != cTypeCalendar;
  });
}

}  // namespace

bool TCliRemind::Run(const TCliArguments& iCall) {
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  const TWatchlistItemInfo& item = TCliLookup(tree).Item(iCall.Words[0]);
  return iCall.Delete ? Delete(item) : Edit(item, iCall);
}

bool TCliRemind::Fail(TStringView iText) const {
  FContext.Console.Complain(u"Fehler: " + TString(iText));
  return false;
}

bool TCliRemind::Delete(const TWatchlistItemInfo& iItem) {
  const TString name = ForTerminal(iItem.Name);
  const bool hadSms = HasSms(iItem.Id);
  if (!ReminderOf(iItem.Id)) {
    return Fail(Format(u"An \"%s\" ist keine Erinnerung eingerichtet.", {name}));
  }
  if (!FContext.Plugins.List().DeleteReminders({iItem.Id})) {
    return FContext.Console.IsInteractive()
               ? (FContext.Console.Complain(u"Abgebrochen."), false)
               : Fail(u"Nicht ausgeführt, die Rückfrage blieb unbeantwortet (--yes sagt ja).");
  }
  FContext.Console.Print(Format(u"Erinnerung gelöscht: %s", {name}));
  if (hadSms) FContext.Console.Complain(cSmsStays);
  return true;
}

bool TCliRemind::Edit(const TWatchlistItemInfo& iItem, const TCliArguments& iCall) {
  TCliRemindEditor editor(FContext.Console, iCall);
  if (!editor.HasTime() && !FContext.Console.IsInteractive()) {
    throw ECliUsage(u"Es fehlt die Zeit der Erinnerung: --in, --at oder --before-end.",
                    u"Richtig wäre: " + CliSynopsis(*iCall.Command));
  }
  if (!CanBeReminded(iItem)) return false;
  const bool hadSms = HasSms(iItem.Id);
  FContext.Forms.TakeLastResult();
  {
    const TCliFormHost::TAnswering answering(
        FContext.Forms, [&editor](TForm& ioForm) { return editor.Answer(ioForm); });
    FContext.Plugins.List().EditReminders({iItem.Id});
  }
  const bool interrupted = FContext.Console.TakeInterrupt();
  if (FContext.Forms.TakeLastResult() == cModalOK) {
    const bool done = Tell(iItem);
    if (hadSms) FContext.Console.Complain(cSmsStays);
    return done;
  }
  if (interrupted || !editor.HasTime()) FContext.Console.Complain(u"Abgebrochen.");
  return false;
}

// The section leaves such items out without a word.
bool TCliRemind::CanBeReminded(const TWatchlistItemInfo& iItem) const {
  const TString name = ForTerminal(iItem.Name);
  if (iItem.EndTime.IsZero()) {
    return Fail(
        Format(u"An \"%s\" kann nicht erinnert werden: Der Artikel hat kein Ende.", {name}));
  }
  if (iItem.EndTime > Now() && iItem.EndTime > ExactTime().GetNow()) return true;
  return Fail(Format(u"An \"%s\" kann nicht mehr erinnert werden: Das Ende war am %s.",
                     {name, DateTimeToStr(iItem.EndTime)}));
}

std::optional<TWatchlistReminderInfo> TCliRemind::ReminderOf(const TGuid& iItem) const {
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  const auto found = std::ranges::find(tree.Reminders, iItem, &TWatchlistReminderInfo::Id);
  if (found == tree.Reminders.end()) return {};
  return *found;
}

bool TCliRemind::HasSms(const TGuid& iItem) const {
  const auto reminder = ReminderOf(iItem);
  return reminder && std::ranges::find(reminder->Types, cTypeSms) != reminder->Types.end();
}

// What came of it, whatever the editor says.
bool TCliRemind::Tell(const TWatchlistItemInfo& iItem) {
  const auto reminder = ReminderOf(iItem.Id);
  if (!reminder) return Fail(u"Die Erinnerung ist nicht in die Beobachtenliste gekommen.");
  const TString ways = ReminderWays(*reminder);
  if (ways.empty()) {
    return Fail(
        Format(u"Die Quelle von \"%s\" gibt für diese Art der Erinnerung keinen Text; es "
               u"würde nichts gemeldet.",
               {ForTerminal(iItem.Name)}));
  }
  FContext.Console.Print(Format(u"Erinnerung eingerichtet: %s am %s (%s)",
                                {ForTerminal(iItem.Name), DateTimeToStr(reminder->Time), ways}));
  if (IsForThisProgram(*reminder) && !FContext.Plugins.DeliversReminders()) {
    FContext.Console.Complain(
        u"Hinweis: Gemeldet wird sie, solange Kaufkobolde oder \"kaufkobolde-cli run\" läuft.");
  }
  return true;
}

}  // namespace kk
