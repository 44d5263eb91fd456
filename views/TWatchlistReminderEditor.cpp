#include "views/TWatchlistReminderEditor.h"

#include "host/base/Log.h"

namespace kk {

void TWatchlistReminderEditor::AutoEnableReminder(bool, const TIntf<IInterfaceList>&) {
  LogInfo(_resLoggingSenderForm, _resLoggingNoAutoReminder);
}

void TWatchlistReminderEditor::DeleteOutlookAppointment(const TRemindDetailsOutlook&) {
  LogInfo(_resLoggingSenderForm, _resLoggingNoAppointments);
}

}  // namespace kk
