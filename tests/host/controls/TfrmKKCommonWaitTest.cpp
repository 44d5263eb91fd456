#include "host/controls/TfrmKKCommonWait.h"

#include <gtest/gtest.h>

#include <thread>

#include "host/base/Exception.h"
#include "host/common/TQueueMainLoop.h"
#include "tests/support/TScriptedFormHost.h"
#include "tests/support/TTestClock.h"

namespace kk {
namespace {

struct TWaitTest : testing::Test {
  TWaitTest() : Before(SetMainLoop(&Loop)) {}
  ~TWaitTest() override { SetMainLoop(Before); }

  TQueueMainLoop Loop;
  TMainLoop* Before;
  TScriptedFormHost Forms;
};

TEST_F(TWaitTest, WorkRunsElsewhereWhileTheLoopGoesOn) {
  bool turned = false;
  std::thread::id worker;
  TfrmKKCommonWait::Run(u"Moment...", [&](std::stop_token) {
    worker = std::this_thread::get_id();
    Loop.Synchronize([&] { turned = true; });
  });
  EXPECT_TRUE(turned);
  EXPECT_NE(worker, std::this_thread::get_id());
}

TEST_F(TWaitTest, CancelTellsTheWorkAndTheWindowStaysUntilItHasEnded) {
  bool stopped = false;
  Forms.Expect<TfrmKKCommonWait>([](TfrmKKCommonWait& ioForm) {
    EXPECT_EQ(ioForm.lblText.Caption(), u"Moment...");
    EXPECT_TRUE(ioForm.btnCancel.Click());
    EXPECT_FALSE(ioForm.btnCancel.Enabled());
  });
  TfrmKKCommonWait::Run(u"Moment...", [&](std::stop_token iStop) {
    while (!iStop.stop_requested()) std::this_thread::yield();
    stopped = true;
  });
  EXPECT_TRUE(stopped);
}

TEST_F(TWaitTest, ClosingTheWindowGivesTheWaitUpToo) {
  bool stopped = false;
  Forms.Expect<TfrmKKCommonWait>([](TfrmKKCommonWait& ioForm) { ioForm.CloseByUser(); });
  TfrmKKCommonWait::Run(u"Moment...", [&](std::stop_token iStop) {
    while (!iStop.stop_requested()) std::this_thread::yield();
    stopped = true;
  });
  EXPECT_TRUE(stopped);
}

TEST_F(TWaitTest, WhatTheWorkRaisesReachesTheCaller) {
  EXPECT_THROW(TfrmKKCommonWait::Run(u"", [](std::stop_token) { throw Exception(u"nein"); }),
               Exception);
}

TEST_F(TWaitTest, OnAnotherThreadItRunsRightThereWithoutAWindow) {
  std::thread::id ran;
  std::thread::id own;
  std::thread([&] {
    own = std::this_thread::get_id();
    TfrmKKCommonWait::Run(u"", [&](std::stop_token) { ran = std::this_thread::get_id(); });
  }).join();
  EXPECT_EQ(ran, own);
  EXPECT_EQ(Forms.ShownCount(), 0);
}

TEST_F(TWaitTest, WorkInStepsRunsHereBehindTheWindowAndTheLoopTurnsAtItsSteps) {
  std::vector<int> order;
  Loop.Post([&] { order.push_back(0); });
  EXPECT_TRUE(TfrmKKCommonWait::RunInSteps(u"Moment...", [&](TfrmKKCommonWait& ioWait) {
    EXPECT_TRUE(ioWait.IsModal());
    EXPECT_EQ(ioWait.lblText.Caption(), u"Moment...");
    order.push_back(1);
    Loop.Post([&] { order.push_back(2); });
    ioWait.Step(nullptr);
    order.push_back(3);
  }));
  EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3}));
}

TEST_F(TWaitTest, TheLoopTurnsNoMoreThanOnceInFiveMilliseconds) {
  TTestClock clock;
  EXPECT_TRUE(TfrmKKCommonWait::RunInSteps(u"Moment...", [&](TfrmKKCommonWait& ioWait) {
    std::vector<bool> turned;
    for (const int passed : {0, 4, 1, 4, 1}) {
      bool now = false;
      clock.Advance(passed);
      Loop.Post([&] { now = true; });
      ioWait.Step(nullptr);
      turned.push_back(now);
      Loop.ProcessMessages();
    }
    EXPECT_EQ(turned, (std::vector<bool>{true, false, true, false, true}));
  }));
}

TEST_F(TWaitTest, CancelEndsWorkInStepsAtItsNextStep) {
  int steps = 0;
  EXPECT_FALSE(TfrmKKCommonWait::RunInSteps(u"Moment...", [&](TfrmKKCommonWait& ioWait) {
    Loop.Post([&] { EXPECT_TRUE(ioWait.btnCancel.Click()); });
    ioWait.Step(nullptr);
    ++steps;
  }));
  EXPECT_EQ(steps, 0);
}

TEST_F(TWaitTest, WorkInStepsThatIsGivenUpBeforeItBeganDoesNotBegin) {
  Forms.Expect<TfrmKKCommonWait>(
      [](TfrmKKCommonWait& ioForm) { EXPECT_TRUE(ioForm.btnCancel.Click()); });
  EXPECT_FALSE(TfrmKKCommonWait::RunInSteps(
      u"Moment...", [](TfrmKKCommonWait&) { ADD_FAILURE() << "it began"; }));
}

TEST_F(TWaitTest, TheWindowCantBeClosedBeforeWorkInStepsHasEnded) {
  bool closed = true;
  EXPECT_FALSE(TfrmKKCommonWait::RunInSteps(u"Moment...", [&](TfrmKKCommonWait& ioWait) {
    ioWait.CloseByUser();
    closed = ioWait.EndModalIfDone();
  }));
  EXPECT_FALSE(closed);
}

TEST_F(TWaitTest, WhatWorkInStepsRaisesReachesTheCaller) {
  EXPECT_THROW(
      TfrmKKCommonWait::RunInSteps(u"", [](TfrmKKCommonWait&) { throw EConvertError(u"nein"); }),
      EConvertError);
}

}  // namespace
}  // namespace kk
