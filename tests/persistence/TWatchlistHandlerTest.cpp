#include "TWatchlistHandlerTest.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

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
