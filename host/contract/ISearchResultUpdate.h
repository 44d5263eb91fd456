#pragma once

#include "host/base/TDelegate.h"
#include "host/base/TObject.h"
#include "host/contract/ISearchResult.h"

namespace kk {

/// The end of a refresh: the sender, the refreshed result and whether it went well.
using TNotifyEventSearchResult =
    TDelegate<void(TObject* Sender, const TIntf<ISearchResult>& iSearchResult, bool iSucceeded)>;

inline constexpr TGuid IID_SearchResultUpdate =
    GuidLiteral("{C2149674-34A3-4FBB-BB02-3C17D91C03A1}");

/// Offered by a source whose results can be refreshed. Main thread.
class ISearchResultUpdate : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = IID_SearchResultUpdate;

  /// Starts a refresh of the clone and returns. When it is over, the source calls the callback
  /// once, on the main thread; it may do so before it returns. Until then the caller sends no
  /// second request to this source.
  virtual void UpdateSearchResult(const TIntf<ISearchResult>& iSearchResult,
                                  TNotifyEventSearchResult iOnFinished) = 0;
};

}  // namespace kk
