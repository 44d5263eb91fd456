#include "persistence/TWatchlistFileConverter.h"

#include "host/base/Log.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

void TWatchlistFileConverter::ConvertFileToCurrentVersion(int iCurrentVersion,
                                                          int iLoadedFileVersion) {
  for (int version = iLoadedFileVersion; version < iCurrentVersion; ++version) {
    if (version == 0) {
      ConvertFileFromVersion0To1();
    } else {
      LogInfo(_resLoggingSenderWatchlistHandler, _resLoggingUnknownFileConversion);
    }
  }
}

}  // namespace kk
