#include "apps/cli/TCliPlugins.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TCliWorld.h"
#include "host/base/Exception.h"
#include "host/contract/IReminderHost.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

TEST(TCliPlugins, FindsTheWatchListByWhatItOffers) {
  TCliWorld world;
  world.Plugins.Find();
  EXPECT_TRUE(world.Plugins.HasWatchlist());
}

TEST(TCliPlugins, WithoutTheWatchListThereIsNone) {
  TLogRecorder log;
  kk::Plugins().Add(MakeIntf<TFakeSourcePlugin>(u"Allein"));
  TCliPlugins plugins;
  plugins.Find();
  EXPECT_FALSE(plugins.HasWatchlist());
  kk::Plugins().Clear();
}

TEST(TCliPlugins, StartsTheSourcesFirstAndTheWatchListLast) {
  TCliWorld world;
  world.Start();
  EXPECT_THAT(world.Log.Lines(),
              ElementsAre("info Fakeshop: Initialize", "info Beobachten: Initialize"));
}

TEST(TCliPlugins, EndsTheWatchListFirst) {
  TCliWorld world;
  world.Start();
  world.Log.Clear();
  world.Plugins.Uninitialize();
  world.Plugins.Uninitialize();
  EXPECT_THAT(world.Log.Lines(),
              ElementsAre("info Beobachten: Uninitialize", "info Fakeshop: Uninitialize"));
}

TEST(TCliPlugins, GivesEachPluginWhatTheOthersOffer) {
  TCliWorld world;
  world.Start();
  ASSERT_THAT(world.Shop().Injected, SizeIs(1));
  EXPECT_TRUE(Supports<IWatchlist>(world.Shop().Injected[0]));
  ASSERT_THAT(world.Plugins.Sources(), SizeIs(1));
  EXPECT_EQ(world.Plugins.Sources()[0]->GetName(), u"Fakeshop");
}

TEST(TCliPlugins, ASourceThatFailsIsLeftOut) {
  TCliWorld world;
  world.Shop().InitializeFailure = u"kaputt\r\nganz";
  world.Start();
  EXPECT_TRUE(world.Log.Contains(
      "error Host: Das Plug-in \"Fakeshop\" lässt sich nicht starten: kaputt ganz"));
  world.Log.Clear();
  world.Plugins.Uninitialize();
  EXPECT_THAT(world.Log.Lines(), ElementsAre("info Beobachten: Uninitialize"));
}

TEST(TCliPlugins, APluginThatFailsAtItsEndKeepsNoOtherFromEnding) {
  TCliWorld world;
  world.Start();
  world.List().UninitializeFailure = u"kaputt";
  world.Log.Clear();
  world.Plugins.Uninitialize();
  EXPECT_THAT(world.Log.Lines(),
              ElementsAre("error Host: Das Plug-in \"Beobachten\" lässt sich nicht beenden: kaputt",
                          "info Fakeshop: Uninitialize"));
}

TEST(TCliPlugins, HandsTheCommandLineToAll) {
  TCliWorld world;
  world.Start();
  world.Plugins.ProcessCommandLine(u"-x 1");
  EXPECT_EQ(world.Shop().CommandLine, u"-x 1");
  EXPECT_THAT(world.List().Calls, ElementsAre("ProcessCdmLineParams -x 1"));
}

TEST(TCliPlugins, WorkEndsInTheWatchListBeforeTheSources) {
  TCliWorld world;
  world.Start();
  world.Shop().Threads = 2;
  EXPECT_EQ(world.Plugins.ThreadCount(), 2);
  world.List().OnRequest = {};
  world.Plugins.TerminateThreads();
  EXPECT_EQ(world.Shop().Terminated, 1);
  EXPECT_THAT(world.List().Calls, ElementsAre("TerminateThreads"));
}

TEST(TCliPlugins, TellsWhatTheSourceSays) {
  TCliWorld world;
  world.Start();
  const auto details = world.Plugins.Details(world.ShopId(), FakeResult(u"Lampe"));
  EXPECT_THAT(details, ElementsAre(Pair(u"Name", u"Lampe"), Pair(u"Preis", u"10,00 EUR"),
                                   Pair(u"Adresse", u"http://127.0.0.1/ein/sehr/langer/weg/lampe"),
                                   Pair(u"Verkäufer", u"")));
  EXPECT_THAT(world.Plugins.Details(NewGuid(), FakeResult(u"Lampe")), IsEmpty());
  EXPECT_THAT(world.Plugins.Details(world.ShopId(), {}), IsEmpty());
}

TEST(TCliPlugins, ASourceThatFailsToTellTellsNothing) {
  TCliWorld world;
  world.Start();
  world.Shop().ConvertFailure = u"kaputt";
  EXPECT_THAT(world.Plugins.Details(world.ShopId(), FakeResult(u"Lampe")), IsEmpty());
}

struct TTestPopUp : public TForm {
  explicit TTestPopUp(bool& oGone) : TForm(nullptr, u"TTestPopUp"), Gone(oGone) {}
  ~TTestPopUp() override { Gone = true; }
  bool& Gone;
};

TEST(TCliPlugins, AHostThatComesAndGoesDeliversNoReminders) {
  TCliWorld world;
  world.Start();
  EXPECT_FALSE(world.Plugins.DeliversReminders());
  EXPECT_FALSE(Supports<IReminderHost>(world.List().Host())->DeliversReminders());
  bool gone = false;
  TTestPopUp popUp(gone);
  EXPECT_FALSE(world.List().Host()->ShowNotificationWindow(&popUp)) << "it stays the caller's";
}

TEST(TCliPlugins, AHostThatDeliversTakesPopUpsOver) {
  TCliWorld world;
  bool gone = false;
  int shown = 0;
  world.Plugins.DeliverReminders([&](const TForm& iForm) {
    EXPECT_EQ(iForm.Name(), u"TTestPopUp");
    EXPECT_FALSE(gone);
    ++shown;
  });
  world.Start();
  EXPECT_TRUE(world.Plugins.DeliversReminders());
  EXPECT_TRUE(Supports<IReminderHost>(world.List().Host())->DeliversReminders());
  EXPECT_TRUE(
      world.List().Host()->ShowNotificationWindow(std::make_unique<TTestPopUp>(gone).release()));
  EXPECT_TRUE(gone);
  EXPECT_FALSE(world.List().Host()->ShowNotificationWindow(nullptr));
  EXPECT_EQ(shown, 1);
}

TEST(TCliPlugins, APopUpThatCantBeShownStaysTheCallers) {
  TCliWorld world;
  world.Plugins.DeliverReminders([](const TForm&) { throw Exception(u"kein Terminal"); });
  world.Start();
  bool gone = false;
  TTestPopUp popUp(gone);
  EXPECT_THROW(world.List().Host()->ShowNotificationWindow(&popUp), Exception);
  EXPECT_FALSE(gone);
}

TEST(TCliPlugins, SettingsAreToldWithoutInitialize) {
  TCliWorld world;
  world.List().Keys = {{u"Watchlist", u"A", TSettingsKeyType::sktString, u"", 0, 0, u"", false}};
  EXPECT_THAT(world.Plugins.SettingsKeys(), SizeIs(1));
}

}  // namespace
}  // namespace kk
