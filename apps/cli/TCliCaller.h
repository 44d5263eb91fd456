#pragma once

#include "apps/cli/ECliUsage.h"
#include "apps/cli/TCliArguments.h"
#include "apps/cli/TCliContext.h"
#include "apps/cli/TCliLog.h"
#include "apps/cli/TCliPeerConsole.h"

namespace kk {

/// One command of a caller, executed in the process that stays. Main thread.
class TCliCaller {
 public:
  /// All are borrowed; the context is that of the process.
  TCliCaller(TCliContext& ioHost, TCliLog& ioLog, TCliPeer& ioPeer)
      : FHost(ioHost), FLog(ioLog), FPeer(ioPeer), FConsole(ioPeer, ioHost.Console) {}

  /// Executes it, from the caller's folder, writes the list if it may have changed, and tells the
  /// caller how it ended. Raises nothing.
  void Execute();
  /// Whether this process was asked to end meanwhile.
  bool HostEnds() { return FConsole.HostEnds(); }

 private:
  TCliExit Run();
  bool Run(const TCliArguments& iCall);
  void Check(const TCliArguments& iCall) const;

  TCliContext& FHost;
  TCliLog& FLog;
  TCliPeer& FPeer;
  TCliPeerConsole FConsole;
};

}  // namespace kk
