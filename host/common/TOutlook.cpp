#include "host/common/TOutlook.h"

#include <utility>

#include "host/base/Exception.h"

namespace kk {

namespace {

IOutlookFactory* installedFactory = nullptr;

}  // namespace

IOutlookFactory* SetOutlookFactory(IOutlookFactory* iFactory) {
  return std::exchange(installedFactory, iFactory);
}

std::unique_ptr<TOutlook> CreateOutlook() {
  if (installedFactory == nullptr) throw Exception(u"Es ist kein Kalender eingerichtet");
  return installedFactory->Create();
}

}  // namespace kk
