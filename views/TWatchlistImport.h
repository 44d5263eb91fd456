#pragma once

#include "host/base/TStream.h"
#include "host/base/TString.h"

namespace kk {

class TForm;

/// The import as the section and the command line reach it; another one can take its place
/// (TfrmKKWatchlist::SetImport). Where objects of the model die, it returns in the same turn of the
/// main loop, so that the caller can show the list anew before anyone looks at it. Main thread.
class TWatchlistImport {
 public:
  virtual ~TWatchlistImport() = default;

  /// Asks the user what to import and does it; false if nothing was imported. May raise.
  virtual bool Display(TForm* iOwner);
  /// Merges the file into the list without asking; false if it did not. May raise.
  virtual bool ExecuteInBackground(TStringView iFileName);
  /// The same with a document of the mobile program.
  virtual bool ExecuteInBackgroundFromKKMobileStream(TMemoryStream& iStream);
};

}  // namespace kk
