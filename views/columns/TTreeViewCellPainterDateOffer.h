#pragma once

#include "host/contract/TCommonTreeViewCellPainterKK.h"

namespace kk {

/// Writes the day of the last refresh of the row's item. What goes wrong passes to the view; a
/// result without an item raises Exception. Main thread.
class TTreeViewCellPainterDateOffer : public TCommonTreeViewCellPainterKK {
 public:
  void Paint(const TIntf<ICellPaintInfo>& iPaintInfo) override;
};

}  // namespace kk
