#include "host/common/TQueueMainLoop.h"

#include "tests/support/LoopTimersContract.h"

namespace kk {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;

/// Time passes a millisecond in each turn.
struct TQueueLoopWorld {
  std::unique_ptr<TPostingMainLoop> NewLoop() {
    return std::make_unique<TQueueMainLoop>([this] { return Now; });
  }
  void Turn(TPostingMainLoop& ioLoop) {
    Now += milliseconds(1);
    ioLoop.WaitForMessage(1);
    ioLoop.ProcessMessages();
  }

  TQueueMainLoop::TTime Now{};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Queue, TPostingContract, TQueueLoopWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(Queue, TLoopTimersContract, TQueueLoopWorld);

class TQueueMainLoopTest : public TMainLoopTest<TQueueLoopWorld> {
 protected:
  void Pass(int iMilliseconds) {
    FWorld.Now += milliseconds(iMilliseconds);
    FLoop->ProcessMessages();
  }
};

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

TEST_F(TQueueMainLoopTest, AFailureGoesToTheLogAndEndsNothing) {
  FLoop->Post([] { throw Exception(u"kaputt"); });
  FLoop->Post(Noting(1));
  FLoop->StartTimer(1, [] { throw Exception(u"auch"); });
  Pass(1);
  EXPECT_THAT(FNotes, ElementsAre(1));
  EXPECT_THAT(FLog.Lines(), ElementsAre("exception Host: kaputt", "exception Host: auch"));
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

TEST_F(TQueueMainLoopTest, ATimerThatAnotherOneStartsWaitsForItsOwnTime) {
  TMainLoop::TTimerId timer = 0;
  timer = FLoop->StartTimer(10, [&] {
    Note(1);
    FLoop->StopTimer(timer);
    FLoop->StartTimer(5, Noting(2));
  });
  Pass(10);
  EXPECT_THAT(FNotes, ElementsAre(1));
  Pass(5);
  EXPECT_THAT(FNotes, ElementsAre(1, 2));
}

TEST_F(TQueueMainLoopTest, OtherTimersFireInsideTheFunctionOfOneAndItselfWhenItIsThrough) {
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

TEST_F(TQueueMainLoopTest, AnIntervalIsAMillisecondAtLeast) {
  FLoop->StartTimer(0, Noting(1));
  FLoop->StartTimer(-5, Noting(2));
  Pass(1);
  EXPECT_THAT(FNotes, ElementsAre(1, 2));
}

TEST_F(TQueueMainLoopTest, WaitingEndsWhenATimerIsDue) {
  FLoop->StartTimer(10, [] {});
  FWorld.Now += milliseconds(10);
  FLoop->WaitForMessage(1'000'000);
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

}  // namespace
}  // namespace kk
