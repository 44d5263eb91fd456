#pragma once

#include "host/contract/TCommonPlugin.h"
#include "host/contract/TPluginIntegration.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"

namespace kk {

/// The watch list's plug-in, as far as its handler needs it.
class TFakePlugin : public TCommonPlugin<IPlugin> {
 public:
  TGuid GetId() const override { return cPluginId; }
  TGroupIdentification GetGroup() const override { return {}; }
  TPluginAttributes GetAttributes() const override { return 0; }
  TString GetSignature() const override { return {}; }
  TString GetDescription() const override { return {}; }
  TString GetLongDescription() const override { return {}; }

  /// A door for others, if the test wants one.
  TIntf<IPluginIntegration> Door;
  /// What lives as long as the plug-in.
  TIntf<IInterface> Kept;

 protected:
  bool QueryDelegated(const TGuid& iIid, void** oInterface) override {
    return Door && Door->QueryInterface(iIid, oInterface);
  }
};

}  // namespace kk
