#pragma once

#include <mutex>
#include <string>

#include "apps/cli/ICliConsole.h"

namespace kk {

class TCliInterrupt;

/// The console on the process's own stdin, stdout and stderr.
class TCliTerminal : public ICliConsole {
 public:
  /// Borrowed.
  explicit TCliTerminal(TCliInterrupt& ioInterrupt);

  void Print(TStringView iLine) override;
  void Complain(TStringView iLine) override;
  void Progress(TStringView iLine) override;
  bool Flush() override;
  bool IsInteractive() const override { return FInteractive; }
  std::optional<TString> ReadLine(TStringView iPrompt) override;
  std::optional<TString> ReadSecret(TStringView iPrompt) override;
  bool TakeInterrupt() override;

 private:
  std::optional<TString> TakeLine();
  void ClearProgress();
  void WriteError(const std::string& iBytes);

  TCliInterrupt& FInterrupt;
  const bool FInteractive;
  const bool FShowsProgress;
  std::mutex FMutex;  ///< over the two streams and the fields behind it
  bool FProgressShown = false;
  bool FFailed = false;
  std::string FInput;  ///< read and not yet handed out
};

}  // namespace kk
