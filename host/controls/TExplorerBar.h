#pragma once

#include "host/controls/TKK5SkinExplorerGroup.h"

namespace kk {

/// The explorer bar's widget: a column of groups, which put themselves into it.
class TExplorerBar : public TControl {
 public:
  using TControl::TControl;

  /// From top to bottom, the hidden ones included.
  std::vector<TKK5SkinExplorerGroup*> Groups() const;
};

}  // namespace kk
