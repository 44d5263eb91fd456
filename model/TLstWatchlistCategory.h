#pragma once

#include "model/TWatchlistCategory.h"

namespace kk {

/// Categories in order: the root of the tree, the children of every node, and flat work lists,
/// which borrow. Searches descend in list order and stop at the first hit. Main thread.
class TLstWatchlistCategory : public TLstTree<TWatchlistCategory, TLstWatchlistCategory> {
 public:
  /// iParent: the category whose children these are, if they are some.
  explicit TLstWatchlistCategory(bool iOwnsObjects, TWatchlistCategory* iParent = nullptr);
  ~TLstWatchlistCategory() override;

  TWatchlistCategory& Add(std::unique_ptr<TWatchlistCategory> iCategory) {
    return Append(std::move(iCategory));
  }
  TWatchlistCategory& Add(TWatchlistCategory& iCategory) { return Append(iCategory); }
  /// An index out of range raises EListError.
  TWatchlistCategory& GetItems(int iIndex) const { return At(iIndex); }
  /// This level only, first match, -1 for none.
  int IndexOfId(const TGuid& iId) const;
  int IndexOfName(TStringView iName) const;
  /// This level first, then each child's subtree in order: a shallower hit wins.
  TWatchlistCategory* FindCategoryById(const TGuid& iId) const;
  TWatchlistCategory* FindCategoryByName(TStringView iName) const;
  TWatchlistItem* FindItemById(const TGuid& iItemId) const;
  TWatchlistCategory* FindCategoryByItemId(const TGuid& iItemId) const;
  TWatchlistPlugin* FindPluginByItemId(const TGuid& iItemId) const;
  /// Appends the categories, in pre-order with the flag, to a list that borrows.
  void GetCategories(TLstWatchlistCategory& ioLst, bool iRecursive) const;
  void GetItemsByPluginId(const TGuid& iPluginId, TLstWatchlistItem& ioLst, bool iRecursive) const;
  void GetPlugins(TLstWatchlistPlugin& ioLst) const;
  bool DeleteItemById(const TGuid& iItemId) { return RemoveItemById(iItemId) != nullptr; }
  std::unique_ptr<TWatchlistItem> RemoveItemById(const TGuid& iItemId);
  void FindEmptyPlugins(TLstWatchlistPlugin& ioLst) const;
  bool DeletePlugin(TWatchlistPlugin& iGroup);
  bool HasSearchResult(const TGuid& iPluginId, const TIntf<ISearchResult>& iResult) const;
  TIntf<ISearchResult> FindSameSearchResult(const TGuid& iPluginId,
                                            const TIntf<ISearchResult>& iResult) const;
  /// Deletes every group without items of the whole tree: of the model's root, on purpose, whatever
  /// list it is called on. Answers whether there was one.
  bool DeleteEmptyPlugins();
  /// "name 1", "name 2", ...: the first that no category below this list bears. The bare name is
  /// never the answer.
  TString MakeUniqueName(TStringView iName) const;
  /// By the object; frees the subtree.
  bool DeleteCategory(TWatchlistCategory& iCategory);
  /// Takes the first category with this id out and hands it over with its subtree; empty for none.
  std::unique_ptr<TWatchlistCategory> RemoveCategoryById(const TGuid& iId);

  TWatchlistCategory* Parent() const { return FParent; }

 protected:
  void Attached(TWatchlistCategory& iCategory) override;
  void Detached(TWatchlistCategory& iCategory) override;

 private:
  TWatchlistCategory* FParent;
};

}  // namespace kk
