#pragma once

#include "host/base/TString.h"

class QKeyEvent;

namespace kk {

/// The keys as TMenuItem::ShortCut writes them, "Shift+Ctrl+Del"; empty for keys that write or
/// move about, which never are a menu's.
TString ShortCutOf(const QKeyEvent& iEvent);

}  // namespace kk
