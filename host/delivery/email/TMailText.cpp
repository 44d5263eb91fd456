#include "host/delivery/email/TMailText.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace kk {

namespace {

constexpr char16_t cLineSeparator = 0x2028;
constexpr char16_t cParagraphSeparator = 0x2029;
// 52 characters of base64 and 12 around them: with "Subject: " before it, it fits in 76.
constexpr size_t cBytesOfWord = 39;
constexpr size_t cMaxPlain = 60;
constexpr size_t cMaxLine = 76;

bool IsSeparator(char16_t c) { return c == cLineSeparator || c == cParagraphSeparator; }

std::string Base64(std::string_view iBytes) {
  static constexpr char cDigits[] =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string result;
  for (size_t i = 0; i < iBytes.size(); i += 3) {
    const std::string_view part = iBytes.substr(i, 3);
    unsigned bits = 0;
    for (size_t k = 0; k < 3; ++k) {
      bits = bits << 8 | (k < part.size() ? static_cast<unsigned char>(part[k]) : 0u);
    }
    for (size_t k = 0; k < 4; ++k) {
      result += k <= part.size() ? cDigits[bits >> (18 - 6 * k) & 0x3F] : '=';
    }
  }
  return result;
}

// Words begin and end between characters, so that each can be decoded alone.
std::string EncodedWords(std::string_view iUtf8) {
  const auto isInside = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
  std::string result;
  while (!iUtf8.empty()) {
    size_t count = std::min(cBytesOfWord, iUtf8.size());
    while (count < iUtf8.size() && isInside(iUtf8[count])) --count;
    if (!result.empty()) result += "\r\n ";
    result += "=?UTF-8?B?" + Base64(iUtf8.substr(0, count)) + "?=";
    iUtf8.remove_prefix(count);
  }
  return result;
}

template <class IsPlain>
std::string Encoded(TStringView iText, IsPlain iIsPlain) {
  const std::string text = ToUtf8(Trim(HeaderText(iText)));
  const bool plain = text.size() <= cMaxPlain && std::all_of(text.begin(), text.end(), iIsPlain) &&
                     text.find("=?") == std::string::npos;
  return plain ? text : EncodedWords(text);
}

// LF alone between lines, and nothing that steers a terminal.
TString BodyText(TStringView iText) {
  TString text = ReplaceAll(iText, u"\r\n", u"\n");
  std::replace_if(
      text.begin(), text.end(), [](char16_t c) { return c == u'\r' || IsSeparator(c); }, u'\n');
  std::erase_if(text, [](char16_t c) {
    return (c < 0x20 && c != u'\n' && c != u'\t') || (c >= 0x7F && c <= 0x9F);
  });
  if (text.empty() || text.back() != u'\n') text += u'\n';
  return text;
}

std::string Hex(char c) {
  static constexpr char cDigits[] = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  return {'=', cDigits[byte >> 4], cDigits[byte & 0x0F]};
}

// The first character of the rest as it stands in a line. A dot at the beginning of a line could
// end the message, and mailboxes in one file are split at "From ".
std::string Piece(std::string_view iRest, bool iAtStart) {
  const char c = iRest.front();
  const bool atEnd = iRest[1] == '\n';
  if ((c == ' ' || c == '\t') && !atEnd) return {c};
  const bool special = c == '=' || (iAtStart && (c == '.' || iRest.starts_with("From ")));
  return c > ' ' && c <= '~' && !special ? std::string{c} : Hex(c);
}

}  // namespace

TString HeaderText(TStringView iText) {
  TString text = WithoutControlCharacters(iText);
  std::erase_if(text, IsSeparator);
  return text;
}

std::string EncodedText(TStringView iText) {
  return Encoded(iText, [](char c) { return c >= ' ' && c <= '~'; });
}

std::string EncodedName(TStringView iName) {
  return Encoded(iName, [](char c) {
    return c == ' ' || (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
  });
}

std::string QuotedPrintable(TStringView iText) {
  const std::string text = ToUtf8(BodyText(iText));
  std::string result;
  size_t column = 0;
  for (std::string_view rest = text; !rest.empty(); rest.remove_prefix(1)) {
    if (rest.front() == '\n') {
      result += "\r\n";
      column = 0;
      continue;
    }
    std::string piece = Piece(rest, column == 0);
    // A line that goes on ends with "=".
    if (column + piece.size() + (rest[1] == '\n' ? 0 : 1) > cMaxLine) {
      result += "=\r\n";
      column = 0;
      piece = Piece(rest, true);
    }
    result += piece;
    column += piece.size();
  }
  return result;
}

std::string MailDate(TDateTime iLocal, int64_t iUtcMs) {
  static constexpr std::array<const char*, 7> cDays = {"Sat", "Sun", "Mon", "Tue",
                                                       "Wed", "Thu", "Fri"};
  static constexpr std::array<const char*, 12> cMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                          "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const int64_t epoch = EncodeDateTime({1970, 1, 1, 0, 0, 0, 0}).Ms();
  const int64_t zone = (iLocal.Ms() - epoch - iUtcMs) / TDateTime::cMsPerMinute;
  const int64_t days = iLocal.Ms() / TDateTime::cMsPerDay;  // day 0 was a Saturday
  const TDateParts parts = DecodeDateTime(iLocal);
  char text[64];
  std::snprintf(text, sizeof text, "%s, %d %s %04d %02d:%02d:%02d %c%02d%02d",
                cDays[static_cast<size_t>(days % 7)], parts.Day,
                cMonths[static_cast<size_t>(parts.Month - 1)], parts.Year, parts.Hour, parts.Minute,
                parts.Second, zone < 0 ? '-' : '+', static_cast<int>(std::abs(zone) / 60),
                static_cast<int>(std::abs(zone) % 60));
  return text;
}

}  // namespace kk
