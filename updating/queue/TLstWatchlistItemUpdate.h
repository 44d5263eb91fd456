#pragma once

#include <unordered_map>

#include "host/base/TLstBase.h"
#include "updating/queue/TWatchlistItemUpdate.h"

namespace kk {

/// The entries of a refresh queue, owned. Look-ups by id take no scan of the queue. An entry is
/// found under the id that its result had when it came in: the ids of queued results do not change.
/// Main thread.
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
  void Reordered() override { FIsNumbered = false; }

 private:
  void Number() const;

  std::unordered_multimap<TGuid, TWatchlistItemUpdate*> FById;
  mutable bool FIsNumbered = true;
  int64_t FNextOrder = 0;
};

}  // namespace kk
