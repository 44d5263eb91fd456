#include "host/delivery/email/TMailAddress.h"

#include <algorithm>
#include <string_view>

#include "host/base/Exception.h"
#include "host/delivery/email/TMailText.h"

namespace kk {

namespace {

constexpr size_t cMaxAddress = 254;
constexpr size_t cMaxLocal = 64;
constexpr size_t cMaxLabel = 63;
constexpr size_t cMaxShown = 80;

bool IsLetterOrDigit(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// The characters of an atom, RFC 5322, 3.2.3.
bool IsAtomChar(char c) {
  return IsLetterOrDigit(c) ||
         std::string_view("!#$%&'*+-/=?^_`{|}~").find(c) != std::string_view::npos;
}

bool IsLabelChar(char c) { return IsLetterOrDigit(c) || c == '-'; }

bool IsLabel(std::string_view iText) {
  return iText.size() <= cMaxLabel && iText.front() != '-' && iText.back() != '-';
}

// One or more pieces of these characters with single dots between them.
template <class IsChar>
bool IsDotted(std::string_view iText, IsChar iIsChar) {
  bool dot = true;
  for (const char c : iText) {
    if (c == '.' ? dot : !iIsChar(c)) return false;
    dot = c == '.';
  }
  return !dot;
}

bool IsDomain(std::string_view iText) {
  if (!IsDotted(iText, IsLabelChar)) return false;
  for (size_t from = 0; from < iText.size();) {
    const size_t end = std::min(iText.find('.', from), iText.size());
    if (!IsLabel(iText.substr(from, end - from))) return false;
    from = end + 1;
  }
  return true;
}

[[noreturn]] void Refuse(TStringView iFormat, TStringView iAddress) {
  throw Exception(Format(iFormat, {ShortenedText(iAddress, cMaxShown)}));
}

}  // namespace

std::string TMailAddress::Check(TStringView iText) {
  const TString text = Trim(HeaderText(iText));
  if (text.empty()) throw Exception(u"Es ist keine E-Mail-Adresse angegeben");
  const size_t at = text.find(u'@');
  const auto isForeign = [](char16_t c) { return c > 0x7E; };
  const auto domain = text.begin() + static_cast<ptrdiff_t>(std::min(at, text.size()));
  if (std::any_of(text.begin(), domain, isForeign)) {
    Refuse(
        u"Die Adresse \"%s\" enthält vor dem @ Umlaute oder andere besondere Zeichen, die nicht "
        u"jeder Postausgang annimmt",
        text);
  }
  if (std::any_of(domain, text.end(), isForeign)) {
    Refuse(
        u"Die Adresse \"%s\" enthält nach dem @ Umlaute oder andere besondere Zeichen. Bitte "
        u"geben Sie diesen Teil in der Form an, die mit \"xn--\" beginnt",
        text);
  }
  const std::string address = ToUtf8(text);
  const bool isAddress = at <= cMaxLocal && address.size() <= cMaxAddress &&
                         IsDotted(std::string_view(address).substr(0, at), IsAtomChar) &&
                         IsDomain(std::string_view(address).substr(at + 1));
  if (!isAddress) Refuse(u"\"%s\" ist nicht eine einzelne, gültige E-Mail-Adresse", text);
  return address;
}

std::string TMailAddress::DomainOf(const std::string& iAddress) {
  return iAddress.substr(iAddress.find('@') + 1);
}

}  // namespace kk
