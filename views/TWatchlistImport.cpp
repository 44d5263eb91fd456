#include "views/TWatchlistImport.h"

#include "persistence/exchange/TfrmKKWatchlistImport.h"

namespace kk {

bool TWatchlistImport::Display(TForm* iOwner) { return TfrmKKWatchlistImport::Display(iOwner); }

bool TWatchlistImport::ExecuteInBackground(TStringView iFileName) {
  return TfrmKKWatchlistImport::ExecuteInBackground(iFileName);
}

bool TWatchlistImport::ExecuteInBackgroundFromKKMobileStream(TMemoryStream& iStream) {
  return TfrmKKWatchlistImport::ExecuteInBackgroundFromKKMobileStream(iStream);
}

}  // namespace kk
