#include <gtest/gtest.h>

#include "TFileWorld.h"
#include "host/common/TFileHelper.h"
#include "persistence/TWatchlistFileSaverMobileExport.h"
#include "tests/support/TMobileWorld.h"
#include "tests/support/TStrictReaders.h"

// What the program writes, before programs that know nothing of it and forgive nothing.
namespace kk {
namespace {

class StrictReaders : public testing::Test {
 protected:
  StrictReaders() {
    World.Integrations.Add(Source);
    const TString odd = u"Ä & <Ö> \"'😀\u0001\u0085\u2028\r\n" + TString(1, char16_t(0xD83D));
    TWatchlistCategory& a = AddCategory(World.Tree(), odd);
    a.Description().Add(odd);
    AddItem(AddCategory(a.LstCategory(), u"B"), Source, odd).Description().Add(odd);
    World.Reminders.Add(SoundReminder(NewGuid(), World.Clock.Now()));
  }
  TFileWorld World;
  TStrictReaders Readers{World.Folder};
  TIntf<TMobileSource> Source = MakeIntf<TMobileSource>(u"Laden");
};

TEST_F(StrictReaders, UnzipReadsTheFile) {
  if (!Readers.HasUnzip()) GTEST_SKIP() << "there is no unzip or zipinfo here";
  World.SaveAll();
  EXPECT_EQ(Readers.Unzip(World.FileName()), 0);
  // Again, over entries that were kept packed.
  EXPECT_TRUE(World.SaveChanges());
  EXPECT_EQ(Readers.Unzip(World.FileName()), 0);
}

TEST_F(StrictReaders, AnXMLParserReadsTheEntries) {
  if (!Readers.HasXml()) GTEST_SKIP() << "there is no python3 here";
  World.SaveAll();
  EXPECT_EQ(Readers.ReadXml(World.FileName(), 3), 0);
}

TEST_F(StrictReaders, AnXMLParserReadsTheMobileDocument) {
  if (!Readers.HasXml()) GTEST_SKIP() << "there is no python3 here";
  const TString fileName = World.Folder.File(u"mobil.xml");
  TWatchlistFileSaverMobileExport::Save(fileName, World.Tree(), World.Integrations);
  EXPECT_NE(ReadFileBytes(fileName).find("<searchresult>"), std::string::npos);
  EXPECT_EQ(Readers.ReadXml(fileName, 1), 0);
}

TEST_F(StrictReaders, AnXMLParserReadsItWhateverASourceCallsItsFields) {
  if (!Readers.HasXml()) GTEST_SKIP() << "there is no python3 here";
  for (char16_t unit = 0; unit < 0x100; ++unit) {
    Source->MoreLines.push_back(TString(1, unit) + u"=1");
    Source->MoreLines.push_back(u"a" + TString(1, unit) + u"=1");
    Source->MoreLines.push_back(u"a" + TString(1, unit) + u"b=1");
  }
  for (const TStringView name :
       {u"xml", u"größe", u"цена", u"價", u"a:b", u"xmlns:a", u"a\u3000", u"\uFFFE", u"a\uFFFF",
        u"😀", u"a😀", u"!--", u"?x", u"/a", u"a/", u"![CDATA["}) {
    Source->MoreLines.push_back(TString(name) + u"=1");
  }
  // This one begins an element, as it should.
  std::erase(Source->MoreLines, u"[=1");
  const TString fileName = World.Folder.File(u"mobil.xml");
  TWatchlistFileSaverMobileExport::Save(fileName, World.Tree(), World.Integrations);
  for (const char* element : {"<a.b>1</a.b>", "<größe>1</größe>", "<цена>1</цена>", "<價>1</價>"}) {
    EXPECT_NE(ReadFileBytes(fileName).find(element), std::string::npos) << element;
  }
  EXPECT_EQ(Readers.ReadXml(fileName, 1), 0);
}

}  // namespace
}  // namespace kk
