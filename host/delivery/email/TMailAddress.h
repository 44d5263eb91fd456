#pragma once

#include <string>

#include "host/base/TString.h"

namespace kk {

/// The address of one mailbox, "local@domain", as it goes to a mail server: ASCII alone, the local
/// part a dot-atom of up to 64 characters, the domain names of letters, digits and hyphens, 254
/// characters in all (RFC 5321, 4.1.2 and 4.5.3.1). Quoted local parts, domains that are numbers in
/// brackets, names and angle brackets around the address, and lists are not taken.
struct TMailAddress {
  /// Control characters, line and paragraph separators are taken out and blanks cut off at both
  /// ends first. Raises Exception with the reason, in German, for anything but one address.
  static std::string Check(TStringView iText);

  /// The domain of an address that Check made.
  static std::string DomainOf(const std::string& iAddress);
};

}  // namespace kk
