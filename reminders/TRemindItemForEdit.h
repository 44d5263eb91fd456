#pragma once

#include "reminders/TRemindItem.h"

namespace kk {

/// A reminder in the editor, with the end of its auction for times that count back from it. Clone
/// and Copy leave that end aside.
class TRemindItemForEdit : public TRemindItem {
 public:
  using TRemindItem::TRemindItem;

  /// Local time; zero if the search result has no end.
  TDateTime EndDate() const { return FEndDate; }
  void SetEndDate(TDateTime iDate) { FEndDate = iDate; }

 private:
  TDateTime FEndDate;
};

}  // namespace kk
