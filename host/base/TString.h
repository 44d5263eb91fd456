#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace kk {

/// Text is UTF-16 everywhere. UTF-8 exists at the edges alone: files, network, terminal.
using TString = std::u16string;
using TStringView = std::u16string_view;

/// UTF-8 to text. Bytes that are not UTF-8 become U+FFFD; nothing fails.
TString FromUtf8(std::string_view iBytes);

/// Text to UTF-8. An unpaired surrogate becomes U+FFFD; nothing fails.
std::string ToUtf8(TStringView iText);

/// One argument of Format: a text or a whole number.
class TFormatArg {
 public:
  TFormatArg(TStringView iText) : FText(iText) {}            // NOLINT: an argument list reads
  TFormatArg(const TString& iText) : FText(iText) {}         // NOLINT: better without casts
  TFormatArg(const char16_t* iText) : FText(iText) {}        // NOLINT
  TFormatArg(int iNumber) : TFormatArg(int64_t{iNumber}) {}  // NOLINT
  TFormatArg(int64_t iNumber);                               // NOLINT
  TFormatArg(size_t iNumber) : TFormatArg(static_cast<int64_t>(iNumber)) {}  // NOLINT

  const TString& Text() const { return FText; }

 private:
  TString FText;
};

/// Fills "%s" and "%d" in order; "%%" is a percent sign. An argument too few leaves its mark as it
/// stands, an argument too many is passed over.
TString Format(TStringView iFormat, std::initializer_list<TFormatArg> iArgs);

/// Without blanks and control characters (all up to U+0020) at both ends.
TString Trim(TStringView iText);

/// The text with every occurrence of a piece replaced.
TString ReplaceAll(TStringView iText, TStringView iOld, TStringView iNew);

/// Every line break (CR LF, CR, LF) replaced by one blank and the ends trimmed: the message of an
/// exception as it enters a log line.
TString ToSingleLine(TStringView iText);

/// The pieces between the separators. An empty text has no pieces; "a|" has two.
std::vector<TString> Split(TStringView iText, char16_t iSeparator);

/// The letter without its case if it is one of ASCII's; any other character as it is.
constexpr char16_t AsciiLower(char16_t iChar) {
  return iChar >= u'A' && iChar <= u'Z' ? static_cast<char16_t>(iChar + (u'a' - u'A')) : iChar;
}

/// Equal without regard to case (Unicode case folding).
bool SameText(TStringView iA, TStringView iB);

/// True if the text begins with the prefix, case counts.
bool StartsWith(TStringView iText, TStringView iPrefix);

/// Less than, equal to or greater than 0, without regard to case, by the code points of the folded
/// texts: an order that is the same on every machine, for look-up lists.
int CompareText(TStringView iA, TStringView iB);

/// Less than, equal to or greater than 0, without regard to case, in the order in which the user's
/// language sorts (ICU collation). For everything that the user sees sorted.
int CompareLocaleText(TStringView iA, TStringView iB);

/// Bytes whose order is that of CompareLocaleText; for sorting many texts.
std::string LocaleSortKey(TStringView iText);

/// The decimal text of a number.
TString IntToStr(int64_t iNumber);

/// True if the whole text, blanks at its ends aside, is a decimal number that fits.
bool TryStrToInt(TStringView iText, int64_t& oNumber);

/// As above; raises EConvertError for any other text.
int64_t StrToInt(TStringView iText);

/// Without control characters (U+0000 to U+001F, U+007F to U+009F): what may go into a header, a
/// command or one line on a terminal.
TString WithoutControlCharacters(TStringView iText);

/// The beginning of a text, with "…" behind it if the text is longer than so many UTF-16 units. No
/// character is cut in two.
TString ShortenedText(TStringView iText, size_t iMaxLength);

}  // namespace kk
