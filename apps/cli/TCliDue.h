#pragma once

#include <vector>

#include "apps/cli/TCliContext.h"
#include "host/base/TObject.h"

namespace kk {

/// Tells which reminders have left the list because their time had come. The list itself forgets a
/// reminder with its delivery. Main thread.
class TCliDue : public TObject {
 public:
  /// From now on it hears of each one. Before the main loop turns it has missed none.
  explicit TCliDue(TCliContext& ioContext);
  ~TCliDue() override;
  TCliDue(const TCliDue&) = delete;
  TCliDue& operator=(const TCliDue&) = delete;

  /// Whether any has come due since the last Tell.
  bool HasAny() const { return !FDue.empty(); }
  /// Prints a line for each of them.
  void Tell();

 private:
  struct TDue {
    TDateTime When;
    TWatchlistReminderInfo Reminder;
  };
  void DoReminderDue(TObject* Sender, const TWatchlistReminderInfo& iReminder);

  TCliContext& FContext;
  std::vector<TDue> FDue;
};

}  // namespace kk
