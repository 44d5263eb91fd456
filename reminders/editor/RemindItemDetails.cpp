#include "reminders/editor/RemindItemDetails.h"

namespace kk {

void IncludeType(TRemindItem& ioItem, TRemindType iType) {
  TRemindTypes types = ioItem.RemindTypes();
  types.Include(iType);
  ioItem.SetRemindTypes(types);
}

void ExcludeType(TRemindItem& ioItem, TRemindType iType) {
  TRemindTypes types = ioItem.RemindTypes();
  types.Exclude(iType);
  ioItem.SetRemindTypes(types);
}

void AddDetails(TRemindItem& ioItem, TRemindType iType,
                std::unique_ptr<TRemindDetailsBase> iDetails) {
  ioItem.LstDetails().Add(std::move(iDetails));
  IncludeType(ioItem, iType);
}

void DeleteDetails(TRemindItem& ioItem, TRemindType iType) {
  ioItem.LstDetails().Delete(ioItem.LstDetails().IndexOfType(iType));
  ExcludeType(ioItem, iType);
}

}  // namespace kk
