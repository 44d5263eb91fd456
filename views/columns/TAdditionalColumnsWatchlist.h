#pragma once

#include "host/contract/TAdditionalColumns.h"
#include "views/columns/TAdditionalColumnWatchlist.h"

namespace kk {

/// What the watch list adds to one view of another plug-in: the column "Beobachten". Main thread.
class TAdditionalColumnsWatchlist : public TAdditionalColumns {
 public:
  /// As for the column.
  TAdditionalColumnsWatchlist(const TGuid& iSearchLocationPluginId,
                              TNotifySearchResult iCallbackClickAdd,
                              TNotifyEvent iCallbackClickCheck);
  /// The receivers of the callbacks are about to die.
  void Detach() { FColumn->Detach(); }

 private:
  TIntf<TAdditionalColumnWatchlist> FColumn;
};

}  // namespace kk
