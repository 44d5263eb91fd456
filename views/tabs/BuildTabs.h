#pragma once

#include "views/tabs/TTabControlKK.h"

namespace kk {

/// Makes a tab for each source of the handler that has a view, in the order of the list. Main
/// thread.
void BuildTabs(TTabControlKK& ioTabControl);

}  // namespace kk
