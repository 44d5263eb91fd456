#include "views/tabs/TTabSwitcher.h"

#include "host/base/Guard.h"
#include "host/controls/TUpdating.h"

namespace kk {

namespace {

/// What extends the side bar for the tab: its view, and each of the view's sub-visualizations.
std::vector<TIntf<IExplorerBarExtender>> ExtendersOf(const TTab* iTab) {
  std::vector<TIntf<IExplorerBarExtender>> extenders;
  if (iTab == nullptr || !iTab->Visualization()) return extenders;
  const auto add = [&](const TIntf<IInterface>& iObject) {
    if (auto extender = Supports<IExplorerBarExtender>(iObject)) {
      extenders.push_back(std::move(extender));
    }
  };
  add(iTab->Visualization());
  const TIntf<IInterfaceList> parts = iTab->Visualization()->GetSubVisualizations();
  for (int i = 0; parts && i < parts->GetCount(); ++i) add(parts->Get(i));
  return extenders;
}

TIntf<ISearchResult> FocusedResult(const TTab* iTab) {
  if (iTab == nullptr) return {};
  const TIntf<ISearchResults> results = iTab->GetSearchResults();
  return results ? results->GetFocused() : nullptr;
}

}  // namespace

void TTabSwitcher::DoTabControlSwitchTab(TObject*, TTab* iFrom, TTab* iTo) {
  if (IExplorerBar* bar = FFollower.ExplorerBar()) Bind(*bar, iFrom, iTo);
  if (iTo == nullptr) return;
  Guarded(u"TTabSwitcher", [&] { FFollower.SelectNodeByIntegration(iTo->Integration()); });
}

void TTabSwitcher::Bind(IExplorerBar& ioBar, const TTab* iFrom, const TTab* iTo) {
  const TUpdating<IExplorerBar> updating(ioBar);
  for (const auto& extender : ExtendersOf(iFrom)) {
    for (int i = 0; i < ioBar.GetCount(); ++i) extender->DeleteItems(ioBar.GetPanels(i));
    extender->DeletePanels(&ioBar);
  }
  for (const auto& extender : ExtendersOf(iTo)) {
    extender->AddPanels(&ioBar);
    for (int i = 0; i < ioBar.GetCount(); ++i) extender->AddItems(ioBar.GetPanels(i));
  }
  FFollower.SetCurrentSearchResult(FocusedResult(iTo));
  FFollower.RestoreExplorerbarDefaultItems();
}

void TTabSwitcher::DoTabSelectionChanged(TObject*, TTab& iTab) {
  const bool shown = Guarded(u"TTabSwitcher.DoTabSelectionChanged",
                             [&] { FFollower.SetCurrentSearchResult(FocusedResult(&iTab)); });
  if (!shown) FFollower.SetCurrentSearchResult({});
}

}  // namespace kk
