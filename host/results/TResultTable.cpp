#include "host/results/TResultTable.h"

#include <algorithm>
#include <unordered_set>

#include "host/base/Guard.h"
#include "host/controls/TPanel.h"
#include "host/results/ShortCuts.h"
#include "host/results/TResultCellInfo.h"
#include "host/results/TResultOrder.h"

namespace kk {

namespace {

// More pieces than this are not told one by one: everything is told as new.
constexpr size_t cMaxPiecesTold = 16;

template <class Function>
void ForEachResult(const TIntf<IInterfaceList>& iResults, Function iFunction) {
  if (!iResults) return;
  for (int i = 0; i < iResults->GetCount(); ++i) {
    if (const auto result = GetAs<ISearchResult>(*iResults, i)) iFunction(result);
  }
}

}  // namespace

// Brackets one change for the observer, and repaints.
class TResultTable::TChanging {
 public:
  TChanging(TResultTable& ioTable, const TResultTableChange& iChange)
      : FTable(ioTable), FChange(iChange) {
    if (FTable.FTableObserver != nullptr) FTable.FTableObserver->BeforeTableChange(FChange);
  }
  ~TChanging() {
    FTable.FSelectedRowsValid = false;
    if (FTable.FTableObserver != nullptr) FTable.FTableObserver->AfterTableChange(FChange);
    FTable.Changed();
  }
  TChanging(const TChanging&) = delete;
  TChanging& operator=(const TChanging&) = delete;

 private:
  TResultTable& FTable;
  TResultTableChange FChange;
};

TResultTable::TResultTable(TControl* iParent, TStringView iName) : TControl(iParent, iName) {
  SetStretches(true);
}

TResultTable::~TResultTable() {
  if (FTableObserver != nullptr) FTableObserver->TableGone();
}

void TResultTable::SetContainer(TPanel* iPanel) {
  if (Parent() != iPanel) SetParent(iPanel);
}

int TResultTable::AddColumn(TResultColumn iColumn, int iPlace) {
  (void)CheckedIndex(iPlace, static_cast<size_t>(ColumnCount()) + 1);
  const TChanging change(*this, {});
  return FColumns.Add(std::move(iColumn), iPlace);
}

void TResultTable::DeleteColumn(int iColumn) {
  (void)Columns(iColumn);
  const TChanging change(*this, {});
  FColumns.Delete(iColumn);
  if (FSortColumn == iColumn) {
    FSortColumn = -1;
  } else if (FSortColumn > iColumn) {
    --FSortColumn;
  }
}

void TResultTable::SetColumnVisible(int iColumn, bool iVisible) {
  if (FColumns.SetVisible(iColumn, iVisible)) Changed();
}

void TResultTable::SetColumnWidth(int iColumn, int iWidth) {
  if (FColumns.SetWidth(iColumn, iWidth)) Changed();
}

void TResultTable::MoveColumn(int iColumn, int iPlace) {
  if (FColumns.Move(iColumn, iPlace)) Changed();
}

TResultTable::TRow& TResultTable::RowAt(int iRow) const {
  return *FRows[CheckedIndex(iRow, FRows.size())];
}

TResultTable::TRow* TResultTable::FindRow(const TGuid& iId) const {
  const auto entry = FRowById.find(iId);
  return entry == FRowById.end() ? nullptr : entry->second;
}

const TIntf<ISearchResult>& TResultTable::Results(int iRow) const { return RowAt(iRow).Result; }

int TResultTable::IndexOfId(const TGuid& iId) const {
  const TRow* row = FindRow(iId);
  return row != nullptr ? row->Place : -1;
}

std::unique_ptr<TResultTable::TRow> TResultTable::NewRow(const TIntf<ISearchResult>& iResult) {
  auto row = std::make_unique<TRow>();
  row->Result = iResult;
  row->Id = iResult->GetId();
  row->Arrival = FNextArrival++;
  return row;
}

void TResultTable::SetResults(const TIntf<IInterfaceList>& iResults) {
  std::unordered_set<TGuid> selected;
  for (const int row : SelectedRows()) selected.insert(FRows[static_cast<size_t>(row)]->Id);
  const bool hadFocus = FFocused != nullptr;
  const TGuid focused = hadFocus ? FFocused->Id : cEmptyGuid;
  TRows rows;
  ForEachResult(iResults, [&](const auto& iResult) { rows.push_back(NewRow(iResult)); });
  if (rows.empty() && FRows.empty()) return;
  Reorder(rows, OrderOf(rows));
  if (TakeSameRows(rows)) return;
  {
    const TChanging change(*this, {});
    FFocused = nullptr;
    FSelectedCount = 0;
    FRowById.clear();
    FRowById.reserve(rows.size());
    std::swap(FRows, rows);
    for (const auto& row : FRows) {
      FRowById.emplace(row->Id, row.get());
      row->Selected = selected.contains(row->Id);
      FSelectedCount += row->Selected ? 1 : 0;
    }
    if (hadFocus) FFocused = FindRow(focused);
    Renumber(0);
  }
  FSelectionChanged |=
      static_cast<size_t>(FSelectedCount) != selected.size() || hadFocus != (FFocused != nullptr);
  TellSelection();
}

bool TResultTable::TakeSameRows(const TRows& iRows) {
  const auto isSame = [](const auto& iA, const auto& iB) { return iA->Id == iB->Id; };
  if (!std::equal(iRows.begin(), iRows.end(), FRows.begin(), FRows.end(), isSame)) return false;
  for (size_t i = 0; i < FRows.size(); ++i) {
    if (FRows[i]->Result != iRows[i]->Result) ShowResult(*FRows[i], iRows[i]->Result);
  }
  Changed();  // foreign columns may show something else
  return true;
}

void TResultTable::ShowResult(TRow& ioRow, const TIntf<ISearchResult>& iResult) {
  ioRow.Result = iResult;
  if (FTableObserver != nullptr) FTableObserver->RowChanged(ioRow.Place);
}

void TResultTable::AddResult(const TIntf<ISearchResult>& iResult) {
  if (!iResult) return;
  auto row = NewRow(iResult);
  size_t place = FRows.size();
  if (FSortColumn >= 0) {
    const TResultOrder order(Columns(FSortColumn), FSortColumn, FSortDescending);
    const auto entry = order.EntryOf(iResult);
    // By halves; a foreign order that contradicts itself leads to some place all the same.
    size_t first = 0;
    while (first < place) {
      const size_t middle = first + (place - first) / 2;
      if (order.IsBefore(entry, order.EntryOf(FRows[middle]->Result))) {
        place = middle;
      } else {
        first = middle + 1;
      }
    }
  }
  const TChanging change(*this, {TResultTableChange::TKind::rcInsert, static_cast<int>(place), 1});
  FRowById.emplace(row->Id, row.get());
  FRows.insert(FRows.begin() + static_cast<ptrdiff_t>(place), std::move(row));
  Renumber(place);
}

void TResultTable::RemoveResults(const TIntf<IInterfaceList>& iResults) {
  std::unordered_set<TGuid> ids;
  ForEachResult(iResults, [&](const auto& iResult) {
    const TGuid id = iResult->GetId();
    if (FRowById.contains(id)) ids.insert(id);
  });
  if (ids.empty()) return;
  int going = 0;
  for (const auto& row : FRows) {
    row->Goes = ids.contains(row->Id);
    going += row->Goes ? 1 : 0;
  }
  for (const TGuid& id : ids) FRowById.erase(id);
  MoveFocusAway();
  RemoveGoingRows(going);
  TellSelection();
}

void TResultTable::MoveFocusAway() {
  if (FFocused == nullptr || !FFocused->Goes) return;
  const auto begin = FRows.begin() + FFocused->Place;
  const auto stays = [](const auto& iRow) { return !iRow->Goes; };
  const auto next = std::find_if(begin, FRows.end(), stays);
  if (next != FRows.end()) {
    SetFocus(next->get());
    return;
  }
  const auto before = std::find_if(std::make_reverse_iterator(begin), FRows.rend(), stays);
  SetFocus(before != FRows.rend() ? before->get() : nullptr);
}

void TResultTable::RemoveGoingRows(int iCount) {
  struct TPiece {
    size_t First = 0, Count = 0;
  };
  std::vector<TPiece> pieces;
  for (size_t i = 0; i < FRows.size() && pieces.size() <= cMaxPiecesTold; ++i) {
    if (!FRows[i]->Goes) continue;
    if (pieces.empty() || pieces.back().First + pieces.back().Count != i) pieces.push_back({i, 0});
    ++pieces.back().Count;
  }
  for (const auto& row : FRows) {
    if (!row->Goes || !row->Selected) continue;
    --FSelectedCount;
    FSelectionChanged = true;
  }
  if (pieces.size() > cMaxPiecesTold || iCount == GetCount()) {
    const TChanging change(*this, {});
    std::erase_if(FRows, [](const auto& iRow) { return iRow->Goes; });
    Renumber(0);
    return;
  }
  for (auto piece = pieces.rbegin(); piece != pieces.rend(); ++piece) {
    const TChanging change(*this, {TResultTableChange::TKind::rcRemove,
                                   static_cast<int>(piece->First), static_cast<int>(piece->Count)});
    const auto begin = FRows.begin() + static_cast<ptrdiff_t>(piece->First);
    FRows.erase(begin, begin + static_cast<ptrdiff_t>(piece->Count));
    Renumber(piece->First);
  }
}

void TResultTable::RefreshResult(const TIntf<ISearchResult>& iResult) {
  TRow* row = iResult ? FindRow(iResult->GetId()) : nullptr;
  if (row != nullptr) ShowResult(*row, iResult);
}

void TResultTable::Renumber(size_t iFrom) {
  for (size_t i = iFrom; i < FRows.size(); ++i) FRows[i]->Place = static_cast<int>(i);
}

std::vector<TResultTable::TRow*> TResultTable::OrderOf(const TRows& iRows) const {
  std::vector<TRow*> rows;
  rows.reserve(iRows.size());
  for (const auto& row : iRows) rows.push_back(row.get());
  if (FSortColumn < 0) {
    std::sort(rows.begin(), rows.end(),
              [](const TRow* iA, const TRow* iB) { return iA->Arrival < iB->Arrival; });
    return rows;
  }
  const TResultOrder order(Columns(FSortColumn), FSortColumn, FSortDescending);
  std::vector<TResultOrder::TEntry> entries;
  entries.reserve(rows.size());
  for (size_t i = 0; i < rows.size(); ++i) entries.push_back(order.EntryOf(rows[i]->Result, i));
  order.Sort(entries);
  for (size_t i = 0; i < rows.size(); ++i) rows[i] = iRows[entries[i].Index].get();
  return rows;
}

void TResultTable::Reorder(TRows& ioRows, const std::vector<TRow*>& iOrder) {
  for (auto& row : ioRows) (void)row.release();
  for (size_t i = 0; i < ioRows.size(); ++i) ioRows[i].reset(iOrder[i]);
}

void TResultTable::Sort() {
  const std::vector<TRow*> order = OrderOf(FRows);
  const auto isSame = [](const TRow* iA, const auto& iB) { return iA == iB.get(); };
  if (std::equal(order.begin(), order.end(), FRows.begin(), isSame)) return;
  const TChanging change(*this, {TResultTableChange::TKind::rcSort});
  Reorder(FRows, order);
  Renumber(0);
}

void TResultTable::SetSort(int iColumn, bool iDescending) {
  if (iColumn != -1) (void)Columns(iColumn);
  if (iColumn == FSortColumn && iDescending == FSortDescending) return;
  FSortColumn = iColumn;
  FSortDescending = iDescending;
  Sort();
  Changed();
}

TResultCell TResultTable::Cell(int iRow, int iColumn) const {
  const TRow& row = RowAt(iRow);
  const TResultColumn& column = Columns(iColumn);
  TResultCell cell;
  if (column.Content) {
    Guarded(u"TResultTable.Cell", [&] { cell = column.Content->GetCell(row.Result); });
  }
  return cell;
}

void TResultTable::PaintCell(int iRow, int iColumn, ICanvas& ioCanvas, const TRect& iRect) const {
  const TRow& row = RowAt(iRow);
  const TResultColumn& column = Columns(iColumn);
  if (!column.Additional) return;
  Guarded(u"TResultTable.PaintCell", [&] {
    column.Additional->GetCellPainter().Paint(
        MakeIntf<TResultCellPaintInfo>(row.Result, ioCanvas, iRect));
  });
}

bool TResultTable::Selected(int iRow) const { return RowAt(iRow).Selected; }

const std::vector<int>& TResultTable::SelectedRows() const {
  if (FSelectedRowsValid) return FSelectedRows;
  FSelectedRows.clear();
  for (const auto& row : FRows) {
    if (row->Selected) FSelectedRows.push_back(row->Place);
  }
  FSelectedRowsValid = true;
  return FSelectedRows;
}

int TResultTable::FocusedRow() const { return FFocused != nullptr ? FFocused->Place : -1; }

bool TResultTable::SetSelectedRows(std::vector<int> iRows) {
  std::sort(iRows.begin(), iRows.end());
  iRows.erase(std::unique(iRows.begin(), iRows.end()), iRows.end());
  if (iRows == SelectedRows()) return false;
  for (const int row : FSelectedRows) RowAt(row).Selected = false;
  for (const int row : iRows) RowAt(row).Selected = true;
  FSelectedCount = static_cast<int>(iRows.size());
  FSelectedRows = std::move(iRows);
  FSelectionChanged = true;
  return true;
}

void TResultTable::SetFocus(TRow* iRow) {
  FSelectionChanged |= FFocused != iRow;
  FFocused = iRow;
}

void TResultTable::GoTo(int iRow) {
  SetSelectedRows({iRow});
  SetFocus(&RowAt(iRow));
}

bool TResultTable::TellSelection() {
  if (!std::exchange(FSelectionChanged, false)) return false;
  Changed();
  if (FOnSelectionChanged) FOnSelectionChanged(this);
  return true;
}

void TResultTable::SelectResults(const TIntf<IInterfaceList>& iResults) {
  std::vector<int> rows;
  ForEachResult(iResults, [&](const auto& iResult) {
    if (const TRow* row = FindRow(iResult->GetId())) rows.push_back(row->Place);
  });
  TRow* focused = rows.empty() ? nullptr : &RowAt(rows.front());
  SetSelectedRows(std::move(rows));
  SetFocus(focused);
  if (focused != nullptr && FTableObserver != nullptr) {
    FTableObserver->ScrollIntoView(focused->Place);
  }
  TellSelection();
}

bool TResultTable::IsShown(int iColumn) const {
  return iColumn >= 0 && iColumn < ColumnCount() && Columns(iColumn).Visible;
}

bool TResultTable::SelectRows(const std::vector<int>& iRows, int iFocusedRow) {
  return AsUser([&] {
    const auto isRow = [this](int iRow) { return IsRow(iRow); };
    if (!std::all_of(iRows.begin(), iRows.end(), isRow)) return false;
    if (iFocusedRow != -1 && !IsRow(iFocusedRow)) return false;
    SetSelectedRows(iRows);
    if (iFocusedRow != -1) SetFocus(&RowAt(iFocusedRow));
    return TellSelection();
  });
}

bool TResultTable::FocusRow(int iRow) {
  return AsUser([&] {
    if (!IsRow(iRow)) return false;
    SetFocus(&RowAt(iRow));
    return TellSelection();
  });
}

bool TResultTable::LayoutChanged(bool iChanged) {
  if (!iChanged) return false;
  Changed();
  if (FOnLayoutChanged) FOnLayoutChanged(this);
  return true;
}

bool TResultTable::ClickHeader(int iColumn) {
  return AsUser([&] {
    if (!IsShown(iColumn)) return false;
    SetSort(iColumn, iColumn == FSortColumn && !FSortDescending);
    return LayoutChanged(true);
  });
}

bool TResultTable::DragColumnWidth(int iColumn, int iWidth) {
  return AsUser(
      [&] { return IsShown(iColumn) && LayoutChanged(FColumns.SetWidth(iColumn, iWidth)); });
}

bool TResultTable::DragColumn(int iColumn, int iPlace) {
  return AsUser([&] {
    if (!IsShown(iColumn) || iPlace < 0 || iPlace >= ColumnCount()) return false;
    return LayoutChanged(FColumns.Move(iColumn, iPlace));
  });
}

bool TResultTable::ShowColumn(int iColumn, bool iVisible) {
  return AsUser([&] {
    if (iColumn < 0 || iColumn >= ColumnCount()) return false;
    if (!iVisible && IsShown(iColumn) && FColumns.VisibleCount() == 1) return false;
    return LayoutChanged(FColumns.SetVisible(iColumn, iVisible));
  });
}

bool TResultTable::ClickCell(int iRow, int iColumn, const TPoint& iMousePos) {
  return AsUser([&] {
    if (!IsRow(iRow) || !IsShown(iColumn)) return false;
    // What hears of the focus may change rows and columns.
    const TIntf<ISearchResult> result = Results(iRow);
    const TIntf<IAdditionalColumn> additional = Columns(iColumn).Additional;
    if (FocusedRow() != iRow) GoTo(iRow);
    const bool moved = TellSelection();
    if (!additional) return moved;
    additional->Click(MakeIntf<TResultCellMouseInfo>(result, iMousePos));
    Changed();  // what was clicked may look otherwise now
    return true;
  });
}

bool TResultTable::HoverCell(int iRow, int iColumn, const TPoint& iMousePos) {
  FCursor = cCursorDefault;
  FHint.clear();
  return AsUser([&] {
    if (!IsRow(iRow) || !IsShown(iColumn)) return false;
    if (const TIntf<IAdditionalColumn> additional = Columns(iColumn).Additional) {
      const auto info = MakeIntf<TResultCellMouseInfo>(Results(iRow), iMousePos);
      Guarded(u"TResultTable.HoverCell", [&] { additional->MouseMove(info); });
      FCursor = info->Cursor();
    } else {
      FHint = Cell(iRow, iColumn).Hint;
    }
    return true;
  });
}

bool TResultTable::DoubleClick(int iRow) {
  return AsUser([&] {
    if (!IsRow(iRow)) return false;
    GoTo(iRow);
    TellSelection();
    if (FOnOpen && FFocused != nullptr) FOnOpen(this);
    return true;
  });
}

bool TResultTable::UseKey(char16_t iKey) {
  if (iKey != cKeyReturn || FFocused == nullptr || !FOnOpen) return false;
  FOnOpen(this);
  return true;
}

std::vector<TMenuItem*> TResultTable::PopupEntries() const {
  return FMenu != nullptr ? FMenu->GetEntries() : std::vector<TMenuItem*>();
}

bool TResultTable::OpenPopupMenu(int iRow, int iColumn) {
  return AsUser([&] {
    if (iRow != -1 && !IsRow(iRow)) return false;
    if (iColumn != -1 && !IsShown(iColumn)) return false;
    if (iRow != -1 && !Selected(iRow)) GoTo(iRow);
    if (iRow != -1) SetFocus(&RowAt(iRow));
    TellSelection();
    if (FMenu == nullptr || (iRow != -1 && !IsRow(iRow))) return false;
    FMenu->BeforePopup(iRow, iColumn);
    return !FMenu->GetEntries().empty();
  });
}

bool TResultTable::PressShortCut(TStringView iShortCut) {
  return AsUser([&] {
    // To prepare a menu costs more than a look at it.
    if (FMenu == nullptr || !HasShortCut(FMenu->GetEntries(), iShortCut)) return false;
    FMenu->BeforePopup(FocusedRow(), -1);
    TMenuItem* entry = FindByShortCut(FMenu->GetEntries(), iShortCut);
    return entry != nullptr && entry->Click();
  });
}

}  // namespace kk
