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
  void LeaveQuestionsWith(int iDescriptor) override { FLine = iDescriptor; }
  bool TakeInterrupt() override;

 private:
  std::optional<TString> TakeLine();
  /// The last line of the input may be without an end.
  std::optional<TString> TakeRest();
  void ClearProgress();
  void WriteError(const std::string& iBytes);

  TCliInterrupt& FInterrupt;
  const bool FInteractive;
  const bool FShowsProgress;
  std::mutex FMutex;  ///< over the two streams and the fields behind it
  TString FProgress;  ///< that stands on the terminal; empty if none does
  bool FFailed = false;
  std::string FInput;  ///< read and not yet handed out
  int FLine = -1;      ///< whose end ends questions
};

}  // namespace kk
