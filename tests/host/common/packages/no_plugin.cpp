#include "FixturePlugin.h"

namespace {
void Register() {}
}  // namespace

KK_PACKAGE_ENTRY{kk::cInterfaceVersion, &Register};
