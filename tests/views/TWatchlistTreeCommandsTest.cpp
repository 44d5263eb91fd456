#include "views/TWatchlistTreeCommands.h"

#include "TShownSection.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char16_t cNew[] = u"Neue Kategorie...";
constexpr char16_t cAtLevel[] = u"auf dieser Ebene anlegen...";
constexpr char16_t cAtSubLevel[] = u"als Unterkategorie anlegen...";
constexpr char16_t cAtRoot[] = u"als Hauptkategorie anlegen...";
constexpr char16_t cEdit[] = u"Markierten Eintrag bearbeiten...";
constexpr char16_t cMove[] = u"Markierten Eintrag verschieben nach...";
constexpr char16_t cDelete[] = u"Markierten Eintrag löschen";
constexpr char16_t cUpdate[] = u"Markierten Eintrag aktualisieren";
constexpr char16_t cUpdateAll[] = u"Alles aktualisieren";
constexpr char16_t cDeleteOne[] = u"Soll der markierte Eintrag wirklich gelöscht werden?";
constexpr char cUnassignedLine[] = "<Keiner Kategorie zugewiesen>";

class TWatchlistTreeCommandsTest : public TShownSection {
 protected:
  TWatchlistTreeCommandsTest() { Show(); }

  TWatchlistCategory& Books = Category(u"Bücher");
  TWatchlistCategory& Novels = Category(u"Romane", &Books);
  TWatchlistCategory& Clocks = Category(u"Uhren");
  TWatchlistItem& Faust = Item(Novels, Auction, u"Faust");
  TWatchlistItem& Emma = Item(Novels, Auction, u"Emma");
  TWatchlistItem& Alarm = Item(Clocks, Shop, u"Wecker");
};

// New categories.

TEST_F(TWatchlistTreeCommandsTest, NewCategoryOnThisLevelIsASibling) {
  ExpectCategoryDialog(u"Lyrik");
  ASSERT_TRUE(ClickMenu(&Novels, {cNew, cAtLevel}));
  TWatchlistCategory& added = *Tree().FindCategoryByName(u"Lyrik");
  EXPECT_EQ(added.List()->Parent(), &Books);
  EXPECT_NE(added.Id(), cEmptyGuid);
  EXPECT_EQ(Selected(), &added);
  EXPECT_EQ(Nodes().FocusedNode(), NodeOf(added));
  EXPECT_THAT(Outline(),
              ElementsAre(cUnassignedLine, "Bücher", "  Lyrik", "  Romane", "    Auktion",
                          "      Emma", "      Faust", "Uhren", "  Laden", "    Wecker"));
}

TEST_F(TWatchlistTreeCommandsTest, NewCategoryOnTheTopLevelIsATopLevelOne) {
  ExpectCategoryDialog(u"Spiele");
  ASSERT_TRUE(ClickMenu(&Clocks, {cNew, cAtLevel}));
  EXPECT_EQ(Tree().FindCategoryByName(u"Spiele")->List(), &Tree());
}

TEST_F(TWatchlistTreeCommandsTest, NewSubCategoryStandsBelow) {
  ExpectCategoryDialog(u"Wecker");
  ASSERT_TRUE(ClickMenu(&Clocks, {cNew, cAtSubLevel}));
  EXPECT_EQ(Tree().FindCategoryByName(u"Wecker")->List()->Parent(), &Clocks);
  EXPECT_TRUE(Clocks.Expanded()) << "it is to be seen";
}

TEST_F(TWatchlistTreeCommandsTest, NewCategoryOnTheLevelOfAGroupIsAChildOfItsCategory) {
  ExpectCategoryDialog(u"Lyrik");
  ASSERT_TRUE(ClickMenu(&Group(Novels, Auction), {cNew, cAtLevel}));
  EXPECT_EQ(Tree().FindCategoryByName(u"Lyrik")->List()->Parent(), &Novels);
}

TEST_F(TWatchlistTreeCommandsTest, WithAnItemOnlyTheTopLevelGetsACategory) {
  EXPECT_FALSE(ClickMenu(&Faust, {cNew, cAtLevel}));
  EXPECT_FALSE(ClickMenu(&Faust, {cNew, cAtSubLevel}));
  // Also where the entries were still enabled.
  Pane().Menu.mntmAddCategoryAtLevel.SetEnabled(true);
  Pane().Menu.mntmAddCategoryAtSubLevel.SetEnabled(true);
  EXPECT_TRUE(Pane().Menu.mntmAddCategoryAtLevel.Click());
  EXPECT_TRUE(Pane().Menu.mntmAddCategoryAtSubLevel.Click());
  EXPECT_EQ(User.ShownCount(), 0);
  ExpectCategoryDialog(u"Spiele");
  ASSERT_TRUE(ClickMenu(&Faust, {cNew, cAtRoot}));
  EXPECT_EQ(Tree().FindCategoryByName(u"Spiele")->List(), &Tree());
}

TEST_F(TWatchlistTreeCommandsTest, UnassignedCategoryAndGroupsGetNoSubCategory) {
  TMenuItem& entry = Pane().Menu.mntmAddCategoryAtSubLevel;
  for (const TObject* object :
       std::initializer_list<const TObject*>{&Unassigned(), &Group(Clocks, Shop)}) {
    EXPECT_FALSE(ClickMenu(object, {cNew, cAtSubLevel}));
    entry.SetEnabled(true);
    EXPECT_TRUE(entry.Click());
  }
  EXPECT_EQ(User.ShownCount(), 0);
}

TEST_F(TWatchlistTreeCommandsTest, LevelOfAGroupOfTheUnassignedCategoryIsRefusedBeforeTheDialog) {
  Item(Unassigned(), Shop, u"Lampe");
  Form->BuildCategoriesTree(true);
  const TObject& group = Group(Unassigned(), Shop);
  EXPECT_EQ(Refusal([&] {
              ClickMenu(&group, {cNew, cAtLevel});
            }),
            "Das geht nicht mit der Kategorie \"<Keiner Kategorie zugewiesen>\".");
  EXPECT_EQ(User.ShownCount(), 0);
  EXPECT_EQ(Unassigned().LstCategory().GetCount(), 0);
}

TEST_F(TWatchlistTreeCommandsTest, WithNothingSelectedOnlyTheTopLevelGetsACategory) {
  Form->BuildCategoriesTree(false);
  EXPECT_FALSE(Pane().btnNewGroup.Click());
  Pane().Menu.mntmAddCategoryAtSubLevel.SetEnabled(true);
  EXPECT_TRUE(Pane().Menu.mntmAddCategoryAtSubLevel.Click());
  ExpectCategoryDialog(u"Spiele");
  EXPECT_TRUE(ClickMenu(nullptr, {cNew, cAtRoot}));
  ExpectCategoryDialog(u"Musik");
  Form->BuildCategoriesTree(false);
  Pane().Menu.mntmAddCategoryAtLevel.SetEnabled(true);
  EXPECT_TRUE(Pane().Menu.mntmAddCategoryAtLevel.Click());
  EXPECT_EQ(Tree().FindCategoryByName(u"Musik")->List(), &Tree());
}

TEST_F(TWatchlistTreeCommandsTest, DialogOfANewCategoryProposesAName) {
  Category(u"Neu 1", &Clocks);
  User.Expect<TfrmKKPluginWatchlistEditCategory>([this](TfrmKKPluginWatchlistEditCategory& form) {
    EXPECT_EQ(form.Caption(), u"Kategorie bearbeiten") << "not: anlegen";
    EXPECT_EQ(form.Owner(), Form.get());
    EXPECT_EQ(form.edtName.Text(), u"Neu 2");
    EXPECT_TRUE(form.rchedtDescription.Lines().GetCount() == 0);
    form.rchedtDescription.EnterText(u"Eins\r\nZwei");
    form.btnOK.Click();
  });
  ASSERT_TRUE(GoTo(Clocks) || Selected() == &Clocks);
  ASSERT_TRUE(Pane().btnNewGroup.Click());
  const TWatchlistCategory* added = Tree().FindCategoryByName(u"Neu 2");
  ASSERT_NE(added, nullptr);
  EXPECT_EQ(added->Description().GetCount(), 2);
}

TEST_F(TWatchlistTreeCommandsTest, CancelledCategoryLeavesNoTrace) {
  for (int i = 0; i < 2; ++i) {
    User.Expect<TfrmKKPluginWatchlistEditCategory>([](TfrmKKPluginWatchlistEditCategory& form) {
      EXPECT_EQ(form.edtName.Text(), u"Neu 1");
      form.btnCancel.Click();
    });
    ASSERT_TRUE(ClickMenu(&Clocks, {cNew, cAtRoot}));
  }
  EXPECT_EQ(Tree().GetCount(), 3);
  EXPECT_EQ(Selected(), &Clocks);
}

TEST_F(TWatchlistTreeCommandsTest, PlaceThatGoesWhileTheDialogStandsGetsNoCategory) {
  User.Expect<TfrmKKPluginWatchlistEditCategory>([this](TfrmKKPluginWatchlistEditCategory& form) {
    Tree().DeleteCategory(Clocks);
    Form->BuildCategoriesTree(true);
    form.btnOK.Click();
  });
  ASSERT_TRUE(ClickMenu(&Clocks, {cNew, cAtSubLevel}));
  EXPECT_EQ(Tree().GetCount(), 2);
}

// Editing.

TEST_F(TWatchlistTreeCommandsTest, CategoryIsEdited) {
  User.Expect<TfrmKKPluginWatchlistEditCategory>([](TfrmKKPluginWatchlistEditCategory& form) {
    EXPECT_EQ(form.edtName.Text(), u"Uhren");
    form.edtName.EnterText(u"Wecker");
    form.rchedtDescription.EnterText(u"Laut");
    form.btnOK.Click();
  });
  ASSERT_TRUE(ClickMenu(&Clocks, {cEdit}));
  EXPECT_EQ(Clocks.Name(), u"Wecker");
  EXPECT_EQ(Clocks.Description().Get(0), u"Laut");
  EXPECT_TRUE(BarShows(u"Wecker"));
  EXPECT_TRUE(BarShows(u"Laut"));
  EXPECT_EQ(Flags(Shop), "-");
}

TEST_F(TWatchlistTreeCommandsTest, CancelledEditChangesNothing) {
  User.Expect<TfrmKKPluginWatchlistEditCategory>([](TfrmKKPluginWatchlistEditCategory& form) {
    form.edtName.EnterText(u"Wecker");
    form.btnCancel.Click();
  });
  ASSERT_TRUE(GoTo(Clocks));
  ASSERT_TRUE(Pane().btnRenameGroup.Click());
  EXPECT_EQ(Clocks.Name(), u"Uhren");
}

TEST_F(TWatchlistTreeCommandsTest, UnassignedCategoryCanBeNeitherEditedNorDeletedNorMoved) {
  EXPECT_FALSE(ClickMenu(&Unassigned(), {cEdit}));
  EXPECT_FALSE(ClickMenu(&Unassigned(), {cDelete}));
  EXPECT_FALSE(ClickMenu(&Unassigned(), {cMove, u"Uhren"}));
  // Also where the entries were still enabled.
  Pane().btnRenameGroup.SetEnabled(true);
  Pane().btnDeleteGroup.SetEnabled(true);
  EXPECT_TRUE(Pane().btnRenameGroup.Click());
  EXPECT_TRUE(Pane().btnDeleteGroup.Click());
  EXPECT_EQ(User.ShownCount(), 0);
  EXPECT_EQ(Tree().GetItems(0).Id(), cEmptyGuid);
}

TEST_F(TWatchlistTreeCommandsTest, GroupIsNotEdited) {
  EXPECT_FALSE(ClickMenu(&Group(Clocks, Shop), {cEdit}));
  Pane().btnRenameGroup.SetEnabled(true);
  EXPECT_TRUE(Pane().btnRenameGroup.Click());
  EXPECT_EQ(User.ShownCount(), 0);
}

TEST_F(TWatchlistTreeCommandsTest, NoteFromTheTreeDoesNotMarkItsSource) {
  ExpectNote(u"Für Oma\r\nOstern");
  ASSERT_TRUE(ClickMenu(&Faust, {cEdit}));
  EXPECT_EQ(Faust.Description().GetCount(), 2);
  EXPECT_EQ(Flags(Auction), "-");
  User.Expect<TfrmKKWatchlistEditItemDescription>([](TfrmKKWatchlistEditItemDescription& form) {
    EXPECT_EQ(form.rchedtDescription.Lines().Get(1), u"Ostern");
    form.rchedtDescription.EnterText(u"Nein");
    form.btnCancel.Click();
  });
  ASSERT_TRUE(ClickMenu(&Faust, {cEdit}));
  EXPECT_EQ(Faust.Description().Get(0), u"Für Oma");
}

TEST_F(TWatchlistTreeCommandsTest, EditedNodeIsPaintedAnew) {
  struct TPainted : ITreeObserver {
    void BeforeTreeChange(const TTreeChange&) override {}
    void AfterTreeChange(const TTreeChange&) override {}
    void NodeChanged(TVirtualNode& iNode) override { Object = iNode.Object(); }
    void ScrollIntoView(TVirtualNode&) override {}
    const TObject* Object = nullptr;
  } painted;
  GoTo(Faust);
  Nodes().SetTreeObserver(&painted);
  ExpectNote(u"Für Oma");
  ASSERT_TRUE(ClickMenu(&Faust, {cEdit}));
  EXPECT_EQ(painted.Object, &Faust);
  GoTo(Clocks);
  ExpectCategoryDialog(u"Wecker");
  ASSERT_TRUE(Pane().btnRenameGroup.Click());
  EXPECT_EQ(painted.Object, &Clocks);
  Nodes().SetTreeObserver(nullptr);
}

TEST_F(TWatchlistTreeCommandsTest, WhatGoesWhileItsDialogStandsIsNotEdited) {
  User.Expect<TfrmKKWatchlistEditItemDescription>([this](TfrmKKWatchlistEditItemDescription& form) {
    Tree().DeleteItemById(Faust.SearchResultId());
    Form->BuildCategoriesTree(true);
    form.btnOK.Click();
  });
  EXPECT_TRUE(ClickMenu(&Faust, {cEdit}));
  User.Expect<TfrmKKPluginWatchlistEditCategory>([this](TfrmKKPluginWatchlistEditCategory& form) {
    Tree().DeleteCategory(Clocks);
    Form->BuildCategoriesTree(true);
    form.btnOK.Click();
  });
  EXPECT_TRUE(ClickMenu(&Clocks, {cEdit}));
}

TEST_F(TWatchlistTreeCommandsTest, WhatIsReplacedWhileItsDialogStandsIsEdited) {
  const TGuid alarm = Alarm.SearchResultId();
  User.Expect<TfrmKKWatchlistEditItemDescription>([&](TfrmKKWatchlistEditItemDescription& form) {
    Tree().DeleteItemById(alarm);
    auto other = std::make_unique<TWatchlistItem>();
    other->SetSearchResultId(alarm);
    Group(Clocks, Shop).LstItem().Add(std::move(other));
    Form->BuildCategoriesTree(true);
    form.rchedtDescription.EnterText(u"Für Oma");
    form.btnOK.Click();
  });
  EXPECT_TRUE(ClickMenu(&Alarm, {cEdit}));
  ASSERT_EQ(Tree().FindItemById(alarm)->Description().GetCount(), 1);
  const TGuid clocks = Clocks.Id();
  User.Expect<TfrmKKPluginWatchlistEditCategory>([&](TfrmKKPluginWatchlistEditCategory& form) {
    Tree().DeleteCategory(Clocks);
    Category(u"Andere").SetId(clocks);
    Form->BuildCategoriesTree(true);
    form.edtName.EnterText(u"Zeit");
    form.btnOK.Click();
  });
  EXPECT_TRUE(ClickMenu(&Clocks, {cEdit}));
  EXPECT_EQ(Tree().FindCategoryById(clocks)->Name(), u"Zeit");
  EXPECT_TRUE(BarShows(u"Zeit"));
}

// Deleting.

TEST_F(TWatchlistTreeCommandsTest, ItemIsDeletedAndTheBarCountsAnew) {
  GoTo(Novels);
  EXPECT_TRUE(BarShows(u"2"));
  User.ExpectQuestion(cDeleteOne, true);
  ASSERT_TRUE(ClickMenu(&Faust, {cDelete}));
  EXPECT_EQ(Group(Novels, Auction).LstItem().GetCount(), 1);
  EXPECT_TRUE(BarShows(u"1"));
  EXPECT_THAT(Auction->ViewCalls(),
              ElementsAre("HideList", "ShowList", "SetResults 2", "RemoveResults 1"));
  EXPECT_EQ(Flags(Auction), "RI");
  EXPECT_EQ(Selected(), &Emma) << "the neighbour";
}

TEST_F(TWatchlistTreeCommandsTest, LastItemTakesItsGroupAlong) {
  User.ExpectQuestion(cDeleteOne, true);
  ASSERT_TRUE(ClickMenu(&Alarm, {cDelete}));
  EXPECT_EQ(Clocks.LstPlugin().GetCount(), 0);
  EXPECT_EQ(NodeOf(Clocks)->GetCount(), 0);
}

TEST_F(TWatchlistTreeCommandsTest, GroupAndCategoryAreDeleted) {
  User.ExpectQuestion(
      u"Soll die markierte Kategorie wirklich gelöscht werden?\r\n"
      u"Es ist noch ein Eintrag enthalten.",
      true);
  ASSERT_TRUE(ClickMenu(&Group(Clocks, Shop), {cDelete}));
  EXPECT_EQ(Clocks.LstPlugin().GetCount(), 0);
  User.ExpectQuestion(u"Soll die markierte Kategorie wirklich gelöscht werden?", true);
  GoTo(Clocks);
  ASSERT_TRUE(Pane().btnDeleteGroup.Click());
  EXPECT_EQ(Tree().FindCategoryByName(u"Uhren"), nullptr);
  User.ExpectQuestion(
      u"Es sind noch untergeordnete Daten vorhanden.\r\n"
      u"Soll die markierte Kategorie wirklich gelöscht werden?",
      true);
  ASSERT_TRUE(ClickMenu(&Books, {cDelete}));
  EXPECT_THAT(Outline(), ElementsAre(cUnassignedLine));
  EXPECT_THAT(TabLines(), IsEmpty());
}

TEST_F(TWatchlistTreeCommandsTest, NoLeavesAllAsItIs) {
  User.ExpectQuestion(cDeleteOne, false);
  ASSERT_TRUE(ClickMenu(&Faust, {cDelete}));
  EXPECT_NE(NodeOf(Faust), nullptr);
  EXPECT_EQ(Selected(), &Faust);
}

TEST_F(TWatchlistTreeCommandsTest, NothingSelectedNothingDone) {
  Form->BuildCategoriesTree(false);
  for (TButton* button : {&Pane().btnDeleteGroup, &Pane().btnRenameGroup}) {
    button->SetEnabled(true);
    EXPECT_TRUE(button->Click());
  }
  Pane().Menu.mntmUpdate.SetEnabled(true);
  EXPECT_TRUE(Pane().Menu.mntmUpdate.Click());
  EXPECT_EQ(User.ShownCount(), 0);
  EXPECT_THAT(Auction->Requests(), IsEmpty());
}

// Moving.

TEST_F(TWatchlistTreeCommandsTest, ItemMovesAndTheTreeIsSorted) {
  ASSERT_TRUE(ClickMenu(&Faust, {cMove, u"Uhren"}));
  EXPECT_EQ(Tree().FindCategoryByItemId(Faust.SearchResultId()), &Clocks);
  EXPECT_EQ(Faust.ParentCategoryId(), Clocks.Id());
  EXPECT_EQ(Flags(Auction), "I") << "a move does not mark the results";
  EXPECT_THAT(Outline(),
              ElementsAre(cUnassignedLine, "Bücher", "  Romane", "    Auktion", "      Emma",
                          "Uhren", "  Auktion", "    Faust", "  Laden", "    Wecker"));
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("RemoveResults 1"));
}

TEST_F(TWatchlistTreeCommandsTest, ItemMovesIntoTheUnassignedCategory) {
  ASSERT_TRUE(ClickMenu(&Alarm, {cMove, u"<Keiner Kategorie zugewiesen>"}));
  EXPECT_EQ(Tree().FindCategoryByItemId(Alarm.SearchResultId()), &Unassigned());
  EXPECT_EQ(Clocks.LstPlugin().GetCount(), 0) << "the category stays, its group goes";
  EXPECT_NE(NodeOf(Clocks), nullptr);
}

TEST_F(TWatchlistTreeCommandsTest, ItemWithoutAResultMovesToo) {
  TWatchlistItem& lost = LostItem(Novels, Auction);
  Form->BuildCategoriesTree(true);
  Forget();
  ASSERT_TRUE(ClickMenu(&lost, {cMove, u"Uhren"}));
  EXPECT_EQ(Tree().FindCategoryByItemId(lost.SearchResultId()), &Clocks);
}

TEST_F(TWatchlistTreeCommandsTest, ItemOfASourceWithoutAListStays) {
  const auto mute = MakeIntf<TFakeSource>(u"Stumm", NewGuid(), TFakeAbilities{true, false});
  Handler()->LstIntegration().Add(mute);
  TWatchlistItem& item = Item(Books, mute, u"Sanduhr");
  Form->BuildCategoriesTree(true);
  ASSERT_TRUE(ClickMenu(&item, {cMove, u"Uhren"}));
  EXPECT_EQ(Tree().FindCategoryByItemId(item.SearchResultId()), &Books);
}

TEST_F(TWatchlistTreeCommandsTest, GroupMovesWithAllItsItems) {
  ASSERT_TRUE(ClickMenu(&Group(Novels, Auction), {cMove, u"Uhren"}));
  EXPECT_THAT(Names(Group(Clocks, Auction).LstItem()), ElementsAre("Faust", "Emma"));
  EXPECT_EQ(Novels.LstPlugin().GetCount(), 0);
  EXPECT_THAT(Outline(), ElementsAre(cUnassignedLine, "Bücher", "  Romane", "Uhren", "  Auktion",
                                     "    Emma", "    Faust", "  Laden", "    Wecker"));
}

TEST_F(TWatchlistTreeCommandsTest, GroupThatIsThereAlreadyStays) {
  ASSERT_TRUE(ClickMenu(&Group(Clocks, Shop), {cMove, u"Uhren"}));
  EXPECT_EQ(Flags(Shop), "-");
  EXPECT_THAT(Shop->ViewCalls(), ElementsAre("HideList", "ShowList", "SetResults 1"))
      << "its category was shown, and that is all";
}

TEST_F(TWatchlistTreeCommandsTest, CategoryMovesIntoAnotherAndToTheTop) {
  ASSERT_TRUE(ClickMenu(&Novels, {cMove, u"Uhren"}));
  EXPECT_EQ(Novels.List()->Parent(), &Clocks);
  EXPECT_EQ(NodeOf(Novels)->Parent(), NodeOf(Clocks));
  EXPECT_EQ(Flags(Auction), "-") << "categories are written at every save";
  ASSERT_TRUE(ClickMenu(&Novels, {cMove, u"oberste Ebene"}));
  EXPECT_EQ(Novels.List(), &Tree());
  EXPECT_EQ(NodeOf(Novels)->Parent(), nullptr);
  EXPECT_EQ(Selected(), &Novels);
}

TEST_F(TWatchlistTreeCommandsTest, CategoryWithChildrenIsPickedByItsOwnEntry) {
  TWatchlistCategory& games = Category(u"Spiele");
  Form->BuildCategoriesTree(true);
  EXPECT_FALSE(ClickMenu(&games, {cMove, u"Bücher"})) << "it opens a sub-menu";
  ASSERT_TRUE(ClickMenu(&games, {cMove, u"Bücher", u"Bücher"}));
  EXPECT_EQ(games.List()->Parent(), &Books);
}

TEST_F(TWatchlistTreeCommandsTest, MoveIntoTheCategoryOnShowDoesNotFillItsListAnew) {
  // Looks like a mistake and is required: a category on show stays as it is when it is chosen
  // again.
  GoTo(Clocks);
  ASSERT_TRUE(ClickMenu(&Faust, {cMove, u"Uhren"}));
  GoTo(Clocks);
  EXPECT_THAT(TabLines(), ElementsAre("[Laden]"));
  GoTo(Books);
  GoTo(Clocks);
  EXPECT_THAT(TabLines(), ElementsAre("Auktion", "[Laden]"));
}

TEST_F(TWatchlistTreeCommandsTest, MoveLetsTheBarCountAnew) {
  GoTo(Clocks);
  EXPECT_TRUE(BarShows(u"1"));
  GoTo(Faust);
  ASSERT_TRUE(ClickMenu(&Faust, {cMove, u"Uhren"}));
  EXPECT_TRUE(BarShows(u"2"));
}

TEST_F(TWatchlistTreeCommandsTest, EntryWithSubEntriesAndNoSelectionMoveNothing) {
  TMenuItem parent;
  parent.Add(u"Uhren");
  parent.SetTag(&Clocks);
  GoTo(Faust);
  TWatchlistCommands commands({View, nullptr});
  TWatchlistTreeCommands tree(Panes(), commands);
  tree.DoClickMove(&parent);
  Form->BuildCategoriesTree(false);
  TMenuItem entry(u"Uhren");
  entry.SetTag(&Clocks);
  tree.DoClickMove(&entry);
  EXPECT_EQ(Tree().FindCategoryByItemId(Faust.SearchResultId()), &Novels);
  GoTo(Faust);
  TMenuItem top(u"oberste Ebene");
  tree.DoClickMove(&top);
  EXPECT_EQ(Tree().FindCategoryByItemId(Faust.SearchResultId()), &Novels);
  EXPECT_THAT(View.Calls, IsEmpty());
}

// Refreshing.

TEST_F(TWatchlistTreeCommandsTest, SelectedNodeIsRefreshed) {
  ASSERT_TRUE(ClickMenu(&Faust, {cUpdate}));
  EXPECT_EQ(Record(Auction).Updater().GetCount(), 1);
  ASSERT_TRUE(ClickMenu(&Group(Novels, Auction), {cUpdate}));
  EXPECT_EQ(Record(Auction).Updater().GetCount(), 2);
  EXPECT_EQ(Record(Shop).Updater().GetCount(), 0);
  ASSERT_TRUE(ClickMenu(&Clocks, {cUpdate}));
  EXPECT_EQ(Record(Shop).Updater().GetCount(), 1);
}

TEST_F(TWatchlistTreeCommandsTest, WholeSubtreeOfACategoryIsRefreshed) {
  ASSERT_TRUE(ClickMenu(&Books, {cUpdate}));
  EXPECT_EQ(Record(Auction).Updater().GetCount(), 2);
  EXPECT_EQ(Record(Shop).Updater().GetCount(), 0);
}

TEST_F(TWatchlistTreeCommandsTest, AllIsRefreshedWithoutASelection) {
  ASSERT_TRUE(ClickMenu(nullptr, {cUpdateAll}));
  EXPECT_EQ(Record(Auction).Updater().GetCount(), 2);
  EXPECT_EQ(Record(Shop).Updater().GetCount(), 1);
  EXPECT_TRUE(Form->Status().Gauge().Visible());
  EXPECT_EQ(Form->Status().Gauge().Text(), u"Aktualisierung: 3");
  EXPECT_EQ(Form->Status().Gauge().Maximum(), 3);
  EXPECT_EQ(Form->Status().Gauge().Progress(), 1);
}

// The double click.

TEST_F(TWatchlistTreeCommandsTest, DoubleClickOnAnItemShowsItsRow) {
  ASSERT_TRUE(DoubleClick(Faust));
  EXPECT_THAT(TabLines(), ElementsAre("[Auktion]"));
  EXPECT_THAT(Auction->ViewCalls(),
              ElementsAre("HideList", "ShowList", "SetResults 2", "SelectResults 1"));
  EXPECT_EQ(Auction->Results().Focused, Faust.SearchResult());
  EXPECT_EQ(Selected(), &Faust);
  EXPECT_EQ(Nodes().FocusedNode(), NodeOf(Faust));
  EXPECT_TRUE(Pane().btnRenameGroup.Enabled());
  EXPECT_FALSE(Pane().btnNewGroup.Enabled());
}

TEST_F(TWatchlistTreeCommandsTest, DoubleClickThatFailsIsSwallowed) {
  Auction->SetFailingViewCall("SelectResults 1");
  EXPECT_TRUE(DoubleClick(Faust));
}

TEST_F(TWatchlistTreeCommandsTest, DoubleClickOnACategoryTogglesIt) {
  const bool before = Clocks.Expanded();
  EXPECT_TRUE(DoubleClick(Clocks));
  EXPECT_NE(Clocks.Expanded(), before);
  EXPECT_TRUE(Nodes().DoubleClick(nullptr));
  EXPECT_EQ(User.ShownCount(), 0);
}

// The explorer bar's category.

TEST_F(TWatchlistTreeCommandsTest, LinksOfTheCategorySelectItAndLeaveTheFocus) {
  GoTo(Clocks);
  GoTo(Alarm);
  ExpectCategoryDialog(u"Wecker");
  ASSERT_TRUE(ClickLink(u"Kategorie bearbeiten..."));
  EXPECT_EQ(Clocks.Name(), u"Wecker");
  EXPECT_EQ(Selected(), &Clocks);
  EXPECT_EQ(Nodes().FocusedNode(), NodeOf(Alarm));
  ASSERT_TRUE(ClickLink(u"Kategorie aktualisieren"));
  EXPECT_EQ(Record(Shop).Updater().GetCount(), 1);
}

TEST_F(TWatchlistTreeCommandsTest, LinkOfACategoryWithoutANodeDoesNothing) {
  GoTo(Clocks);
  GoTo(Books);
  TWatchlistTreeCommands tree(Panes(), *Recorded);
  TWatchlistCategory elsewhere;
  tree.DoClickExplorerbarCategoryEdit(&elsewhere);
  tree.DoClickExplorerbarCategoryUpdate(&elsewhere);
  EXPECT_EQ(User.ShownCount(), 0);
  EXPECT_EQ(Selected(), &Books);
}

}  // namespace
}  // namespace kk
