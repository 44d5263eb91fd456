#include "views/explorerbar/TExplorerBarWatchlist.h"

#include "TExplorerBarWorld.h"
#include "host/controls/TUpdating.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// "id order kind text [image] wrap hidden", for all items of a panel.
TLines Described(const TKK5SkinExplorerGroup& iGroup) {
  TLines lines;
  for (const auto& item : iGroup.Items()) {
    lines.push_back(ToUtf8(GUIDToString(item->GetId())) + " " +
                    std::to_string(item->GetSortOrder()) + " " + LineOf(*item) +
                    (item->GetWordWrap() ? " wrap" : "") + (item->GetVisible() ? "" : " hidden"));
  }
  return lines;
}

TEST_F(TExplorerBarTest, GroupsStandInTheirOrder) {
  TLines titles;
  for (const TKK5SkinExplorerGroup* group : explrbr.Groups()) {
    titles.push_back(ToUtf8(group->Caption()) + (group->Visible() ? "" : " hidden"));
  }
  EXPECT_THAT(titles,
              ElementsAre("Kategorie", "Details", "Erinnerung", "Weitere Optionen", " hidden"));
}

TEST_F(TExplorerBarTest, PanelsHaveTheIdsThatOtherPluginsKnow) {
  TLines panels;
  for (int i = 0; i < Bar->GetCount(); ++i) {
    const TIntf<IExplorerBarPanel> panel = Bar->GetPanels(i);
    panels.push_back(ToUtf8(GUIDToString(panel->GetId())) + " " +
                     std::to_string(panel->GetSortOrder()));
  }
  EXPECT_THAT(panels, ElementsAre("{22C5DCB5-E0A4-45AC-A4EE-3D2600BCE4F5} 200",
                                  "{16CBDEC1-2DC8-40BC-85C2-DDADECDA881A} 300",
                                  "{0109B8B3-2660-4595-8119-4B976BA485D4} 2147483646"));
  EXPECT_EQ(Bar->GetPanelMoreConst(), Bar->GetPanels(2));
  EXPECT_EQ(&Bar->GetControl(), &explrbr);
}

TEST_F(TExplorerBarTest, DetailsHaveTheirItems) {
  EXPECT_THAT(
      Described(DetailsGroup()),
      ElementsAre(
          "{4BFE66BD-782F-4540-A4CF-4885E6087B34} 1000000 ---",
          "{970AED29-189C-4312-A477-8C62C66948B8} 1000010 \"Notiz\" hidden",
          "{AB7E10DE-8DF3-47F5-8C87-1E494D2D0934} 1000011 > Notiz bearbeiten... "
          "[EXPLORERBANDBARICO_EDIT] wrap hidden",
          "{3C4A9FDA-D01F-410B-B884-D77E0925468C} 1000020 ---",
          "{23D81F49-5837-4549-B8E1-F40E18557437} 1000030 Letzte Aktualisierung:  hidden",
          "{B7BBD969-9757-47B9-B103-8D8A939ADE47} 1000035 > Eintrag aktualisieren "
          "[EXPLORERBANDBARICO_REFRESH] wrap hidden",
          "{D30FD997-F011-46F0-BA67-5FFBEDF4D179} 1000036 \"Eintrag beendet. Aktualisierung nicht "
          "möglich.\" wrap hidden"));
}

TEST_F(TExplorerBarTest, FurtherOptionsHaveTheirItems) {
  EXPECT_THAT(
      Described(MoreGroup()),
      ElementsAre("{5783E281-7519-49C3-A440-FDA0F9D8646A} 2147483547 ---",
                  "{AC8B5A5B-177F-4A4A-808E-FF633DDB9EFC} 2147483548 > Daten exportieren... "
                  "[EXPLORERBANDBARICO_EXPORTDATA]",
                  "{011B9F2B-B9F7-4246-89FE-3DEEA37681C9} 2147483549 > Daten importieren... "
                  "[EXPLORERBANDBARICO_IMPORTDATA]",
                  "{D59DF0F0-33DE-48EF-9592-12A426E17D2D} 2147483550 > Daten drucken... "
                  "[EXPLORERBANDBARICO_PRINTDATA]",
                  "{2CAD801B-900F-469B-B59E-DF2CD5A58F01} 2147483551 ---",
                  "{745997CA-A4F3-4A26-8CAF-82A74FAA15D7} 2147483552 \"* Die Preise und "
                  "Versandkosten können sich seit der letzten Aktualisierung verändert haben. Es "
                  "ist technisch nicht möglich, die angegebenen Preise in Echtzeit zu "
                  "aktualisieren. Es gilt der Preis zum Zeitpunkt des Kaufs auf der Website des "
                  "Verkäufers.\" wrap"));
}

TEST_F(TExplorerBarTest, WhatOthersAddToFurtherOptionsStandsAboveItsOwnItems) {
  Bar->FindPanelById(cExplorerbarPanelMoreId)
      ->Add(MakeIntf<TCommonExplorerBarLink>(NewGuid(), 70, u"Artikel beobachten..."));
  EXPECT_EQ(Lines(MoreGroup()).front(), "> Artikel beobachten...");
  EXPECT_EQ(Lines(MoreGroup())[1], "---");
}

TEST_F(TExplorerBarTest, NothingIsSelectedAtFirst) {
  EXPECT_THAT(Lines(CategoryGroup()), IsEmpty());
  EXPECT_THAT(Lines(ReminderGroup()), IsEmpty());
  EXPECT_THAT(Lines(DetailsGroup()), IsEmpty());
  EXPECT_EQ(Bar->GetCurrentCategory(), nullptr);
  EXPECT_FALSE(Bar->GetCurrentSearchResult());
  EXPECT_THAT(Log.DebugLines(), IsEmpty());
}

TEST_F(TExplorerBarTest, IsLaidOutOnceWhenItIsFilledAndWhenItIsCleared) {
  Bar->Clear();
  EXPECT_EQ(Skin.Take()["explrbr"], 1);
  Bar->Init();
  EXPECT_EQ(Skin.Take()["explrbr"], 1);
  Bar->Init();
  EXPECT_EQ(Skin.Take(), TChanges()) << "it is filled already";
  EXPECT_EQ(explrbr.Groups().size(), 5U);
}

TEST_F(TExplorerBarTest, ClearTakesTheGroupsAwayAndForgetsWhatTheyShow) {
  TWatchlistItem& faust = Item(Category(u"Bücher"), Auction, u"Faust");
  Bar->SetSelectedCategory(&Tree().GetItems(0), true);
  Bar->SetCurrentSearchResult(faust.SearchResult());
  EXPECT_EQ(Bar->GetCurrentCategory(), &Tree().GetItems(0));
  EXPECT_EQ(Bar->GetCurrentSearchResult(), faust.SearchResult());
  const TIntf<IExplorerBarPanel> details = Bar->GetPanels(0);
  const TIntf<IExplorerBarPanel> more = Bar->GetPanels(1);
  const TIntf<IExplorerBarPanel> parked = Bar->GetPanels(2);
  parked->Add(MakeIntf<TCommonExplorerBarLink>(NewGuid(), 0, u"Gemerkt"));
  Bar->Clear();
  EXPECT_THAT(explrbr.Groups(), IsEmpty());
  EXPECT_EQ(Bar->GetCount(), 0);
  EXPECT_EQ(details->GetCount(), 0);
  EXPECT_EQ(more->GetCount(), 0);
  EXPECT_EQ(parked->GetCount(), 1) << "what it holds survives";
  EXPECT_EQ(Bar->GetCurrentCategory(), nullptr);
  EXPECT_FALSE(Bar->GetCurrentSearchResult());
  EXPECT_FALSE(Bar->GetPanelMoreConst());
  Bar->Clear();
}

TEST_F(TExplorerBarTest, ABarThatIsNotFilledTakesEverythingAndShowsNothing) {
  TWatchlistItem& faust = Item(Category(u"Bücher"), Auction, u"Faust");
  Bar->Clear();
  Bar->SetSelectedCategory(&Tree().GetItems(0), true);
  Bar->SetCurrentSearchResult(faust.SearchResult());
  Bar->RefreshCurrentSearchResult();
  Bar->RefreshCurrentSearchResultIfEquals(faust.SearchResult());
  EXPECT_EQ(Bar->GetCurrentCategory(), nullptr);
  EXPECT_FALSE(Bar->GetCurrentSearchResult());
}

// Notes which event has come, and from whom.
struct TReceiver {
  void Notify(TObject* Sender) {
    ++Count;
    Last = Sender;
  }
  TNotifyEvent Event() { return TNotifyEvent::Of<&TReceiver::Notify>(this); }
  int Count = 0;
  TObject* Last = nullptr;
};

struct TEventCase {
  TNotifyEvent (TExplorerBarWatchlist::*Get)() const;
  void (TExplorerBarWatchlist::*Set)(TNotifyEvent);
  size_t Group;
  const char16_t* Caption;
};
using TEvents = TExplorerBarWatchlist;
const TEventCase cEvents[] = {
    {&TEvents::GetOnClickCategoryEdit, &TEvents::SetOnClickCategoryEdit, 0,
     u"Kategorie bearbeiten..."},
    {&TEvents::GetOnClickCategoryUpdate, &TEvents::SetOnClickCategoryUpdate, 0,
     u"Kategorie aktualisieren"},
    {&TEvents::GetOnClickDetailsUpdate, &TEvents::SetOnClickDetailsUpdate, 1,
     u"Eintrag aktualisieren"},
    {&TEvents::GetOnClickDetailsEditDescription, &TEvents::SetOnClickDetailsEditDescription, 1,
     u"Notiz bearbeiten..."},
    {&TEvents::GetOnClickRemindAdd, &TEvents::SetOnClickRemindAdd, 2, u"Erinnerung einrichten..."},
    {&TEvents::GetOnClickRemindEdit, &TEvents::SetOnClickRemindEdit, 2,
     u"Erinnerung bearbeiten..."},
    {&TEvents::GetOnClickRemindDelete, &TEvents::SetOnClickRemindDelete, 2, u"Erinnerung löschen"},
    {&TEvents::GetOnClickMoreExport, &TEvents::SetOnClickMoreExport, 3, u"Daten exportieren..."},
    {&TEvents::GetOnClickMoreImport, &TEvents::SetOnClickMoreImport, 3, u"Daten importieren..."},
    {&TEvents::GetOnClickMorePrint, &TEvents::SetOnClickMorePrint, 3, u"Daten drucken..."},
};

TEST_F(TExplorerBarTest, EachLinkRaisesItsOwnEventAndNoOther) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistItem& faust = Item(books, Auction, u"Faust", Now().PlusMs(TDateTime::cMsPerDay));
  Bar->SetSelectedCategory(&books, true);
  std::vector<TReceiver> receivers(std::size(cEvents));
  for (size_t i = 0; i < std::size(cEvents); ++i) {
    EXPECT_FALSE((Bar.Get()->*cEvents[i].Get)());
    (Bar.Get()->*cEvents[i].Set)(receivers[i].Event());
    EXPECT_EQ((Bar.Get()->*cEvents[i].Get)(), receivers[i].Event());
  }
  for (size_t i = 0; i < std::size(cEvents); ++i) {
    // Adding is on offer without a reminder, the other two with one.
    if (!HasReminder(faust.SearchResultId()) && i == 5) Remind(faust);
    Bar->SetCurrentSearchResult(faust.SearchResult());
    TKK5SkinExplorerGroup& group = Group(cEvents[i].Group);
    EXPECT_TRUE(Click(group, cEvents[i].Caption)) << i;
    for (size_t j = 0; j < receivers.size(); ++j) EXPECT_EQ(receivers[j].Count, j <= i) << i << j;
  }
  EXPECT_EQ(receivers[0].Last, &books);
  EXPECT_EQ(receivers[1].Last, &books);
  for (size_t i = 4; i < 7; ++i) {
    EXPECT_EQ(receivers[i].Last, static_cast<TObject*>(&ReminderGroup()));
  }
  for (const auto& [first, last, panel] : {std::tuple(2, 4, 0), std::tuple(7, 10, 1)}) {
    TObject* sender = dynamic_cast<TObject*>(Bar->GetPanels(panel).Get());
    ASSERT_NE(sender, nullptr);
    for (int i = first; i < last; ++i) EXPECT_EQ(receivers[static_cast<size_t>(i)].Last, sender);
  }
}

TEST_F(TExplorerBarTest, LinksWithoutAnEventDoNothing) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistItem& faust = Item(books, Auction, u"Faust", Now().PlusMs(TDateTime::cMsPerDay));
  Bar->SetSelectedCategory(&books, true);
  for (size_t i = 0; i < std::size(cEvents); ++i) {
    if (i == 5) Remind(faust);
    Bar->SetCurrentSearchResult(faust.SearchResult());
    EXPECT_TRUE(Click(Group(cEvents[i].Group), cEvents[i].Caption)) << i;
  }
}

TEST_F(TExplorerBarTest, EventsGoWithTheGroups) {
  TReceiver receiver;
  for (const TEventCase& event : cEvents) (Bar.Get()->*event.Set)(receiver.Event());
  std::vector<TIntf<IExplorerBarItem>> items;
  for (const TKK5SkinExplorerGroup* group : explrbr.Groups()) {
    items.insert(items.end(), group->Items().begin(), group->Items().end());
  }
  Bar->Clear();
  for (const auto& item : items) item->Click();  // somebody kept them
  EXPECT_EQ(receiver.Count, 0);
  for (const TEventCase& event : cEvents) {
    (Bar.Get()->*event.Set)(receiver.Event());
    EXPECT_FALSE((Bar.Get()->*event.Get)()) << "there is no link that could raise it";
  }
}

TEST_F(TExplorerBarTest, AClickMayClearTheBar) {
  struct TClearer {
    void Clear(TObject*) { Bar->Clear(); }
    TExplorerBarWatchlist* Bar;
  } clearer{Bar.Get()};
  const auto clear = TNotifyEvent::Of<&TClearer::Clear>(&clearer);
  TWatchlistCategory& books = Category(u"Bücher");
  Bar->SetOnClickCategoryEdit(clear);
  Bar->SetSelectedCategory(&books, true);
  EXPECT_TRUE(Click(CategoryGroup(), u"Kategorie bearbeiten..."));
  EXPECT_THAT(explrbr.Groups(), IsEmpty());
  Bar->Init();
  Bar->SetOnClickMorePrint(clear);
  EXPECT_TRUE(Click(MoreGroup(), u"Daten drucken..."));
  EXPECT_THAT(explrbr.Groups(), IsEmpty());
}

TEST_F(TExplorerBarTest, AChangeOfTheSelectionIsShownOnceInEachGroup) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistItem& faust = Item(books, Auction, u"Faust", Now().PlusMs(TDateTime::cMsPerDay));
  Skin.Take();
  Bar->SetCurrentSearchResult(faust.SearchResult());
  EXPECT_EQ(Skin.Take(), (TChanges{{"TExplorerBarGroupReminderDetails", 1},
                                   {"TExplorerBarPanelItemDetails", 1}}));
  Bar->RefreshCurrentSearchResult();
  EXPECT_EQ(Skin.Take(), TChanges()) << "nothing is otherwise";
  Remind(faust);
  faust.Description().Add(u"Leinen");
  Bar->RefreshCurrentSearchResult();
  EXPECT_EQ(Skin.Take(), (TChanges{{"TExplorerBarGroupReminderDetails", 1},
                                   {"TExplorerBarPanelItemDetails", 1}}));
  {
    const TUpdating updating(*Bar);
    Bar->SetSelectedCategory(&books, true);
    Bar->SetCurrentSearchResult({});
    EXPECT_EQ(Skin.Take(), TChanges());
  }
  EXPECT_EQ(Skin.Take(), (TChanges{{"TExplorerBarGroupCategoryDetails", 1},
                                   {"TExplorerBarGroupReminderDetails", 1},
                                   {"TExplorerBarPanelItemDetails", 1}}));
}

TEST_F(TExplorerBarTest, OnlyTheCurrentResultIsRefreshedWhenOneHasChanged) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistItem& faust = Item(books, Auction, u"Faust");
  TWatchlistItem& emilia = Item(books, Auction, u"Emilia");
  Bar->SetCurrentSearchResult(faust.SearchResult());
  Remind(faust);
  faust.Description().Add(u"Leinen");
  Skin.Take();
  Bar->RefreshCurrentSearchResultIfEquals(emilia.SearchResult());
  Bar->RefreshCurrentSearchResultIfEquals({});
  EXPECT_EQ(Skin.Take(), TChanges());
  EXPECT_FALSE(Shows(ReminderGroup(), "Meldung: Sound"));
  Bar->RefreshCurrentSearchResultIfEquals(faust.SearchResult()->Clone());
  EXPECT_TRUE(Shows(ReminderGroup(), "Meldung: Sound")) << "the id counts, not the object";
  EXPECT_TRUE(Shows(DetailsGroup(), "> Leinen"));
  Bar->SetCurrentSearchResult({});
  Skin.Take();
  Bar->RefreshCurrentSearchResultIfEquals(faust.SearchResult());
  EXPECT_EQ(Skin.Take(), TChanges());
}

}  // namespace
}  // namespace kk
