#pragma once

#include "reminders/TRemindItemForEdit.h"

namespace kk {

/// The reminders that the editor works on, owned. Main thread.
class TLstRemindItemForEdit : public TLstBase<TRemindItemForEdit> {
 public:
  TLstRemindItemForEdit() : TLstBase(true) {}

  TRemindItemForEdit& Add(std::unique_ptr<TRemindItemForEdit> iItem) {
    return Append(std::move(iItem));
  }
  /// Appends a new reminder for editing with the content of this one.
  TRemindItemForEdit& Add(const TRemindItem& iItem);
  /// An index out of range raises EListError.
  TRemindItemForEdit& GetItems(int iIndex) const { return At(iIndex); }
};

}  // namespace kk
