#include "host/contract/TCommonTreeViewCellPainterKK.h"

#include <algorithm>
#include <utility>

#include "host/base/Exception.h"

namespace kk {

void TCommonTreeViewCellPainterKK::SetColors(const TIntf<ICellPaintInfo>& iPaintInfo) {
  iPaintInfo->GetCanvas().SetRowColors();
}

void TCommonTreeViewCellPainterKK::PaintText(ICanvas& ioCanvas, TStringView iText,
                                             const TRect& iRect) {
  ioCanvas.DrawText(iRect, iText);
}

TCommonTreeViewCellPainterTransparentBitmapKK::TCommonTreeViewCellPainterTransparentBitmapKK(
    std::vector<TBitmap> iImages)
    : FImages(std::move(iImages)) {}

void TCommonTreeViewCellPainterTransparentBitmapKK::PaintBitmap(ICanvas& ioCanvas,
                                                                const TRect& iRect, int iIndex) {
  const TBitmap& image = FImages[CheckedIndex(iIndex, FImages.size())];
  const TSize size = ioCanvas.GetBitmapSize(image);
  const int width = std::min(size.Width, iRect.Width());
  const int height = std::min(size.Height, iRect.Height());
  const int left = iRect.Left + (iRect.Width() - width) / 2;
  const int top = iRect.Top + (iRect.Height() - height) / 2;
  FBitmapRect = {left, top, left + width, top + height};
  ioCanvas.DrawBitmap(FBitmapRect, image);
}

}  // namespace kk
