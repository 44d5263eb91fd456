#pragma once

#include "host/base/TObject.h"
#include "host/base/TString.h"

namespace kk {

/// Where the steps from one version of the file to the next would stand. No load makes one: older
/// files are read as they are. Main thread.
class TWatchlistFileConverter : public TObject {
 public:
  explicit TWatchlistFileConverter(TStringView iFileName) : FFileName(iFileName) {}

  /// One step for each version from the loaded one up to, and without, the current one. A step that
  /// isn't known is logged.
  void ConvertFileToCurrentVersion(int iCurrentVersion, int iLoadedFileVersion);

 private:
  void ConvertFileFromVersion0To1() {}

  TString FFileName;
};

}  // namespace kk
