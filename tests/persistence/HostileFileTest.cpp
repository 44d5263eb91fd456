#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <optional>

#include "TFileWorld.h"
#include "host/common/TFileHelper.h"
#include "tests/support/TRawZip.h"

// Files that are damaged or made to harm: a load says no in one clear line and leaves the catch-all
// category, or it reads what is whole. It never crashes, and it never touches the file.
namespace kk {
namespace {

using testing::HasSubstr;

constexpr TGuid cSource = GuidLiteral("{5E000000-0000-0000-0000-000000000001}");
constexpr char cCatchAll[] = "<Keiner Kategorie zugewiesen>\n";

class HostileFile : public testing::Test {
 protected:
  // What a small real file holds.
  std::string SmallFile() {
    AddItem(AddCategory(World.Tree(), u"A"), Source, u"Uhr");
    World.Reminders.Add(SoundReminder(NewGuid(), World.Clock.Now()));
    World.SaveAll();
    World.ForgetTree();
    return World.Folder.Read(cWatchlistFileName);
  }

  // Loads these bytes. Either they are read, or there is one error line and the catch-all category.
  bool LoadBytes(const std::string& iBytes) {
    World.ForgetTree();
    World.Log.Clear();
    World.Folder.Write(cWatchlistFileName, iBytes);
    const bool loaded = World.Load();
    int errors = 0;
    for (const std::string& line : World.Log.Lines()) {
      if (line.starts_with("error WatchlistHandler: Datei konnte nicht geladen werden (")) ++errors;
      EXPECT_LT(line.size(), 1000u);
    }
    EXPECT_EQ(errors, loaded ? 0 : 1);
    if (!loaded) {
      EXPECT_EQ(Outline(World.Tree()), cCatchAll);
    }
    EXPECT_EQ(World.Folder.Read(cWatchlistFileName), iBytes);
    return loaded;
  }

  TFileWorld World;
  TIntf<TFakeSource> Source = World.AddSource(u"Quelle", cSource);
};

TEST_F(HostileFile, CutOffAtAnyByte) {
  const std::string whole = SmallFile();
  ASSERT_TRUE(LoadBytes(whole));
  for (size_t size = 0; size < whole.size(); ++size) {
    EXPECT_FALSE(LoadBytes(whole.substr(0, size))) << size;
  }
}

TEST_F(HostileFile, AnyBitFlipped) {
  const std::string whole = SmallFile();
  int failures = 0;
  for (size_t bit = 0; bit < whole.size() * 8; ++bit) {
    std::string bytes = whole;
    bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << (bit % 8)));
    if (!LoadBytes(bytes)) {
      ++failures;
      continue;
    }
    // Sizes and sums catch what is changed inside an entry. A name that was hit loses its entry.
    const std::string outline = Outline(World.Tree());
    EXPECT_TRUE(outline == "A\n  [Quelle]\n    Uhr\n" || outline == "A\n") << bit << outline;
  }
  EXPECT_GT(failures, 0);
}

TEST_F(HostileFile, AnyByteZeroedToTheEnd) {
  // What a power failure leaves of a file whose size was on the disk before its bytes were.
  const std::string whole = SmallFile();
  for (size_t size = 0; size < whole.size(); size += 7) {
    std::string bytes = whole;
    std::fill(bytes.begin() + static_cast<ptrdiff_t>(size), bytes.end(), '\0');
    if (bytes == whole) break;  // an archive ends with zeros of its own
    EXPECT_FALSE(LoadBytes(bytes)) << size;
  }
}

TEST_F(HostileFile, NoArchive) {
  EXPECT_FALSE(LoadBytes("Dies ist ein Brief und kein Archiv."));
  EXPECT_THAT(World.Log.Lines()[0], HasSubstr("kein ZIP-Archiv"));
  EXPECT_FALSE(LoadBytes(std::string(1 << 20, 'P')));
  EXPECT_FALSE(LoadBytes(""));
}

TEST_F(HostileFile, AnArchiveWithoutEntries) {
  EXPECT_FALSE(LoadBytes(TRawZip().ToBytes()));
  EXPECT_THAT(World.Log.Lines().back(), HasSubstr("Datei nicht in ZIP gefunden: categories"));
}

TEST_F(HostileFile, AFolder) {
  MakeHostFolder(World.FileName());
  EXPECT_FALSE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), cCatchAll);
}

TEST_F(HostileFile, ALinkToItself) {
  ASSERT_EQ(symlink("watchlist.dat", ToUtf8(World.FileName()).c_str()), 0);
  EXPECT_FALSE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), cCatchAll);
}

TEST_F(HostileFile, ANamedPipeIsRefusedAndNotWaitedFor) {
  ASSERT_EQ(mkfifo(ToUtf8(World.FileName()).c_str(), 0600), 0);
  EXPECT_FALSE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), cCatchAll);
}

// Root may read every file, so it becomes somebody else for a while.
class TAsNobody {
 public:
  TAsNobody() {
    if (geteuid() == 0 && seteuid(cNobody) == 0) FBefore = 0;
  }
  ~TAsNobody() {
    if (FBefore && seteuid(*FBefore) != 0) ADD_FAILURE() << "still somebody else";
  }

 private:
  static constexpr uid_t cNobody = 65534;
  std::optional<uid_t> FBefore;
};

TEST_F(HostileFile, NoPermission) {
  SmallFile();
  const std::string path = ToUtf8(World.FileName());
  ASSERT_EQ(chmod(path.c_str(), 0), 0);
  ASSERT_EQ(chmod(World.Folder.Path().c_str(), 0755), 0);
  const TAsNobody nobody;
  if (eaccess(path.c_str(), R_OK) == 0) GTEST_SKIP() << "this user may read every file";
  EXPECT_FALSE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), cCatchAll);
  ASSERT_EQ(World.Log.Lines().size(), 1u);
  EXPECT_THAT(World.Log.Lines()[0], HasSubstr("Datei konnte nicht geladen werden"));
}

TEST_F(HostileFile, AnEntryBeyondTheLimit) {
  struct TLimit {
    size_t Before = TFileCompression::MaxEntrySize();
    ~TLimit() { TFileCompression::SetMaxEntrySize(Before); }
  } const limit;
  AddCategory(World.Tree(), TString(100'000, u'x'));
  World.SaveAll();
  const std::string bytes = World.Folder.Read(cWatchlistFileName);
  TFileCompression::SetMaxEntrySize(1000);
  EXPECT_FALSE(LoadBytes(bytes));
  EXPECT_THAT(World.Log.Lines()[0], HasSubstr("größer als erlaubt"));
}

TEST_F(HostileFile, AnEntryThatUnpacksToMoreThanItSays) {
  std::string bytes = SmallFile();
  // The sizes in the central directory (ZIP APPNOTE 4.3.12) of the categories become 1.
  const size_t name = bytes.rfind("categories");
  bytes.replace(name - 46 + 24, 4, std::string("\1\0\0\0", 4));
  EXPECT_FALSE(LoadBytes(bytes));
}

TEST_F(HostileFile, AHundredThousandNestedCategories) {
  std::string text = "<CategoryRoot>";
  for (int i = 0; i < 100'000; ++i) {
    text += "<Category><Id>{00000000-0000-0000-0000-0000000000A1}</Id><Categories>";
  }
  for (int i = 0; i < 100'000; ++i) text += "</Categories></Category>";
  WriteArchive(World.FileName(), {{"version", "2"}, {"categories", text + "</CategoryRoot>"}});
  EXPECT_FALSE(LoadBytes(World.Folder.Read(cWatchlistFileName)));
}

TEST_F(HostileFile, OfTwoEntriesWithOneNameTheFirstCounts) {
  const auto categories = [](const std::string& iName) {
    return "<CategoryRoot><Category><Id>{00000000-0000-0000-0000-0000000000A1}</Id><Name>" + iName +
           "</Name></Category></CategoryRoot>";
  };
  TRawZip zip;
  zip.AddStored("version", "2");
  zip.AddStored("categories", categories("erste"));
  zip.AddStored("categories", categories("zweite"));
  ASSERT_TRUE(LoadBytes(zip.ToBytes()));
  EXPECT_EQ(Outline(World.Tree()), "erste\n");
  // It can be saved, and then there is one.
  EXPECT_TRUE(World.SaveChanges());
  TStringList names;
  TFileCompression::FilesInside(World.FileName(), names, false);
  EXPECT_EQ(names.GetCount(), 2);
}

TEST_F(HostileFile, ManyEntriesAreKeptInNoTime) {
  TRawZip zip;
  zip.AddStored("categories", "");
  for (int i = 0; i < 20'000; ++i) zip.AddStored("Eintrag" + std::to_string(i), "x");
  ASSERT_TRUE(LoadBytes(zip.ToBytes()));
  EXPECT_TRUE(World.SaveChanges());
  EXPECT_EQ(ReadArchive(World.FileName()).size(), 20'002u);
}

TEST_F(HostileFile, NamesThatLeadOutOfTheFolderLeadNowhere) {
  TRawZip zip;
  zip.AddStored("version", "2");
  zip.AddStored("categories", "");
  zip.AddStored("../../boese", "x");
  ASSERT_TRUE(LoadBytes(zip.ToBytes()));
  EXPECT_TRUE(World.SaveChanges());
  EXPECT_EQ(ReadArchive(World.FileName()).count("boese"), 1u);
  EXPECT_THAT(World.Folder.Names(), testing::ElementsAre("watchlist.dat", "watchlist.da~"));
}

}  // namespace
}  // namespace kk
