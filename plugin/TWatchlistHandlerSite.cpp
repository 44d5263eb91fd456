#include "plugin/TWatchlistHandlerSite.h"

#include "persistence/TWatchlistHandler.h"
#include "plugin/TfrmWaitForThreads.h"

namespace kk {

void TWatchlistHandlerSite::WaitForThreads(const TLstWatchlistIntegration& iIntegrations) {
  TfrmWaitForThreads::Display(iIntegrations);
}

}  // namespace kk
