#pragma once

#include <QEvent>
#include <QWidget>

namespace kk {

/// The wheel over a field without the focus changes nothing in it: it is left to what stands around
/// the field. Answers whether the event was that.
inline bool PassWheelOn(const QWidget& iField, QEvent& ioEvent) {
  if (ioEvent.type() != QEvent::Wheel || iField.hasFocus()) return false;
  ioEvent.ignore();
  return true;
}

}  // namespace kk
