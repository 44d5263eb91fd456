#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "host/base/Exception.h"
#include "host/common/TDataFileGuard.h"
#include "host/common/TFileCompression.h"
#include "tests/support/TFaultyFileLayer.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TRawZip.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr char cCategories[] =
    "<CategoryRoot><Category><Id>{00000000-0000-0000-0000-000000000000}</Id><Categories>"
    "<Category><Id>{11111111-1111-1111-1111-111111111111}</Id></Category>"
    "</Categories></Category></CategoryRoot>";

class TDataFileGuardTest : public testing::Test {
 protected:
  ~TDataFileGuardTest() override { TFileCompression::SetMaxEntrySize(size_t{1} << 30); }

  void Write(const std::vector<std::pair<std::string, std::string>>& iEntries) {
    TRawZip zip;
    for (const auto& [name, bytes] : iEntries) zip.AddStored(name, bytes);
    FFolder.Write(u"watchlist.dat", zip.ToBytes());
  }
  void WriteSound() {
    Write({{"version", "2"}, {"remind", ""}, {"categories", cCategories}, {"{X}", "a source's"}});
  }
  std::string Check() { return ToUtf8(FGuard.PutAsideIfDamaged()); }
  std::string Copy() { return "watchlist.dat.2026-11-20-183000"; }
  // What is said of a file that is damaged so; the copy holds the same bytes.
  std::string TextFor(const std::vector<std::pair<std::string, std::string>>& iEntries) {
    const TString copy = FFolder.File(FromUtf8(Copy()));
    std::filesystem::remove(ToUtf8(copy));
    Write(iEntries);
    const std::string text = Check();
    EXPECT_THAT(text, testing::StartsWith("Die Datei " + ToUtf8(FFile) + " ist beschädigt: "));
    EXPECT_THAT(text, testing::EndsWith("\r\nEine Kopie liegt in " + ToUtf8(copy) + "."));
    EXPECT_EQ(FFolder.Read(FromUtf8(Copy())), FFolder.Read(u"watchlist.dat"));
    return text;
  }

  TTempFolder FFolder;
  TTestClock FClock;
  TLogRecorder FLog;
  TString FFile = FFolder.File(u"watchlist.dat");
  TDataFileGuard FGuard{FFile};
};

TEST_F(TDataFileGuardTest, OffersTheBackupOnlyIfTheFileIsMissingBesideIt) {
  EXPECT_FALSE(FGuard.BackupToRestore());
  FFolder.Write(u"watchlist.da~", "backup");
  EXPECT_TRUE(FGuard.BackupToRestore());
  FFolder.Write(u"watchlist.dat", "");
  EXPECT_FALSE(FGuard.BackupToRestore());
}

TEST_F(TDataFileGuardTest, ADanglingLinkIsNoMissingFile) {
  FFolder.Write(u"watchlist.da~", "backup");
  std::filesystem::create_symlink("none", ToUtf8(FFile));
  EXPECT_FALSE(FGuard.BackupToRestore());
}

TEST_F(TDataFileGuardTest, RestoringCopiesTheBackupAndKeepsIt) {
  FFolder.Write(u"watchlist.da~", "backup");
  chmod(ToUtf8(FFolder.File(u"watchlist.da~")).c_str(), 0600);
  FGuard.RestoreBackup();
  EXPECT_EQ(FFolder.Read(u"watchlist.dat"), "backup");
  EXPECT_EQ(FFolder.Read(u"watchlist.da~"), "backup");
  struct stat info {};
  stat(ToUtf8(FFile).c_str(), &info);
  EXPECT_EQ(info.st_mode & 0777, 0600u);
}

TEST_F(TDataFileGuardTest, ARestoreThatFailsRaisesAndLeavesTheBackup) {
  EXPECT_THROW(FGuard.RestoreBackup(), EInOutError);
  FFolder.Write(u"watchlist.da~", "backup");
  TFaultyFileLayer layer;
  layer.FailAll("write", ENOSPC);
  EXPECT_THROW(FGuard.RestoreBackup(), EInOutError);
  EXPECT_THAT(FFolder.Names(), ElementsAre("watchlist.da~"));
}

TEST_F(TDataFileGuardTest, RestoringKeepsACopyOfADamagedFile) {
  FFolder.Write(u"watchlist.dat", "damaged");
  FFolder.Write(u"watchlist.da~", "backup");
  FGuard.RestoreBackup();
  EXPECT_EQ(FFolder.Read(u"watchlist.dat"), "backup");
  EXPECT_EQ(FFolder.Read(FromUtf8(Copy())), "damaged");
}

TEST_F(TDataFileGuardTest, RestoresNothingOverWhatItCantCopy) {
  FFolder.Write(u"watchlist.dat", "damaged");
  FFolder.Write(u"watchlist.da~", "backup");
  {
    TFaultyFileLayer layer;
    layer.FailAll("open", ENOSPC);
    EXPECT_THROW(FGuard.RestoreBackup(), EInOutError);
  }
  EXPECT_EQ(FFolder.Read(u"watchlist.dat"), "damaged");
}

TEST_F(TDataFileGuardTest, ABackupIsSoundIfItsFileCouldBeLoaded) {
  EXPECT_FALSE(FGuard.IsBackupSound()) << "there is none";
  FFolder.Write(u"watchlist.da~", "no archive");
  EXPECT_FALSE(FGuard.IsBackupSound());
  WriteSound();
  FFolder.Write(u"watchlist.da~", FFolder.Read(u"watchlist.dat"));
  FFolder.Write(u"watchlist.dat", "damaged");
  EXPECT_TRUE(FGuard.IsBackupSound());
}

TEST_F(TDataFileGuardTest, RoomIsWhatTheFileNeedsAndALittleMore) {
  FFolder.Write(u"watchlist.dat", std::string(100'000, 'x'));
  EXPECT_NO_THROW(FGuard.CheckRoom());
  EXPECT_THAT(FFolder.Names(), ElementsAre("watchlist.dat")) << "nothing is left behind";
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const auto handler = signal(SIGXFSZ, SIG_IGN);
  for (const auto& [limit, hasRoom] : {std::pair(120'000, false), std::pair(200'000, true)}) {
    const rlimit small{static_cast<rlim_t>(limit), before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    if (hasRoom) {
      EXPECT_NO_THROW(FGuard.CheckRoom());
    } else {
      EXPECT_THROW(FGuard.CheckRoom(), EInOutError);
    }
    setrlimit(RLIMIT_FSIZE, &before);
  }
  signal(SIGXFSZ, handler);
  EXPECT_THAT(FFolder.Names(), ElementsAre("watchlist.dat"));
  EXPECT_EQ(FFolder.Read(u"watchlist.dat").size(), 100'000U);
}

TEST_F(TDataFileGuardTest, RoomIsLookedForWhereALinkLeads) {
  FFolder.Write(u"woanders.dat", "list");
  std::filesystem::create_symlink("woanders.dat", ToUtf8(FFile));
  TFaultyFileLayer layer;
  EXPECT_NO_THROW(FGuard.CheckRoom());
  layer.FailAll("flush", ENOSPC);
  try {
    FGuard.CheckRoom();
    ADD_FAILURE() << "there is no room";
  } catch (const EInOutError& e) {
    EXPECT_THAT(ToUtf8(e.Message()), HasSubstr("woanders.dat"));
  }
}

TEST_F(TDataFileGuardTest, RoomForAMissingFileIsLookedForAsWell) {
  EXPECT_NO_THROW(FGuard.CheckRoom());
  EXPECT_THAT(FFolder.Names(), testing::IsEmpty());
  std::filesystem::remove_all(FFolder.Path());
  EXPECT_THROW(FGuard.CheckRoom(), EInOutError);
}

TEST_F(TDataFileGuardTest, SaysNothingOfASoundFileOrNone) {
  EXPECT_EQ(Check(), "");
  WriteSound();
  EXPECT_EQ(Check(), "");
  Write({{"categories", ""}});
  EXPECT_EQ(Check(), "");
  EXPECT_THAT(FFolder.Names(), ElementsAre("watchlist.dat"));
}

TEST_F(TDataFileGuardTest, PutsAsideWhatTheLoadWouldNotRead) {
  EXPECT_THAT(TextFor({{"version", "2"}}), HasSubstr("Die Kategorien fehlen"));
  EXPECT_THAT(TextFor({{"version", "zwei"}, {"categories", ""}}), HasSubstr("'zwei'"));
  EXPECT_THAT(TextFor({{"version", ""}, {"categories", ""}}), HasSubstr("ganze Zahl"));
  EXPECT_THAT(TextFor({{"categories", "<CategoryRoot>"}}), HasSubstr("kein lesbares XML"));
  EXPECT_THAT(TextFor({{"categories", "text"}}), HasSubstr("kein lesbares XML"));
  EXPECT_THAT(TextFor({{"categories", ""}, {"remind", "<Items"}}), HasSubstr("XML"));
  EXPECT_THAT(TextFor({{"categories", ""}, {"items{X}", "x"}}), HasSubstr("XML"));
}

TEST_F(TDataFileGuardTest, LeavesTheSourcesOwnEntriesAlone) {
  Write({{"categories", ""}, {"{X}", "<p>no XML<br>"}, {"{Y}", "\xEF\xBB\xBF<results>"}});
  EXPECT_EQ(Check(), "");
  EXPECT_THAT(FFolder.Names(), ElementsAre("watchlist.dat"));
}

TEST_F(TDataFileGuardTest, PutsAsideCategoriesWithoutAnId) {
  const std::string good = "<Id>{11111111-1111-1111-1111-111111111111}</Id>";
  TextFor({{"categories", "<R><Category/></R>"}});
  TextFor({{"categories", "<R><Category>" + good +
                              "<Categories><Category><Id>x</Id></Category>"
                              "</Categories></Category></R>"}});
}

TEST_F(TDataFileGuardTest, PutsAsideWhatIsNoArchiveOrWasCut) {
  WriteSound();
  const std::string whole = FFolder.Read(u"watchlist.dat");
  for (size_t size = 0; size < whole.size(); size += 7) {
    FFolder.Write(u"watchlist.dat", whole.substr(0, size));
    EXPECT_NE(Check(), "") << size;
  }
}

TEST_F(TDataFileGuardTest, PutsAsideAnEntryWhoseCheckSumIsWrong) {
  TRawZip zip;
  zip.AddStored("categories", "");
  zip.Add({.Name = "{X}", .Bytes = "abc", .Size = 3, .Crc = 1, .Method = 0});
  FFolder.Write(u"watchlist.dat", zip.ToBytes());
  EXPECT_THAT(Check(), HasSubstr("Ein Eintrag ist beschädigt"));
}

TEST_F(TDataFileGuardTest, PutsAsideAnEntryBeyondTheLimit) {
  WriteSound();
  TFileCompression::SetMaxEntrySize(5);
  EXPECT_THAT(Check(), HasSubstr("größer als erlaubt"));
}

TEST_F(TDataFileGuardTest, DoesNotUnpackMoreThanAllEntriesMayHave) {
  TRawZip zip;
  for (int i = 0; i < 5; ++i) {
    zip.Add({.Name = "e" + std::to_string(i), .Bytes = "", .Size = 0xFFFFFFF0u, .Method = 8});
  }
  FFolder.Write(u"watchlist.dat", zip.ToBytes());
  EXPECT_THAT(Check(), HasSubstr("zusammen zu groß"));
}

TEST_F(TDataFileGuardTest, KeepsOneCopyHoweverOftenItLooks) {
  FFolder.Write(u"watchlist.dat", "damaged");
  const std::string first = Check();
  FClock.Advance(86'400'000);
  EXPECT_EQ(Check(), first);
  EXPECT_THAT(FFolder.Names(), ElementsAre("watchlist.dat", Copy()));
}

TEST_F(TDataFileGuardTest, PutsTheBackupOfADamagedFileAsideToo) {
  FFolder.Write(u"watchlist.dat", "damaged");
  FFolder.Write(u"watchlist.da~", "backup");
  const TString copy = FFolder.File(u"watchlist.da~.2026-11-20-183000");
  EXPECT_THAT(Check(), testing::EndsWith("\r\nDer Stand vor dem letzten Speichern liegt in " +
                                         ToUtf8(copy) + "."));
  EXPECT_EQ(FFolder.Read(u"watchlist.da~.2026-11-20-183000"), "backup");
  EXPECT_EQ(FFolder.Names().size(), 4u);
}

TEST_F(TDataFileGuardTest, LeavesTheBackupOfASoundFileAlone) {
  WriteSound();
  FFolder.Write(u"watchlist.da~", "backup");
  EXPECT_EQ(Check(), "");
  EXPECT_EQ(FFolder.Names().size(), 2u);
}

TEST_F(TDataFileGuardTest, SaysThatNoCopyCouldBeMade) {
  FFolder.Write(u"watchlist.dat", "damaged");
  TFaultyFileLayer layer;
  layer.FailAll("open", ENOSPC);
  EXPECT_THAT(Check(), testing::EndsWith("\r\nEine Kopie konnte nicht angelegt werden."));
  EXPECT_THAT(FFolder.Names(), ElementsAre("watchlist.dat"));
}

TEST_F(TDataFileGuardTest, ReportsAFolderWithoutACopy) {
  std::filesystem::create_directory(ToUtf8(FFile));
  EXPECT_THAT(Check(), HasSubstr("Ist ein Ordner"));
  EXPECT_THAT(FFolder.Names(), ElementsAre("watchlist.dat"));
}

TEST_F(TDataFileGuardTest, ReportsAFileThatMayNotBeReadWithoutACopy) {
  std::filesystem::create_symlink("none", ToUtf8(FFile));
  EXPECT_THAT(Check(), HasSubstr("lässt sich nicht lesen"));
  EXPECT_THAT(FFolder.Names(), ElementsAre("watchlist.dat"));
}

}  // namespace
}  // namespace kk
