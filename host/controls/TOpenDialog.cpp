#include "host/controls/TOpenDialog.h"

#include "host/controls/IFormHost.h"

namespace kk {

bool TOpenDialog::Execute() {
  TOpenDialog asked = *this;
  if (!FormHost().ShowOpenDialog(asked)) return false;
  FileName = asked.FileName;
  return true;
}

}  // namespace kk
