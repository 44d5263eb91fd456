#pragma once

#include "host/base/Exception.h"

namespace kk {

/// Another process has the folder.
class EHostBusy : public Exception {
 public:
  using Exception::Exception;
};

/// Keeps a folder of data to one process, for as long as it lives: a lock on a file in the folder,
/// which the system takes back when the process ends, however it ends.
class THostLock {
 public:
  /// The folder is made if it is missing. Raises EHostBusy if another process has it, and
  /// EInOutError if the file can't be made.
  explicit THostLock(TStringView iFolder);
  ~THostLock();
  THostLock(const THostLock&) = delete;
  THostLock& operator=(const THostLock&) = delete;

 private:
  int FFile = -1;
};

}  // namespace kk
