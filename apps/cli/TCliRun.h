#pragma once

#include <chrono>

#include "apps/cli/TCliDue.h"
#include "apps/cli/TCliLog.h"

namespace kk {

/// "run": stays until Ctrl+C or a request to end, while the watch list delivers its reminders. It
/// tells of each one, and writes the file soon after.
class TCliRun {
 public:
  /// Both are borrowed.
  TCliRun(TCliContext& ioContext, TCliLog& ioLog) : FContext(ioContext), FLog(ioLog) {}
  void Run();

 private:
  using TTime = std::chrono::steady_clock::time_point;

  void TellWhatStands(const TCliDue& iDue);
  void SaveIfChanged();

  TCliContext& FContext;
  TCliLog& FLog;
  TTime FNextSave;
};

}  // namespace kk
