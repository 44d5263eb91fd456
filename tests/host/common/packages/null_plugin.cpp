#include "FixturePlugin.h"

namespace {
void Register() { kk::Plugins().Add(nullptr); }
}  // namespace

KK_PACKAGE_ENTRY{kk::cInterfaceVersion, &Register};
