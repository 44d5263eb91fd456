#pragma once

#include "host/contract/TBitmap.h"
#include "host/contract/TRect.h"

namespace kk {

/// What a cell is painted on. The view implements it, with its own fonts and colours; the painters
/// say what stands where. Borrowed for the time of one Paint. Main thread.
class ICanvas {
 public:
  virtual ~ICanvas() = default;

  /// From here on text has the colours of the cell's row as it is: plain, selected, focused.
  virtual void SetRowColors() = 0;
  /// One line, vertically centred; what does not fit is cut off with an ellipsis.
  virtual void DrawText(const TRect& iRect, TStringView iText) = 0;
  /// The natural size of the image; zero for one that is not known.
  virtual TSize GetBitmapSize(const TBitmap& iBitmap) const = 0;
  /// Fills the rectangle with the image; cTransparentColor of it lets the row's ground through.
  virtual void DrawBitmap(const TRect& iRect, const TBitmap& iBitmap) = 0;
};

}  // namespace kk
