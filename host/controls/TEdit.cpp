#include "host/controls/TEdit.h"

namespace kk {

void TEdit::SetText(TStringView iText) {
  if (FText == iText) return;
  FAllSelected = false;
  SetValue(FText, iText);
}

void TEdit::SelectAll() {
  FAllSelected = true;
  // Also a second time: the user may have put the caret elsewhere.
  Changed();
}

bool TEdit::EnterText(TStringView iText) {
  return AsUser([this, iText] {
    if (FText == iText) return false;
    SetText(iText);
    if (FOnChange) FOnChange(this);
    return true;
  });
}

}  // namespace kk
