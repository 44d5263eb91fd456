#include "host/controls/TfrmKKCommonBase.h"

#include <utility>

namespace kk {

void TfrmKKCommonBase::Show() {
  if (!std::exchange(FLoaded, true)) Loaded();
  TForm::Show();
}

}  // namespace kk
