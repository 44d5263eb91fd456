#pragma once

#include "host/controls/TVirtualStringTree.h"
#include "views/tree/TUpdatableNodes.h"

namespace kk {

/// The context menu of the category tree: what of it is enabled for a node, and where a marked
/// entry can be moved. The section's commands bind the clicks. Main thread.
class TWatchlistCategoryMenu : public TObject {
 public:
  /// Both are borrowed; the tree gets the menu.
  TWatchlistCategoryMenu(TVirtualStringTree& ioTree, TUpdatableNodes& ioUpdatable);
  ~TWatchlistCategoryMenu() override;

  /// Enables what can be done with the node, which may be absent. What does not depend on a node,
  /// a new category at the root, is always enabled.
  void PrepareContextMenuForNode(const TVirtualNode* iNode);
  /// The clicked entry is the sender; its tag is the target, null for the top level. No event comes
  /// for a target that went while the menu stood open.
  void SetOnClickMove(TNotifyEvent iEvent) { FOnClickMove = iEvent; }

  TMenuItem pmnCategories;
  TMenuItem& mntmEdit;
  TMenuItem& mntmMove;
  TMenuItem& mntmDelete;
  TMenuItem& mntmCategoryNew;
  TMenuItem& mntmAddCategoryAtLevel;
  TMenuItem& mntmAddCategoryAtSubLevel;
  TMenuItem& mntmAddCategoryRoot;
  TMenuItem& mntmUpdate;
  TMenuItem& mntmUpdateAll;

 private:
  void pmnCategoriesPopup(TObject* Sender);
  void DoClickMove(TObject* Sender);

  TVirtualStringTree& FTree;
  TUpdatableNodes& FUpdatable;
  TNotifyEvent FOnClickMove;
};

}  // namespace kk
