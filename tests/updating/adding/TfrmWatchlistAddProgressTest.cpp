#include "updating/adding/TfrmWatchlistAddProgress.h"

#include <gtest/gtest.h>

#include "host/controls/TForm.h"
#include "tests/support/TFakeSource.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TTestClock.h"
#include "tests/support/TTestMainLoop.h"
#include "tests/support/TTestModelRoot.h"

namespace kk {
namespace {

using TLines = std::vector<std::string>;

// The section, as far as the panel knows it.
class TSection : public TForm, public IAddProgressOwner {
 public:
  TSection() : TForm(nullptr, u"TSection") { Show(); }
  void SaveAll() override {
    Calls.push_back("SaveAll");
    if (SaveFails) throw Exception(u"Kein Platz");
  }
  void BuildCategoriesTree(bool iKeepSelection) override {
    Calls.push_back(iKeepSelection ? "BuildCategoriesTree(true)" : "BuildCategoriesTree(false)");
    if (BuildFails) throw Exception(u"Kein Baum");
  }
  void DoClose(TObject*) { Calls.push_back("Close"); }

  TLines Calls;
  bool SaveFails = false;
  bool BuildFails = false;
};

// A result that fails where it is told to.
class TFailingResult : public TFakeSearchResult {
 public:
  using TFakeSearchResult::TFakeSearchResult;
  TGuid GetId() const override {
    if (IdFails) throw Exception(u"Keine Id");
    return TFakeSearchResult::GetId();
  }
  TIntf<ISearchResult> Clone() const override {
    if (CloneFails) throw Exception(u"Keine Kopie");
    if (CloneIsEmpty) return {};
    return CloneHasOtherId ? FakeResult(GetName()) : TFakeSearchResult::Clone();
  }
  bool CloneHasOtherId = false;
  bool IdFails = false;
  bool CloneFails = false;
  bool CloneIsEmpty = false;
};

class TfrmWatchlistAddProgressTest : public testing::Test {
 protected:
  TfrmWatchlistAddProgressTest() {
    Books = &NewCategory(u"Bücher");
    Clocks = &NewCategory(u"Uhren");
    Panel.SetOnClose(TNotifyEvent::Of<&TSection::DoClose>(&Section));
  }
  ~TfrmWatchlistAddProgressTest() override {
    while (!Source->Requests().empty()) Source->Finish(false);
  }

  TWatchlistCategory& NewCategory(TStringView iName) {
    auto category = std::make_unique<TWatchlistCategory>();
    category->SetId(NewGuid());
    category->SetName(iName);
    category->LstPlugin().Add(std::make_unique<TWatchlistPlugin>(Source));
    return Root.RootCategories().Add(std::move(category));
  }
  // The one list that the section hands in on every call, with new contents.
  const TIntf<IInterfaceList>& Results(std::initializer_list<TIntf<ISearchResult>> iResults) {
    List->Clear();
    for (const auto& result : iResults) List->Add(result);
    return List;
  }
  static TIntf<IInterfaceList> ListOf(const TIntf<ISearchResult>& iResult) {
    const auto list = NewInterfaceList();
    list->Add(iResult);
    return list;
  }
  static TLines NamesIn(const TWatchlistCategory& iCategory) {
    TLines names;
    for (const TWatchlistPlugin* group : iCategory.LstPlugin()) {
      for (const TWatchlistItem* item : group->LstItem()) names.push_back(ToUtf8(item->GetName()));
    }
    return names;
  }
  TWatchlistItemUpdater& Updater() { return Integration.Updater(); }

  TLogRecorder Log;
  TTestClock Clock;
  TTestMainLoop Loop;
  TTestModelRoot Root;
  TSection Section;
  TPanel Neighbour{&Section, u"pnl"};
  TfrmWatchlistAddProgress Panel{Section, &Section};
  TPanel NeighbourInFront{&Section, u"pnlInFront"};
  TIntf<TFakeSource> Source = MakeIntf<TFakeSource>(u"Quelle");
  TWatchlistIntegration Integration{Source};
  TWatchlistCategory* Books = nullptr;
  TWatchlistCategory* Clocks = nullptr;
  TIntf<IInterfaceList> List = NewInterfaceList();
  TIntf<ISearchResult> A = FakeResult(u"a");
  TIntf<ISearchResult> B = FakeResult(u"b");
  TIntf<ISearchResult> C = FakeResult(u"c");
};

TEST_F(TfrmWatchlistAddProgressTest, HasItsTextsAndIsHiddenAtFirst) {
  EXPECT_EQ(Panel.Caption(), u"Hinzufügen");
  EXPECT_EQ(Panel.lblInfo.Caption(), u"Bitte warten - neue Suchergebnisse werden hinzugefügt.");
  EXPECT_EQ(Panel.btnCancel.Caption(), u"Abbrechen");
  EXPECT_EQ(Panel.Position(), TPosition::poOwnerFormCenter);
  EXPECT_FALSE(Panel.Visible());
  EXPECT_EQ(Panel.LstAddItem().GetCount(), 0);
}

TEST_F(TfrmWatchlistAddProgressTest, AnEmptyListOpensOneBlockAndNothingElse) {
  struct TBlocks {
    void AfterAdd(TObject*, int iAddCount) { Counts.push_back(iAddCount); }
    std::vector<int> Counts;
  } blocks;
  Updater().SetOnAfterAdd(TNotifyEventAfterAdd::Of<&TBlocks::AfterAdd>(&blocks));
  Panel.AddWithUpdate(Results({}), Integration, *Books);
  EXPECT_EQ(blocks.Counts, std::vector<int>{0});
  EXPECT_FALSE(Panel.Visible());
  EXPECT_EQ(Panel.LstAddItem().GetCount(), 0);
  EXPECT_TRUE(Section.Calls.empty());
}

TEST_F(TfrmWatchlistAddProgressTest, WhatIsQueuedAlreadyGoesFromTheList) {
  Updater().Add(A, {});
  Updater().Add(B, {});
  Panel.AddWithUpdate(Results({A, B}), Integration, *Books);
  EXPECT_EQ(List->GetCount(), 0);
  EXPECT_FALSE(Panel.Visible());
  EXPECT_EQ(Panel.LstAddItem().GetCount(), 0);
  Panel.AddWithUpdate(Results({A, C}), Integration, *Books);
  ASSERT_EQ(List->GetCount(), 1);
  EXPECT_EQ(List->Get(0), TIntf<IInterface>(C));
  EXPECT_EQ(Panel.prgrsbarAdd.Maximum(), 1);
}

TEST_F(TfrmWatchlistAddProgressTest, AnEmptyEntryGoesFromTheList) {
  Panel.AddWithUpdate(Results({A, {}}), Integration, *Books);
  EXPECT_EQ(List->GetCount(), 1);
}

TEST_F(TfrmWatchlistAddProgressTest, QueuesInFrontInTheOrderOfTheList) {
  const auto running = FakeResult(u"läuft");
  const auto waiting = FakeResult(u"wartet");
  Updater().Add(running, {});
  Updater().Add(waiting, {});
  Panel.AddWithUpdate(Results({A, B, C}), Integration, *Books);
  TLines order;
  while (!Source->Requests().empty()) {
    order.push_back(ToUtf8(Source->Requests().front().Clone->GetName()));
    Source->Finish(true);
  }
  EXPECT_EQ(order, (TLines{"läuft", "a", "b", "c", "wartet"}));
}

TEST_F(TfrmWatchlistAddProgressTest, ShowsThePanelInFrontBeforeTheFirstRequestStarts) {
  bool ran = false;
  Loop.Post([&] {
    ran = true;
    EXPECT_TRUE(Panel.Visible());
    EXPECT_EQ(Section.Children().back(), &Panel);
    EXPECT_TRUE(Source->Requests().empty());
    EXPECT_EQ(Updater().GetCount(), 2);
  });
  Panel.AddWithUpdate(Results({A, B}), Integration, *Books);
  EXPECT_TRUE(ran);
  EXPECT_EQ(Panel.prgrsbarAdd.Maximum(), 2);
  EXPECT_EQ(Panel.prgrsbarAdd.Progress(), 1);
  EXPECT_EQ(Panel.LstAddItem().GetCount(), 1);
  EXPECT_EQ(Source->Requests().size(), 1u);
}

TEST_F(TfrmWatchlistAddProgressTest, OfThreeResultsTheFailedOneDisappears) {
  Panel.AddWithUpdate(Results({A, B, C}), Integration, *Books);
  Source->Finish(true);
  EXPECT_EQ(Panel.prgrsbarAdd.Progress(), 2);
  EXPECT_TRUE(Section.Calls.empty());
  Source->Finish(false);
  EXPECT_EQ(Panel.prgrsbarAdd.Progress(), 3);
  Source->Finish(true);
  EXPECT_EQ(Panel.prgrsbarAdd.Progress(), 3);
  EXPECT_EQ(Panel.prgrsbarAdd.Maximum(), 3);
  EXPECT_EQ(NamesIn(*Books), (TLines{"a", "c"}));
  EXPECT_EQ(Section.Calls, (TLines{"SaveAll", "BuildCategoriesTree(true)", "Close"}));
  EXPECT_FALSE(Panel.Visible());
  EXPECT_EQ(Panel.LstAddItem().GetCount(), 0);
}

TEST_F(TfrmWatchlistAddProgressTest, TheItemHoldsACopyAndIsWhole) {
  Panel.AddWithUpdate(Results({A}), Integration, *Books);
  Clock.Advance(5000);
  const auto refreshed = FakeResult(u"a, frisch");
  Source->Finish(true, refreshed);
  const TLstWatchlistItem& items = Books->LstPlugin().GetItems(0).LstItem();
  ASSERT_EQ(items.GetCount(), 1);
  const TWatchlistItem& item = items.GetItems(0);
  EXPECT_EQ(item.GetName(), u"a, frisch");
  EXPECT_NE(item.SearchResult(), refreshed);
  EXPECT_EQ(item.SearchResultId(), A->GetId());
  EXPECT_EQ(item.SearchResult()->GetId(), A->GetId());
  EXPECT_EQ(item.ParentCategoryId(), Books->Id());
  EXPECT_EQ(item.LastUpdateDate(), Clock.Now());
  EXPECT_TRUE(Integration.ChangedItems());
  EXPECT_TRUE(Integration.ChangedSearchResults());
  EXPECT_EQ(Root.Notes(), TLines{"add a, frisch"});
}

TEST_F(TfrmWatchlistAddProgressTest, TheItemIsFoundByTheIdOfTheRefreshedResult) {
  const auto refreshed = MakeIntf<TFailingResult>(u"a");
  refreshed->CloneHasOtherId = true;
  Panel.AddWithUpdate(Results({A}), Integration, *Books);
  Source->Finish(true, refreshed);
  EXPECT_NE(Root.RootCategories().FindItemById(A->GetId()), nullptr);
}

TEST_F(TfrmWatchlistAddProgressTest, AFailedRefreshLeavesNoTrace) {
  Panel.AddWithUpdate(Results({A}), Integration, *Books);
  Log.Clear();
  Source->Finish(false);
  EXPECT_FALSE(Integration.IsChanged());
  EXPECT_EQ(Books->LstPlugin().GetCount(), 0) << "empty groups go before the save";
  EXPECT_EQ(Section.Calls, (TLines{"SaveAll", "BuildCategoriesTree(true)", "Close"}));
  EXPECT_EQ(Log.Lines().size(), 1u) << "only the queue's own line";
}

TEST_F(TfrmWatchlistAddProgressTest, TheListenerOfTheQueueComesFirstAndFindsNoItem) {
  struct TListener {
    void Finished(TObject*, const TIntf<ISearchResult>& iResult, bool) {
      Found = Root->RootCategories().FindItemById(iResult->GetId()) != nullptr;
      ++Count;
    }
    TTestModelRoot* Root;
    bool Found = true;
    int Count = 0;
  } listener{&Root};
  Updater().SetOnUpdateFinished(TNotifyEventSearchResult::Of<&TListener::Finished>(&listener));
  Panel.AddWithUpdate(Results({A}), Integration, *Books);
  Source->Finish(true);
  EXPECT_EQ(listener.Count, 1);
  EXPECT_FALSE(listener.Found);
  EXPECT_EQ(NamesIn(*Books), TLines{"a"});
}

TEST_F(TfrmWatchlistAddProgressTest, ASourceThatCannotRefreshIsThroughBeforeTheCallReturns) {
  const auto plain = MakeIntf<TFakeSource>(u"Plan", NewGuid(), TFakeAbilities{false, true});
  TWatchlistIntegration integration(plain);
  Books->LstPlugin().Add(std::make_unique<TWatchlistPlugin>(plain));
  Panel.AddWithUpdate(Results({A, B, C}), integration, *Books);
  EXPECT_EQ(NamesIn(*Books), (TLines{"a", "b", "c"}));
  EXPECT_FALSE(Panel.Visible());
  EXPECT_EQ(Section.Calls, (TLines{"SaveAll", "BuildCategoriesTree(true)", "Close"}));
}

TEST_F(TfrmWatchlistAddProgressTest, ACancelForgetsWhatIsStillUnderWay) {
  Panel.AddWithUpdate(Results({A, B, C}), Integration, *Books);
  Source->Finish(true);
  EXPECT_TRUE(Panel.btnCancel.Click());
  EXPECT_FALSE(Panel.Visible());
  EXPECT_EQ(Section.Calls, TLines{"Close"});
  Source->Finish(true);
  Source->Finish(true);
  EXPECT_EQ(NamesIn(*Books), TLines{"a"}) << "what was added before stays";
  EXPECT_TRUE(Integration.IsChanged()) << "and goes into the next save";
  EXPECT_EQ(Section.Calls, TLines{"Close"});
}

TEST_F(TfrmWatchlistAddProgressTest, AnEndBehindACancelClosesThePanelAgain) {
  Panel.AddWithUpdate(Results({A}), Integration, *Books);
  Panel.btnCancel.Click();
  Panel.Show();
  Source->Finish(true);
  EXPECT_FALSE(Panel.Visible());
  EXPECT_EQ(Section.Calls, (TLines{"Close", "Close"}));
  EXPECT_TRUE(NamesIn(*Books).empty());
}

TEST_F(TfrmWatchlistAddProgressTest, ACancelIsServedBetweenTwoResults) {
  Panel.AddWithUpdate(Results({A, B}), Integration, *Books);
  Loop.Post([&] { EXPECT_TRUE(Panel.btnCancel.Click()); });
  Source->Finish(true);
  EXPECT_FALSE(Panel.Visible());
  Source->Finish(true);
  EXPECT_EQ(NamesIn(*Books), TLines{"a"});
}

TEST_F(TfrmWatchlistAddProgressTest, TheGroupsOfACancelStayEmptyUntilTheNextAdd) {
  Panel.AddWithUpdate(Results({A}), Integration, *Books);
  Panel.btnCancel.Click();
  Source->Finish(true);
  EXPECT_EQ(Books->LstPlugin().GetCount(), 1);
  Panel.AddWithUpdate(Results({B}), Integration, *Clocks);
  Source->Finish(true);
  EXPECT_EQ(Books->LstPlugin().GetCount(), 0);
  EXPECT_EQ(NamesIn(*Clocks), TLines{"b"});
}

TEST_F(TfrmWatchlistAddProgressTest, ASecondAddWidensTheGauge) {
  Panel.AddWithUpdate(Results({A, B}), Integration, *Books);
  Source->Finish(true);
  Panel.AddWithUpdate(ListOf(C), Integration, *Clocks);
  EXPECT_EQ(Panel.prgrsbarAdd.Maximum(), 3);
  EXPECT_EQ(Panel.prgrsbarAdd.Progress(), 2);
  EXPECT_EQ(Panel.LstAddItem().GetCount(), 2);
}

// The section hands in one list on every call, with its contents replaced. What follows looks like
// mistakes and is required.
TEST_F(TfrmWatchlistAddProgressTest, ASecondAddToTheSameCategoryDoublesTheSharedList) {
  Panel.AddWithUpdate(Results({A}), Integration, *Books);
  Panel.AddWithUpdate(Results({B, C}), Integration, *Books);
  EXPECT_EQ(Panel.LstAddItem().GetCount(), 1);
  EXPECT_EQ(List->GetCount(), 4);
  while (!Source->Requests().empty()) Source->Finish(true);
  EXPECT_EQ(NamesIn(*Books), (TLines{"b", "c"})) << "a is in no list any more";
  EXPECT_EQ(List->GetCount(), 2) << "one copy of each stays";
  EXPECT_TRUE(Panel.Visible()) << "the batch does not empty by itself";
  EXPECT_TRUE(Section.Calls.empty());
  EXPECT_TRUE(Panel.btnCancel.Click());
  EXPECT_FALSE(Panel.Visible());
}

TEST_F(TfrmWatchlistAddProgressTest, ASecondAddToAnotherCategoryGoesToTheFirstOne) {
  Panel.AddWithUpdate(Results({A}), Integration, *Books);
  Panel.AddWithUpdate(Results({B}), Integration, *Clocks);
  EXPECT_EQ(Panel.LstAddItem().GetCount(), 2);
  while (!Source->Requests().empty()) Source->Finish(true);
  EXPECT_EQ(NamesIn(*Books), TLines{"b"});
  EXPECT_TRUE(NamesIn(*Clocks).empty());
}

TEST_F(TfrmWatchlistAddProgressTest, TheEndOfABatchThatIsNotTheLastSkipsTheRest) {
  Panel.AddWithUpdate(ListOf(A), Integration, *Books);
  Panel.AddWithUpdate(ListOf(B), Integration, *Clocks);
  const int turns = Loop.Turns();
  Source->Finish(true);
  EXPECT_EQ(Loop.Turns(), turns) << "the failure went to the queue's guard";
  EXPECT_FALSE(Log.DebugLines().empty());
  EXPECT_EQ(NamesIn(*Books), TLines{"a"});
  EXPECT_TRUE(Panel.Visible());
  Source->Finish(true);
  EXPECT_EQ(NamesIn(*Clocks), TLines{"b"});
  EXPECT_EQ(Section.Calls, (TLines{"SaveAll", "BuildCategoriesTree(true)", "Close"}));
}

TEST_F(TfrmWatchlistAddProgressTest, TheRangeFailureOfTheListIsNotGuardedHere) {
  Panel.AddWithUpdate(ListOf(A), Integration, *Books);
  Panel.AddWithUpdate(ListOf(B), Integration, *Clocks);
  EXPECT_THROW(Panel.DoUpdaterFinishedItem(nullptr, A, false), EListError);
}

TEST_F(TfrmWatchlistAddProgressTest, AResultOfNoBatchAddsNothingAndKeepsThePanelOpen) {
  Panel.AddWithUpdate(Results({A}), Integration, *Books);
  Panel.DoUpdaterFinishedItem(nullptr, B, true);
  EXPECT_TRUE(Log.DebugLines().empty()) << "nothing failed";
  EXPECT_TRUE(NamesIn(*Books).empty());
  EXPECT_TRUE(Panel.Visible());
  EXPECT_EQ(Panel.LstAddItem().GetCount(), 1);
}

TEST_F(TfrmWatchlistAddProgressTest, AGroupThatHasGoneTakesNoItem) {
  Panel.AddWithUpdate(Results({A}), Integration, *Books);
  Books->LstPlugin().Clear();
  Source->Finish(true);
  EXPECT_TRUE(Log.DebugLines().empty()) << "nothing failed";
  EXPECT_TRUE(NamesIn(*Books).empty());
  EXPECT_FALSE(Integration.IsChanged());
  EXPECT_EQ(Section.Calls, (TLines{"SaveAll", "BuildCategoriesTree(true)", "Close"}));
}

TEST_F(TfrmWatchlistAddProgressTest, ACategoryThatWasDeletedTakesNoItem) {
  Panel.AddWithUpdate(Results({A}), Integration, *Books);
  Root.RootCategories().DeleteCategory(*Books);
  Source->Finish(true);
  EXPECT_EQ(Root.RootCategories().FindItemById(A->GetId()), nullptr);
  EXPECT_EQ(Section.Calls, (TLines{"SaveAll", "BuildCategoriesTree(true)", "Close"}));
}

TEST_F(TfrmWatchlistAddProgressTest, ACategoryBelowAnotherTakesItems) {
  auto child = std::make_unique<TWatchlistCategory>();
  TWatchlistCategory& novels = Books->LstCategory().Add(std::move(child));
  novels.LstPlugin().Add(std::make_unique<TWatchlistPlugin>(Source));
  Panel.AddWithUpdate(Results({A}), Integration, novels);
  Source->Finish(true);
  EXPECT_EQ(NamesIn(novels), TLines{"a"});
}

TEST_F(TfrmWatchlistAddProgressTest, AnItemThatCannotBeMadeCountsAsDone) {
  const auto failing = MakeIntf<TFailingResult>(u"kaputt");
  Panel.AddWithUpdate(Results({A, B}), Integration, *Books);
  failing->CloneFails = true;
  Source->Finish(true, failing);
  EXPECT_TRUE(NamesIn(*Books).empty()) << "no item without a result stays behind";
  EXPECT_EQ(List->GetCount(), 1);
  Source->Finish(true);
  EXPECT_EQ(NamesIn(*Books), TLines{"b"});
  EXPECT_FALSE(Panel.Visible());
}

TEST_F(TfrmWatchlistAddProgressTest, AnEmptyCopyMakesNoItem) {
  const auto failing = MakeIntf<TFailingResult>(u"kaputt");
  failing->CloneIsEmpty = true;
  Panel.AddWithUpdate(Results({A}), Integration, *Books);
  Source->Finish(true, failing);
  EXPECT_TRUE(NamesIn(*Books).empty()) << "no item without a result stays behind";
  EXPECT_FALSE(Integration.IsChanged());
  EXPECT_FALSE(Panel.Visible());
}

TEST_F(TfrmWatchlistAddProgressTest, AFailedSaveStillRebuildsAndCloses) {
  Section.SaveFails = true;
  Panel.AddWithUpdate(Results({A}), Integration, *Books);
  Source->Finish(true);
  EXPECT_EQ(Section.Calls, (TLines{"SaveAll", "BuildCategoriesTree(true)", "Close"}));
  EXPECT_EQ(NamesIn(*Books), TLines{"a"});
}

TEST_F(TfrmWatchlistAddProgressTest, AFailedRebuildStillCloses) {
  Section.BuildFails = true;
  Panel.AddWithUpdate(Results({A}), Integration, *Books);
  Source->Finish(true);
  EXPECT_EQ(Section.Calls, (TLines{"SaveAll", "BuildCategoriesTree(true)", "Close"}));
  EXPECT_FALSE(Panel.Visible());
}

TEST_F(TfrmWatchlistAddProgressTest, AFailureWhileQueueingDoesNotBlockTheQueue) {
  const auto failing = MakeIntf<TFailingResult>(u"kaputt");
  failing->IdFails = true;
  EXPECT_THROW(Panel.AddWithUpdate(Results({failing, A}), Integration, *Books), Exception);
  EXPECT_FALSE(Panel.Visible());
  EXPECT_EQ(Source->Requests().size(), 1u) << "what was queued before goes to the source";
  Source->Finish(true);
  EXPECT_TRUE(NamesIn(*Books).empty());
}

TEST_F(TfrmWatchlistAddProgressTest, CanBeUsedAgainFromItsOwnEnd) {
  struct TAgain {
    void Close(TObject*) {
      if (Panel == nullptr) return;
      TfrmWatchlistAddProgress* panel = std::exchange(Panel, nullptr);
      panel->AddWithUpdate(List, *Integration, *Category);
    }
    TfrmWatchlistAddProgress* Panel;
    TIntf<IInterfaceList> List;
    TWatchlistIntegration* Integration;
    TWatchlistCategory* Category;
  } again{&Panel, ListOf(B), &Integration, Books};
  Panel.SetOnClose(TNotifyEvent::Of<&TAgain::Close>(&again));
  Panel.AddWithUpdate(Results({A}), Integration, *Books);
  Source->Finish(true);
  EXPECT_TRUE(Panel.Visible());
  EXPECT_EQ(Panel.prgrsbarAdd.Maximum(), 1);
  Source->Finish(true);
  EXPECT_FALSE(Panel.Visible());
  EXPECT_EQ(NamesIn(*Books), (TLines{"a", "b"}));
}

}  // namespace
}  // namespace kk
