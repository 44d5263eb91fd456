#pragma once

#include "apps/cli/ICliConsole.h"
#include "host/program/THostClient.h"

namespace kk {

/// Has a call answered by the process that has the same data, as if it were made here: what it
/// prints appears on this console, and what it asks is asked here.
class TCliClient {
 public:
  /// Looks for it in the folder of the data. The console is borrowed.
  TCliClient(ICliConsole& ioConsole, TStringView iFolder) : FConsole(ioConsole), FHost(iFolder) {}

  /// Whether there is one.
  bool IsConnected() const { return FHost.IsConnected(); }
  /// Hands the arguments over and waits for the end. Answers the exit code. Raises Exception for
  /// arguments that are too long together.
  int Run(const std::vector<TString>& iArguments);

 private:
  bool Send(THostMessage::TKind iKind, TStringView iText = {});
  /// False when the exit code stands.
  bool Take(const THostMessage& iMessage);
  void Ask(const THostMessage& iQuestion);

  ICliConsole& FConsole;
  THostClient FHost;
  int FExitCode = 1;
};

}  // namespace kk
