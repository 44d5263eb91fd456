#include "TWatchlistHandlerTest.h"

#include <filesystem>

namespace kk {
namespace {

using TWatchlistHandlerFileTest = TWatchlistHandlerTest;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST_F(TWatchlistHandlerFileTest, TheFileLiesInTheDataFolder) {
  EXPECT_EQ(Handler()->GetFileName(), FileName());
  EXPECT_EQ(Handler()->FileName(), FileName());
}

TEST_F(TWatchlistHandlerFileTest, ASaveAndALoadBringEverythingBack) {
  FillTree(AddSource());
  const TGuid id = NewGuid();
  Handler()->LstRemind().Add(SoundReminder(id, Clock.Now()));
  Handler()->SaveAll();
  EXPECT_FALSE(Handler()->LastSaveFailed());
  EXPECT_FALSE(Handler()->LstIntegration().GetItems(0).IsChanged());
  EXPECT_FALSE(Handler()->LstRemind().GetChanged());

  Restart();
  Handler()->LoadFromFile();
  EXPECT_EQ(Outline(Tree()), "A\n  [Quelle]\n    Uhr\n");
  EXPECT_EQ(Handler()->GetLstRemind().IndexOfSearchResultId(id), 0);
  EXPECT_FALSE(Handler()->LstRemind().GetChanged());
}

// A source that looks, while it saves, whether the reminders can be changed meanwhile.
class TLookingSource : public TFakeSource {
 public:
  using TFakeSource::TFakeSource;
  void SaveSearchResults(const IInterfaceList& iList, TStream& ioStream) override {
    EXPECT_THROW(Handler()->LstRemind().BeginWrite(), Exception);
    ++Looks;
    TFakeSource::SaveSearchResults(iList, ioStream);
  }
  int Looks = 0;
};

TEST_F(TWatchlistHandlerFileTest, NobodyChangesTheRemindersWhileTheyAreSaved) {
  const auto source = MakeIntf<TLookingSource>(u"Quelle", cSource);
  Handler()->LstIntegration().Add(source);
  FillTree(source);
  Handler()->SaveToFile();
  source->SetSaveFailure(u"kaputt");
  FlagAll();
  Handler()->SaveToFile();
  EXPECT_EQ(source->Looks, 2);
  // Free again, also after the failure.
  Handler()->LstRemind().BeginWrite();
  Handler()->LstRemind().EndWrite();
}

TEST_F(TWatchlistHandlerFileTest, ALoadReplacesTheRemindersAndForgetsAllFlags) {
  // The entries of this source are not in the file, and its flags are cleared all the same.
  AddSource();
  FlagAll();
  Handler()->LstRemind().Add(SoundReminder(NewGuid(), Clock.Now()));
  Handler()->LoadFromFile();
  EXPECT_EQ(Handler()->LstRemind().GetCount(), 0);
  EXPECT_FALSE(Handler()->LstRemind().GetChanged());
  EXPECT_FALSE(Handler()->LstIntegration().GetItems(0).IsChanged());
}

TEST_F(TWatchlistHandlerFileTest, RemindersReadBeforeAFailureAreLive) {
  FillTree(AddSource());
  Handler()->GetRemindHandler().LstRemind().Add(SoundReminder(NewGuid(), Clock.Now()));
  Handler()->SaveToFile();
  Restart()->SetLoadFailure(u"kaputt");
  Handler()->Initialize(Application);
  EXPECT_EQ(Outline(Tree()), cCatchAll);
  EXPECT_EQ(Handler()->RemindHandler().LstRemind().GetCount(), 1);
}

TEST_F(TWatchlistHandlerFileTest, AFileThatCanNotBeLoadedIsPutAsideBeforeAnythingWritesOverIt) {
  Folder.Write(cWatchlistFileName, "beschädigt");
  Handler()->LoadFromFile();
  EXPECT_EQ(Outline(Tree()), cCatchAll);
  EXPECT_EQ(Folder.Read(cWatchlistFileName), "beschädigt");
  EXPECT_EQ(Folder.Read(u"watchlist.dat.2026-11-20-183000"), "beschädigt");
  // Once is enough.
  Clock.Advance(60'000);
  Tree().Clear();
  Handler()->LoadFromFile();
  EXPECT_EQ(Folder.Names().size(), 2u);
  // And no number of saves touches the copy.
  for (int i = 0; i < 3; ++i) Handler()->SaveToFile();
  EXPECT_EQ(Folder.Read(u"watchlist.dat.2026-11-20-183000"), "beschädigt");
}

TEST_F(TWatchlistHandlerFileTest, TheBackupOfAFileThatCanNotBeLoadedIsPutAsideToo) {
  FillTree(AddSource());
  Handler()->SaveToFile();
  const std::string good = Folder.Read(cWatchlistFileName);
  Handler()->SaveToFile();
  Folder.Write(cWatchlistFileName, "beschädigt");
  Restart();
  Handler()->LoadFromFile();
  // The first save makes the damaged file the backup, as required.
  for (int i = 0; i < 3; ++i) Handler()->SaveToFile();
  EXPECT_EQ(Folder.Read(u"watchlist.da~.2026-11-20-183000"), good);
}

TEST_F(TWatchlistHandlerFileTest, AFileThatIsNotThereIsNotPutAside) {
  Handler()->LoadFromFile();
  EXPECT_THAT(Folder.Names(), IsEmpty());
}

TEST_F(TWatchlistHandlerFileTest, ASourceThatFailsToLoadDoesNotCostTheCategories) {
  FillTree(AddSource());
  Handler()->SaveToFile();
  const std::string whole = Folder.Read(cWatchlistFileName);
  Restart()->SetLoadFailure(u"kaputt");
  Handler()->LoadFromFile();
  for (int i = 0; i < 3; ++i) Handler()->SaveToFile();
  EXPECT_EQ(Folder.Read(u"watchlist.dat.2026-11-20-183000"), whole);
}

TEST_F(TWatchlistHandlerFileTest, AFailedSaveForgetsAsRequiredThatThereWasSomethingToSave) {
  FillTree(AddSource());
  BlockWriting();
  Handler()->SaveToFile();
  EXPECT_TRUE(Handler()->LastSaveFailed());
  EXPECT_FALSE(Handler()->LstIntegration().GetItems(0).IsChanged());
  EXPECT_FALSE(Handler()->LstRemind().GetChanged());
  EXPECT_EQ(Outline(Tree()), "A\n  [Quelle]\n    Uhr\n");  // the data stay in memory
}

TEST_F(TWatchlistHandlerFileTest, TheLastGoodStateOutlivesTheSavesAfterAFailedOne) {
  FillTree(AddSource());
  Handler()->SaveToFile();
  const std::string good = Folder.Read(cWatchlistFileName);
  BlockWriting();
  Handler()->SaveToFile();
  EXPECT_TRUE(Handler()->LastSaveFailed());
  EXPECT_FALSE(FileExists(FileName()));

  // The disk is well again. These saves write only what changed since, and soon over the backup.
  std::filesystem::remove_all(Folder.Path() + "/watchlist.dat.tmp");
  for (int i = 0; i < 3; ++i) Handler()->SaveToFile();
  EXPECT_FALSE(Handler()->LastSaveFailed());
  EXPECT_EQ(ReadArchive(FileName()).count(cItems), 0u);
  EXPECT_EQ(Folder.Read(u"watchlist.da~.2026-11-20-183000"), good);
}

TEST_F(TWatchlistHandlerFileTest, ADataFolderThatCanNotBeMadeIsASaveThatFailed) {
  Folder.Write(u"Datei", "");
  const TString inFile = Folder.File(u"Datei/Ordner");
  SetHostFolders({inFile, inFile, inFile, inFile, inFile});
  Handler()->SaveToFile();
  EXPECT_TRUE(Handler()->LastSaveFailed());
  ASSERT_EQ(Log.Lines().size(), 1u);
  EXPECT_THAT(Log.Lines()[0], HasSubstr("error WatchlistHandler: Datei konnte nicht gespeichert "
                                        "werden (watchlist.dat). Fehlermeldung: "));
}

TEST_F(TWatchlistHandlerFileTest, SavingCategoriesOnlyHasNoEffectAsRequired) {
  AddCategory(Tree(), u"A");
  Handler()->SaveToFile();
  const std::string before = Folder.Read(cWatchlistFileName);
  AddCategory(Tree(), u"B");
  Handler()->SaveCategoriesOnly();
  EXPECT_EQ(Folder.Read(cWatchlistFileName), before);
}

TEST_F(TWatchlistHandlerFileTest, WritesTheMobileDocumentOfItsTree) {
  AddCategory(Tree(), u"Küche");
  Handler()->SaveAllForMobileExport(Folder.File(u"mobil.xml"));
  EXPECT_THAT(Folder.Read(u"mobil.xml"), HasSubstr("<name>Küche</name>"));
}

TEST_F(TWatchlistHandlerFileTest, MakesABackupByTheSaversRule) {
  Handler()->MakeBackup();
  EXPECT_THAT(Folder.Names(), IsEmpty());
  Folder.Write(cWatchlistFileName, "neu");
  Folder.Write(u"watchlist.da~", "alt");
  Handler()->MakeBackup();
  EXPECT_THAT(Folder.Names(), ElementsAre("watchlist.da~"));
  EXPECT_EQ(Folder.Read(u"watchlist.da~"), "neu");
}

TEST_F(TWatchlistHandlerFileTest, HandsOutAllStreamsOfTheFile) {
  TLstStreamForCompression streams(true);
  Handler()->GetAllStreamsInFile(streams);
  EXPECT_EQ(streams.GetCount(), 0);
  AddCategory(Tree(), u"A");
  Handler()->SaveToFile();
  Handler()->GetAllStreamsInFile(streams);
  EXPECT_EQ(streams.GetCount(), 2);
  EXPECT_EQ(streams.IndexOfName(u"version"), 0);
}

}  // namespace
}  // namespace kk
