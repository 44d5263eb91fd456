#include "views/menus/TSubMenuBuilderCategory.h"

#include <gtest/gtest.h>

#include "MenuLines.h"
#include "tests/support/TTestMainLoop.h"
#include "tests/support/TTestModelRoot.h"

namespace kk {
namespace {

class TSubMenuBuilderCategoryTest : public testing::Test {
 protected:
  TWatchlistCategory& Category(TStringView iName, TWatchlistCategory* iParent = nullptr) {
    auto category = std::make_unique<TWatchlistCategory>();
    category->SetName(iName);
    category->SetId(NewGuid());
    return (iParent != nullptr ? iParent->LstCategory() : Tree()).Add(std::move(category));
  }
  TLstWatchlistCategory& Tree() { return Root.RootCategories(); }
  TLines Build() {
    TSubMenuBuilderCategory::BuildCategoryMenu(Tree(), Menu, OnClick(), true);
    return MenuLines(Menu);
  }
  TLines BuildForMove(TWatchlistCategory& iCategory) {
    TSubMenuBuilderCategory::BuildCategoryMenuForCategory(Tree(), Menu, OnClick(), &iCategory,
                                                          true);
    return MenuLines(Menu);
  }
  std::string HintOf(std::initializer_list<TString> iLines) {
    Tree().Clear();
    Category(u"A").SetDescription(TStringList(iLines));
    Build();
    return ToUtf8(Menu.GetItems(0).Hint());
  }
  TNotifyEvent OnClick() { return TNotifyEvent::Of<&TSubMenuBuilderCategoryTest::DoClick>(this); }
  void DoClick(TObject* Sender) { Clicked = dynamic_cast<TMenuItem*>(Sender); }

  TTestMainLoop Loop;
  TTestModelRoot Root;
  TMenuItem Menu{u"Verschieben nach ..."};
  TMenuItem* Clicked = nullptr;
};

TEST_F(TSubMenuBuilderCategoryTest, ACategoryWithoutSubCategoriesIsAPlainEntry) {
  TWatchlistCategory& books = Category(u"Bücher");
  EXPECT_EQ(Build(), (TLines{"Bücher"}));
  EXPECT_EQ(Menu.GetItems(0).Tag(), &books);
  EXPECT_TRUE(Menu.GetItems(0).Click());
  EXPECT_EQ(Clicked, &Menu.GetItems(0));
}

TEST_F(TSubMenuBuilderCategoryTest, ASubMenuStartsWithTheCategoryItselfAndHasSortedChildren) {
  TWatchlistCategory& books = Category(u"Bücher");
  books.SetDescription({u"Zum Lesen"});
  Category(u"Romane", &books);
  Category(u"comics", &books);
  Category(u"Atlanten", &books);
  EXPECT_EQ(Build(), (TLines{"Bücher", "  Bücher", "  -", "  Atlanten", "  comics", "  Romane"}));
  TMenuItem& itself = Menu.GetItems(0).GetItems(0);
  EXPECT_EQ(itself.Tag(), &books);
  EXPECT_EQ(itself.Hint(), u"Zum Lesen");
  EXPECT_FALSE(Menu.GetItems(0).Click());
  EXPECT_TRUE(itself.Click());
  EXPECT_EQ(Clicked, &itself);
}

TEST_F(TSubMenuBuilderCategoryTest, ACategoryThatIsCalledLikeALineIsATargetAllTheSame) {
  TWatchlistCategory& dash = Category(u"-");
  Build();
  EXPECT_FALSE(Menu.GetItems(0).IsSeparator());
  EXPECT_TRUE(Menu.GetItems(0).Click());
  EXPECT_EQ(Clicked->Tag(), &dash);
}

TEST_F(TSubMenuBuilderCategoryTest, SortsEachLevelWithoutRegardToCase) {
  TWatchlistCategory& b = Category(u"b");
  Category(u"C");
  Category(u"A");
  Category(u"z", &b);
  Category(u"Y", &Category(u"x", &b));
  EXPECT_EQ(Build(),
            (TLines{"A", "b", "  b", "  -", "  x", "    x", "    -", "    Y", "  z", "C"}));
}

TEST_F(TSubMenuBuilderCategoryTest, EqualNamesKeepTheOrderOfTheList) {
  std::vector<TWatchlistCategory*> categories;
  for (int i = 0; i < 50; ++i) categories.push_back(&Category(i % 2 == 0 ? u"abc" : u"ABC"));
  Build();
  for (int i = 0; i < 50; ++i) {
    EXPECT_EQ(Menu.GetItems(i).Tag(), categories[static_cast<size_t>(i)]) << i;
  }
}

TEST_F(TSubMenuBuilderCategoryTest, TheCategoryOfUnassignedItemsIsATargetForItems) {
  Category(u"<Keiner Kategorie zugewiesen>").SetId(cEmptyGuid);
  Category(u"Bücher");
  EXPECT_EQ(Build(), (TLines{"<Keiner Kategorie zugewiesen>", "Bücher"}));
}

TEST_F(TSubMenuBuilderCategoryTest, ACategoryThatMovesCanGoToTheTopLevel) {
  Category(u"Uhren");
  EXPECT_EQ(BuildForMove(Category(u"Bücher")), (TLines{"oberste Ebene", "-", "Uhren"}));
  EXPECT_EQ(Menu.GetItems(0).Tag(), nullptr);
  EXPECT_TRUE(Menu.GetItems(0).Click());
  EXPECT_EQ(Clicked, &Menu.GetItems(0));
}

TEST_F(TSubMenuBuilderCategoryTest, ACategoryThatMovesIsNoTargetNorIsWhatLiesBelowIt) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistCategory& novels = Category(u"Romane", &books);
  Category(u"Krimis", &novels);
  EXPECT_EQ(BuildForMove(novels), (TLines{"oberste Ebene", "-", "Bücher"}));
  Category(u"Atlanten", &books);
  EXPECT_EQ(BuildForMove(novels),
            (TLines{"oberste Ebene", "-", "Bücher", "  Bücher", "  -", "  Atlanten"}));
}

TEST_F(TSubMenuBuilderCategoryTest, TheCategoryOfUnassignedItemsIsNoTargetForACategory) {
  TWatchlistCategory& unassigned = Category(u"<Keiner Kategorie zugewiesen>");
  unassigned.SetId(cEmptyGuid);
  Category(u"darunter", &unassigned);
  EXPECT_EQ(BuildForMove(Category(u"Bücher")), (TLines{"oberste Ebene", "-"}));
}

TEST_F(TSubMenuBuilderCategoryTest, AnEmptyListGivesAnEmptyMenuWithoutTheTopLevel) {
  TWatchlistCategory moving;
  Menu.Add(u"von früher");
  EXPECT_EQ(BuildForMove(moving), TLines{});
}

TEST_F(TSubMenuBuilderCategoryTest, BuildsAnew) {
  Category(u"Bücher");
  Build();
  EXPECT_EQ(Build(), (TLines{"Bücher"}));
}

TEST_F(TSubMenuBuilderCategoryTest, AppendsBehindWhatIsThereBelowTheRoot) {
  Category(u"Bücher");
  Menu.Add(u"schon da");
  TSubMenuBuilderCategory::BuildCategoryMenu(Tree(), Menu, OnClick(), false);
  EXPECT_EQ(MenuLines(Menu), (TLines{"schon da", "Verschieben nach ...", "-", "Bücher"}));
}

TEST_F(TSubMenuBuilderCategoryTest, TheTargetOfAnEntryCanGoWhileTheMenuStandsOpen) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistCategory& novels = Category(u"Romane", &books);
  Build();
  const TMenuItem& entry = Menu.GetItems(0).GetItems(2);
  EXPECT_TRUE(TSubMenuBuilderCategory::HasTarget(Tree(), entry));
  Tree().DeleteCategory(novels);
  EXPECT_FALSE(TSubMenuBuilderCategory::HasTarget(Tree(), entry));
  EXPECT_TRUE(TSubMenuBuilderCategory::HasTarget(Tree(), Menu.GetItems(0)));
  EXPECT_TRUE(TSubMenuBuilderCategory::HasTarget(Tree(), Menu)) << "the top level is always there";
}

TEST_F(TSubMenuBuilderCategoryTest, ACategoryWithoutADescriptionHasNoHint) {
  EXPECT_EQ(HintOf({}), "");
}

TEST_F(TSubMenuBuilderCategoryTest, AHintOf30CharactersStaysWhole) {
  const TString line(30, u'x');
  EXPECT_EQ(HintOf({line}), ToUtf8(line));
}

TEST_F(TSubMenuBuilderCategoryTest, AHintOf31CharactersIsCutTo27) {
  EXPECT_EQ(HintOf({TString(31, u'x')}), std::string(27, 'x') + "...");
}

TEST_F(TSubMenuBuilderCategoryTest, FurtherLinesAreToldByDots) {
  EXPECT_EQ(HintOf({u"kurz!", u"und mehr"}), "kurz!...");
  EXPECT_EQ(HintOf({u"", u"und mehr"}), "...");
  EXPECT_EQ(HintOf({TString(28, u'x'), u""}), std::string(27, 'x') + "...");
}

TEST_F(TSubMenuBuilderCategoryTest, AHintDoesNotEndInHalfACharacter) {
  EXPECT_EQ(HintOf({TString(26, u'x') + u"\U0001F600" + TString(5, u'y')}),
            std::string(26, 'x') + "...");
  EXPECT_EQ(HintOf({TString(25, u'x') + u"\U0001F600" + TString(5, u'y')}),
            std::string(25, 'x') + "\U0001F600...");
}

}  // namespace
}  // namespace kk
