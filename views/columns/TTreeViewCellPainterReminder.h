#pragma once

#include "host/contract/TCommonTreeViewCellPainterKK.h"

namespace kk {

/// Draws how the user will be reminded of the row's result: one image stands for a reminder, of the
/// last of its kinds, so that sound shows only when there is no other. A cell without a reminder,
/// and one whose look-up fails, stays empty. Main thread.
class TTreeViewCellPainterReminder : public TCommonTreeViewCellPainterTransparentBitmapKK {
 public:
  using TCommonTreeViewCellPainterTransparentBitmapKK::
      TCommonTreeViewCellPainterTransparentBitmapKK;

  void Paint(const TIntf<ICellPaintInfo>& iPaintInfo) override;
};

}  // namespace kk
