#include "plugin/TSettingsExtenderWatchlist.h"

#include "settings/page/TSettingsNodeWatchlist.h"

namespace kk {

TSettingsExtenderWatchlist::TSettingsExtenderWatchlist() {
  AddNodeBefore(cSettingsNodeIdPluginsBefore, MakeIntf<TSettingsNodeWatchlist>());
}

}  // namespace kk
