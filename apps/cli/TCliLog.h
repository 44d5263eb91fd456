#pragma once

#include <atomic>

#include "host/base/Log.h"

namespace kk {

class ICliConsole;

/// Hands the log on and tells the user at once of what went wrong, one line for each error. While
/// it lives it is the process's log. Any thread writes.
class TCliLog : public ILogSink {
 public:
  /// Takes the place of the log that stands, and hands on to it. The console is borrowed.
  explicit TCliLog(ICliConsole& ioConsole);
  ~TCliLog() override;
  TCliLog(const TCliLog&) = delete;
  TCliLog& operator=(const TCliLog&) = delete;

  void Write(TLogLevel iLevel, TStringView iSender, TStringView iText) override;

  /// Whether any error came in.
  bool HasErrors() const { return FHasErrors; }

 private:
  ICliConsole& FConsole;
  ILogSink* FBefore;
  std::atomic<bool> FHasErrors{false};
};

}  // namespace kk
