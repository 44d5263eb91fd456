#include "apps/cli/TCliMoment.h"

#include <gtest/gtest.h>

namespace kk {
namespace {

int64_t Span(TStringView iText) {
  int64_t seconds = -1;
  return TCliMoment::TryParseSpan(iText, seconds) ? seconds : -1;
}

std::string Moment(TStringView iText) {
  const TDateTime now = EncodeDateTime({2026, 11, 20, 18, 30, 0, 250});
  TDateTime moment;
  return TCliMoment::TryParse(iText, now, moment) ? ToUtf8(DateTimeToIso(moment)) : "none";
}

TEST(TCliMoment, SpansAreNumbersWithUnits) {
  EXPECT_EQ(Span(u"90s"), 90);
  EXPECT_EQ(Span(u"10m"), 600);
  EXPECT_EQ(Span(u"2h"), 7200);
  EXPECT_EQ(Span(u"1d"), 86400);
  EXPECT_EQ(Span(u"1h30m"), 5400);
  EXPECT_EQ(Span(u"1d2h3m4s"), 93784);
  EXPECT_EQ(Span(u"0s"), 0);
}

TEST(TCliMoment, OtherSpansAreNone) {
  for (const TStringView text : {u"", u"10", u"m", u"10x", u"-5m", u"5m1h", u"1h1h", u"1 h", u"1h ",
                                 u"1.5h", u"1H", u"4000d", u"9999999999s"}) {
    EXPECT_EQ(Span(text), -1) << ToUtf8(text);
  }
}

TEST(TCliMoment, ATimeAloneIsTheNextOne) {
  EXPECT_EQ(Moment(u"18:31"), "2026-11-20T18:31:00");
  EXPECT_EQ(Moment(u"18:30:15"), "2026-11-20T18:30:15");
  EXPECT_EQ(Moment(u"18:30"), "2026-11-21T18:30:00");
  EXPECT_EQ(Moment(u"8:05"), "2026-11-21T08:05:00");
}

TEST(TCliMoment, ATimeThatIsNowIsTomorrows) {
  const TDateTime now = EncodeDateTime({2026, 11, 20, 18, 30, 0, 0});
  TDateTime moment;
  ASSERT_TRUE(TCliMoment::TryParse(u"18:30", now, moment));
  EXPECT_EQ(moment, now.PlusMs(TDateTime::cMsPerDay));
}

TEST(TCliMoment, ADayMayStandBefore) {
  EXPECT_EQ(Moment(u"24.12.2026 18:30"), "2026-12-24T18:30:00");
  EXPECT_EQ(Moment(u"1.2.2027 8:30:05"), "2027-02-01T08:30:05");
  EXPECT_EQ(Moment(u"2026-12-24T18:30"), "2026-12-24T18:30:00");
  EXPECT_EQ(Moment(u"2026-12-24T18:30:15"), "2026-12-24T18:30:15");
  EXPECT_EQ(Moment(u"2026-12-24 18:30:15"), "2026-12-24T18:30:15");
  EXPECT_EQ(Moment(u"19.11.2026 18:30"), "2026-11-19T18:30:00")
      << "the past is the editor's matter";
}

TEST(TCliMoment, OtherTextsAreNone) {
  for (const TStringView text : {u"", u"morgen", u"25:00", u"18:60", u"31.02.2026 10:00",
                                 u"24.12.2026", u"18:30 Uhr", u"2026-12-24T18:30:00Z", u"18"}) {
    EXPECT_EQ(Moment(text), "none") << ToUtf8(text);
  }
}

}  // namespace
}  // namespace kk
