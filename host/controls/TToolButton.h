#pragma once

#include "host/contract/TBitmap.h"
#include "host/controls/TClickControl.h"

namespace kk {

/// A button in a toolbar: an image with the caption below it.
class TToolButton : public TClickControl {
 public:
  using TClickControl::TClickControl;

  /// Stands for where the user is: it is drawn pressed, with the other image.
  bool Selected() const { return FSelected; }
  void SetSelected(bool iSelected) { SetValue(FSelected, iSelected); }
  const TBitmap& Image() const { return FSelected ? FImageSelected : FImage; }
  void SetImages(const TBitmap& iImage, const TBitmap& iImageSelected) {
    SetValue(FImage, iImage);
    SetValue(FImageSelected, iImageSelected);
  }
  /// What is told of the button where the pointer is.
  const TString& Hint() const { return FHint; }
  void SetHint(TStringView iHint) { SetValue(FHint, iHint); }

 private:
  bool FSelected = false;
  TBitmap FImage;
  TBitmap FImageSelected;
  TString FHint;
};

}  // namespace kk
