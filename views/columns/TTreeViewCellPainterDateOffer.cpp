#include "views/columns/TTreeViewCellPainterDateOffer.h"

#include "views/columns/ColumnHandler.h"

namespace kk {

void TTreeViewCellPainterDateOffer::Paint(const TIntf<ICellPaintInfo>& iPaintInfo) {
  const TIntf<ISearchResult> result = iPaintInfo->GetSearchResult();
  if (!result) return;
  SetColors(iPaintInfo);
  const TGuid id = result->GetId();
  const TWatchlistItem* item = ColumnHandler().LstCategory().FindItemById(id);
  if (item == nullptr) throw Exception(Format(_resRefusedNoSuchItem, {GUIDToString(id)}));
  PaintText(iPaintInfo->GetCanvas(), FormatDateTime(u"dd.mm.yyyy", item->LastUpdateDate()),
            iPaintInfo->GetCellRect());
}

}  // namespace kk
