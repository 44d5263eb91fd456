#pragma once

#include "host/base/IInterfaceList.h"
#include "model/TLstTree.h"
#include "model/TWatchlistItem.h"

namespace kk {

class TWatchlistPlugin;

/// Items in order. Lists of the tree own theirs; work lists borrow. An owning list is entered in
/// the index of items, so that look-ups by id in it, and in the tree above it, take no scan. Main
/// thread.
class TLstWatchlistItem : public TLstTree<TWatchlistItem, TLstWatchlistItem> {
 public:
  /// iGroup: the group that the list belongs to, if it hangs in one.
  explicit TLstWatchlistItem(bool iOwnsObjects, TWatchlistPlugin* iGroup = nullptr);
  ~TLstWatchlistItem() override;

  TWatchlistItem& Add(std::unique_ptr<TWatchlistItem> iItem) { return Append(std::move(iItem)); }
  TWatchlistItem& Add(TWatchlistItem& iItem) { return Append(iItem); }
  /// An index out of range raises EListError.
  TWatchlistItem& GetItems(int iIndex) const { return At(iIndex); }
  /// The first item with this stored id; -1 if there is none. It does not touch search results.
  int IndexOfSearchResultId(const TGuid& iId) const;
  /// Appends each item's result in order, empty ones included.
  void SearchResultsFromItems(IInterfaceList& ioResults) const;
  TIntf<IInterfaceList> GetSearchResultsFromItems() const;

  TWatchlistPlugin* Group() const { return FGroup; }

 protected:
  void Attached(TWatchlistItem& iItem) override;
  void Detached(TWatchlistItem& iItem) override;

 private:
  /// The categories in which the list hangs count anew.
  void ForgetItemCount() const;

  TWatchlistPlugin* FGroup;
};

}  // namespace kk
