#pragma once

#include "host/controls/TCaptionControl.h"

namespace kk {

/// A control with a caption that is clicked: buttons, boxes and menu entries.
class TClickControl : public TCaptionControl {
 public:
  using TCaptionControl::TCaptionControl;

  /// The user's door. The event comes behind the change of the control's state; none comes if the
  /// click changes nothing where it should.
  bool Click();
  void SetOnClick(TNotifyEvent iEvent) { FOnClick = iEvent; }

  bool AcceptsFocus() const override { return true; }

 protected:
  /// What a click does to the control itself; false if it does nothing at all.
  virtual bool Clicked() { return true; }
  /// The space bar clicks.
  bool UseKey(char16_t iKey) override;

 private:
  TNotifyEvent FOnClick;
};

}  // namespace kk
