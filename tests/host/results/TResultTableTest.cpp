#include "host/results/TResultTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ResultsWorld.h"
#include "tests/support/TFakeCells.h"
#include "tests/support/TLogRecorder.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A table with a column of names and one of their lengths, and rows by their names.
class ResultTable : public testing::Test, public IResultTableMenu {
 public:
  ResultTable() {
    Table.AddColumn(OwnColumn(cNameColumn, u"Name", Names), 0);
    Table.AddColumn(OwnColumn(cLengthColumn, u"Länge", std::make_shared<TLengthContent>()), 1);
    Table.SetOnSelectionChanged(TNotifyEvent::Of<&ResultTable::DoSelectionChanged>(this));
    Table.SetOnOpen(TNotifyEvent::Of<&ResultTable::DoOpen>(this));
    Table.SetOnLayoutChanged(TNotifyEvent::Of<&ResultTable::DoLayoutChanged>(this));
    Watcher.Calls.clear();
  }

  void Show(const std::vector<TString>& iNames) {
    Shown.clear();
    for (const TString& name : iNames) Shown.push_back(Plain(name));
    Table.SetResults(Plains(Shown));
    Watcher.Calls.clear();
    Events.clear();
  }
  TIntf<TForeignColumn> AddForeign() {
    const auto column =
        MakeIntf<TForeignColumn>(u"Fremd", TAdditionalColumnInitialPosition::BehindName, 0);
    TResultColumn added;
    added.Id = column->GetId();
    added.Additional = column;
    ForeignColumn = Table.AddColumn(std::move(added), Table.ColumnCount());
    Watcher.Calls.clear();
    return column;
  }

  std::vector<TMenuItem*> GetEntries() override {
    std::vector<TMenuItem*> entries;
    for (int i = 0; i < Menu.GetCount(); ++i) entries.push_back(&Menu.GetItems(i));
    return entries;
  }
  void BeforePopup(int iRow, int iColumn) override {
    Events.push_back("menu " + std::to_string(iRow) + " " + std::to_string(iColumn));
  }
  void DoSelectionChanged(TObject* Sender) {
    EXPECT_EQ(Sender, &Table);
    Events.push_back("selection");
    if (ClearsOnSelection) Table.SetResults(nullptr);
  }
  void DoOpen(TObject*) { Events.push_back("open " + std::to_string(Table.FocusedRow())); }
  void DoLayoutChanged(TObject*) { Events.push_back("layout"); }
  void DoEntry(TObject*) { Events.push_back("entry"); }

  TTestMainLoop Loop;
  std::shared_ptr<TNameContent> Names = std::make_shared<TNameContent>();
  TPanel Panel{nullptr};
  TResultTable Table{&Panel, u"tblResults"};
  TTableWatcher Watcher{Table};
  std::vector<TIntf<ISearchResult>> Shown;
  std::vector<std::string> Events;
  bool ClearsOnSelection = false;
  TMenuItem Menu;
  int ForeignColumn = -1;
};

TEST_F(ResultTable, StandsInItsPanelAndOutlivesIt) {
  EXPECT_EQ(Table.Name(), u"tblResults");
  EXPECT_TRUE(Table.Stretches());
  EXPECT_TRUE(Table.AcceptsFocus());
  {
    TPanel other(nullptr);
    Table.SetContainer(&other);
    Table.SetContainer(&other);
    EXPECT_TRUE(Panel.Children().empty());
    EXPECT_EQ(other.Children().size(), 1u);
  }
  EXPECT_EQ(Table.Parent(), nullptr);
  Table.SetContainer(&Panel);
  Table.SetContainer(nullptr);
  EXPECT_TRUE(Panel.Children().empty());
}

TEST_F(ResultTable, RowsStandInTheOrderOfTheirComing) {
  Shown = {Plain(u"b"), Plain(u"a")};
  const auto list = Plains(Shown);
  list->Add(nullptr);
  list->Add(NewInterfaceList());
  Table.SetResults(list);
  EXPECT_EQ(NamesOf(Table), "b a");
  EXPECT_THAT(Watcher.TakeCalls(), ElementsAre("reset"));
  EXPECT_EQ(Table.IndexOfId(Shown[1]->GetId()), 1);
  EXPECT_EQ(Table.IndexOfId(NewGuid()), -1);
  EXPECT_THROW(Table.Results(2), EListError);
  EXPECT_THROW(Table.Results(-1), EListError);
  Table.AddResult(Plain(u"c"));
  Table.AddResult(nullptr);
  EXPECT_EQ(NamesOf(Table), "b a c");
  EXPECT_THAT(Watcher.TakeCalls(), ElementsAre("insert 2+1"));
  Table.SetResults(nullptr);
  EXPECT_EQ(Table.GetCount(), 0);
  EXPECT_THAT(Watcher.TakeCalls(), ElementsAre("reset"));
  Table.SetResults(nullptr);
  EXPECT_THAT(Watcher.TakeCalls(), IsEmpty());
}

TEST_F(ResultTable, CellsAreAskedForEachTimeAndAFailureConcernsOneAlone) {
  const TLogRecorder log;
  Show({u"a", u"kaputt"});
  EXPECT_EQ(Table.Cell(0, 0), (TResultCell{u"a", {u"BILD"}, u"Hinweis zu a"}));
  EXPECT_EQ(Table.Cell(0, 1), (TResultCell{u"1", {}, {}}));
  EXPECT_EQ(Table.Cell(1, 0), TResultCell());
  EXPECT_EQ(Table.Cell(1, 1).Text, u"6");
  EXPECT_THROW(Table.Cell(2, 0), EListError);
  EXPECT_THROW(Table.Cell(0, 2), EListError);
  // A row that can't be compared stands behind the others.
  Table.SetSort(0, true);
  EXPECT_EQ(NamesOf(Table), "a kaputt");
  Table.SetSort(0, false);
  EXPECT_EQ(NamesOf(Table), "a kaputt");
}

TEST_F(ResultTable, ForeignColumnPaintsAndAFailureConcernsOneCellAlone) {
  const auto foreign = AddForeign();
  Show({u"a"});
  TRecordingCanvas canvas;
  Table.PaintCell(0, ForeignColumn, canvas, {0, 0, 30, 18});
  Table.PaintCell(0, 0, canvas, {0, 0, 30, 18});
  foreign->Fails = true;
  Table.PaintCell(0, ForeignColumn, canvas, {0, 0, 30, 18});
  EXPECT_THAT(canvas.Calls, ElementsAre("Text 0,0,30,18 a"));
  EXPECT_EQ(Table.Cell(0, ForeignColumn), TResultCell());
  EXPECT_TRUE(Table.Columns(ForeignColumn).IsPainted());
  EXPECT_FALSE(Table.Columns(0).IsPainted());
}

TEST_F(ResultTable, FirstClickOnAHeaderSortsAndTheSecondReverses) {
  Show({u"Zebra", u"äpfel", u"Apfel"});
  EXPECT_TRUE(Table.ClickHeader(0));
  EXPECT_EQ(NamesOf(Table), "Apfel äpfel Zebra");
  EXPECT_EQ(Table.SortColumn(), 0);
  EXPECT_FALSE(Table.SortDescending());
  EXPECT_TRUE(Table.ClickHeader(0));
  EXPECT_EQ(NamesOf(Table), "Zebra äpfel Apfel");
  EXPECT_TRUE(Table.SortDescending());
  EXPECT_TRUE(Table.ClickHeader(1));
  EXPECT_EQ(NamesOf(Table), "Zebra äpfel Apfel");  // all of one length: nothing moves
  EXPECT_FALSE(Table.SortDescending());
  EXPECT_THAT(Watcher.TakeCalls(), ElementsAre("sort", "sort"));
  EXPECT_THAT(Events, ElementsAre("layout", "layout", "layout"));
  EXPECT_EQ(Table.IndexOfId(Shown[0]->GetId()), 0);
  EXPECT_FALSE(Table.ClickHeader(2));
  EXPECT_FALSE(Table.ClickHeader(-1));
  Table.SetSort(-1, false);
  EXPECT_EQ(NamesOf(Table), "Zebra äpfel Apfel");
  Table.SetSort(0, false);
  Table.SetSort(-1, false);
  EXPECT_EQ(NamesOf(Table), "Zebra äpfel Apfel");
  EXPECT_THROW(Table.SetSort(2, false), EListError);
}

TEST_F(ResultTable, SortingIsStable) {
  Show({u"bb", u"a", u"aa", u"c", u"b", u"cc"});
  Table.SetSort(0, false);
  Table.SetSort(1, false);
  EXPECT_EQ(NamesOf(Table), "a b c aa bb cc");
  Table.SetSort(1, true);
  EXPECT_EQ(NamesOf(Table), "aa bb cc a b c");
}

TEST_F(ResultTable, ForeignColumnComparesAndAContradictionSpoilsNothingElse) {
  const auto foreign = AddForeign();
  Show({u"az", u"by", u"cx"});
  EXPECT_TRUE(Table.ClickHeader(ForeignColumn));
  EXPECT_EQ(NamesOf(Table), "cx by az");
  EXPECT_EQ(foreign->SortColumn, ForeignColumn);
  EXPECT_TRUE(Table.ClickHeader(ForeignColumn));
  EXPECT_EQ(NamesOf(Table), "az by cx");
  foreign->Fails = true;
  EXPECT_TRUE(Table.ClickHeader(ForeignColumn));
  EXPECT_EQ(NamesOf(Table), "az by cx");
  foreign->Fails = false;
  foreign->Contradicts = true;
  EXPECT_TRUE(Table.ClickHeader(ForeignColumn));
  EXPECT_EQ(Table.GetCount(), 3);
  for (const auto& result : Shown) {
    EXPECT_EQ(Table.Results(Table.IndexOfId(result->GetId())), result);
  }
}

TEST_F(ResultTable, NewRowsComeToTheirPlaces) {
  Table.SetSort(0, false);
  Show({u"d", u"b", u"f"});
  EXPECT_EQ(NamesOf(Table), "b d f");
  for (const TStringView name : {u"a", u"e", u"g", u"d"}) Table.AddResult(Plain(name));
  EXPECT_EQ(NamesOf(Table), "a b d d e f g");
  EXPECT_THAT(Watcher.TakeCalls(),
              ElementsAre("insert 0+1", "insert 3+1", "insert 5+1", "insert 3+1"));
  EXPECT_EQ(Table.IndexOfId(Shown[2]->GetId()), 5);
  Table.SetSort(0, true);
  Table.AddResult(Plain(u"ee"));
  EXPECT_EQ(NamesOf(Table), "g f ee e d d b a");
}

TEST_F(ResultTable, RefreshTellsOneRowAndKeepsItsPlace) {
  Show({u"a", u"b"});
  Table.SetSort(0, false);
  const auto refreshed = MakeIntf<TFakeSearchResult>(u"z", Shown[0]->GetId());
  Table.RefreshResult(refreshed);
  Table.RefreshResult(Plain(u"fremd"));
  Table.RefreshResult(nullptr);
  EXPECT_EQ(NamesOf(Table), "z b");
  EXPECT_THAT(Watcher.TakeCalls(), ElementsAre("row 0"));
  EXPECT_THAT(Events, IsEmpty());
}

TEST_F(ResultTable, UserSelectsRowsAndMovesTheFocus) {
  Show({u"a", u"b", u"c"});
  EXPECT_TRUE(Table.SelectRows({2, 0, 2}, 2));
  EXPECT_THAT(Table.SelectedRows(), ElementsAre(0, 2));
  EXPECT_EQ(Table.SelectedCount(), 2);
  EXPECT_TRUE(Table.Selected(0));
  EXPECT_FALSE(Table.Selected(1));
  EXPECT_EQ(Table.FocusedRow(), 2);
  EXPECT_FALSE(Table.SelectRows({0, 2}, 2));
  EXPECT_THAT(Events, ElementsAre("selection"));
  EXPECT_TRUE(Table.SelectRows({1}, -1));
  EXPECT_EQ(Table.FocusedRow(), 2);
  EXPECT_TRUE(Table.FocusRow(0));
  EXPECT_FALSE(Table.FocusRow(0));
  EXPECT_THAT(Table.SelectedRows(), ElementsAre(1));
  EXPECT_TRUE(Table.SelectRows({}, -1));
  EXPECT_EQ(Table.SelectedCount(), 0);
  EXPECT_EQ(Events.size(), 4u);
  EXPECT_FALSE(Table.SelectRows({3}, -1));
  EXPECT_FALSE(Table.SelectRows({0}, 3));
  EXPECT_FALSE(Table.FocusRow(3));
  EXPECT_FALSE(Table.FocusRow(-1));
  EXPECT_EQ(Events.size(), 4u);
}

TEST_F(ResultTable, SelectionAndFocusGoWithTheirRows) {
  Show({u"b", u"c", u"a"});
  Table.SelectRows({0, 2}, 0);
  Table.SetSort(0, false);
  EXPECT_THAT(Table.SelectedRows(), ElementsAre(0, 1));
  EXPECT_EQ(Table.FocusedRow(), 1);
  Table.AddResult(Plain(u"aa"));
  EXPECT_THAT(Table.SelectedRows(), ElementsAre(0, 2));
  EXPECT_EQ(Table.FocusedRow(), 2);
  EXPECT_THAT(Events, ElementsAre("selection"));
}

TEST_F(ResultTable, NewResultsKeepSelectionAndFocusOfTheSameIds) {
  Show({u"a", u"b", u"c"});
  Table.SelectRows({0, 1}, 1);
  Events.clear();
  Table.SetResults(Plains({Shown[1]->Clone(), Shown[0]}));
  EXPECT_THAT(Table.SelectedRows(), ElementsAre(0, 1));
  EXPECT_EQ(Table.FocusedRow(), 0);
  EXPECT_THAT(Events, IsEmpty());
  Table.SetResults(Plains({Shown[0], Shown[2]}));
  EXPECT_THAT(Table.SelectedRows(), ElementsAre(0));
  EXPECT_EQ(Table.FocusedRow(), -1);
  EXPECT_THAT(Events, ElementsAre("selection"));
}

TEST_F(ResultTable, TheSameRowsAgainTellOnlyWhatIsAnother) {
  Show({u"a", u"b", u"c"});
  Table.SelectRows({1}, 1);
  const auto refreshed = MakeIntf<TFakeSearchResult>(u"bb", Shown[1]->GetId());
  Table.SetResults(Plains({Shown[0], refreshed, Shown[2]}));
  EXPECT_THAT(Watcher.TakeCalls(), ElementsAre("row 1"));
  EXPECT_EQ(NamesOf(Table), "a bb c");
  EXPECT_EQ(Table.FocusedRow(), 1);
  Table.SetResults(Plains({Shown[0], refreshed}));
  EXPECT_THAT(Watcher.TakeCalls(), ElementsAre("reset"));
}

TEST_F(ResultTable, RemovingTellsEachPieceFromTheEnd) {
  Show({u"a", u"b", u"c", u"d", u"e"});
  Table.SelectRows({1}, 0);
  Events.clear();
  Table.RemoveResults(Plains({Shown[4], Shown[2], Shown[1], Plain(u"fremd")}));
  EXPECT_EQ(NamesOf(Table), "a d");
  EXPECT_THAT(Watcher.TakeCalls(), ElementsAre("remove 4+1", "remove 1+2"));
  EXPECT_THAT(Events, ElementsAre("selection"));
  EXPECT_EQ(Table.SelectedCount(), 0);
  EXPECT_EQ(Table.IndexOfId(Shown[3]->GetId()), 1);
  EXPECT_EQ(Table.IndexOfId(Shown[2]->GetId()), -1);
  Table.RemoveResults(Plains({Shown[2]}));
  Table.RemoveResults(nullptr);
  EXPECT_THAT(Watcher.TakeCalls(), IsEmpty());
  Table.RemoveResults(Plains(Shown));
  EXPECT_EQ(Table.GetCount(), 0);
  EXPECT_EQ(Table.FocusedRow(), -1);
}

TEST_F(ResultTable, RemovingManyPiecesIsToldAtOnce) {
  std::vector<TString> names;
  for (int i = 0; i < 40; ++i) names.push_back(IntToStr(i));
  Show(names);
  std::vector<TIntf<ISearchResult>> odd;
  for (size_t i = 1; i < Shown.size(); i += 2) odd.push_back(Shown[i]);
  Table.RemoveResults(Plains(odd));
  EXPECT_EQ(Table.GetCount(), 20);
  EXPECT_THAT(Watcher.TakeCalls(), ElementsAre("reset"));
  EXPECT_EQ(Table.IndexOfId(Shown[38]->GetId()), 19);
}

TEST_F(ResultTable, FocusGoesOnToTheNextRowThatStays) {
  Show({u"a", u"b", u"c", u"d"});
  Table.SelectRows({1, 2}, 1);
  Table.RemoveResults(Plains({Shown[1], Shown[2]}));
  EXPECT_EQ(Table.FocusedRow(), 1);
  EXPECT_EQ(Table.SelectedCount(), 0);
  Table.RemoveResults(Plains({Shown[3]}));
  EXPECT_EQ(Table.FocusedRow(), 0);
  Table.RemoveResults(Plains({Shown[0]}));
  EXPECT_EQ(Table.FocusedRow(), -1);
}

TEST_F(ResultTable, SelectResultsFocusesTheFirstAndShowsIt) {
  Show({u"a", u"b", u"c"});
  Table.SelectResults(Plains({Plain(u"fremd"), Shown[2], Shown[0]}));
  EXPECT_THAT(Table.SelectedRows(), ElementsAre(0, 2));
  EXPECT_EQ(Table.FocusedRow(), 2);
  EXPECT_THAT(Watcher.TakeCalls(), ElementsAre("scroll 2"));
  Table.SelectResults(Plains({Shown[2], Shown[0]}));
  EXPECT_THAT(Events, ElementsAre("selection"));
  Table.SelectResults(nullptr);
  EXPECT_EQ(Table.SelectedCount(), 0);
  EXPECT_EQ(Table.FocusedRow(), -1);
}

TEST_F(ResultTable, TwoRowsOfOneIdGoTogether) {
  const auto result = Plain(u"a");
  Table.SetResults(Plains({result, Plain(u"b"), result}));
  EXPECT_EQ(Table.IndexOfId(result->GetId()), 0);
  Table.RemoveResults(Plains({result}));
  EXPECT_EQ(NamesOf(Table), "b");
}

TEST_F(ResultTable, UserDrawsDragsAndHidesColumns) {
  AddForeign();
  EXPECT_TRUE(Table.DragColumnWidth(0, 250));
  EXPECT_FALSE(Table.DragColumnWidth(0, 250));
  EXPECT_EQ(Table.Columns(0).Width, 250);
  EXPECT_TRUE(Table.DragColumnWidth(0, 1));
  EXPECT_EQ(Table.Columns(0).Width, TResultColumn::cMinWidth);
  EXPECT_TRUE(Table.DragColumn(0, 2));
  EXPECT_THAT(Table.ColumnOrder(), ElementsAre(1, 2, 0));
  EXPECT_TRUE(Table.DragColumn(2, 0));
  EXPECT_THAT(Table.ColumnOrder(), ElementsAre(2, 1, 0));
  EXPECT_FALSE(Table.DragColumn(2, 0));
  EXPECT_FALSE(Table.DragColumn(2, 3));
  EXPECT_FALSE(Table.DragColumn(2, -1));
  EXPECT_FALSE(Table.DragColumn(3, 0));
  EXPECT_TRUE(Table.ShowColumn(0, false));
  EXPECT_FALSE(Table.ShowColumn(0, false));
  EXPECT_FALSE(Table.ClickHeader(0));
  EXPECT_FALSE(Table.DragColumnWidth(0, 99));
  EXPECT_FALSE(Table.DragColumn(0, 0));
  EXPECT_TRUE(Table.ShowColumn(1, false));
  EXPECT_FALSE(Table.ShowColumn(2, false)) << "one column stays";
  EXPECT_FALSE(Table.ShowColumn(7, true));
  EXPECT_TRUE(Table.ShowColumn(0, true));
  EXPECT_EQ(Events.size(), 7u);
  Table.SetColumnWidth(0, 99999);
  EXPECT_EQ(Table.Columns(0).Width, TResultColumn::cMaxWidth);
  Table.SetColumnVisible(1, true);
  Table.MoveColumn(1, 0);
  EXPECT_THAT(Table.ColumnOrder(), ElementsAre(1, 2, 0));
  EXPECT_EQ(Events.size(), 7u);
  EXPECT_THROW(Table.MoveColumn(1, 3), EListError);
}

TEST_F(ResultTable, ColumnsComeAndGoWithTheirIndices) {
  const auto foreign = AddForeign();
  Table.MoveColumn(ForeignColumn, 0);
  EXPECT_EQ(Table.IndexOfColumn(foreign->GetId()), 2);
  Show({u"b", u"a"});
  Table.SetSort(2, false);
  Table.DeleteColumn(0);
  EXPECT_EQ(Table.IndexOfColumn(cNameColumn), -1);
  EXPECT_EQ(Table.IndexOfColumn(foreign->GetId()), 1);
  EXPECT_THAT(Table.ColumnOrder(), ElementsAre(1, 0));
  EXPECT_EQ(Table.SortColumn(), 1);
  Table.DeleteColumn(1);
  EXPECT_EQ(Table.SortColumn(), -1);
  EXPECT_EQ(NamesOf(Table), "a b");
  EXPECT_THROW(Table.DeleteColumn(1), EListError);
  EXPECT_THROW(Table.AddColumn({}, 5), EListError);
}

TEST_F(ResultTable, ClickOnACellFocusesItsRowBeforeTheColumnHears) {
  const auto foreign = AddForeign();
  Show({u"a", u"b"});
  Table.SelectRows({0}, 0);
  Events.clear();
  EXPECT_TRUE(Table.ClickCell(1, ForeignColumn, {3, 4}));
  EXPECT_EQ(Table.FocusedRow(), 1);
  EXPECT_THAT(Table.SelectedRows(), ElementsAre(1));
  EXPECT_THAT(foreign->Calls, ElementsAre("click b 3,4"));
  EXPECT_THAT(Events, ElementsAre("selection"));
  EXPECT_FALSE(Table.ClickCell(1, 0, {3, 4}));
  // Other rows stay selected where the focus is in place.
  Table.SelectRows({0, 1}, 1);
  EXPECT_TRUE(Table.ClickCell(1, ForeignColumn, {3, 4}));
  EXPECT_EQ(Table.SelectedCount(), 2);
  EXPECT_FALSE(Table.ClickCell(2, 0, {}));
  EXPECT_FALSE(Table.ClickCell(0, 5, {}));
  EXPECT_FALSE(Table.ClickCell(-1, -1, {}));
}

TEST_F(ResultTable, ColumnHearsOfAClickThoughItsRowGoesMeanwhile) {
  const auto foreign = AddForeign();
  Show({u"a"});
  ClearsOnSelection = true;
  EXPECT_TRUE(Table.ClickCell(0, ForeignColumn, {3, 4}));
  EXPECT_THAT(foreign->Calls, ElementsAre("click a 3,4"));
  EXPECT_EQ(Table.GetCount(), 0);
  Show({u"a"});
  EXPECT_TRUE(Table.DoubleClick(0));
  EXPECT_THAT(Events, testing::Not(testing::Contains("open -1")));
  Show({u"a"});
  Table.SetMenu(this);
  EXPECT_FALSE(Table.OpenPopupMenu(0, 0));
}

TEST_F(ResultTable, MouseOverACellSetsCursorAndHint) {
  const auto foreign = AddForeign();
  Show({u"a"});
  EXPECT_TRUE(Table.HoverCell(0, 0, {1, 2}));
  EXPECT_EQ(Table.Hint(), u"Hinweis zu a");
  EXPECT_EQ(Table.Cursor(), cCursorDefault);
  EXPECT_TRUE(Table.HoverCell(0, ForeignColumn, {1, 2}));
  EXPECT_EQ(Table.Hint(), u"");
  EXPECT_EQ(Table.Cursor(), cCursorHandPoint);
  EXPECT_THAT(foreign->Calls, ElementsAre("move a 1,2"));
  foreign->Fails = true;
  EXPECT_TRUE(Table.HoverCell(0, ForeignColumn, {1, 2}));
  EXPECT_FALSE(Table.HoverCell(-1, -1, {}));
  EXPECT_EQ(Table.Cursor(), cCursorDefault);
}

TEST_F(ResultTable, DoubleClickAndReturnOpenTheFocusedRow) {
  Show({u"a", u"b"});
  EXPECT_FALSE(Table.PressKey(cKeyReturn));
  EXPECT_TRUE(Table.DoubleClick(1));
  EXPECT_THAT(Events, ElementsAre("selection", "open 1"));
  EXPECT_FALSE(Table.DoubleClick(-1));
  EXPECT_TRUE(Table.PressKey(cKeyReturn));
  EXPECT_EQ(Events.back(), "open 1");
  EXPECT_FALSE(Table.PressKey(cKeySpace));
  Table.SetOnOpen({});
  EXPECT_FALSE(Table.PressKey(cKeyReturn));
  EXPECT_TRUE(Table.DoubleClick(0));
  EXPECT_EQ(Table.FocusedRow(), 0);
}

TEST_F(ResultTable, MenuIsPreparedForTheRowUnderTheMouse) {
  Show({u"a", u"b", u"c"});
  EXPECT_FALSE(Table.OpenPopupMenu(0, 0));  // there is none
  EXPECT_THAT(Table.PopupEntries(), IsEmpty());
  Events.clear();
  Table.SetMenu(this);
  EXPECT_FALSE(Table.OpenPopupMenu(0, 0));  // it is empty
  Menu.Add(u"Eintrag");
  Table.SelectRows({0, 1}, 0);
  Events.clear();
  // A row of the selection keeps it.
  EXPECT_TRUE(Table.OpenPopupMenu(1, 0));
  EXPECT_EQ(Table.SelectedCount(), 2);
  EXPECT_EQ(Table.FocusedRow(), 1);
  EXPECT_THAT(Events, ElementsAre("selection", "menu 1 0"));
  EXPECT_TRUE(Table.OpenPopupMenu(2, 1));
  EXPECT_THAT(Table.SelectedRows(), ElementsAre(2));
  EXPECT_EQ(Events.back(), "menu 2 1");
  // Beside the rows and by the keyboard.
  EXPECT_TRUE(Table.OpenPopupMenu(-1, -1));
  EXPECT_EQ(Events.back(), "menu -1 -1");
  EXPECT_TRUE(Table.OpenPopupMenu(Table.FocusedRow(), -1));
  EXPECT_EQ(Events.back(), "menu 2 -1");
  EXPECT_EQ(Table.PopupEntries().size(), 1u);
  EXPECT_FALSE(Table.OpenPopupMenu(3, 0));
  EXPECT_FALSE(Table.OpenPopupMenu(0, 9));
}

TEST_F(ResultTable, ShortCutPreparesTheMenuAndClicksItsEntry) {
  Show({u"a"});
  Table.SelectRows({0}, 0);
  EXPECT_FALSE(Table.PressShortCut(u"Del"));
  Table.SetMenu(this);
  TMenuItem& entry = Menu.Add(u"Löschen", TNotifyEvent::Of<&ResultTable::DoEntry>(this));
  entry.SetShortCut(u"Shift+Ctrl+Del");
  TMenuItem& sub = Menu.Add(u"Mehr");
  TMenuItem& below = sub.Add(u"Unten", TNotifyEvent::Of<&ResultTable::DoEntry>(this));
  below.SetShortCut(u"F5");
  Events.clear();
  EXPECT_FALSE(Table.PressShortCut(u"Del"));
  EXPECT_FALSE(Table.PressShortCut(u""));
  EXPECT_THAT(Events, IsEmpty());  // nothing was prepared
  EXPECT_TRUE(Table.PressShortCut(u"Ctrl+Shift+DEL"));
  EXPECT_THAT(Events, ElementsAre("menu 0 -1", "entry"));
  EXPECT_TRUE(Table.PressShortCut(u"F5"));
  sub.SetEnabled(false);
  EXPECT_FALSE(Table.PressShortCut(u"F5"));
  entry.SetEnabled(false);
  EXPECT_FALSE(Table.PressShortCut(u"Shift+Ctrl+Del"));
  entry.SetEnabled(true);
  entry.SetVisible(false);
  EXPECT_FALSE(Table.PressShortCut(u"Shift+Ctrl+Del"));
}

TEST_F(ResultTable, NothingHappensWhileItCanNotBeUsed) {
  Show({u"a"});
  Menu.Add(u"Eintrag").SetShortCut(u"Del");
  Table.SetMenu(this);
  Panel.SetEnabled(false);
  EXPECT_FALSE(Table.SelectRows({0}, 0));
  EXPECT_FALSE(Table.FocusRow(0));
  EXPECT_FALSE(Table.ClickHeader(0));
  EXPECT_FALSE(Table.DragColumnWidth(0, 50));
  EXPECT_FALSE(Table.DragColumn(0, 1));
  EXPECT_FALSE(Table.ShowColumn(0, false));
  EXPECT_FALSE(Table.ClickCell(0, 0, {}));
  EXPECT_FALSE(Table.HoverCell(0, 0, {}));
  EXPECT_FALSE(Table.DoubleClick(0));
  EXPECT_FALSE(Table.OpenPopupMenu(0, 0));
  EXPECT_FALSE(Table.PressShortCut(u"Del"));
  EXPECT_THAT(Events, IsEmpty());
}

/// Counts what the skin is told.
class TChangeCounter : public IControlObserver {
 public:
  void ControlChanged(TControl&) override { ++Changes; }
  void ControlGone(TControl&) override {}
  int Changes = 0;
};

TEST_F(ResultTable, TellsTheSkinOfWhatItShows) {
  TChangeCounter counter;
  Table.SetObserver(&counter);
  const auto tells = [&](const auto& iAction) {
    const int before = counter.Changes;
    iAction();
    return counter.Changes > before;
  };
  EXPECT_TRUE(tells([&] { Table.SetEmptyText(u"Nichts da."); }));
  EXPECT_FALSE(tells([&] { Table.SetEmptyText(u"Nichts da."); }));
  EXPECT_EQ(Table.EmptyText(), u"Nichts da.");
  EXPECT_TRUE(tells([&] { Show({u"a"}); }));
  EXPECT_TRUE(tells([&] { Table.SelectRows({0}, 0); }));
  EXPECT_FALSE(tells([&] { Table.SelectRows({0}, 0); }));
  EXPECT_TRUE(tells([&] { Table.SetSort(0, true); }));
  EXPECT_FALSE(tells([&] { Table.SetSort(0, true); }));
  EXPECT_TRUE(tells([&] { Table.SetColumnWidth(0, 77); }));
  EXPECT_FALSE(tells([&] { Table.SetColumnWidth(0, 77); }));
  EXPECT_TRUE(tells([&] { Table.MoveColumn(0, 1); }));
  EXPECT_TRUE(tells([&] { Table.SetColumnVisible(0, false); }));
  EXPECT_TRUE(tells([&] { Table.Invalidate(); }));
  Table.SetObserver(nullptr);
}

TEST_F(ResultTable, OneKeyForEachRowOfASort) {
  std::vector<TString> names;
  for (int i = 0; i < 1000; ++i) names.push_back(IntToStr((i * 7919) % 1000));
  Show(names);
  Names->Keys = 0;
  Table.SetSort(0, false);
  EXPECT_EQ(Names->Keys, 1000);
  for (int row = 1; row < 1000; ++row) {
    EXPECT_LT(CompareLocaleText(Table.Results(row - 1)->GetName(), Table.Results(row)->GetName()),
              0);
  }
  for (const auto& result : Shown) {
    EXPECT_EQ(Table.Results(Table.IndexOfId(result->GetId())), result);
  }
}

TEST_F(ResultTable, HundredThousandRowsAreNoBurden) {
  std::vector<TIntf<ISearchResult>> results;
  for (int i = 0; i < 100'000; ++i) results.push_back(Plain(IntToStr((i * 7919) % 100'000)));
  const auto begin = std::chrono::steady_clock::now();
  Table.SetResults(Plains(results));
  Table.SetSort(0, false);
  std::vector<TIntf<ISearchResult>> odd;
  for (int row = 1; row < 100'000; row += 2) odd.push_back(Table.Results(row));
  Table.SelectResults(Plains(odd));
  EXPECT_EQ(Table.SelectedCount(), 50'000);
  Table.RemoveResults(Plains(odd));
  EXPECT_EQ(Table.GetCount(), 50'000);
  EXPECT_EQ(Table.SelectedCount(), 0);
  // A step that is quadratic takes minutes.
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
}

TEST(TResultSortKey, OrdersTextsNumbersAndTimes) {
  using TKey = TResultSortKey;
  EXPECT_LT(TKey::OfText(u"Äpfel").Compare(TKey::OfText(u"Zebra")), 0);
  EXPECT_LT(TKey::OfNumber(9).Compare(TKey::OfNumber(10)), 0);
  EXPECT_GT(TKey::OfNumber(10).Compare(TKey::OfNumber(9)), 0);
  EXPECT_EQ(TKey::OfNumber(10).Compare(TKey::OfNumber(10)), 0);
  EXPECT_GT(TKey::OfNumber(9, u"USD").Compare(TKey::OfNumber(10, u"EUR")), 0);
  EXPECT_LT(TKey::OfTime(TDateTime(1.0)).Compare(TKey::OfTime(TDateTime(2.0))), 0);
  EXPECT_TRUE(TKey().IsEmpty());
  EXPECT_TRUE(TKey::OfText(u"").IsEmpty());
  EXPECT_TRUE(TKey::OfTime({}).IsEmpty());
  EXPECT_FALSE(TKey::OfNumber(0).IsEmpty());
}

}  // namespace
}  // namespace kk
