#include "views/TWatchlistItemCommands.h"

#include "host/base/Guard.h"
#include "host/contract/IWatchlistVisualization.h"
#include "reminders/TLstRemindItemSync.h"
#include "views/WatchlistModel.h"
#include "views/WatchlistQuestions.h"

namespace kk {

namespace {

void MarkDeleted(TWatchlistIntegration* ioIntegration) {
  if (ioIntegration == nullptr) return;
  ioIntegration->SetChangedSearchResults(true);
  ioIntegration->SetChangedItems(true);
}

void RemoveRows(const TIntf<IWatchlistIntegration>& iIntegration,
                const TIntf<IInterfaceList>& iResults) {
  const auto visualization = Supports<IWatchlistVisualization>(iIntegration);
  if (visualization) visualization->RemoveResults(iResults);
}

// The group again after a question, by what identifies it.
TWatchlistPlugin* FindGroup(const TGuid& iCategoryId, const TGuid& iPluginId) {
  const TWatchlistCategory* category = RootCategories().FindCategoryById(iCategoryId);
  return category == nullptr ? nullptr : category->LstPlugin().FindById(iPluginId);
}

}  // namespace

bool TWatchlistItemCommands::DeleteItem(TWatchlistItem& iItem) {
  const TGuid id = iItem.SearchResultId();
  if (!AskDeleteItems(1)) return false;
  TWatchlistItem* item = RootCategories().FindItemById(id);
  if (item == nullptr) return false;
  TWatchlistPlugin& group = GroupOf(*item);
  TWatchlistCategory& category = CategoryOf(group);
  MarkDeleted(FindIntegration(group.GetId()));
  if (item->SearchResult()) RemoveRows(group.Integration(), ListOf(item->SearchResult()));
  Handler()->LstRemind().DeleteBySearchResultId(id);
  if (group.LstItem().GetCount() == 1) {
    FSeams.View.DeleteNodeFromTree(group);
    RootCategories().DeletePlugin(group);
  } else {
    FSeams.View.DeleteNodeFromTree(*item);
    RootCategories().DeleteItemById(id);
  }
  RefreshSelectedCategory(category);
  return true;
}

bool TWatchlistItemCommands::DeleteGroup(TWatchlistPlugin& iGroup) {
  const TGuid categoryId = CategoryOf(iGroup).Id();
  const TGuid pluginId = iGroup.GetId();
  if (!AskDeleteGroup(iGroup.LstItem().GetCount())) return false;
  TWatchlistPlugin* group = FindGroup(categoryId, pluginId);
  if (group == nullptr) return false;
  TWatchlistCategory& category = CategoryOf(*group);
  for (const TWatchlistItem* item : group->LstItem()) {
    Handler()->LstRemind().DeleteBySearchResultId(item->SearchResultId());
  }
  if (group->LstItem().GetCount() > 0) MarkDeleted(FindIntegration(pluginId));
  FSeams.View.DeleteNodeFromTree(*group);
  RootCategories().DeletePlugin(*group);
  RefreshSelectedCategory(category);
  return true;
}

void TWatchlistItemCommands::RefreshSelectedCategory(TWatchlistCategory& iCategory) {
  Guarded(u"RefreshSelectedCategory", [&] { FSeams.View.RefreshSelectedCategory(iCategory); });
}

bool TWatchlistItemCommands::DoTabDelete(const TIntf<IWatchlistIntegration>& iIntegration,
                                         const TIntf<IInterfaceList>& iResults) {
  if (!Supports<IWatchlistVisualization>(iIntegration)) return false;
  if (iResults->GetCount() == 0 || !AskDeleteItems(iResults->GetCount())) return false;
  DeleteItems(iIntegration, iResults, IdsOf(*iResults));
  return true;
}

void TWatchlistItemCommands::DeleteItems(const TIntf<IWatchlistIntegration>& iIntegration,
                                         const TIntf<IInterfaceList>& iResults,
                                         const std::vector<TGuid>& iIds) {
  TWatchlistIntegration* integration = FindIntegration(iIntegration->GetId());
  Guarded(u"DeleteReminders", [&] { FReminders.DeleteReminders(iIntegration, iResults, iIds); });
  RemoveRows(iIntegration, iResults);
  for (const TGuid& id : iIds) DeleteItem(integration, id);
  DeleteEmptyGroups();
  MarkDeleted(integration);
  FSeams.View.ShowFocusedResult(iIntegration);
}

void TWatchlistItemCommands::DeleteItem(TWatchlistIntegration* ioIntegration, const TGuid& iId) {
  const auto item = RootCategories().RemoveItemById(iId);
  if (!item) return;
  FSeams.View.DeleteNodeFromTree(*item);
  if (!item->SearchResult() || ioIntegration == nullptr) return;
  if (!ioIntegration->Updater().Remove(item->SearchResult())) return;
  FSeams.View.UpdateTakenOut();
  FSeams.View.DoUpdaterProgress(nullptr);
}

void TWatchlistItemCommands::DeleteEmptyGroups() {
  // Of the whole tree, not just of the category on show.
  TLstWatchlistPlugin groups(false);
  RootCategories().FindEmptyPlugins(groups);
  for (TWatchlistPlugin* group : groups) {
    FSeams.View.DeleteNodeFromTree(*group);
    RootCategories().DeletePlugin(*group);
  }
}

void TWatchlistItemCommands::DoMovePlugin(TWatchlistCategory& iTarget, TWatchlistPlugin& iGroup) {
  if (iTarget.LstPlugin().IndexOf(&iGroup) >= 0) return;
  // The group dies on the way, when its last item has gone.
  const TIntf<IWatchlistIntegration> integration = iGroup.Integration();
  DoMoveItems(integration, iTarget, iGroup.LstItem().GetSearchResultsFromItems());
}

void TWatchlistItemCommands::DoMoveItems(const TIntf<IWatchlistIntegration>& iIntegration,
                                         TWatchlistCategory& iTarget,
                                         const TIntf<IInterfaceList>& iResults) {
  if (!Supports<IWatchlistVisualization>(iIntegration)) return;
  MoveItems(iIntegration, iTarget, iResults, IdsOf(*iResults));
}

void TWatchlistItemCommands::MoveItems(const TIntf<IWatchlistIntegration>& iIntegration,
                                       TWatchlistCategory& iTarget,
                                       const TIntf<IInterfaceList>& iResults,
                                       const std::vector<TGuid>& iIds) {
  if (iIds.empty()) return;
  if (RootCategories().FindCategoryByItemId(iIds.front()) == &iTarget) return;
  TWatchlistIntegration* integration = FindIntegration(iIntegration->GetId());
  RemoveRows(iIntegration, iResults);
  TWatchlistPlugin& group = GroupIn(iTarget, iIntegration);
  for (const TGuid& id : iIds) {
    auto item = RootCategories().RemoveItemById(id);
    if (!item) continue;
    TWatchlistItem& moved = group.LstItem().Add(std::move(item));
    moved.SetParentCategoryId(iTarget.Id());
    FSeams.View.MoveNode(moved, &group);
  }
  DeleteEmptyGroups();
  if (integration != nullptr) integration->SetChangedItems(true);
}

TWatchlistPlugin& TWatchlistItemCommands::GroupIn(
    TWatchlistCategory& iTarget, const TIntf<IWatchlistIntegration>& iIntegration) {
  TWatchlistPlugin* group = iTarget.LstPlugin().FindById(iIntegration->GetId());
  if (group != nullptr) return *group;
  TWatchlistPlugin& added =
      iTarget.LstPlugin().Add(std::make_unique<TWatchlistPlugin>(iIntegration));
  FSeams.View.AddPluginToTree(iTarget, added);
  return added;
}

void TWatchlistItemCommands::SetDescriptions(const std::vector<TGuid>& iIds,
                                             const TStringList& iLines) {
  for (const TGuid& id : iIds) {
    TWatchlistItem* item = RootCategories().FindItemById(id);
    if (item == nullptr) continue;
    item->SetDescription(iLines);
    // Looks like a mistake and is required: the first one alone decides which source is marked.
    if (&id != &iIds.front()) continue;
    TWatchlistIntegration* integration = FindIntegration(GroupOf(*item).GetId());
    if (integration != nullptr) integration->SetChangedItems(true);
  }
}

}  // namespace kk
