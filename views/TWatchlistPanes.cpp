#include "views/TWatchlistPanes.h"

#include "host/base/Guard.h"
#include "views/explorerbar/ExplorerbarDefaultItems.h"

namespace kk {

namespace {

constexpr int cMinPaneWidth = 100;

}  // namespace

TWatchlistPanes::TWatchlistPanes(TControl* iParent)
    : pnlPanes(iParent, u"pnlPanes"), FExplorerBar(MakeIntf<TExplorerBarWatchlist>(explrbr)) {
  pnlPanes.SetArrangement(TArrangement::arRow);
  pnlPanes.SetStretches(true);
  pnlExplorerBandBar.SetMinSize(cMinPaneWidth, 0);
  pnlExplorerBandBar.SetHasSplitter(true);
  explrbr.SetStretches(true);
  Centre.tbcntrlWatchlist.SetChevronMenu(&pmnTabsChevron);
  Centre.tbcntrlWatchlist.SetOnChevronPopup(
      TNotifyEvent::Of<&TWatchlistPanes::pmnTabsChevronPopup>(this));
}

TWatchlistPanes::~TWatchlistPanes() {
  FreeExplorerBar();
  FreeTabControl();
}

TTabControlKK& TWatchlistPanes::MakeTabControl() {
  FTabControl =
      std::make_unique<TTabControlKK>(Centre.tbcntrlWatchlist, Centre.pnlWatchlistContainer);
  TTabControlKK::TEvents& events = FTabControl->Events();
  events.OnSwitchTab = TSwitchTabEvent::Of<&TTabSwitcher::DoTabControlSwitchTab>(&FSwitcher);
  events.OnTabSelectionChanged = TTabEvent::Of<&TTabSwitcher::DoTabSelectionChanged>(&FSwitcher);
  return *FTabControl;
}

void TWatchlistPanes::FreeExplorerBar() {
  if (FExplorerBar) FExplorerBar->Clear();
  FExplorerBar = nullptr;
}

TTab* TWatchlistPanes::FindTab(const TIntf<IWatchlistIntegration>& iIntegration) const {
  return FTabControl ? FTabControl->FindTab(iIntegration) : nullptr;
}

void TWatchlistPanes::RefreshCurrentSearchResult() {
  if (FExplorerBar) FExplorerBar->RefreshCurrentSearchResult();
}

void TWatchlistPanes::ShowMoved() {
  Tree.SortTree();
  Guarded(u"ShowMoved", [this] { Tree.ShowInExplorerBar(GetCurrentCategory()); });
}

void TWatchlistPanes::SetSelectedCategory(TWatchlistCategory* iCategory, bool iCanUpdate) {
  if (FExplorerBar) FExplorerBar->SetSelectedCategory(iCategory, iCanUpdate);
}

TWatchlistCategory* TWatchlistPanes::GetCurrentCategory() const {
  return FExplorerBar ? FExplorerBar->GetCurrentCategory() : nullptr;
}

void TWatchlistPanes::RestoreExplorerbarDefaultItems() {
  if (FExplorerBar) kk::RestoreExplorerbarDefaultItems(*FExplorerBar);
}

void TWatchlistPanes::CategoryOnShow(const TWatchlistCategory* iCategory) {
  Centre.ShowCategory(iCategory);
}

void TWatchlistPanes::HideAll() {
  if (FTabControl) FTabControl->HideAll();
}

void TWatchlistPanes::BeginAdd() {
  if (FTabControl) FTabControl->BeginAdd();
}

void TWatchlistPanes::ShowIntegration(const TIntf<IWatchlistIntegration>& iIntegration) {
  if (FTabControl) FTabControl->ShowIntegration(iIntegration);
}

void TWatchlistPanes::EndAdd() {
  if (FTabControl) FTabControl->EndAdd();
}

void TWatchlistPanes::SelectIntegration(const TIntf<IWatchlistIntegration>& iIntegration) {
  if (FTabControl) FTabControl->SelectIntegration(iIntegration);
}

void TWatchlistPanes::SetCurrentSearchResult(const TIntf<ISearchResult>& iSearchResult) {
  if (FExplorerBar) FExplorerBar->SetCurrentSearchResult(iSearchResult);
}

void TWatchlistPanes::SelectNodeByIntegration(const TIntf<IWatchlistIntegration>& iIntegration) {
  Tree.SelectNodeByIntegration(iIntegration);
}

void TWatchlistPanes::pmnTabsChevronPopup(TObject*) {
  if (FTabControl) FTabControl->FillChevronMenu(pmnTabsChevron);
}

}  // namespace kk
