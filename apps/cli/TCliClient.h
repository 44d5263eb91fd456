#pragma once

#include <optional>

#include "apps/cli/ICliConsole.h"
#include "apps/cli/TCliMessage.h"
#include "apps/cli/TCliSocket.h"

namespace kk {

/// Has a call answered by the process that stays on the same data ("run"), as if it were made here:
/// what it prints appears on this console, and what it asks is asked here.
class TCliClient {
 public:
  /// Looks for it in the folder of the data. The console is borrowed.
  TCliClient(ICliConsole& ioConsole, TStringView iFolder)
      : FConsole(ioConsole), FSocket(TCliSocket::Connect(iFolder)) {}

  /// Whether there is one.
  bool IsConnected() const { return FSocket.IsOpen(); }
  /// Hands the arguments over and waits for the end. Answers the exit code. Raises Exception for
  /// arguments that are too long together.
  int Run(const std::vector<TString>& iArguments);

 private:
  bool Send(const TCliMessage& iMessage) { return SendLine(iMessage.ToLine()); }
  bool SendLine(const std::string& iLine);
  bool Send(TCliMessage::TKind iKind, TStringView iText = {});
  void Wait();
  /// False when the exit code stands.
  bool Take(const TCliMessage& iMessage);
  void Ask(const TCliMessage& iQuestion);

  ICliConsole& FConsole;
  const TCliSocket FSocket;
  std::string FInput;
  int FExitCode = 1;
};

}  // namespace kk
