#include "views/explorerbar/TExplorerbarPanelMoreConst.h"

#include "plugin/texts/UnitKKPluginWatchlistConsts.h"

namespace kk {

TExplorerbarPanelMoreConst::TExplorerbarPanelMoreConst()
    : TCommonExplorerBarPanel(cExplorerBarPanelMoreConstId, cExplorerBarPanelMoreConstSortOrder,
                              u"TExplorerbarPanelMoreConst", {}) {
  GetGroup().SetVisible(false);
}

void TExplorerbarPanelMoreConst::Clear() {}

}  // namespace kk
