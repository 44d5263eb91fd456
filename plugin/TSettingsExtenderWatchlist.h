#pragma once

#include "host/contract/TCommonSettingsExtender.h"

namespace kk {

/// Brings the watch list's settings page, a new one for each dialog, and puts it in front of the
/// plug-ins' pages. Main thread.
class TSettingsExtenderWatchlist : public TCommonSettingsExtender {
 public:
  TSettingsExtenderWatchlist();
};

}  // namespace kk
