#include "host/base/WithCleanup.h"

#include <gtest/gtest.h>

#include "tests/support/TLogRecorder.h"

namespace kk {
namespace {

/// What happened, and what passed on.
std::string OutcomeOf(bool iWorkFails, bool iCleanupFails) {
  std::string told;
  try {
    WithCleanup(
        u"Platz",
        [&] {
          told += "work ";
          if (iWorkFails) throw Exception(u"Arbeit");
        },
        [&] {
          told += "cleanup ";
          if (iCleanupFails) throw Exception(u"Aufräumen");
        });
  } catch (const Exception& e) {
    told += ToUtf8(e.Message());
  }
  return told;
}

TEST(WithCleanup, RunsTheCleanUpBehindTheWork) {
  EXPECT_EQ(OutcomeOf(false, false), "work cleanup ");
}

TEST(WithCleanup, RunsTheCleanUpBehindAFailureThatPassesOn) {
  EXPECT_EQ(OutcomeOf(true, false), "work cleanup Arbeit");
}

TEST(WithCleanup, AFailureOfTheCleanUpPassesOnBehindGoodWork) {
  EXPECT_EQ(OutcomeOf(false, true), "work cleanup Aufräumen");
}

TEST(WithCleanup, OfTwoFailuresTheFirstPassesOnAndTheOtherIsLogged) {
  TLogRecorder log;
  EXPECT_EQ(OutcomeOf(true, true), "work cleanup Arbeit");
  EXPECT_EQ(log.DebugLines(), std::vector<std::string>{"debug Platz: Aufräumen"});
}

}  // namespace
}  // namespace kk
