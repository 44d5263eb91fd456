#pragma once

#include "host/controls/TControl.h"

namespace kk {

/// A row of tool buttons, which are its children. An empty one takes no room.
class TToolbar : public TControl {
 public:
  using TControl::TControl;
};

}  // namespace kk
