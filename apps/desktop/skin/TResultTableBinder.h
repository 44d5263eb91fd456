#pragma once

#include "apps/desktop/skin/TBinder.h"
#include "apps/desktop/skin/TResultCellDelegate.h"
#include "apps/desktop/skin/TResultItemModel.h"
#include "apps/desktop/skin/TResultTableView.h"

class QContextMenuEvent;
class QHelpEvent;
class QMouseEvent;

namespace kk {

/// A table of results. Columns are as wide as the table says, and nothing is measured over all
/// rows: a table of 100,000 shows as fast as one of ten.
class TResultTableBinder final : public TBinderOf<TResultTable, TResultTableView> {
 public:
  TResultTableBinder(TSkin& ioSkin, TResultTable& ioTable);
  ~TResultTableBinder() override;

  bool eventFilter(QObject* iObject, QEvent* iEvent) override;

 protected:
  void Render() override;

 private:
  /// A cell and the place of the mouse in it; an invalid index beside all of them.
  struct TCellPlace {
    QModelIndex Index;
    TPoint Pos;

    int Row() const { return Index.row(); }
    int Column() const { return Index.column(); }
  };

  void ConnectHeader();
  void RenderColumns();
  void RenderSelection();
  /// Device-independent pixels of the screen for those of the table, and back.
  int ToScreen(int iWidth) const;
  int FromScreen(int iWidth) const;

  void SelectionMoved();
  std::vector<int> SelectedRowsOfView() const;
  TCellPlace PlaceAt(const QPoint& iPos) const;
  bool ViewportEvent(QEvent& iEvent);
  void Hover(const TCellPlace& iPlace);
  void Click(const TCellPlace& iPlace);
  void ShowHint(const QHelpEvent& iEvent);
  /// Empty for a text that is seen in full.
  TString CutOffText(const QModelIndex& iIndex) const;
  void OpenMenu(const QContextMenuEvent& iEvent);
  void OpenColumnMenu(const QPoint& iPos);
  bool PressShortCut(const QKeyEvent& iEvent);

  /// The view's, which may be in the middle of an event when the binder dies.
  TResultItemModel& FItems;
  TResultCellDelegate* FDelegate;  // the view's
  QPersistentModelIndex FPressed;
};

}  // namespace kk
