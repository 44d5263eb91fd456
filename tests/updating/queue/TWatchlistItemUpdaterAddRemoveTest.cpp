#include "TUpdaterTest.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using UpdaterAdding = TUpdaterTest;
using UpdaterRemoving = TUpdaterTest;

TEST_F(UpdaterAdding, StartsARequestWithAClone) {
  EXPECT_TRUE(Add(a));
  ASSERT_EQ(source->Requests().size(), 1u);
  const TIntf<ISearchResult> sent = source->Requests()[0].Clone;
  EXPECT_FALSE(sent == a);
  EXPECT_EQ(sent->GetId(), a->GetId());
  EXPECT_TRUE(updater.IsActive());
  EXPECT_TRUE(updater.IsActiveWithItem());
  EXPECT_EQ(updater.GetCount(), 1);
  EXPECT_EQ(updater.Integration(), TIntf<IWatchlistIntegration>(source));
}

TEST_F(UpdaterAdding, SendsOneRequestAtATime) {
  Add(a);
  Add(b);
  EXPECT_EQ(source->Requests().size(), 1u);
  EXPECT_EQ(updater.GetCount(), 2);
  source->Finish(true);
  EXPECT_EQ(source->Requests().size(), 1u);
  EXPECT_EQ(source->Requests()[0].Clone->GetName(), u"B");
}

TEST_F(UpdaterAdding, AQueuedIdIsRefusedAndChangesNothing) {
  updater.BeginAdd();
  Add(a);
  const auto sameId = MakeIntf<TFakeSearchResult>(u"Anderer Artikel", a->GetId());
  EXPECT_FALSE(Add(sameId));
  EXPECT_FALSE(AddPriorized(sameId));
  EXPECT_EQ(updater.GetCount(), 1);
  updater.EndAdd();
  EXPECT_THAT(witness.Lines("added"), ElementsAre("added 1"));
}

TEST_F(UpdaterAdding, ARefusedResultRaisesNoAfterAddOfItsOwn) {
  Add(a);
  EXPECT_FALSE(Add(a));
  EXPECT_THAT(witness.Lines("added"), ElementsAre("added 1"));
}

TEST_F(UpdaterAdding, TheSameArticleUnderAnotherIdGoesIn) {
  Add(a);
  EXPECT_TRUE(updater.HasSearchResult(FakeResult(u"A")));
  EXPECT_TRUE(Add(FakeResult(u"A")));
}

TEST_F(UpdaterAdding, AnEmptyResultIsRefused) {
  EXPECT_FALSE(Add({}));
  EXPECT_FALSE(AddPriorized({}));
  EXPECT_THAT(witness.Lines(), IsEmpty());
}

TEST_F(UpdaterAdding, AServedIdMayComeAgain) {
  Add(a);
  source->Finish(true);
  EXPECT_TRUE(Add(a));
  EXPECT_EQ(source->Requests().size(), 1u);
}

TEST_F(UpdaterAdding, PriorizedWithNothingRunningGoesToTheFront) {
  updater.BeginAdd();
  Add(a);
  Add(b);
  EXPECT_TRUE(AddPriorized(c));
  updater.EndAdd();
  EXPECT_EQ(ServeAll(), "CAB");
}

TEST_F(UpdaterAdding, PriorizedGoesRightBehindTheRunningEntry) {
  Add(a);
  Add(b);
  Add(c);
  AddPriorized(d);
  EXPECT_EQ(ServeAll(), "ADBC");
}

TEST_F(UpdaterAdding, SeveralPriorizedStandInReverseOrderOfTheirCalls) {
  Add(a);
  AddPriorized(b);
  AddPriorized(c);
  AddPriorized(d);
  EXPECT_EQ(ServeAll(), "ADCB");
}

TEST_F(UpdaterAdding, PriorizedAfterTheRunningEntryWasRemovedGoesToTheFront) {
  Add(a);
  Add(b);
  updater.Remove(a);
  AddPriorized(c);
  EXPECT_EQ(source->Requests().size(), 1u);
  source->Finish(true);
  EXPECT_EQ(ServeAll(), "CB");
}

TEST_F(UpdaterAdding, WhatWaitsIsTakenBackAndTheRunningRequestEnds) {
  updater.RemoveWaiting();
  Add(a);
  Add(b);
  Add(c);
  updater.RemoveWaiting();
  EXPECT_EQ(updater.GetCount(), 1);
  EXPECT_EQ(ServeAll(), "A");
  EXPECT_EQ(updater.GetCount(), 0);
}

TEST_F(UpdaterAdding, BehindARunningEntryThatWasRemovedAllIsTakenBack) {
  Add(a);
  Add(b);
  updater.Remove(a);
  updater.RemoveWaiting();
  EXPECT_EQ(updater.GetCount(), 0);
  source->Finish(true);
  EXPECT_TRUE(source->Requests().empty());
}

TEST_F(UpdaterAdding, AListStartsOneRequestOnceItIsWhole) {
  witness.SetOnAfterAdd([&] {
    EXPECT_EQ(updater.GetCount(), 3);
    EXPECT_EQ(source->Requests().size(), 0u);
  });
  EXPECT_EQ(updater.Add(*ListOf({a, b, c}), witness.ForEntry()), 3);
  EXPECT_THAT(witness.Lines("added"), ElementsAre("added 3"));
  EXPECT_EQ(ServeAll(), "ABC");
}

TEST_F(UpdaterAdding, AListTellsHowManyWentIn) {
  Add(a);
  EXPECT_EQ(updater.Add(*ListOf({a, b, b, {}, c}), {}), 2);
  EXPECT_EQ(updater.GetCount(), 3);
  EXPECT_EQ(updater.Add(*ListOf({a}), {}), 0);
  EXPECT_THAT(witness.Lines("added"), ElementsAre("added 1", "added 2", "added 0"));
}

TEST_F(UpdaterAdding, APriorizedListStandsInReverseBehindTheRunningEntry) {
  Add(a);
  EXPECT_EQ(updater.AddPriorized(*ListOf({b, c, d, a}), {}), 3);
  EXPECT_EQ(ServeAll(), "ADCB");
}

TEST_F(UpdaterAdding, AfterAddIsRaisedOncePerOutermostBlock) {
  updater.BeginAdd();
  updater.BeginAdd();
  Add(a);
  updater.EndAdd();
  updater.Add(*ListOf({b, c}), {});
  EXPECT_THAT(witness.Lines("added"), IsEmpty());
  EXPECT_EQ(source->Requests().size(), 0u);
  updater.EndAdd();
  EXPECT_THAT(witness.Lines("added"), ElementsAre("added 3"));
  EXPECT_EQ(source->Requests().size(), 1u);
  EXPECT_EQ(witness.LastSender(), &updater);
}

TEST_F(UpdaterAdding, AnEmptyBlockRaisesAfterAddWithZero) {
  updater.BeginAdd();
  updater.EndAdd();
  EXPECT_THAT(witness.Lines(), ElementsAre("added 0"));
}

TEST_F(UpdaterAdding, EndAddWithoutBeginStaysAtZeroAndStillRaisesAndStarts) {
  updater.EndAdd();
  EXPECT_THAT(witness.Lines(), ElementsAre("added 0"));
  updater.BeginAdd();
  Add(a);
  EXPECT_EQ(source->Requests().size(), 0u);
  updater.EndAdd();
  EXPECT_EQ(source->Requests().size(), 1u);
  // The count is that of the last block.
  updater.EndAdd();
  EXPECT_THAT(witness.Lines("added"), ElementsAre("added 0", "added 1", "added 1"));
}

TEST_F(UpdaterAdding, InABlockAnEndingRequestDoesNotStartTheNext) {
  Add(a);
  Add(b);
  updater.BeginAdd();
  source->Finish(true);
  EXPECT_EQ(source->Requests().size(), 0u);
  EXPECT_FALSE(updater.IsActive());
  EXPECT_EQ(updater.GetCount(), 1);
  updater.EndAdd();
  EXPECT_EQ(source->Requests().size(), 1u);
}

TEST_F(UpdaterAdding, AResultThatRaisesClosesTheBlock) {
  class TRaising : public TFakeSearchResult {
   public:
    using TFakeSearchResult::TFakeSearchResult;
    TGuid GetId() const override { throw Exception(u"kaputt"); }
  };
  EXPECT_THROW(updater.Add(*ListOf({a, MakeIntf<TRaising>(u"X"), b}), {}), Exception);
  EXPECT_EQ(updater.GetCount(), 1);
  EXPECT_EQ(source->Requests().size(), 1u);
}

TEST_F(UpdaterRemoving, TakesAWaitingEntryOut) {
  Add(a);
  Add(b);
  Add(c);
  EXPECT_TRUE(updater.Remove(b));
  EXPECT_TRUE(updater.IsActiveWithItem());
  EXPECT_EQ(ServeAll(), "AC");
}

TEST_F(UpdaterRemoving, GoesByTheId) {
  Add(a);
  Add(b);
  EXPECT_FALSE(updater.Remove(FakeResult(u"B")));
  EXPECT_TRUE(updater.Remove(MakeIntf<TFakeSearchResult>(u"Anders", b->GetId())));
  EXPECT_FALSE(updater.Remove(b));
  EXPECT_FALSE(updater.Remove({}));
  EXPECT_EQ(updater.GetCount(), 1);
}

TEST_F(UpdaterRemoving, TheRunningEntrysCallbackIsNotCalledButTheUpdatersListenerIs) {
  Add(a);
  Add(b);
  EXPECT_TRUE(updater.Remove(a));
  EXPECT_TRUE(updater.IsActive());
  EXPECT_FALSE(updater.IsActiveWithItem());
  EXPECT_EQ(source->Requests().size(), 1u);
  const TIntf<ISearchResult> fresh = FakeResult(u"Neu");
  const TGuid freshId = fresh->GetId();
  witness.Lines().clear();
  source->Finish(true, fresh);
  EXPECT_EQ(fresh->GetId(), freshId);
  EXPECT_THAT(witness.Lines("updater"), ElementsAre("updater Neu ok"));
  EXPECT_THAT(witness.Lines("entry"), IsEmpty());
  EXPECT_EQ(ServeAll(), "B");
}

TEST_F(UpdaterRemoving, TheOnlyRunningEntryLeavesAnEmptyQueueThatGoesOnLater) {
  Add(a);
  updater.Remove(a);
  EXPECT_EQ(updater.GetCount(), 0);
  EXPECT_TRUE(Add(a));  // its id is free again
  EXPECT_EQ(source->Requests().size(), 1u);
  source->Finish(true);
  EXPECT_EQ(source->Requests().size(), 1u);
  EXPECT_EQ(ServeAll(), "A");
}

TEST_F(UpdaterRemoving, TheFirstOfAnIdleQueueIsTakenOutToo) {
  updater.BeginAdd();
  Add(a);
  Add(b);
  EXPECT_TRUE(updater.Remove(a));
  updater.EndAdd();
  EXPECT_EQ(ServeAll(), "B");
}

TEST_F(UpdaterRemoving, ManyEntriesInAnyOrder) {
  Add(a);
  std::vector<TIntf<ISearchResult>> results;
  updater.BeginAdd();
  for (int i = 0; i < 100; ++i) results.push_back(FakeResult(u"R"));
  for (const auto& result : results) AddPriorized(result);
  updater.EndAdd();
  for (size_t i = 0; i < results.size(); ++i) {
    EXPECT_TRUE(updater.Remove(results[i * 37 % 100]));
    EXPECT_EQ(updater.GetCount(), 100 - static_cast<int>(i));
  }
  EXPECT_EQ(ServeAll(), "A");
}

TEST_F(UpdaterAdding, HasSearchResultAsksForSamenessNotForTheId) {
  updater.BeginAdd();
  Add(a);
  Add(b);
  EXPECT_TRUE(updater.HasSearchResult(FakeResult(u"B")));
  EXPECT_FALSE(updater.HasSearchResult(MakeIntf<TFakeSearchResult>(u"X", a->GetId())));
  EXPECT_FALSE(updater.HasSearchResult({}));
}

}  // namespace
}  // namespace kk
