#include "views/columns/TAdditionalColumnsWatchlist.h"

namespace kk {

TAdditionalColumnsWatchlist::TAdditionalColumnsWatchlist(const TGuid& iSearchLocationPluginId,
                                                         TNotifySearchResult iCallbackClickAdd,
                                                         TNotifyEvent iCallbackClickCheck)
    : FColumn(MakeIntf<TAdditionalColumnWatchlist>(iSearchLocationPluginId, iCallbackClickAdd,
                                                   iCallbackClickCheck)) {
  GetColumns()->Add(FColumn);
}

}  // namespace kk
