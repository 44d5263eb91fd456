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
  TIntf<ISearchResult> FSearchResult;
  TNotifyEventSearchResult FOnUpdateFinished;
};

}  // namespace kk
