#include "views/TWatchlistReminderCommands.h"

#include <chrono>
#include <future>

#include "TSectionWorld.h"
#include "reminders/editor/TfrmKKWatchlistEditItemRemind.h"

namespace kk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char16_t cDelete[] =
    u"Soll die Erinnerung für den markierten Eintrag wirklich gelöscht werden?";
constexpr char16_t cEditTwo[] =
    u"Sie haben mehrere Einträge markiert!\r\n"
    u"Möchten Sie die Erinnerungen für alle 2 Einträge bearbeiten?\r\n";
constexpr char cAdded[] = "info Form: Neue Erinnerung angelegt";

using TEditor = TfrmKKWatchlistEditItemRemind;

class TWatchlistReminderCommandsTest : public testing::Test, public TSectionWorld {
 protected:
  TWatchlistReminderCommandsTest() {
    Folder.Write(u"ton.wav", "RIFF");
    TIniFileSectionWatchlist settings;
    settings.SetSoundFile(Folder.File(u"ton.wav"));
    settings.SetRemindType(0);
    settings.SetRemindTimeRelative(2);  // 5 minutes, here and in the default
    settings.SetDefaultRemindType(0);
    settings.SetRelativeTimeIndex(2);
    settings.SetDefaultReminderAfterTime(false);
  }

  void Add(const TIntf<IInterfaceList>& ioResults) {
    Recorded->Reminders.DoTabReminderAdd(Auction, ioResults);
  }
  bool Delete(bool iAsk, std::initializer_list<const TWatchlistItem*> iItems) {
    return Recorded->Reminders.DoTabReminderDelete(iAsk, Auction, Results(iItems));
  }
  void ExpectEditor(bool iOK) {
    User.Expect<TEditor>([iOK](TEditor& form) { (iOK ? form.btnOK : form.btnCancel).Click(); });
  }
  static TDateTime In(int iMinutes) { return Now().PlusMs(iMinutes * TDateTime::cMsPerMinute); }
  static std::string DeletedLine(const TWatchlistItem& iItem) {
    return "info Form: Erinnerung gelöscht (" + ToUtf8(GUIDToString(iItem.SearchResultId())) + ")";
  }
  static std::string IdLine(const TWatchlistItem& iItem) {
    return "details Id = " + ToUtf8(GUIDToString(iItem.SearchResultId()));
  }
  // The names of the items with a reminder, in the order of the list of reminders.
  static TLines Reminded() {
    TLines names;
    for (int i = 0; i < Handler()->LstRemind().GetCount(); ++i) {
      const TGuid id = Handler()->LstRemind().GetItems(i).Id();
      names.push_back(ToUtf8(Tree().FindItemById(id)->GetName()));
    }
    return names;
  }
  // Whether another thread gets at the list of reminders.
  static bool IsListFree() {
    auto count = std::async(std::launch::async, [] { return Handler()->LstRemind().GetCount(); });
    const bool isFree = count.wait_for(std::chrono::seconds(5)) == std::future_status::ready;
    if (!isFree) Handler()->LstRemind().EndWrite();  // else the other would never end
    return isFree;
  }

  TWatchlistCategory& Books = Category(u"Bücher");
  TWatchlistItem& Faust = Item(Books, Auction, u"Faust", In(60));
  TWatchlistItem& Emma = Item(Books, Auction, u"Emma", In(120));
  TWatchlistItem& Hamlet = Item(Books, Auction, u"Hamlet", In(180));
  TWatchlistItem& Ended = Item(Books, Auction, u"Vorbei", In(-1));
  TWatchlistItem& Offer = Item(Books, Auction, u"Angebot");
};

// Reminders that set up themselves, and what the editor does with its list.

TEST_F(TWatchlistReminderCommandsTest, ReminderIsSetUpFromTheDefaultSettings) {
  Recorded->Reminders.AutoEnableReminder(false, *Results({&Faust}));
  ASSERT_EQ(Handler()->LstRemind().GetCount(), 1);
  const TRemindItem& reminder = Handler()->LstRemind().First();
  EXPECT_EQ(reminder.Id(), Faust.SearchResultId());
  EXPECT_EQ(reminder.RemindTime(), In(55));
  EXPECT_EQ(reminder.RemindTypes(), TRemindTypes({rtSound}));
  EXPECT_EQ(dynamic_cast<const TRemindItemForEdit*>(&reminder), nullptr) << "a plain one";
  EXPECT_EQ(User.ShownCount(), 0);
  EXPECT_THAT(Log.Lines(),
              ElementsAre(cAdded, IdLine(Faust), TimeLine(In(55)), "details RemindTypes: Sound"));
  EXPECT_FALSE(Folder.Has(cWatchlistFileName)) << "no command writes the file";
}

TEST_F(TWatchlistReminderCommandsTest, ResultsWithoutAFutureEndGetNone) {
  TWatchlistItem& now = Item(Books, Auction, u"Jetzt", Now());
  Remind(Ended);
  for (const bool showEditor : {true, false}) {
    Recorded->Reminders.AutoEnableReminder(showEditor, *Results({&Ended, &Offer, &now}));
  }
  EXPECT_THAT(Reminded(), ElementsAre("Vorbei")) << "nothing was changed";
  EXPECT_THAT(Log.Lines(), IsEmpty());
}

TEST_F(TWatchlistReminderCommandsTest, AutomaticReminderGoesByTheLocalTime) {
  Clock.SetExactOffset(2 * TDateTime::cMsPerHour);
  Recorded->Reminders.AutoEnableReminder(false, *Results({&Faust}));
  EXPECT_THAT(Reminded(), ElementsAre("Faust"));
}

TEST_F(TWatchlistReminderCommandsTest, OldRemindersOfAllResultsGoAlsoOfThoseThatGetNone) {
  Remind(Ended);
  Remind(Faust);
  Remind(Emma);
  Recorded->Reminders.AutoEnableReminder(false, *Results({&Ended, &Faust}));
  EXPECT_THAT(Reminded(), ElementsAre("Emma", "Faust"));
  EXPECT_EQ(Handler()->LstRemind().GetItems(1).RemindTime(), In(55));
}

TEST_F(TWatchlistReminderCommandsTest, EntryWithoutATimeIsNotKeptButLogged) {
  TIniFileSectionWatchlist().SetRelativeTimeIndex(13);  // a day before the end is past
  Remind(Faust);
  Recorded->Reminders.AutoEnableReminder(false, *Results({&Faust}));
  EXPECT_THAT(Reminded(), IsEmpty());
  EXPECT_THAT(Log.Lines(),
              ElementsAre(cAdded, IdLine(Faust), TimeLine({}), "details RemindTypes: Sound"));
}

TEST_F(TWatchlistReminderCommandsTest, OldReminderIsThePatternOfItsSuccessor) {
  Folder.Write(u"gong.wav", "RIFF");
  RemindBySound(Faust, Folder.File(u"gong.wav"), In(1));
  User.Expect<TEditor>([&](TEditor& form) {
    EXPECT_EQ(form.Owner(), Form.get());
    EXPECT_EQ(form.edtSoundFile.Text(), Folder.File(u"gong.wav"));
    EXPECT_THAT(Reminded(), ElementsAre("Faust")) << "the old one waits for the end";
    form.btnOK.Click();
  });
  Recorded->Reminders.AutoEnableReminder(true, *Results({&Faust, &Emma}));
  EXPECT_THAT(Reminded(), ElementsAre("Faust", "Emma"));
  EXPECT_EQ(Handler()->LstRemind().GetItems(0).RemindTime(), In(55)) << "each by its own end";
  EXPECT_EQ(Handler()->LstRemind().GetItems(1).RemindTime(), In(115));
}

TEST_F(TWatchlistReminderCommandsTest, CancelledEditorLeavesOldRemindersAsTheyWere) {
  RemindBySound(Faust, u"gong.wav", In(1));
  Handler()->LstRemind().SetChanged(false);
  ExpectEditor(false);
  Recorded->Reminders.AutoEnableReminder(true, *Results({&Faust}));
  ASSERT_EQ(Handler()->LstRemind().GetCount(), 1);
  EXPECT_EQ(Handler()->LstRemind().First().RemindTime(), In(1));
  EXPECT_FALSE(Handler()->LstRemind().GetChanged());
  EXPECT_THAT(Log.Lines(), IsEmpty());
}

TEST_F(TWatchlistReminderCommandsTest, OldReminderFiresWhileTheEditorStands) {
  RemindBySound(Faust, Folder.File(u"ton.wav"), In(1));
  User.Expect<TEditor>([&](TEditor& form) {
    Clock.Advance(TDateTime::cMsPerMinute);
    std::unique_ptr<TRemindItem> due;
    EXPECT_TRUE(Handler()->LstRemind().ExtractFirstElapsedItem(due));
    form.btnOK.Click();
  });
  Recorded->Reminders.AutoEnableReminder(true, *Results({&Faust}));
  EXPECT_THAT(Reminded(), ElementsAre("Faust")) << "the new one";
  EXPECT_EQ(Handler()->LstRemind().First().RemindTime(), In(54));
}

// From a result list.

TEST_F(TWatchlistReminderCommandsTest, OneResultGetsItsReminderWithoutAQuestion) {
  ExpectEditor(true);
  Add(Results({&Faust}));
  EXPECT_THAT(Reminded(), ElementsAre("Faust"));
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("RefreshResult Faust"));
  EXPECT_THAT(View.Calls, ElementsAre("Focused of Auktion"));
  EXPECT_EQ(Flags(Auction), "-");
}

TEST_F(TWatchlistReminderCommandsTest, EndedOnesOfSeveralAreDroppedBeforeTheQuestion) {
  const TIntf<IInterfaceList> results = Results({&Faust, &Ended, &Ended, &Emma});
  User.Expect<TfrmKKCommonMessageDlg>([](TfrmKKCommonMessageDlg& form) {
    EXPECT_EQ(form.lblText.Caption(), cEditTwo);
    EXPECT_EQ(form.btnYes.Caption(), u"&Ja, alle bearbeiten");
    EXPECT_EQ(form.btnYes.Description(), u"Alle Einträge werden bearbeitet.");
    EXPECT_EQ(form.btnNo.Caption(), u"&Nein, abbrechen");
    EXPECT_EQ(form.btnNo.Description(), u"Der Vorgang wird abgebrochen.");
    form.btnNo.Click();
  });
  Add(results);
  EXPECT_EQ(results->GetCount(), 2) << "the caller's list has lost the ended ones";
  EXPECT_THAT(Reminded(), IsEmpty());
  EXPECT_THAT(Auction->ViewCalls(), IsEmpty());
  EXPECT_THAT(View.Calls, IsEmpty());
  User.ExpectQuestion(cEditTwo, true);
  ExpectEditor(true);
  Add(results);
  EXPECT_THAT(Reminded(), ElementsAre("Faust", "Emma"));
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("RefreshResult Faust", "RefreshResult Emma"));
}

TEST_F(TWatchlistReminderCommandsTest, ThreeResultsOfWhichOneHasEndedGiveAQuestionForTwo) {
  User.ExpectQuestion(cEditTwo, false);
  Add(Results({&Ended, &Faust, &Emma}));
}

TEST_F(TWatchlistReminderCommandsTest, OneResultThatHasEndedDoesNothingAndAsksNothing) {
  Remind(Ended);
  Add(Results({&Ended}));
  Add(NewInterfaceList());
  EXPECT_THAT(Reminded(), ElementsAre("Vorbei"));
  EXPECT_EQ(User.ShownCount(), 0);
  EXPECT_THAT(View.Calls, IsEmpty());
}

TEST_F(TWatchlistReminderCommandsTest, FocusIsAskedForOnlyIfSomethingIsLeft) {
  struct TBlindView : TRecordingView {
    TIntf<ISearchResult> FocusedResult() const override { throw Exception(u"Kein Fokus"); }
  } view;
  TWatchlistCommands commands({view, Form.get()});
  commands.Reminders.DoTabReminderAdd(Auction, Results({&Ended}));
  const auto add = [&] { commands.Reminders.DoTabReminderAdd(Auction, Results({&Faust})); };
  EXPECT_EQ(Refusal(add), "Kein Fokus");
  EXPECT_EQ(User.ShownCount(), 0);
}

TEST_F(TWatchlistReminderCommandsTest, ResultThatEndsAtThisMomentIsNotOffered) {
  Add(Results({&Item(Books, Auction, u"Jetzt", Now())}));
  EXPECT_EQ(User.ShownCount(), 0);
}

TEST_F(TWatchlistReminderCommandsTest, WhatHasEndedIsSaidByTheHostsCorrectedClock) {
  Clock.SetExactOffset(60 * TDateTime::cMsPerMinute);
  Add(Results({&Faust}));
  EXPECT_EQ(User.ShownCount(), 0);
  ExpectEditor(true);
  Add(Results({&Emma}));
  EXPECT_THAT(Reminded(), ElementsAre("Emma"));
}

TEST_F(TWatchlistReminderCommandsTest, ResultThatHasEndedByTheLocalTimeAloneGetsNoEditor) {
  Clock.SetExactOffset(-60 * TDateTime::cMsPerMinute);
  Add(Results({&Ended}));
  EXPECT_EQ(User.ShownCount(), 0);
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("RefreshResult Vorbei"));
  EXPECT_THAT(View.Calls, ElementsAre("Focused of Auktion"));
}

TEST_F(TWatchlistReminderCommandsTest, OffersAreCountedAndGetNoReminder) {
  User.ExpectQuestion(cEditTwo, true);
  ExpectEditor(true);
  Add(Results({&Offer, &Faust}));
  EXPECT_THAT(Reminded(), ElementsAre("Faust"));
}

TEST_F(TWatchlistReminderCommandsTest, FocusedResultIsThePatternWhereverItStands) {
  View.Focus = Hamlet.SearchResult();
  for (const auto& results :
       {Results({&Hamlet, &Emma}), Results({&Emma, &Hamlet}), Results({&Emma, &Ended, &Hamlet})}) {
    User.ExpectQuestion(cEditTwo, true);
    ExpectEditor(true);
    Add(results);
    EXPECT_EQ(results->IndexOf(Hamlet.SearchResult()), 0);
    EXPECT_EQ(results->GetCount(), 2);
    EXPECT_THAT(Reminded(), ElementsAre("Hamlet", "Emma"));
  }
}

TEST_F(TWatchlistReminderCommandsTest, FocusedResultOutsideTheSelectionIsNotAdded) {
  View.Focus = Hamlet.SearchResult();
  ExpectEditor(true);
  Add(Results({&Emma}));
  EXPECT_THAT(Reminded(), ElementsAre("Emma"));
}

TEST_F(TWatchlistReminderCommandsTest, RowsAreDrawnAnewAlsoAfterACancel) {
  User.ExpectQuestion(cEditTwo, true);
  ExpectEditor(false);
  Add(Results({&Faust, &Emma}));
  EXPECT_THAT(Reminded(), IsEmpty());
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("RefreshResult Faust", "RefreshResult Emma"));
  EXPECT_THAT(View.Calls, ElementsAre("Focused of Auktion"));
}

TEST_F(TWatchlistReminderCommandsTest, FailureOfARowPassesToTheCaller) {
  Auction->SetViewFailure(u"Kein Fenster");
  ExpectEditor(false);
  EXPECT_EQ(Refusal([&] { Add(Results({&Faust})); }), "Kein Fenster");
  EXPECT_THAT(View.Calls, IsEmpty());
}

TEST_F(TWatchlistReminderCommandsTest, ResultsOfSeveralSourcesShareOneEditor) {
  TWatchlistItem& clock = Item(Books, Shop, u"Wecker", In(30));
  const TIntf<IInterfaceList> results = Results({&Ended, &clock, &Faust});
  results->Add(FakeResult(u"Unbekannt", In(90)));
  View.Focus = Faust.SearchResult();
  User.ExpectQuestion(
      u"Sie haben mehrere Einträge markiert!\r\n"
      u"Möchten Sie die Erinnerungen für alle 3 Einträge bearbeiten?\r\n",
      true);
  ExpectEditor(true);
  Recorded->Reminders.EditReminders(results);
  EXPECT_EQ(Handler()->LstRemind().GetCount(), 3);
  EXPECT_EQ(Handler()->LstRemind().First().Id(), clock.SearchResultId()) << "the focus is no part";
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("RefreshResult Faust"));
  EXPECT_THAT(Shop->ViewCalls(), ElementsAre("RefreshResult Wecker"));
  EXPECT_THAT(View.Calls, ElementsAre("Focused"));
}

TEST_F(TWatchlistReminderCommandsTest, SourceWithoutAViewHasItsReminders) {
  const auto mute = MakeIntf<TFakeSource>(u"Stumm", NewGuid(), TFakeAbilities{true, false});
  TWatchlistItem& clock = Item(Books, mute, u"Wecker", In(30));
  ExpectEditor(true);
  Recorded->Reminders.DoTabReminderAdd(mute, Results({&clock}));
  EXPECT_THAT(Reminded(), ElementsAre("Wecker"));
  EXPECT_TRUE(Recorded->Reminders.DoTabReminderDelete(false, mute, Results({&clock})));
  EXPECT_THAT(Reminded(), IsEmpty());
}

// Deleting.

TEST_F(TWatchlistReminderCommandsTest, RemindersAreDeletedWithTheirAppointments) {
  Remind(Faust, u"E1");
  Remind(Emma);
  Calendar.OnDelete = [&] {
    EXPECT_THAT(Auction->ViewCalls(), IsEmpty()) << "the row comes after the calendar";
  };
  EXPECT_TRUE(Delete(false, {&Faust, &Emma}));
  EXPECT_THAT(Reminded(), IsEmpty());
  EXPECT_THAT(Calendar.Calls, ElementsAre("Delete E1"));
  EXPECT_THAT(Log.Lines(),
              ElementsAre(DeletedLine(Faust),
                          "info Watchlist-Reminder (Outlook): Termin erfolgreich gelöscht "
                          "(EntryId: E1)",
                          DeletedLine(Emma)));
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("RefreshResult Faust", "RefreshResult Emma"));
  EXPECT_THAT(View.Calls, ElementsAre("Focused of Auktion"));
  EXPECT_TRUE(Handler()->LstRemind().GetChanged());
  EXPECT_EQ(User.ShownCount(), 0) << "nothing is asked";
}

TEST_F(TWatchlistReminderCommandsTest, QuestionIsThatOfOneReminderForAnyNumber) {
  Remind(Faust);
  Remind(Emma);
  User.Expect<TfrmKKCommonMessageDlg>([](TfrmKKCommonMessageDlg& form) {
    EXPECT_EQ(form.lblText.Caption(), cDelete);
    EXPECT_EQ(form.btnYes.Caption(), u"&Ja, löschen");
    EXPECT_EQ(form.btnYes.Description(), u"Die Einträge werden gelöscht.");
    EXPECT_EQ(form.btnNo.Caption(), u"&Nein, abbrechen");
    EXPECT_EQ(form.btnNo.Description(), u"Der Vorgang wird abgebrochen.");
    form.btnNo.Click();
  });
  EXPECT_FALSE(Delete(true, {&Faust, &Emma, &Hamlet}));
  EXPECT_THAT(Reminded(), ElementsAre("Faust", "Emma"));
  EXPECT_THAT(View.Calls, IsEmpty());
  User.ExpectQuestion(cDelete, true);
  EXPECT_TRUE(Delete(true, {&Faust}));
  EXPECT_THAT(Reminded(), ElementsAre("Emma"));
}

TEST_F(TWatchlistReminderCommandsTest, NoResultsAskNothing) {
  EXPECT_FALSE(Delete(true, {}));
  EXPECT_THAT(View.Calls, IsEmpty());
}

TEST_F(TWatchlistReminderCommandsTest, FailingCalendarDoesNotStopTheDelete) {
  Calendar.Fails = true;
  Remind(Faust, u"E1");
  Remind(Emma, u"E2");
  Delete(false, {&Faust, &Emma});
  EXPECT_THAT(Reminded(), IsEmpty());
  EXPECT_THAT(Calendar.Calls, ElementsAre("Delete E1", "Delete E2"));
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("RefreshResult Faust", "RefreshResult Emma"));
  EXPECT_THAT(Log.Lines(), Contains(HasSubstr("Kein Kalender")));
}

TEST_F(TWatchlistReminderCommandsTest, ListIsHeldOverTheWholeDelete) {
  Remind(Faust, u"E1");
  Remind(Emma);
  const TLstRemindItemSync& reminders = Handler()->LstRemind();
  std::future<int> count;
  Calendar.OnDelete = [&] {
    count = std::async(std::launch::async, [&] { return reminders.GetCount(); });
    const auto last = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (reminders.Sync().WaitingReaders() == 0 && std::chrono::steady_clock::now() < last) {
      std::this_thread::yield();
    }
    EXPECT_EQ(reminders.Sync().WaitingReaders(), 1);
  };
  Delete(false, {&Faust, &Emma});
  ASSERT_TRUE(count.valid());
  EXPECT_EQ(count.get(), 0) << "the other thread saw no half of it";
}

TEST_F(TWatchlistReminderCommandsTest, ListIsFreeAgainAfterAFailure) {
  Remind(Faust);
  Remind(Emma);
  Auction->SetViewFailure(u"Kein Fenster");
  EXPECT_EQ(Refusal([&] { Delete(false, {&Faust, &Emma}); }), "Kein Fenster");
  EXPECT_TRUE(IsListFree());
  EXPECT_THAT(Reminded(), ElementsAre("Emma"));
  EXPECT_THAT(View.Calls, IsEmpty());
}

TEST_F(TWatchlistReminderCommandsTest, ResultsWithoutAReminderArePassedOver) {
  const TIntf<IInterfaceList> results = Results({&Faust});
  results->Add({});
  EXPECT_TRUE(Recorded->Reminders.DoTabReminderDelete(false, Auction, results));
  EXPECT_THAT(Auction->ViewCalls(), IsEmpty());
  EXPECT_THAT(Log.Lines(), IsEmpty());
  EXPECT_THAT(View.Calls, ElementsAre("Focused of Auktion"));
}

TEST_F(TWatchlistReminderCommandsTest, EmptyPlacesOfASelectionAreNotEdited) {
  const TIntf<IInterfaceList> results = NewInterfaceList();
  results->Add({});
  results->Add(Faust.SearchResult());
  ExpectEditor(true);
  Add(results);
  EXPECT_THAT(Reminded(), ElementsAre("Faust"));
  results->Add({});
  Recorded->Reminders.AutoEnableReminder(false, *results);
  EXPECT_THAT(Reminded(), ElementsAre("Faust"));
}

}  // namespace
}  // namespace kk
