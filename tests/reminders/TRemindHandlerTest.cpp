#include "reminders/TRemindHandler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "reminders/TRemindDetailsSound.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TTestClock.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

using testing::ElementsAre;

class TFakeApplication : public TInterfaced<IApplication> {
 public:
  void SectionClosed() override {}
  bool ShowNotificationWindow(TForm*) override { return false; }
};

// A thread that exists in name only: the test lets it deliver and end.
class TFakeThreads : public IRemindThreadFactory, public IRemindThread, public TObject {
 public:
  TFakeThreads() : FBefore(SetRemindThreadFactory(this)) {}
  ~TFakeThreads() override { SetRemindThreadFactory(FBefore); }

  IRemindThread& StartThread(const TIntf<IApplication>& iApplication, TLstRemindItem& ioLstRemind,
                             TNotifyProcessRemindItem iOnProcessItem,
                             TNotifyEvent iOnTerminate) override {
    ++Starts;
    Application = iApplication;
    Lst = &ioLstRemind;
    OnProcessItem = iOnProcessItem;
    OnTerminate = iOnTerminate;
    return *this;
  }
  void Terminate() override {
    ++Terminates;
    if (OnTerminating) OnTerminating();
  }
  // Ends by itself, as on the main thread.
  void End() { OnTerminate(this); }

  int Starts = 0;
  int Terminates = 0;
  TIntf<IApplication> Application;
  TLstRemindItem* Lst = nullptr;
  TNotifyProcessRemindItem OnProcessItem;
  TNotifyEvent OnTerminate;
  std::function<void()> OnTerminating;

 private:
  IRemindThreadFactory* FBefore;
};

class TListener : public TObject {
 public:
  void Processed(TObject* iSender, TRemindItem& iItem) {
    Sender = iSender;
    Item = &iItem;
  }
  TObject* Sender = nullptr;
  TRemindItem* Item = nullptr;
};

class TRemindHandlerTest : public testing::Test {
 protected:
  TTestMainLoop FLoop;
  TFakeThreads FThreads;
  TRemindHandler FHandler;

  void EndAtOnce() {
    FThreads.OnTerminating = [this] { FLoop.Post([this] { FThreads.End(); }); };
  }
  ~TRemindHandlerTest() override { EndAtOnce(); }

  void AddReminder(const TGuid& iId = NewGuid()) {
    auto item = std::make_unique<TRemindItem>(iId);
    item->SetRemindTime(EncodeDateTime({2026, 1, 1}));
    item->SetRemindTypes({rtSound});
    item->LstDetails().Add(std::make_unique<TRemindDetailsSound>(u"a.wav"));
    FHandler.LstRemind().Add(std::move(item));
  }
};

TEST_F(TRemindHandlerTest, OwnsItsLiveList) {
  AddReminder();
  EXPECT_EQ(FHandler.LstRemind().Count(), 1);
  EXPECT_NE(FHandler.LstRemind().ExtractBySearchResultId(FHandler.LstRemind().First().Id()),
            nullptr);
}

TEST_F(TRemindHandlerTest, StartsTheThreadOnItsListWithTheApplication) {
  const TIntf<IApplication> application = MakeIntf<TFakeApplication>();
  FHandler.StartThread(application);
  EXPECT_EQ(FThreads.Starts, 1);
  EXPECT_TRUE(FThreads.Application == application);
  EXPECT_EQ(FThreads.Lst, &FHandler.LstRemind());
}

TEST_F(TRemindHandlerTest, StartsOneThreadOnly) {
  FHandler.StartThread({});
  FHandler.StartThread({});
  EXPECT_EQ(FThreads.Starts, 1);
}

TEST_F(TRemindHandlerTest, ASecondStartAfterTheEndStartsNothing) {
  FHandler.StartThread({});
  EndAtOnce();
  FHandler.EndThread();
  FHandler.StartThread({});
  EXPECT_EQ(FThreads.Starts, 1);
}

TEST_F(TRemindHandlerTest, WithoutAFactoryNothingStartsAndRemindersAreKept) {
  IRemindThreadFactory* factory = SetRemindThreadFactory(nullptr);
  EXPECT_EQ(factory, &FThreads);
  EXPECT_EQ(RemindThreadFactory(), nullptr);
  FHandler.StartThread({});
  AddReminder();
  FHandler.EndThread();
  EXPECT_EQ(FHandler.LstRemind().Count(), 1);
  SetRemindThreadFactory(factory);
  FHandler.StartThread({});
  EXPECT_EQ(FThreads.Starts, 1) << "the field stayed unset";
}

TEST_F(TRemindHandlerTest, EndThreadWithoutAThreadDoesNothing) {
  FHandler.EndThread();
  EXPECT_EQ(FThreads.Terminates, 0);
  EXPECT_EQ(FLoop.Turns(), 0);
}

TEST_F(TRemindHandlerTest, EndThreadProcessesMessagesUntilTheEndIsTold) {
  FHandler.StartThread({});
  int messages = 0;
  FThreads.OnTerminating = [&] {
    // The end comes some turns later, behind other messages of the main thread.
    FLoop.Post([&] {
      ++messages;
      FLoop.Post([&] {
        ++messages;
        FLoop.Post([&] { FThreads.End(); });
      });
    });
  };
  FHandler.EndThread();
  EXPECT_EQ(FThreads.Terminates, 1);
  EXPECT_EQ(messages, 2);
}

TEST_F(TRemindHandlerTest, EndThreadWaitsBetweenTheTurns) {
  FHandler.StartThread({});
  const auto timer = FLoop.StartTimer(20, [&] { FThreads.End(); });
  FHandler.EndThread();
  EXPECT_EQ(FLoop.Turns(), 40) << "20 times messages and 1 ms";
  FLoop.StopTimer(timer);
}

TEST_F(TRemindHandlerTest, EndThreadTakesEffectOnce) {
  FHandler.StartThread({});
  EndAtOnce();
  FHandler.EndThread();
  FHandler.EndThread();
  EXPECT_EQ(FThreads.Terminates, 1);
}

TEST_F(TRemindHandlerTest, AThreadThatEndedByItselfIsNotAskedAnyMore) {
  FHandler.StartThread({});
  FThreads.End();
  FHandler.EndThread();
  EXPECT_EQ(FThreads.Terminates, 0);
}

TEST_F(TRemindHandlerTest, WhatAMessageRaisesDoesNotEndTheWait) {
  FHandler.StartThread({});
  FThreads.OnTerminating = [&] {
    FLoop.Post([] { throw Exception(u"fremd"); });
    FLoop.Post([&] { FThreads.End(); });
  };
  const TLogRecorder log;
  FHandler.EndThread();
  EXPECT_THAT(log.DebugLines(), ElementsAre("debug TRemindHandler.EndThread: fremd"));
}

TEST_F(TRemindHandlerTest, ARealThreadThatWaitsForTheMainThreadCanEnd) {
  FHandler.StartThread({});
  bool delivered = false;
  std::thread thread;
  FThreads.OnTerminating = [&] {
    thread = std::thread([&] {
      FLoop.Synchronize([&] { delivered = true; });
      FLoop.Post([&] { FThreads.End(); });
    });
  };
  FHandler.EndThread();
  thread.join();
  EXPECT_TRUE(delivered);
}

TEST_F(TRemindHandlerTest, ADyingHandlerEndsItsThread) {
  EndAtOnce();
  {
    TRemindHandler mortal;
    mortal.StartThread({});
    EXPECT_EQ(FThreads.Terminates, 0);
  }
  EXPECT_EQ(FThreads.Terminates, 1);
}

TEST_F(TRemindHandlerTest, PassesADeliveredReminderOnWithItselfAsSender) {
  TListener listener;
  TRemindItem item(NewGuid());
  FHandler.StartThread({});
  FThreads.OnProcessItem(&FThreads, item);  // nobody listens yet
  FHandler.SetOnProcessElapsedItem(TNotifyProcessRemindItem::Of<&TListener::Processed>(&listener));
  EXPECT_TRUE(FHandler.OnProcessElapsedItem());
  FThreads.OnProcessItem(&FThreads, item);
  EXPECT_EQ(listener.Sender, &FHandler);
  EXPECT_EQ(listener.Item, &item);
}

TEST_F(TRemindHandlerTest, SavesAndCountsAsUnchangedThen) {
  AddReminder();
  TMemoryStream stream;
  FHandler.SaveToStream(stream);
  EXPECT_GT(stream.GetSize(), 0u);
  EXPECT_FALSE(FHandler.LstRemind().GetChanged());
  EXPECT_EQ(FHandler.LstRemind().Count(), 1);
}

TEST_F(TRemindHandlerTest, LoadsInPlaceOfWhatWasThereAndCountsAsUnchangedThen) {
  const TGuid id = NewGuid();
  AddReminder(id);
  TMemoryStream stream;
  FHandler.SaveToStream(stream);
  FHandler.LstRemind().Clear();
  AddReminder();
  AddReminder();
  stream.SetPosition(0);
  FHandler.LoadFromStream(stream, false);
  ASSERT_EQ(FHandler.LstRemind().Count(), 1);
  EXPECT_EQ(FHandler.LstRemind().First().Id(), id);
  EXPECT_FALSE(FHandler.LstRemind().GetChanged());
}

TEST_F(TRemindHandlerTest, AfterALoadTheFirstExtractOrDeleteCountsAsAChange) {
  AddReminder();
  TMemoryStream stream;
  FHandler.SaveToStream(stream);
  const auto load = [&] {
    stream.SetPosition(0);
    FHandler.LoadFromStream(stream, false);
    return FHandler.LstRemind().GetChanged();
  };
  EXPECT_FALSE(load());
  FHandler.LstRemind().DeleteBySearchResultId(NewGuid());
  EXPECT_TRUE(FHandler.LstRemind().GetChanged()) << "even of an id that isn't there";
  EXPECT_FALSE(load());
  std::unique_ptr<TRemindItem> item;
  EXPECT_TRUE(FHandler.LstRemind().ExtractFirstElapsedItem(item));
  EXPECT_TRUE(FHandler.LstRemind().GetChanged());
}

TEST_F(TRemindHandlerTest, ALoadThatFailsRaisesAndFreesTheLock) {
  AddReminder();
  TMemoryStream stream("<Items><Item>");
  EXPECT_THROW(FHandler.LoadFromStream(stream, false), EConvertError);
  EXPECT_EQ(FHandler.LstRemind().Count(), 0);
  EXPECT_TRUE(FHandler.LstRemind().GetChanged());
  std::thread([&] { FHandler.LstRemind().Clear(); }).join();
}

TEST_F(TRemindHandlerTest, AReminderThatFiredWithoutASaveIsStillInTheStream) {
  const TTestClock clock;
  AddReminder();
  TMemoryStream stream;
  FHandler.SaveToStream(stream);
  std::unique_ptr<TRemindItem> fired;
  ASSERT_TRUE(FHandler.LstRemind().ExtractFirstElapsedItem(fired));
  // The program dies here; the next one loads and fires again.
  TRemindHandler next;
  stream.SetPosition(0);
  next.LoadFromStream(stream, false);
  EXPECT_TRUE(next.LstRemind().HasElapsedItems());
}

}  // namespace
}  // namespace kk
