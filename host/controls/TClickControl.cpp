#include "host/controls/TClickControl.h"

namespace kk {

bool TClickControl::Click() {
  return AsUser([this] {
    // A menu entry may be rebuilt, and so die, in its own handler: nothing touches it behind that.
    const TNotifyEvent onClick = FOnClick;
    if (!Clicked()) return false;
    if (onClick) onClick(this);
    return true;
  });
}

bool TClickControl::UseKey(char16_t iKey) { return iKey == cKeySpace && Click(); }

}  // namespace kk
