#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <functional>

#include "TFileWorld.h"
#include "host/common/TFileHelper.h"

// Whatever happens during a save, and whenever: the old list or the new one is on the disk, in the
// file or in its backup.
namespace kk {
namespace {

constexpr TGuid cSource = GuidLiteral("{5E000000-0000-0000-0000-000000000001}");
constexpr char cOld[] = "Alt\n  [Quelle]\n    Uhr\n";
constexpr char cNew[] = "Neu\n  [Quelle]\n    Lampe\n    Uhr\n";

// Counts the calls to the disk and asks, before each, whether it goes through.
class TCountingLayer : public IFileLayer {
 public:
  enum class TAction { Pass, Fail, WriteHalf };
  using TDecide = std::function<TAction(int iCall)>;

  explicit TCountingLayer(TDecide iDecide) : FDecide(std::move(iDecide)) {
    FBefore = SetFileLayer(this);
  }
  ~TCountingLayer() override { SetFileLayer(FBefore); }
  int Calls() const { return FCalls; }

  int Open(const char* iPath, int iFlags, unsigned iMode) override {
    return Refused() ? -1 : MachineFileLayer().Open(iPath, iFlags, iMode);
  }
  long Write(int iFile, const void* iBytes, size_t iCount) override {
    switch (FDecide(++FCalls)) {
      case TAction::Fail:
        errno = ENOSPC;
        return -1;
      case TAction::WriteHalf:
        MachineFileLayer().Write(iFile, iBytes, iCount / 2);
        _exit(0);
      default:
        return MachineFileLayer().Write(iFile, iBytes, iCount);
    }
  }
  int Flush(int iFile) override { return Refused() ? -1 : MachineFileLayer().Flush(iFile); }
  // Closing frees the number even if it fails.
  int Close(int iFile) override {
    const bool refused = Refused();
    const int result = MachineFileLayer().Close(iFile);
    if (refused) errno = ENOSPC;
    return refused ? -1 : result;
  }
  int Rename(const char* iOldPath, const char* iNewPath) override {
    return Refused() ? -1 : MachineFileLayer().Rename(iOldPath, iNewPath);
  }
  int Unlink(const char* iPath) override {
    return Refused() ? -1 : MachineFileLayer().Unlink(iPath);
  }

 private:
  bool Refused() {
    if (FDecide(++FCalls) != TAction::Fail) return false;
    errno = ENOSPC;
    return true;
  }

  TDecide FDecide;
  int FCalls = 0;
  IFileLayer* FBefore;
};
using TAction = TCountingLayer::TAction;

class SaveFault : public testing::Test {
 protected:
  SaveFault() {
    TWatchlistCategory& category = AddCategory(World.Tree(), u"Alt");
    AddItem(category, Source, u"Uhr");
    World.SaveAll();
    FOldFile = World.Folder.Read(cWatchlistFileName);
    category.SetName(u"Neu");
    AddItem(category, Source, u"Lampe");
  }
  // The file as the old run left it, and no trace of a save.
  void Reset() {
    for (const std::string& name : World.Folder.Names()) {
      std::filesystem::remove_all(World.Folder.Path() + "/" + name);
    }
    World.Folder.Write(cWatchlistFileName, FOldFile);
    World.Log.Clear();
  }
  bool Save() {
    World.Record(0).SetChangedItems(true);
    World.Record(0).SetChangedSearchResults(true);
    return World.SaveChanges();
  }
  // What a start would find: "old", "new", or "backup" where only the old list's backup is there.
  std::string Found() {
    if (!FileExists(World.FileName())) {
      return World.Folder.Read(u"watchlist.da~") == FOldFile ? "backup" : "nothing";
    }
    TFileWorld start;
    start.AddSource(u"Quelle", cSource);
    start.Folder.Write(cWatchlistFileName, World.Folder.Read(cWatchlistFileName));
    if (!start.Load()) return "damaged";
    const std::string outline = Outline(start.Tree());
    return outline == cOld ? "old" : outline == cNew ? "new" : "mixed";
  }
  // How many calls to the disk a save makes.
  int CallsOfASave() {
    Reset();
    const TCountingLayer layer([](int) { return TAction::Pass; });
    EXPECT_TRUE(Save());
    return layer.Calls();
  }
  // Runs the save in a process of its own that dies as the function says.
  void SaveAndDie(const TCountingLayer::TDecide& iDecide) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      const TCountingLayer layer(iDecide);
      Save();
      _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
  }

  TFileWorld World;
  TIntf<TFakeSource> Source = World.AddSource(u"Quelle", cSource);
  std::string FOldFile;
};

TEST_F(SaveFault, ASaveThatNothingDisturbsLeavesTheNewList) {
  EXPECT_GT(CallsOfASave(), 5);
  EXPECT_EQ(Found(), "new");
}

TEST_F(SaveFault, DeathBeforeAnyCallToTheDiskLosesNothing) {
  const int calls = CallsOfASave();
  bool sawBackup = false;
  for (int last = 1; last <= calls; ++last) {
    Reset();
    SaveAndDie([last](int call) {
      if (call == last) _exit(0);
      return TAction::Pass;
    });
    const std::string found = Found();
    EXPECT_TRUE(found == "old" || found == "new" || found == "backup") << last << " " << found;
    sawBackup = sawBackup || found == "backup";
    // What lies about does not disturb the next save.
    EXPECT_TRUE(Save());
  }
  EXPECT_TRUE(sawBackup);
}

TEST_F(SaveFault, DeathInTheMiddleOfAWriteLosesNothing) {
  const int calls = CallsOfASave();
  for (int last = 1; last <= calls; ++last) {
    Reset();
    SaveAndDie([last](int call) { return call == last ? TAction::WriteHalf : TAction::Pass; });
    const std::string found = Found();
    EXPECT_TRUE(found == "new" || found == "backup") << last << " " << found;
  }
}

TEST_F(SaveFault, ACallThatFailsOnceLosesNothingAndIsTold) {
  const int calls = CallsOfASave();
  for (int bad = 1; bad <= calls; ++bad) {
    Reset();
    bool saved = false;
    {
      const TCountingLayer layer(
          [bad](int call) { return call == bad ? TAction::Fail : TAction::Pass; });
      saved = Save();
    }
    const std::string found = Found();
    if (saved) {
      EXPECT_EQ(found, "new") << bad;
    } else {
      // Failing at the very last step, the new list may be there and not yet be safe.
      EXPECT_TRUE(found == "backup" || found == "new") << bad << found;
      EXPECT_EQ(World.Log.Lines().size(), 1u);
    }
  }
}

TEST_F(SaveFault, ADiskThatIsFullFromSomeCallOnLosesNothingAndIsTold) {
  const int calls = CallsOfASave();
  for (int bad = 1; bad <= calls; ++bad) {
    Reset();
    bool saved = false;
    {
      const TCountingLayer layer(
          [bad](int call) { return call >= bad ? TAction::Fail : TAction::Pass; });
      saved = Save();
    }
    const std::string found = Found();
    if (saved) {  // all was done, but for closing the folder
      EXPECT_EQ(found, "new") << bad;
      EXPECT_EQ(bad, calls);
      continue;
    }
    EXPECT_TRUE(found == "old" || found == "backup" || found == "new") << bad << found;
    ASSERT_EQ(World.Log.Lines().size(), 1u);
    EXPECT_THAT(World.Log.Lines()[0], testing::HasSubstr("Datei konnte nicht gespeichert werden"));
  }
}

}  // namespace
}  // namespace kk
