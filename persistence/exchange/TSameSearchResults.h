#pragma once

#include <optional>
#include <unordered_map>

#include "model/TWatchlistItem.h"

namespace kk {

/// Finds the live result that is the same as another one, as the handler's FindSameSearchResult
/// does, for many questions in a row: where the results of a source tell their keys
/// (ISearchResultSameKey), a question costs no walk over all of them. It hears of each item that
/// comes or goes meanwhile. Short-lived; the handler lives longer. Main thread.
class TSameSearchResults : public TObject {
 public:
  TSameSearchResults();
  ~TSameSearchResults() override;

  /// The id of that live result; nothing if there is none.
  std::optional<TGuid> Find(const TGuid& iPluginId, const TIntf<ISearchResult>& iResult);

 private:
  struct TSource {
    /// False if the result has none.
    bool Enter(const TWatchlistItem& iItem);

    bool HasKeys = true;  // of all its results
    std::unordered_map<TString, TGuid> IdByKey;
    std::unordered_map<TGuid, TString> KeyById;
  };

  const TSource& SourceOf(const TGuid& iPluginId);
  void DoItemAdd(TObject* Sender);
  void DoItemDelete(TObject* Sender);

  std::unordered_map<TGuid, TSource> FSources;
};

}  // namespace kk
