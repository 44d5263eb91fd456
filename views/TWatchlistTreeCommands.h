#pragma once

#include "views/TWatchlistCommands.h"
#include "views/TWatchlistPanes.h"

namespace kk {

/// What the user can do with the category tree: its menu, its buttons, the double click, and the
/// links of the explorer bar's category. All but the root entry act on the first selected node.
/// What fails goes to the user's door, unless it says so. Main thread.
class TWatchlistTreeCommands : public TObject {
 public:
  /// Both are borrowed, and live longer. Binds the tree's events.
  TWatchlistTreeCommands(TWatchlistPanes& ioPanes, TWatchlistCommands& ioCommands);

  /// The sender is the entry; which one decides where the new category stands.
  void mntmAddClick(TObject* Sender);
  void mntmEditClick(TObject* Sender);
  void mntmDeleteClick(TObject* Sender);
  void mntmUpdateClick(TObject* Sender);
  void mntmUpdateAllClick(TObject* Sender);
  void btnNewGroupClick(TObject* Sender);
  /// The sender is an entry below "verschieben nach"; its tag is the target, null for the top.
  void DoClickMove(TObject* Sender);
  /// On an item: shows its group and its row. A failure is swallowed.
  void vstCategoriesDblClick(TObject* Sender);

  /// The sender is the category. Failures are swallowed.
  void DoClickExplorerbarCategoryEdit(TObject* Sender);
  void DoClickExplorerbarCategoryUpdate(TObject* Sender);

 private:
  void BindTree();
  void AddCategory(TVirtualNode* iPlace);
  void EditCategory(const TWatchlistCategory& iCategory);
  void EditNote(const TWatchlistItem& iItem);
  void MoveItem(TWatchlistCategory* iTarget, TWatchlistItem& iItem);
  void ShowItem(TVirtualNode& iNode);
  /// Leaves the focus alone. False if the category has no node.
  bool SelectCategory(TObject* iCategory);

  TWatchlistPanes& FPanes;
  TWatchlistCategoryTree& FTree;
  TWatchlistCommands& FCommands;
};

}  // namespace kk
