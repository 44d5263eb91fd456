#include "views/TWatchlistPanesView.h"

#include "host/base/Guard.h"

namespace kk {

void TWatchlistPanesView::BuildCategoriesTree(bool iKeepSelection) {
  FPanes.Tree.BuildCategoriesTree(iKeepSelection);
  FPanes.Centre.ShowWhetherEmpty();
}

void TWatchlistPanesView::AddCategoryToTree(TWatchlistCategory& iCategory) {
  TWatchlistCategoryTree& tree = FPanes.Tree;
  TWatchlistCategory* const parent = iCategory.List()->Parent();
  TVirtualNode* const parentNode = tree.GetNodeByObj(parent);
  if (parent != nullptr && parentNode == nullptr) return;
  tree.SelectNode(tree.AddCategoryToTree(parentNode, iCategory));
  tree.SortTree();
}

void TWatchlistPanesView::CategoryChanged(TWatchlistCategory& iCategory) {
  FPanes.Tree.RepaintNode(iCategory);
  RefreshSelectedCategory(iCategory);
}

void TWatchlistPanesView::AddPluginToTree(TWatchlistCategory& iCategory, TWatchlistPlugin& iGroup) {
  TVirtualNode* const node = FPanes.Tree.GetNodeByObj(&iCategory);
  if (node != nullptr) FPanes.Tree.AddPluginToTree(node, iGroup);
  if (FPanes.Tree.CurrentCategory() == &iCategory) FPanes.Centre.ShowCategory(&iCategory);
}

void TWatchlistPanesView::MoveNode(TObject& iObject, TObject* iNewParent) {
  FPanes.Tree.MoveNode(iObject, iNewParent);
}

void TWatchlistPanesView::DeleteNodeFromTree(TObject& iObject) {
  FPanes.Tree.DeleteNodeFromTree(&iObject);
}

void TWatchlistPanesView::RefreshSelectedCategory(TWatchlistCategory& iCategory) {
  TExplorerBarWatchlist* const bar = FPanes.ExplorerBar();
  if (bar == nullptr || bar->GetCurrentCategory() != &iCategory) return;
  FPanes.Tree.ShowInExplorerBar(&iCategory);
}

void TWatchlistPanesView::ShowFocusedResult(const TIntf<IWatchlistIntegration>& iIntegration) {
  const TTab* const tab = iIntegration ? FPanes.FindTab(iIntegration) : FPanes.CurrentTab();
  const bool shown =
      Guarded(u"ShowFocusedResult", [&] { FPanes.SetCurrentSearchResult(FocusedResultOf(tab)); });
  if (!shown) Guarded(u"ShowNoResult", [this] { ShowNoResult(); });
}

TIntf<ISearchResult> TWatchlistPanesView::FocusedResult() const {
  return FocusedResultOf(FPanes.CurrentTab());
}

void TWatchlistPanesView::RefreshSearchResult(const TIntf<ISearchResult>& iResult) {
  if (TTabControlKK* tabs = FPanes.TabControl()) tabs->RefreshSearchResult(iResult);
}

void TWatchlistPanesView::RefreshCurrentSearchResultIfEquals(const TIntf<ISearchResult>& iResult) {
  if (auto* bar = FPanes.ExplorerBar()) bar->RefreshCurrentSearchResultIfEquals(iResult);
}

void TWatchlistPanesView::RepaintNode(TWatchlistItem& iItem) { FPanes.Tree.RepaintNode(iItem); }

void TWatchlistPanesView::RefreshRowOfReminder(const TGuid& iResultId) {
  const TTab* const tab = FPanes.CurrentTab();
  const TIntf<ISearchResults> results = tab != nullptr ? tab->GetSearchResults() : nullptr;
  for (int i = 0; results && i < results->GetCount(); ++i) {
    const TIntf<ISearchResult> result = results->GetItems(i);
    if (!result || !SameGuid(result->GetId(), iResultId)) continue;
    tab->Visualization()->RefreshResult(result);
    return;
  }
}

void TWatchlistPanesView::RefreshDetailsOfReminder(const TGuid& iResultId) {
  TExplorerBarWatchlist* const bar = FPanes.ExplorerBar();
  const TIntf<ISearchResult> result = bar != nullptr ? bar->GetCurrentSearchResult() : nullptr;
  if (result && SameGuid(result->GetId(), iResultId)) bar->RefreshCurrentSearchResult();
}

void TWatchlistPanesView::ShowNoResult() { FPanes.SetCurrentSearchResult({}); }

void TWatchlistPanesView::DoUpdaterProgress(TObject* Sender) { FStatus.DoUpdaterProgress(Sender); }

void TWatchlistPanesView::DoUpdaterAfterAdd(TObject* Sender, int iAddCount) {
  FStatus.DoUpdaterAfterAdd(Sender, iAddCount);
}

void TWatchlistPanesView::UpdateTakenOut() { FStatus.UpdateTakenOut(); }

}  // namespace kk
