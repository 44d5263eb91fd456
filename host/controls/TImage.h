#pragma once

#include "host/contract/TBitmap.h"
#include "host/controls/TClickControl.h"

namespace kk {

/// A picture on a form. It can be clicked, and never has the focus.
class TImage : public TClickControl {
 public:
  explicit TImage(TControl* iParent, TStringView iName = {}, const TBitmap& iPicture = {})
      : TClickControl(iParent, iName), FPicture(iPicture) {}

  const TBitmap& Picture() const { return FPicture; }

  bool AcceptsFocus() const override { return false; }

 private:
  TBitmap FPicture;
};

}  // namespace kk
