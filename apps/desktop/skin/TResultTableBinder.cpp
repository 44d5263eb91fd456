#include "apps/desktop/skin/TResultTableBinder.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QToolTip>

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"
#include "apps/desktop/skin/ShortCutOf.h"
#include "apps/desktop/skin/TPopupMenu.h"
#include "apps/desktop/skin/ToHint.h"
#include "host/results/ShortCuts.h"

namespace kk {

namespace {

constexpr int cDotsPerInch = 96;

// Runs of rows that follow each other, as few as there are.
QItemSelection RunsOf(const std::vector<int>& iRows, const QAbstractItemModel& iModel) {
  QItemSelection runs;
  const int lastColumn = iModel.columnCount() - 1;
  for (size_t first = 0, end; first < iRows.size(); first = end) {
    end = first + 1;
    while (end < iRows.size() && iRows[end] == iRows[end - 1] + 1) ++end;
    runs.append(QItemSelectionRange(iModel.index(iRows[first], 0),
                                    iModel.index(iRows[end - 1], lastColumn)));
  }
  return runs;
}

}  // namespace

TResultTableBinder::TResultTableBinder(TSkin& ioSkin, TResultTable& ioTable)
    : TBinderOf(ioSkin, ioTable, QtOwned<TResultTableView>()),
      FItems(*QtOwned<TResultItemModel>(ioTable, &View())) {
  TResultTableView& view = View();
  FDelegate = QtOwned<TResultCellDelegate>(&view, ioTable, FItems);
  view.setItemDelegate(FDelegate);
  view.setModel(&FItems);
  view.viewport()->installEventFilter(this);
  const auto moved = [this] {
    if (IsUser() && !FItems.IsChanging()) View().SelectionMoved();
  };
  connect(view.selectionModel(), &QItemSelectionModel::selectionChanged, this, moved);
  connect(view.selectionModel(), &QItemSelectionModel::currentChanged, this, moved);
  view.SetOnSelectionMoved([this] { SelectionMoved(); });
  FItems.SetOnScrollIntoView([this](int iRow) {
    View().scrollTo(FItems.index(iRow, View().header()->logicalIndexAt(0)));
  });
  ConnectHeader();
}

TResultTableBinder::~TResultTableBinder() {
  if (BoundWidget() == nullptr) return;
  View().SetOnSelectionMoved(nullptr);
  FItems.SetOnScrollIntoView(nullptr);
  FItems.Detach();
}

void TResultTableBinder::ConnectHeader() {
  View().header()->setMaximumSectionSize(ToScreen(TResultColumn::cMaxWidth));
  const QHeaderView* header = View().header();
  OnUser(header, &QHeaderView::sectionClicked,
         [this](int iColumn) { Control().ClickHeader(iColumn); });
  OnUser(header, &QHeaderView::sectionResized, [this](int iColumn, int /*iOld*/, int iNew) {
    if (!FItems.IsChanging() && iNew > 0) Control().DragColumnWidth(iColumn, FromScreen(iNew));
  });
  OnUser(header, &QHeaderView::sectionMoved, [this](int iColumn, int /*iOld*/, int iPlace) {
    if (!FItems.IsChanging()) Control().DragColumn(iColumn, iPlace);
  });
  connect(header, &QWidget::customContextMenuRequested, this,
          [this](const QPoint& iPos) { OpenColumnMenu(iPos); });
}

int TResultTableBinder::ToScreen(int iWidth) const {
  return iWidth * View().logicalDpiX() / cDotsPerInch;
}

int TResultTableBinder::FromScreen(int iWidth) const {
  return iWidth * cDotsPerInch / View().logicalDpiX();
}

void TResultTableBinder::Render() {
  const QSize icon(View().fontMetrics().height(), View().fontMetrics().height());
  if (View().iconSize() != icon) View().setIconSize(icon);
  View().SetEmptyText(ToQt(Control().EmptyText()));
  View().setAccessibleDescription(Control().GetCount() == 0 ? View().EmptyText() : QString());
  RenderColumns();
  RenderSelection();
  if (WasTold()) View().viewport()->update();
}

void TResultTableBinder::RenderColumns() {
  QHeaderView& header = *View().header();
  const std::vector<int>& order = Control().ColumnOrder();
  if (header.count() != static_cast<int>(order.size())) return;  // while the rows are others
  for (int place = 0; place < header.count(); ++place) {
    const int column = order[static_cast<size_t>(place)];
    const TResultColumn& look = Control().Columns(column);
    if (header.visualIndex(column) != place) {
      header.moveSection(header.visualIndex(column), place);
    }
    if (header.isSectionHidden(column) == look.Visible) {
      header.setSectionHidden(column, !look.Visible);
    }
    if (look.Visible && FromScreen(header.sectionSize(column)) != look.Width) {
      header.resizeSection(column, ToScreen(look.Width));
    }
  }
  header.setSortIndicatorShown(Control().SortColumn() >= 0);
  header.setSortIndicator(Control().SortColumn(),
                          Control().SortDescending() ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void TResultTableBinder::RenderSelection() {
  QItemSelectionModel& selection = *View().selectionModel();
  const int focused = Control().FocusedRow();
  if (selection.currentIndex().row() != focused) {
    const int column = std::max(0, View().header()->logicalIndex(0));
    selection.setCurrentIndex(FItems.index(focused, column), QItemSelectionModel::NoUpdate);
  }
  if (SelectedRowsOfView() != Control().SelectedRows()) {
    selection.select(RunsOf(Control().SelectedRows(), FItems), QItemSelectionModel::ClearAndSelect);
  }
}

std::vector<int> TResultTableBinder::SelectedRowsOfView() const {
  std::vector<int> rows;
  for (const QItemSelectionRange& range : View().selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row) rows.push_back(row);
  }
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}

void TResultTableBinder::SelectionMoved() {
  const std::vector<int> rows = SelectedRowsOfView();
  const int focused = View().currentIndex().row();
  Enter([&] {
    if (rows != Control().SelectedRows()) {
      Control().SelectRows(rows, focused);
    } else {
      Control().FocusRow(focused);
    }
  });
}

bool TResultTableBinder::eventFilter(QObject* iObject, QEvent* iEvent) {
  if (iEvent->type() == QEvent::ContextMenu) {
    OpenMenu(static_cast<const QContextMenuEvent&>(*iEvent));
    return true;
  }
  if (iEvent->type() == QEvent::ShortcutOverride) {
    const TString keys = ShortCutOf(static_cast<const QKeyEvent&>(*iEvent));
    if (!keys.empty() && HasShortCut(Control().PopupEntries(), keys)) {
      iEvent->accept();
      return true;
    }
  }
  if (iEvent->type() == QEvent::KeyPress && PressShortCut(static_cast<QKeyEvent&>(*iEvent))) {
    return true;
  }
  if (iObject == View().viewport()) return ViewportEvent(*iEvent);
  return TBinder::eventFilter(iObject, iEvent);
}

// True for what the view itself is not to hear of.
bool TResultTableBinder::ViewportEvent(QEvent& iEvent) {
  switch (iEvent.type()) {
    case QEvent::MouseMove:
      Hover(PlaceAt(static_cast<QMouseEvent&>(iEvent).pos()));
      return false;
    case QEvent::Leave:
      Hover({});
      return false;
    case QEvent::ToolTip:
      ShowHint(static_cast<QHelpEvent&>(iEvent));
      return true;
    case QEvent::MouseButtonPress:
      FPressed = View().indexAt(static_cast<QMouseEvent&>(iEvent).pos());
      return false;
    case QEvent::MouseButtonRelease: {
      const auto& mouse = static_cast<QMouseEvent&>(iEvent);
      const TCellPlace place = PlaceAt(mouse.pos());
      const bool isClick = mouse.button() == Qt::LeftButton && mouse.modifiers() == Qt::NoModifier;
      if (isClick && place.Index.isValid() && FPressed == place.Index) Click(place);
      return false;
    }
    case QEvent::MouseButtonDblClick: {
      const auto& mouse = static_cast<QMouseEvent&>(iEvent);
      FPressed = QModelIndex();
      const int row = View().indexAt(mouse.pos()).row();
      if (mouse.button() == Qt::LeftButton && row >= 0) Enter([&] { Control().DoubleClick(row); });
      return true;
    }
    default:
      return false;
  }
}

TResultTableBinder::TCellPlace TResultTableBinder::PlaceAt(const QPoint& iPos) const {
  const QModelIndex index = View().indexAt(iPos);
  const QPoint pos = iPos - View().visualRect(index).topLeft();
  return {index, {pos.x(), pos.y()}};
}

// What the mouse passes over changes nothing that would have to be rendered.
void TResultTableBinder::Hover(const TCellPlace& iPlace) {
  const QPointer<TBinder> self(this);
  AsUser([&] { Control().HoverCell(iPlace.Row(), iPlace.Column(), iPlace.Pos); });
  if (!self) return;
  const bool isHand = Control().Cursor() == cCursorHandPoint;
  View().viewport()->setCursor(isHand ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void TResultTableBinder::Click(const TCellPlace& iPlace) {
  FPressed = QModelIndex();
  Enter([&] { Control().ClickCell(iPlace.Row(), iPlace.Column(), iPlace.Pos); });
}

void TResultTableBinder::ShowHint(const QHelpEvent& iEvent) {
  const TCellPlace place = PlaceAt(iEvent.pos());
  TString hint;
  if (place.Index.isValid()) {
    hint = Control().Hint();
    if (hint.empty()) hint = CutOffText(place.Index);
  }
  QToolTip::showText(iEvent.globalPos(), ToHint(hint), View().viewport(),
                     View().visualRect(place.Index));
}

TString TResultTableBinder::CutOffText(const QModelIndex& iIndex) const {
  const TResultCell cell = FItems.CellAt(iIndex);
  QStyleOptionViewItem option;
  option.initFrom(&View());
  option.decorationSize = View().iconSize();
  const int width = View().columnWidth(iIndex.column());
  return FDelegate->IsCutOff(option, cell, width) ? cell.Text : TString();
}

void TResultTableBinder::OpenMenu(const QContextMenuEvent& iEvent) {
  QPoint place = iEvent.globalPos();
  int row = Control().FocusedRow();
  int column = -1;
  if (iEvent.reason() == QContextMenuEvent::Keyboard) {
    const QRect rect = View().visualRect(View().currentIndex()) & View().viewport()->rect();
    place = View().viewport()->mapToGlobal(rect.bottomLeft());
  } else {
    const QModelIndex index = View().indexAt(View().viewport()->mapFromGlobal(place));
    row = index.row();
    column = index.column();
  }
  bool opens = false;
  if (!Enter([&] { opens = Control().OpenPopupMenu(row, column); }) || !opens) return;
  TPopupMenu::Open(View(), Control().PopupEntries(), place);
}

void TResultTableBinder::OpenColumnMenu(const QPoint& iPos) {
  auto* menu = QtOwned<QMenu>(&View());  // owned by the view, and gone when it closes
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (const int column : Control().ColumnOrder()) {
    const TResultColumn& look = Control().Columns(column);
    QAction* action = menu->addAction(ToQtVerbatim(look.Caption));
    action->setCheckable(true);
    action->setChecked(look.Visible);
    OnUser(action, &QAction::triggered, [this, id = look.Id](bool iVisible) {
      Control().ShowColumn(Control().IndexOfColumn(id), iVisible);
    });
  }
  menu->popup(View().header()->mapToGlobal(iPos));
}

bool TResultTableBinder::PressShortCut(const QKeyEvent& iEvent) {
  const TString keys = ShortCutOf(iEvent);
  if (keys.empty()) return false;
  bool isUsed = true;  // also by who fails
  const bool isAlive = Enter([&] { isUsed = Control().PressShortCut(keys); });
  return !isAlive || isUsed;
}

}  // namespace kk
