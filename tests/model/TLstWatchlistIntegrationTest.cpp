#include "model/TLstWatchlistIntegration.h"

#include <gtest/gtest.h>

#include "tests/support/TFakeSource.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

TEST(TWatchlistIntegration, IsUnchangedAtFirst) {
  const auto source = MakeIntf<TFakeSource>(u"Q");
  const TWatchlistIntegration record(source);
  EXPECT_FALSE(record.IsChanged());
  EXPECT_FALSE(record.ChangedSearchResults());
  EXPECT_FALSE(record.ChangedItems());
  EXPECT_EQ(record.Integration(), TIntf<IWatchlistIntegration>(source));
  EXPECT_EQ(record.Updater().Integration(), TIntf<IWatchlistIntegration>(source));
}

TEST(TWatchlistIntegration, CountsEachChangeThatItIsTold) {
  TWatchlistIntegration record(MakeIntf<TFakeSource>(u"Quelle"));
  EXPECT_EQ(record.ChangeCount(), 0u);
  record.SetChangedItems(true);
  record.SetChangedItems(true);
  record.SetChangedSearchResults(true);
  EXPECT_EQ(record.ChangeCount(), 3u);
  record.SetChangedItems(false);
  record.SetUnchanged();
  EXPECT_EQ(record.ChangeCount(), 3u);
}

TEST(TWatchlistIntegration, IsChangedByEitherFlag) {
  TWatchlistIntegration record(MakeIntf<TFakeSource>(u"Q"));
  record.SetChangedItems(true);
  EXPECT_TRUE(record.IsChanged());
  EXPECT_FALSE(record.ChangedSearchResults());
  record.SetUnchanged();
  EXPECT_FALSE(record.IsChanged());
  record.SetChangedSearchResults(true);
  EXPECT_TRUE(record.IsChanged());
  EXPECT_FALSE(record.ChangedItems());
  record.SetChangedItems(true);
  record.SetUnchanged();
  EXPECT_FALSE(record.ChangedSearchResults());
  EXPECT_FALSE(record.ChangedItems());
}

TEST(TWatchlistIntegration, FreesItsUpdaterBeforeItLetsTheSourceGo) {
  TTestMainLoop loop;
  const int64_t before = LiveObjectCount();
  {
    auto source = MakeIntf<TFakeSource>(u"Q");
    TFakeSource& watched = *source;
    auto record = std::make_unique<TWatchlistIntegration>(source);
    source = {};
    record->Updater().Add(FakeResult(u"A"), {});
    loop.Post([&] { watched.Finish(true); });  // during the updater's wait
    record.reset();
  }
  EXPECT_EQ(LiveObjectCount(), before);
}

class Registry : public testing::Test {
 protected:
  TTestMainLoop loop;
  TIntf<TFakeSource> a = MakeIntf<TFakeSource>(u"A");
  TIntf<TFakeSource> b = MakeIntf<TFakeSource>(u"B");
  TLstWatchlistIntegration lst{true};
};

TEST_F(Registry, HasNoIdsWhenEmpty) {
  EXPECT_EQ(lst.IndexOfId(a->GetId()), -1);
  EXPECT_EQ(lst.IndexOfAffiliateId(a->GetId()), -1);
  EXPECT_FALSE(lst.HasActiveIntegrations());
}

TEST_F(Registry, MakesRecordsInOrderWithoutACheckForDuplicates) {
  TWatchlistIntegration& first = lst.Add(a);
  lst.Add(b);
  TWatchlistIntegration& again = lst.Add(a);
  EXPECT_NE(&first, &again);
  EXPECT_EQ(lst.GetCount(), 3);
  EXPECT_EQ(&lst.GetItems(0), &first);
  EXPECT_EQ(lst.IndexOfId(a->GetId()), 0);
  EXPECT_EQ(lst.IndexOfId(b->GetId()), 1);
  EXPECT_EQ(lst.GetIntegrations(1), TIntf<IWatchlistIntegration>(b));
  EXPECT_THROW(lst.GetItems(3), EListError);
  EXPECT_THROW(lst.GetIntegrations(3), EListError);
}

TEST_F(Registry, TakesAMadeRecord) {
  auto record = std::make_unique<TWatchlistIntegration>(a);
  TWatchlistIntegration* made = record.get();
  EXPECT_EQ(&lst.Add(std::move(record)), made);
  TLstWatchlistIntegration selection(false);
  EXPECT_EQ(&selection.Add(*made), made);
  EXPECT_EQ(selection.IndexOf(made), 0);
}

TEST_F(Registry, FindsTheFirstThatKeepsASourcesResults) {
  b->SetAffiliateId(a->GetId());
  lst.Add(b);
  lst.Add(a);
  EXPECT_EQ(lst.IndexOfAffiliateId(a->GetId()), 0);
  EXPECT_EQ(lst.IndexOfAffiliateId(b->GetId()), -1);
  EXPECT_EQ(lst.IndexOfId(b->GetId()), 0);
}

TEST_F(Registry, IsActiveWhileARequestIsUnderWay) {
  lst.Add(a);
  lst.Add(b);
  EXPECT_FALSE(lst.HasActiveIntegrations());
  lst.GetItems(1).Updater().Add(FakeResult(u"R"), {});
  EXPECT_TRUE(lst.HasActiveIntegrations());
  b->Finish(true);
  EXPECT_FALSE(lst.HasActiveIntegrations());
}

// The active state of the updater counts, not that its entry is still there.
TEST_F(Registry, IsActiveWhileARequestWithoutEntryIsUnderWay) {
  TWatchlistIntegration& record = lst.Add(a);
  const TIntf<ISearchResult> result = FakeResult(u"R");
  record.Updater().Add(result, {});
  record.Updater().Remove(result);
  EXPECT_TRUE(lst.HasActiveIntegrations());
  a->Finish(true);
}

}  // namespace
}  // namespace kk
