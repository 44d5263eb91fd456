#include "host/controls/TKK5SkinHeaderItemTabExt.h"

#include "host/controls/TTabStrip.h"

namespace kk {

TKK5SkinHeaderItemTabExt::TKK5SkinHeaderItemTabExt(TTabStrip& ioStrip, TStringView iCaption)
    : TClickControl(&ioStrip, {}, iCaption) {}

void TKK5SkinHeaderItemTabExt::SetSelected(bool iSelected) {
  if (iSelected && Parent() != nullptr) {
    for (TControl* sibling : Parent()->Children()) {
      auto& head = static_cast<TKK5SkinHeaderItemTabExt&>(*sibling);
      if (&head != this) head.SetSelected(false);
    }
  }
  SetValue(FSelected, iSelected);
}

bool TKK5SkinHeaderItemTabExt::Clicked() {
  if (FSelected) return false;
  SetSelected(true);
  if (Parent() != nullptr) Parent()->TakeFocus();
  return true;
}

}  // namespace kk
