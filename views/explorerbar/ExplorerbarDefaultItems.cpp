#include "views/explorerbar/ExplorerbarDefaultItems.h"

#include "host/contract/IExplorerBarExtender.h"
#include "host/contract/IPluginIntegration.h"
#include "host/contract/ISearchResults.h"
#include "host/controls/TUpdating.h"
#include "persistence/TWatchlistHandler.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"

namespace kk {

void ExtendExplorerbarWithDefaultItems(TExplorerBarWatchlist& ioBar) {
  const auto integration = Supports<IPluginIntegration>(Handler()->Plugin());
  const auto injected = Supports<IPluginIntegrations>(integration);
  const TIntf<IExplorerBarPanel> panel = ioBar.GetPanelMoreConst();
  if (!injected || !panel) return;
  const TUpdating updating(ioBar);
  for (int i = 0; i < injected->GetCount(); ++i) {
    const TIntf<IInterface> entry = injected->GetItem(i);
    const auto extender = Supports<IExplorerBarExtender>(entry);
    if (extender && Supports<ISearchResults>(entry)) extender->AddItems(panel);
  }
}

void RestoreExplorerbarDefaultItems(TExplorerBarWatchlist& ioBar) {
  const TUpdating updating(ioBar);
  const TIntf<IExplorerBarPanel> more = ioBar.FindPanelById(cExplorerbarPanelMoreId);
  const TIntf<IExplorerBarPanel> panel = ioBar.GetPanelMoreConst();
  if (more && panel) more->Append(panel, false);
}

}  // namespace kk
