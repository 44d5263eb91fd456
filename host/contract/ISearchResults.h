#pragma once

#include "host/contract/ISearchResult.h"

namespace kk {

inline constexpr TGuid IID_SearchResults = GuidLiteral("{07C6E04B-3497-4CF4-B72D-821E2AA154FA}");

/// The results that a list view shows, and the user's selection among them. Main thread.
class ISearchResults : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = IID_SearchResults;

  virtual int GetCount() const = 0;
  virtual int GetSelectedCount() const = 0;
  /// Index 0 to GetCount - 1; outside of it EListError.
  virtual TIntf<ISearchResult> GetItems(int iIndex) const = 0;
  /// Index 0 to GetSelectedCount - 1; outside of it EListError.
  virtual TIntf<ISearchResult> GetSelectedItems(int iIndex) const = 0;
  /// May be empty.
  virtual TIntf<ISearchResult> GetFocused() const = 0;
};

}  // namespace kk
