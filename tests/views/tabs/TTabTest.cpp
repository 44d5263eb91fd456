#include "views/tabs/TTab.h"

#include "TTabsWorld.h"

namespace kk {
namespace {

class TTabTest : public TTabsWorld {
 protected:
  static TIntf<INotifications> NotificationsOf(const TIntf<TFakeSource>& iSource) {
    return Supports<INotifications>(iSource->Extensions().at(0));
  }
  static TIntf<IContextMenuExtender> MenuOf(const TIntf<TFakeSource>& iSource) {
    return Supports<IContextMenuExtender>(iSource->Extensions().at(1));
  }
  /// Clicks the entry with this caption in the context menu of the source's view.
  static void Click(const TIntf<TFakeSource>& iSource, TStringView iCaption) {
    const auto menu = MenuOf(iSource);
    menu->BeforeContextMenuPopup(nullptr, cEmptyGuid);
    for (int i = 0; i < menu->GetCount(); ++i) {
      if (menu->GetItems(i).Caption() != iCaption) continue;
      EXPECT_TRUE(menu->GetItems(i).Click());
    }
  }
};

TEST_F(TTabTest, HasAHeadThatIsInvisibleAtFirst) {
  const TKK5SkinHeaderItemTabExt& head = *Tab(Shop).HeaderItem();
  EXPECT_EQ(head.Caption(), u"Laden");
  EXPECT_EQ(head.Image(), (TBitmap{u"FAKE"}));
  EXPECT_EQ(head.ImageSelected(), (TBitmap{u"FAKESELECTED"}));
  EXPECT_FALSE(head.Visible());
  EXPECT_FALSE(head.Selected());
  EXPECT_EQ(head.Parent(), &Strip);
}

TEST_F(TTabTest, GivesTheViewAPanelThatFillsTheContainerAndIsHiddenAtFirst) {
  const TPanel* panel = Tab(Shop).Container();
  EXPECT_EQ(Shop->Container(), panel);
  EXPECT_EQ(panel->Parent(), &Container);
  EXPECT_EQ(Container.Arrangement(), TArrangement::arStack);
  EXPECT_TRUE(panel->Stretches());
  EXPECT_FALSE(panel->Visible());
}

TEST_F(TTabTest, GivesTheViewItsNotificationsAndThenItsMenu) {
  ASSERT_EQ(Shop->Extensions().size(), 2U);
  EXPECT_EQ(NotificationsOf(Shop), Tab(Shop).Notifications());
  EXPECT_EQ(MenuOf(Shop), Tab(Shop).ContextMenuExtender());
  EXPECT_EQ(&Tab(Shop).TabControl(), Tabs.get());
  EXPECT_EQ(Tab(Shop).Integration(), Shop);
  EXPECT_TRUE(Tab(Shop).Visualization());
}

TEST_F(TTabTest, AnswersTheResultsThatTheViewHasRegistered) {
  EXPECT_EQ(Tab(Shop).GetSearchResults().Get(), &Shop->Results());
  const auto source = MakeIntf<TFakeSource>(u"Stumm", NewGuid(), TFakeAbilities{.Results = false});
  Add(source);
  EXPECT_FALSE(Tab(source).GetSearchResults());
}

TEST_F(TTabTest, ShowAndHideMoveHeadAndList) {
  TTab& tab = Tab(Shop);
  tab.Show();
  EXPECT_TRUE(tab.IsVisible());
  EXPECT_FALSE(tab.Container()->Visible());
  tab.Select();
  EXPECT_TRUE(tab.Container()->Visible());
  tab.Hide();
  EXPECT_FALSE(tab.IsVisible());
  EXPECT_TRUE(tab.IsSelected());
  EXPECT_FALSE(tab.Container()->Visible());
  EXPECT_EQ(Shop->ViewCalls(), (TLines{"ShowList", "HideList"}));
}

TEST_F(TTabTest, AChangedSelectionIsToldOnlyOfTheTabOnShow) {
  ShowCategory({Auction, Shop});
  Tab(Shop).Select();
  Take();
  NotificationsOf(Shop)->SelectionChanged();
  EXPECT_EQ(Take(), TLines{"selection Laden"});
  NotificationsOf(Auction)->SelectionChanged();  // visible, not selected
  NotificationsOf(Fair)->SelectionChanged();     // neither
  Tab(Shop).HeaderItem()->SetVisible(false);     // selected, not visible
  NotificationsOf(Shop)->SelectionChanged();
  EXPECT_EQ(Take(), TLines{});
}

TEST_F(TTabTest, TheEndOfAViewAndItsWaitingConcernNobody) {
  ShowCategory({Shop});
  Take();
  NotificationsOf(Shop)->Close();
  NotificationsOf(Shop)->WaitFor();
  EXPECT_EQ(Take(), TLines{});
  EXPECT_TRUE(Tab(Shop).IsVisible());
}

TEST_F(TTabTest, ThePointerThatLeavesTheHeadEmptiesTheHint) {
  ShowCategory({Shop});
  Strip.SetHint(u"Laden");
  EXPECT_TRUE(Tab(Shop).HeaderItem()->EnterMouse());
  EXPECT_EQ(Strip.Hint(), u"Laden");
  EXPECT_TRUE(Tab(Shop).HeaderItem()->LeaveMouse());
  EXPECT_EQ(Strip.Hint(), u"");
}

TEST_F(TTabTest, RelaysTheCommandsOfItsMenu) {
  CreateHandler(nullptr);
  TWatchlistItem& item = Item(Category(u"Bücher"), Shop, u"Atlas", Now().PlusMs(5000));
  Shop->Results().Items = {item.SearchResult()};
  Shop->Results().Select(Shop->Results().Items);
  Click(Shop, u"Aktualisieren");
  Click(Shop, u"Löschen");
  Click(Shop, u"Notiz bearbeiten...");
  Click(Shop, u"Erinnerung einrichten...");
  Click(Shop, u"Erinnerung löschen");
  MenuOf(Shop)->BeforeContextMenuPopup(nullptr, cEmptyGuid);
  MenuOf(Shop)->GetItems(6).GetItems(0).Click();
  EXPECT_EQ(Take(),
            (TLines{"update Laden Atlas", "delete Laden Atlas", "edit Laden Atlas",
                    "remind Laden Atlas", "forget Laden Atlas", "move Laden to Bücher Atlas"}));
  Tabs = nullptr;
  TWatchlistWorld::Tree().Clear();
  FreeHandler();
}

TEST_F(TTabTest, WithoutListenersCommandsGoNowhere) {
  const TIntf<IInterfaceList> list = NewInterfaceList();
  Tabs->Events() = {};
  for (const bool tabAlone : {false, true}) {
    TTab& tab = Tab(Shop);
    if (tabAlone) tab.Events() = {};
    tab.Show();
    tab.Select();
    tab.DoSelectionChanged();
    tab.DoUpdate(nullptr, list);
    tab.DoDelete(nullptr, list);
    tab.DoEditDescription(nullptr, list);
    tab.DoMove(nullptr, nullptr, list);
    tab.DoReminderAdd(nullptr, list);
    tab.DoReminderDelete(nullptr, list);
  }
  EXPECT_EQ(Take(), TLines{});
}

TEST_F(TTabTest, ItsOwnEventsHaveTheTabAsTheirSender) {
  struct TListener {
    void Note(TObject* Sender, TTab& iTab, const TIntf<IInterfaceList>&) {
      Senders.push_back(Sender);
      EXPECT_EQ(Sender, &iTab);
    }
    void NotePlain(TObject* Sender) { Senders.push_back(Sender); }
    std::vector<TObject*> Senders;
  } listener;
  TTab& tab = Tab(Shop);
  tab.Events().OnUpdate = TTabEventWithInterfaces::Of<&TListener::Note>(&listener);
  tab.Events().OnClick = TNotifyEvent::Of<&TListener::NotePlain>(&listener);
  tab.DoUpdate(nullptr, NewInterfaceList());
  tab.DoClick(nullptr);
  EXPECT_EQ(listener.Senders, (std::vector<TObject*>{&tab, &tab}));
}

TEST_F(TTabTest, AtItsEndTheViewReleasesItsListAndTheHeadGoes) {
  Tab(Fair).Show();
  Tab(Fair).Select();
  Fair->ViewCalls().clear();
  Tabs->CloseTabs();
  EXPECT_EQ(Fair->ViewCalls(), (TLines{"ReleaseList", "ReleaseListData", "SetContainer null"}));
  EXPECT_EQ(Fair->Container(), nullptr);
  EXPECT_EQ(Strip.GetCount(), 0);
  EXPECT_TRUE(Container.Children().empty());
}

TEST_F(TTabTest, AtItsEndThePanelIsHiddenBeforeTheViewIsTold) {
  struct TSkin : IControlObserver {
    void ControlChanged(TControl& iControl) override {
      if (&iControl == Panel && !Panel->Visible()) CallsBefore = Source->ViewCalls().size();
    }
    void ControlGone(TControl&) override {}
    TPanel* Panel = nullptr;
    TFakeSource* Source = nullptr;
    size_t CallsBefore = 99;
  } skin;
  ShowCategory({Fair});
  Fair->ViewCalls().clear();
  skin.Panel = Tab(Fair).Container();
  skin.Source = Fair.Get();
  Container.SetObserver(&skin);
  Tabs->CloseTabs();
  EXPECT_EQ(skin.CallsBefore, 0U);
  Container.SetObserver(nullptr);
}

TEST_F(TTabTest, AViewThatFailsAtTheEndKeepsNeitherPanelNorCallbacks) {
  ShowCategory({Fair});
  Take();
  const auto notifications = NotificationsOf(Fair);
  Fair->SetFailingViewCall("ReleaseList");
  EXPECT_THROW(Tab(Fair).Release(), Exception);
  EXPECT_EQ(Fair->Container(), nullptr);
  EXPECT_EQ(Container.Children().size(), 2U);
  EXPECT_EQ(Strip.GetCount(), 2);
  notifications->SelectionChanged();
  EXPECT_FALSE(notifications->GetSearchResults());
  EXPECT_EQ(Take(), TLines{});
}

TEST_F(TTabTest, ReleasedItIsEmptyAndDoesNothing) {
  TTab& tab = Tabs->Tabs().GetItems(2);
  tab.Release();
  tab.Release();
  EXPECT_FALSE(tab.Integration());
  EXPECT_FALSE(tab.Visualization());
  EXPECT_EQ(tab.HeaderItem(), nullptr);
  EXPECT_FALSE(tab.Notifications());
  EXPECT_FALSE(tab.ContextMenuExtender());
  EXPECT_FALSE(tab.GetSearchResults());
  EXPECT_FALSE(tab.IsVisible());
  tab.Select();
  EXPECT_EQ(Take(), TLines{});
}

TEST_F(TTabTest, OneThatCannotBeMadeLeavesNothingBehind) {
  for (const char* call : {"GetCaption", "SetContainer", "AddExtension"}) {
    const auto source = MakeIntf<TFakeSource>(u"Kaputt");
    const int64_t before = LiveObjectCount();
    source->SetFailingViewCall(call);
    EXPECT_THROW(Add(source), Exception) << call;
    EXPECT_EQ(Strip.GetCount(), 3);
    EXPECT_EQ(Container.Children().size(), 3U);
    EXPECT_EQ(Tabs->Tabs().GetCount(), 3);
    EXPECT_EQ(source->Container(), nullptr);
    EXPECT_EQ(source->ViewCalls().back(), "SetContainer null");
    source->Extensions().clear();
    EXPECT_EQ(LiveObjectCount(), before) << call;
  }
}

TEST_F(TTabTest, AViewThatKeepsItsExtensionsLeavesNoCycle) {
  Auction->Extensions().clear();
  Shop->Extensions().clear();
  Tabs = nullptr;
  const auto notifications = NotificationsOf(Fair);
  const auto menu = MenuOf(Fair);
  notifications->SelectionChanged();
  menu->BeforeContextMenuPopup(nullptr, cEmptyGuid);
  for (int i = 0; i < menu->GetCount(); ++i) menu->GetItems(i).Click();
  EXPECT_EQ(Take(), TLines{});
  // Three sources, two of them with nothing else; the third with what it was given, its results
  // aside, which the tab had asked for.
  EXPECT_EQ(LiveObjectCount(), 3 + 3 + 2);
}

}  // namespace
}  // namespace kk
