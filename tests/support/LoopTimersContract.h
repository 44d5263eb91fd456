#pragma once

#include "tests/support/PostingContract.h"

namespace kk {

/// What the timers of the loops that programs run on keep to.
template <class TWorld>
class TLoopTimersContract : public TMainLoopTest<TWorld> {};
TYPED_TEST_SUITE_P(TLoopTimersContract);

TYPED_TEST_P(TLoopTimersContract, ATimerFiresAgainAndAgainUntilItIsStopped) {
  const auto timer = this->FLoop->StartTimer(1, this->Noting(1));
  ASSERT_TRUE(this->CrankUntilNotes(3));
  this->FLoop->StopTimer(timer);
  const size_t fired = this->FNotes.size();
  this->FLoop->StartTimer(20, this->Noting(2));
  ASSERT_TRUE(this->CrankUntilNotes(fired + 1));
  EXPECT_EQ(this->FNotes.back(), 2);
}

TYPED_TEST_P(TLoopTimersContract, ATimerThatIsStoppedDoesNotFireEvenIfItWasDue) {
  TMainLoop::TTimerId first = 0;
  TMainLoop::TTimerId second = 0;
  first = this->FLoop->StartTimer(1, [&] {
    this->Note(1);
    this->FLoop->StopTimer(second);
    this->FLoop->StopTimer(first);
  });
  second = this->FLoop->StartTimer(1, [&] {
    this->Note(1);
    this->FLoop->StopTimer(first);
    this->FLoop->StopTimer(second);
  });
  this->FLoop->StartTimer(30, this->Noting(3));
  ASSERT_TRUE(this->CrankUntilNotes(2));
  EXPECT_THAT(this->FNotes, testing::ElementsAre(1, 3));
}

TYPED_TEST_P(TLoopTimersContract, ATimerMayStopItselfTwiceAndStartOthers) {
  TMainLoop::TTimerId timer = 0;
  timer = this->FLoop->StartTimer(1, [&] {
    this->Note(1);
    this->FLoop->StopTimer(timer);
    this->FLoop->StartTimer(1, this->Noting(2));
    this->FLoop->StopTimer(timer);  // takes away nobody else's
  });
  ASSERT_TRUE(this->CrankUntilNotes(2));
  EXPECT_EQ(this->FNotes[0], 1);
  EXPECT_EQ(this->FNotes[1], 2);
}

TYPED_TEST_P(TLoopTimersContract, ATimerDoesNotFireInsideItsOwnFunctionButOthersDo) {
  int depth = 0;
  bool wasInside = false;
  this->FLoop->StartTimer(1, [&] {
    ++depth;
    wasInside = wasInside || depth > 1;
    wasInside = wasInside || (this->FNotes.empty() && !this->CrankUntilNotes(5));
    --depth;
  });
  this->FLoop->StartTimer(1, this->Noting(2));
  ASSERT_TRUE(this->CrankUntilNotes(5));
  EXPECT_FALSE(wasInside);
}

TYPED_TEST_P(TLoopTimersContract, AnIntervalOfZeroDoesNotHoldTheLoop) {
  this->FLoop->StartTimer(0, this->Noting(1));
  this->FLoop->StartTimer(-5, this->Noting(2));
  EXPECT_TRUE(this->CrankUntil([this] {
    return testing::Matches(testing::IsSupersetOf({1, 2}))(this->FNotes);
  }));
}

REGISTER_TYPED_TEST_SUITE_P(TLoopTimersContract, ATimerFiresAgainAndAgainUntilItIsStopped,
                            ATimerThatIsStoppedDoesNotFireEvenIfItWasDue,
                            ATimerMayStopItselfTwiceAndStartOthers,
                            ATimerDoesNotFireInsideItsOwnFunctionButOthersDo,
                            AnIntervalOfZeroDoesNotHoldTheLoop);

}  // namespace kk
