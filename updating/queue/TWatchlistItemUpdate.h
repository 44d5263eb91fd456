#pragma once

#include "host/contract/ISearchResultUpdate.h"

namespace kk {

/// One entry of a refresh queue. Owned by its list. Main thread.
class TWatchlistItemUpdate : public TObject {
 public:
  explicit TWatchlistItemUpdate(TIntf<ISearchResult> iSearchResult)
      : FSearchResult(std::move(iSearchResult)) {}

  /// The result to refresh; the refreshed one, under the same id, once that went well.
  const TIntf<ISearchResult>& SearchResult() const { return FSearchResult; }
  void SetSearchResult(TIntf<ISearchResult> iResult) { FSearchResult = std::move(iResult); }

  /// For this entry only; may be empty.
  TNotifyEventSearchResult OnUpdateFinished() const { return FOnUpdateFinished; }
  void SetOnUpdateFinished(TNotifyEventSearchResult iEvent) { FOnUpdateFinished = iEvent; }

 private:
  friend class TLstWatchlistItemUpdate;

  TIntf<ISearchResult> FSearchResult;
  TNotifyEventSearchResult FOnUpdateFinished;
  // Kept by the list: the id that its hash knows, and a number that rises along the list.
  TGuid FHashedId;
  mutable int64_t FOrder = 0;
};

}  // namespace kk
