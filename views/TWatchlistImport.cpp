#include "views/TWatchlistImport.h"

#include "host/base/Log.h"
#include "host/controls/TfrmMessageDlg.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

bool TWatchlistImport::Display(TForm*) {
  ShowMessage(_resNoImportYet);
  return false;
}

bool TWatchlistImport::ExecuteInBackground(TStringView iFileName) {
  LogInfo(_resLoggingSenderForm, _resLoggingNoImport, {iFileName});
  return false;
}

bool TWatchlistImport::ExecuteInBackgroundFromKKMobileStream(TMemoryStream&) {
  LogInfo(_resLoggingSenderForm, _resLoggingNoMobileImport);
  return false;
}

}  // namespace kk
