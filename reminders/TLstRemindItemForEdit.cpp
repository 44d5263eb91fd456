#include "reminders/TLstRemindItemForEdit.h"

namespace kk {

TRemindItemForEdit& TLstRemindItemForEdit::Add(const TRemindItem& iItem) {
  TRemindItemForEdit& added = Append(std::make_unique<TRemindItemForEdit>(iItem.Id()));
  added.Copy(iItem);
  return added;
}

}  // namespace kk
