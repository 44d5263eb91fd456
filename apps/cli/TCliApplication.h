#pragma once

#include <functional>
#include <memory>

#include "host/contract/IApplication.h"
#include "host/contract/IReminderHost.h"
#include "host/controls/TForm.h"

namespace kk {

/// The terminal host as the plug-ins see it: it has no section, and pop-ups only where reminders
/// are delivered. Main thread.
class TCliApplication : public TInterfaced<IApplication, IReminderHost> {
 public:
  /// Shows a reminder's pop-up, which dies behind it.
  using TShowPopUp = std::function<void(const TForm& iForm)>;
  /// With a function the host delivers reminders; without one it leaves them alone.
  explicit TCliApplication(TShowPopUp iShow) : FShow(std::move(iShow)) {}

  void SectionClosed() override {}
  bool ShowNotificationWindow(TForm* iForm) override {
    if (!FShow || iForm == nullptr) return false;
    FShow(*iForm);
    const std::unique_ptr<TForm> taken(iForm);  // not before: what failed is freed by the caller
    return true;
  }
  bool DeliversReminders() const override { return FShow != nullptr; }

 private:
  const TShowPopUp FShow;
};

}  // namespace kk
