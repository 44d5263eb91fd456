#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/controls/TCommonExplorerBarPanel.h"
#include "plugin/TExplorerBarExtenderMoreOptionsWatchList.h"
#include "plugin/TPluginIntegrationWatchlist.h"
#include "plugin/TSettingsExtenderWatchlist.h"
#include "plugin/TToolbarButtonWatchlist.h"

namespace kk {
namespace {

// Notes who raised an event.
struct TListener {
  void DoNotify(TObject* iSender) {
    ++Count;
    Sender = iSender;
  }
  void DoItemAdd(TObject* iSender, bool& oVisible) {
    DoNotify(iSender);
    oVisible = Answer;
  }
  TNotifyEvent Event() { return TNotifyEvent::Of<&TListener::DoNotify>(this); }

  int Count = 0;
  TObject* Sender = nullptr;
  bool Answer = false;
};

TEST(TToolbarButtonWatchlist, HasItsIdentity) {
  const auto button = MakeIntf<TToolbarButtonWatchlist>();
  EXPECT_EQ(GUIDToString(button->GetId()), u"{F60DE029-576E-4EB6-996F-C2EE4F8B6153}");
  EXPECT_EQ(GUIDToString(button->GetPluginId()), u"{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}");
  EXPECT_EQ(button->GetSortOrder(), 100);
  EXPECT_EQ(button->GetCaption(), u"Beobachten");
  EXPECT_EQ(button->GetHint(), u"Beobachten");
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(button->GetImage().ResourceName, u"WATCHLISTTOOLBARBUTTONIMAGE");
    EXPECT_EQ(button->GetImageSelected().ResourceName, u"WATCHLISTTOOLBARBUTTONIMAGESELECTED");
  }
}

TEST(TToolbarButtonWatchlist, ClickIsRaisedWithTheButtonAsTheSender) {
  const auto button = MakeIntf<TToolbarButtonWatchlist>();
  button->Click();
  TListener listener;
  button->SetOnClick(listener.Event());
  button->Click();
  EXPECT_EQ(listener.Count, 1);
  EXPECT_EQ(listener.Sender, button.Get());
}

TEST(TPluginIntegrationWatchlist, EachCallerGetsItsOwnWatchlist) {
  const auto info = MakeIntf<TPluginIntegrationInfo>(NewGuid(), TGroupIdentification{3});
  const auto door = MakeIntf<TPluginIntegrationWatchlist>(info, TNotifyGetForm());
  const TIntf<IInterfaceList> first = door->GetIntegrations(info);
  const TIntf<IInterfaceList> second = door->GetIntegrations(info);
  ASSERT_EQ(first->GetCount(), 1);
  const auto watchlist = GetAs<IWatchlist>(*first, 0);
  EXPECT_TRUE(watchlist);
  EXPECT_FALSE(watchlist == GetAs<IWatchlist>(*second, 0));
  EXPECT_EQ(door->GetIntegrationInfo(), TIntf<IIntegrationInfo>(info));
}

TEST(TSettingsExtenderWatchlist, PageStandsBeforeThePluginsPages) {
  const auto extender = MakeIntf<TSettingsExtenderWatchlist>();
  ASSERT_EQ(extender->GetCount(), 1);
  EXPECT_EQ(GUIDToString(extender->GetNode(0)->GetId()), u"{4039E44B-70D4-41D3-86E6-C8CB02CD59FA}");
  EXPECT_EQ(extender->GetNode(0)->GetCaption(), u"Beobachten");
  EXPECT_EQ(extender->GetBefore(0), cSettingsNodeIdPluginsBefore);
}

TEST(TSettingsExtenderWatchlist, EachBringsAPageOfItsOwn) {
  const auto first = MakeIntf<TSettingsExtenderWatchlist>();
  const auto second = MakeIntf<TSettingsExtenderWatchlist>();
  EXPECT_EQ(first->GetNode(0), first->GetNode(0));
  EXPECT_FALSE(first->GetNode(0) == second->GetNode(0));
}

class TExplorerBarExtenderTest : public testing::Test {
 protected:
  TIntf<TExplorerBarExtenderMoreOptionsWatchList> Extender =
      MakeIntf<TExplorerBarExtenderMoreOptionsWatchList>();
  static TIntf<IExplorerBarPanel> Panel(const TGuid& iId) {
    return MakeIntf<TCommonExplorerBarPanel>(iId, 300, u"", u"");
  }

  TIntf<IExplorerBarPanel> More = Panel(GuidLiteral("{16CBDEC1-2DC8-40BC-85C2-DDADECDA881A}"));
};

TEST_F(TExplorerBarExtenderTest, LinkHasItsIdentity) {
  const TIntf<IExplorerBarItem> item = Extender->GetItem();
  EXPECT_EQ(GUIDToString(item->GetId()), u"{34E81B20-26DC-4AAC-8FB1-F15FA5625A2A}");
  EXPECT_EQ(item->GetSortOrder(), 70);
  EXPECT_EQ(item->GetCaption(), u"Artikel beobachten...");
  EXPECT_EQ(item->GetImage().ResourceName, u"EXPLORERBANDBARICO");
  EXPECT_EQ(cTransparentColor, (TColor{255, 0, 255}));
}

TEST_F(TExplorerBarExtenderTest, LinkGoesOnlyToThePanelOfFurtherOptions) {
  const TIntf<IExplorerBarPanel> other = Panel(NewGuid());
  Extender->AddItems(other);
  EXPECT_EQ(other->GetCount(), 0);
  Extender->AddItems(More);
  ASSERT_EQ(More->GetCount(), 1);
  EXPECT_EQ(More->GetItems(0), Extender->GetItem());
  EXPECT_TRUE(Extender->GetItem()->GetVisible()) << "nobody was asked";
}

TEST_F(TExplorerBarExtenderTest, EventDecidesWhetherTheLinkIsToBeSeen) {
  TListener listener;
  Extender->SetOnItemAdd(TNotifyAdd::Of<&TListener::DoItemAdd>(&listener));
  EXPECT_TRUE(Extender->GetOnItemAdd());
  Extender->AddItems(More);
  EXPECT_EQ(listener.Sender, Extender.Get());
  EXPECT_FALSE(Extender->GetItem()->GetVisible());
  listener.Answer = true;
  Extender->AddItems(More);
  EXPECT_TRUE(Extender->GetItem()->GetVisible());
}

TEST_F(TExplorerBarExtenderTest, ClickIsRaisedWithTheExtenderAsTheSender) {
  const TIntf<IExplorerBarItem> item = Extender->GetItem();
  item->Click();
  TListener listener;
  Extender->SetOnItemClick(listener.Event());
  EXPECT_EQ(Extender->GetOnItemClick(), listener.Event());
  item->Click();
  EXPECT_EQ(listener.Count, 1);
  EXPECT_EQ(listener.Sender, Extender.Get());
  Extender = nullptr;
  item->Click();  // the bar still has it
  EXPECT_EQ(listener.Count, 1);
}

TEST_F(TExplorerBarExtenderTest, ExtenderIsFoundByItsInterface) {
  const TIntf<IExplorerBarExtenderMoreOptionsWatchList> face = Extender;
  const auto extender = Supports<IExplorerBarExtender>(face);
  ASSERT_TRUE(extender);
  extender->AddItems(More);
  EXPECT_EQ(More->GetCount(), 1);
  extender->AddPanels(nullptr);
  extender->DeletePanels(nullptr);
  extender->DeleteItems(More);
  EXPECT_EQ(More->GetCount(), 0) << "no other view shows the link";
  extender->BeforeClick({}, {});
}

}  // namespace
}  // namespace kk
