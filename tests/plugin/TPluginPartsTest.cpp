#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plugin/TAdditionalColumnsWatchlist.h"
#include "plugin/TExplorerBarExtenderMoreOptionsWatchList.h"
#include "views/columns/THashedStringListExt.h"
#include "plugin/TPluginIntegrationWatchlist.h"
#include "plugin/TSettingsExtenderWatchlist.h"
#include "plugin/TToolbarButtonWatchlist.h"
#include "tests/support/TFakeSource.h"

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
  void DoColumn(TObject* iSender, const TIntf<ISearchResult>& iResult) {
    DoNotify(iSender);
    Result = iResult;
  }
  TNotifyEvent Event() { return TNotifyEvent::Of<&TListener::DoNotify>(this); }

  int Count = 0;
  TObject* Sender = nullptr;
  bool Answer = false;
  TIntf<ISearchResult> Result;
};

TEST(THashedStringListExt, EmptyListHasNoValue) {
  EXPECT_EQ(THashedStringListExt().IndexOfValue(u""), -1);
  EXPECT_EQ(THashedStringListExt().IndexOfValue(u"b"), -1);
}

TEST(THashedStringListExt, FirstOfTwoLinesWithTheSameValueWins) {
  THashedStringListExt list;
  for (TStringView line : {u"b", u"a=x", u"c=B", u"d=b", u"e="}) list.Add(line);
  EXPECT_EQ(list.IndexOfValue(u"b"), 2) << "case does not count, a line without a value neither";
  EXPECT_EQ(list.IndexOfValue(u""), 4);
  EXPECT_EQ(list.IndexOfValue(u"y"), -1);
  EXPECT_EQ(list.IndexOfName(u"d"), 3);
}

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
  class TPage : public TInterfaced<ISettingsNode> {
   public:
    TGuid GetId() const override { return {}; }
    TString GetCaption() const override { return {}; }
    int GetSortOrder() const override { return 0; }
    void LoadSettings() override {}
    void SaveSettings() override {}
  };
  const auto page = MakeIntf<TPage>();
  const auto extender = MakeIntf<TSettingsExtenderWatchlist>(page);
  ASSERT_EQ(extender->GetCount(), 1);
  EXPECT_EQ(extender->GetNode(0), TIntf<ISettingsNode>(page));
  EXPECT_EQ(extender->GetBefore(0), cSettingsNodeIdPluginsBefore);
  EXPECT_EQ(MakeIntf<TSettingsExtenderWatchlist>(TIntf<ISettingsNode>())->GetCount(), 0);
}

TEST(TAdditionalColumnsWatchlist, ColumnsRaiseTheirEventsUntilTheyAreDetached) {
  TListener add;
  TListener check;
  const TGuid id = NewGuid();
  const auto columns =
      MakeIntf<TAdditionalColumnsWatchlist>(id, TNotifyEventColumn::Of<&TListener::DoColumn>(&add),
                                            TNotifyEventColumn::Of<&TListener::DoColumn>(&check));
  const TIntf<ISearchResult> faust = FakeResult(u"Faust");
  columns->Add(faust);
  EXPECT_EQ(add.Result, faust);
  EXPECT_EQ(check.Count, 0);
  columns->Check(faust);
  EXPECT_EQ(check.Result, faust);
  columns->Detach();
  columns->Add(faust);
  columns->Check(faust);
  EXPECT_EQ(add.Count + check.Count, 2);
  EXPECT_EQ(columns->SearchLocationPluginId(), id);
  EXPECT_EQ(columns->GetColumns()->GetCount(), 0) << "there are none yet";
}

// A panel of the explorer bar that keeps what it is given.
class TFakePanel : public TInterfaced<IExplorerBarPanel> {
 public:
  explicit TFakePanel(const TGuid& iId) : FId(iId) {}
  TGuid GetId() const override { return FId; }
  void Add(const TIntf<IExplorerBarItem>& iItem) override { Items.push_back(iItem); }
  void Append() override {}
  std::vector<TIntf<IExplorerBarItem>> Items;

 private:
  TGuid FId;
};

class TExplorerBarExtenderTest : public testing::Test {
 protected:
  TIntf<TExplorerBarExtenderMoreOptionsWatchList> Extender =
      MakeIntf<TExplorerBarExtenderMoreOptionsWatchList>();
  TIntf<TFakePanel> More =
      MakeIntf<TFakePanel>(GuidLiteral("{16CBDEC1-2DC8-40BC-85C2-DDADECDA881A}"));
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
  const auto other = MakeIntf<TFakePanel>(NewGuid());
  Extender->AddItems(other);
  EXPECT_TRUE(other->Items.empty());
  Extender->AddItems(More);
  ASSERT_EQ(More->Items.size(), 1U);
  EXPECT_EQ(More->Items[0], Extender->GetItem());
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
  EXPECT_EQ(More->Items.size(), 1U);
  extender->AddPanels(nullptr);
  extender->DeletePanels(nullptr);
  extender->DeleteItems(More);
  extender->BeforeClick({}, {});
}

}  // namespace
}  // namespace kk
