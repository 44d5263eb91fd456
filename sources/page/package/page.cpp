#include "host/contract/PackageEntry.h"
#include "sources/page/TPagePlugin.h"

KK_PACKAGE_ENTRY{kk::cInterfaceVersion, &kk::RegisterPagePlugin};
