#pragma once

#include <memory>

#include "model/TLstWatchlistPlugin.h"

namespace kk {

class TLstWatchlistCategory;

/// A node of the tree: child categories, and one group for each source with items here. Owned by
/// exactly one owning list. Every search looks at the node's own groups first and then descends.
/// Main thread.
class TWatchlistCategory : public TObject {
 public:
  /// Categories nested deeper than this are refused where they are made and where a file is read.
  static constexpr int cMaxDepth = 500;

  TWatchlistCategory();
  /// Child categories go first, then the groups.
  ~TWatchlistCategory() override;

  /// The all-zero id marks the category for everything that belongs nowhere else.
  const TGuid& Id() const { return FID; }
  void SetId(const TGuid& iId);
  /// Not unique by construction; see TLstWatchlistCategory::MakeUniqueName.
  const TString& Name() const { return FName; }
  void SetName(TStringView iName) { FName = iName; }
  TStringList& Description() { return FDescription; }
  const TStringList& Description() const { return FDescription; }
  /// Copies the lines.
  void SetDescription(const TStringList& iLines) { FDescription.Assign(iLines); }
  /// Whether the node stands expanded in the tree view; stored with the category.
  bool Expanded() const { return FExpanded; }
  void SetExpanded(bool iExpanded) { FExpanded = iExpanded; }
  TLstWatchlistCategory& LstCategory() const { return *FLstCategory; }
  TLstWatchlistPlugin& LstPlugin() const { return *FLstPlugin; }

  TWatchlistItem* FindItemById(const TGuid& iItemId) const;
  /// Appends the items of that source, in their order, to a list that borrows.
  void GetItemsByPluginId(const TGuid& iPluginId, TLstWatchlistItem& ioLst, bool iRecursive) const;
  bool DeleteItemById(const TGuid& iItemId) { return RemoveItemById(iItemId) != nullptr; }
  /// The group stays even if it becomes empty.
  std::unique_ptr<TWatchlistItem> RemoveItemById(const TGuid& iItemId);
  void FindEmptyPlugins(TLstWatchlistPlugin& ioLst) const;
  /// By the object, not its id; frees the group and its items.
  bool DeletePlugin(TWatchlistPlugin& iGroup);
  /// True at the first stored result of that source that says it is the same as the given one.
  /// Items without a result are passed over.
  bool HasSearchResult(const TGuid& iPluginId, const TIntf<ISearchResult>& iResult) const;
  /// That stored result; empty if there is none.
  TIntf<ISearchResult> FindSameSearchResult(const TGuid& iPluginId,
                                            const TIntf<ISearchResult>& iResult) const;
  TWatchlistPlugin* FindPluginByItemId(const TGuid& iItemId) const;
  TWatchlistCategory* FindCategoryByItemId(const TGuid& iItemId);
  /// Appends all groups to a list that borrows.
  void GetPlugins(TLstWatchlistPlugin& ioLst) const;
  /// Views ask at every repaint: the recursive count is kept until something below has changed.
  int GetItemCount(bool iRecursive) const;
  /// Items, groups or categories below have come or gone. Only the lists below call it.
  void ForgetItemCount();

  /// The owning list in which the category hangs, if it does, and where in it.
  TLstWatchlistCategory* List() const { return FPlace.List; }
  const TTreePlace<TLstWatchlistCategory>& Place() const { return FPlace; }

 private:
  friend class TLstTree<TWatchlistCategory, TLstWatchlistCategory>;
  friend class TTreeIndex<TWatchlistCategory>;

  TGuid FID;
  TString FName;
  TStringList FDescription;
  bool FExpanded = false;
  // Recursive; -1 while it is not known, and then it is not known of the categories above either.
  mutable int FItemCount = -1;
  std::unique_ptr<TLstWatchlistCategory> FLstCategory;
  std::unique_ptr<TLstWatchlistPlugin> FLstPlugin;
  TTreePlace<TLstWatchlistCategory> FPlace;
  TTreeIndexLink<TWatchlistCategory> FIndexLink;
};

}  // namespace kk
