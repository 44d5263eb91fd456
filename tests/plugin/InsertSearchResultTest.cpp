#include "plugin/InsertSearchResult.h"

#include "TPluginWorld.h"
#include "plugin/TWatchlist.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto cAll = &TfrmWatchlistAddSearchResults::btnAll;
constexpr auto cCancel = &TfrmWatchlistAddSearchResults::btnCancel;

class TInsertTest : public testing::Test, public TPluginWorld {
 protected:
  TInsertTest() { Initialize(); }
  bool Insert(const TIntf<ISearchResult>& iResult) {
    return InsertSearchResult(iResult, Record(Auction), &Form());
  }
  bool Insert(TStringView iName) { return Insert(FakeResult(iName)); }
  static void AskNothing() { TIniFileSectionWatchlist().SetShowAddDialog(false); }

  TWatchlistCategory& Books = Category(u"Bücher");
  TWatchlistCategory& Clocks = Category(u"Uhren");
};

// AskForTargetCategory

class TAskForTargetCategoryTest : public TInsertTest {
 protected:
  TAskForTargetCategoryTest() { Known->Add(FakeResult(u"Bekannt")); }
  TWatchlistCategory* Ask() { return AskForTargetCategory(Auction, *New, *Known); }

  TIntf<IInterfaceList> New = NewInterfaceList();
  TIntf<IInterfaceList> Known = NewInterfaceList();
};

TEST_F(TAskForTargetCategoryTest, WithoutAQuestionTheDefaultIsTaken) {
  AskNothing();
  auto child = std::make_unique<TWatchlistCategory>();
  child->SetId(NewGuid());
  TWatchlistCategory& novels = Books.LstCategory().Add(std::move(child));
  TIniFileSectionWatchlist().SetDefaultCategory(Auction->GetId(), novels.Id());
  EXPECT_EQ(Ask(), &novels);
  EXPECT_EQ(Known->GetCount(), 0) << "what is watched already stays where it is";
}

TEST_F(TAskForTargetCategoryTest, WithoutAQuestionAndADefaultTheUnassignedCategoryIsTaken) {
  AskNothing();
  EXPECT_EQ(Ask(), &Unassigned());
  TIniFileSectionWatchlist().SetDefaultCategory(Auction->GetId(), NewGuid());
  EXPECT_EQ(Ask(), &Unassigned());
  Tree().DeleteCategory(Unassigned());
  EXPECT_EQ(Ask(), nullptr);
}

TEST_F(TAskForTargetCategoryTest, DefaultOfTheSourceIsPreset) {
  TIniFileSectionWatchlist().SetDefaultCategory(Auction->GetId(), Clocks.Id());
  TIniFileSectionWatchlist().SetDefaultCategory(Shop->GetId(), Books.Id());
  User.Expect<TfrmWatchlistAddSearchResults>([this](TfrmWatchlistAddSearchResults& form) {
    EXPECT_EQ(form.cmbxCategory.Text(), u"Uhren");
    EXPECT_EQ(form.cmbxCategory.Items().size(), 3U);
    EXPECT_FALSE(form.chckbxPreset.Checked());
    form.btnOnlyNew.Click();
  });
  EXPECT_EQ(Ask(), &Clocks);
}

TEST_F(TAskForTargetCategoryTest, OnlyNewForgetsTheKnownOnesAndAllKeepsThem) {
  ExpectQuestion(u"Bücher", cAll);
  EXPECT_EQ(Ask(), &Books);
  EXPECT_EQ(Known->GetCount(), 1);
  ExpectQuestion(u"Bücher");
  EXPECT_EQ(Ask(), &Books);
  EXPECT_EQ(Known->GetCount(), 0);
}

TEST_F(TAskForTargetCategoryTest, CancelStoresNothing) {
  User.Expect<TfrmWatchlistAddSearchResults>([](TfrmWatchlistAddSearchResults& form) {
    form.cmbxCategory.EnterText(u"Möbel");
    form.chckbxNotAgain.Click();
    form.chckbxPreset.Click();
    form.btnCancel.Click();
  });
  EXPECT_EQ(Ask(), nullptr);
  EXPECT_TRUE(TIniFileSectionWatchlist().GetShowAddDialog());
  EXPECT_EQ(TIniFileSectionWatchlist().GetDefaultCategory(Auction->GetId()), cEmptyGuid);
  EXPECT_EQ(Tree().GetCount(), 3);
  EXPECT_EQ(Known->GetCount(), 1);
}

TEST_F(TAskForTargetCategoryTest, NameThatIsTypedMakesACategoryAtTheTopLevel) {
  ExpectQuestion(u"Möbel");
  TWatchlistCategory* furniture = Ask();
  ASSERT_NE(furniture, nullptr);
  EXPECT_EQ(furniture->Name(), u"Möbel");
  EXPECT_EQ(furniture->List(), &Tree());
  EXPECT_FALSE(SameGuid(furniture->Id(), cEmptyGuid));
  EXPECT_EQ(Tree().GetCount(), 4);
}

TEST_F(TAskForTargetCategoryTest, PresetIsStoredForTheSourceAlsoForANewCategory) {
  User.Expect<TfrmWatchlistAddSearchResults>([](TfrmWatchlistAddSearchResults& form) {
    form.cmbxCategory.EnterText(u"Möbel");
    form.chckbxPreset.Click();
    TIniFileSectionWatchlist().SetShowAddDialog(false);  // in the settings, meanwhile
    form.btnOnlyNew.Click();
  });
  const TWatchlistCategory* furniture = Ask();
  EXPECT_EQ(TIniFileSectionWatchlist().GetDefaultCategory(Auction->GetId()), furniture->Id());
  EXPECT_EQ(TIniFileSectionWatchlist().GetDefaultCategory(Shop->GetId()), cEmptyGuid);
  EXPECT_TRUE(TIniFileSectionWatchlist().GetShowAddDialog());
}

TEST_F(TAskForTargetCategoryTest, NotAgainSwitchesTheQuestionOff) {
  User.Expect<TfrmWatchlistAddSearchResults>([](TfrmWatchlistAddSearchResults& form) {
    form.cmbxCategory.EnterText(u"Uhren");
    form.chckbxNotAgain.Click();
    form.btnOnlyNew.Click();
  });
  EXPECT_EQ(Ask(), &Clocks);
  EXPECT_FALSE(TIniFileSectionWatchlist().GetShowAddDialog());
  EXPECT_EQ(TIniFileSectionWatchlist().GetDefaultCategory(Auction->GetId()), cEmptyGuid);
  EXPECT_EQ(Ask(), &Unassigned());
}

TEST_F(TAskForTargetCategoryTest, CategoryThatWentDuringTheQuestionCountsAsCancel) {
  User.Expect<TfrmWatchlistAddSearchResults>([this](TfrmWatchlistAddSearchResults& form) {
    form.cmbxCategory.EnterText(u"Bücher");
    Tree().DeleteCategory(Books);
    form.btnOnlyNew.Click();
  });
  EXPECT_EQ(Ask(), nullptr);
}

// InsertSearchResult

TEST_F(TInsertTest, EmptyResultIsRefused) {
  EXPECT_FALSE(Insert(TIntf<ISearchResult>()));
  EXPECT_FALSE(InsertSearchResult(FakeResult(u"Faust"), Record(Auction), nullptr));
}

TEST_F(TInsertTest, NewResultIsAddedThroughARefresh) {
  ExpectQuestion(u"Bücher");
  EXPECT_TRUE(Insert(u"Faust"));
  EXPECT_THAT(Queued(Auction), ElementsAre("Faust"));
  EXPECT_EQ(Books.LstPlugin().GetCount(), 1);
  EXPECT_EQ(Books.GetItemCount(true), 0) << "not before the refresh has ended";
  EXPECT_EQ(Rebuilds.Count, 1);
  Auction->Finish(true);
  EXPECT_THAT(Names(Group(Books, Auction).LstItem()), ElementsAre("Faust"));
  EXPECT_EQ(Group(Books, Auction).LstItem().GetItems(0).ParentCategoryId(), Books.Id());
}

TEST_F(TInsertTest, NewResultGoesToTheGroupThatIsThere) {
  Item(Books, Auction, u"Emma");
  ExpectQuestion(u"Bücher");
  EXPECT_TRUE(Insert(u"Faust"));
  Auction->Finish(true);
  EXPECT_EQ(Books.LstPlugin().GetCount(), 1);
  EXPECT_THAT(Names(Group(Books, Auction).LstItem()), ElementsAre("Emma", "Faust"));
}

TEST_F(TInsertTest, KnownResultIsMovedWithAll) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  Item(Books, Auction, u"Emma");
  ExpectQuestion(u"Uhren", cAll);
  EXPECT_TRUE(Insert(u"Faust"));
  EXPECT_EQ(&Group(Clocks, Auction).LstItem().GetItems(0), &faust);
  EXPECT_EQ(faust.ParentCategoryId(), Clocks.Id());
  EXPECT_THAT(Names(Group(Books, Auction).LstItem()), ElementsAre("Emma"));
  EXPECT_EQ(Flags(Auction), "RI");
  EXPECT_THAT(Queued(Auction), IsEmpty());
  EXPECT_EQ(Rebuilds.Count, 1);
}

TEST_F(TInsertTest, GroupsLeftEmptyAreDeleted) {
  Item(Books, Auction, u"Faust");
  ExpectQuestion(u"Uhren", cAll);
  Insert(u"Faust");
  EXPECT_EQ(Books.LstPlugin().GetCount(), 0);
  EXPECT_EQ(Clocks.LstPlugin().GetCount(), 1);
}

TEST_F(TInsertTest, KnownResultStaysWithOnlyNew) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  ExpectQuestion(u"Uhren");
  EXPECT_TRUE(Insert(u"Faust"));
  EXPECT_EQ(faust.ParentCategoryId(), Books.Id());
  EXPECT_EQ(Flags(Auction), "-");
  EXPECT_EQ(Clocks.LstPlugin().GetCount(), 0) << "the group made for it has gone again";
  EXPECT_EQ(Rebuilds.Count, 1);
}

TEST_F(TInsertTest, WithTheDialogOffAKnownResultMovesNothing) {
  AskNothing();
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  EXPECT_TRUE(Insert(u"Faust"));
  EXPECT_EQ(faust.ParentCategoryId(), Books.Id());
  EXPECT_EQ(Unassigned().LstPlugin().GetCount(), 0);
  EXPECT_EQ(Flags(Auction), "-");
  EXPECT_EQ(Rebuilds.Count, 1);
}

TEST_F(TInsertTest, KnownResultInTheTargetStays) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  ExpectQuestion(u"Bücher", cAll);
  EXPECT_TRUE(Insert(u"Faust"));
  EXPECT_EQ(faust.ParentCategoryId(), Books.Id());
  EXPECT_EQ(Flags(Auction), "-");
}

TEST_F(TInsertTest, OnlyItemsOfTheSourceCount) {
  Item(Books, Shop, u"Faust");
  ExpectQuestion(u"Bücher", cAll);
  EXPECT_TRUE(Insert(u"Faust"));
  EXPECT_THAT(Queued(Auction), ElementsAre("Faust"));
}

TEST_F(TInsertTest, ItemsWithoutAResultAreNotTheSame) {
  TWatchlistItem& lost = Group(Books, Auction).LstItem().Add(std::make_unique<TWatchlistItem>());
  lost.SetSearchResultId(NewGuid());
  ExpectQuestion(u"Bücher", cAll);
  EXPECT_TRUE(Insert(u"Faust"));
  EXPECT_THAT(Queued(Auction), ElementsAre("Faust"));
}

TEST_F(TInsertTest, ResultInTheQueueCountsAsNew) {
  Item(Books, Auction, u"Emma");
  Record(Auction).Updater().Add(FakeResult(u"Faust"), {});
  ExpectQuestion(u"Bücher");
  EXPECT_TRUE(Insert(u"Faust"));
  EXPECT_EQ(Record(Auction).Updater().GetCount(), 2) << "the queue's answer has no effect";
}

TEST_F(TInsertTest, KnownItemThatGoesDuringTheQuestionIsNotMoved) {
  const TGuid id = Item(Books, Auction, u"Faust").SearchResultId();
  User.Expect<TfrmWatchlistAddSearchResults>([&](TfrmWatchlistAddSearchResults& form) {
    Tree().DeleteItemById(id);
    form.cmbxCategory.EnterText(u"Uhren");
    form.btnAll.Click();
  });
  EXPECT_TRUE(Insert(u"Faust"));
  EXPECT_EQ(Tree().FindItemById(id), nullptr);
  EXPECT_EQ(Clocks.LstPlugin().GetCount(), 0) << "the group made for it has gone again";
  EXPECT_EQ(Flags(Auction), "-");
}

TEST_F(TInsertTest, FirstItemThatIsTheSameIsMoved) {
  TWatchlistItem& first = Item(Books, Auction, u"Faust");
  TWatchlistItem& second = Item(Unassigned(), Auction, u"Faust");
  Tree().Move(Tree().IndexOf(&Unassigned()), 2);
  ExpectQuestion(u"Uhren", cAll);
  EXPECT_TRUE(Insert(u"Faust"));
  EXPECT_EQ(first.ParentCategoryId(), Clocks.Id());
  EXPECT_EQ(second.ParentCategoryId(), cEmptyGuid);
}

TEST_F(TInsertTest, CancelLeavesEverythingAsItWas) {
  ExpectQuestion(u"Möbel", cCancel);
  EXPECT_FALSE(Insert(u"Faust"));
  EXPECT_EQ(Tree().GetCount(), 3);
  EXPECT_EQ(Books.LstPlugin().GetCount(), 0);
  EXPECT_EQ(Rebuilds.Count, 0);
}

// TWatchlist

class TWatchlistTest : public TInsertTest {
 protected:
  TWatchlistTest() {
    const auto info = MakeIntf<TPluginIntegrationInfo>(NewGuid(), TGroupIdentification{1});
    Watchlist = GetAs<IWatchlist>(*Plugin->GetIntegration()->GetIntegrations(info), 0);
  }

  static constexpr char cFirstLine[] = "info Watchlist-Interface: Füge neuen Eintrag ein...";
  TIntf<IWatchlist> Watchlist;
};

TEST_F(TWatchlistTest, AddItemAddsThroughTheQuestion) {
  ExpectQuestion(u"Bücher");
  EXPECT_TRUE(Watchlist->AddItem(Auction->GetId(), FakeResult(u"Faust")));
  EXPECT_EQ(Log.Lines().front(), cFirstLine);
  Auction->Finish(true);
  EXPECT_THAT(Names(Group(Books, Auction).LstItem()), ElementsAre("Faust"));
}

TEST_F(TWatchlistTest, EmptyResultIsReportedAsEmptyAlsoForAnUnknownSource) {
  EXPECT_FALSE(Watchlist->AddItem(NewGuid(), {}));
  EXPECT_THAT(
      Log.Lines(),
      ElementsAre(cFirstLine,
                  "info Watchlist-Interface: Eintrag abgelehnt: Leeren Eintrag (=nil) erhalten!"));
}

TEST_F(TWatchlistTest, UnknownSourceIsRejected) {
  const TGuid id = GuidLiteral("{5E000000-0000-0000-0000-00000000000A}");
  EXPECT_FALSE(Watchlist->AddItem(id, FakeResult(u"Faust")));
  EXPECT_THAT(Log.Lines(),
              ElementsAre(cFirstLine,
                          "info Watchlist-Interface: Eintrag abgelehnt: Plugin unbekannt "
                          "({5E000000-0000-0000-0000-00000000000A})!"));
}

TEST_F(TWatchlistTest, ResultThatIsWatchedIsRejectedBeforeAnyDialog) {
  Item(Books, Auction, u"Faust");
  EXPECT_TRUE(Watchlist->HasItem(Auction->GetId(), FakeResult(u"Faust")));
  EXPECT_FALSE(Watchlist->HasItem(Shop->GetId(), FakeResult(u"Faust")));
  EXPECT_FALSE(Watchlist->AddItem(Auction->GetId(), FakeResult(u"Faust")));
  EXPECT_THAT(Log.Lines(), ElementsAre(cFirstLine,
                                       "info Watchlist-Interface: Eintrag abgelehnt: Bereits in "
                                       "Beobachtenstruktur enthalten!"));
  EXPECT_EQ(User.ShownCount(), 0);
}

TEST_F(TWatchlistTest, CancelIsLogged) {
  ExpectQuestion(u"Bücher", cCancel);
  EXPECT_FALSE(Watchlist->AddItem(Auction->GetId(), FakeResult(u"Faust")));
  EXPECT_THAT(
      Log.Lines(),
      ElementsAre(cFirstLine,
                  "info Watchlist-Interface: Eintrag abgelehnt: User hat Eintrag abgelehnt!"));
}

TEST_F(TWatchlistTest, NoAffiliateIsFollowed) {
  AskNothing();
  Auction->SetAffiliateId(Shop->GetId());
  EXPECT_TRUE(Watchlist->AddItem(Auction->GetId(), FakeResult(u"Faust")));
  EXPECT_THAT(Queued(Auction), ElementsAre("Faust"));
}

TEST_F(TWatchlistTest, WithoutAFormNothingIsAdded) {
  struct TNoForm {
    TfrmKKWatchlist* DoGetForm(TObject*) { return nullptr; }
  } noForm;
  const auto watchlist = MakeIntf<TWatchlist>(TNotifyGetForm::Of<&TNoForm::DoGetForm>(&noForm));
  EXPECT_FALSE(watchlist->AddItem(Auction->GetId(), FakeResult(u"Faust")));
  EXPECT_THAT(
      Log.Lines(),
      ElementsAre(cFirstLine, "info Watchlist-Interface: Die Beobachtenliste ist nicht bereit."));
}

TEST_F(TWatchlistTest, WatchlistThatOutlivesThePluginRejects) {
  Plugin->Uninitialize();
  Drop();
  Log.Clear();
  EXPECT_FALSE(Watchlist->HasItem(Auction->GetId(), FakeResult(u"Faust")));
  EXPECT_FALSE(Watchlist->AddItem(Auction->GetId(), FakeResult(u"Faust")));
  EXPECT_EQ(Log.Lines().size(), 2U);
}

}  // namespace
}  // namespace kk
