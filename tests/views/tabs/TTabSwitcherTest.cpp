#include "views/tabs/TTabSwitcher.h"

#include <functional>

#include "TTabsWorld.h"
#include "host/controls/TCommonExplorerBar.h"
#include "host/controls/TCommonExplorerBarPanel.h"

namespace kk {
namespace {

constexpr TGuid cPanelA = GuidLiteral("{00000000-0000-0000-0000-00000000000A}");
constexpr TGuid cPanelB = GuidLiteral("{00000000-0000-0000-0000-00000000000B}");

/// Notes what the tabs do with the side bar, one line each.
class TNotingBar : public TCommonExplorerBar {
 public:
  TNotingBar(TExplorerBar& iControl, TLines& ioNotes)
      : TCommonExplorerBar(iControl), FNotes(ioNotes) {}
  void BeginUpdate() override {
    FNotes.push_back("open");
    TCommonExplorerBar::BeginUpdate();
  }
  void EndUpdate() override {
    TCommonExplorerBar::EndUpdate();
    FNotes.push_back("close");
  }

 private:
  TLines& FNotes;
};

/// An extension of the side bar by a source.
class TNotingExtender : public TInterfaced<IExplorerBarExtender> {
 public:
  TNotingExtender(const std::string& iName, TLines& ioNotes) : FName(iName), FNotes(ioNotes) {}
  void AddPanels(IExplorerBar* iBar) override {
    Note("AddPanels", iBar != nullptr ? "" : "?");
    if (OnAddPanels) OnAddPanels();
  }
  void DeletePanels(IExplorerBar* iBar) override {
    Note("DeletePanels", iBar != nullptr ? "" : "?");
  }
  void AddItems(const TIntf<IExplorerBarPanel>& iPanel) override {
    Note("AddItems", NameOf(*iPanel));
    if (Fails) throw Exception(u"Kein Platz");
  }
  void DeleteItems(const TIntf<IExplorerBarPanel>& iPanel) override {
    Note("DeleteItems", NameOf(*iPanel));
  }
  void BeforeClick(const TIntf<ISearchResult>&, const TGuid&) override {}

  bool Fails = false;
  std::function<void()> OnAddPanels;

 private:
  static std::string NameOf(const IExplorerBarPanel& iPanel) {
    return iPanel.GetId() == cPanelA ? " A" : " B";
  }
  void Note(const std::string& iCall, const std::string& iPanel) {
    FNotes.push_back(FName + "." + iCall + iPanel);
  }

  std::string FName;
  TLines& FNotes;
};

class TTabSwitcherTest : public TTabsWorld, protected ITabFollower {
 protected:
  TTabSwitcherTest() {
    for (const TGuid& id : {cPanelA, cPanelB}) {
      Panels.push_back(MakeIntf<TCommonExplorerBarPanel>(id, 1, u"", u""));
      Bar->Add(Panels.back());
    }
    Extend(Shop, "shop");
    Extend(Fair, "fair");
  }
  ~TTabSwitcherTest() override { Bar->Clear(); }

  IExplorerBar* ExplorerBar() override { return HasBar ? Bar.Get() : nullptr; }
  void SetCurrentSearchResult(const TIntf<ISearchResult>& iResult) override {
    Notes.push_back("result " + (iResult ? ToUtf8(iResult->GetName()) : "none"));
    if (iResult && iResult == Unwanted) throw Exception(u"Nicht dieser");
  }
  void RestoreExplorerbarDefaultItems() override { Notes.push_back("restore"); }
  void SelectNodeByIntegration(const TIntf<IWatchlistIntegration>& iIntegration) override {
    Notes.push_back("node " + ToUtf8(iIntegration->GetName()));
    if (TreeFails) throw Exception(u"Kein Knoten");
  }

  TIntf<TNotingExtender> Extend(const TIntf<TFakeSource>& iSource, const std::string& iName) {
    const auto extender = MakeIntf<TNotingExtender>(iName, Notes);
    iSource->ViewParts().push_back(extender);
    return extender;
  }
  TLines Switch(TTab* iFrom, TTab* iTo) {
    Switcher.DoTabControlSwitchTab(Tabs.get(), iFrom, iTo);
    return std::exchange(Notes, {});
  }
  TLines SelectionChanged(const TIntf<TFakeSource>& iSource) {
    Switcher.DoTabSelectionChanged(Tabs.get(), Tab(iSource));
    return std::exchange(Notes, {});
  }

  TLines Notes;
  TExplorerBar Control{&Form, u"explrbr"};
  TIntf<TNotingBar> Bar = MakeIntf<TNotingBar>(Control, Notes);
  std::vector<TIntf<TCommonExplorerBarPanel>> Panels;
  TTabSwitcher Switcher{*this};
  TIntf<ISearchResult> Unwanted;
  bool HasBar = true;
  bool TreeFails = false;
};

TEST_F(TTabSwitcherTest, DetachesTheOldTabAndThenAttachesTheNewOne) {
  Fair->Results().Select({FakeResult(u"Atlas")});
  EXPECT_EQ(Switch(&Tab(Shop), &Tab(Fair)),
            (TLines{"open", "shop.DeleteItems A", "shop.DeleteItems B", "shop.DeletePanels",
                    "fair.AddPanels", "fair.AddItems A", "fair.AddItems B", "result Atlas",
                    "restore", "close", "node Messe"}));
}

TEST_F(TTabSwitcherTest, ASwitchToNoneShowsNoResultAndLeavesTheTree) {
  EXPECT_EQ(Switch(&Tab(Shop), nullptr),
            (TLines{"open", "shop.DeleteItems A", "shop.DeleteItems B", "shop.DeletePanels",
                    "result none", "restore", "close"}));
}

TEST_F(TTabSwitcherTest, ASwitchFromNoneOnlyAttaches) {
  EXPECT_EQ(Switch(nullptr, &Tab(Shop)),
            (TLines{"open", "shop.AddPanels", "shop.AddItems A", "shop.AddItems B", "result none",
                    "restore", "close", "node Laden"}));
}

TEST_F(TTabSwitcherTest, ATabIsBoundAnewByASwitchToItself) {
  EXPECT_EQ(Switch(&Tab(Fair), &Tab(Fair)),
            (TLines{"open", "fair.DeleteItems A", "fair.DeleteItems B", "fair.DeletePanels",
                    "fair.AddPanels", "fair.AddItems A", "fair.AddItems B", "result none",
                    "restore", "close", "node Messe"}));
}

TEST_F(TTabSwitcherTest, AViewThatExtendsNothingIsPassedOver) {
  EXPECT_EQ(Switch(&Tab(Auction), &Tab(Auction)),
            (TLines{"open", "result none", "restore", "close", "node Auktion"}));
}

TEST_F(TTabSwitcherTest, SubVisualizationsExtendTheBarToo) {
  const TIntf<IInterfaceList> parts = NewInterfaceList();
  parts->Add(MakeIntf<TNotingExtender>("part1", Notes));
  parts->Add(FakeResult(u"kein Erweiterer"));
  parts->Add(nullptr);
  parts->Add(MakeIntf<TNotingExtender>("part2", Notes));
  Shop->SetSubVisualizations(parts);
  EXPECT_EQ(Switch(&Tab(Shop), nullptr),
            (TLines{"open", "shop.DeleteItems A", "shop.DeleteItems B", "shop.DeletePanels",
                    "part1.DeleteItems A", "part1.DeleteItems B", "part1.DeletePanels",
                    "part2.DeleteItems A", "part2.DeleteItems B", "part2.DeletePanels",
                    "result none", "restore", "close"}));
  EXPECT_EQ(
      Switch(nullptr, &Tab(Shop)),
      (TLines{"open", "shop.AddPanels", "shop.AddItems A", "shop.AddItems B", "part1.AddPanels",
              "part1.AddItems A", "part1.AddItems B", "part2.AddPanels", "part2.AddItems A",
              "part2.AddItems B", "result none", "restore", "close", "node Laden"}));
}

TEST_F(TTabSwitcherTest, SubVisualizationsAreAskedForWhenTheViewsOwnTurnIsOver) {
  const auto extender = Extend(Auction, "auction");
  extender->OnAddPanels = [this] {  // only now does it make them
    const TIntf<IInterfaceList> parts = NewInterfaceList();
    parts->Add(MakeIntf<TNotingExtender>("part", Notes));
    Auction->SetSubVisualizations(parts);
  };
  EXPECT_EQ(Switch(nullptr, &Tab(Auction)),
            (TLines{"open", "auction.AddPanels", "auction.AddItems A", "auction.AddItems B",
                    "part.AddPanels", "part.AddItems A", "part.AddItems B", "result none",
                    "restore", "close", "node Auktion"}));
}

TEST_F(TTabSwitcherTest, AFailureClosesTheBracketAndPassesOn) {
  Extend(Auction, "auction")->Fails = true;
  EXPECT_THROW(Switch(nullptr, &Tab(Auction)), Exception);
  EXPECT_EQ(Notes, (TLines{"open", "auction.AddPanels", "auction.AddItems A", "close"}));
}

TEST_F(TTabSwitcherTest, AFailureOfTheFocusedResultPassesOnFromASwitch) {
  Shop->Results().FocusFailure = u"weg";
  EXPECT_THROW(Switch(nullptr, &Tab(Shop)), Exception);
  EXPECT_EQ(Notes.back(), "close");
}

TEST_F(TTabSwitcherTest, AFailureOfTheTreeIsSwallowed) {
  TreeFails = true;
  EXPECT_EQ(Switch(nullptr, &Tab(Auction)).back(), "node Auktion");
}

TEST_F(TTabSwitcherTest, WithoutASideBarTheTreeStillFollows) {
  HasBar = false;
  EXPECT_EQ(Switch(&Tab(Shop), &Tab(Fair)), TLines{"node Messe"});
  EXPECT_EQ(Switch(&Tab(Shop), nullptr), TLines{});
}

TEST_F(TTabSwitcherTest, TheBarShowsTheFocusedResult) {
  EXPECT_EQ(SelectionChanged(Shop), TLines{"result none"});
  Shop->Results().Select({FakeResult(u"Atlas")});
  EXPECT_EQ(SelectionChanged(Shop), TLines{"result Atlas"});
}

TEST_F(TTabSwitcherTest, AViewWithoutResultsShowsNone) {
  const auto source = MakeIntf<TFakeSource>(u"Stumm", NewGuid(), TFakeAbilities{.Results = false});
  Add(source);
  EXPECT_EQ(SelectionChanged(source), TLines{"result none"});
}

TEST_F(TTabSwitcherTest, AFocusThatCannotBeToldOrShownIsNone) {
  Shop->Results().FocusFailure = u"weg";
  EXPECT_EQ(SelectionChanged(Shop), TLines{"result none"});
  Shop->Results().FocusFailure = u"";
  Unwanted = FakeResult(u"Atlas");
  Shop->Results().Select({Unwanted});
  EXPECT_EQ(SelectionChanged(Shop), (TLines{"result Atlas", "result none"}));
}

TEST_F(TTabSwitcherTest, HandlesTheEventsOfTheTabControl) {
  Tabs->Events().OnSwitchTab = TSwitchTabEvent::Of<&TTabSwitcher::DoTabControlSwitchTab>(&Switcher);
  Tabs->Events().OnTabSelectionChanged =
      TTabEvent::Of<&TTabSwitcher::DoTabSelectionChanged>(&Switcher);
  ShowCategory({Auction, Shop});
  Notes.clear();
  Tab(Shop).HeaderItem()->Click();
  EXPECT_EQ(Notes.back(), "node Laden");
  Shop->Results().Select({FakeResult(u"Atlas")});
  Supports<INotifications>(Shop->Extensions().at(0))->SelectionChanged();
  EXPECT_EQ(Notes.back(), "result Atlas");
}

}  // namespace
}  // namespace kk
