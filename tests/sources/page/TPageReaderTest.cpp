#include "sources/page/TPageReader.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace kk {
namespace {

std::string Fixture(const std::string& iName) {
  std::ifstream file(std::string(KK_TEST_SOURCE_DIR) + "/sources/page/fixtures/" + iName);
  std::stringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

TPageReading Read(const std::string& iHtml,
                  const std::string& iAddress = "https://shop.example/p/1") {
  const TPageAddress address = TPageAddress::Parse(iAddress).value();
  return ReadPage({iHtml, "text/html; charset=utf-8", address, address});
}

std::string Ld(const std::string& iJson) {
  return "<script type='application/ld+json'>" + iJson + "</script>";
}

std::string LdProduct(const std::string& iRest) {
  return Ld(R"({"@type":"Product","name":"Anvil",)" + iRest + "}");
}

// "Anvil 5 EUR", "Anvil - EUR", or the reason.
std::string Told(const TPageReading& iReading) {
  if (!iReading.Product) return ToUtf8(iReading.Reason);
  const TOffer& offer = iReading.Product->Offer;
  std::string text = ToUtf8(iReading.Product->Name) + " ";
  text += offer.Price ? offer.Price->ToNumber() : "-";
  return offer.Currency.empty() ? text : text + " " + ToUtf8(offer.Currency);
}

constexpr char cNoData[] = "Die Seite enthält keine Produktdaten";
constexpr char cSeveral[] = "Die Seite zeigt mehrere Artikel und keinen für sich allein";

TEST(ReadPage, ReadsAWholeShopPage) {
  const TPageReading reading = Read(Fixture("shop.html"), "https://shop.example/p/hacke-erle?x=1");
  ASSERT_TRUE(reading.Product) << ToUtf8(reading.Reason);
  const TProduct& product = *reading.Product;
  EXPECT_EQ(product.Name, u"Gartenhacke „Erle“");
  EXPECT_EQ(product.Image, u"https://shop.example/bilder/hacke.jpg");
  EXPECT_EQ(product.Offer.Price, TPrice(1239, 0));
  EXPECT_EQ(product.Offer.Currency, u"EUR");
  EXPECT_EQ(product.Offer.Availability, TAvailability::avInStock);
  EXPECT_EQ(product.Offer.Seller, u"Grünzeug & Co.");
  EXPECT_TRUE(product.Offer.EndTime.IsZero());  // priceValidUntil is no end
}

TEST(ReadPage, ReadsAWholeAuctionPage) {
  const TPageReading reading = Read(Fixture("auktion.html"), "https://auktion.example/los/414");
  ASSERT_TRUE(reading.Product) << ToUtf8(reading.Reason);
  const TProduct& product = *reading.Product;
  EXPECT_EQ(product.Name, u"Taschenuhr, um 1900");
  EXPECT_EQ(product.Image, u"https://auktion.example/los/uhr.jpg");
  EXPECT_EQ(product.Offer.Price, TPrice(5100, 0));
  EXPECT_EQ(product.Offer.Currency, u"EUR");
  EXPECT_EQ(product.Offer.Availability, TAvailability::avInStock);
  EXPECT_EQ(product.Offer.Seller, u"uhrenfreund");
  EXPECT_EQ(product.Offer.EndTime, UtcMsToLocal(1796587200000));
}

TEST(ReadPage, PriceComesInManyShapes) {
  EXPECT_EQ(Told(Read(LdProduct(R"("offers":{"price":5.50,"priceCurrency":"EUR"})"))),
            "Anvil 5.5 EUR");
  EXPECT_EQ(Told(Read(LdProduct(R"("offers":[{"price":"1.239,00","priceCurrency":"€"}])"))),
            "Anvil 1239 EUR");
  EXPECT_EQ(Told(Read(LdProduct(R"("offers":{"price":"8,50 €"})"))), "Anvil 8.5 EUR");
  EXPECT_EQ(
      Told(Read(LdProduct(
          R"("offers":{"@type":"AggregateOffer","lowPrice":"3","highPrice":"9","priceCurrency":"EUR"})"))),
      "Anvil 3 EUR");
  EXPECT_EQ(Told(Read(LdProduct(
                R"("offers":{"priceSpecification":{"price":19.5,"priceCurrency":"CHF"}})"))),
            "Anvil 19.5 CHF");
  EXPECT_EQ(Told(Read(LdProduct(
                R"("offers":{"price":{"@type":"MonetaryAmount","value":7,"currency":"EUR"}})"))),
            "Anvil 7 EUR");
  EXPECT_EQ(Told(Read(LdProduct(R"("price":"4","priceCurrency":"EUR")"))), "Anvil 4 EUR");
  EXPECT_EQ(Told(Read(LdProduct(
                R"("offers":{"priceSpecification":{"minPrice":2,"priceCurrency":"EUR"}})"))),
            "Anvil 2 EUR");
}

TEST(ReadPage, PriceForMachinesCountsBeforeTheOneForReaders) {
  EXPECT_EQ(
      Told(Read("<div itemscope itemtype='http://schema.org/Product'><b itemprop=name>Anvil</b>"
                "<p itemprop=offers itemscope itemtype='http://schema.org/Offer'>"
                "<b itemprop=price><i itemprop=priceCurrency content=AUD>$</i>155 und mehr "
                "<u itemprop=price content='155.55'></u></b></p></div>")),
      "Anvil 155.55 AUD");
}

TEST(ReadPage, SpecificationsThatAreNotThePriceArePassedOver) {
  EXPECT_EQ(Told(Read(LdProduct(R"("offers":{"priceCurrency":"EUR","priceSpecification":[
      {"price":99,"priceType":"https://schema.org/ListPrice"},
      {"@type":"DeliveryChargeSpecification","price":4},
      {"price":2,"referenceQuantity":{"value":1,"unitCode":"LTR"}},
      {"price":10}]})"))),
            "Anvil 10 EUR");
  EXPECT_EQ(Told(Read(LdProduct(R"("offers":{"priceCurrency":"EUR","priceSpecification":[
      {"price":2,"referenceQuantity":{"value":1,"unitCode":"LTR"}}]})"))),
            "Anvil 2 EUR");
  EXPECT_EQ(Told(Read(LdProduct(R"("offers":[{"price":1,"priceCurrency":"EUR",
      "businessFunction":"http://purl.org/goodrelations/v1#LeaseOut"},
      {"price":50,"priceCurrency":"EUR"}])"))),
            "Anvil 50 EUR");
}

TEST(ReadPage, ZeroIsAPriceOnlyForWhatCanBeHad) {
  const auto offer = [](const std::string& iAvailability) {
    return Told(Read(LdProduct(R"("offers":{"price":"0","priceCurrency":"EUR","availability":")" +
                               iAvailability + "\"}")));
  };
  EXPECT_EQ(offer("OutOfStock"), "Anvil - EUR");
  EXPECT_EQ(offer(""), "Anvil - EUR");
  EXPECT_EQ(offer("InStock"), "Anvil 0 EUR");
}

TEST(ReadPage, OfSeveralOffersTheLowestThatCanBeHadCounts) {
  EXPECT_EQ(
      Told(Read(LdProduct(
          R"("offers":[{"price":9,"priceCurrency":"EUR"},{"price":7,"priceCurrency":"EUR"}])"))),
      "Anvil 7 EUR");
  EXPECT_EQ(
      Told(Read(LdProduct(R"("offers":[{"price":9,"priceCurrency":"EUR","availability":"InStock"},
      {"price":7,"priceCurrency":"EUR","availability":"SoldOut"}])"))),
      "Anvil 9 EUR");
  EXPECT_EQ(Told(Read(LdProduct(
                R"("offers":[{"price":7,"priceCurrency":"EUR","availability":"SoldOut"}])"))),
            "Anvil 7 EUR");
  const auto aggregate =
      Read(LdProduct(R"("offers":{"@type":"AggregateOffer","lowPrice":5,"priceCurrency":"EUR",
      "offers":[{"price":5,"availability":"InStock"},{"price":9}]})"));
  EXPECT_EQ(Told(aggregate), "Anvil 5 EUR");
  EXPECT_EQ(aggregate.Product->Offer.Availability, TAvailability::avInStock);
}

TEST(ReadPage, AmountsInSeveralCurrenciesAreNotCompared) {
  EXPECT_EQ(
      Told(Read(LdProduct(
          R"("offers":[{"price":7,"priceCurrency":"USD"},{"price":9,"priceCurrency":"EUR"}])"))),
      "Anvil 9 EUR");
  EXPECT_EQ(
      Told(Read(LdProduct(
          R"("offers":[{"price":7,"priceCurrency":"USD"},{"price":3,"priceCurrency":"GBP"}])"))),
      "Anvil 7 USD");
  EXPECT_EQ(Told(Read(LdProduct(
                R"("offers":[{"availability":"InStock"},{"price":3,"priceCurrency":"GBP"}])"))),
            "Anvil 3 GBP");
}

TEST(ReadPage, OfferOfThePagesOwnVariantCounts) {
  const std::string offers = LdProduct(R"("offers":[
      {"price":7,"priceCurrency":"EUR","url":"/p/1?variant=1"},
      {"price":9,"priceCurrency":"EUR","url":"?variant=2"}])");
  EXPECT_EQ(Told(Read(offers, "https://shop.example/p/1?variant=2")), "Anvil 9 EUR");
  EXPECT_EQ(Told(Read(offers, "https://shop.example/p/1")), "Anvil 7 EUR");
}

TEST(ReadPage, GroupIsOfferedByItsVariants) {
  const std::string group = Ld(R"({"@type":"ProductGroup","name":"Shirt","hasVariant":[
      {"@type":"Product","name":"Shirt rot","url":"/p/1?c=rot","offers":{"price":20,"priceCurrency":"EUR"}},
      {"@type":"Product","name":"Shirt blau","url":"/p/1?c=blau","offers":{"price":25,"priceCurrency":"EUR"}}]})");
  EXPECT_EQ(Told(Read(group, "https://shop.example/p/1")), "Shirt 20 EUR");
  EXPECT_EQ(Read(group, "https://shop.example/p/1?c=blau").Product->Offer.Price, TPrice(25, 0));
}

TEST(ReadPage, OfferMayPointAtItsProduct) {
  EXPECT_EQ(Told(Read(Ld(R"({"@graph":[{"@type":"Product","@id":"#p","name":"Anvil"},
      {"@type":"Offer","price":5,"priceCurrency":"EUR","itemOffered":{"@id":"#p"}}]})"))),
            "Anvil 5 EUR");
}

TEST(ReadPage, LoneOfferIsCalledByThePage) {
  const std::string offer = Ld(R"({"@type":"Offer","price":5,"priceCurrency":"EUR"})");
  EXPECT_EQ(Told(Read("<title>Amboss kaufen</title>" + offer)), "Amboss kaufen 5 EUR");
  EXPECT_EQ(Told(Read(offer)), "https://shop.example/p/1 5 EUR");
  EXPECT_EQ(Told(Read(offer + offer)), cNoData);
  EXPECT_EQ(Told(Read(Ld(R"({"@type":"Offer","priceCurrency":"EUR"})"))), cNoData);
}

TEST(ReadPage, EndTimeIsAvailabilityEndsElseValidThrough) {
  const auto end = [](const std::string& iRest) {
    return Read(LdProduct(R"("offers":{"price":1,)" + iRest + "}")).Product->Offer.EndTime;
  };
  const TDateTime first = EncodeDateTime({2026, 12, 1, 10, 0, 0, 0});
  const TDateTime second = EncodeDateTime({2026, 12, 2, 10, 0, 0, 0});
  EXPECT_EQ(end(R"("availabilityEnds":"2026-12-01T10:00:00","validThrough":"2026-12-02T10:00:00")"),
            first);
  EXPECT_EQ(end(R"("validThrough":"2026-12-02T10:00:00")"), second);
  EXPECT_EQ(end(R"("availabilityEnds":"bald","validThrough":"2026-12-02T10:00:00")"), second);
  EXPECT_EQ(end(R"("priceValidUntil":"2026-12-02T10:00:00")"), TDateTime());
}

TEST(ReadPage, EndTimeOfAnEventIsItsEndDateAndNeverItsStart) {
  const auto end = [](const std::string& iRest) {
    const auto reading =
        Read(Ld(R"({"@type":"SaleEvent","name":"Auktion","offers":{"price":1},)" + iRest + "}"));
    return reading.Product->Offer.EndTime;
  };
  EXPECT_EQ(end(R"("endDate":"2026-12-01T10:00:00")"), EncodeDateTime({2026, 12, 1, 10, 0, 0, 0}));
  EXPECT_EQ(end(R"("startDate":"2026-12-01T10:00:00")"), TDateTime());
  const auto product = Read(LdProduct(
      R"("event":{"@type":"Event","endDate":"2026-12-01T10:00:00"},"offers":{"price":1})"));
  EXPECT_EQ(product.Product->Offer.EndTime, EncodeDateTime({2026, 12, 1, 10, 0, 0, 0}));
}

TEST(ReadPage, SellerIsReadInEveryShape) {
  const auto seller = [](const std::string& iRest) {
    return ToUtf8(Read(LdProduct(R"("offers":{"price":1,)" + iRest + "}")).Product->Offer.Seller);
  };
  EXPECT_EQ(seller(R"("seller":{"@type":"Organization","name":"ACME &amp; Co"})"), "ACME & Co");
  EXPECT_EQ(seller(R"("seller":"ACME")"), "ACME");
  EXPECT_EQ(seller(R"("seller":"https://acme.example/","offeredBy":{"name":"Bob"})"), "Bob");
}

TEST(ReadPage, ImageIsReadInEveryShapeAndMadeAbsolute) {
  const auto image = [](const std::string& iImage) {
    return ToUtf8(
        Read("<base href='/b/'>" + LdProduct("\"image\":" + iImage + ",\"offers\":{\"price\":1}"))
            .Product->Image);
  };
  EXPECT_EQ(image(R"("x.jpg")"), "https://shop.example/b/x.jpg");
  EXPECT_EQ(image(R"(["//cdn.example/x.jpg","y.jpg"])"), "https://cdn.example/x.jpg");
  EXPECT_EQ(image(R"({"@type":"ImageObject","contentUrl":"c.jpg","url":"u.jpg"})"),
            "https://shop.example/b/c.jpg");
  EXPECT_EQ(image(R"({"@type":"ImageObject","url":"u.jpg"})"), "https://shop.example/b/u.jpg");
  EXPECT_EQ(image(R"({"@id":"/i.jpg"})"), "https://shop.example/i.jpg");
  EXPECT_EQ(image(R"("javascript:x")"), "");
}

std::string Offered(const std::string& iName, int iPrice, const std::string& iRest = "") {
  return R"({"@type":"Product","name":")" + iName + R"(",)" + iRest + R"("offers":{"price":)" +
         std::to_string(iPrice) + R"(,"priceCurrency":"EUR"}})";
}

TEST(ReadPage, AmongSeveralTheProductWithThePagesAddressCounts) {
  EXPECT_EQ(Told(Read(Ld("[" + Offered("A", 1) + "," + Offered("B", 2, R"("url":"/p/1",)") + "]"))),
            "B 2 EUR");
  EXPECT_EQ(Told(Read(Ld("[" + Offered("A", 1) + "," +
                         Offered("B", 2, R"("@id":"https://shop.example/p/1#product",)") + "]"))),
            "B 2 EUR");
  EXPECT_EQ(
      Told(Read("<link rel=canonical href=/kanonisch>" +
                Ld("[" + Offered("A", 1) + "," + Offered("B", 2, R"("url":"/kanonisch",)") + "]"))),
      "B 2 EUR");
  EXPECT_EQ(Told(Read(Ld("[" + Offered("A", 1, R"("@id":"#a",)") + "," +
                         Offered("B", 2, R"("@id":"#b",)") + "]"))),
            cSeveral);
}

TEST(ReadPage, HomePageAsCanonicalAddressSaysNothing) {
  EXPECT_EQ(
      Told(Read("<link rel=canonical href=/>" + Ld("[" + Offered("Amboss", 1, R"("url":"/",)") +
                                                   "," + Offered("Hammer", 2) + "]"))),
      cSeveral);
}

TEST(ReadPage, AmongSeveralTheProductOfTheHeadingCounts) {
  EXPECT_EQ(Told(Read("<h1>Großer Hammer</h1>" +
                      Ld("[" + Offered("Amboss", 1) + "," + Offered("GROSSER-HAMMER", 2) + "]"))),
            "GROSSER-HAMMER 2 EUR");
  EXPECT_EQ(Told(Read("<title>Hammer kaufen | Shop</title>" +
                      Ld("[" + Offered("Amboss", 1) + "," + Offered("Hammer", 2) + "]"))),
            "Hammer 2 EUR");
  EXPECT_EQ(Told(Read("<meta property=og:title content=Hammer>" +
                      Ld("[" + Offered("Amboss", 1) + "," + Offered("Hammer", 2) + "]"))),
            "Hammer 2 EUR");
}

TEST(ReadPage, PageOfACategoryHasNoProductOfItsOwn) {
  const std::string products = Offered("Stiefel Anna", 1) + "," + Offered("Stiefel Berta", 2);
  EXPECT_EQ(Told(Read("<h1>Stiefel</h1>" + Ld("[" + products + "]"))), cSeveral);
  EXPECT_EQ(Told(Read("<h1>Stiefel</h1>" +
                      Ld(R"({"@type":"ItemList","itemListElement":[)" + products + "]}"))),
            cSeveral);
}

TEST(ReadPage, OfferThatSaysNothingOfAPriceLeavesItToTheOthers) {
  const auto reading =
      Read(LdProduct(R"("offers":{"price":"","availability":"PreOrder","seller":"Bob"})") +
           "<meta property=og:title content=Anvil><meta property=product:price:amount content=9>"
           "<meta property=product:price:currency content=EUR>");
  EXPECT_EQ(Told(reading), "Anvil 9 EUR");
  EXPECT_EQ(reading.Product->Offer.Availability, TAvailability::avPreOrder);
  EXPECT_EQ(reading.Product->Offer.Seller, u"Bob");
  EXPECT_EQ(Told(Read(LdProduct(R"("offers":{"price":"0","priceCurrency":"EUR"})") +
                      "<meta property=product:price:amount content=9>")),
            "Anvil - EUR");
}

TEST(ReadPage, RelatedProductsAndListsAreNotTheProduct) {
  EXPECT_EQ(Told(Read(LdProduct(R"("offers":{"price":5,"priceCurrency":"EUR"},"isRelatedTo":[)" +
                                Offered("Anvil Pro", 1) + "]"))),
            "Anvil 5 EUR");
  EXPECT_EQ(Told(Read(Ld(R"({"@type":"ItemList","itemListElement":[{"@type":"ListItem","item":)" +
                         Offered("A", 1) + "}]}"))),
            cSeveral);
  EXPECT_EQ(Told(Read(Ld("[" + Offered("A", 1) + "," + Offered("B", 2) + "]"))), cSeveral);
  EXPECT_EQ(
      Told(Read(Ld(
          R"({"@graph":[{"@type":"Product","name":"A","isSimilarTo":{"@id":"#b"},"offers":{"price":1,"priceCurrency":"EUR"}},
      {"@type":"Product","@id":"#b","name":"B","offers":{"price":2,"priceCurrency":"EUR"}}]})"))),
      "A 1 EUR");
}

TEST(ReadPage, ProductOfAReviewOrAPageIsTheProduct) {
  EXPECT_EQ(Told(Read(Ld(R"({"@type":"AggregateRating","itemReviewed":)" + Offered("A", 1) + "}"))),
            "A 1 EUR");
  EXPECT_EQ(Told(Read(Ld(R"({"@type":"WebPage","mainEntity":)" + Offered("A", 1) + "}"))),
            "A 1 EUR");
}

TEST(ReadPage, VariantsOfOneNameAreOneArticle) {
  EXPECT_EQ(
      Told(Read(Ld(
          R"([{"@type":"Product","name":"Stiefel","offers":{"price":60,"priceCurrency":"EUR","availability":"OutOfStock"}},
      {"@type":"Product","name":"Stiefel","offers":{"price":69.95,"priceCurrency":"EUR","availability":"InStock"}}])"))),
      "Stiefel 69.95 EUR");
}

TEST(ReadPage, ProductOfMicrodataCountsBeforeAnEventOfJsonLd) {
  EXPECT_EQ(
      Told(Read(
          Ld(R"({"@type":"Event","name":"Messe","offers":{"price":1,"priceCurrency":"EUR"}})") +
          "<div itemscope itemtype='http://schema.org/Product'><b itemprop=name>Amboss</b>"
          "<i itemprop=offers itemscope itemtype='http://schema.org/Offer'><u itemprop=price>5 "
          "€</u></i></div>")),
      "Amboss 5 EUR");
}

TEST(ReadPage, WhatIsOfferedForAPriceIsAProductOfLastResort) {
  EXPECT_EQ(
      Told(Read(Ld(
          R"({"@type":"SoftwareApplication","name":"App","offers":{"price":3,"priceCurrency":"EUR"}})"))),
      "App 3 EUR");
  EXPECT_EQ(Told(Read(Ld(R"({"@type":"NewsArticle","name":"Neues"})"))), cNoData);
}

TEST(ReadPage, JsonLdCountsBeforeMicrodataAndTags) {
  const std::string microdata =
      "<div itemscope itemtype='http://schema.org/Product'><b itemprop=name>Anvil</b>"
      "<p itemprop=offers itemscope itemtype='http://schema.org/Offer'><meta itemprop=price "
      "content=5>"
      "<meta itemprop=priceCurrency content=EUR><link itemprop=availability "
      "href=http://schema.org/InStock>"
      "<b itemprop=seller>Bob</b><meta itemprop=validThrough content=2026-12-01></p></div>";
  // The rest of the same offer is taken over.
  const auto same = Read(LdProduct(R"("offers":{"price":5})") + microdata);
  EXPECT_EQ(Told(same), "Anvil 5 EUR");
  EXPECT_EQ(same.Product->Offer.Availability, TAvailability::avInStock);
  EXPECT_EQ(same.Product->Offer.Seller, u"Bob");
  EXPECT_EQ(same.Product->Offer.EndTime, EncodeDateTime({2026, 12, 1, 23, 59, 59, 0}));
  // Nothing of another one is.
  const auto other = Read(LdProduct(R"("offers":{"price":7,"priceCurrency":"USD"})") + microdata);
  EXPECT_EQ(Told(other), "Anvil 7 USD");
  EXPECT_EQ(other.Product->Offer.Availability, TAvailability::avUnknown);
  // Where there is no offer, the whole of it is.
  EXPECT_EQ(Told(Read(LdProduct(R"("sku":"1")") + microdata)), "Anvil 5 EUR");
  // An offer without a price is an answer.
  EXPECT_EQ(Told(Read(LdProduct(R"("offers":{"availability":"SoldOut","priceCurrency":"EUR"})") +
                      "<meta property=product:price:amount content=9>")),
            "Anvil - EUR");
}

TEST(ReadPage, TagsOfOpenGraphAreTheFallback) {
  const auto reading = Read(
      "<meta property=og:title content='Amboss'><meta property=og:type content=product>"
      "<meta property=product:price:amount content='17,99'><meta property=product:price:currency "
      "content=EUR>"
      "<meta property=product:availability content='in stock'><meta property=og:image "
      "content=/a.jpg>"
      "<meta property=og:site_name content=Schmiede>");
  EXPECT_EQ(Told(reading), "Amboss 17.99 EUR");
  EXPECT_EQ(reading.Product->Offer.Availability, TAvailability::avInStock);
  EXPECT_EQ(reading.Product->Offer.Seller, u"Schmiede");
  EXPECT_EQ(reading.Product->Image, u"https://shop.example/a.jpg");
  EXPECT_EQ(Told(Read("<title>T</title><meta name=og:price:amount content='$ 5'>")), "T 5");
  EXPECT_EQ(Told(Read("<meta property=og:type content=product>")), cNoData);
  EXPECT_EQ(Told(Read("<meta property=product:price:amount content=0>")), cNoData);
  EXPECT_EQ(Told(Read("<meta property=product:price:amount content=gratis>")), cNoData);
}

TEST(ReadPage, OtherVocabulariesAreNoProductData) {
  EXPECT_EQ(
      Told(
          Read("<div itemscope itemtype='http://data-vocabulary.org/Product'><b itemprop=name>A</b>"
               "<i itemprop=price>5 €</i></div>")),
      cNoData);
}

TEST(ReadPage, BrokenScriptDoesNotKeepOthersFromCounting) {
  EXPECT_EQ(Told(Read(Ld(R"({"@type":"Product","name":"X")") + Ld("null") +
                      LdProduct(R"("offers":{"price":5})"))),
            "Anvil 5");
  EXPECT_EQ(Told(Read(Ld(R"({"@type":"Product","name":"X","offers":{"price":5)"))), cNoData);
}

TEST(ReadPage, WhatIsNoPageIsSaidToBeNone) {
  const TPageAddress address = TPageAddress::Parse("https://shop.example/").value();
  const auto read = [&](std::string_view iBytes, std::string_view iType) {
    return ToUtf8(ReadPage({iBytes, iType, address, address}).Reason);
  };
  EXPECT_EQ(read("%PDF-1.4 x", "text/html"),
            "Die Adresse liefert keine Webseite (application/pdf)");
  EXPECT_EQ(read("\x89PNG\r\n\x1A\n", "text/html"),
            "Die Adresse liefert keine Webseite (image/png)");
  EXPECT_EQ(read("x", "Application/PDF; q=1"),
            "Die Adresse liefert keine Webseite (application/pdf)");
  EXPECT_EQ(read("x", ""), "Die Adresse liefert keine Webseite (unbekannter Inhalt)");
  EXPECT_EQ(read("", "text/html"), "Die Seite ist leer");
  EXPECT_EQ(read("<!DOCTYPE HTML>x", ""), cNoData);
  EXPECT_EQ(read("<html>x", "application/octet-stream"), cNoData);
  EXPECT_EQ(read("x", "application/xhtml+xml"), cNoData);
}

TEST(ReadPage, PageBeyondTheLimitsIsARefusalWithAReason) {
  const TPageAddress address = TPageAddress::Parse("https://shop.example/").value();
  THtmlLimits limits;
  limits.MaxBytes = 1;
  EXPECT_EQ(ToUtf8(ReadPage({"<p>x", "text/html", address, address}, limits).Reason),
            "Die Seite ist zu umfangreich oder zu tief verschachtelt");
}

TEST(ReadPage, TextsAreCleanedAndBounded) {
  const auto name = [](const std::string& iName) {
    return Read(Ld(R"({"@type":"Product","offers":{"price":1},"name":")" + iName + "\"}"))
        .Product->Name;
  };
  EXPECT_EQ(name(R"(  A\n B&nbsp;C\u0007 &#x1F600;)"), u"A B C 😀");
  std::string smileys = "x";
  for (int i = 0; i < 900; ++i) smileys += "😀";
  EXPECT_EQ(name(smileys).size(), 999u);
  EXPECT_EQ(name(std::string(5000, 'x')).size(), 1000u);
}

TEST(ReadPage, PageWithVeryManyItemsIsReadInReasonableTime) {
  std::string page = "<h1>Amboss</h1>";
  for (int i = 0; i < 3000; ++i) {
    page += "<div itemscope itemtype='http://schema.org/Product'><b itemprop=name>P" +
            std::to_string(i) +
            "</b><i itemprop=offers itemscope itemtype='http://schema.org/Offer'><u "
            "itemprop=price>5 €</u></i></div>";
  }
  page += Ld(Offered("Amboss", 7));
  EXPECT_EQ(Told(Read(page)), "Amboss 7 EUR");
}

}  // namespace
}  // namespace kk
