#include "views/tabs/BuildTabs.h"

#include "persistence/TWatchlistHandler.h"

namespace kk {

void BuildTabs(TTabControlKK& ioTabControl) {
  const TLstWatchlistIntegration& integrations = Handler()->LstIntegration();
  for (int i = 0; i < integrations.GetCount(); ++i) {
    const TIntf<IWatchlistIntegration> integration = integrations.GetIntegrations(i);
    if (const auto visualization = Supports<IWatchlistVisualization>(integration)) {
      ioTabControl.AddIntegration(integration, visualization);
    }
  }
}

}  // namespace kk
