#include "host/controls/TPanel.h"

namespace kk {

void TPanel::Show() {
  if (Visible()) return;
  SetVisible(true);
  if (FOnShow) FOnShow(this);
}

void TPanel::Close() {
  if (Visible()) Disappear();
}

void TPanel::Disappear() {
  SetVisible(false);
  if (FOnClose) FOnClose(this);
}

}  // namespace kk
