#pragma once

#include "host/controls/TControl.h"

namespace kk {

/// A whole number to type or to step through. It has no bounds but those of its type.
class TSpinEdit : public TControl {
 public:
  using TControl::TControl;

  int Value() const { return FValue; }
  void SetValue(int iValue) { TControl::SetValue(FValue, iValue); }
  /// The user has changed the number to this one.
  bool EnterValue(int iValue);
  /// The user has typed this; false, and nothing, for a text that is no whole number of 32 bits.
  bool EnterText(TStringView iText);
  /// On every change by the user.
  void SetOnChange(TNotifyEvent iEvent) { FOnChange = iEvent; }

  bool AcceptsFocus() const override { return true; }

 private:
  int FValue = 0;
  TNotifyEvent FOnChange;
};

}  // namespace kk
