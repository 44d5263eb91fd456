#include "model/IWatchlistModelRoot.h"

#include <utility>

#include "host/base/Exception.h"

namespace kk {

namespace {

IWatchlistModelRoot* installedRoot = nullptr;

}  // namespace

IWatchlistModelRoot& WatchlistModelRoot() {
  if (installedRoot == nullptr) throw Exception(u"Die Beobachtenliste ist nicht geladen");
  return *installedRoot;
}

bool HasWatchlistModelRoot() { return installedRoot != nullptr; }

IWatchlistModelRoot* SetWatchlistModelRoot(IWatchlistModelRoot* iRoot) {
  return std::exchange(installedRoot, iRoot);
}

}  // namespace kk
