#pragma once

#include "host/contract/PackageEntry.h"
#include "host/contract/TCommonPlugin.h"
#include "host/contract/TPlugins.h"

namespace kk {

/// The least that a plug-in is.
class TFixturePlugin : public TCommonPlugin<IPlugin> {
 public:
  explicit TFixturePlugin(const TGuid& iId) : FId(iId) {}
  TGuid GetId() const override { return FId; }
  TGroupIdentification GetGroup() const override { return TGroupIdentification{3}; }
  TPluginAttributes GetAttributes() const override { return 3; }
  TString GetSignature() const override { return u""; }
  TString GetDescription() const override { return u"Fixture"; }
  TString GetLongDescription() const override { return u""; }

 private:
  TGuid FId;
};

inline constexpr TGuid cFixtureGood = GuidLiteral("{11111111-1111-1111-1111-111111111111}");
inline constexpr TGuid cFixtureOther = GuidLiteral("{22222222-2222-2222-2222-222222222222}");

inline void AddFixturePlugin(const TGuid& iId) { Plugins().Add(MakeIntf<TFixturePlugin>(iId)); }

}  // namespace kk
