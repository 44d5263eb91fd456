#include "model/TWatchlistPlugin.h"

namespace kk {

TWatchlistPlugin::TWatchlistPlugin(TIntf<IWatchlistIntegration> iIntegration)
    : FIntegration(std::move(iIntegration)), FLstItem(true, this) {}

}  // namespace kk
