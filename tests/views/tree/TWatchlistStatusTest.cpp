#include "views/tree/TWatchlistStatus.h"

#include "TTreeWorld.h"

namespace kk {
namespace {

// The status bar as the section binds it to the queues.
class TWatchlistStatusTest : public TTreeTest {
 protected:
  TWatchlistStatusTest() {
    for (const auto& source : {Auction, Shop}) {
      TWatchlistItemUpdater& updater = Record(source).Updater();
      updater.SetOnProgress(TNotifyEvent::Of<&TWatchlistStatus::DoUpdaterProgress>(&Status));
      updater.SetOnAfterAdd(
          TNotifyEventAfterAdd::Of<&TWatchlistStatus::DoUpdaterAfterAdd>(&Status));
    }
  }
  ~TWatchlistStatusTest() override {
    Handler()->TerminateThreads();
    for (const auto& source : {Auction, Shop}) {
      while (!source->Requests().empty()) source->Finish(false);
      Record(source).Updater().SetOnProgress({});
    }
  }
  void Queue(const TIntf<TFakeSource>& iSource, int iCount) {
    const TIntf<IInterfaceList> results = NewInterfaceList();
    for (int i = 0; i < iCount; ++i) results->Add(FakeResult(u"Uhr"));
    Record(iSource).Updater().Add(*results, {});
  }
  std::string Shown() {
    const TGauge& gauge = Status.Gauge();
    if (!gauge.Visible()) return "hidden";
    return ToUtf8(gauge.Text()) + ", " + std::to_string(gauge.Progress()) + " of " +
           std::to_string(gauge.Maximum());
  }

  TWatchlistStatus Status{&Form};
};

TEST_F(TWatchlistStatusTest, TheGaugeFillsTheFirstOfTwoPanels) {
  EXPECT_EQ(Status.sttsbar.Panels().size(), 2u);
  EXPECT_EQ(Status.sttsbar.PanelControl(0), &Status.Gauge());
  EXPECT_EQ(Status.sttsbar.PanelControl(1), nullptr);
  EXPECT_EQ(Status.Gauge().Parent(), &Status.sttsbar);
}

TEST_F(TWatchlistStatusTest, IsHiddenWithoutAnUpdate) {
  EXPECT_EQ(Shown(), "hidden");
  Status.DoUpdaterProgress(nullptr);
  EXPECT_EQ(Shown(), "hidden");
}

TEST_F(TWatchlistStatusTest, ThreeQueuedItemsAreOneOfThree) {
  Queue(Shop, 3);
  EXPECT_EQ(Shown(), "Aktualisierung: 3, 1 of 3");
}

TEST_F(TWatchlistStatusTest, GoesOnWithEachEndAndIsHiddenAfterTheLast) {
  Queue(Shop, 2);
  Shop->Finish(true);
  EXPECT_EQ(Shown(), "Aktualisierung: 1, 2 of 2");
  Shop->Finish(false);
  EXPECT_EQ(Shown(), "hidden");
}

TEST_F(TWatchlistStatusTest, ARunUnderWayIsLengthenedByAnySource) {
  Queue(Shop, 2);
  Shop->Finish(true);
  Queue(Auction, 3);
  EXPECT_EQ(Shown(), "Aktualisierung: 4, 2 of 5");
}

TEST_F(TWatchlistStatusTest, TheNextRunSetsTheMaximumAnew) {
  Queue(Shop, 2);
  Shop->Finish(true);
  Shop->Finish(true);
  EXPECT_EQ(Status.Gauge().Maximum(), 2) << "the end of a run leaves it";
  Queue(Shop, 1);
  EXPECT_EQ(Shown(), "Aktualisierung: 1, 1 of 1");
}

TEST_F(TWatchlistStatusTest, ProgressAndMaximumAreNeverNegative) {
  Status.DoUpdaterAfterAdd(nullptr, -1);
  EXPECT_EQ(Status.Gauge().Maximum(), 0);
  Queue(Shop, 3);
  for (int i = 0; i < 2; ++i) Status.UpdateTakenOut();
  Status.DoUpdaterProgress(nullptr);
  EXPECT_EQ(Shown(), "Aktualisierung: 3, 0 of 1");
  for (int i = 0; i < 2; ++i) Status.UpdateTakenOut();
  EXPECT_EQ(Status.Gauge().Maximum(), 0);
}

TEST_F(TWatchlistStatusTest, WhatIsTakenOutShortensTheRun) {
  Queue(Shop, 3);
  Status.UpdateTakenOut();
  EXPECT_EQ(Shown(), "Aktualisierung: 3, 1 of 2");
}

TEST_F(TWatchlistStatusTest, AHiddenGaugeRepaintsTheBar) {
  struct TSkin : IControlObserver {
    void ControlChanged(TControl& iControl) override { Bars += iControl.Name() == u"sttsbar"; }
    void ControlGone(TControl&) override {}
    int Bars = 0;
  } skin;
  Status.sttsbar.SetObserver(&skin);
  Status.DoUpdaterProgress(nullptr);
  EXPECT_EQ(skin.Bars, 1);
  Queue(Shop, 1);
  EXPECT_EQ(skin.Bars, 1) << "while it shows, the bar is left alone";
  Status.sttsbar.SetObserver(nullptr);
}

}  // namespace
}  // namespace kk
