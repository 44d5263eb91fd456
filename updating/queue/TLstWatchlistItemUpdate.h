#pragma once

#include <unordered_map>

#include "host/base/TLstBase.h"
#include "updating/queue/TWatchlistItemUpdate.h"

namespace kk {

/// The entries of a refresh queue, owned. Look-ups by id take constant time; the id of a queued
/// result does not change. Main thread.
class TLstWatchlistItemUpdate : public TLstBase<TWatchlistItemUpdate> {
 public:
  TLstWatchlistItemUpdate();
  ~TLstWatchlistItemUpdate() override;

  TWatchlistItemUpdate& Add(std::unique_ptr<TWatchlistItemUpdate> iUpdate);
  TWatchlistItemUpdate& Add(const TIntf<ISearchResult>& iSearchResult);
  /// Before the index; one at or behind the end appends.
  TWatchlistItemUpdate& Insert(int iIndex, std::unique_ptr<TWatchlistItemUpdate> iUpdate);
  TWatchlistItemUpdate& Insert(int iIndex, const TIntf<ISearchResult>& iSearchResult);
  /// The first entry whose result has this id; -1 if there is none.
  int IndexOfId(const TGuid& iId) const;
  TWatchlistItemUpdate* FindItemById(const TGuid& iId) const;
  /// Frees the entry; no effect if there is none.
  void DeleteItemById(const TGuid& iId);
  /// LstItem, First: an index out of range raises EListError.
  TWatchlistItemUpdate& GetItems(int iIndex) const { return At(iIndex); }
  TWatchlistItemUpdate& GetFirst() const { return At(0); }

 protected:
  void Attached(TWatchlistItemUpdate& iUpdate) override;
  void Detached(TWatchlistItemUpdate& iUpdate) override;

 private:
  std::unordered_multimap<TGuid, TWatchlistItemUpdate*> FById;
};

}  // namespace kk
