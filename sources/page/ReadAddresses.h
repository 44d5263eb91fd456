#pragma once

#include <vector>

#include "sources/page/TPageAddress.h"

namespace kk {

/// One line of what a user types, pastes or drops, if it says anything.
struct TAddressLine {
  /// As it stands there, without blanks around it.
  TString Text;
  /// The addresses in it; none for a line that can't be understood.
  std::vector<TPageAddress> Addresses;
};

/// Finds the addresses in a text, one or more a line. Kind to what comes out of mails, lists and
/// browsers: words around an address, brackets and quotes, a missing scheme (https then; http for
/// this machine and for numbers), titles of several words above or below an address with a
/// scheme, lines that are titles and addresses in turns, comments of dropped lists ("#"). A page
/// that was named before is passed over. Lines that say nothing, such as titles, are left out.
std::vector<TAddressLine> ReadAddresses(TStringView iText);

}  // namespace kk
