#pragma once

#include "host/controls/TClickControl.h"

namespace kk {

/// One choice among those of its parent: checking one unchecks the others, whichever door it came
/// through.
class TRadioButton : public TClickControl {
 public:
  using TClickControl::TClickControl;

  bool Checked() const { return FChecked; }
  void SetChecked(bool iChecked);

 protected:
  /// A click on the chosen one does nothing.
  bool Clicked() override;

 private:
  bool FChecked = false;
};

}  // namespace kk
