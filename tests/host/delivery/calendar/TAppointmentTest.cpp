#include "host/delivery/calendar/TAppointment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "TIcalReader.h"
#include "tests/support/TTestClock.h"

namespace kk {
namespace {

using testing::HasSubstr;

// Before anything asks for the time zone of this process.
const bool zonePinned = [] {
  setenv("TZ", "Europe/Berlin", 1);
  tzset();
  return true;
}();

const TDateTime cStart = EncodeDateTime({2026, 11, 20, 18, 30, 0, 0});

TEST(TAppointment, IsOneEventWithAnAlarmAtItsStart) {
  TTestClock clock;
  clock.Set(EncodeDateTime({2026, 11, 19, 8, 0, 0, 0}));
  const TAppointment appointment(u"Kaufkobolde 7.0", u"Lampe; 5,00 €\r\nhttps://a.example/",
                                 u"Erinnerung an Lampe", cStart);
  const std::string ical = appointment.Ical();
  const TIcalReader reader(ical);
  EXPECT_EQ(reader.Outline(), cOutline);
  EXPECT_THAT(ical, HasSubstr("PRODID:-//Kaufkobolde//Beobachten 7.0//DE\r\nVERSION:2.0\r\n"));
  EXPECT_EQ(reader.Summary(), "Kaufkobolde 7.0");
  EXPECT_EQ(reader.Description(), "Lampe; 5,00 €\nhttps://a.example/");
  EXPECT_EQ(reader.Location(), "Erinnerung an Lampe");
  EXPECT_EQ(reader.Uid(), appointment.Uid());
  EXPECT_EQ(reader.Value(ICAL_DTSTART_PROPERTY), "20261120T173000Z");
  EXPECT_EQ(reader.Value(ICAL_DTSTAMP_PROPERTY), "20261119T070000Z");
  EXPECT_EQ(reader.Value(ICAL_DURATION_PROPERTY), "PT15M");
  EXPECT_EQ(reader.Value(ICAL_TRANSP_PROPERTY), "TRANSPARENT");
  EXPECT_EQ(reader.AlarmValue(ICAL_ACTION_PROPERTY), "DISPLAY");
  EXPECT_EQ(reader.AlarmValue(ICAL_TRIGGER_PROPERTY), "PT0S");
  EXPECT_EQ(reader.AlarmValue(ICAL_DESCRIPTION_PROPERTY), "Kaufkobolde 7.0");
}

TEST(TAppointment, LinesEndInCrLfAndAreFolded) {
  const std::string ical =
      TAppointment(TString(300, u'ä'), TString(5000, u'x'), u"Ort", cStart).Ical();
  for (size_t from = 0; from < ical.size();) {
    const size_t end = ical.find('\n', from);
    ASSERT_NE(end, std::string::npos);
    EXPECT_EQ(ical[end - 1], '\r');
    EXPECT_LE(end - 1 - from, 75u);  // RFC 5545, 3.1
    from = end + 1;
  }
}

TEST(TAppointment, StartStandsInUtcOnBothSidesOfTheChangeOfClocks) {
  const auto startOf = [](const TDateParts& iParts) {
    const TAppointment appointment(u"a", u"b", u"c", EncodeDateTime(iParts));
    return TIcalReader(appointment.Ical()).Value(ICAL_DTSTART_PROPERTY);
  };
  EXPECT_EQ(startOf({2026, 7, 1, 12, 0, 0, 0}), "20260701T100000Z");
  EXPECT_EQ(startOf({2026, 12, 1, 12, 0, 0, 0}), "20261201T110000Z");
  EXPECT_EQ(startOf({2026, 1, 1, 0, 30, 0, 0}), "20251231T233000Z");
}

TEST(TAppointment, EmptyTextsLeaveTheirPropertiesOutAndASubjectIsAlwaysThere) {
  const TIcalReader reader(TAppointment(u"\r\n", u" \r\n ", u"", cStart).Ical());
  EXPECT_EQ(reader.Outline(),
            "VCALENDAR(PRODID VERSION VEVENT(DTSTAMP DTSTART DURATION SUMMARY TRANSP UID "
            "VALARM(ACTION DESCRIPTION TRIGGER)))");
  EXPECT_EQ(reader.Summary(), "Kaufkobolde");
}

TEST(TAppointment, EachHasAnIdOfItsOwn) {
  const TAppointment one(u"a", u"b", u"c", cStart);
  const TAppointment two(u"a", u"b", u"c", cStart);
  EXPECT_NE(one.Uid(), two.Uid());
  EXPECT_TRUE(one.HasSameContent(two));
  EXPECT_EQ(one.FileName(), one.Uid() + ".ics");
  EXPECT_TRUE(TAppointment::IsFileName(FromUtf8(one.FileName())));
}

TEST(TAppointment, SameContentMeansAllOfIt) {
  const TAppointment one(u"a", u"b", u"c", cStart);
  EXPECT_FALSE(one.HasSameContent({u"x", u"b", u"c", cStart}));
  EXPECT_FALSE(one.HasSameContent({u"a", u"x", u"c", cStart}));
  EXPECT_FALSE(one.HasSameContent({u"a", u"b", u"x", cStart}));
  EXPECT_FALSE(one.HasSameContent({u"a", u"b", u"c", cStart.PlusMs(1000)}));
}

TEST(TAppointment, NamesThatLeadElsewhereAreNone) {
  const TString id = u"01234567-89ab-cdef-0123-456789abcdef";
  EXPECT_TRUE(TAppointment::IsFileName(id + u".ics"));
  for (const TString& text :
       {TString(), id, id + u".txt", id + u".ics/", u"/" + id + u".ics", u"../" + id + u".ics",
        u"../../" + id.substr(6) + u".ics", TString(u"..%2f4567-89ab-cdef-0123-456789abcdef.ics"),
        TString(u"..%2F67-89ab-cdef-0123-456789abcdef0.ics"),
        id.substr(1) + TString(1, u'\0') + u".ics", id.substr(1) + u"G.ics", TString(u".ics"),
        TString(1 << 20, u'a')}) {
    EXPECT_FALSE(TAppointment::IsFileName(text)) << ToUtf8(text.substr(0, 60));
  }
}

TEST(TAppointment, TextsBeyondTheBoundsAreCutAndSayIt) {
  const TString large(1 << 20, u'x');
  const TIcalReader reader(TAppointment(large, large, large, cStart).Ical());
  EXPECT_EQ(reader.Outline(), cOutline);
  EXPECT_EQ(reader.Summary(), std::string(500, 'x') + "…");
  EXPECT_EQ(reader.Description(), std::string(8000, 'x') + "…");
  EXPECT_EQ(reader.Location(), std::string(500, 'x') + "…");
  const TString fits(500, u'x');
  EXPECT_EQ(TIcalReader(TAppointment(fits, u"b", u"c", cStart).Ical()).Summary(), ToUtf8(fits));
}

TEST(TAppointment, TextsWithoutEndAreNotReadToTheirEnd) {
  const TString text = u"x" + TString(1 << 20, u'\x01') + u"y";
  const TIcalReader reader(TAppointment(text, text, text, cStart).Ical());
  EXPECT_EQ(reader.Summary(), "x…");
  EXPECT_EQ(reader.Description(), "x…");
  EXPECT_EQ(reader.Location(), "x…");
}

TEST(TAppointment, ACutLeavesNoHalfCharacter) {
  TString text(499, u'x');
  text += u"😀😀";
  EXPECT_EQ(TIcalReader(TAppointment(text, u"b", u"c", cStart).Ical()).Summary(),
            std::string(499, 'x') + "…");
}

TEST(TAppointment, HostileTextsStayTexts) {
  const TString hostile = TString(u"a\r\nEND:VEVENT\r\nBEGIN:VEVENT\rSUMMARY:b\nATTACH:c") +
                          TString(u"\0", 1) + u"\",;:\\n\\\u001B\u0085\u2028d\t e";
  const TIcalReader reader(TAppointment(hostile, hostile, hostile, cStart).Ical());
  EXPECT_EQ(reader.Outline(), cOutline);
  const std::string rest =
      "\",;:\\n\\\xE2\x80\xA8"
      "d e";
  EXPECT_EQ(reader.Summary(), "a END:VEVENT BEGIN:VEVENT SUMMARY:b ATTACH:c" + rest);
  EXPECT_EQ(reader.Location(), reader.Summary());
  EXPECT_EQ(reader.Description(), "a\nEND:VEVENT\nBEGIN:VEVENT\nSUMMARY:b\nATTACH:c" + rest);
}

TEST(TAppointment, IsFoundInWhatAServerMadeOfIt) {
  const TAppointment appointment(u"Größe, \"M\"; x", u"Text", u"Ort", cStart);
  const std::string ical = appointment.Ical();
  EXPECT_TRUE(appointment.IsIn(ical));
  // The same moment, told with a time zone; other properties around it.
  const std::string zoned =
      "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VEVENT\r\nUID:other\r\nEND:VEVENT\r\n"
      "BEGIN:VTIMEZONE\r\nTZID:Europe/Berlin\r\nBEGIN:STANDARD\r\nDTSTART:19701025T030000\r\n"
      "TZOFFSETFROM:+0200\r\nTZOFFSETTO:+0100\r\nRRULE:FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU\r\n"
      "END:STANDARD\r\nBEGIN:DAYLIGHT\r\nDTSTART:19700329T020000\r\nTZOFFSETFROM:+0100\r\n"
      "TZOFFSETTO:+0200\r\nRRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU\r\nEND:DAYLIGHT\r\n"
      "END:VTIMEZONE\r\nBEGIN:VEVENT\r\nSEQUENCE:3\r\nUID:" +
      appointment.Uid() + "\r\nSUMMARY:Größe\\, \"M\"\\; x\r\nDTSTART;TZID=Europe/Berlin:" +
      "20261120T183000\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
  EXPECT_TRUE(appointment.IsIn(zoned)) << zoned;
}

TEST(TAppointment, IsNotFoundInAnythingElse) {
  TAppointment appointment(u"a", u"b", u"c", cStart);
  const auto isIn = [&](TAppointment iOther) {
    iOther.SetUid(appointment.Uid());
    return appointment.IsIn(iOther.Ical());
  };
  EXPECT_FALSE(isIn({u"x", u"b", u"c", cStart}));
  EXPECT_FALSE(isIn({u"a", u"b", u"c", cStart.PlusMs(1000)}));
  EXPECT_TRUE(isIn({u"a", u"x", u"c", cStart}));
  EXPECT_FALSE(appointment.IsIn(TAppointment(u"a", u"b", u"c", cStart).Ical()));
  // A time of no zone is another everywhere.
  EXPECT_FALSE(appointment.IsIn("BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nUID:" + appointment.Uid() +
                                "\r\nSUMMARY:a\r\nDTSTART:20261120T173000\r\nEND:VEVENT\r\n"
                                "END:VCALENDAR\r\n"));
  for (const std::string& bytes :
       {std::string(), std::string("kein Kalender"), std::string("\0\xFF", 2),
        std::string("BEGIN:VCALENDAR\r\nEND:VCALENDAR"),
        std::string("BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nEND:VEVENT\r\nEND:VCALENDAR"),
        std::string("BEGIN:VEVENT\r\n")}) {
    EXPECT_FALSE(appointment.IsIn(bytes));
  }
  std::string deep;
  for (int i = 0; i < 16000; ++i) deep += "BEGIN:VEVENT\r\n";
  EXPECT_FALSE(appointment.IsIn(deep));
}

// A zone with a change of clocks in every second is no zone, but more work than a machine can do.
TEST(TAppointment, ZonesOfAServersOwnMakeAreNotWorkedOut) {
  const TAppointment appointment(u"a", u"b", u"c", cStart);
  const auto zoned = [&](const std::string& iName) {
    const std::string zone =
        "BEGIN:VTIMEZONE\r\nTZID:" + iName +
        "\r\nBEGIN:STANDARD\r\nDTSTART:19700101T000000\r\nTZOFFSETFROM:+0200\r\n"
        "TZOFFSETTO:+0100\r\nRRULE:FREQ=SECONDLY\r\nEND:STANDARD\r\nEND:VTIMEZONE\r\n";
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n" + zone + "BEGIN:VEVENT\r\n" + zone +
           "UID:" + appointment.Uid() + "\r\nSUMMARY:a\r\nDTSTART;TZID=" + iName +
           ":20261120T183000\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
  };
  EXPECT_FALSE(appointment.IsIn(zoned("Nirgendwo")));
  EXPECT_TRUE(appointment.IsIn(zoned("Europe/Berlin")));  // a name that everyone knows
}

// Texts of whatever units, with pieces in between that mean something to calendars.
TString Hostile(const std::vector<uint16_t>& iUnits) {
  const TString pieces[] = {u"\r\n", u"\n", u"BEGIN:VEVENT",   u"END:VEVENT", u"\r\n ",
                            u"\\",   u";",  TString(u"\0", 1), u"\"",         u":"};
  TString text;
  for (const uint16_t unit : iUnits) {
    if (unit % 3 == 0) {
      text += pieces[unit / 3 % std::size(pieces)];
    } else {
      text += static_cast<char16_t>(unit);
    }
  }
  return u"x" + text + u"x";
}

RC_GTEST_PROP(TAppointment, NoTextMakesAPropertyOrAComponent,
              (const std::vector<uint16_t>& iSubject, const std::vector<uint16_t>& iBody,
               const std::vector<uint16_t>& iLocation)) {
  const TAppointment appointment(Hostile(iSubject), Hostile(iBody), Hostile(iLocation), cStart);
  const std::string ical = appointment.Ical();
  RC_ASSERT(TIcalReader(ical).Outline() == cOutline);
  RC_ASSERT(appointment.IsIn(ical));
  RC_ASSERT(ical.find('\0') == std::string::npos);
}

}  // namespace
}  // namespace kk
