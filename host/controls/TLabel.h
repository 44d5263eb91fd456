#pragma once

#include "host/controls/TCaptionControl.h"

namespace kk {

/// A text on a form.
class TLabel : public TCaptionControl {
 public:
  using TCaptionControl::TCaptionControl;
};

}  // namespace kk
