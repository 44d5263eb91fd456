#include "settings/TSettingsTextWatchlist.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cerrno>

#include "host/base/Exception.h"
#include "settings/TIniFileSectionWatchlist.h"
#include "tests/support/TFaultyFileLayer.h"
#include "tests/support/TSettingsWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class TSettingsTextWatchlistTest : public TSettingsWorld {
 protected:
  static TLines Get() {
    TStringList list;
    list.Add(u"what stood there before");
    TSettingsTextWatchlist::GetSettings(list);
    return LinesOf(list);
  }
  static void Set(const TStringList& iList) { TSettingsTextWatchlist::SetSettings(iList); }
  // What the conversion says of a line; "stored" if nothing.
  static std::string Refusal(TStringView iLine) {
    try {
      Set({TString(iLine)});
    } catch (const EConvertError& e) {
      return ToUtf8(e.Message());
    }
    return "stored";
  }
  // The key alone is in the file then.
  void ExpectStored(TStringView iKey, TStringView iValue, const std::string& iStored) {
    Forget();
    EXPECT_EQ(Refusal(TString(iKey) + u"=" + TString(iValue)), "stored");
    EXPECT_THAT(Stored(), ElementsAre(ToUtf8(iKey) + "=" + iStored)) << ToUtf8(iValue);
  }
  // iRest: what is left of the line without the key.
  void ExpectRefused(TStringView iLine, TStringView iRest, TStringView iKey,
                     const std::string& iWhy) {
    Forget();
    EXPECT_EQ(Refusal(iLine), "'" + ToUtf8(iRest) + "' ist " + iWhy + " (" + ToUtf8(iKey) + ")");
    EXPECT_THAT(Stored(), IsEmpty());
  }
  void ExpectNoNumber(TStringView iLine, TStringView iRest,
                      TStringView iKey = u"UpdateIntervalInHrs") {
    ExpectRefused(iLine, iRest, iKey, "keine gültige ganze Zahl");
  }
  void ExpectNoFlag(TStringView iLine, TStringView iRest, TStringView iKey = u"UpdateOnStartup") {
    ExpectRefused(iLine, iRest, iKey, "weder \"-1\" noch \"0\"");
  }
  // The value is refused both as a number and as a flag.
  void ExpectNothing(TStringView iValue) {
    ExpectNoNumber(u"UpdateIntervalInHrs=" + TString(iValue), iValue);
    ExpectNoFlag(u"UpdateOnStartup=" + TString(iValue), iValue);
  }
};

TEST_F(TSettingsTextWatchlistTest, AFreshFileGivesSixteenLinesInTheirOrder) {
  EXPECT_THAT(
      Get(),
      ElementsAre("[Watchlist]", "Name=Beobachten", "ShowItemCountInTree=-1",
                  "ShowItemCountInTreeRecursive=-1", "ShowAddDialog=-1", "UpdateOnStartup=0",
                  "UpdateOnInterval=0", "UpdateIntervalInHrs=24", "AutoActivateReminder=0",
                  "UseDefaultReminderTimes=0", "DefaultReminderHours=1", "DefaultReminderMinutes=0",
                  "DefaultReminderSeconds=0", "DefaultReminderAfterTime=0",
                  "RelativeTimeInMinutes=0", "DefaultRemindType=1"));
  EXPECT_THAT(FFolder.Names(), IsEmpty()) << "to look changes nothing";
}

TEST_F(TSettingsTextWatchlistTest, HasItsNames) {
  EXPECT_EQ(TSettingsTextWatchlist::GetSettingsNode(), u"Watchlist");
  EXPECT_EQ(TSettingsTextWatchlist::GetSettingsName(), u"Beobachten");
}

TEST_F(TSettingsTextWatchlistTest, EachLineIsTheKeyThatItNames) {
  Set({u"ShowItemCountInTree=0", u"ShowItemCountInTreeRecursive=0", u"ShowAddDialog=0",
       u"UpdateOnStartup=-1", u"UpdateOnInterval=-1", u"UpdateIntervalInHrs=25",
       u"AutoActivateReminder=-1", u"UseDefaultReminderTimes=-1", u"DefaultReminderHours=2",
       u"DefaultReminderMinutes=3", u"DefaultReminderSeconds=-4", u"DefaultReminderAfterTime=-1",
       u"RelativeTimeInMinutes=5", u"DefaultRemindType=0"});
  const TIniFileSectionWatchlist section;
  EXPECT_FALSE(section.GetShowItemCountInTree());
  EXPECT_FALSE(section.GetShowItemCountInTreeRecursive());
  EXPECT_FALSE(section.GetShowAddDialog());
  EXPECT_TRUE(section.GetUpdateOnStartup());
  EXPECT_TRUE(section.GetUpdateOnInterval());
  EXPECT_EQ(section.GetUpdateIntervalInHrs(), 25);
  EXPECT_TRUE(section.GetAutoActivateReminder());
  EXPECT_TRUE(section.GetUseDefaultReminderTimes());
  EXPECT_EQ(section.GetDefaultReminderHours(), 2);
  EXPECT_EQ(section.GetDefaultReminderMinutes(), 3);
  EXPECT_EQ(section.GetDefaultReminderSeconds(), -4);
  EXPECT_TRUE(section.GetDefaultReminderAfterTime());
  EXPECT_EQ(section.GetRelativeTimeIndex(), 5);
  EXPECT_EQ(section.GetDefaultRemindType(), 0);
  EXPECT_THAT(Stored(), SizeIs(14));
  EXPECT_THAT(
      Get(),
      ElementsAre("[Watchlist]", "Name=Beobachten", "ShowItemCountInTree=0",
                  "ShowItemCountInTreeRecursive=0", "ShowAddDialog=0", "UpdateOnStartup=-1",
                  "UpdateOnInterval=-1", "UpdateIntervalInHrs=25", "AutoActivateReminder=-1",
                  "UseDefaultReminderTimes=-1", "DefaultReminderHours=2",
                  "DefaultReminderMinutes=3", "DefaultReminderSeconds=-4",
                  "DefaultReminderAfterTime=-1", "RelativeTimeInMinutes=5", "DefaultRemindType=0"));
}

TEST_F(TSettingsTextWatchlistTest, WhatIsThisInstallationsOwnDoesNotGoAlong) {
  TIniFileSectionWatchlist section;
  const TLines before = Get();
  section.SetSoundFile(u"/x.wav");
  section.SetStoreLastSelectedSoundFile(false);
  section.SetCategoryTreeWidth(300);
  section.SetExplorerBarWidth(300);
  section.SetLastSelected(u"x");
  section.SetRemindType(0);
  section.SetRemindTimeSpanOffsetInSecs(1);
  section.SetRemindTimeRelative(1);
  section.SetUpdateLastDate(TDateTime::FromMs(TDateTime::cMsPerSecond));
  section.SetDefaultCategory(NewGuid(), NewGuid());
  EXPECT_EQ(Get(), before);
  const TLines stored = Stored();
  Set({u"SoundFile=/y.wav", u"StoreLastSelectedSoundFile=-1", u"CategoryTreeWidth=1",
       u"ExplorerBarWidth=1", u"LastSelected=y", u"RemindType=3", u"RemindTimeSpanOffsetInSecs=3",
       u"RemindTimeRelativeIndex=3", u"UpdateLastDate=", u"DefaultCategory0=;"});
  EXPECT_EQ(Stored(), stored);
}

TEST_F(TSettingsTextWatchlistTest, LongerKeyDoesNotCountAsTheShorterOne) {
  Set({u"ShowItemCountInTreeRecursive=0"});
  EXPECT_THAT(Stored(), ElementsAre("ShowItemCountInTreeRecursive=0"));
  Set({u"ShowItemCountInTree=0"});
  EXPECT_THAT(Stored(), ElementsAre("ShowItemCountInTreeRecursive=0", "ShowItemCountInTree=0"));
}

TEST_F(TSettingsTextWatchlistTest, LinesThatMatchNothingArePassedOver) {
  Set({u"[Watchlist]", u"Name=Beobachten", u"", u"=", u"[Anderes]", u"UpdateOn=oft",
       u"DefaultReminder=oft"});
  EXPECT_THAT(Stored(), IsEmpty());
}

TEST_F(TSettingsTextWatchlistTest, KeysWithoutALineKeepTheirValues) {
  Set({u"UpdateIntervalInHrs=7", u"DefaultReminderHours=3"});
  Set({u"UpdateIntervalInHrs=8"});
  Set({});
  EXPECT_THAT(Stored(), ElementsAre("UpdateIntervalInHrs=8", "DefaultReminderHours=3"));
}

TEST_F(TSettingsTextWatchlistTest, AFailureLeavesTheRestUnread) {
  EXPECT_THROW(Set({u"UpdateOnStartup=-1", u"UpdateIntervalInHrs=oft", u"UpdateOnInterval=-1"}),
               EConvertError);
  EXPECT_THAT(Stored(), ElementsAre("UpdateOnStartup=1"));
}

TEST_F(TSettingsTextWatchlistTest, AKeyIsFoundInsideOtherTextAndTheRestMustConvert) {
  Set({u"1UpdateIntervalInHrs=2", u"  DefaultReminderMinutes=7  ", u"-DefaultReminderSeconds=8",
       u"AutoActivateReminder=-1"});
  EXPECT_THAT(Stored(), ElementsAre("UpdateIntervalInHrs=12", "DefaultReminderMinutes=7",
                                    "DefaultReminderSeconds=-8", "AutoActivateReminder=1"));
  ExpectNoNumber(u"; UpdateIntervalInHrs=2", u"; 2");
  ExpectNoFlag(u"MyUpdateOnStartup=0", u"My0");
}

TEST_F(TSettingsTextWatchlistTest, OnlyTheKeyWithItsSignIsCutOutAndOnlyOnce) {
  ExpectNoNumber(u"UpdateIntervalInHrs", u"UpdateIntervalInHrs");
  ExpectNoNumber(u"UpdateIntervalInHrs =3", u"UpdateIntervalInHrs =3");
  ExpectNoNumber(u"UpdateIntervalInHrs=UpdateIntervalInHrs=3", u"UpdateIntervalInHrs=3");
  ExpectNoNumber(u"UpdateIntervalInHrs=5UpdateIntervalInHrs=3", u"5UpdateIntervalInHrs=3");
  ExpectNoFlag(u"UpdateOnStartup UpdateOnStartup=0", u"UpdateOnStartup 0");
}

TEST_F(TSettingsTextWatchlistTest, AKeyIsFoundWithRegardToCase) {
  Set({u"updateonstartup=-1", u"UPDATEINTERVALINHRS=oft"});
  EXPECT_THAT(Stored(), IsEmpty());
}

TEST_F(TSettingsTextWatchlistTest, TheOrderOfTheKeysDecidesAndNotThatOfTheLine) {
  ExpectNoFlag(u"UpdateOnInterval=UpdateOnStartup=1", u"UpdateOnInterval=1");
  ExpectNoFlag(u"DefaultReminderHours=AutoActivateReminder=1", u"DefaultReminderHours=1",
               u"AutoActivateReminder");
  ExpectNoNumber(u"AutoActivateReminder=UpdateIntervalInHrs=1", u"AutoActivateReminder=1");
}

TEST_F(TSettingsTextWatchlistTest, BooleansAreReadAsNumbersAndWords) {
  for (const TStringView value : {u"-1", u"1", u"17", u"true", u"True", u" -1 "}) {
    ExpectStored(u"UpdateOnStartup", value, "1");
  }
  for (const TStringView value : {u"0", u"00", u"-0", u"false", u"FALSE"}) {
    ExpectStored(u"ShowAddDialog", value, "0");
  }
  for (const TStringView value : {u"", u"ja", u"1,5", u"- 1", u"99999999999999999999"}) {
    ExpectNoFlag(u"ShowAddDialog=" + TString(value), value, u"ShowAddDialog");
  }
}

TEST_F(TSettingsTextWatchlistTest, IntegersAreOf32Bits) {
  for (const TStringView value : {u"2147483647", u"-2147483648"}) {
    ExpectStored(u"DefaultReminderSeconds", value, ToUtf8(value));
  }
  for (const TStringView value :
       {u"2147483648", u"-2147483649", u"99999999999999999999", u"", u"1,5", u"true"}) {
    ExpectNoNumber(u"DefaultReminderSeconds=" + TString(value), value, u"DefaultReminderSeconds");
  }
}

TEST_F(TSettingsTextWatchlistTest, ANumberOutOfItsRangeIsStoredAndReadAsTheNearerBound) {
  Set({u"UpdateIntervalInHrs=0", u"DefaultReminderHours=99", u"RelativeTimeInMinutes=14"});
  EXPECT_THAT(Stored(), ElementsAre("UpdateIntervalInHrs=0", "DefaultReminderHours=99",
                                    "RelativeTimeInMinutes=14"));
  const TIniFileSectionWatchlist section;
  EXPECT_EQ(section.GetUpdateIntervalInHrs(), 1);
  EXPECT_EQ(section.GetDefaultReminderHours(), 59);
  EXPECT_EQ(section.GetRelativeTimeIndex(), 13);
}

TEST_F(TSettingsTextWatchlistTest, TheLastOfSeveralLinesOfAKeyCounts) {
  Set({u"UpdateIntervalInHrs=5", u"UpdateIntervalInHrs=6"});
  EXPECT_THAT(Stored(), ElementsAre("UpdateIntervalInHrs=6"));
  Set({u"UpdateIntervalInHrs=24"});
  EXPECT_THAT(Stored(), IsEmpty()) << "that is the default";
}

// Text that others wrote, or damaged.

TEST_F(TSettingsTextWatchlistTest, OfTwoTextsInOneTheLatterCounts) {
  TStringList fresh;
  TSettingsTextWatchlist::GetSettings(fresh);
  Set({u"UpdateIntervalInHrs=7", u"ShowAddDialog=0"});
  TStringList list;
  TSettingsTextWatchlist::GetSettings(list);
  for (const TString& line : fresh.Lines()) list.Add(line);
  Set(list);
  EXPECT_THAT(Stored(), IsEmpty()) << "those are the defaults";
}

TEST_F(TSettingsTextWatchlistTest, BlanksAroundAValueDoNotCountNorDoBreaksAndNuls) {
  using namespace std::string_view_literals;
  for (const TStringView value : {u"7\r"sv, u"7\n"sv, u"\t7 "sv, u"\0007\0"sv}) {
    ExpectStored(u"UpdateIntervalInHrs", value, "7");
    ExpectStored(u"UpdateOnStartup", value, "1");
  }
  for (const TStringView value : {u"7\0007"sv, u"7\0x"sv, u"7\n8"sv}) ExpectNothing(value);
  EXPECT_EQ(Refusal(u"Update\0OnStartup=-1"sv), "stored");
  EXPECT_THAT(Stored(), IsEmpty()) << "that is another key";
}

TEST_F(TSettingsTextWatchlistTest, SeveralLinesInOneAreOneLine) {
  ExpectNoFlag(u"UpdateOnStartup=-1\r\nUpdateOnInterval=-1", u"-1\r\nUpdateOnInterval=-1");
}

TEST_F(TSettingsTextWatchlistTest, AMarkOfItsEncodingMattersOnlyInFrontOfAValue) {
  Set({u"\uFEFF[Watchlist]", u"UpdateIntervalInHrs=7"});
  EXPECT_THAT(Stored(), ElementsAre("UpdateIntervalInHrs=7"));
  ExpectNoNumber(u"\uFEFFUpdateIntervalInHrs=8", u"\uFEFF8");
}

TEST_F(TSettingsTextWatchlistTest, HalvesOfCharactersAndOtherDigitsAreNoNumbers) {
  const TString high(1, 0xD83D);
  const TString low(1, 0xDE00);
  for (const TString& value :
       {high + u"7", u"7" + low, low + high, TString(u"７"), TString(u"٧")}) {
    ExpectNothing(value);
  }
  Set({high + u"[Watchlist]" + low, u"UpdateOnStartup=-1"});
  EXPECT_THAT(Stored(), ElementsAre("UpdateOnStartup=1"));
}

TEST_F(TSettingsTextWatchlistTest, ALineOfAMillionCharactersIsALine) {
  constexpr size_t cLong = 1'000'000;
  Set({TString(cLong, u'x'), TString(cLong, u' ') + u"UpdateIntervalInHrs=7"});
  EXPECT_THAT(Stored(), ElementsAre("UpdateIntervalInHrs=7"));
  const TString nines(cLong, u'9');
  const TString shown = TString(80, u'9') + u"…";
  ExpectNoNumber(u"UpdateIntervalInHrs=" + nines, shown);
  ExpectNoFlag(u"UpdateOnStartup=" + nines, shown);
  TString keys;
  while (keys.size() < cLong) keys += u"UpdateIntervalInHrs=";
  ExpectNoNumber(keys, keys.substr(0, 80) + u"…");
}

TEST_F(TSettingsTextWatchlistTest, AnyNumberOfLinesIsOneWrite) {
  std::vector<TString> lines;
  for (int i = 0; i < 100'000; ++i) lines.push_back(Format(u"UpdateIntervalInHrs=%d", {1 + i % 7}));
  TStringList list;
  list.Assign(std::move(lines));
  TFaultyFileLayer layer;
  Set(list);
  EXPECT_EQ(std::ranges::count(layer.Calls(), "rename"), 1);
  EXPECT_THAT(Stored(), ElementsAre("UpdateIntervalInHrs=5"));
}

TEST_F(TSettingsTextWatchlistTest, WhatStandsBeforeAFailureIsOneWriteToo) {
  TFaultyFileLayer layer;
  EXPECT_THROW(Set({u"UpdateOnStartup=-1", u"UpdateIntervalInHrs=7", u"ShowAddDialog="}),
               EConvertError);
  EXPECT_EQ(std::ranges::count(layer.Calls(), "rename"), 1);
  EXPECT_THAT(Stored(), ElementsAre("UpdateOnStartup=1", "UpdateIntervalInHrs=7"));
}

TEST_F(TSettingsTextWatchlistTest, AWriteThatFailsRaisesAndStoresNothing) {
  Set({u"UpdateIntervalInHrs=7"});
  TFaultyFileLayer layer;
  layer.FailAll("write", ENOSPC);
  EXPECT_THROW(Set({u"UpdateIntervalInHrs=8", u"UpdateOnStartup=-1"}), EInOutError);
  EXPECT_THAT(Stored(), ElementsAre("UpdateIntervalInHrs=7"));
}

RC_GTEST_FIXTURE_PROP(TSettingsTextWatchlistTest, WhatIsGivenOutCanBeGivenBack, ()) {
  Forget();
  FFile.InOneWrite([] {
    TIniFileSectionWatchlist section;
    section.SetShowItemCountInTree(*rc::gen::arbitrary<bool>());
    section.SetShowItemCountInTreeRecursive(*rc::gen::arbitrary<bool>());
    section.SetShowAddDialog(*rc::gen::arbitrary<bool>());
    section.SetUpdateOnStartup(*rc::gen::arbitrary<bool>());
    section.SetUpdateOnInterval(*rc::gen::arbitrary<bool>());
    section.SetUpdateIntervalInHrs(*rc::gen::arbitrary<int>());
    section.SetAutoActivateReminder(*rc::gen::arbitrary<bool>());
    section.SetUseDefaultReminderTimes(*rc::gen::arbitrary<bool>());
    section.SetDefaultReminderHours(*rc::gen::arbitrary<int>());
    section.SetDefaultReminderMinutes(*rc::gen::arbitrary<int>());
    section.SetDefaultReminderSeconds(*rc::gen::arbitrary<int>());
    section.SetDefaultReminderAfterTime(*rc::gen::arbitrary<bool>());
    section.SetRelativeTimeIndex(*rc::gen::arbitrary<int>());
    section.SetDefaultRemindType(*rc::gen::arbitrary<int>());
  });
  TStringList list;
  TSettingsTextWatchlist::GetSettings(list);
  const TLines before = Get();
  Forget();
  Set(list);
  RC_ASSERT(Get() == before);
}

}  // namespace
}  // namespace kk
