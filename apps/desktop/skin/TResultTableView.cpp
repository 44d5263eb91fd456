#include "apps/desktop/skin/TResultTableView.h"

#include <QHeaderView>
#include <QPainter>

#include "apps/desktop/skin/TRowDelegate.h"
#include "host/results/TResultColumn.h"

namespace kk {

TResultTableView::TResultTableView() {
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setAllColumnsShowFocus(true);
  setAlternatingRowColors(true);
  setSelectionMode(ExtendedSelection);
  setSelectionBehavior(SelectRows);
  setHorizontalScrollMode(ScrollPerPixel);
  setMouseTracking(true);
  viewport()->setMouseTracking(true);
  QHeaderView& columns = *header();
  columns.setStretchLastSection(false);
  columns.setFirstSectionMovable(true);
  columns.setSectionsMovable(true);
  columns.setSectionsClickable(true);
  columns.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  columns.setMinimumSectionSize(TResultColumn::cMinWidth);
  columns.setContextMenuPolicy(Qt::CustomContextMenu);
}

void TResultTableView::SetEmptyText(const QString& iText) {
  if (FEmptyText == iText) return;
  FEmptyText = iText;
  viewport()->update();
}

void TResultTableView::SelectionMoved() {
  FHasMoved = true;
  if (FEvents == 0) EndEvent();
}

bool TResultTableView::event(QEvent* iEvent) {
  ++FEvents;
  const bool result = TRowView::event(iEvent);
  --FEvents;
  EndEvent();
  return result;
}

bool TResultTableView::viewportEvent(QEvent* iEvent) {
  ++FEvents;
  const bool result = TRowView::viewportEvent(iEvent);
  --FEvents;
  EndEvent();
  return result;
}

void TResultTableView::EndEvent() {
  if (FEvents > 0 || !std::exchange(FHasMoved, false)) return;
  if (FOnSelectionMoved) FOnSelectionMoved();
}

void TResultTableView::paintEvent(QPaintEvent* iEvent) {
  TRowView::paintEvent(iEvent);
  if (FEmptyText.isEmpty() || model() == nullptr || model()->rowCount() > 0) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  const int margin = TRowDelegate::RowHeight(fontMetrics());
  painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                   Qt::AlignCenter | Qt::TextWordWrap, FEmptyText);
}

}  // namespace kk
