#pragma once

#include "views/explorerbar/TExplorerBarWatchlist.h"

namespace kk {

/// Lets what other plug-ins have injected into this one put its items on the panel that is never
/// shown. Once, when the bar has been filled. What an extender raises passes through.
void ExtendExplorerbarWithDefaultItems(TExplorerBarWatchlist& ioBar);

/// Shows those items in the panel of further options, where tabs and categories may have taken them
/// out. An item that is there already stays as it is.
void RestoreExplorerbarDefaultItems(TExplorerBarWatchlist& ioBar);

}  // namespace kk
