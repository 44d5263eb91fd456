#include "FixturePlugin.h"
#include "host/base/Exception.h"

namespace {
// An exception type of the package's own: it must not outlive the package.
class EFixture : public kk::Exception {
 public:
  using Exception::Exception;
};

void Register() {
  kk::AddFixturePlugin(kk::cFixtureOther);
  throw EFixture(u"Kein\r\nSpeicher");
}
}  // namespace

KK_PACKAGE_ENTRY{kk::cInterfaceVersion, &Register};
