#include "views/menus/TWatchlistContextMenuExtender.h"

#include <gtest/gtest.h>

#include "MenuLines.h"
#include "tests/support/TWatchlistWorld.h"

namespace kk {
namespace {

/// A source's view with the section's entries in its context menu.
class TWatchlistContextMenuExtenderTest : public testing::Test, protected TWatchlistWorld {
 protected:
  static TIntf<TWatchlistContextMenuExtender> ExtenderOf(
      const TIntf<TFakeSource>& iSource,
      const TWatchlistContextMenuExtender::TEvents& iEvents = {}) {
    return MakeIntf<TWatchlistContextMenuExtender>(Supports<IWatchlistVisualization>(iSource),
                                                   iEvents);
  }
  /// An item of the list that the view has on show.
  TWatchlistItem& Shown(TStringView iName, TDateTime iEndTime = {}) {
    TWatchlistItem& item = Item(Books, Shop, iName, iEndTime);
    View().Items.push_back(item.SearchResult());
    return item;
  }
  /// It has ended, and was refreshed since.
  TWatchlistItem& Over(TStringView iName) {
    TWatchlistItem& item = Shown(iName, Now().PlusMs(-10'000));
    item.SetLastUpdateDate(Now());
    return item;
  }
  void Select(std::initializer_list<const TWatchlistItem*> iItems) {
    std::vector<TIntf<ISearchResult>> results;
    for (const TWatchlistItem* item : iItems) results.push_back(item->SearchResult());
    View().Select(results);
  }
  void Popup() { Extender->BeforeContextMenuPopup(nullptr, cEmptyGuid); }
  /// The captions of what can be clicked when the menu opens.
  TLines Enabled() {
    Popup();
    TLines lines;
    for (int i = 0; i < Extender->GetCount(); ++i) {
      const TMenuItem& entry = Extender->GetItems(i);
      if (!entry.IsSeparator() && entry.CanUse()) lines.push_back(ToUtf8(entry.Caption()));
    }
    return lines;
  }
  static TMenuItem& Entry(TWatchlistContextMenuExtender& iExtender, TStringView iCaption) {
    for (int i = 0; i < iExtender.GetCount(); ++i) {
      if (iExtender.GetItems(i).Caption() == iCaption) return iExtender.GetItems(i);
    }
    throw Exception(iCaption);
  }
  TMenuItem& Entry(TStringView iCaption) { return Entry(*Extender, iCaption); }
  bool CanClick(TStringView iCaption) {
    Popup();
    return Entry(iCaption).CanUse();
  }
  /// The user opens the menu and clicks; what came of it.
  TLines Click(TStringView iCaption) {
    Popup();
    Entry(iCaption).Click();
    return std::exchange(Told, {});
  }
  TFakeSearchResults& View() { return Shop->Results(); }

  void Tell(const std::string& iWhat, TObject* Sender, const TIntf<IInterfaceList>& iList) {
    EXPECT_EQ(Sender, Extender.Get());
    std::string line = iWhat;
    for (int i = 0; i < iList->GetCount(); ++i) {
      line += " " + ToUtf8(GetAs<ISearchResult>(*iList, i)->GetName());
    }
    Told.push_back(line);
  }
  void Update(TObject* Sender, const TIntf<IInterfaceList>& iList) {
    Tell("update", Sender, iList);
  }
  void Delete(TObject* Sender, const TIntf<IInterfaceList>& iList) {
    Tell("delete", Sender, iList);
  }
  void Edit(TObject* Sender, const TIntf<IInterfaceList>& iList) { Tell("edit", Sender, iList); }
  void Move(TObject* Sender, TWatchlistCategory* iTarget, const TIntf<IInterfaceList>& iList) {
    Tell("move to " + (iTarget != nullptr ? ToUtf8(iTarget->Name()) : "top"), Sender, iList);
  }
  void AddReminder(TObject* Sender, const TIntf<IInterfaceList>& iList) {
    Tell("remind", Sender, iList);
  }
  void DeleteReminder(TObject* Sender, const TIntf<IInterfaceList>& iList) {
    Tell("forget", Sender, iList);
  }
  TWatchlistContextMenuExtender::TEvents Events() {
    using TSelf = TWatchlistContextMenuExtenderTest;
    return {TNotifyEventInterfaceList::Of<&TSelf::Update>(this),
            TNotifyEventInterfaceList::Of<&TSelf::Delete>(this),
            TNotifyEventInterfaceList::Of<&TSelf::Edit>(this),
            TNotifyEventCategoryInterfaceList::Of<&TSelf::Move>(this),
            TNotifyEventInterfaceList::Of<&TSelf::AddReminder>(this),
            TNotifyEventInterfaceList::Of<&TSelf::DeleteReminder>(this)};
  }
  static TLines ListNames(const TIntf<IInterfaceList>& iList) {
    TLines names;
    for (int i = 0; i < iList->GetCount(); ++i) {
      names.push_back(ToUtf8(GetAs<ISearchResult>(*iList, i)->GetName()));
    }
    return names;
  }

  struct THandler {
    THandler() { CreateHandler(nullptr); }
    ~THandler() {
      if (Handler() != nullptr) Tree().Clear();
      FreeHandler();
    }
  } Data;
  TWatchlistCategory& Books = Category(u"Bücher");
  TIntf<TWatchlistContextMenuExtender> Extender = ExtenderOf(Shop, Events());
  TLines Told;
};

TEST_F(TWatchlistContextMenuExtenderTest, HasItsEntriesInOrderWithTheirShortCuts) {
  TLines lines;
  for (int i = 0; i < Extender->GetCount(); ++i) {
    const TMenuItem& entry = Extender->GetItems(i);
    lines.push_back(
        ToUtf8(entry.Caption() + (entry.ShortCut().empty() ? u"" : u" | ") + entry.ShortCut()));
    EXPECT_TRUE(entry.Visible());
  }
  EXPECT_EQ(lines, (TLines{"Erinnerung einrichten...", "Erinnerung löschen", "-", "Aktualisieren",
                           "Alle aktualisieren", "-", "Verschieben nach ...", "-", "Löschen | Del",
                           "Beendete löschen | Shift+Ctrl+Del", "Alle löschen | Shift+Del", "-",
                           "Notiz bearbeiten... | Ctrl+F"}));
  EXPECT_THROW(Extender->GetItems(13), EListError);
  EXPECT_THROW(Extender->GetItems(-1), EListError);
}

TEST_F(TWatchlistContextMenuExtenderTest, AnswersForItsInterface) {
  const TIntf<IInterface> extension = Extender;
  EXPECT_TRUE(Supports<IContextMenuExtender>(extension));
}

TEST_F(TWatchlistContextMenuExtenderTest, WithoutASelectionOnlyWhatConcernsAllIsEnabled) {
  Shown(u"Atlas");
  EXPECT_EQ(Enabled(), (TLines{"Alle aktualisieren", "Alle löschen"}));
}

TEST_F(TWatchlistContextMenuExtenderTest, WithoutASelectionAndNothingToRefreshThereIsLess) {
  Over(u"Atlas");
  EXPECT_EQ(Enabled(), (TLines{"Beendete löschen", "Alle löschen"}));
}

TEST_F(TWatchlistContextMenuExtenderTest, AnEmptyViewHasNothingToDo) {
  EXPECT_EQ(Enabled(), TLines{});
}

TEST_F(TWatchlistContextMenuExtenderTest, ASelectionEnablesWhatConcernsIt) {
  Select({&Shown(u"Atlas")});
  EXPECT_EQ(Enabled(), (TLines{"Aktualisieren", "Alle aktualisieren", "Verschieben nach ...",
                               "Löschen", "Alle löschen", "Notiz bearbeiten..."}));
}

TEST_F(TWatchlistContextMenuExtenderTest, OthersThanTheSelectedCanBeRefreshed) {
  Select({&Over(u"Atlas")});
  Shown(u"Bibel");
  EXPECT_FALSE(CanClick(u"Aktualisieren"));
  EXPECT_TRUE(CanClick(u"Alle aktualisieren"));
}

TEST_F(TWatchlistContextMenuExtenderTest, OneSelectedThatCanBeRefreshedIsEnough) {
  Select({&Over(u"Atlas"), &Shown(u"Bibel")});
  EXPECT_TRUE(CanClick(u"Aktualisieren"));
  EXPECT_TRUE(CanClick(u"Alle aktualisieren"));
}

TEST_F(TWatchlistContextMenuExtenderTest, TheWalkOverAllIsLeftOutWhereOneSelectedCanBeRefreshed) {
  struct TNameless : TFakeSearchResult {
    using TFakeSearchResult::TFakeSearchResult;
    TGuid GetId() const override { throw Exception(u"weg"); }
  };
  TWatchlistItem& atlas = Shown(u"Atlas");
  View().Items.push_back(MakeIntf<TNameless>(u"Bibel"));
  EXPECT_FALSE(CanClick(u"Alle aktualisieren")) << "the walk fails";
  Select({&atlas});
  EXPECT_TRUE(CanClick(u"Aktualisieren"));
  EXPECT_TRUE(CanClick(u"Alle aktualisieren"));
}

TEST_F(TWatchlistContextMenuExtenderTest, WhatHasAllEndedCanBeDeletedAndNotRefreshed) {
  Select({&Over(u"Atlas"), &Over(u"Bibel")});
  EXPECT_EQ(Enabled(), (TLines{"Verschieben nach ...", "Löschen", "Beendete löschen",
                               "Alle löschen", "Notiz bearbeiten..."}));
}

TEST_F(TWatchlistContextMenuExtenderTest, AResultThatTheListDoesNotHoldCannotBeRefreshed) {
  View().Items.push_back(FakeResult(u"fremd"));
  View().Select(View().Items);
  EXPECT_FALSE(CanClick(u"Aktualisieren"));
  EXPECT_FALSE(CanClick(u"Alle aktualisieren"));
  EXPECT_TRUE(CanClick(u"Löschen"));
}

/// A result that at one of the questions can't tell whether it ends.
class TFailingResult : public TFakeSearchResult {
 public:
  using TFakeSearchResult::TFakeSearchResult;
  bool HasEndTime() const override {
    if (--CallsToFailure == 0) throw Exception(u"weg");
    return false;
  }
  mutable int CallsToFailure = 0;
};

TEST_F(TWatchlistContextMenuExtenderTest, AFailureWhileItCountsTurnsBothRefreshesOff) {
  TWatchlistItem& first = Shown(u"Atlas");
  TWatchlistItem& second = Shown(u"Bibel");
  const auto failing = MakeIntf<TFailingResult>(u"Bibel");
  second.SetSearchResult(failing);
  View().Items[1] = failing;
  Select({&first, &second});
  EXPECT_TRUE(CanClick(u"Aktualisieren"));
  failing->CallsToFailure = 2;  // the rule of the reminders is the first to ask, without a guard
  EXPECT_EQ(Enabled(),
            (TLines{"Verschieben nach ...", "Löschen", "Alle löschen", "Notiz bearbeiten..."}));
  failing->CallsToFailure = 1;
  EXPECT_THROW(Popup(), Exception);
}

TEST_F(TWatchlistContextMenuExtenderTest, AFailureAmongAllTurnsBothRefreshesOff) {
  const auto failing = MakeIntf<TFailingResult>(u"Bibel");
  Shown(u"Atlas");
  Shown(u"Bibel").SetSearchResult(failing);
  View().Items[1] = failing;
  EXPECT_TRUE(CanClick(u"Alle aktualisieren"));
  failing->CallsToFailure = 1;
  EXPECT_FALSE(CanClick(u"Alle aktualisieren"));
}

TEST_F(TWatchlistContextMenuExtenderTest, RemindersAreOfferedForWhatHasNotEnded) {
  TWatchlistItem& running = Shown(u"Atlas", Now().PlusMs(1));
  TWatchlistItem& endless = Shown(u"Bibel");
  TWatchlistItem& over = Over(u"Comic");
  TWatchlistItem& ending = Shown(u"Duden", Now());
  for (const TStringView caption : {u"Erinnerung einrichten...", u"Erinnerung löschen"}) {
    Select({&endless, &over, &running});
    EXPECT_TRUE(CanClick(caption));
    Select({&endless, &over});
    EXPECT_FALSE(CanClick(caption));
    Select({&ending});
    EXPECT_FALSE(CanClick(caption));
  }
}

TEST_F(TWatchlistContextMenuExtenderTest, EndsAreReckonedByTheExactClock) {
  Select({&Shown(u"Atlas", Now().PlusMs(5000))});
  EXPECT_TRUE(CanClick(u"Erinnerung einrichten..."));
  EXPECT_FALSE(CanClick(u"Beendete löschen"));
  EXPECT_FALSE(Extender->HasAtLeastOneFinished());
  Clock.SetExactOffset(5001);
  EXPECT_FALSE(CanClick(u"Erinnerung einrichten..."));
  EXPECT_TRUE(CanClick(u"Beendete löschen"));
  EXPECT_TRUE(Extender->HasAtLeastOneFinished());
}

TEST_F(TWatchlistContextMenuExtenderTest, AtItsEndAResultIsNeitherFinishedNorOffersReminders) {
  Select({&Shown(u"Atlas", Now())});
  EXPECT_FALSE(CanClick(u"Erinnerung einrichten..."));
  EXPECT_FALSE(Extender->HasAtLeastOneFinished());
  EXPECT_EQ(ListNames(Extender->GetFinished()), TLines{});
}

TEST_F(TWatchlistContextMenuExtenderTest, AResultWithoutAnEndIsNotFinished) {
  Select({&Shown(u"Atlas")});
  Popup();
  EXPECT_FALSE(Extender->HasWithEndDate());
  EXPECT_FALSE(Extender->HasAtLeastOneFinished());
  EXPECT_FALSE(Entry(u"Beendete löschen").Visible());
  EXPECT_FALSE(Entry(u"Beendete löschen").Enabled());
}

TEST_F(TWatchlistContextMenuExtenderTest, WhereSomethingEndsTheFinishedCanBeSeen) {
  Shown(u"Atlas", Now().PlusMs(5000));
  Popup();
  EXPECT_TRUE(Extender->HasWithEndDate());
  EXPECT_TRUE(Entry(u"Beendete löschen").Visible());
  EXPECT_FALSE(Entry(u"Beendete löschen").Enabled());
}

TEST_F(TWatchlistContextMenuExtenderTest, ASourceThatCannotRefreshHasNoEntriesForIt) {
  const auto source = MakeIntf<TFakeSource>(u"Starr", NewGuid(), TFakeAbilities{.Update = false});
  const auto extender = ExtenderOf(source);
  source->Results().Items = {Item(Books, source, u"Atlas").SearchResult()};
  source->Results().Select(source->Results().Items);
  extender->BeforeContextMenuPopup(nullptr, cEmptyGuid);
  TLines visible;
  for (int i = 0; i < extender->GetCount(); ++i) {
    if (extender->GetItems(i).Visible()) {
      visible.push_back(ToUtf8(extender->GetItems(i).Caption()));
    }
  }
  EXPECT_EQ(visible, (TLines{"Erinnerung einrichten...", "Erinnerung löschen", "-", "-",
                             "Verschieben nach ...", "-", "Löschen", "Alle löschen", "-",
                             "Notiz bearbeiten..."}));
  EXPECT_FALSE(Entry(*extender, u"Aktualisieren").Enabled());
  EXPECT_FALSE(Entry(*extender, u"Alle aktualisieren").Enabled());
}

TEST_F(TWatchlistContextMenuExtenderTest, AViewWithoutResultsHasNothingToDo) {
  const auto source = MakeIntf<TFakeSource>(u"Leer", NewGuid(), TFakeAbilities{.Results = false});
  const auto extender = ExtenderOf(source);
  extender->BeforeContextMenuPopup(nullptr, cEmptyGuid);
  for (int i = 0; i < extender->GetCount(); ++i) {
    const TMenuItem& entry = extender->GetItems(i);
    EXPECT_TRUE(entry.IsSeparator() || !entry.Enabled()) << ToUtf8(entry.Caption());
  }
  EXPECT_EQ(extender->GetAll()->GetCount(), 0);
  EXPECT_EQ(extender->GetSelected()->GetCount(), 0);
  EXPECT_EQ(extender->GetFinished()->GetCount(), 0);
  EXPECT_FALSE(extender->HasWithEndDate());
}

TEST_F(TWatchlistContextMenuExtenderTest, ListsTheResultsInTheOrderOfTheView) {
  Over(u"Zebra");
  TWatchlistItem& b = Shown(u"Bibel");
  TWatchlistItem& a = Over(u"Atlas");
  Select({&a, &b});
  EXPECT_EQ(ListNames(Extender->GetAll()), (TLines{"Zebra", "Bibel", "Atlas"}));
  EXPECT_EQ(ListNames(Extender->GetSelected()), (TLines{"Atlas", "Bibel"}));
  EXPECT_EQ(ListNames(Extender->GetFinished()), (TLines{"Zebra", "Atlas"}));
  EXPECT_FALSE(Extender->GetAll() == Extender->GetAll());
}

TEST_F(TWatchlistContextMenuExtenderTest, PassesOverEmptyRows) {
  View().Items.push_back(nullptr);
  Shown(u"Atlas");
  View().Select({nullptr, View().Items[1]});
  EXPECT_EQ(ListNames(Extender->GetAll()), TLines{"Atlas"});
  EXPECT_EQ(ListNames(Extender->GetSelected()), TLines{"Atlas"});
  EXPECT_TRUE(CanClick(u"Aktualisieren"));
}

TEST_F(TWatchlistContextMenuExtenderTest, AClickTellsTheResultsThatItMeans) {
  TWatchlistItem& atlas = Shown(u"Atlas", Now().PlusMs(5000));
  Over(u"Bibel");
  Shown(u"Comic");
  Select({&atlas});
  EXPECT_EQ(Click(u"Erinnerung einrichten..."), TLines{"remind Atlas"});
  EXPECT_EQ(Click(u"Erinnerung löschen"), TLines{"forget Atlas"});
  EXPECT_EQ(Click(u"Aktualisieren"), TLines{"update Atlas"});
  EXPECT_EQ(Click(u"Alle aktualisieren"), TLines{"update Atlas Bibel Comic"});
  EXPECT_EQ(Click(u"Löschen"), TLines{"delete Atlas"});
  EXPECT_EQ(Click(u"Beendete löschen"), TLines{"delete Bibel"});
  EXPECT_EQ(Click(u"Alle löschen"), TLines{"delete Atlas Bibel Comic"});
  EXPECT_EQ(Click(u"Notiz bearbeiten..."), TLines{"edit Atlas"});
}

TEST_F(TWatchlistContextMenuExtenderTest, WithoutListenersAClickDoesNothing) {
  Select({&Shown(u"Atlas", Now().PlusMs(5000))});
  Over(u"Bibel");
  Extender->Events() = {};
  for (int i = 0; i < Extender->GetCount(); ++i) {
    const TMenuItem& entry = Extender->GetItems(i);
    EXPECT_EQ(Click(entry.Caption()), TLines{});
  }
  Entry(u"Verschieben nach ...").GetItems(0).Click();
  EXPECT_EQ(Told, TLines{});
}

TEST_F(TWatchlistContextMenuExtenderTest, EventsCanBeChanged) {
  Select({&Shown(u"Atlas")});
  Extender->Events().OnUpdate = Extender->Events().OnDelete;
  EXPECT_EQ(Click(u"Aktualisieren"), TLines{"delete Atlas"});
}

TEST_F(TWatchlistContextMenuExtenderTest, MovesToTheCategoryOfTheEntry) {
  Category(u"Atlanten", &Books);
  Select({&Shown(u"Atlas")});
  Popup();
  TMenuItem& move = Entry(u"Verschieben nach ...");
  EXPECT_EQ(MenuLines(move), (TLines{"Bücher", "  Bücher", "  -", "  Atlanten"}));
  EXPECT_FALSE(move.Click());
  EXPECT_FALSE(move.GetItems(0).Click());
  EXPECT_TRUE(move.GetItems(0).GetItems(0).Click());
  EXPECT_TRUE(move.GetItems(0).GetItems(2).Click());
  EXPECT_EQ(Told, (TLines{"move to Bücher Atlas", "move to Atlanten Atlas"}));
}

TEST_F(TWatchlistContextMenuExtenderTest, AnEntryWithoutACategoryMeansTheTopLevel) {
  Select({&Shown(u"Atlas")});
  Popup();
  TMenuItem& entry = Entry(u"Verschieben nach ...").GetItems(0);
  entry.SetTag(nullptr);
  EXPECT_TRUE(entry.Click());
  EXPECT_EQ(Told, TLines{"move to top Atlas"});
}

TEST_F(TWatchlistContextMenuExtenderTest, BuildsTheCategoriesAnewOnEachOpening) {
  Select({&Shown(u"Atlas")});
  Popup();
  Category(u"Uhren");
  Popup();
  EXPECT_EQ(MenuLines(Entry(u"Verschieben nach ...")), (TLines{"Bücher", "Uhren"}));
}

TEST_F(TWatchlistContextMenuExtenderTest, NothingMovesToACategoryThatIsGone) {
  TWatchlistCategory& clocks = Category(u"Uhren");
  Select({&Shown(u"Atlas")});
  Popup();
  TMenuItem& entry = Entry(u"Verschieben nach ...").GetItems(1);
  Tree().DeleteCategory(clocks);
  entry.Click();
  EXPECT_EQ(Told, TLines{});
}

TEST_F(TWatchlistContextMenuExtenderTest, WithoutTheListOnlyTheViewsOwnCounts) {
  Select({&Shown(u"Atlas")});
  Popup();
  TMenuItem& entry = Entry(u"Verschieben nach ...").GetItems(0);
  Tree().Clear();
  FreeHandler();
  entry.Click();
  EXPECT_EQ(Told, TLines{});
  EXPECT_EQ(Enabled(),
            (TLines{"Verschieben nach ...", "Löschen", "Alle löschen", "Notiz bearbeiten..."}));
  EXPECT_EQ(Entry(u"Verschieben nach ...").GetCount(), 0);
}

TEST_F(TWatchlistContextMenuExtenderTest, DetachedItHoldsNothingAndDoesNothing) {
  Select({&Shown(u"Atlas")});
  const auto source = MakeIntf<TFakeSource>(u"Fremd");
  source->Results();
  const int64_t before = LiveObjectCount();
  auto view = Supports<IWatchlistVisualization>(source);
  auto extender =
      MakeIntf<TWatchlistContextMenuExtender>(view, TWatchlistContextMenuExtender::TEvents{});
  view->AddExtension(extender);  // as a source does: each holds the other
  extender->BeforeContextMenuPopup(nullptr, cEmptyGuid);
  extender->Detach();
  view = nullptr;
  EXPECT_EQ(LiveObjectCount(), before + 1);
  extender->BeforeContextMenuPopup(nullptr, cEmptyGuid);
  EXPECT_EQ(extender->GetAll()->GetCount(), 0);
  source->Extensions().clear();
  extender = nullptr;
  EXPECT_EQ(LiveObjectCount(), before);
}

TEST_F(TWatchlistContextMenuExtenderTest, DetachedItsEntriesTellNobody) {
  Select({&Shown(u"Atlas", Now().PlusMs(5000))});
  Popup();
  Extender->Detach();
  for (int i = 0; i < Extender->GetCount(); ++i) Extender->GetItems(i).Click();
  EXPECT_EQ(Told, TLines{});
  EXPECT_EQ(Entry(u"Verschieben nach ...").GetCount(), 0);
}

}  // namespace
}  // namespace kk
