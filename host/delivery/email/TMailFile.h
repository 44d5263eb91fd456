#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/delivery/email/TMailMessage.h"

namespace kk {

/// A message of the outbox as it lies on the disk: lines of "name: value" in a fixed order, an
/// empty line, and the message. Times are milliseconds since 1970, UTC.
struct TMailFile {
  TMailMessage Message;
  int64_t FirstMs = 0;  ///< the first attempt
  int64_t NextMs = 0;   ///< the next attempt
  int Attempts = 0;     ///< made so far, 1 at least
  TString Reason;       ///< why the last one failed; one line

  std::string Write() const;
  /// Raises Exception for anything that Write did not make.
  static TMailFile Read(std::string_view iBytes);
};

}  // namespace kk
