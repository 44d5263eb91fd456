#include "host/base/TMainLoop.h"

#include <gtest/gtest.h>

#include <thread>

#include "host/base/Exception.h"
#include "tests/support/PostingContract.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

/// The loop of the tests keeps to what it stands in for.
struct TTestLoopWorld {
  std::unique_ptr<TPostingMainLoop> NewLoop() { return std::make_unique<TTestMainLoop>(); }
  void Turn(TPostingMainLoop& ioLoop) {
    ioLoop.WaitForMessage(1);
    ioLoop.ProcessMessages();
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Test, TPostingContract, TTestLoopWorld);

TEST(MainLoop, RaisesWhereThereIsNone) {
  ASSERT_FALSE(HasMainLoop());
  try {
    MainLoop();
    FAIL();
  } catch (const Exception& e) {
    EXPECT_EQ(e.Message(), u"Es gibt keine Hauptschleife");
  }
  AssertMainThread();
}

TEST(MainLoop, IsTheInstalledOne) {
  TTestMainLoop outer;
  EXPECT_TRUE(HasMainLoop());
  EXPECT_EQ(&MainLoop(), &outer);
  EXPECT_EQ(SetMainLoop(nullptr), &outer);
  EXPECT_FALSE(HasMainLoop());
  EXPECT_EQ(SetMainLoop(&outer), nullptr);
}

TEST(AssertMainThread, IsContentOnTheMainThread) {
  const TTestMainLoop loop;
  AssertMainThread();
}

#ifndef NDEBUG
TEST(AssertMainThreadDeathTest, EndsTheProgramOnAnyOtherThread) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  EXPECT_DEATH(
      {
        const TTestMainLoop loop;
        std::thread([] { AssertMainThread(); }).join();
      },
      "IsMainThread");
}
#endif

}  // namespace
}  // namespace kk
