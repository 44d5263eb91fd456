#include "FixturePlugin.h"

namespace {
void Register() { throw 42; }
}  // namespace

KK_PACKAGE_ENTRY{kk::cInterfaceVersion, &Register};
