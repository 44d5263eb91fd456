#include "host/contract/PackageEntry.h"
#include "plugin/UnitKKPluginWatchlist.h"

KK_PACKAGE_ENTRY{kk::cInterfaceVersion, &kk::RegisterWatchlist};
