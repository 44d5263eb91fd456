#pragma once

#include "host/controls/TCommonExplorerBarPanel.h"

namespace kk {

/// The panel that is never shown: it keeps what other plug-ins want in the panel of further options
/// whatever tab is on show. Main thread.
class TExplorerbarPanelMoreConst : public TCommonExplorerBarPanel {
 public:
  TExplorerbarPanelMoreConst();

  /// Does nothing: what it holds survives.
  void Clear() override;
};

}  // namespace kk
