#include "model/TTreeIndex.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "ModelWorld.h"

namespace kk {
namespace {

struct TThing {
  TGuid Id;
  int Place = 0;
  TTreeIndexLink<TThing> FIndexLink;
};

// Counts how many objects each look-up has to look at.
class TreeIndex : public testing::Test {
 protected:
  TThing& Add(const TGuid& iId) {
    things.push_back(std::make_unique<TThing>());
    things.back()->Id = iId;
    things.back()->Place = static_cast<int>(things.size());
    index.Enter(*things.back(), iId);
    return *things.back();
  }
  std::optional<TThing*> Find(const TGuid& iId) {
    return index.FindFirst(
        iId,
        [this](const TThing& iThing) {
          ++looked;
          return iThing.Place != hidden;
        },
        [](const TThing& iThing) { return iThing.Place; });
  }

  TTreeIndex<TThing> index;
  std::vector<std::unique_ptr<TThing>> things;
  int looked = 0;
  int hidden = 0;
};

TEST_F(TreeIndex, ALookUpLooksAtTheObjectsWithItsIdAlone) {
  constexpr int cCount = 20000;
  for (int i = 0; i < cCount; ++i) Add(NewGuid());
  for (const auto& thing : things) EXPECT_EQ(Find(thing->Id), thing.get());
  EXPECT_EQ(looked, cCount);
  EXPECT_EQ(Find(NewGuid()), nullptr);
  EXPECT_EQ(looked, cCount);
}

TEST_F(TreeIndex, OfTwoWithOneIdBothAreLookedAtAndTheFirstIsFound) {
  constexpr int cPairs = 10000;
  for (int i = 0; i < cPairs; ++i) Add(NewGuid());
  for (int i = 0; i < cPairs; ++i) Add(things[static_cast<size_t>(i)]->Id);
  for (int i = 0; i < cPairs; ++i) {
    const auto& first = things[static_cast<size_t>(i)];
    EXPECT_EQ(Find(first->Id), first.get());
  }
  EXPECT_EQ(looked, 2 * cPairs);
}

TEST_F(TreeIndex, WhatTheFilterHoldsBackIsNotFound) {
  const TGuid id = NewGuid();
  Add(id);
  TThing& second = Add(id);
  hidden = 1;
  EXPECT_EQ(Find(id), &second);
  index.Leave(second, id);
  EXPECT_EQ(Find(id), nullptr);
}

TEST_F(TreeIndex, ManyWithOneIdAmongFewOthersAreLeftToAScan) {
  const TGuid id = NewGuid();
  for (int i = 0; i < 8; ++i) Add(id);
  EXPECT_EQ(Find(id), things[0].get());
  Add(id);
  EXPECT_EQ(Find(id), std::nullopt);
  looked = 0;
  for (int i = 0; i < 72; ++i) Add(NewGuid());  // 9 of 81
  EXPECT_EQ(Find(id), things[0].get());
  EXPECT_EQ(looked, 9);
}

TEST_F(TreeIndex, ObjectsLeaveInAnyOrder) {
  const TGuid id = NewGuid();
  for (int i = 0; i < 4; ++i) Add(id);
  index.Leave(*things[2], id);
  EXPECT_EQ(Find(id), things[0].get());
  index.Leave(*things[0], id);
  EXPECT_EQ(Find(id), things[1].get());
  index.Leave(*things[3], id);
  EXPECT_EQ(Find(id), things[1].get());
  index.Leave(*things[1], id);
  EXPECT_EQ(Find(id), nullptr);
  index.Enter(*things[3], id);
  EXPECT_EQ(Find(id), things[3].get());
}

// With a scan for each look-up these would take 10^10 steps.
TEST(TLstWatchlistCategory, HundredThousandItemsAreFoundMovedAndDeletedById) {
  constexpr int cCount = 100000;
  TTestModelRoot root;
  TLstWatchlistCategory& lst = root.RootCategories();
  const auto source = MakeIntf<TFakeSource>(u"Q");
  TWatchlistPlugin& from = AddGroup(AddCategory(lst, u"von").LstPlugin(), source);
  TWatchlistCategory& target = AddCategory(lst, u"nach");
  TWatchlistPlugin& to = AddGroup(target.LstPlugin(), source);
  std::vector<TGuid> ids;
  for (int i = 0; i < cCount; ++i) ids.push_back(AddItem(from.LstItem()).SearchResultId());
  for (const TGuid& id : ids) to.LstItem().Add(lst.RemoveItemById(id));
  EXPECT_EQ(from.LstItem().GetCount(), 0);
  for (int i = 0; i < cCount; ++i) {
    const TGuid& id = ids[static_cast<size_t>(i)];
    ASSERT_EQ(to.LstItem().IndexOfSearchResultId(id), i);
    ASSERT_EQ(lst.FindCategoryByItemId(id), &target);
  }
  for (size_t i = ids.size(); i > 0; --i) ASSERT_TRUE(lst.DeleteItemById(ids[i - 1]));
  EXPECT_EQ(target.GetItemCount(true), 0);
}

TEST(TLstWatchlistCategory, ManyItemsWithOneIdComeAndGo) {
  constexpr int cCount = 100000;
  TTestModelRoot root;
  TLstWatchlistCategory& lst = root.RootCategories();
  TWatchlistPlugin& group =
      AddGroup(AddCategory(lst, u"K").LstPlugin(), MakeIntf<TFakeSource>(u"Q"));
  for (int i = 0; i < cCount; ++i) AddItem(group.LstItem(), cEmptyGuid);
  for (int i = 0; i < cCount; ++i) {
    ASSERT_EQ(lst.FindItemById(cEmptyGuid), &group.LstItem().GetItems(0));
    ASSERT_TRUE(lst.DeleteItemById(cEmptyGuid));
  }
  EXPECT_FALSE(lst.DeleteItemById(cEmptyGuid));
}

TEST(TLstWatchlistCategory, ManyCategoriesAreFoundById) {
  constexpr int cCount = 30000;
  TTestModelRoot root;
  TLstWatchlistCategory& lst = root.RootCategories();
  std::vector<TWatchlistCategory*> categories;
  for (int i = 0; i < cCount; ++i) {
    categories.push_back(&AddCategory(i % 2 == 0 ? lst : categories.back()->LstCategory(), u"K"));
  }
  for (TWatchlistCategory* category : categories) {
    ASSERT_EQ(lst.FindCategoryById(category->Id()), category);
  }
  const auto source = MakeIntf<TFakeSource>(u"Q");
  for (TWatchlistCategory* category : categories) AddGroup(category->LstPlugin(), source);
  EXPECT_TRUE(lst.DeleteEmptyPlugins());
  for (size_t i = 0; i < categories.size(); i += 2) {
    ASSERT_TRUE(lst.DeleteCategory(*categories[i]));
  }
  EXPECT_EQ(lst.GetCount(), 0);
}

// Where each look-up went through all of them, it would take the square of them.
TEST(TLstWatchlistCategory, AnIdOfManyCategoriesIsFoundBehindManyOthers) {
  constexpr int cCount = 100000;
  TTestModelRoot root;
  TLstWatchlistCategory& lst = root.RootCategories();
  const std::vector<TGuid> ids = {NewGuid(), NewGuid()};
  for (int i = 0; i < cCount; ++i) AddCategory(lst, u"K");
  for (int i = 0; i < cCount; ++i) AddCategory(lst, u"K", ids[static_cast<size_t>(i % 2)]);
  for (int i = 0; i < cCount; ++i) {
    const int which = i % 2;
    ASSERT_EQ(lst.FindCategoryById(ids[static_cast<size_t>(which)]), &lst.GetItems(cCount + which));
  }
  lst.Delete(cCount);
  EXPECT_EQ(lst.FindCategoryById(ids[0]), &lst.GetItems(cCount + 1));
  lst.Move(cCount + 3, 0);
  EXPECT_EQ(lst.FindCategoryById(ids[0]), &lst.GetItems(0));
  lst.GetItems(0).SetId(NewGuid());
  EXPECT_EQ(lst.FindCategoryById(ids[0]), &lst.GetItems(cCount + 2));
}

}  // namespace
}  // namespace kk
