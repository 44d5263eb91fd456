#include "host/controls/TCommonExplorerBarPanel.h"

#include "host/base/Exception.h"
#include "host/controls/TUpdating.h"

namespace kk {

void TCommonExplorerBarPanel::Append(const TIntf<IExplorerBarPanel>& iPanel,
                                     bool iClearBeforeAppending) {
  const TUpdating updating(FGroup);
  // Gathered first: the other panel may be this one.
  std::vector<TIntf<IExplorerBarItem>> items;
  for (int i = 0; i < iPanel->GetCount(); ++i) items.push_back(iPanel->GetItems(i));
  if (iClearBeforeAppending) Clear();
  for (const TIntf<IExplorerBarItem>& item : items) Add(item);
}

TIntf<IExplorerBarItem> TCommonExplorerBarPanel::GetItems(int iIndex) const {
  return FGroup.Items()[CheckedIndex(iIndex, FGroup.Items().size())];
}

}  // namespace kk
