#pragma once

#include <map>
#include <vector>

#include "apps/cli/TCliContext.h"

namespace kk {

/// Tells which reminders have left the list because their time had come. The list itself forgets a
/// reminder with its delivery. Main thread.
class TCliDue {
 public:
  /// Remembers the reminders that stand.
  explicit TCliDue(TCliContext& ioContext);
  /// Prints a line for each one that came due and has gone since the last look.
  void Look();

  size_t Count() const { return FReminders.size(); }
  /// The next one; null if there is none.
  const TWatchlistReminderInfo* Next() const;
  /// The name of the item that the reminder is for.
  TString NameOf(const TWatchlistReminderInfo& iReminder) const;

 private:
  void Remember();

  TCliContext& FContext;
  std::vector<TWatchlistReminderInfo> FReminders;
  std::map<TGuid, TString> FNames;
};

}  // namespace kk
