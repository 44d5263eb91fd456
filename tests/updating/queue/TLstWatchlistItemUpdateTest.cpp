#include "updating/queue/TLstWatchlistItemUpdate.h"

#include <gtest/gtest.h>

#include "tests/support/TFakeSource.h"

namespace kk {
namespace {

std::string Names(const TLstWatchlistItemUpdate& iLst) {
  std::string names;
  for (const TWatchlistItemUpdate* entry : iLst) names += ToUtf8(entry->SearchResult()->GetName());
  return names;
}

TEST(TLstWatchlistItemUpdate, AppendsResultsAndEntriesInOrder) {
  TLstWatchlistItemUpdate lst;
  const TIntf<ISearchResult> a = FakeResult(u"A");
  EXPECT_EQ(lst.Add(a).SearchResult(), a);
  auto entry = std::make_unique<TWatchlistItemUpdate>(FakeResult(u"B"));
  const TWatchlistItemUpdate* made = entry.get();
  EXPECT_EQ(&lst.Add(std::move(entry)), made);
  EXPECT_EQ(Names(lst), "AB");
  EXPECT_EQ(lst.GetFirst().SearchResult(), a);
  EXPECT_EQ(&lst.GetItems(1), made);
}

TEST(TLstWatchlistItemUpdate, InsertsBeforeTheIndexAndAppendsBehindTheEnd) {
  TLstWatchlistItemUpdate lst;
  lst.Insert(5, FakeResult(u"A"));
  lst.Insert(0, FakeResult(u"B"));
  lst.Insert(1, std::make_unique<TWatchlistItemUpdate>(FakeResult(u"C")));
  lst.Insert(3, FakeResult(u"D"));
  lst.Insert(99, FakeResult(u"E"));
  EXPECT_EQ(Names(lst), "BCADE");
}

TEST(TLstWatchlistItemUpdate, AnIndexOutOfRangeRaises) {
  TLstWatchlistItemUpdate lst;
  EXPECT_THROW(lst.GetFirst(), EListError);
  EXPECT_THROW(lst.GetItems(0), EListError);
}

TEST(TLstWatchlistItemUpdate, FindsByIdAfterEveryKindOfChange) {
  TLstWatchlistItemUpdate lst;
  std::vector<TIntf<ISearchResult>> results;
  for (int i = 0; i < 6; ++i) results.push_back(FakeResult(u"R"));
  EXPECT_EQ(lst.IndexOfId(results[0]->GetId()), -1);
  EXPECT_EQ(lst.FindItemById(results[0]->GetId()), nullptr);
  lst.Add(results[0]);
  lst.Insert(0, results[1]);
  EXPECT_EQ(lst.IndexOfId(results[0]->GetId()), 1);
  lst.Add(results[2]);
  lst.Insert(2, results[3]);
  lst.Insert(1, results[4]);  // 1 4 0 3 2
  lst.Delete(2);              // 1 4 3 2
  lst.Add(results[5]);        // 1 4 3 2 5
  const int order[] = {1, 4, 3, 2, 5};
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(lst.IndexOfId(results[order[i]]->GetId()), i);
    EXPECT_EQ(lst.FindItemById(results[order[i]]->GetId()), &lst.GetItems(i));
  }
  EXPECT_EQ(lst.IndexOfId(results[0]->GetId()), -1);
  lst.Reverse();
  EXPECT_EQ(lst.IndexOfId(results[1]->GetId()), 4);
  lst.Move(4, 0);
  EXPECT_EQ(lst.IndexOfId(results[1]->GetId()), 0);
}

TEST(TLstWatchlistItemUpdate, OfEntriesWithOneIdTheFirstIsFound) {
  TLstWatchlistItemUpdate lst;
  const TIntf<ISearchResult> a = FakeResult(u"A");
  lst.Add(a);
  lst.Insert(0, a);
  lst.Insert(1, a);
  EXPECT_EQ(lst.IndexOfId(a->GetId()), 0);
  EXPECT_EQ(lst.FindItemById(a->GetId()), &lst.GetItems(0));
  const TWatchlistItemUpdate* second = &lst.GetItems(1);
  lst.DeleteItemById(a->GetId());
  EXPECT_EQ(lst.GetCount(), 2);
  EXPECT_EQ(lst.FindItemById(a->GetId()), second);
}

TEST(TLstWatchlistItemUpdate, DeletingAnUnknownIdHasNoEffect) {
  TLstWatchlistItemUpdate lst;
  lst.Add(FakeResult(u"A"));
  lst.DeleteItemById(NewGuid());
  EXPECT_EQ(Names(lst), "A");
  lst.DeleteItemById(lst.GetFirst().SearchResult()->GetId());
  EXPECT_EQ(lst.GetCount(), 0);
}

TEST(TLstWatchlistItemUpdate, AnEntryOutlivesAnIdThatItsSourceChanged) {
  TLstWatchlistItemUpdate lst;
  const TIntf<ISearchResult> a = FakeResult(u"A");
  const TGuid before = a->GetId();
  lst.Add(a);
  a->SetId(NewGuid());
  lst.Delete(0);
  EXPECT_EQ(lst.FindItemById(before), nullptr);
}

// Counts how often the queue asks results for their ids.
TEST(TLstWatchlistItemUpdate, AsksEachResultForItsIdOnce) {
  static int asked = 0;
  class TCounting : public TFakeSearchResult {
   public:
    using TFakeSearchResult::TFakeSearchResult;
    TGuid GetId() const override {
      ++asked;
      return TFakeSearchResult::GetId();
    }
  };
  constexpr int cCount = 5000;
  TLstWatchlistItemUpdate lst;
  std::vector<TGuid> ids;
  for (int i = 0; i < cCount; ++i) {
    ids.push_back(NewGuid());
    const auto result = MakeIntf<TCounting>(u"R", ids.back());
    ASSERT_EQ(lst.FindItemById(ids.back()), nullptr);
    i % 2 == 0 ? lst.Add(result) : lst.Insert(1, result);
  }
  for (const TGuid& id : ids) {
    ASSERT_GE(lst.IndexOfId(id), 0);
    lst.DeleteItemById(id);
  }
  EXPECT_EQ(lst.GetCount(), 0);
  EXPECT_EQ(asked, cCount);
}

TEST(TLstWatchlistItemUpdate, FreesItsEntries) {
  const int64_t before = LiveObjectCount();
  {
    TLstWatchlistItemUpdate lst;
    lst.Add(FakeResult(u"A"));
    EXPECT_EQ(LiveObjectCount(), before + 1);
  }
  EXPECT_EQ(LiveObjectCount(), before);
}

}  // namespace
}  // namespace kk
