#include "views/tabs/TTabControlKK.h"

#include "host/base/WithCleanup.h"
#include "host/controls/TForm.h"
#include "host/controls/TUpdating.h"

namespace kk {

TTabControlKK::TTabControlKK(TTabStrip& iTabControl, TPanel& iContainer)
    : FTabControl(iTabControl), FContainer(iContainer) {
  FContainer.SetArrangement(TArrangement::arStack);
  FTabControl.SetOnBeforeChange(
      TTabStripQueryEvent::Of<&TTabControlKK::DoTabControlBeforeChange>(this));
}

TTabControlKK::~TTabControlKK() {
  FTabControl.SetOnBeforeChange({});
  // Each round takes at least one apart.
  while (FTabs.GetCount() > 0) Guarded(u"TTabControlKK", [this] { CloseTabs(); });
  if (FAdding) FTabControl.EndUpdate();
}

int TTabControlKK::AddIntegration(const TIntf<IWatchlistIntegration>& iIntegration,
                                  const TIntf<IWatchlistVisualization>& iVisualization) {
  using TSelf = TTabControlKK;
  TTab& tab = FTabs.Add(std::make_unique<TTab>(iIntegration, iVisualization, *this));
  if (FAdding) FAddedTabs.Add(tab);
  TTab::TEvents& events = tab.Events();
  events.OnClick = TNotifyEvent::Of<&TSelf::DoTabClick>(this);
  events.OnSelectionChanged = TNotifyEvent::Of<&TSelf::DoTabSelectionChanged>(this);
  events.OnDelete = TTabEventWithInterfaces::Of<&TSelf::DoTabDelete>(this);
  events.OnUpdate = TTabEventWithInterfaces::Of<&TSelf::DoTabUpdate>(this);
  events.OnMove = TTabEventCategoryWithInterfaces::Of<&TSelf::DoTabMove>(this);
  events.OnEditDescription = TTabEventWithInterfaces::Of<&TSelf::DoTabEditDescription>(this);
  events.OnReminderAdd = TTabEventWithInterfaces::Of<&TSelf::DoTabReminderAdd>(this);
  events.OnReminderDelete = TTabEventWithInterfaces::Of<&TSelf::DoTabReminderDelete>(this);
  return FTabs.GetCount() - 1;
}

void TTabControlKK::BeginAdd() {
  if (FAdding) return;
  FAdding = true;
  FAddedTabs.ClearWithoutFree();
  FTabControl.BeginUpdate();
}

void TTabControlKK::EndAdd() {
  if (!FAdding) return;
  FAdding = false;
  struct TEnd {
    TTabControlKK& Tabs;
    ~TEnd() {
      Tabs.FAddedTabs.ClearWithoutFree();
      Tabs.FTabControl.EndUpdate();
    }
  } end{*this};
  TTab* selected = TabAt(FTabs.IndexOfSelected());
  if (FTabs.IsSelectedVisible()) {
    selected->Select();
    // Raised although nothing changed: the side bar is bound anew.
    DoSwitchTab(selected, selected);
  } else if (!FTabs.SelectFirstVisible() && selected != nullptr) {
    DoSwitchTab(selected, nullptr);
  }
}

void TTabControlKK::HideAll() {
  BeginAdd();
  WithCleanup(
      u"TTabControlKK.HideAll",
      [this] {
        for (int i = 0; i < FTabs.GetCount(); ++i) FTabs.GetItems(i).Hide();
      },
      [this] { EndAdd(); });
}

void TTabControlKK::ShowIntegration(const TIntf<IWatchlistIntegration>& iIntegration) {
  if (TTab* tab = FindTab(iIntegration)) tab->Show();
}

void TTabControlKK::SelectIntegration(const TIntf<IWatchlistIntegration>& iIntegration) {
  TTab* tab = FindTab(iIntegration);
  if (tab != nullptr && tab->IsVisible()) tab->Select();
}

TIntf<IWatchlistIntegration> TTabControlKK::GetCurrentIntegration() const {
  const TTab* tab = GetCurrentTab();
  return tab != nullptr ? tab->Integration() : nullptr;
}

TIntf<IWatchlistIntegration> TTabControlKK::GetIntegrations(int iIndex) const {
  return FTabs.GetItems(iIndex).Integration();
}

void TTabControlKK::RefreshSearchResult(const TIntf<ISearchResult>& iSearchResult) {
  for (int i = 0; i < FTabs.GetCount(); ++i) {
    Guarded(u"TTabControlKK.RefreshSearchResult",
            [&] { FTabs.GetItems(i).Visualization()->RefreshResult(iSearchResult); });
  }
}

void TTabControlKK::Clear() {
  CloseTabs();
  FCurrentIndex = -1;
}

bool TTabControlKK::CloseTabs() {
  const TUpdating<TTabStrip> updating(FTabControl);
  FAddedTabs.ClearWithoutFree();
  while (FTabs.GetCount() > 0) FTabs.Extract(FTabs.GetCount() - 1)->Release();
  return false;
}

void TTabControlKK::FillChevronMenu(TMenuItem& ioMenu) {
  ioMenu.Clear();
  for (TTab* tab : FTabs) {
    if (!tab->IsVisible()) continue;
    TMenuItem& entry = ioMenu.Add(tab->Visualization()->GetMenuCaption(),
                                  TNotifyEvent::Of<&TTabControlKK::DoClickChevronItem>(this));
    entry.SetRadio(true);
    entry.SetChecked(tab->IsSelected());
    entry.SetTag(tab);
  }
}

TTab* TTabControlKK::TabAt(int iIndex) const {
  return iIndex >= 0 && iIndex < FTabs.GetCount() ? &FTabs.GetItems(iIndex) : nullptr;
}

TTab* TTabControlKK::FindTab(const TIntf<IWatchlistIntegration>& iIntegration) const {
  for (TTab* tab : FTabs) {
    if (tab->Integration() == iIntegration) return tab;
  }
  return nullptr;
}

void TTabControlKK::DoSwitchTab(int iFrom, int iTo) { DoSwitchTab(TabAt(iFrom), TabAt(iTo)); }

void TTabControlKK::DoSwitchTab(TTab* iFrom, TTab* iTo) {
  if (iTo != nullptr) FTabControl.FocusFirstChild(*iTo->Container());
  if (FEvents.OnSwitchTab) FEvents.OnSwitchTab(this, iFrom, iTo);
}

void TTabControlKK::DoClickChevronItem(TObject* Sender) {
  Guarded(u"TTabControlKK.DoClickChevronItem", [&] {
    const TObject* tag = dynamic_cast<const TMenuItem&>(*Sender).Tag();
    for (TTab* tab : FTabs) {
      if (tab != tag) continue;
      if (!tab->IsSelected()) tab->Select();
      FTabControl.ScrollIntoView(*tab->HeaderItem());
      return;
    }
  });
}

void TTabControlKK::DoTabControlBeforeChange(TObject*, bool& oResult) {
  const TForm* form = FTabControl.Form();
  const TControl* focused = form != nullptr ? form->FocusedControl() : nullptr;
  oResult = false;
  for (const TControl* control = focused; control != nullptr; control = control->Parent()) {
    if (control == &FTabControl || control == &FContainer) oResult = true;
  }
}

void TTabControlKK::DoTabClick(TObject* Sender) {
  const auto& clicked = dynamic_cast<const TTab&>(*Sender);
  const int before = FCurrentIndex;
  FCurrentIndex = FTabs.IndexOf(&clicked);
  if (FCurrentIndex == before) return;
  for (TTab* tab : FTabs) {
    if (tab != &clicked) tab->Container()->SetVisible(false);
  }
  DoSwitchTab(before, FCurrentIndex);
}

void TTabControlKK::DoTabSelectionChanged(TObject* Sender) {
  auto* tab = dynamic_cast<TTab*>(Sender);
  if (tab != nullptr && FEvents.OnTabSelectionChanged) FEvents.OnTabSelectionChanged(this, *tab);
}

void TTabControlKK::DoTabUpdate(TObject*, TTab& iTab, const TIntf<IInterfaceList>& iList) {
  if (FEvents.OnTabUpdate) FEvents.OnTabUpdate(this, iTab, iList);
}

void TTabControlKK::DoTabDelete(TObject*, TTab& iTab, const TIntf<IInterfaceList>& iList) {
  if (FEvents.OnTabDelete) FEvents.OnTabDelete(this, iTab, iList);
}

void TTabControlKK::DoTabEditDescription(TObject*, TTab& iTab, const TIntf<IInterfaceList>& iList) {
  if (FEvents.OnTabEditDescription) FEvents.OnTabEditDescription(this, iTab, iList);
}

void TTabControlKK::DoTabMove(TObject*, TTab& iTab, TWatchlistCategory* iWatchlistCategory,
                              const TIntf<IInterfaceList>& iList) {
  if (FEvents.OnTabMove) FEvents.OnTabMove(this, iTab, iWatchlistCategory, iList);
}

void TTabControlKK::DoTabReminderAdd(TObject*, TTab& iTab, const TIntf<IInterfaceList>& iList) {
  if (FEvents.OnTabReminderAdd) FEvents.OnTabReminderAdd(this, iTab, iList);
}

void TTabControlKK::DoTabReminderDelete(TObject*, TTab& iTab, const TIntf<IInterfaceList>& iList) {
  if (FEvents.OnTabReminderDelete) FEvents.OnTabReminderDelete(this, iTab, iList);
}

}  // namespace kk
