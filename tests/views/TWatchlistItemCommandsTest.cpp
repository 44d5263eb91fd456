#include "views/TWatchlistItemCommands.h"

#include "TSectionWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char16_t cDeleteOne[] = u"Soll der markierte Eintrag wirklich gelöscht werden?";
constexpr char16_t cDeleteTwo[] = u"Sollen die 2 markierten Einträge wirklich gelöscht werden?";
constexpr char16_t cDeleteEmptyGroup[] = u"Soll die markierte Kategorie wirklich gelöscht werden?";

class TWatchlistItemCommandsTest : public testing::Test, public TSectionWorld {
 protected:
  TWatchlistItemCommands& Commands() { return Recorded->Items; }

  TWatchlistCategory& Books = Category(u"Bücher");
  TWatchlistCategory& Clocks = Category(u"Uhren");
};

// From the tree.

TEST_F(TWatchlistItemCommandsTest, ItemOfTheTreeIsDeletedAfterAQuestion) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  Item(Books, Auction, u"Emma");
  const TGuid id = faust.SearchResultId();
  User.Expect<TfrmKKCommonMessageDlg>([](TfrmKKCommonMessageDlg& form) {
    EXPECT_EQ(form.lblText.Caption(), cDeleteOne);
    EXPECT_EQ(form.btnYes.Caption(), u"&Ja, löschen");
    EXPECT_EQ(form.btnYes.Description(), u"Die Einträge werden gelöscht.");
    EXPECT_EQ(form.btnNo.Caption(), u"&Nein, abbrechen");
    EXPECT_EQ(form.btnNo.Description(), u"Der Vorgang wird abgebrochen.");
    form.btnNo.Click();
  });
  EXPECT_FALSE(Commands().DeleteItem(faust));
  EXPECT_EQ(Flags(Auction), "-");
  User.ExpectQuestion(cDeleteOne, true);
  EXPECT_TRUE(Commands().DeleteItem(faust));
  EXPECT_EQ(Tree().FindItemById(id), nullptr);
  EXPECT_EQ(Flags(Auction), "RI");
  EXPECT_EQ(Flags(Shop), "-");
  EXPECT_THAT(View.Calls, ElementsAre("Delete Faust", "Selected Bücher"));
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("RemoveResults 1"));
}

TEST_F(TWatchlistItemCommandsTest, LastItemOfTheTreeTakesItsGroupAlong) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  User.ExpectQuestion(cDeleteOne, true);
  EXPECT_TRUE(Commands().DeleteItem(faust));
  EXPECT_EQ(Books.LstPlugin().GetCount(), 0);
  EXPECT_THAT(View.Calls, ElementsAre("Delete [Auktion]", "Selected Bücher"));
}

TEST_F(TWatchlistItemCommandsTest, DeleteFromTheTreeKeepsAppointmentAndQueue) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  const TGuid id = faust.SearchResultId();
  Remind(faust, u"E1");
  Record(Auction).Updater().Add(faust.SearchResult(), {});
  Log.Clear();
  View.Calls.clear();
  User.ExpectQuestion(cDeleteOne, true);
  EXPECT_TRUE(Commands().DeleteItem(faust));
  EXPECT_FALSE(HasReminder(id));
  EXPECT_THAT(Calendar.Calls, IsEmpty());
  EXPECT_THAT(Log.Lines(), IsEmpty());
  EXPECT_EQ(Record(Auction).Updater().GetCount(), 1);
  EXPECT_THAT(View.Calls, ElementsAre("Delete [Auktion]", "Selected Bücher"));
}

TEST_F(TWatchlistItemCommandsTest, FailureToRefreshTheSideBarIsSwallowed) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  View.Fails = true;
  User.ExpectQuestion(cDeleteOne, true);
  EXPECT_TRUE(Commands().DeleteItem(faust));
}

TEST_F(TWatchlistItemCommandsTest, ItemWithoutAResultIsDeletedFromTheTree) {
  TWatchlistItem& lost = LostItem(Books, Auction);
  const TGuid id = lost.SearchResultId();
  Remind(lost);
  User.ExpectQuestion(cDeleteOne, true);
  EXPECT_TRUE(Commands().DeleteItem(lost));
  EXPECT_FALSE(HasReminder(id));
  EXPECT_THAT(Auction->ViewCalls(), IsEmpty());
}

TEST_F(TWatchlistItemCommandsTest, ItemThatWentDuringTheQuestionIsNoLongerDeleted) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  const TGuid id = faust.SearchResultId();
  User.Expect<TfrmKKCommonMessageDlg>([&](TfrmKKCommonMessageDlg& form) {
    Tree().DeleteItemById(id);
    form.btnYes.Click();
  });
  EXPECT_FALSE(Commands().DeleteItem(faust));
  EXPECT_THAT(View.Calls, IsEmpty());
}

TEST_F(TWatchlistItemCommandsTest, ItemOfAnUnknownSourceIsDeletedWithoutFlags) {
  TWatchlistItem& faust = Item(
      Books, MakeIntf<TFakeSource>(u"Fremd", NewGuid(), TFakeAbilities{false, false}), u"Faust");
  User.ExpectQuestion(cDeleteOne, true);
  EXPECT_TRUE(Commands().DeleteItem(faust));
  EXPECT_EQ(Books.GetItemCount(true), 0);
}

TEST_F(TWatchlistItemCommandsTest, GroupIsDeletedAfterAQuestionThatCountsItsItems) {
  User.ExpectQuestion(cDeleteEmptyGroup, false);
  EXPECT_FALSE(Commands().DeleteGroup(Group(Books, Auction)));
  Item(Books, Auction, u"Faust");
  User.ExpectQuestion(
      u"Soll die markierte Kategorie wirklich gelöscht werden?\r\n"
      u"Es ist noch ein Eintrag enthalten.",
      false);
  EXPECT_FALSE(Commands().DeleteGroup(Group(Books, Auction)));
  Item(Books, Auction, u"Emma");
  User.Expect<TfrmKKCommonMessageDlg>([](TfrmKKCommonMessageDlg& form) {
    EXPECT_EQ(form.lblText.Caption(),
              u"Soll die markierte Kategorie wirklich gelöscht werden?\r\n"
              u"Es sind noch 2 Einträge enthalten.");
    EXPECT_EQ(form.btnYes.Description(), u"Alle Einträge werden gelöscht.");
    form.btnYes.Click();
  });
  EXPECT_TRUE(Commands().DeleteGroup(Group(Books, Auction)));
  EXPECT_EQ(Books.LstPlugin().GetCount(), 0);
  EXPECT_EQ(Flags(Auction), "RI");
  EXPECT_THAT(View.Calls, ElementsAre("Delete [Auktion]", "Selected Bücher"));
}

TEST_F(TWatchlistItemCommandsTest, DeleteOfAGroupDeletesItsRemindersAndLeavesTheRows) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  const TGuid id = faust.SearchResultId();
  Remind(faust, u"E1");
  User.ExpectQuestion(
      u"Soll die markierte Kategorie wirklich gelöscht werden?\r\n"
      u"Es ist noch ein Eintrag enthalten.",
      true);
  EXPECT_TRUE(Commands().DeleteGroup(Group(Books, Auction)));
  EXPECT_FALSE(HasReminder(id));
  EXPECT_THAT(Calendar.Calls, IsEmpty());
  EXPECT_THAT(Auction->ViewCalls(), IsEmpty());
}

TEST_F(TWatchlistItemCommandsTest, EmptyGroupMarksNothing) {
  User.ExpectQuestion(cDeleteEmptyGroup, true);
  EXPECT_TRUE(Commands().DeleteGroup(Group(Books, Auction)));
  EXPECT_EQ(Flags(Auction), "-");
}

TEST_F(TWatchlistItemCommandsTest, GroupThatWentDuringTheQuestionIsNoLongerDeleted) {
  for (const bool withCategory : {false, true}) {
    TWatchlistPlugin& group = Group(Books, Auction);
    User.Expect<TfrmKKCommonMessageDlg>([&](TfrmKKCommonMessageDlg& form) {
      withCategory ? Tree().DeleteCategory(Books) : Tree().DeletePlugin(group);
      form.btnYes.Click();
    });
    EXPECT_FALSE(Commands().DeleteGroup(group));
  }
  EXPECT_THAT(View.Calls, IsEmpty());
}

// From a result list.

TEST_F(TWatchlistItemCommandsTest, ResultsOfAListAreDeletedInTheFixedOrder) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  TWatchlistItem& emma = Item(Clocks, Auction, u"Emma");
  Item(Clocks, Auction, u"Wecker");
  Remind(faust, u"E1");
  const TGuid id = faust.SearchResultId();
  const auto results = Results({&faust, &emma});
  User.ExpectQuestion(cDeleteTwo, true);
  EXPECT_TRUE(Commands().DoTabDelete(Auction, results));
  EXPECT_FALSE(HasReminder(id));
  EXPECT_THAT(Calendar.Calls, ElementsAre("Delete E1"));
  EXPECT_TRUE(Log.Contains("info Form: Erinnerung gelöscht (" + ToUtf8(GUIDToString(id)) + ")"));
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("RefreshResult Faust", "RemoveResults 2"));
  EXPECT_THAT(View.Calls, ElementsAre("Focused of Auktion", "Delete Faust", "Delete Emma",
                                      "Delete [Auktion]", "Focused of Auktion"));
  EXPECT_EQ(Books.LstPlugin().GetCount(), 0);
  EXPECT_THAT(Names(Group(Clocks, Auction).LstItem()), ElementsAre("Wecker"));
  EXPECT_EQ(Flags(Auction), "RI");
}

TEST_F(TWatchlistItemCommandsTest, EmptyGroupsOfTheWholeTreeGoWithADeleteFromAList) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  Item(Books, Auction, u"Emma");
  Group(Category(u"Wecker", &Clocks), Shop);
  User.ExpectQuestion(cDeleteOne, true);
  Commands().DoTabDelete(Auction, Results({&faust}));
  EXPECT_THAT(View.Calls, ElementsAre("Focused of Auktion", "Delete Faust", "Delete [Laden]",
                                      "Focused of Auktion"));
}

TEST_F(TWatchlistItemCommandsTest, DeleteFromAListTakesTheResultOutOfTheQueue) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  TWatchlistItem& emma = Item(Books, Auction, u"Emma");
  Recorded->Updates.UpdateAll();
  ASSERT_EQ(Record(Auction).Updater().GetCount(), 2);
  View.Calls.clear();
  User.ExpectQuestion(cDeleteOne, true);
  Commands().DoTabDelete(Auction, Results({&emma}));
  EXPECT_EQ(Record(Auction).Updater().GetCount(), 1);
  EXPECT_THAT(View.Calls, ElementsAre("Focused of Auktion", "Delete Emma", "TakenOut", "Progress",
                                      "Focused of Auktion"));
  (void)faust;
}

TEST_F(TWatchlistItemCommandsTest, RefusedDeleteFromAListChangesNothing) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  User.ExpectQuestion(cDeleteOne, false);
  EXPECT_FALSE(Commands().DoTabDelete(Auction, Results({&faust})));
  EXPECT_FALSE(Commands().DoTabDelete(Auction, Results({})));
  EXPECT_EQ(Books.GetItemCount(true), 1);
  EXPECT_THAT(View.Calls, IsEmpty());
}

TEST_F(TWatchlistItemCommandsTest, SourceWithoutAListHasNoDeleteFromAList) {
  const auto source = MakeIntf<TFakeSource>(u"Stumm", NewGuid(), TFakeAbilities{true, false});
  TWatchlistItem& faust = Item(Books, source, u"Faust");
  EXPECT_FALSE(Commands().DoTabDelete(source, Results({&faust})));
  EXPECT_EQ(Books.GetItemCount(true), 1);
}

TEST_F(TWatchlistItemCommandsTest, UnregisteredSourceOnlyLeavesItsFlagsUnset) {
  const auto source = MakeIntf<TFakeSource>(u"Fremd");
  TWatchlistItem& faust = Item(Books, source, u"Faust");
  User.ExpectQuestion(cDeleteOne, true);
  EXPECT_TRUE(Commands().DoTabDelete(source, Results({&faust})));
  EXPECT_EQ(Books.LstPlugin().GetCount(), 0);
}

TEST_F(TWatchlistItemCommandsTest, ResultsWithoutAnItemArePassedOver) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  const auto results = NewInterfaceList();
  results->Add({});
  results->Add(FakeResult(u"Unbekannt"));
  results->Add(faust.SearchResult());
  User.ExpectQuestion(u"Sollen die 3 markierten Einträge wirklich gelöscht werden?", true);
  EXPECT_TRUE(Commands().DoTabDelete(Auction, results));
  EXPECT_EQ(Books.GetItemCount(true), 0);
}

TEST_F(TWatchlistItemCommandsTest, FailingReminderDeleteDoesNotStopTheDelete) {
  class TFailingView : public TRecordingView {
   public:
    void ShowFocusedResult(const TIntf<IWatchlistIntegration>&) override {
      if (First) {
        First = false;
        throw Exception(u"Kein Fenster");
      }
    }
    bool First = true;
  } view;
  TWatchlistCommands commands({view, nullptr});
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  User.ExpectQuestion(cDeleteOne, true);
  EXPECT_TRUE(commands.Items.DoTabDelete(Auction, Results({&faust})));
  EXPECT_EQ(Books.GetItemCount(true), 0);
}

TEST_F(TWatchlistItemCommandsTest, ItemsWithoutAResultGoByTheirIds) {
  TWatchlistItem& lost = LostItem(Books, Auction);
  Remind(lost);
  const TGuid id = lost.SearchResultId();
  Commands().DeleteItems(Auction, NewInterfaceList(), {id});
  EXPECT_EQ(Books.LstPlugin().GetCount(), 0);
  EXPECT_FALSE(HasReminder(id));
}

// Moves.

TEST_F(TWatchlistItemCommandsTest, ItemsAreMovedToTheTargetsGroup) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  TWatchlistItem& emma = Item(Unassigned(), Auction, u"Emma");
  Item(Books, Auction, u"Hamlet");
  Commands().DoMoveItems(Auction, Clocks, Results({&faust, &emma}));
  EXPECT_THAT(Names(Group(Clocks, Auction).LstItem()), ElementsAre("Faust", "Emma"));
  EXPECT_EQ(faust.ParentCategoryId(), Clocks.Id());
  EXPECT_EQ(emma.ParentCategoryId(), Clocks.Id());
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("RemoveResults 2"));
  EXPECT_THAT(View.Calls, ElementsAre("AddGroup Auktion to Uhren", "Move Faust to [Auktion]",
                                      "Move Emma to [Auktion]", "Delete [Auktion]"));
}

TEST_F(TWatchlistItemCommandsTest, MoveMarksTheItemsAndNotTheResults) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  Commands().DoMoveItems(Auction, Clocks, Results({&faust}));
  EXPECT_EQ(Flags(Auction), "I");
}

TEST_F(TWatchlistItemCommandsTest, MoveUsesTheGroupThatIsThere) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  Item(Clocks, Auction, u"Wecker");
  Commands().DoMoveItems(Auction, Clocks, Results({&faust}));
  EXPECT_EQ(Clocks.LstPlugin().GetCount(), 1);
  EXPECT_THAT(Names(Group(Clocks, Auction).LstItem()), ElementsAre("Wecker", "Faust"));
}

TEST_F(TWatchlistItemCommandsTest, ItemsCanBeMovedToTheUnassignedCategory) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  Commands().DoMoveItems(Auction, Unassigned(), Results({&faust}));
  EXPECT_EQ(faust.ParentCategoryId(), cEmptyGuid);
}

TEST_F(TWatchlistItemCommandsTest, FirstResultInTheTargetStopsTheMove) {
  TWatchlistItem& wecker = Item(Clocks, Auction, u"Wecker");
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  Commands().DoMoveItems(Auction, Clocks, Results({&wecker, &faust}));
  EXPECT_EQ(faust.ParentCategoryId(), Books.Id());
  EXPECT_EQ(Flags(Auction), "-");
  EXPECT_THAT(View.Calls, IsEmpty());
  Commands().DoMoveItems(Auction, Clocks, Results({&faust, &wecker}));
  EXPECT_THAT(Names(Group(Clocks, Auction).LstItem()), ElementsAre("Faust", "Wecker"));
}

TEST_F(TWatchlistItemCommandsTest, MovingNothingOrWithoutAListDoesNothing) {
  const auto source = MakeIntf<TFakeSource>(u"Stumm", NewGuid(), TFakeAbilities{true, false});
  TWatchlistItem& faust = Item(Books, source, u"Faust");
  Commands().DoMoveItems(source, Clocks, Results({&faust}));
  Commands().DoMoveItems(Auction, Clocks, Results({}));
  EXPECT_EQ(faust.ParentCategoryId(), Books.Id());
  EXPECT_EQ(Clocks.LstPlugin().GetCount(), 0);
}

TEST_F(TWatchlistItemCommandsTest, MoveOfUnknownResultsLeavesNoGroup) {
  const auto results = NewInterfaceList();
  results->Add(FakeResult(u"Unbekannt"));
  Commands().DoMoveItems(Auction, Clocks, results);
  EXPECT_EQ(Clocks.LstPlugin().GetCount(), 0);
}

TEST_F(TWatchlistItemCommandsTest, MoveOfAnUnregisteredSourceSetsNoFlag) {
  const auto source = MakeIntf<TFakeSource>(u"Fremd");
  TWatchlistItem& faust = Item(Books, source, u"Faust");
  Commands().DoMoveItems(source, Clocks, Results({&faust}));
  EXPECT_EQ(faust.ParentCategoryId(), Clocks.Id());
}

TEST_F(TWatchlistItemCommandsTest, GroupIsMovedWithAllItsItemsAndLeavesAnEmptyCategory) {
  Item(Books, Auction, u"Faust");
  Item(Books, Auction, u"Emma");
  Commands().DoMovePlugin(Clocks, Group(Books, Auction));
  EXPECT_THAT(Names(Group(Clocks, Auction).LstItem()), ElementsAre("Faust", "Emma"));
  EXPECT_EQ(Books.LstPlugin().GetCount(), 0);
  EXPECT_GE(Tree().IndexOf(&Books), 0);
}

TEST_F(TWatchlistItemCommandsTest, GroupInTheTargetStays) {
  Item(Books, Auction, u"Faust");
  Commands().DoMovePlugin(Books, Group(Books, Auction));
  EXPECT_THAT(View.Calls, IsEmpty());
  EXPECT_EQ(Flags(Auction), "-");
}

// Notes.

TEST_F(TWatchlistItemCommandsTest, NoteGoesToAllItemsAndMarksTheFirstOnesSourceAlone) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  TWatchlistItem& wecker = Item(Clocks, Shop, u"Wecker");
  Commands().SetDescriptions({faust.SearchResultId(), NewGuid(), wecker.SearchResultId()},
                             {u"eins", u"zwei"});
  EXPECT_EQ(faust.Description().Lines(), (std::vector<TString>{u"eins", u"zwei"}));
  EXPECT_EQ(wecker.Description().Lines(), faust.Description().Lines());
  EXPECT_EQ(Flags(Auction), "I");
  EXPECT_EQ(Flags(Shop), "-");
}

TEST_F(TWatchlistItemCommandsTest, NoteWithAnUnknownFirstItemMarksNothing) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  Commands().SetDescriptions({NewGuid(), faust.SearchResultId()}, {u"eins"});
  EXPECT_EQ(faust.Description().GetCount(), 1);
  EXPECT_EQ(Flags(Auction), "-");
}

}  // namespace
}  // namespace kk
