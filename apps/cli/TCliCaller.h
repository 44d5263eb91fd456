#pragma once

#include "apps/cli/ECliUsage.h"
#include "apps/cli/TCliArguments.h"
#include "apps/cli/TCliContext.h"
#include "apps/cli/TCliLog.h"
#include "apps/cli/TCliPeerConsole.h"

namespace kk {

/// The program that has the data and executes commands of others: "kaufkobolde-cli run", or the one
/// with a window.
enum class TCliHost { chRun, chWindow };

/// One command of a caller, executed in the process that has the data. Main thread.
class TCliCaller {
 public:
  /// All are borrowed; the context is that of the process.
  TCliCaller(TCliContext& ioContext, TCliLog& ioLog, THostPeer& ioPeer,
             TCliHost iHost = TCliHost::chRun)
      : FHost(iHost),
        FContext(ioContext),
        FLog(ioLog),
        FPeer(ioPeer),
        FConsole(ioPeer, ioContext.Console) {}

  /// Executes it, from the caller's folder, writes the list if it may have changed, and tells the
  /// caller how it ended. Raises nothing.
  void Execute();
  /// Whether this process was asked to end meanwhile.
  bool HostEnds() { return FConsole.HostEnds(); }

 private:
  TCliExit Run();
  bool Run(const TCliArguments& iCall);
  void CheckKind() const;
  void Check(const TCliArguments& iCall) const;
  TString Name() const;

  const TCliHost FHost;
  TCliContext& FContext;
  TCliLog& FLog;
  THostPeer& FPeer;
  TCliPeerConsole FConsole;
};

}  // namespace kk
