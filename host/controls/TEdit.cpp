#include "host/controls/TEdit.h"

namespace kk {

bool TEdit::EnterText(TStringView iText) {
  return AsUser([this, iText] {
    if (FText == iText) return false;
    SetText(iText);
    if (FOnChange) FOnChange(this);
    return true;
  });
}

}  // namespace kk
