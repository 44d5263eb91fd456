#include "views/explorerbar/TExplorerBarGroupCategoryDetails.h"

#include "TExplorerBarWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string cEdit = "> Kategorie bearbeiten... [EXPLORERBANDBARICO_EDIT]";
const std::string cUpdate = "> Kategorie aktualisieren [EXPLORERBANDBARICO_REFRESH]";

class TCategoryGroupTest : public TExplorerBarTest {
 protected:
  // What stands behind "Beschreibung:"; empty if that isn't to be seen.
  TLines DescriptionOf(std::initializer_list<TString> iLines) {
    Books.SetDescription(TStringList(iLines));
    Bar->SetSelectedCategory(&Books, false);
    TLines lines = Lines(CategoryGroup());
    const auto title = std::find(lines.begin(), lines.end(), "\"Beschreibung:\"");
    return {title == lines.end() ? title : title + 1, lines.end()};
  }

  TWatchlistCategory& Books = Category(u"Bücher");
};

TEST_F(TCategoryGroupTest, ShowsTheSelectedCategory) {
  Item(Books, Auction, u"Faust");
  Item(Category(u"Dramen", &Books), Shop, u"Emilia");
  Books.Description().Add(u"Alles von früher");
  Bar->SetSelectedCategory(&Books, true);
  EXPECT_THAT(Lines(CategoryGroup()),
              ElementsAre(cEdit, cUpdate, "---", "Kategorie: Bücher", "Anzahl Einträge: 2",
                          "\"Beschreibung:\"", "\"Alles von früher\""));
  EXPECT_EQ(CategoryGroup().Items().back()->GetWordWrap(), true);
}

TEST_F(TCategoryGroupTest, WithoutACategoryAllIsHidden) {
  Books.Description().Add(u"Alles von früher");
  Bar->SetSelectedCategory(&Books, true);
  Bar->SetSelectedCategory(nullptr, true);
  EXPECT_THAT(Lines(CategoryGroup()), IsEmpty());
  EXPECT_EQ(Bar->GetCurrentCategory(), nullptr);
  TLines visible;
  for (const auto& item : CategoryGroup().Items()) {
    if (item->GetVisible()) visible.push_back(LineOf(*item));
  }
  EXPECT_THAT(visible, ElementsAre("---")) << "the line itself is never hidden";
}

TEST_F(TCategoryGroupTest, AnEmptyCategoryShowsADash) {
  Bar->SetSelectedCategory(&Books, true);
  EXPECT_TRUE(Shows(CategoryGroup(), "Anzahl Einträge: -"));
}

TEST_F(TCategoryGroupTest, TheUnassignedCategoryCantBeEdited) {
  TWatchlistCategory& unassigned = Category(u"<Keiner Kategorie zugewiesen>");
  unassigned.SetId(cEmptyGuid);
  Bar->SetSelectedCategory(&unassigned, true);
  EXPECT_THAT(Lines(CategoryGroup()),
              ElementsAre(cUpdate, "---", "Kategorie: <Keiner Kategorie zugewiesen>",
                          "Anzahl Einträge: -"));
}

TEST_F(TCategoryGroupTest, WhatCantBeUpdatedHasNoLinkForIt) {
  Bar->SetSelectedCategory(&Books, false);
  EXPECT_FALSE(Shows(CategoryGroup(), cUpdate));
  EXPECT_TRUE(Shows(CategoryGroup(), cEdit));
  Bar->SetSelectedCategory(&Books, true);
  EXPECT_TRUE(Shows(CategoryGroup(), cUpdate));
}

TEST_F(TCategoryGroupTest, UpToThreeLinesOfADescriptionStayWhole) {
  EXPECT_THAT(DescriptionOf({u"eins"}), ElementsAre("\"eins\""));
  EXPECT_THAT(DescriptionOf({u"eins", u"zwei", u"drei"}), ElementsAre("\"eins\r\nzwei\r\ndrei\""));
}

// Looks like a mistake and is required.
TEST_F(TCategoryGroupTest, OfFourLinesAndMoreOnlyTwoAreLeft) {
  EXPECT_THAT(DescriptionOf({u"eins", u"zwei", u"drei", u"vier"}),
              ElementsAre("\"eins\r\nzwei\r\n...\""));
  EXPECT_THAT(DescriptionOf({u"1", u"2", u"3", u"4", u"5", u"6"}),
              ElementsAre("\"1\r\n2\r\n...\""));
}

TEST_F(TCategoryGroupTest, BlanksAroundADescriptionAreLeftOut) {
  EXPECT_THAT(DescriptionOf({u"", u"  eins ", u"zwei\t", u""}), ElementsAre("\"eins \r\n...\""));
  EXPECT_THAT(DescriptionOf({u"", u"  eins ", u" "}), ElementsAre("\"eins\""));
  EXPECT_THAT(DescriptionOf({u"", u" ", u"", u"", u"eins"}), ElementsAre("\"...\""));
}

TEST_F(TCategoryGroupTest, ADescriptionOfBlanksShowsNothing) {
  EXPECT_THAT(DescriptionOf({}), IsEmpty());
  EXPECT_THAT(DescriptionOf({u" ", u"\t", u"", u" ", u""}), IsEmpty());
  EXPECT_THAT(DescriptionOf({u"eins"}), ElementsAre("\"eins\""));
  EXPECT_THAT(DescriptionOf({}), IsEmpty());
}

TEST_F(TCategoryGroupTest, ARepaintThatChangesNothingTellsTheSkinNothing) {
  TWatchlistCategory& unassigned = Category(u"Rest");
  unassigned.SetId(cEmptyGuid);
  Books.SetDescription({u"eins", u"zwei", u"drei", u"vier"});
  Item(Books, Auction, u"Faust");
  for (TWatchlistCategory* category :
       {&Books, &unassigned, static_cast<TWatchlistCategory*>(nullptr)}) {
    for (const bool canUpdate : {false, true}) {
      Bar->SetSelectedCategory(category, canUpdate);
      Skin.Take();
      Bar->SetSelectedCategory(category, canUpdate);
      EXPECT_EQ(Skin.Take(), TChanges());
    }
  }
  const TChanges once{{"TExplorerBarGroupCategoryDetails", 1}};
  Bar->SetSelectedCategory(&Books, true);
  EXPECT_EQ(Skin.Take(), once);
  Books.SetName(u"Alte Bücher");
  Item(Books, Auction, u"Emilia");
  Bar->SetSelectedCategory(&Books, true);
  EXPECT_EQ(Skin.Take(), once);
  EXPECT_TRUE(Shows(CategoryGroup(), "Kategorie: Alte Bücher"));
  EXPECT_TRUE(Shows(CategoryGroup(), "Anzahl Einträge: 2"));
}

}  // namespace
}  // namespace kk
