#include "model/TWatchlistCategory.h"

#include "model/TLstWatchlistCategory.h"
#include "model/TreeSearch.h"

namespace kk {

TWatchlistCategory::TWatchlistCategory()
    : FLstCategory(std::make_unique<TLstWatchlistCategory>(true, this)),
      FLstPlugin(std::make_unique<TLstWatchlistPlugin>(true, this)) {}

TWatchlistCategory::~TWatchlistCategory() {
  // Emptied while the node is still whole, because dying items are told about.
  FLstCategory->Clear();
  FLstPlugin->Clear();
}

void TWatchlistCategory::SetId(const TGuid& iId) {
  if (List() != nullptr) LeaveCategory(*this, FID);
  FID = iId;
  if (List() != nullptr) EnterCategory(*this, FID);
}

TWatchlistItem* TWatchlistCategory::FindItemById(const TGuid& iItemId) const {
  if (const auto item = FindItemBelow(*this, iItemId)) return *item;
  TWatchlistItem* item = FLstPlugin->FindItemById(iItemId);
  return item != nullptr ? item : FLstCategory->FindItemById(iItemId);
}

void TWatchlistCategory::GetItemsByPluginId(const TGuid& iPluginId, TLstWatchlistItem& ioLst,
                                            bool iRecursive) const {
  if (const TWatchlistPlugin* group = FLstPlugin->FindById(iPluginId)) {
    for (TWatchlistItem* item : group->LstItem()) ioLst.Add(*item);
  }
  if (iRecursive) FLstCategory->GetItemsByPluginId(iPluginId, ioLst, true);
}

std::unique_ptr<TWatchlistItem> TWatchlistCategory::RemoveItemById(const TGuid& iItemId) {
  return TakeOutItem(FindItemById(iItemId));
}

void TWatchlistCategory::FindEmptyPlugins(TLstWatchlistPlugin& ioLst) const {
  FLstPlugin->FindEmptyPlugins(ioLst);
  FLstCategory->FindEmptyPlugins(ioLst);
}

bool TWatchlistCategory::DeletePlugin(TWatchlistPlugin& iGroup) {
  TLstWatchlistPlugin* groups = iGroup.List();
  if (groups == nullptr || groups->Category() == nullptr) return false;
  if (!HangsBelow(*groups->Category(), *this)) return false;
  groups->Delete(groups->IndexOfPlaced(iGroup));
  return true;
}

bool TWatchlistCategory::HasSearchResult(const TGuid& iPluginId,
                                         const TIntf<ISearchResult>& iResult) const {
  return static_cast<bool>(FindSameSearchResult(iPluginId, iResult));
}

TIntf<ISearchResult> TWatchlistCategory::FindSameSearchResult(
    const TGuid& iPluginId, const TIntf<ISearchResult>& iResult) const {
  if (const TWatchlistPlugin* group = FLstPlugin->FindById(iPluginId)) {
    for (const TWatchlistItem* item : group->LstItem()) {
      const TIntf<ISearchResult>& stored = item->SearchResult();
      if (stored && stored->IsSame(iResult)) return stored;
    }
  }
  return FLstCategory->FindSameSearchResult(iPluginId, iResult);
}

TWatchlistPlugin* TWatchlistCategory::FindPluginByItemId(const TGuid& iItemId) const {
  const TWatchlistItem* item = FindItemById(iItemId);
  return item == nullptr ? nullptr : item->List()->Group();
}

TWatchlistCategory* TWatchlistCategory::FindCategoryByItemId(const TGuid& iItemId) {
  const TWatchlistPlugin* group = FindPluginByItemId(iItemId);
  return group == nullptr ? nullptr : group->List()->Category();
}

void TWatchlistCategory::GetPlugins(TLstWatchlistPlugin& ioLst) const {
  for (TWatchlistPlugin* group : *FLstPlugin) ioLst.Add(*group);
  FLstCategory->GetPlugins(ioLst);
}

int TWatchlistCategory::GetItemCount(bool iRecursive) const {
  if (iRecursive && FItemCount >= 0) return FItemCount;
  int count = 0;
  for (const TWatchlistPlugin* group : *FLstPlugin) count += group->LstItem().GetCount();
  if (!iRecursive) return count;
  for (const TWatchlistCategory* category : *FLstCategory) count += category->GetItemCount(true);
  return FItemCount = count;
}

void TWatchlistCategory::ForgetItemCount() {
  TWatchlistCategory* category = this;
  while (category != nullptr && category->FItemCount >= 0) {
    category->FItemCount = -1;
    category = category->List() == nullptr ? nullptr : category->List()->Parent();
  }
}

}  // namespace kk
