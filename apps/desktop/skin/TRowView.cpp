#include "apps/desktop/skin/TRowView.h"

#include <algorithm>

#include "apps/desktop/skin/TRowDelegate.h"

namespace kk {

namespace {

constexpr int cRowsThatCount = 200;

}  // namespace

TRowView::TRowView() {
  setUniformRowHeights(true);
  setEditTriggers(NoEditTriggers);
  setExpandsOnDoubleClick(false);
}

void TRowView::WidenUpTo(int iWidth) {
  FWidest = iWidth;
  updateGeometry();
}

QSize TRowView::sizeHint() const {
  const QSize hint = QTreeView::sizeHint();
  return FWidest == 0 ? hint : hint.expandedTo({std::min(WidthOfRows(), FWidest), 0});
}

int TRowView::WidthOfRows() const {
  const auto* const delegate = dynamic_cast<const TRowDelegate*>(itemDelegate());
  if (delegate == nullptr || model() == nullptr) return 0;
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  int width = 0;
  QModelIndex index = model()->index(0, 0);
  for (int row = 0; index.isValid() && row < cRowsThatCount; ++row, index = indexBelow(index)) {
    int depth = rootIsDecorated() ? 1 : 0;
    for (QModelIndex above = index.parent(); above.isValid(); above = above.parent()) ++depth;
    width = std::max(width, depth * indentation() + delegate->RowWidth(option, index));
  }
  return width + 2 * frameWidth() + style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
}

void TRowView::focusInEvent(QFocusEvent* iEvent) {
  if (currentIndex().isValid()) return QTreeView::focusInEvent(iEvent);
  QAbstractScrollArea::focusInEvent(iEvent);
  viewport()->update();
}

}  // namespace kk
