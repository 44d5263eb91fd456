#pragma once

namespace kk {

class TControl;

/// One turn of the mouse's wheel on its way through a window; the skin knows where the pointer is.
/// Main thread.
class IMouseWheel {
 public:
  virtual ~IMouseWheel() = default;

  /// The control that stands right in this one, below the pointer; enabled ones count only, and
  /// null is none.
  virtual TControl* ControlAtPointer(TControl& ioContainer) = 0;
  /// Gives the turn to the control and keeps its answer as the turn's result; 0 if the control did
  /// not take it.
  virtual int Perform(TControl& ioTarget) = 0;
  /// What becomes of a turn that nothing takes.
  virtual void PerformDefault() = 0;
};

}  // namespace kk
