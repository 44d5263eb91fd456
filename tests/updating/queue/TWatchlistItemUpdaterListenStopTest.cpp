#include "TUpdaterTest.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using UpdaterListening = TUpdaterTest;
using UpdaterStopping = TUpdaterTest;

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

}  // namespace
}  // namespace kk
