#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <vector>

#include "apps/desktop/shell/TDesktop.h"
#include "apps/desktop/shell/TDesktopArguments.h"
#include "apps/desktop/shell/TTerminalCalls.h"
#include "host/program/THostServer.h"

namespace kk {

/// What other processes on the same data want: a second start hands its command line over, and
/// kaufkobolde-cli has its commands done here. All that is more than coming to the front waits
/// until the program stands and no dialog is open. Main thread.
class TDesktopCalls {
 public:
  /// Borrowed.
  explicit TDesktopCalls(TDesktop& ioDesktop) : FDesktop(ioDesktop) {}
  ~TDesktopCalls();
  TDesktopCalls(const TDesktopCalls&) = delete;
  TDesktopCalls& operator=(const TDesktopCalls&) = delete;

  /// Begins to listen in the folder of the data. Where that fails the log says so, and second
  /// starts are told that the data are in use.
  void Listen();
  /// The packages are loaded, and the plug-ins, which are borrowed until Forget, not yet started.
  void Prepare(THostPlugins& ioPlugins) { FTerminal.emplace(ioPlugins, FDesktop.Window()); }
  /// This process's own call; it waits like the others.
  void Add(TDesktopArguments iCall);
  /// Does what waits, if the time has come.
  void Go();

  /// Whether a command of kaufkobolde-cli is under way; a dialog says so, and closing it ends it.
  bool IsAnswering() const { return FTerminal && FTerminal->IsAnswering(); }
  /// Whether the program is about to end: second starts are told so.
  void SetIsEnding(bool iEnding) { FIsEnding = iEnding; }
  /// Hears nobody any more.
  void Close();
  /// The plug-ins are uninitialised, and their packages still there.
  void Forget() { FTerminal.reset(); }

 private:
  void TakeCallers();
  void AnswerStart(THostPeer& ioPeer);
  bool CanGo() const;
  void DoCall(const TDesktopArguments& iCall);

  TDesktop& FDesktop;
  std::optional<THostServer> FServer;
  std::optional<TTerminalCalls> FTerminal;
  std::deque<TDesktopArguments> FCalls;
  std::vector<std::shared_ptr<THostPeer>> FPeers;  ///< before there are plug-ins
  TMainLoop::TTimerId FTimer = 0;
  bool FIsEnding = false;
};

}  // namespace kk
