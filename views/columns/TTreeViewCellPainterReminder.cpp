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
    const auto type = RemindTypesOf(result).Highest();
    if (!type) return;
    PaintBitmap(iPaintInfo->GetCanvas(), iPaintInfo->GetCellRect(), static_cast<int>(*type));
  });
}

}  // namespace kk
