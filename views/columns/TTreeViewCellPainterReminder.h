#pragma once

#include "host/contract/TCommonTreeViewCellPainterKK.h"
#include "reminders/TRemindType.h"

namespace kk {

/// The kinds of the result's reminder; empty for none. Raises Exception where there is no handler.
TRemindTypes RemindTypesOf(const TIntf<ISearchResult>& iSearchResult);

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
