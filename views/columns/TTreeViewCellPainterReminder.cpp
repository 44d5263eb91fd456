#include "views/columns/TTreeViewCellPainterReminder.h"

#include "host/base/Guard.h"
#include "reminders/TLstRemindItemSync.h"
#include "views/columns/ColumnHandler.h"

namespace kk {

TRemindTypes RemindTypesOf(const TIntf<ISearchResult>& iSearchResult) {
  return ColumnHandler().GetLstRemind().RemindTypesBySearchResultId(iSearchResult->GetId());
}

void TTreeViewCellPainterReminder::Paint(const TIntf<ICellPaintInfo>& iPaintInfo) {
  Guarded(u"TTreeViewCellPainterReminder.Paint", [&] {
    const TIntf<ISearchResult> result = iPaintInfo->GetSearchResult();
    if (!result) return;
    const TRemindTypes types = RemindTypesOf(result);
    for (auto type = cRemindTypes.rbegin(); type != cRemindTypes.rend(); ++type) {
      if (!types.Has(*type)) continue;
      PaintBitmap(iPaintInfo->GetCanvas(), iPaintInfo->GetCellRect(), static_cast<int>(*type));
      return;
    }
  });
}

}  // namespace kk
