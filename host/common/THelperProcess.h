#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>
#include <vector>

#include "host/base/TString.h"

namespace kk {

/// A program that does one thing for this one, in a process of its own, so that it can take down or
/// hold up nobody else. It is over when the object goes. One thread.
class THelperProcess {
 public:
  THelperProcess() = default;
  /// Kills the program if it still runs, and takes its end.
  ~THelperProcess();
  THelperProcess(const THelperProcess&) = delete;
  THelperProcess& operator=(const THelperProcess&) = delete;

  /// Where the program of this name lies beside the running one.
  static std::string ProgramBeside(std::string_view iName);

  /// The files of this process that it takes over; -1 for nothing.
  struct TFiles {
    int Input = -1;
    int Output = -1;
    int Errors = -1;
  };
  /// Starts it, with one argument, in a session of its own and with no other file than these; it
  /// gets "NAME=value" on top of this process's environment. Answers the number of the operating
  /// system for what went wrong, or 0. Once.
  int Start(std::string iProgram, std::string iArgument, const TFiles& iFiles,
            std::vector<std::string> iEnvironment = {});

  /// Can be read from when it has ended; -1 where the machine refuses such a handle, which errno
  /// explains behind Start.
  int Handle() const { return FHandle; }

  enum class TEnd { Runs, Ended, Vanished };
  /// Takes its end, as of waitpid, if it has come or if iWaits. After that there is none to take.
  TEnd TakeEnd(int& oStatus, bool iWaits);

  /// What stands behind the last of these marks in what it has told, up to the end of the line: the
  /// libraries beneath it may have written before. Without control characters; empty if there is no
  /// mark.
  static TString LastLine(std::string_view iTold, std::string_view iMark);

 private:
  pid_t FProcess = -1;
  int FHandle = -1;
};

}  // namespace kk
