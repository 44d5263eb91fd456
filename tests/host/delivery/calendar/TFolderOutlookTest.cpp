#include "host/delivery/calendar/TFolderOutlook.h"

#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

#include "TCalendarTest.h"
#include "TIcalReader.h"
#include "tests/support/TFaultyFileLayer.h"

namespace kk {
namespace {

class TFolderOutlookTest : public TCalendarTest {
 protected:
  TFolderOutlookTest() { FWorld.Set(u"CalendarFolder", FWorld.Folder().File(u"a/termine")); }
  std::string Read(TStringView iFileName) const {
    return FWorld.Folder().Read(u"a/termine/" + TString(iFileName));
  }
  bool Has(TStringView iFileName) const {
    return FWorld.Folder().Has(u"a/termine/" + TString(iFileName));
  }
};

TEST_F(TFolderOutlookTest, WritesAFileForThisUserAloneIntoAFolderThatItMakes) {
  const TString entryId = Add();
  EXPECT_TRUE(TAppointment::IsFileName(entryId));
  const TIcalReader reader(Read(entryId));
  EXPECT_EQ(reader.Outline(), cOutline);
  EXPECT_EQ(reader.Uid() + ".ics", ToUtf8(entryId));
  EXPECT_EQ(reader.Summary(), "Kaufkobolde 7.0");
  struct stat info {};
  stat(ToUtf8(FWorld.Folder().File(u"a/termine/" + entryId)).c_str(), &info);
  EXPECT_EQ(info.st_mode & 0777, 0600u);
  EXPECT_NE(Add(), entryId);
}

TEST_F(TFolderOutlookTest, DeletesByTheIdAndOnlyOnce) {
  const TString entryId = Add();
  const TString other = Add();
  EXPECT_TRUE(Delete(entryId));
  EXPECT_FALSE(Has(entryId));
  EXPECT_TRUE(Has(other));
  EXPECT_FALSE(Delete(entryId));
}

TEST_F(TFolderOutlookTest, NoIdReachesAFileOutsideOfTheFolder) {
  const TString name = cSomeFile;
  FWorld.Folder().Write(name, "mine");
  Add();
  FWorld.Folder().Write(u"a/termine/notiz.txt", "mine");
  for (const TString& entryId :
       {TString(), u"../../" + name, u"../" + name, FWorld.Folder().File(name), u"./" + name,
        TString(u"notiz.txt"), TString(u".."), u"http://a.example/" + name,
        name + TString(1, u'\0'), TString(1 << 20, u'a')}) {
    EXPECT_FALSE(Delete(entryId)) << ToUtf8(entryId.substr(0, 60));
  }
  EXPECT_TRUE(FWorld.Folder().Has(name));
  EXPECT_TRUE(Has(u"notiz.txt"));
}

TEST_F(TFolderOutlookTest, ALinkInTheFolderIsDeletedAndNotWhatItPointsAt) {
  const TString name = cSomeFile;
  FWorld.Folder().Write(u"mine", "mine");
  Add();
  std::filesystem::create_symlink(ToUtf8(FWorld.Folder().File(u"mine")),
                                  ToUtf8(FWorld.Folder().File(u"a/termine/" + name)));
  EXPECT_TRUE(Delete(name));
  EXPECT_TRUE(FWorld.Folder().Has(u"mine"));
}

TEST_F(TFolderOutlookTest, HostileTextsMakeNoFurtherProperty) {
  const TString hostile =
      TString(u"a\r\nEND:VEVENT\r\nBEGIN:VEVENT\r\n") + TString(1, u'\0') + TString(1 << 20, u'"');
  EXPECT_EQ(TIcalReader(Read(Add(hostile, hostile, hostile))).Outline(), cOutline);
}

TEST_F(TFolderOutlookTest, AFullDiskIsSaidAndLeavesNothing) {
  Add();
  const auto count = [this] {
    const std::filesystem::directory_iterator files(ToUtf8(FWorld.Folder().File(u"a/termine")));
    return std::distance(begin(files), end(files));
  };
  TFaultyFileLayer layer;
  for (const char* step : {"open", "write", "flush", "close", "rename"}) {
    layer.FailAll(step, ENOSPC);
    EXPECT_THAT(AddFailure(), testing::HasSubstr("Der Datenträger ist voll"));
    EXPECT_EQ(count(), 1) << step;
  }
  // The last step of all, when the file has its name already.
  layer.FailCall(-1, 0);
  Add();
  const int steps = static_cast<int>(layer.Calls().size());
  for (int call = 0; call < steps; ++call) {
    layer.FailCall(call, ENOSPC);
    const auto before = count();
    const bool failed = AddFailure() != "(no failure)";
    EXPECT_EQ(count(), failed ? before : before + 1) << call;
  }
}

TEST_F(TFolderOutlookTest, AFolderThatCannotBeMadeIsSaid) {
  FWorld.Folder().Write(u"datei", "x");
  FWorld.Set(u"CalendarFolder", FWorld.Folder().File(u"datei/termine"));
  EXPECT_THAT(AddFailure(), testing::HasSubstr("datei"));
}

TEST_F(TFolderOutlookTest, AfterAStopNothingIsWrittenOrDeleted) {
  const TString entryId = Add();
  const auto outlook = CreateOutlook();
  FFactory.Stop();
  const TNoWindows noWindows;
  const std::string ended = "Abgebrochen, das Programm wird beendet";
  EXPECT_EQ(FailureOf([&] { outlook->AddAppointment(u"a", u"b", u"c", 0, cStart, 1); }), ended);
  EXPECT_EQ(FailureOf([&] { outlook->DeleteAppointment(entryId); }), ended);
  EXPECT_TRUE(Has(entryId));
}

}  // namespace
}  // namespace kk
