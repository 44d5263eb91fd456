#include "host/base/TClock.h"

#include <atomic>
#include <chrono>

namespace kk {

namespace {

class TMachineClock final : public IClock {
 public:
  TDateTime Now() const override {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return UtcMsToLocal(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
  }
};

const TMachineClock machineClock;
std::atomic<IClock*> installedClock{nullptr};

const IClock& Clock() {
  const IClock* clock = installedClock.load();
  return clock == nullptr ? machineClock : *clock;
}

}  // namespace

IClock* SetClock(IClock* iClock) { return installedClock.exchange(iClock); }

TDateTime Now() { return Clock().Now(); }

TDateTime TExactTime::GetNow() const { return Clock().ExactNow(); }

TExactTime ExactTime() { return {}; }

}  // namespace kk
