#pragma once

#include <string>

#include "host/base/TString.h"

namespace kk {

/// What opens addresses in the user's browser. Main thread.
class IUrlOpener {
 public:
  virtual ~IUrlOpener() = default;
  /// The address is ASCII and of a scheme that OpenURL lets through. False if nothing could be
  /// started.
  virtual bool Open(const std::string& iUrl) = 0;
};
/// Installs an opener, which is borrowed, and answers the one before; null is the machine's
/// (xdg-open, without a shell).
IUrlOpener* SetUrlOpener(IUrlOpener* iOpener);

/// Opens the address in the user's browser, or mail program. Only http, https and mailto; any other
/// address, one with control characters and one beyond 32 KiB is refused with a log line.
/// Characters that have no place in an address (RFC 3986) go percent-encoded. iFlag has no meaning
/// here. Does not wait, raises nothing. Main thread.
void OpenURL(TStringView iUrl, bool iFlag);

}  // namespace kk
