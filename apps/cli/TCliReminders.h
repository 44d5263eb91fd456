#pragma once

#include "apps/cli/TCliContext.h"
#include "apps/cli/TCliJson.h"

namespace kk {

/// "reminders": all reminders, the next one first.
class TCliReminders {
 public:
  explicit TCliReminders(TCliContext& ioContext) : FContext(ioContext) {}
  void List(bool iAsJson);

  /// All that stand, the next one first.
  std::vector<TCliReminder> ByTime() const;

 private:
  void Print(const TCliReminder& iReminder);

  TCliContext& FContext;
};

}  // namespace kk
