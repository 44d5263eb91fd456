#include "apps/desktop/skin/TSplitterBar.h"

#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <algorithm>

#include "apps/desktop/skin/AsUser.h"

namespace kk {

namespace {

// What the rest of the row keeps, however far the bar is drawn, in device-independent pixels.
constexpr int cRoomForRest = 120;

}  // namespace

TSplitterBar::TSplitterBar(TPanel& ioPanel, QWidget& ioPanelWidget, bool iLeft)
    : FPanel(ioPanel), FPanelWidget(&ioPanelWidget), FLeft(iLeft) {
  setCursor(Qt::SplitHCursor);
  setFixedWidth(std::max(style()->pixelMetric(QStyle::PM_SplitterWidth), 5));
}

void TSplitterBar::mousePressEvent(QMouseEvent* iEvent) {
  if (!FPanelWidget) return;
  const int x = iEvent->globalPosition().toPoint().x();
  FGrip = FLeft ? FPanelWidget->width() - x : FPanelWidget->width() + x;
}

void TSplitterBar::mouseMoveEvent(QMouseEvent* iEvent) {
  // A panel that has died has hidden its widget, which lives on for the rest of this turn.
  if (!(iEvent->buttons() & Qt::LeftButton) || !FPanelWidget || FPanelWidget->isHidden()) return;
  const int x = iEvent->globalPosition().toPoint().x();
  const int most = std::max(parentWidget()->width() - cRoomForRest, FPanel.MinWidth());
  const int width = std::clamp(FLeft ? FGrip + x : FGrip - x, 1, most);
  AsUser([&] { FPanel.DragWidth(width); });
}

void TSplitterBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QStyleOption option;
  option.initFrom(this);
  option.state |= QStyle::State_Horizontal;
  style()->drawControl(QStyle::CE_Splitter, &option, &painter, this);
}

}  // namespace kk
