#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <vector>

#include "ModelWorld.h"

namespace kk {
namespace {

// The plain scans that define every look-up.
int ScanIndex(const TLstWatchlistItem& iLst, const TGuid& iId) {
  for (int i = 0; i < iLst.GetCount(); ++i) {
    if (iLst.GetItems(i).SearchResultId() == iId) return i;
  }
  return -1;
}

struct THit {
  TWatchlistItem* Item = nullptr;
  TWatchlistPlugin* Group = nullptr;
  TWatchlistCategory* Category = nullptr;
};

THit Scan(const TLstWatchlistPlugin& iLst, const TGuid& iId) {
  for (int i = 0; i < iLst.GetCount(); ++i) {
    TWatchlistPlugin& group = iLst.GetItems(i);
    const int index = ScanIndex(group.LstItem(), iId);
    if (index >= 0) return {&group.LstItem().GetItems(index), &group, nullptr};
  }
  return {};
}

THit Scan(const TLstWatchlistCategory& iLst, const TGuid& iId);
THit Scan(TWatchlistCategory& iCategory, const TGuid& iId) {
  THit hit = Scan(iCategory.LstPlugin(), iId);
  if (hit.Item == nullptr) return Scan(iCategory.LstCategory(), iId);
  hit.Category = &iCategory;
  return hit;
}
THit Scan(const TLstWatchlistCategory& iLst, const TGuid& iId) {
  for (int i = 0; i < iLst.GetCount(); ++i) {
    const THit hit = Scan(iLst.GetItems(i), iId);
    if (hit.Item != nullptr) return hit;
  }
  return {};
}

TWatchlistCategory* ScanCategory(const TLstWatchlistCategory& iLst, const TGuid& iId) {
  for (int i = 0; i < iLst.GetCount(); ++i) {
    if (iLst.GetItems(i).Id() == iId) return &iLst.GetItems(i);
  }
  for (int i = 0; i < iLst.GetCount(); ++i) {
    TWatchlistCategory* hit = ScanCategory(iLst.GetItems(i).LstCategory(), iId);
    if (hit != nullptr) return hit;
  }
  return nullptr;
}

int ScanCount(const TWatchlistCategory& iCategory) {
  int count = 0;
  for (const TWatchlistPlugin* group : iCategory.LstPlugin()) count += group->LstItem().GetCount();
  for (const TWatchlistCategory* child : iCategory.LstCategory()) count += ScanCount(*child);
  return count;
}

template <class T>
bool Holds(const TLstWatchlistCategory& iLst, const T& iObject) {
  for (int i = 0; i < iLst.GetCount(); ++i) {
    TWatchlistCategory& category = iLst.GetItems(i);
    if constexpr (std::is_same_v<T, TWatchlistPlugin>) {
      if (category.LstPlugin().IndexOf(&iObject) >= 0) return true;
    } else {
      if (&category == &iObject) return true;
    }
    if (Holds(category.LstCategory(), iObject)) return true;
  }
  return false;
}

// A tree, subtrees and items taken out of it, and few ids, so that many share one.
class TWorld {
 public:
  TWorld() {
    for (int i = 1 + Pick(4); i > 0; --i) ItemIds.push_back(NewGuid());
    for (int i = 0; i < 3; ++i) CategoryIds.push_back(NewGuid());
    CategoryIds.push_back(cEmptyGuid);
    for (int i = 0; i < 3; ++i) Sources.push_back(MakeIntf<TFakeSource>(u"Q"));
  }

  void Step() {
    switch (Pick(14)) {
      case 0:
      case 1:
        AddCategory(AnyCategories(), u"K", Any(CategoryIds));
        return;
      case 2:
        AddGroup(AnyGroups(), Any(Sources));
        return;
      case 3:
      case 4:
      case 5:
        AddItem(AnyItems(), Any(ItemIds));
        return;
      case 6:
        return RemoveItem();
      case 7:
        return ChangeIds();
      case 8:
        return MoveCategory();
      case 9:
        return ExtractItem();
      case 10:
        return Reorder();
      case 11:
        return DeleteGroup();
      case 12:
        return DeleteCategory();
      default:
        return PutBack();
    }
  }

  void Check() {
    CheckList(Root.RootCategories());
    TLstWatchlistCategory work(false);
    for (TWatchlistCategory* category : Categories()) {
      CheckCategory(*category);
      if (Pick(2) == 0) work.Add(*category);
    }
    CheckList(work);
  }

 private:
  int Pick(int iBelow) { return *rc::gen::inRange(0, iBelow); }
  template <class T>
  T& Any(std::vector<T>& iFrom) {
    return iFrom[static_cast<size_t>(Pick(static_cast<int>(iFrom.size())))];
  }

  // Those of the tree and those taken out, with all below them.
  std::vector<TWatchlistCategory*> Categories() {
    TLstWatchlistCategory all(false);
    Root.RootCategories().GetCategories(all, true);
    for (const auto& category : Held) {
      all.Add(*category);
      category->LstCategory().GetCategories(all, true);
    }
    return {all.begin(), all.end()};
  }
  TLstWatchlistCategory& AnyCategories() {
    std::vector<TLstWatchlistCategory*> lists{&Root.RootCategories()};
    for (TWatchlistCategory* category : Categories()) lists.push_back(&category->LstCategory());
    return *Any(lists);
  }
  TLstWatchlistPlugin& AnyGroups() {
    std::vector<TWatchlistCategory*> categories = Categories();
    if (categories.empty()) return AddCategory(Root.RootCategories(), u"K").LstPlugin();
    return Any(categories)->LstPlugin();
  }
  TLstWatchlistItem& AnyItems() {
    TLstWatchlistPlugin& groups = AnyGroups();
    if (groups.GetCount() == 0) AddGroup(groups, Any(Sources));
    return groups.GetItems(Pick(groups.GetCount())).LstItem();
  }

  void RemoveItem() {
    const TGuid id = Any(ItemIds);
    TLstWatchlistCategory& lst = AnyCategories();
    const THit hit = Scan(lst, id);
    std::unique_ptr<TWatchlistItem> removed = lst.RemoveItemById(id);
    RC_ASSERT(removed.get() == hit.Item);
    if (removed) AnyItems().Add(std::move(removed));
  }
  void ChangeIds() {
    TLstWatchlistItem& items = AnyItems();
    if (items.GetCount() > 0) {
      items.GetItems(Pick(items.GetCount())).SetSearchResultId(Any(ItemIds));
    }
    std::vector<TWatchlistCategory*> categories = Categories();
    if (!categories.empty()) Any(categories)->SetId(Any(CategoryIds));
  }
  void MoveCategory() {
    const TGuid id = Any(CategoryIds);
    TLstWatchlistCategory& lst = AnyCategories();
    const TWatchlistCategory* expected = ScanCategory(lst, id);
    std::unique_ptr<TWatchlistCategory> removed = lst.RemoveCategoryById(id);
    RC_ASSERT(removed.get() == expected);
    if (!removed) return;
    RC_ASSERT(removed->List() == nullptr);
    if (Pick(2) == 0) {
      Held.push_back(std::move(removed));
    } else {
      AnyCategories().Add(std::move(removed));
    }
  }
  void ExtractItem() {
    TLstWatchlistItem& items = AnyItems();
    if (items.GetCount() == 0) return;
    std::unique_ptr<TWatchlistItem> item = items.Extract(Pick(items.GetCount()));
    item->SetSearchResultId(Any(ItemIds));
    if (Pick(3) > 0) AnyItems().Add(std::move(item));
  }
  template <class TList>
  void Reorder(TList& ioLst) {
    if (ioLst.GetCount() == 0) return;
    if (Pick(2) == 0) return ioLst.Reverse();
    ioLst.Move(Pick(ioLst.GetCount()), Pick(ioLst.GetCount()));
  }
  void Reorder() {
    Reorder(AnyCategories());
    Reorder(AnyGroups());
    Reorder(AnyItems());
  }
  void DeleteGroup() {
    TLstWatchlistPlugin& groups = AnyGroups();
    if (groups.GetCount() == 0) return;
    TWatchlistPlugin& group = groups.GetItems(Pick(groups.GetCount()));
    TLstWatchlistCategory& lst = AnyCategories();
    const bool expected = Holds(lst, group);
    const int before = groups.GetCount();
    RC_ASSERT(lst.DeletePlugin(group) == expected);
    RC_ASSERT(groups.GetCount() == before - (expected ? 1 : 0));
  }
  void DeleteCategory() {
    std::vector<TWatchlistCategory*> categories = Categories();
    if (categories.size() < 8) return;
    TWatchlistCategory& category = *Any(categories);
    TLstWatchlistCategory& lst = AnyCategories();
    const bool expected = Holds(lst, category);
    RC_ASSERT(lst.DeleteCategory(category) == expected);
  }
  void PutBack() {
    if (Held.empty()) return;
    std::unique_ptr<TWatchlistCategory> category = std::move(Held.back());
    Held.pop_back();
    AnyCategories().Add(std::move(category));
  }

  void CheckList(const TLstWatchlistCategory& iLst) {
    for (const TGuid& id : ItemIds) {
      const THit hit = Scan(iLst, id);
      RC_ASSERT(iLst.FindItemById(id) == hit.Item);
      RC_ASSERT(iLst.FindPluginByItemId(id) == hit.Group);
      RC_ASSERT(iLst.FindCategoryByItemId(id) == hit.Category);
    }
    for (const TGuid& id : CategoryIds) {
      RC_ASSERT(iLst.FindCategoryById(id) == ScanCategory(iLst, id));
    }
  }
  void CheckCategory(TWatchlistCategory& iCategory) {
    CheckList(iCategory.LstCategory());
    // Not of all: known counts and forgotten ones stand side by side.
    if (Pick(2) == 0) RC_ASSERT(iCategory.GetItemCount(true) == ScanCount(iCategory));
    for (const TGuid& id : ItemIds) {
      const THit hit = Scan(iCategory, id);
      RC_ASSERT(iCategory.FindItemById(id) == hit.Item);
      RC_ASSERT(iCategory.FindPluginByItemId(id) == hit.Group);
      RC_ASSERT(iCategory.FindCategoryByItemId(id) == hit.Category);
      RC_ASSERT(iCategory.LstPlugin().FindItemById(id) == Scan(iCategory.LstPlugin(), id).Item);
      for (const TWatchlistPlugin* group : iCategory.LstPlugin()) {
        const TLstWatchlistItem& items = group->LstItem();
        RC_ASSERT(items.IndexOfSearchResultId(id) == ScanIndex(items, id));
      }
    }
  }

  TTestModelRoot Root;
  std::vector<TGuid> ItemIds;
  std::vector<TGuid> CategoryIds;
  std::vector<TIntf<TFakeSource>> Sources;
  std::vector<std::unique_ptr<TWatchlistCategory>> Held;
};

RC_GTEST_PROP(TreeSearch, EveryLookUpAnswersWhatThePlainScanFinds, ()) {
  TWorld world;
  const int steps = *rc::gen::inRange(0, 120);
  for (int i = 0; i < steps; ++i) {
    world.Step();
    if (i % 4 == 0) world.Check();
  }
  world.Check();
}

// With many other items about, more of those with one id are compared before a scan is taken.
RC_GTEST_PROP(TreeSearch, EveryLookUpAnswersWhatThePlainScanFindsInALargeTree, ()) {
  TTestModelRoot filler;
  TLstWatchlistItem items(true);
  for (int i = 0; i < 1000; ++i) AddItem(items);
  TWorld world;
  for (int i = 0; i < 100; ++i) world.Step();
  world.Check();
}

}  // namespace
}  // namespace kk
