#pragma once

#include "host/contract/TBitmap.h"
#include "host/controls/TClickControl.h"

namespace kk {

class TTabStrip;

/// A head in a tab strip. A click selects it; of all heads of a strip at most one is selected,
/// which may be invisible. Owned by who made it, and gone from the strip when it dies.
class TKK5SkinHeaderItemTabExt : public TClickControl {
 public:
  /// A new one stands behind the others.
  TKK5SkinHeaderItemTabExt(TTabStrip& ioStrip, TStringView iCaption);

  bool Selected() const { return FSelected; }
  /// Takes the selection from the other heads. Raises no event.
  void SetSelected(bool iSelected);
  const TBitmap& Image() const { return FImage; }
  void SetImage(const TBitmap& iImage) { SetValue(FImage, iImage); }
  /// Shown instead while it is selected.
  const TBitmap& ImageSelected() const { return FImageSelected; }
  void SetImageSelected(const TBitmap& iImage) { SetValue(FImageSelected, iImage); }

  /// The focus stands on the strip as a whole.
  bool AcceptsFocus() const override { return false; }

 protected:
  /// Nothing on the selected one.
  bool Clicked() override;

 private:
  friend class TTabStrip;

  bool FSelected = false;
  TBitmap FImage;
  TBitmap FImageSelected;
};

}  // namespace kk
