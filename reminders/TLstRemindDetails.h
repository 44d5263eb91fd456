#pragma once

#include "host/base/TLstBase.h"
#include "reminders/TRemindDetailsBase.h"

namespace kk {

/// The details of one reminder, owned, in the order in which they are delivered.
class TLstRemindDetails : public TLstBase<TRemindDetailsBase> {
 public:
  TLstRemindDetails() : TLstBase(true) {}

  TRemindDetailsBase& Add(std::unique_ptr<TRemindDetailsBase> iRemindDetails) {
    return Append(std::move(iRemindDetails));
  }
  /// An index out of range raises EListError.
  TRemindDetailsBase& GetItems(int iIndex) const { return At(iIndex); }
  /// Of an empty list raises EListError.
  TRemindDetailsBase& First() const { return At(0); }
  /// The first details of this kind, whatever the reminder's set of kinds says; -1 if there are
  /// none.
  int IndexOfType(TRemindType iType) const;
  /// The same as an object; null if there is none.
  TRemindDetailsBase* ItemByType(TRemindType iType) const;
};

}  // namespace kk
