#pragma once

#include <optional>
#include <unordered_map>

#include "host/base/TDelegate.h"
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

  /// Raised once in a while where a source is looked through for its keys, so that the caller can
  /// let the main loop turn.
  void SetOnStep(TNotifyEvent iEvent) { FOnStep = iEvent; }

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
  /// False if items came or went on the way.
  bool LookThrough(const TGuid& iPluginId, bool iInSteps, TSource& oSource);
  void DoItemAdd(TObject* Sender);
  void DoItemDelete(TObject* Sender);

  std::unordered_map<TGuid, TSource> FSources;
  TNotifyEvent FOnStep;
  bool FHeard = false;  // of an item, since it was cleared
};

}  // namespace kk
