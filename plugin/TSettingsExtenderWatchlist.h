#pragma once

#include "host/contract/TCommonSettingsExtender.h"

namespace kk {

/// Puts the watch list's settings page in front of the plug-ins' pages. Main thread.
class TSettingsExtenderWatchlist : public TCommonSettingsExtender {
 public:
  /// iNode: the page; empty while there is none, and then the settings dialog gets none.
  explicit TSettingsExtenderWatchlist(const TIntf<ISettingsNode>& iNode);
};

}  // namespace kk
