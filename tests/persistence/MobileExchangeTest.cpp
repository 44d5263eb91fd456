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
  EXPECT_THROW(StringToGUIDEx(u"{abcdef01-2222-3333-4444-555555555555}"), EConvertError);
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

TEST_F(MobileExchange, WhatStandsInTheBracketsPlaysNoPart) {
  Placed(AddCategory(Tree(), u"A"), u"Säge");
  Source->MoreLines = {u"[/", u"[", u"[/]", u"[[=", u"[/=", u"[ /searchresult]"};
  const std::string text = Save();
  int begun = 0;
  for (size_t at = 0; (at = text.find("<searchresult>", at)) != std::string::npos; ++at) ++begun;
  EXPECT_EQ(begun, 4);
  Load(text);
  EXPECT_EQ(Outline(Loaded), "A\n  [Laden]\n    Säge\n<Keiner Kategorie zugewiesen>\n");
}

TEST_F(MobileExchange, AnElementThatASourceEndsButDidNotBeginIsNoDocument) {
  Placed(AddCategory(Tree(), u"A"), u"Säge");
  Source->MoreLines = {u"[/", u"[/"};
  EXPECT_THROW(Save(), Exception);
}

TEST_F(MobileExchange, WhereASourceFailsTheFileThatWasThereStays) {
  Folder.Write(u"mobil.xml", "alt");
  Placed(AddCategory(Tree(), u"A"), u"Säge");
  Source->EndsElements = false;
  EXPECT_THROW(Save(), Exception);
  EXPECT_EQ(Folder.Read(u"mobil.xml"), "alt");
  EXPECT_EQ(Folder.Names(), std::vector<std::string>{"mobil.xml"});
}

TEST_F(MobileExchange, LinesWithoutANameAreNoElements) {
  Placed(AddCategory(Tree(), u"A"), u"Säge");
  Source->MoreLines = {u"ohne", u"=namenlos", u"gut=a=b"};
  const std::string text = Save();
  EXPECT_EQ(text.find("ohne"), std::string::npos);
  EXPECT_EQ(text.find("namenlos"), std::string::npos);
  EXPECT_NE(text.find("<gut>a=b</gut>"), std::string::npos);
  ASSERT_EQ(Log.Lines().size(), 1u);
  EXPECT_TRUE(Log.Lines()[0].ends_with("kann: \"ohne\", \"\" (zusammen 2)")) << Log.Lines()[0];
}

TEST_F(MobileExchange, AFieldWhoseNameIsNoElementsStaysOutAloneAndTheLogSaysSo) {
  TWatchlistCategory& a = AddCategory(Tree(), u"A");
  Placed(a, u"Säge");
  Placed(a, u"Beil");
  Source->MoreLines = {u"2. Preis=1", u"Farbe & Form=rot", u"Größe=2", u"2. Preis=", u"", u" \t"};
  Load(Save());
  EXPECT_EQ(Outline(Loaded), "A\n  [Laden]\n    Säge\n    Beil\n<Keiner Kategorie zugewiesen>\n");
  EXPECT_EQ(Source->LastFields.back(), u"größe=2");
  EXPECT_EQ(
      Log.Lines(),
      std::vector<std::string>{
          "error WatchlistHandler: Angaben der Quelle Laden fehlen im Dokument für Kaufkobolde "
          "Mobile, weil sie keinen Namen haben, der dort stehen kann: \"2. Preis\", \"Farbe & "
          "Form\" "
          "(zusammen 4)"});
}

TEST_F(MobileExchange, TheLogNamesAFewOfVeryManySuchFields) {
  Placed(AddCategory(Tree(), u"A"), u"Säge");
  for (int i = 0; i < 1000; ++i) Source->MoreLines.push_back(IntToStr(i) + u"=1");
  Source->MoreLines.push_back(TString(1'000'000, u' ') + u"a\r\n" + TString(1'000'000, u'<') +
                              u"=1");
  std::swap(Source->MoreLines.front(), Source->MoreLines.back());
  Save();
  ASSERT_EQ(Log.Lines().size(), 1u);
  EXPECT_LT(Log.Lines()[0].size(), 500u);
  EXPECT_EQ(Log.Lines()[0].find_first_of("\r\n"), std::string::npos);
  EXPECT_TRUE(Log.Lines()[0].ends_with("<…\", \"1\", \"2\", \"3\", \"4\" … (zusammen 1001)"))
      << Log.Lines()[0];
}

TEST_F(MobileExchange, EachSourceIsToldOfItsOwnFieldsAlone) {
  const auto other = MakeIntf<TMobileSource>(u"Markt", NewGuid());
  Integrations.Add(other);
  TWatchlistCategory& a = AddCategory(Tree(), u"A");
  Placed(a, u"Säge");
  AddItem(a, other, u"Beil");
  Source->MoreLines = {u"1=1"};
  Save();
  EXPECT_EQ(Log.Lines().size(), 1u);
  other->MoreLines = {u"2=1"};
  Log.Clear();
  Save();
  ASSERT_EQ(Log.Lines().size(), 2u);
  EXPECT_TRUE(Log.Lines()[1].ends_with("kann: \"2\" (zusammen 1)")) << Log.Lines()[1];
}

TEST_F(MobileExchange, NamesOfElementsAreThoseOfXML) {
  Placed(AddCategory(Tree(), u"A"), u"Säge");
  const auto isWritten = [&](TStringView iName) {
    Source->MoreLines = {TString(iName) + u"=1"};
    return Save().find("</" + ToUtf8(Trim(iName)) + ">") != std::string::npos;
  };
  for (const TStringView name :
       {u"a",      u"_",       u"Z9",      u"a-b.c",   u" a ",     u"\tpreis\t",
        u"\u00C0", u"\u00F8",  u"\u02FF",  u"\u0370",  u"\u200C",  u"\u2070",
        u"\u218F", u"\u2C00",  u"\u3001",  u"\uD7FF",  u"\uF900",  u"\uFDF0",
        u"\uFFFD", u"a\u00B7", u"a\u0300", u"a\u036F", u"a\u203F", u"a\u2040"}) {
    EXPECT_TRUE(isWritten(name)) << ToUtf8(name);
  }
  EXPECT_TRUE(Log.Lines().empty());
  for (const TStringView name :
       {u"9", u"-a", u".a", u"a b", u"a:b", u"a/", u"a\u00D7", u"\u00F7", u"a\u037E", u"\u00B7",
        u"\u0300", u"a\u2000", u"a\u2041", u"a\u2190", u"a\u3000", u"a\uFFFE", u"a\uFDD0", u"a😀"}) {
    EXPECT_FALSE(isWritten(name)) << ToUtf8(name);
  }
}

TEST_F(MobileExchange, ACategoryWithoutANameHasTheElementAllTheSame) {
  AddCategory(Tree(), u"");
  EXPECT_NE(Save().find("<name></name>"), std::string::npos);
}

TEST_F(MobileExchange, AnItemWithoutAResultStaysOut) {
  TWatchlistCategory& a = AddCategory(Tree(), u"A");
  Placed(a, u"Säge");
  TWatchlistItem& lost =
      a.LstPlugin().GetItems(0).LstItem().Add(std::make_unique<TWatchlistItem>());
  lost.SetParentCategoryId(a.Id());
  TWatchlistCategory& b = AddCategory(Tree(), u"B");
  TWatchlistItem& other =
      b.LstPlugin().FindOrAdd(Source).LstItem().Add(std::make_unique<TWatchlistItem>());
  other.SetParentCategoryId(b.Id());
  Load(Save());
  EXPECT_EQ(Outline(Loaded), "A\n  [Laden]\n    Säge\nB\n<Keiner Kategorie zugewiesen>\n");
}

TEST_F(MobileExchange, ResultsStandBySourceAndThenInTheOrderOfTheTree) {
  const auto other = MakeIntf<TMobileSource>(u"Markt", NewGuid());
  Integrations.Add(other);
  TWatchlistCategory& a = AddCategory(Tree(), u"A");
  AddItem(a, other, u"1 zuletzt");
  TWatchlistCategory& below = AddCategory(a.LstCategory(), u"B");
  Placed(below, u"2");
  Placed(AddCategory(Tree(), u"C"), u"3");
  // One that hangs in another category than the one it names is told with the latter.
  AddItem(below, Source, u"4").SetParentCategoryId(a.Id());
  std::vector<std::string> names;
  const std::string text = Save();
  for (size_t at = 0; (at = text.find("<Name>", at)) != std::string::npos; ++at) {
    names.push_back(text.substr(at + 6, text.find('<', at + 6) - at - 6));
  }
  EXPECT_EQ(names, (std::vector<std::string>{"4", "2", "3", "1 zuletzt"}));
}

TEST_F(MobileExchange, TheFirstSourceThatKnowsThePluginGuidGetsTheResult) {
  const auto other = MakeIntf<TMobileSource>(u"Markt", cSourceId);
  Integrations.Add(other);
  Load(Document(Result("<name>Uhr</name>")));
  EXPECT_EQ(Outline(Loaded), "<Keiner Kategorie zugewiesen>\n  [Laden]\n    Uhr\n");
  EXPECT_TRUE(other->LastFields.empty());
}

TEST_F(MobileExchange, OnlySearchresultsAreResultsButAnyElementIsACategory) {
  std::string text = Document("<categories><etwas><name>A</name></etwas></categories>" +
                              Result("<name>Uhr</name>"));
  Load(text);
  EXPECT_EQ(Outline(Loaded), "A\n  [Laden]\n    Uhr\n");
  for (size_t at = 0; (at = text.find("searchresult>", at)) != std::string::npos; ++at) {
    text.replace(at, 13, "etwas>");
  }
  Load(text);
  EXPECT_EQ(Outline(Loaded), "A\n");
}

TEST_F(MobileExchange, WhatIsInTheListIsTakenOutWithoutFreeingIt) {
  TLstWatchlistCategory borrowed(false);
  borrowed.Add(AddCategory(Tree(), u"bleibt"));
  TMemoryStream stream(Document({}, "2"));
  TWatchlistFileLoaderMobileImport().LoadFromStream(stream, Integrations, borrowed);
  EXPECT_EQ(borrowed.GetCount(), 0);
  EXPECT_EQ(Outline(Tree()), "bleibt\n");
}

TEST_F(MobileExchange, TheCatchAllOfTheDocumentIsTheOneThatCounts) {
  Load(
      Document("<categories><category><guid>00000000-0000-0000-0000-000000000000</guid><name>Rest"
               "</name></category></categories>" +
               Result("<name>Uhr</name>")));
  EXPECT_EQ(Outline(Loaded), "Rest\n  [Laden]\n    Uhr\n");
}

// Where each result went through all categories, it would take the square of them.
TEST_F(MobileExchange, ManyResultsBehindManyCategoriesWithOneIdAreReadInNoTime) {
  constexpr int cCount = 50'000;
  const std::string id = "abcdef01-2222-3333-4444-555555555555";
  std::string categories;
  for (int i = 0; i < cCount; ++i) {
    categories += "<category><guid>" + ToUtf8(GuidToStringEx(NewGuid())) + "</guid></category>";
  }
  for (int i = 0; i < cCount; ++i) categories += "<category><guid>" + id + "</guid></category>";
  std::string text = "<categories>" + categories + "</categories><searchresults>";
  const std::string result = "<searchresult><pluginguid>" + ToUtf8(GUIDToString(cSourceId)) +
                             "</pluginguid><name>Uhr</name><categoryguid>" + id +
                             "</categoryguid></searchresult>";
  for (int i = 0; i < cCount; ++i) text += result;
  Load(Document(text + "</searchresults>"));
  EXPECT_EQ(Loaded.GetItems(cCount).GetItemCount(true), cCount);
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
  Load(Document(Result("<name>Uhr</name><offerdateutc>\n2026-11-20 18:30:05 </offerdateutc>")));
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
  EXPECT_TRUE(Log.Lines().empty());
}

TEST_F(MobileExchange, WhatIsNoXMLOrHasAnIdThatIsNoneIsAFailure) {
  for (const char* text : {"kein XML", "", " \r\n", "\xEF\xBB\xBF"}) {
    EXPECT_THROW(Load(text), EConvertError) << text;
  }
  EXPECT_THROW(Load(Document("<categories><category><guid>ab</guid></category></categories>")),
               EConvertError);
}

TEST_F(MobileExchange, ItIsUTF8WhateverItsDeclarationSays) {
  for (const char* encoding : {"utf-8", "iso-8859-1", "utf-16", "nichts"}) {
    std::string text = Document("<categories><category><name>Säge</name></category></categories>");
    text.replace(text.find("utf-8"), 5, encoding);
    Load(text);
    EXPECT_EQ(Outline(Loaded), "Säge\n") << encoding;
    Loaded.Clear();  // a load only forgets what is in there
  }
  EXPECT_THROW(Load(std::string("\xFF\xFE<\0x\0/\0>\0", 10)), EConvertError);
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
