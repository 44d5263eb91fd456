#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstdlib>
#include <ctime>

#include "host/base/Exception.h"
#include "host/base/TClock.h"
#include "host/base/TDateTime.h"
#include "host/base/TLocale.h"
#include "tests/support/TTestClock.h"

namespace kk {
namespace {

// Before anything asks for the time zone of this process.
const bool zonePinned = [] {
  setenv("TZ", "Europe/Berlin", 1);
  tzset();
  return true;
}();

TDateTime At(int iYear, int iMonth, int iDay, int iHour = 0, int iMinute = 0, int iSecond = 0,
             int iMs = 0) {
  return EncodeDateTime({iYear, iMonth, iDay, iHour, iMinute, iSecond, iMs});
}

// Milliseconds since 1970 of a moment in UTC.
int64_t Utc(int iYear, int iMonth, int iDay, int iHour, int iMinute = 0) {
  return At(iYear, iMonth, iDay, iHour, iMinute).Ms() - At(1970, 1, 1).Ms();
}

class TGermanTexts : public testing::Test {
 protected:
  TGermanTexts() { SetLocaleName("de_DE"); }
  ~TGermanTexts() override { SetLocaleName(""); }
};

TEST(TDateTime, CountsDaysSinceTheEndOf1899) {
  EXPECT_EQ(At(1899, 12, 30).Ms(), 0);
  EXPECT_TRUE(At(1899, 12, 30).IsZero());
  EXPECT_DOUBLE_EQ(At(1900, 1, 1).Days(), 2.0);
  EXPECT_DOUBLE_EQ(At(1970, 1, 1).Days(), 25569.0);
  EXPECT_DOUBLE_EQ(At(2026, 11, 20, 18).Days(), 46346.75);
  EXPECT_EQ(TDateTime(46346.75), At(2026, 11, 20, 18));
}

TEST(TDateTime, StandsOnAGridOfMilliseconds) {
  EXPECT_EQ(TDateTime(1.0 / 3).Ms(), 28800000);
  EXPECT_EQ(TDateTime(0.6 / TDateTime::cMsPerDay).Ms(), 1);
  EXPECT_EQ(At(2026, 1, 1).PlusMs(-1), At(2025, 12, 31, 23, 59, 59, 999));
}

TEST(TDateTime, SurvivesItsDays) {
  EXPECT_TRUE(rc::check("days as double", [] {
    const auto ms = *rc::gen::inRange<int64_t>(At(1, 1, 1).Ms(), At(9999, 12, 31, 23, 59).Ms());
    RC_ASSERT(TDateTime(TDateTime::FromMs(ms).Days()).Ms() == ms);
  }));
}

TEST(TDateTime, PartsAndBack) {
  EXPECT_TRUE(rc::check("parts", [] {
    const auto ms = *rc::gen::inRange<int64_t>(At(1, 1, 1).Ms(), At(9999, 12, 31, 23, 59).Ms());
    RC_ASSERT(EncodeDateTime(DecodeDateTime(TDateTime::FromMs(ms))).Ms() == ms);
  }));
}

TEST(TDateTime, BeforeItsZeroTheTimeOfDayStillRunsForward) {
  const TDateParts parts = DecodeDateTime(TDateTime::FromMs(-1));
  EXPECT_EQ(parts.Year, 1899);
  EXPECT_EQ(parts.Day, 29);
  EXPECT_EQ(parts.Hour, 23);
  EXPECT_EQ(parts.Ms, 999);
}

TEST(TDateTime, HasTheYears1To9999) {
  EXPECT_EQ(DecodeDateTime(At(1, 1, 1)).Year, 1);
  EXPECT_EQ(DecodeDateTime(At(9999, 12, 31, 23, 59, 59, 999)).Year, 9999);
  EXPECT_THROW(At(0, 12, 31), EConvertError);
  EXPECT_THROW(At(10000, 1, 1), EConvertError);
  EXPECT_THROW(At(-1, 1, 1), EConvertError);
}

TEST(TDateTime, PartsThatNameNoMomentRaise) {
  EXPECT_THROW(At(2026, 2, 29), EConvertError);
  EXPECT_NO_THROW(At(2028, 2, 29));
  EXPECT_THROW(At(2100, 2, 29), EConvertError);
  EXPECT_THROW(At(2026, 0, 1), EConvertError);
  EXPECT_THROW(At(2026, 13, 1), EConvertError);
  EXPECT_THROW(At(2026, 1, 0), EConvertError);
  EXPECT_THROW(At(2026, 1, -1), EConvertError);
  EXPECT_THROW(At(2026, 1, 1, 24), EConvertError);
  EXPECT_THROW(At(2026, 1, 1, -1), EConvertError);
  EXPECT_THROW(At(2026, 1, 1, 0, 60), EConvertError);
  EXPECT_THROW(At(2026, 1, 1, 0, 0, 60), EConvertError);
  EXPECT_THROW(At(2026, 1, 1, 0, 0, 0, 1000), EConvertError);
}

TEST(TDateTime, PartsBeyondAByteDoNotWrapAround) {
  EXPECT_THROW(At(2026, 257, 1), EConvertError);
  EXPECT_THROW(At(2026, 1, 257), EConvertError);
  EXPECT_THROW(At(2026 + 65536, 1, 1), EConvertError);
}

TEST(TDateTime, IsReadByAPattern) {
  EXPECT_EQ(DateTimeStrEval(u"yyyy-mm-dd hh:nn:ss", u"2026-11-20 18:30:05"),
            At(2026, 11, 20, 18, 30, 5));
  EXPECT_EQ(DateTimeStrEval(u"dd.mm.yyyy", u"20.11.2026"), At(2026, 11, 20));
  EXPECT_EQ(DateTimeStrEval(u"hhnnsszzz", u"010203004"), At(1899, 12, 30, 1, 2, 3, 4));
}

TEST(TDateTime, TextThatDoesNotFitThePatternRaises) {
  for (const TStringView text :
       {u"", u"2026-11-20", u"2026-11-20 18:30:05 ", u"2026-11-20T18:30:05", u"2026-13-20 18:30:05",
        u"2026-11-20 18:30:6x", u"26-11-20 18:30:05", u"2026-11-20 18:3a:05"}) {
    EXPECT_THROW(DateTimeStrEval(u"yyyy-mm-dd hh:nn:ss", text), EConvertError) << ToUtf8(text);
  }
  EXPECT_THROW(DateTimeStrEval(u"yyyy mmm", u"2026 257"), EConvertError);
  try {
    DateTimeStrEval(u"yyyy", u"zwei");
    FAIL();
  } catch (const EConvertError& e) {
    EXPECT_EQ(e.Message(), u"'zwei' ist kein gültiges Datum");
  }
}

TEST(TDateTime, IsWrittenByAPattern) {
  EXPECT_EQ(FormatDateTime(u"dd.mm.yyyy hh:nn", At(2026, 3, 4, 5, 6)), u"04.03.2026 05:06");
  EXPECT_EQ(FormatDateTime(u"d.m. zzz", At(2026, 3, 14, 5, 6, 7, 8)), u"14.3. 008");
  EXPECT_EQ(FormatDateTime(u"yyyy", At(7, 1, 1)), u"0007");
}

TEST(TDateTime, IsoHasMillisecondsOnlyWhereThereAreSome) {
  EXPECT_EQ(DateTimeToIso(At(2026, 11, 20, 18, 30)), u"2026-11-20T18:30:00");
  EXPECT_EQ(DateTimeToIso(At(2026, 11, 20, 18, 30, 0, 250)), u"2026-11-20T18:30:00.250");
}

TEST(TDateTime, IsoIsReadWithABlankToo) {
  TDateTime value;
  EXPECT_TRUE(TryIsoToDateTime(u"2026-11-20 18:30:00.250", value));
  EXPECT_EQ(value, At(2026, 11, 20, 18, 30, 0, 250));
}

TEST(TDateTime, OtherTextIsNoIso) {
  for (const TStringView text :
       {u"", u"2026-11-20", u"2026-11-20T18:30", u"2026-11-20T18:30:00Z", u"2026-11-20T18:30:00.2",
        u"2026-11-20T18:30:00.2500", u"20.11.2026 18:30:00", u"2026-02-30T00:00:00",
        u"-026-11-20T18:30:00"}) {
    TDateTime value = At(2000, 1, 1);
    EXPECT_FALSE(TryIsoToDateTime(text, value)) << ToUtf8(text);
    EXPECT_TRUE(value.IsZero()) << ToUtf8(text);
  }
}

TEST(TDateTime, SurvivesIso) {
  EXPECT_TRUE(rc::check("ISO text", [] {
    const auto ms = *rc::gen::inRange<int64_t>(At(1, 1, 1).Ms(), At(9999, 12, 31, 23, 59).Ms());
    TDateTime value;
    RC_ASSERT(TryIsoToDateTime(DateTimeToIso(TDateTime::FromMs(ms)), value));
    RC_ASSERT(value.Ms() == ms);
  }));
}

TEST_F(TGermanTexts, DateAndTimeToTheSecond) {
  EXPECT_EQ(DateTimeToStr(At(2026, 3, 4, 5, 6, 7, 890)), u"04.03.2026, 05:06:07");
  EXPECT_EQ(ShortDateToStr(At(2026, 3, 4, 5)), u"04.03.2026");
  EXPECT_EQ(LongDateToStr(At(2026, 11, 20)), u"Freitag, 20. November 2026");
  EXPECT_EQ(LongTimeToStr(At(2026, 11, 20, 18, 30)), u"18:30:00");
}

TEST_F(TGermanTexts, AreReadBack) {
  TDateTime value;
  EXPECT_TRUE(TryStrToDateTime(u" 04.03.2026, 05:06:07 ", value));
  EXPECT_EQ(value, At(2026, 3, 4, 5, 6, 7));
  EXPECT_TRUE(TryStrToDateTime(u"04.03.2026", value)) << "a date alone";
  EXPECT_EQ(value, At(2026, 3, 4));
}

TEST_F(TGermanTexts, OtherTextIsNoDate) {
  for (const TStringView text : {u"", u"  ", u"gestern", u"31.02.2026, 00:00:00",
                                 u"04.03.2026, 25:00:00", u"04.03.2026, 05:06:07 Uhr", u"5",
                                 u"01.01.99999, 00:00:00", u"01.01.2000000000, 00:00:00"}) {
    TDateTime value = At(2000, 1, 1);
    EXPECT_FALSE(TryStrToDateTime(text, value)) << ToUtf8(text);
    EXPECT_TRUE(value.IsZero()) << ToUtf8(text);
  }
}

TEST_F(TGermanTexts, EverySecondOfOurYearsIsReadBack) {
  EXPECT_TRUE(rc::check("locale text", [] {
    const auto second = *rc::gen::inRange<int64_t>(At(1000, 1, 1).Ms() / 1000,
                                                   At(9999, 12, 31, 23, 59).Ms() / 1000);
    TDateTime value;
    RC_ASSERT(TryStrToDateTime(DateTimeToStr(TDateTime::FromMs(second * 1000)), value));
    RC_ASSERT(value.Ms() == second * 1000);
  }));
}

TEST_F(TGermanTexts, DaysBeforeTheGregorianCalendarAreGregorianToo) {
  EXPECT_EQ(DateTimeToStr(At(1500, 2, 3)), u"03.02.1500, 00:00:00");
}

TEST(TDateTime, OtherLocalesHaveTheirOwnTextsAndReadThemBack) {
  SetLocaleName("en_US");
  const TString text = DateTimeToStr(At(2026, 11, 20, 18, 30, 5));
  EXPECT_TRUE(StartsWith(text, u"Nov 20, 2026")) << ToUtf8(text);
  TDateTime value;
  EXPECT_TRUE(TryStrToDateTime(text, value));
  EXPECT_EQ(value, At(2026, 11, 20, 18, 30, 5));
  SetLocaleName("");
}

TEST(LocalTime, WinterAndSummer) {
  EXPECT_EQ(LocalToUtcMs(At(2026, 1, 15, 12)), Utc(2026, 1, 15, 11));
  EXPECT_EQ(LocalToUtcMs(At(2026, 7, 15, 12)), Utc(2026, 7, 15, 10));
  EXPECT_EQ(UtcMsToLocal(Utc(2026, 1, 15, 11)), At(2026, 1, 15, 12));
  EXPECT_EQ(UtcMsToLocal(Utc(2026, 7, 15, 10)), At(2026, 7, 15, 12));
}

TEST(LocalTime, KeepsMilliseconds) {
  EXPECT_EQ(LocalToUtcMs(At(2026, 1, 15, 12, 0, 0, 7)), Utc(2026, 1, 15, 11) + 7);
  EXPECT_EQ(UtcMsToLocal(Utc(2026, 1, 15, 11) + 7), At(2026, 1, 15, 12, 0, 0, 7));
}

TEST(LocalTime, InAutumnTheHourThatOccursTwiceMeansTheFirst) {
  EXPECT_EQ(LocalToUtcMs(At(2026, 10, 25, 1, 59)), Utc(2026, 10, 24, 23, 59));
  EXPECT_EQ(LocalToUtcMs(At(2026, 10, 25, 2, 30)), Utc(2026, 10, 25, 0, 30));
  EXPECT_EQ(LocalToUtcMs(At(2026, 10, 25, 3, 0)), Utc(2026, 10, 25, 2, 0));
  EXPECT_EQ(UtcMsToLocal(Utc(2026, 10, 25, 0, 30)), At(2026, 10, 25, 2, 30));
  EXPECT_EQ(UtcMsToLocal(Utc(2026, 10, 25, 1, 30)), At(2026, 10, 25, 2, 30));
}

TEST(LocalTime, InSpringATimeThatIsLeftOutMeansTheSameDistanceBehindTheChange) {
  EXPECT_EQ(LocalToUtcMs(At(2026, 3, 29, 1, 59)), Utc(2026, 3, 29, 0, 59));
  EXPECT_EQ(LocalToUtcMs(At(2026, 3, 29, 2, 30)), Utc(2026, 3, 29, 1, 30));
  EXPECT_EQ(UtcMsToLocal(Utc(2026, 3, 29, 1, 30)), At(2026, 3, 29, 3, 30));
}

TEST(LocalTime, MomentsOfTheLastCenturiesSurviveTheWayThere) {
  EXPECT_TRUE(rc::check("UTC and back", [] {
    // At noon no clock was ever changed here.
    const int day = *rc::gen::inRange(-200000, 1000000);
    const TDateTime noon = At(1970, 1, 1, 12).PlusMs(day * TDateTime::cMsPerDay);
    RC_ASSERT(UtcMsToLocal(LocalToUtcMs(noon)) == noon);
  }));
}

TEST(LocalTime, DaysBeforeTheGregorianCalendarSurviveToo) {
  EXPECT_EQ(UtcMsToLocal(LocalToUtcMs(At(1200, 5, 6, 7, 8))), At(1200, 5, 6, 7, 8));
}

TEST(TClock, IsTheMachinesUntilOneIsInstalled) {
  ASSERT_TRUE(zonePinned);
  const int64_t before = std::time(nullptr) * TDateTime::cMsPerSecond;
  const TDateTime now = Now();
  // Seconds are counted by a coarser clock, which lags by some milliseconds.
  const int64_t after = (std::time(nullptr) + 2) * TDateTime::cMsPerSecond;
  EXPECT_GE(now, UtcMsToLocal(before));
  EXPECT_LE(now, UtcMsToLocal(after));
  EXPECT_GE(ExactTime().GetNow(), now);
}

TEST(TClock, AnInstalledOneAnswersAndGoesAgain) {
  {
    TTestClock clock;
    clock.Set(At(2000, 1, 1));
    clock.SetExactOffset(1500);
    EXPECT_EQ(Now(), At(2000, 1, 1));
    EXPECT_EQ(ExactTime().GetNow(), At(2000, 1, 1, 0, 0, 1, 500));
    clock.Advance(10);
    EXPECT_EQ(Now(), At(2000, 1, 1, 0, 0, 0, 10));
  }
  EXPECT_GT(Now(), At(2020, 1, 1));
}

TEST(TClock, WithoutACorrectionExactTimeIsTheClocks) {
  class TPlainClock : public IClock {
   public:
    TDateTime Now() const override { return At(2001, 2, 3); }
  } clock;
  IClock* before = SetClock(&clock);
  EXPECT_EQ(ExactTime().GetNow(), At(2001, 2, 3));
  EXPECT_EQ(SetClock(before), &clock);
}

}  // namespace
}  // namespace kk
