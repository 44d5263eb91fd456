#include "TTreeWorld.h"

namespace kk {
namespace {

// What a selection in the tree does to the other panes.
class TWatchlistCategoryTreePanesTest : public TTreeTest {
 protected:
  TWatchlistCategoryTreePanesTest() {
    Item(Books, Auction, u"Lexikon");
    Item(Books, Shop, u"Faust");
    Item(Books, Shop, u"Atlas");
    Item(Albums, Shop, u"Help");
    Build();
  }
  void Start(const TObject& iObject) {
    GoTo(iObject);
    Panes.Take();
    Auction->ViewCalls().clear();
    Shop->ViewCalls().clear();
  }
  static const TLines cBooksShown;

  TWatchlistCategory& Books = Category(u"Bücher");
  TWatchlistCategory& Albums = Category(u"Alben");
  TWatchlistCategory& Empty = Category(u"leer");
};

const TLines TWatchlistCategoryTreePanesTest::cBooksShown = {
    "Category Bücher +", "HideAll", "BeginAdd", "Show Auktion", "Show Laden", "EndAdd", "Restore"};

TEST_F(TWatchlistCategoryTreePanesTest, ACategoryShowsATabForEachOfItsGroups) {
  GoTo(Books);
  EXPECT_EQ(Panes.Take(), cBooksShown);
  EXPECT_EQ(Auction->ViewCalls(), TLines{"SetResults 1"});
  EXPECT_EQ(Shop->ViewCalls(), TLines{"SetResults 2"});
  EXPECT_EQ(Pane->CurrentCategory(), &Books);
}

TEST_F(TWatchlistCategoryTreePanesTest, NeverTheGroupsOfItsChildren) {
  TWatchlistCategory& novels = Category(u"Romane", &Empty);
  Item(novels, Shop, u"Faust");
  Build();
  GoTo(Empty);
  EXPECT_EQ(Panes.Take(), (TLines{"Category leer +", "HideAll", "Restore"}));
  EXPECT_EQ(Shop->ViewCalls(), TLines{});
}

TEST_F(TWatchlistCategoryTreePanesTest, ASourceWithoutAListHasNoTab) {
  const auto blind =
      MakeIntf<TFakeSource>(u"Blind", NewGuid(), TFakeAbilities{.Visualization = false});
  Item(Albums, blind, u"Help");
  Build();
  GoTo(Albums);
  EXPECT_EQ(Panes.Take(),
            (TLines{"Category Alben +", "HideAll", "BeginAdd", "Show Laden", "EndAdd", "Restore"}));
}

TEST_F(TWatchlistCategoryTreePanesTest, ACategoryWithoutGroupsHidesAllTabs) {
  Start(Books);
  GoTo(Empty);
  EXPECT_EQ(Panes.Take(), (TLines{"Category leer", "HideAll", "Restore"}));
  EXPECT_EQ(Pane->CurrentCategory(), &Empty);
}

TEST_F(TWatchlistCategoryTreePanesTest, NoFocusHidesAllTabs) {
  Start(Books);
  View().SetFocusedNode(nullptr);
  EXPECT_EQ(Panes.Take(), (TLines{"Category none", "HideAll"}));
  EXPECT_EQ(Pane->CurrentCategory(), nullptr);
}

TEST_F(TWatchlistCategoryTreePanesTest, AnEmptyNodeHidesAllTabs) {
  Start(Books);
  View().SetFocusedNode(&View().AddChild(nullptr, nullptr));
  EXPECT_EQ(Panes.Take(), (TLines{"Category none +", "HideAll"}))
      << "a search for none finds the empty node, which can refresh the whole tree";
}

TEST_F(TWatchlistCategoryTreePanesTest, AGroupShowsItsCategoryAndSelectsItsTab) {
  GoTo(Group(Books, Shop));
  TLines calls = cBooksShown;
  calls.push_back("Select Laden");
  EXPECT_EQ(Panes.Take(), calls);
}

TEST_F(TWatchlistCategoryTreePanesTest, AGroupOfAnotherCategorySwitchesToThat) {
  Start(Books);
  GoTo(Group(Albums, Shop));
  EXPECT_EQ(Panes.Take(), (TLines{"Category Alben +", "HideAll", "BeginAdd", "Show Laden", "EndAdd",
                                  "Restore", "Select Laden"}));
  EXPECT_EQ(Shop->ViewCalls(), TLines{"SetResults 1"});
}

TEST_F(TWatchlistCategoryTreePanesTest, AnItemLeavesTabsAndListsAsTheyAre) {
  TWatchlistItem& item = Group(Books, Shop).LstItem().GetItems(0);
  Start(Albums);
  GoTo(item);
  EXPECT_EQ(Panes.Take(), TLines{});
  EXPECT_EQ(Shop->ViewCalls(), TLines{});
  EXPECT_EQ(Pane->CurrentCategory(), &Albums);
}

TEST_F(TWatchlistCategoryTreePanesTest, TheSameCategoryAgainDoesNotReloadLists) {
  Start(Group(Books, Shop));
  GoTo(Books);
  EXPECT_EQ(Panes.Take(), (TLines{"Category Bücher +", "Restore"}));
  EXPECT_EQ(Shop->ViewCalls(), TLines{});
}

TEST_F(TWatchlistCategoryTreePanesTest, WithTheFlagTheSameCategoryIsShownAnew) {
  Start(Books);
  Pane->ShowCategory(&Books, true);
  EXPECT_EQ(Panes.Take(), (TLines{"Category Bücher +", "BeginAdd", "Show Auktion", "Show Laden",
                                  "EndAdd", "Restore"}));
  EXPECT_EQ(Shop->ViewCalls(), TLines{"SetResults 2"});
}

TEST_F(TWatchlistCategoryTreePanesTest, AFailingListClosesTheBracketAndPassesOn) {
  Start(Albums);
  Panes.FailsAt = "Show Laden";
  EXPECT_THROW(Pane->ShowCategory(&Books, false), Exception);
  EXPECT_EQ(Panes.Take(), cBooksShown);
  EXPECT_EQ(Pane->CurrentCategory(), &Albums) << "the category did not come on show";
}

TEST_F(TWatchlistCategoryTreePanesTest, AFailingExplorerBarStillGetsItsDefaultItems) {
  Panes.FailsAt = "Category Bücher +";
  EXPECT_THROW(Pane->ShowCategory(&Books, false), Exception);
  EXPECT_EQ(Panes.Take(), (TLines{"Category Bücher +", "Restore"}));
}

TEST_F(TWatchlistCategoryTreePanesTest, AFailureOfTheCleanUpPassesOnBehindGoodWork) {
  Panes.FailsAt = "EndAdd";
  EXPECT_THROW(Pane->ShowCategory(&Books, false), Exception);
  EXPECT_EQ(Panes.Take(), cBooksShown);
  EXPECT_EQ(Pane->CurrentCategory(), nullptr);
}

TEST_F(TWatchlistCategoryTreePanesTest, TheFirstFailureIsTheOneThatPassesOn) {
  struct TFailing : TPanesRecorder {
    void ShowIntegration(const TIntf<IWatchlistIntegration>&) override {
      throw Exception(u"zuerst");
    }
    void EndAdd() override { throw Exception(u"danach"); }
  } panes;
  TWatchlistCategoryTree pane(&Form, panes);
  pane.BuildCategoriesTree(false);
  try {
    pane.ShowCategory(&Books, false);
    FAIL() << "nothing was raised";
  } catch (const Exception& e) {
    EXPECT_EQ(e.Message(), u"zuerst");
  }
}

// Looks like a mistake and is required: the tree selects a tab, the tabs do not select in the tree.
TEST_F(TWatchlistCategoryTreePanesTest, ATabNeverMovesTheSelection) {
  Pane->SelectNodeByIntegration(Shop);
  EXPECT_EQ(Pane->GetSelectedNode(), nullptr) << "no category is on show";
  GoTo(Books);
  Pane->SelectNodeByIntegration(Shop);
  EXPECT_EQ(Pane->GetSelectedNode(), &Node(Books));
  Pane->ShowCategory(nullptr, false);
  Pane->SelectNodeByIntegration(Shop);
  EXPECT_EQ(Pane->GetSelectedNode(), &Node(Books));
}

TEST_F(TWatchlistCategoryTreePanesTest, EachRepaintOfTheSelectedCategoryRefreshesTheExplorerBar) {
  Start(Books);
  Text(Books);
  EXPECT_EQ(Panes.Take(), TLines{"Category Bücher +"});
  Text(Albums);
  Text(Group(Books, Shop));
  EXPECT_EQ(Panes.Take(), TLines{}) << "not selected";
  Tree().DeleteItemById(Group(Books, Auction).LstItem().GetItems(0).SearchResultId());
  for (TWatchlistItem* item : Group(Books, Shop).LstItem()) {
    dynamic_cast<TFakeSearchResult*>(item->SearchResult().Get())->SetEndTime(Now().PlusMs(-1));
    item->SetLastUpdateDate(Now());
  }
  Text(Books);
  EXPECT_EQ(Panes.Take(), TLines{"Category Bücher"}) << "there is nothing to refresh any more";
}

TEST_F(TWatchlistCategoryTreePanesTest, ARepaintOfASelectedEmptyNodeEmptiesTheExplorerBar) {
  TVirtualNode& empty = View().AddChild(nullptr, nullptr);
  View().Text(empty);
  EXPECT_EQ(Panes.Take(), TLines{});
  View().SetSelectedNode(&empty);
  View().Text(empty);
  EXPECT_EQ(Panes.Take(), TLines{"Category none"});
}

TEST_F(TWatchlistCategoryTreePanesTest, ARepaintOfASelectedGroupOrItemTellsNothing) {
  for (const TObject* object : {static_cast<TObject*>(&Group(Books, Shop)),
                                static_cast<TObject*>(&Group(Books, Shop).LstItem().GetItems(0))}) {
    Start(*object);
    Text(*object);
    EXPECT_EQ(Panes.Take(), TLines{});
  }
}

TEST_F(TWatchlistCategoryTreePanesTest, TheExplorerBarCanBeRefreshedOnDemand) {
  Pane->ShowInExplorerBar(&Books);
  Pane->ShowInExplorerBar(&Empty);
  Pane->ShowInExplorerBar(nullptr);
  EXPECT_EQ(Panes.Take(), (TLines{"Category Bücher +", "Category leer", "Category none"}));
}

TEST_F(TWatchlistCategoryTreePanesTest, ADeletedItemHandsTheSelectionOnAndLeavesTheTabs) {
  TWatchlistItem& faust = Group(Books, Shop).LstItem().GetItems(0);
  TWatchlistItem& atlas = Group(Books, Shop).LstItem().GetItems(1);
  GoTo(Books);
  Start(atlas);
  Pane->DeleteNodeFromTree(&atlas);
  EXPECT_EQ(Pane->GetSelectedNode(), &Node(faust));
  EXPECT_EQ(Panes.Take(), TLines{});
  EXPECT_EQ(Pane->CurrentCategory(), &Books);
}

TEST_F(TWatchlistCategoryTreePanesTest, OfADeletedCategoryNothingStaysOnShow) {
  Start(Books);
  Pane->DeleteNodeFromTree(&Books);
  EXPECT_EQ(Pane->GetSelectedNode(), &Node(Empty)) << "the next one";
  EXPECT_EQ(Panes.Take(), (TLines{"Category leer", "HideAll", "Restore"}));
  EXPECT_EQ(Pane->CurrentCategory(), &Empty);
}

TEST_F(TWatchlistCategoryTreePanesTest, ACategoryOnShowThatHasNotTheFocusGoesFromThePanes) {
  TWatchlistItem& item = Group(Albums, Shop).LstItem().GetItems(0);
  GoTo(Books);
  Start(item);
  Pane->DeleteNodeFromTree(&Books);
  EXPECT_EQ(Panes.Take(), (TLines{"Category none", "HideAll"}));
  EXPECT_EQ(Pane->CurrentCategory(), nullptr);
  EXPECT_EQ(Pane->GetSelectedNode(), &Node(item));
}

TEST_F(TWatchlistCategoryTreePanesTest, ACategoryOnShowBelowADeletedOneGoesFromThePanesToo) {
  TWatchlistItem& item = Group(Albums, Shop).LstItem().GetItems(0);
  TWatchlistCategory& novels = Category(u"Romane", &Books);
  Build();
  GoTo(novels);
  Start(item);
  Pane->DeleteNodeFromTree(&Books);
  EXPECT_EQ(Panes.Take(), (TLines{"Category none", "HideAll"}));
  EXPECT_EQ(Pane->CurrentCategory(), nullptr);
}

TEST_F(TWatchlistCategoryTreePanesTest,
       OfADeletedCategoryNothingStaysEvenIfTheNextOneCanNotBeShown) {
  Start(Albums);
  Panes.FailsAt = "BeginAdd";
  EXPECT_THROW(Pane->DeleteNodeFromTree(&Albums), Exception);
  EXPECT_EQ(Pane->GetNodeByObj(&Albums), nullptr);
  EXPECT_EQ(Pane->CurrentCategory(), nullptr);
  EXPECT_EQ(Panes.Take(), (TLines{"Category Bücher +", "HideAll", "BeginAdd", "Restore",
                                  "Category none", "HideAll"}));
}

TEST_F(TWatchlistCategoryTreePanesTest, WhatTheExplorerBarAloneTellsOfGoesFromIt) {
  Start(Albums);
  Pane->ShowInExplorerBar(&Books);
  Panes.Take();
  Pane->DeleteNodeFromTree(&Books);
  EXPECT_EQ(Panes.Take(), TLines{"Category none"});
  EXPECT_EQ(Pane->CurrentCategory(), &Albums);
}

TEST_F(TWatchlistCategoryTreePanesTest, TheLastCategoryLeavesEmptyPanes) {
  Start(Books);
  for (TWatchlistCategory* category : {&Unassigned(), &Albums, &Empty, &Books}) {
    Pane->DeleteNodeFromTree(category);
  }
  EXPECT_EQ(View().First(), nullptr);
  EXPECT_EQ(Panes.Take(), (TLines{"Category none", "HideAll"}));
  EXPECT_EQ(Pane->CurrentCategory(), nullptr);
  EXPECT_FALSE(Pane->btnNewGroup.Enabled());
}

}  // namespace
}  // namespace kk
