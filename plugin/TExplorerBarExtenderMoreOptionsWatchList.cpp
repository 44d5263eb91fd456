#include "plugin/TExplorerBarExtenderMoreOptionsWatchList.h"

#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

TExplorerBarExtenderMoreOptionsWatchList::TExplorerBarExtenderMoreOptionsWatchList()
    : FItem(MakeIntf<TCommonExplorerBarLink>(cExplorerbarItemAddId, cExplorerbarItemAddSortOrder,
                                             _resWatchlistExplorerBandbar,
                                             TBitmap{TString(cExplorerbandBarBitmap)})) {
  FItem->SetOnClick(TNotifyEvent::Of<&TExplorerBarExtenderMoreOptionsWatchList::DoItemClick>(this));
  Items().push_back(FItem);
}

TExplorerBarExtenderMoreOptionsWatchList::~TExplorerBarExtenderMoreOptionsWatchList() {
  FItem->SetOnClick({});  // a bar may keep the link
}

void TExplorerBarExtenderMoreOptionsWatchList::AddItems(
    const TIntf<IExplorerBarPanel>& iExplorerBarPanel) {
  if (!SameGuid(iExplorerBarPanel->GetId(), cExplorerbarPanelMoreId)) return;
  iExplorerBarPanel->Add(FItem);
  bool visible = true;
  if (FOnItemAdd) FOnItemAdd(this, visible);
  FItem->SetVisible(visible);
}

void TExplorerBarExtenderMoreOptionsWatchList::DoItemClick(TObject*) {
  if (FOnItemClick) FOnItemClick(this);
}

}  // namespace kk
