#include "host/controls/TPrintDialog.h"

namespace kk {

bool TPrintDialog::Execute() {
  TPrintDialog asked = *this;
  if (!Printing().ShowPrintDialog(asked)) return false;
  *this = asked;
  return true;
}

}  // namespace kk
