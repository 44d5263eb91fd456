#include "persistence/TWatchlistFileSaver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "TFileWorld.h"
#include "host/common/TFileHelper.h"
#include "host/common/TFileWriter.h"
#include "host/common/TSimpleXMLDocument.h"
#include "reminders/TLstRemindItemSync.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr TGuid cSource = GuidLiteral("{5E000000-0000-0000-0000-000000000001}");
constexpr char cResults[] = "{5E000000-0000-0000-0000-000000000001}";
constexpr char cItems[] = "items{5E000000-0000-0000-0000-000000000001}";

std::vector<std::string> Names(const std::map<std::string, std::string>& iEntries) {
  std::vector<std::string> names;
  for (const auto& entry : iEntries) names.push_back(entry.first);
  return names;
}

class TWatchlistFileSaverTest : public testing::Test {
 protected:
  std::map<std::string, std::string> Entries() const { return ReadArchive(World.FileName()); }
  // "A" with two articles, saved.
  void SaveTwoItems() {
    TWatchlistCategory& category = AddCategory(World.Tree(), u"A");
    AddItem(category, Source, u"Uhr");
    AddItem(category, Source, u"Lampe");
    World.SaveAll();
  }
  TWatchlistItem& FirstItem() {
    return World.Tree().GetItems(0).LstPlugin().GetItems(0).LstItem().GetItems(0);
  }

  TFileWorld World;
  TIntf<TFakeSource> Source = World.AddSource(u"Quelle", cSource);
};

TEST_F(TWatchlistFileSaverTest, AFirstSaveWritesEveryEntry) {
  SaveTwoItems();
  const auto entries = Entries();
  EXPECT_THAT(Names(entries), ElementsAre("categories", cItems, "remind", "version", cResults));
  EXPECT_EQ(entries.at("version"), "2");
  EXPECT_THAT(entries.at(cResults), HasSubstr("Uhr"));
  EXPECT_THAT(entries.at(cItems), HasSubstr("<SearchResult>"));
  EXPECT_EQ(entries.at("remind"), "");
  EXPECT_THAT(World.Log.Lines(), IsEmpty());
}

TEST_F(TWatchlistFileSaverTest, WhatWasSavedLoadsWithTheOrderOfEachGroupTurnedRound) {
  SaveTwoItems();
  FirstItem().SetDescription({u"Notiz"});
  FirstItem().SetLastUpdateDate(World.Clock.Now());
  World.SaveAll();
  World.ForgetTree();
  EXPECT_TRUE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), "A\n  [Quelle]\n    Lampe\n    Uhr\n");
  const TWatchlistItem& clock =
      World.Tree().GetItems(0).LstPlugin().GetItems(0).LstItem().GetItems(1);
  EXPECT_EQ(clock.Description().Lines(), (std::vector<TString>{u"Notiz"}));
  EXPECT_EQ(clock.LastUpdateDate(), World.Clock.Now());
}

TEST_F(TWatchlistFileSaverTest, ItemsOfAllCategoriesStandInOneDocumentInPreOrder) {
  TWatchlistCategory& first = AddCategory(World.Tree(), u"A");
  AddItem(first, Source, u"eins");
  AddItem(AddCategory(first.LstCategory(), u"A1"), Source, u"zwei");
  AddItem(AddCategory(World.Tree(), u"B"), Source, u"drei");
  World.SaveAll();
  const std::string results = Entries().at(cResults);
  EXPECT_LT(results.find("eins"), results.find("zwei"));
  EXPECT_LT(results.find("zwei"), results.find("drei"));
}

TEST_F(TWatchlistFileSaverTest, WithNoChangedSourceTheBytesOfItsEntriesStay) {
  SaveTwoItems();
  const auto before = ReadPackedArchive(World.FileName());
  const int saves = Source->SaveCount();
  World.Tree().GetItems(0).SetName(u"Neuer Name");
  EXPECT_TRUE(World.SaveChanges());
  const auto after = ReadPackedArchive(World.FileName());
  EXPECT_EQ(after.at(cItems), before.at(cItems));
  EXPECT_EQ(after.at(cResults), before.at(cResults));
  EXPECT_NE(after.at("categories"), before.at("categories"));
  EXPECT_EQ(Source->SaveCount(), saves);
}

TEST_F(TWatchlistFileSaverTest, LoadAndSaveOfUnchangedDataKeepTheItemStreams) {
  SaveTwoItems();
  const auto before = Entries();
  World.ForgetTree();
  World.Load();
  EXPECT_TRUE(World.SaveChanges());
  EXPECT_EQ(Entries(), before);
}

TEST_F(TWatchlistFileSaverTest, EachFlagRewritesItsOwnEntryAlone) {
  SaveTwoItems();
  const auto before = Entries();
  FirstItem().SetDescription({u"Notiz"});
  const auto result = MakeIntf<TFakeSearchResult>(u"Standuhr", FirstItem().SearchResultId());
  FirstItem().SetSearchResult(result);

  World.Record(0).SetChangedItems(true);
  EXPECT_TRUE(World.SaveChanges());
  EXPECT_THAT(Entries().at(cItems), HasSubstr("Notiz"));
  EXPECT_EQ(Entries().at(cResults), before.at(cResults));

  World.Record(0).SetUnchanged();
  World.Record(0).SetChangedSearchResults(true);
  FirstItem().SetDescription({});
  EXPECT_TRUE(World.SaveChanges());
  EXPECT_THAT(Entries().at(cItems), HasSubstr("Notiz"));
  EXPECT_THAT(Entries().at(cResults), HasSubstr("Standuhr"));
}

TEST_F(TWatchlistFileSaverTest, ASourceWithoutItemsLeavesNoTrace) {
  SaveTwoItems();
  World.Tree().GetItems(0).LstPlugin().Clear();
  World.Record(0).SetChangedItems(true);
  EXPECT_TRUE(World.SaveChanges());
  EXPECT_THAT(Names(Entries()), ElementsAre("categories", "remind", "version"));
}

TEST_F(TWatchlistFileSaverTest, ASourceWithoutItemsAndWithoutFlagsKeepsItsEntries) {
  SaveTwoItems();
  World.Tree().GetItems(0).LstPlugin().Clear();
  EXPECT_TRUE(World.SaveChanges());
  EXPECT_THAT(Names(Entries()), testing::Contains(cItems));
}

TEST_F(TWatchlistFileSaverTest, ASourceWithoutItemsFromTheStartWritesNothing) {
  AddCategory(World.Tree(), u"A");
  World.SaveAll();
  EXPECT_THAT(Names(Entries()), ElementsAre("categories", "remind", "version"));
}

TEST_F(TWatchlistFileSaverTest, EntriesThatNobodyKnowsAreKept) {
  WriteArchive(World.FileName(), {{"version", "3"},
                                  {"zukunft", "etwas Neues"},
                                  {"{11111111-0000-0000-0000-000000000000}", "fremde Quelle"}});
  AddCategory(World.Tree(), u"A");
  World.SaveAll();
  const auto entries = Entries();
  EXPECT_EQ(entries.at("zukunft"), "etwas Neues");
  EXPECT_EQ(entries.at("{11111111-0000-0000-0000-000000000000}"), "fremde Quelle");
  EXPECT_EQ(entries.at("version"), "2");  // also over that of a newer file
}

TEST_F(TWatchlistFileSaverTest, KnownEntriesAreFoundWithoutRegardToCase) {
  WriteArchive(World.FileName(), {{"VERSION", "1"}, {"Categories", "alt"}});
  AddCategory(World.Tree(), u"A");
  EXPECT_TRUE(World.SaveChanges());
  EXPECT_THAT(Names(Entries()), ElementsAre("Categories", "VERSION"));
  EXPECT_EQ(Entries().at("VERSION"), "2");
}

TEST_F(TWatchlistFileSaverTest, ARewrittenEntryHoldsNothingOfWhatWasThere) {
  const std::string longText(1000, 'x');
  WriteArchive(World.FileName(), {{"version", longText}, {"categories", longText}});
  AddCategory(World.Tree(), u"A");
  EXPECT_TRUE(World.SaveChanges());
  EXPECT_EQ(Entries().at("version"), "2");
  EXPECT_THAT(Entries().at("categories"), Not(HasSubstr("xxx")));
}

TEST_F(TWatchlistFileSaverTest, ANamelessEntryDoesNotKeepTheListFromBeingSaved) {
  WriteArchive(World.FileName(), {{"v", "2"}, {"x", "bleibt"}});
  // In the central directory (ZIP APPNOTE 4.3.12), one byte of name becomes one of comment.
  std::string bytes = World.Folder.Read(cWatchlistFileName);
  const size_t header = bytes.find("PK\1\2");
  bytes[header + 28] = 0;
  bytes[header + 32] = 1;
  World.Folder.Write(cWatchlistFileName, bytes);
  ASSERT_THAT(Names(Entries()), ElementsAre("", "x"));
  AddCategory(World.Tree(), u"A");
  EXPECT_TRUE(World.SaveChanges());
  EXPECT_THAT(Names(Entries()), ElementsAre("categories", "version", "x"));
}

TEST_F(TWatchlistFileSaverTest, ThereIsOneBackupWithTheStateBeforeTheLastSave) {
  SaveTwoItems();
  EXPECT_FALSE(World.Folder.Has(u"watchlist.da~"));
  World.Tree().GetItems(0).SetName(u"Zweiter Stand");
  World.SaveChanges();
  const std::string second = World.Folder.Read(cWatchlistFileName);
  World.Tree().GetItems(0).SetName(u"Dritter Stand");
  World.SaveChanges();
  EXPECT_THAT(World.Folder.Names(), ElementsAre("watchlist.dat", "watchlist.da~"));
  EXPECT_EQ(World.Folder.Read(u"watchlist.da~"), second);
}

TEST_F(TWatchlistFileSaverTest, TheBackupsNameHasTheLastCharacterReplaced) {
  EXPECT_EQ(TWatchlistFileSaver::BackupFileName(u"/a/watchlist.dat"), u"/a/watchlist.da~");
  EXPECT_EQ(TWatchlistFileSaver::BackupFileName(u"Beobachten.wch"), u"Beobachten.wc~");
  EXPECT_EQ(TWatchlistFileSaver::BackupFileName(u""), u"~");
}

TEST_F(TWatchlistFileSaverTest, ABackupThatCanNotBeMadeDoesNotStopTheSave) {
  SaveTwoItems();
  MakeHostFolder(World.Folder.File(u"watchlist.da~"));
  World.Tree().GetItems(0).SetName(u"Zweiter Stand");
  EXPECT_TRUE(World.SaveChanges());
  EXPECT_THAT(Entries().at("categories"), HasSubstr("Zweiter Stand"));
  EXPECT_THAT(World.Log.Lines(), IsEmpty());
}

TEST_F(TWatchlistFileSaverTest, AFailureWhilePreparingLeavesTheOldFileInPlace) {
  SaveTwoItems();
  const std::string before = World.Folder.Read(cWatchlistFileName);
  Source->SetSaveFailure(u" Quelle\r\nkaputt ");
  World.Record(0).SetChangedSearchResults(true);
  EXPECT_FALSE(World.SaveChanges());
  EXPECT_EQ(World.Folder.Read(cWatchlistFileName), before);
  EXPECT_THAT(World.Folder.Names(), ElementsAre("watchlist.dat"));
  EXPECT_THAT(World.Log.Lines(),
              ElementsAre("error WatchlistHandler: Datei konnte nicht gespeichert werden (" +
                          ToUtf8(World.FileName()) + "). Fehlermeldung: Quelle kaputt"));
}

TEST_F(TWatchlistFileSaverTest, ADocumentThatNoLoadWouldTakeIsNotWrittenOverTheFile) {
  SaveTwoItems();
  const std::string before = World.Folder.Read(cWatchlistFileName);
  World.Tree().GetItems(0).SetName(TString(TSimpleXMLDocument::cMaxMarks, u'='));
  EXPECT_FALSE(World.SaveChanges());
  EXPECT_EQ(World.Folder.Read(cWatchlistFileName), before);
  EXPECT_THAT(World.Folder.Names(), ElementsAre("watchlist.dat"));
}

TEST_F(TWatchlistFileSaverTest, AFirstFileIsItsUsersAloneAndALaterOneHasTheModeOfTheOneBefore) {
  const std::string path = ToUtf8(World.FileName());
  SaveTwoItems();
  EXPECT_EQ(ModeOf(path), 0600u);
  ASSERT_EQ(chmod(path.c_str(), 0640), 0);
  EXPECT_TRUE(World.SaveChanges());
  EXPECT_EQ(ModeOf(path), 0640u);
  ASSERT_EQ(chmod(path.c_str(), 0400), 0);
  EXPECT_TRUE(World.SaveChanges());
  EXPECT_EQ(ModeOf(path), 0600u);
}

TEST_F(TWatchlistFileSaverTest, AFailureWhileWritingLeavesTheBackupAloneAndRestoresNothing) {
  SaveTwoItems();
  const std::string before = World.Folder.Read(cWatchlistFileName);
  // Nothing can take the place of a folder that holds something.
  MakeHostFolder(World.Folder.File(u"watchlist.dat.tmp/x"));
  EXPECT_FALSE(World.SaveChanges());
  EXPECT_FALSE(FileExists(World.FileName()));
  EXPECT_EQ(World.Folder.Read(u"watchlist.da~"), before);
  ASSERT_EQ(World.Log.Lines().size(), 1u);
  EXPECT_THAT(World.Log.Lines()[0], HasSubstr("Datei konnte nicht gespeichert werden"));
}

TEST_F(TWatchlistFileSaverTest, TheNextSaveOfTheSameSaverTellsOfItselfAlone) {
  SaveTwoItems();
  TWatchlistFileSaver saver(World.FileName());
  Source->SetSaveFailure(u"kaputt");
  World.Record(0).SetChangedSearchResults(true);
  saver.SaveToFile(World.Tree(), World.Reminders, World.Integrations);
  EXPECT_TRUE(saver.LastSaveFailed());
  Source->SetSaveFailure(u"");
  saver.SaveToFile(World.Tree(), World.Reminders, World.Integrations);
  EXPECT_FALSE(saver.LastSaveFailed());
  EXPECT_THAT(Names(Entries()), ElementsAre("categories", cItems, "remind", "version", cResults));
}

TEST_F(TWatchlistFileSaverTest, AFolderInPlaceOfTheFileIsAFailure) {
  MakeHostFolder(World.FileName());
  AddCategory(World.Tree(), u"A");
  EXPECT_FALSE(World.SaveChanges());
  EXPECT_EQ(World.Log.Lines().size(), 1u);
}

TEST_F(TWatchlistFileSaverTest, AnEmptyTreeGivesAnEmptyStreamThatLoadsAgain) {
  World.SaveAll();
  EXPECT_EQ(Entries().at("categories"), "");
  EXPECT_TRUE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), "<Keiner Kategorie zugewiesen>\n");
}

TEST_F(TWatchlistFileSaverTest, RemindersAreSavedIfTheLiveListHasChanged) {
  AddCategory(World.Tree(), u"A");
  World.SaveAll();
  TLstRemindItemSync live(true);
  live.Add(SoundReminder(NewGuid(), World.Clock.Now()));
  TWatchlistFileSaver saver(World.FileName());

  live.SetChanged(false);
  saver.SaveToFile(World.Tree(), live, World.Integrations);
  EXPECT_EQ(Entries().at("remind"), "");

  live.SetChanged(true);
  saver.SaveToFile(World.Tree(), live, World.Integrations);
  EXPECT_THAT(Entries().at("remind"), HasSubstr("/klang.wav"));
}

TEST_F(TWatchlistFileSaverTest, RemindersOfAnyOtherListAreSavedOnlyWithEverything) {
  World.Reminders.Add(SoundReminder(NewGuid(), World.Clock.Now()));
  World.SaveChanges();
  EXPECT_THAT(Names(Entries()), Not(testing::Contains("remind")));
  World.SaveAll();
  EXPECT_THAT(Entries().at("remind"), HasSubstr("/klang.wav"));
  World.ForgetTree();
  World.Load();
  EXPECT_EQ(World.Reminders.GetCount(), 1);
}

TEST_F(TWatchlistFileSaverTest, OnlyChangesAreSavedAtFirst) {
  EXPECT_TRUE(TWatchlistFileSaver(u"x").SaveOnlyIfChanged());
}

TEST_F(TWatchlistFileSaverTest, AllStreamsComeOutInTheOrderOfTheFile) {
  WriteArchive(World.FileName(), {{"b", "zwei"}, {"a", "eins"}});
  TLstStreamForCompression streams(true);
  TWatchlistFileSaver::GetAllStreamsInFile(World.FileName(), streams);
  ASSERT_EQ(streams.GetCount(), 2);
  EXPECT_EQ(streams.GetItems(0).GetName(), u"b");
  EXPECT_EQ(streams.GetItems(1).GetStream().Bytes(), "eins");
  EXPECT_EQ(streams.GetItems(1).GetStream().GetPosition(), 0u);
}

TEST_F(TWatchlistFileSaverTest, WithoutAFileThereAreNoStreams) {
  TLstStreamForCompression streams(true);
  TWatchlistFileSaver::GetAllStreamsInFile(World.FileName(), streams);
  EXPECT_EQ(streams.GetCount(), 0);
  EXPECT_THAT(World.Folder.Names(), IsEmpty());
}

TEST_F(TWatchlistFileSaverTest, AFileThatIsNoArchiveGivesNoStreamsAndIsPutAside) {
  World.Folder.Write(cWatchlistFileName, "kein Archiv, aber vielleicht noch zu retten");
  AddCategory(World.Tree(), u"A");
  EXPECT_TRUE(World.SaveChanges());
  EXPECT_TRUE(World.SaveChanges());  // takes the backup's place
  EXPECT_THAT(World.Folder.Names(),
              ElementsAre("watchlist.dat", "watchlist.dat.2026-11-20-183000", "watchlist.da~"));
  EXPECT_EQ(World.Folder.Read(u"watchlist.dat.2026-11-20-183000"),
            "kein Archiv, aber vielleicht noch zu retten");
}

TEST_F(TWatchlistFileSaverTest, OfADamagedArchiveWhatComesBeforeTheDamageIsKept) {
  WriteArchive(World.FileName(), {{"eins", "1"}, {"zwei", "2"}, {"drei", "3"}});
  std::string bytes = World.Folder.Read(cWatchlistFileName);
  // Its packed size in the central directory (ZIP APPNOTE 4.3.12).
  bytes[bytes.rfind("zwei") - 46 + 21] = '\x7F';
  World.Folder.Write(cWatchlistFileName, bytes);
  AddCategory(World.Tree(), u"A");
  EXPECT_TRUE(World.SaveChanges());
  EXPECT_THAT(Names(Entries()), ElementsAre("categories", "eins", "version"));
  EXPECT_EQ(World.Folder.Read(u"watchlist.dat.2026-11-20-183000"), bytes);
}

// Chooses what is saved, as an export does.
class TChoosingSaver : public TWatchlistFileSaver {
 public:
  using TWatchlistFileSaver::TWatchlistFileSaver;
  bool Categories = false, Reminders = false, Items = false, Results = false;

 protected:
  bool CanSaveCategories() const override { return Categories; }
  bool CanSaveRemindItems(const TLstRemindItem&) const override { return Reminders; }
  bool CanSaveIntegration(const TWatchlistIntegration&) const override { return Items || Results; }
  bool CanSaveItems(const TWatchlistIntegration&) const override { return Items; }
  bool CanSaveSearchResults(const TWatchlistIntegration&) const override { return Results; }
};

TEST_F(TWatchlistFileSaverTest, DescendantsChooseWhatIsSaved) {
  AddItem(AddCategory(World.Tree(), u"A"), Source, u"Uhr");
  TChoosingSaver saver(World.FileName());
  EXPECT_EQ(saver.FileName(), World.FileName());
  const auto save = [&] {
    DeleteFile(World.FileName());
    saver.SaveToFile(World.Tree(), World.Reminders, World.Integrations);
    return Names(Entries());
  };
  EXPECT_THAT(save(), ElementsAre("version"));
  saver.Categories = true;
  EXPECT_THAT(save(), ElementsAre("categories", "version"));
  saver.Reminders = true;
  EXPECT_THAT(save(), ElementsAre("categories", "remind", "version"));
  saver.Items = true;
  EXPECT_THAT(save(), ElementsAre("categories", cItems, "remind", "version"));
  saver.Results = true;
  EXPECT_THAT(save(), ElementsAre("categories", cItems, "remind", "version", cResults));
}

TEST_F(TWatchlistFileSaverTest, AfterALoadThatFailedInASourceTheItemsOfTheNextStartFallTogether) {
  SaveTwoItems();
  const auto before = Entries();
  World.ForgetTree();
  Source->SetLoadFailure(u"kaputt");
  EXPECT_FALSE(World.Load());
  EXPECT_TRUE(World.SaveChanges());
  EXPECT_THAT(Entries().at("categories"), HasSubstr("Keiner Kategorie zugewiesen"));
  EXPECT_THAT(Entries().at("categories"), Not(HasSubstr("<Name>A</Name>")));
  EXPECT_EQ(Entries().at(cItems), before.at(cItems));
  EXPECT_EQ(Entries().at(cResults), before.at(cResults));

  World.ForgetTree();
  Source->SetLoadFailure(u"");
  EXPECT_TRUE(World.Load());
  EXPECT_EQ(Outline(World.Tree()),
            "<Keiner Kategorie zugewiesen>\n  [Quelle]\n    Lampe\n    Uhr\n");
}

}  // namespace
}  // namespace kk
