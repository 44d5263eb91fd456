#include "persistence/TWatchlistHandler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "TFileWorld.h"
#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"
#include "host/contract/ISearchLocationIntegration.h"
#include "host/contract/TCommonPlugin.h"
#include "host/contract/TPluginIntegration.h"
#include "host/contract/TPlugins.h"
#include "persistence/IWatchlistHandlerSite.h"
#include "reminders/TRemindHandler.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr TGuid cSource = GuidLiteral("{5E000000-0000-0000-0000-000000000001}");
constexpr char cResults[] = "{5E000000-0000-0000-0000-000000000001}";
constexpr char cItems[] = "items{5E000000-0000-0000-0000-000000000001}";
constexpr char cCatchAll[] = "<Keiner Kategorie zugewiesen>\n";

class TFakeColumns : public TInterfaced<IAdditionalColumns> {
 public:
  TIntf<IInterfaceList> GetColumns() const override { return NewInterfaceList(); }
};

class TFakeApplication : public TInterfaced<IApplication> {
 public:
  void SectionClosed() override {}
  bool ShowNotificationWindow(TForm*) override { return false; }
};

template <class... Interfaces>
class TFakePluginBase : public TCommonPlugin<Interfaces...> {
 public:
  explicit TFakePluginBase(const TGuid& iId) : FId(iId) {}
  TGuid GetId() const override { return FId; }
  TGroupIdentification GetGroup() const override { return TGroupIdentification{1}; }
  TPluginAttributes GetAttributes() const override { return 0; }
  TString GetSignature() const override { return {}; }
  TString GetDescription() const override { return {}; }
  TString GetLongDescription() const override { return {}; }

 private:
  TGuid FId;
};
using TFakePlugin = TFakePluginBase<IPlugin>;

// A plug-in that extends the views of others, and notes for which it was asked.
class TExtendingPlugin : public TFakePluginBase<IPlugin, ISearchLocationIntegration> {
 public:
  using TFakePluginBase::TFakePluginBase;
  TIntf<IInterfaceList> GetIntegrations(const TIntf<IIntegrationInfo>& iInfo) override {
    Asked.push_back(iInfo->GetId());
    const TIntf<IInterfaceList> list = NewInterfaceList();
    list->Add(Extension);
    return list;
  }
  std::vector<TGuid> Asked;
  TIntf<IInterface> Extension = MakeIntf<TFakeColumns>();
};

class TFakeSite : public IWatchlistHandlerSite {
 public:
  TFakeSite() : FBefore(SetWatchlistHandlerSite(this)) {}
  ~TFakeSite() override { SetWatchlistHandlerSite(FBefore); }
  void WaitForThreads(const TLstWatchlistIntegration& iIntegrations) override {
    ++Waits;
    Integrations = &iIntegrations;
    if (OnWait) OnWait();
  }
  TIntf<IAdditionalColumns> CreateAdditionalColumns() override { return Columns; }

  int Waits = 0;
  std::function<void()> OnWait;
  const TLstWatchlistIntegration* Integrations = nullptr;
  TIntf<IAdditionalColumns> Columns = MakeIntf<TFakeColumns>();

 private:
  IWatchlistHandlerSite* FBefore;
};

// A thread that ends with the next turn of the loop after it was asked to.
class TFakeThreads : public IRemindThreadFactory, public IRemindThread {
 public:
  TFakeThreads() : FBefore(SetRemindThreadFactory(this)) {}
  ~TFakeThreads() override { SetRemindThreadFactory(FBefore); }
  IRemindThread& StartThread(const TIntf<IApplication>& iApplication, TLstRemindItem&,
                             TNotifyProcessRemindItem, TNotifyEvent iOnTerminate) override {
    ++Started;
    Application = iApplication;
    FOnTerminate = iOnTerminate;
    return *this;
  }
  void Terminate() override {
    MainLoop().Post([this] {
      ++Ended;
      FOnTerminate(nullptr);
    });
  }
  int Started = 0;
  int Ended = 0;
  TIntf<IApplication> Application;

 private:
  TNotifyEvent FOnTerminate;
  IRemindThreadFactory* FBefore;
};

class TListener : public TObject {
 public:
  void DoAdd(TObject* Sender) { Note("add", Sender); }
  void DoDelete(TObject* Sender) { Note("delete", Sender); }
  void DoFail(TObject*) { throw Exception(u"Zuhörer kaputt"); }
  TNotifyEvent Add() { return TNotifyEvent::Of<&TListener::DoAdd>(this); }
  TNotifyEvent Delete() { return TNotifyEvent::Of<&TListener::DoDelete>(this); }
  TNotifyEvent Fail() { return TNotifyEvent::Of<&TListener::DoFail>(this); }
  std::vector<std::string> Notes;

 private:
  void Note(const std::string& iWhat, TObject* iSender) {
    Notes.push_back(iWhat + " " + ToUtf8(dynamic_cast<TWatchlistItem&>(*iSender).GetName()));
  }
};

class TWatchlistHandlerTest : public testing::Test {
 protected:
  TWatchlistHandlerTest() { CreateHandler(FPlugin); }
  ~TWatchlistHandlerTest() override {
    FreeHandler();
    FreeBuriedCategories();
    Plugins().Clear();
  }
  TString FileName() const { return Folder.File(cWatchlistFileName); }
  TLstWatchlistCategory& Tree() { return Handler()->LstCategory(); }
  TIntf<TFakeSource> AddSource(TFakeAbilities iAbilities = {}) {
    const auto source = MakeIntf<TFakeSource>(u"Quelle", cSource, iAbilities);
    Handler()->LstIntegration().Add(source);
    return source;
  }
  // "A" with an article, and everything flagged.
  void FillTree(const TIntf<TFakeSource>& iSource) {
    AddItem(AddCategory(Tree(), u"A"), iSource, u"Uhr");
    FlagAll();
  }
  void FlagAll() {
    for (TWatchlistIntegration* record : Handler()->LstIntegration()) {
      record->SetChangedItems(true);
      record->SetChangedSearchResults(true);
    }
    Handler()->LstRemind().SetChanged(true);
  }
  // A new run of the program on the same file.
  TIntf<TFakeSource> Restart() {
    FreeHandler();
    CreateHandler(FPlugin);
    return AddSource();
  }
  void BlockWriting() { MakeHostFolder(Folder.File(u"watchlist.dat.tmp/x")); }

  TTempFolder Folder{true};
  TLogRecorder Log;
  TTestMainLoop Loop;
  TTestClock Clock;
  TFakeThreads Threads;
  TIntf<IPlugin> FPlugin = MakeIntf<TFakePlugin>(cPluginId);
  TIntf<IApplication> Application = MakeIntf<TFakeApplication>();
};

TEST_F(TWatchlistHandlerTest, CreatingItTwiceKeepsTheFirst) {
  TWatchlistHandler* first = Handler();
  CreateHandler(MakeIntf<TFakePlugin>(NewGuid()));
  EXPECT_EQ(Handler(), first);
  EXPECT_EQ(Handler()->Plugin(), FPlugin);
}

TEST_F(TWatchlistHandlerTest, BeforeAndAfterThereIsNone) {
  EXPECT_TRUE(HasWatchlistModelRoot());
  FreeHandler();
  EXPECT_EQ(Handler(), nullptr);
  EXPECT_FALSE(HasWatchlistModelRoot());
  FreeHandler();  // without effect
  EXPECT_EQ(Handler(), nullptr);
}

TEST_F(TWatchlistHandlerTest, WithoutAHandlerTheModelCanNotAskForItsRoot) {
  FreeHandler();
  TLstWatchlistCategory tree(true);
  EXPECT_THROW(tree.DeleteEmptyPlugins(), Exception);
}

TEST_F(TWatchlistHandlerTest, ItIsTheRootOfTheModel) {
  const auto source = AddSource();
  AddCategory(Tree(), u"A").LstPlugin().Add(std::make_unique<TWatchlistPlugin>(source));
  // On the root's list, whatever list is asked.
  EXPECT_TRUE(TLstWatchlistCategory(true).DeleteEmptyPlugins());
  EXPECT_EQ(Outline(Tree()), "A\n");
}

TEST_F(TWatchlistHandlerTest, TheFileLiesInTheDataFolder) {
  EXPECT_EQ(Handler()->GetFileName(), FileName());
  EXPECT_EQ(Handler()->FileName(), FileName());
}

TEST_F(TWatchlistHandlerTest, TheItemsCountIsZeroWithTheCatchAllAlone) {
  Handler()->LoadFromFile();
  EXPECT_EQ(Outline(Tree()), cCatchAll);
  EXPECT_EQ(Handler()->GetItemCount(), 0);
}

TEST_F(TWatchlistHandlerTest, CountsTheItemsOfAllDepths) {
  const auto source = AddSource();
  TWatchlistCategory& category = AddCategory(Tree(), u"A");
  AddItem(category, source, u"Uhr");
  AddItem(AddCategory(category.LstCategory(), u"A1"), source, u"Lampe");
  AddItem(AddCategory(Tree(), u"B"), source, u"Buch");
  EXPECT_EQ(Handler()->GetItemCount(), 3);
}

TEST_F(TWatchlistHandlerTest, FindsTheSameResultWithinOneSourceAlone) {
  const auto source = AddSource();
  const TWatchlistItem& item =
      AddItem(AddCategory(AddCategory(Tree(), u"A").LstCategory(), u"A1"), source, u"Uhr");
  const TIntf<ISearchResult> same = FakeResult(u"Uhr");
  EXPECT_TRUE(Handler()->HasSearchResult(cSource, same));
  EXPECT_EQ(Handler()->FindSameSearchResult(cSource, same), item.SearchResult());
  EXPECT_FALSE(Handler()->HasSearchResult(NewGuid(), same));
  EXPECT_FALSE(Handler()->FindSameSearchResult(cSource, FakeResult(u"Lampe")));
}

TEST_F(TWatchlistHandlerTest, ListenersHearOfItems) {
  TListener listener;
  Handler()->AddNotificationItem(listener.Fail(), listener.Fail());
  Handler()->AddNotificationItem(listener.Add(), listener.Delete());
  const auto source = AddSource();
  TWatchlistCategory& category = AddCategory(Tree(), u"A");
  AddItem(category, source, u"Uhr");
  category.LstPlugin().Clear();
  // The one that fails does not keep the other from hearing.
  EXPECT_THAT(listener.Notes, ElementsAre("add Uhr", "delete Uhr"));

  Handler()->RemoveNotificationItem(listener.Add(), listener.Delete());
  AddItem(category, source, u"Lampe");
  category.LstPlugin().Clear();
  EXPECT_EQ(listener.Notes.size(), 2u);
}

TEST_F(TWatchlistHandlerTest, ItsEndTellsNobodyOfItems) {
  TListener listener;
  const auto source = AddSource();
  FillTree(source);
  Handler()->AddNotificationItem(listener.Add(), listener.Delete());
  FreeHandler();
  EXPECT_THAT(listener.Notes, IsEmpty());
}

TEST_F(TWatchlistHandlerTest, WhatItLeavesIsFreedOnDemandOnceThereIsNoHandler) {
  const auto result = MakeIntf<TFakeSearchResult>(u"Uhr");
  const int64_t alive = LiveObjectCount();
  {
    const auto source = AddSource();
    TWatchlistItem& item = AddItem(AddCategory(Tree(), u"A"), source, u"Uhr");
    item.SetSearchResult(result);
  }
  FreeBuriedCategories();  // without effect: there is a handler
  EXPECT_EQ(Outline(Tree()), "A\n  [Quelle]\n    Uhr\n");
  FreeHandler();
  EXPECT_GT(LiveObjectCount(), alive);
  FreeBuriedCategories();
  EXPECT_EQ(LiveObjectCount(), alive);
  FreeBuriedCategories();  // nothing is left
}

TEST_F(TWatchlistHandlerTest, InitializingStartsTheRemindersAndLoads) {
  Handler()->Initialize(Application);
  EXPECT_EQ(Threads.Started, 1);
  EXPECT_EQ(Threads.Application, Application);
  EXPECT_EQ(Outline(Tree()), cCatchAll);
}

TEST_F(TWatchlistHandlerTest, EachViewGetsTheColumnsAndWhatOtherPluginsAdd) {
  const TFakeSite site;
  const auto source = AddSource();
  const auto extending = MakeIntf<TExtendingPlugin>(NewGuid());
  const auto self = MakeIntf<TExtendingPlugin>(cPluginId);
  Plugins().Add(self);
  Plugins().Add(MakeIntf<TFakePlugin>(NewGuid()));  // extends nothing
  Plugins().Add(extending);
  Handler()->Initialize(Application);
  EXPECT_THAT(source->Extensions(),
              ElementsAre(TIntf<IInterface>(site.Columns), extending->Extension));
  EXPECT_THAT(extending->Asked, ElementsAre(cSource));
  EXPECT_THAT(self->Asked, IsEmpty());
  EXPECT_EQ(Handler()->AdditionalColumns(), site.Columns);
}

TEST_F(TWatchlistHandlerTest, WithoutColumnsTheViewsGetNone) {
  const auto source = AddSource();
  Handler()->Initialize(Application);
  EXPECT_FALSE(Handler()->AdditionalColumns());
  EXPECT_THAT(source->Extensions(), IsEmpty());
}

TEST_F(TWatchlistHandlerTest, ASourceWithoutAViewIsPassedOver) {
  const TFakeSite site;
  const auto source = AddSource({.Visualization = false});
  Plugins().Add(MakeIntf<TExtendingPlugin>(NewGuid()));
  Handler()->Initialize(Application);
  EXPECT_THAT(source->Extensions(), IsEmpty());
}

TEST_F(TWatchlistHandlerTest, TheClickOnTheColumnIsAnEventLikeAnyOther) {
  EXPECT_FALSE(Handler()->OnAdditionalColumnEditClick());
  TListener listener;
  Handler()->SetOnAdditionalColumnEditClick(listener.Add());
  EXPECT_EQ(Handler()->OnAdditionalColumnEditClick(), listener.Add());
}

TEST_F(TWatchlistHandlerTest, UninitializingEndsWaitsSavesAndForgetsTheListeners) {
  TFakeSite site;
  TListener listener;
  const auto source = AddSource();
  Handler()->Initialize(Application);
  AddItem(Tree().GetItems(0), source, u"Uhr");
  FlagAll();
  Handler()->AddNotificationItem(listener.Add(), listener.Delete());
  site.OnWait = [&] {
    EXPECT_EQ(Threads.Ended, 1);
    EXPECT_TRUE(Handler()->AdditionalColumns());
    EXPECT_FALSE(FileExists(FileName()));
  };
  Handler()->Uninitialize();
  EXPECT_EQ(site.Waits, 1);
  EXPECT_EQ(site.Integrations, &Handler()->LstIntegration());
  EXPECT_FALSE(Handler()->AdditionalColumns());
  EXPECT_TRUE(FileExists(FileName()));
  AddItem(Tree().GetItems(0), source, u"Lampe");
  EXPECT_THAT(listener.Notes, IsEmpty());
}

TEST_F(TWatchlistHandlerTest, AWaitWindowThatFailsDoesNotCostTheData) {
  TFakeSite site;
  FillTree(AddSource());
  site.OnWait = [] { throw Exception(u"Fenster kaputt"); };
  Handler()->Uninitialize();
  EXPECT_THAT(ReadArchive(FileName()).at(cResults), HasSubstr("Uhr"));
}

TEST_F(TWatchlistHandlerTest, WithoutAWindowItWaitsForRunningUpdatesByItself) {
  const auto source = AddSource();
  TWatchlistItemUpdater& updater = Handler()->LstIntegration().GetItems(0).Updater();
  updater.Add(FakeResult(u"Uhr"), {});
  updater.Add(FakeResult(u"Lampe"), {});
  Loop.Post([&] { source->Finish(true); });
  Handler()->Uninitialize();
  EXPECT_FALSE(updater.IsActive());
  EXPECT_THAT(source->Requests(), IsEmpty());  // the second was not even started
}

TEST_F(TWatchlistHandlerTest, ARunningUpdateIsCountedAndTheReminderThreadIsNot) {
  const auto source = AddSource();
  Handler()->Initialize(Application);
  EXPECT_EQ(Handler()->ThreadCount(), 0);
  Handler()->LstIntegration().Add(MakeIntf<TFakeSource>(u"Zweite"));
  Handler()->LstIntegration().GetItems(0).Updater().Add(FakeResult(u"Uhr"), {});
  EXPECT_EQ(Handler()->ThreadCount(), 1);
  source->Finish(true);
  EXPECT_EQ(Handler()->ThreadCount(), 0);
}

TEST_F(TWatchlistHandlerTest, TerminatingStopsTheUpdatersWithoutWaiting) {
  const auto source = AddSource();
  Handler()->Initialize(Application);
  TWatchlistItemUpdater& updater = Handler()->LstIntegration().GetItems(0).Updater();
  updater.Add(FakeResult(u"Uhr"), {});
  updater.Add(FakeResult(u"Lampe"), {});
  Handler()->TerminateThreads();
  EXPECT_EQ(Threads.Ended, 1);
  EXPECT_TRUE(updater.IsActive());
  source->Finish(true);
  EXPECT_THAT(source->Requests(), IsEmpty());
}

TEST_F(TWatchlistHandlerTest, ASaveAndALoadBringEverythingBack) {
  FillTree(AddSource());
  const TGuid id = NewGuid();
  Handler()->LstRemind().Add(SoundReminder(id, Clock.Now()));
  Handler()->SaveAll();
  EXPECT_FALSE(Handler()->LastSaveFailed());
  EXPECT_FALSE(Handler()->LstIntegration().GetItems(0).IsChanged());
  EXPECT_FALSE(Handler()->LstRemind().GetChanged());

  Restart();
  Handler()->LoadFromFile();
  EXPECT_EQ(Outline(Tree()), "A\n  [Quelle]\n    Uhr\n");
  EXPECT_EQ(Handler()->GetLstRemind().IndexOfSearchResultId(id), 0);
  EXPECT_FALSE(Handler()->LstRemind().GetChanged());
}

// A source that looks, while it saves, whether the reminders can be changed meanwhile.
class TLookingSource : public TFakeSource {
 public:
  using TFakeSource::TFakeSource;
  void SaveSearchResults(const IInterfaceList& iList, TStream& ioStream) override {
    EXPECT_THROW(Handler()->LstRemind().BeginWrite(), Exception);
    ++Looks;
    TFakeSource::SaveSearchResults(iList, ioStream);
  }
  int Looks = 0;
};

TEST_F(TWatchlistHandlerTest, NobodyChangesTheRemindersWhileTheyAreSaved) {
  const auto source = MakeIntf<TLookingSource>(u"Quelle", cSource);
  Handler()->LstIntegration().Add(source);
  FillTree(source);
  Handler()->SaveToFile();
  source->SetSaveFailure(u"kaputt");
  FlagAll();
  Handler()->SaveToFile();
  EXPECT_EQ(source->Looks, 2);
  // Free again, also after the failure.
  Handler()->LstRemind().BeginWrite();
  Handler()->LstRemind().EndWrite();
}

TEST_F(TWatchlistHandlerTest, ALoadReplacesTheRemindersAndForgetsAllFlags) {
  // The entries of this source are not in the file, and its flags are cleared all the same.
  AddSource();
  FlagAll();
  Handler()->LstRemind().Add(SoundReminder(NewGuid(), Clock.Now()));
  Handler()->LoadFromFile();
  EXPECT_EQ(Handler()->LstRemind().GetCount(), 0);
  EXPECT_FALSE(Handler()->LstRemind().GetChanged());
  EXPECT_FALSE(Handler()->LstIntegration().GetItems(0).IsChanged());
}

TEST_F(TWatchlistHandlerTest, RemindersReadBeforeAFailureAreLive) {
  FillTree(AddSource());
  Handler()->GetRemindHandler().LstRemind().Add(SoundReminder(NewGuid(), Clock.Now()));
  Handler()->SaveToFile();
  Restart()->SetLoadFailure(u"kaputt");
  Handler()->Initialize(Application);
  EXPECT_EQ(Outline(Tree()), cCatchAll);
  EXPECT_EQ(Handler()->RemindHandler().LstRemind().GetCount(), 1);
}

TEST_F(TWatchlistHandlerTest, AFileThatCanNotBeLoadedIsPutAsideBeforeAnythingWritesOverIt) {
  Folder.Write(cWatchlistFileName, "beschädigt");
  Handler()->LoadFromFile();
  EXPECT_EQ(Outline(Tree()), cCatchAll);
  EXPECT_EQ(Folder.Read(cWatchlistFileName), "beschädigt");
  EXPECT_EQ(Folder.Read(u"watchlist.dat.2026-11-20-183000"), "beschädigt");
  // Once is enough.
  Clock.Advance(60'000);
  Tree().Clear();
  Handler()->LoadFromFile();
  EXPECT_EQ(Folder.Names().size(), 2u);
  // And no number of saves touches the copy.
  for (int i = 0; i < 3; ++i) Handler()->SaveToFile();
  EXPECT_EQ(Folder.Read(u"watchlist.dat.2026-11-20-183000"), "beschädigt");
}

TEST_F(TWatchlistHandlerTest, AFileThatIsNotThereIsNotPutAside) {
  Handler()->LoadFromFile();
  EXPECT_THAT(Folder.Names(), IsEmpty());
}

TEST_F(TWatchlistHandlerTest, ASourceThatFailsToLoadDoesNotCostTheCategories) {
  FillTree(AddSource());
  Handler()->SaveToFile();
  const std::string whole = Folder.Read(cWatchlistFileName);
  Restart()->SetLoadFailure(u"kaputt");
  Handler()->LoadFromFile();
  for (int i = 0; i < 3; ++i) Handler()->SaveToFile();
  EXPECT_EQ(Folder.Read(u"watchlist.dat.2026-11-20-183000"), whole);
}

TEST_F(TWatchlistHandlerTest, AFailedSaveForgetsAsRequiredThatThereWasSomethingToSave) {
  FillTree(AddSource());
  BlockWriting();
  Handler()->SaveToFile();
  EXPECT_TRUE(Handler()->LastSaveFailed());
  EXPECT_FALSE(Handler()->LstIntegration().GetItems(0).IsChanged());
  EXPECT_FALSE(Handler()->LstRemind().GetChanged());
  EXPECT_EQ(Outline(Tree()), "A\n  [Quelle]\n    Uhr\n");  // the data stay in memory
}

TEST_F(TWatchlistHandlerTest, TheLastGoodStateOutlivesTheSavesAfterAFailedOne) {
  FillTree(AddSource());
  Handler()->SaveToFile();
  const std::string good = Folder.Read(cWatchlistFileName);
  BlockWriting();
  Handler()->SaveToFile();
  EXPECT_TRUE(Handler()->LastSaveFailed());
  EXPECT_FALSE(FileExists(FileName()));

  // The disk is well again. These saves write only what changed since, and soon over the backup.
  std::filesystem::remove_all(Folder.Path() + "/watchlist.dat.tmp");
  for (int i = 0; i < 3; ++i) Handler()->SaveToFile();
  EXPECT_FALSE(Handler()->LastSaveFailed());
  EXPECT_EQ(ReadArchive(FileName()).count(cItems), 0u);
  EXPECT_EQ(Folder.Read(u"watchlist.da~.2026-11-20-183000"), good);
}

TEST_F(TWatchlistHandlerTest, ADataFolderThatCanNotBeMadeIsASaveThatFailed) {
  Folder.Write(u"Datei", "");
  const TString inFile = Folder.File(u"Datei/Ordner");
  SetHostFolders({inFile, inFile, inFile, inFile, inFile});
  Handler()->SaveToFile();
  EXPECT_TRUE(Handler()->LastSaveFailed());
  ASSERT_EQ(Log.Lines().size(), 1u);
  EXPECT_THAT(Log.Lines()[0], HasSubstr("error WatchlistHandler: Datei konnte nicht gespeichert "
                                        "werden (watchlist.dat). Fehlermeldung: "));
}

TEST_F(TWatchlistHandlerTest, SavingCategoriesOnlyHasNoEffectAsRequired) {
  AddCategory(Tree(), u"A");
  Handler()->SaveToFile();
  const std::string before = Folder.Read(cWatchlistFileName);
  AddCategory(Tree(), u"B");
  Handler()->SaveCategoriesOnly();
  EXPECT_EQ(Folder.Read(cWatchlistFileName), before);
}

TEST_F(TWatchlistHandlerTest, TheMobileExportSaysThatItIsNotBuilt) {
  Handler()->SaveAllForMobileExport(Folder.File(u"mobil.xml"));
  EXPECT_THAT(Log.Lines(), ElementsAre("error WatchlistHandler: Der Export für die mobile "
                                       "Anwendung ist noch nicht gebaut."));
  EXPECT_THAT(Folder.Names(), IsEmpty());
}

TEST_F(TWatchlistHandlerTest, MakesABackupByTheSaversRule) {
  Handler()->MakeBackup();
  EXPECT_THAT(Folder.Names(), IsEmpty());
  Folder.Write(cWatchlistFileName, "neu");
  Folder.Write(u"watchlist.da~", "alt");
  Handler()->MakeBackup();
  EXPECT_THAT(Folder.Names(), ElementsAre("watchlist.da~"));
  EXPECT_EQ(Folder.Read(u"watchlist.da~"), "neu");
}

TEST_F(TWatchlistHandlerTest, HandsOutAllStreamsOfTheFile) {
  TLstStreamForCompression streams(true);
  Handler()->GetAllStreamsInFile(streams);
  EXPECT_EQ(streams.GetCount(), 0);
  AddCategory(Tree(), u"A");
  Handler()->SaveToFile();
  Handler()->GetAllStreamsInFile(streams);
  EXPECT_EQ(streams.GetCount(), 2);
  EXPECT_EQ(streams.IndexOfName(u"version"), 0);
}

TEST_F(TWatchlistHandlerTest, AnUpdateThatRunsAtItsEndIsWaitedForBesideAWholeHandler) {
  const auto source = AddSource();
  Handler()->LstIntegration().GetItems(0).Updater().Add(FakeResult(u"Uhr"), {});
  bool sawHandler = false;
  Loop.Post([&] {
    sawHandler = Handler() != nullptr && Handler()->ThreadCount() == 0;
    source->Finish(true);
  });
  FreeHandler();
  EXPECT_TRUE(sawHandler);
}

}  // namespace
}  // namespace kk
