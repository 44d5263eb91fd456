#include "views/tree/TUpdatableNodes.h"

#include "TTreeWorld.h"
#include "tests/support/TBrokenResult.h"

namespace kk {
namespace {

// Counts how often it is asked for its end.
class TCountingResult : public TFakeSearchResult {
 public:
  using TFakeSearchResult::TFakeSearchResult;
  bool HasEndTime() const override {
    ++Asked;
    return TFakeSearchResult::HasEndTime();
  }
  static inline int Asked = 0;
};

class TUpdatableNodesTest : public TTreeTest {
 protected:
  bool CanUpdate(const TObject& iObject) { return Pane->CanUpdateNode(&Node(iObject)); }
  /// Ended, and refreshed since.
  TWatchlistItem& Ended(TWatchlistCategory& iCategory, TStringView iName) {
    TWatchlistItem& item = Item(iCategory, Shop, iName, Now().PlusMs(-1000));
    item.SetLastUpdateDate(Now());
    return item;
  }
  static bool SetEnd(const TWatchlistItem& iItem, TDateTime iEnd) {
    auto* result = dynamic_cast<TFakeSearchResult*>(iItem.SearchResult().Get());
    result->SetEndTime(iEnd);
    return true;
  }
  TWatchlistCategory& Books = Category(u"Bücher");
};

TEST_F(TUpdatableNodesTest, WithoutANodeThereIsNothing) {
  EXPECT_FALSE(Pane->CanUpdateNode(nullptr));
}

TEST_F(TUpdatableNodesTest, AGroupNeedsAnItemThatCanBeRefreshed) {
  TWatchlistPlugin& group = Group(Books, Shop);
  Build();
  EXPECT_FALSE(CanUpdate(group));
  Ended(Books, u"alt");
  EXPECT_FALSE(CanUpdate(group));
  TWatchlistItem& item = Item(Books, Shop, u"neu");
  EXPECT_TRUE(CanUpdate(group));
  Tree().DeleteItemById(item.SearchResultId());
  EXPECT_FALSE(CanUpdate(group));
}

TEST_F(TUpdatableNodesTest, ACategoryLooksAtAllGroupsBelowIt) {
  TWatchlistCategory& novels = Category(u"Romane", &Books);
  Ended(Books, u"alt");
  Build();
  EXPECT_FALSE(CanUpdate(Books));
  Item(novels, Shop, u"neu");
  EXPECT_TRUE(CanUpdate(Books));
  EXPECT_FALSE(CanUpdate(Unassigned()));
}

TEST_F(TUpdatableNodesTest, AnEmptyNodeLooksAtTheWholeTree) {
  Build();
  TVirtualNode& empty = View().AddChild(nullptr, nullptr);
  EXPECT_FALSE(Pane->CanUpdateNode(&empty));
  Item(Books, Auction, u"neu");
  EXPECT_TRUE(Pane->CanUpdateNode(&empty));
}

TEST_F(TUpdatableNodesTest, ASourceThatCanNotRefreshMakesNothingUpdatable) {
  const auto still = MakeIntf<TFakeSource>(u"Still", NewGuid(), TFakeAbilities{.Update = false});
  TWatchlistItem& item = Item(Books, still, u"neu");
  Build();
  EXPECT_FALSE(CanUpdate(Group(Books, still)));
  EXPECT_FALSE(CanUpdate(item));
  EXPECT_FALSE(CanUpdate(Books));
  EXPECT_FALSE(TUpdatableNodes::AnySourceCanUpdate());
  Group(Books, Shop);
  EXPECT_TRUE(TUpdatableNodes::AnySourceCanUpdate()) << "whatever its items";
}

TEST_F(TUpdatableNodesTest, AnItemIsAskedItself) {
  TWatchlistItem& live = Item(Books, Shop, u"neu");
  TWatchlistItem& ended = Ended(Books, u"alt");
  TWatchlistItem& lost = LostItem(Books, Shop);
  Build();
  EXPECT_TRUE(CanUpdate(live));
  EXPECT_FALSE(CanUpdate(ended));
  EXPECT_FALSE(CanUpdate(lost));
}

TEST_F(TUpdatableNodesTest, AnItemOutsideOfTheTreeCanNotBeRefreshed) {
  TWatchlistItem& item = Item(Books, Shop, u"neu");
  Build();
  const auto taken = Tree().RemoveItemById(item.SearchResultId());
  EXPECT_FALSE(CanUpdate(*taken));
}

TEST_F(TUpdatableNodesTest, WhatCouldBeRefreshedIsAskedAgain) {
  TWatchlistItem& item = Item(Books, Shop, u"neu");
  TWatchlistItem& other = Item(Books, Shop, u"auch");
  Build();
  EXPECT_TRUE(CanUpdate(Books));
  SetEnd(item, Now().PlusMs(-1000));
  item.SetLastUpdateDate(Now());
  EXPECT_TRUE(CanUpdate(Books));
  SetEnd(other, Now().PlusMs(-1000));
  other.SetLastUpdateDate(Now());
  EXPECT_FALSE(CanUpdate(Books));
}

TEST_F(TUpdatableNodesTest, ThatNothingCanIsKeptUntilTheNodeIsRepainted) {
  TWatchlistItem& item = Ended(Books, u"alt");
  Build();
  EXPECT_FALSE(CanUpdate(Books));
  SetEnd(item, Now().PlusMs(1000));
  EXPECT_FALSE(CanUpdate(Books)) << "no walk over the items at each repaint";
  Pane->RepaintNode(item);
  EXPECT_TRUE(CanUpdate(Books));
}

TEST_F(TUpdatableNodesTest, AskingAgainIsNoWalkOverTheItems) {
  for (int i = 0; i < 100; ++i) {
    const auto result = MakeIntf<TCountingResult>(IntToStr(i));
    if (i < 99) result->SetEndTime(Now().PlusMs(-1000));
    auto item = std::make_unique<TWatchlistItem>();
    item->SetSearchResult(result);
    item->SetLastUpdateDate(Now());
    Group(Books, Shop).LstItem().Add(std::move(item));
  }
  Build();
  const auto asked = [this](bool iCanUpdate) {
    TCountingResult::Asked = 0;
    EXPECT_EQ(CanUpdate(Books), iCanUpdate);
    return TCountingResult::Asked;
  };
  EXPECT_EQ(asked(true), 100);
  EXPECT_EQ(asked(true), 1) << "the one that was found";
  TWatchlistItem& last = Group(Books, Shop).LstItem().GetItems(99);
  Tree().DeleteItemById(last.SearchResultId());
  EXPECT_EQ(asked(false), 99);
  EXPECT_EQ(asked(false), 0) << "nothing has changed";
}

TEST_F(TUpdatableNodesTest, AResultThatFailedToAnswerIsAskedAgain) {
  const auto result = MakeIntf<TBrokenResult>(u"Uhr");
  result->Fails = true;
  Group(Books, Shop).LstItem().Add(std::make_unique<TWatchlistItem>()).SetSearchResult(result);
  Build();
  EXPECT_THROW(CanUpdate(Books), Exception);
  result->Fails = false;
  EXPECT_TRUE(CanUpdate(Books));
}

TEST_F(TUpdatableNodesTest, ANewResultOfAnItemIsSeen) {
  TWatchlistItem& item = Ended(Books, u"alt");
  Build();
  EXPECT_FALSE(CanUpdate(Books));
  item.SetSearchResult(FakeResult(u"neu"));
  EXPECT_TRUE(CanUpdate(Books));
}

TEST_F(TUpdatableNodesTest, AnItemThatHadItsResultBeforeItCameInIsSeen) {
  Ended(Books, u"alt");
  Build();
  EXPECT_FALSE(CanUpdate(Books));
  auto item = std::make_unique<TWatchlistItem>();
  item->SetSearchResult(FakeResult(u"neu"));
  Group(Books, Shop).LstItem().Add(std::move(item));
  EXPECT_TRUE(CanUpdate(Books));
}

TEST_F(TUpdatableNodesTest, WhatMovesInOrIsAddedIsSeen) {
  TWatchlistItem& live = Item(Books, Shop, u"neu");
  Ended(Unassigned(), u"alt");
  Build();
  TWatchlistPlugin& target = Group(Unassigned(), Shop);
  EXPECT_FALSE(CanUpdate(Unassigned()));
  TWatchlistItem& moved = target.LstItem().Add(Tree().RemoveItemById(live.SearchResultId()));
  Pane->MoveNode(moved, &target);
  EXPECT_TRUE(CanUpdate(Unassigned()));
  EXPECT_FALSE(CanUpdate(Books));
  TWatchlistItem& back =
      Group(Books, Shop).LstItem().Add(Tree().RemoveItemById(live.SearchResultId()));
  Pane->AddItemToTree(&Node(Group(Books, Shop)), back);
  EXPECT_TRUE(CanUpdate(Books));
}

TEST_F(TUpdatableNodesTest, ARebuiltTreeIsLookedAtAnew) {
  TWatchlistItem& item = Ended(Books, u"alt");
  Build();
  EXPECT_FALSE(CanUpdate(Books));
  item.SetLastUpdateDate({});
  Build();
  EXPECT_TRUE(CanUpdate(Books));
}

TEST_F(TUpdatableNodesTest, ANewGroupInThePlaceOfADeletedOneIsLookedAtAnew) {
  Ended(Books, u"alt");
  Build();
  for (int round = 0; round < 8; ++round) {
    TWatchlistPlugin& group = Group(Books, Shop);
    EXPECT_FALSE(CanUpdate(group)) << round;
    Pane->DeleteNodeFromTree(&group);
    Tree().DeletePlugin(group);
    TWatchlistPlugin& again = Group(Books, Shop);
    const auto result = FakeResult(u"neu");
    auto item = std::make_unique<TWatchlistItem>();
    item->SetSearchResult(result);
    again.LstItem().Add(std::move(item));
    Pane->AddPluginToTree(&Node(Books), again);
    EXPECT_TRUE(CanUpdate(again)) << round;
    Tree().DeleteItemById(result->GetId());
  }
}

TEST(TUpdatableNodes, StandsWithoutAHandler) {
  TUpdatableNodes nodes;
  EXPECT_FALSE(nodes.CanUpdateNode(nullptr));
}

}  // namespace
}  // namespace kk
