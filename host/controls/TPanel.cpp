#include "host/controls/TPanel.h"

#include <algorithm>

namespace kk {

bool TPanel::DragWidth(int iWidth) {
  return AsUser([this, iWidth] {
    const int width = std::max(iWidth, FMinWidth);
    if (!FHasSplitter || width == FWidth) return false;
    SetWidth(width);
    return true;
  });
}

void TPanel::SetMinSize(int iWidth, int iHeight) {
  SetValue(FMinWidth, iWidth);
  SetValue(FMinHeight, iHeight);
}

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
