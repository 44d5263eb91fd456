#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "reminders/TLstRemindItemSync.h"
#include "reminders/TRemindDetailsSound.h"
#include "tests/support/TTestClock.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What both lists have in common is tested on both.
template <class List>
class TRemindLists : public testing::Test {
 protected:
  TTestClock FClock;
  List FList{true};

  // A reminder due so many seconds from now; negative ones are due already.
  TRemindItem& Add(int iSeconds, const TGuid& iId = NewGuid()) {
    auto item = std::make_unique<TRemindItem>(iId);
    item->SetRemindTime(FClock.Now().PlusMs(iSeconds * TDateTime::cMsPerSecond));
    item->LstDetails().Add(std::make_unique<TRemindDetailsSound>(u"a.wav"));
    TRemindItem& added = *item;
    FList.Add(std::move(item));
    return added;
  }
  static std::vector<TRemindItem*> Items(const TLstRemindItem& iLst) {
    std::vector<TRemindItem*> items;
    for (int i = 0; i < iLst.GetCount(); ++i) items.push_back(&iLst.GetItems(i));
    return items;
  }
};
using TBothLists = testing::Types<TLstRemindItem, TLstRemindItemSync>;
TYPED_TEST_SUITE(TRemindLists, TBothLists);

TYPED_TEST(TRemindLists, AddAppends) {
  TRemindItem& first = this->Add(1);
  TRemindItem& second = this->Add(0);
  EXPECT_THAT(this->Items(this->FList), ElementsAre(&first, &second));
  EXPECT_EQ(&this->FList.First(), &first);
  EXPECT_EQ(this->FList.Count(), 2);
}

TYPED_TEST(TRemindLists, AnIndexOutOfRangeRaises) {
  EXPECT_THROW(this->FList.First(), EListError);
  this->Add(1);
  EXPECT_THROW(this->FList.GetItems(1), EListError);
  EXPECT_THROW(this->FList.GetItems(-1), EListError);
  EXPECT_THROW(this->FList.Delete(1), EListError);
  EXPECT_EQ(this->FList.Count(), 1);
}

TYPED_TEST(TRemindLists, ClearEmpties) {
  this->Add(1);
  this->FList.Clear();
  EXPECT_EQ(this->FList.GetCount(), 0);
}

TYPED_TEST(TRemindLists, DeletesByIndexByObjectAndById) {
  const TGuid id = NewGuid();
  this->Add(1);
  TRemindItem& second = this->Add(2);
  this->Add(3, id);
  TRemindItem& last = this->Add(4);
  this->FList.Delete(0);
  this->FList.Delete(second);
  this->FList.DeleteBySearchResultId(id);
  EXPECT_THAT(this->Items(this->FList), ElementsAre(&last));
}

TYPED_TEST(TRemindLists, DeletingWhatIsNotThereHasNoEffect) {
  this->Add(1);
  TRemindItem stranger(NewGuid());
  this->FList.Delete(stranger);
  this->FList.DeleteBySearchResultId(NewGuid());
  EXPECT_EQ(this->FList.Count(), 1);
}

TYPED_TEST(TRemindLists, ExtractsByObjectAndById) {
  const TGuid id = NewGuid();
  TRemindItem& first = this->Add(1);
  TRemindItem& second = this->Add(2, id);
  const auto taken = this->FList.Extract(first);
  const auto takenById = this->FList.ExtractBySearchResultId(id);
  EXPECT_EQ(taken.get(), &first);
  EXPECT_EQ(takenById.get(), &second);
  EXPECT_EQ(this->FList.Count(), 0);
}

TYPED_TEST(TRemindLists, ExtractingWhatIsNotThereGivesNothing) {
  this->Add(1);
  TRemindItem stranger(NewGuid());
  EXPECT_EQ(this->FList.Extract(stranger), nullptr);
  EXPECT_EQ(this->FList.ExtractBySearchResultId(NewGuid()), nullptr);
  EXPECT_EQ(this->FList.Count(), 1);
}

TYPED_TEST(TRemindLists, LookUpsFindTheFirstOfAnId) {
  const TGuid id = NewGuid();
  this->Add(1);
  TRemindItem& first = this->Add(2, id);
  this->Add(3, id).SetRemindTypes({rtSMS});
  first.SetRemindTypes({rtSound, rtEmail});
  EXPECT_EQ(this->FList.IndexOfSearchResultId(id), 1);
  EXPECT_EQ(this->FList.RemindTypesBySearchResultId(id), (TRemindTypes{rtSound, rtEmail}));
  const auto clone = this->FList.CloneItemBySearchResultId(id);
  EXPECT_NE(clone.get(), &first);
  EXPECT_EQ(clone->RemindTime(), first.RemindTime());
  EXPECT_EQ(clone->LstDetails().GetCount(), 1);
  EXPECT_EQ(this->FList.Count(), 3);
}

TYPED_TEST(TRemindLists, LookUpsOfAnUnknownIdGiveNothing) {
  this->Add(1).SetRemindTypes({rtSMS});
  EXPECT_EQ(this->FList.IndexOfSearchResultId(NewGuid()), -1);
  EXPECT_TRUE(this->FList.RemindTypesBySearchResultId(NewGuid()).IsEmpty());
  EXPECT_EQ(this->FList.CloneItemBySearchResultId(NewGuid()), nullptr);
}

TYPED_TEST(TRemindLists, AppendMovesAllFromTheFront) {
  TRemindItem& old = this->Add(1);
  TLstRemindItem other(true);
  other.Add(std::make_unique<TRemindItem>(NewGuid()));
  other.Add(std::make_unique<TRemindItem>(NewGuid()));
  const auto moved = this->Items(other);
  this->FList.Append(other, false);
  EXPECT_EQ(other.Count(), 0);
  EXPECT_THAT(this->Items(this->FList), ElementsAre(&old, moved[0], moved[1]));
}

TYPED_TEST(TRemindLists, AppendClearsBeforeIfTold) {
  this->Add(1);
  TLstRemindItem other(true);
  other.Add(std::make_unique<TRemindItem>(NewGuid()));
  const auto moved = this->Items(other);
  this->FList.Append(other, true);
  EXPECT_THAT(this->Items(this->FList), ElementsAre(moved[0]));
}

TYPED_TEST(TRemindLists, AppendDoesNotMixOwningAndBorrowing) {
  this->Add(1);
  TLstRemindItem borrowing(false);
  TRemindItem item(NewGuid());
  borrowing.Add(item);
  EXPECT_THROW(this->FList.Append(borrowing, true), EInvalidCast);
  EXPECT_THROW(this->FList.Append(this->FList, true), EInvalidCast);
  EXPECT_EQ(this->FList.Count(), 1) << "nothing is lost";
  EXPECT_EQ(borrowing.Count(), 1);
}

TYPED_TEST(TRemindLists, AnItemDueExactlyNowHasElapsed) {
  this->Add(1);
  EXPECT_FALSE(this->FList.HasElapsedItems());
  this->FClock.Advance(999);
  EXPECT_FALSE(this->FList.HasElapsedItems());
  this->FClock.Advance(1);
  EXPECT_TRUE(this->FList.HasElapsedItems());
}

TYPED_TEST(TRemindLists, GoesByTheMachinesClockAndNotByTheCorrectedOne) {
  this->Add(1);
  this->FClock.SetExactOffset(5000);
  EXPECT_FALSE(this->FList.HasElapsedItems());
}

TYPED_TEST(TRemindLists, TheFirstElapsedItemInTheListGoesFirstWhateverItsTime) {
  this->Add(10);
  TRemindItem& later = this->Add(-1);
  TRemindItem& earlier = this->Add(-100);
  std::unique_ptr<TRemindItem> item;
  EXPECT_TRUE(this->FList.ExtractFirstElapsedItem(item));
  EXPECT_EQ(item.get(), &later);
  EXPECT_TRUE(this->FList.ExtractFirstElapsedItem(item));
  EXPECT_EQ(item.get(), &earlier);
  EXPECT_EQ(this->FList.Count(), 1);
}

TYPED_TEST(TRemindLists, WithNoneElapsedTheResultStaysAsItIs) {
  this->Add(1);
  auto item = std::make_unique<TRemindItem>(NewGuid());
  const TRemindItem* before = item.get();
  EXPECT_FALSE(this->FList.ExtractFirstElapsedItem(item));
  EXPECT_EQ(item.get(), before);
}

TYPED_TEST(TRemindLists, AllElapsedItemsComeOutInReverseOrder) {
  TRemindItem& first = this->Add(0);
  this->Add(5);
  TRemindItem& third = this->Add(-5);
  TLstRemindItem elapsed(true);
  EXPECT_TRUE(this->FList.ExtractElapsedItems(elapsed));
  EXPECT_THAT(this->Items(elapsed), ElementsAre(&third, &first));
  EXPECT_EQ(this->FList.Count(), 1);
  EXPECT_FALSE(this->FList.ExtractElapsedItems(elapsed));
  EXPECT_EQ(elapsed.Count(), 2);
}

TYPED_TEST(TRemindLists, ABorrowingListFreesNothingAndHandsNothingOver) {
  TRemindItem one(NewGuid());
  TRemindItem two(NewGuid());
  TypeParam list(false);
  list.Add(one);
  list.Add(two);
  EXPECT_THROW(list.Extract(one), EInvalidCast);
  list.Delete(one);
  TypeParam other(false);
  other.Add(one);
  list.Append(other, false);
  EXPECT_THAT(this->Items(list), ElementsAre(&two, &one));
  EXPECT_THROW(list.Add(std::make_unique<TRemindItem>(NewGuid())), EInvalidCast);
  EXPECT_THROW(this->FList.Add(one), EInvalidCast);
  list.Clear();
  EXPECT_EQ(one.LstDetails().GetCount(), 0) << "the object is still there";
}

TEST(TLstRemindItem, HasSearchResultIdIsRight) {
  const TGuid id = NewGuid();
  TLstRemindItem list(true);
  list.Add(std::make_unique<TRemindItem>(id));
  EXPECT_TRUE(list.HasSearchResultId(id));
  EXPECT_FALSE(list.HasSearchResultId(NewGuid()));
}

TEST(TLstRemindItemSync, HasSearchResultIdIsFalseEvenForAStoredReminder) {
  const TGuid id = NewGuid();
  TLstRemindItemSync list(true);
  list.Add(std::make_unique<TRemindItem>(id));
  EXPECT_FALSE(list.HasSearchResultId(id));
  EXPECT_FALSE(list.RemindTypesBySearchResultId(id) != TRemindTypes());
  EXPECT_NE(list.CloneItemBySearchResultId(id), nullptr);
}

class TChanged : public testing::Test {
 protected:
  TTestClock FClock;
  TLstRemindItemSync FList{true};

  // What a call does to a list that was unchanged before.
  template <class Call>
  bool ChangedBy(Call iCall) {
    FList.SetChanged(false);
    iCall();
    return FList.GetChanged();
  }
};

TEST_F(TChanged, IsFalseAtFirst) { EXPECT_FALSE(FList.GetChanged()); }

TEST_F(TChanged, CanBeSetBothWays) {
  FList.SetChanged(true);
  EXPECT_TRUE(FList.GetChanged());
  FList.SetChanged(false);
  EXPECT_FALSE(FList.GetChanged());
}

TEST_F(TChanged, EveryWriteOperationSetsItEvenOneThatChangesNothing) {
  TRemindItem stranger(NewGuid());
  TLstRemindItem other(true);
  std::unique_ptr<TRemindItem> item;
  EXPECT_TRUE(ChangedBy([&] { FList.Add(std::make_unique<TRemindItem>(NewGuid())); }));
  EXPECT_TRUE(ChangedBy([&] { FList.Delete(0); }));
  EXPECT_TRUE(ChangedBy([&] { FList.Delete(stranger); }));
  EXPECT_TRUE(ChangedBy([&] { FList.DeleteBySearchResultId(NewGuid()); }));
  EXPECT_TRUE(ChangedBy([&] { FList.Extract(stranger); }));
  EXPECT_TRUE(ChangedBy([&] { FList.ExtractBySearchResultId(NewGuid()); }));
  EXPECT_TRUE(ChangedBy([&] { FList.ExtractFirstElapsedItem(item); }));
  EXPECT_TRUE(ChangedBy([&] { FList.ExtractElapsedItems(other); }));
  EXPECT_TRUE(ChangedBy([&] { FList.Append(other, false); }));
  EXPECT_TRUE(ChangedBy([&] { FList.Clear(); }));
}

TEST_F(TChanged, NoReadOperationSetsIt) {
  EXPECT_FALSE(ChangedBy([&] {
    FList.GetCount();
    FList.HasElapsedItems();
    FList.RemindTypesBySearchResultId(NewGuid());
    FList.CloneItemBySearchResultId(NewGuid());
    FList.HasSearchResultId(NewGuid());
    FList.GetChanged();
    FList.BeginRead().EndRead();
    const TLstRemindItemSync::TReading reading(FList);
  }));
}

TEST_F(TChanged, TheWriteBracketAloneSetsIt) {
  EXPECT_TRUE(ChangedBy([&] { FList.BeginWrite().EndWrite(); }));
  EXPECT_TRUE(ChangedBy([&] { const TLstRemindItemSync::TWriting writing(FList); }));
}

TEST_F(TChanged, ReplacingTheWholeListCountsAsLoading) {
  TLstRemindItem other(true);
  other.Add(std::make_unique<TRemindItem>(NewGuid()));
  FList.SetChanged(true);
  FList.Append(other, true);
  EXPECT_EQ(FList.Count(), 1);
  EXPECT_FALSE(FList.GetChanged());
}

TEST_F(TChanged, StaysSetAfterAnAppendThatFailed) {
  FList.SetChanged(true);
  EXPECT_THROW(FList.Append(FList, true), EInvalidCast);
  EXPECT_TRUE(FList.GetChanged());
}

TEST_F(TChanged, AnElapsedItemThatWasTakenOutCountsAsAChange) {
  auto due = std::make_unique<TRemindItem>(NewGuid());
  due->SetRemindTime(FClock.Now());
  FList.Add(std::move(due));
  std::unique_ptr<TRemindItem> item;
  EXPECT_TRUE(ChangedBy([&] { FList.ExtractFirstElapsedItem(item); }));
  EXPECT_NE(item, nullptr);
}

TEST(TLstRemindItemSync, BracketsAnswerTheListAndLieInOneAnother) {
  TLstRemindItemSync list(true);
  EXPECT_EQ(list.BeginWrite().BeginRead().BeginWrite().Count(), 0);
  list.SetChanged(false);
  list.Clear();
  list.EndWrite();
  list.EndRead();
  list.EndWrite();
  EXPECT_EQ(list.BeginRead().BeginRead().Count(), 0);
  list.EndRead();
  list.EndRead();
  EXPECT_TRUE(list.GetChanged());
}

// Whoever takes the write lock inside of a read bracket raises, so this shows who takes it.
TEST(TLstRemindItemSync, EveryWriteOperationTakesTheWriteLock) {
  TLstRemindItemSync list(true);
  TLstRemindItem other(true);
  TRemindItem item(NewGuid());
  std::unique_ptr<TRemindItem> taken;
  const TLstRemindItemSync::TReading reading(list);
  EXPECT_THROW(list.Clear(), Exception);
  EXPECT_THROW(list.Add(std::make_unique<TRemindItem>(NewGuid())), Exception);
  EXPECT_THROW(list.Add(item), Exception);
  EXPECT_THROW(list.Delete(0), Exception);
  EXPECT_THROW(list.Delete(item), Exception);
  EXPECT_THROW(list.DeleteBySearchResultId(NewGuid()), Exception);
  EXPECT_THROW(list.Extract(item), Exception);
  EXPECT_THROW(list.ExtractBySearchResultId(NewGuid()), Exception);
  EXPECT_THROW(list.Append(other, false), Exception);
  EXPECT_THROW(list.ExtractFirstElapsedItem(taken), Exception);
  EXPECT_THROW(list.ExtractElapsedItems(other), Exception);
  EXPECT_THROW(list.SetChanged(false), Exception);
  EXPECT_FALSE(list.GetChanged());
}

}  // namespace
}  // namespace kk
