#pragma once

#include <optional>

#include "apps/cli/TCliApplication.h"
#include "apps/cli/TCliArguments.h"
#include "apps/cli/TCliContext.h"
#include "apps/cli/TCliLog.h"
#include "apps/cli/TCliPopUps.h"
#include "host/common/TQueueMainLoop.h"
#include "host/program/THostServices.h"
#include "host/program/THostSession.h"

namespace kk {

/// The host for the time of one command: it makes the services in the order in which they need each
/// other, looks after the user's data, loads the packages and leads the plug-ins through their
/// life. There is one at a time. Main thread.
class TCliSession {
 public:
  /// Up to the loaded packages. What keeps the host from working raises Exception.
  TCliSession(ICliConsole& ioConsole, const TCliArguments& iCall);
  /// Ends what is still open, without a word of failures.
  ~TCliSession();
  TCliSession(const TCliSession&) = delete;
  TCliSession& operator=(const TCliSession&) = delete;

  /// Looks at the watch list's file and initialises the plug-ins. Raises Exception if the watch
  /// list is missing, can't be started, or has to be restored first.
  void Start();
  /// Starts as a host that delivers reminders, and stays until the user or the system asks for the
  /// end. What goes wrong meanwhile is told, and no error of the session.
  void Stay();
  /// Ends all work, uninitialises the plug-ins, which saves the list, and unloads the packages.
  void End();

  TCliContext& Context() { return FContext; }
  /// After End: whether anything has logged an error since the packages were loaded.
  bool HasErrors() const { return FHasErrors; }

 private:
  void Begin(TCliApplication::TShowPopUp iShow);
  void GuardData();
  void TellOfBackup();

  ICliConsole& FConsole;
  const bool FRestoreBackup;
  // In the order in which they need each other.
  THostServices FServices;
  TQueueMainLoop FLoop;
  TInstalled<TMainLoop> FLoopInstalled;
  TCliFormHost FForms;
  TInstalled<IFormHost> FFormsInstalled;
  TCliPopUps FPopUps;
  THostSession FHost;
  TCliContext FContext;
  /// What happens in the plug-ins is told to the user; it ends before the packages go.
  std::optional<TCliLog> FLog;
  bool FStays = false;
  bool FHasErrors = false;
};

}  // namespace kk
