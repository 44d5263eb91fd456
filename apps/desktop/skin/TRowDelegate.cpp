#include "apps/desktop/skin/TRowDelegate.h"

namespace kk {

int TRowDelegate::RowHeight(const QFontMetrics& iFont) {
  return iFont.height() + iFont.height() / 2;
}

QSize TRowDelegate::sizeHint(const QStyleOptionViewItem& iOption,
                             const QModelIndex& /*iIndex*/) const {
  const int height = RowHeight(iOption.fontMetrics);
  return {height, height};
}

}  // namespace kk
