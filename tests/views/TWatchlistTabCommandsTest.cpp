#include "views/TWatchlistTabCommands.h"

#include "TShownSection.h"
#include "reminders/TRemindHandler.h"
#include "tests/support/TBrokenResult.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char16_t cDeleteOne[] = u"Soll der markierte Eintrag wirklich gelöscht werden?";
constexpr char16_t cNoteForTwo[] =
    u"Sie haben mehrere Einträge markiert!\r\n"
    u"Möchten Sie die Beschreibung für alle 2 Einträge bearbeiten?";
constexpr char16_t cRemindTwo[] =
    u"Sie haben mehrere Einträge markiert!\r\n"
    u"Möchten Sie die Erinnerungen für alle 2 Einträge bearbeiten?\r\n";
constexpr char16_t cDeleteReminder[] =
    u"Soll die Erinnerung für den markierten Eintrag wirklich gelöscht werden?";

using TEditor = TfrmKKWatchlistEditItemRemind;

class TWatchlistTabCommandsTest : public TShownSection {
 protected:
  TWatchlistTabCommandsTest() {
    Show();
    GoTo(Books);
    Forget();
  }
  TTab& Tab() { return *Panes().CurrentTab(); }

  TWatchlistCategory& Books = Category(u"Bücher");
  TWatchlistCategory& Clocks = Category(u"Uhren");
  TWatchlistItem& Faust = Item(Books, Auction, u"Faust", In(60));
  TWatchlistItem& Emma = Item(Books, Auction, u"Emma", In(120));
  TWatchlistItem& Ended = Item(Books, Auction, u"Vorbei", In(-1));
};

// Delete and move.

TEST_F(TWatchlistTabCommandsTest, MarkedItemIsDeletedFromTheList) {
  Mark(Auction, {&Faust});
  EXPECT_EQ(Bar().GetCurrentSearchResult(), Faust.SearchResult());
  const TIntf<ISearchResult> result = Faust.SearchResult();
  Remind(Faust, u"E1");
  User.ExpectQuestion(cDeleteOne, true);
  ASSERT_TRUE(ClickList(Auction, u"Löschen"));
  EXPECT_THAT(Names(Group(Books, Auction).LstItem()), ElementsAre("Emma", "Vorbei"));
  EXPECT_THAT(Calendar.Calls, ElementsAre("Delete E1")) << "unlike a delete in the tree";
  EXPECT_FALSE(Bar().GetCurrentSearchResult());
  EXPECT_EQ(NodeOf(Books)->FirstChild()->GetCount(), 2);
  EXPECT_EQ(Nodes().Text(*NodeOf(Books)), u"Bücher (2)") << "the category is painted anew";
  EXPECT_TRUE(BarShows(u"2")) << "and that tells the bar";
}

TEST_F(TWatchlistTabCommandsTest, DeletedItemLeavesTheQueueAndShortensTheRun) {
  Form->Updates().UpdateAll();
  EXPECT_EQ(Form->Status().Gauge().Maximum(), 3);
  Mark(Auction, {&Emma});
  User.ExpectQuestion(cDeleteOne, true);
  ASSERT_TRUE(ClickList(Auction, u"Löschen"));
  EXPECT_EQ(Record(Auction).Updater().GetCount(), 2);
  EXPECT_EQ(Form->Status().Gauge().Maximum(), 2);
  EXPECT_EQ(Form->Status().Gauge().Text(), u"Aktualisierung: 2");
}

TEST_F(TWatchlistTabCommandsTest, BarFollowsTheListOfTheCommand) {
  const TWatchlistItem& bell = Item(Books, Shop, u"Glocke");
  const TWatchlistItem& gong = Item(Books, Shop, u"Gong");
  Form->BuildCategoriesTree(true);
  Mark(Auction, {&Faust});
  Shop->Results().Selected = {bell.SearchResult()};
  Shop->Results().Focused = gong.SearchResult();
  User.ExpectQuestion(cDeleteOne, true);
  ASSERT_TRUE(ClickList(Shop, u"Löschen"));
  EXPECT_EQ(Panes().CurrentTab()->Integration(), Auction);
  EXPECT_EQ(Bar().GetCurrentSearchResult(), gong.SearchResult())
      << "though its tab is not in front";
}

TEST_F(TWatchlistTabCommandsTest, LastItemOfTheListTakesGroupAndTabAlong) {
  User.ExpectQuestion(u"Sollen die 3 markierten Einträge wirklich gelöscht werden?", true);
  ASSERT_TRUE(ClickList(Auction, u"Alle löschen"));
  EXPECT_EQ(Books.LstPlugin().GetCount(), 0);
  EXPECT_EQ(NodeOf(Books)->GetCount(), 0);
  EXPECT_TRUE(Panes().Centre.lblNoItems.Visible());
}

TEST_F(TWatchlistTabCommandsTest, FinishedItemsAreDeleted) {
  User.ExpectQuestion(cDeleteOne, true);
  ASSERT_TRUE(ClickList(Auction, u"Beendete löschen"));
  EXPECT_THAT(Names(Group(Books, Auction).LstItem()), ElementsAre("Faust", "Emma"));
}

TEST_F(TWatchlistTabCommandsTest, MarkedItemsMoveAndTheTreeIsSorted) {
  Mark(Auction, {&Faust, &Emma});
  ASSERT_TRUE(ClickList(Auction, u"Verschieben nach ...", u"Uhren"));
  EXPECT_THAT(Outline(), ElementsAre("<Keiner Kategorie zugewiesen>", "Bücher", "  Auktion",
                                     "    Vorbei", "Uhren", "  Auktion", "    Emma", "    Faust"));
  EXPECT_EQ(Flags(Auction), "I");
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("RemoveResults 2"));
  EXPECT_TRUE(BarShows(u"1"));
}

TEST_F(TWatchlistTabCommandsTest, MoveToTheCategoryOfTheFirstDoesNothing) {
  TWatchlistItem& other = Item(Clocks, Auction, u"Wecker");
  Form->BuildCategoriesTree(true);
  Forget();
  Auction->Results().Select({Faust.SearchResult(), other.SearchResult()});
  ASSERT_TRUE(ClickList(Auction, u"Verschieben nach ...", u"Bücher"));
  EXPECT_EQ(Tree().FindCategoryByItemId(other.SearchResultId()), &Clocks);
  EXPECT_EQ(Flags(Auction), "-");
  Panes().TabControl()->Events().OnTabMove(nullptr, Tab(), nullptr, Results({&Faust}));
  EXPECT_EQ(Tree().FindCategoryByItemId(Faust.SearchResultId()), &Books) << "nowhere is no place";
}

TEST_F(TWatchlistTabCommandsTest, FailureOfAListPassesOn) {
  Mark(Auction, {&Faust});
  Auction->SetFailingViewCall("RemoveResults 1");
  EXPECT_EQ(Refusal([&] { ClickList(Auction, u"Verschieben nach ...", u"Uhren"); }),
            "RemoveResults 1");
}

// Refreshes.

TEST_F(TWatchlistTabCommandsTest, MarkedItemsAreRefreshed) {
  Mark(Auction, {&Faust, &Ended});
  ASSERT_TRUE(ClickList(Auction, u"Aktualisieren"));
  EXPECT_EQ(Record(Auction).Updater().GetCount(), 2);
}

TEST_F(TWatchlistTabCommandsTest, LinkRefreshesTheFocusedResult) {
  EXPECT_FALSE(ClickLink(u"Eintrag aktualisieren")) << "there is none";
  Mark(Auction, {&Faust});
  ASSERT_TRUE(ClickLink(u"Eintrag aktualisieren"));
  EXPECT_EQ(Record(Auction).Updater().GetCount(), 1);
  Auction->Finish(true, FakeResult(u"Faust II", In(60)));
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("RefreshResult Faust II"));
  EXPECT_EQ(Faust.GetName(), u"Faust II");
}

TEST_F(TWatchlistTabCommandsTest, LinkThatCameTooLateRefreshesNothing) {
  TWatchlistTabCommands tab(Panes(), *Recorded);
  tab.DoClickExplorerbarDetailsUpdate(nullptr);
  Mark(Auction, {&Faust});
  const TIntf<ISearchResult> result = Faust.SearchResult();
  Tree().RemoveItemById(Faust.SearchResultId());
  tab.DoClickExplorerbarDetailsUpdate(nullptr);
  Mark(Auction, {&Ended});
  Ended.SetLastUpdateDate(Now());
  tab.DoClickExplorerbarDetailsUpdate(nullptr);
  Mark(Auction, {&Emma});
  const auto record = Handler()->LstIntegration().Extract(Record(Auction));
  tab.DoClickExplorerbarDetailsUpdate(nullptr);
  EXPECT_THAT(Auction->Requests(), IsEmpty());
  Form.reset();
  Recorded.reset();
  Handler()->LstIntegration().Add(Auction);
}

// A refresh has finished: one failing view does not keep the others from being refreshed.

TEST_F(TWatchlistTabCommandsTest, FailingRowDoesNotKeepTheDetailsFromBeingRefreshed) {
  Mark(Auction, {&Faust});
  EXPECT_TRUE(BarShows(u"-")) << "never refreshed";
  Form->Updates().UpdateItem(Faust);
  Auction->SetViewFailure(u"Keine Zeile");
  Auction->Finish(true, FakeResult(u"Faust II", In(60)));
  EXPECT_FALSE(BarShows(u"-"));
  EXPECT_EQ(Nodes().Text(*NodeOf(Faust)), u"Faust II");
}

// Notes.

TEST_F(TWatchlistTabCommandsTest, NoteFromTheListMarksItsSource) {
  Faust.Description().SetText(u"Alt");
  Mark(Auction, {&Faust});
  User.Expect<TfrmKKWatchlistEditItemDescription>([this](TfrmKKWatchlistEditItemDescription& form) {
    EXPECT_EQ(form.Owner(), Form.get());
    EXPECT_EQ(form.rchedtDescription.Lines().Get(0), u"Alt");
    form.rchedtDescription.EnterText(u"Neu");
    form.btnOK.Click();
  });
  ASSERT_TRUE(ClickList(Auction, u"Notiz bearbeiten..."));
  EXPECT_EQ(Faust.Description().Get(0), u"Neu");
  EXPECT_EQ(Flags(Auction), "I");
  EXPECT_TRUE(BarShows(u"Neu")) << "the bar follows";
}

TEST_F(TWatchlistTabCommandsTest, NoteOfSeveralIsThatOfTheFocusedOne) {
  Faust.Description().SetText(u"Von Faust");
  Emma.Description().SetText(u"Von Emma");
  Mark(Auction, {&Faust, &Emma});
  Auction->Results().Focused = Emma.SearchResult();
  User.ExpectQuestion(cNoteForTwo, true);
  User.Expect<TfrmKKWatchlistEditItemDescription>([](TfrmKKWatchlistEditItemDescription& form) {
    EXPECT_EQ(form.rchedtDescription.Lines().Get(0), u"Von Emma");
    form.btnOK.Click();
  });
  ASSERT_TRUE(ClickList(Auction, u"Notiz bearbeiten..."));
  EXPECT_EQ(Faust.Description().Get(0), u"Von Emma");
}

TEST_F(TWatchlistTabCommandsTest, NoteOfSeveralIsRefusedOrCancelled) {
  Faust.Description().SetText(u"Alt");
  Mark(Auction, {&Faust, &Emma});
  User.ExpectQuestion(cNoteForTwo, false);
  ASSERT_TRUE(ClickList(Auction, u"Notiz bearbeiten..."));
  User.ExpectQuestion(cNoteForTwo, true);
  User.Expect<TfrmKKWatchlistEditItemDescription>([](TfrmKKWatchlistEditItemDescription& form) {
    form.rchedtDescription.EnterText(u"Neu");
    form.btnCancel.Click();
  });
  ASSERT_TRUE(ClickList(Auction, u"Notiz bearbeiten..."));
  EXPECT_EQ(Faust.Description().Get(0), u"Alt");
  EXPECT_EQ(Flags(Auction), "-");
}

TEST_F(TWatchlistTabCommandsTest, FocusThatCantBeToldGivesTheNoteOfTheFirst) {
  Emma.Description().SetText(u"Von Emma");
  Mark(Auction, {&Emma});
  Auction->Results().FocusFailure = u"Kein Fokus";
  User.Expect<TfrmKKWatchlistEditItemDescription>([](TfrmKKWatchlistEditItemDescription& form) {
    EXPECT_EQ(form.rchedtDescription.Lines().Get(0), u"Von Emma");
    form.btnCancel.Click();
  });
  EXPECT_TRUE(ClickList(Auction, u"Notiz bearbeiten..."));
}

TEST_F(TWatchlistTabCommandsTest, ResultsWithoutItemsHaveNoNote) {
  const auto& edit = Panes().TabControl()->Events().OnTabEditDescription;
  edit(nullptr, Tab(), NewInterfaceList());
  edit(nullptr, Tab(), ListOf(FakeResult(u"Fremd")));
  EXPECT_EQ(User.ShownCount(), 0);
}

TEST_F(TWatchlistTabCommandsTest, LinkEditsTheNoteOfTheFocusedResult) {
  TWatchlistTabCommands tab(Panes(), *Recorded);
  tab.DoClickExplorerbarDetailsEditDescription(nullptr);
  EXPECT_EQ(User.ShownCount(), 0) << "there is no result";
  Mark(Auction, {&Emma});
  ExpectNote(u"Für Oma");
  ASSERT_TRUE(ClickLink(u"Notiz bearbeiten..."));
  EXPECT_EQ(Emma.Description().Get(0), u"Für Oma");
  EXPECT_EQ(Flags(Auction), "I");
  EXPECT_TRUE(BarShows(u"Für Oma"));
}

// Reminders.

TEST_F(TWatchlistTabCommandsTest, LinkSetsAReminderUp) {
  Mark(Auction, {&Faust});
  ExpectEditor();
  ASSERT_TRUE(ClickLink(u"Erinnerung einrichten..."));
  EXPECT_TRUE(HasReminder(Faust.SearchResultId()));
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("RefreshResult Faust"));
  EXPECT_FALSE(BarShows(u"Erinnerung einrichten...")) << "the bar follows";
  EXPECT_TRUE(BarShows(u"Sound"));
}

TEST_F(TWatchlistTabCommandsTest, LinkEditsAndDeletesAReminder) {
  RemindBySound(Faust, Folder.File(u"ton.wav"), In(1));
  Mark(Auction, {&Faust});
  ExpectEditor();
  ASSERT_TRUE(ClickLink(u"Erinnerung bearbeiten..."));
  EXPECT_EQ(Handler()->LstRemind().First().RemindTime(), In(55));
  User.ExpectQuestion(cDeleteReminder, true);
  ASSERT_TRUE(ClickLink(u"Erinnerung löschen"));
  EXPECT_FALSE(HasReminder(Faust.SearchResultId()));
  EXPECT_TRUE(BarShows(u"Erinnerung einrichten..."));
}

TEST_F(TWatchlistTabCommandsTest, MenuOfTheListSetsRemindersUpForWhatHasNotEnded) {
  Mark(Auction, {&Ended, &Faust, &Emma});
  User.ExpectQuestion(cRemindTwo, true);
  ExpectEditor();
  ASSERT_TRUE(ClickList(Auction, u"Erinnerung einrichten..."));
  EXPECT_EQ(Handler()->LstRemind().GetCount(), 2);
  Mark(Auction, {&Ended, &Faust, &Emma});
  User.ExpectQuestion(cDeleteReminder, true);  // one text for any number
  ASSERT_TRUE(ClickList(Auction, u"Erinnerung löschen"));
  EXPECT_EQ(Handler()->LstRemind().GetCount(), 0);
}

TEST_F(TWatchlistTabCommandsTest, FocusedResultIsThePattern) {
  RemindBySound(Emma, Folder.File(u"ton.wav"), In(1));
  Folder.Write(u"gong.wav", "RIFF");
  RemindBySound(Faust, Folder.File(u"gong.wav"), In(1));
  Mark(Auction, {&Emma, &Faust});
  Auction->Results().Focused = Faust.SearchResult();
  User.ExpectQuestion(cRemindTwo, true);
  User.Expect<TEditor>([this](TEditor& form) {
    EXPECT_EQ(form.edtSoundFile.Text(), Folder.File(u"gong.wav"));
    form.btnCancel.Click();
  });
  EXPECT_TRUE(ClickList(Auction, u"Erinnerung einrichten..."));
}

TEST_F(TWatchlistTabCommandsTest, LinksSwallowWhatFails) {
  RemindBySound(Faust, Folder.File(u"ton.wav"), In(1));
  Mark(Auction, {&Faust});
  Auction->SetViewFailure(u"Keine Zeile");
  ExpectEditor();
  EXPECT_TRUE(ClickLink(u"Erinnerung bearbeiten..."));
  User.ExpectQuestion(cDeleteReminder, true);
  EXPECT_TRUE(ClickLink(u"Erinnerung löschen"));
  EXPECT_TRUE(BarShows(u"Erinnerung einrichten...")) << "refreshed in spite of it";
}

TEST_F(TWatchlistTabCommandsTest, WithoutATabTheLinksDoNothing) {
  Form->Uninitialize();
  TWatchlistTabCommands tab(Panes(), *Recorded);
  tab.DoClickExplorerbarRemindAdd(nullptr);
  tab.DoClickExplorerbarRemindEdit(nullptr);
  tab.DoClickExplorerbarRemindDelete(&tab);
  tab.DoClickExplorerbarDetailsUpdate(nullptr);
  tab.DoClickExplorerbarDetailsEditDescription(nullptr);
  EXPECT_EQ(User.ShownCount(), 0);
}

TEST_F(TWatchlistTabCommandsTest, ClickOnTheImageOfAReminderEditsIt) {
  RemindBySound(Faust, Folder.File(u"ton.wav"), In(1));
  Mark(Auction, {&Faust});
  ExpectEditor();
  const TNotifyEvent click = Handler()->OnAdditionalColumnEditClick();
  ASSERT_TRUE(click);
  click(nullptr);
  EXPECT_EQ(Handler()->LstRemind().First().RemindTime(), In(55));
}

// Delivered reminders.

TEST_F(TWatchlistTabCommandsTest, DeliveredReminderLosesItsMarks) {
  RemindBySound(Faust, u"ton.wav", In(1));
  Mark(Auction, {&Faust});
  const auto reminder = Handler()->LstRemind().ExtractBySearchResultId(Faust.SearchResultId());
  EXPECT_TRUE(BarShows(u"Erinnerung löschen"));
  Handler()->RemindHandler().OnProcessElapsedItem()(nullptr, *reminder);
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("RefreshResult Faust"));
  EXPECT_FALSE(BarShows(u"Erinnerung löschen"));
}

TEST_F(TWatchlistTabCommandsTest, DeliveredReminderOfAnotherListIsPassedOver) {
  TRemindItem reminder(NewGuid());
  Mark(Auction, {&Faust});
  Handler()->RemindHandler().OnProcessElapsedItem()(nullptr, reminder);
  EXPECT_THAT(Auction->ViewCalls(), IsEmpty());
  EXPECT_EQ(Bar().GetCurrentSearchResult(), Faust.SearchResult());
}

TEST_F(TWatchlistTabCommandsTest, RowThatFailsDoesNotKeepTheBarFromFollowing) {
  RemindBySound(Faust, u"ton.wav", In(1));
  Mark(Auction, {&Faust});
  const auto reminder = Handler()->LstRemind().ExtractBySearchResultId(Faust.SearchResultId());
  Auction->SetViewFailure(u"Keine Zeile");
  Handler()->RemindHandler().OnProcessElapsedItem()(nullptr, *reminder);
  EXPECT_FALSE(BarShows(u"Erinnerung löschen"));
}

TEST_F(TWatchlistTabCommandsTest, BarThatFailsShowsNoResult) {
  const auto result = MakeIntf<TBrokenResult>(u"Faust", Faust.SearchResultId());
  Faust.SetSearchResult(TIntf<ISearchResult>(result));
  Mark(Auction, {&Faust});
  result->Fails = true;
  TRemindItem reminder(Faust.SearchResultId());
  Handler()->RemindHandler().OnProcessElapsedItem()(nullptr, reminder);
  EXPECT_FALSE(Bar().GetCurrentSearchResult());
  // The same behind a delete or an editor: the bar shows none.
  Recorded->Items.DeleteItems(Auction, NewInterfaceList(), {});
  Auction->Results().Focused = TIntf<ISearchResult>(result);
  Form->Items().DeleteItems(Auction, NewInterfaceList(), {});
  EXPECT_FALSE(Bar().GetCurrentSearchResult());
}

}  // namespace
}  // namespace kk
