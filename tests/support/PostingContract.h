#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <thread>
#include <vector>

#include "host/base/Exception.h"
#include "host/common/TPostingMainLoop.h"
#include "tests/support/TLogRecorder.h"

namespace kk {

/// A loop and what it has run. The world has NewLoop(), and Turn(loop), which lets a little time
/// pass and runs what is due, as the programs do that the loop is made for.
template <class TWorld>
class TMainLoopTest : public testing::Test {
 protected:
  void Note(int iNumber) { FNotes.push_back(iNumber); }
  TMainLoop::TFunction Noting(int iNumber) {
    return [this, iNumber] { Note(iNumber); };
  }
  /// Turns the loop until the condition holds; false if that takes longer than half a minute.
  template <class TCondition>
  bool CrankUntil(TCondition iCondition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!iCondition()) {
      if (std::chrono::steady_clock::now() > end) return false;
      FWorld.Turn(*FLoop);
    }
    return true;
  }
  bool CrankUntilNotes(size_t iCount) {
    return CrankUntil([this, iCount] { return FNotes.size() >= iCount; });
  }

  TLogRecorder FLog;
  TWorld FWorld;
  std::unique_ptr<TPostingMainLoop> FLoop = FWorld.NewLoop();
  std::vector<int> FNotes;
};

/// What the queue of every main loop keeps to; the test of each instantiates it.
template <class TWorld>
class TPostingContract : public TMainLoopTest<TWorld> {};
TYPED_TEST_SUITE_P(TPostingContract);

TYPED_TEST_P(TPostingContract, RunsWhatIsPostedInOrderAndOnlyWhenItTurns) {
  this->FLoop->Post(this->Noting(1));
  this->FLoop->Post(this->Noting(2));
  EXPECT_TRUE(this->FNotes.empty());
  EXPECT_EQ(this->FLoop->PostedCount(), 2u);
  ASSERT_TRUE(this->CrankUntilNotes(2));
  EXPECT_THAT(this->FNotes, testing::ElementsAre(1, 2));
  this->FLoop->ProcessMessages();
  EXPECT_EQ(this->FNotes.size(), 2u);
  EXPECT_EQ(this->FLoop->PostedCount(), 0u);
}

TYPED_TEST_P(TPostingContract, ProcessMessagesRunsAllThatIsPosted) {
  for (int i = 0; i < 5; ++i) this->FLoop->Post(this->Noting(i));
  this->FLoop->ProcessMessages();
  EXPECT_THAT(this->FNotes, testing::ElementsAre(0, 1, 2, 3, 4));
}

TYPED_TEST_P(TPostingContract, AFunctionMayProcessTheRestItself) {
  this->FLoop->Post([this] {
    this->FLoop->ProcessMessages();
    this->Note(2);
  });
  this->FLoop->Post(this->Noting(1));
  ASSERT_TRUE(this->CrankUntilNotes(2));
  EXPECT_THAT(this->FNotes, testing::ElementsAre(1, 2));
  EXPECT_TRUE(this->FLog.Lines().empty()) << "nothing was run twice";
}

TYPED_TEST_P(TPostingContract, WhatIsLeftRunsInALoopInsideOfTheFirstFunction) {
  this->FLoop->Post([this] {
    EXPECT_TRUE(this->CrankUntilNotes(2));  // as a window that is shown by the function
    this->Note(3);
  });
  this->FLoop->Post(this->Noting(1));
  this->FLoop->Post(this->Noting(2));
  ASSERT_TRUE(this->CrankUntilNotes(3));
  EXPECT_THAT(this->FNotes, testing::ElementsAre(1, 2, 3));
}

TYPED_TEST_P(TPostingContract, WhatAFunctionHoldsGoesBehindItAndMayPostThen) {
  const auto last = [this](void*) { this->FLoop->Post(this->Noting(2)); };
  this->FLoop->Post([held = std::shared_ptr<void>(nullptr, last)] {});
  this->FLoop->Post([this] {
    this->Note(1);
    this->FLoop->ProcessMessages();  // has got what the first one has posted with its end
    this->Note(3);
  });
  this->FLoop->ProcessMessages();
  EXPECT_THAT(this->FNotes, testing::ElementsAre(1, 2, 3));
}

TYPED_TEST_P(TPostingContract, SynchronizeOnTheMainThreadRunsAtOnceAndPassesExceptions) {
  this->FLoop->Synchronize(this->Noting(1));
  EXPECT_THAT(this->FNotes, testing::ElementsAre(1));
  EXPECT_THROW(this->FLoop->Synchronize([] { throw EConvertError(u"x"); }), EConvertError);
}

TYPED_TEST_P(TPostingContract, SynchronizeWaitsForTheMainThread) {
  std::atomic<bool> done{false};
  std::thread::id ranOn;
  std::thread other([&] {
    EXPECT_FALSE(this->FLoop->IsMainThread());
    this->FLoop->Synchronize([&] { ranOn = std::this_thread::get_id(); });
    done = true;
    this->FLoop->Post([] {});
  });
  while (!done) {
    this->FLoop->WaitForMessage(1000);
    this->FLoop->ProcessMessages();
  }
  other.join();
  EXPECT_EQ(ranOn, std::this_thread::get_id());
  EXPECT_TRUE(this->FLoop->IsMainThread());
}

TYPED_TEST_P(TPostingContract, SynchronizePassesAnExceptionToTheThreadThatWaits) {
  auto result = std::async(std::launch::async, [this] {
    try {
      this->FLoop->Synchronize([] { throw EConvertError(u"über die Grenze"); });
    } catch (const EConvertError& e) {
      return e.Message();
    }
    return TString();
  });
  EXPECT_TRUE(this->CrankUntil(
      [&] { return result.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
  EXPECT_EQ(result.get(), u"über die Grenze");
  EXPECT_TRUE(this->FLog.Lines().empty());
}

TYPED_TEST_P(TPostingContract, AThreadThatWaitsGoesOnWhenTheLoopGoes) {
  auto result = std::async(std::launch::async, [this, loop = this->FLoop.get()] {
    EXPECT_THROW(loop->Synchronize(this->Noting(1)), Exception);
  });
  while (this->FLoop->PostedCount() == 0) std::this_thread::yield();
  this->FLoop.reset();
  result.get();
  EXPECT_TRUE(this->FNotes.empty());
}

TYPED_TEST_P(TPostingContract, ThreadsMayPostWhileTheLoopRuns) {
  constexpr int cEach = 1000;
  std::vector<std::thread> threads;
  for (int i = 0; i < 3; ++i) {
    threads.emplace_back([this] {
      for (int n = 0; n < cEach; ++n) this->FLoop->Post(this->Noting(n));
    });
  }
  EXPECT_TRUE(this->CrankUntilNotes(3 * cEach));
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(this->FNotes.size(), 3u * cEach);
}

TYPED_TEST_P(TPostingContract, WaitingEndsWhenThereIsSomethingToRun) {
  this->FLoop->Post(this->Noting(0));
  this->FLoop->WaitForMessage(1'000'000);
  this->FLoop->ProcessMessages();
  EXPECT_EQ(this->FNotes.size(), 1u);
  std::thread other([this] { this->FLoop->Post(this->Noting(1)); });
  while (this->FNotes.size() < 2) {
    this->FLoop->WaitForMessage(1'000'000);
    this->FLoop->ProcessMessages();
  }
  other.join();
  EXPECT_THAT(this->FNotes, testing::ElementsAre(0, 1));
}

TYPED_TEST_P(TPostingContract, WaitingEndsAfterItsTime) {
  this->FLoop->WaitForMessage(1);
  this->FLoop->WaitForMessage(-1);
  EXPECT_TRUE(this->FNotes.empty());
}

TYPED_TEST_P(TPostingContract, WhatIsPostedButNeverRunIsFreed) {
  const auto held = std::make_shared<int>(1);
  this->FLoop->Post([held] {});
  this->FLoop->StartTimer(1, [held] {});
  EXPECT_EQ(held.use_count(), 3);
  this->FLoop.reset();
  EXPECT_EQ(held.use_count(), 1);
}

TYPED_TEST_P(TPostingContract, WhatIsDroppedMayPostWithItsEnd) {
  const auto held = std::make_shared<int>(1);
  const auto last = [this, held, loop = this->FLoop.get()](void*) {
    loop->Post([this, held] { this->Note(2); });
  };
  this->FLoop->Post([dropped = std::shared_ptr<void>(nullptr, last)] {});
  this->FLoop->Post(this->Noting(1));
  this->FLoop.reset();
  EXPECT_TRUE(this->FNotes.empty());
  EXPECT_EQ(held.use_count(), 2) << "the test's own and its deleter's";
}

REGISTER_TYPED_TEST_SUITE_P(TPostingContract, RunsWhatIsPostedInOrderAndOnlyWhenItTurns,
                            ProcessMessagesRunsAllThatIsPosted, AFunctionMayProcessTheRestItself,
                            WhatIsLeftRunsInALoopInsideOfTheFirstFunction,
                            WhatAFunctionHoldsGoesBehindItAndMayPostThen,
                            SynchronizeOnTheMainThreadRunsAtOnceAndPassesExceptions,
                            SynchronizeWaitsForTheMainThread,
                            SynchronizePassesAnExceptionToTheThreadThatWaits,
                            AThreadThatWaitsGoesOnWhenTheLoopGoes, ThreadsMayPostWhileTheLoopRuns,
                            WaitingEndsWhenThereIsSomethingToRun, WaitingEndsAfterItsTime,
                            WhatIsPostedButNeverRunIsFreed, WhatIsDroppedMayPostWithItsEnd);

}  // namespace kk
