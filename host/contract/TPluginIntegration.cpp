#include "host/contract/TPluginIntegration.h"

namespace kk {

TPluginIntegration::TPluginIntegration(TIntf<IIntegrationInfo> iInfo)
    : FInfo(std::move(iInfo)), FIntegrations(NewInterfaceList()) {}

void TPluginIntegration::AddIntegration(const TIntf<IInterface>& iIntegration) {
  FIntegrations->Add(iIntegration);
}

void TPluginIntegration::AddIntegrations(const TIntf<IInterfaceList>& iIntegrations) {
  if (!iIntegrations) return;
  for (int i = 0; i < iIntegrations->GetCount(); ++i) AddIntegration(iIntegrations->Get(i));
}

TIntf<IInterfaceList> TPluginIntegration::GetIntegrations(const TIntf<IIntegrationInfo>&) {
  return NewInterfaceList();
}

TIntf<IInterface> TPluginIntegration::GetItem(int iIndex) const {
  return FIntegrations->Get(iIndex);
}

int TPluginIntegration::GetCount() const { return FIntegrations->GetCount(); }

}  // namespace kk
