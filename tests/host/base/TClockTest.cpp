#include "host/base/TClock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>

#include "host/base/Exception.h"
#include "tests/support/TTestClock.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

using std::chrono::milliseconds;

TEST(Clock, TheMachinesSleepLastsAtLeastItsTimeOnTheSteadyClock) {
  const auto start = std::chrono::steady_clock::now();
  Sleep(0);
  Sleep(-5);
  Sleep(20);
  EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(20));
}

TEST(Clock, TheMachinesSteadyClockGoesOnWithTheTime) {
  const int64_t start = SteadyMs();
  Sleep(20);
  EXPECT_GE(SteadyMs() - start, 19);  // both are cut to whole milliseconds
}

TEST(TTestClock, ASleepLastsUntilTheClockWasAdvancedSoFar) {
  TTestClock clock;
  std::atomic<bool> awake{false};
  auto sleeper = std::async(std::launch::async, [&] {
    Sleep(1000);
    awake = true;
  });
  ASSERT_TRUE(clock.WaitForSleepers(1));
  clock.Advance(999);
  EXPECT_EQ(clock.SleeperCount(), 1);
  EXPECT_FALSE(awake);
  clock.Advance(1);
  EXPECT_EQ(clock.SleeperCount(), 0);
  sleeper.get();
  EXPECT_TRUE(awake);
  EXPECT_EQ(clock.SteadyMs(), 1000);
}

TEST(TTestClock, AJumpOfTheTimeOfDayWakesNobody) {
  TTestClock clock;
  const TDateTime before = Now();
  auto sleeper = std::async(std::launch::async, [] { Sleep(1000); });
  ASSERT_TRUE(clock.WaitForSleepers(1));
  clock.Set(before.PlusMs(TDateTime::cMsPerHour));
  EXPECT_EQ(Now(), before.PlusMs(TDateTime::cMsPerHour));
  EXPECT_EQ(clock.SleeperCount(), 1);
  EXPECT_EQ(SteadyMs(), 0);
  clock.StopSleeping();
  sleeper.get();
}

TEST(TTestClock, WaitsForSleepersWithALimit) {
  TTestClock clock;
  EXPECT_FALSE(clock.WaitForSleepers(1, milliseconds(1)));
  Sleep(0);
  EXPECT_TRUE(clock.WaitForSleepers(0));
}

TEST(TTestClock, WakesThoseWhoSleepAtItsEnd) {
  std::future<void> sleeper;
  {
    const TTestClock clock;
    sleeper = std::async(std::launch::async, [] { Sleep(1000); });
    ASSERT_TRUE(clock.WaitForSleepers(1));
  }
  sleeper.get();
}

TEST(TTestMainLoop, AThreadThatWaitsGoesOnWhenTheLoopGoes) {
  std::future<TString> waiting;
  {
    TTestMainLoop loop;
    waiting = std::async(std::launch::async, [&] {
      try {
        loop.Synchronize([] {});
      } catch (const Exception& e) {
        return e.Message();
      }
      return TString();
    });
    while (loop.PostedCount() < 1) std::this_thread::yield();
  }
  EXPECT_EQ(waiting.get(), u"Die Hauptschleife ist beendet");
}

TEST(TTestMainLoop, PassesAnExceptionToTheThreadThatWaits) {
  TTestMainLoop loop;
  auto waiting = std::async(std::launch::async, [&] {
    EXPECT_THROW(loop.Synchronize([] { throw EConvertError(u"x"); }), EConvertError);
  });
  while (waiting.wait_for(milliseconds(0)) != std::future_status::ready) loop.ProcessMessages();
}

}  // namespace
}  // namespace kk
