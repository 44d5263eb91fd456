#include "sources/page/TPageMobile.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "host/contract/ISearchResultSameKey.h"
#include "model/TLstWatchlistIntegration.h"
#include "persistence/TWatchlistFileLoaderMobileImport.h"
#include "persistence/TWatchlistFileSaverMobileExport.h"
#include "sources/page/PageConsts.h"
#include "sources/page/TPageIntegration.h"
#include "sources/page/TPageSearchResult.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestModelRoot.h"

namespace kk {
namespace {

constexpr char16_t cTimeFormat[] = u"yyyy-mm-dd hh:nn:ss";
const TGuid cCategory = GuidLiteral("{00000000-0000-0000-0000-0000000000A1}");

TPageData Page(const std::string& iAddress = "https://shop.example/p/1?q=a&b=%C3%9F") {
  TPageData data = NewPageData(TPageAddress::Parse(iAddress).value(), u"Amboß <&> \"1\" = 2");
  data.Product.Image = u"https://shop.example/a.jpg?x=1";
  data.Product.Offer = {TPrice(123950, 2), u"EUR", TAvailability::avInStock, u"Schmiede & Söhne",
                        EncodeDateTime({2026, 12, 6, 20, 0, 0, 0})};
  data.Changed = EncodeDateTime({2026, 7, 20, 18, 30, 5, 0});
  data.ETag = "\"abc\"";
  data.LastModified = "Fri, 20 Nov 2026 18:30:00 GMT";
  data.ReaderVersion = 1;
  return data;
}

struct Exported : TStringList {
  explicit Exported(const TPageData& iData) {
    TStringList params;
    params.SetValue(u"categoryguid", u"00000000-0000-0000-0000-0000000000a1");
    WriteMobilePage(iData, params, *this);
  }
};

TPageData ThereAndBack(const TPageData& iData) { return ReadMobilePage(Exported(iData)).value(); }

// The whole way: through the document and the loader's hands.
std::vector<TPageData> ThroughTheDocument(const std::vector<TPageData>& iPages) {
  TTestModelRoot root;
  const TIntf<IWatchlistIntegration> source = MakeIntf<TPageIntegration>();
  TLstWatchlistIntegration sources(true);
  sources.Add(source);
  TLstWatchlistCategory tree(true);
  TWatchlistCategory& category = tree.Add(std::make_unique<TWatchlistCategory>());
  category.SetId(cCategory);
  TLstWatchlistItem& items = category.LstPlugin().FindOrAdd(source).LstItem();
  for (const TPageData& page : iPages) {
    TWatchlistItem& item = items.Add(std::make_unique<TWatchlistItem>());
    item.SetSearchResult(MakeIntf<TPageSearchResult>(page));
    item.SetParentCategoryId(cCategory);
  }
  const TTempFolder folder;
  const TString fileName = folder.File(u"mobil.xml");
  TWatchlistFileSaverMobileExport::Save(fileName, tree, sources);
  TMemoryStream stream(folder.Read(u"mobil.xml"));
  TLstWatchlistCategory read(true);
  TWatchlistFileLoaderMobileImport().LoadFromStream(stream, sources, read);
  TLstWatchlistItem back(false);
  read.GetItemsByPluginId(source->GetId(), back, true);
  std::vector<TPageData> pages;
  for (const TWatchlistItem* item : back) {
    pages.push_back(Supports<IPageSearchResult>(item->SearchResult())->Data());
    EXPECT_EQ(item->ParentCategoryId(), cCategory);
  }
  return pages;
}

TEST(TPageMobile, EveryFieldComesBack) {
  const TPageData page = Page();
  const TPageData back = ThereAndBack(page);
  EXPECT_EQ(back.Address.Text(), page.Address.Text());
  EXPECT_EQ(back.Product, page.Product);
  EXPECT_EQ(back.Changed, page.Changed);
}

TEST(TPageMobile, EveryFieldComesBackThroughTheDocument) {
  const TPageData page = Page();
  TPageData fresh =
      NewPageData(TPageAddress::Parse("http://a.example/").value(), u"http://a.example/");
  const auto back = ThroughTheDocument({page, fresh});
  ASSERT_EQ(back.size(), 2u);
  EXPECT_EQ(back[0].Address.Text(), page.Address.Text());
  EXPECT_EQ(back[0].Product, page.Product);
  EXPECT_EQ(back[0].Changed, page.Changed);
  EXPECT_EQ(back[1].Product, fresh.Product);
  EXPECT_TRUE(back[1].Changed.IsZero());
}

TEST(TPageMobile, EveryAvailabilityComesBack) {
  TPageData page = Page();
  for (int value = 0; value <= static_cast<int>(TAvailability::avDiscontinued); ++value) {
    page.Product.Offer.Availability = static_cast<TAvailability>(value);
    EXPECT_EQ(ThereAndBack(page).Product.Offer.Availability, page.Product.Offer.Availability);
  }
}

TEST(TPageMobile, TheNextRefreshReadsThePageFromTheGroundUp) {
  const TPageData page = Page();
  const TPageData back = ThereAndBack(page);
  EXPECT_FALSE(back.Id == page.Id);
  EXPECT_FALSE(back.Id == cEmptyGuid);
  EXPECT_EQ(back.ETag, "");
  EXPECT_EQ(back.LastModified, "");
  EXPECT_EQ(back.ReaderVersion, 0);
}

TEST(TPageMobile, LinesAreThoseOfTheDocument) {
  TPageData page = Page("https://shop.example/p");
  page.Product.Name = u"Amboss";
  page.Product.Offer.Seller = u"Bob";
  page.Product.Image.clear();
  const TDateTime end = DateTimeStrEval(cTimeFormat, u"2026-12-06 19:00:00");
  const TDateTime changed = DateTimeStrEval(cTimeFormat, u"2026-07-20 16:30:05");
  const int64_t epoch = 25569 * TDateTime::cMsPerDay;
  page.Product.Offer.EndTime = UtcMsToLocal(end.Ms() - epoch);
  page.Changed = UtcMsToLocal(changed.Ms() - epoch);
  const Exported lines(page);
  EXPECT_EQ(lines.Lines(),
            (std::vector<TString>{
                u"[searchresult]", u"pluginguid=8b7f2d64-3e95-4c0a-a1b8-52e6d9047c31",
                u"categoryguid=00000000-0000-0000-0000-0000000000a1", u"name=Amboss",
                u"url=https://shop.example/p", u"price=1239.5", u"currency=EUR",
                u"availability=InStock", u"seller=Bob", u"endtimeutc=2026-12-06 19:00:00",
                u"offerdateutc=2026-07-20 16:30:05", u"[/searchresult]"}));
}

TEST(TPageMobile, UnknownFieldsOfAPageLeaveNoLine) {
  const TPageData page = NewPageData(TPageAddress::Parse("https://shop.example/p").value(), u"");
  TStringList lines;
  WriteMobilePage(page, {}, lines);
  EXPECT_EQ(
      lines.Lines(),
      (std::vector<TString>{u"[searchresult]", u"pluginguid=8b7f2d64-3e95-4c0a-a1b8-52e6d9047c31",
                            u"url=https://shop.example/p", u"[/searchresult]"}));
}

TEST(TPageMobile, HostileTextsStayOnOneLineAndInTheirField) {
  TPageData page = Page();
  page.Product.Name =
      TString(u"[/searchresult]\r\nurl=http://evil.example/\n[x]\0\x01\x85z\xD800", 50);
  page.Product.Offer.Seller = u"]]>\n</seller><url>http://evil.example/</url>";
  page.Product.Offer.Currency = u"EUR\nprice=1";
  const Exported lines(page);
  for (const TString& line : lines.Lines()) {
    EXPECT_EQ(line, WithoutControlCharacters(line));
  }
  const auto back = ThroughTheDocument({page, Page("https://shop.example/2")});
  ASSERT_EQ(back.size(), 2u);
  EXPECT_EQ(back[0].Address.Text(), page.Address.Text());
  EXPECT_TRUE(StartsWith(back[0].Product.Name, u"[/searchresult] url=http://evil.example/ [x]"));
  EXPECT_EQ(back[0].Product.Offer.Seller, u"]]> </seller><url>http://evil.example/</url>");
  EXPECT_EQ(back[0].Product.Offer.Price, page.Product.Offer.Price);
  EXPECT_EQ(back[1].Address.Text(), "https://shop.example/2");
}

TEST(TPageMobile, AHostileCategoryStaysOnItsLine) {
  TStringList params;
  params.SetValue(u"categoryguid", u"a\n[/searchresult]\n[searchresult]");
  TStringList lines;
  WriteMobilePage(Page(), params, lines);
  EXPECT_EQ(lines.GetValue(u"categoryguid"), u"a [/searchresult] [searchresult]");
}

TEST(TPageMobile, AnAddressOfHttpIsNeeded) {
  for (const TStringView url :
       {u"", u" ", u"shop.example", u"/p/1", u"file:///etc/passwd", u"javascript:alert(1)",
        u"ftp://shop.example/", u"data:text/html,x", u"https://", u"mailto:a@b.example"}) {
    EXPECT_FALSE(ReadMobilePage({u"name=x", u"url=" + TString(url)})) << ToUtf8(url);
  }
  EXPECT_FALSE(ReadMobilePage({u"name=x"}));
  EXPECT_FALSE(ReadMobilePage(TStringList()));
  EXPECT_FALSE(ReadMobilePage({u"url=https://a.example/" + TString(100000, u'x')}));
  EXPECT_TRUE(ReadMobilePage({u"url= HTTP://A.example "}));
}

TEST(TPageMobile, AnAddressIsEnough) {
  const auto page = ReadMobilePage({u"url=https://a.example/x"});
  ASSERT_TRUE(page);
  EXPECT_EQ(page->Product.Name, u"https://a.example/x");
  EXPECT_EQ(page->Product.Offer, TOffer());
  EXPECT_EQ(page->Product.Image, u"");
  EXPECT_TRUE(page->Changed.IsZero());
}

TEST(TPageMobile, WhatMakesNoSenseIsUnknown) {
  const auto page = ReadMobilePage({u"url=https://a.example/", u"name= \n ", u"price=-1",
                                    u"currency=Muscheln", u"availability=vielleicht",
                                    u"image=javascript:alert(1)", u"endtimeutc=0000-00-00 00:00:00",
                                    u"offerdateutc=99999-01-01 00:00:00", u"id=x"});
  ASSERT_TRUE(page);
  EXPECT_EQ(page->Product.Name, u"https://a.example/");
  EXPECT_EQ(page->Product.Offer, TOffer());
  EXPECT_EQ(page->Product.Image, u"");
  EXPECT_TRUE(page->Changed.IsZero());
}

TEST(TPageMobile, ValuesThatOthersWroteStandOnOneLine) {
  const auto page =
      ReadMobilePage({u"url=https://a.example/", u"name=a\r\nb\x02", u"seller=c\nd", u"price= 5 "});
  ASSERT_TRUE(page);
  EXPECT_EQ(page->Product.Name, u"a b");
  EXPECT_EQ(page->Product.Offer.Seller, u"c d");
  EXPECT_EQ(page->Product.Offer.Price, TPrice(5, 0));
}

TEST(TPageMobile, WhatOthersWroteIsTakenAsTheProgramWouldWriteIt) {
  const auto page = ReadMobilePage(
      {u"URL=https://A.example:443/x/../y#z", u"image= HTTPS://A.example/./a b.jpg ", u"currency=€",
       u"availability=https://schema.org/InStock", u"price=1.50",
       u"endtimeutc=\n 2026-12-06 19:00:00 ", u"offerdateutc= 2026-07-20 16:30:05\t"});
  ASSERT_TRUE(page);
  const Exported lines(*page);
  EXPECT_EQ(lines.GetValue(u"url"), u"https://a.example/y");
  EXPECT_EQ(lines.GetValue(u"image"), u"https://a.example/a%20b.jpg");
  EXPECT_EQ(lines.GetValue(u"currency"), u"EUR");
  EXPECT_EQ(lines.GetValue(u"availability"), u"InStock");
  EXPECT_EQ(lines.GetValue(u"price"), u"1.5");
  EXPECT_EQ(lines.GetValue(u"endtimeutc"), u"2026-12-06 19:00:00");
  EXPECT_EQ(lines.GetValue(u"offerdateutc"), u"2026-07-20 16:30:05");
}

TEST(TPageMobile, TextsOfAMegabyteComeInWhole) {
  const TString text(1 << 20, u'n');
  TPageData page = Page();
  page.Product.Name = text;
  page.Product.Offer.Seller = text;
  const TPageData back = ThereAndBack(page);
  EXPECT_EQ(back.Product.Name, text);
  EXPECT_EQ(back.Product.Offer.Seller, text);
  EXPECT_FALSE(ReadMobilePage({u"url=https://a.example/", u"price=" + text})->Product.Offer.Price);
}

TEST(TPageMobile, TimesOutsideOfTheCalendarBreakNothing) {
  for (const TStringView text : {u"0001-01-01 00:00:00", u"9999-12-31 23:59:59"}) {
    const TString time(text);
    const auto page =
        ReadMobilePage({u"url=https://a.example/", u"endtimeutc=" + time, u"offerdateutc=" + time});
    ASSERT_TRUE(page);
    EXPECT_TRUE(ReadMobilePage(Exported(*page)));
  }
}

TEST(TPageMobile, ItsGuidIsKnownInAnyCaseAndWithOrWithoutBraces) {
  const TIntf<IWatchlistIntegration> source = MakeIntf<TPageIntegration>();
  EXPECT_TRUE(source->SupportsMobileExport());
  for (const TStringView text :
       {u"8b7f2d64-3e95-4c0a-a1b8-52e6d9047c31", u"8B7F2D64-3E95-4C0A-A1B8-52E6D9047C31",
        u"{8b7f2d64-3e95-4c0a-a1b8-52e6d9047c31}", u"{8B7F2D64-3E95-4C0A-A1B8-52E6D9047C31}",
        u" 8b7f2d64-3e95-4C0A-a1b8-52e6d9047c31\n"}) {
    EXPECT_TRUE(source->HandlesPluginGuid(text)) << ToUtf8(text);
  }
  for (const TStringView text :
       {u"", u"{}", u"8b7f2d64-3e95-4c0a-a1b8-52e6d9047c32",
        u"{8b7f2d64-3e95-4c0a-a1b8-52e6d9047c31", u"8b7f2d643e954c0aa1b852e6d9047c31", u"page"}) {
    EXPECT_FALSE(source->HandlesPluginGuid(text)) << ToUtf8(text);
  }
}

TEST(TPageMobile, ResultsOfOtherSourcesAreNotExported) {
  const TIntf<IWatchlistIntegration> source = MakeIntf<TPageIntegration>();
  const auto list = NewInterfaceList();
  list->Add(nullptr);
  TStringList lines;
  source->ExportSearchResults(*list, {}, lines);
  EXPECT_EQ(lines.GetCount(), 0);
}

rc::Gen<std::string> Addresses() {
  const auto part = [](std::vector<std::string> iValues) {
    return rc::gen::elementOf(std::move(iValues));
  };
  return rc::gen::map(
      rc::gen::tuple(
          part({"https://", "HTTPS://"}), part({"a.example", "A.EXAMPLE:443", "bücher.example"}),
          part({"/x", "/X", "/y/../x", "/%78"}),
          part({"", "?a=1", "?utm_source=b", "?a=1&utm_source=c"}), part({"", "#f", "#g"})),
      [](const auto& iParts) {
        return std::apply([](const auto&... iTexts) { return (iTexts + ...); }, iParts);
      });
}

RC_GTEST_PROP(TPageSearchResult, KeysAreEqualExactlyIfResultsAreTheSame, ()) {
  const auto result = [](const std::string& iAddress) -> TIntf<ISearchResult> {
    return MakeIntf<TPageSearchResult>(Page(iAddress));
  };
  const TIntf<ISearchResult> a = result(*Addresses());
  const TIntf<ISearchResult> b = result(*Addresses());
  const bool sameKey = Supports<ISearchResultSameKey>(a)->GetSameKey() ==
                       Supports<ISearchResultSameKey>(b)->GetSameKey();
  RC_CLASSIFY(sameKey, "same");
  RC_ASSERT(a->IsSame(b) == sameKey);
  RC_ASSERT(b->IsSame(a) == sameKey);
}

RC_GTEST_PROP(TPageMobile, PagesWithAnyTextsComeBackAsTheyWere, ()) {
  const auto text = rc::gen::container<TString>(rc::gen::map(
      rc::gen::inRange(1, 0x3000), [](int iChar) { return static_cast<char16_t>(iChar); }));
  TPageData page = Page(*Addresses());
  page.Product.Name = *text;
  page.Product.Offer.Seller = *text;
  page.Product.Offer.Price =
      TPrice(*rc::gen::inRange<int64_t>(0, 1'000'000'000), *rc::gen::inRange(0, 9));
  const auto back = ThroughTheDocument({page});
  RC_ASSERT(back.size() == 1u);
  const TString line = LineText(page.Product.Name);
  RC_ASSERT(back[0].Product.Name == (line.empty() ? FromUtf8(page.Address.Text()) : line));
  RC_ASSERT(back[0].Product.Offer.Seller == LineText(page.Product.Offer.Seller));
  RC_ASSERT(back[0].Product.Offer.Price == page.Product.Offer.Price);
  RC_ASSERT(back[0].Address.Text() == page.Address.Text());
}

}  // namespace
}  // namespace kk
