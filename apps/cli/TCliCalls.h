#pragma once

#include "apps/cli/TCliContext.h"
#include "apps/cli/TCliLog.h"
#include "host/program/THostPeer.h"

namespace kk {

/// Answers calls of kaufkobolde-cli in the process of a host with a window, which has the data, as
/// "kaufkobolde-cli run" answers them: output and questions are the caller's. Made before the
/// plug-ins are started, and gone after they are uninitialised and before their packages are. Main
/// thread.
class TCliCalls {
 public:
  /// The plug-ins are borrowed.
  explicit TCliCalls(THostPlugins& ioPlugins);

  /// Executes the command of a caller and tells him how it ended; the list is written if it may
  /// have changed. Returns when it is through. The main loop goes on while the command waits, for
  /// an answer of the caller or for the network: meanwhile the form host that stands asks the
  /// caller, so the host's own windows take no input, and no other call is answered. It is not to
  /// be called while a window of the host is modal, which may be about items that a command
  /// deletes. Raises nothing.
  void Answer(THostPeer& ioPeer);
  /// Whether a command is being executed.
  bool IsAnswering() const { return FIsAnswering; }
  /// As Ctrl+C at the caller's: the command that is being executed ends soon, and the caller is
  /// told. For a host that is to end, and for a user who wants the window back.
  void Interrupt();

 private:
  /// The host's own console, which there is none of.
  class TConsole : public ICliConsole {
   public:
    void Print(TStringView) override {}
    void Complain(TStringView) override {}
    void Progress(TStringView) override {}
    bool Flush() override { return true; }
    bool IsInteractive() const override { return false; }
    std::optional<TString> ReadLine(TStringView) override { return {}; }
    std::optional<TString> ReadSecret(TStringView) override { return {}; }
    bool TakeInterrupt() override { return Interrupts; }

    bool Interrupts = false;
  };

  TConsole FConsole;
  TCliFormHost FForms{FConsole};
  TCliContext FContext;
  TCliLog FLog;
  bool FIsAnswering = false;
};

}  // namespace kk
