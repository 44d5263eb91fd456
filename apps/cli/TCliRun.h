#pragma once

#include <chrono>

#include "apps/cli/TCliDue.h"
#include "apps/cli/TCliLog.h"
#include "host/program/THostServer.h"

namespace kk {

/// "run": stays until Ctrl+C or a request to end, while the watch list delivers its reminders. It
/// tells of each one, and writes the file soon after. Calls of other processes on the same data are
/// answered meanwhile, one at a time; reminders do not wait for them.
class TCliRun {
 public:
  /// iFolder: of the data; the process has its lock. The others are borrowed.
  TCliRun(TCliContext& ioContext, TCliLog& ioLog, TStringView iFolder)
      : FContext(ioContext), FLog(ioLog), FFolder(iFolder) {}
  void Run();

 private:
  using TTime = std::chrono::steady_clock::time_point;

  void TellWhatStands();
  bool MustEnd();
  /// Tells, saves and brings out what was printed. It is also called while a caller's command
  /// waits, for an answer that may take its time.
  void DoTurn(TCliDue& ioDue);
  void AnswerCallers(THostServer& ioServer);
  void Tell(TCliDue& ioDue);
  void SaveIfChanged();

  TCliContext& FContext;
  TCliLog& FLog;
  const TString FFolder;
  bool FEnds = false;
  TTime FNextTell;
  TTime FNextSave;
};

}  // namespace kk
