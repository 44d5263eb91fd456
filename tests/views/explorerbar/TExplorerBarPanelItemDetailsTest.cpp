#include "views/explorerbar/TExplorerBarPanelItemDetails.h"

#include "TExplorerBarWorld.h"
#include "tests/support/TBrokenResult.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string cEditNote = "> Notiz bearbeiten... [EXPLORERBANDBARICO_EDIT]";
const std::string cUpdate = "> Eintrag aktualisieren [EXPLORERBANDBARICO_REFRESH]";
const std::string cEnded = "\"Eintrag beendet. Aktualisierung nicht möglich.\"";
const std::string cAddReminder = "> Erinnerung einrichten... [EXPLORERBANDBARICO_ADD]";

class TDetailsTest : public TExplorerBarTest {
 protected:
  static constexpr int64_t cHour = TDateTime::cMsPerHour;

  TLines Show(const TIntf<ISearchResult>& iResult) {
    Bar->SetCurrentSearchResult(iResult);
    return Lines(DetailsGroup());
  }
  TLines Show(const TWatchlistItem& iItem) { return Show(iItem.SearchResult()); }

  TWatchlistCategory& Books = Category(u"Bücher");
};

TEST_F(TDetailsTest, ShowsNoteAndLastRefreshOfTheResult) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  faust.Description().Add(u"Leinen");
  faust.SetLastUpdateDate(EncodeDateTime({2026, 11, 19, 8, 15, 30, 0}));
  EXPECT_THAT(Show(faust), ElementsAre("\"Notiz\"", "> Leinen", "---",
                                       "Letzte Aktualisierung: 19.11.2026, 08:15:30", cUpdate));
}

TEST_F(TDetailsTest, WithoutAResultAllIsHidden) {
  Show(Item(Books, Auction, u"Faust"));
  EXPECT_THAT(Show(TIntf<ISearchResult>()), IsEmpty());
}

TEST_F(TDetailsTest, AResultThatTheModelDoesNotHoldShowsNothing) {
  Show(Item(Books, Auction, u"Faust"));
  EXPECT_THAT(Show(FakeResult(u"Fremd", Now().PlusMs(-cHour))), IsEmpty());
}

TEST_F(TDetailsTest, WhatWasNeverRefreshedShowsADash) {
  EXPECT_THAT(Show(Item(Books, Auction, u"Faust")),
              ElementsAre("\"Notiz\"", cEditNote, "---", "Letzte Aktualisierung: -", cUpdate));
}

TEST_F(TDetailsTest, ANoteOfTwoLinesShowsAsOne) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  faust.SetDescription({u" Leinen", u"mit Schuber "});
  EXPECT_EQ(Show(faust)[1], "> Leinen mit Schuber");
  faust.SetDescription({u"Leinen", u"", u"mit Schuber", u""});
  Bar->RefreshCurrentSearchResult();
  EXPECT_EQ(Lines(DetailsGroup())[1], "> Leinen  mit Schuber") << "one blank for each line break";
}

TEST_F(TDetailsTest, WithoutANoteTheLinkOffersToWriteOne) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  faust.Description().Add(u"Leinen");
  EXPECT_EQ(Show(faust)[1], "> Leinen") << "without the image";
  faust.SetDescription({u"  ", u"\t"});
  Bar->RefreshCurrentSearchResult();
  EXPECT_EQ(Lines(DetailsGroup())[1], cEditNote);
}

TEST_F(TDetailsTest, WhatNeverEndsCanAlwaysBeRefreshed) {
  TWatchlistItem& offer = Item(Books, Auction, u"Festpreis");
  offer.SetLastUpdateDate(Now());
  const TLines lines = Show(offer);
  EXPECT_EQ(lines.back(), cUpdate);
  EXPECT_FALSE(Shows(DetailsGroup(), cEnded));
  EXPECT_FALSE(Shows(ReminderGroup(), cAddReminder));
}

TEST_F(TDetailsTest, AnEndedAuctionLastRefreshedBeforeItsEndCanBeRefreshedOnceMore) {
  TWatchlistItem& clock = Item(Books, Auction, u"Uhr", Now().PlusMs(-cHour));
  clock.SetLastUpdateDate(Now().PlusMs(-2 * cHour));
  EXPECT_EQ(Show(clock).back(), cUpdate);
  EXPECT_FALSE(Shows(DetailsGroup(), cEnded));
  EXPECT_FALSE(Shows(ReminderGroup(), cAddReminder));
}

TEST_F(TDetailsTest, AnEndedAuctionLastRefreshedBehindItsEndCantBeRefreshed) {
  TWatchlistItem& clock = Item(Books, Auction, u"Uhr", Now().PlusMs(-cHour));
  clock.SetLastUpdateDate(Now());
  EXPECT_EQ(Show(clock).back(), cEnded);
  EXPECT_FALSE(Shows(DetailsGroup(), cUpdate));
}

TEST_F(TDetailsTest, ASourceWithoutRefreshesShowsTheNoteAlone) {
  const auto still = MakeIntf<TFakeSource>(u"Still", NewGuid(), TFakeAbilities{.Update = false});
  TWatchlistItem& clock = Item(Books, still, u"Uhr", Now().PlusMs(-cHour));
  clock.SetLastUpdateDate(Now());
  clock.Description().Add(u"Leinen");
  EXPECT_THAT(Show(clock), ElementsAre("\"Notiz\"", "> Leinen"));
}

TEST_F(TDetailsTest, FindsTheItemWhereverItHangs) {
  TWatchlistItem& faust = Item(Category(u"Dramen", &Books), Shop, u"Faust");
  EXPECT_TRUE(testing::Value(Show(faust), testing::Contains(cUpdate)));
}

TEST_F(TDetailsTest, AFailureTakesTheRefreshAwayAndIsSwallowed) {
  const auto broken = MakeIntf<TBrokenResult>(u"Uhr");
  TWatchlistItem& clock = Group(Books, Auction).LstItem().Add(std::make_unique<TWatchlistItem>());
  clock.SetSearchResult(broken);
  clock.Description().Add(u"Leinen");
  EXPECT_EQ(Show(clock).back(), cUpdate);
  broken->Fails = true;
  Skin.Take();
  EXPECT_THROW(Bar->RefreshCurrentSearchResult(), Exception)
      << "the reminders' group guards nothing";
  const auto panel = TIntf<TExplorerBarPanelItemDetails>(
      dynamic_cast<TExplorerBarPanelItemDetails*>(Bar->GetPanels(0).Get()));
  panel->RefreshDisplay();
  EXPECT_THAT(Lines(DetailsGroup()),
              ElementsAre("\"Notiz\"", "> Leinen", "---", "Letzte Aktualisierung: -"));
  EXPECT_THAT(Log.DebugLines(),
              ElementsAre("debug TExplorerBarPanelItemDetails.RefreshDisplay: Ende kaputt"));
  EXPECT_EQ(Skin.Take()["TExplorerBarPanelItemDetails"], 1);

  broken->Fails = false;
  panel->RefreshDisplay();
  EXPECT_EQ(Lines(DetailsGroup()).back(), cUpdate);
}

TEST_F(TDetailsTest, AFailureTakesTheTextOfTheEndAwayToo) {
  TWatchlistItem& clock = Item(Books, Auction, u"Uhr", Now().PlusMs(-cHour));
  clock.SetLastUpdateDate(Now());
  EXPECT_EQ(Show(clock).back(), cEnded);
  const auto broken = MakeIntf<TBrokenResult>(u"Ring");
  Group(Books, Auction).LstItem().Add(std::make_unique<TWatchlistItem>()).SetSearchResult(broken);
  broken->Fails = true;
  const auto panel = TIntf<TExplorerBarPanelItemDetails>(
      dynamic_cast<TExplorerBarPanelItemDetails*>(Bar->GetPanels(0).Get()));
  panel->SetSelection(broken);
  EXPECT_EQ(panel->Selection(), TIntf<ISearchResult>(broken));
  EXPECT_FALSE(Shows(DetailsGroup(), cEnded));
}

}  // namespace
}  // namespace kk
