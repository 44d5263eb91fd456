#include "views/columns/TTreeViewCellPainterWatchlist.h"

#include <utility>

#include "host/base/Guard.h"
#include "persistence/TWatchlistHandler.h"

namespace kk {

namespace {

// The places of the column's images.
enum TWatchImage : int { wiUnknown, wiNo, wiYes };

// An item has come or gone: from now on its id is known in one list and not in the other. There the
// lines go that have it as their value: a row has an id of its own, and IsSame ties it to an item
// with another. All such lines go, because several rows may be the same article.
void Move(TObject* Sender, THashedStringListExt& ioFrom, THashedStringListExt& ioTo) {
  const auto* item = dynamic_cast<TWatchlistItem*>(Sender);
  if (item == nullptr) return;
  const TString id = GUIDToString(item->SearchResultId());
  for (int index; (index = ioFrom.IndexOfValue(id)) >= 0;) ioFrom.Delete(index);
  ioTo.SetValue(id, id);
}

}  // namespace

TTreeViewCellPainterWatchlist::TTreeViewCellPainterWatchlist(const TGuid& iSearchLocationPluginId,
                                                             std::vector<TBitmap> iImages)
    : TCommonTreeViewCellPainterTransparentBitmapKK(std::move(iImages)),
      FSearchLocationPluginId(iSearchLocationPluginId) {
  using TSelf = TTreeViewCellPainterWatchlist;
  if (Handler() == nullptr) return;
  Handler()->AddNotificationItem(TNotifyEvent::Of<&TSelf::DoItemAdd>(this),
                                 TNotifyEvent::Of<&TSelf::DoItemDelete>(this));
}

TTreeViewCellPainterWatchlist::~TTreeViewCellPainterWatchlist() {
  using TSelf = TTreeViewCellPainterWatchlist;
  if (Handler() == nullptr) return;
  Handler()->RemoveNotificationItem(TNotifyEvent::Of<&TSelf::DoItemAdd>(this),
                                    TNotifyEvent::Of<&TSelf::DoItemDelete>(this));
}

void TTreeViewCellPainterWatchlist::Paint(const TIntf<ICellPaintInfo>& iPaintInfo) {
  const int image = ImageOf(iPaintInfo->GetSearchResult());
  PaintBitmap(iPaintInfo->GetCanvas(), iPaintInfo->GetCellRect(), image);
}

int TTreeViewCellPainterWatchlist::ImageOf(const TIntf<ISearchResult>& iSearchResult) {
  if (!iSearchResult) return wiUnknown;
  const TString id = GUIDToString(iSearchResult->GetId());
  if (FSearchLocationFound.IndexOfName(id) >= 0) return wiYes;
  if (FSearchLocationNotFound.IndexOfName(id) >= 0) return wiNo;
  if (Handler() == nullptr) return wiUnknown;  // views may paint on when it is gone
  const auto watched = Handler()->FindSameSearchResult(FSearchLocationPluginId, iSearchResult);
  if (!watched) {
    FSearchLocationNotFound.SetValue(id, id);
    return wiNo;
  }
  FSearchLocationFound.SetValue(id, GUIDToString(watched->GetId()));
  return wiYes;
}

bool TTreeViewCellPainterWatchlist::IsFound(const TIntf<ISearchResult>& iSearchResult) const {
  return iSearchResult &&
         FSearchLocationFound.IndexOfName(GUIDToString(iSearchResult->GetId())) >= 0;
}

void TTreeViewCellPainterWatchlist::DoItemAdd(TObject* Sender) {
  Guarded(u"TTreeViewCellPainterWatchlist.DoItemAdd",
          [&] { Move(Sender, FSearchLocationNotFound, FSearchLocationFound); });
}

void TTreeViewCellPainterWatchlist::DoItemDelete(TObject* Sender) {
  Guarded(u"TTreeViewCellPainterWatchlist.DoItemDelete",
          [&] { Move(Sender, FSearchLocationFound, FSearchLocationNotFound); });
}

}  // namespace kk
