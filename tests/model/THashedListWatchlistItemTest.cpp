#include "model/THashedListWatchlistItem.h"

#include <gtest/gtest.h>

#include "ModelWorld.h"

namespace kk {
namespace {

class HashedItems : public testing::Test {
 protected:
  TTestModelRoot root;
  TLstWatchlistItem items{true};
  TWatchlistItem& a = AddItem(items, u"A");
  TWatchlistItem& b = AddItem(items, u"B");
  THashedListWatchlistItem lst;
};

TEST_F(HashedItems, AreFoundByTheIdThatTheResultGives) {
  lst.Add(a);
  lst.Add(b);
  EXPECT_EQ(lst.IndexOf(b.SearchResult()->GetId()), 1);
  EXPECT_EQ(lst.GetItem(a.SearchResult()->GetId()), &a);
  EXPECT_EQ(lst.IndexOf(NewGuid()), -1);
  EXPECT_EQ(lst.GetItem(NewGuid()), nullptr);
}

TEST_F(HashedItems, TheStoredIdDoesNotCount) {
  const TGuid resultId = a.SearchResult()->GetId();
  a.SetSearchResultId(NewGuid());
  lst.Add(a);
  EXPECT_EQ(lst.GetItem(resultId), &a);
  EXPECT_EQ(lst.GetItem(a.SearchResultId()), nullptr);
}

TEST_F(HashedItems, DuplicatesAreKeptAndTheFirstIsFound) {
  const TGuid id = a.SearchResult()->GetId();
  b.SetSearchResult(a.SearchResult()->Clone());
  lst.Add(a);
  lst.Add(b);
  EXPECT_EQ(lst.GetItem(id), &a);
  // By the key: the first entry goes, whichever item is given.
  lst.Remove(b);
  EXPECT_EQ(lst.GetItem(id), &b);
  lst.Remove(b);
  EXPECT_EQ(lst.GetItem(id), nullptr);
}

TEST_F(HashedItems, StayAliveWhenRemoved) {
  lst.Add(a);
  lst.Add(b);
  lst.Remove(a);
  EXPECT_EQ(a.GetName(), u"A");
  EXPECT_EQ(lst.GetItem(a.SearchResult()->GetId()), nullptr);
  EXPECT_EQ(lst.GetItem(b.SearchResult()->GetId()), &b);
  lst.Remove(a);  // no effect
  EXPECT_EQ(lst.IndexOf(b.SearchResult()->GetId()), 0);
}

TEST_F(HashedItems, WithoutAResultHaveNoKeyAndArePassedOver) {
  TWatchlistItem& none = AddItem(items);
  lst.Add(none);
  EXPECT_EQ(lst.GetItem(none.SearchResultId()), nullptr);
  lst.Remove(none);
}

TEST_F(HashedItems, NothingOfTheModelKeepsTheTableUpToDate) {
  lst.Add(a);
  const TGuid id = a.SearchResult()->GetId();
  a.SetSearchResult(FakeResult(u"Anders"));
  EXPECT_EQ(lst.GetItem(id), &a);
}

}  // namespace
}  // namespace kk
