#pragma once

#include "host/base/IInterfaceList.h"
#include "reminders/TRemindDetailsOutlook.h"

namespace kk {

/// The editor of reminders as the section's commands reach it. As it stands there is none: what is
/// asked of it is not done, and the log says so. The editor installs itself with
/// TfrmKKWatchlist::SetReminderEditor. Main thread.
class TWatchlistReminderEditor {
 public:
  virtual ~TWatchlistReminderEditor() = default;

  /// Sets up a reminder for each result that ends in the future; iShowEditor asks the user how.
  virtual void AutoEnableReminder(bool iShowEditor, const TIntf<IInterfaceList>& iResults);
  /// Takes the reminder's appointment out of the calendar.
  virtual void DeleteOutlookAppointment(const TRemindDetailsOutlook& iDetails);
};

}  // namespace kk
