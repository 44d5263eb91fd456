#include "host/controls/IPrinting.h"

#include <utility>

#include "host/base/Exception.h"

namespace kk {

namespace {

IPrinting* installedPrinting = nullptr;

}  // namespace

IPrinting* SetPrinting(IPrinting* iPrinting) { return std::exchange(installedPrinting, iPrinting); }

IPrinting& Printing() {
  if (installedPrinting == nullptr) throw Exception(u"Hier lässt sich nicht drucken");
  return *installedPrinting;
}

}  // namespace kk
