#include "host/base/TClock.h"

#include <time.h>

#include <atomic>
#include <chrono>
#include <thread>

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

void IClock::Sleep(int iMilliseconds) const {
  if (iMilliseconds <= 0) return std::this_thread::yield();
  std::this_thread::sleep_for(std::chrono::milliseconds(iMilliseconds));
}

int64_t IClock::SteadyMs() const {
  timespec now{};
  clock_gettime(CLOCK_BOOTTIME, &now);
  return int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1000000;
}

IClock* SetClock(IClock* iClock) { return installedClock.exchange(iClock); }

TDateTime Now() { return Clock().Now(); }

void Sleep(int iMilliseconds) { Clock().Sleep(iMilliseconds); }

int64_t SteadyMs() { return Clock().SteadyMs(); }

TDateTime TExactTime::GetNow() const { return Clock().ExactNow(); }

TExactTime ExactTime() { return {}; }

}  // namespace kk
