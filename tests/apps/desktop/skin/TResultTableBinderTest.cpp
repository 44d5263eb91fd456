#include "apps/desktop/skin/TResultTableBinder.h"

#include <gmock/gmock.h>

#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMenu>
#include <QToolTip>

#include "TResultWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A table with the columns name, length and a foreign one.
class TTableWindow : public TShownWindow, private IResultTableMenu {
 public:
  explicit TTableWindow(const std::vector<TString>& iNames = {u"Cäsar", u"Anton", u"Berta"}) {
    Table.AddColumn({NewGuid(), u"Name", 150, TResultAlignment::raLeft, true, Name, {}}, 0);
    Table.AddColumn({NewGuid(), u"Länge", 60, TResultAlignment::raRight, true, Length, {}}, 1);
    const auto painted = MakeIntf<TPaintedColumn>(Book);
    Table.AddColumn({painted->GetId(),
                     u"Beobachten",
                     80,
                     {},
                     true,
                     nullptr,
                     TIntf<IAdditionalColumn>(painted.Get())},
                    2);
    Table.SetEmptyText(u"Nichts gefunden");
    Table.SetOnSelectionChanged(TNotifyEvent::Of<&TTableWindow::SelectionChanged>(this));
    Table.SetOnOpen(TNotifyEvent::Of<&TTableWindow::Open>(this));
    Table.SetOnLayoutChanged(TNotifyEvent::Of<&TTableWindow::LayoutChanged>(this));
    Table.SetMenu(this);
    Entry.SetShortCut(u"Del");
    Entry.SetOnClick(TNotifyEvent::Of<&TTableWindow::Delete>(this));
    Table.SetResults(NamedResults(iNames));
    ShowSkin();
  }
  TResultTableView& View() { return WidgetOf<TResultTableView>(Table); }
  QWidget& Viewport() { return *View().viewport(); }
  QPoint PlaceOf(int iRow, int iColumn) {
    return View().visualRect(View().model()->index(iRow, iColumn)).center();
  }
  void Click(int iRow, int iColumn, Qt::KeyboardModifiers iModifiers = {}) {
    QTest::mouseClick(&Viewport(), Qt::LeftButton, iModifiers, PlaceOf(iRow, iColumn));
    Turn();
  }
  void AskForMenu(QContextMenuEvent::Reason iReason, const QPoint& iPos) {
    QContextMenuEvent event(iReason, iPos, Viewport().mapToGlobal(iPos));
    QCoreApplication::sendEvent(iReason == QContextMenuEvent::Mouse ? &Viewport() : &View(),
                                &event);
  }
  std::vector<int> RowsOfView() {
    std::vector<int> rows;
    for (const QModelIndex& index : View().selectionModel()->selectedRows()) {
      rows.push_back(index.row());
    }
    std::sort(rows.begin(), rows.end());
    return rows;
  }

  std::shared_ptr<TNameContent> Name = std::make_shared<TNameContent>();
  std::shared_ptr<TNameContent> Length = std::make_shared<TNameContent>(true);
  std::function<void()> OnSelection;
  TNotebook Book;
  TMenuItem Entry{u"Löschen"};
  TResultTable Table{this, u"tbl"};

  void Drop(TObject*) { DropSkin(); }

 private:
  std::vector<TMenuItem*> GetEntries() override { return {&Entry}; }
  void BeforePopup(int iRow, int iColumn) override {
    Book.Note("popup " + std::to_string(iRow) + "," + std::to_string(iColumn));
  }
  void SelectionChanged(TObject*) {
    std::string note = "select";
    for (const int row : Table.SelectedRows()) note += " " + std::to_string(row);
    Book.Note(note + " focus " + std::to_string(Table.FocusedRow()));
    if (OnSelection) OnSelection();
  }
  void Open(TObject*) { Book.Note("open " + std::to_string(Table.FocusedRow())); }
  void LayoutChanged(TObject*) { Book.Note("layout"); }
  void Delete(TObject*) { Book.Note("delete"); }
};

TEST(TResultTableBinder, ShowsColumnsSortAndSelectionOfTheTable) {
  TTableWindow window;
  const QHeaderView& header = *window.View().header();
  EXPECT_EQ(header.count(), 3);
  EXPECT_FALSE(header.isSortIndicatorShown());
  window.Table.SetColumnWidth(0, 200);
  window.Table.MoveColumn(2, 0);
  window.Table.SetColumnVisible(1, false);
  window.Table.SetSort(0, true);
  const TIntf<IInterfaceList> list = NewInterfaceList();
  list->Add(window.Table.Results(1));
  list->Add(window.Table.Results(2));
  window.Table.SelectResults(list);
  window.Turn();
  EXPECT_EQ(header.sectionSize(0) * 96 / window.View().logicalDpiX(), 200);
  EXPECT_EQ(header.visualIndex(2), 0);
  EXPECT_TRUE(header.isSectionHidden(1));
  EXPECT_TRUE(header.isSortIndicatorShown());
  EXPECT_EQ(header.sortIndicatorSection(), 0);
  EXPECT_EQ(header.sortIndicatorOrder(), Qt::DescendingOrder);
  EXPECT_THAT(window.RowsOfView(), ElementsAre(1, 2));
  EXPECT_EQ(window.View().currentIndex().row(), window.Table.FocusedRow());
  EXPECT_THAT(window.Book.Take(), ElementsAre("select 1 2 focus 1"));
}

TEST(TResultTableBinder, SelectsByMouseOneSeveralAndARange) {
  TTableWindow window;
  window.Click(1, 0);
  window.Click(0, 0, Qt::ControlModifier);
  window.Click(1, 0);
  window.Click(2, 0, Qt::ShiftModifier);
  // A press on one of several goes to it; the release leaves it alone.
  EXPECT_THAT(window.Book.Take(),
              ElementsAre("select 1 focus 1", "select 0 1 focus 0", "select 0 1 focus 1",
                          "select 1 focus 1", "select 1 2 focus 2"));
}

TEST(TResultTableBinder, TellsOnceForOneKey) {
  TTableWindow window;
  window.Click(0, 0);
  window.View().setFocus();
  window.Book.Take();
  QTest::keyClick(&window.View(), Qt::Key_Down);
  QTest::keyClick(&window.View(), Qt::Key_Down, Qt::ControlModifier);
  QTest::keyClick(&window.View(), Qt::Key_A, Qt::ControlModifier);
  EXPECT_THAT(window.Book.Take(),
              ElementsAre("select 1 focus 1", "select 1 focus 2", "select 0 1 2 focus 2"));
}

TEST(TResultTableBinder, GoesNowhereWhenTheFocusComes) {
  TTableWindow window;
  window.View().setFocus();
  window.Turn();
  EXPECT_EQ(window.Table.FocusedRow(), -1);
  EXPECT_THAT(window.Book.Take(), IsEmpty());
}

TEST(TResultTableBinder, FindsARowByItsFirstLetters) {
  TTableWindow window;
  window.Click(0, 0);
  QTest::keyClick(&window.View(), Qt::Key_B);
  EXPECT_EQ(window.Table.FocusedRow(), 2);
}

TEST(TResultTableBinder, SortsByAClickOnAHeaderAndKeepsSelectionOnItsRow) {
  TTableWindow window;
  window.Click(0, 0);
  window.Book.Take();
  QHeaderView& header = *window.View().header();
  QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, QPoint(40, header.height() / 2));
  window.Turn();
  EXPECT_EQ(window.Table.SortColumn(), 0);
  EXPECT_THAT(window.RowsOfView(), ElementsAre(2));
  EXPECT_EQ(header.sortIndicatorOrder(), Qt::AscendingOrder);
  QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, QPoint(40, header.height() / 2));
  window.Turn();
  EXPECT_TRUE(window.Table.SortDescending());
  EXPECT_THAT(window.RowsOfView(), ElementsAre(0));
  EXPECT_EQ(header.sortIndicatorOrder(), Qt::DescendingOrder);
  EXPECT_THAT(window.Book.Take(), ElementsAre("layout", "layout"));
}

TEST(TResultTableBinder, TellsOfColumnsThatAreDraggedOrHidden) {
  TTableWindow window;
  QHeaderView& header = *window.View().header();
  header.resizeSection(1, 90 * window.View().logicalDpiX() / 96);
  EXPECT_EQ(window.Table.Columns(1).Width, 90);
  header.moveSection(0, 1);
  EXPECT_THAT(window.Table.ColumnOrder(), ElementsAre(1, 0, 2));
  Q_EMIT header.customContextMenuRequested({5, 5});
  ASSERT_NE(OpenMenu(), nullptr);
  const QList<QAction*> actions = OpenMenu()->actions();
  ASSERT_EQ(actions.size(), 3);
  EXPECT_EQ(actions[0]->text(), QStringLiteral("Länge"));
  EXPECT_TRUE(actions[0]->isChecked());
  actions[0]->trigger();
  window.Turn();
  EXPECT_FALSE(window.Table.Columns(1).Visible);
  EXPECT_TRUE(header.isSectionHidden(1));
  OpenMenu()->close();
  EXPECT_THAT(window.Book.Take(), ElementsAre("layout", "layout", "layout"));
}

TEST(TResultTableBinder, ClicksForeignCellsAndShowsTheirCursor) {
  TTableWindow window;
  const QRect cell = window.View().visualRect(window.View().model()->index(1, 2));
  QTest::mouseMove(&window.Viewport(), cell.topLeft() + QPoint(10, 5));
  EXPECT_EQ(window.Viewport().cursor().shape(), Qt::PointingHandCursor);
  QTest::mouseMove(&window.Viewport(), cell.topLeft() + QPoint(60, 5));
  EXPECT_EQ(window.Viewport().cursor().shape(), Qt::ArrowCursor);
  window.Click(1, 2);
  EXPECT_THAT(window.Book.Take(), ElementsAre("select 1 focus 1", "click Anton"));
}

TEST(TResultTableBinder, ClicksNothingWhenTheButtonIsReleasedElsewhere) {
  TTableWindow window;
  QTest::mousePress(&window.Viewport(), Qt::LeftButton, {}, window.PlaceOf(0, 2));
  QTest::mouseRelease(&window.Viewport(), Qt::LeftButton, {}, window.PlaceOf(1, 2));
  EXPECT_THAT(window.Book.Take(), ElementsAre("select 0 focus 0"));
}

TEST(TResultTableBinder, OpensByReturnAndDoubleClick) {
  TTableWindow window;
  QTest::mouseDClick(&window.Viewport(), Qt::LeftButton, {}, window.PlaceOf(1, 0));
  window.Turn();
  window.View().setFocus();
  QTest::keyClick(&window.View(), Qt::Key_Return);
  EXPECT_THAT(window.Book.Take(), ElementsAre("select 1 focus 1", "open 1", "open 1"));
}

TEST(TResultTableBinder, OpensTheMenuOnACellBesideAllAndByTheKeyboard) {
  TTableWindow window;
  window.AskForMenu(QContextMenuEvent::Mouse, window.PlaceOf(1, 0));
  ASSERT_NE(OpenMenu(), nullptr);
  EXPECT_EQ(OpenMenu()->actions().front()->text(), QStringLiteral("Löschen"));
  OpenMenu()->close();
  window.Turn();
  window.AskForMenu(QContextMenuEvent::Keyboard, {});
  OpenMenu()->close();
  window.AskForMenu(QContextMenuEvent::Mouse, {20, 250});
  OpenMenu()->close();
  EXPECT_THAT(window.Book.Take(),
              ElementsAre("select 1 focus 1", "popup 1,0", "popup 1,-1", "popup -1,-1"));
}

TEST(TResultTableBinder, PressesShortCutsOfTheMenu) {
  TTableWindow window;
  window.Click(0, 0);
  window.View().setFocus();
  window.Book.Take();
  QTest::keyClick(&window.View(), Qt::Key_Delete);
  EXPECT_THAT(window.Book.Take(), ElementsAre("popup 0,-1", "delete"));
}

TEST(TResultTableBinder, TellsWhatIsCutOffAndTheHintsOfCells) {
  TTableWindow window({TString(200, u'x'), u"kurz", u"mit Hinweis"});
  const auto hintAt = [&](int iRow, int iColumn) {
    const QPoint place = window.PlaceOf(iRow, iColumn);
    QTest::mouseMove(&window.Viewport(), place);
    QHelpEvent help(QEvent::ToolTip, place, window.Viewport().mapToGlobal(place));
    QCoreApplication::sendEvent(&window.Viewport(), &help);
    return QToolTip::isVisible() ? QToolTip::text() : QString();
  };
  EXPECT_TRUE(hintAt(0, 0).contains(QStringLiteral("xxxx")));
  EXPECT_TRUE(hintAt(2, 0).contains(QStringLiteral("Hinweis")));
  QToolTip::hideText();
  EXPECT_TRUE(CrankUntil([] { return !QToolTip::isVisible(); }));
  EXPECT_EQ(hintAt(1, 0), QString());
}

TEST(TResultTableBinder, SaysWhyThereAreNoRows) {
  TTableWindow window{std::vector<TString>{}};
  EXPECT_EQ(window.View().EmptyText(), QStringLiteral("Nichts gefunden"));
  EXPECT_EQ(window.View().accessibleDescription(), QStringLiteral("Nichts gefunden"));
  const QImage before = window.Viewport().grab().toImage();
  window.Table.SetEmptyText({});
  window.Turn();
  EXPECT_NE(window.Viewport().grab().toImage(), before);
  window.Table.SetResults(NamedResults({u"Anton"}));
  window.Turn();
  EXPECT_EQ(window.View().accessibleDescription(), QString());
}

TEST(TResultTableBinder, PaintsForeignCellsInTheColoursOfTheRow) {
  TTableWindow window({u"gleich", u"gleich", u"gleich"});
  const auto picture = [&](int iRow) {
    return window.Viewport()
        .grab(window.View().visualRect(window.View().model()->index(iRow, 2)))
        .toImage();
  };
  window.View().setAlternatingRowColors(false);
  EXPECT_EQ(picture(0), picture(1));
  window.Click(0, 0);
  EXPECT_NE(picture(0), picture(1));
}

TEST(TResultTableBinder, BringsARowIntoView) {
  TTableWindow window(std::vector<TString>(1000, u"Zeile"));
  const TIntf<IInterfaceList> list = NewInterfaceList();
  list->Add(window.Table.Results(990));
  window.Table.SelectResults(list);
  EXPECT_TRUE(window.Viewport().rect().contains(window.PlaceOf(990, 0)));
}

TEST(TResultTableBinder, AsksOnlyForTheCellsThatAreSeen) {
  TTableWindow window(std::vector<TString>(100000, u"Zeile"));
  EXPECT_GT(window.Name->Asked, 0);
  EXPECT_LT(window.Name->Asked, 200);
  window.Name->Asked = 0;
  window.Table.RefreshResult(window.Table.Results(1));
  QCoreApplication::processEvents();
  EXPECT_EQ(window.Name->Asked, 1);
}

TEST(TResultTableBinder, DoesNothingWhileItIsDisabled) {
  TTableWindow window;
  window.Table.SetEnabled(false);
  window.Turn();
  window.Click(1, 0);
  window.Click(1, 2);
  QTest::mouseDClick(&window.Viewport(), Qt::LeftButton, {}, window.PlaceOf(1, 0));
  window.View().selectAll();
  window.View().header()->moveSection(0, 1);
  window.AskForMenu(QContextMenuEvent::Mouse, window.PlaceOf(1, 0));
  window.Turn();
  EXPECT_EQ(OpenMenu(), nullptr);
  EXPECT_THAT(window.RowsOfView(), IsEmpty());
  EXPECT_EQ(window.View().header()->visualIndex(0), 0);
  EXPECT_THAT(window.Book.Take(), IsEmpty());
}

TEST(TResultTableBinder, RemovesSelectedRowsWithoutAnEchoOfQts) {
  TTableWindow window;
  window.Click(1, 0);
  window.Book.Take();
  const TIntf<IInterfaceList> list = NewInterfaceList();
  list->Add(window.Table.Results(1));
  window.Table.RemoveResults(list);
  EXPECT_THAT(window.Book.Take(), ElementsAre("select focus 1"));
  window.Turn();
  EXPECT_THAT(window.RowsOfView(), IsEmpty());
  EXPECT_EQ(window.View().currentIndex().row(), 1);
  EXPECT_THAT(window.Book.Take(), IsEmpty());
}

TEST(TResultTableBinder, SurvivesASkinThatGoesInTheMiddleOfAClickOrAKey) {
  TTableWindow window;
  const QPointer<QTreeView> view = &window.View();
  window.OnSelection = [&] { window.DropSkin(); };
  QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, window.PlaceOf(1, 2));
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(view.isNull());
  TTableWindow other;
  const QPointer<QTreeView> second = &other.View();
  other.Entry.SetOnClick(TNotifyEvent::Of<&TTableWindow::Drop>(&other));
  other.Click(0, 0);
  QTest::keyClick(second, Qt::Key_Delete);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(second.isNull());
}

TEST(TResultTableBinder, SurvivesAWindowThatDiesFirst) {
  auto window = std::make_unique<TTableWindow>();
  window->Click(1, 0);
  window.reset();
  QCoreApplication::processEvents();
}

}  // namespace
}  // namespace kk
