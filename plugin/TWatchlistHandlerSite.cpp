#include "plugin/TWatchlistHandlerSite.h"

#include "persistence/TWatchlistHandler.h"
#include "plugin/TfrmWaitForThreads.h"
#include "views/columns/TWatchlistAdditionalColumns.h"

namespace kk {

void TWatchlistHandlerSite::WaitForThreads(const TLstWatchlistIntegration& iIntegrations) {
  TfrmWaitForThreads::Display(iIntegrations);
}

TIntf<IAdditionalColumns> TWatchlistHandlerSite::CreateAdditionalColumns() {
  return MakeIntf<TWatchlistAdditionalColumns>();
}

}  // namespace kk
