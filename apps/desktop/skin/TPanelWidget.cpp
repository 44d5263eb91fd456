#include "apps/desktop/skin/TPanelWidget.h"

namespace kk {

void TPanelWidget::SetWantedWidth(int iWidth) {
  if (FWantedWidth == iWidth) return;
  FWantedWidth = iWidth;
  updateGeometry();
}

QSize TPanelWidget::sizeHint() const {
  QSize hint = QWidget::sizeHint();
  if (FWantedWidth > 0) hint.setWidth(FWantedWidth);
  return hint;
}

}  // namespace kk
