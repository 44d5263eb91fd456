#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <set>

#include "host/base/TClock.h"

namespace kk {

/// A clock that stands still until the test turns it: 2026-11-20, 18:30 at first. A thread that
/// sleeps on it sleeps until the test has advanced it so far, and so sleeps through every change of
/// the time of day. Any thread; made and freed on the test's.
class TTestClock : public IClock {
 public:
  using TLimit = std::chrono::milliseconds;

  TTestClock() : FBefore(SetClock(this)) {}
  /// Wakes who still sleeps, and returns when nobody is in a sleep any more.
  ~TTestClock() override;

  TDateTime Now() const override;
  TDateTime ExactNow() const override;
  /// A sleep from which nobody wakes it for 30 s of real time fails the test and ends.
  void Sleep(int iMilliseconds) const override;

  /// A jump: the time of day alone; who sleeps goes on sleeping.
  void Set(TDateTime iNow);
  /// So many milliseconds go by, for the time of day and for those who sleep.
  void Advance(int64_t iMs);
  /// How far the host's corrected clock is ahead of the machine's.
  void SetExactOffset(int64_t iMs);

  /// How much of Advance has gone by.
  int64_t SteadyMs() const override;
  /// How many threads sleep and have not been woken.
  int SleeperCount() const;
  /// Waits until so many sleep, for so long of real time; false if they did not.
  bool WaitForSleepers(int iCount, TLimit iLimit = std::chrono::seconds(10)) const;
  /// From now on no sleep lasts: for the end of a test whose threads are asked to end.
  void StopSleeping();
  /// Sleeps last again: for what follows such an end in one test.
  void StartSleeping();

 private:
  int Sleeping() const;

  mutable std::mutex FMutex;
  mutable std::condition_variable FChanged;
  mutable std::multiset<int64_t> FWakeTimes;  // of those who are in a sleep, woken or not
  mutable bool FNoSleep = false;
  TDateTime FNow = EncodeDateTime({2026, 11, 20, 18, 30, 0, 0});
  int64_t FSteady = 0;
  int64_t FExactOffset = 0;
  IClock* FBefore;
};

}  // namespace kk
