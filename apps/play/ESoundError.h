#pragma once

#include "host/base/Exception.h"

namespace kk {

/// Why a sound can't be played: a German sentence and the number of the operating system that comes
/// nearest, which is the program's exit code too (all are above 0 and below 128).
class ESoundError : public Exception {
 public:
  ESoundError(int iNumber, TStringView iMessage) : Exception(iMessage), FNumber(iNumber) {}

  int Number() const { return FNumber; }

 private:
  int FNumber;
};

}  // namespace kk
