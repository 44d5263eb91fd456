#include "host/base/TString.h"

#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <charconv>
#include <memory>

#include "host/base/Exception.h"
#include "host/base/TLocale.h"

namespace kk {

namespace {

// Borrows the characters; the UnicodeString must not outlive the text.
icu::UnicodeString Alias(TStringView iText) {
  return icu::UnicodeString(false, iText.data(), static_cast<int32_t>(iText.size()));
}

bool IsTrimmed(char16_t iChar) { return iChar <= u' '; }

bool IsControl(char16_t iChar) { return iChar < 0x20 || (iChar >= 0x7F && iChar <= 0x9F); }

}  // namespace

TString FromUtf8(std::string_view iBytes) {
  const icu::UnicodeString text = icu::UnicodeString::fromUTF8(
      icu::StringPiece(iBytes.data(), static_cast<int32_t>(iBytes.size())));
  return TString(text.getBuffer(), static_cast<size_t>(text.length()));
}

std::string ToUtf8(TStringView iText) {
  std::string bytes;
  Alias(iText).toUTF8String(bytes);
  return bytes;
}

TFormatArg::TFormatArg(int64_t iNumber) : FText(IntToStr(iNumber)) {}

TString Format(TStringView iFormat, std::initializer_list<TFormatArg> iArgs) {
  TString result;
  auto arg = iArgs.begin();
  for (size_t i = 0; i < iFormat.size(); ++i) {
    const char16_t mark = i + 1 < iFormat.size() ? iFormat[i + 1] : u'\0';
    if (iFormat[i] != u'%' || (mark != u's' && mark != u'd' && mark != u'%')) {
      result += iFormat[i];
    } else if (mark == u'%') {
      result += iFormat[++i];
    } else if (arg == iArgs.end()) {
      result.append(iFormat.substr(i++, 2));
    } else {
      result += (arg++)->Text();
      ++i;
    }
  }
  return result;
}

TString Trim(TStringView iText) {
  while (!iText.empty() && IsTrimmed(iText.front())) iText.remove_prefix(1);
  while (!iText.empty() && IsTrimmed(iText.back())) iText.remove_suffix(1);
  return TString(iText);
}

TString ReplaceAll(TStringView iText, TStringView iOld, TStringView iNew) {
  if (iOld.empty()) return TString(iText);
  TString result;
  for (size_t from = 0;;) {
    const size_t hit = iText.find(iOld, from);
    result.append(iText.substr(from, hit - from));
    if (hit == TStringView::npos) return result;
    result.append(iNew);
    from = hit + iOld.size();
  }
}

TString ToSingleLine(TStringView iText) {
  TString line = ReplaceAll(iText, u"\r\n", u" ");
  std::replace_if(
      line.begin(), line.end(), [](char16_t c) { return c == u'\r' || c == u'\n'; }, u' ');
  return Trim(line);
}

std::vector<TString> Split(TStringView iText, char16_t iSeparator) {
  std::vector<TString> pieces;
  if (iText.empty()) return pieces;
  for (size_t from = 0;;) {
    const size_t hit = iText.find(iSeparator, from);
    pieces.emplace_back(iText.substr(from, hit - from));
    if (hit == TStringView::npos) return pieces;
    from = hit + 1;
  }
}

bool SameText(TStringView iA, TStringView iB) {
  // Most texts differ in one of their first letters, and those of ASCII need no tables.
  const size_t count = std::min(iA.size(), iB.size());
  for (size_t i = 0; i < count && iA[i] < 0x80 && iB[i] < 0x80; ++i) {
    if (AsciiLower(iA[i]) != AsciiLower(iB[i])) return false;
  }
  return iA == iB || Alias(iA).caseCompare(Alias(iB), U_FOLD_CASE_DEFAULT) == 0;
}

bool StartsWith(TStringView iText, TStringView iPrefix) {
  return iText.substr(0, iPrefix.size()) == iPrefix;
}

int CompareText(TStringView iA, TStringView iB) {
  return Alias(iA).caseCompare(Alias(iB), U_FOLD_CASE_DEFAULT | U_COMPARE_CODE_POINT_ORDER);
}

namespace {

// The user's language's; null if there is none.
const icu::Collator* LocaleCollator() {
  static thread_local std::unique_ptr<icu::Collator> collator;
  static thread_local std::string collatorLocale;
  if (!collator || collatorLocale != LocaleName()) {
    UErrorCode status = U_ZERO_ERROR;
    collatorLocale = LocaleName();
    collator.reset(icu::Collator::createInstance(icu::Locale(collatorLocale.c_str()), status));
    if (collator) collator->setStrength(icu::Collator::SECONDARY);
  }
  return collator.get();
}

}  // namespace

int CompareLocaleText(TStringView iA, TStringView iB) {
  const icu::Collator* collator = LocaleCollator();
  if (collator == nullptr) return CompareText(iA, iB);
  UErrorCode status = U_ZERO_ERROR;
  return collator->compare(Alias(iA), Alias(iB), status);
}

std::string LocaleSortKey(TStringView iText) {
  const icu::Collator* collator = LocaleCollator();
  std::string key;
  if (collator == nullptr) return Alias(iText).foldCase().toUTF8String(key);
  key.resize(iText.size() * 2 + 16);
  const auto make = [&] {
    return collator->getSortKey(Alias(iText), reinterpret_cast<uint8_t*>(key.data()),
                                static_cast<int32_t>(key.size()));
  };
  int32_t length = make();
  if (static_cast<size_t>(length) > key.size()) {
    key.resize(static_cast<size_t>(length));
    length = make();
  }
  key.resize(static_cast<size_t>(std::max(length - 1, 0)));  // without its final zero
  return key;
}

TString IntToStr(int64_t iNumber) { return FromUtf8(std::to_string(iNumber)); }

bool TryStrToInt(TStringView iText, int64_t& oNumber) {
  const std::string digits = ToUtf8(Trim(iText));
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), oNumber);
  return error == std::errc() && end == digits.data() + digits.size();
}

int64_t StrToInt(TStringView iText) {
  int64_t number = 0;
  if (!TryStrToInt(iText, number)) {
    throw EConvertError(Format(u"'%s' ist keine gültige ganze Zahl", {iText}));
  }
  return number;
}

TString WithoutControlCharacters(TStringView iText) {
  TString result(iText);
  std::erase_if(result, IsControl);
  return result;
}

TString ShortenedText(TStringView iText, size_t iMaxLength) {
  if (iText.size() <= iMaxLength) return TString(iText);
  TString text(iText.substr(0, iMaxLength));
  if (!text.empty() && text.back() >= 0xD800 && text.back() <= 0xDBFF) text.pop_back();
  return text + u"…";
}

}  // namespace kk
