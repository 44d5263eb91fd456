#pragma once

#include "host/base/TDelegate.h"
#include "host/contract/TAdditionalColumn.h"

namespace kk {

/// Something is to be done with a result.
using TNotifySearchResult =
    TDelegate<void(TObject* Sender, const TIntf<ISearchResult>& iSearchResult)>;

/// The column "Beobachten" in a view of another plug-in: whether the article of a row is in the
/// watch list. A click on the image adds one that isn't. Main thread.
class TAdditionalColumnWatchlist : public TAdditionalColumnTransparentBitmap {
 public:
  /// iCallbackClickAdd: for a row that isn't in the watch list; iCallbackClickCheck: for one that
  /// is. Either may be empty; the receivers take them back (Detach) before they die.
  TAdditionalColumnWatchlist(const TGuid& iSearchLocationPluginId,
                             TNotifySearchResult iCallbackClickAdd,
                             TNotifyEvent iCallbackClickCheck);
  void Detach();

  void Click(const TIntf<ICellMouseInfo>& iCellMouseInfo) override;
  /// Only a row that can be added invites a click.
  void MouseMove(const TIntf<ICellMouseInfo>& iCellMouseInfo) override;
  /// Watched rows stand behind the others. Asks nobody: a row that was never painted counts as not
  /// watched.
  int CompareNodes(int iSortColumn, const TIntf<ISearchResult>& iSearchResult1,
                   const TIntf<ISearchResult>& iSearchResult2) const override;

 private:
  bool IsFound(const TIntf<ISearchResult>& iSearchResult) const;

  TNotifySearchResult FCallbackClickAdd;
  TNotifyEvent FCallbackClickCheck;
};

}  // namespace kk
