#pragma once

#include <vector>

#include "apps/desktop/skin/TTheme.h"
#include "host/base/Exception.h"

namespace kk {

/// How the program ends, for scripts.
enum class TDesktopExit { deDone = 0, deFailed = 1, deUsage = 2, deNoScreen = 3 };

/// The call itself is wrong; the text is German.
class EDesktopUsage : public Exception {
 public:
  using Exception::Exception;
};

/// There is no screen to work on; the text is German.
class EDesktopNoScreen : public Exception {
 public:
  using Exception::Exception;
};

/// A call of the program, taken apart.
struct TDesktopArguments {
  TString Data;  ///< empty for the user's own folders, else with its full path
  bool Verbose = false;
  bool Help = false;
  bool Version = false;
  TThemeChoice Theme = TThemeChoice::tcSystem;

  /// Addresses and files to begin with. A file is there with its full path.
  std::vector<TString> Words;
  /// "-rem" and "-remimport" with all that follows, as it stands. A file behind "-remimport" has
  /// its full path.
  std::vector<TString> HostLine;

  /// Takes the arguments behind the program's name. What only the toolkit's session management
  /// gives ("-session ID") is passed over. Raises EDesktopUsage.
  static TDesktopArguments Parse(const std::vector<TString>& iArguments);
  /// Arguments that parse to the same, for a process that has this one's data: without --data.
  std::vector<TString> ToWords() const;
  /// What "--help" prints.
  static TString HelpPage();
};

}  // namespace kk
