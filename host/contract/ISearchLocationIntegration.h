#pragma once

#include "host/base/IInterfaceList.h"
#include "host/contract/IIntegrationInfo.h"

namespace kk {

inline constexpr TGuid IID_SearchLocationIntegration =
    GuidLiteral("{43530E5C-6328-4D51-BF01-040274631C63}");

/// Offered by plug-ins that extend result views of others: menus, columns, notifications. Main
/// thread.
class ISearchLocationIntegration : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = IID_SearchLocationIntegration;

  /// The extension objects for the view described; never empty, but possibly without entries.
  virtual TIntf<IInterfaceList> GetIntegrations(const TIntf<IIntegrationInfo>& iInfo) = 0;
};

}  // namespace kk
