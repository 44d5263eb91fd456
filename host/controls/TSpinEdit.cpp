#include "host/controls/TSpinEdit.h"

#include <limits>

namespace kk {

bool TSpinEdit::EnterValue(int iValue) {
  return AsUser([this, iValue] {
    if (FValue == iValue) return false;
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
