#include "plugin/TSettingsExtenderWatchlist.h"

namespace kk {

TSettingsExtenderWatchlist::TSettingsExtenderWatchlist(const TIntf<ISettingsNode>& iNode) {
  if (iNode) AddNodeBefore(cSettingsNodeIdPluginsBefore, iNode);
}

}  // namespace kk
