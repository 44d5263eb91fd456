#pragma once

#include <unordered_map>
#include <vector>

#include "host/base/IInterfaceList.h"
#include "host/contract/ISearchResults.h"

namespace kk {

/// The results on show and the selection among them. The focused one is the first selected. Main
/// thread.
class TPageResults : public TInterfaced<ISearchResults> {
 public:
  int GetCount() const override { return static_cast<int>(FResults.size()); }
  int GetSelectedCount() const override { return static_cast<int>(FSelected.size()); }
  TIntf<ISearchResult> GetItems(int iIndex) const override;
  TIntf<ISearchResult> GetSelectedItems(int iIndex) const override;
  TIntf<ISearchResult> GetFocused() const override;

  /// Entries that are no results are passed over. Each of these answers whether the selection is
  /// another one now.
  bool Set(const TIntf<IInterfaceList>& iResults);
  bool Remove(const TIntf<IInterfaceList>& iResults);
  /// In the order of the list; what isn't on show is passed over.
  bool Select(const TIntf<IInterfaceList>& iResults);
  /// Puts a refreshed result in the place of the one with its id; no effect if there is none.
  void Replace(const TIntf<ISearchResult>& iResult);

 private:
  void Index();
  bool SetSelected(std::vector<TGuid> iSelected);

  std::vector<TIntf<ISearchResult>> FResults;
  std::unordered_map<TGuid, size_t> FIndexById;
  std::vector<TGuid> FSelected;
};

}  // namespace kk
