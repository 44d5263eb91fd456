#include "bench/desktop/TPaintCounter.h"

#include <QPaintEvent>
#include <algorithm>

namespace kk {

TPaintCounter::TPaintCounter(QTreeView& ioView) : FView(ioView) {
  FView.viewport()->installEventFilter(this);
}

bool TPaintCounter::eventFilter(QObject* /*iObject*/, QEvent* iEvent) {
  if (iEvent->type() != QEvent::Paint) return false;
  ++FPaints;
  int rows = 0;
  for (const QRect& rect : static_cast<QPaintEvent*>(iEvent)->region()) {
    QModelIndex index = FView.indexAt({1, rect.top()});
    for (; index.isValid() && FView.visualRect(index).top() <= rect.bottom(); ++rows) {
      index = FView.indexBelow(index);
    }
  }
  FRows += rows;
  FMostRows = std::max(FMostRows, rows);
  return false;
}

}  // namespace kk
