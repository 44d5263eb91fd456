#include <gmock/gmock.h>

#include "THostileImportTest.h"
#include "host/common/TSimpleXMLDocument.h"
#include "tests/support/TMobileWorld.h"

// Documents of the telephone's program that are damaged or made to harm, imported into a list that
// somebody needs: whatever becomes of the import, what was there stays, and it ends.
namespace kk {
namespace {

class HostileMobileImport : public THostileImportTest {
 protected:
  HostileMobileImport() { Handler()->LstIntegration().Add(Mobile); }

  static std::string Document(const std::string& iCategories, const std::string& iResults = {}) {
    return "<watchlist><version>1</version><categories>" + iCategories +
           "</categories><searchresults>" + iResults + "</searchresults></watchlist>";
  }
  std::string Result(const std::string& iFields) const {
    return "<searchresult><pluginguid>" + ToUtf8(GUIDToString(Mobile->GetId())) + "</pluginguid>" +
           iFields + "</searchresult>";
  }
  static std::string In(const std::string& iGuid) {
    return "<categoryguid>" + iGuid + "</categoryguid>";
  }
  static std::string CategoryXml(const std::string& iGuid, const std::string& iName) {
    return "<category><guid>" + iGuid + "</guid><name>" + iName + "</name></category>";
  }
  static std::string Id(int iNumber) {
    const std::string digits = std::to_string(iNumber);
    return "00000000-0000-0000-0001-" + std::string(12 - digits.size(), '0') + digits;
  }
  static std::string Repeated(const std::string& iText, int iCount) {
    std::string text;
    for (int i = 0; i < iCount; ++i) text += iText;
    return text;
  }

  TIntf<TMobileSource> Mobile = MakeIntf<TMobileSource>(u"Telefon");
  const std::string Guid = "abcdef01-2222-3333-4444-555555555555";
};

TEST_F(HostileMobileImport, CutOffAtAnyByteImportsNothing) {
  const std::string whole =
      Document(CategoryXml(Guid, "Regal"), Result("<name>Lampe</name>" + In(Guid)));
  for (size_t size = 0; size < whole.size(); ++size) {
    EXPECT_FALSE(ImportMobile(whole.substr(0, size))) << size;
  }
  EXPECT_EQ(Outline(), Live);
  EXPECT_EQ(Closing.Messages.size(), whole.size());
  EXPECT_EQ(Closing.Messages[0], u"Der Text ist kein lesbares XML: Er ist leer");
}

TEST_F(HostileMobileImport, WithAnyBitFlippedWhatIsThereStays) {
  const std::string whole =
      Document(CategoryXml(Guid, "Regal"),
               Result("<name>Lampe</name><offerdateutc>2026-11-20 18:30:05</offerdateutc>"));
  for (size_t bit = 0; bit < whole.size() * 8; ++bit) {
    std::string bytes = whole;
    bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << (bit % 8)));
    ImportMobile(bytes);
  }
}

TEST_F(HostileMobileImport, AnotherVersionImportsNothingAndSaysNothing) {
  for (const char* version : {"", "0", "2", "-1", "1.0", "eins", "99999999999999999999"}) {
    std::string text =
        Document(CategoryXml(Guid, "Regal"), Result("<name>Lampe</name>" + In(Guid)));
    text.replace(text.find("<version>1"), 10, std::string("<version>") + version);
    EXPECT_TRUE(ImportMobile(text)) << version;
  }
  EXPECT_EQ(Outline(), Live);
  EXPECT_TRUE(Closing.Messages.empty());
}

TEST_F(HostileMobileImport, AHundredThousandNestedElementsAreRefused) {
  constexpr int cCount = 100'000;
  for (const std::string name : {"category", "searchresult", "x"}) {
    const std::string open = Repeated("<" + name + ">", cCount);
    const std::string text = open + Repeated("</" + name + ">", cCount);
    EXPECT_FALSE(ImportMobile(open));
    EXPECT_FALSE(ImportMobile(text));
    EXPECT_FALSE(ImportMobile(Document(open)));
    EXPECT_FALSE(ImportMobile(Document(text)));
    EXPECT_FALSE(ImportMobile(Document({}, text)));
  }
  EXPECT_EQ(Outline(), Live);
  EXPECT_THAT(Closing.Messages, testing::Contains(u"Der Text ist kein lesbares XML: Die Elemente "
                                                  u"sind zu tief verschachtelt"));
}

TEST_F(HostileMobileImport, CategoriesInCategoriesAreNotSeen) {
  EXPECT_TRUE(ImportMobile(Document(
      "<category><guid>" + Guid + "</guid><name>Regal</name><categories>" +
      CategoryXml(Id(1), "Brett") + "</categories>" + CategoryXml(Id(2), "Fach") + "</category>")));
  EXPECT_EQ(Outline(), Live + " Regal");
}

TEST_F(HostileMobileImport, ManyCategoriesWithoutAnIdComeInInNoTime) {
  constexpr int cCount = 20'000;
  std::string categories;
  std::string results;
  for (int i = 0; i < cCount; ++i) {
    categories += CategoryXml("", "Nummer " + std::to_string(i));
    if (i % 200 == 0) results += Result("<name>Lampe " + std::to_string(i) + "</name>");
  }
  EXPECT_TRUE(ImportMobile(Document(categories, results)));
  EXPECT_EQ(Tree().GetCount(), cCount + 2);
  EXPECT_EQ(Unassigned().GetItemCount(true), 1 + cCount / 200);
}

TEST_F(HostileMobileImport, ManyResultsBehindManyCategoriesWithOneIdComeInInNoTime) {
  constexpr int cCount = 20'000;
  std::string categories;
  std::string results;
  for (int i = 0; i < cCount; ++i) categories += CategoryXml(Id(i), "Eigen " + std::to_string(i));
  for (int i = 0; i < cCount; ++i) {
    categories += CategoryXml(Guid, "Gleich " + std::to_string(i));
    if (i % 20 == 0) results += Result("<name>Lampe " + std::to_string(i) + "</name>" + In(Guid));
  }
  EXPECT_TRUE(ImportMobile(Document(categories, results)));
  EXPECT_EQ(Tree().GetCount(), 2 * cCount + 2);
  EXPECT_EQ(Tree().FindCategoryByName(u"Gleich 0")->GetItemCount(true), cCount / 20);
}

TEST_F(HostileMobileImport, MoreThanADocumentMayHoldIsRefusedBeforeItIsRead) {
  std::string text = "<watchlist><version>1</version><categories>";
  text.append(static_cast<size_t>(TSimpleXMLDocument::cMaxMarks), '<');
  EXPECT_FALSE(ImportMobile(text));
  EXPECT_THAT(Closing.Messages,
              testing::ElementsAre(u"Der Text ist kein lesbares XML: Der Text ist zu groß"));
}

TEST_F(HostileMobileImport, EntitiesThatGrowStayAsTheyStand) {
  std::string bomb = "<!DOCTYPE watchlist [<!ENTITY a0 \"Lampe\">";
  for (int i = 1; i <= 9; ++i) {
    const std::string below = "&a" + std::to_string(i - 1) + ";";
    bomb += "<!ENTITY a" + std::to_string(i) + " \"" + Repeated(below, 10) + "\">";
  }
  EXPECT_TRUE(ImportMobile(bomb + "<!ENTITY f SYSTEM \"file:///etc/passwd\">]>" +
                           Document(CategoryXml(Guid, "&a9;&f;"))));
  EXPECT_EQ(Outline(), Live + " &a9;&f;");
}

TEST_F(HostileMobileImport, NamesOfAMegabyteComeInWhole) {
  const std::string name(1 << 20, 'n');
  EXPECT_TRUE(ImportMobile(
      Document(CategoryXml(Guid, name), Result("<name>" + name + "</name>" + In(Guid)))));
  const TWatchlistCategory* category = Tree().FindCategoryByName(FromUtf8(name));
  ASSERT_NE(category, nullptr);
  const TLstWatchlistItem& items = category->LstPlugin().FindById(Mobile->GetId())->LstItem();
  ASSERT_EQ(items.GetCount(), 1);
  EXPECT_EQ(items.GetItems(0).GetName(), FromUtf8(name));
}

TEST_F(HostileMobileImport, ElementNamesOfAMegabyteReachTheSource) {
  const std::string name(1 << 20, 'N');
  EXPECT_TRUE(
      ImportMobile(Document({}, Result("<name>Lampe</name><" + name + ">1</" + name + ">"))));
  EXPECT_EQ(Mobile->LastFields.back(), TString(name.size(), u'n') + u"=1");
}

TEST_F(HostileMobileImport, AResultOfManyFieldsComesInInNoTime) {
  std::string fields = "<name>Lampe</name>";
  for (int i = 0; i < 50'000; ++i) {
    const std::string name = "f" + std::to_string(i);
    fields += "<" + name + ">1</" + name + "><gleich>" + name + "</gleich>";
  }
  EXPECT_TRUE(ImportMobile(Document({}, Result(fields))));
  EXPECT_EQ(Mobile->LastFields.size(), 50'003u);
}

TEST_F(HostileMobileImport, DatesOutsideOfAllCalendarsCountAsNever) {
  std::string results;
  for (const char* date : {"0000-01-01 00:00:00", "99999-01-01 00:00:00", "2026-02-30 00:00:00",
                           "2026-01-01 24:00:00", "2026-01-01", "-001-01-01 00:00:00"}) {
    results +=
        Result(std::string("<name>") + date + "</name><offerdateutc>" + date + "</offerdateutc>");
  }
  EXPECT_TRUE(ImportMobile(Document({}, results)));
  const TLstWatchlistItem& items = Unassigned().LstPlugin().FindById(Mobile->GetId())->LstItem();
  ASSERT_EQ(items.GetCount(), 6);
  for (const TWatchlistItem* item : items) {
    EXPECT_TRUE(item->LastUpdateDate().IsZero()) << ToUtf8(item->GetName());
  }
}

TEST_F(HostileMobileImport, AnIdThatIsNoneImportsNothing) {
  EXPECT_FALSE(ImportMobile(Document(CategoryXml(Guid, "Regal") + CategoryXml("ab", "Brett"))));
  EXPECT_FALSE(ImportMobile(Document(CategoryXml("{" + Guid + "}", "Regal"))));
  EXPECT_FALSE(
      ImportMobile(Document(CategoryXml(Guid, "Regal"), Result("<name>Lampe</name>" + In("ab")))));
  EXPECT_EQ(Outline(), Live);
  EXPECT_EQ(Closing.Messages.size(), 3u);
}

TEST_F(HostileMobileImport, ResultsOfAnUnknownSourceStayOut) {
  EXPECT_TRUE(ImportMobile(
      Document(CategoryXml(Guid, "Regal"), "<searchresult><pluginguid>fremd</pluginguid>" +
                                               In("ab") + "</searchresult><searchresult/>" +
                                               Result("<name>Lampe</name>" + In(Guid)))));
  EXPECT_EQ(Outline(), Live + " Regal(Telefon: Lampe)");
  EXPECT_TRUE(Closing.Messages.empty());
}

TEST_F(HostileMobileImport, OfCategoriesWithOneIdTheLastTellsWhereTheItemsGo) {
  // The first is new, the second is there: each name is translated, and the later line stays.
  EXPECT_TRUE(ImportMobile(Document(CategoryXml(Guid, "Regal") + CategoryXml(Guid, "Küche"),
                                    Result("<name>Lampe</name>" + In(Guid)))));
  EXPECT_EQ(Outline(),
            "<Keiner Kategorie zugewiesen>(Auktion: Uhr) Küche(Laden: Sieb; Telefon: Lampe) Regal");
}

TEST_F(HostileMobileImport, AResultWhoseCategoryIsNotInTheDocumentEndsItWithAMessage) {
  // The catch-all category takes the item in, but its stored category stays what it was.
  EXPECT_FALSE(ImportMobile(Document(
      CategoryXml(Guid, "Regal"),
      Result("<name>Lampe</name>" + In(Guid)) + Result("<name>Sessel</name>" + In(Id(7))))));
  EXPECT_EQ(Closing.Messages.size(), 1u);
  // What was taken over by then stays.
  EXPECT_EQ(Outline(), Live + " Regal(Telefon: Lampe)");
}

TEST_F(HostileMobileImport, AnArticleTwiceComesInOnce) {
  EXPECT_TRUE(
      ImportMobile(Document(CategoryXml(Guid, "Regal"), Result("<name>Lampe</name>" + In(Guid)) +
                                                            Result("<name>Lampe</name>"))));
  EXPECT_EQ(Outline(), Live + " Regal(Telefon: Lampe)");
}

TEST_F(HostileMobileImport, AnythingElseThatIsXMLHoldsNothing) {
  for (const char* text : {"<x/>", "<watchlist/>", "<watchlist><version/></watchlist>",
                           "<html><body>1</body></html>", "<version>1</version>"}) {
    EXPECT_TRUE(ImportMobile(text)) << text;
  }
  EXPECT_TRUE(ImportMobile("<watchlist><version>1</version></watchlist>"));
  EXPECT_TRUE(ImportMobile(Document({})));
  EXPECT_EQ(Outline(), Live);
  EXPECT_TRUE(Closing.Messages.empty());
}

}  // namespace
}  // namespace kk
