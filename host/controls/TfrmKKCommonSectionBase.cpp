#include "host/controls/TfrmKKCommonSectionBase.h"

#include <utility>

namespace kk {

void TfrmKKCommonSectionBase::Show() {
  TfrmKKCommonBase::Show();
  if (!std::exchange(FWasShown, true)) FirstShow();
}

}  // namespace kk
