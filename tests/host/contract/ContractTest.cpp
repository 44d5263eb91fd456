#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <set>
#include <vector>

#include "host/base/Exception.h"
#include "host/contract/IAdditionalColumns.h"
#include "host/contract/IContextMenuExtender.h"
#include "host/contract/IMultiThreadPlugin.h"
#include "host/contract/INotifications.h"
#include "host/contract/IPluginDataPublisher.h"
#include "host/contract/ISearchLocationIntegration.h"
#include "host/contract/ISearchResultConverter.h"
#include "host/contract/ISettingsPublisher.h"
#include "host/contract/IWatchlist.h"
#include "host/contract/TBitmap.h"
#include "host/contract/TCommonExplorerBarExtender.h"
#include "host/contract/TCommonPlugin.h"
#include "host/contract/TCommonSettingsExtender.h"
#include "host/contract/TCommonToolbar.h"
#include "host/contract/TPluginIntegration.h"
#include "host/contract/TPlugins.h"
#include "tests/support/TFakeSource.h"
#include "tests/support/TFakeToolbar.h"

namespace kk {
namespace {

using testing::ElementsAre;

class TFakeApplication : public TInterfaced<IApplication> {
 public:
  void SectionClosed() override {}
  bool ShowNotificationWindow(TForm*) override { return false; }
};

class TFakePlugin : public TCommonPlugin<IMultiThreadPlugin> {
 public:
  explicit TFakePlugin(TStringView iName = u"Probe", std::function<void()> iOnDeath = {})
      : FName(iName), FOnDeath(std::move(iOnDeath)) {}
  ~TFakePlugin() override {
    if (FOnDeath) FOnDeath();
  }
  TGuid GetId() const override { return cEmptyGuid; }
  TGroupIdentification GetGroup() const override { return TGroupIdentification{1}; }
  TPluginAttributes GetAttributes() const override { return 0; }
  TString GetSignature() const override { return {}; }
  TString GetDescription() const override { return FName; }
  TString GetLongDescription() const override { return {}; }
  int ThreadCount() const override { return 0; }
  void TerminateThreads() override {}

  const TIntf<IApplication>& App() const { return Application(); }

 private:
  TString FName;
  std::function<void()> FOnDeath;
};

TEST(Contract, InterfacesHaveTheIdsThatOtherPluginsKnow) {
  EXPECT_EQ(GUIDToString(ISearchResult::cIid), u"{C9D3ED8A-46F5-4480-BFC6-6D8D0DD9524F}");
  EXPECT_EQ(GUIDToString(IWatchlistVisualization::cIid), u"{F860A09B-FBEA-472C-B6E8-2BD6018523F0}");
  EXPECT_EQ(GUIDToString(IWatchlist::cIid), u"{6233E6B1-E4A0-420F-A795-BEFF3613D939}");
  EXPECT_EQ(GUIDToString(IToolbarExtender::cIid), u"{9D50E93C-91CA-4C2F-A781-1C77BCDF39D2}");
  EXPECT_EQ(GUIDToString(ISettingsPublisher::cIid), u"{12AECDD3-C7D9-44A2-BFFE-B27E03BA786E}");
  EXPECT_EQ(GUIDToString(ISettingsExtender::cIid), u"{B3FA4438-CF0B-418C-BBA5-BA5BDA205056}");
  EXPECT_EQ(GUIDToString(IPluginDataPublisher::cIid), u"{9F932910-4CD1-41E7-A093-C8B7FA96D838}");
  EXPECT_EQ(GUIDToString(IContextMenuExtender::cIid), u"{482AEBB2-8D09-4250-AF1F-AECE0CB9C653}");
  EXPECT_EQ(GUIDToString(INotifications::cIid), u"{3870DD27-ADBB-4151-87BD-BB788ABCF2A6}");
  EXPECT_EQ(GUIDToString(IAdditionalColumns::cIid), u"{A55A7DD2-231B-4C73-8267-5BC52531F25F}");
  EXPECT_EQ(GUIDToString(IExplorerBarExtender::cIid), u"{C458FD57-E7CA-4021-ACFA-01B039CC1F8D}");
  EXPECT_EQ(GUIDToString(IExplorerBarPanel::cIid), u"{CE608A95-7458-44D2-810D-6CFE0D63E9D1}");
}

TEST(Contract, TheIdsOfInterfacesAreDistinct) {
  const std::vector<TGuid> ids = {IID_SearchResults,          IID_SearchResultUpdate,
                                  IID_SearchResultConverter,  IID_WatchlistIntegration,
                                  IID_WatchlistVisualization, IID_SearchLocationIntegration,
                                  IID_ExplorerBarExtender,    IExplorerBar::cIid,
                                  IExplorerBarItem::cIid,     IExplorerBarPanel::cIid,
                                  IID_PluginIntegration,      IID_PluginIntegrations,
                                  IApplication::cIid,         IPlugin::cIid,
                                  IMultiThreadPlugin::cIid,   IIntegrationInfo::cIid,
                                  IReminderText::cIid,        IAdditionalColumns::cIid,
                                  IAdditionalColumn::cIid,    ICellMouseInfo::cIid,
                                  ICellPaintInfo::cIid,       ISearchResult::cIid,
                                  IInterfaceList::cIid};
  EXPECT_EQ(std::set<TGuid>(ids.begin(), ids.end()).size(), ids.size());
}

TEST(TPlugins, HoldsPluginsInTheOrderOfLoading) {
  TPlugins plugins;
  const TIntf<IPlugin> first = MakeIntf<TFakePlugin>(u"1");
  const TIntf<IPlugin> second = MakeIntf<TFakePlugin>(u"2");
  plugins.Add(first);
  plugins.Add(second);
  EXPECT_EQ(plugins.GetCount(), 2);
  EXPECT_EQ(plugins.GetItems(1)->GetDescription(), u"2");
  EXPECT_THROW(plugins.GetItems(2), EListError);
  plugins.Remove(first);
  plugins.Remove(first);
  EXPECT_EQ(plugins.GetCount(), 1);
  EXPECT_TRUE(plugins.GetItems(0) == second);
}

TEST(TPlugins, ClearDropsTheLastOneFirst) {
  TPlugins plugins;
  std::vector<int> deaths;
  for (int i = 0; i < 3; ++i) {
    plugins.Add(MakeIntf<TFakePlugin>(u"x", [&deaths, i] { deaths.push_back(i); }));
  }
  plugins.Clear();
  EXPECT_THAT(deaths, ElementsAre(2, 1, 0));
  EXPECT_EQ(plugins.GetCount(), 0);
}

TEST(TPlugins, IsOneForTheProcess) { EXPECT_EQ(&Plugins(), &Plugins()); }

TEST(TCommonPlugin, KeepsTheApplicationBetweenInitializeAndUninitialize) {
  const auto plugin = MakeIntf<TFakePlugin>();
  const TIntf<IApplication> application = MakeIntf<TFakeApplication>();
  EXPECT_FALSE(plugin->App());
  plugin->Initialize(application);
  EXPECT_TRUE(plugin->App() == application);
  plugin->Uninitialize();
  EXPECT_FALSE(plugin->App());
}

TEST(TCommonPlugin, LetsTheProgramGoToTheTray) {
  const auto plugin = MakeIntf<TFakePlugin>();
  bool allowed = true;
  plugin->MinimizeToTrayQuery(allowed);
  plugin->MinimizeToTray();
  plugin->RestoreFromTray();
  plugin->ProcessCdmLineParams(u"-x");
  plugin->InitHelpAgent();
  EXPECT_TRUE(allowed);
}

TEST(TCommonPlugin, AnswersForTheParentOfItsInterface) {
  const TIntf<IMultiThreadPlugin> plugin = MakeIntf<TFakePlugin>();
  EXPECT_TRUE(Supports<IPlugin>(plugin));
  EXPECT_FALSE(Supports<IWatchlist>(plugin));
}

TEST(TPluginIntegration, HoldsWhatOthersInject) {
  const TIntf<IIntegrationInfo> info =
      MakeIntf<TPluginIntegrationInfo>(NewGuid(), TGroupIdentification{7});
  const TIntf<IPluginIntegration> door = MakeIntf<TPluginIntegration>(info);
  const TIntf<IInterfaceList> more = NewInterfaceList();
  more->Add(MakeIntf<TFakeSource>(u"2"));
  more->Add(MakeIntf<TFakeSource>(u"3"));
  door->AddIntegration(MakeIntf<TFakeSource>(u"1"));
  door->AddIntegrations(more);
  door->AddIntegrations({});
  const TIntf<IPluginIntegrations> held = Supports<IPluginIntegrations>(door);
  ASSERT_EQ(held->GetCount(), 3);
  EXPECT_EQ(Supports<IWatchlistIntegration>(held->GetItem(2))->GetName(), u"3");
  EXPECT_THROW(held->GetItem(3), EListError);
  EXPECT_TRUE(door->GetIntegrationInfo() == info);
}

TEST(TPluginIntegration, OffersNothingOfItsOwn) {
  const auto door = MakeIntf<TPluginIntegration>(TIntf<IIntegrationInfo>());
  EXPECT_EQ(door->GetIntegrations({})->GetCount(), 0);
}

TEST(TPluginIntegrationInfo, TellsIdAndGroup) {
  const TGuid id = NewGuid();
  const auto info = MakeIntf<TPluginIntegrationInfo>(id, TGroupIdentification{7});
  EXPECT_EQ(info->GetId(), id);
  EXPECT_EQ(info->GetGroup(), TGroupIdentification{7});
}

class TFakeNode : public TInterfaced<ISettingsNode> {
 public:
  TGuid GetId() const override { return cEmptyGuid; }
  TString GetCaption() const override { return u"Seite"; }
  int GetSortOrder() const override { return 1; }
  bool ValidateSettings(TString&, TControl*&) override { return true; }
  void SettingsChanged() override {}
  void LoadSettings() override {}
  void SaveSettings() override {}
  TPanel& GetFrame() override { throw Exception(u"Es gibt nichts zu sehen"); }
};

TEST(TCommonSettingsExtender, HoldsPagesWithTheirPlaces) {
  const auto extender = MakeIntf<TCommonSettingsExtender>();
  const TGuid before = NewGuid();
  extender->AddNodeBefore(before, MakeIntf<TFakeNode>());
  ASSERT_EQ(extender->GetCount(), 1);
  EXPECT_EQ(extender->GetNode(0)->GetCaption(), u"Seite");
  EXPECT_EQ(extender->GetBefore(0), before);
  EXPECT_THROW(extender->GetNode(1), EListError);
  EXPECT_THROW(extender->GetBefore(-1), EListError);
}

TEST(TCommonToolbar, HoldsButtonsWhoseHintIsTheirCaption) {
  const auto toolbar = MakeIntf<TCommonToolbarExtender>();
  toolbar->Add(MakeIntf<TFakeToolbarButton>(1, cEmptyGuid, u"Beobachten"));
  ASSERT_EQ(toolbar->GetCount(), 1);
  EXPECT_EQ(toolbar->GetItems(0)->GetHint(), u"Beobachten");
  EXPECT_THROW(toolbar->GetItems(1), EListError);
}

TEST(TBitmap, IsAnImageByItsName) {
  EXPECT_TRUE(TBitmap().IsEmpty());
  EXPECT_FALSE(TBitmap{u"A"}.IsEmpty());
  EXPECT_EQ(TBitmap{u"A"}, TBitmap{u"A"});
  EXPECT_EQ(cTransparentColor, (TColor{255, 0, 255}));
}

TEST(TCommonExplorerBarExtender, AddsNothingByItself) {
  class TPlain final : public TCommonExplorerBarExtender {
   public:
    bool QueryInterface(const TGuid&, void**) override { return false; }
    void AddRef() override {}
    void Release() override {}
    size_t ItemCount() { return Items().size(); }
  } plain;
  plain.AddPanels(nullptr);
  plain.DeletePanels(nullptr);
  plain.AddItems({});
  plain.DeleteItems({});
  plain.BeforeClick({}, cEmptyGuid);
  EXPECT_EQ(plain.ItemCount(), 0u);
}

// What a source may leave out.
TEST(TFakeSource, WithoutRefreshesStillIsASource) {
  const TIntf<IWatchlistIntegration> source =
      MakeIntf<TFakeSource>(u"Shop", NewGuid(), TFakeAbilities{.Update = false});
  EXPECT_FALSE(Supports<ISearchResultUpdate>(source));
  EXPECT_TRUE(Supports<IWatchlistVisualization>(source));
  EXPECT_EQ(source->GetAffiliateId(), source->GetId());
}

TEST(TFakeSource, WithoutAViewStillIsASource) {
  const TIntf<IWatchlistIntegration> source =
      MakeIntf<TFakeSource>(u"Shop", NewGuid(), TFakeAbilities{.Visualization = false});
  EXPECT_TRUE(Supports<ISearchResultUpdate>(source));
  EXPECT_FALSE(Supports<IWatchlistVisualization>(source));
}

TEST(TFakeSearchResult, IsTheSameByItsArticleAndNotByItsId) {
  const TIntf<ISearchResult> result = FakeResult(u"Uhr");
  const TIntf<ISearchResult> clone = result->Clone();
  EXPECT_EQ(clone->GetId(), result->GetId());
  clone->SetId(NewGuid());
  EXPECT_TRUE(result->IsSame(clone));
  EXPECT_FALSE(result->IsSame(FakeResult(u"Ring")));
  EXPECT_FALSE(result->IsSame({}));
  EXPECT_FALSE(result->HasEndTime());
}

}  // namespace
}  // namespace kk
