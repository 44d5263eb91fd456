#pragma once

#include "apps/desktop/skin/TRowDelegate.h"
#include "host/results/TResultTable.h"

namespace kk {

class TResultItemModel;

/// Paints the cells of a result table: the view's own from what the table tells of them, those of
/// foreign columns by their painters on a TCellCanvas. Both ask when they paint.
class TResultCellDelegate final : public TRowDelegate {
 public:
  /// Table and model are borrowed, and may die first if nothing is painted any more.
  TResultCellDelegate(QObject* iParent, const TResultTable& iTable, const TResultItemModel& iItems);

  /// Whether the text of the cell is cut off in a cell of this width.
  bool IsCutOff(const QStyleOptionViewItem& iOption, const TResultCell& iCell, int iWidth) const;

  void paint(QPainter* iPainter, const QStyleOptionViewItem& iOption,
             const QModelIndex& iIndex) const override;

 protected:
  void initStyleOption(QStyleOptionViewItem* iOption, const QModelIndex& iIndex) const override;

 private:
  const TResultTable& FTable;
  const TResultItemModel& FItems;
};

}  // namespace kk
