#include "model/TLstWatchlistItem.h"

#include "model/TWatchlistCategory.h"
#include "model/TreeSearch.h"

namespace kk {

TLstWatchlistItem::TLstWatchlistItem(bool iOwnsObjects, TWatchlistPlugin* iGroup)
    : TLstTree(iOwnsObjects), FGroup(iGroup) {}

TLstWatchlistItem::~TLstWatchlistItem() { TLstWatchlistItem::Clear(); }

int TLstWatchlistItem::IndexOfSearchResultId(const TGuid& iId) const {
  if (OwnsObjects()) {
    const std::optional<TWatchlistItem*> item = FindItemBelow(*this, iId);
    if (item) return *item == nullptr ? -1 : IndexOfPlaced(**item);
  }
  for (int i = 0; i < GetCount(); ++i) {
    if (SameGuid(At(i).SearchResultId(), iId)) return i;
  }
  return -1;
}

void TLstWatchlistItem::SearchResultsFromItems(IInterfaceList& ioResults) const {
  for (const TWatchlistItem* item : *this) ioResults.Add(item->SearchResult());
}

TIntf<IInterfaceList> TLstWatchlistItem::GetSearchResultsFromItems() const {
  const TIntf<IInterfaceList> results = NewInterfaceList();
  SearchResultsFromItems(*results);
  return results;
}

void TLstWatchlistItem::Attached(TWatchlistItem& iItem) {
  TLstTree::Attached(iItem);
  if (!OwnsObjects()) return;
  EnterItem(iItem, iItem.SearchResultId());
  ForgetItemCount();
}

void TLstWatchlistItem::Detached(TWatchlistItem& iItem) {
  if (OwnsObjects()) {
    LeaveItem(iItem, iItem.SearchResultId());
    ForgetItemCount();
  }
  TLstTree::Detached(iItem);
}

void TLstWatchlistItem::ForgetItemCount() const {
  const TLstWatchlistPlugin* groups = FGroup == nullptr ? nullptr : FGroup->List();
  if (groups != nullptr && groups->Category() != nullptr) groups->Category()->ForgetItemCount();
}

}  // namespace kk
