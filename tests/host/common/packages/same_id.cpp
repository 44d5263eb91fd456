#include "FixturePlugin.h"

namespace {
// One new id, and one that the good package has.
void Register() {
  kk::AddFixturePlugin(kk::cFixtureOther);
  kk::AddFixturePlugin(kk::cFixtureGood);
}
}  // namespace

KK_PACKAGE_ENTRY{kk::cInterfaceVersion, &Register};
