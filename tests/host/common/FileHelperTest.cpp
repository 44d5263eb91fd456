#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"
#include "tests/support/TFaultyFileLayer.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"

namespace kk {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

/// Sets a variable of the environment while it lives; null takes it out.
class TEnvironment {
 public:
  TEnvironment(const char* iName, const char* iValue) : FName(iName) {
    const char* old = std::getenv(iName);
    FHad = old != nullptr;
    if (FHad) FOld = old;
    Set(iValue);
  }
  ~TEnvironment() { Set(FHad ? FOld.c_str() : nullptr); }
  TEnvironment(const TEnvironment&) = delete;

 private:
  void Set(const char* iValue) { iValue != nullptr ? setenv(FName, iValue, 1) : unsetenv(FName); }
  const char* FName;
  std::string FOld;
  bool FHad;
};

unsigned ModeOfFile(const TString& iFileName) {
  struct stat info {};
  EXPECT_EQ(stat(ToUtf8(iFileName).c_str(), &info), 0);
  return info.st_mode & 0777;
}

template <class Call>
std::string MessageFrom(Call&& iCall) {
  try {
    iCall();
  } catch (const EInOutError& e) {
    return e.what();
  }
  return "";
}

TEST(DefaultHostFolders, AreThoseOfTheXdgSpecification) {
  const TEnvironment data("XDG_DATA_HOME", "/x/data/");
  const TEnvironment config("XDG_CONFIG_HOME", "/x/config");
  const TEnvironment state("XDG_STATE_HOME", "/x/state");
  const THostFolders folders = DefaultHostFolders();
  EXPECT_EQ(folders.Data, u"/x/data/kaufkobolde");
  EXPECT_EQ(folders.Config, u"/x/config/kaufkobolde");
  EXPECT_EQ(folders.State, u"/x/state/kaufkobolde");
}

TEST(DefaultHostFolders, FallBackToTheHomeFolder) {
  const TEnvironment home("HOME", "/home/lisa");
  const TEnvironment data("XDG_DATA_HOME", nullptr);
  const TEnvironment config("XDG_CONFIG_HOME", "");
  const TEnvironment state("XDG_STATE_HOME", "relative/path");
  const THostFolders folders = DefaultHostFolders();
  EXPECT_EQ(folders.Data, u"/home/lisa/.local/share/kaufkobolde");
  EXPECT_EQ(folders.Config, u"/home/lisa/.config/kaufkobolde");
  EXPECT_EQ(folders.State, u"/home/lisa/.local/state/kaufkobolde");
}

TEST(DefaultHostFolders, KnowTheHomeFolderWithoutTheEnvironment) {
  const TEnvironment home("HOME", nullptr);
  const TEnvironment data("XDG_DATA_HOME", nullptr);
  EXPECT_THAT(ToUtf8(DefaultHostFolders().Data),
              testing::MatchesRegex("/.*/\\.local/share/kaufkobolde"));
}

TEST(DefaultHostFolders, ProgramLiesBesideTheProgramAndTempIsThisUsersOwn) {
  const TEnvironment temp("TMPDIR", "/x/tmp/");
  const THostFolders folders = DefaultHostFolders();
  EXPECT_EQ(ToUtf8(folders.Program),
            fs::path(KK_BIN_DIR).parent_path().string() + "/share/kaufkobolde");
  EXPECT_EQ(ToUtf8(folders.Temp), "/x/tmp/kaufkobolde-" + std::to_string(geteuid()));
}

TEST(DefaultHostFolders, AllOfTheUsersLieInOneFolderIfOneIsGiven) {
  const THostFolders folders = DefaultHostFolders(u"/data/one/");
  EXPECT_EQ(folders.Data, u"/data/one");
  EXPECT_EQ(folders.Config, u"/data/one");
  EXPECT_EQ(folders.State, u"/data/one");
  EXPECT_EQ(ToUtf8(DefaultHostFolders(u"rel").Data), (fs::current_path() / "rel").string());
}

TEST(TFileHelper, PutsNamesIntoTheHostsFolders) {
  const TTempFolder folder(true);
  EXPECT_EQ(TFileHelper::GetAppDataFileName(u"watchlist.dat"), folder.File(u"watchlist.dat"));
  EXPECT_EQ(TFileHelper::GetLocalFileName(u"remind.wav"), folder.File(u"remind.wav"));
  EXPECT_EQ(TFileHelper::GetTempFileName(u"x.tmp"), folder.File(u"x.tmp"));
}

TEST(TFileHelper, MakesTheDataFolderForThisUserAlone) {
  const TTempFolder folder;
  SetHostFolders({folder.File(u"a/b"), {}, {}, {}, folder.File(u"t")});
  TFileHelper::GetAppDataFileName(u"x");
  TFileHelper::GetTempFileName(u"x");
  EXPECT_EQ(ModeOfFile(folder.File(u"a")), 0700u);
  EXPECT_EQ(ModeOfFile(folder.File(u"a/b")), 0700u);
  EXPECT_EQ(ModeOfFile(folder.File(u"t")), 0700u);
  SetHostFolders({});
}

TEST(TFileHelper, WithoutFoldersItRaisesInsteadOfUsingTheRoot) {
  SetHostFolders({});
  EXPECT_THROW(TFileHelper::GetAppDataFileName(u"x"), EInOutError);
  EXPECT_THROW(TFileHelper::GetLocalFileName(u"x"), EInOutError);
  EXPECT_THROW(TFileHelper::GetTempFileName(u"x"), EInOutError);
  EXPECT_THROW(MakeHostFolder(u""), EInOutError);
}

TEST(TFileHelper, SaysWhyAFolderCantBeMade) {
  const TTempFolder folder;
  folder.Write(u"file", "x");
  EXPECT_THAT(MessageFrom([&] { MakeHostFolder(folder.File(u"file/sub")); }),
              HasSubstr("lässt sich nicht anlegen"));
}

TEST(TFileHelper, RefusesATemporaryFolderThatIsNotThisUsers) {
  const TTempFolder folder;
  fs::create_directory(ToUtf8(folder.File(u"other")));
  fs::create_directory_symlink(ToUtf8(folder.File(u"other")), ToUtf8(folder.File(u"link")));
  SetHostFolders({{}, {}, {}, {}, folder.File(u"link")});
  EXPECT_THROW(TFileHelper::GetTempFileName(u"x"), EInOutError);
  SetHostFolders({});
}

TEST(TFileHelper, RefusesATemporaryFolderOfAnotherUser) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can give a folder away";
  const TTempFolder folder;
  const TString other = folder.File(u"other");
  fs::create_directory(ToUtf8(other));
  ASSERT_EQ(chown(ToUtf8(other).c_str(), 12345, 12345), 0);
  SetHostFolders({{}, {}, {}, {}, other});
  EXPECT_THROW(TFileHelper::GetTempFileName(u"x"), EInOutError);
  SetHostFolders({});
}

TEST(GetSpecialFolder, IsTheDocumentsFolderOfUserDirs) {
  const TTempFolder folder;
  fs::create_directory(ToUtf8(folder.File(u"Meine Dokumente")));
  const TEnvironment home("HOME", folder.Path().c_str());
  const TEnvironment config("XDG_CONFIG_HOME", folder.Path().c_str());
  folder.Write(u"user-dirs.dirs",
               "# XDG_DOCUMENTS_DIR=\"$HOME/no\"\nXDG_MUSIC_DIR=\"$HOME/Musik\"\n"
               "  XDG_DOCUMENTS_DIR=\"$HOME/Meine\\ Dokumente/\"\n");
  EXPECT_EQ(GetSpecialFolder(cSpecialFolderDocuments, true), folder.File(u"Meine Dokumente"));
  folder.Write(u"user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"" + folder.Path() + "/Meine Dokumente\"");
  EXPECT_EQ(GetSpecialFolder(cSpecialFolderDocuments, false), folder.File(u"Meine Dokumente"));
}

TEST(GetSpecialFolder, IsTheHomeFolderWithoutADocumentsFolder) {
  const TTempFolder folder;
  const TEnvironment home("HOME", folder.Path().c_str());
  const TEnvironment config("XDG_CONFIG_HOME", folder.Path().c_str());
  for (const char* line : {"", "XDG_DOCUMENTS_DIR=\"$HOME/fehlt\"\n", "XDG_DOCUMENTS_DIR=\"rel\"\n",
                           "XDG_DOCUMENTS_DIR=\"\n", "XDG_DOCUMENTS_DIR=\"$HOME\"\n"}) {
    folder.Write(u"user-dirs.dirs", line);
    EXPECT_EQ(ToUtf8(GetSpecialFolder(cSpecialFolderDocuments, true)), folder.Path()) << line;
  }
}

TEST(GetSpecialFolder, IsEmptyForOneThatIsNotKnown) { EXPECT_EQ(GetSpecialFolder(4, true), u""); }

TEST(FileExists, TellsFilesFromFolders) {
  const TTempFolder folder;
  folder.Write(u"file", "");
  EXPECT_TRUE(FileExists(folder.File(u"file")));
  EXPECT_FALSE(FileExists(folder.File(u"none")));
  EXPECT_FALSE(FileExists(FromUtf8(folder.Path())));
}

TEST(ReadFileBytes, ReadsAllBytes) {
  const TTempFolder folder;
  const std::string bytes(300'000, '\0');
  folder.Write(u"file", bytes);
  folder.Write(u"empty", "");
  EXPECT_EQ(ReadFileBytes(folder.File(u"file")), bytes);
  EXPECT_EQ(ReadFileBytes(folder.File(u"empty")), "");
}

TEST(ReadFileBytes, SaysWhyAFileCantBeRead) {
  const TTempFolder folder;
  EXPECT_THAT(MessageFrom([&] { ReadFileBytes(folder.File(u"none")); }),
              HasSubstr("none lässt sich nicht lesen: Datei oder Ordner nicht gefunden"));
  EXPECT_THAT(MessageFrom([&] { ReadFileBytes(FromUtf8(folder.Path())); }),
              HasSubstr("Ist ein Ordner"));
  folder.Write(u"file", "x");
  EXPECT_THAT(MessageFrom([&] { ReadFileBytes(folder.File(u"file/x")); }),
              HasSubstr("Ist kein Ordner"));
}

TEST(ReadFileBytes, DoesNotWaitForANamedPipe) {
  const TTempFolder folder;
  ASSERT_EQ(mkfifo(ToUtf8(folder.File(u"pipe")).c_str(), 0600), 0);
  EXPECT_NE(MessageFrom([&] { ReadFileBytes(folder.File(u"pipe")); }), "");
}

TEST(ReadFileBytes, RefusesAFileBeyondTheLimit) {
  const TTempFolder folder;
  folder.Write(u"file", "x");
  ASSERT_EQ(truncate(ToUtf8(folder.File(u"file")).c_str(), cMaxFileSize + 1), 0);
  EXPECT_THAT(MessageFrom([&] { ReadFileBytes(folder.File(u"file")); }), HasSubstr("zu groß"));
}

TEST(RenameFile, TakesThePlaceOfAFileThatHasTheName) {
  const TTempFolder folder;
  folder.Write(u"a", "new");
  folder.Write(u"b", "old");
  RenameFile(folder.File(u"a"), folder.File(u"b"));
  EXPECT_THAT(folder.Names(), ElementsAre("b"));
  EXPECT_EQ(folder.Read(u"b"), "new");
  fs::create_directory(ToUtf8(folder.File(u"c")));
  RenameFile(folder.File(u"b"), folder.File(u"c/b"));
  EXPECT_TRUE(folder.Has(u"c/b"));
  EXPECT_THAT(MessageFrom([&] { RenameFile(folder.File(u"none"), folder.File(u"x")); }),
              HasSubstr("lässt sich nicht umbenennen"));
}

TEST(DeleteFile, IsNoFailureIfThereIsNone) {
  const TTempFolder folder;
  folder.Write(u"a", "");
  DeleteFile(folder.File(u"a"));
  DeleteFile(folder.File(u"a"));
  EXPECT_TRUE(folder.Names().empty());
  EXPECT_THAT(MessageFrom([&] { DeleteFile(FromUtf8(folder.Path())); }),
              HasSubstr("lässt sich nicht löschen"));
}

TEST(WriteFileAtomically, WritesNewFilesAndOverOldOnes) {
  const TTempFolder folder;
  WriteFileAtomically(folder.File(u"a"), "one", 0600);
  EXPECT_EQ(ModeOfFile(folder.File(u"a")), 0600u);
  WriteFileAtomically(folder.File(u"a"), std::string(1'000'000, 'x'));
  EXPECT_EQ(folder.Read(u"a"), std::string(1'000'000, 'x'));
  WriteFileAtomically(folder.File(u"a"), "");
  EXPECT_EQ(folder.Read(u"a"), "");
  EXPECT_THAT(folder.Names(), ElementsAre("a"));
}

TEST(WriteFileAtomically, KeepsTheModeOfTheFile) {
  const TTempFolder folder;
  for (const unsigned mode : {0600u, 0640u, 0666u}) {
    folder.Write(u"a", "x");
    chmod(ToUtf8(folder.File(u"a")).c_str(), mode);
    WriteFileAtomically(folder.File(u"a"), "y", 0644);
    EXPECT_EQ(ModeOfFile(folder.File(u"a")), mode);
  }
}

TEST(WriteFileAtomically, WritesTheFileBehindALinkAndKeepsTheLink) {
  const TTempFolder folder;
  folder.Write(u"real", "old");
  fs::create_symlink("real", ToUtf8(folder.File(u"link")));
  WriteFileAtomically(folder.File(u"link"), "new");
  EXPECT_EQ(folder.Read(u"real"), "new");
  EXPECT_TRUE(fs::is_symlink(ToUtf8(folder.File(u"link"))));
}

TEST(WriteFileAtomically, NeverFollowsATemporaryFileThatIsALink) {
  const TTempFolder folder;
  folder.Write(u"victim", "mine");
  for (const char* target : {"victim", "dangling"}) {
    fs::create_symlink(target, ToUtf8(folder.File(u"a.tmp")));
    WriteFileAtomically(folder.File(u"a"), "new");
    EXPECT_EQ(folder.Read(u"victim"), "mine");
    EXPECT_THAT(folder.Names(), ElementsAre("a", "victim"));
  }
}

TEST(WriteFileAtomically, RefusesALinkThatIsPutThereJustBeforeItOpens) {
  class THostileLayer : public TFaultyFileLayer {
   public:
    int Unlink(const char* iPath) override {
      const int result = TFaultyFileLayer::Unlink(iPath);
      if (Calls().size() == 1) fs::create_symlink("victim", iPath);
      return result;
    }
  };
  const TTempFolder folder;
  folder.Write(u"victim", "mine");
  const THostileLayer layer;
  EXPECT_NE(MessageFrom([&] { WriteFileAtomically(folder.File(u"a"), "new"); }), "");
  EXPECT_EQ(folder.Read(u"victim"), "mine");
  EXPECT_FALSE(folder.Has(u"a"));
}

TEST(WriteFileAtomically, ReplacesALeftOverTemporaryFile) {
  const TTempFolder folder;
  folder.Write(u"a.tmp", "half of something longer");
  WriteFileAtomically(folder.File(u"a"), "new");
  EXPECT_EQ(folder.Read(u"a"), "new");
  EXPECT_THAT(folder.Names(), ElementsAre("a"));
}

TEST(WriteFileAtomically, SaysWhyItCantWrite) {
  const TTempFolder folder;
  fs::create_directory(ToUtf8(folder.File(u"a.tmp")));
  EXPECT_THAT(MessageFrom([&] { WriteFileAtomically(folder.File(u"a"), "x"); }),
              HasSubstr("lässt sich nicht schreiben"));
  EXPECT_THAT(MessageFrom([&] { WriteFileAtomically(folder.File(u"none/a"), "x"); }),
              HasSubstr("Datei oder Ordner nicht gefunden"));
  EXPECT_THAT(MessageFrom([&] { WriteFileAtomically(folder.File(TString(300, u'a')), "x"); }),
              HasSubstr("lässt sich nicht schreiben: Der Name ist zu lang"));
  fs::create_directory(ToUtf8(folder.File(u"b")));
  EXPECT_THAT(MessageFrom([&] { WriteFileAtomically(folder.File(u"b"), "x"); }),
              HasSubstr("b lässt sich nicht schreiben: Ist ein Ordner"));
}

TEST(WriteFileAtomically, RefusesAPipeOrADeviceInsteadOfReplacingIt) {
  const TTempFolder folder;
  ASSERT_EQ(mkfifo(ToUtf8(folder.File(u"pipe")).c_str(), 0600), 0);
  EXPECT_THAT(MessageFrom([&] { WriteFileAtomically(folder.File(u"pipe"), "x"); }),
              HasSubstr("pipe lässt sich nicht schreiben: Ist keine gewöhnliche Datei"));
  EXPECT_TRUE(fs::is_fifo(ToUtf8(folder.File(u"pipe"))));
  EXPECT_THAT(folder.Names(), ElementsAre("pipe"));
}

TEST(WriteFileAtomically, DoesEveryStepInItsOrder) {
  const TTempFolder folder;
  TFaultyFileLayer layer;
  WriteFileAtomically(folder.File(u"a"), "x");
  EXPECT_THAT(layer.Calls(), ElementsAre("unlink", "open", "write", "flush", "close", "rename",
                                         "open", "flush", "close"));
}

TEST(WriteFileAtomically, AnyCallThatFailsLeavesTheOldFileWholeAndRaises) {
  const TTempFolder folder;
  TFaultyFileLayer layer;
  layer.SetMaxWrite(3);
  const std::string old = "the old one";
  const std::string fresh = "the new one";
  for (const int error : {ENOSPC, EIO, EACCES, EROFS, EDQUOT}) {
    bool reached = true;
    for (int call = 0; reached; ++call) {
      folder.Write(u"a", old);
      layer.FailCall(call, error);
      const std::string message =
          MessageFrom([&] { WriteFileAtomically(folder.File(u"a"), fresh); });
      const auto calls = layer.Calls();
      reached = call < static_cast<int>(calls.size());
      const auto renamed = std::find(calls.begin(), calls.end(), "rename");
      const bool isLate = reached && renamed < calls.begin() + call;
      const bool isFolderClose = isLate && calls[call] == "close";
      EXPECT_EQ(message.empty(), !reached || isFolderClose) << call;
      EXPECT_EQ(folder.Read(u"a"), !reached || isLate ? fresh : old) << call;
      EXPECT_THAT(folder.Names(), ElementsAre("a")) << call;
    }
  }
}

TEST(WriteFileAtomically, NamesAFullDisk) {
  const TTempFolder folder;
  TFaultyFileLayer layer;
  layer.FailAll("write", ENOSPC);
  EXPECT_THAT(MessageFrom([&] { WriteFileAtomically(folder.File(u"a"), "x"); }),
              HasSubstr("a lässt sich nicht schreiben: Der Datenträger ist voll"));
  EXPECT_TRUE(folder.Names().empty());
}

TEST(WriteFileAtomically, RepeatsWhatASignalInterrupted) {
  const TTempFolder folder;
  TFaultyFileLayer layer;
  for (const int call : {2, 3, 7}) {
    layer.FailCall(call, EINTR);
    WriteFileAtomically(folder.File(u"a"), "x");
    EXPECT_EQ(layer.Calls().size(), 10u);
  }
}

TEST(WriteFileAtomically, AFolderThatCantBeFlushedByItsFileSystemIsNoFailure) {
  const TTempFolder folder;
  TFaultyFileLayer layer;
  layer.FailCall(7, EINVAL);
  WriteFileAtomically(folder.File(u"a"), "x");
  EXPECT_EQ(folder.Read(u"a"), "x");
}

TEST(WriteFileAtomically, AWriteThatTakesNothingDoesNotGoOnForEver) {
  class TStubbornLayer : public TFaultyFileLayer {
    long Write(int, const void*, size_t) override { return 0; }
  };
  const TTempFolder folder;
  const TStubbornLayer layer;
  EXPECT_NE(MessageFrom([&] { WriteFileAtomically(folder.File(u"a"), "x"); }), "");
}

TEST(WriteFileAtomically, WritesOneFileAfterTheOtherWhateverTheThread) {
  // Notices whether a second write begins before the first one has its name.
  class TWatchingLayer : public TFaultyFileLayer {
   public:
    long Write(int iFile, const void* iBytes, size_t iCount) override {
      if (Writers++ > 0) HasMixed = true;
      while (Started < 2) std::this_thread::yield();
      for (int i = 0; i < 1000; ++i) std::this_thread::yield();
      return MachineFileLayer().Write(iFile, iBytes, iCount);
    }
    int Rename(const char* iOldPath, const char* iNewPath) override {
      --Writers;
      return MachineFileLayer().Rename(iOldPath, iNewPath);
    }
    int Open(const char* iPath, int iFlags, unsigned iMode) override {
      return MachineFileLayer().Open(iPath, iFlags, iMode);
    }
    int Flush(int iFile) override { return MachineFileLayer().Flush(iFile); }
    int Close(int iFile) override { return MachineFileLayer().Close(iFile); }
    int Unlink(const char* iPath) override { return MachineFileLayer().Unlink(iPath); }
    std::atomic<int> Started{0};
    std::atomic<int> Writers{0};
    std::atomic<bool> HasMixed{false};
  };
  const TTempFolder folder;
  TWatchingLayer layer;
  std::atomic<int> failures{0};
  const auto write = [&](const std::string& iBytes) {
    ++layer.Started;
    if (!MessageFrom([&] { WriteFileAtomically(folder.File(u"file"), iBytes); }).empty()) {
      ++failures;
    }
  };
  std::thread other([&] { write("b"); });
  write("a");
  other.join();
  EXPECT_FALSE(layer.HasMixed);
  EXPECT_EQ(failures, 0);
  EXPECT_THAT(folder.Names(), ElementsAre("file"));
}

class TPutAsideTest : public testing::Test {
 protected:
  TTempFolder FFolder;
  TTestClock FClock;
  TLogRecorder FLog;
};

TEST_F(TPutAsideTest, MakesACopyWithDateAndTimeInItsName) {
  FFolder.Write(u"w.dat", "damaged");
  chmod(ToUtf8(FFolder.File(u"w.dat")).c_str(), 0600);
  const TString copy = PutAside(FFolder.File(u"w.dat"));
  EXPECT_EQ(copy, FFolder.File(u"w.dat.2026-11-20-183000"));
  EXPECT_EQ(FFolder.Read(u"w.dat.2026-11-20-183000"), "damaged");
  EXPECT_EQ(ModeOfFile(copy), 0600u);
  EXPECT_EQ(FFolder.Read(u"w.dat"), "damaged");
}

TEST_F(TPutAsideTest, MakesNoSecondCopyOfTheSameBytes) {
  FFolder.Write(u"w.dat", "damaged");
  const TString first = PutAside(FFolder.File(u"w.dat"));
  FClock.Advance(60'000);
  EXPECT_EQ(PutAside(FFolder.File(u"w.dat")), first);
  EXPECT_EQ(FFolder.Names().size(), 2u);
}

TEST_F(TPutAsideTest, MakesAnotherCopyOfOtherBytesEvenInTheSameSecond) {
  FFolder.Write(u"w.dat", "damaged");
  PutAside(FFolder.File(u"w.dat"));
  FFolder.Write(u"w.dat", "more damage");
  EXPECT_EQ(PutAside(FFolder.File(u"w.dat")), FFolder.File(u"w.dat.2026-11-20-183000-2"));
  EXPECT_EQ(FFolder.Read(u"w.dat.2026-11-20-183000"), "damaged");
}

TEST_F(TPutAsideTest, TakesNoOtherFileForACopy) {
  FFolder.Write(u"w.dat", "damaged");
  FFolder.Write(u"w.dat.bak", "damaged");
  EXPECT_EQ(PutAside(FFolder.File(u"w.dat")), FFolder.File(u"w.dat.2026-11-20-183000"));
}

TEST_F(TPutAsideTest, LogsWhyNoCopyCouldBeMade) {
  EXPECT_EQ(PutAside(FFolder.File(u"none")), u"");
  ASSERT_EQ(FLog.Lines().size(), 1u);
  EXPECT_THAT(FLog.Lines()[0], HasSubstr("none konnte keine Kopie angelegt werden"));
}

TEST_F(TPutAsideTest, AFullDiskGivesNoCopyAndNoHalfOfOne) {
  FFolder.Write(u"w.dat", "damaged");
  TFaultyFileLayer layer;
  layer.FailAll("write", ENOSPC);
  EXPECT_EQ(PutAside(FFolder.File(u"w.dat")), u"");
  EXPECT_THAT(FFolder.Names(), ElementsAre("w.dat"));
}

}  // namespace
}  // namespace kk
