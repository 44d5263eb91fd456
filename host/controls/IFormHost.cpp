#include "host/controls/IFormHost.h"

#include <utility>

#include "host/base/Exception.h"

namespace kk {

namespace {

IFormHost* installedHost = nullptr;

}  // namespace

IFormHost& FormHost() {
  if (installedHost == nullptr) throw Exception(u"Es gibt nichts, das Fenster zeigen kann");
  return *installedHost;
}

IFormHost* SetFormHost(IFormHost* iHost) { return std::exchange(installedHost, iHost); }

}  // namespace kk
