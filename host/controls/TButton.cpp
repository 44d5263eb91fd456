#include "host/controls/TButton.h"

#include "host/controls/TForm.h"

namespace kk {

bool TButton::Clicked() {
  if (TForm* form = Form(); form != nullptr && FModalResult != cModalNone) {
    form->SetModalResult(FModalResult);
  }
  return true;
}

bool TButton::UseKey(char16_t iKey) {
  return iKey == cKeyReturn ? Click() : TClickControl::UseKey(iKey);
}

}  // namespace kk
