#include "persistence/IWatchlistHandlerSite.h"

#include <utility>

namespace kk {

namespace {

IWatchlistHandlerSite* installedSite = nullptr;

}  // namespace

IWatchlistHandlerSite* WatchlistHandlerSite() { return installedSite; }

IWatchlistHandlerSite* SetWatchlistHandlerSite(IWatchlistHandlerSite* iSite) {
  return std::exchange(installedSite, iSite);
}

}  // namespace kk
