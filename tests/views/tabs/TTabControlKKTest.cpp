#include "views/tabs/TTabControlKK.h"

#include "TTabsWorld.h"
#include "views/tabs/BuildTabs.h"

namespace kk {
namespace {

using TTabControlKKTest = TTabsWorld;

/// What the skin hears of the strip: how many changes, and which heads are gone.
struct TStripObserver : IControlObserver {
  void ControlChanged(TControl&) override { ++Count; }
  void ControlGone(TControl& iControl) override { Gone.push_back(&iControl); }
  int Count = 0;
  std::vector<const TControl*> Gone;
};

TEST_F(TTabControlKKTest, StartsWithoutASelection) {
  EXPECT_EQ(Tabs->CurrentIndex(), -1);
  EXPECT_EQ(Tabs->GetCurrentTab(), nullptr);
  EXPECT_FALSE(Tabs->GetCurrentIntegration());
  EXPECT_EQ(Tabs->Tabs().IndexOfSelected(), -1);
  EXPECT_FALSE(Tabs->Tabs().IsSelectedVisible());
  EXPECT_FALSE(Tabs->Tabs().SelectFirstVisible());
  EXPECT_EQ(&Tabs->TabControl(), &Strip);
  EXPECT_EQ(&Tabs->Container(), &Container);
  EXPECT_EQ(Captions(), TLines{});
}

TEST_F(TTabControlKKTest, AnswersTheIndexOfTheTabThatItMakes) {
  EXPECT_EQ(Add(MakeIntf<TFakeSource>(u"Vierte")), 3);
  EXPECT_EQ(Tabs->GetIntegrations(1), Shop);
  EXPECT_THROW(Tabs->GetIntegrations(4), EListError);
}

TEST_F(TTabControlKKTest, KeepsWhatIsMadeBetweenBeginAndEnd) {
  Add(MakeIntf<TFakeSource>(u"Davor"));
  EXPECT_EQ(Tabs->AddedTabs().GetCount(), 0);
  Tabs->BeginAdd();
  const auto source = MakeIntf<TFakeSource>(u"Dazwischen");
  Add(source);
  ASSERT_EQ(Tabs->AddedTabs().GetCount(), 1);
  EXPECT_EQ(&Tabs->AddedTabs().GetItems(0), &Tab(source));
  Tabs->EndAdd();
  EXPECT_EQ(Tabs->AddedTabs().GetCount(), 0);
}

TEST_F(TTabControlKKTest, TheFirstVisibleTabIsSelected) {
  ShowCategory({Shop, Fair});
  EXPECT_EQ(Captions(), (TLines{"Laden", "Messe"}));
  EXPECT_EQ(Tabs->GetCurrentTab(), &Tab(Shop));
  EXPECT_EQ(Tabs->GetCurrentIntegration(), Shop);
  EXPECT_EQ(Tabs->CurrentIndex(), 1);
  EXPECT_TRUE(Tabs->Tabs().IsSelectedVisible());
  EXPECT_EQ(Panels(), TLines{"Laden"});
  EXPECT_EQ(Take(), TLines{"switch none to Laden"});
}

TEST_F(TTabControlKKTest, TheSelectedTabStaysWhereTheNextCategoryHasItsSource) {
  ShowCategory({Auction, Shop});
  Tab(Shop).HeaderItem()->Click();
  Take();
  Tabs->BeginAdd();
  Tab(Auction).Hide();
  Tabs->ShowIntegration(Fair);
  Tabs->EndAdd();
  EXPECT_EQ(Take(), TLines{"switch Laden to Laden"});
  EXPECT_EQ(Panels(), TLines{"Laden"});
}

TEST_F(TTabControlKKTest, AChangeOfCategorySwitchesToNoneAndBack) {
  ShowCategory({Auction, Shop});
  Tab(Shop).HeaderItem()->Click();
  Take();
  ShowCategory({Shop, Fair});
  EXPECT_EQ(Take(), (TLines{"switch Laden to none", "switch Laden to Laden"}));
  EXPECT_EQ(Panels(), TLines{"Laden"});
  ShowCategory({Fair});
  EXPECT_EQ(Take(), (TLines{"switch Laden to none", "switch Laden to Messe"}));
  EXPECT_EQ(Panels(), TLines{"Messe"});
}

TEST_F(TTabControlKKTest, ACategoryWithoutTabsSwitchesToNone) {
  ShowCategory({Shop});
  Take();
  ShowCategory({});
  EXPECT_EQ(Take(), (TLines{"switch Laden to none", "switch Laden to none"}));
  EXPECT_EQ(Captions(), TLines{});
  EXPECT_EQ(Panels(), TLines{});
  EXPECT_TRUE(Tab(Shop).IsSelected());
}

TEST_F(TTabControlKKTest, WithNoTabBeforeAndAfterNothingIsTold) {
  ShowCategory({});
  EXPECT_EQ(Take(), TLines{});
  Tabs->Clear();
  ShowCategory({});
  EXPECT_EQ(Take(), TLines{});
}

TEST_F(TTabControlKKTest, AClickShowsThePanelInFrontAndHidesTheOthers) {
  ShowCategory({Auction, Shop, Fair});
  Take();
  EXPECT_TRUE(Tab(Fair).HeaderItem()->Click());
  EXPECT_EQ(Panels(), TLines{"Messe"});
  EXPECT_EQ(Container.Children().back(), Tab(Fair).Container());
  EXPECT_TRUE(Tab(Auction).HeaderItem()->Click());
  EXPECT_EQ(Panels(), TLines{"Auktion"});
  EXPECT_EQ(Container.Children().back(), Tab(Auction).Container());
  EXPECT_EQ(Take(), (TLines{"switch Auktion to Messe", "switch Messe to Auktion"}));
}

TEST_F(TTabControlKKTest, AClickOnTheSelectedTabDoesNothing) {
  ShowCategory({Auction, Shop});
  Take();
  EXPECT_FALSE(Tab(Auction).HeaderItem()->Click());
  Tab(Auction).Select();
  EXPECT_EQ(Take(), TLines{});
}

TEST_F(TTabControlKKTest, SelectsTheTabOfAnIntegrationIfItIsVisible) {
  ShowCategory({Auction, Shop});
  Take();
  Tabs->SelectIntegration(Shop);
  EXPECT_EQ(Take(), TLines{"switch Auktion to Laden"});
  Tabs->SelectIntegration(Fair);
  Tabs->SelectIntegration(MakeIntf<TFakeSource>(u"Fremd"));
  Tabs->ShowIntegration(MakeIntf<TFakeSource>(u"Fremd"));
  EXPECT_EQ(Take(), TLines{});
  EXPECT_EQ(Tabs->GetCurrentIntegration(), Shop);
}

TEST_F(TTabControlKKTest, BeginsDoNotNest) {
  Tabs->BeginAdd();
  Tabs->BeginAdd();
  EXPECT_TRUE(Tabs->Adding());
  Tabs->EndAdd();
  EXPECT_FALSE(Tabs->Adding());
}

TEST_F(TTabControlKKTest, AnEndWithoutABeginDoesNothing) {
  Tab(Shop).Show();
  Tabs->EndAdd();
  EXPECT_EQ(Take(), TLines{});
  EXPECT_FALSE(Tab(Shop).IsSelected());
}

TEST_F(TTabControlKKTest, TheStripShowsAChangeOfCategoryInOneStep) {
  TStripObserver skin;
  Strip.SetObserver(&skin);
  Tabs->BeginAdd();
  Tabs->BeginAdd();
  for (const auto& source : {Auction, Shop, Fair}) Tabs->ShowIntegration(source);
  EXPECT_EQ(skin.Count, 0);
  Tabs->EndAdd();
  EXPECT_EQ(skin.Count, 4);  // once for each of the heads and for the strip
  Strip.SetHint(u"danach");
  EXPECT_EQ(skin.Count, 5);
  Strip.SetObserver(nullptr);
}

TEST_F(TTabControlKKTest, AnEndThatFailsLeavesNothingOpen) {
  Tabs->BeginAdd();
  Tabs->ShowIntegration(Shop);
  FailingSwitches = 1;
  EXPECT_THROW(Tabs->EndAdd(), Exception);
  EXPECT_FALSE(Tabs->Adding());
  TStripObserver skin;
  Strip.SetObserver(&skin);
  Strip.Repaint();
  EXPECT_EQ(skin.Count, 1);
  Strip.SetObserver(nullptr);
}

TEST_F(TTabControlKKTest, AListThatFailsToHideLeavesNothingOpen) {
  ShowCategory({Auction, Shop});
  Auction->SetFailingViewCall("HideList");
  EXPECT_THROW(Tabs->HideAll(), Exception);
  EXPECT_FALSE(Tabs->Adding());
  TStripObserver skin;
  Strip.SetObserver(&skin);
  Strip.Repaint();
  EXPECT_EQ(skin.Count, 1);
  Strip.SetObserver(nullptr);
}

TEST_F(TTabControlKKTest, AListThatFailsToHideStillEndsTheChange) {
  ShowCategory({Auction, Shop});
  Take();
  Auction->SetFailingViewCall("HideList");
  EXPECT_THROW(Tabs->HideAll(), Exception);
  EXPECT_EQ(Take(), TLines{"switch Auktion to Laden"});  // whose turn to hide did not come
}

TEST_F(TTabControlKKTest, OfTwoFailuresWhileHidingTheFirstPassesOn) {
  ShowCategory({Auction, Shop});
  Auction->SetFailingViewCall("HideList");
  FailingSwitches = 1;  // the end of the change
  EXPECT_THROW(Tabs->HideAll(), Exception);
  EXPECT_EQ(FailingSwitches, 0);
  EXPECT_EQ(Log.DebugLines(), TLines{"debug TTabControlKK.HideAll: Kein Fenster"});
}

TEST_F(TTabControlKKTest, RefreshesAResultInEveryTabWhateverOneRaises) {
  Auction->SetViewFailure(u"Keine Zeile");
  Tabs->RefreshSearchResult(FakeResult(u"Atlas"));
  for (const auto& source : {Auction, Shop, Fair}) {
    EXPECT_EQ(source->ViewCalls(), TLines{"RefreshResult Atlas"});
  }
}

TEST_F(TTabControlKKTest, TheChevronsMenuListsTheVisibleTabs) {
  ShowCategory({Auction, Fair});
  Tab(Fair).HeaderItem()->Click();
  Strip.DragItem(*Tab(Fair).HeaderItem(), 0);  // the heads' order, not the tabs'
  TMenuItem menu;
  menu.Add(u"von früher");
  Tabs->FillChevronMenu(menu);
  ASSERT_EQ(menu.GetCount(), 2);
  EXPECT_EQ(menu.GetItems(0).Caption(), u"Auktion (Menü)");
  EXPECT_EQ(menu.GetItems(1).Caption(), u"Messe (Menü)");
  EXPECT_TRUE(menu.GetItems(0).Radio());
  EXPECT_FALSE(menu.GetItems(0).Checked());
  EXPECT_TRUE(menu.GetItems(1).Checked());
}

TEST_F(TTabControlKKTest, AnEntryOfTheChevronSelectsItsTabAndBringsTheHeadIntoView) {
  ShowCategory({Auction, Shop});
  Take();
  TMenuItem menu;
  Tabs->FillChevronMenu(menu);
  EXPECT_TRUE(menu.GetItems(1).Click());
  EXPECT_EQ(Take(), TLines{"switch Auktion to Laden"});
  EXPECT_EQ(Strip.TakeHeadToShow(), Tab(Shop).HeaderItem());
  TStripObserver skin;
  Strip.SetObserver(&skin);
  EXPECT_TRUE(menu.GetItems(1).Click());
  EXPECT_EQ(Take(), TLines{});
  EXPECT_EQ(Strip.TakeHeadToShow(), Tab(Shop).HeaderItem());
  EXPECT_EQ(skin.Count, 1) << "it is selected already";
  Strip.SetObserver(nullptr);
}

TEST_F(TTabControlKKTest, WhatAnEntryOfTheChevronRaisesIsSwallowed) {
  ShowCategory({Auction, Shop});
  TMenuItem menu;
  Tabs->FillChevronMenu(menu);
  FailingSwitches = 1;
  EXPECT_TRUE(menu.GetItems(1).Click());
  EXPECT_EQ(Strip.TakeHeadToShow(), nullptr);
}

TEST_F(TTabControlKKTest, AnEntryOfTheChevronDoesNothingForATabThatIsGone) {
  ShowCategory({Auction, Shop});
  TMenuItem menu;
  Tabs->FillChevronMenu(menu);
  Tabs->Clear();
  Take();
  EXPECT_TRUE(menu.GetItems(1).Click());
  EXPECT_EQ(Take(), TLines{});
}

TEST_F(TTabControlKKTest, TheStripMayChangeOnlyWhereTheFocusIsAmongTheTabs) {
  ShowCategory({Auction, Shop});
  TEdit list(Tab(Auction).Container());
  Take();
  EXPECT_FALSE(Strip.ChangeTab(true));  // nothing has the focus
  Tree.TakeFocus();
  EXPECT_FALSE(Strip.ChangeTab(true));
  EXPECT_EQ(Take(), TLines{});
  list.TakeFocus();
  EXPECT_TRUE(Strip.ChangeTab(true));
  Strip.TakeFocus();
  EXPECT_TRUE(Strip.ChangeTab(true));
  EXPECT_EQ(Take(), (TLines{"switch Auktion to Laden", "switch Laden to Auktion"}));
}

TEST_F(TTabControlKKTest, AClickOnAHeadGoesToTheList) {
  ShowCategory({Auction, Shop});
  TEdit list(Tab(Shop).Container());
  Tree.TakeFocus();
  Tab(Shop).HeaderItem()->Click();
  EXPECT_EQ(Form.FocusedControl(), &list);
}

TEST_F(TTabControlKKTest, WhoWalksThroughTheTreeKeepsTheFocusThere) {
  TEdit list(Tab(Shop).Container());
  Tree.TakeFocus();
  ShowCategory({Auction, Shop});
  Tabs->SelectIntegration(Shop);
  EXPECT_EQ(Form.FocusedControl(), &Tree);
}

TEST_F(TTabControlKKTest, ClearTakesAllTabsApartFromTheLastToTheFirst) {
  ShowCategory({Auction, Shop});
  std::vector<const TControl*> heads;
  for (const auto& source : {Fair, Shop, Auction}) heads.push_back(Tab(source).HeaderItem());
  TStripObserver skin;
  Strip.SetObserver(&skin);
  Tabs->Clear();
  EXPECT_EQ(skin.Gone, heads);
  Strip.SetObserver(nullptr);
  EXPECT_EQ(Tabs->Tabs().GetCount(), 0);
  EXPECT_EQ(Tabs->CurrentIndex(), -1);
  EXPECT_EQ(Strip.GetCount(), 0);
  EXPECT_EQ(Take().back(), "switch none to Auktion");
}

TEST_F(TTabControlKKTest, CloseTabsAnswersFalseAndTellsTheStripOnce) {
  ShowCategory({Shop});
  TStripObserver skin;
  Strip.SetObserver(&skin);
  EXPECT_FALSE(Tabs->CloseTabs());
  EXPECT_EQ(skin.Count, 1);
  EXPECT_EQ(Tabs->CurrentIndex(), 1);
  EXPECT_EQ(Tabs->GetCurrentTab(), nullptr);
  Strip.SetObserver(nullptr);
}

TEST_F(TTabControlKKTest, AViewThatFailsToReleaseEndsTheClosingButNotTheEndOfTheControl) {
  Shop->SetFailingViewCall("ReleaseList");
  EXPECT_THROW(Tabs->CloseTabs(), Exception);
  EXPECT_EQ(Tabs->Tabs().GetCount(), 1);  // the last and the failing one are gone
  Auction->SetFailingViewCall("ReleaseListData");
  Tabs = nullptr;
  EXPECT_EQ(Strip.GetCount(), 0);
  EXPECT_EQ(Auction->Container(), nullptr);
}

TEST_F(TTabControlKKTest, AControlThatGoesInTheMiddleOfAChangeLeavesTheStripFree) {
  Tabs->BeginAdd();
  Tabs = nullptr;
  TStripObserver skin;
  Strip.SetObserver(&skin);
  Strip.Repaint();
  EXPECT_EQ(skin.Count, 1);
  Strip.SetObserver(nullptr);
  TKK5SkinHeaderItemTabExt head(Strip, u"Andere");
  EXPECT_TRUE(Strip.ChangeTab(true)) << "nobody is asked any more";
}

TEST_F(TTabControlKKTest, ATabIsMadeForEachSourceOfTheListThatHasAView) {
  CreateHandler(nullptr);
  Tabs->Clear();
  const auto blind =
      MakeIntf<TFakeSource>(u"Blind", NewGuid(), TFakeAbilities{.Visualization = false});
  for (const auto& source : {Shop, blind, Auction}) Handler()->LstIntegration().Add(source);
  BuildTabs(*Tabs);
  ASSERT_EQ(Tabs->Tabs().GetCount(), 2);
  EXPECT_EQ(Tabs->GetIntegrations(0), Shop);
  EXPECT_EQ(Tabs->GetIntegrations(1), Auction);
  Tabs = nullptr;
  FreeHandler();
}

TEST_F(TTabControlKKTest, NothingIsLeftAtTheEnd) {
  ShowCategory({Auction, Shop});
  Tabs = nullptr;
  for (auto* source : {&Auction, &Shop, &Fair}) {
    (*source)->Extensions().clear();
    *source = nullptr;
  }
  EXPECT_EQ(LiveObjectCount(), 0);
}

}  // namespace
}  // namespace kk
