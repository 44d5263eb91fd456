#pragma once

#include "host/controls/TClickControl.h"

namespace kk {

/// A box that the user ticks. The program's SetChecked raises no event.
class TCheckBox : public TClickControl {
 public:
  using TClickControl::TClickControl;

  bool Checked() const { return FChecked; }
  void SetChecked(bool iChecked) { SetValue(FChecked, iChecked); }

 protected:
  bool Clicked() override {
    SetChecked(!FChecked);
    return true;
  }

 private:
  bool FChecked = false;
};

}  // namespace kk
