#include "views/tree/TWatchlistCategoryTree.h"

#include "host/base/WithCleanup.h"
#include "host/contract/IWatchlistVisualization.h"
#include "host/controls/TForm.h"
#include "persistence/TWatchlistHandler.h"
#include "settings/TIniFileSectionWatchlist.h"

namespace kk {

namespace {

constexpr int cMinPaneWidth = 100;

TLstWatchlistCategory& RootCategories() { return Handler()->LstCategory(); }

}  // namespace

TWatchlistCategoryTree::TWatchlistCategoryTree(TControl* iParent, IWatchlistPanes& ioPanes)
    : pnlCategories(iParent, u"pnlCategories", _resCategoriesCaption), FPanes(ioPanes) {
  pnlCategories.SetMinSize(cMinPaneWidth, 0);
  pnlCategories.SetHasSplitter(true);
  pnlCategoryButtons.SetArrangement(TArrangement::arRow);
  vstCategories.SetStretches(true);
  vstCategories.SetImages(NodeImages());
  for (TButton* button : {&btnNewGroup, &btnDeleteGroup, &btnRenameGroup}) {
    button->SetEnabled(false);
  }
  BindTree();
}

void TWatchlistCategoryTree::BindTree() {
  using TSelf = TWatchlistCategoryTree;
  vstCategories.SetOnGetText(TNodeTextEvent::Of<&TSelf::vstCategoriesGetText>(this));
  vstCategories.SetOnGetHint(TNodeTextEvent::Of<&TSelf::vstCategoriesGetHint>(this));
  vstCategories.SetOnGetImageIndex(TNodeImageEvent::Of<&TSelf::vstCategoriesGetImageIndex>(this));
  vstCategories.SetOnCompareNodes(TCompareNodesEvent::Of<&TSelf::vstCategoriesCompareNodes>(this));
  vstCategories.SetOnFocusChanged(TNotifyEvent::Of<&TSelf::vstCategoriesFocusChanged>(this));
  vstCategories.SetOnExpanded(TNodeEvent::Of<&TSelf::vstCategoriesExpanded>(this));
  vstCategories.SetOnCollapsed(TNodeEvent::Of<&TSelf::vstCategoriesCollapsed>(this));
}

void TWatchlistCategoryTree::BuildCategoriesTree(bool iKeepSelection) {
  // It may have died with what was imported: nothing but its identity is looked at.
  const TVirtualNode* const selectedNode = GetSelectedNode();
  const TObject* const selected = selectedNode == nullptr ? nullptr : selectedNode->Object();
  // A list that fails to hide does not keep the nodes of what has died.
  WithCleanup(
      u"TWatchlistCategoryTree.BuildCategoriesTree",
      [&] {
        if (iKeepSelection) ShowCategory(nullptr, true);
      },
      [this] { Rebuild(); });
  TVirtualNode* const node =
      iKeepSelection && selected != nullptr ? GetNodeByObj(selected) : nullptr;
  if (node == nullptr) return;
  // An item by itself shows nothing: its group brings category and tab.
  if (ItemAt(node) != nullptr) SelectNode(*node->Parent());
  SelectNode(*node);
}

void TWatchlistCategoryTree::Rebuild() {
  const TVirtualStringTree::TUpdate update(vstCategories);
  Clear();
  for (TWatchlistCategory* category : RootCategories()) AddCategoryToTree(nullptr, *category);
  SwitchCategoryControl(nullptr);
  SortTree();
}

TVirtualNode& TWatchlistCategoryTree::AddCategoryToTree(TVirtualNode* iParent,
                                                        TWatchlistCategory& iCategory) {
  TVirtualNode& node = vstCategories.AddChild(iParent, &iCategory);
  for (TWatchlistCategory* child : iCategory.LstCategory()) AddCategoryToTree(&node, *child);
  for (TWatchlistPlugin* group : iCategory.LstPlugin()) AddPluginToTree(&node, *group);
  vstCategories.SetExpanded(node, iCategory.Expanded());
  return node;
}

TVirtualNode& TWatchlistCategoryTree::AddPluginToTree(TVirtualNode* iParent,
                                                      TWatchlistPlugin& iGroup) {
  TVirtualNode& node = vstCategories.AddChild(iParent, &iGroup);
  for (TWatchlistItem* item : iGroup.LstItem()) AddItemToTree(&node, *item);
  vstCategories.SetExpanded(node, iGroup.Expanded());
  return node;
}

TVirtualNode& TWatchlistCategoryTree::AddItemToTree(TVirtualNode* iParent, TWatchlistItem& iItem) {
  FUpdatable.Forget(iItem);
  return vstCategories.AddChild(iParent, &iItem);
}

void TWatchlistCategoryTree::DeleteNodeFromTree(const TObject* iObject) {
  TVirtualNode* const node = iObject == nullptr ? nullptr : GetNodeByObj(iObject);
  if (node == nullptr) return;
  const auto ifGoes = [&](TWatchlistCategory* iCategory) {
    const TVirtualNode* other = iCategory == nullptr ? nullptr : GetNodeByObj(iCategory);
    return other != nullptr && other->IsIn(*node) ? iCategory : nullptr;
  };
  const TWatchlistCategory* const onShow = ifGoes(FCurrentCategory);
  const TWatchlistCategory* const inExplorerBar = ifGoes(FPanes.GetCurrentCategory());
  WithCleanup(
      u"TWatchlistCategoryTree.DeleteNodeFromTree", [&] { vstCategories.DeleteNode(*node); },
      [&] {
        // The neighbour that has got the focus may have replaced them.
        if (onShow != nullptr && FCurrentCategory == onShow) ShowCategory(nullptr, false);
        if (inExplorerBar != nullptr && FPanes.GetCurrentCategory() == inExplorerBar) {
          ShowInExplorerBar(nullptr);
        }
      });
}

void TWatchlistCategoryTree::MoveNode(const TObject& iObject, const TObject* iNewParent) {
  TVirtualNode* const node = GetNodeByObj(&iObject);
  TVirtualNode* const parent = iNewParent == nullptr ? nullptr : GetNodeByObj(iNewParent);
  if (node == nullptr || (iNewParent != nullptr && parent == nullptr)) return;
  vstCategories.MoveTo(*node, parent);
  if (const auto* group = GroupAt(parent)) FUpdatable.Forget(*group);
}

void TWatchlistCategoryTree::RepaintNode(const TObject& iObject) {
  TVirtualNode* const node = GetNodeByObj(&iObject);
  if (node == nullptr) return;
  if (const auto* item = ItemAt(node)) FUpdatable.Forget(*item);
  vstCategories.InvalidateNode(*node);
}

void TWatchlistCategoryTree::Clear() {
  vstCategories.Clear();
  FUpdatable.ForgetAll();
}

TVirtualNode* TWatchlistCategoryTree::GetNodeByObj(const TObject* iObject) const {
  return vstCategories.FindByObject(iObject);
}

TWatchlistCategory* TWatchlistCategoryTree::GetCategoryFromSelectedNode() const {
  return CategoryOfNode(GetSelectedNode());
}

void TWatchlistCategoryTree::SelectNode(TVirtualNode& iNode) {
  vstCategories.SetSelectedNode(&iNode);
  vstCategories.SetFocusedNode(&iNode);
  vstCategories.ScrollIntoView(iNode);
}

void TWatchlistCategoryTree::StoreSelection() const {
  const TWatchlistCategory* category = GetCategoryFromSelectedNode();
  TIniFileSectionWatchlist().SetLastSelected(category == nullptr ? TString()
                                                                 : GUIDToString(category->Id()));
}

void TWatchlistCategoryTree::RestoreSelection() {
  TGuid id;
  TWatchlistCategory* category = nullptr;
  if (TryStringToGuid(TIniFileSectionWatchlist().GetLastSelected(), id)) {
    category = RootCategories().FindCategoryById(id);
  }
  if (category == nullptr) category = RootCategories().FindCategoryById(cEmptyGuid);
  TVirtualNode* const node = category == nullptr ? nullptr : GetNodeByObj(category);
  if (node != nullptr) SelectNode(*node);
}

void TWatchlistCategoryTree::SwitchCategoryControl(const TVirtualNode* iNode) {
  PrepareContextMenuForNode(iNode);
  btnNewGroup.SetEnabled(Menu.mntmAddCategoryAtLevel.Enabled());
  btnDeleteGroup.SetEnabled(Menu.mntmDelete.Enabled());
  btnRenameGroup.SetEnabled(Menu.mntmEdit.Enabled());
}

void TWatchlistCategoryTree::ShowCategory(TWatchlistCategory* iCategory, bool iForce) {
  FShowCategoryRan = true;
  WithCleanup(
      u"TWatchlistCategoryTree.ShowCategory",
      [&] {
        ShowInExplorerBar(iCategory);
        ShowGroups(iCategory, iForce);
      },
      [&] {
        FShowCategoryRan = true;
        if (iCategory != nullptr) FPanes.RestoreExplorerbarDefaultItems();
      });
}

void TWatchlistCategoryTree::ShowGroups(TWatchlistCategory* iCategory, bool iForce) {
  FPanes.CategoryOnShow(iCategory);
  if (iCategory == nullptr || iCategory->LstPlugin().GetCount() == 0) {
    FPanes.HideAll();
    FCurrentCategory = iCategory;
    return;
  }
  if (iCategory != FCurrentCategory) {
    FPanes.HideAll();
  } else if (!iForce) {
    return;
  }
  FillTabs(*iCategory);
  FCurrentCategory = iCategory;
}

void TWatchlistCategoryTree::FillTabs(const TWatchlistCategory& iCategory) {
  FPanes.BeginAdd();
  WithCleanup(
      u"TWatchlistCategoryTree.FillTabs",
      [&] {
        for (const TWatchlistPlugin* group : iCategory.LstPlugin()) {
          const auto view = Supports<IWatchlistVisualization>(group->Integration());
          if (!view) continue;
          FPanes.ShowIntegration(group->Integration());
          view->SetResults(group->LstItem().GetSearchResultsFromItems());
        }
      },
      [&] { FPanes.EndAdd(); });
}

void TWatchlistCategoryTree::ShowInExplorerBar(TWatchlistCategory* iCategory) {
  FPanes.SetSelectedCategory(iCategory, CanUpdateNode(GetNodeByObj(iCategory)));
}

void TWatchlistCategoryTree::SelectNodeByIntegration(
    const TIntf<IWatchlistIntegration>& iIntegration) {
  // A category is on show only once ShowCategory has run, so this is where it always ends: the tree
  // selects a tab, the tabs do not select in the tree. That is required.
  if (FShowCategoryRan || FCurrentCategory == nullptr) return;
  const TVirtualNode* const categoryNode = GetNodeByObj(FCurrentCategory);
  TVirtualNode* node = categoryNode == nullptr ? nullptr : categoryNode->FirstChild();
  for (; node != nullptr; node = node->NextSibling()) {
    const auto* group = GroupAt(node);
    if (group == nullptr || !SameGuid(group->GetId(), iIntegration->GetId())) continue;
    SelectNode(*node);
    return;
  }
}

void TWatchlistCategoryTree::ShowNode(const TVirtualNode* iNode) {
  SwitchCategoryControl(iNode);
  if (ItemAt(iNode) != nullptr) return;
  ShowCategory(CategoryOfNode(iNode), false);
  if (const auto* group = GroupAt(iNode)) FPanes.SelectIntegration(group->Integration());
  if (iNode != nullptr && iNode->Object() == nullptr) btnNewGroup.SetEnabled(true);
}

void TWatchlistCategoryTree::DoChangeIniFile(TObject*) {
  const TIniFileSectionWatchlist ini;
  FShowItemCountInTree = ini.GetShowItemCountInTree();
  FShowItemCountInTreeRecursive = ini.GetShowItemCountInTreeRecursive();
  const TForm* form = vstCategories.Form();
  if (form != nullptr && form->Visible()) vstCategories.Invalidate();
}

void TWatchlistCategoryTree::vstCategoriesGetText(TObject*, TVirtualNode& iNode, TString& oText) {
  oText = NodeText(iNode, {FShowItemCountInTree, FShowItemCountInTreeRecursive});
  if (&iNode != GetSelectedNode() || ItemAt(&iNode) != nullptr || GroupAt(&iNode) != nullptr) {
    return;
  }
  // On purpose: that is how the explorer bar stays current, at each repaint.
  auto* category = CategoryAt(&iNode);
  FPanes.SetSelectedCategory(category, category != nullptr && CanUpdateNode(&iNode));
}

void TWatchlistCategoryTree::vstCategoriesGetHint(TObject*, TVirtualNode& iNode, TString& oHint) {
  oHint = NodeHint(iNode);
}

void TWatchlistCategoryTree::vstCategoriesGetImageIndex(TObject*, TVirtualNode& iNode,
                                                        int& oImage) {
  oImage = NodeImage(iNode);
}

void TWatchlistCategoryTree::vstCategoriesCompareNodes(TObject*, TVirtualNode& iA, TVirtualNode& iB,
                                                       int& oResult) {
  oResult = CompareNodes(iA, iB);
}

void TWatchlistCategoryTree::vstCategoriesFocusChanged(TObject*) {
  ShowNode(vstCategories.FocusedNode());
}

void TWatchlistCategoryTree::vstCategoriesExpanded(TObject*, TVirtualNode& iNode) {
  if (auto* category = CategoryAt(&iNode)) category->SetExpanded(true);
  if (auto* group = GroupAt(&iNode)) group->SetExpanded(true);
}

void TWatchlistCategoryTree::vstCategoriesCollapsed(TObject*, TVirtualNode& iNode) {
  if (auto* category = CategoryAt(&iNode)) category->SetExpanded(false);
  if (auto* group = GroupAt(&iNode)) group->SetExpanded(false);
}

}  // namespace kk
