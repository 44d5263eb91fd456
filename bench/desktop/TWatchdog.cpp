#include "bench/desktop/TWatchdog.h"

#include <algorithm>
#include <ctime>

namespace kk {
namespace {

double Read(clockid_t iClock) {
  timespec time{};
  clock_gettime(iClock, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

}  // namespace

double WallMs() { return Read(CLOCK_MONOTONIC); }

double WorkMs() { return Read(CLOCK_THREAD_CPUTIME_ID); }

TWatchdog::TWatchdog() {
  FTimer.setTimerType(Qt::PreciseTimer);
  FTimer.callOnTimeout(this, [this] { Turn(); });
  Restart();
  FTimer.start(1);
}

void TWatchdog::Restart() {
  FLastMs = WallMs();
  FLastWorkMs = WorkMs();
  FLongestMs = FLongestWorkMs = FLastLongTurnEnd = 0;
  FLongTurns = 0;
}

void TWatchdog::Turn() {
  const double now = WallMs();
  const double work = WorkMs();
  FLongestMs = std::max(FLongestMs, now - FLastMs);
  FLongestWorkMs = std::max(FLongestWorkMs, work - FLastWorkMs);
  if (work - FLastWorkMs > cLongTurnMs) ++FLongTurns;
  if (now - FLastMs > cLongTurnMs) FLastLongTurnEnd = now;
  FLastMs = now;
  FLastWorkMs = work;
}

}  // namespace kk
