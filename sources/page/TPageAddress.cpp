#include "sources/page/TPageAddress.h"

#include <curl/curl.h>
#include <unicode/uidna.h>

#include <algorithm>
#include <array>
#include <memory>

namespace kk {

namespace {

constexpr std::string_view cVisitParameters[] = {"gclid",   "gbraid", "wbraid", "fbclid",
                                                 "msclkid", "dclid",  "yclid",  "mc_eid"};

using TUrl = std::unique_ptr<CURLU, decltype(&curl_url_cleanup)>;

TUrl NewUrl() { return {curl_url(), &curl_url_cleanup}; }

std::string Part(CURLU* iUrl, CURLUPart iPart, unsigned iFlags) {
  char* text = nullptr;
  if (curl_url_get(iUrl, iPart, &text, iFlags) != CURLUE_OK) return {};
  const std::unique_ptr<char, decltype(&curl_free)> owned(text, &curl_free);
  return text;
}

bool IsAlpha(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  const char lower = static_cast<char>(c | 0x20);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// Escapes of letters, digits, "-._~" say nothing and go; the others are written in upper case. What
// has no place in an address is escaped.
std::string NormalizeEscapes(std::string_view iText) {
  constexpr char cDigits[] = "0123456789ABCDEF";
  std::string text;
  const auto escape = [&](unsigned char c) {
    text += '%';
    text += cDigits[c >> 4];
    text += cDigits[c & 15];
  };
  for (size_t i = 0; i < iText.size(); ++i) {
    const auto c = static_cast<unsigned char>(iText[i]);
    if (c == '%' && i + 2 < iText.size() && HexValue(iText[i + 1]) >= 0 &&
        HexValue(iText[i + 2]) >= 0) {
      const auto value =
          static_cast<unsigned char>(HexValue(iText[i + 1]) * 16 + HexValue(iText[i + 2]));
      const char meant = static_cast<char>(value);
      const bool needless = IsAlpha(meant) || (meant >= '0' && meant <= '9') || meant == '-' ||
                            meant == '.' || meant == '_' || meant == '~';
      if (needless) {
        text += meant;
      } else {
        escape(value);
      }
      i += 2;
    } else if (c <= 0x20 || c >= 0x7F ||
               std::string_view("\"<>\\^`{|}").find(iText[i]) != std::string_view::npos) {
      escape(c);
    } else {
      text += iText[i];
    }
  }
  return text;
}

// The ASCII form of a host (UTS #46), in lower case; empty if it has none.
std::string AsciiHost(std::string iHost) {
  const bool isAscii = std::all_of(iHost.begin(), iHost.end(), [](char c) { return c > 0; });
  if (isAscii) {
    for (char& c : iHost) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    return iHost;
  }
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<UIDNA, decltype(&uidna_close)> idna(
      uidna_openUTS46(UIDNA_NONTRANSITIONAL_TO_ASCII | UIDNA_CHECK_BIDI, &status), &uidna_close);
  UIDNAInfo info = UIDNA_INFO_INITIALIZER;
  std::array<char, 256> ascii{};
  const int32_t length =
      uidna_nameToASCII_UTF8(idna.get(), iHost.data(), static_cast<int32_t>(iHost.size()),
                             ascii.data(), static_cast<int32_t>(ascii.size()), &info, &status);
  if (U_FAILURE(status) || info.errors != 0) return {};
  return {ascii.data(), static_cast<size_t>(length)};
}

bool OnlyTellsTheVisit(std::string_view iParameter) {
  const std::string_view name = iParameter.substr(0, iParameter.find('='));
  if (name.starts_with("utm_")) return true;
  for (const std::string_view visit : cVisitParameters) {
    if (name == visit) return true;
  }
  return false;
}

std::string KeyOf(const std::string& iText) {
  const size_t query = iText.find('?');
  if (query == std::string::npos) return iText;
  std::string key = iText.substr(0, query);
  std::string_view rest = std::string_view(iText).substr(query + 1);
  char separator = '?';
  while (!rest.empty()) {
    const size_t end = std::min(rest.find('&'), rest.size());
    const std::string_view parameter = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (parameter.empty() || OnlyTellsTheVisit(parameter)) continue;
    key += separator;
    key += parameter;
    separator = '&';
  }
  return key;
}

// The address that the handle holds, normalised; empty if it isn't one of http or https.
std::string Normalized(CURLU* iUrl) {
  curl_url_set(iUrl, CURLUPART_FRAGMENT, nullptr, 0);
  curl_url_set(iUrl, CURLUPART_USER, nullptr, 0);
  curl_url_set(iUrl, CURLUPART_PASSWORD, nullptr, 0);
  const std::string scheme = Part(iUrl, CURLUPART_SCHEME, 0);
  const std::string host = AsciiHost(Part(iUrl, CURLUPART_HOST, 0));
  if ((scheme != "http" && scheme != "https") || host.empty()) return {};
  std::string text = scheme + "://" + host;
  const std::string port = Part(iUrl, CURLUPART_PORT, CURLU_NO_DEFAULT_PORT);
  if (!port.empty()) text += ":" + port;
  const std::string path = NormalizeEscapes(Part(iUrl, CURLUPART_PATH, 0));
  text += path.empty() ? "/" : path;
  const std::string query = NormalizeEscapes(Part(iUrl, CURLUPART_QUERY, 0));
  if (!query.empty()) text += "?" + query;
  return text.size() <= TPageAddress::cMaxLength ? text : std::string();
}

// Without blanks around it, nor line breaks and tabs within, as the WHATWG's URL standard has it.
std::string Cleaned(std::string_view iText) {
  std::string text;
  for (const char c : iText) {
    if (c == '\t' || c == '\r' || c == '\n' || c == '\0') continue;
    if (c == ' ' && text.empty()) continue;
    text += c;
  }
  while (!text.empty() && text.back() == ' ') text.pop_back();
  return text;
}

constexpr unsigned cParseFlags = CURLU_URLENCODE;

}  // namespace

TPageAddress::TPageAddress(std::string iText) : FText(std::move(iText)), FKey(KeyOf(FText)) {}

std::optional<TPageAddress> TPageAddress::Parse(std::string_view iText) {
  if (iText.size() > cMaxLength) return std::nullopt;
  const TUrl url = NewUrl();
  if (curl_url_set(url.get(), CURLUPART_URL, Cleaned(iText).c_str(), cParseFlags) != CURLUE_OK) {
    return std::nullopt;
  }
  std::string text = Normalized(url.get());
  if (text.empty()) return std::nullopt;
  return TPageAddress(std::move(text));
}

std::optional<TPageAddress> TPageAddress::FromNormalized(std::string_view iText) {
  const bool hasScheme = iText.starts_with("http://") || iText.starts_with("https://");
  const bool isPlain =
      std::all_of(iText.begin(), iText.end(), [](char c) { return c > ' ' && c < '\x7F'; });
  if (!hasScheme || !isPlain || iText.size() > cMaxLength) return std::nullopt;
  return TPageAddress(std::string(iText));
}

std::optional<TPageAddress> TPageAddress::Resolve(std::string_view iReference) const {
  const std::string reference = Cleaned(iReference);
  if (reference.empty() || reference.size() > cMaxLength) return std::nullopt;
  if (reference[0] == '#') return *this;  // libcurl resolves it to the folder
  const TUrl url = NewUrl();
  if (curl_url_set(url.get(), CURLUPART_URL, FText.c_str(), cParseFlags) != CURLUE_OK ||
      curl_url_set(url.get(), CURLUPART_URL, reference.c_str(), cParseFlags) != CURLUE_OK) {
    return std::nullopt;
  }
  std::string text = Normalized(url.get());
  if (text.empty()) return std::nullopt;
  return TPageAddress(std::move(text));
}

std::string_view TPageAddress::KeyWithoutQuery() const {
  return std::string_view(FKey).substr(0, FKey.find('?'));
}

}  // namespace kk
