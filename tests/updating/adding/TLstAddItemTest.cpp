#include "updating/adding/TLstAddItem.h"

#include <gtest/gtest.h>

#include "model/TLstWatchlistCategory.h"
#include "tests/support/TFakeSource.h"

namespace kk {
namespace {

TIntf<IInterfaceList> ListOf(std::initializer_list<TIntf<ISearchResult>> iResults) {
  const auto list = NewInterfaceList();
  for (const auto& result : iResults) list->Add(result);
  return list;
}

class TLstAddItemTest : public testing::Test {
 protected:
  TIntf<ISearchResult> A = FakeResult(u"a");
  TIntf<ISearchResult> B = FakeResult(u"b");
  TIntf<ISearchResult> C = FakeResult(u"c");
  TWatchlistIntegration Source{MakeIntf<TFakeSource>(u"Quelle")};
  TWatchlistIntegration OtherSource{MakeIntf<TFakeSource>(u"Andere")};
  TWatchlistCategory Books;
  TWatchlistCategory Clocks;
  TWatchlistCategory Coins;
  TLstAddItem Lst{true};
};

TEST_F(TLstAddItemTest, ANewBatchKeepsTheVeryList) {
  const auto list = ListOf({A, B});
  const TAddItem& batch = Lst.Add(list, Source, Books);
  EXPECT_EQ(Lst.GetCount(), 1);
  EXPECT_EQ(&Lst.GetItems(0), &batch);
  EXPECT_EQ(&batch.List(), list.Get());
  EXPECT_EQ(&batch.Integration(), &Source);
  EXPECT_EQ(&batch.TargetCategory(), &Books);
  EXPECT_EQ(Lst.IndexOf(&batch), 0);
}

TEST_F(TLstAddItemTest, ABatchForTheSameSourceAndCategoryGrows) {
  TAddItem& batch = Lst.Add(ListOf({A}), Source, Books);
  EXPECT_EQ(&Lst.Add(ListOf({B, C}), Source, Books), &batch);
  EXPECT_EQ(Lst.GetCount(), 1);
  ASSERT_EQ(batch.List().GetCount(), 3);
  EXPECT_EQ(batch.IndexOfId(C->GetId()), 2);
}

TEST_F(TLstAddItemTest, BatchesAreFoundByTheirObjects) {
  Lst.Add(ListOf({A}), Source, Books);
  Lst.Add(ListOf({B}), Source, Clocks);
  Lst.Add(ListOf({C}), OtherSource, Books);
  EXPECT_EQ(Lst.IndexOf(Source, Books), 0);
  EXPECT_EQ(Lst.IndexOf(Source, Clocks), 1);
  EXPECT_EQ(Lst.IndexOf(OtherSource, Books), 2);
  EXPECT_EQ(Lst.IndexOf(OtherSource, Clocks), -1);
}

TEST_F(TLstAddItemTest, TheSameListTwiceHoldsEveryEntryTwice) {
  const auto list = ListOf({A, B});
  Lst.Add(list, Source, Books);
  Lst.Add(list, Source, Books);
  EXPECT_EQ(list->GetCount(), 4);
  Lst.RemoveItemById(A->GetId());
  EXPECT_EQ(list->GetCount(), 3);
  EXPECT_EQ(Lst.GetItems(0).IndexOfId(A->GetId()), 1) << "one copy stays";
}

TEST_F(TLstAddItemTest, AnEmptyListMakesNoBatch) {
  EXPECT_THROW(Lst.Add(NewInterfaceList(), Source, Books), EListError);
  EXPECT_EQ(Lst.GetCount(), 0);
}

TEST_F(TLstAddItemTest, AnIdIsFoundInTheFirstBatchThatHoldsIt) {
  Lst.Add(ListOf({A}), Source, Books);
  Lst.Add(ListOf({B, A}), Source, Clocks);
  EXPECT_EQ(Lst.IndexOfItemId(A->GetId()), 0);
  EXPECT_EQ(Lst.IndexOfItemId(B->GetId()), 1);
  EXPECT_EQ(Lst.IndexOfItemId(C->GetId()), -1);
}

TEST_F(TLstAddItemTest, AnEmptyEntryIsPassedOver) {
  const auto list = ListOf({A});
  Lst.Add(list, Source, Books);
  list->Insert(0, {});
  EXPECT_EQ(Lst.IndexOfItemId(A->GetId()), 0);
}

TEST_F(TLstAddItemTest, RemovingTheLastResultDeletesTheOnlyBatch) {
  Lst.Add(ListOf({A, B}), Source, Books);
  Lst.RemoveItemById(A->GetId());
  EXPECT_EQ(Lst.GetCount(), 1);
  Lst.RemoveItemById(B->GetId());
  EXPECT_EQ(Lst.GetCount(), 0);
}

TEST_F(TLstAddItemTest, RemovingAnUnknownIdChangesNothing) {
  const auto list = ListOf({A});
  Lst.Add(list, Source, Books);
  Lst.RemoveItemById(B->GetId());
  EXPECT_EQ(list->GetCount(), 1);
  EXPECT_EQ(Lst.GetCount(), 1);
}

TEST_F(TLstAddItemTest, DeletingTheLastBatchRaisesNothing) {
  Lst.Add(ListOf({A}), Source, Books);
  Lst.Add(ListOf({B}), Source, Clocks);
  EXPECT_NO_THROW(Lst.RemoveItemById(B->GetId()));
  EXPECT_EQ(Lst.GetCount(), 1);
}

TEST_F(TLstAddItemTest, DeletingABatchThatIsNotTheLastRunsPastTheEnd) {
  Lst.Add(ListOf({A}), Source, Books);
  Lst.Add(ListOf({B}), Source, Clocks);
  EXPECT_THROW(Lst.RemoveItemById(A->GetId()), EListError);
  ASSERT_EQ(Lst.GetCount(), 1);
  EXPECT_EQ(&Lst.GetItems(0).TargetCategory(), &Clocks);
}

TEST_F(TLstAddItemTest, TheBatchThatMovedUpIsPassedOver) {
  Lst.Add(ListOf({A}), Source, Books);
  Lst.Add(ListOf({A, B}), Source, Clocks);
  Lst.Add(ListOf({A, C}), Source, Coins);
  EXPECT_THROW(Lst.RemoveItemById(A->GetId()), EListError);
  ASSERT_EQ(Lst.GetCount(), 2);
  EXPECT_EQ(Lst.GetItems(0).List().GetCount(), 2);
  EXPECT_EQ(Lst.GetItems(1).List().GetCount(), 1);
}

TEST_F(TLstAddItemTest, EmptyBatchesGoOnlyBehindTheHit) {
  const auto first = ListOf({A});
  const auto last = ListOf({C});
  Lst.Add(first, Source, Books);
  Lst.Add(ListOf({B, A}), Source, Clocks);
  Lst.Add(last, Source, Coins);
  first->Clear();
  last->Clear();
  EXPECT_NO_THROW(Lst.RemoveItemById(A->GetId()));
  ASSERT_EQ(Lst.GetCount(), 2);
  EXPECT_EQ(&Lst.GetItems(0).TargetCategory(), &Books);
  EXPECT_EQ(&Lst.GetItems(1).TargetCategory(), &Clocks);
}

TEST_F(TLstAddItemTest, TheWalkGoesOnBehindTheHit) {
  Lst.Add(ListOf({A, B}), Source, Books);
  Lst.Add(ListOf({A, C}), Source, Clocks);
  Lst.RemoveItemById(A->GetId());
  EXPECT_EQ(Lst.IndexOfItemId(A->GetId()), -1);
}

TEST_F(TLstAddItemTest, ClearLetsGoOfEveryResult) {
  const int64_t before = LiveObjectCount();
  {
    const auto list = ListOf({FakeResult(u"d")});
    Lst.Add(list, Source, Books);
  }
  EXPECT_GT(LiveObjectCount(), before);
  Lst.Clear();
  EXPECT_EQ(Lst.GetCount(), 0);
  EXPECT_EQ(LiveObjectCount(), before);
}

}  // namespace
}  // namespace kk
