#include "host/program/THostPlugins.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "THostWorld.h"
#include "host/base/Exception.h"
#include "host/contract/IReminderHost.h"
#include "tests/support/TFakeToolbar.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

TEST(THostPlugins, FindsTheWatchListByWhatItOffers) {
  THostWorld world;
  world.Plugins.Find();
  EXPECT_TRUE(world.Plugins.HasWatchlist());
}

TEST(THostPlugins, WithoutTheWatchListThereIsNone) {
  TLogRecorder log;
  kk::Plugins().Add(MakeIntf<TFakeSourcePlugin>(u"Allein"));
  THostPlugins plugins;
  plugins.Find();
  EXPECT_FALSE(plugins.HasWatchlist());
  kk::Plugins().Clear();
}

TEST(THostPlugins, StartsTheSourcesFirstAndTheWatchListLast) {
  THostWorld world;
  world.Start();
  EXPECT_THAT(world.Log.Lines(),
              ElementsAre("info Fakeshop: Initialize", "info Beobachten: Initialize"));
}

TEST(THostPlugins, EndsTheWatchListFirst) {
  THostWorld world;
  world.Start();
  world.Log.Clear();
  world.Plugins.Uninitialize();
  world.Plugins.Uninitialize();
  EXPECT_THAT(world.Log.Lines(),
              ElementsAre("info Beobachten: Uninitialize", "info Fakeshop: Uninitialize"));
}

TEST(THostPlugins, GivesEachPluginWhatTheOthersOffer) {
  THostWorld world;
  world.Start();
  ASSERT_THAT(world.Shop().Injected, SizeIs(1));
  EXPECT_TRUE(Supports<IWatchlist>(world.Shop().Injected[0]));
  ASSERT_THAT(world.Plugins.Sources(), SizeIs(1));
  EXPECT_EQ(world.Plugins.Sources()[0]->GetName(), u"Fakeshop");
}

TEST(THostPlugins, ASourceThatFailsIsLeftOut) {
  THostWorld world;
  world.Shop().InitializeFailure = u"kaputt\r\nganz";
  world.Start();
  EXPECT_TRUE(world.Log.Contains(
      "error Host: Das Plug-in \"Fakeshop\" lässt sich nicht starten: kaputt ganz"));
  world.Log.Clear();
  world.Plugins.Uninitialize();
  EXPECT_THAT(world.Log.Lines(), ElementsAre("info Beobachten: Uninitialize"));
}

TEST(THostPlugins, APluginThatFailsAtItsEndKeepsNoOtherFromEnding) {
  THostWorld world;
  world.Start();
  world.List().UninitializeFailure = u"kaputt";
  world.Log.Clear();
  world.Plugins.Uninitialize();
  EXPECT_THAT(world.Log.Lines(),
              ElementsAre("error Host: Das Plug-in \"Beobachten\" lässt sich nicht beenden: kaputt",
                          "info Fakeshop: Uninitialize"));
}

TEST(THostPlugins, HandsTheCommandLineToAll) {
  THostWorld world;
  world.Start();
  world.Plugins.ProcessCommandLine(u"-x 1");
  EXPECT_EQ(world.Shop().CommandLine, u"-x 1");
  EXPECT_THAT(world.List().Calls, ElementsAre("ProcessCdmLineParams -x 1"));
}

TEST(THostPlugins, WorkEndsInTheWatchListBeforeTheSources) {
  THostWorld world;
  world.Start();
  world.Shop().Threads = 2;
  EXPECT_EQ(world.Plugins.ThreadCount(), 2);
  world.List().OnRequest = {};
  world.Plugins.TerminateThreads();
  EXPECT_EQ(world.Shop().Terminated, 1);
  EXPECT_THAT(world.List().Calls, ElementsAre("TerminateThreads"));
}

TEST(THostPlugins, TellsWhatTheSourceSays) {
  THostWorld world;
  world.Start();
  const auto details = world.Plugins.Details(world.Shop().GetId(), FakeResult(u"Lampe"));
  EXPECT_THAT(details, ElementsAre(Pair(u"Name", u"Lampe"), Pair(u"Preis", u"10,00 EUR"),
                                   Pair(u"Adresse", u"http://127.0.0.1/ein/sehr/langer/weg/lampe"),
                                   Pair(u"Verkäufer", u"")));
  EXPECT_THAT(world.Plugins.Details(NewGuid(), FakeResult(u"Lampe")), IsEmpty());
  EXPECT_THAT(world.Plugins.Details(world.Shop().GetId(), {}), IsEmpty());
}

TEST(THostPlugins, ASourceThatFailsToTellTellsNothing) {
  THostWorld world;
  world.Start();
  world.Shop().ConvertFailure = u"kaputt";
  EXPECT_THAT(world.Plugins.Details(world.Shop().GetId(), FakeResult(u"Lampe")), IsEmpty());
}

TEST(THostPlugins, AHostThatComesAndGoesDeliversNoReminders) {
  THostWorld world;
  world.Start();
  EXPECT_FALSE(world.Plugins.DeliversReminders());
}

TEST(THostPlugins, AHostThatSaysSoDeliversReminders) {
  THostWorld world;
  world.Application = MakeIntf<TFakeApplication>(true);
  world.Start();
  EXPECT_TRUE(world.Plugins.DeliversReminders());
}

/// A host that says nothing about reminders.
class TPlainApplication : public TInterfaced<IApplication> {
 public:
  void SectionClosed() override {}
  bool ShowNotificationWindow(TForm*) override { return false; }
};

TEST(THostPlugins, AHostThatSaysNothingDeliversReminders) {
  THostWorld world;
  world.Application = MakeIntf<TPlainApplication>();
  world.Start();
  EXPECT_TRUE(world.Plugins.DeliversReminders());
}

TEST(THostPlugins, ThePluginsGetTheHostThatWasHandedIn) {
  THostWorld world;
  world.Start();
  EXPECT_EQ(world.List().Host(), world.Application);
}

TEST(THostPlugins, WhoLeavesWorkInAHostThatDeliversEndsOnlyWhatWaits) {
  THostWorld world;
  world.Application = MakeIntf<TFakeApplication>(true);
  world.Start();
  world.Plugins.LeaveWork();
  EXPECT_THAT(world.List().Calls, ElementsAre("CancelUpdates"));
}

TEST(THostPlugins, WhoLeavesWorkInAHostThatComesAndGoesEndsAll) {
  THostWorld world;
  world.Start();
  world.Plugins.LeaveWork();
  EXPECT_THAT(world.List().Calls, ElementsAre("TerminateThreads"));
}

TEST(THostPlugins, TheListIsThereFromInitializeToUninitialize) {
  THostWorld world;
  EXPECT_FALSE(world.Plugins.HasList());
  world.Start();
  EXPECT_TRUE(world.Plugins.HasList());
  world.Plugins.Uninitialize();
  EXPECT_FALSE(world.Plugins.HasList());
}

TEST(THostPlugins, SettingsAreToldWithoutInitialize) {
  THostWorld world;
  world.List().Keys = {{u"Watchlist", u"A", TSettingsKeyType::sktString, u"", 0, 0, u"", false}};
  EXPECT_THAT(world.Plugins.SettingsKeys(), SizeIs(1));
}

struct TExtension : public TInterfaced<IIntegrationInfo> {
  TGuid GetId() const override { return cEmptyGuid; }
};

/// A plug-in that searches, has buttons and pages, and extends the views of others.
class TFakeSearchPlugin : public TCommonPlugin<IPlugin, ISearchSource, ISearchLocationIntegration,
                                               IToolbarExtender, ISettingsExtender> {
 public:
  TFakeSearchPlugin(TStringView iName, std::vector<int> iOrders)
      : FName(iName), FOrders(std::move(iOrders)) {
    Plugins().Add(TIntf<IPlugin>(this));
  }

  TGuid GetId() const override { return FId; }
  TGroupIdentification GetGroup() const override { return TGroupIdentification{1}; }
  TPluginAttributes GetAttributes() const override { return 0; }
  TString GetSignature() const override { return {}; }
  TString GetDescription() const override { return FName; }
  TString GetLongDescription() const override { return {}; }
  void Initialize(const TIntf<IApplication>&) override {
    if (!InitializeFailure.empty()) throw Exception(InitializeFailure);
  }
  void MinimizeToTrayQuery(bool& ioAllowed) override {
    if (!TrayFailure.empty()) throw Exception(TrayFailure);
    ioAllowed = MayGoToTray;
  }
  void MinimizeToTray() override {
    Calls.push_back("MinimizeToTray");
    if (!TrayFailure.empty()) throw Exception(TrayFailure);
  }
  void RestoreFromTray() override {
    Calls.push_back("RestoreFromTray");
    if (!TrayFailure.empty()) throw Exception(TrayFailure);
  }

  TString GetCaption() const override { return FName; }
  TBitmap GetImage() const override { return {}; }
  TBitmap GetImageSelected() const override { return {}; }
  TString GetPrompt() const override { return {}; }
  TIntf<IIntegrationInfo> GetIntegrationInfo() const override {
    return MakeIntf<TPluginIntegrationInfo>(FId, GetGroup());
  }
  void SetContainer(TPanel*) override {}
  void AddExtensions(const TIntf<IInterfaceList>&) override {}
  TIntf<ISearchResults> GetSearchResults() const override { return {}; }
  void Search(TStringView, TNotifySearchFinished) override {}
  void Cancel() override {}
  void SetOnSelectionChanged(TNotifyEvent) override {}
  void ReleaseSearch() override {}

  TIntf<IInterfaceList> GetIntegrations(const TIntf<IIntegrationInfo>& iInfo) override {
    if (!ExtensionFailure.empty()) throw Exception(ExtensionFailure);
    Extended.push_back(iInfo->GetId());
    const TIntf<IInterfaceList> result = NewInterfaceList();
    result->Add(Extension);
    return result;
  }

  void Add(const TIntf<IToolbarButton>&) override {}
  int GetCount() const override { return static_cast<int>(FOrders.size()); }
  TIntf<IToolbarButton> GetItems(int iIndex) const override {
    return MakeIntf<TFakeToolbarButton>(FOrders[static_cast<size_t>(iIndex)]);
  }
  TIntf<ISettingsNode> GetNode(int) const override { return {}; }
  bool QueryDelegated(const TGuid& iIid, void** oInterface) override {
    return Publisher && Publisher->QueryInterface(iIid, oInterface);
  }
  TGuid GetBefore(int) const override { return cEmptyGuid; }

  const TIntf<IIntegrationInfo> Extension = MakeIntf<TExtension>();
  TIntf<ISettingsPublisher> Publisher;
  TString InitializeFailure;
  TString ExtensionFailure;
  TString TrayFailure;
  bool MayGoToTray = true;
  std::vector<TGuid> Extended;
  std::vector<std::string> Calls;

 private:
  const TGuid FId = NewGuid();
  const TString FName;
  const std::vector<int> FOrders;
};

/// Two such plug-ins beside the others.
class THostPluginsScreenTest : public testing::Test {
 protected:
  THostWorld World;
  TIntf<TFakeSearchPlugin> One = MakeIntf<TFakeSearchPlugin>(u"Eins", std::vector{30, 10});
  TIntf<TFakeSearchPlugin> Two = MakeIntf<TFakeSearchPlugin>(u"Zwei", std::vector{20});
};

TEST_F(THostPluginsScreenTest, EachSearchGetsWhatAllOthersAddToItsView) {
  World.Start();
  EXPECT_THAT(One->Extended, IsEmpty()) << "nobody asks before all are initialised";
  const auto searches = World.Plugins.Searches();
  ASSERT_THAT(searches, SizeIs(2));
  EXPECT_EQ(searches[0].Source->GetCaption(), u"Eins");
  ASSERT_THAT(searches[0].Extensions, SizeIs(1));
  EXPECT_EQ(searches[0].Extensions[0]->Get(0), Two->Extension);
  ASSERT_THAT(searches[1].Extensions, SizeIs(1));
  EXPECT_EQ(searches[1].Extensions[0]->Get(0), One->Extension);
  EXPECT_THAT(One->Extended, ElementsAre(Two->GetId())) << "for the other's view alone";
}

TEST_F(THostPluginsScreenTest, APluginThatFailsToExtendAddsNothing) {
  One->ExtensionFailure = u"kaputt";
  World.Start();
  const auto searches = World.Plugins.Searches();
  ASSERT_THAT(searches, SizeIs(2));
  EXPECT_THAT(searches[1].Extensions, IsEmpty());
  EXPECT_TRUE(
      World.Log.Contains("error Host: Was das Plug-in \"Eins\" zur Suche beiträgt, fehlt: kaputt"));
}

TEST_F(THostPluginsScreenTest, WhatDoesNotStartHasNeitherSearchNorButtonsNorPages) {
  One->InitializeFailure = u"kaputt";
  World.Start();
  EXPECT_THAT(World.Plugins.Searches(), SizeIs(1));
  EXPECT_THAT(World.Plugins.ToolbarButtons(), SizeIs(1));
  EXPECT_THAT(World.Plugins.SettingsPages(), SizeIs(1));
}

TEST_F(THostPluginsScreenTest, TheButtonsOfAllStandInTheirOrder) {
  World.Start();
  std::vector<int> orders;
  for (const auto& button : World.Plugins.ToolbarButtons())
    orders.push_back(button->GetSortOrder());
  EXPECT_THAT(orders, ElementsAre(10, 20, 30));
}

TEST_F(THostPluginsScreenTest, ThePagesOfAllComeInTheOrderOfLoading) {
  World.Start();
  const auto pages = World.Plugins.SettingsPages();
  ASSERT_THAT(pages, SizeIs(2));
  EXPECT_EQ(pages[0], Supports<ISettingsExtender>(TIntf<IPlugin>(One)));
}

TEST_F(THostPluginsScreenTest, WhoPublishesSettingsIsFoundWithoutInitialize) {
  class TPublisher : public TInterfaced<ISettingsPublisher> {
   public:
    TString GetSettingsNode() const override { return u"Vier"; }
    const TStringList& GetSettings() override { return FList; }
    TString GetSettingsName() const override { return {}; }
    void SetSettings(const TStringList&) override {}

   private:
    TStringList FList;
  };
  EXPECT_THAT(World.Plugins.SettingsPublishers(), IsEmpty());
  Two->Publisher = MakeIntf<TPublisher>();
  const auto publishers = World.Plugins.SettingsPublishers();
  ASSERT_THAT(publishers, SizeIs(1));
  EXPECT_EQ(publishers[0]->GetSettingsNode(), u"Vier");
}

TEST_F(THostPluginsScreenTest, OneNoKeepsTheProgramFromTheTray) {
  World.Start();
  EXPECT_TRUE(World.Plugins.MayMinimizeToTray());
  One->MayGoToTray = false;
  EXPECT_FALSE(World.Plugins.MayMinimizeToTray());
}

TEST_F(THostPluginsScreenTest, AllAreToldOfTheTrayWhoeverFails) {
  One->TrayFailure = u"kaputt";
  World.Start();
  EXPECT_TRUE(World.Plugins.MayMinimizeToTray());
  World.Plugins.MinimizeToTray();
  World.Plugins.RestoreFromTray();
  for (const auto& plugin : {One, Two}) {
    EXPECT_THAT(plugin->Calls, ElementsAre("MinimizeToTray", "RestoreFromTray"));
  }
}

}  // namespace
}  // namespace kk
