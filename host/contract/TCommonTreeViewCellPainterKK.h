#pragma once

#include <vector>

#include "host/base/TObject.h"
#include "host/contract/IAdditionalColumn.h"

namespace kk {

/// The base of cell painters: what a painter says to a canvas. Main thread.
class TCommonTreeViewCellPainterKK : public TObject, public ITreeViewCellPainter {
 protected:
  /// What follows is drawn in the colours of the cell's row.
  static void SetColors(const TIntf<ICellPaintInfo>& iPaintInfo);
  static void PaintText(ICanvas& ioCanvas, TStringView iText, const TRect& iRect);
};

/// The base of painters that draw one of several images with a transparent colour. It remembers
/// where it last did.
class TCommonTreeViewCellPainterTransparentBitmapKK : public TCommonTreeViewCellPainterKK {
 public:
  explicit TCommonTreeViewCellPainterTransparentBitmapKK(std::vector<TBitmap> iImages);

  const std::vector<TBitmap>& Images() const { return FImages; }
  /// Where the last image was drawn; of no size before the first.
  const TRect& BitmapRect() const { return FBitmapRect; }

 protected:
  /// In the middle of the rectangle; an image that is larger is made to fit. An index without an
  /// image raises EListError.
  void PaintBitmap(ICanvas& ioCanvas, const TRect& iRect, int iIndex);

 private:
  std::vector<TBitmap> FImages;
  TRect FBitmapRect;
};

}  // namespace kk
