#include "views/tree/TWatchlistCategoryMenu.h"

#include "persistence/TWatchlistHandler.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "views/menus/TSubMenuBuilderCategory.h"
#include "views/tree/WatchlistNodes.h"

namespace kk {

namespace {

// An entry behind a line.
TMenuItem& AddBehindLine(TMenuItem& ioMenu, TStringView iCaption) {
  ioMenu.Add(TMenuItem::cSeparator);
  return ioMenu.Add(iCaption);
}

}  // namespace

TWatchlistCategoryMenu::TWatchlistCategoryMenu(TVirtualStringTree& ioTree,
                                               TUpdatableNodes& ioUpdatable)
    : mntmEdit(pmnCategories.Add(_resMenuItemEdit)),
      mntmMove(pmnCategories.Add(_resMenuItemMove)),
      mntmDelete(pmnCategories.Add(_resMenuItemDelete)),
      mntmCategoryNew(AddBehindLine(pmnCategories, _resMenuItemCategoryNew)),
      mntmAddCategoryAtLevel(mntmCategoryNew.Add(_resMenuItemAddCategoryAtLevel)),
      mntmAddCategoryAtSubLevel(mntmCategoryNew.Add(_resMenuItemAddCategoryAtSubLevel)),
      mntmAddCategoryRoot(AddBehindLine(mntmCategoryNew, _resMenuItemAddCategoryRoot)),
      mntmUpdate(AddBehindLine(pmnCategories, _resMenuItemUpdate)),
      mntmUpdateAll(pmnCategories.Add(_resMenuItemUpdateAll)),
      FTree(ioTree),
      FUpdatable(ioUpdatable) {
  mntmEdit.SetDefault(true);
  mntmEdit.SetShortCut(u"F2");
  mntmDelete.SetShortCut(u"Del");
  mntmUpdate.SetShortCut(u"F5");
  FTree.SetPopupMenu(&pmnCategories);
  FTree.SetOnContextPopup(TNotifyEvent::Of<&TWatchlistCategoryMenu::pmnCategoriesPopup>(this));
}

TWatchlistCategoryMenu::~TWatchlistCategoryMenu() {
  FTree.SetPopupMenu(nullptr);
  FTree.SetOnContextPopup({});
}

void TWatchlistCategoryMenu::PrepareContextMenuForNode(const TVirtualNode* iNode) {
  const bool given = iNode != nullptr;
  const bool hasObject = given && iNode->Object() != nullptr;
  const bool isItem = ItemAt(iNode) != nullptr;
  const auto* category = CategoryAt(iNode);
  const bool isUnassigned = IsUnassigned(category);
  const bool isOwnCategory = category != nullptr && !isUnassigned;
  mntmUpdateAll.SetEnabled(TUpdatableNodes::AnySourceCanUpdate());
  mntmMove.SetEnabled(hasObject && !isUnassigned);
  mntmEdit.SetEnabled(isItem || isOwnCategory);
  mntmDelete.SetEnabled(hasObject && !isUnassigned);
  mntmAddCategoryAtLevel.SetEnabled(hasObject && !isItem);
  mntmAddCategoryAtSubLevel.SetEnabled(given && (!hasObject || isOwnCategory));
  mntmUpdate.SetEnabled(FUpdatable.CanUpdateNode(iNode));
}

void TWatchlistCategoryMenu::pmnCategoriesPopup(TObject*) {
  const TVirtualNode* node = FTree.NodeUnderPointer();
  // What the menu offers is looked at anew: a source may have changed its results by itself.
  FUpdatable.ForgetAll();
  PrepareContextMenuForNode(node);
  mntmMove.Clear();
  if (!mntmMove.Enabled()) return;
  TSubMenuBuilderCategory::BuildCategoryMenuForCategory(
      Handler()->LstCategory(), mntmMove,
      TNotifyEvent::Of<&TWatchlistCategoryMenu::DoClickMove>(this), CategoryAt(node), true);
  mntmMove.SetEnabled(mntmMove.GetCount() > 0);
}

void TWatchlistCategoryMenu::DoClickMove(TObject* Sender) {
  const auto& entry = dynamic_cast<const TMenuItem&>(*Sender);
  if (!TSubMenuBuilderCategory::HasTarget(Handler()->LstCategory(), entry)) return;
  if (FOnClickMove) FOnClickMove(Sender);
}

}  // namespace kk
