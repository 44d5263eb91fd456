#include "settings/page/TSettingsNodeWatchlist.h"

#include "plugin/texts/UnitKKPluginWatchlistConsts.h"

namespace kk {

TGuid TSettingsNodeWatchlist::GetId() const { return cWatchlistSettingsNodeId; }

TString TSettingsNodeWatchlist::GetCaption() const { return TString(_resSettingsCaption); }

}  // namespace kk
