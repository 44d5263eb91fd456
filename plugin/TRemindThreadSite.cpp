#include "plugin/TRemindThreadSite.h"

#include "host/contract/IReminderHost.h"

namespace kk {

bool TRemindThreadSite::DeliversReminders(const TIntf<IApplication>& iApplication) {
  const auto host = Supports<IReminderHost>(iApplication);
  return !host || host->DeliversReminders();
}

}  // namespace kk
