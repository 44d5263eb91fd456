#pragma once

#include "host/contract/TPluginIntegration.h"
#include "plugin/TWatchlist.h"

namespace kk {

/// The plug-in's door: what the host has injected for it, and the IWatchlist that it offers to
/// others. Main thread.
class TPluginIntegrationWatchlist : public TPluginIntegration {
 public:
  TPluginIntegrationWatchlist(TIntf<IIntegrationInfo> iInfo, TNotifyGetForm iOnGetForm)
      : TPluginIntegration(std::move(iInfo)), FOnGetForm(iOnGetForm) {}

  /// A new list with a new IWatchlist: each caller gets its own.
  TIntf<IInterfaceList> GetIntegrations(const TIntf<IIntegrationInfo>& iInfo) override;

 private:
  TNotifyGetForm FOnGetForm;
};

}  // namespace kk
