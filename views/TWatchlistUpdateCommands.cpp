#include "views/TWatchlistUpdateCommands.h"

#include "views/WatchlistModel.h"

namespace kk {

namespace {

// Queues what of the items can be refreshed, in their order and as one block.
int Queue(TWatchlistIntegration& ioIntegration, const TLstWatchlistItem& iItems) {
  TLstWatchlistItem updatable(false);
  for (TWatchlistItem* item : iItems) {
    if (item->CanUpdate()) updatable.Add(*item);
  }
  return ioIntegration.Updater().Add(*updatable.GetSearchResultsFromItems(), {});
}

// iTree: a category or a list of them.
template <class Tree>
int UpdateTree(const Tree& iTree) {
  int count = 0;
  for (TWatchlistIntegration* integration : Handler()->LstIntegration()) {
    if (!SupportsUpdate(integration->Integration())) continue;
    TLstWatchlistItem items(false);
    iTree.GetItemsByPluginId(integration->Integration()->GetId(), items, true);
    count += Queue(*integration, items);
  }
  return count;
}

}  // namespace

int TWatchlistUpdateCommands::UpdateAll() { return UpdateTree(RootCategories()); }

int TWatchlistUpdateCommands::UpdateCategory(const TWatchlistCategory& iCategory) {
  return UpdateTree(iCategory);
}

int TWatchlistUpdateCommands::UpdateGroup(const TWatchlistPlugin& iGroup) {
  TWatchlistIntegration* integration = FindIntegration(iGroup.GetId());
  if (integration == nullptr || !SupportsUpdate(integration->Integration())) return 0;
  return Queue(*integration, iGroup.LstItem());
}

int TWatchlistUpdateCommands::UpdateItem(const TWatchlistItem& iItem) {
  if (!iItem.CanUpdate()) return 0;
  TWatchlistIntegration* integration = FindIntegration(GroupOf(iItem).GetId());
  if (integration == nullptr || !SupportsUpdate(integration->Integration())) return 0;
  return integration->Updater().Add(iItem.SearchResult(), {}) ? 1 : 0;
}

int TWatchlistUpdateCommands::UpdateItems(const TLstWatchlistItem& iItems) {
  int count = 0;
  for (TWatchlistIntegration* integration : Handler()->LstIntegration()) {
    if (!SupportsUpdate(integration->Integration())) continue;
    TLstWatchlistItem items(false);
    for (TWatchlistItem* item : iItems) {
      if (FindIntegration(GroupOf(*item).GetId()) == integration) items.Add(*item);
    }
    if (items.GetCount() > 0) count += Queue(*integration, items);
  }
  return count;
}

int TWatchlistUpdateCommands::DoTabUpdate(const TIntf<IWatchlistIntegration>& iIntegration,
                                          const TIntf<IInterfaceList>& iResults) {
  TWatchlistIntegration* integration = FindIntegration(iIntegration->GetId());
  if (integration == nullptr) return 0;
  TLstWatchlistItem items(false);
  for (int i = 0; i < iResults->GetCount(); ++i) {
    const auto result = GetAs<ISearchResult>(*iResults, i);
    TWatchlistItem* item = result ? RootCategories().FindItemById(result->GetId()) : nullptr;
    if (item != nullptr) items.Add(*item);
  }
  return Queue(*integration, items);
}

bool TWatchlistUpdateCommands::CanUpdate(const TWatchlistItem& iItem) {
  return iItem.CanUpdate() && SupportsUpdate(GroupOf(iItem).Integration());
}

}  // namespace kk
