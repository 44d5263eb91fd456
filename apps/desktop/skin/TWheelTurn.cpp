#include "apps/desktop/skin/TWheelTurn.h"

#include <QCoreApplication>

#include "apps/desktop/skin/TBinder.h"
#include "apps/desktop/skin/TSkin.h"

namespace kk {

QWidget* TWheelTurn::WidgetAtPointer(const TControl& iControl) const {
  const TBinder* const binder = FSkin.FindBinder(iControl);
  QWidget* const widget = binder != nullptr ? binder->BoundWidget() : nullptr;
  if (widget == nullptr || !widget->isVisible()) return nullptr;
  const QPoint at = widget->mapFromGlobal(FEvent.globalPosition().toPoint());
  return widget->rect().contains(at) ? widget : nullptr;
}

TControl* TWheelTurn::ControlAtPointer(TControl& ioContainer) {
  for (TControl* child : ioContainer.Children()) {
    if (child->Enabled() && WidgetAtPointer(*child) != nullptr) return child;
  }
  return nullptr;
}

int TWheelTurn::Perform(TControl& ioTarget) {
  QWidget* widget = WidgetAtPointer(ioTarget);
  if (widget == nullptr) return 0;
  // A list's rows, for example, are a widget of their own.
  const QPoint at = widget->mapFromGlobal(FEvent.globalPosition().toPoint());
  if (QWidget* const inner = widget->childAt(at)) widget = inner;
  QWheelEvent turn(widget->mapFromGlobal(FEvent.globalPosition()), FEvent.globalPosition(),
                   FEvent.pixelDelta(), FEvent.angleDelta(), FEvent.buttons(), FEvent.modifiers(),
                   FEvent.phase(), FEvent.inverted(), FEvent.source(), FEvent.pointingDevice());
  turn.setTimestamp(FEvent.timestamp());
  // Who is disabled leaves it as it came, which is accepted.
  const bool isHeard = QCoreApplication::sendEvent(widget, &turn);
  FIsTaken = isHeard && turn.isAccepted();
  return FIsTaken ? 1 : 0;
}

}  // namespace kk
