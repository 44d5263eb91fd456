#pragma once

#include <map>
#include <string>
#include <vector>

namespace kk {

/// A program that a test needs beside it, a server as a rule: started, talked to by its output,
/// stopped. It dies with the test, and also when the test's process is killed.
class TServerProcess {
 public:
  /// iArguments: the program and its arguments; a program without a slash is looked for in PATH.
  /// iEnvironment comes on top of the test's own. What it writes on stdout and stderr is collected.
  /// A program that can't be started fails the test.
  explicit TServerProcess(const std::vector<std::string>& iArguments,
                          const std::map<std::string, std::string>& iEnvironment = {});
  /// Kills it if it still runs.
  ~TServerProcess();
  TServerProcess(const TServerProcess&) = delete;
  TServerProcess& operator=(const TServerProcess&) = delete;

  /// A Python script of the tests (its path below tests/), run by the system's Python, unbuffered.
  static std::vector<std::string> Python(const std::string& iScript,
                                         const std::vector<std::string>& iArguments = {});

  /// Returns the first line, of those not read yet, that begins with the text, without its end; the
  /// lines before it are passed over. If the program ends first, or after iSeconds, the test fails
  /// and the answer is empty.
  std::string WaitForLine(const std::string& iBeginning, int iSeconds = 30);
  /// All that it has written so far.
  std::string Output();

  /// SIGSTOP freezes it, SIGCONT lets it go on.
  void Signal(int iSignal);
  /// Asks it to end (SIGTERM), waits, and kills it after some seconds. Answers its exit code, or
  /// 128 and the signal.
  int Stop();
  /// Waits for its own end; the test fails after iSeconds.
  int Wait(int iSeconds = 30);
  int Pid() const { return FProcess; }

 private:
  /// Reads what comes within the time; false at the end of the output.
  bool Pump(int iMilliseconds);
  int Reap();

  int FProcess = -1;
  int FOutput = -1;
  std::string FText;
  size_t FRead = 0;
  int FExit = -1;
};

/// A port of loopback that is free at this moment, for servers that can't choose one themselves.
int FreePort();

}  // namespace kk
