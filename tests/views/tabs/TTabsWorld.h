#pragma once

#include <gtest/gtest.h>

#include "host/controls/TEdit.h"
#include "host/controls/TForm.h"
#include "tests/support/TWatchlistWorld.h"
#include "views/tabs/TTabControlKK.h"

namespace kk {

/// A window with a tree (an edit field will do), a strip and a container, and the tabs of three
/// sources: "Auktion", "Laden" and "Messe". What the tab control tells is noted, one line each.
class TTabsWorld : public testing::Test, protected TWatchlistWorld {
 protected:
  TTabsWorld() {
    Form.Show();
    for (const auto& source : {Auction, Shop, Fair}) Add(source);
    ForgetCalls();
    using TSelf = TTabsWorld;
    TTabControlKK::TEvents& events = Tabs->Events();
    events.OnSwitchTab = TSwitchTabEvent::Of<&TSelf::SwitchTab>(this);
    events.OnTabSelectionChanged = TTabEvent::Of<&TSelf::SelectionChanged>(this);
    events.OnTabUpdate = TTabEventWithInterfaces::Of<&TSelf::Update>(this);
    events.OnTabDelete = TTabEventWithInterfaces::Of<&TSelf::Delete>(this);
    events.OnTabEditDescription = TTabEventWithInterfaces::Of<&TSelf::Edit>(this);
    events.OnTabMove = TTabEventCategoryWithInterfaces::Of<&TSelf::Move>(this);
    events.OnTabReminderAdd = TTabEventWithInterfaces::Of<&TSelf::AddReminder>(this);
    events.OnTabReminderDelete = TTabEventWithInterfaces::Of<&TSelf::DeleteReminder>(this);
  }

  int Add(const TIntf<TFakeSource>& iSource) {
    return Tabs->AddIntegration(iSource, Supports<IWatchlistVisualization>(iSource));
  }
  TTab& Tab(const TIntf<TFakeSource>& iSource) {
    for (TTab* tab : Tabs->Tabs()) {
      if (tab->Integration() == iSource) return *tab;
    }
    throw Exception(u"Kein Tab");
  }
  static std::string NameOf(const TTab* iTab) {
    return iTab != nullptr ? ToUtf8(iTab->Integration()->GetName()) : "none";
  }
  /// The section shows a category with groups of these sources.
  void ShowCategory(std::initializer_list<TIntf<TFakeSource>> iSources) {
    Tabs->HideAll();
    Tabs->BeginAdd();
    for (const auto& source : iSources) Tabs->ShowIntegration(source);
    Tabs->EndAdd();
  }
  TLines Take() { return std::exchange(Told, {}); }
  void ForgetCalls() {
    for (const auto& source : {Auction, Shop, Fair}) source->ViewCalls().clear();
  }
  TLines Captions() const {
    TLines captions;
    for (int i = 0; i < Strip.GetCount(); ++i) {
      if (Strip.GetItems(i).Visible()) captions.push_back(ToUtf8(Strip.GetItems(i).Caption()));
    }
    return captions;
  }
  /// The tabs whose panels are visible; the one in front last.
  TLines Panels() {
    TLines names;
    for (const TControl* panel : Container.Children()) {
      if (!panel->Visible()) continue;
      for (const TTab* tab : Tabs->Tabs()) {
        if (tab->Container() == panel) names.push_back(NameOf(tab));
      }
    }
    return names;
  }

  void SwitchTab(TObject* Sender, TTab* iFrom, TTab* iTo) {
    Tell("switch", Sender, NameOf(iFrom) + " to " + NameOf(iTo));
    if (FailingSwitches > 0 && FailingSwitches-- > 0) throw Exception(u"Kein Fenster");
  }
  void SelectionChanged(TObject* Sender, TTab& iTab) { Tell("selection", Sender, NameOf(&iTab)); }
  void Update(TObject* Sender, TTab& iTab, const TIntf<IInterfaceList>& iList) {
    Tell("update", Sender, NameOf(&iTab), iList);
  }
  void Delete(TObject* Sender, TTab& iTab, const TIntf<IInterfaceList>& iList) {
    Tell("delete", Sender, NameOf(&iTab), iList);
  }
  void Edit(TObject* Sender, TTab& iTab, const TIntf<IInterfaceList>& iList) {
    Tell("edit", Sender, NameOf(&iTab), iList);
  }
  void Move(TObject* Sender, TTab& iTab, TWatchlistCategory* iTarget,
            const TIntf<IInterfaceList>& iList) {
    Tell("move", Sender,
         NameOf(&iTab) + " to " + (iTarget != nullptr ? ToUtf8(iTarget->Name()) : "none"), iList);
  }
  void AddReminder(TObject* Sender, TTab& iTab, const TIntf<IInterfaceList>& iList) {
    Tell("remind", Sender, NameOf(&iTab), iList);
  }
  void DeleteReminder(TObject* Sender, TTab& iTab, const TIntf<IInterfaceList>& iList) {
    Tell("forget", Sender, NameOf(&iTab), iList);
  }
  void Tell(const std::string& iWhat, TObject* Sender, const std::string& iTab,
            const TIntf<IInterfaceList>& iList = {}) {
    EXPECT_EQ(Sender, Tabs.get());
    std::string line = iWhat + " " + iTab;
    for (int i = 0; iList && i < iList->GetCount(); ++i) {
      line += " " + ToUtf8(GetAs<ISearchResult>(*iList, i)->GetName());
    }
    Told.push_back(line);
  }

  TIntf<TFakeSource> Fair = MakeIntf<TFakeSource>(u"Messe");
  TForm Form{nullptr, u"Form"};
  TEdit Tree{&Form, u"vstCategories"};
  TTabStrip Strip{&Form, u"tbcntrlWatchlist"};
  TPanel Container{&Form, u"pnlWatchlistContainer"};
  std::unique_ptr<TTabControlKK> Tabs = std::make_unique<TTabControlKK>(Strip, Container);
  TLines Told;
  int FailingSwitches = 0;
};

}  // namespace kk
