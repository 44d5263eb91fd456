#pragma once

#include "host/contract/IApplication.h"
#include "reminders/TThreadRemind.h"

namespace kk {

/// Lets reminders be delivered in a host that does so, and not in one that comes and goes with a
/// command. Installed while it lives; it goes after the thread has ended. Main thread.
class TRemindThreadSite {
 public:
  explicit TRemindThreadSite(const TIntf<IApplication>& iApplication)
      : FBefore(SetRemindThreadFactory(DeliversReminders(iApplication) ? &FFactory : nullptr)) {}
  ~TRemindThreadSite() { SetRemindThreadFactory(FBefore); }
  TRemindThreadSite(const TRemindThreadSite&) = delete;
  TRemindThreadSite& operator=(const TRemindThreadSite&) = delete;

 private:
  static bool DeliversReminders(const TIntf<IApplication>& iApplication);

  TRemindThreadFactory FFactory;
  IRemindThreadFactory* FBefore;
};

}  // namespace kk
