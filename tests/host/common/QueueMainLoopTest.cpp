#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <memory>
#include <optional>
#include <thread>

#include "host/base/Exception.h"
#include "host/common/TQueueMainLoop.h"
#include "tests/support/TLogRecorder.h"

namespace kk {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;

class TQueueMainLoopTest : public testing::Test {
 protected:
  void Note(int iNumber) { FNotes.push_back(iNumber); }
  TMainLoop::TFunction Noting(int iNumber) {
    return [this, iNumber] { Note(iNumber); };
  }
  void Pass(int iMilliseconds) {
    FNow += milliseconds(iMilliseconds);
    FLoop->ProcessMessages();
  }

  TLogRecorder FLog;
  TQueueMainLoop::TTime FNow{};
  std::optional<TQueueMainLoop> FLoop{std::in_place, [this] { return FNow; }};
  std::vector<int> FNotes;
};

TEST_F(TQueueMainLoopTest, RunsWhatIsPostedInOrderAndOnlyWhenProcessed) {
  FLoop->Post(Noting(1));
  FLoop->Post(Noting(2));
  EXPECT_TRUE(FNotes.empty());
  FLoop->ProcessMessages();
  EXPECT_THAT(FNotes, ElementsAre(1, 2));
  FLoop->ProcessMessages();
  EXPECT_EQ(FNotes.size(), 2u);
}

TEST_F(TQueueMainLoopTest, WhatIsPostedMeanwhileWaitsForTheNextTurn) {
  FLoop->Post([this] {
    Note(1);
    FLoop->Post(Noting(2));
  });
  FLoop->ProcessMessages();
  EXPECT_THAT(FNotes, ElementsAre(1));
  FLoop->ProcessMessages();
  EXPECT_THAT(FNotes, ElementsAre(1, 2));
}

TEST_F(TQueueMainLoopTest, AFunctionMayProcessTheRestItself) {
  FLoop->Post([this] {
    FLoop->ProcessMessages();
    Note(2);
  });
  FLoop->Post(Noting(1));
  FLoop->ProcessMessages();
  EXPECT_THAT(FNotes, ElementsAre(1, 2));
}

TEST_F(TQueueMainLoopTest, WhatAFunctionHoldsGoesBehindItAndMayPostThen) {
  const auto last = [this](void*) { FLoop->Post(Noting(2)); };
  FLoop->Post([held = std::shared_ptr<void>(nullptr, last)] {});
  FLoop->Post([this] {
    Note(1);
    FLoop->ProcessMessages();  // has got what the first one has posted with its end
    Note(3);
  });
  FLoop->ProcessMessages();
  EXPECT_THAT(FNotes, ElementsAre(1, 2, 3));
}

TEST_F(TQueueMainLoopTest, AFailureGoesToTheLogAndEndsNothing) {
  FLoop->Post([] { throw Exception(u"kaputt"); });
  FLoop->Post(Noting(1));
  FLoop->StartTimer(1, [] { throw Exception(u"auch"); });
  Pass(1);
  EXPECT_THAT(FNotes, ElementsAre(1));
  EXPECT_THAT(FLog.Lines(), ElementsAre("exception Host: kaputt", "exception Host: auch"));
}

TEST_F(TQueueMainLoopTest, SynchronizeOnTheMainThreadRunsAtOnceAndPassesExceptions) {
  FLoop->Synchronize(Noting(1));
  EXPECT_THAT(FNotes, ElementsAre(1));
  EXPECT_THROW(FLoop->Synchronize([] { throw EConvertError(u"x"); }), EConvertError);
}

TEST_F(TQueueMainLoopTest, SynchronizeWaitsForTheMainThread) {
  std::atomic<bool> done{false};
  std::thread::id ranOn;
  std::thread other([&] {
    EXPECT_FALSE(FLoop->IsMainThread());
    FLoop->Synchronize([&] { ranOn = std::this_thread::get_id(); });
    done = true;
    FLoop->Post([] {});
  });
  while (!done) {
    FLoop->WaitForMessage(1000);
    FLoop->ProcessMessages();
  }
  other.join();
  EXPECT_EQ(ranOn, std::this_thread::get_id());
  EXPECT_TRUE(FLoop->IsMainThread());
}

TEST_F(TQueueMainLoopTest, SynchronizePassesAnExceptionToTheThreadThatWaits) {
  auto result = std::async(std::launch::async, [&] {
    try {
      FLoop->Synchronize([] { throw EConvertError(u"über die Grenze"); });
    } catch (const EConvertError& e) {
      return e.Message();
    }
    return TString();
  });
  while (result.wait_for(milliseconds(0)) != std::future_status::ready) {
    FLoop->WaitForMessage(1);
    FLoop->ProcessMessages();
  }
  EXPECT_EQ(result.get(), u"über die Grenze");
  EXPECT_TRUE(FLog.Lines().empty());
}

TEST_F(TQueueMainLoopTest, AThreadThatWaitsGoesOnWhenTheLoopGoes) {
  auto result = std::async(std::launch::async, [&] {
    EXPECT_THROW(FLoop->Synchronize([this] { Note(1); }), Exception);
  });
  FLoop->WaitForMessage(1'000'000);  // until the function is posted; it is not run
  FLoop.reset();
  result.get();
  EXPECT_TRUE(FNotes.empty());
}

TEST_F(TQueueMainLoopTest, ThreadsMayPostWhileTheLoopRuns) {
  constexpr int cEach = 1000;
  std::vector<std::thread> threads;
  for (int i = 0; i < 3; ++i) {
    threads.emplace_back([this] {
      for (int n = 0; n < cEach; ++n) FLoop->Post(Noting(n));
    });
  }
  while (FNotes.size() < 3 * cEach) {
    FLoop->WaitForMessage(1000);
    FLoop->ProcessMessages();
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(FNotes.size(), 3u * cEach);
}

TEST_F(TQueueMainLoopTest, ATimerFiresEverySoManyMilliseconds) {
  const auto timer = FLoop->StartTimer(100, Noting(1));
  Pass(99);
  EXPECT_TRUE(FNotes.empty());
  Pass(1);
  Pass(99);
  EXPECT_EQ(FNotes.size(), 1u);
  Pass(1);
  EXPECT_EQ(FNotes.size(), 2u);
  FLoop->StopTimer(timer);
  Pass(1000);
  EXPECT_EQ(FNotes.size(), 2u);
}

TEST_F(TQueueMainLoopTest, ATimerThatIsLateFiresOnce) {
  FLoop->StartTimer(100, Noting(1));
  Pass(1050);
  EXPECT_EQ(FNotes.size(), 1u);
  Pass(99);
  EXPECT_EQ(FNotes.size(), 1u);
  Pass(1);
  EXPECT_EQ(FNotes.size(), 2u);
}

TEST_F(TQueueMainLoopTest, TimersFireInTheOrderInWhichTheyAreDue) {
  FLoop->StartTimer(300, Noting(3));
  FLoop->StartTimer(100, Noting(1));
  FLoop->StartTimer(200, Noting(2));
  Pass(300);
  EXPECT_THAT(FNotes, ElementsAre(1, 2, 3));
}

TEST_F(TQueueMainLoopTest, ATimerThatIsStoppedDoesNotFireEvenIfItWasDue) {
  TMainLoop::TTimerId second = 0;
  FLoop->StartTimer(10, [&] {
    Note(1);
    FLoop->StopTimer(second);
  });
  second = FLoop->StartTimer(10, Noting(2));
  Pass(10);
  EXPECT_THAT(FNotes, ElementsAre(1));
}

TEST_F(TQueueMainLoopTest, ATimerMayStopItselfAndStartOthers) {
  TMainLoop::TTimerId timer = 0;
  timer = FLoop->StartTimer(10, [&] {
    Note(1);
    FLoop->StopTimer(timer);
    FLoop->StopTimer(timer);
    FLoop->StartTimer(5, Noting(2));
  });
  Pass(10);
  EXPECT_THAT(FNotes, ElementsAre(1));
  Pass(5);
  EXPECT_THAT(FNotes, ElementsAre(1, 2));
}

TEST_F(TQueueMainLoopTest, ATimerDoesNotFireInsideItsOwnFunctionButOthersDo) {
  FLoop->StartTimer(10, [&] {
    Note(1);
    if (FNotes.size() > 5) return;
    Pass(10);
    Note(3);
  });
  FLoop->StartTimer(15, Noting(2));
  Pass(10);
  EXPECT_THAT(FNotes, ElementsAre(1, 2, 3));
}

TEST_F(TQueueMainLoopTest, AnIntervalOfZeroDoesNotHoldTheLoop) {
  FLoop->StartTimer(0, Noting(1));
  FLoop->StartTimer(-5, Noting(2));
  Pass(1);
  EXPECT_THAT(FNotes, ElementsAre(1, 2));
}

TEST_F(TQueueMainLoopTest, WaitingEndsWhenThereIsSomethingToRun) {
  FLoop->Post([] {});
  FLoop->WaitForMessage(1'000'000);
  FLoop->ProcessMessages();
  FLoop->StartTimer(10, [] {});
  FNow += milliseconds(10);
  FLoop->WaitForMessage(1'000'000);
  std::thread other([&] { FLoop->Post(Noting(1)); });
  FLoop->ProcessMessages();
  while (FNotes.empty()) {
    FLoop->WaitForMessage(5);
    FLoop->ProcessMessages();
  }
  other.join();
  EXPECT_THAT(FNotes, ElementsAre(1));
}

TEST(TQueueMainLoop, WaitingEndsAfterItsTimeAndForItsTimers) {
  TQueueMainLoop loop;
  loop.WaitForMessage(1);
  loop.WaitForMessage(-1);
  int fired = 0;
  loop.StartTimer(1, [&] { ++fired; });
  while (fired < 3) {
    loop.WaitForMessage(1'000'000);
    loop.ProcessMessages();
  }
  EXPECT_EQ(fired, 3);
}

TEST(TQueueMainLoop, WhatIsPostedButNeverRunIsFreed) {
  const auto held = std::make_shared<int>(1);
  {
    TQueueMainLoop loop;
    loop.Post([held] {});
    loop.StartTimer(1, [held] {});
    EXPECT_EQ(held.use_count(), 3);
  }
  EXPECT_EQ(held.use_count(), 1);
}

}  // namespace
}  // namespace kk
