#include "TFakeConsole.h"

namespace kk {

void TFakeConsole::Answer(std::initializer_list<TString> iLines) {
  FInteractive = true;
  FAnswers.insert(FAnswers.end(), iLines.begin(), iLines.end());
}

std::optional<TString> TFakeConsole::ReadLine(TStringView iPrompt) {
  FPrompts.push_back(ToUtf8(iPrompt));
  if (FAnswers.empty()) return std::nullopt;
  TString line = FAnswers.front();
  FAnswers.pop_front();
  return line;
}

std::optional<TString> TFakeConsole::ReadSecret(TStringView iPrompt) {
  FSecretPrompts.push_back(ToUtf8(iPrompt));
  return ReadLine(iPrompt);
}

}  // namespace kk
