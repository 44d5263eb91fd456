#include "reminders/TLstRemindDetails.h"

namespace kk {

int TLstRemindDetails::IndexOfType(TRemindType iType) const {
  const auto isOfType = RemindTypeDetailsClass(iType).IsClassOf;
  for (int i = 0; i < GetCount(); ++i) {
    if (isOfType(GetItems(i))) return i;
  }
  return -1;
}

TRemindDetailsBase* TLstRemindDetails::ItemByType(TRemindType iType) const {
  const int index = IndexOfType(iType);
  return index < 0 ? nullptr : &GetItems(index);
}

}  // namespace kk
