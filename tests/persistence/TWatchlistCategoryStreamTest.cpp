#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TFileWorld.h"
#include "host/base/Exception.h"
#include "persistence/TWatchlistCategoryLoader.h"
#include "persistence/TWatchlistCategorySaver.h"

namespace kk {
namespace {

constexpr TGuid cFirst = GuidLiteral("{00000000-0000-0000-0000-0000000000A1}");
constexpr TGuid cSecond = GuidLiteral("{00000000-0000-0000-0000-0000000000B2}");

std::string Saved(const TLstWatchlistCategory& iTree) {
  TMemoryStream stream;
  TWatchlistCategorySaver::SaveToStream(stream, iTree);
  return stream.Bytes();
}

void Load(const std::string& iText, TLstWatchlistCategory& ioTree, bool iDecodeUTF8 = false) {
  TMemoryStream stream(iText);
  TWatchlistCategoryLoader::LoadFromStream(stream, ioTree, iDecodeUTF8);
}

std::string Nested(int iDepth) {
  const std::string begin = "<Category><Id>{00000000-0000-0000-0000-0000000000A1}</Id><Categories>";
  std::string text = "<CategoryRoot>";
  for (int i = 0; i < iDepth; ++i) text += begin;
  for (int i = 0; i < iDepth; ++i) text += "</Categories></Category>";
  return text + "</CategoryRoot>";
}

TEST(TWatchlistCategorySaver, WritesTheElementsInTheirOrderAndNesting) {
  TLstWatchlistCategory tree(true);
  TWatchlistCategory& first = AddCategory(tree, u"Bücher", cFirst);
  first.SetDescription({u"a", u"b"});
  first.SetExpanded(true);
  AddCategory(first.LstCategory(), u"Kind", cSecond);
  AddCategory(tree, u"Musik", cEmptyGuid);
  EXPECT_EQ(Saved(tree),
            "\xEF\xBB\xBF<CategoryRoot>\r\n"
            "  <Category>\r\n"
            "    <Id>{00000000-0000-0000-0000-0000000000A1}</Id>\r\n"
            "    <Name>Bücher</Name>\r\n"
            "    <Description>a|b</Description>\r\n"
            "    <Expanded>1</Expanded>\r\n"
            "    <Categories>\r\n"
            "      <Category>\r\n"
            "        <Id>{00000000-0000-0000-0000-0000000000B2}</Id>\r\n"
            "        <Name>Kind</Name>\r\n"
            "        <Description></Description>\r\n"
            "      </Category>\r\n"
            "    </Categories>\r\n"
            "  </Category>\r\n"
            "  <Category>\r\n"
            "    <Id>{00000000-0000-0000-0000-000000000000}</Id>\r\n"
            "    <Name>Musik</Name>\r\n"
            "    <Description></Description>\r\n"
            "  </Category>\r\n"
            "</CategoryRoot>\r\n");
}

TEST(TWatchlistCategorySaver, AnEmptyListWritesNothingAtAll) {
  EXPECT_EQ(Saved(TLstWatchlistCategory(true)), "");
}

TEST(TWatchlistCategoryLoader, ReadsBackWhatTheSaverWrote) {
  TLstWatchlistCategory tree(true);
  TWatchlistCategory& first = AddCategory(tree, u"Bücher", cFirst);
  first.SetDescription({u"eins", u"", u" drei "});
  first.SetExpanded(true);
  AddCategory(first.LstCategory(), u"Kind", cSecond);
  AddCategory(tree, u"Musik");

  TLstWatchlistCategory loaded(true);
  Load(Saved(tree), loaded);
  EXPECT_EQ(Outline(loaded), "Bücher\n  Kind\nMusik\n");
  EXPECT_EQ(loaded.GetItems(0).Id(), cFirst);
  EXPECT_TRUE(loaded.GetItems(0).Expanded());
  EXPECT_EQ(loaded.GetItems(0).Description().Lines(),
            (std::vector<TString>{u"eins", u"", u" drei "}));
  EXPECT_EQ(loaded.GetItems(0).LstCategory().GetItems(0).Id(), cSecond);
  EXPECT_FALSE(loaded.GetItems(1).Expanded());
  EXPECT_EQ(loaded.GetItems(1).Description().GetCount(), 0);
}

TEST(TWatchlistCategoryLoader, ALineWithTheSeparatorComesBackAsTwo) {
  TLstWatchlistCategory tree(true);
  AddCategory(tree, u"A").SetDescription({u"links|rechts"});
  TLstWatchlistCategory loaded(true);
  Load(Saved(tree), loaded);
  EXPECT_EQ(loaded.GetItems(0).Description().Lines(), (std::vector<TString>{u"links", u"rechts"}));
}

TEST(TWatchlistCategoryLoader, TakesEveryElementAsACategoryWhateverItsName) {
  TLstWatchlistCategory tree(true);
  Load(
      "<Irgendwas><X><Id>{00000000-0000-0000-0000-0000000000A1}</Id><Name>A</Name>"
      "<Categories><Y><Id>{00000000-0000-0000-0000-0000000000B2}</Id><Name>B</Name></Y>"
      "</Categories></X></Irgendwas>",
      tree);
  EXPECT_EQ(Outline(tree), "A\n  B\n");
}

TEST(TWatchlistCategoryLoader, ReadsMissingElementsAsEmpty) {
  TLstWatchlistCategory tree(true);
  Load(
      "<CategoryRoot><Category><Id>{00000000-0000-0000-0000-0000000000a1}</Id></Category>"
      "</CategoryRoot>",
      tree);
  ASSERT_EQ(tree.GetCount(), 1);
  const TWatchlistCategory& category = tree.GetItems(0);
  EXPECT_EQ(category.Id(), cFirst);
  EXPECT_EQ(category.Name(), u"");
  EXPECT_EQ(category.Description().GetCount(), 0);
  EXPECT_FALSE(category.Expanded());
  EXPECT_EQ(category.LstCategory().GetCount(), 0);
}

TEST(TWatchlistCategoryLoader, ACategoryWithoutAValidIdEndsTheReadingAndLeavesWhatCameBefore) {
  for (const char* damaged : {"<Category/>", "<Category><Id>{12}</Id></Category>"}) {
    TLstWatchlistCategory tree(true);
    const std::string text =
        "<CategoryRoot><Category><Id>{00000000-0000-0000-0000-0000000000A1}</Id>"
        "<Name>A</Name></Category>" +
        std::string(damaged) +
        "<Category><Id>{00000000-0000-0000-0000-0000000000B2}</Id></Category></CategoryRoot>";
    EXPECT_THROW(Load(text, tree), EConvertError);
    EXPECT_EQ(Outline(tree), "A\n");
  }
}

TEST(TWatchlistCategoryLoader, ADamagedChildTakesItsParentAlong) {
  TLstWatchlistCategory tree(true);
  EXPECT_THROW(Load("<CategoryRoot><Category><Id>{00000000-0000-0000-0000-0000000000A1}</Id>"
                    "<Categories><Category/></Categories></Category></CategoryRoot>",
                    tree),
               EConvertError);
  EXPECT_EQ(tree.GetCount(), 0);
}

TEST(TWatchlistCategoryLoader, AStreamThatIsNoXmlFails) {
  TLstWatchlistCategory tree(true);
  EXPECT_THROW(Load("Das ist kein XML", tree), EConvertError);
}

TEST(TWatchlistCategoryLoader, AnEmptyStreamHasNoCategories) {
  TLstWatchlistCategory tree(true);
  Load("", tree);
  EXPECT_EQ(tree.GetCount(), 0);
}

TEST(TWatchlistCategoryLoader, ReadsTheDeepestTreeThatTheModelAllows) {
  TLstWatchlistCategory tree(true);
  Load(Nested(TWatchlistCategory::cMaxDepth), tree);
  int depth = 0;
  for (const TLstWatchlistCategory* level = &tree; level->GetCount() > 0;
       level = &level->GetItems(0).LstCategory()) {
    ++depth;
  }
  EXPECT_EQ(depth, TWatchlistCategory::cMaxDepth);
  // And it can be written and read again.
  TLstWatchlistCategory again(true);
  Load(Saved(tree), again);
  EXPECT_EQ(Outline(again), Outline(tree));
}

TEST(TWatchlistCategoryLoader, ATreeThatIsTooDeepFailsWithAClearMessage) {
  TLstWatchlistCategory tree(true);
  try {
    Load(Nested(TWatchlistCategory::cMaxDepth + 1), tree);
    FAIL() << "no failure";
  } catch (const Exception& e) {
    EXPECT_EQ(ToUtf8(e.Message()), "Die Kategorien sind tiefer als 500 Ebenen verschachtelt.");
  }
  EXPECT_EQ(tree.GetCount(), 0);
}

TEST(TWatchlistCategoryLoader, AHundredThousandNestedCategoriesAreAFailureAndNoCrash) {
  TLstWatchlistCategory tree(true);
  EXPECT_THROW(Load(Nested(100'000), tree), Exception);
  EXPECT_EQ(tree.GetCount(), 0);
}

TEST(TWatchlistCategoryLoader, TheFlagMakesBytesCountAsUtf8WhateverTheDeclarationSays) {
  const std::string text =
      "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><CategoryRoot><Category>"
      "<Id>{00000000-0000-0000-0000-0000000000A1}</Id><Name>Bücher</Name></Category>"
      "</CategoryRoot>";
  TLstWatchlistCategory decoded(true);
  Load(text, decoded, true);
  EXPECT_EQ(decoded.GetItems(0).Name(), u"Bücher");
  TLstWatchlistCategory plain(true);
  Load(text, plain, false);
  EXPECT_EQ(plain.GetItems(0).Name(), u"BÃ¼cher");
}

}  // namespace
}  // namespace kk
