#include "apps/cli/TCliDue.h"

#include <algorithm>

#include "apps/cli/TCliLookup.h"
#include "apps/cli/TCliReminderText.h"
#include "apps/cli/TerminalText.h"
#include "host/base/TClock.h"

namespace kk {
namespace {

using TKey = std::pair<TGuid, TDateTime>;

TKey KeyOf(const TWatchlistReminderInfo& iReminder) { return {iReminder.Id, iReminder.Time}; }

}  // namespace

TCliDue::TCliDue(TCliContext& ioContext) : FContext(ioContext) { Remember(); }

void TCliDue::Remember() {
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  const TCliLookup lookup(tree);
  FNames.clear();
  for (const TWatchlistReminderInfo& reminder : tree.Reminders) {
    const TWatchlistItemInfo* const item = lookup.FindItem(reminder.Id);
    FNames[reminder.Id] = item != nullptr ? item->Name : GUIDToString(reminder.Id);
  }
  FReminders = tree.Reminders;
}

void TCliDue::Look() {
  const std::vector<TWatchlistReminderInfo> before = std::move(FReminders);
  const std::map<TGuid, TString> names = FNames;
  Remember();
  std::map<TKey, size_t> standing;
  for (const TWatchlistReminderInfo& reminder : FReminders) ++standing[KeyOf(reminder)];
  const TDateTime now = Now();
  for (const TWatchlistReminderInfo& reminder : before) {
    const auto found = standing.find(KeyOf(reminder));
    const bool stands = found != standing.end() && found->second > 0;
    if (stands) --found->second;
    // What went before its time was taken back by the user.
    if (stands || reminder.Time > now) continue;
    FContext.Console.Print(
        Format(u"%s Fällig: %s (%s)",
               {DateTimeToStr(now), ForTerminal(names.at(reminder.Id)), ReminderWays(reminder)}));
  }
}

const TWatchlistReminderInfo* TCliDue::Next() const {
  const auto next = std::ranges::min_element(FReminders, {}, &TWatchlistReminderInfo::Time);
  return next == FReminders.end() ? nullptr : &*next;
}

TString TCliDue::NameOf(const TWatchlistReminderInfo& iReminder) const {
  return FNames.at(iReminder.Id);
}

}  // namespace kk
