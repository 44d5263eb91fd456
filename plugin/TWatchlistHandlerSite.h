#pragma once

#include "persistence/IWatchlistHandlerSite.h"

namespace kk {

/// Gives the handler what stands behind its room: the window that waits for running refreshes, and
/// the columns of the section's lists. Installed while it lives. Main thread.
class TWatchlistHandlerSite : public IWatchlistHandlerSite {
 public:
  TWatchlistHandlerSite() : FBefore(SetWatchlistHandlerSite(this)) {}
  ~TWatchlistHandlerSite() override { SetWatchlistHandlerSite(FBefore); }
  TWatchlistHandlerSite(const TWatchlistHandlerSite&) = delete;
  TWatchlistHandlerSite& operator=(const TWatchlistHandlerSite&) = delete;

  void WaitForThreads(const TLstWatchlistIntegration& iIntegrations) override;
  TIntf<IAdditionalColumns> CreateAdditionalColumns() override;

 private:
  IWatchlistHandlerSite* FBefore;
};

}  // namespace kk
