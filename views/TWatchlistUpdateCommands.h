#pragma once

#include "model/TLstWatchlistCategory.h"
#include "model/TLstWatchlistIntegration.h"

namespace kk {

/// The section's commands that queue items for a refresh. An item goes into its source's queue if
/// it can be refreshed and the source can refresh. Each command answers how many results went in;
/// one that waits there already does not count. Main thread.
class TWatchlistUpdateCommands {
 public:
  /// Every source that can refresh is called, also with an empty list.
  int UpdateAll();
  /// The category's whole subtree.
  int UpdateCategory(const TWatchlistCategory& iCategory);
  int UpdateGroup(const TWatchlistPlugin& iGroup);
  int UpdateItem(const TWatchlistItem& iItem);
  /// The same for several items, as one block for each source.
  int UpdateItems(const TLstWatchlistItem& iItems);
  /// From a result list of that source.
  int DoTabUpdate(const TIntf<IWatchlistIntegration>& iIntegration,
                  const TIntf<IInterfaceList>& iResults);

  /// Whether there is anything to refresh about the item.
  static bool CanUpdate(const TWatchlistItem& iItem);
};

}  // namespace kk
