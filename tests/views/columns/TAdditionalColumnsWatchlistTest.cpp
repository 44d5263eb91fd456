#include "views/columns/TAdditionalColumnsWatchlist.h"

#include "TColumnWorld.h"
#include "views/columns/TTreeViewCellPainterWatchlist.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char cUnknown[] = "Bitmap 7,1,23,17 ADDITIONALCOLUMNUNKNOWN";
constexpr char cNo[] = "Bitmap 7,1,23,17 ADDITIONALCOLUMNNO";
constexpr char cYes[] = "Bitmap 7,1,23,17 ADDITIONALCOLUMNYES";

struct TListener {
  void DoAdd(TObject* iSender, const TIntf<ISearchResult>& iResult) {
    Sender = iSender;
    Calls.push_back("add " + ToUtf8(iResult->GetName()));
  }
  void DoCheck(TObject* iSender) {
    Sender = iSender;
    Calls.emplace_back("check");
  }
  void DoFail(TObject*, const TIntf<ISearchResult>&) { throw Exception(u"Hinzufügen kaputt"); }

  TObject* Sender = nullptr;
  TLines Calls;
};

// The column in a view of "Auktion".
class TAdditionalColumnsWatchlistTest : public TColumnTest {
 protected:
  TIntf<TAdditionalColumnsWatchlist> MakeColumns() {
    return MakeIntf<TAdditionalColumnsWatchlist>(
        Auction->GetId(), TNotifySearchResult::Of<&TListener::DoAdd>(&Listener),
        TNotifyEvent::Of<&TListener::DoCheck>(&Listener));
  }
  // An item whose result counts how often it is compared; its article is its name.
  TWatchlistItem& Watch(const TIntf<TWatchedResult>& iResult) {
    TWatchlistItem& item = Group(Books, Auction).LstItem().Add(std::make_unique<TWatchlistItem>());
    item.SetSearchResult(iResult);
    item.SetParentCategoryId(Books.Id());
    return item;
  }
  TWatchlistItem& Watch(TStringView iName) { return Watch(MakeIntf<TWatchedResult>(iName)); }
  static int Asked(const TWatchlistItem& iItem) {
    return dynamic_cast<TWatchedResult&>(*iItem.SearchResult()).Asked;
  }
  int Compare(const TIntf<ISearchResult>& iA, const TIntf<ISearchResult>& iB) {
    return View.Column->CompareNodes(0, iA, iB);
  }

  TWatchlistCategory& Books = Category(u"Bücher");
  TListener Listener;
  TIntf<TAdditionalColumnsWatchlist> Columns = MakeColumns();
  TFakeColumnView View{*Columns};
  TIntf<ISearchResult> Row = FakeResult(u"Faust");
};

TEST_F(TAdditionalColumnsWatchlistTest, HoldsTheColumn) {
  ASSERT_EQ(Columns->GetColumns()->GetCount(), 1);
  EXPECT_EQ(GUIDToString(View.Column->GetId()), u"{28FFB6E5-7834-4533-A3D3-E849098C2203}");
  EXPECT_EQ(View.Column->GetCaption(), u"Beobachten");
  EXPECT_EQ(View.Column->GetWidth(), 20);
  EXPECT_EQ(View.Column->GetSortOrder(), 0);
  EXPECT_EQ(static_cast<int>(View.Column->GetInitialPosition()), 1);
  const auto& painter = dynamic_cast<TTreeViewCellPainterWatchlist&>(View.Column->GetCellPainter());
  EXPECT_THAT(painter.Images(),
              ElementsAre(TBitmap{u"ADDITIONALCOLUMNUNKNOWN"}, TBitmap{u"ADDITIONALCOLUMNNO"},
                          TBitmap{u"ADDITIONALCOLUMNYES"}));
}

// What a cell shows.

TEST_F(TAdditionalColumnsWatchlistTest, RowWithoutAResultIsUnknownAndReactsToNothing) {
  EXPECT_THAT(View.Paint({}), ElementsAre(cUnknown));
  EXPECT_THAT(View.Move({}), ElementsAre(cCursorDefault));
  View.Click({});
  EXPECT_THAT(Listener.Calls, IsEmpty());
  EXPECT_EQ(Compare({}, {}), 0);
}

TEST_F(TAdditionalColumnsWatchlistTest, SameArticleInTheListShowsYes) {
  Watch(u"Faust");
  EXPECT_THAT(View.Paint(Row), ElementsAre(cYes));
  EXPECT_THAT(View.Paint(FakeResult(u"Emma")), ElementsAre(cNo));
}

TEST_F(TAdditionalColumnsWatchlistTest, OnlyItemsOfTheViewsOwnSourceCount) {
  Item(Books, Shop, u"Faust");
  EXPECT_THAT(View.Paint(Row), ElementsAre(cNo));
}

TEST_F(TAdditionalColumnsWatchlistTest, EachRowIsLookedForOnce) {
  const TWatchlistItem& faust = Watch(u"Faust");
  const auto emma = FakeResult(u"Emma");
  for (int i = 0; i < 3; ++i) {
    EXPECT_THAT(View.Paint(Row), ElementsAre(cYes));
    EXPECT_THAT(View.Paint(emma), ElementsAre(cNo));
  }
  EXPECT_EQ(Asked(faust), 2);
}

TEST_F(TAdditionalColumnsWatchlistTest, PaintPassesOnWhatFailsAndKeepsNothingOfIt) {
  const TWatchlistItem& faust = Watch(u"Faust");
  auto& stored = dynamic_cast<TWatchedResult&>(*faust.SearchResult());
  stored.SameFails = true;
  EXPECT_THROW(View.Paint(Row), Exception);
  EXPECT_THAT(View.Canvas.Calls, IsEmpty());
  stored.SameFails = false;
  View.Canvas.Fails = true;
  EXPECT_THROW(View.Paint(Row), Exception);
  View.Canvas.Fails = false;
  EXPECT_THAT(View.Paint(Row), ElementsAre(cYes));
  const auto broken = MakeIntf<TWatchedResult>(u"Faust");
  broken->IdFails = true;
  EXPECT_THROW(View.Paint(broken), Exception);
}

// How notifications keep it right.

TEST_F(TAdditionalColumnsWatchlistTest, AddedRowShowsYesWithoutAFurtherSearch) {
  EXPECT_THAT(View.Paint(Row), ElementsAre(cNo));
  const TWatchlistItem& added = Watch(MakeIntf<TWatchedResult>(u"Faust", Row->GetId()));
  EXPECT_THAT(View.Paint(Row), ElementsAre(cYes));
  EXPECT_EQ(Asked(added), 0);
}

TEST_F(TAdditionalColumnsWatchlistTest, DeletedItemIsLookedForAgainAndThenMissed) {
  TWatchlistItem& faust = Watch(u"Faust");
  const TWatchlistItem& emma = Watch(u"Emma");
  EXPECT_THAT(View.Paint(Row), ElementsAre(cYes));
  const int asked = Asked(emma);
  Delete(faust);
  for (int i = 0; i < 2; ++i) {
    EXPECT_THAT(View.Paint(Row), ElementsAre(cNo));
    EXPECT_EQ(Asked(emma), asked + 1) << "the handler is asked once";
  }
}

TEST_F(TAdditionalColumnsWatchlistTest, DeletedItemIsLookedForAgainInAViewThatWasOpenedLater) {
  TWatchlistItem& faust = Watch(u"Faust");
  TFakeColumnView view(*MakeColumns());
  EXPECT_THAT(view.Paint(Row), ElementsAre(cYes));
  Delete(faust);
  EXPECT_THAT(view.Paint(Row), ElementsAre(cNo));
}

TEST_F(TAdditionalColumnsWatchlistTest, SecondItemOfTheSameArticleKeepsTheRow) {
  TWatchlistItem& first = Watch(u"Faust");
  Watch(u"Faust");
  EXPECT_THAT(View.Paint(Row), ElementsAre(cYes));
  Delete(first);
  EXPECT_THAT(View.Paint(Row), ElementsAre(cYes));
}

TEST_F(TAdditionalColumnsWatchlistTest, DeletedRowOfTheSameIdShowsNoWithoutAFurtherSearch) {
  View.Paint(Row);
  TWatchlistItem& faust = Watch(MakeIntf<TWatchedResult>(u"Faust", Row->GetId()));
  const TWatchlistItem& emma = Watch(u"Emma");
  EXPECT_THAT(View.Paint(Row), ElementsAre(cYes));
  Delete(faust);
  EXPECT_THAT(View.Paint(Row), ElementsAre(cNo));
  EXPECT_EQ(Asked(emma), 0);
  Watch(MakeIntf<TWatchedResult>(u"Faust", Row->GetId()));
  EXPECT_THAT(View.Paint(Row), ElementsAre(cYes)) << "and so on";
}

TEST_F(TAdditionalColumnsWatchlistTest, AllRowsOfADeletedItemFallBack) {
  TWatchlistItem& faust = Watch(u"Faust");
  const auto second = FakeResult(u"Faust");
  View.Paint(Row);
  View.Paint(FakeResult(u"Emma"));
  View.Paint(second);
  Delete(faust);
  EXPECT_THAT(View.Paint(Row), ElementsAre(cNo));
  EXPECT_THAT(View.Paint(second), ElementsAre(cNo));
}

TEST_F(TAdditionalColumnsWatchlistTest, NewLineOfADeletedItemHasTheStoredId) {
  TWatchlistItem& faust = Watch(u"Faust");
  const TIntf<ISearchResult> stored = faust.SearchResult();
  const TWatchlistItem& emma = Watch(u"Emma");
  Delete(faust);
  EXPECT_THAT(View.Paint(stored), ElementsAre(cNo));
  EXPECT_EQ(Asked(emma), 0) << "known without a search";
}

TEST_F(TAdditionalColumnsWatchlistTest, SendersThatAreNoItemsChangeNothing) {
  View.Paint(Row);
  auto& painter = dynamic_cast<TTreeViewCellPainterWatchlist&>(View.Column->GetCellPainter());
  EXPECT_FALSE(painter.IsFound(Row));
  painter.DoItemAdd(nullptr);
  painter.DoItemAdd(&painter);
  painter.DoItemDelete(&painter);
  EXPECT_FALSE(painter.IsFound(Row));
  EXPECT_THAT(Swallowed(), IsEmpty());
}

TEST_F(TAdditionalColumnsWatchlistTest, EachViewKeepsItsOwn) {
  EXPECT_THAT(View.Paint(Row), ElementsAre(cNo));
  Watch(u"Faust");
  TFakeColumnView second(*MakeColumns());
  EXPECT_THAT(second.Paint(Row), ElementsAre(cYes));
  EXPECT_THAT(View.Paint(Row), ElementsAre(cNo)) << "kept under another id than the added item's";
}

// The mouse.

TEST_F(TAdditionalColumnsWatchlistTest, HandInvitesToAddARowThatIsNotWatched) {
  EXPECT_THAT(View.Move(Row), ElementsAre(cCursorDefault)) << "nothing was drawn yet";
  View.Paint(Row);
  EXPECT_THAT(View.Move(Row), ElementsAre(cCursorDefault, cCursorHandPoint));
  EXPECT_THAT(View.Move(Row, {23, 9}), ElementsAre(cCursorDefault));
  EXPECT_THAT(View.Move(FakeResult(u"Emma")), ElementsAre(cCursorDefault, cCursorHandPoint))
      << "never painted";
}

TEST_F(TAdditionalColumnsWatchlistTest, WatchedRowDoesNotInvite) {
  Watch(u"Faust");
  View.Paint(Row);
  EXPECT_THAT(View.Move(Row), ElementsAre(cCursorDefault));
}

TEST_F(TAdditionalColumnsWatchlistTest, WhatFailsUnderTheMouseDoesNotInvite) {
  View.Paint(Row);
  const auto info = MakeIntf<TFakeCellMouseInfo>(Row);
  info->Fails = true;
  View.Column->MouseMove(info);
  EXPECT_THAT(info->Cursors, ElementsAre(cCursorDefault));
  EXPECT_THAT(Swallowed(), ElementsAre("debug TAdditionalColumnWatchlist.MouseMove: Zeile kaputt"));
}

TEST_F(TAdditionalColumnsWatchlistTest, ClickAddsARowThatIsNotWatched) {
  View.Paint(Row);
  View.Click(Row, {23, 9});
  EXPECT_THAT(Listener.Calls, IsEmpty()) << "beside the image";
  View.Click(Row);
  EXPECT_THAT(Listener.Calls, ElementsAre("add Faust"));
  EXPECT_EQ(dynamic_cast<IAdditionalColumn*>(Listener.Sender), View.Column.Get());
}

TEST_F(TAdditionalColumnsWatchlistTest, ClickChecksAWatchedRow) {
  Watch(u"Faust");
  View.Paint(Row);
  View.Click(Row);
  EXPECT_THAT(Listener.Calls, ElementsAre("check"));
  EXPECT_EQ(dynamic_cast<IAdditionalColumn*>(Listener.Sender), View.Column.Get());
}

TEST_F(TAdditionalColumnsWatchlistTest, DetachedColumnTellsNobody) {
  Watch(u"Faust");
  View.Paint(Row);
  Columns->Detach();
  View.Click(Row);
  View.Click(FakeResult(u"Emma"));
  EXPECT_THAT(Listener.Calls, IsEmpty());
}

TEST_F(TAdditionalColumnsWatchlistTest, ClickPassesOnWhatTheCallbackRaises) {
  TFakeColumnView view(*MakeIntf<TAdditionalColumnsWatchlist>(
      Auction->GetId(), TNotifySearchResult::Of<&TListener::DoFail>(&Listener), TNotifyEvent()));
  view.Paint(Row);
  EXPECT_THROW(view.Click(Row), Exception);
}

// The order.

TEST_F(TAdditionalColumnsWatchlistTest, WatchedRowsStandBehindTheOthers) {
  Watch(u"Faust");
  Watch(u"Hamlet");
  const auto hamlet = FakeResult(u"Hamlet");
  const auto emma = FakeResult(u"Emma");
  for (const auto& row : {Row, hamlet, emma}) View.Paint(row);
  EXPECT_EQ(Compare(Row, emma), 1);
  EXPECT_EQ(Compare(emma, Row), -1);
  EXPECT_EQ(Compare(Row, hamlet), 0);
  EXPECT_EQ(Compare(emma, emma), 0);
  EXPECT_EQ(Compare(Row, {}), 1);
  EXPECT_EQ(Compare({}, Row), -1);
  EXPECT_EQ(View.Column->CompareNodes(99, Row, emma), 1) << "the column's place plays no part";
}

TEST_F(TAdditionalColumnsWatchlistTest, OrderKnowsOnlyWhatWasPainted) {
  const TWatchlistItem& faust = Watch(u"Faust");
  const TWatchlistItem& hamlet = Watch(u"Hamlet");
  const auto unseen = FakeResult(u"Hamlet");
  View.Paint(Row);
  const int asked = Asked(faust) + Asked(hamlet);
  EXPECT_EQ(Compare(Row, unseen), 1);
  EXPECT_EQ(Compare(unseen, FakeResult(u"Emma")), 0);
  EXPECT_EQ(Asked(faust) + Asked(hamlet), asked);
}

// Who lives longer.

TEST_F(TAdditionalColumnsWatchlistTest, PainterThatDiedHearsNoMore) {
  using TPainter = TTreeViewCellPainterWatchlist;
  alignas(TPainter) std::array<std::byte, sizeof(TPainter)> place{};
  std::destroy_at(new (place.data()) TPainter(Auction->GetId(), {}));
  place.fill(std::byte{0});
  Delete(Watch(u"Faust"));
  EXPECT_THAT(place, testing::Each(std::byte{0})) << "nobody wrote where it was";
}

TEST_F(TAdditionalColumnsWatchlistTest, PainterThatOutlivesTheHandlerLeavesItAlone) {
  View.Paint(Row);
  FreeHandler();
  EXPECT_THAT(View.Paint(Row), ElementsAre(cNo));
  EXPECT_THAT(View.Paint(FakeResult(u"Emma")), ElementsAre(cUnknown));
  View.Column = nullptr;
  Columns = nullptr;
}

TEST_F(TAdditionalColumnsWatchlistTest, PainterThatOutlivesTheHandlerLeavesTheNextOneAlone) {
  FreeHandler();
  CreateHandler(FPlugin);
  View.Column = nullptr;
  Columns = nullptr;
  const auto late = MakeColumns();
  FreeHandler();
  const auto without = MakeColumns();
  EXPECT_THAT(TFakeColumnView(*without).Paint(Row), ElementsAre(cUnknown));
}

TEST_F(TAdditionalColumnsWatchlistTest, PainterMayDieWithTheHandlersOwnReferences) {
  View.Column = nullptr;
  FPlugin->Kept = std::exchange(Columns, nullptr);
  FPlugin = nullptr;
  FreeHandler();
  EXPECT_EQ(Handler(), nullptr);
}

}  // namespace
}  // namespace kk
