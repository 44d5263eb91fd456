#pragma once

#include <array>
#include <cstdint>
#include <functional>

#include "host/base/TString.h"

namespace kk {

/// A 16-byte identity. The bytes stand in the order in which the text shows them (RFC 9562).
struct TGuid {
  std::array<uint8_t, 16> Bytes{};

  friend constexpr bool operator==(const TGuid&, const TGuid&) = default;
  friend constexpr auto operator<=>(const TGuid&, const TGuid&) = default;
};

/// The all-zero id. It marks the category for everything that belongs nowhere else.
inline constexpr TGuid cEmptyGuid{};

/// An id from its text with braces, at compile time; a text that isn't one does not compile.
consteval TGuid GuidLiteral(const char (&iText)[39]) {
  auto digit = [](char c) -> int {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    throw "not a GUID";
  };
  TGuid guid;
  size_t at = 0;
  if (iText[0] != '{' || iText[37] != '}') throw "not a GUID";
  for (int i = 1; i < 37;) {
    if (i == 9 || i == 14 || i == 19 || i == 24) {
      if (iText[i++] != '-') throw "not a GUID";
      continue;
    }
    guid.Bytes[at++] = static_cast<uint8_t>(digit(iText[i]) * 16 + digit(iText[i + 1]));
    i += 2;
  }
  return guid;
}

/// A new random id (RFC 9562, version 4). Any thread.
TGuid NewGuid();

inline bool SameGuid(const TGuid& iA, const TGuid& iB) { return iA == iB; }

/// "{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}": braces and upper-case digits.
TString GUIDToString(const TGuid& iGuid);

/// Takes the text with its braces, digits in either case. False for any other text; the value is
/// the empty id then.
bool TryStringToGuid(TStringView iText, TGuid& oGuid);

/// As above; raises EConvertError for any other text.
TGuid StringToGUID(TStringView iText);

}  // namespace kk

template <>
struct std::hash<kk::TGuid> {
  size_t operator()(const kk::TGuid& iGuid) const noexcept;
};
