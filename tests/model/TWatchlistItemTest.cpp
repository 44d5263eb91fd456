#include "model/TWatchlistItem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ModelWorld.h"
#include "tests/support/TLogRecorder.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const TDateTime cNoon = EncodeDateTime({2026, 11, 20, 12, 0, 0, 0});

TEST(TWatchlistItem, IsEmptyAtFirst) {
  TTestModelRoot root;
  const TWatchlistItem item;
  EXPECT_FALSE(item.SearchResult());
  EXPECT_EQ(item.SearchResultId(), cEmptyGuid);
  EXPECT_EQ(item.ParentCategoryId(), cEmptyGuid);
  EXPECT_TRUE(item.LastUpdateDate().IsZero());
  EXPECT_EQ(item.Description().GetCount(), 0);
  EXPECT_EQ(item.List(), nullptr);
}

TEST(TWatchlistItem, HasNoNameWithoutAResultAndIsFoundByItsStoredId) {
  TTestModelRoot root;
  TWatchlistCategory& category = AddCategory(root.RootCategories(), u"K");
  TWatchlistPlugin& group = AddGroup(category.LstPlugin(), MakeIntf<TFakeSource>(u"Q"));
  TWatchlistItem& item = AddItem(group.LstItem());
  EXPECT_EQ(item.GetName(), u"");
  EXPECT_EQ(root.RootCategories().FindItemById(item.SearchResultId()), &item);
}

TEST(TWatchlistItem, HasTheNameOfItsResult) {
  TTestModelRoot root;
  TWatchlistItem item;
  item.SetSearchResult(FakeResult(u"Lampe"));
  EXPECT_EQ(item.GetName(), u"Lampe");
}

TEST(TWatchlistItem, TakesOverTheIdAndTellsOfANewResult) {
  TTestModelRoot root;
  TWatchlistItem item;
  const TIntf<ISearchResult> lamp = FakeResult(u"Lampe");
  root.SetOnAdd([&](TWatchlistItem& iItem) {
    EXPECT_EQ(&iItem, &item);
    EXPECT_EQ(iItem.SearchResult(), lamp);
    EXPECT_EQ(iItem.SearchResultId(), lamp->GetId());
  });
  item.SetSearchResult(lamp);
  EXPECT_THAT(root.Notes(), ElementsAre("add Lampe"));
}

TEST(TWatchlistItem, TheStoredResultAgainTakesOverItsIdButTellsNobody) {
  TTestModelRoot root;
  TWatchlistItem item;
  const TIntf<ISearchResult> lamp = FakeResult(u"Lampe");
  item.SetSearchResult(lamp);
  root.Notes().clear();
  lamp->SetId(NewGuid());
  item.SetSearchResult(lamp);
  EXPECT_EQ(item.SearchResultId(), lamp->GetId());
  EXPECT_THAT(root.Notes(), IsEmpty());
}

TEST(TWatchlistItem, ASecondObjectOfTheSameIdReplacesAndTellsOfAnAddAgain) {
  TTestModelRoot root;
  TWatchlistItem item;
  const TIntf<ISearchResult> lamp = FakeResult(u"Lampe");
  item.SetSearchResult(lamp);
  const TIntf<ISearchResult> fresh = lamp->Clone();
  item.SetSearchResult(fresh);
  EXPECT_EQ(item.SearchResult(), fresh);
  EXPECT_THAT(root.Notes(), ElementsAre("add Lampe", "add Lampe"));
}

TEST(TWatchlistItem, AnEmptyResultRaisesAndChangesNothing) {
  TTestModelRoot root;
  TWatchlistItem item;
  const TIntf<ISearchResult> lamp = FakeResult(u"Lampe");
  item.SetSearchResult(lamp);
  EXPECT_THROW(item.SetSearchResult({}), Exception);
  EXPECT_EQ(item.SearchResult(), lamp);
  EXPECT_EQ(item.SearchResultId(), lamp->GetId());
}

TEST(TWatchlistItem, IsFoundUnderTheIdOfItsNewResult) {
  TTestModelRoot root;
  TLstWatchlistItem lst(true);
  TWatchlistItem& item = AddItem(lst, u"Lampe");
  const TGuid before = item.SearchResultId();
  item.SetSearchResult(FakeResult(u"Stuhl"));
  EXPECT_EQ(lst.IndexOfSearchResultId(before), -1);
  EXPECT_EQ(lst.IndexOfSearchResultId(item.SearchResultId()), 0);
}

TEST(TWatchlistItem, CopiesTheLinesOfItsDescription) {
  TTestModelRoot root;
  TWatchlistItem item;
  TStringList lines{u"eins", u"zwei"};
  item.SetDescription(lines);
  lines.Add(u"drei");
  EXPECT_EQ(item.Description().Lines(), (std::vector<TString>{u"eins", u"zwei"}));
}

TEST(TWatchlistItem, KeepsWhatIsTheUsers) {
  TTestModelRoot root;
  TWatchlistItem item;
  const TGuid id = NewGuid();
  item.SetParentCategoryId(id);
  item.SetLastUpdateDate(cNoon);
  item.Description().Add(u"Notiz");
  EXPECT_EQ(item.ParentCategoryId(), id);
  EXPECT_EQ(item.LastUpdateDate(), cNoon);
  EXPECT_EQ(item.Description().GetCount(), 1);
}

TEST(TWatchlistItem, AnOfferWithoutEndCanAlwaysBeRefreshed) {
  TTestModelRoot root;
  TWatchlistItem item;
  item.SetSearchResult(FakeResult(u"Lampe"));
  EXPECT_TRUE(item.CanUpdate());
  item.SetLastUpdateDate(cNoon);
  EXPECT_TRUE(item.CanUpdate());
}

TEST(TWatchlistItem, AnAuctionCanBeRefreshedUntilOneCameAfterItsEnd) {
  TTestModelRoot root;
  TWatchlistItem item;
  item.SetSearchResult(FakeResult(u"Lampe", cNoon));
  EXPECT_TRUE(item.CanUpdate());
  item.SetLastUpdateDate(cNoon);
  EXPECT_TRUE(item.CanUpdate());  // the end itself counts as before
  item.SetLastUpdateDate(cNoon.PlusMs(TDateTime::cMsPerSecond));
  EXPECT_FALSE(item.CanUpdate());
  item.SetLastUpdateDate(cNoon.PlusMs(1));
  EXPECT_FALSE(item.CanUpdate());
  item.SetLastUpdateDate(cNoon.PlusMs(-1));
  EXPECT_TRUE(item.CanUpdate());
}

TEST(TWatchlistItem, WithoutAResultItCannotBeRefreshed) {
  TTestModelRoot root;
  const TWatchlistItem item;
  EXPECT_FALSE(item.CanUpdate());
}

TEST(TWatchlistItem, TellsOfItsDeathWhileItIsWhole) {
  TTestModelRoot root;
  auto item = std::make_unique<TWatchlistItem>();
  item->SetSearchResult(FakeResult(u"Lampe"));
  item->Description().Add(u"Notiz");
  root.SetOnDelete([](TWatchlistItem& iItem) {
    EXPECT_EQ(iItem.GetName(), u"Lampe");
    EXPECT_EQ(iItem.Description().Get(0), u"Notiz");
  });
  item.reset();
  EXPECT_THAT(root.Notes(), ElementsAre("add Lampe", "delete Lampe"));
}

TEST(TWatchlistItem, DiesInItsListWhileItIsWholeAndOutOfIt) {
  TTestModelRoot root;
  TLstWatchlistItem lst(true);
  AddItem(lst, u"Lampe").Description().Add(u"Notiz");
  root.SetOnDelete([&](TWatchlistItem& iItem) {
    EXPECT_EQ(iItem.GetName(), u"Lampe");
    EXPECT_EQ(iItem.Description().Get(0), u"Notiz");
    EXPECT_EQ(iItem.List(), nullptr);
    EXPECT_EQ(lst.GetCount(), 0);
    EXPECT_EQ(lst.IndexOfSearchResultId(iItem.SearchResultId()), -1);
  });
  lst.Delete(0);
  EXPECT_THAT(root.Notes(), ElementsAre("add Lampe", "delete Lampe"));
}

TEST(TWatchlistItem, ExtractingTellsNobody) {
  TTestModelRoot root;
  TLstWatchlistItem lst(true);
  AddItem(lst, u"Lampe");
  root.Notes().clear();
  const std::unique_ptr<TWatchlistItem> item = lst.Extract(0);
  EXPECT_THAT(root.Notes(), IsEmpty());
  EXPECT_EQ(item->List(), nullptr);
}

TEST(TWatchlistItem, AListenerThatRaisesDoesNotKeepItFromDying) {
  TTestModelRoot root;
  TLogRecorder log;
  root.SetOnDelete([](TWatchlistItem&) { throw Exception(u"kaputt"); });
  { TWatchlistItem item; }
  EXPECT_THAT(log.DebugLines(), ElementsAre("debug TWatchlistItem: kaputt"));
}

TEST(TWatchlistItem, WithoutARootItDiesUntoldAndTakesNoResult) {
  ASSERT_FALSE(HasWatchlistModelRoot());
  TWatchlistItem item;
  EXPECT_THROW(item.SetSearchResult(FakeResult(u"Lampe")), Exception);
}

TEST(WatchlistModelRoot, RaisesWithoutOneAndAnswersTheOneBefore) {
  EXPECT_THROW(WatchlistModelRoot(), Exception);
  TTestModelRoot outer;
  {
    TTestModelRoot inner;
    EXPECT_EQ(&WatchlistModelRoot(), &inner);
  }
  EXPECT_EQ(&WatchlistModelRoot(), &outer);
  EXPECT_TRUE(HasWatchlistModelRoot());
}

}  // namespace
}  // namespace kk
