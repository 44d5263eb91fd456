#pragma once

#include "host/base/Exception.h"

namespace kk {

/// Another process has the folder.
class ECliBusy : public Exception {
 public:
  using Exception::Exception;
};

/// Keeps a folder of data to one process, for as long as it lives: a lock on a file in the folder,
/// which the system takes back when the process ends, however it ends.
class TCliLock {
 public:
  /// The folder is made if it is missing. Raises ECliBusy if another process has it, and
  /// EInOutError if the file can't be made.
  explicit TCliLock(TStringView iFolder);
  ~TCliLock();
  TCliLock(const TCliLock&) = delete;
  TCliLock& operator=(const TCliLock&) = delete;

 private:
  int FFile = -1;
};

}  // namespace kk
