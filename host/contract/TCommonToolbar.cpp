#include "host/contract/TCommonToolbar.h"

#include "host/base/Exception.h"

namespace kk {

void TCommonToolbarEventButton::Click() {
  if (FOnClick) FOnClick(this);
}

TIntf<IToolbarButton> TCommonToolbarExtender::GetItems(int iIndex) const {
  return FButtons[CheckedIndex(iIndex, FButtons.size())];
}

}  // namespace kk
