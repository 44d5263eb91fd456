#include "apps/cli/TCliDue.h"

#include <utility>

#include "apps/cli/TCliLookup.h"
#include "apps/cli/TCliReminderText.h"
#include "apps/cli/TerminalText.h"
#include "host/base/TClock.h"

namespace kk {

TCliDue::TCliDue(TCliContext& ioContext) : FContext(ioContext) {
  FContext.Plugins.List().SetOnReminderDue(TNotifyEventReminder::Of<&TCliDue::DoReminderDue>(this));
}

TCliDue::~TCliDue() { FContext.Plugins.List().SetOnReminderDue({}); }

void TCliDue::DoReminderDue(TObject* /*Sender*/, const TWatchlistReminderInfo& iReminder) {
  FDue.push_back({Now(), iReminder});
}

void TCliDue::Tell() {
  if (FDue.empty()) return;
  const TWatchlistInfo tree = FContext.Plugins.List().GetTree();
  const TCliLookup lookup(tree);
  for (const TDue& due : std::exchange(FDue, {})) {
    const TWatchlistItemInfo* const item = lookup.FindItem(due.Reminder.Id);
    const TString name = item != nullptr ? item->Name : GUIDToString(due.Reminder.Id);
    FContext.Console.Print(
        Format(u"%s Fällig: %s (%s)",
               {DateTimeToStr(due.When), ForTerminal(name), ReminderWays(due.Reminder)}));
  }
}

}  // namespace kk
