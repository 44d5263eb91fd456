#pragma once

#include "host/contract/IPlugin.h"
#include "host/contract/IPluginIntegration.h"

namespace kk {

/// Which plug-in it is, by its id and group.
class TPluginIntegrationInfo : public TInterfaced<IIntegrationInfo> {
 public:
  TPluginIntegrationInfo(const TGuid& iId, TGroupIdentification iGroup)
      : FId(iId), FGroup(iGroup) {}

  TGuid GetId() const override { return FId; }
  TGroupIdentification GetGroup() const { return FGroup; }

 private:
  TGuid FId;
  TGroupIdentification FGroup;
};

/// The base of a plug-in's door: it holds what others injected and offers nothing of its own until
/// a descendant overrides GetIntegrations.
class TPluginIntegration : public TInterfaced<IPluginIntegration, IPluginIntegrations> {
 public:
  explicit TPluginIntegration(TIntf<IIntegrationInfo> iInfo);

  void AddIntegration(const TIntf<IInterface>& iIntegration) override;
  void AddIntegrations(const TIntf<IInterfaceList>& iIntegrations) override;
  TIntf<IIntegrationInfo> GetIntegrationInfo() const override { return FInfo; }
  TIntf<IInterfaceList> GetIntegrations(const TIntf<IIntegrationInfo>& iInfo) override;

  TIntf<IInterface> GetItem(int iIndex) const override;
  int GetCount() const override;

 private:
  TIntf<IIntegrationInfo> FInfo;
  TIntf<IInterfaceList> FIntegrations;
};

}  // namespace kk
