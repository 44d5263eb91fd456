#include "updating/queue/TLstWatchlistItemUpdate.h"

namespace kk {

TLstWatchlistItemUpdate::TLstWatchlistItemUpdate() : TLstBase(true) {}

TLstWatchlistItemUpdate::~TLstWatchlistItemUpdate() { TLstWatchlistItemUpdate::Clear(); }

TWatchlistItemUpdate& TLstWatchlistItemUpdate::Add(std::unique_ptr<TWatchlistItemUpdate> iUpdate) {
  return Append(std::move(iUpdate));
}

TWatchlistItemUpdate& TLstWatchlistItemUpdate::Add(const TIntf<ISearchResult>& iSearchResult) {
  return Append(std::make_unique<TWatchlistItemUpdate>(iSearchResult));
}

TWatchlistItemUpdate& TLstWatchlistItemUpdate::Insert(
    int iIndex, std::unique_ptr<TWatchlistItemUpdate> iUpdate) {
  return InsertAt(iIndex, std::move(iUpdate));
}

TWatchlistItemUpdate& TLstWatchlistItemUpdate::Insert(int iIndex,
                                                      const TIntf<ISearchResult>& iSearchResult) {
  return InsertAt(iIndex, std::make_unique<TWatchlistItemUpdate>(iSearchResult));
}

int TLstWatchlistItemUpdate::IndexOfId(const TGuid& iId) const {
  const TWatchlistItemUpdate* update = FindItemById(iId);
  if (update == nullptr) return -1;
  Number();
  const auto hit = std::lower_bound(
      begin(), end(), update->FOrder,
      [](const TWatchlistItemUpdate* iEntry, int64_t iOrder) { return iEntry->FOrder < iOrder; });
  return static_cast<int>(hit - begin());
}

TWatchlistItemUpdate* TLstWatchlistItemUpdate::FindItemById(const TGuid& iId) const {
  auto [hit, last] = FById.equal_range(iId);
  if (hit == last) return nullptr;
  if (std::next(hit) != last) {
    Number();
    hit = std::min_element(hit, last, [](const auto& a, const auto& b) {
      return a.second->FOrder < b.second->FOrder;
    });
  }
  return hit->second;
}

void TLstWatchlistItemUpdate::DeleteItemById(const TGuid& iId) {
  const int index = IndexOfId(iId);
  if (index >= 0) Delete(index);
}

void TLstWatchlistItemUpdate::Attached(TWatchlistItemUpdate& iUpdate) {
  iUpdate.FHashedId = iUpdate.SearchResult()->GetId();
  iUpdate.FOrder = FNextOrder++;
  FById.emplace(iUpdate.FHashedId, &iUpdate);
}

void TLstWatchlistItemUpdate::Detached(TWatchlistItemUpdate& iUpdate) {
  auto [hit, last] = FById.equal_range(iUpdate.FHashedId);
  while (hit != last && hit->second != &iUpdate) ++hit;
  if (hit != last) FById.erase(hit);
}

// Only when a position is asked for: a run of insertions costs nothing.
void TLstWatchlistItemUpdate::Number() const {
  if (FIsNumbered) return;
  int64_t order = 0;
  for (const TWatchlistItemUpdate* entry : *this) entry->FOrder = order++;
  FIsNumbered = true;
}

}  // namespace kk
