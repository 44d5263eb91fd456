#include "views/TWatchlistCategoryCommands.h"

#include <algorithm>

#include "host/base/Guard.h"
#include "reminders/TLstRemindItemSync.h"
#include "views/WatchlistModel.h"
#include "views/WatchlistQuestions.h"

namespace kk {

namespace {

// 1 for a category of the top level.
int DepthOf(const TWatchlistCategory* iCategory) {
  int depth = 0;
  for (; iCategory != nullptr; iCategory = iCategory->List()->Parent()) ++depth;
  return depth;
}

// 1 for a category without children.
int HeightOf(const TWatchlistCategory& iCategory) {
  int height = 0;
  for (const TWatchlistCategory* child : iCategory.LstCategory()) {
    height = std::max(height, HeightOf(*child));
  }
  return height + 1;
}

void CheckDepth(const TWatchlistCategory* iParent, int iHeight) {
  if (DepthOf(iParent) + iHeight <= TWatchlistCategory::cMaxDepth) return;
  throw Exception(Format(_resRefusedTooDeep, {TWatchlistCategory::cMaxDepth}));
}

}  // namespace

bool TWatchlistCategoryCommands::IsUnassigned(const TWatchlistCategory& iCategory) {
  return SameGuid(iCategory.Id(), cEmptyGuid);
}

bool TWatchlistCategoryCommands::IsInSubtree(const TWatchlistCategory& iCategory,
                                             const TWatchlistCategory& iOther) {
  const TWatchlistCategory* category = &iCategory;
  while (category != nullptr && category != &iOther) category = category->List()->Parent();
  return category != nullptr;
}

TString TWatchlistCategoryCommands::ProposeName() {
  return RootCategories().MakeUniqueName(_resNewCategoryName);
}

bool TWatchlistCategoryCommands::NameExists(TStringView iOldName, TStringView iName) {
  // A change of case alone of a name at the top level finds the category itself and is refused.
  return iName != iOldName && RootCategories().IndexOfName(iName) >= 0;
}

void TWatchlistCategoryCommands::CheckName(TStringView iOldName, TStringView iName) {
  if (Trim(iName).empty()) throw Exception(_resRefusedEmptyName);
  if (NameExists(iOldName, iName)) throw Exception(Format(_resCategoryNameExists, {iName}));
}

void TWatchlistCategoryCommands::CheckEditable(const TWatchlistCategory& iCategory) {
  if (IsUnassigned(iCategory)) throw Exception(_resRefusedUnassigned);
}

void TWatchlistCategoryCommands::CheckPlace(const TWatchlistCategory* iParent) {
  if (iParent != nullptr) CheckEditable(*iParent);
  CheckDepth(iParent, 1);
}

TWatchlistCategory& TWatchlistCategoryCommands::AddCategory(TWatchlistCategory* iParent,
                                                            TStringView iName,
                                                            const TStringList& iDescription) {
  CheckPlace(iParent);
  CheckName(ProposeName(), iName);
  auto category = std::make_unique<TWatchlistCategory>();
  category->SetName(iName);
  category->SetDescription(iDescription);
  category->SetId(NewGuid());
  TLstWatchlistCategory& list = iParent != nullptr ? iParent->LstCategory() : RootCategories();
  TWatchlistCategory& added = list.Add(std::move(category));
  FSeams.View.AddCategoryToTree(added);
  return added;
}

void TWatchlistCategoryCommands::RenameCategory(TWatchlistCategory& iCategory, TStringView iName) {
  CheckEditable(iCategory);
  CheckName(iCategory.Name(), iName);
  iCategory.SetName(iName);
  FSeams.View.CategoryChanged(iCategory);
}

void TWatchlistCategoryCommands::DescribeCategory(TWatchlistCategory& iCategory,
                                                  const TStringList& iLines) {
  CheckEditable(iCategory);
  iCategory.SetDescription(iLines);
  FSeams.View.CategoryChanged(iCategory);
}

void TWatchlistCategoryCommands::DoMoveCategory(TWatchlistCategory* iTarget,
                                                TWatchlistCategory& iCategory) {
  if (iTarget == &iCategory) return;
  CheckEditable(iCategory);
  if (iTarget != nullptr) CheckEditable(*iTarget);
  if (iTarget != nullptr && IsInSubtree(*iTarget, iCategory)) {
    throw Exception(_resRefusedIntoItself);
  }
  CheckDepth(iTarget, HeightOf(iCategory));
  TLstWatchlistCategory& list = iTarget != nullptr ? iTarget->LstCategory() : RootCategories();
  list.Add(iCategory.List()->Extract(iCategory));
  FSeams.View.MoveNode(iCategory, iTarget);
}

bool TWatchlistCategoryCommands::DeleteCategory(TWatchlistCategory& iCategory) {
  CheckEditable(iCategory);
  const bool empty =
      iCategory.LstCategory().GetCount() == 0 && iCategory.LstPlugin().GetCount() == 0;
  const TGuid id = iCategory.Id();
  if (!AskDeleteCategory(empty)) return false;
  // Other events have come in while the question stood.
  TWatchlistCategory* category = RootCategories().FindCategoryById(id);
  if (category == nullptr) return false;
  DeleteReminders(*category);
  MarkAllChanged();
  FSeams.View.DeleteNodeFromTree(*category);
  RootCategories().DeleteCategory(*category);
  return true;
}

void TWatchlistCategoryCommands::DeleteReminders(const TWatchlistCategory& iCategory) {
  // Unlike a delete from a list: an appointment stays in the calendar, and nothing is logged.
  TLstWatchlistPlugin groups(false);
  iCategory.GetPlugins(groups);
  for (const TWatchlistPlugin* group : groups) {
    for (const TWatchlistItem* item : group->LstItem()) {
      Guarded(u"DeleteBySearchResultId",
              [item] { Handler()->LstRemind().DeleteBySearchResultId(item->SearchResultId()); });
    }
  }
}

void TWatchlistCategoryCommands::MarkAllChanged() {
  // Looks like a mistake and is required: every source that has an item anywhere in the tree is
  // marked, not just those of the category. The next save writes more than it had to.
  TLstWatchlistPlugin groups(false);
  RootCategories().GetPlugins(groups);
  for (const TWatchlistPlugin* group : groups) {
    if (group->LstItem().GetCount() == 0) continue;
    TWatchlistIntegration* integration = FindIntegration(group->GetId());
    if (integration == nullptr) continue;
    integration->SetChangedSearchResults(true);
    integration->SetChangedItems(true);
  }
}

}  // namespace kk
