#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "host/base/Exception.h"
#include "host/base/TLocale.h"
#include "host/base/TString.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TLocaleText : public testing::Test {
 protected:
  TLocaleText() { SetLocaleName("de_DE"); }
  ~TLocaleText() override { SetLocaleName(""); }
};

TEST(TString, Utf8AndBack) {
  EXPECT_EQ(FromUtf8("Grüße, 10 €, \xF0\x9F\x94\xA8"), u"Grüße, 10 €, \U0001F528");
  EXPECT_EQ(ToUtf8(u"Grüße, 10 €, \U0001F528"), "Grüße, 10 €, \xF0\x9F\x94\xA8");
  EXPECT_EQ(FromUtf8(""), u"");
  EXPECT_EQ(ToUtf8(u""), "");
}

TEST(TString, BytesThatAreNoUtf8BecomeReplacementCharacters) {
  EXPECT_EQ(FromUtf8("a\xFF"
                     "b"),
            u"a\uFFFDb");
  EXPECT_EQ(FromUtf8("a\xC3"), u"a\uFFFD");
  EXPECT_EQ(FromUtf8("\xED\xA0\x80z").back(), u'z') << "a surrogate in UTF-8";
  EXPECT_EQ(FromUtf8("\xC0\x80z").back(), u'z') << "an overlong form";
  EXPECT_EQ(FromUtf8("\xC0\x80z").front(), u'\uFFFD');
}

TEST(TString, AnUnpairedSurrogateBecomesAReplacementCharacter) {
  EXPECT_EQ(ToUtf8(TString{u'a', char16_t{0xD83D}}), "a\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8(TString{char16_t{0xDE00}, u'b'}),
            "\xEF\xBF\xBD"
            "b");
}

TEST(TString, ZeroBytesAreTextLikeAnyOther) {
  EXPECT_EQ(FromUtf8(std::string_view("a\0b", 3)), TString(u"a\0b", 3));
  EXPECT_EQ(ToUtf8(TString(u"a\0b", 3)), std::string("a\0b", 3));
}

TEST(TString, AnyBytesComeOutAsTextThatStays) {
  EXPECT_TRUE(rc::check("from UTF-8 is stable", [](const std::string& bytes) {
    const TString text = FromUtf8(bytes);
    RC_ASSERT(FromUtf8(ToUtf8(text)) == text);
  }));
}

TEST(Format, FillsMarksInOrder) {
  EXPECT_EQ(Format(u"%s hat %d von %d", {u"Uhr", 3, size_t{5}}), u"Uhr hat 3 von 5");
  EXPECT_EQ(Format(u"%d", {int64_t{-9000000000}}), u"-9000000000");
  EXPECT_EQ(Format(u"%s", {TString(u"a")}), u"a");
  EXPECT_EQ(Format(u"%s", {TStringView(u"b")}), u"b");
}

TEST(Format, APercentSignIsWrittenTwice) {
  EXPECT_EQ(Format(u"100%% von %s", {u"x"}), u"100% von x");
}

TEST(Format, AnArgumentTooFewLeavesItsMark) {
  EXPECT_EQ(Format(u"%s und %s", {u"a"}), u"a und %s");
  EXPECT_EQ(Format(u"%d", {}), u"%d");
}

TEST(Format, AnArgumentTooManyIsPassedOver) { EXPECT_EQ(Format(u"%s", {u"a", u"b"}), u"a"); }

TEST(Format, OtherMarksAndAPercentSignAtTheEndStay) {
  EXPECT_EQ(Format(u"%MV 5% %", {u"a"}), u"%MV 5% %");
}

TEST(Format, MarksInsideAnArgumentAreText) { EXPECT_EQ(Format(u"%s-%s", {u"%s", u"b"}), u"%s-b"); }

TEST(Trim, TakesBlanksAndControlCharactersFromBothEnds) {
  EXPECT_EQ(Trim(u" \t\r\n a b \n"), u"a b");
  EXPECT_EQ(Trim(u"   "), u"");
  EXPECT_EQ(Trim(u""), u"");
  EXPECT_EQ(Trim(u"\u00A0a"), u"\u00A0a") << "a no-break space is text";
}

TEST(ReplaceAll, ReplacesEveryOccurrenceOnce) {
  EXPECT_EQ(ReplaceAll(u"aXbXX", u"X", u"--"), u"a--b----");
  EXPECT_EQ(ReplaceAll(u"aaa", u"aa", u"a"), u"aa");
  EXPECT_EQ(ReplaceAll(u"abc", u"", u"x"), u"abc");
  EXPECT_EQ(ReplaceAll(u"", u"a", u"x"), u"");
  EXPECT_EQ(ReplaceAll(u"abc", u"abc", u""), u"");
}

TEST(ToSingleLine, EachLineBreakBecomesOneBlank) {
  EXPECT_EQ(ToSingleLine(u"eins\r\nzwei\rdrei\nvier"), u"eins zwei drei vier");
  EXPECT_EQ(ToSingleLine(u"eins\n\nzwei"), u"eins  zwei");
  EXPECT_EQ(ToSingleLine(u"\r\neins\r\n"), u"eins");
}

TEST(Split, GivesThePiecesBetweenTheSeparators) {
  EXPECT_THAT(Split(u"a|b|c", u'|'), ElementsAre(u"a", u"b", u"c"));
  EXPECT_THAT(Split(u"a|", u'|'), ElementsAre(u"a", u""));
  EXPECT_THAT(Split(u"|", u'|'), ElementsAre(u"", u""));
  EXPECT_THAT(Split(u"a", u'|'), ElementsAre(u"a"));
  EXPECT_THAT(Split(u"", u'|'), IsEmpty());
}

TEST(SameText, DoesNotRegardCase) {
  EXPECT_TRUE(SameText(u"Möbel", u"MÖBEL"));
  EXPECT_TRUE(SameText(u"Straße", u"STRASSE"));
  EXPECT_TRUE(SameText(u"ΣΊΣΥΦΟΣ", u"σίσυφος"));
  EXPECT_TRUE(SameText(u"", u""));
  EXPECT_FALSE(SameText(u"Möbel", u"Mobel"));
  EXPECT_FALSE(SameText(u"a", u"ab"));
  EXPECT_FALSE(SameText(u"a", u""));
  EXPECT_TRUE(SameText(u"{aZ-09[`}", u"{Az-09[`}"));
  EXPECT_FALSE(SameText(u"a@", u"a`")) << "no letters";
  EXPECT_FALSE(SameText(u"a[", u"a{"));
  EXPECT_TRUE(SameText(u"9 K", u"9 \u212A")) << "the sign for kelvin";
}

TEST(SameText, AnswersLikeTheFoldedTexts) {
  EXPECT_TRUE(rc::check("same text", [] {
    const auto letter = rc::gen::element<char16_t>(u'a', u'A', u's', u'S', u'ß', u'k', u'\u212A');
    const auto a = *rc::gen::container<TString>(letter);
    const auto b = *rc::gen::container<TString>(letter);
    RC_ASSERT(SameText(a, b) == (CompareText(a, b) == 0));
  }));
}

TEST(StartsWith, RegardsCase) {
  EXPECT_TRUE(StartsWith(u"DefaultCategory3", u"DefaultCategory"));
  EXPECT_TRUE(StartsWith(u"a", u""));
  EXPECT_FALSE(StartsWith(u"defaultcategory3", u"DefaultCategory"));
  EXPECT_FALSE(StartsWith(u"Def", u"Default"));
}

TEST(CompareText, OrdersByFoldedCodePoints) {
  EXPECT_LT(CompareText(u"a", u"B"), 0);
  EXPECT_GT(CompareText(u"b", u"A"), 0);
  EXPECT_EQ(CompareText(u"ÄPFEL", u"äpfel"), 0);
  EXPECT_LT(CompareText(u"Zebra", u"Äpfel"), 0) << "not the order of a language";
  EXPECT_LT(CompareText(u"\uFFFD", u"\U0001F528"), 0) << "code points, not units";
}

TEST_F(TLocaleText, SortsAsTheLanguageDoes) {
  EXPECT_LT(CompareLocaleText(u"Äpfel", u"Zebra"), 0);
  EXPECT_EQ(CompareLocaleText(u"äpfel", u"ÄPFEL"), 0);
  EXPECT_LT(CompareLocaleText(u"Apfel", u"Äpfel"), 0);
  EXPECT_GT(CompareLocaleText(u"b", u"A"), 0);
}

TEST_F(TLocaleText, SortKeysStandInTheOrderOfTheirTexts) {
  const TString texts[] = {u"",      u"a", u"Apfel", u"Äpfel",        u"äpfel",          u"apfel",
                           u"Zebra", u"ß", u"ss",    u"\u4E2D\u6587", TString(200, u'Ö')};
  for (const TString& a : texts) {
    for (const TString& b : texts) {
      const int keys = LocaleSortKey(a).compare(LocaleSortKey(b));
      const int order = CompareLocaleText(a, b);
      EXPECT_EQ(keys < 0, order < 0) << ToUtf8(a) << " " << ToUtf8(b);
      EXPECT_EQ(keys > 0, order > 0) << ToUtf8(a) << " " << ToUtf8(b);
    }
  }
}

TEST_F(TLocaleText, FollowsAChangeOfTheLanguage) {
  ASSERT_LT(CompareLocaleText(u"Ö", u"Z"), 0);
  SetLocaleName("sv_SE");
  EXPECT_GT(CompareLocaleText(u"Ö", u"Z"), 0) << "in Swedish the letter stands at the end";
}

TEST(Numbers, AreWrittenAndReadInDecimal) {
  EXPECT_EQ(IntToStr(-42), u"-42");
  EXPECT_EQ(IntToStr(INT64_MIN), u"-9223372036854775808");
  EXPECT_EQ(StrToInt(u"9223372036854775807"), INT64_MAX);
  EXPECT_EQ(StrToInt(u" 7 "), 7);
  int64_t number = 0;
  EXPECT_TRUE(TryStrToInt(u"-5", number));
  EXPECT_EQ(number, -5);
}

TEST(Numbers, OtherTextIsNone) {
  int64_t number = 0;
  for (const TStringView text : {u"", u" ", u"5x", u"x5", u"1.5", u"9223372036854775808", u"٣"}) {
    EXPECT_FALSE(TryStrToInt(text, number)) << ToUtf8(text);
  }
  try {
    StrToInt(u"fünf");
    FAIL();
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), u"'fünf' ist keine gültige ganze Zahl");
  }
}

TEST(ShortenedText, CutsNoCharacterInTwo) {
  EXPECT_EQ(ShortenedText(u"abc", 3), u"abc");
  EXPECT_EQ(ShortenedText(u"abcd", 3), u"abc…");
  EXPECT_EQ(ShortenedText(u"ab\U0001F4A1c", 3), u"ab…");
  EXPECT_EQ(ShortenedText(u"ab\U0001F4A1c", 4), u"ab\U0001F4A1…");
}

TEST(WithoutControlCharacters, TakesThemAllOut) {
  EXPECT_EQ(WithoutControlCharacters(u"Betreff\r\nBcc: x"), u"BetreffBcc: x");
  EXPECT_EQ(WithoutControlCharacters(TString(u"a\0b\x7F\x85\x9F"
                                             u"c\u00A0",
                                             8)),
            u"abc\u00A0");
  EXPECT_EQ(WithoutControlCharacters(u"Grüße"), u"Grüße");
}

}  // namespace
}  // namespace kk
