#include "model/TLstWatchlistItem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ModelWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;

TEST(TLstWatchlistItem, AddsAndAnswersTheSameItem) {
  TTestModelRoot root;
  TLstWatchlistItem lst(true);
  auto item = std::make_unique<TWatchlistItem>();
  TWatchlistItem* made = item.get();
  EXPECT_EQ(&lst.Add(std::move(item)), made);
  EXPECT_EQ(&lst.GetItems(0), made);
  EXPECT_EQ(made->List(), &lst);
  EXPECT_THROW(lst.GetItems(1), EListError);
  TLstWatchlistItem work(false);
  EXPECT_EQ(&work.Add(*made), made);
  EXPECT_EQ(made->List(), &lst);
}

TEST(TLstWatchlistItem, FindsTheFirstOfSeveralWithOneId) {
  TTestModelRoot root;
  const TGuid id = NewGuid();
  for (const bool owns : {true, false}) {
    TLstWatchlistItem owner(true);
    AddItem(owner);
    AddItem(owner, id);
    AddItem(owner, id);
    TLstWatchlistItem work(false);
    for (TWatchlistItem* item : owner) work.Add(*item);
    TLstWatchlistItem& lst = owns ? owner : work;
    EXPECT_EQ(lst.IndexOfSearchResultId(id), 1);
    EXPECT_EQ(lst.IndexOfSearchResultId(NewGuid()), -1);
    lst.Move(0, 2);
    EXPECT_EQ(lst.IndexOfSearchResultId(id), 0);
  }
}

TEST(TLstWatchlistItem, ComparesTheStoredIdAndDoesNotTouchTheResult) {
  TTestModelRoot root;
  TLstWatchlistItem lst(true);
  const TIntf<ISearchResult> result = FakeResult(u"Lampe");
  TWatchlistItem& item = AddItem(lst, result);
  const TGuid stored = item.SearchResultId();
  result->SetId(NewGuid());
  EXPECT_EQ(lst.IndexOfSearchResultId(stored), 0);
  EXPECT_EQ(lst.IndexOfSearchResultId(result->GetId()), -1);
}

TEST(TLstWatchlistItem, KnowsPositionsAfterEveryKindOfChange) {
  TTestModelRoot root;
  TLstWatchlistItem lst(true);
  for (int i = 0; i < 7; ++i) AddItem(lst);
  const auto check = [&] {
    for (int i = 0; i < lst.GetCount(); ++i) {
      EXPECT_EQ(lst.IndexOfSearchResultId(lst.GetItems(i).SearchResultId()), i);
      EXPECT_EQ(lst.IndexOfPlaced(lst.GetItems(i)), i);
    }
  };
  lst.Move(5, 1);
  check();
  lst.Reverse();
  check();
  lst.Delete(3);
  check();
  AddItem(lst);
  check();
  lst.Extract(lst.GetItems(0));
  check();
}

TEST(TLstWatchlistItem, HandsOutResultsInOrderEmptyOnesIncluded) {
  TTestModelRoot root;
  TLstWatchlistItem lst(true);
  const TIntf<ISearchResult> a = FakeResult(u"A");
  const TIntf<ISearchResult> b = FakeResult(u"B");
  AddItem(lst, a);
  AddItem(lst);
  AddItem(lst, b);
  const TIntf<IInterfaceList> results = lst.GetSearchResultsFromItems();
  ASSERT_EQ(results->GetCount(), 3);
  EXPECT_EQ(GetAs<ISearchResult>(*results, 0), a);
  EXPECT_FALSE(results->Get(1));
  EXPECT_EQ(GetAs<ISearchResult>(*results, 2), b);
  lst.SearchResultsFromItems(*results);
  EXPECT_EQ(results->GetCount(), 6);
}

TEST(TLstWatchlistItem, ClearingWithoutFreeForgetsTheItemsAndFreesNone) {
  TTestModelRoot root;
  TLstWatchlistItem lst(true);
  TWatchlistItem& item = AddItem(lst, u"Lampe");
  const std::unique_ptr<TWatchlistItem> guard(&item);
  lst.ClearWithoutFree();
  EXPECT_EQ(lst.GetCount(), 0);
  EXPECT_EQ(item.List(), nullptr);
  EXPECT_EQ(lst.IndexOfSearchResultId(item.SearchResultId()), -1);
  EXPECT_THAT(root.Notes(), ElementsAre("add Lampe"));
}

TEST(TLstWatchlistItem, ClearingFreesTheFirstFirst) {
  TTestModelRoot root;
  {
    TLstWatchlistItem lst(true);
    AddItem(lst, u"A");
    AddItem(lst, u"B");
    root.Notes().clear();
  }
  EXPECT_THAT(root.Notes(), ElementsAre("delete A", "delete B"));
}

TEST(TLstWatchlistItem, AWorkListMayOutliveItsItems) {
  TTestModelRoot root;
  TLstWatchlistItem work(false);
  {
    TLstWatchlistItem lst(true);
    work.Add(AddItem(lst));
  }
  work.Clear();
  EXPECT_EQ(work.GetCount(), 0);
}

TEST(TLstWatchlistItem, AnItemGoesFromListToList) {
  TTestModelRoot root;
  TLstWatchlistItem from(true);
  TLstWatchlistItem to(true);
  TWatchlistItem& item = AddItem(from);
  to.Add(from.Extract(item));
  EXPECT_EQ(from.IndexOfSearchResultId(item.SearchResultId()), -1);
  EXPECT_EQ(to.IndexOfSearchResultId(item.SearchResultId()), 0);
  EXPECT_EQ(item.List(), &to);
}

}  // namespace
}  // namespace kk
