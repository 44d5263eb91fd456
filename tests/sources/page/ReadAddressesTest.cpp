#include "sources/page/ReadAddresses.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Each line as "<address> <address>", or "? <text>" for one that can't be understood.
std::vector<std::string> Read(TStringView iText) {
  std::vector<std::string> lines;
  for (const TAddressLine& line : ReadAddresses(iText)) {
    std::string text = line.Addresses.empty() ? "? " + ToUtf8(line.Text) : "";
    for (const TPageAddress& address : line.Addresses) {
      if (!text.empty()) text += " ";
      text += address.Text();
    }
    lines.push_back(text);
  }
  return lines;
}

TEST(ReadAddresses, OneALineWhateverTheLineBreaks) {
  EXPECT_THAT(Read(u"https://a.example/1\r\n\n  HTTP://B.example/2\t\rhttps://c.example\u2028"),
              ElementsAre("https://a.example/1", "http://b.example/2", "https://c.example/"));
  EXPECT_THAT(Read(u""), IsEmpty());
  EXPECT_THAT(Read(u" \r\n\t\n"), IsEmpty());
}

TEST(ReadAddresses, MissingSchemeIsPutInFront) {
  EXPECT_THAT(Read(u"www.shop.example/p?id=1\nshop.example\nshop.example:8443/x\nläden.example/ä"),
              ElementsAre("https://www.shop.example/p?id=1", "https://shop.example/",
                          "https://shop.example:8443/x", "https://xn--lden-loa.example/%C3%A4"));
  EXPECT_THAT(Read(u"localhost:8080/p\n127.0.0.1/p\nlocalhost"),
              ElementsAre("http://localhost:8080/p", "http://127.0.0.1/p", "http://localhost/"));
}

TEST(ReadAddresses, WordsAroundAnAddressArePassedOver) {
  EXPECT_THAT(Read(u"Schau mal: https://a.example/1 - toll!"), ElementsAre("https://a.example/1"));
  EXPECT_THAT(Read(u"<https://a.example/1>, \"https://a.example/2\"; (https://a.example/3)."),
              ElementsAre("https://a.example/1 https://a.example/2 https://a.example/3"));
  EXPECT_THAT(Read(u"Link:https://a.example/wiki/A_(B)"),
              ElementsAre("https://a.example/wiki/A_(B)"));
  EXPECT_THAT(Read(u"bei www.a.example und b.example/x, z.B. c.example"),
              ElementsAre("https://www.a.example/ https://b.example/x"));
}

TEST(ReadAddresses, TitlesStandAboveOrBelow) {
  EXPECT_THAT(Read(u"Gartenhacke\nhttps://a.example/1\nAmboss 3.0\nhttps://a.example/2"),
              ElementsAre("https://a.example/1", "https://a.example/2"));
  EXPECT_THAT(Read(u"https://a.example/1\nGartenhacke\nhttps://a.example/2\nAmboss"),
              ElementsAre("https://a.example/1", "https://a.example/2"));
  // One address has one title.
  EXPECT_THAT(Read(u"Eine Hacke\nNoch eine Hacke\nhttps://a.example/1"),
              ElementsAre("? Eine Hacke", "https://a.example/1"));
  EXPECT_THAT(Read(u"Eine Hacke\nhttps://a.example/1\nNoch eine Hacke"),
              ElementsAre("https://a.example/1", "? Noch eine Hacke"));
  EXPECT_THAT(Read(u"Eine Hacke\na.example/1"), ElementsAre("? Eine Hacke", "https://a.example/1"));
  EXPECT_THAT(Read(u"https://a.example/1\nEine Hacke\nhttps://a.example/2\nhttps://a.example/3"),
              ElementsAre("https://a.example/1", "https://a.example/2", "https://a.example/3"));
}

TEST(ReadAddresses, SingleWordIsATitleOnlyWhereTitlesAndAddressesTakeTurns) {
  EXPECT_THAT(Read(u"Hacke\nhttps://a.example/1"), ElementsAre("https://a.example/1"));
  EXPECT_THAT(Read(u"https://a.example/1\nHacke"), ElementsAre("https://a.example/1"));
  EXPECT_THAT(Read(u"Hacke\nhttps://a.example/1\nhttps://a.example/2"),
              ElementsAre("? Hacke", "https://a.example/1", "https://a.example/2"));
  EXPECT_THAT(Read(u"ftp://a.example/\nhttps://a.example/1"),
              ElementsAre("? ftp://a.example/", "https://a.example/1"));
}

TEST(ReadAddresses, CommentsOfDroppedListsAreLeftOut) {
  EXPECT_THAT(Read(u"# aus dem Browser\r\nhttps://a.example/1\r\n"),
              ElementsAre("https://a.example/1"));
}

TEST(ReadAddresses, PageThatWasNamedBeforeIsPassedOver) {
  EXPECT_THAT(Read(u"https://a.example/1\nHTTPS://A.example/1?utm_source=x#y\nhttps://a.example/2"),
              ElementsAre("https://a.example/1", "https://a.example/2"));
}

TEST(ReadAddresses, LineWithoutAnAddressCanNotBeUnderstood) {
  for (const TStringView line :
       {u"Gartenhacke", u"ftp://a.example/", u"http://", u"a@b.example", u"4711", u"Nr.5",
        u"a..example", u"shop.example:port/x", u"http:/a.example", u"file:///etc/passwd",
        u"javascript:alert(1)", u".de", u"ein Satz, z.B. dieser."}) {
    EXPECT_THAT(Read(line), ElementsAre("? " + ToUtf8(line)));
  }
}

TEST(ReadAddresses, AddressThatIsTooLongIsNone) {
  EXPECT_EQ(ReadAddresses(u"https://a.example/" + TString(9000, u'x'))[0].Addresses.size(), 0u);
}

RC_GTEST_PROP(ReadAddresses, TakesAnyText, (const std::u16string& iText)) {
  for (const TAddressLine& line : ReadAddresses(iText)) RC_ASSERT(!line.Text.empty());
}

}  // namespace
}  // namespace kk
