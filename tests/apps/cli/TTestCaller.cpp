#include "TTestCaller.h"

namespace kk {

TTestCaller::TTestCaller(const std::string& iFolder, std::vector<TString> iWords,
                         std::initializer_list<TString> iAnswers)
    : FClient(FConsole, FromUtf8(iFolder)) {
  if (iAnswers.size() > 0) FConsole.Answer(iAnswers);
  FThread = std::thread([this, words = std::move(iWords)] {
    FExit = FClient.IsConnected() ? FClient.Run(words) : -2;
    FEnded = true;
  });
}

TTestCaller::~TTestCaller() {
  if (FThread.joinable()) FThread.join();
}

int TTestCaller::Wait() {
  FThread.join();
  return FExit;
}

}  // namespace kk
