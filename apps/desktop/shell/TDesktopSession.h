#pragma once

#include <optional>

#include "apps/desktop/print/TQtPrinting.h"
#include "apps/desktop/shell/TDesktop.h"
#include "apps/desktop/shell/TDesktopApplication.h"
#include "apps/desktop/shell/TDesktopArguments.h"
#include "apps/desktop/shell/TDesktopCalls.h"
#include "apps/desktop/shell/TSystemEnd.h"
#include "apps/desktop/skin/TQtFormHost.h"
#include "apps/desktop/skin/TQtMainLoop.h"
#include "host/base/TInstalled.h"
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
  bool IsRunning() const { return FDesktop && FDesktop->HasBegun(); }
  /// The user wants the program to end. Dialogs are cancelled first; one that stays keeps the
  /// program from ending.
  void RequestEnd();
  /// The system wants it: nothing keeps the program from ending.
  void RequestSystemEnd();

  /// Until End.
  TDesktop& Desktop() { return *FDesktop; }
  /// Null before the packages are loaded and after the end.
  THostSession* Host() { return FHost ? &*FHost : nullptr; }

 private:
  void Start();
  void StartOrRaise();
  /// Each looks after the user's list before it is loaded; false if the user would rather end the
  /// program.
  bool GuardData();
  static bool GuardMissing(const TDataFileGuard& iGuard);
  static bool GuardDamaged(const TDataFileGuard& iGuard);
  void TellRefusedPackages();
  void Save();
  void SaveReminders();
  void GoOnToEnd();
  /// Nothing stands in the way but that the list could not be saved, of which the user is asked.
  void LeaveIfSafe();
  void StayHere();
  void Leave();
  /// Answers what went wrong, for the user.
  TString EndPlugins();

  TDesktopArguments FCall;
  THostServices& FServices;
  // In the order in which they need each other.
  TQtMainLoop FLoop;
  TInstalled<TMainLoop> FLoopInstalled{&SetMainLoop, &FLoop};
  TQtFormHost FForms;
  TInstalled<IFormHost> FFormsInstalled{&SetFormHost, &FForms};
  TQtPrinting FPrinting;
  TInstalled<IPrinting> FPrintingInstalled{&SetPrinting, &FPrinting};
  std::optional<TDesktop> FDesktop;
  TIntf<TDesktopApplication> FApplication;
  std::optional<TDesktopCalls> FCalls;
  std::optional<THostSession> FHost;
  TSystemEnd FSystemEnd;
  TMainLoop::TTimerId FSaveTimer = 0;
  TMainLoop::TTimerId FStartTimer = 0;
  TMainLoop::TTimerId FEndTimer = 0;
  QPointer<QWidget> FClosing;  ///< the dialog that was asked to close
  int FTries = 0;
  TDesktopExit FExit = TDesktopExit::deDone;
  bool FMustEnd = false;
  bool FIsSystemEnd = false;
  bool FHasEnded = false;
};

}  // namespace kk
