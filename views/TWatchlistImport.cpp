#include "views/TWatchlistImport.h"

#include "host/base/Log.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

bool TWatchlistImport::ExecuteInBackground(TStringView iFileName) {
  LogInfo(_resLoggingSenderForm, _resLoggingNoImport, {iFileName});
  return false;
}

bool TWatchlistImport::ExecuteInBackgroundFromKKMobileStream(TMemoryStream&) {
  LogInfo(_resLoggingSenderForm, _resLoggingNoMobileImport);
  return false;
}

}  // namespace kk
