#pragma once

#include <vector>

#include "persistence/TWatchlistHandler.h"

namespace kk {

/// Short ways through the handler's lists that several commands take. The handler lives while the
/// section does. Main thread.

/// The tree's top level.
TLstWatchlistCategory& RootCategories();
/// The registered source with this id; null if there is none (any more).
TWatchlistIntegration* FindIntegration(const TGuid& iPluginId);
/// The group in which the item hangs, and the category of a group; both hang in the tree.
TWatchlistPlugin& GroupOf(const TWatchlistItem& iItem);
TWatchlistCategory& CategoryOf(const TWatchlistPlugin& iGroup);
/// True if the source can refresh its results.
bool SupportsUpdate(const TIntf<IWatchlistIntegration>& iIntegration);
/// A new list of this one result.
TIntf<IInterfaceList> ListOf(const TIntf<ISearchResult>& iResult);
/// The ids of the results, in order; empty entries are passed over.
std::vector<TGuid> IdsOf(const IInterfaceList& iResults);

}  // namespace kk
