#pragma once

#include "host/contract/IAdditionalColumns.h"
#include "model/TLstWatchlistIntegration.h"

namespace kk {

/// What the handler needs of rooms that stand behind it in the house; the plug-in's root installs
/// it. Main thread.
class IWatchlistHandlerSite {
 public:
  virtual ~IWatchlistHandlerSite() = default;

  /// Ends the updaters and returns when all stand still, with a window if one of them is active.
  virtual void WaitForThreads(const TLstWatchlistIntegration& iIntegrations) = 0;
  /// New columns for the sources' views; empty where nothing shows them.
  virtual TIntf<IAdditionalColumns> CreateAdditionalColumns() = 0;
};

/// The installed site; null if there is none: then nothing is added to the views, and the handler
/// waits without a window.
IWatchlistHandlerSite* WatchlistHandlerSite();
/// Borrowed; answers the one before.
IWatchlistHandlerSite* SetWatchlistHandlerSite(IWatchlistHandlerSite* iSite);

}  // namespace kk
