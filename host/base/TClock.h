#pragma once

#include "host/base/TDateTime.h"

namespace kk {

/// The clock as a service: the products have the machine's, tests set their own.
class IClock {
 public:
  virtual ~IClock() = default;
  /// The machine's local time. Any thread.
  virtual TDateTime Now() const = 0;
  /// The same, corrected by the host; rules on the end of an auction use it. Any thread.
  virtual TDateTime ExactNow() const { return Now(); }
  /// Holds the calling thread for so many milliseconds of the steady clock, which no change of the
  /// time of day makes longer or shorter; 0 lets other threads run. Any thread.
  virtual void Sleep(int iMilliseconds) const;
  /// Milliseconds since some moment, whatever the time of day is set to; the time for which the
  /// machine is suspended counts. Any thread.
  virtual int64_t SteadyMs() const;
};

/// Installs a clock, which is borrowed; null goes back to the machine's. Answers the one before.
IClock* SetClock(IClock* iClock);

/// The current local time.
TDateTime Now();

/// Holds the calling thread, as IClock::Sleep tells. Any thread; not for the main one.
void Sleep(int iMilliseconds);

/// As IClock::SteadyMs tells; only differences mean anything.
int64_t SteadyMs();

/// The door to the host's corrected clock.
class TExactTime {
 public:
  TDateTime GetNow() const;
};
TExactTime ExactTime();

}  // namespace kk
