#include "TUpdaterTest.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using UpdaterRefreshing = TUpdaterTest;

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

class UpdaterLongQueue : public TUpdaterTest, public testing::WithParamInterface<bool> {};

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

}  // namespace
}  // namespace kk
