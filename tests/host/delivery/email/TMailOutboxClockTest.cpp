#include <sys/resource.h>

#include <filesystem>

#include "TMailWorld.h"
#include "host/delivery/email/TMailOutbox.h"
#include "tests/support/TTestClock.h"

namespace kk {
namespace {

using enum TSmtpOutcome;

constexpr int64_t cHour = TDateTime::cMsPerHour;
constexpr int64_t cDay = 24 * cHour;

/// An outbox whose worker is the test, with one message that the server does not take for now.
class TMailOutboxClockTest : public TMailWorld {
 protected:
  TMailOutboxClockTest() {
    Restart();
    FOutbox->Add(TMailMessage::Build(Mail()), u"kein Anschluss");
  }
  void Restart() {
    FOutbox.reset();
    FOutbox = std::make_unique<TMailOutbox>(
        FFolder.File(u"out"), [this](const TMailMessage&, std::stop_token) -> TSmtpResult {
          ++FAttempts;
          if (FOnSend) FOnSend();
          return {FOutcome, u"später"};
        });
  }
  /// Somebody sets the clock.
  void SetForward(int64_t iMs) { FClock.Set(Now().PlusMs(iMs)); }
  /// Time goes by; answers how many attempts were made then.
  int After(int64_t iMs) {
    FClock.Advance(iMs);
    const int before = FAttempts;
    FOutbox->RunDue();
    return FAttempts - before;
  }
  size_t FileCount(const std::string& iExtension = ".mail") const {
    size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(FFolder.Path() + "/out")) {
      count += entry.path().extension() == iExtension ? 1 : 0;
    }
    return count;
  }
  /// How long it is tried from now on.
  int64_t LifeFromNow() {
    int64_t gone = 0;
    for (; FileCount() == 1 && gone < 3 * cDay; gone += TDateTime::cMsPerMinute) {
      After(TDateTime::cMsPerMinute);
    }
    return gone;
  }

  TTestClock FClock;
  int FAttempts = 0;
  std::function<void()> FOnSend;
  TSmtpOutcome FOutcome = soForNow;
  std::unique_ptr<TMailOutbox> FOutbox;
};

TEST_F(TMailOutboxClockTest, ADayForwardCostsNoMessage) {
  SetForward(cDay + cHour);
  EXPECT_EQ(After(4999), 0);
  FOutcome = soSent;
  EXPECT_EQ(After(1), 1);
  EXPECT_EQ(FileCount(), 0u);
}

TEST_F(TMailOutboxClockTest, ADayBackAndForthCostsNoMessage) {
  SetForward(-cDay);
  EXPECT_EQ(After(4999), 0);
  EXPECT_EQ(After(1), 1);
  SetForward(cDay);
  EXPECT_EQ(After(9999), 0);
  EXPECT_EQ(After(1), 1);
  EXPECT_EQ(FileCount(), 1u);
}

TEST_F(TMailOutboxClockTest, ADayForwardDuringAnAttemptCostsNoMessage) {
  FOnSend = [this] { SetForward(cDay + cHour); };
  EXPECT_EQ(After(5000), 1);
  FOnSend = nullptr;
  EXPECT_EQ(After(10000), 1);
  EXPECT_EQ(FileCount(), 1u);
}

TEST_F(TMailOutboxClockTest, HoweverTheClockIsSetTheMessageIsTriedForADay) {
  for (const int64_t set : {cDay, -2 * cDay, 5 * cHour, -3 * cHour, 4 * cDay}) {
    SetForward(set);
    After(cHour);
  }
  const int64_t life = LifeFromNow();
  EXPECT_LE(life, cDay - 5 * cHour);
  EXPECT_GE(life, cDay - 5 * cHour - 15 * TDateTime::cMsPerMinute);
}

TEST_F(TMailOutboxClockTest, WhatTheClockWasSetToIsKeptForTheNextRun) {
  SetForward(10 * cDay);
  EXPECT_EQ(After(5000), 1);
  Restart();
  EXPECT_EQ(After(9999), 0);
  EXPECT_EQ(After(1), 1);
  EXPECT_GE(LifeFromNow(), cDay - 16 * TDateTime::cMsPerMinute);
}

TEST_F(TMailOutboxClockTest, AClockThatIsRightOnlyAfterTheStartCostsNoMessage) {
  const TDateTime right = Now();
  FClock.Set(EncodeDateTime({1970, 1, 1, 0, 0, 0, 0}));  // of a machine without a battery
  Restart();
  EXPECT_EQ(After(0), 1);
  FClock.Set(right);
  EXPECT_EQ(After(9999), 0);
  EXPECT_EQ(After(1), 1);
  EXPECT_EQ(FileCount(), 1u);
}

TEST_F(TMailOutboxClockTest, AClockThatIsOnlyTrimmedChangesNothing) {
  for (int i = 0; i < 4; ++i) {
    SetForward(10);
    EXPECT_EQ(After(1000), 0);
  }
  EXPECT_EQ(After(960), 1);
}

// The undefined sanitizer needs handles of its own to look at objects.
#ifdef __SANITIZE_ADDRESS__
#define KK_NEEDS_NO_HANDLES GTEST_SKIP() << "the sanitizer needs file handles"
#else
#define KK_NEEDS_NO_HANDLES
#endif

// The process has no file handles left.
class TNoHandles {
 public:
  TNoHandles() {
    getrlimit(RLIMIT_NOFILE, &FBefore);
    const rlimit none{0, FBefore.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
  }
  ~TNoHandles() { setrlimit(RLIMIT_NOFILE, &FBefore); }

 private:
  rlimit FBefore{};
};

TEST_F(TMailOutboxClockTest, AFileThatCannotBeReadAtTheMomentIsLookedAtAgain) {
  KK_NEEDS_NO_HANDLES;
  {
    const TNoHandles noHandles;
    EXPECT_EQ(After(5000), 0);
  }
  EXPECT_EQ(FileCount(".damaged"), 0u);
  EXPECT_EQ(After(14 * TDateTime::cMsPerMinute), 0);
  EXPECT_EQ(After(TDateTime::cMsPerMinute), 1);
}

TEST_F(TMailOutboxClockTest, AFolderThatCannotBeReadAtTheStartIsLookedAtAgain) {
  KK_NEEDS_NO_HANDLES;
  Restart();
  {
    const TNoHandles noHandles;
    EXPECT_EQ(After(5000), 0);
  }
  EXPECT_EQ(After(0), 1);
}

}  // namespace
}  // namespace kk
