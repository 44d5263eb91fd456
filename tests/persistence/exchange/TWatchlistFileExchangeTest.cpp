#include "TExchangeWorld.h"
#include "host/common/TFileHelper.h"
#include "persistence/exchange/TWatchlistFileLoaderImport.h"

namespace kk {
namespace {

using TNames = std::set<std::string>;

class TWatchlistFileExchange : public TExchangeTest {
 protected:
  TWatchlistFileExchange() {
    Item(Category(u"Küche"), Shop, u"Sieb");
    Item(Unassigned(), Auction, u"Uhr");
    Remind(*Unassigned().LstPlugin().GetItems(0).LstItem().begin()[0]);
  }
};

TEST_F(TWatchlistFileExchange, WritesTheEntriesOfTheWatchListFile) {
  ExportAll();
  EXPECT_EQ(Entries(), (TNames{"version", "categories", "remind", "itemsAuktion", "Auktion",
                               "itemsLaden", "Laden"}));
}

TEST_F(TWatchlistFileExchange, WritesCategoriesAloneIfNothingElseIsChosen) {
  TWatchlistFileSaverExport saver(ExportFile());
  saver.SetIncludeCategories(true);
  Save(saver);
  EXPECT_EQ(Entries(), (TNames{"version", "categories"}));
}

TEST_F(TWatchlistFileExchange, WritesTheChosenSourcesAloneWhateverTheirFlags) {
  Forget();
  TWatchlistFileSaverExport saver(ExportFile());
  saver.IncludeIntegrations().Add(Record(Shop));
  Save(saver);
  EXPECT_EQ(Entries(), (TNames{"version", "itemsLaden", "Laden"}));
}

TEST_F(TWatchlistFileExchange, RecordsMadeOfInterfacesAreNoneOfTheHandlers) {
  const TIntf<IInterfaceList> sources = NewInterfaceList();
  sources->Add(Shop);
  TWatchlistFileSaverExport saver(ExportFile());
  saver.SetIncludeIntegrations(*sources);
  ASSERT_EQ(saver.IncludeIntegrations().GetCount(), 1);
  Save(saver);
  EXPECT_EQ(Entries(), TNames{"version"});
}

TEST_F(TWatchlistFileExchange, RemindersOfAllSourcesGoOut) {
  TWatchlistFileSaverExport saver(ExportFile());
  saver.SetIncludeRemindItems(true);
  saver.IncludeIntegrations().Add(Record(Shop));
  Save(saver);
  TLstWatchlistCategory tree(true);
  TLstRemindItem reminders(true);
  TWatchlistFileLoaderImport loader(ExportFile());
  ASSERT_TRUE(loader.LoadFromFile(tree, reminders, Handler()->LstIntegration()));
  EXPECT_EQ(reminders.GetCount(), 1);
}

TEST_F(TWatchlistFileExchange, ReplacesAFileThatIsThereAndMakesNoBackup) {
  ExportAll();
  TWatchlistFileSaverExport saver(ExportFile());
  saver.SetIncludeCategories(true);
  Save(saver);
  EXPECT_EQ(Entries(), (TNames{"version", "categories"}));
  EXPECT_FALSE(FileExists(TWatchlistFileSaver::BackupFileName(ExportFile())));
}

TEST_F(TWatchlistFileExchange, LeavesTheLiveFlagsAlone) {
  Forget();
  Record(Shop).SetChangedItems(true);
  ExportAll();
  EXPECT_EQ(Flags(Shop), "I");
}

TEST_F(TWatchlistFileExchange, AFileWithoutCategoriesIsNoFailure) {
  ExportAll(false, false);
  TLstWatchlistCategory tree(true);
  TLstRemindItem reminders(true);
  TWatchlistFileLoaderImport loader(ExportFile());
  EXPECT_TRUE(loader.LoadFromFile(tree, reminders, Handler()->LstIntegration()));
  EXPECT_FALSE(loader.HasCategories());
  EXPECT_FALSE(loader.HasRemindItems());
  EXPECT_EQ(Outline(tree), "<Keiner Kategorie zugewiesen>(Auktion: Uhr; Laden: Sieb)");
}

TEST_F(TWatchlistFileExchange, TellsWhatTheFileHasButOfNoSource) {
  ExportAll();
  TLstWatchlistCategory tree(true);
  TLstRemindItem reminders(true);
  TWatchlistFileLoaderImport loader(ExportFile());
  ASSERT_TRUE(loader.LoadFromFile(tree, reminders, Handler()->LstIntegration()));
  EXPECT_TRUE(loader.HasCategories());
  EXPECT_TRUE(loader.HasRemindItems());
  EXPECT_FALSE(loader.GetHasIntegration(Shop->GetId()));
}

TEST_F(TWatchlistFileExchange, ReadingClearsTheFlagsOfTheLiveRecords) {
  ExportAll();
  Record(Shop).SetChangedItems(true);
  Record(Shop).SetChangedSearchResults(true);
  TLstWatchlistCategory tree(true);
  TLstRemindItem reminders(true);
  TWatchlistFileLoaderImport loader(ExportFile());
  ASSERT_TRUE(loader.LoadFromFile(tree, reminders, Handler()->LstIntegration()));
  EXPECT_EQ(Flags(Shop), "-");
}

}  // namespace
}  // namespace kk
