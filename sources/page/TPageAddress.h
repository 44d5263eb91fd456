#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/base/TString.h"

namespace kk {

/// The address of a page, normalised (RFC 3986, section 6.2): scheme and host in lower case (a host
/// outside ASCII in its ASCII form), no default port, no dot segments, escapes in upper case and
/// only where they are needed, no fragment, no user name. ASCII throughout.
class TPageAddress {
 public:
  static constexpr size_t cMaxLength = 8192;

  TPageAddress() = default;
  /// Nothing for what is no address of http or https. Blanks around it are passed over.
  static std::optional<TPageAddress> Parse(std::string_view iText);
  /// Takes back what Text gave, without the work of normalising it again; for streams with many of
  /// them. Nothing for what can't have come from there.
  static std::optional<TPageAddress> FromNormalized(std::string_view iText);
  /// The same as Parse for a reference on this page, such as "/p/1" or "//cdn/x.jpg".
  std::optional<TPageAddress> Resolve(std::string_view iReference) const;

  /// What is fetched and shown.
  const std::string& Text() const { return FText; }
  /// What decides whether two addresses mean the same page: the text without the parameters that
  /// only say where a visitor came from (utm_source, gclid, ...).
  const std::string& Key() const { return FKey; }
  /// The key without its whole query.
  std::string_view KeyWithoutQuery() const;
  bool IsEmpty() const { return FText.empty(); }

  friend bool operator==(const TPageAddress& iA, const TPageAddress& iB) {
    return iA.FKey == iB.FKey;
  }

 private:
  explicit TPageAddress(std::string iText);

  std::string FText;
  std::string FKey;
};

}  // namespace kk
