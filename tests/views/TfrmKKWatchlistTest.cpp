#include "views/TfrmKKWatchlist.h"

#include "TSectionWorld.h"
#include "reminders/TRemindHandler.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TfrmKKWatchlistTest : public testing::Test, public TSectionWorld {
 public:
  void DoUpdateFinished(TObject* Sender, const TIntf<ISearchResult>& iResult, bool iSucceeded) {
    EXPECT_NE(dynamic_cast<TWatchlistItemUpdater*>(Sender), nullptr);
    const bool listed = Tree().FindItemById(iResult->GetId()) != nullptr;
    Ends.push_back(ToUtf8(iResult->GetName()) + (iSucceeded ? " ok" : " failed") +
                   (listed ? " listed" : ""));
  }
  void ListenToEnds() {
    Form->SetOnUpdateFinished(
        TNotifyEventSearchResult::Of<&TfrmKKWatchlistTest::DoUpdateFinished>(this));
  }
  // A new result on its way into the category; answers its id.
  TGuid Add(TWatchlistCategory& iCategory, TStringView iName, TDateTime iEndTime = {}) {
    Group(iCategory, Auction);
    const TIntf<ISearchResult> result = FakeResult(iName, iEndTime);
    Form->AddWithUpdate(ListOf(result), Record(Auction), iCategory);
    return result->GetId();
  }
  // Five minutes before the end, by sound.
  static void RemindByDefault() {
    TIniFileSectionWatchlist settings;
    settings.SetDefaultRemindType(0);
    settings.SetDefaultReminderAfterTime(false);
    settings.SetRelativeTimeIndex(2);
  }
  // As the thread tells of a reminder.
  static void Deliver(const TWatchlistItem& iItem) {
    TRemindItem reminder(iItem.SearchResultId());
    Handler()->RemindHandler().OnProcessElapsedItem()(nullptr, reminder);
  }

  TLines Ends;
  TWatchlistCategory& Books = Category(u"Bücher");
};

TEST_F(TfrmKKWatchlistTest, SectionIsNamed) {
  EXPECT_EQ(Form->Caption(), u"Beobachten");
  EXPECT_EQ(Form->GetIniSectionName(), u"Watchlist");
  EXPECT_EQ(Form->GetFormID(), cMainMenuFormIDWatchlist);
  Form->SetCaption(u"");
  Form->Show();
  EXPECT_TRUE(Form->Visible());
  EXPECT_EQ(Form->Caption(), u"Beobachten");
}

TEST_F(TfrmKKWatchlistTest, SectionThatGoesBeforeItsDelayNeverStarts) {
  const int before = Loop.TimerCount();
  {
    TfrmKKWatchlist form;
    form.Initialize(MakeIntf<TFakeApplication>());
    form.Uninitialize();
    form.Initialize(MakeIntf<TFakeApplication>());
  }
  EXPECT_EQ(Loop.TimerCount(), before);
  Auction->ViewCalls().clear();
  Loop.Advance(1000);
  EXPECT_THAT(Auction->ViewCalls(), IsEmpty());
}

TEST_F(TfrmKKWatchlistTest, FormOutlivesItsHandler) {
  auto form = std::make_unique<TfrmKKWatchlist>();
  Recorded.reset();
  Form.reset();
  FreeHandler();
  form.reset();
  CreateHandler(MakeIntf<TFakePlugin>());
}

TEST_F(TfrmKKWatchlistTest, HostIsToldThatTheSectionWasClosed) {
  const auto application = MakeIntf<TFakeApplication>();
  TfrmKKWatchlist form;
  form.Show();
  form.Close();
  EXPECT_EQ(application->Closed, 0) << "nobody is there to be told";
  form.Initialize(application);
  form.Show();
  form.Close();
  EXPECT_EQ(application->Closed, 1);
  form.Uninitialize();
}

// A refresh has finished.

TEST_F(TfrmKKWatchlistTest, RefreshedResultReplacesTheItems) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  const TGuid id = faust.SearchResultId();
  Form->Updates().UpdateItem(faust);
  Clock.Advance(5000);
  Auction->Finish(true, FakeResult(u"Faust II"));
  EXPECT_EQ(faust.GetName(), u"Faust II");
  EXPECT_EQ(faust.SearchResultId(), id);
  EXPECT_EQ(faust.LastUpdateDate(), Clock.Now());
  EXPECT_EQ(Flags(Auction), "RI");
  EXPECT_THAT(Auction->ViewCalls(), ElementsAre("RefreshResult Faust II"));
}

TEST_F(TfrmKKWatchlistTest, LastUpdateIsLocalTimeNotTheHostsCorrectedOne) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  Clock.SetExactOffset(60000);
  Form->Updates().UpdateItem(faust);
  Auction->Finish(true);
  EXPECT_EQ(faust.LastUpdateDate(), Clock.Now());
}

TEST_F(TfrmKKWatchlistTest, FailedRefreshLeavesNoMark) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  Form->Updates().UpdateItem(faust);
  Auction->Finish(false, FakeResult(u"Faust II"));
  EXPECT_EQ(faust.GetName(), u"Faust");
  EXPECT_TRUE(faust.LastUpdateDate().IsZero());
  EXPECT_EQ(Flags(Auction), "-");
  EXPECT_THAT(Auction->ViewCalls(), IsEmpty());
}

TEST_F(TfrmKKWatchlistTest, RefreshOfAnItemDeletedMeanwhileIsDropped) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  Form->Updates().UpdateItem(faust);
  Tree().DeleteItemById(faust.SearchResultId());
  Auction->Finish(true);
  EXPECT_EQ(Flags(Auction), "-");
}

TEST_F(TfrmKKWatchlistTest, RefreshOfASourceThatIsGoneIsDropped) {
  const auto source = MakeIntf<TFakeSource>(u"Wechsel");
  Handler()->LstIntegration().Add(source);
  TfrmKKWatchlist form;
  form.InitializeWithDelay();
  TWatchlistItem& faust = Item(Books, source, u"Faust");
  TWatchlistIntegration& record = *FindIntegration(source->GetId());
  form.Updates().UpdateItem(faust);
  // The registered sources no longer have the updater's.
  const auto removed = Handler()->LstIntegration().Extract(record);
  source->Finish(true, FakeResult(u"Faust II"));
  EXPECT_EQ(faust.GetName(), u"Faust");
  EXPECT_FALSE(removed->IsChanged());
  removed->Updater().SetOnProgress({});
  removed->Updater().SetOnUpdateFinished({});
  removed->Updater().SetOnAfterAdd({});
}

TEST_F(TfrmKKWatchlistTest, EndsAreToldWhenTheListHasTakenTheResultIn) {
  ListenToEnds();
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  Form->Updates().UpdateItem(faust);
  Auction->Finish(true, FakeResult(u"Faust II"));
  Form->Updates().UpdateItem(faust);
  Auction->Finish(false);
  Add(Books, u"Emma");
  Auction->Finish(true);
  Add(Books, u"Hamlet");
  Auction->Finish(false);
  EXPECT_THAT(Ends, ElementsAre("Faust II ok listed", "Faust II failed listed", "Emma ok listed",
                                "Hamlet failed"));
}

TEST_F(TfrmKKWatchlistTest, EndsOfSourcesThatAnswerAtOnceAreToldOneByOne) {
  ListenToEnds();
  Auction->SetAnswersAtOnce(true);
  Item(Books, Auction, u"Faust");
  Item(Books, Auction, u"Emma");
  Form->Updates().UpdateAll();
  EXPECT_THAT(Ends, ElementsAre("Faust ok listed", "Emma ok listed"));
}

TEST_F(TfrmKKWatchlistTest, ListenerThatFailsDoesNotStopTheQueue) {
  struct TListener {
    void DoFinished(TObject*, const TIntf<ISearchResult>&, bool) { throw Exception(u"Nein"); }
  } listener;
  Form->SetOnUpdateFinished(TNotifyEventSearchResult::Of<&TListener::DoFinished>(&listener));
  Item(Books, Auction, u"Faust");
  Item(Books, Auction, u"Emma");
  Form->Updates().UpdateAll();
  Auction->Finish(true);
  EXPECT_EQ(Auction->Requests().size(), 1U);
}

TEST_F(TfrmKKWatchlistTest, SectionThatIsGoneHearsNothing) {
  ListenToEnds();
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  Form->Updates().UpdateItem(faust);
  Form->Uninitialize();
  Auction->Finish(true);
  EXPECT_THAT(Ends, IsEmpty());
}

// Adding with a first refresh.

TEST_F(TfrmKKWatchlistTest, AddedResultBecomesAnItemAndIsSaved) {
  Add(Books, u"Faust", Now().PlusMs(TDateTime::cMsPerHour));
  EXPECT_TRUE(Form->FormAddProgress().Visible());
  EXPECT_EQ(Form->FormAddProgress().Parent(), Form.get());
  EXPECT_FALSE(Folder.Has(cWatchlistFileName));
  Auction->Finish(true);
  EXPECT_THAT(Names(Group(Books, Auction).LstItem()), ElementsAre("Faust"));
  EXPECT_TRUE(Folder.Has(cWatchlistFileName));
  EXPECT_FALSE(Form->FormAddProgress().Visible());
  EXPECT_NE(Form->Panes().Tree.GetNodeByObj(&Group(Books, Auction).LstItem().GetItems(0)), nullptr);
  EXPECT_EQ(Handler()->LstRemind().GetCount(), 0) << "no reminder unless the setting says so";
}

TEST_F(TfrmKKWatchlistTest, AddedResultsAreKeptUntilTheNextAdd) {
  Add(Books, u"Faust");
  Auction->Finish(true);
  EXPECT_EQ(Form->AddedSearchResults().GetCount(), 1);
  const TIntf<IInterfaceList> two = ListOf(FakeResult(u"Emma"));
  two->Add(FakeResult(u"Hamlet"));
  Form->AddWithUpdate(two, Record(Auction), Books);
  EXPECT_EQ(Form->AddedSearchResults().GetCount(), 2);
  EXPECT_EQ(GetAs<ISearchResult>(Form->AddedSearchResults(), 0)->GetName(), u"Emma");
}

TEST_F(TfrmKKWatchlistTest, SecondAddBeforeTheFirstHasEndedReplacesTheOneSharedList) {
  Form->Show();
  Add(Books, u"Faust");
  Add(Books, u"Emma");
  EXPECT_EQ(Form->AddedSearchResults().GetCount(), 1);
  Auction->Finish(true);  // Faust is in no list any more
  EXPECT_EQ(Group(Books, Auction).LstItem().GetCount(), 0);
  Auction->Finish(true);
  EXPECT_THAT(Names(Group(Books, Auction).LstItem()), ElementsAre("Emma"));
  // Emma stood in the list twice, and one copy is left: the panel waits for the user.
  EXPECT_TRUE(Form->FormAddProgress().Visible());
  EXPECT_TRUE(Form->FormAddProgress().btnCancel.Click());
  EXPECT_FALSE(Form->FormAddProgress().Visible());
}

TEST_F(TfrmKKWatchlistTest, EndOfAnAddSetsUpRemindersIfTheSettingSaysSo) {
  RemindByDefault();
  TIniFileSectionWatchlist().SetAutoActivateReminder(true);
  const TGuid id = Add(Books, u"Faust", Now().PlusMs(TDateTime::cMsPerHour));
  EXPECT_EQ(Handler()->LstRemind().GetCount(), 0);
  Auction->Finish(true);
  ASSERT_EQ(Handler()->LstRemind().GetCount(), 1);
  const TRemindItem& reminder = Handler()->LstRemind().First();
  EXPECT_EQ(reminder.Id(), id);
  EXPECT_EQ(reminder.RemindTypes(), TRemindTypes({rtSound}));
  EXPECT_EQ(reminder.RemindTime(), Now().PlusMs(55 * TDateTime::cMsPerMinute));
  EXPECT_TRUE(Log.Contains("info Form: Neue Erinnerung angelegt"));
  EXPECT_EQ(User.ShownCount(), 0) << "nobody is asked";
}

TEST_F(TfrmKKWatchlistTest, AddedOfferWithoutAnEndGetsNoReminder) {
  RemindByDefault();
  TIniFileSectionWatchlist().SetAutoActivateReminder(true);
  Add(Books, u"Faust");
  Auction->Finish(true);
  EXPECT_EQ(Handler()->LstRemind().GetCount(), 0);
}

TEST_F(TfrmKKWatchlistTest, ResultThatWasNotAddedGetsAReminderToo) {
  RemindByDefault();
  TIniFileSectionWatchlist().SetAutoActivateReminder(true);
  Form->Show();
  const TDateTime end = Now().PlusMs(TDateTime::cMsPerHour);
  Add(Books, u"Faust", end);
  Auction->Finish(false);
  EXPECT_EQ(Handler()->LstRemind().GetCount(), 1);
  Add(Books, u"Emma", end);
  EXPECT_TRUE(Form->FormAddProgress().btnCancel.Click());
  EXPECT_EQ(Handler()->LstRemind().GetCount(), 2);
  Auction->Finish(true);
  EXPECT_EQ(Books.GetItemCount(true), 0);
}

// Imports.

class TFakeImport : public TWatchlistImport {
 public:
  bool Display(TForm* iOwner) override {
    Owner = iOwner;
    return Answer;
  }
  bool ExecuteInBackground(TStringView iFileName) override {
    FileName = iFileName;
    return Answer;
  }
  bool ExecuteInBackgroundFromKKMobileStream(TMemoryStream& iStream) override {
    Bytes = iStream.Bytes();
    return Answer;
  }
  bool Answer = true;
  TForm* Owner = nullptr;
  TString FileName;
  std::string Bytes;
};

TEST_F(TfrmKKWatchlistTest, ImportThatSucceededIsSavedAndShown) {
  TFakeImport import;
  Form->SetImport(&import);
  TWatchlistCategory& clocks = Category(u"Uhren");
  EXPECT_TRUE(Form->ImportInBackgroundFromFile(u"liste.wch"));
  EXPECT_EQ(import.FileName, u"liste.wch");
  EXPECT_TRUE(Folder.Has(cWatchlistFileName));
  EXPECT_NE(Form->Panes().Tree.GetNodeByObj(&clocks), nullptr);
  TWatchlistCategory& games = Category(u"Spiele");
  TMemoryStream stream("<watchlist/>");
  EXPECT_TRUE(Form->ImportInBackgroundFromKKMobileStream(stream));
  EXPECT_EQ(import.Bytes, "<watchlist/>");
  EXPECT_NE(Form->Panes().Tree.GetNodeByObj(&games), nullptr);
}

TEST_F(TfrmKKWatchlistTest, ImportThatFailedChangesNothing) {
  TFakeImport import;
  import.Answer = false;
  Form->SetImport(&import);
  TWatchlistCategory& clocks = Category(u"Uhren");
  EXPECT_FALSE(Form->ImportInBackgroundFromFile(u"liste.wch"));
  TMemoryStream stream;
  EXPECT_FALSE(Form->ImportInBackgroundFromKKMobileStream(stream));
  EXPECT_FALSE(Folder.Has(cWatchlistFileName));
  EXPECT_EQ(Form->Panes().Tree.GetNodeByObj(&clocks), nullptr);
}

TEST_F(TfrmKKWatchlistTest, ImportsByItself) {
  TMemoryStream stream(
      "<watchlist><version>1</version><categories><category><guid>"
      "abcdef01-2222-3333-4444-555555555555</guid><name>Uhren</name></category></categories>"
      "</watchlist>");
  EXPECT_TRUE(Form->ImportInBackgroundFromKKMobileStream(stream));
  EXPECT_NE(Tree().FindCategoryByName(u"Uhren"), nullptr);
  EXPECT_TRUE(Form->ImportInBackgroundFromFile(Folder.File(cWatchlistFileName)));
  EXPECT_FALSE(Form->ImportInBackgroundFromFile(Folder.File(u"fehlt.wch")));
}

TEST_F(TfrmKKWatchlistTest, SectionThatIsNeverShownWorksJustTheSame) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  Form->BuildCategoriesTree(false);
  Form->Updates().UpdateItem(faust);
  Auction->Finish(true, FakeResult(u"Faust II"));
  TWatchlistCategory& clocks = Form->Categories().AddCategory(nullptr, u"Uhren", {});
  Form->Categories().RenameCategory(clocks, u"Wecker");
  Form->Items().MoveItems(Auction, clocks, Results({&faust}), {faust.SearchResultId()});
  Form->Updates().UpdateItem(faust);
  Form->Items().DeleteItems(Auction, Results({&faust}), {faust.SearchResultId()});
  Form->Categories().DoMoveCategory(&Books, clocks);
  Form->BuildCategoriesTree(true);
  TWatchlistItem& emma = Item(Books, Auction, u"Emma");
  Deliver(emma);
  Form->Reminders().DoTabReminderAdd(Auction, Results({&emma}));
  Form->Reminders().DoTabReminderDelete(false, Auction, Results({&emma}));
  User.ExpectQuestion(u"Soll der markierte Eintrag wirklich gelöscht werden?", true);
  EXPECT_TRUE(Form->Items().DeleteItem(emma));
  EXPECT_EQ(Tree().GetItems(0).GetItemCount(true), 0);
}

}  // namespace
}  // namespace kk
