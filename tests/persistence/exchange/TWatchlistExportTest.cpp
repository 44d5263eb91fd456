#include "persistence/exchange/TWatchlistExport.h"

#include <filesystem>

#include "TExchangeWorld.h"
#include "host/common/TFileHelper.h"
#include "persistence/exchange/TWatchlistFileLoaderImport.h"
#include "tests/support/TFaultyFileLayer.h"

namespace kk {
namespace {

namespace fs = std::filesystem;
using TNames = std::set<std::string>;

class TWatchlistExportTest : public TExchangeTest {
 protected:
  bool Export() { return Exporting.SaveToFile(ExportFile()); }
  std::string Refusal(const TString& iFileName) {
    try {
      Exporting.SaveToFile(iFileName);
    } catch (const Exception& e) {
      return ToUtf8(e.Message());
    }
    return "nothing raised";
  }
  /// What another installation would read.
  std::string Read() {
    TWatchlistFileLoaderImport loader(ExportFile());
    TLstWatchlistCategory tree(true);
    Reminders.Clear();
    EXPECT_TRUE(loader.LoadFromFile(tree, Reminders, Handler()->LstIntegration()));
    return Outline(tree);
  }
  static void RemindOf(const TWatchlistItem& iItem) {
    RemindBySound(iItem, u"ton.wav", Now().PlusMs(1000));
  }

  TWatchlistExport Exporting;
  TLstRemindItem Reminders{true};
  TWatchlistCategory& Kitchen = Category(u"Küche");
  TWatchlistCategory& Shelf = Category(u"Regal", &Kitchen);
  TWatchlistCategory& Cellar = Category(u"Keller");
  TWatchlistItem& Lamp = Item(Kitchen, Auction, u"Lampe");
  TWatchlistItem& Sieve = Item(Shelf, Shop, u"Sieb");
  TWatchlistItem& Wine = Item(Cellar, Auction, u"Wein");
};

TEST_F(TWatchlistExportTest, WithoutAChoiceAllGoes) {
  RemindOf(Lamp);
  RemindOf(Wine);
  EXPECT_TRUE(Export());
  EXPECT_EQ(Read(), Outline());
  EXPECT_EQ(Reminders.GetCount(), 2);
}

TEST_F(TWatchlistExportTest, ACategoryGoesWithAllBelowItAndTheRemindersOfItsItems) {
  RemindOf(Sieve);
  RemindOf(Wine);
  Exporting.AddCategory(Kitchen);
  EXPECT_TRUE(Export());
  EXPECT_EQ(Read(), "Küche(Auktion: Lampe; Regal(Laden: Sieb))");
  ASSERT_EQ(Reminders.GetCount(), 1);
  EXPECT_EQ(Reminders.First().Id(), Sieve.SearchResultId());
}

TEST_F(TWatchlistExportTest, ACategoryBelowAChosenOneGoesOnce) {
  Exporting.AddCategory(Shelf);
  Exporting.AddCategory(Kitchen);
  Exporting.AddCategory(Kitchen);
  EXPECT_TRUE(Export());
  EXPECT_EQ(Read(), "Küche(Auktion: Lampe; Regal(Laden: Sieb))");
}

TEST_F(TWatchlistExportTest, ACategoryFromBelowGoesWithoutThoseAbove) {
  Exporting.AddCategory(Shelf);
  EXPECT_TRUE(Export());
  EXPECT_EQ(Read(), "Regal(Laden: Sieb)");
}

TEST_F(TWatchlistExportTest, OnlyTheChosenSourcesGo) {
  RemindOf(Sieve);
  Exporting.AddSource(Record(Auction));
  EXPECT_TRUE(Export());
  EXPECT_EQ(Entries(), (TNames{"version", "categories", "itemsAuktion", "Auktion"}));
}

TEST_F(TWatchlistExportTest, WithoutItemsThereIsNoFile) {
  Exporting.AddCategory(Shelf);
  Exporting.AddSource(Record(Auction));
  Folder.Write(u"Liste.wch", "alt");
  EXPECT_EQ(Refusal(ExportFile()), ToUtf8(_resExportNothing));
  EXPECT_EQ(Folder.Read(u"Liste.wch"), "alt");
}

TEST_F(TWatchlistExportTest, TheListAndItsFlagsStayAsTheyAre) {
  const std::string before = Outline();
  const std::string flags = Flags(Auction);
  Exporting.AddCategory(Kitchen);
  EXPECT_TRUE(Export());
  EXPECT_EQ(Outline(), before);
  EXPECT_EQ(Flags(Auction), flags);
  EXPECT_EQ(Kitchen.List(), &Tree());
}

TEST_F(TWatchlistExportTest, AFileThatWasThereIsReplacedAndNothingElseIsLeft) {
  Folder.Write(u"Liste.wch", "alt");
  const auto before = Folder.Names();
  EXPECT_TRUE(Export());
  EXPECT_EQ(Read(), Outline());
  EXPECT_EQ(Folder.Names(), before);
}

TEST_F(TWatchlistExportTest, AFileThatWasThereIsThereStillIfTheNewOneCanNotBeWritten) {
  Folder.Write(u"Liste.wch", "alt");
  const auto before = Folder.Names();
  {
    TFaultyFileLayer layer;
    layer.FailAll("write", ENOSPC);
    EXPECT_FALSE(Export());
  }
  EXPECT_EQ(Folder.Read(u"Liste.wch"), "alt");
  EXPECT_EQ(Folder.Names(), before);
  ASSERT_EQ(Log.Lines().size(), 1u);
  EXPECT_NE(Log.Lines()[0].find("konnte nicht gespeichert werden (" + ToUtf8(ExportFile())),
            std::string::npos);
}

TEST_F(TWatchlistExportTest, AFolderADeviceAndTheOwnFilesAreRefused) {
  fs::create_directory(ToUtf8(Folder.File(u"Ordner")));
  EXPECT_EQ(Refusal(Folder.File(u"Ordner")),
            ToUtf8(Format(_resExportNoFile, {Folder.File(u"Ordner")})));
  EXPECT_EQ(Refusal(u"/dev/null"), ToUtf8(Format(_resExportNoFile, {u"/dev/null"})));
  const TString list = Handler()->GetFileName();
  for (const TString& file : {list, list.substr(0, list.size() - 1) + u"~"}) {
    EXPECT_EQ(Refusal(file), ToUtf8(Format(_resExportOwnFile, {file})));
  }
  Handler()->SaveAll();
  fs::create_symlink(ToUtf8(list), ToUtf8(ExportFile()));
  EXPECT_EQ(Refusal(ExportFile()), ToUtf8(Format(_resExportOwnFile, {ExportFile()})));
}

}  // namespace
}  // namespace kk
