#include "apps/desktop/skin/TResultCellDelegate.h"

#include "apps/desktop/skin/QtText.h"
#include "apps/desktop/skin/TCellCanvas.h"
#include "apps/desktop/skin/TDrawings.h"
#include "apps/desktop/skin/TResultItemModel.h"
#include "host/base/Guard.h"

namespace kk {

TResultCellDelegate::TResultCellDelegate(QObject* iParent, const TResultTable& iTable,
                                         const TResultItemModel& iItems)
    : TRowDelegate(iParent), FTable(iTable), FItems(iItems) {}

bool TResultCellDelegate::IsCutOff(const QStyleOptionViewItem& iOption, const TResultCell& iCell,
                                   int iWidth) const {
  const int margins = 2 * TCellCanvas::TextMargin(iOption);
  const int image = iCell.Image.IsEmpty() ? 0 : iOption.decorationSize.width() + margins;
  return iOption.fontMetrics.horizontalAdvance(ToQt(iCell.Text)) + margins + image > iWidth;
}

// One question to the table for all that the cell shows.
void TResultCellDelegate::initStyleOption(QStyleOptionViewItem* iOption,
                                          const QModelIndex& iIndex) const {
  iOption->index = iIndex;
  const TResultColumn& column = FTable.Columns(iIndex.column());
  if (column.IsPainted()) return;
  const TResultCell cell = FItems.CellAt(iIndex);
  iOption->text = ToQt(cell.Text).replace(u'\n', u' ');
  iOption->features |= QStyleOptionViewItem::HasDisplay;
  iOption->displayAlignment = ToQtAlignment(column.Alignment);
  if (cell.Image.IsEmpty()) return;
  iOption->icon = TDrawings::Icon(cell.Image);
  if (!iOption->icon.isNull()) iOption->features |= QStyleOptionViewItem::HasDecoration;
}

void TResultCellDelegate::paint(QPainter* iPainter, const QStyleOptionViewItem& iOption,
                                const QModelIndex& iIndex) const {
  if (!FItems.checkIndex(iIndex, QAbstractItemModel::CheckIndexOption::IndexIsValid)) return;
  TRowDelegate::paint(iPainter, iOption, iIndex);
  if (!FTable.Columns(iIndex.column()).IsPainted()) return;
  const QRect& cell = iOption.rect;
  iPainter->save();
  iPainter->setClipRect(cell, Qt::IntersectClip);
  iPainter->translate(cell.topLeft());
  Guarded(u"TResultCellDelegate", [&] {
    TCellCanvas canvas(*iPainter, iOption);
    FTable.PaintCell(iIndex.row(), iIndex.column(), canvas, {0, 0, cell.width(), cell.height()});
  });
  iPainter->restore();
}

}  // namespace kk
