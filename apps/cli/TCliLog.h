#pragma once

#include <atomic>

#include "host/base/Log.h"

namespace kk {

class ICliConsole;

/// Hands the log on and tells the user at once of what went wrong, one line for each error. While
/// it lives it is the process's log. Any thread writes, and any asks.
class TCliLog : public ILogSink {
 public:
  /// Takes the place of the log that stands, and hands on to it. The console is borrowed.
  explicit TCliLog(ICliConsole& ioConsole);
  ~TCliLog() override;
  TCliLog(const TCliLog&) = delete;
  TCliLog& operator=(const TCliLog&) = delete;

  void Write(TLogLevel iLevel, TStringView iSender, TStringView iText) override;

  /// From now on it tells of each step in the delivery of reminders, too, and each line says when.
  void Follow() { FFollows = true; }
  /// How many steps it has told of.
  int Steps() const { return FSteps; }

  /// Whether any error came in since the last ForgetErrors.
  bool HasErrors() const { return FHasErrors; }
  void ForgetErrors() { FHasErrors = false; }

 private:
  ICliConsole& FConsole;
  ILogSink* FBefore;
  std::atomic<bool> FHasErrors{false};
  std::atomic<bool> FFollows{false};
  std::atomic<int> FSteps{0};
};

}  // namespace kk
