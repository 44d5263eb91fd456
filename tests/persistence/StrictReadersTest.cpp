#include <gtest/gtest.h>

#include <cstdlib>

#include "TFileWorld.h"
#include "host/common/TFileHelper.h"
#include "persistence/TWatchlistFileSaverMobileExport.h"
#include "tests/support/TMobileWorld.h"

// What the program writes, before programs that know nothing of it and forgive nothing.
namespace kk {
namespace {

// Every entry of an archive whose name isn't a source's id, and any other file: well-formed XML.
constexpr char cReadXml[] = R"(
import sys, xml.etree.ElementTree as tree, zipfile
name = sys.argv[1]
if zipfile.is_zipfile(name):
    archive = zipfile.ZipFile(name)
    documents = [archive.read(entry) for entry in archive.namelist()
                 if entry in ('categories', 'remind') or entry.startswith('items')]
    assert len(documents) == int(sys.argv[2]), archive.namelist()
else:
    documents = [open(name, 'rb').read()]
for document in documents:
    tree.fromstring(document)
)";

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
  static bool Has(const std::string& iTool) {
    return std::system(("command -v " + iTool + " >/dev/null 2>&1").c_str()) == 0;
  }
  /// With the file's name behind it, and this behind that.
  int Run(const std::string& iCommand, const TString& iFileName,
          const std::string& iRest = {}) const {
    const std::string output = World.Folder.Path() + "/output";
    const int answer = std::system(
        (iCommand + " '" + ToUtf8(iFileName) + "' " + iRest + " >'" + output + "' 2>&1").c_str());
    EXPECT_EQ(answer, 0) << ReadFileBytes(FromUtf8(output));
    return answer;
  }
  int ReadXml(const TString& iFileName, int iDocuments) const {
    const TString script = World.Folder.File(u"read.py");
    WriteFileAtomically(script, cReadXml);
    return Run("python3 '" + ToUtf8(script) + "'", iFileName, std::to_string(iDocuments));
  }

  TFileWorld World;
  TIntf<TMobileSource> Source = MakeIntf<TMobileSource>(u"Laden");
};

TEST_F(StrictReaders, UnzipReadsTheFile) {
  if (!Has("unzip") || !Has("zipinfo")) GTEST_SKIP() << "there is no unzip or zipinfo here";
  World.SaveAll();
  EXPECT_EQ(Run("unzip -t", World.FileName()), 0);
  EXPECT_EQ(Run("zipinfo", World.FileName()), 0);
  // Again, over entries that were kept packed.
  EXPECT_TRUE(World.SaveChanges());
  EXPECT_EQ(Run("unzip -t", World.FileName()), 0);
}

TEST_F(StrictReaders, AnXMLParserReadsTheEntries) {
  if (!Has("python3")) GTEST_SKIP() << "there is no python3 here";
  World.SaveAll();
  EXPECT_EQ(ReadXml(World.FileName(), 3), 0);
}

TEST_F(StrictReaders, AnXMLParserReadsTheMobileDocument) {
  if (!Has("python3")) GTEST_SKIP() << "there is no python3 here";
  const TString fileName = World.Folder.File(u"mobil.xml");
  TWatchlistFileSaverMobileExport::Save(fileName, World.Tree(), World.Integrations);
  EXPECT_NE(ReadFileBytes(fileName).find("<searchresult>"), std::string::npos);
  EXPECT_EQ(ReadXml(fileName, 1), 0);
}

TEST_F(StrictReaders, AnXMLParserReadsItWhateverASourceCallsItsFields) {
  if (!Has("python3")) GTEST_SKIP() << "there is no python3 here";
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
  EXPECT_EQ(ReadXml(fileName, 1), 0);
}

}  // namespace
}  // namespace kk
