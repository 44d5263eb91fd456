#include "plugin/TSearchLocationIntegrationWatchlist.h"

#include "TPluginWorld.h"
#include "host/contract/IResultsOnShow.h"
#include "tests/support/TFakeCells.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto cAll = &TfrmWatchlistAddSearchResults::btnAll;
constexpr auto cCancel = &TfrmWatchlistAddSearchResults::btnCancel;

// The results of another plug-in's view, with the user's selection.
class TFakeResults : public TInterfaced<ISearchResults, IResultsOnShow> {
 public:
  int GetCount() const override { return GetSelectedCount(); }
  int GetSelectedCount() const override { return static_cast<int>(Selected.size()); }
  TIntf<ISearchResult> GetItems(int iIndex) const override { return GetSelectedItems(iIndex); }
  TIntf<ISearchResult> GetSelectedItems(int iIndex) const override {
    return Selected[CheckedIndex(iIndex, Selected.size())];
  }
  TIntf<ISearchResult> GetFocused() const override { return {}; }
  void Repaint() override { ++Repaints; }
  std::vector<TIntf<ISearchResult>> Selected;
  int Repaints = 0;
};

class TSearchLocationTest : public testing::Test, public TPluginWorld {
 protected:
  TSearchLocationTest() {
    Initialize();
    Extension = Extend(Auction->GetId());
    Extension->SetSearchResults(Results);
  }
  TIntf<TSearchLocationIntegrationWatchlist> Extend(const TGuid& iId) {
    return MakeIntf<TSearchLocationIntegrationWatchlist>(cPluginId, iId, &Form());
  }
  void Add(std::initializer_list<TStringView> iNames) {
    const auto list = NewInterfaceList();
    for (const TStringView name : iNames) list->Add(FakeResult(name));
    Extension->AddSearchResults(list);
  }
  bool LinkVisible() { return Link()->GetItem()->GetVisible(); }
  TIntf<TExplorerBarExtenderMoreOptionsWatchList> Link() {
    const auto extender = Supports<IExplorerBarExtender>(TIntf<IContextMenuExtender>(Extension));
    return TIntf<TExplorerBarExtenderMoreOptionsWatchList>(
        dynamic_cast<TExplorerBarExtenderMoreOptionsWatchList*>(extender.Get()));
  }
  // The line that AddSearchResults begins with.
  std::string Line(int iCount, const TIntf<TFakeSource>& iFrom, const TIntf<TFakeSource>& iTo) {
    return "info SearchLocationIntegration: " + std::to_string(iCount) +
           " neue Suchergebnisse aus Plugin " + ToUtf8(GUIDToString(iFrom->GetId())) +
           " einfügen (Zielintegration: " + ToUtf8(GUIDToString(iTo->GetId())) + " / " +
           ToUtf8(iTo->GetName()) + ").";
  }

  TFakeColumnView Column() {
    return TFakeColumnView(*Supports<IAdditionalColumns>(TIntf<IContextMenuExtender>(Extension)));
  }

  TWatchlistCategory& Books = Category(u"Bücher");
  TWatchlistCategory& Clocks = Category(u"Uhren");
  TIntf<TFakeResults> Results = MakeIntf<TFakeResults>();
  TIntf<TSearchLocationIntegrationWatchlist> Extension;
};

// What the view sees.

TEST_F(TSearchLocationTest, ExtensionAnswersItsFourInterfaces) {
  const TIntf<IContextMenuExtender> menu = Extension;
  EXPECT_TRUE(Supports<INotifications>(menu));
  EXPECT_TRUE(Supports<IAdditionalColumns>(menu));
  EXPECT_TRUE(Supports<IExplorerBarExtender>(menu));
  EXPECT_FALSE(Supports<IWatchlist>(menu));
  EXPECT_EQ(Extension->PluginId(), cPluginId);
  Extension->Close();
  Extension->WaitFor();
}

TEST_F(TSearchLocationTest, MenuHasOneEntryThatNeedsAResult) {
  ASSERT_EQ(Extension->GetCount(), 1);
  TMenuItem& entry = Extension->GetItems(0);
  EXPECT_THROW(Extension->GetItems(1), EListError);
  EXPECT_EQ(entry.Caption(), u"Artikel beobachten...");
  Extension->BeforeContextMenuPopup({}, {});
  EXPECT_FALSE(entry.Enabled());
  Results->Selected = {FakeResult(u"Faust")};
  EXPECT_FALSE(entry.Click());
  Extension->BeforeContextMenuPopup(FakeResult(u"Faust"), {});
  EXPECT_TRUE(entry.Enabled());
}

TEST_F(TSearchLocationTest, LinkIsVisibleWhileSomethingIsSelected) {
  Extension->SelectionChanged();
  EXPECT_FALSE(LinkVisible());
  Results->Selected = {FakeResult(u"Faust")};
  Extension->SelectionChanged();
  EXPECT_TRUE(LinkVisible());
  Extension->SetSearchResults({});
  EXPECT_FALSE(Extension->GetSearchResults());
  Extension->SelectionChanged();
  EXPECT_FALSE(LinkVisible());
}

TEST_F(TSearchLocationTest, SelectionIsAddedInOrderByMenuAndByLink) {
  TIniFileSectionWatchlist().SetShowAddDialog(false);
  Results->Selected = {FakeResult(u"Faust"), FakeResult(u"Emma")};
  EXPECT_TRUE(Extension->GetItems(0).Click());
  EXPECT_EQ(Record(Auction).Updater().GetCount(), 2);
  EXPECT_THAT(Queued(Auction), ElementsAre("Faust"));
  Results->Selected = {FakeResult(u"Hamlet")};
  Link()->GetItem()->Click();
  EXPECT_EQ(Record(Auction).Updater().GetCount(), 3);
  EXPECT_THAT(Log.Lines(), testing::Contains(Line(2, Auction, Auction)));
  EXPECT_THAT(Log.Lines(), testing::Contains(Line(1, Auction, Auction)));
}

TEST_F(TSearchLocationTest, NothingSelectedAddsNothing) {
  Extension->GetItems(0).Click();
  Extension->SetSearchResults({});
  Extension->GetItems(0).Click();
  EXPECT_THAT(Log.Lines(), IsEmpty());
}

TEST_F(TSearchLocationTest, ColumnAddsTheResultOfItsRow) {
  TIniFileSectionWatchlist().SetShowAddDialog(false);
  TFakeColumnView column = Column();
  EXPECT_THAT(column.Paint(FakeResult(u"Faust")),
              ElementsAre("Bitmap 7,1,23,17 ADDITIONALCOLUMNNO"));
  column.Click({});
  EXPECT_THAT(Log.Lines(), IsEmpty());
  column.Click(FakeResult(u"Faust"));
  EXPECT_THAT(Queued(Auction), ElementsAre("Faust"));
}

TEST_F(TSearchLocationTest, ColumnDoesNothingForAWatchedRow) {
  const TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  TFakeColumnView column = Column();
  EXPECT_THAT(column.Paint(faust.SearchResult()),
              ElementsAre("Bitmap 7,1,23,17 ADDITIONALCOLUMNYES"));
  column.Click(faust.SearchResult());
  EXPECT_THAT(Log.Lines(), IsEmpty());
}

TEST_F(TSearchLocationTest, ColumnShowsYesOnceItsRowWasAdded) {
  TIniFileSectionWatchlist().SetShowAddDialog(false);
  TFakeColumnView column = Column();
  const TIntf<ISearchResult> row = FakeResult(u"Faust");
  column.Paint(row);
  column.Click(row);
  EXPECT_THAT(column.Paint(row), ElementsAre("Bitmap 7,1,23,17 ADDITIONALCOLUMNNO"));
  Auction->Finish(true);
  EXPECT_THAT(column.Paint(row), ElementsAre("Bitmap 7,1,23,17 ADDITIONALCOLUMNYES"));
}

TEST_F(TSearchLocationTest, ViewIsPaintedAnewWheneverAnItemComesOrGoes) {
  TIniFileSectionWatchlist().SetShowAddDialog(false);
  Add({u"Faust"});
  const int before = Results->Repaints;
  Auction->Finish(true);
  const int added = Results->Repaints;
  EXPECT_GT(added, before);
  TWatchlistItem& emma = Item(Books, Auction, u"Emma");
  const int more = Results->Repaints;
  EXPECT_GT(more, added);
  Tree().DeleteItemById(emma.SearchResultId());
  const int gone = Results->Repaints;
  EXPECT_GT(gone, more);
  Extension = nullptr;
  Item(Books, Auction, u"Egmont");
  EXPECT_EQ(Results->Repaints, gone) << "an extension that is gone paints nothing";
}

TEST_F(TSearchLocationTest, ViewThatCantBePaintedAnewIsLeftAlone) {
  Extension->SetSearchResults(MakeIntf<TFakeSearchResults>());
  EXPECT_NO_THROW(Item(Books, Auction, u"Emma"));
  Extension->SetSearchResults(nullptr);
  EXPECT_NO_THROW(Item(Books, Auction, u"Egmont"));
}

TEST_F(TSearchLocationTest, LinkAndColumnsThatOutliveTheExtensionAddNothing) {
  const auto link = Link();
  TFakeColumnView column = Column();
  column.Paint(FakeResult(u"Faust"));
  Results->Selected = {FakeResult(u"Faust")};
  Extension = nullptr;
  link->GetItem()->Click();
  column.Click(FakeResult(u"Faust"));
  EXPECT_FALSE(link->GetOnItemAdd());
  EXPECT_THAT(Log.Lines(), IsEmpty());
}

// AddSearchResults

TEST_F(TSearchLocationTest, ViewOfAnUnknownSourceAddsNothing) {
  Extension = Extend(NewGuid());
  Add({u"Faust"});
  Extension = Extend(Auction->GetId());
  Add({});
  Extension->AddSearchResults({});
  EXPECT_THAT(Log.Lines(), IsEmpty());
}

TEST_F(TSearchLocationTest, ResultsGoToTheAffiliate) {
  TIniFileSectionWatchlist().SetShowAddDialog(false);
  Auction->SetAffiliateId(Shop->GetId());
  Add({u"Faust"});
  EXPECT_THAT(Log.Lines(), testing::Contains(Line(1, Auction, Shop)));
  EXPECT_THAT(Queued(Shop), ElementsAre("Faust"));
  EXPECT_THAT(Queued(Auction), IsEmpty());
  EXPECT_NE(Unassigned().LstPlugin().FindById(Shop->GetId()), nullptr);
}

TEST_F(TSearchLocationTest, UnknownAffiliateAddsNothing) {
  Auction->SetAffiliateId(NewGuid());
  Add({u"Faust"});
  EXPECT_THAT(Log.Lines(), IsEmpty());
}

TEST_F(TSearchLocationTest, CancelLeavesTheListAsItWas) {
  Item(Clocks, Shop, u"Wecker");
  ExpectQuestion(u"Bücher", cCancel);
  Add({u"Faust"});
  EXPECT_EQ(Books.LstPlugin().GetCount(), 0);
  EXPECT_EQ(Tree().GetCount(), 3);
  EXPECT_EQ(Rebuilds.Count, 0) << "the tree isn't rebuilt";
}

TEST_F(TSearchLocationTest, NewOnesAreAddedAndKnownOnesMoved) {
  TWatchlistItem& faust = Item(Clocks, Auction, u"Faust");
  ExpectQuestion(u"Bücher", cAll);
  Add({u"Faust", u"Emma", u"Faust"});
  EXPECT_EQ(faust.ParentCategoryId(), Books.Id());
  EXPECT_EQ(&Group(Books, Auction).LstItem().GetItems(0), &faust);
  EXPECT_THAT(Queued(Auction), ElementsAre("Emma"));
  EXPECT_EQ(Flags(Auction), "RI");
  EXPECT_EQ(Rebuilds.Count, 1);
}

TEST_F(TSearchLocationTest, OnlyNewLeavesKnownOnesWhereTheyAre) {
  TWatchlistItem& faust = Item(Clocks, Auction, u"Faust");
  ExpectQuestion(u"Bücher");
  Add({u"Faust"});
  EXPECT_EQ(faust.ParentCategoryId(), Clocks.Id());
  EXPECT_EQ(Books.LstPlugin().GetCount(), 0) << "no group is left behind";
  EXPECT_EQ(Rebuilds.Count, 1);
  EXPECT_EQ(Flags(Auction), "-");
}

TEST_F(TSearchLocationTest, KnownOneInTheTargetStaysAndSetsNoFlag) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  ExpectQuestion(u"Bücher", cAll);
  Add({u"Faust"});
  EXPECT_EQ(faust.ParentCategoryId(), Books.Id());
  EXPECT_EQ(Flags(Auction), "-");
}

TEST_F(TSearchLocationTest, EmptyEntriesArePassedOver) {
  const auto list = NewInterfaceList();
  list->Add({});
  ExpectQuestion(u"Bücher");
  Extension->AddSearchResults(list);
  EXPECT_THAT(Queued(Auction), IsEmpty());
  EXPECT_EQ(Books.LstPlugin().GetCount(), 0);
}

TEST_F(TSearchLocationTest, KnownItemsGoToTheGroupAtTheSourcesOwnPosition) {
  // "Laden" is the second source, and the second group of the target is that of "Auktion".
  TWatchlistItem& lamp = Item(Clocks, Shop, u"Lampe");
  Item(Books, Shop, u"Regal");
  Item(Books, Auction, u"Faust");
  Extension = Extend(Shop->GetId());
  ExpectQuestion(u"Bücher", cAll);
  Add({u"Lampe"});
  EXPECT_EQ(lamp.List()->Group(), &Group(Books, Auction));
  EXPECT_EQ(lamp.ParentCategoryId(), Books.Id());
}

TEST_F(TSearchLocationTest, PositionWithoutAGroupRaisesTheListsErrorAndKeepsTheItem) {
  TWatchlistItem& lamp = Item(Clocks, Shop, u"Lampe");
  Item(Books, Shop, u"Regal");
  Extension = Extend(Shop->GetId());
  ExpectQuestion(u"Bücher", cAll);
  EXPECT_THROW(Add({u"Lampe"}), EListError);
  EXPECT_EQ(lamp.List()->Group(), &Group(Clocks, Shop));
  EXPECT_EQ(lamp.ParentCategoryId(), Clocks.Id());
}

TEST_F(TSearchLocationTest, ExtensionWithoutAFormAddsNothing) {
  Extension = MakeIntf<TSearchLocationIntegrationWatchlist>(cPluginId, Auction->GetId(), nullptr);
  Add({u"Faust"});
  EXPECT_THAT(Log.Lines(), IsEmpty());
}

TEST_F(TSearchLocationTest, ExtensionThatOutlivesThePluginAddsNothing) {
  Plugin->Uninitialize();
  Log.Clear();
  Add({u"Faust"});
  EXPECT_THAT(Log.Lines(), IsEmpty());
}

}  // namespace
}  // namespace kk
