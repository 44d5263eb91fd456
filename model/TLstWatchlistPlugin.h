#pragma once

#include "model/TWatchlistPlugin.h"

namespace kk {

class TWatchlistCategory;

/// Groups in order. Lists of the tree own theirs; work lists borrow. Main thread.
class TLstWatchlistPlugin : public TLstTree<TWatchlistPlugin, TLstWatchlistPlugin> {
 public:
  /// iCategory: the category that the list belongs to, if it hangs in one.
  explicit TLstWatchlistPlugin(bool iOwnsObjects, TWatchlistCategory* iCategory = nullptr);
  ~TLstWatchlistPlugin() override;

  TWatchlistPlugin& Add(std::unique_ptr<TWatchlistPlugin> iGroup) {
    return Append(std::move(iGroup));
  }
  TWatchlistPlugin& Add(TWatchlistPlugin& iGroup) { return Append(iGroup); }
  /// An index out of range raises EListError.
  TWatchlistPlugin& GetItems(int iIndex) const { return At(iIndex); }
  /// The first group of this source; -1 or null if there is none.
  int IndexOfId(const TGuid& iPluginId) const;
  TWatchlistPlugin* FindById(const TGuid& iPluginId) const;
  /// The first group of this source, which is made at the end if there is none. The list owns.
  TWatchlistPlugin& FindOrAdd(const TIntf<IWatchlistIntegration>& iIntegration);
  /// Appends every group without items, in order, to a list that borrows.
  void FindEmptyPlugins(TLstWatchlistPlugin& ioLst) const;
  /// The first item with this id over the groups in order; null if there is none.
  TWatchlistItem* FindItemById(const TGuid& iItemId) const;
  /// Takes that item out of its group and hands it over; empty if there is none.
  std::unique_ptr<TWatchlistItem> RemoveItemById(const TGuid& iItemId);
  bool DeleteItemById(const TGuid& iItemId) { return RemoveItemById(iItemId) != nullptr; }

  TWatchlistCategory* Category() const { return FCategory; }

 protected:
  void Attached(TWatchlistPlugin& iGroup) override;
  void Detached(TWatchlistPlugin& iGroup) override;

 private:
  TWatchlistCategory* FCategory;
};

}  // namespace kk
