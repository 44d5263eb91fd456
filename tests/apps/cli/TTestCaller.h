#pragma once

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "TFakeConsole.h"
#include "apps/cli/TCliClient.h"

namespace kk {

/// One call that a process which stays shall answer, made on a thread of its own. The console is
/// the thread's until Wait has returned.
class TTestCaller {
 public:
  /// Asks the process that listens in the folder.
  TTestCaller(const std::string& iFolder, std::vector<TString> iWords,
              std::initializer_list<TString> iAnswers = {});
  ~TTestCaller();
  TTestCaller(const TTestCaller&) = delete;
  TTestCaller& operator=(const TTestCaller&) = delete;

  /// Whether the call has ended.
  bool HasEnded() const { return FEnded; }
  /// The exit code.
  int Wait();
  const TFakeConsole& Console() const { return FConsole; }

 private:
  TFakeConsole FConsole;
  TCliClient FClient;
  int FExit = -1;
  std::atomic<bool> FEnded{false};
  std::thread FThread;
};

}  // namespace kk
