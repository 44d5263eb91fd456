#include "host/program/TExampleShop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <httplib.h>

namespace kk {
namespace {

using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

std::string Page(const TExampleShop& iShop, const TString& iAddress) {
  const std::string base = ToUtf8(iShop.Address());
  const auto response = httplib::Client(base).Get(ToUtf8(iAddress).substr(base.size()));
  return response && response->status == 200 ? response->body : std::string();
}

TEST(TExampleShop, StandsOnThisMachineAloneAndSellsThreeArticles) {
  const TExampleShop shop;
  EXPECT_THAT(ToUtf8(shop.Address()), StartsWith("http://127.0.0.1:"));
  ASSERT_THAT(shop.Articles(), SizeIs(3));
  for (const TString& address : shop.Articles()) {
    EXPECT_THAT(ToUtf8(address), StartsWith(ToUtf8(shop.Address()) + "/"));
  }
}

TEST(TExampleShop, EachPageSaysItsDataInAnotherWay) {
  const TExampleShop shop;
  EXPECT_THAT(Page(shop, shop.Articles()[0]), HasSubstr("og:title\" content=\"Tischlampe Luna\""));
  EXPECT_THAT(Page(shop, shop.Articles()[1]), HasSubstr("itemprop=\"name\">Kaffeemühle Mokka"));
  EXPECT_THAT(Page(shop, shop.Articles()[2]), HasSubstr("\"name\": \"Wanduhr, um 1960\""));
}

TEST(TExampleShop, ThePriceChangesAtEachVisitAndComesRound) {
  const TExampleShop shop;
  for (const char* price : {"49.90", "44.90", "39.90", "46.50", "49.90"}) {
    EXPECT_THAT(Page(shop, shop.Articles()[0]), HasSubstr(price));
  }
}

TEST(TExampleShop, TwoOfThemStandSideBySideAndEachCloses) {
  std::string address;
  {
    const TExampleShop one;
    const TExampleShop two;
    EXPECT_NE(one.Address(), two.Address());
    address = ToUtf8(one.Address());
  }
  EXPECT_FALSE(httplib::Client(address).Get("/tischlampe"));
}

}  // namespace
}  // namespace kk
