#pragma once

#include <map>
#include <string>
#include <vector>

namespace kk {

/// How a run of the program ended.
struct TCliOutcome {
  int Exit = -1;  ///< 128 and the signal if one ended it
  std::string Out;
  std::string Error;
};

/// One run of the built kaufkobolde-cli in a process of its own. What it writes is collected as it
/// comes, and waits are waits on its pipes with a deadline that fails the test.
class TCliProcess {
 public:
  struct TOptions {
    /// Somebody can answer: stdin and stderr are a terminal, and what goes to it is in Error.
    bool Terminal = false;
    std::map<std::string, std::string> Environment;
    /// Where stdout goes; a pipe if empty.
    std::string OutFile;
    /// Where it starts; this process's own if empty.
    std::string Folder;
    /// stdout is not open at all.
    bool Closed = false;
  };

  TCliProcess(const std::vector<std::string>& iArguments, const TOptions& iOptions);
  explicit TCliProcess(const std::vector<std::string>& iArguments)
      : TCliProcess(iArguments, TOptions()) {}
  /// Kills it if it still runs.
  ~TCliProcess();
  TCliProcess(const TCliProcess&) = delete;
  TCliProcess& operator=(const TCliProcess&) = delete;

  /// On a terminal: types the text.
  void Type(const std::string& iText);
  void Signal(int iSignal);
  /// Returns when the text has come on one of the two outputs; false if the program ended first.
  bool WaitForOutput(const std::string& iText);
  /// Returns at its end.
  TCliOutcome Wait();

 private:
  [[noreturn]] static void Execute(const std::vector<std::string>& iArguments,
                                   const TOptions& iOptions, int iIn, int iOut, int iError);
  /// Reads what is there; false when both outputs are closed.
  bool Pump();
  void Reap();

  int FProcess = -1;
  int FTerminal = -1;  ///< our side
  int FOut = -1;
  int FError = -1;
  TCliOutcome FOutcome;
};

/// Runs it to its end.
TCliOutcome RunCli(const std::vector<std::string>& iArguments,
                   const TCliProcess::TOptions& iOptions = {});

}  // namespace kk
