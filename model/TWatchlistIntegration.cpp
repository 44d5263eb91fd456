#include "model/TWatchlistIntegration.h"

namespace kk {

TWatchlistIntegration::TWatchlistIntegration(TIntf<IWatchlistIntegration> iIntegration)
    : FIntegration(std::move(iIntegration)),
      FUpdater(std::make_unique<TWatchlistItemUpdater>(FIntegration)) {}

}  // namespace kk
