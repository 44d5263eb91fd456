#include "tests/support/TTestClock.h"

#include <gtest/gtest.h>

#include <iterator>
#include <thread>

namespace kk {

namespace {

constexpr std::chrono::seconds cLongestSleep(30);

}  // namespace

TTestClock::~TTestClock() {
  SetClock(FBefore);
  StopSleeping();
  std::unique_lock lock(FMutex);
  FChanged.wait(lock, [this] { return FWakeTimes.empty(); });
}

TDateTime TTestClock::Now() const {
  const std::lock_guard lock(FMutex);
  return FNow;
}

TDateTime TTestClock::ExactNow() const {
  const std::lock_guard lock(FMutex);
  return FNow.PlusMs(FExactOffset);
}

void TTestClock::Sleep(int iMilliseconds) const {
  if (iMilliseconds <= 0) return std::this_thread::yield();
  std::unique_lock lock(FMutex);
  if (FNoSleep) {
    lock.unlock();
    return std::this_thread::yield();
  }
  const auto wakeTime = FWakeTimes.insert(FSteady + iMilliseconds);
  FChanged.notify_all();
  if (!FChanged.wait_for(lock, cLongestSleep, [&] { return FNoSleep || FSteady >= *wakeTime; })) {
    FNoSleep = true;
    ADD_FAILURE() << "nobody advances the clock on which a thread sleeps";
  }
  FWakeTimes.erase(wakeTime);
  FChanged.notify_all();
}

void TTestClock::Set(TDateTime iNow) {
  const std::lock_guard lock(FMutex);
  FNow = iNow;
}

void TTestClock::Advance(int64_t iMs) {
  const std::lock_guard lock(FMutex);
  FNow = FNow.PlusMs(iMs);
  FSteady += iMs;
  FChanged.notify_all();
}

void TTestClock::SetExactOffset(int64_t iMs) {
  const std::lock_guard lock(FMutex);
  FExactOffset = iMs;
}

int64_t TTestClock::SteadyMs() const {
  const std::lock_guard lock(FMutex);
  return FSteady;
}

int TTestClock::SleeperCount() const {
  const std::lock_guard lock(FMutex);
  return Sleeping();
}

bool TTestClock::WaitForSleepers(int iCount, TLimit iLimit) const {
  std::unique_lock lock(FMutex);
  return FChanged.wait_for(lock, iLimit, [&] { return Sleeping() >= iCount; });
}

void TTestClock::StopSleeping() {
  const std::lock_guard lock(FMutex);
  FNoSleep = true;
  FChanged.notify_all();
}

void TTestClock::StartSleeping() {
  const std::lock_guard lock(FMutex);
  FNoSleep = false;
}

// Those whose time has not come.
int TTestClock::Sleeping() const {
  if (FNoSleep) return 0;
  return static_cast<int>(std::distance(FWakeTimes.upper_bound(FSteady), FWakeTimes.end()));
}

}  // namespace kk
