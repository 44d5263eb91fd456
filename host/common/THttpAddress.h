#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kk {

/// An address of http or https, taken apart by the parser that also makes the requests, so that
/// what is checked here is what is asked.
struct THttpAddress {
  /// The whole in normal form: no dots in the path, blanks and umlauts escaped.
  std::string Text;
  /// "http" or "https".
  std::string Scheme;
  /// An IPv6 address stands in brackets.
  std::string Host;
  /// Begins with a slash.
  std::string Path;
  /// Behind the "?", empty for none.
  std::string Query;

  /// Empty for any other text: another scheme, no host, control characters, more than 2048 bytes.
  /// User, password and fragment have no place in an address here: they are refused, too.
  static std::optional<THttpAddress> Parse(std::string_view iText);

  /// True if the host is this machine itself: "localhost", 127.0.0.0/8 or ::1.
  bool IsLoopback() const;
  /// Whether a password may go there: nobody can listen.
  bool IsSafeForSecrets() const { return Scheme == "https" || IsLoopback(); }
};

}  // namespace kk
