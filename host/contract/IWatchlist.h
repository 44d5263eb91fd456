#pragma once

#include "host/contract/ISearchResult.h"

namespace kk {

/// The watch list as other plug-ins reach it. Main thread.
class IWatchlist : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{6233E6B1-E4A0-420F-A795-BEFF3613D939}");

  /// Adds a result of this source through a first refresh. May ask the user for the category.
  /// False if it was refused; the log says why.
  virtual bool AddItem(const TGuid& iTargetPluginId, const TIntf<ISearchResult>& iSearchResult) = 0;
  /// Whether a result that is the same stands in the list already.
  virtual bool HasItem(const TGuid& iTargetPluginId, const TIntf<ISearchResult>& iSearchResult) = 0;
};

}  // namespace kk
