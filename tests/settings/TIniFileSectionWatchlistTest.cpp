#include "settings/TIniFileSectionWatchlist.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <set>

#include "host/base/Exception.h"
#include "host/base/TLocale.h"
#include "host/common/TFileHelper.h"
#include "tests/support/TFaultyFileLayer.h"
#include "tests/support/TSettingsWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int cLowest = std::numeric_limits<int>::min();
constexpr int cHighest = std::numeric_limits<int>::max();

constexpr TGuid cSourceA = GuidLiteral("{AAAAAAAA-0000-0000-0000-000000000001}");
constexpr TGuid cSourceB = GuidLiteral("{BBBBBBBB-0000-0000-0000-000000000001}");
constexpr TGuid cSourceC = GuidLiteral("{CCCCCCCC-0000-0000-0000-000000000001}");
constexpr TGuid cCategory1 = GuidLiteral("{00000000-0000-0000-0000-0000000000C1}");
constexpr TGuid cCategory2 = GuidLiteral("{00000000-0000-0000-0000-0000000000C2}");

class TIniFileSectionWatchlistTest : public TSettingsWorld {
 protected:
  TIniFileSectionWatchlistTest() { SetLocaleName("de_DE"); }
  ~TIniFileSectionWatchlistTest() override { SetLocaleName(""); }

  static TString Line(const TGuid& iSource, const TGuid& iCategory) {
    return GUIDToString(iSource) + u";" + GUIDToString(iCategory);
  }

  TIniFileSectionWatchlist FSection;
};

// One integer key: its accessors and its line of the table.
struct TNumberKey {
  const char16_t* Name;
  int Default, Min, Max;
  int (TIniFileSectionWatchlist::*Get)() const;
  void (TIniFileSectionWatchlist::*Set)(int);
};
using TSection = TIniFileSectionWatchlist;
const TNumberKey cNumbers[] = {
    {u"CategoryTreeWidth", 220, 50, 500, &TSection::GetCategoryTreeWidth,
     &TSection::SetCategoryTreeWidth},
    {u"ExplorerBarWidth", 220, 50, 500, &TSection::GetExplorerBarWidth,
     &TSection::SetExplorerBarWidth},
    {u"UpdateIntervalInHrs", 24, 1, cHighest, &TSection::GetUpdateIntervalInHrs,
     &TSection::SetUpdateIntervalInHrs},
    {u"RemindType", 1, 0, 20, &TSection::GetRemindType, &TSection::SetRemindType},
    {u"RemindTimeSpanOffsetInSecs", 3600, cLowest, cHighest,
     &TSection::GetRemindTimeSpanOffsetInSecs, &TSection::SetRemindTimeSpanOffsetInSecs},
    {u"RemindTimeRelativeIndex", 4, cLowest, cHighest, &TSection::GetRemindTimeRelative,
     &TSection::SetRemindTimeRelative},
    {u"DefaultReminderHours", 1, 0, 59, &TSection::GetDefaultReminderHours,
     &TSection::SetDefaultReminderHours},
    {u"DefaultReminderMinutes", 0, 0, 59, &TSection::GetDefaultReminderMinutes,
     &TSection::SetDefaultReminderMinutes},
    {u"DefaultReminderSeconds", 0, cLowest, cHighest, &TSection::GetDefaultReminderSeconds,
     &TSection::SetDefaultReminderSeconds},
    {u"RelativeTimeInMinutes", 0, 0, 13, &TSection::GetRelativeTimeIndex,
     &TSection::SetRelativeTimeIndex},
    {u"DefaultRemindType", 1, 0, 1, &TSection::GetDefaultRemindType,
     &TSection::SetDefaultRemindType},
};

struct TFlagKey {
  const char16_t* Name;
  bool Default;
  bool (TIniFileSectionWatchlist::*Get)() const;
  void (TIniFileSectionWatchlist::*Set)(bool);
};
const TFlagKey cFlags[] = {
    {u"ShowItemCountInTree", true, &TSection::GetShowItemCountInTree,
     &TSection::SetShowItemCountInTree},
    {u"ShowItemCountInTreeRecursive", true, &TSection::GetShowItemCountInTreeRecursive,
     &TSection::SetShowItemCountInTreeRecursive},
    {u"ShowAddDialog", true, &TSection::GetShowAddDialog, &TSection::SetShowAddDialog},
    {u"StoreLastSelectedSoundFile", true, &TSection::GetStoreLastSelectedSoundFile,
     &TSection::SetStoreLastSelectedSoundFile},
    {u"UpdateOnStartup", false, &TSection::GetUpdateOnStartup, &TSection::SetUpdateOnStartup},
    {u"UpdateOnInterval", false, &TSection::GetUpdateOnInterval, &TSection::SetUpdateOnInterval},
    {u"AutoActivateReminder", false, &TSection::GetAutoActivateReminder,
     &TSection::SetAutoActivateReminder},
    {u"UseDefaultReminderTimes", false, &TSection::GetUseDefaultReminderTimes,
     &TSection::SetUseDefaultReminderTimes},
    {u"DefaultReminderAfterTime", false, &TSection::GetDefaultReminderAfterTime,
     &TSection::SetDefaultReminderAfterTime},
};

TEST_F(TIniFileSectionWatchlistTest, AFileWithoutKeysYieldsTheDefaults) {
  for (const TNumberKey& key : cNumbers) {
    EXPECT_EQ((FSection.*key.Get)(), key.Default) << ToUtf8(key.Name);
  }
  for (const TFlagKey& key : cFlags) {
    EXPECT_EQ((FSection.*key.Get)(), key.Default) << ToUtf8(key.Name);
  }
  EXPECT_EQ(FSection.GetSoundFile(), TFileHelper::GetLocalFileName(u"remind.wav"));
  EXPECT_EQ(FSection.GetLastSelected(), u"");
  EXPECT_TRUE(FSection.GetUpdateLastDate().IsZero());
  EXPECT_EQ(FSection.GetDefaultCategory(cSourceA), cEmptyGuid);
  EXPECT_THAT(Stored(), IsEmpty()) << "reading writes nothing";
}

TEST_F(TIniFileSectionWatchlistTest, NumbersAreKeptUnderTheirKeys) {
  for (const TNumberKey& key : cNumbers) {
    const int value = key.Default == key.Min ? key.Min + 1 : key.Max == 1 ? 0 : key.Default + 1;
    (FSection.*key.Set)(value);
    EXPECT_EQ(Stored(key.Name), IntToStr(value));
    EXPECT_EQ((TIniFileSectionWatchlist().*key.Get)(), value) << ToUtf8(key.Name);
  }
}

TEST_F(TIniFileSectionWatchlistTest, NumbersBeyondTheirBoundsReadAsTheNearerOne) {
  for (const TNumberKey& key : cNumbers) {
    Store(key.Name, IntToStr(int64_t{key.Max} + 1));
    EXPECT_EQ((FSection.*key.Get)(), key.Max) << ToUtf8(key.Name);
    Store(key.Name, IntToStr(int64_t{key.Min} - 1));
    EXPECT_EQ((FSection.*key.Get)(), key.Min) << ToUtf8(key.Name);
    Store(key.Name, IntToStr(key.Max));
    EXPECT_EQ((FSection.*key.Get)(), key.Max) << ToUtf8(key.Name);
    Store(key.Name, IntToStr(key.Min));
    EXPECT_EQ((FSection.*key.Get)(), key.Min) << ToUtf8(key.Name);
    Store(key.Name, u"viele");
    EXPECT_EQ((FSection.*key.Get)(), key.Default) << ToUtf8(key.Name);
  }
}

TEST_F(TIniFileSectionWatchlistTest, FlagsAreKeptUnderTheirKeys) {
  for (const TFlagKey& key : cFlags) {
    (FSection.*key.Set)(!key.Default);
    EXPECT_EQ(Stored(key.Name), key.Default ? u"0" : u"1") << ToUtf8(key.Name);
    EXPECT_EQ((TIniFileSectionWatchlist().*key.Get)(), !key.Default) << ToUtf8(key.Name);
  }
}

TEST_F(TIniFileSectionWatchlistTest, AValueEqualToTheDefaultReadsBackAsThatDefault) {
  for (const TNumberKey& key : cNumbers) {
    Store(key.Name, u"1");
    (FSection.*key.Set)(key.Default);
    EXPECT_EQ((FSection.*key.Get)(), key.Default) << ToUtf8(key.Name);
  }
  for (const TFlagKey& key : cFlags) {
    (FSection.*key.Set)(!key.Default);
    (FSection.*key.Set)(key.Default);
    EXPECT_EQ((FSection.*key.Get)(), key.Default) << ToUtf8(key.Name);
  }
  FSection.SetSoundFile(u"/tmp/a.wav");
  FSection.SetSoundFile(TFileHelper::GetLocalFileName(u"remind.wav"));
  EXPECT_EQ(FSection.GetSoundFile(), TFileHelper::GetLocalFileName(u"remind.wav"));
  EXPECT_THAT(Stored(), IsEmpty());
}

TEST_F(TIniFileSectionWatchlistTest, TextsAreKeptUnderTheirKeys) {
  FSection.SetSoundFile(u"/home/müller/gong.wav");
  FSection.SetLastSelected(GUIDToString(cCategory1));
  EXPECT_EQ(Stored(u"SoundFile"), u"/home/müller/gong.wav");
  EXPECT_EQ(FSection.GetSoundFile(), u"/home/müller/gong.wav");
  EXPECT_EQ(Stored(u"LastSelected"), GUIDToString(cCategory1));
  EXPECT_EQ(FSection.GetLastSelected(), GUIDToString(cCategory1));
  FSection.SetLastSelected(u"");
  EXPECT_EQ(FSection.GetLastSelected(), u"");
}

TEST_F(TIniFileSectionWatchlistTest, ThereIsNoCache) {
  TIniFileSectionWatchlist other;
  other.SetCategoryTreeWidth(300);
  EXPECT_EQ(FSection.GetCategoryTreeWidth(), 300);
  FFolder.Write(u"settings.ini", "[Watchlist]\r\nCategoryTreeWidth=411\r\n");
  EXPECT_EQ(FSection.GetCategoryTreeWidth(), 411);
}

TEST_F(TIniFileSectionWatchlistTest, UpdateLastDateIsTheLocalesText) {
  const TDateTime date = EncodeDateTime({2026, 11, 20, 18, 30, 5, 0});
  FSection.SetUpdateLastDate(date.PlusMs(400));
  EXPECT_EQ(Stored(u"UpdateLastDate"), u"20.11.2026, 18:30:05");
  EXPECT_EQ(FSection.GetUpdateLastDate(), date);
}

TEST_F(TIniFileSectionWatchlistTest, UpdateLastDateThatIsNoDateReadsAsNever) {
  Store(u"UpdateLastDate", u"gestern");
  EXPECT_TRUE(FSection.GetUpdateLastDate().IsZero());
  Store(u"UpdateLastDate", u"2026-11-20T18:30:00");
  EXPECT_TRUE(FSection.GetUpdateLastDate().IsZero()) << "another form";
}

TEST_F(TIniFileSectionWatchlistTest, AWriteOfZeroStoresTheEmptyText) {
  FSection.SetUpdateLastDate(EncodeDateTime({2026, 11, 20}));
  FSection.SetUpdateLastDate({});
  EXPECT_EQ(FFile.ReadString(u"Watchlist", u"UpdateLastDate", u""), u"");
  EXPECT_TRUE(FSection.GetUpdateLastDate().IsZero());
}

TEST_F(TIniFileSectionWatchlistTest, KeepsTheSizeOfTheWindow) {
  FSection.SaveWindowSize(800, 600);
  EXPECT_EQ(Stored(u"WindowWidth"), u"800");
  EXPECT_EQ(Stored(u"WindowHeight"), u"600");
}

TEST_F(TIniFileSectionWatchlistTest, DefaultCategoriesAreKeptOnePerSource) {
  FSection.SetDefaultCategory(cSourceA, cCategory1);
  FSection.SetDefaultCategory(cSourceB, cCategory2);
  EXPECT_EQ(FSection.GetDefaultCategory(cSourceA), cCategory1);
  EXPECT_EQ(FSection.GetDefaultCategory(cSourceB), cCategory2);
  EXPECT_EQ(FSection.GetDefaultCategory(cSourceC), cEmptyGuid);
  EXPECT_EQ(Stored(u"DefaultCategory0"), Line(cSourceA, cCategory1));
  EXPECT_EQ(Stored(u"DefaultCategory1"), Line(cSourceB, cCategory2));
}

TEST_F(TIniFileSectionWatchlistTest, ChangingOneDefaultKeepsTheOthersInTheirOrder) {
  FSection.SetDefaultCategory(cSourceA, cCategory1);
  FSection.SetDefaultCategory(cSourceB, cCategory1);
  FSection.SetDefaultCategory(cSourceC, cCategory1);
  FSection.SetDefaultCategory(cSourceB, cCategory2);
  EXPECT_EQ(Stored(u"DefaultCategory0"), Line(cSourceA, cCategory1));
  EXPECT_EQ(Stored(u"DefaultCategory1"), Line(cSourceB, cCategory2));
  EXPECT_EQ(Stored(u"DefaultCategory2"), Line(cSourceC, cCategory1));
}

TEST_F(TIniFileSectionWatchlistTest, TheEmptyCategoryRemovesTheLineAndRenumbersTheRest) {
  FSection.SetDefaultCategory(cSourceA, cCategory1);
  FSection.SetDefaultCategory(cSourceB, cCategory2);
  FSection.SetDefaultCategory(cSourceA, cEmptyGuid);
  EXPECT_EQ(Stored(u"DefaultCategory0"), Line(cSourceB, cCategory2));
  EXPECT_FALSE(FFile.HasKey(u"Watchlist", u"DefaultCategory1"));
  EXPECT_EQ(FSection.GetDefaultCategory(cSourceA), cEmptyGuid);
}

TEST_F(TIniFileSectionWatchlistTest, RemovingADefaultThatIsNotThereKeepsTheOthers) {
  FSection.SetDefaultCategory(cSourceA, cCategory1);
  FSection.SetDefaultCategory(cSourceB, cEmptyGuid);
  EXPECT_EQ(Stored(u"DefaultCategory0"), Line(cSourceA, cCategory1));
  EXPECT_FALSE(FFile.HasKey(u"Watchlist", u"DefaultCategory1"));
}

TEST_F(TIniFileSectionWatchlistTest, TheListTakesEveryLineOfTheSectionWhateverItsKey) {
  Store(u"CategoryTreeWidth", u"300");
  Store(u"DefaultCategory0", Line(cSourceA, cCategory1));
  Store(u"SoundFile", u"/a;b;c.wav");
  TStringList list{u"vorher"};
  FSection.GetDefaultCategory(list);
  EXPECT_THAT(
      list.Lines(),
      ElementsAre(u"300", GUIDToString(cSourceA) + u"=" + GUIDToString(cCategory1), u"/a=b;c.wav"))
      << "only the first semicolon becomes an equals sign";
}

TEST_F(TIniFileSectionWatchlistTest, EachChangeAddsFillerKeysForTheOtherKeys) {
  Store(u"CategoryTreeWidth", u"300");
  Store(u"LastSelected", u"x");
  FSection.SetDefaultCategory(cSourceA, cCategory1);
  const std::string line = ToUtf8(Line(cSourceA, cCategory1));
  EXPECT_THAT(Stored(), ElementsAre("CategoryTreeWidth=300", "LastSelected=x", "DefaultCategory0=;",
                                    "DefaultCategory1=;", "DefaultCategory2=" + line));
  FSection.SetDefaultCategory(cSourceA, cCategory1);
  EXPECT_THAT(Stored(), ElementsAre("CategoryTreeWidth=300", "LastSelected=x", "DefaultCategory0=;",
                                    "DefaultCategory1=;", "DefaultCategory2=;",
                                    "DefaultCategory3=;", "DefaultCategory4=" + line));
  EXPECT_EQ(FSection.GetDefaultCategory(cSourceA), cCategory1);
  EXPECT_EQ(FSection.GetCategoryTreeWidth(), 300);
}

// The filler keys of many years; written one by one this would take minutes.
TEST_F(TIniFileSectionWatchlistTest, AChangeAmongVeryManyFillerKeysIsOneWalkAlongTheFile) {
  constexpr int cCount = 8000;
  std::string file = "[Watchlist]\nCategoryTreeWidth=300\n";
  for (int i = 0; i < cCount; ++i) file += "DefaultCategory" + std::to_string(i) + "=;\n";
  FFolder.Write(u"settings.ini", file);
  FSection.SetDefaultCategory(cSourceA, cCategory1);
  EXPECT_EQ(Stored(u"DefaultCategory0"), u";");
  EXPECT_EQ(Stored(u"DefaultCategory" + IntToStr(cCount)), u";");
  EXPECT_EQ(Stored(u"DefaultCategory" + IntToStr(cCount + 1)), Line(cSourceA, cCategory1));
  EXPECT_EQ(Stored().size(), static_cast<size_t>(cCount + 3));
}

TEST_F(TIniFileSectionWatchlistTest, AChangeIsOneWriteAndAllOrNothing) {
  FSection.SetDefaultCategory(cSourceA, cCategory1);
  {
    TFaultyFileLayer layer;
    FSection.SetDefaultCategory(cSourceB, cCategory1);
    EXPECT_EQ(std::count(layer.Calls().begin(), layer.Calls().end(), "rename"), 1);
    layer.FailAll("flush", EIO);
    EXPECT_THROW(FSection.SetDefaultCategory(cSourceC, cCategory1), EInOutError);
  }
  EXPECT_THAT(Stored(), ElementsAre("DefaultCategory0=" + ToUtf8(Line(cSourceA, cCategory1)),
                                    "DefaultCategory1=" + ToUtf8(Line(cSourceB, cCategory1))));
  FSection.SetDefaultCategory(cSourceC, cCategory2);
  EXPECT_EQ(FSection.GetDefaultCategory(cSourceC), cCategory2);
}

TEST_F(TIniFileSectionWatchlistTest, ADefaultCategoryThatIsNoGuidIsTheEmptyOne) {
  Store(u"DefaultCategory0", GUIDToString(cSourceA) + u";kaputt");
  EXPECT_EQ(FSection.GetDefaultCategory(cSourceA), cEmptyGuid);
}

TEST_F(TIniFileSectionWatchlistTest, EveryKeyWithThePrefixCountsAsANode) {
  Store(u"DefaultCategory", u"a");
  Store(u"DefaultReminderHours", u"3");
  Store(u"DefaultCategoryName", u"b");
  Store(u"MyDefaultCategory0", u"c");
  Store(u"DefaultCategory12", u"d");
  TStringList nodes{u"vorher"};
  FSection.GetDefaultCategoryNodes(nodes);
  EXPECT_THAT(nodes.Lines(),
              ElementsAre(u"DefaultCategory", u"DefaultCategoryName", u"DefaultCategory12"));
  EXPECT_TRUE(FSection.HasDefaultCategoryNodes());
  FSection.DeleteDefaultCategoryNodes();
  EXPECT_FALSE(FSection.HasDefaultCategoryNodes());
  EXPECT_THAT(Stored(), ElementsAre("DefaultReminderHours=3", "MyDefaultCategory0=c"));
}

TEST_F(TIniFileSectionWatchlistTest, SetDefaultCategoryNodesDeletesAndWritesNothingBack) {
  FSection.SetDefaultCategory(cSourceA, cCategory1);
  FSection.SetDefaultCategoryNodes({u"DefaultCategory0"});
  EXPECT_FALSE(FSection.HasDefaultCategoryNodes());
  EXPECT_THAT(Stored(), IsEmpty());
}

const TSettingsKeyInfo& KeyOf(const std::vector<TSettingsKeyInfo>& iKeys, TStringView iName) {
  for (const TSettingsKeyInfo& key : iKeys) {
    if (key.Key == iName) return key;
  }
  throw Exception(iName);
}

TEST_F(TIniFileSectionWatchlistTest, KeysDescribeWhatTheAccessorsRead) {
  const auto keys = TIniFileSectionWatchlist::Keys();
  EXPECT_EQ(keys.size(), std::size(cNumbers) + std::size(cFlags) + 4);
  for (const TNumberKey& number : cNumbers) {
    const TSettingsKeyInfo& key = KeyOf(keys, number.Name);
    EXPECT_EQ(key.Type, TSettingsKeyType::sktInteger);
    EXPECT_EQ(key.Default, IntToStr(number.Default));
    EXPECT_EQ(key.Min, number.Min);
    EXPECT_EQ(key.Max, number.Max);
  }
  for (const TFlagKey& flag : cFlags) {
    const TSettingsKeyInfo& key = KeyOf(keys, flag.Name);
    EXPECT_EQ(key.Type, TSettingsKeyType::sktBoolean);
    EXPECT_EQ(key.Default, flag.Default ? u"1" : u"0");
  }
  EXPECT_EQ(KeyOf(keys, u"SoundFile").Default, TFileHelper::GetLocalFileName(u"remind.wav"));
  for (const TStringView name : {u"LastSelected", u"UpdateLastDate", u"DefaultCategory"}) {
    EXPECT_EQ(KeyOf(keys, name).Type, TSettingsKeyType::sktString);
    EXPECT_EQ(KeyOf(keys, name).Default, u"");
  }
}

TEST_F(TIniFileSectionWatchlistTest, KeysAreUniqueAndToldToTheUser) {
  std::set<TString> names;
  for (const TSettingsKeyInfo& key : TIniFileSectionWatchlist::Keys()) {
    EXPECT_EQ(key.Section, u"Watchlist");
    EXPECT_TRUE(names.insert(key.Key).second) << ToUtf8(key.Key);
    EXPECT_NE(key.Meaning, u"") << ToUtf8(key.Key);
    EXPECT_EQ(key.Numbered, key.Key == u"DefaultCategory");
  }
}

}  // namespace
}  // namespace kk
