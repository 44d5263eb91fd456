#pragma once

#include "host/controls/TButton.h"
#include "host/controls/TPanel.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "views/tree/IWatchlistPanes.h"
#include "views/tree/TWatchlistCategoryMenu.h"
#include "views/tree/WatchlistNodes.h"

namespace kk {

/// The left pane of the section: the tree of categories, groups and items, its context menu and the
/// three buttons below it. It is a view of the handler's model, owns none of it, and is told of
/// each change. A selection in it decides what the other panes show. Main thread; the handler lives
/// longer.
class TWatchlistCategoryTree : public TObject {
 public:
  /// Both are borrowed.
  TWatchlistCategoryTree(TControl* iParent, IWatchlistPanes& ioPanes);

  /// Anew from the model. With the flag, the centre pane is emptied and what was selected is
  /// selected again, if it is still there. What a list raises while it is hidden passes on; the
  /// tree is built anew even so.
  void BuildCategoriesTree(bool iKeepSelection);
  /// Each adds a node at the end of the parent's children, or of the top level, with all below it.
  TVirtualNode& AddCategoryToTree(TVirtualNode* iParent, TWatchlistCategory& iCategory);
  TVirtualNode& AddPluginToTree(TVirtualNode* iParent, TWatchlistPlugin& iGroup);
  TVirtualNode& AddItemToTree(TVirtualNode* iParent, TWatchlistItem& iItem);
  /// Does nothing if the object has no node. The object is not touched, and must be whole. What the
  /// other panes show of it goes; if the focus was in it, a neighbour gets that. What the views
  /// raise at that passes on; the node has gone even so.
  void DeleteNodeFromTree(const TObject* iObject);
  /// To the end of another object's children, or with null of the top level. Does nothing if one of
  /// them has no node.
  void MoveNode(const TObject& iObject, const TObject* iNewParent);
  /// The object reads otherwise.
  void RepaintNode(const TObject& iObject);
  /// After adds and moves: the tree does not sort by itself.
  void SortTree() { vstCategories.SortTree(); }
  /// The section goes: nothing is shown any more.
  void Clear();

  /// The node that refers to this very object, the first one in display order; null for none. As
  /// fast in a large tree as in a small one.
  TVirtualNode* GetNodeByObj(const TObject* iObject) const;
  TVirtualNode* GetSelectedNode() const { return vstCategories.SelectedNode(); }
  TWatchlistCategory* GetCategoryFromSelectedNode() const;
  /// Selects and focuses the node, with all that follows from that, and lets it be seen.
  void SelectNode(TVirtualNode& iNode);
  /// Keeps the category of the selection in the settings, and selects it again: if it is gone, the
  /// unassigned one.
  void StoreSelection() const;
  void RestoreSelection();

  bool CanUpdateNode(const TVirtualNode* iNode) { return FUpdatable.CanUpdateNode(iNode); }
  /// What menu and buttons allow with the node, which may be absent.
  void PrepareContextMenuForNode(const TVirtualNode* iNode) {
    Menu.PrepareContextMenuForNode(iNode);
  }
  void SwitchCategoryControl(const TVirtualNode* iNode);

  /// Fills the centre pane with the groups of the category, or empties it. The category that is on
  /// show already is shown anew only with the flag. What the views of the sources raise passes on.
  void ShowCategory(TWatchlistCategory* iCategory, bool iForce);
  /// The category on show; null for none.
  TWatchlistCategory* CurrentCategory() const { return FCurrentCategory; }
  /// The explorer bar tells about the category, or none, as it is now.
  void ShowInExplorerBar(TWatchlistCategory* iCategory);
  /// Called when the tab changes. Looks like a mistake and is required: nothing ever comes of it.
  void SelectNodeByIntegration(const TIntf<IWatchlistIntegration>& iIntegration);
  /// What a node with the focus means for the other panes; null for none.
  void ShowNode(const TVirtualNode* iNode);

  /// Takes over which counts are shown.
  void DoChangeIniFile(TObject* Sender);

  TPanel pnlCategories;
  TVirtualStringTree vstCategories{&pnlCategories, u"vstCategories"};
  TPanel pnlCategoryButtons{&pnlCategories, u"pnlCategoryButtons"};
  TButton btnNewGroup{&pnlCategoryButtons, u"btnNewGroup", _resCategoriesNew};
  TButton btnDeleteGroup{&pnlCategoryButtons, u"btnDeleteGroup", _resCategoriesDelete};
  TButton btnRenameGroup{&pnlCategoryButtons, u"btnRenameGroup", _resCategoriesRename};

  TWatchlistCategoryMenu Menu{vstCategories, FUpdatable};

 private:
  void BindTree();
  void Rebuild();
  void ShowGroups(TWatchlistCategory* iCategory, bool iForce);
  void FillTabs(const TWatchlistCategory& iCategory);
  void vstCategoriesGetText(TObject* Sender, TVirtualNode& iNode, TString& oText);
  void vstCategoriesGetHint(TObject* Sender, TVirtualNode& iNode, TString& oHint);
  void vstCategoriesGetImageIndex(TObject* Sender, TVirtualNode& iNode, int& oImage);
  void vstCategoriesCompareNodes(TObject* Sender, TVirtualNode& iA, TVirtualNode& iB, int& oResult);
  void vstCategoriesFocusChanged(TObject* Sender);
  void vstCategoriesExpanded(TObject* Sender, TVirtualNode& iNode);
  void vstCategoriesCollapsed(TObject* Sender, TVirtualNode& iNode);

  IWatchlistPanes& FPanes;
  TUpdatableNodes FUpdatable;
  bool FShowItemCountInTree = false;
  bool FShowItemCountInTreeRecursive = false;
  bool FShowCategoryRan = false;
  TWatchlistCategory* FCurrentCategory = nullptr;
};

}  // namespace kk
