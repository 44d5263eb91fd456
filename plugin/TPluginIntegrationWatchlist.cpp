#include "plugin/TPluginIntegrationWatchlist.h"

namespace kk {

TIntf<IInterfaceList> TPluginIntegrationWatchlist::GetIntegrations(const TIntf<IIntegrationInfo>&) {
  const TIntf<IInterfaceList> integrations = NewInterfaceList();
  integrations->Add(MakeIntf<TWatchlist>(FOnGetForm));
  return integrations;
}

}  // namespace kk
