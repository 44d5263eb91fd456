#include "host/results/TResultView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ResultsWorld.h"
#include "host/contract/IAdditionalColumns.h"
#include "host/contract/INotifications.h"
#include "host/contract/IResultsOnShow.h"
#include "tests/support/TLogRecorder.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class THearing : public TInterfaced<INotifications> {
 public:
  TIntf<ISearchResults> GetSearchResults() const override { return Results; }
  void SetSearchResults(const TIntf<ISearchResults>& iResults) override { Results = iResults; }
  void SelectionChanged() override {
    Calls += "s";
    if (Fails) throw Exception(u"Hörer kaputt");
  }
  void Close() override { Calls += "c"; }
  void WaitFor() override { Calls += "w"; }

  std::string Calls;
  bool Fails = false;
  TIntf<ISearchResults> Results;
};

class TExtender : public TInterfaced<IContextMenuExtender> {
 public:
  explicit TExtender(const std::vector<TString>& iCaptions) {
    for (const TString& caption : iCaptions) Menu.Add(caption);
  }
  int GetCount() const override { return Menu.GetCount(); }
  TMenuItem& GetItems(int iIndex) override { return Menu.GetItems(iIndex); }
  void BeforeContextMenuPopup(const TIntf<ISearchResult>& iResult,
                              const TGuid& iColumnId) override {
    Result = iResult;
    ColumnId = iColumnId;
    if (Fails) throw Exception(u"Menü kaputt");
  }

  TMenuItem Menu;
  TIntf<ISearchResult> Result;
  TGuid ColumnId;
  bool Fails = false;
};

class TColumnSet : public TInterfaced<IAdditionalColumns> {
 public:
  explicit TColumnSet(std::initializer_list<TIntf<TForeignColumn>> iColumns) {
    for (const auto& column : iColumns) FColumns->Add(column);
    FColumns->Add(nullptr);
  }
  TIntf<IInterfaceList> GetColumns() const override { return FColumns; }

 private:
  TIntf<IInterfaceList> FColumns = NewInterfaceList();
};

/// A view with one column of its own, with two results.
class ResultView : public testing::Test {
 public:
  ResultView() {
    View.SetContainer(&Panel);
    View.SetResults(Plains({A, B}));
    View.SetOnSelectionChanged(TNotifyEvent::Of<&ResultView::DoSelectionChanged>(this));
    View.SetOnOpen(TNotifyOpenResult::Of<&ResultView::DoOpen>(this));
  }
  void DoSelectionChanged(TObject*) { Events += "S"; }
  void DoOpen(TObject*, const TIntf<ISearchResult>& iResult) {
    Events += "O" + ToUtf8(iResult->GetName());
  }

  std::vector<std::string> Columns() {
    std::vector<std::string> captions;
    for (const int column : View.Table().ColumnOrder()) {
      captions.push_back(ToUtf8(View.Table().Columns(column).Caption));
    }
    return captions;
  }
  /// What the menu shows for the row.
  std::vector<std::string> Entries(int iRow, int iColumn = -1) {
    std::vector<std::string> shown;
    if (!View.Table().OpenPopupMenu(iRow, iColumn)) return {"nichts"};
    for (const TMenuItem* entry : View.Table().PopupEntries()) {
      if (entry->Visible()) shown.push_back(ToUtf8(entry->Caption()));
    }
    return shown;
  }
  static TIntf<TForeignColumn> Column(TStringView iCaption, int iPosition, int iSortOrder = 0) {
    return MakeIntf<TForeignColumn>(
        TString(iCaption), static_cast<TAdditionalColumnInitialPosition>(iPosition), iSortOrder);
  }

  TTestMainLoop Loop;
  TLogRecorder Log;
  TPanel Panel{nullptr};
  TIntf<ISearchResult> A = Plain(u"a"), B = Plain(u"b");
  std::string Events;
  TResultView View{{OwnColumn(cNameColumn, u"Name", std::make_shared<TNameContent>())}};
};

TEST_F(ResultView, ResultsAreThoseOfTheTableFromTheTopDown) {
  const auto results = View.Results();
  EXPECT_EQ(results, View.Results());
  EXPECT_EQ(results->GetCount(), 2);
  EXPECT_EQ(results->GetSelectedCount(), 0);
  EXPECT_FALSE(results->GetFocused());
  EXPECT_THROW(results->GetSelectedItems(0), EListError);
  EXPECT_THROW(results->GetItems(2), EListError);
  View.SelectResults(Plains({B, A}));
  EXPECT_EQ(results->GetFocused(), B);
  EXPECT_EQ(results->GetSelectedItems(0), A);
  EXPECT_EQ(results->GetSelectedItems(1), B);
  View.AddResult(Plain(u"c"));
  EXPECT_EQ(results->GetItems(2)->GetName(), u"c");
  View.RemoveResults(Plains({A}));
  EXPECT_EQ(results->GetCount(), 2);
  const auto refreshed = B->Clone();
  View.RefreshResult(refreshed);
  EXPECT_EQ(results->GetFocused(), refreshed);
}

TEST_F(ResultView, WhoHearsOfTheResultsCanHaveThemPaintedAnew) {
  const auto onShow = Supports<IResultsOnShow>(View.Results());
  ASSERT_TRUE(onShow);
  struct TCounter : IControlObserver {
    void ControlChanged(TControl&) override { ++Changes; }
    void ControlGone(TControl&) override {}
    int Changes = 0;
  } counter;
  View.Table().SetObserver(&counter);
  onShow->Repaint();
  EXPECT_EQ(counter.Changes, 1);
  View.Table().SetObserver(nullptr);
}

TEST(TResultView, ResultsAreEmptyWhenTheViewIsGone) {
  const TTestMainLoop loop;
  TIntf<ISearchResults> results;
  {
    TResultView view({});
    view.SetResults(Plains({Plain(u"a")}));
    results = view.Results();
    EXPECT_EQ(results->GetCount(), 1);
  }
  EXPECT_NO_THROW(Supports<IResultsOnShow>(results)->Repaint());
  EXPECT_EQ(results->GetCount(), 0);
  EXPECT_EQ(results->GetSelectedCount(), 0);
  EXPECT_FALSE(results->GetFocused());
  EXPECT_THROW(results->GetItems(0), EListError);
}

TEST_F(ResultView, ExtensionsHearOfResultsAndSelectionAndAFailureKeepsNoOtherFromIt) {
  const auto first = MakeIntf<THearing>();
  const auto second = MakeIntf<THearing>();
  first->Fails = true;
  const auto list = NewInterfaceList();
  list->Add(first);
  list->Add(nullptr);
  list->Add(second);
  View.AddExtensions(list);
  View.AddExtensions(nullptr);
  View.AddExtension(nullptr);
  EXPECT_EQ(View.Extensions().size(), 2u);
  EXPECT_EQ(second->GetSearchResults(), View.Results());
  View.Table().SelectRows({1}, 1);
  EXPECT_EQ(first->Calls, "s");
  EXPECT_EQ(second->Calls, "s");
  EXPECT_EQ(Events, "S");
}

TEST_F(ResultView, AdditionalColumnsStandByPositionAndSortOrder) {
  const auto shared = Column(u"hinten 0", 1, 0);
  View.AddExtension(MakeIntf<TColumnSet>(std::initializer_list<TIntf<TForeignColumn>>{
      Column(u"hinten 5", 1, 5), Column(u"vorn 7", 0, 7), shared}));
  View.AddExtension(MakeIntf<TColumnSet>(std::initializer_list<TIntf<TForeignColumn>>{
      Column(u"vorn 3", 0, 3), Column(u"auch hinten 5", 1, 5), Column(u"auch vorn 7", 0, 7),
      shared}));
  EXPECT_THAT(Columns(), ElementsAre("vorn 3", "vorn 7", "auch vorn 7", "Name", "hinten 0",
                                     "hinten 5", "auch hinten 5"));
  EXPECT_TRUE(View.Table().Columns(1).IsPainted());
}

TEST(TResultView, AdditionalColumnsAreInSightBehindTheNameAndWideEnoughForTheirText) {
  const TTestMainLoop loop;
  TResultView view({OwnColumn(cNameColumn, u"Name", std::make_shared<TNameContent>()),
                    OwnColumn(cLengthColumn, u"Länge", std::make_shared<TLengthContent>())});
  view.AddExtension(MakeIntf<TColumnSet>(std::initializer_list<TIntf<TForeignColumn>>{
      MakeIntf<TForeignColumn>(u"A", TAdditionalColumnInitialPosition::BehindName, 0),
      MakeIntf<TForeignColumn>(u"B", TAdditionalColumnInitialPosition::BehindName, 0)}));
  EXPECT_THAT(view.Table().ColumnOrder(), ElementsAre(0, 2, 3, 1));
  EXPECT_EQ(view.Table().Columns(2).Additional->GetWidth(), 30);
  EXPECT_EQ(view.Table().Columns(2).Width, 45);
}

TEST_F(ResultView, MenuHoldsTheExtensionsEntriesWithLinesBetween) {
  EXPECT_THAT(Entries(0), ElementsAre("nichts"));
  View.OwnEntries().Add(u"Öffnen");
  const auto first = MakeIntf<TExtender>(std::vector<TString>{u"Eins", u"-", u"Zwei"});
  const auto none = MakeIntf<TExtender>(std::vector<TString>{});
  const auto hidden = MakeIntf<TExtender>(std::vector<TString>{u"Drei", u"-"});
  const auto last = MakeIntf<TExtender>(std::vector<TString>{u"Vier"});
  for (const auto& extender : {first, none, hidden, last}) View.AddExtension(extender);
  EXPECT_THAT(Entries(0),
              ElementsAre("Öffnen", "-", "Eins", "-", "Zwei", "-", "Drei", "-", "-", "Vier"));
  hidden->Menu.GetItems(0).SetVisible(false);
  hidden->Menu.GetItems(1).SetVisible(false);
  EXPECT_THAT(Entries(0), ElementsAre("Öffnen", "-", "Eins", "-", "Zwei", "-", "Vier"));
  View.OwnEntries().GetItems(0).SetVisible(false);
  EXPECT_THAT(Entries(0), ElementsAre("Eins", "-", "Zwei", "-", "Vier"));
}

TEST_F(ResultView, ExtendersLearnWhereTheMenuOpens) {
  TMenuItem& own = View.OwnEntries().Add(u"Öffnen");
  const auto extender = MakeIntf<TExtender>(std::vector<TString>{u"Eins"});
  View.AddExtension(extender);
  Entries(-1, -1);
  EXPECT_FALSE(extender->Result);
  EXPECT_EQ(extender->ColumnId, cEmptyGuid);
  EXPECT_FALSE(own.Enabled());
  Entries(1, 0);
  EXPECT_EQ(extender->Result, B);
  EXPECT_EQ(extender->ColumnId, cNameColumn);
  EXPECT_TRUE(own.Enabled());
  EXPECT_EQ(View.Results()->GetFocused(), B);
}

TEST_F(ResultView, ExtenderThatFailsIsLeftOutOfThisMenu) {
  const auto broken = MakeIntf<TExtender>(std::vector<TString>{u"Eins"});
  const auto good = MakeIntf<TExtender>(std::vector<TString>{u"Zwei"});
  View.AddExtension(broken);
  View.AddExtension(good);
  broken->Fails = true;
  EXPECT_THAT(Entries(0), ElementsAre("Zwei"));
  broken->Fails = false;
  EXPECT_THAT(Entries(0), ElementsAre("Eins", "-", "Zwei"));
}

TEST_F(ResultView, DoubleClickAndReturnOpenTheFocusedResult) {
  View.Table().DoubleClick(1);
  View.Table().PressKey(cKeyReturn);
  EXPECT_EQ(Events, "SObOb");
  View.SetOnOpen({});
  View.Table().DoubleClick(0);
  EXPECT_EQ(Events, "SObObS");
}

TEST_F(ResultView, ReleaseTakesAwayWhatCameWithThePanelAndCloseEverything) {
  TResultView view({OwnColumn(cNameColumn, u"Name", std::make_shared<TNameContent>())});
  const auto lasting = MakeIntf<THearing>();
  const auto hearing = MakeIntf<THearing>();
  const auto stays = Column(u"bleibt", 1);
  view.AddExtension(lasting);
  view.AddExtension(MakeIntf<TColumnSet>(std::initializer_list<TIntf<TForeignColumn>>{stays}));
  view.SetContainer(&Panel);
  view.AddExtension(hearing);
  view.AddExtension(MakeIntf<TExtender>(std::vector<TString>{u"Eins"}));
  view.AddExtension(
      MakeIntf<TColumnSet>(std::initializer_list<TIntf<TForeignColumn>>{Column(u"geht", 1)}));
  view.SetResults(Plains({A}));
  view.Table().SelectRows({0}, 0);
  EXPECT_EQ(view.Table().ColumnCount(), 3);

  view.ReleaseList();
  EXPECT_EQ(hearing->Calls, "scw");
  EXPECT_EQ(lasting->Calls, "scw");
  view.ReleaseListData();
  EXPECT_EQ(view.Extensions().size(), 2u);
  EXPECT_FALSE(hearing->GetSearchResults());
  EXPECT_EQ(lasting->GetSearchResults(), view.Results());
  EXPECT_EQ(view.Results()->GetCount(), 0);
  EXPECT_EQ(view.Table().ColumnCount(), 2);
  EXPECT_EQ(view.Table().IndexOfColumn(stays->GetId()), 1);
  EXPECT_THAT(view.Table().PopupEntries(), IsEmpty());
  EXPECT_EQ(view.Table().Parent(), nullptr);
  EXPECT_EQ(hearing->Calls, "scw");

  view.Close();
  EXPECT_TRUE(view.Extensions().empty());
  EXPECT_FALSE(lasting->GetSearchResults());
  EXPECT_EQ(view.Table().ColumnCount(), 1);
}

}  // namespace
}  // namespace kk
