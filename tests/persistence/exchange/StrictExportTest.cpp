#include "TExchangeWorld.h"
#include "persistence/exchange/TWatchlistExport.h"
#include "tests/support/TStrictReaders.h"

// What is exported, before programs that know nothing of this one and forgive nothing.
namespace kk {
namespace {

class StrictExport : public TExchangeTest {
 protected:
  StrictExport() {
    const TString odd = u"Ä & <Ö> \"'😀\u0001\u0085\u2028\r\n" + TString(1, char16_t(0xD83D));
    TWatchlistItem& lamp = Item(Category(odd, &Category(u"Küche")), Shop, odd);
    lamp.Description().Add(odd);
    Item(Unassigned(), Auction, u"Uhr");
    RemindBySound(lamp, odd, Now());
  }

  const TStrictReaders Readers{Folder};
};

TEST_F(StrictExport, UnzipReadsTheFile) {
  if (!Readers.HasUnzip()) GTEST_SKIP() << "there is no unzip or zipinfo here";
  ExportAll();
  EXPECT_EQ(Readers.Unzip(ExportFile()), 0);
  ExportAll(false, false);  // over the one that is there
  EXPECT_EQ(Readers.Unzip(ExportFile()), 0);
  TWatchlistFileSaverExport saver(ExportFile());
  saver.SetIncludeCategories(true);
  Save(saver);
  EXPECT_EQ(Readers.Unzip(ExportFile()), 0);
}

TEST_F(StrictExport, AnXMLParserReadsTheEntries) {
  if (!Readers.HasXml()) GTEST_SKIP() << "there is no python3 here";
  ExportAll();
  EXPECT_EQ(Readers.ReadXml(ExportFile(), 4), 0);  // categories, reminders, two sources' items
  ExportAll(false, false);
  EXPECT_EQ(Readers.ReadXml(ExportFile(), 2), 0);
}

TEST_F(StrictExport, BothReadAChosenPart) {
  if (!Readers.HasUnzip() || !Readers.HasXml()) GTEST_SKIP() << "there is no unzip or python3 here";
  TWatchlistExport exporting;
  exporting.AddCategory(*Tree().FindCategoryByName(u"Küche"));
  exporting.AddSource(Record(Shop));
  EXPECT_TRUE(exporting.SaveToFile(ExportFile()));
  EXPECT_EQ(Readers.Unzip(ExportFile()), 0);
  EXPECT_EQ(Readers.ReadXml(ExportFile(), 3), 0);
}

}  // namespace
}  // namespace kk
