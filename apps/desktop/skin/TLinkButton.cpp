#include "apps/desktop/skin/TLinkButton.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

namespace kk {

TLinkButton::TLinkButton(QWidget* iParent) : QAbstractButton(iParent) {
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::StrongFocus);
  // Not fixed: a wrapped one needs more lines than its hint, which is for one.
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
  const int icon = fontMetrics().height();
  setIconSize({icon, icon});
}

void TLinkButton::SetWordWrap(bool iWordWrap) {
  if (FWordWrap == iWordWrap) return;
  FWordWrap = iWordWrap;
  updateGeometry();
  update();
}

int TLinkButton::TextFlags() const {
  const int lines = FWordWrap ? Qt::TextWordWrap : Qt::TextSingleLine;
  return Qt::AlignLeft | Qt::AlignVCenter | lines;
}

QRect TLinkButton::TextRect(int iWidth) const {
  const int left = icon().isNull() ? cMargin : iconSize().width() + 3 * cMargin;
  return {left, cMargin, std::max(1, iWidth - left - cMargin), 0};
}

int TLinkButton::heightForWidth(int iWidth) const {
  QRect rect = TextRect(iWidth);
  rect.setHeight(QWIDGETSIZE_MAX);
  const int text = fontMetrics().boundingRect(rect, TextFlags(), this->text()).height();
  return std::max(text, icon().isNull() ? 0 : iconSize().height()) + 2 * cMargin;
}

QSize TLinkButton::sizeHint() const {
  const int width = TextRect(0).left() + fontMetrics().horizontalAdvance(text()) + cMargin;
  return {width, heightForWidth(width + 1)};
}

QSize TLinkButton::minimumSizeHint() const {
  return {iconSize().width() * 2, fontMetrics().height() + 2 * cMargin};
}

void TLinkButton::paintEvent(QPaintEvent* /*iEvent*/) {
  QPainter painter(this);
  QRect rect = TextRect(width());
  rect.setHeight(height() - 2 * cMargin);
  if (!icon().isNull()) {
    const QRect place(QPoint(cMargin, cMargin), iconSize());
    icon().paint(&painter, place, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
  }
  const auto group = isEnabled() ? QPalette::Normal : QPalette::Disabled;
  painter.setPen(palette().color(group, isEnabled() ? QPalette::Link : QPalette::WindowText));
  QFont font = this->font();
  font.setUnderline(underMouse() && isEnabled());
  painter.setFont(font);
  const QString words =
      FWordWrap ? text() : fontMetrics().elidedText(text(), Qt::ElideRight, rect.width());
  painter.drawText(rect, TextFlags(), words);
  if (!hasFocus()) return;
  QStyleOptionFocusRect option;
  option.initFrom(this);
  option.backgroundColor = palette().color(QPalette::Window);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

void TLinkButton::keyPressEvent(QKeyEvent* iEvent) {
  if (iEvent->key() == Qt::Key_Return || iEvent->key() == Qt::Key_Enter) return click();
  QAbstractButton::keyPressEvent(iEvent);
}

void TLinkButton::resizeEvent(QResizeEvent* iEvent) {
  if (FWordWrap) updateGeometry();
  QAbstractButton::resizeEvent(iEvent);
}

void TLinkButton::enterEvent(QEnterEvent* iEvent) {
  update();
  QAbstractButton::enterEvent(iEvent);
}

void TLinkButton::leaveEvent(QEvent* iEvent) {
  update();
  QAbstractButton::leaveEvent(iEvent);
}

}  // namespace kk
