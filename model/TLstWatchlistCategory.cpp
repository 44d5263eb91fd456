#include "model/TLstWatchlistCategory.h"

#include "host/base/THashedStringList.h"
#include "model/IWatchlistModelRoot.h"
#include "model/TreeSearch.h"

namespace kk {

TLstWatchlistCategory::TLstWatchlistCategory(bool iOwnsObjects, TWatchlistCategory* iParent)
    : TLstTree(iOwnsObjects), FParent(iParent) {}

TLstWatchlistCategory::~TLstWatchlistCategory() { TLstWatchlistCategory::Clear(); }

int TLstWatchlistCategory::IndexOfId(const TGuid& iId) const {
  for (int i = 0; i < GetCount(); ++i) {
    if (SameGuid(At(i).Id(), iId)) return i;
  }
  return -1;
}

int TLstWatchlistCategory::IndexOfName(TStringView iName) const {
  for (int i = 0; i < GetCount(); ++i) {
    if (SameText(At(i).Name(), iName)) return i;
  }
  return -1;
}

TWatchlistCategory* TLstWatchlistCategory::FindCategoryById(const TGuid& iId) const {
  if (OwnsObjects()) {
    const auto category = FindCategoryBelow(*this, iId);
    return category ? *category : ScanForCategory(*this, iId);
  }
  const int index = IndexOfId(iId);
  if (index >= 0) return &At(index);
  for (const TWatchlistCategory* category : *this) {
    TWatchlistCategory* hit = category->LstCategory().FindCategoryById(iId);
    if (hit != nullptr) return hit;
  }
  return nullptr;
}

TWatchlistCategory* TLstWatchlistCategory::FindCategoryByName(TStringView iName) const {
  const int index = IndexOfName(iName);
  if (index >= 0) return &At(index);
  for (const TWatchlistCategory* category : *this) {
    TWatchlistCategory* hit = category->LstCategory().FindCategoryByName(iName);
    if (hit != nullptr) return hit;
  }
  return nullptr;
}

TWatchlistItem* TLstWatchlistCategory::FindItemById(const TGuid& iItemId) const {
  if (OwnsObjects()) {
    if (const auto item = FindItemBelow(*this, iItemId)) return *item;
  }
  for (const TWatchlistCategory* category : *this) {
    TWatchlistItem* item = category->FindItemById(iItemId);
    if (item != nullptr) return item;
  }
  return nullptr;
}

TWatchlistCategory* TLstWatchlistCategory::FindCategoryByItemId(const TGuid& iItemId) const {
  const TWatchlistPlugin* group = FindPluginByItemId(iItemId);
  return group == nullptr ? nullptr : group->List()->Category();
}

TWatchlistPlugin* TLstWatchlistCategory::FindPluginByItemId(const TGuid& iItemId) const {
  const TWatchlistItem* item = FindItemById(iItemId);
  return item == nullptr ? nullptr : item->List()->Group();
}

void TLstWatchlistCategory::GetCategories(TLstWatchlistCategory& ioLst, bool iRecursive) const {
  for (TWatchlistCategory* category : *this) {
    ioLst.Add(*category);
    if (iRecursive) category->LstCategory().GetCategories(ioLst, true);
  }
}

void TLstWatchlistCategory::GetItemsByPluginId(const TGuid& iPluginId, TLstWatchlistItem& ioLst,
                                               bool iRecursive) const {
  for (const TWatchlistCategory* category : *this) {
    category->GetItemsByPluginId(iPluginId, ioLst, iRecursive);
  }
}

void TLstWatchlistCategory::GetPlugins(TLstWatchlistPlugin& ioLst) const {
  for (const TWatchlistCategory* category : *this) category->GetPlugins(ioLst);
}

std::unique_ptr<TWatchlistItem> TLstWatchlistCategory::RemoveItemById(const TGuid& iItemId) {
  return TakeOutItem(FindItemById(iItemId));
}

void TLstWatchlistCategory::FindEmptyPlugins(TLstWatchlistPlugin& ioLst) const {
  for (const TWatchlistCategory* category : *this) category->FindEmptyPlugins(ioLst);
}

bool TLstWatchlistCategory::DeletePlugin(TWatchlistPlugin& iGroup) {
  if (OwnsObjects()) {
    TLstWatchlistPlugin* groups = iGroup.List();
    TWatchlistCategory* category = groups == nullptr ? nullptr : groups->Category();
    return category != nullptr && HangsBelow(*category, *this) && category->DeletePlugin(iGroup);
  }
  return std::any_of(begin(), end(), [&](TWatchlistCategory* iCategory) {
    return iCategory->DeletePlugin(iGroup);
  });
}

bool TLstWatchlistCategory::HasSearchResult(const TGuid& iPluginId,
                                            const TIntf<ISearchResult>& iResult) const {
  return static_cast<bool>(FindSameSearchResult(iPluginId, iResult));
}

TIntf<ISearchResult> TLstWatchlistCategory::FindSameSearchResult(
    const TGuid& iPluginId, const TIntf<ISearchResult>& iResult) const {
  for (const TWatchlistCategory* category : *this) {
    TIntf<ISearchResult> same = category->FindSameSearchResult(iPluginId, iResult);
    if (same) return same;
  }
  return {};
}

// Looks like a mistake and is required: the list on which it is called does not matter.
bool TLstWatchlistCategory::DeleteEmptyPlugins() {
  TLstWatchlistCategory& root = WatchlistModelRoot().RootCategories();
  TLstWatchlistPlugin empty(false);
  root.FindEmptyPlugins(empty);
  for (TWatchlistPlugin* group : empty) root.DeletePlugin(*group);
  return empty.GetCount() > 0;
}

TString TLstWatchlistCategory::MakeUniqueName(TStringView iName) const {
  TLstWatchlistCategory all(false);
  GetCategories(all, true);
  THashedStringList names;
  for (const TWatchlistCategory* category : all) names.Add(category->Name());
  for (int64_t counter = 1;; ++counter) {
    TString candidate = TString(iName) + u" " + IntToStr(counter);
    if (names.IndexOf(candidate) < 0) return candidate;
  }
}

bool TLstWatchlistCategory::DeleteCategory(TWatchlistCategory& iCategory) {
  if (OwnsObjects()) {
    TLstWatchlistCategory* list = iCategory.List();
    if (list == nullptr || !HangsBelow(iCategory, *this)) return false;
    list->Delete(list->IndexOfPlaced(iCategory));
    return true;
  }
  const int index = IndexOf(&iCategory);
  if (index >= 0) Delete(index);
  return index >= 0 || std::any_of(begin(), end(), [&](const TWatchlistCategory* iEntry) {
           return iEntry->LstCategory().DeleteCategory(iCategory);
         });
}

std::unique_ptr<TWatchlistCategory> TLstWatchlistCategory::RemoveCategoryById(const TGuid& iId) {
  const TWatchlistCategory* category = FindCategoryById(iId);
  if (category == nullptr) return nullptr;
  // A list that borrows has nothing of its own to hand over.
  const int index = OwnsObjects() ? -1 : IndexOf(category);
  if (index >= 0) return Extract(index);
  TLstWatchlistCategory& list = *category->List();
  return list.Extract(list.IndexOfPlaced(*category));
}

void TLstWatchlistCategory::Attached(TWatchlistCategory& iCategory) {
  TLstTree::Attached(iCategory);
  if (OwnsObjects()) EnterCategory(iCategory, iCategory.Id());
  if (FParent != nullptr) FParent->ForgetItemCount();
}

void TLstWatchlistCategory::Detached(TWatchlistCategory& iCategory) {
  if (FParent != nullptr) FParent->ForgetItemCount();
  if (OwnsObjects()) LeaveCategory(iCategory, iCategory.Id());
  TLstTree::Detached(iCategory);
}

}  // namespace kk
