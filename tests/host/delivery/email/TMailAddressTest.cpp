#include "host/delivery/email/TMailAddress.h"

#include <gtest/gtest.h>

#include "host/base/Exception.h"

namespace kk {
namespace {

std::string Check(TStringView iText) {
  try {
    return TMailAddress::Check(iText);
  } catch (const Exception& e) {
    return "! " + ToUtf8(e.Message());
  }
}

std::string NotOne(const std::string& iText) {
  return "! \"" + iText + "\" ist nicht eine einzelne, gültige E-Mail-Adresse";
}

TEST(TMailAddress, TakesOneAddressAsItIs) {
  EXPECT_EQ(Check(u"a@b"), "a@b");
  EXPECT_EQ(Check(u"Erika.Muster+kk@mail-1.Example.org"), "Erika.Muster+kk@mail-1.Example.org");
  EXPECT_EQ(Check(u"!#$%&'*+-/=?^_`{|}~@xn--mller-kva.de"), "!#$%&'*+-/=?^_`{|}~@xn--mller-kva.de");
}

TEST(TMailAddress, LosesBlanksAroundItAndControlCharactersAnywhere) {
  EXPECT_EQ(Check(u"  a@b.de \t"), "a@b.de");
  EXPECT_EQ(Check(u"a@b.de\r\n"), "a@b.de");
  EXPECT_EQ(Check(TString(u"a\0@b\u0085.d\u2028e\u2029", 10)), "a@b.de");
}

TEST(TMailAddress, RefusesLists) {
  EXPECT_EQ(Check(u"a@b.de,c@d.de"), NotOne("a@b.de,c@d.de"));
  EXPECT_EQ(Check(u"a@b.de c@d.de"), NotOne("a@b.de c@d.de"));
  EXPECT_EQ(Check(u"a@b.de;c@d.de"), NotOne("a@b.de;c@d.de"));
  EXPECT_EQ(Check(u"a@b.de@d.de"), NotOne("a@b.de@d.de"));
  EXPECT_EQ(Check(u"a@b.de\r\nRCPT TO:<c@d.de>"), NotOne("a@b.deRCPT TO:<c@d.de>"));
}

TEST(TMailAddress, RefusesBracketsNamesQuotesAndComments) {
  for (const TStringView text :
       {u"<a@b.de>", u"A <a@b.de>", u"a@b.de>", u"a@b.de> SIZE=1", u"\"a b\"@b.de", u"\"a\"@b.de",
        u"a(c)@b.de", u"a@[127.0.0.1]", u"a:b@c.de", u"a\\b@c.de", u"@x.de:a@b.de"}) {
    EXPECT_EQ(Check(text), NotOne(ToUtf8(text)));
  }
}

TEST(TMailAddress, RefusesWhatIsNoAddress) {
  for (const TStringView text :
       {u"a", u"@", u"a@", u"@b.de", u".a@b.de", u"a.@b.de", u"a..b@c.de", u"a@.de", u"a@b.",
        u"a@b..de", u"a@-b.de", u"a@b-.de", u"a@b_c.de", u"a@b.-.de"}) {
    EXPECT_EQ(Check(text), NotOne(ToUtf8(text)));
  }
  EXPECT_EQ(Check(u""), "! Es ist keine E-Mail-Adresse angegeben");
  EXPECT_EQ(Check(u" \r\n "), "! Es ist keine E-Mail-Adresse angegeben");
}

TEST(TMailAddress, KeepsToTheLimitsOfLength) {
  const TString local(64, u'a');
  const TString label(63, u'b');
  const TString domain = label + u"." + label + u"." + TString(61, u'c');
  EXPECT_EQ(Check(local + u"@" + domain), ToUtf8(local + u"@" + domain));
  EXPECT_EQ(Check(local + u"a@b.de").substr(0, 2), "! ");
  EXPECT_EQ(Check(local + u"@" + domain + u"c").substr(0, 2), "! ");
  EXPECT_EQ(Check(u"a@" + label + u"b.de").substr(0, 2), "! ");
}

TEST(TMailAddress, SaysWhyLettersBeyondAsciiAreRefused) {
  EXPECT_EQ(Check(u"jürgen@b.de"),
            "! Die Adresse \"jürgen@b.de\" enthält vor dem @ Umlaute oder andere besondere "
            "Zeichen, die nicht jeder Postausgang annimmt");
  EXPECT_EQ(Check(u"a@müller.de"),
            "! Die Adresse \"a@müller.de\" enthält nach dem @ Umlaute oder andere besondere "
            "Zeichen. Bitte geben Sie diesen Teil in der Form an, die mit \"xn--\" beginnt");
}

TEST(TMailAddress, AHugeTextIsRefusedAndShownInPart) {
  const std::string refusal = Check(TString(1 << 20, u'a') + u"@b.de");
  EXPECT_EQ(refusal, NotOne(std::string(80, 'a') + "…"));
}

}  // namespace
}  // namespace kk
