#include "sources/page/TPrice.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace kk {
namespace {

std::string FromText(std::string_view iText, std::string_view iCurrency = "EUR") {
  const auto price = TPrice::FromText(iText, iCurrency);
  return price ? price->ToNumber() : "none";
}

std::string FromNumber(std::string_view iText) {
  const auto price = TPrice::FromNumber(iText);
  return price ? price->ToNumber() : "none";
}

TEST(TPrice, ReadsAmountsAsShopsWriteThem) {
  EXPECT_EQ(FromText("1.239,00"), "1239");
  EXPECT_EQ(FromText("5,100.00"), "5100");
  EXPECT_EQ(FromText("£5,100.50"), "5100.5");
  EXPECT_EQ(FromText("8,50 €"), "8.5");
  EXPECT_EQ(FromText("ab 12,99 € inkl. MwSt"), "12.99");
  EXPECT_EQ(FromText("  119.99 "), "119.99");
  EXPECT_EQ(FromText("1 239,00 €"), "1239");
  EXPECT_EQ(FromText("1\xC2\xA0"
                     "239,00"),
            "1239");
  EXPECT_EQ(FromText("1\xE2\x80\xAF"
                     "239 €"),
            "1239");
  EXPECT_EQ(FromText("CHF 1'239.90"), "1239.9");
  EXPECT_EQ(FromText("CHF 1\xE2\x80\x99"
                     "239.-"),
            "1239");
  EXPECT_EQ(FromText("19,- €"), "19");
  EXPECT_EQ(FromText("1.234.567"), "1234567");
  EXPECT_EQ(FromText("1.234.567,89"), "1234567.89");
  EXPECT_EQ(FromText("1,234,567.89"), "1234567.89");
  EXPECT_EQ(FromText(",99 €"), "0.99");
  EXPECT_EQ(FromText("nur .50"), "0.5");
  EXPECT_EQ(FromText("12,00 - 15,00 €"), "12");
  EXPECT_EQ(FromText("Preis: 5."), "5");
  EXPECT_EQ(FromText("0"), "0");
}

TEST(TPrice, LoneSeparatorBeforeThreeDigitsPartsThousands) {
  EXPECT_EQ(FromText("249.990", "CLP"), "249990");
  EXPECT_EQ(FromText("249.990"), "249990");
  EXPECT_EQ(FromText("1,239"), "1239");
}

TEST(TPrice, LoneSeparatorBeforeThreeDigitsPartsDecimalsWhereThousandsMakeNoSense) {
  EXPECT_EQ(FromText("249.990", "KWD"), "249.99");
  EXPECT_EQ(FromText("0.990"), "0.99");
  EXPECT_EQ(FromText("1239.500"), "1239.5");
  EXPECT_EQ(FromText("12.5000"), "12.5");
  EXPECT_EQ(FromText("12.5"), "12.5");
}

TEST(TPrice, TextsWithoutOneClearAmountAreNoPrice) {
  EXPECT_EQ(FromText(""), "none");
  EXPECT_EQ(FromText("auf Anfrage"), "none");
  EXPECT_EQ(FromText("-5,00 €"), "none");
  EXPECT_EQ(FromText("Rabatt -5 €"), "none");
  EXPECT_EQ(FromText("1.23.456"), "none");
  EXPECT_EQ(FromText("1.234,567.89"), "none");
  EXPECT_EQ(FromText("1234,567.89"), "none");
  EXPECT_EQ(FromText("1.5 234,00"), "1.5");
  EXPECT_EQ(FromText("12345678901234567890"), "none");
  EXPECT_EQ(FromText("0.12345678901"), "none");
}

TEST(TPrice, ReadsNumbersOfJsonExactly) {
  EXPECT_EQ(FromNumber("119.01"), "119.01");
  EXPECT_EQ(FromNumber("249.990"), "249.99");
  EXPECT_EQ(FromNumber("229990"), "229990");
  EXPECT_EQ(FromNumber("0.10"), "0.1");
  EXPECT_EQ(FromNumber("1.5e3"), "1500");
  EXPECT_EQ(FromNumber("1.2345E+2"), "123.45");
  EXPECT_EQ(FromNumber("15e-1"), "1.5");
  EXPECT_EQ(FromNumber("5e-3"), "0.005");
  EXPECT_EQ(FromNumber("-1"), "none");
  EXPECT_EQ(FromNumber("1e999"), "none");
  EXPECT_EQ(FromNumber("1e"), "none");
  EXPECT_EQ(FromNumber("12x"), "none");
  EXPECT_EQ(FromNumber(""), "none");
  EXPECT_EQ(FromNumber("999999999999999999"), "999999999999999999");
  EXPECT_EQ(FromNumber("9999999999999999999"), "none");
}

TEST(TPrice, EqualAmountsAreEqualHoweverTheyAreWritten) {
  EXPECT_EQ(TPrice::FromNumber("109.00"), TPrice::FromText("109", "EUR"));
  EXPECT_EQ(TPrice::FromNumber("0.0"), TPrice());
  EXPECT_TRUE(TPrice().IsZero());
}

TEST(TPrice, ComparesExactlyAcrossScales) {
  EXPECT_LT(TPrice(99, 1), TPrice(991, 2));
  EXPECT_LT(TPrice(123, 2), TPrice(13, 1));
  EXPECT_LT(TPrice(1, 9), TPrice(999999999999999999, 0));
  EXPECT_FALSE(TPrice(5, 0) < TPrice(50, 1));
}

TEST(TPrice, IsShownInGermanWithTheDecimalsOfItsCurrency) {
  EXPECT_EQ(TPrice(1239, 0).ToDisplay(u"EUR"), u"1.239,00 EUR");
  EXPECT_EQ(TPrice(5, 1).ToDisplay(u"EUR"), u"0,50 EUR");
  EXPECT_EQ(TPrice(229990, 0).ToDisplay(u"CLP"), u"229.990 CLP");
  EXPECT_EQ(TPrice(1, 0).ToDisplay(u"KWD"), u"1,000 KWD");
  EXPECT_EQ(TPrice(12345, 3).ToDisplay(u"EUR"), u"12,345 EUR");
  EXPECT_EQ(TPrice(1234567, 0).ToDisplay(u""), u"1.234.567");
  EXPECT_EQ(TPrice(1250, 2).ToDisplay(u""), u"12,50");
}

TEST(TPrice, CurrencyIsReadFromCodesAndFromMarksThatMeanOneAlone) {
  EXPECT_EQ(CurrencyFromText(" eur "), "EUR");
  EXPECT_EQ(CurrencyFromText("€"), "EUR");
  EXPECT_EQ(CurrencyFromText("Euro"), "EUR");
  EXPECT_EQ(CurrencyFromText("US$"), "USD");
  EXPECT_EQ(CurrencyFromText("Fr."), "CHF");
  EXPECT_EQ(CurrencyFromText("$"), "");
  EXPECT_EQ(CurrencyFromText("kr"), "");
  EXPECT_EQ(CurrencyFromText(""), "");
  EXPECT_EQ(CurrencyBeside("8,50 € inkl. MwSt"), "EUR");
  EXPECT_EQ(CurrencyBeside("CHF 12.50"), "CHF");
  EXPECT_EQ(CurrencyBeside("$12.50"), "");
}

RC_GTEST_PROP(TPriceProperty, EveryAmountReadsBackFromItsNumberAndItsDisplay, ()) {
  const auto units = *rc::gen::inRange<int64_t>(0, 1'000'000'000'000);
  const auto scale = *rc::gen::inRange(0, 3);
  const TPrice price(units, scale);
  RC_ASSERT(TPrice::FromNumber(price.ToNumber()) == price);
  RC_ASSERT(TPrice::FromText(ToUtf8(price.ToDisplay(u"EUR")), "EUR") == price);
}

}  // namespace
}  // namespace kk
