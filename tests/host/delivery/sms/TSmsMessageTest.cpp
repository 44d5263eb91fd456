#include "host/delivery/sms/TSmsMessage.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <nlohmann/json.hpp>

namespace kk {
namespace {

// Before anything asks for the time zone of this process.
const bool zonePinned = [] {
  setenv("TZ", "Europe/Berlin", 1);
  tzset();
  return true;
}();

const TDateTime cWhen = EncodeDateTime({2026, 11, 20, 18, 30, 0, 0});

std::string NumberOf(TStringView iNumber) { return TSmsMessage(u"x", iNumber, cWhen).To; }

std::string KeyOf(TStringView iText, TStringView iNumber, TDateTime iWhen) {
  return TSmsMessage(iText, iNumber, iWhen).IdempotencyKey();
}

TEST(TSmsMessage, NumberMayBeWrittenAsPeopleDo) {
  EXPECT_EQ(NumberOf(u"+491701234567"), "+491701234567");
  EXPECT_EQ(NumberOf(u" +49 (0)170 / 123-45.67 "), "+491701234567");
  EXPECT_EQ(NumberOf(u"0049(0)1701234567"), "00491701234567");
  EXPECT_EQ(NumberOf(u"0170 1234567"), "01701234567");
  EXPECT_EQ(NumberOf(u"(0)170 1234567"), "01701234567");
  EXPECT_EQ(NumberOf(u"110"), "110");
}

TEST(TSmsMessage, WhatIsNoNumberGivesNone) {
  const TString tooLong(1 << 20, u'1');
  for (const TString& text :
       {TString(), TString(u"+"), TString(u"11"), TString(u"123456789012345678"),
        TString(u"0170\r\n1234567"),
        TString(u"0170\0"
                u"1234567",
                12),
        TString(u"0170,1234567"), TString(u"0170\"1234567"), TString(u"++49170"),
        TString(u"49+170"), TString(u"anna"), TString(u"\u0661\u0662\u0663\u0664"), tooLong}) {
    EXPECT_EQ(NumberOf(text), "") << ToUtf8(text.substr(0, 30));
  }
}

TEST(TSmsMessage, JsonHasNumberTextAndTheMomentInUtc) {
  const TSmsMessage message(u"Größe \"M\"\r\nEnde", u"+49170 123", cWhen);
  const auto json = nlohmann::json::parse(message.Json());
  EXPECT_EQ(json.size(), 3u);
  EXPECT_EQ(json["to"], "+49170123");
  EXPECT_EQ(json["text"], "Größe \"M\"\r\nEnde");
  EXPECT_EQ(json["sendAt"], "2026-11-20T17:30:00Z");
}

TEST(TSmsMessage, KeyIsTheSameForTheSameAndAnotherForAnything) {
  const std::string key = KeyOf(u"Text", u"0170 1234", cWhen);
  EXPECT_EQ(key.size(), 36u);
  EXPECT_EQ(key[14], '5');  // a name-based UUID
  EXPECT_EQ(KeyOf(u"Text", u"01701234", cWhen), key);
  EXPECT_NE(KeyOf(u"Text.", u"01701234", cWhen), key);
  EXPECT_NE(KeyOf(u"Text", u"01701235", cWhen), key);
  EXPECT_NE(KeyOf(u"Text", u"01701234", cWhen.PlusMs(1000)), key);
}

RC_GTEST_PROP(TSmsMessage, AnyTextArrivesWholeAsTheOneTextOfTheObject,
              (const std::vector<uint16_t>& iUnits)) {
  const TString text(iUnits.begin(), iUnits.end());
  const auto json = nlohmann::json::parse(TSmsMessage(text, u"0170123", cWhen).Json());
  RC_ASSERT(json.size() == 3u);
  RC_ASSERT(json["text"] == ToUtf8(text));
}

}  // namespace
}  // namespace kk
