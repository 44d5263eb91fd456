#pragma once

#include <QWheelEvent>

#include "host/controls/IMouseWheel.h"

namespace kk {

class TSkin;

/// One turn of the wheel over what a skin shows, as the form sees it on its way to the control
/// under the pointer. Main thread.
class TWheelTurn : public IMouseWheel {
 public:
  /// Both are borrowed. The turn begins at the root of the skin.
  TWheelTurn(TSkin& iSkin, const QWheelEvent& iEvent) : FSkin(iSkin), FEvent(iEvent) {}

  TControl* ControlAtPointer(TControl& ioContainer) override;
  int Perform(TControl& ioTarget) override;
  /// Nothing: what the target did not take has been offered to all that it stands in.
  void PerformDefault() override {}

  bool IsTaken() const { return FIsTaken; }

 private:
  /// Null for a control that is not on the screen.
  QWidget* WidgetAtPointer(const TControl& iControl) const;

  TSkin& FSkin;
  const QWheelEvent& FEvent;
  bool FIsTaken = false;
};

}  // namespace kk
