#include "host/base/TNotifyEventList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/base/Exception.h"
#include "tests/support/TLogRecorder.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using TCalls = std::vector<std::string>;

// Notes its name at each call and then does what the test wants.
class TListener : public TObject {
 public:
  TListener(TCalls& ioCalls, std::string iName) : FCalls(ioCalls), FName(std::move(iName)) {}

  void Told(TObject* iSender) {
    FCalls.push_back(FName);
    FSender = iSender;
    if (Does) Does();
  }
  TNotifyEvent Event() { return TNotifyEvent::Of<&TListener::Told>(this); }
  TObject* Sender() const { return FSender; }

  std::function<void()> Does;

 private:
  TCalls& FCalls;
  std::string FName;
  TObject* FSender = nullptr;
};

class TNotifying : public testing::Test {
 protected:
  TCalls FCalls;
  TListener FA{FCalls, "a"};
  TListener FB{FCalls, "b"};
  TListener FC{FCalls, "c"};
  TNotifyEventList FList;

  void AddAll() {
    for (TListener* listener : {&FA, &FB, &FC}) FList.Add(listener->Event());
  }
  TCalls Fire() {
    FCalls.clear();
    FList.Fire(nullptr);
    return FCalls;
  }
};

TEST_F(TNotifying, TellsAllInOrderWithTheSender) {
  AddAll();
  FList.Fire(&FC);
  EXPECT_THAT(FCalls, ElementsAre("a", "b", "c"));
  EXPECT_EQ(FA.Sender(), &FC);
}

TEST_F(TNotifying, AddsAtAPosition) {
  FList.Add(FA.Event());
  FList.Add(FB.Event(), 0);
  FList.Add(FC.Event(), 1);
  EXPECT_THAT(Fire(), ElementsAre("b", "c", "a"));
}

TEST_F(TNotifying, APositionBehindTheEndAppends) {
  FList.Add(FA.Event(), 5);
  FList.Add(FB.Event(), -1);
  FList.Add(FC.Event(), 2);
  EXPECT_THAT(Fire(), ElementsAre("a", "b", "c"));
}

TEST_F(TNotifying, AnEmptyEventIsNotAdded) {
  FList.Add(TNotifyEvent());
  EXPECT_EQ(FList.GetCount(), 0);
}

TEST_F(TNotifying, KeepsDuplicatesUnlessToldNotTo) {
  FList.Add(FA.Event());
  FList.Add(FA.Event());
  EXPECT_THAT(Fire(), ElementsAre("a", "a"));
  TNotifyEventList once(true);
  once.Add(FA.Event());
  once.Add(FA.Event());
  EXPECT_EQ(once.GetCount(), 1);
}

TEST_F(TNotifying, RemovesTheFirstSuchEvent) {
  AddAll();
  FList.Add(FA.Event());
  FList.Remove(FA.Event());
  EXPECT_THAT(Fire(), ElementsAre("b", "c", "a"));
  EXPECT_EQ(FList.GetCount(), 3);
}

TEST_F(TNotifying, RemovingWhatIsNotThereHasNoEffect) {
  FList.Add(FA.Event());
  FList.Remove(FB.Event());
  FList.Remove(TNotifyEvent());
  EXPECT_THAT(Fire(), ElementsAre("a"));
}

TEST_F(TNotifying, ClearTakesAllOut) {
  AddAll();
  FList.Clear();
  EXPECT_EQ(FList.GetCount(), 0);
  EXPECT_THAT(Fire(), IsEmpty());
}

TEST_F(TNotifying, OneThatIsRemovedMeanwhileIsNotCalledAnyMore) {
  AddAll();
  FA.Does = [&] { FList.Remove(FB.Event()); };
  EXPECT_THAT(Fire(), ElementsAre("a", "c"));
  EXPECT_EQ(FList.GetCount(), 2);
}

TEST_F(TNotifying, OneThatRemovesItselfLeavesTheOthers) {
  AddAll();
  FB.Does = [&] { FList.Remove(FB.Event()); };
  EXPECT_THAT(Fire(), ElementsAre("a", "b", "c"));
  EXPECT_THAT(Fire(), ElementsAre("a", "c"));
}

TEST_F(TNotifying, OneThatIsAddedMeanwhileIsCalledFromTheNextRoundOn) {
  FList.Add(FA.Event());
  FA.Does = [&] {
    FA.Does = nullptr;
    FList.Add(FB.Event(), 0);
    FList.Add(FC.Event());
  };
  EXPECT_THAT(Fire(), ElementsAre("a"));
  EXPECT_THAT(Fire(), ElementsAre("b", "a", "c"));
}

TEST_F(TNotifying, ClearInsideARoundEndsIt) {
  AddAll();
  FA.Does = [&] { FList.Clear(); };
  EXPECT_THAT(Fire(), ElementsAre("a"));
}

TEST_F(TNotifying, FiringInsideARoundRunsThrough) {
  AddAll();
  FA.Does = [&] {
    FA.Does = nullptr;
    FList.Remove(FC.Event());
    FList.Fire(nullptr);
  };
  EXPECT_THAT(Fire(), ElementsAre("a", "a", "b", "b"));
  EXPECT_EQ(FList.GetCount(), 2);
}

TEST_F(TNotifying, SurvivesTheDeathOfTheList) {
  auto list = std::make_unique<TNotifyEventList>();
  list->Add(FA.Event());
  list->Add(FB.Event());
  FA.Does = [&] { list.reset(); };
  list->Fire(nullptr);
  EXPECT_THAT(FCalls, ElementsAre("a"));
}

TEST_F(TNotifying, SurvivesTheDeathOfTheSenderThatHoldsTheList) {
  struct TSender : TObject {
    TNotifyEventListSecure Changed;
  };
  auto sender = std::make_unique<TSender>();
  sender->Changed.Add(FA.Event());
  sender->Changed.Add(FB.Event());
  FA.Does = [&] { sender.reset(); };
  sender->Changed.Fire(sender.get());
  EXPECT_THAT(FCalls, ElementsAre("a"));
}

TEST_F(TNotifying, SurvivesTheDeathOfAListenerThatTakesItsEventBack) {
  auto mortal = std::make_unique<TListener>(FCalls, "mortal");
  FList.Add(FA.Event());
  FList.Add(mortal->Event());
  FA.Does = [&] {
    FList.Remove(mortal->Event());
    mortal.reset();
  };
  EXPECT_THAT(Fire(), ElementsAre("a"));
}

TEST_F(TNotifying, AnExceptionEndsTheRoundAndPassesOn) {
  AddAll();
  FA.Does = [] { throw Exception(u"nein"); };
  EXPECT_THROW(FList.Fire(nullptr), Exception);
  EXPECT_THAT(FCalls, ElementsAre("a"));
  FA.Does = [&] { FList.Remove(FB.Event()); };
  EXPECT_THAT(Fire(), ElementsAre("a", "c")) << "the list works as before";
}

TEST_F(TNotifying, TheSecureListTellsTheOthersToo) {
  const TLogRecorder log;
  TNotifyEventListSecure secure;
  for (TListener* listener : {&FA, &FB}) secure.Add(listener->Event());
  FA.Does = [] { throw Exception(u"nein"); };
  secure.Fire(nullptr);
  EXPECT_THAT(FCalls, ElementsAre("a", "b"));
  EXPECT_THAT(log.Lines(), IsEmpty());
  EXPECT_THAT(log.DebugLines(), ElementsAre("debug TNotifyEventListSecure: nein"));
}

}  // namespace
}  // namespace kk
