#pragma once

#include <atomic>
#include <mutex>
#include <vector>

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

  /// Whether any error came in since the last ForgetErrors.
  bool HasErrors() const { return FHasErrors; }
  void ForgetErrors() { FHasErrors = false; }

  /// Tells a caller, too, of what goes wrong with his command, for as long as it lives: of all
  /// errors but those of reminders that are delivered meanwhile. One at a time.
  class TTelling {
   public:
    /// Both are borrowed.
    TTelling(TCliLog& ioLog, ICliConsole& ioConsole);
    ~TTelling();
    TTelling(const TTelling&) = delete;
    TTelling& operator=(const TTelling&) = delete;
    /// Whether there was any.
    bool HasErrors() const;

   private:
    TCliLog& FLog;
  };

  /// Keeps back the errors that this thread logs, for a command that tells them in its own words.
  /// They count as errors all the same. What was neither told nor taken is told at the end.
  class TKeeping {
   public:
    TKeeping();
    ~TKeeping();
    TKeeping(const TKeeping&) = delete;
    TKeeping& operator=(const TKeeping&) = delete;
    /// This was told to the user: what it contains is not told again.
    void Told(TStringView iText);
    /// Takes the first one over; empty if there is none.
    TString Take();

   private:
    friend TCliLog;
    struct TError {
      TCliLog* Log;
      TString Text;
    };
    TKeeping* const FBefore;
    std::vector<TError> FErrors;
  };

 private:
  void Tell(TStringView iWhat, TStringView iText);
  void TellError(TStringView iText, bool iIsCommands);
  void FailCaller();

  ICliConsole& FConsole;
  ILogSink* FBefore;
  std::atomic<bool> FHasErrors{false};
  std::atomic<bool> FFollows{false};
  mutable std::mutex FMutex;  ///< over the caller
  ICliConsole* FCaller = nullptr;
  bool FCallerHasErrors = false;
};

}  // namespace kk
