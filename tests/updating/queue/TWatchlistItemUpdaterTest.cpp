#include "updating/queue/TWatchlistItemUpdater.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TWitness.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using TLines = std::vector<std::string>;

TIntf<IInterfaceList> ListOf(std::initializer_list<TIntf<ISearchResult>> iResults) {
  const TIntf<IInterfaceList> list = NewInterfaceList();
  for (const auto& result : iResults) list->Add(result);
  return list;
}

class TWatchlistItemUpdaterTest : public testing::Test {
 protected:
  TWatchlistItemUpdaterTest() { witness.Watch(updater); }
  ~TWatchlistItemUpdaterTest() override {
    while (!source->Requests().empty()) source->Finish(true);
  }

  bool Add(const TIntf<ISearchResult>& iResult) { return updater.Add(iResult, witness.ForEntry()); }
  bool AddPriorized(const TIntf<ISearchResult>& iResult) {
    return updater.AddPriorized(iResult, witness.ForEntry());
  }
  std::string IdOf(const TIntf<ISearchResult>& iResult) {
    return ToUtf8(GUIDToString(iResult->GetId()));
  }
  // Ends all requests and answers the names in the order in which they went out.
  std::string ServeAll() {
    std::string names;
    while (!source->Requests().empty()) {
      names += ToUtf8(source->Requests().front().Clone->GetName());
      source->Finish(true);
    }
    return names;
  }

  TTestMainLoop loop;
  TWitness witness;
  TIntf<TFakeSource> source = MakeIntf<TFakeSource>(u"Quelle");
  TWatchlistItemUpdater updater{source};
  TIntf<ISearchResult> a = FakeResult(u"A");
  TIntf<ISearchResult> b = FakeResult(u"B");
  TIntf<ISearchResult> c = FakeResult(u"C");
  TIntf<ISearchResult> d = FakeResult(u"D");
};

using UpdaterAdding = TWatchlistItemUpdaterTest;
using UpdaterRefreshing = TWatchlistItemUpdaterTest;
using UpdaterRemoving = TWatchlistItemUpdaterTest;
using UpdaterStopping = TWatchlistItemUpdaterTest;
using UpdaterListening = TWatchlistItemUpdaterTest;

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

TEST_F(UpdaterRefreshing, EventsAndLogComeInOrder) {
  Add(a);
  Add(b);
  witness.Lines().clear();
  source->Finish(true);
  EXPECT_THAT(witness.Lines(),
              ElementsAre("log Updater (Quelle): Update für " + IdOf(a) + " erfolgreich",
                          "updater A ok", "entry A ok", "progress", "progress",
                          "log Updater (Quelle): Update für " + IdOf(b) + " gestartet"));
}

TEST_F(UpdaterRefreshing, AStartRaisesProgressAndLogs) {
  Add(a);
  EXPECT_THAT(witness.Lines(),
              ElementsAre("added 1", "progress",
                          "log Updater (Quelle): Update für " + IdOf(a) + " gestartet"));
}

TEST_F(UpdaterRefreshing, AFailureIsLoggedAndToldAndTheQueueMovesOn) {
  Add(a);
  Add(b);
  witness.Lines().clear();
  source->Finish(false);
  EXPECT_THAT(witness.Lines(),
              ElementsAre("log Updater (Quelle): Update für " + IdOf(a) + " fehlgeschlagen",
                          "updater A failed", "entry A failed", "progress", "progress",
                          "log Updater (Quelle): Update für " + IdOf(b) + " gestartet"));
  EXPECT_EQ(updater.GetCount(), 1);
}

TEST_F(UpdaterRefreshing, ASuccessIsDeliveredUnderTheOldId) {
  const TIntf<ISearchResult> fresh = FakeResult(u"Neu");
  const TGuid freshId = fresh->GetId();
  TIntf<ISearchResult> delivered;
  witness.SetOnUpdater([&](const TIntf<ISearchResult>& iResult) { delivered = iResult; });
  Add(a);
  witness.Lines().clear();
  source->Finish(true, fresh);
  EXPECT_EQ(delivered, fresh);
  EXPECT_EQ(fresh->GetId(), a->GetId());
  // The log names the id that the source gave.
  EXPECT_EQ(witness.Lines("log")[0],
            "log Updater (Quelle): Update für " + ToUtf8(GUIDToString(freshId)) + " erfolgreich");
}

TEST_F(UpdaterRefreshing, AFailureKeepsTheIdThatTheSourceGave) {
  const TIntf<ISearchResult> fresh = FakeResult(u"Neu");
  const TGuid freshId = fresh->GetId();
  Add(a);
  source->Finish(false, fresh);
  EXPECT_EQ(fresh->GetId(), freshId);
}

TEST_F(UpdaterRefreshing, TheStoredResultDoesNotChangeWhileTheSourceWorks) {
  Add(a);
  dynamic_cast<TFakeSearchResult*>(source->Requests()[0].Clone.Get())->SetName(u"Halb fertig");
  EXPECT_EQ(a->GetName(), u"A");
}

TEST_F(UpdaterRefreshing, AnEntryWithoutCallbackTellsTheUpdatersListenerAlone) {
  updater.Add(a, {});
  source->Finish(true);
  EXPECT_THAT(witness.Lines("updater"), ElementsAre("updater A ok"));
  EXPECT_THAT(witness.Lines("entry"), IsEmpty());
}

TEST_F(UpdaterRefreshing, WithoutListenersTheQueueIsServedAllTheSame) {
  TWatchlistItemUpdater silent(source);
  silent.Add(*ListOf({a, b}), {});
  EXPECT_EQ(ServeAll(), "AB");
  EXPECT_EQ(silent.GetCount(), 0);
}

TEST_F(UpdaterRefreshing, TheEntryIsOutOfTheQueueWhenListenersHear) {
  witness.SetOnUpdater([&](const auto&) {
    EXPECT_EQ(updater.GetCount(), 0);
    EXPECT_FALSE(updater.IsActive());
    EXPECT_FALSE(updater.IsActiveWithItem());
  });
  Add(a);
  source->Finish(true);
  EXPECT_THAT(witness.Lines("updater"), ElementsAre("updater A ok"));
  EXPECT_EQ(witness.LastSender(), &updater);
}

TEST_F(UpdaterRefreshing, SourcesRefreshSideBySide) {
  const auto other = MakeIntf<TFakeSource>(u"Andere");
  TWatchlistItemUpdater second(other);
  Add(a);
  second.Add(a, {});
  EXPECT_EQ(source->Requests().size(), 1u);
  EXPECT_EQ(other->Requests().size(), 1u);
  other->Finish(true);
}

TEST_F(UpdaterRefreshing, WithoutTheInterfaceAllFinishInOneGoWithTheirOldData) {
  const auto still = MakeIntf<TFakeSource>(u"Still", NewGuid(), TFakeAbilities{false, true});
  TWatchlistItemUpdater atOnce(still);
  witness.Watch(atOnce);
  std::vector<TIntf<ISearchResult>> delivered;
  witness.SetOnUpdater([&](const auto& iResult) { delivered.push_back(iResult); });
  atOnce.BeginAdd();
  atOnce.Add(*ListOf({a, b, c}), witness.ForEntry());
  EXPECT_THAT(witness.Lines(), IsEmpty());
  atOnce.EndAdd();
  EXPECT_THAT(delivered, ElementsAre(a, b, c));
  EXPECT_THAT(witness.Lines("entry"), ElementsAre("entry A ok", "entry B ok", "entry C ok"));
  EXPECT_EQ(atOnce.GetCount(), 0);
  EXPECT_FALSE(atOnce.IsActive());
}

TEST_F(UpdaterRefreshing, ASourceThatAnswersAtOnceIsHeardInTheSameOrder) {
  source->SetAnswersAtOnce(true);
  updater.Add(*ListOf({a, b}), witness.ForEntry());
  const std::string log = "log Updater (Quelle): Update für ";
  EXPECT_THAT(witness.Lines(),
              ElementsAre("added 2", "progress", log + IdOf(a) + " gestartet",
                          log + IdOf(a) + " erfolgreich", "updater A ok", "entry A ok", "progress",
                          "progress", log + IdOf(b) + " gestartet", log + IdOf(b) + " erfolgreich",
                          "updater B ok", "entry B ok", "progress"));
}

class UpdaterLongQueue : public TWatchlistItemUpdaterTest,
                         public testing::WithParamInterface<bool> {};

TEST_P(UpdaterLongQueue, DoesNotPileUpOnTheStack) {
  constexpr int cCount = 200000;
  const auto quick =
      MakeIntf<TFakeSource>(u"Schnell", NewGuid(), TFakeAbilities{GetParam(), false});
  quick->SetAnswersAtOnce(true);
  TWatchlistItemUpdater atOnce(quick);
  SetLogSink(nullptr);
  const TIntf<IInterfaceList> list = NewInterfaceList();
  for (int i = 0; i < cCount; ++i) list->Add(FakeResult(u"R"));
  int served = 0;
  witness.SetOnEntry([&](const auto& iResult) {
    EXPECT_EQ(iResult->GetId(), GetAs<ISearchResult>(*list, served++)->GetId());
  });
  EXPECT_EQ(atOnce.Add(*list, witness.ForEntry()), cCount);
  EXPECT_EQ(served, cCount);
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutRefresh, UpdaterLongQueue, testing::Bool());

TEST_F(UpdaterRefreshing, AListenerThatAlwaysAddsDoesNotPileUpOnTheStack) {
  SetLogSink(nullptr);
  source->SetAnswersAtOnce(true);
  int left = 100000;
  witness.SetOnUpdater([&](const auto&) {
    if (--left > 0) updater.Add(FakeResult(u"R"), {});
  });
  updater.Add(a, {});
  EXPECT_EQ(left, 0);
}

TEST_F(UpdaterRefreshing, ASecondAnswerToOneRequestIsPassedOver) {
  Add(a);
  const auto request = source->Requests()[0];
  source->Finish(true);
  witness.Lines().clear();
  request.OnFinished(nullptr, request.Clone, true);
  EXPECT_THAT(witness.Lines(), IsEmpty());
}

TEST_F(UpdaterRefreshing, ASourceThatRaisesHasFailed) {
  const auto raising =
      MakeIntf<TFunctionSource>([](const auto&, auto) -> void { throw Exception(u"kein Netz"); });
  TWatchlistItemUpdater other(raising);
  witness.Watch(other);
  other.Add(*ListOf({a, b}), witness.ForEntry());
  EXPECT_THAT(witness.Lines("entry"), ElementsAre("entry A failed", "entry B failed"));
  EXPECT_EQ(other.GetCount(), 0);
  EXPECT_FALSE(other.IsActive());
}

TEST_F(UpdaterRefreshing, ASourceThatAnswersAndThenRaisesHasAnswered) {
  const auto raising = MakeIntf<TFunctionSource>(
      [](const TIntf<ISearchResult>& iResult, TNotifyEventSearchResult iFinished) {
        iFinished(nullptr, iResult, true);
        throw Exception(u"zu spät");
      });
  TWatchlistItemUpdater other(raising);
  witness.Watch(other);
  other.Add(*ListOf({a, b}), witness.ForEntry());
  EXPECT_THAT(witness.Lines("entry"), ElementsAre("entry A ok", "entry B ok"));
}

TEST_F(UpdaterRefreshing, AnAnswerWithoutAResultIsAFailure) {
  const auto empty = MakeIntf<TFunctionSource>(
      [](const TIntf<ISearchResult>&, TNotifyEventSearchResult iFinished) {
        iFinished(nullptr, {}, true);
      });
  TWatchlistItemUpdater other(empty);
  witness.Watch(other);
  other.Add(a, witness.ForEntry());
  EXPECT_THAT(witness.Lines("updater"), ElementsAre("updater A failed"));
  EXPECT_THAT(witness.Lines("entry"), ElementsAre("entry A failed"));
}

TEST_F(UpdaterRefreshing, AnAnswerWithoutAResultForARemovedEntryIsToldToNobody) {
  Add(a);
  Add(b);
  const auto request = source->Requests()[0];
  source->Requests().clear();
  updater.Remove(a);
  witness.Lines().clear();
  request.OnFinished(nullptr, {}, false);
  EXPECT_THAT(witness.Lines("updater"), IsEmpty());
  EXPECT_EQ(source->Requests().size(), 1u);
}

TEST_F(UpdaterRefreshing, AResultThatRefusesItsIdIsNotDeliveredAsASuccess) {
  class TStubborn : public TFakeSearchResult {
   public:
    using TFakeSearchResult::TFakeSearchResult;
    void SetId(const TGuid&) override { throw Exception(u"nein"); }
  };
  Add(a);
  Add(b);
  source->Finish(true, MakeIntf<TStubborn>(u"S"));
  EXPECT_THAT(witness.Lines("updater"), ElementsAre("updater S failed"));
  EXPECT_EQ(ServeAll(), "B");
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

TEST_F(UpdaterStopping, AfterUninitializeAddQueuesAndNothingStarts) {
  updater.Uninitialize();
  EXPECT_TRUE(Add(a));
  EXPECT_EQ(updater.GetCount(), 1);
  EXPECT_EQ(source->Requests().size(), 0u);
  EXPECT_FALSE(updater.IsActive());
  EXPECT_THAT(witness.Lines(), IsEmpty());
}

TEST_F(UpdaterStopping, ARunningRequestEndsWithoutEventsAndTheNextStays) {
  Add(a);
  Add(b);
  witness.Lines().clear();
  updater.Uninitialize();
  EXPECT_TRUE(updater.IsActiveWithItem());
  source->Finish(true);
  EXPECT_FALSE(updater.IsActive());
  EXPECT_EQ(updater.GetCount(), 1);
  EXPECT_THAT(witness.Lines(),
              ElementsAre("log Updater (Quelle): Update für " + IdOf(a) + " erfolgreich"));
  EXPECT_EQ(source->Requests().size(), 0u);
}

TEST_F(UpdaterStopping, WaitForOnAnIdleUpdaterReturnsAtOnce) {
  updater.WaitFor();
  EXPECT_EQ(loop.Turns(), 0);
  Add(a);
  EXPECT_EQ(source->Requests().size(), 0u);
}

TEST_F(UpdaterStopping, WaitForKeepsTheLoopAliveUntilTheRequestEnds) {
  Add(a);
  Add(b);
  bool ended = false;
  const auto timer = loop.StartTimer(50, [&] {
    if (ended) return;
    EXPECT_TRUE(updater.IsActiveWithItem());
    ended = true;
    source->Finish(true);
  });
  updater.WaitFor();
  loop.StopTimer(timer);
  EXPECT_TRUE(ended);
  EXPECT_FALSE(updater.IsActive());
  EXPECT_EQ(updater.GetCount(), 1);
}

// Looks like a mistake and is required: the wait is for a request with its entry.
TEST_F(UpdaterStopping, WaitForDoesNotWaitForARequestWhoseEntryWasRemoved) {
  Add(a);
  updater.Remove(a);
  updater.WaitFor();
  EXPECT_TRUE(updater.IsActive());
}

TEST_F(UpdaterStopping, TheDestructorWaitsForTheRequestAndIsSilent) {
  auto dying = std::make_unique<TWatchlistItemUpdater>(source);
  witness.Watch(*dying);
  dying->Add(*ListOf({a, b}), witness.ForEntry());
  witness.Lines().clear();
  loop.Post([] { throw Exception(u"von anderen"); });
  const auto timer = loop.StartTimer(20, [&] {
    if (!source->Requests().empty()) source->Finish(true);
  });
  dying.reset();
  loop.StopTimer(timer);
  EXPECT_TRUE(source->Requests().empty());
  EXPECT_THAT(witness.Lines("updater"), IsEmpty());
  EXPECT_THAT(witness.Lines("entry"), IsEmpty());
  EXPECT_THAT(witness.Lines("progress"), IsEmpty());
}

TEST_F(UpdaterStopping, TheDestructorWaitsForARemovedEntrysRequestToo) {
  auto dying = std::make_unique<TWatchlistItemUpdater>(source);
  dying->Add(a, {});
  dying->Remove(a);
  loop.Post([&] { source->Finish(true); });
  dying.reset();
  EXPECT_TRUE(source->Requests().empty());
}

TEST_F(UpdaterListening, ExceptionsOfListenersDoNotStopTheQueue) {
  const auto raise = [](const auto&) -> void { throw Exception(u"kaputt"); };
  witness.SetOnUpdater(raise);
  witness.SetOnEntry(raise);
  witness.SetOnProgress([] { throw Exception(u"kaputt"); });
  witness.SetOnAfterAdd([] { throw Exception(u"kaputt"); });
  updater.Add(*ListOf({a, b}), witness.ForEntry());
  EXPECT_EQ(ServeAll(), "AB");
  EXPECT_THAT(witness.Lines("updater"), ElementsAre("updater A ok", "updater B ok"));
  EXPECT_THAT(witness.Lines("entry"), ElementsAre("entry A ok", "entry B ok"));
}

TEST_F(UpdaterListening, AnAddFromAListenerIsServedOnceWithItsOwnCallback) {
  witness.SetOnUpdater([&](const TIntf<ISearchResult>& iResult) {
    if (iResult->GetName() == u"A") Add(c);
  });
  Add(a);
  Add(b);
  EXPECT_EQ(ServeAll(), "ABC");
  EXPECT_THAT(witness.Lines("entry"), ElementsAre("entry A ok", "entry B ok", "entry C ok"));
}

TEST_F(UpdaterListening, AnAddFromAListenerStartsOneRequestOnly) {
  witness.SetOnUpdater([&](const TIntf<ISearchResult>& iResult) {
    if (iResult->GetName() != u"A") return;
    AddPriorized(c);
    EXPECT_EQ(source->Requests().size(), 1u);
    AddPriorized(d);
  });
  Add(a);
  Add(b);
  source->Finish(true);
  EXPECT_EQ(source->Requests().size(), 1u);
  EXPECT_EQ(ServeAll(), "CDB");
  EXPECT_THAT(witness.Lines("entry"),
              ElementsAre("entry A ok", "entry C ok", "entry D ok", "entry B ok"));
}

TEST_F(UpdaterListening, AnAddFromAListenerOfASourceThatAnswersAtOnceWaitsItsTurn) {
  source->SetAnswersAtOnce(true);
  witness.SetOnUpdater([&](const TIntf<ISearchResult>& iResult) {
    if (iResult->GetName() == u"A") AddPriorized(c);
  });
  updater.Add(*ListOf({a, b}), witness.ForEntry());
  EXPECT_THAT(witness.Lines("entry"), ElementsAre("entry A ok", "entry C ok", "entry B ok"));
}

TEST_F(UpdaterListening, ARemoveFromAListenerSparesTheEntryThatIsBeingTold) {
  witness.SetOnUpdater([&](const TIntf<ISearchResult>& iResult) {
    EXPECT_FALSE(updater.Remove(iResult));
    EXPECT_TRUE(updater.Remove(b));
  });
  Add(a);
  Add(b);
  source->Finish(true);
  EXPECT_THAT(witness.Lines("entry"), ElementsAre("entry A ok"));
  EXPECT_EQ(updater.GetCount(), 0);
  EXPECT_FALSE(updater.IsActive());
}

TEST_F(UpdaterListening, ABlockOpenedByAListenerHoldsTheNextRequestBack) {
  witness.SetOnUpdater([&](const auto&) { updater.BeginAdd(); });
  Add(a);
  Add(b);
  source->Finish(true);
  EXPECT_EQ(source->Requests().size(), 0u);
  witness.SetOnUpdater({});
  updater.EndAdd();
  EXPECT_EQ(ServeAll(), "B");
}

TEST_F(UpdaterListening, ABlockOpenedByAListenerHoldsBackASourceThatAnswersAtOnce) {
  source->SetAnswersAtOnce(true);
  witness.SetOnEntry([&](const auto&) { updater.BeginAdd(); });
  updater.Add(*ListOf({a, b}), witness.ForEntry());
  EXPECT_EQ(updater.GetCount(), 1);
  witness.SetOnEntry({});
  updater.EndAdd();
  EXPECT_EQ(updater.GetCount(), 0);
}

TEST_F(UpdaterListening, ABlockOpenedWhenAddsAreToldHoldsTheStartBack) {
  witness.SetOnAfterAdd([&] { updater.BeginAdd(); });
  Add(a);
  EXPECT_EQ(source->Requests().size(), 0u);
  witness.SetOnAfterAdd({});
  updater.EndAdd();
  EXPECT_EQ(source->Requests().size(), 1u);
}

TEST_F(UpdaterListening, ProgressMayTakeTheOnlyEntryOut) {
  witness.SetOnProgress([&] { updater.Remove(a); });
  Add(a);
  EXPECT_EQ(source->Requests().size(), 0u);
  EXPECT_FALSE(updater.IsActive());
  witness.SetOnProgress({});
  Add(b);
  EXPECT_EQ(source->Requests().size(), 1u);
}

TEST_F(UpdaterListening, ProgressMayStopTheUpdater) {
  witness.SetOnProgress([&] { updater.WaitFor(); });
  Add(a);
  EXPECT_EQ(source->Requests().size(), 0u);
  EXPECT_FALSE(updater.IsActive());
  EXPECT_EQ(updater.GetCount(), 1);
}

TEST_F(UpdaterListening, AListenerMayStopTheUpdaterBeforeTheEntryIsTold) {
  witness.SetOnUpdater([&](const auto&) { updater.Uninitialize(); });
  Add(a);
  Add(b);
  witness.Lines().clear();
  source->Finish(true);
  EXPECT_THAT(witness.Lines("updater"), ElementsAre("updater A ok"));
  EXPECT_THAT(witness.Lines("entry"), IsEmpty());
  EXPECT_THAT(witness.Lines("progress"), IsEmpty());
  EXPECT_EQ(updater.GetCount(), 1);
}

TEST_F(UpdaterListening, AListenerMayPumpTheLoop) {
  witness.SetOnUpdater([&](const TIntf<ISearchResult>& iResult) {
    if (iResult->GetName() != u"A") return;
    loop.Post([&] { Add(c); });
    loop.ProcessMessages();
  });
  Add(a);
  Add(b);
  EXPECT_EQ(ServeAll(), "ABC");
  EXPECT_THAT(witness.Lines("entry"), ElementsAre("entry A ok", "entry B ok", "entry C ok"));
}

TEST_F(UpdaterListening, ASourceMayRemoveTheEntryWhileItTakesTheRequest) {
  TWatchlistItemUpdater* other = nullptr;
  const auto removing = MakeIntf<TFunctionSource>(
      [&](const TIntf<ISearchResult>& iResult, TNotifyEventSearchResult iFinished) {
        other->Remove(iResult);
        iFinished(nullptr, iResult, true);
      });
  TWatchlistItemUpdater removed(removing);
  other = &removed;
  witness.Watch(removed);
  removed.Add(*ListOf({a, b}), witness.ForEntry());
  EXPECT_THAT(witness.Lines("updater"), ElementsAre("updater A ok", "updater B ok"));
  EXPECT_THAT(witness.Lines("entry"), IsEmpty());
  EXPECT_EQ(removed.GetCount(), 0);
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
