#include <chrono>
#include <mutex>

#include "TPluginWorld.h"
#include "host/common/PlaySound.h"
#include "reminders/IRemindThread.h"

namespace kk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

// A sound output that notes what it was given.
class TRecordingPlayer : public ISoundPlayer {
 public:
  TRecordingPlayer() : FBefore(SetSoundPlayer(this)) {}
  ~TRecordingPlayer() override { SetSoundPlayer(FBefore); }
  bool Play(TStringView iFileName) override {
    const std::lock_guard lock(FMutex);
    FPlayed.push_back(ToUtf8(iFileName.substr(iFileName.rfind(u'/') + 1)));
    return true;
  }
  TLines Played() const {
    const std::lock_guard lock(FMutex);
    return FPlayed;
  }

 private:
  mutable std::mutex FMutex;
  TLines FPlayed;
  ISoundPlayer* FBefore;
};

// Notes the reminders of which the section hears.
class TDueRecorder : public TObject {
 public:
  void DoReminderDue(TObject*, TRemindItem& iItem) { Ids.push_back(iItem.Id()); }
  std::vector<TGuid> Ids;
};

// A host that knows nothing of IReminderHost.
class TPlainApplication : public TInterfaced<IApplication> {
 public:
  void SectionClosed() override {}
  bool ShowNotificationWindow(TForm*) override { return false; }
};

// Another factory, which starts nothing.
class TOtherThreads : public IRemindThreadFactory {
 public:
  TOtherThreads() : FBefore(SetRemindThreadFactory(this)) {}
  ~TOtherThreads() override { SetRemindThreadFactory(FBefore); }
  IRemindThread& StartThread(const TIntf<IApplication>&, TLstRemindItem&, TNotifyProcessRemindItem,
                             TNotifyEvent) override {
    throw Exception(u"Nein");
  }

 private:
  IRemindThreadFactory* FBefore;
};

// A source that tells whether a thread slept while it was asked for its results, and how many did
// when it was to save them.
class TLoadingSource : public TFakeSource {
 public:
  explicit TLoadingSource(const TTestClock& iClock) : TFakeSource(u"Börse"), FClock(iClock) {}
  TIntf<IInterfaceList> LoadSearchResults(TStream& iStream, bool iDecodeUTF8) override {
    ThreadSlept = FClock.WaitForSleepers(1, std::chrono::milliseconds(Patience));
    return TFakeSource::LoadSearchResults(iStream, iDecodeUTF8);
  }
  void SaveSearchResults(const IInterfaceList& iList, TStream& ioStream) override {
    SleepersAtSave = FClock.SleeperCount();
    TFakeSource::SaveSearchResults(iList, ioStream);
  }
  int Patience = 0;
  bool ThreadSlept = false;
  int SleepersAtSave = -1;

 private:
  const TTestClock& FClock;
};

class TRemindLifeCycleTest : public testing::Test, public TPluginWorld {
 protected:
  static TIntf<IApplication> Delivering() { return MakeIntf<TFakeApplication>(true); }
  static TIntf<IApplication> Silent() { return MakeIntf<TFakeApplication>(false); }

  // The end of the program; no thread sleeps longer than it has to.
  void Stop() {
    Clock.StopSleeping();
    Plugin->TerminateThreads();
    Plugin->Uninitialize();
    Plugin = nullptr;
  }
  // The program begins anew.
  void Start(const TIntf<IApplication>& iApplication) {
    if (!Plugin) {
      Plugin = MakeIntf<TPluginWatchlist>();
      for (const TIntf<TFakeSource>& source : {Auction, Shop, TIntf<TFakeSource>(Loading)}) {
        Plugin->GetIntegration()->AddIntegration(source);
      }
    }
    Clock.StartSleeping();
    Initialize(iApplication);
    Form().InitializeWithDelay();
    Form().SetOnReminderDue(TNotifyProcessRemindItem::Of<&TDueRecorder::DoReminderDue>(&Marks));
  }
  // Lets the thread work until it sleeps.
  void DeliverAll() {
    const auto last = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (Clock.SleeperCount() == 0 && std::chrono::steady_clock::now() < last) {
      Loop.ProcessMessages();
      std::this_thread::yield();
    }
    EXPECT_EQ(Clock.SleeperCount(), 1) << "the thread does not come to rest";
  }
  // A second later, when it has looked again.
  void DeliverInASecond() {
    DeliverAll();
    Clock.Advance(1000);
    DeliverAll();
  }
  TGuid AddReminder(TStringView iName, int iMinutes) {
    Folder.Write(iName, "RIFF");
    const TWatchlistItem& item = Item(Unassigned(), Auction, iName);
    Record(Auction).SetChangedItems(true);
    Record(Auction).SetChangedSearchResults(true);
    RemindBySound(item, Folder.File(iName), Now().PlusMs(iMinutes * TDateTime::cMsPerMinute));
    return item.SearchResultId();
  }
  // A list with three reminders that have elapsed while the program was closed, and one to come.
  void MakeList() {
    Start(Silent());
    First = AddReminder(u"eins.wav", -10);
    Second = AddReminder(u"zwei.wav", -30);
    AddReminder(u"spaeter.wav", 10);
    Third = AddReminder(u"drei.wav", -20);
    Stop();
  }
  // The sounds of the reminders in the list.
  static TLines Reminders() {
    TLines sounds;
    const TLstRemindItemSync::TReading reading(Handler()->LstRemind());
    for (int i = 0; i < Handler()->LstRemind().GetCount(); ++i) {
      const TGuid id = Handler()->LstRemind().GetItems(i).Id();
      sounds.push_back(ToUtf8(Tree().FindItemById(id)->GetName()));
    }
    return sounds;
  }

  TRecordingPlayer Player;
  TDueRecorder Marks;
  TIntf<TLoadingSource> Loading = MakeIntf<TLoadingSource>(Clock);
  TGuid First;
  TGuid Second;
  TGuid Third;
};

TEST_F(TRemindLifeCycleTest, ElapsedRemindersOfTheFileAreDeliveredInOrderAfterTheLoad) {
  MakeList();
  Start(Delivering());
  DeliverInASecond();
  EXPECT_THAT(Player.Played(), ElementsAre("eins.wav", "zwei.wav", "drei.wav"));
  EXPECT_THAT(Marks.Ids, ElementsAre(First, Second, Third));
  EXPECT_THAT(Reminders(), ElementsAre("spaeter.wav"));
  EXPECT_TRUE(Handler()->LstRemind().GetChanged());
  Clock.Advance(10 * TDateTime::cMsPerMinute);
  DeliverAll();
  EXPECT_THAT(Player.Played(), ElementsAre("eins.wav", "zwei.wav", "drei.wav", "spaeter.wav"));
  Stop();
}

TEST_F(TRemindLifeCycleTest, ThreadRunsBeforeTheFileIsLoaded) {
  Start(Silent());
  Handler()->LstIntegration().Add(Loading);
  Item(Unassigned(), Loading, u"Aktie");
  Record(Loading).SetChangedItems(true);
  Record(Loading).SetChangedSearchResults(true);
  Stop();
  Loading->Patience = 10000;
  Start(Delivering());
  EXPECT_TRUE(Loading->ThreadSlept);
  Stop();
}

TEST_F(TRemindLifeCycleTest, WhatWasDeliveredIsGoneFromTheFileAfterTheEnd) {
  MakeList();
  Start(Delivering());
  DeliverInASecond();
  Stop();
  Start(Silent());
  EXPECT_THAT(Reminders(), ElementsAre("spaeter.wav"));
  Stop();
}

TEST_F(TRemindLifeCycleTest, ReminderDeliveredBeforeTheProgramDiesUnsavedIsDeliveredAgain) {
  MakeList();
  const std::string file = Folder.Read(cWatchlistFileName);
  Start(Delivering());
  DeliverInASecond();
  EXPECT_EQ(Folder.Read(cWatchlistFileName), file) << "delivering saves nothing";
  Stop();
  Folder.Write(cWatchlistFileName, file);  // as if that end had not been
  Start(Delivering());
  DeliverInASecond();
  EXPECT_THAT(Player.Played(),
              ElementsAre("eins.wav", "zwei.wav", "drei.wav", "eins.wav", "zwei.wav", "drei.wav"));
  Stop();
}

TEST_F(TRemindLifeCycleTest, TerminateThreadsEndsTheDeliveryAndTheEndStillSaves) {
  MakeList();
  Start(Delivering());
  DeliverAll();
  Clock.StopSleeping();
  Plugin->TerminateThreads();
  const size_t played = Player.Played().size();
  AddReminder(u"danach.wav", -1);
  Loop.ProcessMessages();
  EXPECT_EQ(Player.Played().size(), played) << "nobody delivers any more";
  const TLines left = Reminders();
  EXPECT_THAT(left, Contains("danach.wav"));
  Plugin->Uninitialize();
  Plugin = nullptr;
  Start(Silent());
  EXPECT_EQ(Reminders(), left);
  Stop();
}

TEST_F(TRemindLifeCycleTest, UninitializeEndsTheThreadBeforeItSaves) {
  Plugin->GetIntegration()->AddIntegration(TIntf<IWatchlistIntegration>(Loading));
  Start(Delivering());
  AddReminder(u"danach.wav", 10);
  Item(Unassigned(), Loading, u"Aktie");
  Record(Loading).SetChangedItems(true);
  Record(Loading).SetChangedSearchResults(true);
  DeliverAll();
  const auto timer = Loop.StartTimer(1, [this] { Clock.Advance(1000); });
  Plugin->Uninitialize();
  Loop.StopTimer(timer);
  EXPECT_EQ(Loading->SleepersAtSave, 0);
  Plugin = nullptr;
  Start(Silent());
  EXPECT_THAT(Reminders(), ElementsAre("danach.wav"));
  Stop();
}

TEST_F(TRemindLifeCycleTest, ThreadOfTheRemindersDoesNotCount) {
  Start(Delivering());
  DeliverAll();
  EXPECT_EQ(Plugin->ThreadCount(), 0);
  Stop();
}

TEST_F(TRemindLifeCycleTest, SectionThatHasNotBegunYetDoesNotHoldADeliveryUp) {
  MakeList();
  Plugin = MakeIntf<TPluginWatchlist>();
  Plugin->GetIntegration()->AddIntegration(Auction);
  Clock.StartSleeping();
  Initialize(Delivering());
  Form().SetOnReminderDue(TNotifyProcessRemindItem::Of<&TDueRecorder::DoReminderDue>(&Marks));
  DeliverInASecond();
  EXPECT_THAT(Player.Played(), ElementsAre("eins.wav", "zwei.wav", "drei.wav"));
  EXPECT_THAT(Marks.Ids, IsEmpty());
  Stop();
}

// Who delivers.

TEST_F(TRemindLifeCycleTest, HostThatComesAndGoesKeepsItsReminders) {
  MakeList();
  const TOtherThreads other;
  const auto host = MakeIntf<TFakeApplication>(false);
  Start(host);
  EXPECT_EQ(host->Asked, 2) << "for its reminders, and for refreshes at the start";
  EXPECT_EQ(RemindThreadFactory(), nullptr);
  Clock.Advance(10000);
  Loop.ProcessMessages();
  EXPECT_EQ(Clock.SleeperCount(), 0) << "there is no thread";
  EXPECT_THAT(Reminders(), ElementsAre("eins.wav", "zwei.wav", "spaeter.wav", "drei.wav"));
  Plugin->Uninitialize();
  EXPECT_EQ(RemindThreadFactory(), &other) << "as it was before";
  EXPECT_THAT(Player.Played(), IsEmpty());
}

TEST_F(TRemindLifeCycleTest, HostThatSaysNothingDelivers) {
  MakeList();
  Start(MakeIntf<TPlainApplication>());
  EXPECT_NE(RemindThreadFactory(), nullptr);
  DeliverInASecond();
  EXPECT_THAT(Player.Played(), ElementsAre("eins.wav", "zwei.wav", "drei.wav"));
  Stop();
  EXPECT_EQ(RemindThreadFactory(), nullptr);
}

TEST_F(TRemindLifeCycleTest, PluginThatIsDroppedTakesItsThreadsAlong) {
  const TOtherThreads other;
  Start(Delivering());
  EXPECT_NE(RemindThreadFactory(), &other);
  Clock.StopSleeping();
  FreeHandler();
  Drop();
  EXPECT_EQ(RemindThreadFactory(), &other);
}

TEST_F(TRemindLifeCycleTest, FailedInitializeTakesItsThreadAlong) {
  class TFailingSource : public TFakeSource {
   public:
    TFailingSource() : TFakeSource(u"Kaputt") {}

   protected:
    bool QueryDelegated(const TGuid& iIid, void** oInterface) override {
      if (iIid == IID_WatchlistVisualization) throw Exception(u"Kein Fenster");
      return TFakeSource::QueryDelegated(iIid, oInterface);
    }
  };
  Plugin->GetIntegration()->AddIntegration(MakeIntf<TFailingSource>());
  EXPECT_THROW(Initialize(Delivering()), Exception);
  EXPECT_NE(RemindThreadFactory(), nullptr);
  Clock.StopSleeping();
  Plugin->Uninitialize();
  EXPECT_EQ(RemindThreadFactory(), nullptr);
  EXPECT_FALSE(Folder.Has(cWatchlistFileName));
}

}  // namespace
}  // namespace kk
