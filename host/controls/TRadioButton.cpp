#include "host/controls/TRadioButton.h"

namespace kk {

void TRadioButton::SetChecked(bool iChecked) {
  SetValue(FChecked, iChecked);
  if (!iChecked || Parent() == nullptr) return;
  for (TControl* sibling : Parent()->Children()) {
    auto* other = dynamic_cast<TRadioButton*>(sibling);
    if (other != nullptr && other != this) other->SetChecked(false);
  }
}

bool TRadioButton::Clicked() {
  if (FChecked) return false;
  SetChecked(true);
  return true;
}

}  // namespace kk
