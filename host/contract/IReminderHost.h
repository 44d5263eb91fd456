#pragma once

#include "host/base/IInterface.h"

namespace kk {

/// What a host may offer beside IApplication, if it comes and goes within one command: a reminder
/// that is taken out of the list while the program is on its way out would be lost. A host without
/// it delivers reminders. Nor does the list begin to refresh itself in a host that does not stay.
/// Main thread.
class IReminderHost : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{7B1B0A7C-52E6-4D0B-8C35-8C1B3B6E5A20}");

  /// Whether reminders that come due are delivered while this host runs; asked when the watch list
  /// starts.
  virtual bool DeliversReminders() const = 0;
};

}  // namespace kk
