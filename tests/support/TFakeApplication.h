#pragma once

#include "host/contract/IApplication.h"
#include "host/contract/IReminderHost.h"

namespace kk {

/// A host that shows nothing. It delivers no reminders unless the test is about them, so that no
/// thread runs beside the others.
class TFakeApplication : public TInterfaced<IApplication, IReminderHost> {
 public:
  explicit TFakeApplication(bool iDelivers = false) : FDelivers(iDelivers) {}

  void SectionClosed() override { ++Closed; }
  bool ShowNotificationWindow(TForm*) override { return false; }
  bool DeliversReminders() const override {
    ++Asked;
    return FDelivers;
  }

  int Closed = 0;
  mutable int Asked = 0;  ///< how often whether it delivers reminders

 private:
  bool FDelivers;
};

}  // namespace kk
