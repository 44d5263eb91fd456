#pragma once

#include <string>
#include <vector>

namespace kk {

/// The program from its start to its end.
struct TCliProgram {
  /// Takes the arguments behind the program's name, in UTF-8, and answers the exit code of
  /// TCliExit. Everything that goes wrong ends in one clear line on stderr.
  static int Main(const std::vector<std::string>& iArguments);
};

}  // namespace kk
