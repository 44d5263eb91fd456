#include "FixturePlugin.h"

namespace {
void Register() { kk::AddFixturePlugin(kk::cFixtureOther); }
}  // namespace

KK_PACKAGE_ENTRY{kk::cInterfaceVersion + 1, &Register};
