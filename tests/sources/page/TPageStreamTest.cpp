#include "sources/page/TPageStream.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "host/base/Exception.h"

namespace kk {
namespace {

TPageData Page(const std::string& iAddress = "https://shop.example/p/1") {
  TPageData data = NewPageData(TPageAddress::Parse(iAddress).value(), u"Amboss");
  data.Product.Image = u"https://shop.example/a.jpg";
  data.Product.Offer = {TPrice(123950, 2), u"EUR", TAvailability::avInStock, u"Schmiede",
                        EncodeDateTime({2026, 12, 6, 20, 0, 0, 250})};
  data.ETag = "\"abc\"";
  data.LastModified = "Fri, 20 Nov 2026 18:30:00 GMT";
  data.ReaderVersion = 1;
  data.Changed = EncodeDateTime({2026, 11, 20, 18, 30, 0, 0});
  return data;
}

std::string Written(const std::vector<TPageData>& iPages) {
  TPageStreamWriter writer;
  for (const TPageData& page : iPages) writer.Add(page);
  return writer.TakeBytes();
}

std::vector<TPageData> Loaded(const std::string& iBytes) {
  TMemoryStream stream(iBytes);
  return ReadPageStream(stream);
}

void ExpectEqual(const TPageData& iA, const TPageData& iB) {
  EXPECT_EQ(iA.Id, iB.Id);
  EXPECT_EQ(iA.Address.Text(), iB.Address.Text());
  EXPECT_EQ(iA.Product, iB.Product);
  EXPECT_EQ(iA.ETag, iB.ETag);
  EXPECT_EQ(iA.LastModified, iB.LastModified);
  EXPECT_EQ(iA.ReaderVersion, iB.ReaderVersion);
  EXPECT_EQ(iA.Changed, iB.Changed);
  EXPECT_EQ(iA.UnknownFields, iB.UnknownFields);
}

TEST(TPageStream, EverythingReadsBack) {
  const TPageData full = Page();
  const TPageData fresh = NewPageData(TPageAddress::Parse("http://a.example/").value(), u"");
  const auto pages = Loaded(Written({full, fresh}));
  ASSERT_EQ(pages.size(), 2u);
  ExpectEqual(pages[0], full);
  ExpectEqual(pages[1], fresh);
}

TEST(TPageStream, BytesAreThoseOfTheFormat) {
  TPageData data = NewPageData(TPageAddress::Parse("http://a.example/").value(), u"N");
  data.Id = GuidLiteral("{00000000-0000-0000-0000-000000000001}");
  EXPECT_EQ(Written({}), std::string("KKPAGE\r\n\x01\0", 10));
  EXPECT_EQ(Written({data}), std::string("KKPAGE\r\n\x01") + "\x3E" +
                                 "\x01\x26{00000000-0000-0000-0000-000000000001}" +
                                 "\x02\x11http://a.example/" + "\x03\x01N" + std::string(1, '\0'));
}

TEST(TPageStream, TextMayBeAnything) {
  TPageData data = Page();
  data.Product.Name = TString(u"\0\r\n=[/x]\x01 😀 <&>", 15);
  data.Product.Offer.Seller = TString(70000, u'ß');
  const auto pages = Loaded(Written({data}));
  ASSERT_EQ(pages.size(), 1u);
  ExpectEqual(pages[0], data);
}

TEST(TPageStream, UnknownFieldsGoThroughUnharmed) {
  TPageData data = Page();
  data.UnknownFields = std::string("\xC8\x01\x03") + "neu";
  const auto pages = Loaded(Written({data}));
  ASSERT_EQ(pages.size(), 1u);
  ExpectEqual(pages[0], data);
  EXPECT_EQ(Written(pages), Written({data}));
}

TEST(TPageStream, NewerVersionIsReadAsFarAsItIsKnown) {
  std::string bytes = Written({Page()});
  bytes[8] = 7;
  EXPECT_EQ(Loaded(bytes + "behind the end").size(), 1u);
}

TEST(TPageStream, StreamCutOffAnywhereIsDamaged) {
  const std::string bytes = Written({Page()});
  for (size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_THROW(Loaded(bytes.substr(0, length)), Exception) << length;
  }
}

TEST(TPageStream, StreamOfAnotherKindIsDamaged) {
  EXPECT_THROW(Loaded("<xml/>             "), Exception);
  EXPECT_THROW(Loaded(std::string("KKPAGE\r\n\0\0", 10)), Exception);
  EXPECT_THROW(Loaded("KKPAGE\r\n" + std::string(20, '\xFF')), Exception);
  try {
    Loaded("");
    FAIL();
  } catch (const Exception& e) {
    EXPECT_EQ(e.Message(), u"Die gespeicherten Produktseiten sind beschädigt");
  }
}

TEST(TPageStream, PageWithoutIdOrAddressIsDamaged) {
  TPageData data = Page();
  data.Id = cEmptyGuid;
  EXPECT_THROW(Loaded(Written({data})), Exception);
  data = Page();
  data.Address = {};
  EXPECT_THROW(Loaded(Written({data})), Exception);
}

TEST(TPageStream, AddressThatIsNoneIsDamaged) {
  for (const std::string address : {"file:///etc/passwd", "http://a b/", "http://\xC3\xA4/"}) {
    TPageData data = Page();
    data.UnknownFields = "\x02" + std::string(1, static_cast<char>(address.size())) + address;
    EXPECT_THROW(Loaded(Written({data})), Exception) << address;
  }
}

TEST(TPageStream, LengthsBeyondTheEndTakeNoMemory) {
  EXPECT_THROW(Loaded("KKPAGE\r\n\x01\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7F"), Exception);
}

TEST(TPageStream, PageWithAValueThatIsNotUnderstoodIsFetchedAnew) {
  for (const auto& [field, value] : std::vector<std::pair<std::string, std::string>>{
           {"\x04", "viel"}, {"\x06", "Halb"}, {"\x09", "bald"}, {"\x0C", "x"}, {"\x0D", "?"}}) {
    TPageData data = Page();
    data.UnknownFields = field + static_cast<char>(value.size()) + value;
    const auto pages = Loaded(Written({data}));
    ASSERT_EQ(pages.size(), 1u);
    EXPECT_EQ(pages[0].ReaderVersion, 0);
    EXPECT_EQ(pages[0].Product.Name, u"Amboss");
  }
}

TEST(TPageStream, ReadsFromThePositionOn) {
  TMemoryStream stream("xx" + Written({Page()}));
  stream.SetPosition(2);
  EXPECT_EQ(ReadPageStream(stream).size(), 1u);
}

TEST(TPageStream, HundredThousandPagesAreQuick) {
  const std::vector<TPageData> pages(100000, Page());
  EXPECT_EQ(Loaded(Written(pages)).size(), 100000u);
}

RC_GTEST_PROP(TPageStreamProperty, NoDamageCrashes, ()) {
  std::string bytes = Written({Page(), Page()});
  const int changes = *rc::gen::inRange(1, 5);
  for (int i = 0; i < changes; ++i) {
    const auto at = *rc::gen::inRange<size_t>(0, bytes.size());
    bytes[at] = *rc::gen::arbitrary<char>();
  }
  try {
    Loaded(bytes);
  } catch (const Exception&) {
  }
}

}  // namespace
}  // namespace kk
