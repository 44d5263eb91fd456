#include "apps/desktop/skin/TRowView.h"

namespace kk {

TRowView::TRowView() {
  setUniformRowHeights(true);
  setEditTriggers(NoEditTriggers);
  setExpandsOnDoubleClick(false);
}

void TRowView::focusInEvent(QFocusEvent* iEvent) {
  if (currentIndex().isValid()) return QTreeView::focusInEvent(iEvent);
  QAbstractScrollArea::focusInEvent(iEvent);
  viewport()->update();
}

}  // namespace kk
