#pragma once

#include "host/base/TInstalled.h"
#include "host/common/TDataFileGuard.h"
#include "host/common/TKKIniFile.h"
#include "host/common/TLogFile.h"
#include "host/program/THostLock.h"

namespace kk {

/// The ground that every host stands on, made in the order in which it is needed: the folders, the
/// lock on the user's data, the log file and the settings file. It ends last. Main thread.
class THostServices {
 public:
  struct TOptions {
    TString OneFolder;  ///< for all that the user's data lie in; empty for the user's own folders
    bool Verbose = false;
  };

  /// Raises EHostBusy if another process has the data; HostFolders() stand also then, and
  /// THostClient reaches that process. Raises EInOutError if the folder can't be made.
  explicit THostServices(const TOptions& iOptions);
  THostServices(const THostServices&) = delete;
  THostServices& operator=(const THostServices&) = delete;

  /// Looks after the watch list's file. The host asks before the plug-ins are started: whether
  /// there is a backup to restore, which is a question for the user, and then for damage, of which
  /// the user is told.
  TDataFileGuard DataGuard() const;

 private:
  // In the order in which they need each other.
  THostLock FLock;
  TLogFile FLogFile;
  TInstalled<ILogSink> FLogInstalled;
  TKKIniFile FIniFile;
  TInstalled<TKKIniFile> FIniFileInstalled;
};

}  // namespace kk
