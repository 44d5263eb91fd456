#pragma once

#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "apps/cli/ICliConsole.h"

namespace kk {

/// A console that records, and answers questions from a script. The script's end is the end of the
/// input.
class TFakeConsole : public ICliConsole {
 public:
  void Print(TStringView iLine) override { FPrinted.push_back(ToUtf8(iLine)); }
  void Complain(TStringView iLine) override { FComplained.push_back(ToUtf8(iLine)); }
  void Progress(TStringView iLine) override { FProgress.push_back(ToUtf8(iLine)); }
  bool Flush() override { return true; }
  bool IsInteractive() const override { return FInteractive; }
  std::optional<TString> ReadLine(TStringView iPrompt) override;
  std::optional<TString> ReadSecret(TStringView iPrompt) override;
  bool TakeInterrupt() override { return std::exchange(FInterrupted, false); }

  /// From now on somebody answers.
  void Answer(std::initializer_list<TString> iLines);
  void Interrupt() { FInterrupted = true; }

  const std::vector<std::string>& Printed() const { return FPrinted; }
  const std::vector<std::string>& Complained() const { return FComplained; }
  const std::vector<std::string>& Prompts() const { return FPrompts; }
  /// Those of them that were asked without showing the answer.
  const std::vector<std::string>& SecretPrompts() const { return FSecretPrompts; }
  const std::vector<std::string>& Progressed() const { return FProgress; }
  /// How many lines of the script nobody has asked for.
  size_t AnswersLeft() const { return FAnswers.size(); }

 private:
  bool FInteractive = false;
  bool FInterrupted = false;
  std::deque<TString> FAnswers;
  std::vector<std::string> FPrinted;
  std::vector<std::string> FComplained;
  std::vector<std::string> FPrompts;
  std::vector<std::string> FSecretPrompts;
  std::vector<std::string> FProgress;
};

}  // namespace kk
