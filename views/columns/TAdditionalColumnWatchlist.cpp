#include "views/columns/TAdditionalColumnWatchlist.h"

#include "host/base/Guard.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "views/columns/TTreeViewCellPainterWatchlist.h"

namespace kk {

namespace {

std::vector<TBitmap> Images() {
  return {{TString(cColumnImageUnknown)}, {TString(cColumnImageNo)}, {TString(cColumnImageYes)}};
}

}  // namespace

TAdditionalColumnWatchlist::TAdditionalColumnWatchlist(const TGuid& iSearchLocationPluginId,
                                                       TNotifySearchResult iCallbackClickAdd,
                                                       TNotifyEvent iCallbackClickCheck)
    : TAdditionalColumnTransparentBitmap(
          {.Id = cColumnIDWatchlist, .Caption = TString(_resColumnWatchlistCaption), .Width = 20},
          std::make_unique<TTreeViewCellPainterWatchlist>(iSearchLocationPluginId, Images())),
      FCallbackClickAdd(iCallbackClickAdd),
      FCallbackClickCheck(iCallbackClickCheck) {}

void TAdditionalColumnWatchlist::Detach() {
  FCallbackClickAdd = {};
  FCallbackClickCheck = {};
}

void TAdditionalColumnWatchlist::Click(const TIntf<ICellMouseInfo>& iCellMouseInfo) {
  const TIntf<ISearchResult> result = iCellMouseInfo->GetSearchResult();
  if (!result || !IsMouseOverBitmap(iCellMouseInfo)) return;
  if (IsFound(result)) {
    if (FCallbackClickCheck) FCallbackClickCheck(this);
  } else {
    if (FCallbackClickAdd) FCallbackClickAdd(this, result);
  }
}

void TAdditionalColumnWatchlist::MouseMove(const TIntf<ICellMouseInfo>& iCellMouseInfo) {
  Guarded(u"TAdditionalColumnWatchlist.MouseMove", [&] {
    TAdditionalColumnTransparentBitmap::MouseMove(iCellMouseInfo);
    iCellMouseInfo->SetCursor(cCursorDefault);
    if (!IsMouseOverBitmap(iCellMouseInfo)) return;
    const TIntf<ISearchResult> result = iCellMouseInfo->GetSearchResult();
    if (result && !IsFound(result)) iCellMouseInfo->SetCursor(cCursorHandPoint);
  });
}

int TAdditionalColumnWatchlist::CompareNodes(int /*iSortColumn*/,
                                             const TIntf<ISearchResult>& iSearchResult1,
                                             const TIntf<ISearchResult>& iSearchResult2) const {
  return static_cast<int>(IsFound(iSearchResult1)) - static_cast<int>(IsFound(iSearchResult2));
}

bool TAdditionalColumnWatchlist::IsFound(const TIntf<ISearchResult>& iSearchResult) const {
  return static_cast<const TTreeViewCellPainterWatchlist&>(CellPainter()).IsFound(iSearchResult);
}

}  // namespace kk
