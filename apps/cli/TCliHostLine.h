#pragma once

#include "apps/cli/TCliArguments.h"
#include "apps/cli/TCliContext.h"

namespace kk {

/// The host's own command line, "-rem" and "-remimport": hands it to every plug-in as it stands and
/// tells what came of it.
class TCliHostLine {
 public:
  explicit TCliHostLine(TCliContext& ioContext) : FContext(ioContext) {}
  /// False if nothing came into the list, or the user has interrupted.
  bool Run(const TCliArguments& iCall);

 private:
  void TellWhatIsWrong(TStringView iLine);

  TCliContext& FContext;
};

}  // namespace kk
