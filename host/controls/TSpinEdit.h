#pragma once

#include <algorithm>
#include <limits>

#include "host/controls/TControl.h"

namespace kk {

/// A whole number to type or to step through. It has no bounds but those of its type until it is
/// given some; whichever door a number comes through, it is brought to the nearer bound then.
class TSpinEdit : public TControl {
 public:
  using TControl::TControl;

  int Value() const { return FValue; }
  void SetValue(int iValue) { TControl::SetValue(FValue, Bounded(iValue)); }
  int MinValue() const { return FMinValue; }
  int MaxValue() const { return FMaxValue; }
  /// Both bounds are allowed values; the lower one comes first.
  void SetBounds(int iMinValue, int iMaxValue);
  /// The user has changed the number to this one.
  bool EnterValue(int iValue);
  /// The user has typed this; false, and nothing, for a text that is no whole number of 32 bits.
  bool EnterText(TStringView iText);
  /// On every change by the user.
  void SetOnChange(TNotifyEvent iEvent) { FOnChange = iEvent; }

  bool AcceptsFocus() const override { return true; }

 private:
  int Bounded(int iValue) const { return std::clamp(iValue, FMinValue, FMaxValue); }

  int FValue = 0;
  int FMinValue = std::numeric_limits<int>::min();
  int FMaxValue = std::numeric_limits<int>::max();
  TNotifyEvent FOnChange;
};

}  // namespace kk
