#include "persistence/exchange/TWatchlistFileLoaderImport.h"

namespace kk {

bool TWatchlistFileLoaderImport::GetHasIntegration(const TGuid& iId) const {
  return FHasIntegrations.IndexOf(GUIDToString(iId)) >= 0;
}

}  // namespace kk
