#include "host/controls/TCommonExplorerBar.h"

#include <algorithm>

#include "host/base/Exception.h"
#include "host/controls/TUpdating.h"

namespace kk {

TIntf<IExplorerBarPanel> TCommonExplorerBar::GetPanels(int iIndex) const {
  return FPanels[CheckedIndex(iIndex, FPanels.size())];
}

TIntf<IExplorerBarPanel> TCommonExplorerBar::FindPanelById(const TGuid& iId) const {
  for (const TIntf<IExplorerBarPanel>& panel : FPanels) {
    if (SameGuid(panel->GetId(), iId)) return panel;
  }
  return {};
}

void TCommonExplorerBar::Add(const TIntf<IExplorerBarPanel>& iPanel) {
  if (std::find(FPanels.begin(), FPanels.end(), iPanel) != FPanels.end()) return;
  const auto next = std::find_if(FPanels.begin(), FPanels.end(), [&](const auto& iOther) {
    return iOther->GetSortOrder() > iPanel->GetSortOrder();
  });
  // Groups of the widget's own, which are no panels, stay behind the panel that they follow.
  iPanel->GetGroup().SetBar(&FControl, next == FPanels.end() ? nullptr : &(*next)->GetGroup());
  FPanels.insert(next, iPanel);
}

void TCommonExplorerBar::Delete(const TIntf<IExplorerBarPanel>& iPanel) {
  const auto place = std::find(FPanels.begin(), FPanels.end(), iPanel);
  if (place == FPanels.end()) return;
  (*place)->GetGroup().SetBar(nullptr);
  FPanels.erase(place);
}

void TCommonExplorerBar::Clear() {
  const TUpdating updating(FControl);
  for (const TIntf<IExplorerBarPanel>& panel : std::exchange(FPanels, {})) {
    panel->GetGroup().SetBar(nullptr);
  }
}

}  // namespace kk
