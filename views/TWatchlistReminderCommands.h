#pragma once

#include "host/contract/IWatchlistIntegration.h"
#include "views/TWatchlistSeams.h"

namespace kk {

/// The section's commands on reminders of selected results. Main thread.
class TWatchlistReminderCommands {
 public:
  explicit TWatchlistReminderCommands(const TWatchlistSeams& iSeams) : FSeams(iSeams) {}

  /// Deletes the results' reminders with their appointments; with iAsk the user is asked first.
  void DeleteReminders(bool iAsk, const TIntf<IWatchlistIntegration>& iIntegration,
                       const TIntf<IInterfaceList>& iResults);

 private:
  const TWatchlistSeams& FSeams;
};

}  // namespace kk
