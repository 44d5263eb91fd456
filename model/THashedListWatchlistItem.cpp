#include "model/THashedListWatchlistItem.h"

namespace kk {

void THashedListWatchlistItem::Add(TWatchlistItem& iItem) {
  if (!iItem.SearchResult()) return;
  FList.Add(GUIDToString(iItem.SearchResult()->GetId()));
  FItems.push_back(&iItem);
}

int THashedListWatchlistItem::IndexOf(const TGuid& iId) const {
  return FList.IndexOf(GUIDToString(iId));
}

TWatchlistItem* THashedListWatchlistItem::GetItem(const TGuid& iId) const {
  const int index = IndexOf(iId);
  return index < 0 ? nullptr : FItems[static_cast<size_t>(index)];
}

void THashedListWatchlistItem::Remove(const TWatchlistItem& iItem) {
  if (!iItem.SearchResult()) return;
  const int index = IndexOf(iItem.SearchResult()->GetId());
  if (index < 0) return;
  FList.Delete(index);
  FItems.erase(FItems.begin() + index);
}

}  // namespace kk
