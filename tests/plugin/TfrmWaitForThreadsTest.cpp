#include "plugin/TfrmWaitForThreads.h"

#include <gtest/gtest.h>

#include "tests/support/TFakeSource.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TScriptedFormHost.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

class TfrmWaitForThreadsTest : public testing::Test {
 protected:
  TfrmWaitForThreadsTest() {
    Integrations.Add(First);
    Integrations.Add(Second);
  }
  ~TfrmWaitForThreadsTest() override {
    for (const auto& source : {First, Second}) {
      while (!source->Requests().empty()) source->Finish(false);
    }
  }
  // Runs the function after so many turns of the loop.
  void After(int iTurns, std::function<void()> iFunction) {
    Loop.Post([this, iTurns, function = std::move(iFunction)] {
      if (iTurns == 0) return function();
      After(iTurns - 1, function);
    });
  }
  TWatchlistItemUpdater& Updater(int iIndex) { return Integrations.GetItems(iIndex).Updater(); }

  TLogRecorder Log;
  TTestMainLoop Loop;
  TScriptedFormHost User;
  TIntf<TFakeSource> First = MakeIntf<TFakeSource>(u"Erste");
  TIntf<TFakeSource> Second = MakeIntf<TFakeSource>(u"Zweite");
  TLstWatchlistIntegration Integrations{true};
};

TEST_F(TfrmWaitForThreadsTest, ShowsNothingIfNothingRuns) {
  TfrmWaitForThreads::Display(Integrations);
  EXPECT_EQ(User.ShownCount(), 0);
  EXPECT_EQ(Loop.Turns(), 0);
  Updater(0).Add(FakeResult(u"a"), {});
  EXPECT_TRUE(Updater(0).IsActive()) << "the updaters were left alone";
}

TEST_F(TfrmWaitForThreadsTest, HasItsTexts) {
  Updater(0).Add(FakeResult(u"a"), {});
  User.ExpectCaption(u"Warten auf Beobachtenliste", [this](TForm& form) {
    auto& window = dynamic_cast<TfrmWaitForThreads&>(form);
    EXPECT_EQ(window.lblInfo.Caption(),
              u"Die laufenden Aktualisierungen in der Beobachtenliste werden beendet.");
    EXPECT_EQ(window.lblName.Caption(), u"");
    EXPECT_TRUE(window.WhiteBackground());
    EXPECT_EQ(window.Position(), TPosition::poScreenCenter);
    EXPECT_EQ(window.prgrsbarWait.Maximum(), 2);
    EXPECT_EQ(window.prgrsbarWait.Progress(), 0);
    EXPECT_TRUE(Updater(0).IsActive()) << "the window is there before the waiting begins";
    First->Finish(true);
  });
  TfrmWaitForThreads::Display(Integrations);
}

TEST_F(TfrmWaitForThreadsTest, StopsAllBeforeItWaitsForTheFirst) {
  for (int i : {0, 1}) {
    Updater(i).Add(FakeResult(u"läuft"), {});
    Updater(i).Add(FakeResult(u"wartet"), {});
  }
  std::vector<std::string> seen;
  User.Expect<TfrmWaitForThreads>([&](TfrmWaitForThreads& window) {
    const auto note = [&] {
      seen.push_back(ToUtf8(window.lblName.Caption()) + " " +
                     std::to_string(window.prgrsbarWait.Progress()));
    };
    Loop.Post([&, note] {  // runs while the first is waited for
      note();
      Second->Finish(true);
      EXPECT_TRUE(Second->Requests().empty()) << "it is not fed any more";
      Loop.Post([&, note] {
        EXPECT_TRUE(window.Visible());
        First->Finish(true);
        EXPECT_TRUE(First->Requests().empty());
        Loop.Post(note);
      });
    });
  });
  TfrmWaitForThreads::Display(Integrations);
  EXPECT_EQ(seen, (std::vector<std::string>{"Erste 1", "Zweite 2"}));
  EXPECT_FALSE(Integrations.HasActiveIntegrations());
  EXPECT_EQ(Updater(0).GetCount(), 1) << "what waited stays";
}

TEST_F(TfrmWaitForThreadsTest, WaitsForTheFirstBeforeItNamesTheSecond) {
  Updater(0).Add(FakeResult(u"a"), {});
  User.Expect<TfrmWaitForThreads>([&](TfrmWaitForThreads& window) {
    After(20, [&] {
      EXPECT_EQ(window.lblName.Caption(), u"Erste");
      First->Finish(true);
    });
  });
  TfrmWaitForThreads::Display(Integrations);
  EXPECT_TRUE(First->Requests().empty()) << "it did not return before";
}

TEST_F(TfrmWaitForThreadsTest, WaitsForTheLastToo) {
  Updater(1).Add(FakeResult(u"a"), {});
  User.Expect<TfrmWaitForThreads>([&](TfrmWaitForThreads& window) {
    After(20, [&] {
      EXPECT_TRUE(window.Visible());
      Second->Finish(true);
    });
  });
  TfrmWaitForThreads::Display(Integrations);
  EXPECT_TRUE(Second->Requests().empty()) << "it did not return before";
}

TEST_F(TfrmWaitForThreadsTest, NamesASourceThatIsIdleForATurnOfTheLoop) {
  Updater(1).Add(FakeResult(u"a"), {});
  TString seen;
  User.Expect<TfrmWaitForThreads>([&](TfrmWaitForThreads& window) {
    Loop.Post([&] {
      seen = window.lblName.Caption();
      Second->Finish(true);
    });
  });
  TfrmWaitForThreads::Display(Integrations);
  EXPECT_EQ(seen, u"Erste");
}

TEST_F(TfrmWaitForThreadsTest, RaisesNoEventOfTheUpdatersAnyMore) {
  struct TListener {
    void Finished(TObject*, const TIntf<ISearchResult>&, bool) { ++Count; }
    int Count = 0;
  } listener;
  const auto event = TNotifyEventSearchResult::Of<&TListener::Finished>(&listener);
  Updater(0).SetOnUpdateFinished(event);
  Updater(0).Add(FakeResult(u"a"), event);
  User.Expect<TfrmWaitForThreads>(
      [&](TfrmWaitForThreads&) { Loop.Post([&] { First->Finish(true); }); });
  TfrmWaitForThreads::Display(Integrations);
  EXPECT_EQ(listener.Count, 0);
}

TEST_F(TfrmWaitForThreadsTest, ClosesWhenSomethingFailsMeanwhile) {
  Updater(1).Add(FakeResult(u"a"), {});
  User.Expect<TfrmWaitForThreads>(
      [&](TfrmWaitForThreads&) { Loop.Post([] { throw Exception(u"Fremder Fehler"); }); });
  EXPECT_NO_THROW(TfrmWaitForThreads::Display(Integrations)) << "the end goes on, to save the file";
  EXPECT_EQ(Log.DebugLines(), std::vector<std::string>{"debug TfrmWaitForThreads: Fremder Fehler"});
  Second->Finish(true);
}

TEST_F(TfrmWaitForThreadsTest, WaitsToTheEndEvenIfItsFrameIsClosed) {
  Updater(0).Add(FakeResult(u"a"), {});
  User.Expect<TfrmWaitForThreads>([&](TfrmWaitForThreads& window) {
    Loop.Post([&] {
      EXPECT_TRUE(window.CloseByUser());
      Loop.Post([&] { First->Finish(true); });
    });
  });
  TfrmWaitForThreads::Display(Integrations);
  EXPECT_FALSE(Updater(0).IsActive());
}

}  // namespace
}  // namespace kk
