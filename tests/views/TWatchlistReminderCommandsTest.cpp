#include "views/TWatchlistReminderCommands.h"

#include "TSectionWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char16_t cQuestion[] =
    u"Soll die Erinnerung für den markierten Eintrag wirklich gelöscht werden?";

class TWatchlistReminderCommandsTest : public testing::Test, public TSectionWorld {
 protected:
  void Delete(bool iAsk, std::initializer_list<const TWatchlistItem*> iItems) {
    Form->Reminders().DeleteReminders(iAsk, Auction, Results(iItems));
  }
  static std::string DeletedLine(const TWatchlistItem& iItem) {
    return "info Form: Erinnerung gelöscht (" + ToUtf8(GUIDToString(iItem.SearchResultId())) + ")";
  }

  TWatchlistCategory& Books = Category(u"Bücher");
  TWatchlistItem& Faust = Item(Books, Auction, u"Faust");
  TWatchlistItem& Emma = Item(Books, Auction, u"Emma");
};

TEST_F(TWatchlistReminderCommandsTest, RemindersAreDeletedWithTheirAppointments) {
  Remind(Faust, u"E1");
  Remind(Emma);
  Delete(false, {&Faust, &Emma});
  EXPECT_FALSE(HasReminder(Faust.SearchResultId()));
  EXPECT_FALSE(HasReminder(Emma.SearchResultId()));
  EXPECT_THAT(Editor.Calls, ElementsAre("Appointment E1"));
  EXPECT_THAT(Log.Lines(), ElementsAre(DeletedLine(Faust), DeletedLine(Emma)));
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("RefreshResult Faust", "RefreshResult Emma"));
  EXPECT_THAT(View.Calls, ElementsAre("Focused"));
  EXPECT_TRUE(Handler()->LstRemind().GetChanged());
}

TEST_F(TWatchlistReminderCommandsTest, QuestionIsThatOfOneReminderForAnyNumber) {
  Remind(Faust);
  Remind(Emma);
  User.Expect<TfrmKKCommonMessageDlg>([](TfrmKKCommonMessageDlg& form) {
    EXPECT_EQ(form.lblText.Caption(), cQuestion);
    EXPECT_EQ(form.btnYes.Caption(), u"&Ja, löschen");
    EXPECT_EQ(form.btnYes.Description(), u"Die Einträge werden gelöscht.");
    EXPECT_EQ(form.btnNo.Caption(), u"&Nein, abbrechen");
    EXPECT_EQ(form.btnNo.Description(), u"Der Vorgang wird abgebrochen.");
    form.btnNo.Click();
  });
  Delete(true, {&Faust, &Emma});
  EXPECT_TRUE(HasReminder(Faust.SearchResultId()));
  EXPECT_THAT(View.Calls, IsEmpty());
  User.ExpectQuestion(cQuestion, true);
  Delete(true, {&Faust});
  EXPECT_FALSE(HasReminder(Faust.SearchResultId()));
  EXPECT_TRUE(HasReminder(Emma.SearchResultId()));
}

TEST_F(TWatchlistReminderCommandsTest, NoResultsAskNothing) {
  Delete(true, {});
  EXPECT_THAT(View.Calls, IsEmpty());
}

TEST_F(TWatchlistReminderCommandsTest, FailingCalendarDoesNotStopTheDelete) {
  Editor.Fails = true;
  Remind(Faust, u"E1");
  Remind(Emma, u"E2");
  Delete(false, {&Faust, &Emma});
  EXPECT_FALSE(HasReminder(Emma.SearchResultId()));
}

TEST_F(TWatchlistReminderCommandsTest, ResultsWithoutAReminderArePassedOver) {
  const TIntf<IInterfaceList> results = Results({&Faust});
  results->Add({});
  Form->Reminders().DeleteReminders(false, Auction, results);
  EXPECT_THAT(Auction->ViewCalls(), IsEmpty());
  EXPECT_THAT(Log.Lines(), IsEmpty());
}

TEST_F(TWatchlistReminderCommandsTest, WithoutAnEditorTheLogSaysThatAnAppointmentStays) {
  Form->SetReminderEditor(nullptr);
  Remind(Faust, u"E1");
  Delete(false, {&Faust});
  EXPECT_FALSE(HasReminder(Faust.SearchResultId()));
  EXPECT_TRUE(Log.Contains(
      "info Form: Termine im Kalender können noch nicht gelöscht werden. Der Termin bleibt "
      "bestehen."));
}

}  // namespace
}  // namespace kk
