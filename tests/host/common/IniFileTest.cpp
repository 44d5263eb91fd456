#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <limits>

#include "host/base/Exception.h"
#include "host/common/TIniFileSectionBase.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/common/TIniText.h"
#include "tests/support/TFaultyFileLayer.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"

namespace kk {
namespace {

using testing::ElementsAre;

class TKKIniFileTest : public testing::Test {
 protected:
  std::string Bytes() { return FFolder.Read(u"k.ini"); }
  void SetBytes(const std::string& iBytes) { FFolder.Write(u"k.ini", iBytes); }
  TString Read(TStringView iSection, TStringView iKey) {
    return FIni.ReadString(iSection, iKey, u"(none)");
  }

  TTempFolder FFolder;
  TLogRecorder FLog;
  TTestClock FClock;
  TKKIniFile FIni{FFolder.File(u"k.ini")};
};

TEST_F(TKKIniFileTest, AMissingFileHasTheDefaults) {
  TStringList list{u"old"};
  EXPECT_EQ(FIni.ReadString(u"A", u"k", u"x"), u"x");
  EXPECT_FALSE(FIni.HasKey(u"A", u"k"));
  FIni.ReadSection(u"A", list);
  EXPECT_EQ(list.GetCount(), 0);
  FIni.ReadSections(list);
  EXPECT_EQ(list.GetCount(), 0);
  FIni.DeleteKey(u"A", u"k");
  EXPECT_TRUE(FFolder.Names().empty());
  EXPECT_EQ(FIni.GetFileName(), FFolder.File(u"k.ini"));
}

TEST_F(TKKIniFileTest, WhatAFunctionChangesIsOneWriteAlsoIfItRaises) {
  TFaultyFileLayer layer;
  FIni.InOneWrite([&] {
    FIni.WriteString(u"A", u"a", u"1");
    FIni.WriteString(u"A", u"b", u"2");
    EXPECT_EQ(Read(u"A", u"b"), u"2");
    EXPECT_EQ(layer.Calls().size(), 0u);
  });
  EXPECT_EQ(std::ranges::count(layer.Calls(), "rename"), 1);
  EXPECT_THROW(FIni.InOneWrite([&] {
    FIni.WriteString(u"A", u"c", u"3");
    throw EConvertError(u"x");
  }),
               EConvertError);
  EXPECT_EQ(Bytes(), "[A]\na=1\nb=2\nc=3\n");
  layer.FailAll("write", ENOSPC);
  EXPECT_THROW(FIni.InOneWrite([&] { FIni.WriteString(u"A", u"d", u"4"); }), EInOutError);
  EXPECT_EQ(Read(u"A", u"d"), u"(none)");
}

TEST_F(TKKIniFileTest, WritesEveryChangeAtOnceForThisUserAlone) {
  FIni.WriteString(u"Watchlist", u"SoundFile", u"/tmp/ö.wav");
  EXPECT_EQ(Bytes(), "[Watchlist]\nSoundFile=/tmp/ö.wav\n");
  struct stat info {};
  stat(ToUtf8(FFolder.File(u"k.ini")).c_str(), &info);
  EXPECT_EQ(info.st_mode & 0777, 0600u);
  EXPECT_EQ(TKKIniFile(FFolder.File(u"k.ini")).ReadString(u"Watchlist", u"SoundFile", u""),
            u"/tmp/ö.wav");
}

TEST_F(TKKIniFileTest, MakesItsFolder) {
  TKKIniFile ini(FFolder.File(u"a/b/k.ini"));
  ini.WriteString(u"A", u"k", u"v");
  EXPECT_TRUE(FFolder.Has(u"a/b/k.ini"));
}

TEST_F(TKKIniFileTest, KeepsCommentsUnknownKeysAndTheirOrder) {
  SetBytes(
      "; mine\n\n[Foreign]\nx = 1 ; no comment\n# note\nbroken line\n[Watchlist]\n  A = 1  "
      "\nB=2\n\n[Z]\n\xFF=\xFE\n");
  FIni.WriteString(u"watchlist", u"a", u"3");
  FIni.WriteString(u"Watchlist", u"C", u"4");
  FIni.WriteString(u"New", u"k", u"v");
  FIni.DeleteKey(u"WATCHLIST", u"b");
  EXPECT_EQ(Bytes(),
            "; mine\n\n[Foreign]\nx = 1 ; no comment\n# note\nbroken "
            "line\n[Watchlist]\na=3\nC=4\n\n[Z]\n\xFF=\xFE\n\n[New]\nk=v\n");
  EXPECT_EQ(Read(u"Foreign", u"x"), u"1 ; no comment");
}

TEST_F(TKKIniFileTest, KeepsTheMarkAndTheLineBreaksOfTheFile) {
  SetBytes("\xEF\xBB\xBF[A]\r\nk=1\r\n");
  EXPECT_EQ(Read(u"A", u"k"), u"1");
  FIni.WriteString(u"A", u"l", u"2");
  FIni.WriteString(u"B", u"m", u"3");
  EXPECT_EQ(Bytes(), "\xEF\xBB\xBF[A]\r\nk=1\r\nl=2\r\n\r\n[B]\r\nm=3\r\n");
}

TEST_F(TKKIniFileTest, KeysBeforeAnySectionBelongToTheOneWithoutAName) {
  SetBytes("k=1\n[A]\nk=2\n");
  EXPECT_EQ(Read(u"", u"k"), u"1");
  FIni.WriteString(u"", u"l", u"3");
  EXPECT_EQ(Bytes(), "k=1\nl=3\n[A]\nk=2\n");
  SetBytes("[A]\nk=2\n");
  FIni.WriteString(u"", u"l", u"3");
  EXPECT_EQ(Bytes(), "l=3\n[A]\nk=2\n");
}

TEST_F(TKKIniFileTest, OfTwoKeysTheFirstCountsAndTwoSectionsOfANameAreOne) {
  SetBytes("[A]\nk=1\nK=2\n[B]\nx=1\n[a]\nk=3\nl=4\n");
  TStringList list;
  FIni.ReadSection(u"A", list);
  EXPECT_THAT(list.Lines(), ElementsAre(u"k", u"l"));
  EXPECT_EQ(Read(u"A", u"K"), u"1");
  FIni.ReadSectionValues(u"A", list);
  EXPECT_THAT(list.Lines(), ElementsAre(u"k=1", u"l=4"));
  FIni.ReadSections(list);
  EXPECT_THAT(list.Lines(), ElementsAre(u"A", u"B"));
  FIni.DeleteKey(u"A", u"k");
  EXPECT_EQ(Read(u"A", u"k"), u"(none)");
}

TEST_F(TKKIniFileTest, TakesAValueAsItStandsUnlessItIsWhollyInQuotes) {
  SetBytes(
      "[A]\na=C:\\new\\u0041\nb=\"x\\u0041\\\"\\\\\"\nc=\"half\nd=\"a\" "
      "b\ne=\"bad\\n\"\nf=\"\\u12\"\ng=\"a\"b\"\nh=\"\\\"\ni=\"\"\n");
  EXPECT_EQ(Read(u"A", u"a"), u"C:\\new\\u0041");
  EXPECT_EQ(Read(u"A", u"b"), u"xA\"\\");
  EXPECT_EQ(Read(u"A", u"c"), u"\"half");
  EXPECT_EQ(Read(u"A", u"d"), u"\"a\" b");
  EXPECT_EQ(Read(u"A", u"e"), u"\"bad\\n\"");
  EXPECT_EQ(Read(u"A", u"f"), u"\"\\u12\"");
  EXPECT_EQ(Read(u"A", u"g"), u"\"a\"b\"");
  EXPECT_EQ(Read(u"A", u"h"), u"\"\\\"");
  EXPECT_EQ(Read(u"A", u"i"), u"");
}

TEST_F(TKKIniFileTest, EscapesWhatWouldNotComeBack) {
  FIni.WriteString(u"A", u"k", u" a\r\n\"\\\t");
  EXPECT_EQ(Bytes(), "[A]\nk=\" a\\u000D\\u000A\\\"\\\\\\u0009\"\n");
}

TString Unit(std::vector<uint16_t> iUnits) {
  constexpr TStringView cTroublesome = u"=[]\"\\;# \t\r\nu0A\u0085\xFEFF\xD83D\xDE00";
  TString text;
  for (const uint16_t unit : iUnits) {
    text += unit < cTroublesome.size() ? cTroublesome[unit] : static_cast<char16_t>(unit * 977u);
  }
  return text;
}

RC_GTEST_FIXTURE_PROP(TKKIniFileTest, AnyTextComesBackEqual,
                      (const std::vector<uint16_t>& iSection, const std::vector<uint16_t>& iKey,
                       const std::vector<uint16_t>& iValue)) {
  TIniText text;
  text.Set(Unit(iSection), Unit(iKey), Unit(iValue));
  text.Set(Unit(iSection), Unit(iKey) + u"2", Unit(iSection));
  const TIniText again(text.ToBytes());
  RC_ASSERT(again.Find(Unit(iSection), Unit(iKey)) == Unit(iValue));
  RC_ASSERT(again.Find(Unit(iSection), Unit(iKey) + u"2") == Unit(iSection));
  RC_ASSERT(again.ToBytes() == text.ToBytes());
}

RC_GTEST_PROP(TIniText, AnyBytesAreReadAndStay, (const std::string& iBytes)) {
  TIniText text(iBytes);
  text.Set(u"Sec", u"Key", u"Value");
  RC_ASSERT(TIniText(text.ToBytes()).Find(u"Sec", u"Key") == TString(u"Value"));
}

TEST_F(TKKIniFileTest, SeesChangesOnTheDisk) {
  FIni.WriteString(u"A", u"k", u"1");
  std::filesystem::remove(ToUtf8(FFolder.File(u"k.ini")));
  EXPECT_EQ(Read(u"A", u"k"), u"(none)");
  SetBytes("[A]\nk=other\nforeign=1\n");
  EXPECT_EQ(Read(u"A", u"k"), u"other");
  FIni.WriteString(u"A", u"k", u"2");
  EXPECT_EQ(Bytes(), "[A]\nk=2\nforeign=1\n");
}

TEST_F(TKKIniFileTest, WritesNothingThatIsThereAlready) {
  FIni.WriteString(u"A", u"k", u"1");
  TFaultyFileLayer layer;
  FIni.WriteString(u"A", u"k", u"1");
  EXPECT_TRUE(layer.Calls().empty());
}

TEST_F(TKKIniFileTest, WritesSeveralChangesAsOne) {
  TFaultyFileLayer layer;
  FIni.BeginUpdate();
  FIni.BeginUpdate();
  FIni.WriteString(u"A", u"a", u"1");
  FIni.EndUpdate();
  FIni.WriteString(u"A", u"b", u"2");
  EXPECT_EQ(Read(u"A", u"a"), u"1");
  EXPECT_TRUE(FFolder.Names().empty());
  FIni.EndUpdate();
  EXPECT_EQ(Bytes(), "[A]\na=1\nb=2\n");
  EXPECT_EQ(std::count(layer.Calls().begin(), layer.Calls().end(), "rename"), 1);
  FIni.EndUpdate();
  FIni.WriteString(u"A", u"c", u"3");
  EXPECT_EQ(Read(u"A", u"c"), u"3");
}

TEST_F(TKKIniFileTest, WritesManyKeysInTheirOrderBehindTheOthers) {
  SetBytes("[A]\nx=1\n\n[Z]\nz=1\n");
  TFaultyFileLayer layer;
  FIni.WriteSectionValues(u"a", {u"n=1", u"X=2", u"m=a=b", u"N=3", u"empty="});
  EXPECT_EQ(Bytes(), "[A]\nX=2\nN=3\nm=a=b\nempty=\n\n[Z]\nz=1\n");
  EXPECT_EQ(std::count(layer.Calls().begin(), layer.Calls().end(), "rename"), 1);
  FIni.WriteSectionValues(u"New", {u"k=v"});
  EXPECT_EQ(Read(u"New", u"k"), u"v");
}

TEST_F(TKKIniFileTest, ManyKeysThatAreThereAlreadyAreNotWritten) {
  FIni.WriteString(u"A", u"a", u"1");
  TFaultyFileLayer layer;
  FIni.WriteSectionValues(u"A", {u"A=1"});
  FIni.WriteSectionValues(u"B", {});
  FIni.DeleteKeys(u"A", {u"b"});
  FIni.DeleteKeys(u"A", {});
  EXPECT_EQ(std::count(layer.Calls().begin(), layer.Calls().end(), "rename"), 0);
  EXPECT_EQ(Bytes(), "[A]\na=1\n");
}

TEST_F(TKKIniFileTest, DeletesManyKeysOfOneSection) {
  SetBytes("[A]\na=1\nb=2\n; a\nA=3\nc=4\n[B]\na=5\n");
  FIni.DeleteKeys(u"a", {u"a", u"C", u"nicht da"});
  EXPECT_EQ(Bytes(), "[A]\nb=2\n; a\n[B]\na=5\n");
}

// What SetAll and DeleteAll promise: the outcome of the single calls in turn.
RC_GTEST_PROP(TIniText, ManyAtOnceAreTheSameAsEachInTurn, ()) {
  const auto name = rc::gen::element<TString>(u"a", u"A", u"b", u"c", u"", u"=");
  const auto values = *rc::gen::container<std::vector<std::pair<TString, TString>>>(
      rc::gen::pair(name, rc::gen::element<TString>(u"1", u"2", u" x ")));
  const auto keys = *rc::gen::container<std::vector<TString>>(name);
  const auto section = *rc::gen::element<TString>(u"S", u"s", u"T", u"");
  TIniText single(
      *rc::gen::element<std::string>("", "b=1\n[S]\na=1\n\n[T]\nc=1\nC=2\n", "[S]\n\n"));
  TIniText many = single;
  bool changed = false;
  for (const auto& [key, value] : values) {
    if (single.Find(section, key) == value) continue;
    single.Set(section, key, value);
    changed = true;
  }
  RC_ASSERT(many.SetAll(section, values) == changed);
  RC_ASSERT(many.ToBytes() == single.ToBytes());
  bool deleted = false;
  for (const TString& key : keys) deleted = single.Delete(section, key) || deleted;
  RC_ASSERT(many.DeleteAll(section, keys) == deleted);
  RC_ASSERT(many.ToBytes() == single.ToBytes());
}

TEST_F(TKKIniFileTest, AWriteThatFailsChangesNothing) {
  FIni.WriteString(u"A", u"k", u"1");
  const std::string before = Bytes();
  {
    TFaultyFileLayer layer;
    layer.FailAll("flush", EIO);
    EXPECT_THROW(FIni.WriteString(u"A", u"k", u"2"), EInOutError);
    EXPECT_THROW(FIni.DeleteKey(u"A", u"k"), EInOutError);
  }
  EXPECT_EQ(Bytes(), before);
  EXPECT_EQ(Read(u"A", u"k"), u"1");
  FIni.WriteString(u"A", u"l", u"3");
  EXPECT_EQ(Bytes(), before + "l=3\n");
}

TEST_F(TKKIniFileTest, AFileThatCantBeReadCountsAsEmptyAndIsPutAsideBeforeTheFirstWrite) {
  SetBytes(std::string((16 << 20) + 1, 'x'));
  EXPECT_EQ(Read(u"A", u"k"), u"(none)");
  EXPECT_EQ(FFolder.Names().size(), 1u);
  FIni.WriteString(u"A", u"k", u"1");
  EXPECT_EQ(Bytes(), "[A]\nk=1\n");
  EXPECT_EQ(FFolder.Read(u"k.ini.2026-11-20-183000").size(), (16u << 20) + 1);
  FIni.WriteString(u"A", u"k", u"2");
  EXPECT_EQ(FFolder.Names().size(), 2u);
}

TEST_F(TKKIniFileTest, WhatCantBePutAsideIsNotWrittenOver) {
  std::filesystem::create_directory(ToUtf8(FFolder.File(u"k.ini")));
  EXPECT_EQ(Read(u"A", u"k"), u"(none)");
  EXPECT_THROW(FIni.WriteString(u"A", u"k", u"1"), EInOutError);
  EXPECT_TRUE(std::filesystem::is_directory(ToUtf8(FFolder.File(u"k.ini"))));
}

TEST_F(TKKIniFileTest, TellsWhenItIsToldThatSettingsHaveChanged) {
  struct TListener {
    void Changed(TObject* iSender) {
      ++Count;
      Sender = iSender;
      throw Exception(u"nobody's business");
    }
    int Count = 0;
    TObject* Sender = nullptr;
  } first, second;
  FIni.AddNotifyOnChange(TNotifyEvent::Of<&TListener::Changed>(&first));
  FIni.AddNotifyOnChange(TNotifyEvent::Of<&TListener::Changed>(&second));
  FIni.WriteString(u"A", u"k", u"1");
  EXPECT_EQ(first.Count, 0);
  FIni.NotifyChanged();
  EXPECT_EQ(first.Count, 1);
  EXPECT_EQ(second.Count, 1);
  EXPECT_EQ(second.Sender, &FIni);
  FIni.RemoveNotifyOnChange(TNotifyEvent::Of<&TListener::Changed>(&first));
  FIni.NotifyChanged();
  EXPECT_EQ(first.Count, 1);
}

TEST(IniFile, IsTheOneThatTheHostInstalled) {
  EXPECT_THROW(IniFile(), Exception);
  const TTempFolder folder;
  TKKIniFile ini(folder.File(u"k.ini"));
  EXPECT_EQ(SetIniFile(&ini), nullptr);
  EXPECT_EQ(&IniFile(), &ini);
  EXPECT_EQ(SetIniFile(nullptr), &ini);
}

/// A section whose operations the test can reach.
class TOpenSection : public TKKIniFileSectionPluginWithWindow {
 public:
  using TIniFileSectionBase::ReadBoolean;
  using TIniFileSectionBase::ReadInteger;
  using TIniFileSectionBase::ReadString;
  using TIniFileSectionBase::WriteBoolean;
  using TIniFileSectionBase::WriteInteger;
  using TIniFileSectionBase::WriteString;
  using TKKIniFileSectionPluginWithWindow::TKKIniFileSectionPluginWithWindow;
};

class TIniFileSectionTest : public TKKIniFileTest {
 protected:
  TIniFileSectionTest() { SetIniFile(&FIni); }
  ~TIniFileSectionTest() override { SetIniFile(nullptr); }
  TOpenSection FSection{FIni, u"S"};
};

TEST_F(TIniFileSectionTest, ValuesReadBack) {
  FSection.WriteString(u"s", u"text", u"");
  FSection.WriteBoolean(u"b", true, false);
  FSection.WriteBoolean(u"c", false, true);
  FSection.WriteInteger(u"i", std::numeric_limits<int>::min(), 0);
  EXPECT_EQ(Bytes(), "[S]\ns=text\nb=1\nc=0\ni=-2147483648\n");
  EXPECT_EQ(FSection.ReadString(u"s", u""), u"text");
  EXPECT_TRUE(FSection.ReadBoolean(u"b", false));
  EXPECT_FALSE(FSection.ReadBoolean(u"c", true));
  EXPECT_EQ(FSection.ReadInteger(u"i", 0, std::numeric_limits<int>::min(), 5),
            std::numeric_limits<int>::min());
}

TEST_F(TIniFileSectionTest, AValueEqualToItsDefaultTakesTheKeyOut) {
  FSection.WriteInteger(u"i", 5, 220);
  FSection.WriteInteger(u"i", 220, 220);
  FSection.WriteBoolean(u"b", false, true);
  FSection.WriteBoolean(u"b", true, true);
  FSection.WriteString(u"s", u"x", u"y");
  FSection.WriteString(u"s", u"y", u"y");
  EXPECT_EQ(Bytes(), "[S]\n");
  EXPECT_EQ(FSection.ReadInteger(u"i", 220, 50, 500), 220);
}

TEST_F(TIniFileSectionTest, AnIntegerOutsideItsBoundsReadsAsTheNearerOne) {
  SetBytes("[S]\na=49\nb=501\nc=text\nd=99999999999\ne=99999999999999999999\nf=\ng=0x10\n");
  EXPECT_EQ(FSection.ReadInteger(u"a", 220, 50, 500), 50);
  EXPECT_EQ(FSection.ReadInteger(u"b", 220, 50, 500), 500);
  EXPECT_EQ(FSection.ReadInteger(u"c", 220, 50, 500), 220);
  EXPECT_EQ(FSection.ReadInteger(u"d", 220, 50, 500), 500);
  EXPECT_EQ(FSection.ReadInteger(u"e", 220, 50, 500), 220);
  EXPECT_EQ(FSection.ReadInteger(u"f", 220, 50, 500), 220);
  EXPECT_EQ(FSection.ReadInteger(u"g", 220, 50, 500), 220);
}

TEST_F(TIniFileSectionTest, ReadsBooleansInBothForms) {
  SetBytes("[S]\na=TRUE\nb=False\nc=ja\nd=1\ne=0\n");
  EXPECT_TRUE(FSection.ReadBoolean(u"a", false));
  EXPECT_FALSE(FSection.ReadBoolean(u"b", true));
  EXPECT_TRUE(FSection.ReadBoolean(u"c", true));
  EXPECT_FALSE(FSection.ReadBoolean(u"c", false));
  EXPECT_TRUE(FSection.ReadBoolean(u"d", false));
  EXPECT_FALSE(FSection.ReadBoolean(u"e", true));
}

TEST_F(TIniFileSectionTest, SavesTheSizeOfAWindowThatHasOne) {
  FSection.SaveWindowSize(0, 600);
  FSection.SaveWindowSize(800, 0);
  EXPECT_TRUE(FFolder.Names().empty());
  FSection.SaveWindowSize(800, 600);
  EXPECT_EQ(Bytes(), "[S]\nWindowWidth=800\nWindowHeight=600\n");
}

TEST_F(TIniFileSectionTest, StandingSectionsHaveTheirDefaults) {
  TString address = u"old";
  EXPECT_EQ(TIniFileSectionCommon().PathToLastImExport(), u"");
  EXPECT_FALSE(TIniFileSectionCommunication().GetEMail(address));
  EXPECT_EQ(address, u"");
  EXPECT_EQ(TIniFileSectionCommunication().GetSMS(), u"");
  EXPECT_EQ(TIniFileSectionCommunication().GetNotifierPosition(), 0);
  EXPECT_TRUE(TIniFileSectionGeneral().GetDelayedStart());
}

TEST_F(TIniFileSectionTest, StandingSectionsReadTheirKeys) {
  TIniFileSectionCommon().SetPathToLastImExport(u"/home/lisa");
  EXPECT_EQ(TIniFileSectionCommon().PathToLastImExport(), u"/home/lisa");
  FIni.WriteString(u"Communication", u"EMail", u"lisa@example.org");
  TString address;
  EXPECT_FALSE(TIniFileSectionCommunication().GetEMail(address));
  EXPECT_EQ(address, u"lisa@example.org");
  FIni.WriteString(u"Communication", u"EMailConfirmed", u"1");
  EXPECT_TRUE(TIniFileSectionCommunication().GetEMail(address));
  FIni.WriteString(u"Communication", u"EMail", u"");
  EXPECT_FALSE(TIniFileSectionCommunication().GetEMail(address));
  FIni.WriteString(u"Communication", u"SMS", u"0170");
  EXPECT_EQ(TIniFileSectionCommunication().GetSMS(), u"0170");
  FIni.WriteString(u"Communication", u"NotifierPosition", u"-7");
  EXPECT_EQ(TIniFileSectionCommunication().GetNotifierPosition(), -7);
  FIni.WriteString(u"General", u"DelayedStart", u"0");
  EXPECT_FALSE(TIniFileSectionGeneral().GetDelayedStart());
}

RC_GTEST_PROP(Scramble, AnyTextComesBackAndDoesNotStandThere,
              (const std::vector<uint16_t>& iUnits)) {
  const TString text(iUnits.begin(), iUnits.end());
  const TString hidden = TKKIniFileSectionBase::Scramble(text);
  RC_ASSERT(TKKIniFileSectionBase::Unscramble(hidden) == text);
  RC_ASSERT(text.size() < 5 || hidden.find(text) == TString::npos);
}

TEST(Scramble, HidesAPasswordFromAGlance) {
  const TString hidden = TKKIniFileSectionBase::Scramble(u"geheim");
  EXPECT_EQ(hidden.find(u"geheim"), TString::npos);
  EXPECT_EQ(hidden, WithoutControlCharacters(hidden));
}

TEST(Scramble, TextThatItDidNotMakeGivesAnEmptyText) {
  const TString hidden = TKKIniFileSectionBase::Scramble(u"geheim");
  TString changed = hidden;
  changed[6] = changed[6] == u'0' ? u'1' : u'0';
  for (const TString& text :
       {TString(), TString(u"geheim"), TString(u"~1"), TString(u"~1ABC"), TString(u"~1ABCG"),
        TString(u"~1ABCD"), hidden.substr(0, 10), hidden + u"0000", changed}) {
    EXPECT_EQ(TKKIniFileSectionBase::Unscramble(text), u"") << ToUtf8(text);
  }
}

}  // namespace
}  // namespace kk
