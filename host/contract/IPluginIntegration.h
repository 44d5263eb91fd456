#pragma once

#include "host/base/IInterfaceList.h"
#include "host/contract/IIntegrationInfo.h"

namespace kk {

inline constexpr TGuid IID_PluginIntegration =
    GuidLiteral("{719C4D8F-BC14-47BC-B883-C956F42B1BF1}");
inline constexpr TGuid IID_PluginIntegrations =
    GuidLiteral("{00154FB7-B950-48A9-9B9B-47F54178F5EF}");

/// What other plug-ins have injected into a plug-in. Main thread.
class IPluginIntegrations : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = IID_PluginIntegrations;

  /// An index out of range raises EListError.
  virtual TIntf<IInterface> GetItem(int iIndex) const = 0;
  virtual int GetCount() const = 0;
};

/// A plug-in's door for other plug-ins. It answers the query for IPluginIntegrations, too. Main
/// thread.
class IPluginIntegration : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = IID_PluginIntegration;

  /// Puts an object of another plug-in into this one.
  virtual void AddIntegration(const TIntf<IInterface>& iIntegration) = 0;
  virtual void AddIntegrations(const TIntf<IInterfaceList>& iIntegrations) = 0;
  virtual TIntf<IIntegrationInfo> GetIntegrationInfo() const = 0;
  /// What this plug-in offers to the one described.
  virtual TIntf<IInterfaceList> GetIntegrations(const TIntf<IIntegrationInfo>& iInfo) = 0;
};

}  // namespace kk
