#pragma once

#include "host/contract/IMultiThreadPlugin.h"
#include "host/contract/IPluginIntegration.h"
#include "host/contract/TCommonPlugin.h"
#include "sources/page/TPageIntegration.h"
#include "sources/page/TPageSearch.h"

namespace kk {

/// The source "Produktseiten": any web page of a shop or an auction house, by its address. Beside
/// its own interfaces it answers the queries for its door (IPluginIntegration), through which the
/// watch list is offered the source, for the source itself, for its converter and for its search.
/// Main thread.
class TPagePlugin : public TCommonPlugin<IMultiThreadPlugin> {
 public:
  explicit TPagePlugin(const THttpLimits& iLimits = {});

  TGuid GetId() const override;
  TGroupIdentification GetGroup() const override;
  TPluginAttributes GetAttributes() const override { return 0; }
  TString GetSignature() const override;
  TString GetDescription() const override;
  TString GetLongDescription() const override;
  /// Ends the requests under way, calls them back, and waits for their thread.
  void Uninitialize() override;

  /// The requests under way, and the pages of a search that wait for their turn.
  int ThreadCount() const override;
  /// Aborts the requests at once; each is called back as failed in the next turn of the loop.
  void TerminateThreads() override;

  const TIntf<TPageIntegration>& Integration() const { return FIntegration; }
  TPageSearch& Search() const { return *FSearch; }

 protected:
  bool QueryDelegated(const TGuid& iIid, void** oInterface) override;

 private:
  TIntf<TPageIntegration> FIntegration;
  TIntf<TPageSearch> FSearch;
  TIntf<IPluginIntegration> FDoor;
};

/// Adds the plug-in to Plugins(), once in the process.
void RegisterPagePlugin();

}  // namespace kk
