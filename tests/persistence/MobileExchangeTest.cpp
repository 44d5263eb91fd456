#include <gtest/gtest.h>

#include "TFileWorld.h"
#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"
#include "persistence/MobileGuid.h"
#include "persistence/TWatchlistFileLoaderMobileImport.h"
#include "persistence/TWatchlistFileSaverMobileExport.h"
#include "tests/support/TMobileWorld.h"

namespace kk {
namespace {

constexpr TGuid cSourceId = GuidLiteral("{11111111-2222-3333-4444-55555555AAAA}");
constexpr TGuid cCategoryId = GuidLiteral("{ABCDEF01-2222-3333-4444-555555555555}");

class MobileExchange : public testing::Test, public TFileWorld {
 protected:
  MobileExchange() { Integrations.Add(Source); }

  std::string Save() {
    const TString fileName = Folder.File(u"mobil.xml");
    TWatchlistFileSaverMobileExport::Save(fileName, Tree(), Integrations);
    return ReadFileBytes(fileName);
  }
  void Load(const std::string& iText) {
    TMemoryStream stream(iText);
    stream.SetPosition(iText.size());
    TWatchlistFileLoaderMobileImport().LoadFromStream(stream, Integrations, Loaded);
  }
  static std::string Document(const std::string& iInside, const std::string& iVersion = "1") {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<watchlist><version>" + iVersion +
           "</version>" + iInside + "</watchlist>";
  }
  static std::string Result(const std::string& iFields) {
    return "<searchresults><searchresult><pluginguid>" + ToUtf8(GUIDToString(cSourceId)) +
           "</pluginguid>" + iFields + "</searchresult></searchresults>";
  }
  TWatchlistItem& Placed(TWatchlistCategory& ioCategory, TStringView iName) {
    TWatchlistItem& item = AddItem(ioCategory, Source, iName);
    item.SetParentCategoryId(ioCategory.Id());
    return item;
  }

  TIntf<TMobileSource> Source = MakeIntf<TMobileSource>(u"Laden", cSourceId);
  TLstWatchlistCategory Loaded{true};
};

TEST(MobileGuid, IsInLowerCaseWithoutBraces) {
  EXPECT_EQ(GuidToStringEx(cCategoryId), u"abcdef01-2222-3333-4444-555555555555");
  EXPECT_EQ(GuidToStringEx(cEmptyGuid), u"00000000-0000-0000-0000-000000000000");
}

TEST(MobileGuid, IsReadInAnyCaseAndWithBlanksAround) {
  EXPECT_EQ(StringToGUIDEx(u" abcdef01-2222-3333-4444-555555555555\n"), cCategoryId);
  EXPECT_EQ(StringToGUIDEx(u"00000000-0000-0000-0000-000000000000"), cEmptyGuid);
  EXPECT_EQ(StringToGUIDEx(u" "), cEmptyGuid);
  EXPECT_EQ(StringToGUIDEx(u""), cEmptyGuid);
  EXPECT_THROW(StringToGUIDEx(u"ab"), EConvertError);
}

TEST_F(MobileExchange, WritesCategoriesSideBySideAndResultsInTheOpen) {
  TWatchlistCategory& a = AddCategory(Tree(), u"A", cCategoryId);
  TWatchlistCategory& b = AddCategory(a.LstCategory(), u"B", cEmptyGuid);
  Placed(b, u"Säge & Co");
  EXPECT_EQ(Save(),
            "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
            "<watchlist>\r\n"
            "  <version>1</version>\r\n"
            "  <categories>\r\n"
            "    <category>\r\n"
            "      <guid>abcdef01-2222-3333-4444-555555555555</guid>\r\n"
            "      <name>A</name>\r\n"
            "    </category>\r\n"
            "    <category>\r\n"
            "      <guid>00000000-0000-0000-0000-000000000000</guid>\r\n"
            "      <name>B</name>\r\n"
            "    </category>\r\n"
            "  </categories>\r\n"
            "  <searchresults>\r\n"
            "    <searchresult>\r\n"
            "      <pluginguid>{11111111-2222-3333-4444-55555555AAAA}</pluginguid>\r\n"
            "      <categoryguid>00000000-0000-0000-0000-000000000000</categoryguid>\r\n"
            "      <Name>Säge &amp; Co</Name>\r\n"
            "    </searchresult>\r\n"
            "  </searchresults>\r\n"
            "</watchlist>\r\n");
}

TEST_F(MobileExchange, ASourceWithoutMobileSupportLeavesItsCategoriesAlone) {
  Placed(AddCategory(Tree(), u"A"), u"Säge");
  Source->Supports = false;
  const std::string text = Save();
  EXPECT_NE(text.find("<name>A</name>"), std::string::npos);
  EXPECT_EQ(text.find("<searchresult>"), std::string::npos);
}

TEST_F(MobileExchange, AnItemWithAStaleCategoryStaysOut) {
  AddItem(AddCategory(Tree(), u"A"), Source, u"Säge").SetParentCategoryId(NewGuid());
  EXPECT_EQ(Save().find("Säge"), std::string::npos);
}

TEST_F(MobileExchange, AnElementThatASourceLeavesOpenIsNoDocument) {
  Placed(AddCategory(Tree(), u"A"), u"Säge");
  Source->EndsElements = false;
  EXPECT_THROW(Save(), Exception);
}

TEST_F(MobileExchange, LinesWithoutANameAreNoElements) {
  Placed(AddCategory(Tree(), u"A"), u"Säge");
  Source->MoreLines = {u"ohne", u"=namenlos", u"gut=a=b"};
  const std::string text = Save();
  EXPECT_EQ(text.find("ohne"), std::string::npos);
  EXPECT_EQ(text.find("namenlos"), std::string::npos);
  EXPECT_NE(text.find("<gut>a=b</gut>"), std::string::npos);
}

TEST_F(MobileExchange, WhatIsWrittenComesBackFlat) {
  TWatchlistCategory& a = AddCategory(Tree(), u"A");
  TWatchlistCategory& b = AddCategory(a.LstCategory(), u"B");
  a.SetExpanded(true);
  a.Description().Add(u"bleibt hier");
  Placed(b, u"Säge");
  Load(Save());
  EXPECT_EQ(Outline(Loaded), "A\nB\n  [Laden]\n    Säge\n<Keiner Kategorie zugewiesen>\n");
  EXPECT_EQ(Loaded.GetItems(0).Id(), a.Id());
  EXPECT_FALSE(Loaded.GetItems(0).Expanded());
  EXPECT_EQ(Loaded.GetItems(0).Description().GetCount(), 0);
}

TEST_F(MobileExchange, TheOffersDateStandsForTheLastRefresh) {
  Load(Document(Result("<name>Uhr</name><offerdateutc>2026-11-20 18:30:05</offerdateutc>")));
  const TWatchlistItem& item = Loaded.GetItems(0).LstPlugin().GetItems(0).LstItem().GetItems(0);
  EXPECT_EQ(FormatDateTime(u"yyyy-mm-dd hh:nn:ss", item.LastUpdateDate()), u"2026-11-20 18:30:05");
  EXPECT_EQ(item.SearchResultId(), item.SearchResult()->GetId());
}

TEST_F(MobileExchange, ADateThatIsNoneCountsAsNever) {
  Load(Document(Result("<name>Uhr</name><offerdateutc>gestern</offerdateutc>")));
  const TWatchlistItem& item = Loaded.GetItems(0).LstPlugin().GetItems(0).LstItem().GetItems(0);
  EXPECT_TRUE(item.LastUpdateDate().IsZero());
}

TEST_F(MobileExchange, WithoutCategoriesAllFallsIntoTheCatchAll) {
  Load(
      Document(Result("<name>Uhr</name><categoryguid>abcdef01-2222-3333-4444-555555555555"
                      "</categoryguid>")));
  EXPECT_EQ(Outline(Loaded), "<Keiner Kategorie zugewiesen>\n  [Laden]\n    Uhr\n");
}

TEST_F(MobileExchange, TheSourceGetsNamesInLowerCaseAndNoEmptyValues) {
  Load(Document(Result("<NAME>Uhr</NAME><Leer/><Preis>1</Preis><preis>2</preis>")));
  EXPECT_EQ(Source->LastFields, (std::vector<TString>{u"pluginguid=" + GUIDToString(cSourceId),
                                                      u"name=Uhr", u"preis=2"}));
}

TEST_F(MobileExchange, AnElementOfAnUnknownSourceIsPassedOver) {
  Load(
      Document("<searchresults><searchresult><pluginguid>fremd</pluginguid></searchresult>"
               "</searchresults>"));
  EXPECT_EQ(Outline(Loaded), "<Keiner Kategorie zugewiesen>\n");
}

TEST_F(MobileExchange, AnElementWithoutAResultIsPassedOver) {
  Load(Document(Result("<Preis>1</Preis>")));
  EXPECT_EQ(Outline(Loaded), "<Keiner Kategorie zugewiesen>\n");
}

TEST_F(MobileExchange, OtherVersionsLoadNothingQuietly) {
  for (const char* version : {"", "0", "2", "eins"}) {
    Load(Document("<categories><category><name>A</name></category></categories>", version));
    EXPECT_EQ(Loaded.GetCount(), 0) << version;
  }
  Load("");
  EXPECT_EQ(Loaded.GetCount(), 0);
  EXPECT_TRUE(Log.Lines().empty());
}

TEST_F(MobileExchange, WhatIsNoXMLOrHasAnIdThatIsNoneIsAFailure) {
  EXPECT_THROW(Load("kein XML"), EConvertError);
  EXPECT_THROW(Load(Document("<categories><category><guid>ab</guid></category></categories>")),
               EConvertError);
}

TEST_F(MobileExchange, OneCategoryIdTwiceTakesTheFirst) {
  const std::string id = "<guid>abcdef01-2222-3333-4444-555555555555</guid>";
  Load(Document("<categories><category>" + id + "<name>A</name></category><category>" + id +
                "<name>B</name></category></categories>" +
                Result("<name>Uhr</name><categoryguid>ABCDEF01-2222-3333-4444-555555555555"
                       "</categoryguid>")));
  EXPECT_EQ(Outline(Loaded), "A\n  [Laden]\n    Uhr\nB\n<Keiner Kategorie zugewiesen>\n");
}

}  // namespace
}  // namespace kk
