#include "host/delivery/email/TMailText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace kk {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::Le;
using testing::SizeIs;

std::vector<std::string> Lines(const std::string& iText) {
  std::vector<std::string> lines;
  std::istringstream stream(iText);
  for (std::string line; std::getline(stream, line);) {
    EXPECT_TRUE(!line.empty() && line.back() == '\r');
    line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

// RFC 2045, 6.7, backwards.
std::string Decoded(const std::string& iText) {
  std::string result;
  for (size_t i = 0; i < iText.size(); ++i) {
    if (iText[i] != '=') {
      result += iText[i];
    } else if (iText[i + 1] == '\r') {
      i += 2;
    } else {
      result += static_cast<char>(std::stoi(iText.substr(i + 1, 2), nullptr, 16));
      i += 2;
    }
  }
  return result;
}

TEST(HeaderText, HasNoCharacterThatCouldEndALine) {
  EXPECT_EQ(HeaderText(TString(u"a\r\nb\0c\u0085d\u2028e\u2029f\x7Fg\th", 16)), u"abcdefgh");
}

TEST(EncodedText, LeavesPlainTextAsItIs) {
  EXPECT_EQ(EncodedText(u" Erinnerung an <x@y>, \"5:30\" "), "Erinnerung an <x@y>, \"5:30\"");
  EXPECT_EQ(EncodedText(u""), "");
}

TEST(EncodedText, EncodesWhatIsNotPlainOrLooksEncodedOrIsLong) {
  EXPECT_EQ(EncodedText(u"ä"), "=?UTF-8?B?w6Q=?=");
  EXPECT_EQ(EncodedText(u"=?x"), "=?UTF-8?B?PT94?=");
  EXPECT_EQ(EncodedText(TString(60, u'a')), std::string(60, 'a'));
  EXPECT_THAT(Lines("Subject: " + EncodedText(TString(61, u'a')) + "\r\n"), SizeIs(2));
}

TEST(EncodedText, FoldsIntoWordsThatEndBetweenCharacters) {
  const std::string text = "Subject: " + EncodedText(u"a" + TString(30, u'€')) + "\r\n";
  EXPECT_THAT(
      Lines(text),
      ElementsAre("Subject: =?UTF-8?B?YeKCrOKCrOKCrOKCrOKCrOKCrOKCrOKCrOKCrOKCrOKCrOKCrA==?=",
                  " =?UTF-8?B?4oKs4oKs4oKs4oKs4oKs4oKs4oKs4oKs4oKs4oKs4oKs4oKs4oKs?=",
                  " =?UTF-8?B?4oKs4oKs4oKs4oKs4oKs?="));
  EXPECT_THAT(Lines(text), Each(SizeIs(Le(76u))));
}

TEST(EncodedName, LeavesOnlyWordsAsTheyAre) {
  EXPECT_EQ(EncodedName(u"Kaufkobolde 7"), "Kaufkobolde 7");
  EXPECT_EQ(EncodedName(u"a, b"), "=?UTF-8?B?YSwgYg==?=");
  EXPECT_EQ(EncodedName(u"\"x\" <a@b>"), "=?UTF-8?B?IngiIDxhQGI+?=");
}

TEST(QuotedPrintable, EndsEveryLineWithCrLf) {
  EXPECT_EQ(QuotedPrintable(u"a\r\nb\rc\nd\u2028e\u2029f"), "a\r\nb\r\nc\r\nd\r\ne\r\nf\r\n");
  EXPECT_EQ(QuotedPrintable(u"a\n"), "a\r\n");
  EXPECT_EQ(QuotedPrintable(u"a\n\n"), "a\r\n\r\n");
  EXPECT_EQ(QuotedPrintable(u""), "\r\n");
}

TEST(QuotedPrintable, EncodesWhatDoesNotTravelAsItIs) {
  EXPECT_EQ(QuotedPrintable(u"ä=€"), "=C3=A4=3D=E2=82=AC\r\n");
  EXPECT_EQ(QuotedPrintable(u"a \tb \nc\t\n"), "a \tb=20\r\nc=09\r\n");
}

TEST(QuotedPrintable, LeavesOutControlCharacters) {
  EXPECT_EQ(QuotedPrintable(TString(u"a\0b\u001Bc\u007Fd\u009Be", 9)), "abcde\r\n");
}

TEST(QuotedPrintable, NoLineBeginsWithADotOrWithFrom) {
  EXPECT_EQ(QuotedPrintable(u".\n..a\nx.\nFrom me\nFromage\nx From y"),
            "=2E\r\n=2E.a\r\nx.\r\n=46rom me\r\nFromage\r\nx From y\r\n");
  const std::string dots = QuotedPrintable(TString(1000, u'.'));
  for (const std::string& line : Lines(dots)) EXPECT_NE(line[0], '.');
  EXPECT_EQ(Decoded(dots), std::string(1000, '.') + "\r\n");
}

TEST(QuotedPrintable, KeepsToSeventySixCharactersInALine) {
  EXPECT_THAT(Lines(QuotedPrintable(TString(76, u'a'))), ElementsAre(std::string(76, 'a')));
  EXPECT_THAT(Lines(QuotedPrintable(TString(77, u'a'))),
              ElementsAre(std::string(75, 'a') + "=", "aa"));
  EXPECT_THAT(Lines(QuotedPrintable(TString(74, u'a') + u"ä")),
              ElementsAre(std::string(74, 'a') + "=", "=C3=A4"));
  for (int before = 0; before < 80; ++before) {
    const std::string text = QuotedPrintable(TString(before, u'a') + u"ä.= €" + TString(99, u'b'));
    EXPECT_THAT(Lines(text), Each(SizeIs(Le(76u))));
    EXPECT_EQ(Decoded(text), std::string(before, 'a') + "ä.= €" + std::string(99, 'b') + "\r\n");
  }
}

TEST(MailDate, HasTheZoneOfTheMoment) {
  const TDateTime local = EncodeDateTime({2026, 11, 20, 18, 30, 5, 250});
  const int64_t utc = local.Ms() - EncodeDateTime({1970, 1, 1, 0, 0, 0, 0}).Ms();
  EXPECT_EQ(MailDate(local, utc), "Fri, 20 Nov 2026 18:30:05 +0000");
  EXPECT_EQ(MailDate(local, utc - TDateTime::cMsPerHour), "Fri, 20 Nov 2026 18:30:05 +0100");
  EXPECT_EQ(MailDate(local, utc + 210 * TDateTime::cMsPerMinute),
            "Fri, 20 Nov 2026 18:30:05 -0330");
}

TEST(MailDate, NamesEveryDayOfTheWeek) {
  const TDateTime monday = EncodeDateTime({2026, 8, 31, 0, 0, 0, 0});
  std::string days;
  for (int day = 0; day < 7; ++day) {
    days += MailDate(monday.PlusMs(day * TDateTime::cMsPerDay), 0).substr(0, 7) + ";";
  }
  EXPECT_EQ(days, "Mon, 31;Tue, 1 ;Wed, 2 ;Thu, 3 ;Fri, 4 ;Sat, 5 ;Sun, 6 ;");
}

}  // namespace
}  // namespace kk
