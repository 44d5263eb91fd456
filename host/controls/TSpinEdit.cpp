#include "host/controls/TSpinEdit.h"

namespace kk {

void TSpinEdit::SetBounds(int iMinValue, int iMaxValue) {
  TControl::SetValue(FMinValue, iMinValue);
  TControl::SetValue(FMaxValue, iMaxValue);
  SetValue(FValue);
}

bool TSpinEdit::EnterValue(int iValue) {
  return AsUser([this, iValue] {
    if (FValue == Bounded(iValue)) return false;
    SetValue(iValue);
    if (FOnChange) FOnChange(this);
    return true;
  });
}

bool TSpinEdit::EnterText(TStringView iText) {
  using TLimits = std::numeric_limits<int>;
  int64_t number = 0;
  if (!TryStrToInt(iText, number)) return false;
  if (number < TLimits::min() || number > TLimits::max()) return false;
  return EnterValue(static_cast<int>(number));
}

}  // namespace kk
