#include "apps/cli/FindControl.h"

namespace kk {

TControl* FindControl(const TControl& iParent, TStringView iName) {
  for (TControl* child : iParent.Children()) {
    if (child->Name() == iName) return child;
    if (TControl* const found = FindControl(*child, iName)) return found;
  }
  return nullptr;
}

}  // namespace kk
