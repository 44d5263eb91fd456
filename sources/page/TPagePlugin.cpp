#include "sources/page/TPagePlugin.h"

#include "host/contract/TPluginIntegration.h"
#include "host/contract/TPlugins.h"
#include "sources/page/PageConsts.h"
#include "sources/page/PageResourceStrings.h"

namespace kk {

namespace {

// The door for other plug-ins; it offers the source to the watch list and nothing to anyone else.
class TPageDoor : public TPluginIntegration {
 public:
  explicit TPageDoor(TIntf<TPageIntegration> iIntegration)
      : TPluginIntegration(MakeIntf<TPluginIntegrationInfo>(cPagePluginId, cPagePluginGroup)),
        FIntegration(std::move(iIntegration)) {}

  TIntf<IInterfaceList> GetIntegrations(const TIntf<IIntegrationInfo>& iInfo) override {
    const TIntf<IInterfaceList> offered = NewInterfaceList();
    if (iInfo && iInfo->GetId() == cWatchlistPluginId) offered->Add(FIntegration);
    return offered;
  }

 private:
  TIntf<TPageIntegration> FIntegration;
};

}  // namespace

TPagePlugin::TPagePlugin(const THttpLimits& iLimits)
    : FIntegration(MakeIntf<TPageIntegration>(iLimits)),
      FSearch(MakeIntf<TPageSearch>(TIntf<TPageUpdate>(&FIntegration->Update()))),
      FDoor(MakeIntf<TPageDoor>(FIntegration)) {}

TGuid TPagePlugin::GetId() const { return cPagePluginId; }

TGroupIdentification TPagePlugin::GetGroup() const { return cPagePluginGroup; }

TString TPagePlugin::GetSignature() const { return _resPageSignature; }

TString TPagePlugin::GetDescription() const { return _resPageDescription; }

TString TPagePlugin::GetLongDescription() const { return _resPageLongDescription; }

void TPagePlugin::Uninitialize() {
  FSearch->ReleaseSearch();
  FIntegration->Update().Close();
  FIntegration->Visualization().Close();
  FDoor = nullptr;  // and with it all that others put in
  TCommonPlugin::Uninitialize();
}

int TPagePlugin::ThreadCount() const {
  return FIntegration->Update().Count() + FSearch->WaitingCount();
}

void TPagePlugin::TerminateThreads() { FIntegration->Update().Terminate(); }

bool TPagePlugin::QueryDelegated(const TGuid& iIid, void** oInterface) {
  if (FDoor && FDoor->QueryInterface(iIid, oInterface)) return true;
  return FSearch->QueryInterface(iIid, oInterface) ||
         FIntegration->QueryInterface(iIid, oInterface);
}

void RegisterPagePlugin() {
  for (int i = 0; i < Plugins().GetCount(); ++i) {
    if (Plugins().GetItems(i)->GetId() == cPagePluginId) return;
  }
  Plugins().Add(MakeIntf<TPagePlugin>());
}

}  // namespace kk
