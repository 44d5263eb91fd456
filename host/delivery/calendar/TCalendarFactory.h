#pragma once

#include "host/common/TOutlook.h"
#include "host/delivery/calendar/TCalDavOutlook.h"

namespace kk {

/// Makes the user's calendar as the settings have it: on a CalDAV server ("CalendarUrl"), else in a
/// folder ("CalendarFolder"). It outlives what it makes.
class TCalendarFactory : public IOutlookFactory {
 public:
  /// The time for all that one operation takes on the network.
  static constexpr int cTotalMs = 20000;
  explicit TCalendarFactory(int iTotalMs = cTotalMs);

  /// Main thread. Raises Exception if no calendar is set up, or none that could be.
  std::unique_ptr<TOutlook> Create() override;

  /// Ends what is under way at once, and all that comes later, with an Exception. Any thread, for
  /// ever.
  void Stop() { FService.Stop.request_stop(); }

 private:
  TCalendarService FService;
};

}  // namespace kk
