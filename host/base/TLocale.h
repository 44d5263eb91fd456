#pragma once

#include <string>

namespace kk {

/// The locale by which texts are sorted and dates are written: the user's (LC_ALL, LC_TIME, LANG),
/// German where none is set ("C" and "POSIX" count as none). An ICU name such as "de_DE".
const std::string& LocaleName();

/// Pins the locale; tests do so. An empty name goes back to the user's.
void SetLocaleName(const std::string& iName);

}  // namespace kk
