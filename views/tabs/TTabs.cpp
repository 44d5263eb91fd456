#include "views/tabs/TTabs.h"

namespace kk {

int TTabs::IndexOfSelected() const {
  for (int i = 0; i < GetCount(); ++i) {
    if (At(i).IsSelected()) return i;
  }
  return -1;
}

bool TTabs::IsSelectedVisible() const {
  const int index = IndexOfSelected();
  return index >= 0 && At(index).IsVisible();
}

bool TTabs::SelectFirstVisible() const {
  for (TTab* tab : *this) {
    if (!tab->IsVisible()) continue;
    tab->Select();
    return true;
  }
  return false;
}

}  // namespace kk
