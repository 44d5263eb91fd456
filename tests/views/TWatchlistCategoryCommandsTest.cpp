#include "views/TWatchlistCategoryCommands.h"

#include "TSectionWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char cUnassigned[] =
    "Das geht nicht mit der Kategorie \"<Keiner Kategorie zugewiesen>\".";
constexpr char16_t cDeleteEmpty[] = u"Soll die markierte Kategorie wirklich gelöscht werden?";
constexpr char16_t cDeleteFull[] =
    u"Es sind noch untergeordnete Daten vorhanden.\r\n"
    u"Soll die markierte Kategorie wirklich gelöscht werden?";

class TWatchlistCategoryCommandsTest : public testing::Test, public TSectionWorld {
 protected:
  TWatchlistCategoryCommands& Commands() { return Recorded->Categories; }
};

TEST_F(TWatchlistCategoryCommandsTest, NewCategoryStandsAtTheEndOfItsPlace) {
  TWatchlistCategory& books = Category(u"Bücher");
  const TWatchlistCategory& top =
      Commands().AddCategory(nullptr, u"Uhren", {u"Zeile 1", u"Zeile 2"});
  const TWatchlistCategory& child = Commands().AddCategory(&books, u"Romane", {});
  EXPECT_EQ(top.List(), &Tree());
  EXPECT_EQ(&Tree().GetItems(Tree().GetCount() - 1), &top);
  EXPECT_EQ(child.List(), &books.LstCategory());
  EXPECT_EQ(top.Description().GetCount(), 2);
  EXPECT_FALSE(SameGuid(top.Id(), cEmptyGuid));
  EXPECT_FALSE(SameGuid(top.Id(), child.Id()));
  EXPECT_THAT(View.Calls, ElementsAre("Add Uhren", "Add Romane"));
}

TEST_F(TWatchlistCategoryCommandsTest, ProposalCountsUp) {
  EXPECT_EQ(Commands().ProposeName(), u"Neu 1");
  Category(u"neu 2", &Category(u"Neu 1"));
  EXPECT_EQ(Commands().ProposeName(), u"Neu 3");
}

TEST_F(TWatchlistCategoryCommandsTest, CancelledDialogLeavesNoTrace) {
  EXPECT_EQ(Commands().ProposeName(), Commands().ProposeName());
}

TEST_F(TWatchlistCategoryCommandsTest, ProposalPassesUnchanged) {
  EXPECT_EQ(Commands().AddCategory(nullptr, u"Neu 1", {}).Name(), u"Neu 1");
}

TEST_F(TWatchlistCategoryCommandsTest, NameAtTheTopLevelIsTaken) {
  Category(u"Neu");
  TWatchlistCategory& books = Category(u"Bücher");
  const std::string taken =
      "Der angegebene Kategoriename (neu) existiert bereits!\r\n"
      "Bitte geben sie einen anderen Namen an.";
  EXPECT_EQ(Refusal([&] { Commands().AddCategory(nullptr, u"neu", {}); }), taken);
  EXPECT_EQ(Refusal([&] { Commands().AddCategory(&books, u"neu", {}); }), taken);
  EXPECT_EQ(Refusal([&] { Commands().RenameCategory(books, u"neu"); }), taken);
  EXPECT_EQ(books.Name(), u"Bücher");
  EXPECT_EQ(books.LstCategory().GetCount(), 0);
  EXPECT_THAT(View.Calls, IsEmpty());
}

TEST_F(TWatchlistCategoryCommandsTest, NameInAChildCategoryIsFree) {
  TWatchlistCategory& books = Category(u"Bücher");
  Category(u"Romane", &books);
  EXPECT_EQ(Commands().AddCategory(&books, u"Romane", {}).Name(), u"Romane");
  EXPECT_EQ(Commands().AddCategory(nullptr, u"Romane", {}).Name(), u"Romane");
}

TEST_F(TWatchlistCategoryCommandsTest, ChangeOfCaseAloneIsRefusedAtTheTopLevel) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistCategory& child = Category(u"Romane", &books);
  EXPECT_NE(Refusal([&] { Commands().RenameCategory(books, u"BÜCHER"); }), "nothing raised");
  Commands().RenameCategory(child, u"ROMANE");
  EXPECT_EQ(child.Name(), u"ROMANE");
}

TEST_F(TWatchlistCategoryCommandsTest, UnchangedNameIsNotChecked) {
  TWatchlistCategory& books = Category(u"Bücher");
  Category(u"Bücher");
  Commands().RenameCategory(books, u"Bücher");
  EXPECT_THAT(View.Calls, ElementsAre("Changed Bücher"));
}

TEST_F(TWatchlistCategoryCommandsTest, BlankNameIsRefusedAndOuterBlanksAreKept) {
  TWatchlistCategory& books = Category(u"Bücher");
  EXPECT_EQ(Refusal([&] { Commands().RenameCategory(books, u""); }),
            "Bitte geben Sie einen Namen an.");
  EXPECT_EQ(Refusal([&] { Commands().AddCategory(nullptr, u"  ", {}); }),
            "Bitte geben Sie einen Namen an.");
  Commands().RenameCategory(books, u"  Bücher ");
  EXPECT_EQ(books.Name(), u"  Bücher ");
}

TEST_F(TWatchlistCategoryCommandsTest, RenameAndDescribeMarkNoSource) {
  TWatchlistCategory& books = Category(u"Bücher");
  Item(books, Auction, u"Faust");
  Commands().RenameCategory(books, u"Schriften");
  Commands().DescribeCategory(books, {u"alt", u"neu"});
  EXPECT_EQ(books.Description().Lines(), (std::vector<TString>{u"alt", u"neu"}));
  EXPECT_EQ(Flags(Auction), "-");
  EXPECT_THAT(View.Calls, ElementsAre("Changed Schriften", "Changed Schriften"));
}

TEST_F(TWatchlistCategoryCommandsTest, UnassignedCategoryIsLeftAlone) {
  TWatchlistCategory& unassigned = Unassigned();
  TWatchlistCategory& books = Category(u"Bücher");
  EXPECT_EQ(Refusal([&] { Commands().AddCategory(&unassigned, u"Romane", {}); }), cUnassigned);
  EXPECT_EQ(Refusal([&] { Commands().RenameCategory(unassigned, u"Rest"); }), cUnassigned);
  EXPECT_EQ(Refusal([&] { Commands().DescribeCategory(unassigned, {}); }), cUnassigned);
  EXPECT_EQ(Refusal([&] { Commands().DeleteCategory(unassigned); }), cUnassigned);
  EXPECT_EQ(Refusal([&] { Commands().DoMoveCategory(&books, unassigned); }), cUnassigned);
  EXPECT_EQ(Refusal([&] { Commands().DoMoveCategory(&unassigned, books); }), cUnassigned);
  EXPECT_TRUE(Commands().IsUnassigned(unassigned));
  EXPECT_FALSE(Commands().IsUnassigned(books));
  EXPECT_THAT(View.Calls, IsEmpty());
}

TEST_F(TWatchlistCategoryCommandsTest, MovedCategoryTakesItsSubtreeAlong) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistCategory& novels = Category(u"Romane", &books);
  TWatchlistItem& item = Item(novels, Auction, u"Faust");
  TWatchlistCategory& clocks = Category(u"Uhren");
  Category(u"Wecker", &clocks);
  Commands().DoMoveCategory(&clocks, books);
  EXPECT_EQ(Tree().IndexOf(&books), -1);
  EXPECT_EQ(clocks.LstCategory().IndexOf(&books), 1);
  EXPECT_EQ(item.ParentCategoryId(), novels.Id());
  EXPECT_EQ(Tree().FindItemById(item.SearchResultId()), &item);
  EXPECT_EQ(Flags(Auction), "-");
  Commands().DoMoveCategory(nullptr, novels);
  EXPECT_EQ(Tree().IndexOf(&novels), Tree().GetCount() - 1);
  EXPECT_THAT(View.Calls, ElementsAre("Move Bücher to Uhren", "Move Romane to top level"));
}

TEST_F(TWatchlistCategoryCommandsTest, CategoryIsNeverMovedIntoItselfOrItsSubtree) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistCategory& novels = Category(u"Romane", &books);
  TWatchlistCategory& crime = Category(u"Krimis", &novels);
  Commands().DoMoveCategory(&books, books);
  const std::string refused =
      "Eine Kategorie kann nicht in sich selbst oder eine ihrer Unterkategorien verschoben werden.";
  EXPECT_EQ(Refusal([&] { Commands().DoMoveCategory(&novels, books); }), refused);
  EXPECT_EQ(Refusal([&] { Commands().DoMoveCategory(&crime, books); }), refused);
  EXPECT_EQ(books.List(), &Tree());
  EXPECT_THAT(View.Calls, IsEmpty());
  EXPECT_TRUE(Commands().IsInSubtree(crime, books));
  EXPECT_FALSE(Commands().IsInSubtree(books, crime));
}

TEST_F(TWatchlistCategoryCommandsTest, MoveToItsOwnParentPutsTheCategoryLast) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistCategory& novels = Category(u"Romane", &books);
  Category(u"Lyrik", &books);
  Commands().DoMoveCategory(&books, novels);
  EXPECT_EQ(books.LstCategory().IndexOf(&novels), 1);
}

TEST_F(TWatchlistCategoryCommandsTest, NestingIsBounded) {
  TWatchlistCategory* deepest = nullptr;
  for (int depth = 1; depth <= TWatchlistCategory::cMaxDepth; ++depth) {
    deepest = &Category(u"Tiefe", deepest);
  }
  const std::string refused = "Kategorien können höchstens 500 Ebenen tief verschachtelt werden.";
  EXPECT_EQ(Refusal([&] { Commands().AddCategory(deepest, u"Noch tiefer", {}); }), refused);
  TWatchlistCategory& books = Category(u"Bücher");
  EXPECT_EQ(Refusal([&] { Commands().DoMoveCategory(deepest, books); }), refused);
  EXPECT_EQ(books.List(), &Tree());

  TWatchlistCategory* above = deepest->List()->Parent();
  EXPECT_EQ(above->LstCategory().GetCount(), 1);
  Commands().DoMoveCategory(above, books);
  EXPECT_EQ(above->LstCategory().GetCount(), 2);
  TWatchlistCategory& tall = Category(u"Hoch");
  Category(u"Kind", &tall);
  EXPECT_EQ(Refusal([&] { Commands().DoMoveCategory(above, tall); }), refused);
}

TEST_F(TWatchlistCategoryCommandsTest, EmptyCategoryIsDeletedAfterAQuestion) {
  TWatchlistCategory& books = Category(u"Bücher");
  User.Expect<TfrmKKCommonMessageDlg>([](TfrmKKCommonMessageDlg& form) {
    EXPECT_EQ(form.lblText.Caption(), cDeleteEmpty);
    EXPECT_EQ(form.btnYes.Caption(), u"&Ja, löschen");
    EXPECT_EQ(form.btnYes.Description(), u"Alle Einträge werden gelöscht.");
    EXPECT_EQ(form.btnNo.Caption(), u"&Nein, abbrechen");
    EXPECT_EQ(form.btnNo.Description(), u"Der Vorgang wird abgebrochen.");
    EXPECT_EQ(form.Owner(), nullptr);
    form.btnNo.Click();
  });
  EXPECT_FALSE(Commands().DeleteCategory(books));
  EXPECT_EQ(Tree().IndexOf(&books), 1);
  User.ExpectQuestion(cDeleteEmpty, true);
  EXPECT_TRUE(Commands().DeleteCategory(books));
  EXPECT_EQ(Tree().GetCount(), 1);
  EXPECT_THAT(View.Calls, ElementsAre("Delete Bücher"));
}

TEST_F(TWatchlistCategoryCommandsTest, CategoryWithContentsIsDeletedWithItsReminders) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistCategory& novels = Category(u"Romane", &books);
  const TGuid faust = Item(books, Auction, u"Faust").SearchResultId();
  TWatchlistItem& emma = Item(novels, Shop, u"Emma");
  const TGuid emmaId = emma.SearchResultId();
  TWatchlistItem& other = Item(Unassigned(), Auction, u"Wecker");
  Remind(*Tree().FindItemById(faust));
  Remind(emma, u"E1");
  Remind(other);
  User.ExpectQuestion(cDeleteFull, true);
  EXPECT_TRUE(Commands().DeleteCategory(books));
  EXPECT_EQ(Tree().FindItemById(faust), nullptr);
  EXPECT_FALSE(HasReminder(faust));
  EXPECT_FALSE(HasReminder(emmaId));
  EXPECT_TRUE(HasReminder(other.SearchResultId()));
  EXPECT_THAT(Calendar.Calls, IsEmpty());  // the appointment stays
  EXPECT_THAT(Log.Lines(), testing::Not(testing::Contains(testing::HasSubstr("Erinnerung"))));
}

TEST_F(TWatchlistCategoryCommandsTest, CategoryWithAnEmptyChildCountsAsFull) {
  TWatchlistCategory& books = Category(u"Bücher");
  Category(u"Romane", &books);
  User.ExpectQuestion(cDeleteFull, false);
  EXPECT_FALSE(Commands().DeleteCategory(books));
}

TEST_F(TWatchlistCategoryCommandsTest, DeleteMarksEverySourceThatHasAnItemAnywhere) {
  TWatchlistCategory& books = Category(u"Bücher");
  Item(Unassigned(), Shop, u"Wecker");
  Group(Unassigned(), Auction);  // without items
  User.ExpectQuestion(cDeleteEmpty, true);
  Commands().DeleteCategory(books);
  EXPECT_EQ(Flags(Shop), "RI");
  EXPECT_EQ(Flags(Auction), "-");
}

TEST_F(TWatchlistCategoryCommandsTest, DeleteSurvivesASourceThatIsNotRegistered) {
  TWatchlistCategory& books = Category(u"Bücher");
  Item(books, MakeIntf<TFakeSource>(u"Fremd"), u"Faust");
  User.ExpectQuestion(cDeleteFull, true);
  EXPECT_TRUE(Commands().DeleteCategory(books));
  EXPECT_EQ(Tree().GetCount(), 1);
}

TEST_F(TWatchlistCategoryCommandsTest, CategoryThatWentDuringTheQuestionIsNoLongerDeleted) {
  TWatchlistCategory& books = Category(u"Bücher");
  User.Expect<TfrmKKCommonMessageDlg>([&](TfrmKKCommonMessageDlg& form) {
    Tree().DeleteCategory(books);
    form.btnYes.Click();
  });
  EXPECT_FALSE(Commands().DeleteCategory(books));
  EXPECT_THAT(View.Calls, IsEmpty());
}

}  // namespace
}  // namespace kk
