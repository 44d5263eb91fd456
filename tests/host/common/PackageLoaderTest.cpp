#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <link.h>

#include <cstring>
#include <filesystem>

#include "host/common/TPackageLoader.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TTempFolder.h"

namespace kk {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr TGuid cGood = GuidLiteral("{11111111-1111-1111-1111-111111111111}");

std::string Fixture(const std::string& iName) {
  return std::string(KK_BIN_DIR) + "/../lib/fixtures/" + iName + ".so";
}

// Where what is loaded ends; behind it stand the tables for linkers and debuggers.
size_t EndOfSegments(const std::string& iBytes) {
  ElfW(Ehdr) header;
  std::memcpy(&header, iBytes.data(), sizeof header);
  size_t end = 0;
  for (size_t i = 0; i < header.e_phnum; ++i) {
    ElfW(Phdr) segment;
    std::memcpy(&segment, iBytes.data() + header.e_phoff + i * sizeof segment, sizeof segment);
    if (segment.p_type == PT_LOAD) end = std::max(end, segment.p_offset + segment.p_filesz);
  }
  return end;
}

class TPackageLoaderTest : public testing::Test {
 protected:
  ~TPackageLoaderTest() override {
    FLoader.Unload();
    EXPECT_EQ(Plugins().GetCount(), 0);
    EXPECT_EQ(LiveObjectCount(), 0);
  }
  bool Load(const std::string& iName) { return FLoader.Load(FromUtf8(Fixture(iName))); }
  // The reason for which a package was refused, and that nothing of it stays.
  std::string ReasonFor(const std::string& iPath) {
    const int before = Plugins().GetCount();
    const int64_t objects = LiveObjectCount();
    if (FLoader.Load(FromUtf8(iPath))) return "(loaded)";
    EXPECT_EQ(Plugins().GetCount(), before);
    EXPECT_EQ(LiveObjectCount(), objects);
    const std::string reason = ToUtf8(FLoader.Refused().back().Reason);
    EXPECT_EQ(fs::path(ToUtf8(FLoader.Refused().back().FileName)).filename(),
              fs::path(iPath).filename());
    EXPECT_EQ(FLog.Lines().back(), "error Plugin: Das Paket " +
                                       ToUtf8(FLoader.Refused().back().FileName) +
                                       " wird nicht geladen: " + reason);
    return reason;
  }
  void CopyTo(const std::string& iName, TStringView iTarget) {
    fs::copy_file(Fixture(iName), ToUtf8(FFolder.File(iTarget)));
  }

  TTempFolder FFolder;
  TLogRecorder FLog;
  TPackageLoader FLoader;
};

TEST_F(TPackageLoaderTest, LoadsAPackageAndItsPlugin) {
  ASSERT_TRUE(Load("good"));
  ASSERT_EQ(Plugins().GetCount(), 1);
  EXPECT_EQ(Plugins().GetItems(0)->GetId(), cGood);
  ASSERT_EQ(FLoader.Loaded().size(), 1u);
  EXPECT_TRUE(FLog.Contains("info Plugin: Paket geladen: " + ToUtf8(FLoader.Loaded()[0])));
  EXPECT_TRUE(FLoader.Refused().empty());
}

TEST_F(TPackageLoaderTest, RefusesAnotherVersionOfTheInterfaces) {
  EXPECT_EQ(ReasonFor(Fixture("wrong_version")),
            "Das Paket ist für Version 2 der Schnittstellen gebaut, das Programm hat 1");
}

TEST_F(TPackageLoaderTest, RefusesAPackageThatRaisesAndTakesItsPluginOutAgain) {
  EXPECT_EQ(ReasonFor(Fixture("raising")), "Das Paket meldet einen Fehler: Kein Speicher");
  EXPECT_EQ(ReasonFor(Fixture("raising_number")), "Das Paket meldet einen unbekannten Fehler");
}

TEST_F(TPackageLoaderTest, RefusesAnIdThatIsTakenWithAllThatThePackageHasRegistered) {
  ASSERT_TRUE(Load("good"));
  EXPECT_EQ(ReasonFor(Fixture("same_id")),
            "Ein Plug-in mit der Kennung {11111111-1111-1111-1111-111111111111} ist schon geladen");
  EXPECT_EQ(Plugins().GetItems(0)->GetId(), cGood);
}

TEST_F(TPackageLoaderTest, RefusesWhatIsNoPackage) {
  EXPECT_EQ(ReasonFor(Fixture("no_entry")), "Die Datei ist kein Paket: Ihr fehlt der Einstieg");
  EXPECT_EQ(ReasonFor(Fixture("empty_entry")), "Die Datei ist kein Paket: Ihr Einstieg ist leer");
  EXPECT_EQ(ReasonFor(Fixture("no_plugin")), "Das Paket meldet kein Plug-in an");
  EXPECT_EQ(ReasonFor(Fixture("null_plugin")), "Das Paket meldet ein leeres Plug-in an");
}

TEST_F(TPackageLoaderTest, RefusesAFileThatIsNoSharedObject) {
  FFolder.Write(u"text.so", "not an ELF file");
  FFolder.Write(u"empty.so", "");
  EXPECT_THAT(ReasonFor(FFolder.Path() + "/text.so"), HasSubstr("beschädigt oder kein Paket"));
  EXPECT_THAT(ReasonFor(FFolder.Path() + "/empty.so"), HasSubstr("beschädigt oder kein Paket"));
  EXPECT_THAT(ReasonFor(FFolder.Path() + "/none.so"), HasSubstr("nicht gefunden"));
  EXPECT_THAT(ReasonFor(FFolder.Path()), HasSubstr("Ist ein Ordner"));
  EXPECT_THAT(ReasonFor("/proc/self/exe"),
              testing::AnyOf(HasSubstr("beschädigt"), HasSubstr("fehlt")));
}

TEST_F(TPackageLoaderTest, RefusesAPackageThatWasCutAnywhere) {
  CopyTo("good", u"cut.so");
  const std::string whole = FFolder.Read(u"cut.so");
  const size_t end = EndOfSegments(whole);
  for (size_t size = 0; size < end; size += 511) {
    FFolder.Write(u"cut.so", whole.substr(0, size));
    EXPECT_THAT(ReasonFor(FFolder.Path() + "/cut.so"), HasSubstr("oder kein Paket")) << size;
  }
  FFolder.Write(u"cut.so", whole.substr(0, end - 1));
  EXPECT_THAT(ReasonFor(FFolder.Path() + "/cut.so"), HasSubstr("oder kein Paket"));
}

TEST_F(TPackageLoaderTest, RefusesAPackageWhoseSegmentsLieBehindItsEnd) {
  CopyTo("good", u"cut.so");
  std::string bytes = FFolder.Read(u"cut.so");
  bytes.replace(32, 8, std::string(8, '\x7F'));  // where the header says that the segments stand
  FFolder.Write(u"cut.so", bytes);
  EXPECT_THAT(ReasonFor(FFolder.Path() + "/cut.so"), HasSubstr("beschädigt"));
}

TEST_F(TPackageLoaderTest, LoadsAPackageOnce) {
  ASSERT_TRUE(Load("good"));
  EXPECT_EQ(ReasonFor(Fixture("good")), "Das Paket ist schon geladen");
  EXPECT_EQ(Plugins().GetCount(), 1);
}

TEST_F(TPackageLoaderTest, LoadsTheOthersOfAFolderInOrderOfTheirNames) {
  CopyTo("same_id", u"b.so");
  CopyTo("good", u"c.so");
  CopyTo("raising", u"a.so");
  CopyTo("good", u"readme.txt");
  FFolder.Write(u"d.so", "damaged");
  fs::create_directory(ToUtf8(FFolder.File(u"e.so")));
  FLoader.LoadFolder(FromUtf8(FFolder.Path()));
  ASSERT_EQ(FLoader.Loaded().size(), 1u);  // the first one that has the id
  EXPECT_EQ(FLoader.Loaded()[0], FFolder.File(u"b.so"));
  ASSERT_EQ(FLoader.Refused().size(), 4u);
  EXPECT_EQ(FLoader.Refused()[0].FileName, FFolder.File(u"a.so"));
  EXPECT_EQ(FLoader.Refused()[1].FileName, FFolder.File(u"c.so"));
  EXPECT_EQ(Plugins().GetCount(), 2);
}

TEST_F(TPackageLoaderTest, AFolderThatIsMissingIsAnErrorLine) {
  FLoader.LoadFolder(FFolder.File(u"none"));
  EXPECT_THAT(FLog.Lines(), ElementsAre("error Plugin: Der Ordner " + FFolder.Path() +
                                        "/none lässt sich nicht lesen"));
}

TEST_F(TPackageLoaderTest, UnloadingDropsThePluginsAndThePackages) {
  ASSERT_TRUE(Load("good"));
  FLoader.Unload();
  EXPECT_EQ(Plugins().GetCount(), 0);
  EXPECT_TRUE(FLoader.Loaded().empty());
  FLoader.Unload();
  // A package that is still in memory would say that its plug-in is there already.
  EXPECT_TRUE(Load("good"));
  EXPECT_EQ(Plugins().GetCount(), 1);
}

TEST_F(TPackageLoaderTest, KeepsThePackagesInMemoryWhileAnObjectLives) {
  ASSERT_TRUE(Load("good"));
  TIntf<IPlugin> held = Plugins().GetItems(0);
  FLoader.Unload();
  EXPECT_EQ(Plugins().GetCount(), 0);
  EXPECT_TRUE(
      FLog.Contains("error Plugin: Es leben noch 1 Objekte, die Pakete bleiben im Speicher"));
  EXPECT_EQ(held->GetDescription(), u"Fixture");
  held = nullptr;
}

TEST_F(TPackageLoaderTest, LeavesThePluginsOfOthersAlone) {
  ASSERT_TRUE(Load("good"));
  const TIntf<IPlugin> other = Plugins().GetItems(0);
  Plugins().Clear();
  Plugins().Add(other);
  {
    TPackageLoader second;
    EXPECT_FALSE(second.Load(FromUtf8(Fixture("same_id"))));
  }
  EXPECT_EQ(Plugins().GetCount(), 1);
}

}  // namespace
}  // namespace kk
