#pragma once

#include "host/base/TStream.h"
#include "host/base/TString.h"

namespace kk {

/// The import as the section and the command line reach it. As it stands there is none: it imports
/// nothing, and the log says so. The import installs itself with TfrmKKWatchlist::SetImport. Main
/// thread.
class TWatchlistImport {
 public:
  virtual ~TWatchlistImport() = default;

  /// Merges the file into the list without asking; false if it did not. May raise.
  virtual bool ExecuteInBackground(TStringView iFileName);
  /// The same with a document of the mobile program.
  virtual bool ExecuteInBackgroundFromKKMobileStream(TMemoryStream& iStream);
};

}  // namespace kk
