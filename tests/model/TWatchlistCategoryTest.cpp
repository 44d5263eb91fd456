#include "model/TWatchlistCategory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ModelWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TWatchlistCategory, IsTheCatchAllWithoutNameAtFirst) {
  const TWatchlistCategory category;
  EXPECT_EQ(category.Id(), cEmptyGuid);
  EXPECT_EQ(category.Name(), u"");
  EXPECT_FALSE(category.Expanded());
  EXPECT_EQ(category.Description().GetCount(), 0);
  EXPECT_TRUE(category.LstCategory().OwnsObjects());
  EXPECT_TRUE(category.LstPlugin().OwnsObjects());
  EXPECT_EQ(category.LstCategory().Parent(), &category);
  EXPECT_EQ(category.LstPlugin().Category(), &category);
  EXPECT_EQ(category.List(), nullptr);
}

TEST(TWatchlistCategory, CopiesTheLinesOfItsDescription) {
  TWatchlistCategory category;
  TStringList lines{u"eins"};
  category.SetDescription(lines);
  lines.Add(u"zwei");
  EXPECT_EQ(category.Description().GetCount(), 1);
  category.Description().Add(u"drei");
  category.SetExpanded(true);
  EXPECT_EQ(category.Description().Get(1), u"drei");
  EXPECT_TRUE(category.Expanded());
}

// K with the groups of two sources, and below it K1 and K2; K2 has K21.
class Category : public testing::Test {
 protected:
  TTestModelRoot root;
  TIntf<TFakeSource> first = MakeIntf<TFakeSource>(u"Erste");
  TIntf<TFakeSource> second = MakeIntf<TFakeSource>(u"Zweite");
  TWatchlistCategory& k = AddCategory(root.RootCategories(), u"K");
  TWatchlistCategory& k1 = AddCategory(k.LstCategory(), u"K1");
  TWatchlistCategory& k2 = AddCategory(k.LstCategory(), u"K2");
  TWatchlistCategory& k21 = AddCategory(k2.LstCategory(), u"K21");
  TWatchlistPlugin& group = AddGroup(k.LstPlugin(), first);
  TWatchlistPlugin& groupSecond = AddGroup(k.LstPlugin(), second);
  TWatchlistPlugin& group1 = AddGroup(k1.LstPlugin(), first);
  TWatchlistPlugin& group21 = AddGroup(k21.LstPlugin(), first);
};

TEST_F(Category, FindsItsOwnItemBeforeOneBelow) {
  const TGuid id = NewGuid();
  TWatchlistItem& deepest = AddItem(group21.LstItem(), id);
  EXPECT_EQ(k.FindItemById(id), &deepest);
  TWatchlistItem& below = AddItem(group1.LstItem(), id);
  EXPECT_EQ(k.FindItemById(id), &below);
  TWatchlistItem& own = AddItem(groupSecond.LstItem(), id);
  EXPECT_EQ(k.FindItemById(id), &own);
  EXPECT_EQ(k2.FindItemById(id), &deepest);
  EXPECT_EQ(k.FindItemById(NewGuid()), nullptr);
  EXPECT_EQ(k.FindPluginByItemId(id), &groupSecond);
  EXPECT_EQ(k.FindCategoryByItemId(id), &k);
  EXPECT_EQ(k2.FindPluginByItemId(id), &group21);
  EXPECT_EQ(k2.FindCategoryByItemId(id), &k21);
  EXPECT_EQ(k2.FindPluginByItemId(NewGuid()), nullptr);
  EXPECT_EQ(k2.FindCategoryByItemId(NewGuid()), nullptr);
}

TEST_F(Category, GathersTheItemsOfASource) {
  AddItem(group.LstItem(), u"A");
  AddItem(groupSecond.LstItem(), u"fremd");
  AddItem(group1.LstItem(), u"B");
  AddItem(group21.LstItem(), u"C");
  AddItem(group.LstItem(), u"D");
  TLstWatchlistItem own(false);
  k.GetItemsByPluginId(first->GetId(), own, false);
  EXPECT_EQ(NamesOf(own), "A,D");
  k.GetItemsByPluginId(first->GetId(), own, true);
  EXPECT_EQ(NamesOf(own), "A,D,A,D,B,C");
  TLstWatchlistItem owning(true);
  EXPECT_THROW(k.GetItemsByPluginId(first->GetId(), owning, false), EInvalidCast);
}

TEST_F(Category, HandsOverARemovedItemAndKeepsTheEmptyGroup) {
  TWatchlistItem& item = AddItem(group21.LstItem(), u"A");
  const TGuid id = item.SearchResultId();
  root.Notes().clear();
  const std::unique_ptr<TWatchlistItem> removed = k.RemoveItemById(id);
  EXPECT_EQ(removed.get(), &item);
  EXPECT_EQ(k21.LstPlugin().GetCount(), 1);
  EXPECT_EQ(group21.LstItem().GetCount(), 0);
  EXPECT_EQ(k.RemoveItemById(id), nullptr);
  EXPECT_THAT(root.Notes(), IsEmpty());
}

TEST_F(Category, FreesADeletedItem) {
  const TGuid id = AddItem(group1.LstItem(), u"A").SearchResultId();
  root.Notes().clear();
  EXPECT_FALSE(k2.DeleteItemById(id));
  EXPECT_TRUE(k.DeleteItemById(id));
  EXPECT_THAT(root.Notes(), ElementsAre("delete A"));
}

TEST_F(Category, RemovesTheFirstOfSeveralWithOneId) {
  const TGuid id = NewGuid();
  AddItem(group1.LstItem(), id);
  TWatchlistItem& own = AddItem(group.LstItem(), id);
  EXPECT_EQ(k.RemoveItemById(id).get(), &own);
  EXPECT_EQ(k.FindCategoryByItemId(id), &k1);
}

TEST_F(Category, FindsEmptyGroupsOfItsOwnAndBelow) {
  AddItem(group1.LstItem(), u"A");
  TLstWatchlistPlugin empty(false);
  k.FindEmptyPlugins(empty);
  ASSERT_EQ(empty.GetCount(), 3);
  EXPECT_EQ(&empty.GetItems(0), &group);
  EXPECT_EQ(&empty.GetItems(1), &groupSecond);
  EXPECT_EQ(&empty.GetItems(2), &group21);
}

TEST_F(Category, DeletesAGroupByTheObject) {
  AddItem(group21.LstItem(), u"A");
  EXPECT_FALSE(k1.DeletePlugin(group21));
  EXPECT_TRUE(k.DeletePlugin(group21));
  EXPECT_EQ(k21.LstPlugin().GetCount(), 0);
  EXPECT_EQ(root.Notes().back(), "delete A");
  EXPECT_TRUE(k.DeletePlugin(group));
  EXPECT_EQ(NamesOf(k.LstPlugin()), "Zweite");
}

TEST_F(Category, DeletingAGroupThatHangsNowhereChangesNothing) {
  TWatchlistPlugin loose(first);
  TLstWatchlistPlugin elsewhere(true);
  EXPECT_FALSE(k.DeletePlugin(loose));
  EXPECT_FALSE(k.DeletePlugin(AddGroup(elsewhere, first)));
  EXPECT_EQ(k.LstPlugin().GetCount(), 2);
  EXPECT_EQ(elsewhere.GetCount(), 1);
}

TEST_F(Category, ComparesResultsWithinOneSourceOnly) {
  const TIntf<ISearchResult> stored = FakeResult(u"A");
  AddItem(group.LstItem(), stored);
  EXPECT_TRUE(k.HasSearchResult(first->GetId(), FakeResult(u"A")));
  EXPECT_FALSE(k.HasSearchResult(second->GetId(), FakeResult(u"A")));
  EXPECT_FALSE(k.HasSearchResult(first->GetId(), FakeResult(u"B")));
  EXPECT_EQ(k.FindSameSearchResult(first->GetId(), FakeResult(u"A")), stored);
  EXPECT_FALSE(k.FindSameSearchResult(second->GetId(), FakeResult(u"A")));
  EXPECT_FALSE(k.HasSearchResult(first->GetId(), {}));
}

TEST_F(Category, FindsTheSameResultBelowItToo) {
  const TIntf<ISearchResult> deep = FakeResult(u"A");
  AddItem(group21.LstItem(), deep);
  EXPECT_EQ(k.FindSameSearchResult(first->GetId(), FakeResult(u"A")), deep);
  const TIntf<ISearchResult> own = FakeResult(u"A");
  AddItem(group.LstItem(), FakeResult(u"B"));
  AddItem(group.LstItem(), own);
  EXPECT_EQ(k.FindSameSearchResult(first->GetId(), FakeResult(u"A")), own);
  EXPECT_FALSE(k1.HasSearchResult(first->GetId(), FakeResult(u"A")));
}

TEST_F(Category, AsksTheStoredResultAboutTheGivenOne) {
  class TAsked : public TFakeSearchResult {
   public:
    using TFakeSearchResult::TFakeSearchResult;
    bool IsSame(const TIntf<ISearchResult>& iOther) const override {
      return iOther->GetName() == u"gefragt";
    }
  };
  AddItem(group.LstItem(), MakeIntf<TAsked>(u"A"));
  EXPECT_TRUE(k.HasSearchResult(first->GetId(), FakeResult(u"gefragt")));
  EXPECT_FALSE(k.HasSearchResult(first->GetId(), FakeResult(u"A")));
}

TEST_F(Category, PassesOverItemsWithoutAResult) {
  AddItem(group.LstItem());
  AddItem(group.LstItem(), u"A");
  EXPECT_TRUE(k.HasSearchResult(first->GetId(), FakeResult(u"A")));
  EXPECT_FALSE(k.HasSearchResult(first->GetId(), FakeResult(u"B")));
  EXPECT_TRUE(k.FindSameSearchResult(first->GetId(), FakeResult(u"A")));
}

TEST_F(Category, GathersGroupsOfItsOwnFirst) {
  TLstWatchlistPlugin all(false);
  k.GetPlugins(all);
  ASSERT_EQ(all.GetCount(), 4);
  EXPECT_EQ(&all.GetItems(0), &group);
  EXPECT_EQ(&all.GetItems(1), &groupSecond);
  EXPECT_EQ(&all.GetItems(2), &group1);
  EXPECT_EQ(&all.GetItems(3), &group21);
}

TEST_F(Category, CountsItsItems) {
  AddItem(group.LstItem());
  AddItem(group.LstItem());
  AddItem(groupSecond.LstItem());
  AddItem(group21.LstItem());
  EXPECT_EQ(k.GetItemCount(false), 3);
  EXPECT_EQ(k.GetItemCount(true), 4);
  EXPECT_EQ(k2.GetItemCount(false), 0);
  EXPECT_EQ(k2.GetItemCount(true), 1);
}

TEST_F(Category, CountsAnewWhateverChangesBelow) {
  TWatchlistItem& item = AddItem(group21.LstItem());
  AddItem(group.LstItem());
  EXPECT_EQ(k.GetItemCount(true), 2);
  AddItem(group21.LstItem());
  EXPECT_EQ(k.GetItemCount(true), 3) << "an item has come, two levels below";
  const std::unique_ptr<TWatchlistItem> taken = group21.LstItem().Extract(item);
  EXPECT_EQ(k.GetItemCount(true), 2);
  std::unique_ptr<TWatchlistPlugin> takenGroup = k21.LstPlugin().Extract(group21);
  EXPECT_EQ(k.GetItemCount(true), 1) << "a group has gone";
  k21.LstPlugin().Add(std::move(takenGroup));
  EXPECT_EQ(k.GetItemCount(true), 2) << "a group has come, with its items";
  std::unique_ptr<TWatchlistCategory> child = k.LstCategory().Extract(k2);
  EXPECT_EQ(k.GetItemCount(true), 1);
  AddItem(group21.LstItem());
  EXPECT_EQ(k.GetItemCount(true), 1) << "what was taken out counts for itself";
  k.LstCategory().Add(std::move(child));
  EXPECT_EQ(k.GetItemCount(true), 3);
}

TEST_F(Category, FreesItsChildrenBeforeItsOwnGroups) {
  AddItem(group.LstItem(), u"eigen");
  AddItem(group1.LstItem(), u"Kind");
  AddItem(group21.LstItem(), u"Enkel");
  root.Notes().clear();
  root.RootCategories().Delete(0);
  EXPECT_THAT(root.Notes(), ElementsAre("delete Kind", "delete Enkel", "delete eigen"));
}

TEST_F(Category, AListenerMaySearchTheTreeWhileItemsDie) {
  AddItem(group.LstItem(), u"eigen");
  AddItem(group1.LstItem(), u"Kind");
  TWatchlistCategory& other = AddCategory(root.RootCategories(), u"L");
  TWatchlistItem& stays = AddItem(AddGroup(other.LstPlugin(), first).LstItem(), u"bleibt");
  int told = 0;
  root.SetOnDelete([&](TWatchlistItem& iItem) {
    if (&iItem == &stays) return;
    ++told;
    TLstWatchlistCategory& lst = root.RootCategories();
    EXPECT_EQ(lst.FindItemById(iItem.SearchResultId()), nullptr);
    EXPECT_EQ(lst.FindItemById(stays.SearchResultId()), &stays);
    EXPECT_EQ(lst.FindCategoryByItemId(iItem.SearchResultId()), nullptr);
  });
  root.RootCategories().Delete(0);
  EXPECT_EQ(told, 2);
}

}  // namespace
}  // namespace kk
