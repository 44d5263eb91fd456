#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "host/base/TString.h"

namespace kk {

/// An amount of money as an exact decimal: units times ten to the power of minus scale. The scale
/// is the smallest that holds the value, so that 109 and "109.00" are equal. Never negative.
class TPrice {
 public:
  static constexpr int cMaxScale = 9;

  TPrice() = default;
  /// iScale: 0 to cMaxScale.
  TPrice(int64_t iUnits, int iScale);

  /// A number of JSON: "119.01", "1.5e3". Nothing for any other text and for amounts that are
  /// negative or don't fit.
  static std::optional<TPrice> FromNumber(std::string_view iText);

  /// The first amount in a text as shops write it: "1.239,00", "5,100.00 €", "ab 1'239.-",
  /// "249.990". Where one separator stands once before exactly three digits, it parts thousands,
  /// unless the currency has three decimal places or the group before it rules it out ("0.990",
  /// "1239.500"). iCurrency may be empty. Nothing if there is no amount, or more than one reading.
  static std::optional<TPrice> FromText(std::string_view iText, std::string_view iCurrency);

  /// The nearest number, for sorting.
  double ToDouble() const;
  bool IsZero() const { return FUnits == 0; }
  /// "1239.00" as "1239": digits, and a point if there are decimals. FromNumber reads it back.
  std::string ToNumber() const;
  /// In German, with the decimals of the currency at least: "1.239,00 EUR", "229.990 CLP". Without
  /// a currency two decimals, or none where the amount has none.
  TString ToDisplay(TStringView iCurrency) const;

  friend bool operator==(const TPrice&, const TPrice&) = default;
  friend bool operator<(const TPrice& iA, const TPrice& iB);

 private:
  int64_t FUnits = 0;
  int FScale = 0;
};

/// How many decimal places a currency has (ISO 4217, table A.1); 2 for one that isn't known.
int CurrencyDecimals(std::string_view iCurrency);

/// The ISO 4217 code in what stands for a currency: "EUR", "eur", "€", "Euro". Empty for what is
/// unknown or means several, such as a lone "$".
std::string CurrencyFromText(std::string_view iText);

/// The same for the text around an amount, such as "8,50 € inkl. MwSt".
std::string CurrencyBeside(std::string_view iText);

}  // namespace kk
