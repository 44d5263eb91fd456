#pragma once

#include "host/base/Exception.h"

namespace kk {

/// How the program ends, for scripts.
enum class TCliExit { ceDone = 0, ceFailed = 1, ceUsage = 2 };

/// The call itself is wrong: a command, an option, a name that isn't there. The text is German; the
/// hint says what would be right, line by line.
class ECliUsage : public Exception {
 public:
  ECliUsage(TStringView iMessage, TStringView iHint) : Exception(iMessage), FHint(iHint) {}
  const TString& Hint() const { return FHint; }

 private:
  TString FHint;
};

}  // namespace kk
