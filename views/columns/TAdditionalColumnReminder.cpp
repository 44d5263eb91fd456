#include "views/columns/TAdditionalColumnReminder.h"

#include "host/base/Guard.h"
#include "persistence/TWatchlistHandler.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "views/columns/TTreeViewCellPainterReminder.h"

namespace kk {

namespace {

std::vector<TBitmap> Images() {
  std::vector<TBitmap> images;
  for (const TRemindType type : cRemindTypes) images.push_back(RemindTypeImage(type));
  return images;
}

}  // namespace

TAdditionalColumnReminder::TAdditionalColumnReminder()
    : TAdditionalColumnTransparentBitmap(
          {.Id = cColumnIDReminder, .Caption = TString(_resColumnCaptionReminder), .Width = 30},
          std::make_unique<TTreeViewCellPainterReminder>(Images())) {}

void TAdditionalColumnReminder::Click(const TIntf<ICellMouseInfo>& iCellMouseInfo) {
  if (!IsMouseOverBitmap(iCellMouseInfo)) return;  // a row without a result is none, either
  const TNotifyEvent event = Handler()->OnAdditionalColumnEditClick();
  if (event) event(this);
}

void TAdditionalColumnReminder::MouseMove(const TIntf<ICellMouseInfo>& iCellMouseInfo) {
  Guarded(u"TAdditionalColumnReminder.MouseMove", [&] {
    TAdditionalColumnTransparentBitmap::MouseMove(iCellMouseInfo);
    iCellMouseInfo->SetCursor(IsMouseOverBitmap(iCellMouseInfo) ? cCursorHandPoint
                                                                : cCursorDefault);
  });
}

bool TAdditionalColumnReminder::IsMouseOverBitmap(
    const TIntf<ICellMouseInfo>& iCellMouseInfo) const {
  bool over = false;
  Guarded(u"TAdditionalColumnReminder.IsMouseOverBitmap", [&] {
    if (!TAdditionalColumnTransparentBitmap::IsMouseOverBitmap(iCellMouseInfo)) return;
    const TIntf<ISearchResult> result = iCellMouseInfo->GetSearchResult();
    over = result && !RemindTypesOf(result).IsEmpty();
  });
  return over;
}

}  // namespace kk
