#include "host/controls/TfrmKKCommonWait.h"

#include <gtest/gtest.h>

#include <thread>

#include "host/base/Exception.h"
#include "host/common/TQueueMainLoop.h"
#include "tests/support/TScriptedFormHost.h"

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

}  // namespace
}  // namespace kk
