#include "model/TreeSearch.h"

#include <algorithm>
#include <map>
#include <memory>
#include <tuple>
#include <utility>
#include <vector>

#include "model/TLstWatchlistCategory.h"
#include "model/TTreeIndex.h"

namespace kk {

namespace {

// The indexes go with the last object in them and not with the process, because an item may be
// among the last things of it.
template <class T>
TTreeIndex<T>*& CurrentIndex() {
  static TTreeIndex<T>* index = nullptr;
  return index;
}

template <class T>
TTreeIndex<T>& Index() {
  auto*& index = CurrentIndex<T>();
  if (index == nullptr) index = std::make_unique<TTreeIndex<T>>().release();
  return *index;
}

template <class T>
void LeaveIndex(T& ioObject, const TGuid& iId) {
  Index<T>().Leave(ioObject, iId);
  if (!Index<T>().IsEmpty()) return;
  const std::unique_ptr<TTreeIndex<T>> last(std::exchange(CurrentIndex<T>(), nullptr));
}

const TWatchlistCategory* ParentOf(const TWatchlistCategory& iCategory) {
  return iCategory.List() == nullptr ? nullptr : iCategory.List()->Parent();
}

const TWatchlistCategory* CategoryOf(const TWatchlistPlugin& iGroup) {
  return iGroup.List() == nullptr ? nullptr : iGroup.List()->Category();
}

// The places of the category and of those in which it hangs, the outermost first.
std::vector<int64_t> PathTo(const TWatchlistCategory* iCategory) {
  std::vector<int64_t> path;
  for (; iCategory != nullptr; iCategory = ParentOf(*iCategory)) {
    path.push_back(iCategory->Place().Order);
  }
  std::reverse(path.begin(), path.end());
  return path;
}

// Categories, group, item. Depth first with a category's own groups before its children: a path
// comes before its extensions.
using TItemScanKey = std::tuple<std::vector<int64_t>, int64_t, int64_t>;

TItemScanKey ScanKeyOf(const TWatchlistItem& iItem) {
  const int64_t item = iItem.Place().Order;
  const TWatchlistPlugin* group = iItem.Place().List->Group();
  if (group == nullptr) return {{}, 0, item};
  return {PathTo(CategoryOf(*group)), group->Place().Order, item};
}

// A whole level before what is below its first category: at each step, ending here comes first.
using TCategoryScanKey = std::vector<std::pair<bool, int64_t>>;

TCategoryScanKey ScanKeyOf(const TWatchlistCategory& iCategory) {
  const std::vector<int64_t> path = PathTo(&iCategory);
  TCategoryScanKey key;
  for (size_t i = 0; i < path.size(); ++i) key.emplace_back(i + 1 < path.size(), path[i]);
  return key;
}

// What a scan has found, and where it stood. What the scan would come upon sooner branches off from
// the hit's own path, so that a change of order shows in the hit's key.
struct TScanned {
  TWatchlistCategory* Category;
  TCategoryScanKey Key;
};
using TScans = std::map<std::pair<const TObject*, decltype(TGuid::Bytes)>, TScanned>;
constexpr size_t cMaxScans = 4096;

// Goes when a category comes or goes, so with the last of them, as the index does.
TScans*& CurrentScans() {
  static TScans* scans = nullptr;
  return scans;
}

void ForgetScans() { const std::unique_ptr<TScans> last(std::exchange(CurrentScans(), nullptr)); }

TWatchlistCategory* Scan(const TLstWatchlistCategory& iLst, const TGuid& iId) {
  const int index = iLst.IndexOfId(iId);
  if (index >= 0) return &iLst.GetItems(index);
  for (const TWatchlistCategory* category : iLst) {
    TWatchlistCategory* hit = Scan(category->LstCategory(), iId);
    if (hit != nullptr) return hit;
  }
  return nullptr;
}

bool HangsBelow(const TWatchlistItem& iItem, const TObject& iNode) {
  const TLstWatchlistItem* items = iItem.Place().List;
  if (items == &iNode) return true;
  if (items->Group() == nullptr) return false;
  const TLstWatchlistPlugin* groups = items->Group()->List();
  if (groups == nullptr || groups == &iNode) return groups != nullptr;
  return groups->Category() != nullptr && kk::HangsBelow(*groups->Category(), iNode);
}

template <class T>
std::optional<T*> FindBelow(const TObject& iNode, const TGuid& iId) {
  if (CurrentIndex<T>() == nullptr) return nullptr;
  return Index<T>().FindFirst(
      iId, [&](const T& iObject) { return HangsBelow(iObject, iNode); },
      [](const T& iObject) { return ScanKeyOf(iObject); });
}

}  // namespace

bool HangsBelow(const TWatchlistCategory& iCategory, const TObject& iNode) {
  const TWatchlistCategory* category = &iCategory;
  for (; category != nullptr; category = ParentOf(*category)) {
    if (category == &iNode || category->List() == &iNode) return true;
  }
  return false;
}

std::unique_ptr<TWatchlistItem> TakeOutItem(const TWatchlistItem* iItem) {
  if (iItem == nullptr) return nullptr;
  TLstWatchlistItem& list = *iItem->List();
  return list.Extract(list.IndexOfPlaced(*iItem));
}

void EnterItem(TWatchlistItem& ioItem, const TGuid& iId) {
  Index<TWatchlistItem>().Enter(ioItem, iId);
}

void LeaveItem(TWatchlistItem& ioItem, const TGuid& iId) { LeaveIndex(ioItem, iId); }

void EnterCategory(TWatchlistCategory& ioCategory, const TGuid& iId) {
  ForgetScans();
  Index<TWatchlistCategory>().Enter(ioCategory, iId);
}

void LeaveCategory(TWatchlistCategory& ioCategory, const TGuid& iId) {
  ForgetScans();
  LeaveIndex(ioCategory, iId);
}

std::optional<TWatchlistItem*> FindItemBelow(const TObject& iNode, const TGuid& iId) {
  return FindBelow<TWatchlistItem>(iNode, iId);
}

std::optional<TWatchlistCategory*> FindCategoryBelow(const TObject& iNode, const TGuid& iId) {
  return FindBelow<TWatchlistCategory>(iNode, iId);
}

TWatchlistCategory* ScanForCategory(const TLstWatchlistCategory& iLst, const TGuid& iId) {
  if (CurrentScans() != nullptr && CurrentScans()->size() >= cMaxScans) ForgetScans();
  auto*& scans = CurrentScans();
  if (scans == nullptr) scans = std::make_unique<TScans>().release();
  const auto [place, isNew] = scans->try_emplace({&iLst, iId.Bytes});
  auto& [category, key] = place->second;
  if (!isNew && (category == nullptr || ScanKeyOf(*category) == key)) return category;
  category = Scan(iLst, iId);
  key = category != nullptr ? ScanKeyOf(*category) : TCategoryScanKey();
  return category;
}

}  // namespace kk
