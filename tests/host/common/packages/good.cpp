#include "FixturePlugin.h"

namespace {
void Register() { kk::AddFixturePlugin(kk::cFixtureGood); }
}  // namespace

KK_PACKAGE_ENTRY{kk::cInterfaceVersion, &Register};
