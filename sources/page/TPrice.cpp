#include "sources/page/TPrice.h"

#include <algorithm>
#include <array>
#include <vector>

namespace kk {

namespace {

// Long enough for every price; what is longer is no price.
constexpr size_t cMaxDigits = 18;

std::optional<TPrice> FromDigits(std::string iWhole, std::string iDecimals) {
  while (!iDecimals.empty() && iDecimals.back() == '0') iDecimals.pop_back();
  iWhole.erase(0, std::min(iWhole.find_first_not_of('0'), iWhole.size()));
  const std::string digits = iWhole + iDecimals;
  if (digits.size() > cMaxDigits || iDecimals.size() > TPrice::cMaxScale) return std::nullopt;
  int64_t units = 0;
  for (const char digit : digits) units = units * 10 + (digit - '0');
  return TPrice(units, static_cast<int>(iDecimals.size()));
}

// An amount in pieces: groups of digits, and the separators between them.
struct TAmount {
  std::vector<std::string> Groups;
  std::vector<char> Separators;  // '.', ',', or ' ' for all that can only part thousands
};

// Blanks and apostrophes that part thousands: " ", "'", and in UTF-8 U+00A0, U+2009, U+202F,
// U+2019.
size_t ThousandsMarkLength(std::string_view iText) {
  for (const std::string_view mark :
       {" ", "'", "\xC2\xA0", "\xE2\x80\x89", "\xE2\x80\xAF", "\xE2\x80\x99"}) {
    if (iText.starts_with(mark)) return mark.size();
  }
  return 0;
}

size_t DigitCount(std::string_view iText) {
  return std::min(iText.size(), iText.find_first_not_of("0123456789"));
}

// Reads groups from the first digit on. A separator counts if a digit follows; a mark for
// thousands only before exactly three.
TAmount ReadAmount(std::string_view iText) {
  TAmount amount;
  for (;;) {
    const size_t count = DigitCount(iText);
    amount.Groups.emplace_back(iText.substr(0, count));
    iText.remove_prefix(count);
    if (iText.empty()) return amount;
    if (iText[0] == '.' || iText[0] == ',') {
      if (DigitCount(iText.substr(1)) == 0) return amount;
      amount.Separators.push_back(iText[0]);
      iText.remove_prefix(1);
      continue;
    }
    const size_t mark = ThousandsMarkLength(iText);
    const bool hasGroup = mark > 0 && DigitCount(iText.substr(mark)) == 3 && count <= 3;
    if (!hasGroup || (!amount.Separators.empty() && amount.Separators.back() != ' ')) return amount;
    amount.Separators.push_back(' ');
    iText.remove_prefix(mark);
  }
}

bool AreThousands(const TAmount& iAmount, size_t iGroups) {
  if (iAmount.Groups[0].size() > 3 || iAmount.Groups[0].empty()) return false;
  for (size_t i = 1; i < iGroups; ++i) {
    if (iAmount.Groups[i].size() != 3) return false;
  }
  return true;
}

// Whether the one point or comma of an amount parts thousands rather than decimals.
bool LoneSeparatorPartsThousands(const TAmount& iAmount, std::string_view iCurrency) {
  if (iAmount.Groups[1].size() != 3 || CurrencyDecimals(iCurrency) == 3) return false;
  return iAmount.Groups[0].size() <= 3 && iAmount.Groups[0][0] != '0';
}

// How many groups from the left are whole; nothing if the separators make no sense.
std::optional<size_t> WholeGroups(const TAmount& iAmount, std::string_view iCurrency) {
  const size_t count = iAmount.Groups.size();
  const std::vector<char>& separators = iAmount.Separators;
  if (count == 1) return 1;
  const char last = separators.back();
  const bool onlyOneKind =
      std::all_of(separators.begin(), separators.end(), [&](char c) { return c == last; });
  if (onlyOneKind && last != ' ' && count == 2) {
    return LoneSeparatorPartsThousands(iAmount, iCurrency) ? 2 : 1;
  }
  if (onlyOneKind) return AreThousands(iAmount, count) ? std::optional(count) : std::nullopt;
  // Two kinds: the last one parts the decimals and stands alone, the others are all of one kind.
  const char first = separators.front();
  const bool rest =
      std::all_of(separators.begin(), separators.end() - 1, [&](char c) { return c == first; });
  if (!rest || last == ' ' || !AreThousands(iAmount, count - 1)) return std::nullopt;
  return count - 1;
}

bool SameAscii(std::string_view iA, std::string_view iB) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return std::equal(iA.begin(), iA.end(), iB.begin(), iB.end(),
                    [&](char a, char b) { return lower(a) == lower(b); });
}

struct TCurrencyName {
  std::string_view Name;
  std::string_view Code;
};

// Marks that mean one currency alone; longer ones first, as a search by them must find "US$" before
// anything shorter.
constexpr std::array cCurrencyNames = {
    TCurrencyName{"Euro", "EUR"}, TCurrencyName{"US$", "USD"}, TCurrencyName{"AU$", "AUD"},
    TCurrencyName{"CA$", "CAD"},  TCurrencyName{"NZ$", "NZD"}, TCurrencyName{"HK$", "HKD"},
    TCurrencyName{"SFr.", "CHF"}, TCurrencyName{"SFr", "CHF"}, TCurrencyName{"Fr.", "CHF"},
    TCurrencyName{"R$", "BRL"},   TCurrencyName{"Kč", "CZK"},  TCurrencyName{"zł", "PLN"},
    TCurrencyName{"RMB", "CNY"},  TCurrencyName{"€", "EUR"},   TCurrencyName{"£", "GBP"},
    TCurrencyName{"₪", "ILS"},    TCurrencyName{"₹", "INR"},   TCurrencyName{"₺", "TRY"},
    TCurrencyName{"₽", "RUB"},  TCurrencyName{"₩", "KRW"},   TCurrencyName{"₴", "UAH"},
    TCurrencyName{"₫", "VND"},    TCurrencyName{"฿", "THB"},
};

constexpr std::string_view cNoDecimals[] = {"BIF", "CLP", "DJF", "GNF", "ISK", "JPY",
                                            "KMF", "KRW", "PYG", "RWF", "UGX", "UYI",
                                            "VND", "VUV", "XAF", "XOF", "XPF"};
constexpr std::string_view cThreeDecimals[] = {"BHD", "IQD", "JOD", "KWD", "LYD", "OMR", "TND"};

bool IsCode(std::string_view iText) {
  return iText.size() == 3 && std::all_of(iText.begin(), iText.end(), [](char c) {
           return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
         });
}

std::string_view TrimAscii(std::string_view iText) {
  const size_t begin = iText.find_first_not_of(" \t\r\n");
  if (begin == std::string_view::npos) return {};
  return iText.substr(begin, iText.find_last_not_of(" \t\r\n") - begin + 1);
}

}  // namespace

TPrice::TPrice(int64_t iUnits, int iScale) : FUnits(iUnits), FScale(iScale) {
  while (FScale > 0 && FUnits % 10 == 0) {
    FUnits /= 10;
    --FScale;
  }
}

std::optional<TPrice> TPrice::FromNumber(std::string_view iText) {
  std::string whole(iText.substr(0, DigitCount(iText)));
  iText.remove_prefix(whole.size());
  std::string decimals;
  if (iText.starts_with('.')) {
    decimals = iText.substr(1, DigitCount(iText.substr(1)));
    iText.remove_prefix(1 + decimals.size());
  }
  if (whole.empty() && decimals.empty()) return std::nullopt;
  if (iText.empty()) return FromDigits(whole, decimals);
  if (iText[0] != 'e' && iText[0] != 'E') return std::nullopt;
  iText.remove_prefix(1);
  const bool negative = iText.starts_with('-');
  if (negative || iText.starts_with('+')) iText.remove_prefix(1);
  const size_t count = DigitCount(iText);
  if (count == 0 || count != iText.size() || count > 2) return std::nullopt;
  for (int i = std::stoi(std::string(iText)); i > 0; --i) {
    std::string& from = negative ? whole : decimals;
    const char digit = from.empty() ? '0' : (negative ? from.back() : from.front());
    if (!from.empty()) from.erase(negative ? from.size() - 1 : 0, 1);
    if (negative) {
      decimals.insert(decimals.begin(), digit);
    } else {
      whole.push_back(digit);
    }
  }
  return FromDigits(whole, decimals);
}

std::optional<TPrice> TPrice::FromText(std::string_view iText, std::string_view iCurrency) {
  const size_t begin = iText.find_first_of("0123456789");
  if (begin == std::string_view::npos) return std::nullopt;
  size_t first = begin;
  // ",99" and ".99" have no whole part.
  const bool hasMark = begin > 0 && (iText[begin - 1] == '.' || iText[begin - 1] == ',');
  const bool hasNoWhole = hasMark && (begin == 1 || iText[begin - 2] == ' ');
  if (hasNoWhole) --first;
  if (first > 0 && iText[first - 1] == '-' && (first == 1 || iText[first - 2] == ' ')) {
    return std::nullopt;  // less than nothing is no price
  }
  if (hasNoWhole) {
    const std::string_view decimals = iText.substr(begin, DigitCount(iText.substr(begin)));
    return FromDigits("", std::string(decimals));
  }
  const TAmount amount = ReadAmount(iText.substr(begin));
  const std::optional<size_t> whole = WholeGroups(amount, iCurrency);
  if (!whole) return std::nullopt;
  std::string digits;
  for (size_t i = 0; i < *whole; ++i) digits += amount.Groups[i];
  return FromDigits(digits, *whole < amount.Groups.size() ? amount.Groups.back() : std::string());
}

double TPrice::ToDouble() const {
  double value = static_cast<double>(FUnits);
  for (int i = 0; i < FScale; ++i) value /= 10;
  return value;
}

std::string TPrice::ToNumber() const {
  std::string digits = std::to_string(FUnits);
  if (FScale == 0) return digits;
  const auto scale = static_cast<size_t>(FScale);
  if (digits.size() <= scale) digits.insert(0, scale + 1 - digits.size(), '0');
  digits.insert(digits.size() - scale, 1, '.');
  return digits;
}

TString TPrice::ToDisplay(TStringView iCurrency) const {
  const std::string number = ToNumber();
  const size_t point = std::min(number.find('.'), number.size());
  std::string whole = number.substr(0, point);
  std::string decimals = point < number.size() ? number.substr(point + 1) : std::string();
  for (size_t i = whole.size(); i > 3; i -= 3) whole.insert(i - 3, 1, '.');
  const bool wholeOnly = iCurrency.empty() && decimals.empty();
  const auto places = static_cast<size_t>(wholeOnly ? 0 : CurrencyDecimals(ToUtf8(iCurrency)));
  if (decimals.size() < places) decimals.append(places - decimals.size(), '0');
  TString text = FromUtf8(whole);
  if (!decimals.empty()) text += u"," + FromUtf8(decimals);
  if (!iCurrency.empty()) text += u" " + TString(iCurrency);
  return text;
}

bool operator<(const TPrice& iA, const TPrice& iB) {
  // The whole parts first, as bringing both to one scale could overflow.
  int64_t factorA = 1;
  int64_t factorB = 1;
  for (int i = 0; i < iA.FScale; ++i) factorA *= 10;
  for (int i = 0; i < iB.FScale; ++i) factorB *= 10;
  const int64_t wholeA = iA.FUnits / factorA;
  const int64_t wholeB = iB.FUnits / factorB;
  if (wholeA != wholeB) return wholeA < wholeB;
  // Each is below 10^9, and so is each factor.
  return (iA.FUnits % factorA) * factorB < (iB.FUnits % factorB) * factorA;
}

int CurrencyDecimals(std::string_view iCurrency) {
  const auto isCode = [&](std::string_view iCode) { return SameAscii(iCode, iCurrency); };
  if (std::any_of(std::begin(cNoDecimals), std::end(cNoDecimals), isCode)) return 0;
  if (std::any_of(std::begin(cThreeDecimals), std::end(cThreeDecimals), isCode)) return 3;
  return 2;
}

std::string CurrencyFromText(std::string_view iText) {
  const std::string_view text = TrimAscii(iText);
  for (const TCurrencyName& name : cCurrencyNames) {
    if (SameAscii(text, name.Name)) return std::string(name.Code);
  }
  if (!IsCode(text)) return {};
  std::string code(text);
  for (char& c : code) c = static_cast<char>(c & ~0x20);
  return code;
}

std::string CurrencyBeside(std::string_view iText) {
  for (const TCurrencyName& name : cCurrencyNames) {
    if (iText.find(name.Name) != std::string_view::npos) return std::string(name.Code);
  }
  for (const std::string_view code : {"EUR", "CHF", "GBP", "USD", "PLN", "CZK", "DKK", "SEK"}) {
    if (iText.find(code) != std::string_view::npos) return std::string(code);
  }
  return {};
}

}  // namespace kk
