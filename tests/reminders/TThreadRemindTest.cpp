#include "reminders/TThreadRemind.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <atomic>
#include <future>
#include <map>

#include "TThreadWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int64_t cHour = TDateTime::cMsPerHour;

class TThreadRemindTest : public testing::Test, public TThreadWorld {
 protected:
  void Processed(TObject* iSender, TRemindItem& iItem) {
    EXPECT_EQ(iSender, &Handler);
    EXPECT_TRUE(Loop.IsMainThread());
    EXPECT_EQ(Lst().IndexOfSearchResultId(iItem.Id()), -1) << "it has left the list already";
    Witness.Note("view");
  }
  void Listen() {
    Handler.SetOnProcessElapsedItem(
        TNotifyProcessRemindItem::Of<&TThreadRemindTest::Processed>(this));
  }
};

TEST_F(TThreadRemindTest, FiresAtTheFirstLookBehindItsTimeAndNotBefore) {
  Add(2500);
  Start();
  UntilAsleep();
  NextPoll();
  NextPoll();
  EXPECT_THAT(Witness.Notes(), IsEmpty()) << "2 s have gone by";
  NextPoll();
  EXPECT_THAT(Witness.Notes(), ElementsAre("notifier Uhr"));
  EXPECT_EQ(Lst().Count(), 0);
}

TEST_F(TThreadRemindTest, FiresAReminderThatIsDueExactlyNow) {
  Add(0);
  Start();
  UntilAsleep();
  EXPECT_THAT(Witness.Notes(), ElementsAre("notifier Uhr"));
}

TEST_F(TThreadRemindTest, OneMillisecondIsTooEarly) {
  Add(1001);
  Start();
  UntilAsleep();
  NextPoll();
  EXPECT_THAT(Witness.Notes(), IsEmpty());
  NextPoll();
  EXPECT_THAT(Witness.Notes(), ElementsAre("notifier Uhr"));
}

TEST_F(TThreadRemindTest, AReminderThatIsAddedWithATimeInThePastFiresAtTheNextLook) {
  Start();
  UntilAsleep();
  Add(-cHour);
  Loop.ProcessMessages();
  EXPECT_THAT(Witness.Notes(), IsEmpty()) << "nothing wakes the thread";
  NextPoll();
  EXPECT_THAT(Witness.Notes(), ElementsAre("notifier Uhr"));
}

RC_GTEST_PROP(TThreadRemind, IsNeverEarlyAndNeverMoreThanASecondLate, ()) {
  const auto offsets = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 5000));
  TThreadWorld world;
  std::map<std::string, TDateTime> due;
  std::atomic<int> outside{0};
  world.Notifier.During = [&] {
    const int64_t late = world.Clock.Now().Ms() - due.at(ToUtf8(world.Notifier.Last.Caption)).Ms();
    if (late < 0 || late > 1000) ++outside;
  };
  for (size_t i = 0; i < offsets.size(); ++i) {
    due[std::to_string(i)] = world.Clock.Now().PlusMs(offsets[i]);
    world.Add(offsets[i], IntToStr(static_cast<int64_t>(i)));
  }
  world.Start();
  world.UntilAsleep();
  for (int second = 0; second < 5; ++second) world.NextPoll();
  RC_ASSERT(outside == 0);
  RC_ASSERT(world.Witness.Notes().size() == offsets.size());
}

TEST_F(TThreadRemindTest, AThousandThatElapsedFireInTheOrderOfTheListWithoutAPause) {
  TLines expected;
  TLstRemindItem loaded(true);
  for (int i = 0; i < 1000; ++i) {
    auto item = Reminder(Window(IntToStr(i)));
    // The later in the list, the earlier it was due.
    item->SetRemindTime(Clock.Now().PlusMs(-1000 * i));
    loaded.Add(std::move(item));
    expected.push_back("notifier " + std::to_string(i));
  }
  Start();
  Lst().Append(loaded, true);
  Until([&] { return Witness.Notes().size() == expected.size() || Clock.SleeperCount() == 1; });
  if (Witness.Notes().size() < expected.size()) NextPoll();  // it had looked before the hand-over
  EXPECT_EQ(Witness.Notes(), expected);
  EXPECT_LE(Clock.SteadyMs(), 1000);
  EXPECT_TRUE(Lst().GetChanged());
}

TEST_F(TThreadRemindTest, TellsTheSectionOnTheMainThreadBeforeDelivery) {
  Listen();
  Add(0);
  Start();
  UntilAsleep();
  EXPECT_THAT(Witness.Notes(), ElementsAre("view", "notifier Uhr"));
}

TEST_F(TThreadRemindTest, PlaysAndMailsOnItsOwnThreadAndShowsWindowsOnTheMainOne) {
  const auto note = [this] { Witness.Note(Loop.IsMainThread() ? "main" : "own"); };
  SoundOutput.During = Mail.During = Notifier.During = note;
  Lst().Add(Reminder(Sound(), EMail(), Window()));
  Start();
  UntilAsleep();
  EXPECT_THAT(Witness.Notes(), ElementsAre("sound a.wav", "own", "mail ich@example.org", "own",
                                           "notifier Uhr", "main"));
}

TEST_F(TThreadRemindTest, ASoundThatFailsDoesNotKeepTheNextRemindersBack) {
  Lst().Add(Reminder(MissingSound()));
  Add(0);
  Start();
  UntilAsleep();
  EXPECT_THAT(Witness.Notes(), ElementsAre("notifier Uhr"));
  EXPECT_EQ(Lst().Count(), 0) << "what failed is not tried again";
}

TEST_F(TThreadRemindTest, LooksWithoutMarkingTheListAsChanged) {
  Add(cHour);
  Lst().SetChanged(false);
  Start();
  UntilAsleep();
  NextPoll();
  EXPECT_FALSE(Lst().GetChanged());
}

TEST_F(TThreadRemindTest, TheListIsFreeWhileAReminderIsDelivered) {
  std::promise<void> goOn;
  SoundOutput.During = [&] { goOn.get_future().wait(); };
  Lst().Add(Reminder(Sound()));
  Start();
  Until([&] { return !Witness.Notes().empty(); });
  const TGuid id = Add(cHour);
  EXPECT_EQ(Lst().Count(), 1);
  Lst().DeleteBySearchResultId(id);
  goOn.set_value();
  UntilAsleep();
}

// Jumps of the clock.

TEST_F(TThreadRemindTest, WhatBecameDueByAJumpForwardFiresOnceAtTheNextLook) {
  Add(cHour);
  Start();
  UntilAsleep();
  Clock.Set(Clock.Now().PlusMs(cHour));
  NextPoll();
  EXPECT_THAT(Witness.Notes(), ElementsAre("notifier Uhr"));
  Clock.Set(Clock.Now().PlusMs(-cHour));
  NextPoll();
  Clock.Set(Clock.Now().PlusMs(2 * cHour));
  NextPoll();
  EXPECT_EQ(Witness.Notes().size(), 1u) << "nothing fires twice";
}

TEST_F(TThreadRemindTest, AJumpBackwardMakesNothingEarlyAndDoesNotLengthenThePause) {
  Add(1000);
  Start();
  UntilAsleep();
  Clock.Set(Clock.Now().PlusMs(-cHour));
  NextPoll();
  NextPoll();
  EXPECT_THAT(Witness.Notes(), IsEmpty());
  Clock.Set(Clock.Now().PlusMs(cHour));
  NextPoll();
  EXPECT_THAT(Witness.Notes(), ElementsAre("notifier Uhr"));
}

TEST_F(TThreadRemindTest, WhatBecameDueWhileTheMachineSleptFiresOnce) {
  Add(5000);
  Add(30000, u"zweite");
  Start();
  UntilAsleep();
  Clock.Advance(60000);
  UntilAsleep();
  EXPECT_THAT(Witness.Notes(), ElementsAre("notifier Uhr", "notifier zweite"));
  NextPoll();
  EXPECT_EQ(Witness.Notes().size(), 2u);
}

// The end.

TEST_F(TThreadRemindTest, EndsWhileItWaitsForTheMainThread) {
  Listen();
  Lst().Add(Reminder(Sound(), Window()));
  Start();
  // The main thread turns no loop: the thread waits with its first word to the section.
  while (!Log.Contains("info Watchlist-Reminder: Melde Erinnerung")) std::this_thread::yield();
  Clock.StopSleeping();
  Handler.EndThread();
  EXPECT_THAT(Witness.Notes(), ElementsAre("view")) << "what has not begun is left undone";
  EXPECT_EQ(Lst().Count(), 0);
  EXPECT_TRUE(Lst().GetChanged());
}

TEST_F(TThreadRemindTest, ASecondStartAfterTheEndStartsNothing) {
  Start();
  End();
  Start();
  EXPECT_EQ(Factory.Starts, 1);
  Add(0);
  End();
  EXPECT_EQ(Lst().Count(), 1);
}

TEST_F(TThreadRemindTest, LetsGoOfTheApplicationOnTheMainThreadAtItsEnd) {
  Start();
  Host = nullptr;
  UntilAsleep();
  EXPECT_THAT(Witness.Notes(), IsEmpty());
  End();
  EXPECT_THAT(Witness.Notes(), ElementsAre("host freed"));
}

// A list that does something of its own at some point.
class TTrickyList : public TLstRemindItem {
 public:
  TTrickyList() : TLstRemindItem(true) {}
  bool HasElapsedItems() const override {
    if (OnHas) return OnHas();
    return TLstRemindItem::HasElapsedItems();
  }
  bool ExtractFirstElapsedItem(std::unique_ptr<TRemindItem>& oItem) override {
    const bool done = TLstRemindItem::ExtractFirstElapsedItem(oItem);
    if (OnExtracted) OnExtracted();
    return done;
  }
  std::function<bool()> OnHas;
  std::function<void()> OnExtracted;
};

// Details that tell when they go.
class TMortalDetails final : public TRemindDetails<TMortalDetails> {
 public:
  static constexpr const char16_t* cClassName = u"TMortalDetails";
  TMortalDetails() = default;
  explicit TMortalDetails(TWitness& ioWitness) : FWitness(&ioWitness) {}
  ~TMortalDetails() override {
    if (FWitness != nullptr) FWitness->Note("freed");
  }
  std::tuple<> Strings() const { return {}; }

 private:
  TWitness* FWitness = nullptr;
};

class TThreadRemindOnItsOwnTest : public testing::Test, public TThreadWorld {
 protected:
  ~TThreadRemindOnItsOwnTest() override { EndAlone(); }

  void StartAlone() {
    FThread = &TThreadRemind::Create(
        Host, FList, {}, TNotifyEvent::Of<&TThreadRemindOnItsOwnTest::Terminated>(this));
  }
  void EndAlone() {
    if (FThread == nullptr) return;
    FThread->Terminate();
    Clock.StopSleeping();
    Until([this] { return FThread == nullptr; });
  }
  void Terminated(TObject* iSender) {
    EXPECT_TRUE(Loop.IsMainThread());
    EXPECT_EQ(iSender, FThread);
    Witness.Note("terminated");
    FThread = nullptr;
  }

  TTrickyList FList;
  TThreadRemind* FThread = nullptr;
};

TEST_F(TThreadRemindOnItsOwnTest, TellsItsEndOnTheMainThreadWhenThePauseIsOver) {
  StartAlone();
  UntilAsleep();
  Host = nullptr;
  FThread->Terminate();
  Clock.Advance(999);
  Loop.ProcessMessages();
  EXPECT_EQ(Clock.SleeperCount(), 1) << "nothing wakes the thread before its time";
  EXPECT_THAT(Witness.Notes(), IsEmpty());
  Clock.Advance(1);
  Until([this] { return FThread == nullptr; });
  EXPECT_THAT(Witness.Notes(), ElementsAre("host freed", "terminated"));
}

TEST_F(TThreadRemindOnItsOwnTest, FreesTheReminderBehindItsDelivery) {
  FList.Add(Reminder(std::make_unique<TMortalDetails>(Witness), Sound()));
  StartAlone();
  UntilAsleep();
  EXPECT_THAT(Witness.Notes(), ElementsAre("sound a.wav", "freed"));
}

// A clock that does something of its own when a thread sleeps on it.
class TTrickyClock : public IClock {
 public:
  TTrickyClock() : FBefore(SetClock(this)) {}
  ~TTrickyClock() override { SetClock(FBefore); }
  TDateTime Now() const override { return FBefore->Now(); }
  void Sleep(int iMilliseconds) const override { OnSleep(iMilliseconds); }
  std::function<void(int)> OnSleep;

 private:
  IClock* FBefore;
};

TEST_F(TThreadRemindOnItsOwnTest, AnEndThatComesWithTheYieldLeavesTheListAlone) {
  TTrickyClock clock;
  std::promise<void> started;
  clock.OnSleep = [&, wait = started.get_future().share()](int iMilliseconds) {
    EXPECT_EQ(iMilliseconds, 0) << "no pause behind the end";
    wait.wait();
    FThread->Terminate();
  };
  std::atomic<int> looks{0};
  FList.OnHas = [&] { return ++looks > 0; };
  StartAlone();
  started.set_value();
  Until([this] { return FThread == nullptr; });
  EXPECT_EQ(looks, 0);
}

TEST_F(TThreadRemindOnItsOwnTest, AnEndThatComesWhileNothingIsDueIsNotFollowedByAPause) {
  std::promise<void> started;
  FList.OnHas = [&, wait = started.get_future().share()] {
    wait.wait();
    FThread->Terminate();
    return false;
  };
  StartAlone();
  started.set_value();
  Until([this] { return FThread == nullptr; });
  EXPECT_EQ(Clock.SteadyMs(), 0);
}

TEST_F(TThreadRemindOnItsOwnTest, AReminderThatWasTakenOutWhenTheEndComesIsLost) {
  FList.Add(Reminder(std::make_unique<TMortalDetails>(Witness), Sound()));
  std::promise<void> started;
  FList.OnExtracted = [&, wait = started.get_future().share()] {
    wait.wait();
    FThread->Terminate();
  };
  StartAlone();
  started.set_value();
  Until([this] { return FThread == nullptr; });
  EXPECT_THAT(Witness.Notes(), ElementsAre("freed", "terminated")) << "undelivered, as required";
  EXPECT_THAT(Log.Lines(), IsEmpty());
  EXPECT_EQ(FList.Count(), 0) << "the next save no longer holds it";
}

TEST_F(TThreadRemindOnItsOwnTest, AReminderThatSomebodyElseRemovedMeanwhileEndsThePassHarmlessly) {
  std::atomic<int> looks{0};
  FList.OnHas = [&] { return ++looks == 1; };
  StartAlone();
  UntilAsleep();
  EXPECT_EQ(looks, 2) << "the next pass follows at once";
  EXPECT_THAT(Log.Lines(), IsEmpty());
}

TEST_F(TThreadRemindOnItsOwnTest, WhatEscapesAPassIsSwallowedAndTheLoopGoesOn) {
  std::atomic<int> looks{0};
  FList.OnHas = [&]() -> bool {
    switch (++looks) {
      case 1:
        throw Exception(u"kaputt");
      case 2:
        throw 42;  // of no class that the system knows
      default:
        return FList.TLstRemindItem::HasElapsedItems();
    }
  };
  FList.Add(Reminder(Sound()));
  StartAlone();
  UntilAsleep();
  EXPECT_THAT(Witness.Notes(), ElementsAre("sound a.wav"));
  EXPECT_THAT(Log.Lines(), ElementsAre("info Watchlist-Reminder: Melde Erinnerung",
                                       "info Watchlist-Reminder (Sound): Melde..."));
  EXPECT_THAT(Log.DebugLines(), ElementsAre("debug TThreadRemind.Execute: kaputt",
                                            "debug TThreadRemind.Execute: Fremde Ausnahme"));
}

TEST_F(TThreadRemindOnItsOwnTest, AReminderIsFreedAlsoIfItsDeliveryFails) {
  FList.Add(Reminder(std::make_unique<TMortalDetails>(Witness)));
  StartAlone();
  UntilAsleep();
  EXPECT_THAT(Witness.Notes(), ElementsAre("freed"));
  EXPECT_TRUE(Log.Contains("error Watchlist-Reminder: Unbekannte Erinnerungsart: TMortalDetails"));
}

TEST(TThreadRemind, ALoopThatGoesBeforeTheEndWasToldTakesTheThreadAlong) {
  TRemindWorld world;
  TLstRemindItem list(true);
  {
    TTestMainLoop loop;
    TThreadRemind& thread = TThreadRemind::Create(world.Host, list, {}, {});
    thread.Terminate();
    world.Clock.StopSleeping();
    while (loop.PostedCount() == 0) std::this_thread::yield();
    world.Host = nullptr;
    EXPECT_THAT(world.Witness.Notes(), IsEmpty());
  }
  EXPECT_THAT(world.Witness.Notes(), ElementsAre("host freed"));
}

TEST(TThreadRemind, NeedsNobodyWhoListensToItsEnd) {
  TRemindWorld world;
  TLstRemindItem list(true);
  TTestMainLoop loop;
  TThreadRemind::Create(world.Host, list, {}, {}).Terminate();
  world.Clock.StopSleeping();
  while (loop.PostedCount() == 0) std::this_thread::yield();
  world.Host = nullptr;
  loop.ProcessMessages();
  EXPECT_THAT(world.Witness.Notes(), ElementsAre("host freed"));
}

}  // namespace
}  // namespace kk
