#include "apps/desktop/skin/TQtMainLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTimer>
#include <atomic>
#include <future>
#include <optional>
#include <thread>

#include "OffscreenQt.h"
#include "host/base/Exception.h"
#include "host/base/TInstalled.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TScriptedFormHost.h"

namespace kk {
namespace {

using testing::ElementsAre;

class TQtMainLoopTest : public testing::Test {
 protected:
  TQtMainLoopTest() {
    NeedQt();
    FLoop.emplace();
  }
  void Note(int iNumber) { FNotes.push_back(iNumber); }
  TMainLoop::TFunction Noting(int iNumber) {
    return [this, iNumber] { Note(iNumber); };
  }
  bool CrankUntilNotes(size_t iCount) {
    return CrankUntil([this, iCount] { return FNotes.size() >= iCount; });
  }

  TLogRecorder FLog;
  TScriptedFormHost FForms;
  std::optional<TQtMainLoop> FLoop;
  std::vector<int> FNotes;
};

TEST_F(TQtMainLoopTest, RunsWhatIsPostedInOrderAndOnlyWhenItTurns) {
  FLoop->Post(Noting(1));
  FLoop->Post(Noting(2));
  EXPECT_TRUE(FNotes.empty());
  ASSERT_TRUE(CrankUntilNotes(2));
  EXPECT_THAT(FNotes, ElementsAre(1, 2));
  FLoop->ProcessMessages();
  EXPECT_EQ(FNotes.size(), 2u);
}

TEST_F(TQtMainLoopTest, ProcessMessagesRunsAllThatIsPosted) {
  for (int i = 0; i < 5; ++i) FLoop->Post(Noting(i));
  FLoop->ProcessMessages();
  EXPECT_THAT(FNotes, ElementsAre(0, 1, 2, 3, 4));
}

TEST_F(TQtMainLoopTest, WhoPostsHimselfAgainAndAgainKeepsNobodyFromReturning) {
  TMainLoop::TFunction again = [&] {
    Note(1);
    FLoop->Post(again);
  };
  FLoop->Post(again);
  FLoop->ProcessMessages();
  const size_t once = FNotes.size();
  EXPECT_GE(once, 1u);
  bool timerFired = false;
  QTimer::singleShot(1, [&] { timerFired = true; });
  EXPECT_TRUE(CrankUntil([&] { return timerFired; }));
  EXPECT_GT(FNotes.size(), once);
  FLoop.reset();
}

TEST_F(TQtMainLoopTest, AFunctionMayProcessTheRestItself) {
  FLoop->Post([this] {
    FLoop->ProcessMessages();
    Note(2);
  });
  FLoop->Post(Noting(1));
  ASSERT_TRUE(CrankUntilNotes(2));
  EXPECT_THAT(FNotes, ElementsAre(1, 2));
}

TEST_F(TQtMainLoopTest, WhatIsLeftRunsInALoopInsideOfTheFirstFunction) {
  FLoop->Post([this] {
    EXPECT_TRUE(CrankUntilNotes(2));  // as a window that is shown by the function
    Note(3);
  });
  FLoop->Post(Noting(1));
  FLoop->Post(Noting(2));
  ASSERT_TRUE(CrankUntilNotes(3));
  EXPECT_THAT(FNotes, ElementsAre(1, 2, 3));
}

TEST_F(TQtMainLoopTest, AFailureIsShownAndLoggedAndEndsNothing) {
  FForms.ExpectMessage(u"kaputt").ExpectMessage(
      u"Es ist ein unerwarteter Fehler aufgetreten: bad thing");
  FLoop->Post([] { throw Exception(u"kaputt"); });
  FLoop->Post(Noting(1));
  FLoop->StartTimer(1, [this] {
    if (FNotes.size() > 1) return;
    Note(2);
    throw std::runtime_error("bad thing");
  });
  ASSERT_TRUE(CrankUntilNotes(2));
  EXPECT_THAT(FNotes, ElementsAre(1, 2));
  EXPECT_THAT(FLog.Lines(), ElementsAre("exception Host: kaputt", "exception Host: bad thing"));
}

TEST_F(TQtMainLoopTest, SynchronizeOnTheMainThreadRunsAtOnceAndPassesExceptions) {
  FLoop->Synchronize(Noting(1));
  EXPECT_THAT(FNotes, ElementsAre(1));
  EXPECT_THROW(FLoop->Synchronize([] { throw EConvertError(u"x"); }), EConvertError);
}

TEST_F(TQtMainLoopTest, SynchronizeWaitsForTheMainThread) {
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

TEST_F(TQtMainLoopTest, SynchronizePassesAnExceptionToTheThreadThatWaits) {
  auto result = std::async(std::launch::async, [&] {
    try {
      FLoop->Synchronize([] { throw EConvertError(u"über die Grenze"); });
    } catch (const EConvertError& e) {
      return e.Message();
    }
    return TString();
  });
  EXPECT_TRUE(CrankUntil(
      [&] { return result.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
  EXPECT_EQ(result.get(), u"über die Grenze");
  EXPECT_TRUE(FLog.Lines().empty());
}

TEST_F(TQtMainLoopTest, AThreadThatWaitsGoesOnWhenTheLoopGoes) {
  struct TTellingLoop : TQtMainLoop {
    explicit TTellingLoop(std::promise<void>& ioPosted) : Posted(ioPosted) {}
    void Post(TFunction iFunction) override {
      std::promise<void>& posted = Posted;
      TQtMainLoop::Post(std::move(iFunction));
      posted.set_value();
    }
    std::promise<void>& Posted;
  };
  std::promise<void> posted;
  auto loop = std::make_unique<TTellingLoop>(posted);
  auto result = std::async(std::launch::async, [&, loopAddress = loop.get()] {
    EXPECT_THROW(loopAddress->Synchronize([this] { Note(1); }), Exception);
  });
  posted.get_future().wait();
  loop.reset();
  result.get();
  EXPECT_TRUE(FNotes.empty());
}

TEST_F(TQtMainLoopTest, ThreadsMayPostWhileTheLoopRuns) {
  constexpr int cEach = 1000;
  std::vector<std::thread> threads;
  for (int i = 0; i < 3; ++i) {
    threads.emplace_back([this] {
      for (int n = 0; n < cEach; ++n) FLoop->Post(Noting(n));
    });
  }
  EXPECT_TRUE(CrankUntilNotes(3 * cEach));
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(FNotes.size(), 3u * cEach);
}

TEST_F(TQtMainLoopTest, ATimerFiresAgainAndAgainUntilItIsStopped) {
  const auto timer = FLoop->StartTimer(1, Noting(1));
  ASSERT_TRUE(CrankUntilNotes(3));
  FLoop->StopTimer(timer);
  const size_t fired = FNotes.size();
  FLoop->StartTimer(20, Noting(2));
  ASSERT_TRUE(CrankUntilNotes(fired + 1));
  EXPECT_EQ(FNotes.back(), 2);
}

TEST_F(TQtMainLoopTest, ATimerThatIsStoppedDoesNotFireEvenIfItWasDue) {
  TMainLoop::TTimerId first = 0;
  TMainLoop::TTimerId second = 0;
  first = FLoop->StartTimer(1, [&] {
    Note(1);
    FLoop->StopTimer(second);
    FLoop->StopTimer(first);
  });
  second = FLoop->StartTimer(1, [&] {
    Note(1);
    FLoop->StopTimer(first);
    FLoop->StopTimer(second);
  });
  FLoop->StartTimer(30, Noting(3));
  ASSERT_TRUE(CrankUntilNotes(2));
  EXPECT_THAT(FNotes, ElementsAre(1, 3));
}

TEST_F(TQtMainLoopTest, ATimerMayStopItselfTwiceAndStartOthers) {
  TMainLoop::TTimerId timer = 0;
  timer = FLoop->StartTimer(1, [&] {
    Note(1);
    FLoop->StopTimer(timer);
    FLoop->StartTimer(1, Noting(2));
    FLoop->StopTimer(timer);  // takes away nobody else's
  });
  ASSERT_TRUE(CrankUntilNotes(2));
  EXPECT_EQ(FNotes[0], 1);
  EXPECT_EQ(FNotes[1], 2);
}

TEST_F(TQtMainLoopTest, ATimerDoesNotFireInsideItsOwnFunctionButOthersDo) {
  int depth = 0;
  bool wasInside = false;
  FLoop->StartTimer(1, [&] {
    ++depth;
    wasInside = wasInside || depth > 1;
    wasInside = wasInside || (FNotes.empty() && !CrankUntilNotes(5));
    --depth;
  });
  FLoop->StartTimer(1, Noting(2));
  ASSERT_TRUE(CrankUntilNotes(5));
  EXPECT_FALSE(wasInside);
}

TEST_F(TQtMainLoopTest, AnIntervalOfZeroDoesNotHoldTheLoop) {
  FLoop->StartTimer(0, Noting(1));
  FLoop->StartTimer(-5, Noting(2));
  EXPECT_TRUE(CrankUntil([this] {
    return testing::Matches(testing::IsSupersetOf({1, 2}))(FNotes);
  }));
}

TEST_F(TQtMainLoopTest, WaitingEndsWhenThereIsSomethingToRun) {
  FLoop->Post(Noting(0));
  FLoop->WaitForMessage(1'000'000);
  FLoop->ProcessMessages();
  EXPECT_EQ(FNotes.size(), 1u);
  std::thread other([&] { FLoop->Post(Noting(1)); });
  while (FNotes.size() < 2) {
    FLoop->WaitForMessage(1'000'000);
    FLoop->ProcessMessages();
  }
  other.join();
  EXPECT_THAT(FNotes, ElementsAre(0, 1));
}

TEST_F(TQtMainLoopTest, WaitingEndsAfterItsTime) {
  FLoop->WaitForMessage(1);
  FLoop->WaitForMessage(-1);
  EXPECT_TRUE(FNotes.empty());
}

TEST_F(TQtMainLoopTest, WhatIsPostedButNeverRunIsFreed) {
  const auto held = std::make_shared<int>(1);
  FLoop->Post([held] {});
  FLoop->StartTimer(1, [held] {});
  EXPECT_EQ(held.use_count(), 3);
  FLoop.reset();
  EXPECT_EQ(held.use_count(), 1);
}

}  // namespace
}  // namespace kk
