#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "host/base/IInterfaceList.h"
#include "host/contract/ICanvas.h"
#include "host/controls/TMenuItem.h"
#include "host/results/IResultTableObserver.h"
#include "host/results/TResultColumns.h"

namespace kk {

class TPanel;

/// Who fills the popup menu of a table. Main thread.
class IResultTableMenu {
 public:
  /// The entries in their order, separators included; borrowed until the next call of either.
  virtual std::vector<TMenuItem*> GetEntries() = 0;
  /// The menu is about to be shown for a row and a column; -1 for beside them.
  virtual void BeforePopup(int iRow, int iColumn) = 0;

 protected:
  ~IResultTableMenu() = default;
};

/// A table of search results. Rows and columns are addressed by index: a row by its place on the
/// screen, from 0; a column by the order in which it was added, whatever its place on the screen
/// (ColumnOrder). An index out of range raises EListError at the program's door and is answered
/// with false at the user's.
///
/// Of its rows any number is selected and at most one has the focus. It sorts by itself when the
/// user clicks a header, in the order of the rows' coming until then. What a foreign column raises
/// while it paints, compares or hears of the mouse concerns one cell alone. A row is found by the
/// id of its result in constant time; everything that is done to many rows at once is linear, but
/// for sorting. Main thread.
class TResultTable : public TControl {
 public:
  explicit TResultTable(TControl* iParent, TStringView iName = {});
  ~TResultTable() override;

  /// The panel that it stands in, borrowed; null takes it out.
  void SetContainer(TPanel* iPanel);

  // Columns.
  int ColumnCount() const { return FColumns.GetCount(); }
  const TResultColumn& Columns(int iColumn) const { return FColumns.GetItems(iColumn); }
  /// The columns in the order of their places, from the left, invisible ones included.
  const std::vector<int>& ColumnOrder() const { return FColumns.Order(); }
  /// At the place given, 0 to ColumnCount; answers its index.
  int AddColumn(TResultColumn iColumn, int iPlace);
  /// The columns behind it move up by one index. A table that was sorted by it keeps its order.
  void DeleteColumn(int iColumn);
  /// -1 if there is none.
  int IndexOfColumn(const TGuid& iId) const { return FColumns.IndexOf(iId); }
  void SetColumnVisible(int iColumn, bool iVisible);
  /// Bounded by TResultColumn's.
  void SetColumnWidth(int iColumn, int iWidth);
  /// To another place, 0 to ColumnCount - 1.
  void MoveColumn(int iColumn, int iPlace);

  // Rows. Entries of lists that are no results are passed over.
  int GetCount() const { return static_cast<int>(FRows.size()); }
  const TIntf<ISearchResult>& Results(int iRow) const;
  /// The first that came with this id; -1 if there is none. Constant time.
  int IndexOfId(const TGuid& iId) const;
  /// Other rows; those that have the id of one before keep selection and focus. Where the rows are
  /// the same in the same order, only those with another result are told.
  void SetResults(const TIntf<IInterfaceList>& iResults);
  /// One more row, at its place if the table is sorted, else at the end.
  void AddResult(const TIntf<ISearchResult>& iResult);
  /// All rows with the ids of these go. A focus that goes with them goes on to the next row that
  /// stays, else to the last; none of them gets selected by that.
  void RemoveResults(const TIntf<IInterfaceList>& iResults);
  /// The row shows this result from now on; it keeps its place. No effect for an id without a row.
  void RefreshResult(const TIntf<ISearchResult>& iResult);
  /// All rows are to be painted anew.
  void Invalidate() { Changed(); }

  /// Text, image and hint of a cell, asked anew on each call; empty for a painted column.
  TResultCell Cell(int iRow, int iColumn) const;
  /// Draws the cell of a painted column; the rectangle begins at 0, 0. Nothing for other columns.
  void PaintCell(int iRow, int iColumn, ICanvas& ioCanvas, const TRect& iRect) const;

  /// -1 for none: the rows stand in the order in which they came.
  int SortColumn() const { return FSortColumn; }
  bool SortDescending() const { return FSortDescending; }
  void SetSort(int iColumn, bool iDescending);

  // Selection and focus.
  bool Selected(int iRow) const;
  int SelectedCount() const { return FSelectedCount; }
  /// Ascending; counted once after each change.
  const std::vector<int>& SelectedRows() const;
  /// -1 for none.
  int FocusedRow() const;
  /// Exactly these are selected from now on, and the first of them that is in the table has the
  /// focus and gets into view. Without any there is no focus either.
  void SelectResults(const TIntf<IInterfaceList>& iResults);

  /// What is told in place of rows while there are none.
  const TString& EmptyText() const { return FEmptyText; }
  void SetEmptyText(TStringView iText) { SetValue(FEmptyText, iText); }
  /// Entries of the popup menu, separators included, as OpenPopupMenu has prepared them; borrowed
  /// until the table is touched again.
  std::vector<TMenuItem*> PopupEntries() const;
  /// Borrowed; null for no menu.
  void SetMenu(IResultTableMenu* iMenu) { FMenu = iMenu; }

  // The user's door. Each answers whether it did anything.
  /// Exactly these rows are selected from now on, and the focus stands on iFocusedRow (-1: where it
  /// stood).
  bool SelectRows(const std::vector<int>& iRows, int iFocusedRow);
  /// The focus alone goes to the row.
  bool FocusRow(int iRow);
  /// Sorts by the column, the other way round if it is sorted by it already.
  bool ClickHeader(int iColumn);
  bool DragColumnWidth(int iColumn, int iWidth);
  bool DragColumn(int iColumn, int iPlace);
  /// Show or hide a column; the last one that shows stays.
  bool ShowColumn(int iColumn, bool iVisible);
  /// A click with the main button; iMousePos counts from the upper left corner of the cell. A row
  /// without the focus gets it, and is selected alone; then a painted column hears of the click.
  bool ClickCell(int iRow, int iColumn, const TPoint& iMousePos);
  /// The mouse is over a cell, or over none of them (-1, -1). Then Cursor and Hint tell what it
  /// shows.
  bool HoverCell(int iRow, int iColumn, const TPoint& iMousePos);
  /// A double click on a row, which also Return on the focused one is: raises OnOpen.
  bool DoubleClick(int iRow);
  /// The menu is asked for on a cell, or beside all rows (-1, -1), or by the keyboard (FocusedRow
  /// and -1). The row gets the focus, and is selected alone if it wasn't selected; then the menu is
  /// prepared and can be shown. False if there are no entries.
  bool OpenPopupMenu(int iRow, int iColumn);
  /// Keys as TMenuItem::ShortCut writes them. Prepares the menu for the focused row and clicks the
  /// entry that has them; false if there is none, and for one that can't be clicked now.
  bool PressShortCut(TStringView iShortCut);

  TCursor Cursor() const { return FCursor; }
  const TString& Hint() const { return FHint; }

  /// Selection or focus are others, whoever changed them; once for each change.
  void SetOnSelectionChanged(TNotifyEvent iEvent) { FOnSelectionChanged = iEvent; }
  /// FocusedRow is to be opened.
  void SetOnOpen(TNotifyEvent iEvent) { FOnOpen = iEvent; }
  /// The user has changed sort, order, width or visibility of columns.
  void SetOnLayoutChanged(TNotifyEvent iEvent) { FOnLayoutChanged = iEvent; }

  /// Borrowed, and taken back with null before it dies.
  void SetTableObserver(IResultTableObserver* iObserver) { FTableObserver = iObserver; }

  bool AcceptsFocus() const override { return true; }

 protected:
  /// Return opens the focused row.
  bool UseKey(char16_t iKey) override;

 private:
  class TChanging;
  struct TRow {
    TIntf<ISearchResult> Result;
    TGuid Id;
    int64_t Arrival = 0;
    int Place = 0;
    bool Selected = false;
    bool Goes = false;
  };
  using TRows = std::vector<std::unique_ptr<TRow>>;

  bool IsRow(int iRow) const { return iRow >= 0 && iRow < GetCount(); }
  bool IsShown(int iColumn) const;
  TRow& RowAt(int iRow) const;
  TRow* FindRow(const TGuid& iId) const;
  /// A row that no list holds yet; null for no result.
  std::unique_ptr<TRow> NewRow(const TIntf<ISearchResult>& iResult);
  /// What they are is known by their flag.
  void RemoveGoingRows(int iCount);
  void MoveFocusAway();
  /// True if they have the ids of the table's rows in their order, which show their results then.
  bool TakeSameRows(const TRows& iRows);
  void ShowResult(TRow& ioRow, const TIntf<ISearchResult>& iResult);
  void Renumber(size_t iFrom);
  /// The rows in the order in which they have to stand.
  std::vector<TRow*> OrderOf(const TRows& iRows) const;
  static void Reorder(TRows& ioRows, const std::vector<TRow*>& iOrder);
  void Sort();
  bool SetSelectedRows(std::vector<int> iRows);
  void SetFocus(TRow* iRow);
  /// The row gets the focus and is the only one selected.
  void GoTo(int iRow);
  /// Tells of what has changed since the last call, if anything has.
  bool TellSelection();
  bool LayoutChanged(bool iChanged);

  TResultColumns FColumns;
  TRows FRows;
  std::unordered_map<TGuid, TRow*> FRowById;
  int64_t FNextArrival = 0;
  int FSortColumn = -1;
  bool FSortDescending = false;
  int FSelectedCount = 0;
  mutable std::vector<int> FSelectedRows;
  mutable bool FSelectedRowsValid = true;
  bool FSelectionChanged = false;
  TRow* FFocused = nullptr;
  TString FEmptyText;
  IResultTableMenu* FMenu = nullptr;
  TCursor FCursor = cCursorDefault;
  TString FHint;
  TNotifyEvent FOnSelectionChanged;
  TNotifyEvent FOnOpen;
  TNotifyEvent FOnLayoutChanged;
  IResultTableObserver* FTableObserver = nullptr;
};

}  // namespace kk
