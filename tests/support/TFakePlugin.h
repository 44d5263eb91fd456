#pragma once

#include "host/contract/TCommonPlugin.h"
#include "host/contract/TPluginIntegration.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"

namespace kk {

/// A plug-in of any id that does nothing; what it does for a test stands in the class that derives
/// from it, which lists the interfaces: IPlugin or one that extends it first.
template <class... Interfaces>
class TFakePluginOf : public TCommonPlugin<Interfaces...> {
 public:
  explicit TFakePluginOf(const TGuid& iId) : FId(iId) {}
  TGuid GetId() const override { return FId; }
  TGroupIdentification GetGroup() const override { return TGroupIdentification{1}; }
  TPluginAttributes GetAttributes() const override { return 0; }
  TString GetSignature() const override { return {}; }
  TString GetDescription() const override { return {}; }
  TString GetLongDescription() const override { return {}; }

 private:
  const TGuid FId;
};

/// The watch list's plug-in, as far as its handler needs it, or one of another id.
class TFakePlugin : public TFakePluginOf<IPlugin> {
 public:
  explicit TFakePlugin(const TGuid& iId = cPluginId) : TFakePluginOf(iId) {}

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
