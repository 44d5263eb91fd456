#pragma once

#include <string>
#include <vector>

#include "apps/desktop/shell/TDesktopArguments.h"

namespace kk {

/// The program from its start to its end.
struct TDesktopProgram {
  /// How long a second start waits for the first one's answer.
  static constexpr int cAnswerMs = 10000;

  /// Takes the arguments behind the program's name, in UTF-8, and answers the exit code of
  /// TDesktopExit. What goes wrong before there is a window ends in one clear line on stderr.
  static int Main(const std::vector<std::string>& iArguments);

  /// A second start: hands the call over to the process that has the data.
  static TDesktopExit HandOver(const std::vector<TString>& iWords, TStringView iBusy);
};

}  // namespace kk
