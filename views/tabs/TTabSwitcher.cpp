#include "views/tabs/TTabSwitcher.h"

#include "host/base/Guard.h"
#include "host/controls/TUpdating.h"

namespace kk {

namespace {

// For what extends the side bar: the tab's view, and then each of its sub-visualizations, which it
// is asked for when its own turn is over.
template <class Action>
void ForEachExtender(const TTab* iTab, Action&& iAction) {
  const TIntf<IWatchlistVisualization> view = iTab != nullptr ? iTab->Visualization() : nullptr;
  if (!view) return;
  const auto act = [&](const TIntf<IInterface>& iObject) {
    if (const auto extender = Supports<IExplorerBarExtender>(iObject)) iAction(*extender);
  };
  act(view);
  const TIntf<IInterfaceList> parts = view->GetSubVisualizations();
  for (int i = 0; parts && i < parts->GetCount(); ++i) act(parts->Get(i));
}

}  // namespace

void TTabSwitcher::DoTabControlSwitchTab(TObject*, TTab* iFrom, TTab* iTo) {
  if (IExplorerBar* bar = FFollower.ExplorerBar()) Bind(*bar, iFrom, iTo);
  if (iTo == nullptr) return;
  Guarded(u"TTabSwitcher", [&] { FFollower.SelectNodeByIntegration(iTo->Integration()); });
}

void TTabSwitcher::Bind(IExplorerBar& ioBar, const TTab* iFrom, const TTab* iTo) {
  const TUpdating<IExplorerBar> updating(ioBar);
  ForEachExtender(iFrom, [&](IExplorerBarExtender& ioExtender) {
    for (int i = 0; i < ioBar.GetCount(); ++i) ioExtender.DeleteItems(ioBar.GetPanels(i));
    ioExtender.DeletePanels(&ioBar);
  });
  ForEachExtender(iTo, [&](IExplorerBarExtender& ioExtender) {
    ioExtender.AddPanels(&ioBar);
    for (int i = 0; i < ioBar.GetCount(); ++i) ioExtender.AddItems(ioBar.GetPanels(i));
  });
  FFollower.SetCurrentSearchResult(FocusedResultOf(iTo));
  FFollower.RestoreExplorerbarDefaultItems();
}

void TTabSwitcher::DoTabSelectionChanged(TObject*, TTab& iTab) {
  const bool shown = Guarded(u"TTabSwitcher.DoTabSelectionChanged",
                             [&] { FFollower.SetCurrentSearchResult(FocusedResultOf(&iTab)); });
  if (!shown) FFollower.SetCurrentSearchResult({});
}

}  // namespace kk
