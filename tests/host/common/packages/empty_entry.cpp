#include "FixturePlugin.h"

KK_PACKAGE_ENTRY{kk::cInterfaceVersion, nullptr};
