#include "host/controls/TCommonExplorerBarItem.h"

#include <algorithm>

#include "host/base/TMainLoop.h"

namespace kk {

void TCommonExplorerBarItem::AddObserver(IExplorerBarItemObserver& iObserver) {
  FObservers.push_back(&iObserver);
}

void TCommonExplorerBarItem::RemoveObserver(IExplorerBarItemObserver& iObserver) {
  const auto place = std::find(FObservers.begin(), FObservers.end(), &iObserver);
  if (place != FObservers.end()) FObservers.erase(place);
}

void TCommonExplorerBarItem::Changed() {
  AssertMainThread();
  for (IExplorerBarItemObserver* observer : FObservers) observer->ItemChanged(*this);
}

void TCommonExplorerBarLink::Click() {
  if (FOnClick) FOnClick(nullptr);
}

}  // namespace kk
