#pragma once

#include "host/base/TString.h"

namespace kk {

/// What the program knows of itself.
struct TKKDat {
  /// The address from which it mails: that of the settings. Any thread.
  TString SenderAddress() const;
};
TKKDat KKDat();

}  // namespace kk
