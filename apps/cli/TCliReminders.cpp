#include "apps/cli/TCliReminders.h"

#include <algorithm>

#include "apps/cli/TCliLookup.h"
#include "apps/cli/TCliReminderText.h"
#include "apps/cli/TerminalText.h"
#include "host/base/TClock.h"

namespace kk {

std::vector<TCliReminder> TCliReminders::ByTime() const {
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  const TCliLookup lookup(tree);
  const TDateTime now = Now();
  std::vector<TCliReminder> result;
  for (const TWatchlistReminderInfo& info : tree.Reminders) {
    const TWatchlistItemInfo* const item = lookup.FindItem(info.Id);
    result.push_back(
        {info, item != nullptr ? item->Name : TString(), item != nullptr, info.Time <= now});
  }
  std::ranges::stable_sort(result, {}, [](const TCliReminder& iEntry) { return iEntry.Info.Time; });
  return result;
}

void TCliReminders::List(bool iAsJson) {
  const std::vector<TCliReminder> reminders = ByTime();
  if (iAsJson) return FContext.Console.Print(FromUtf8(TCliJson::Reminders(reminders)));
  if (reminders.empty()) FContext.Console.Print(u"Es sind keine Erinnerungen eingerichtet.");
  for (const TCliReminder& reminder : reminders) Print(reminder);
  if (!FContext.Plugins.DeliversReminders() &&
      std::ranges::any_of(reminders, &TCliReminder::Overdue)) {
    FContext.Console.Complain(
        u"Hinweis: Überfällige meldet Kaufkobolde oder \"kaufkobolde-cli run\", sobald es läuft.");
  }
}

void TCliReminders::Print(const TCliReminder& iReminder) {
  const TString name = iReminder.HasItem ? ForTerminal(iReminder.ItemName)
                                         : TString(u"(nicht mehr in der Beobachtenliste)");
  FContext.Console.Print(Format(
      u"%s  %s  %s", {DateTimeToStr(iReminder.Info.Time), name, GUIDToString(iReminder.Info.Id)}));
  const TString ways = ReminderWays(iReminder.Info);
  FContext.Console.Print(Format(u"    %s%s", {ways.empty() ? TString(u"ohne Meldung") : ways,
                                              iReminder.Overdue ? u" · überfällig" : u""}));
}

}  // namespace kk
