#pragma once

#include <optional>
#include <vector>

#include "apps/desktop/shell/TDesktop.h"
#include "apps/desktop/shell/TDesktopApplication.h"
#include "apps/desktop/shell/TDesktopArguments.h"
#include "apps/desktop/shell/TSystemEnd.h"
#include "apps/desktop/skin/TQtFormHost.h"
#include "apps/desktop/skin/TQtMainLoop.h"
#include "host/base/TInstalled.h"
#include "host/program/THostServer.h"
#include "host/program/THostServices.h"
#include "host/program/THostSession.h"

namespace kk {

/// The program on the desktop, from the window to a safe end: it looks after the user's data, loads
/// the packages, leads the plug-ins through their life, and takes second starts over. A
/// QApplication and THostServices stand before it. There is one at a time. Main thread.
class TDesktopSession {
 public:
  /// All is borrowed, but the call.
  TDesktopSession(TDesktopArguments iCall, THostServices& ioServices, TTrayIcon& ioTray);
  /// Ends what was not ended.
  ~TDesktopSession();
  TDesktopSession(const TDesktopSession&) = delete;
  TDesktopSession& operator=(const TDesktopSession&) = delete;

  /// All three steps.
  TDesktopExit Run();
  /// First: the window stands; all else begins as soon as it has been painted.
  void Open();
  /// Second is the loop of Qt's. It is left when this is true.
  bool MustEnd() const { return FMustEnd; }
  /// Last: ends all work, saves, and takes windows and packages away. What could not be saved is
  /// told to the user, unless the system ends the program.
  TDesktopExit End();

  /// The plug-ins are started and the first section stands.
  bool IsRunning() const { return FDesktop.HasBegun(); }
  /// The user wants the program to end. Dialogs are cancelled first; one that stays keeps the
  /// program from ending.
  void RequestEnd();
  /// The system wants it: nothing keeps the program from ending.
  void RequestSystemEnd();

  TDesktop& Desktop() { return FDesktop; }
  /// Null before the packages are loaded and after the end.
  THostSession* Host() { return FHost ? &*FHost : nullptr; }

 private:
  void Start();
  void StartOrRaise();
  /// False if the user would rather end the program.
  bool GuardData();
  void TellRefusedPackages();
  void BeginServer();
  void AnswerCallers();
  void Answer(THostPeer& ioPeer);
  /// Calls that came while a dialog stood, once it is gone.
  void TakeCalls();
  void Save();
  void SaveReminders();
  bool CancelDialogs();
  void Leave();

  TDesktopArguments FCall;
  THostServices& FServices;
  // In the order in which they need each other.
  TQtMainLoop FLoop;
  TInstalled<TMainLoop> FLoopInstalled{&SetMainLoop, &FLoop};
  TQtFormHost FForms;
  TInstalled<IFormHost> FFormsInstalled{&SetFormHost, &FForms};
  TDesktop FDesktop;
  TIntf<TDesktopApplication> FApplication = MakeIntf<TDesktopApplication>(FDesktop);
  std::optional<THostSession> FHost;
  std::optional<THostServer> FServer;
  TSystemEnd FSystemEnd;
  std::vector<TDesktopArguments> FCalls;
  TMainLoop::TTimerId FSaveTimer = 0;
  TMainLoop::TTimerId FStartTimer = 0;
  TMainLoop::TTimerId FCallTimer = 0;
  TDesktopExit FExit = TDesktopExit::deDone;
  bool FMustEnd = false;
  bool FIsSystemEnd = false;
  bool FHasEnded = false;
};

}  // namespace kk
