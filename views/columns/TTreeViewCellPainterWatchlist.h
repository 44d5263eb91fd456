#pragma once

#include "host/contract/TCommonTreeViewCellPainterKK.h"
#include "views/columns/THashedStringListExt.h"

namespace kk {

/// Draws whether the row's result is in the watch list. The walk through the watched items runs
/// once for each row; what it found is kept, and corrected by the handler's notifications. What
/// goes wrong in Paint passes to the view. Main thread.
class TTreeViewCellPainterWatchlist : public TCommonTreeViewCellPainterTransparentBitmapKK {
 public:
  /// iSearchLocationPluginId: whose view it is. Listens to the handler, if there is one, while both
  /// live.
  TTreeViewCellPainterWatchlist(const TGuid& iSearchLocationPluginId, std::vector<TBitmap> iImages);
  ~TTreeViewCellPainterWatchlist() override;

  /// Without a handler a row that is not kept shows the unknown image.
  void Paint(const TIntf<ICellPaintInfo>& iPaintInfo) override;
  /// Whether the result is kept as watched; one that was never painted isn't. Two results of the
  /// same article may differ in this.
  bool IsFound(const TIntf<ISearchResult>& iSearchResult) const;

  /// What the handler tells: an item has got a result, or is about to die. Other senders change
  /// nothing.
  void DoItemAdd(TObject* Sender);
  void DoItemDelete(TObject* Sender);

 private:
  int ImageOf(const TIntf<ISearchResult>& iSearchResult);

  TGuid FSearchLocationPluginId;
  // Lines "id of the row's result=id of the watched item's result"; and of the rows that are known
  // not to be watched, with the same id on both sides.
  THashedStringListExt FSearchLocationFound;
  THashedStringListExt FSearchLocationNotFound;
};

}  // namespace kk
