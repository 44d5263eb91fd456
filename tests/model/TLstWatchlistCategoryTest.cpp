#include "model/TLstWatchlistCategory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ModelWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;

// Root categories A (children A1, A2) and B.
class Categories : public testing::Test {
 protected:
  // A list that borrows the root categories: it answers like the root.
  void Borrow() {
    for (TWatchlistCategory* category : lst) work.Add(*category);
  }

  TTestModelRoot root;
  TIntf<TFakeSource> source = MakeIntf<TFakeSource>(u"Quelle");
  TLstWatchlistCategory& lst = root.RootCategories();
  TLstWatchlistCategory work{false};
  TWatchlistCategory& a = AddCategory(lst, u"A");
  TWatchlistCategory& a1 = AddCategory(a.LstCategory(), u"A1");
  TWatchlistCategory& a2 = AddCategory(a.LstCategory(), u"A2");
  TWatchlistCategory& b = AddCategory(lst, u"B");
};

TEST_F(Categories, AnswerTheCategoryThatTheyAdd) {
  auto category = std::make_unique<TWatchlistCategory>();
  TWatchlistCategory* made = category.get();
  EXPECT_EQ(&lst.Add(std::move(category)), made);
  EXPECT_EQ(made->List(), &lst);
  EXPECT_EQ(&lst.GetItems(2), made);
  EXPECT_THROW(lst.GetItems(3), EListError);
  EXPECT_THROW(lst.GetItems(-1), EListError);
  EXPECT_EQ(&work.Add(*made), made);
  EXPECT_EQ(made->List(), &lst);
  EXPECT_EQ(lst.Parent(), nullptr);
}

TEST_F(Categories, IndexesLookAtTheirOwnLevelOnly) {
  EXPECT_EQ(lst.IndexOfId(b.Id()), 1);
  EXPECT_EQ(lst.IndexOfId(a1.Id()), -1);
  EXPECT_EQ(lst.IndexOfName(u"b"), 1);
  EXPECT_EQ(lst.IndexOfName(u"A1"), -1);
  EXPECT_EQ(a.LstCategory().IndexOfName(u"a2"), 1);
  AddCategory(lst, u"b", b.Id());
  EXPECT_EQ(lst.IndexOfId(b.Id()), 1);
  EXPECT_EQ(lst.IndexOfName(u"B"), 1);
}

TEST_F(Categories, NamesAreFoundWithoutRegardToCase) {
  TWatchlistCategory& fresh = AddCategory(a1.LstCategory(), u"Neu");
  EXPECT_EQ(lst.FindCategoryByName(u"neu"), &fresh);
  EXPECT_EQ(lst.IndexOfName(u"neu"), -1);
  TWatchlistCategory& umlaut = AddCategory(lst, u"Öfen");
  EXPECT_EQ(lst.FindCategoryByName(u"öFEN"), &umlaut);
  EXPECT_EQ(lst.FindCategoryByName(u"fehlt"), nullptr);
}

TEST_F(Categories, NameAtShallowerLevelWins) {
  AddCategory(a1.LstCategory(), u"B");
  EXPECT_EQ(lst.FindCategoryByName(u"B"), &b);
}

TEST_F(Categories, AmongSiblingsTheFirstNameWins) {
  TWatchlistCategory& early = AddCategory(a1.LstCategory(), u"X");
  AddCategory(a2.LstCategory(), u"X");
  AddCategory(a1.LstCategory(), u"X");
  EXPECT_EQ(lst.FindCategoryByName(u"X"), &early);
}

// Level by level within each subtree, but one subtree after the other.
TEST_F(Categories, ADeeperNameInAnEarlierSubtreeWinsOverAShallowerInALater) {
  TWatchlistCategory& deep = AddCategory(a1.LstCategory(), u"X");
  AddCategory(b.LstCategory(), u"X");
  EXPECT_EQ(lst.FindCategoryByName(u"X"), &deep);
}

TEST_F(Categories, IdAtShallowerLevelWins) {
  const TGuid id = NewGuid();
  TWatchlistCategory& later = AddCategory(b.LstCategory(), u"X", id);
  EXPECT_EQ(lst.FindCategoryById(id), &later);
  TWatchlistCategory& deep = AddCategory(a1.LstCategory(), u"X", id);
  EXPECT_EQ(lst.FindCategoryById(id), &deep);
  TWatchlistCategory& top = AddCategory(lst, u"X", id);
  EXPECT_EQ(lst.FindCategoryById(id), &top);
  Borrow();
  EXPECT_EQ(work.FindCategoryById(id), &top);
  EXPECT_EQ(work.FindCategoryById(NewGuid()), nullptr);
  EXPECT_EQ(a.LstCategory().FindCategoryById(id), &deep);
}

TEST_F(Categories, TheCatchAllIsFoundAtAnyDepth) {
  TWatchlistCategory& catchAll = AddCategory(a2.LstCategory(), u"Keiner", cEmptyGuid);
  EXPECT_EQ(lst.FindCategoryById(cEmptyGuid), &catchAll);
}

TEST_F(Categories, AChangedIdIsFoundAtOnce) {
  const TGuid before = a2.Id();
  a2.SetId(NewGuid());
  EXPECT_EQ(lst.FindCategoryById(a2.Id()), &a2);
  EXPECT_EQ(lst.FindCategoryById(before), nullptr);
}

TEST_F(Categories, ComeInPreOrder) {
  TLstWatchlistCategory all(false);
  lst.GetCategories(all, true);
  EXPECT_EQ(NamesOf(all), "A,A1,A2,B");
  all.Clear();
  lst.GetCategories(all, false);
  EXPECT_EQ(NamesOf(all), "A,B");
  TLstWatchlistCategory owning(true);
  EXPECT_THROW(lst.GetCategories(owning, false), EInvalidCast);
}

TEST_F(Categories, FindItemsAndWhereTheyHang) {
  TWatchlistPlugin& group = AddGroup(a2.LstPlugin(), source);
  TWatchlistItem& item = AddItem(group.LstItem());
  const TGuid id = item.SearchResultId();
  AddItem(AddGroup(b.LstPlugin(), source).LstItem(), id);
  Borrow();
  for (const TLstWatchlistCategory* any : {&lst, &work}) {
    EXPECT_EQ(any->FindItemById(id), &item);
    EXPECT_EQ(any->FindPluginByItemId(id), &group);
    EXPECT_EQ(any->FindCategoryByItemId(id), &a2);
    EXPECT_EQ(any->FindItemById(NewGuid()), nullptr);
    EXPECT_EQ(any->FindPluginByItemId(NewGuid()), nullptr);
    EXPECT_EQ(any->FindCategoryByItemId(NewGuid()), nullptr);
  }
}

TEST_F(Categories, GatherItemsAndGroupsOfEach) {
  AddItem(AddGroup(b.LstPlugin(), source).LstItem(), u"3");
  AddItem(AddGroup(a1.LstPlugin(), source).LstItem(), u"2");
  AddItem(AddGroup(a.LstPlugin(), source).LstItem(), u"1");
  TLstWatchlistItem items(false);
  lst.GetItemsByPluginId(source->GetId(), items, true);
  EXPECT_EQ(NamesOf(items), "1,2,3");
  items.Clear();
  lst.GetItemsByPluginId(source->GetId(), items, false);
  EXPECT_EQ(NamesOf(items), "1,3");
  TLstWatchlistPlugin groups(false);
  lst.GetPlugins(groups);
  EXPECT_EQ(groups.GetCount(), 3);
}

TEST_F(Categories, RemoveAndDeleteItemsById) {
  TWatchlistPlugin& group = AddGroup(a1.LstPlugin(), source);
  TWatchlistItem& first = AddItem(group.LstItem(), u"1");
  const TGuid second = AddItem(group.LstItem(), u"2").SearchResultId();
  Borrow();
  root.Notes().clear();
  EXPECT_EQ(work.RemoveItemById(first.SearchResultId()).get(), &first);
  EXPECT_THAT(root.Notes(), ElementsAre("delete 1"));
  EXPECT_TRUE(lst.DeleteItemById(second));
  EXPECT_THAT(root.Notes(), ElementsAre("delete 1", "delete 2"));
  EXPECT_FALSE(lst.DeleteItemById(second));
  EXPECT_EQ(lst.RemoveItemById(second), nullptr);
  EXPECT_EQ(a1.LstPlugin().GetCount(), 1);
}

TEST_F(Categories, DeleteAGroupWhereverItHangs) {
  Borrow();
  AddGroup(b.LstPlugin(), source);
  EXPECT_TRUE(lst.DeletePlugin(AddGroup(a2.LstPlugin(), source)));
  EXPECT_EQ(a2.LstPlugin().GetCount(), 0);
  EXPECT_TRUE(work.DeletePlugin(AddGroup(a2.LstPlugin(), source)));
  EXPECT_EQ(a2.LstPlugin().GetCount(), 0);
  EXPECT_EQ(b.LstPlugin().GetCount(), 1);
}

TEST_F(Categories, DeletingAGroupThatHangsNowhereChangesNothing) {
  Borrow();
  TWatchlistPlugin loose(source);
  TWatchlistCategory elsewhere;
  TWatchlistPlugin& foreign = AddGroup(elsewhere.LstPlugin(), source);
  EXPECT_FALSE(lst.DeletePlugin(loose));
  EXPECT_FALSE(work.DeletePlugin(loose));
  EXPECT_FALSE(lst.DeletePlugin(foreign));
  EXPECT_FALSE(a.LstCategory().DeletePlugin(AddGroup(a.LstPlugin(), source)));
  EXPECT_EQ(elsewhere.LstPlugin().GetCount(), 1);
  EXPECT_EQ(a.LstPlugin().GetCount(), 1);
}

TEST_F(Categories, CompareResultsOverAllOfThem) {
  const TIntf<ISearchResult> deep = FakeResult(u"X");
  AddItem(AddGroup(a2.LstPlugin(), source).LstItem(), deep);
  AddItem(AddGroup(b.LstPlugin(), source).LstItem(), u"X");
  EXPECT_TRUE(lst.HasSearchResult(source->GetId(), FakeResult(u"X")));
  EXPECT_EQ(lst.FindSameSearchResult(source->GetId(), FakeResult(u"X")), deep);
  EXPECT_FALSE(lst.HasSearchResult(source->GetId(), FakeResult(u"Y")));
  EXPECT_FALSE(lst.FindSameSearchResult(source->GetId(), FakeResult(u"Y")));
  EXPECT_FALSE(lst.HasSearchResult(NewGuid(), FakeResult(u"X")));
}

TEST_F(Categories, OnlyDeleteEmptyPluginsTakesAnEmptiedGroupAway) {
  const TGuid id = AddItem(AddGroup(a1.LstPlugin(), source).LstItem()).SearchResultId();
  AddItem(AddGroup(b.LstPlugin(), source).LstItem());
  EXPECT_FALSE(lst.DeleteEmptyPlugins());
  lst.DeleteItemById(id);
  EXPECT_EQ(a1.LstPlugin().GetCount(), 1);
  EXPECT_TRUE(lst.DeleteEmptyPlugins());
  EXPECT_EQ(a1.LstPlugin().GetCount(), 0);
  EXPECT_EQ(b.LstPlugin().GetCount(), 1);
  EXPECT_FALSE(lst.DeleteEmptyPlugins());
}

// Looks like a mistake and is required.
TEST_F(Categories, DeleteEmptyPluginsWorksOnTheRootWhateverListItIsCalledOn) {
  AddGroup(b.LstPlugin(), source);
  TLstWatchlistCategory elsewhere(true);
  AddGroup(AddCategory(elsewhere, u"X").LstPlugin(), source);
  EXPECT_TRUE(elsewhere.DeleteEmptyPlugins());
  EXPECT_EQ(b.LstPlugin().GetCount(), 0);
  EXPECT_EQ(elsewhere.GetItems(0).LstPlugin().GetCount(), 1);
  AddGroup(b.LstPlugin(), source);
  EXPECT_TRUE(a.LstCategory().DeleteEmptyPlugins());
  EXPECT_EQ(b.LstPlugin().GetCount(), 0);
}

TEST(TLstWatchlistCategory, DeleteEmptyPluginsWithoutARootRaises) {
  TLstWatchlistCategory lst(true);
  EXPECT_THROW(lst.DeleteEmptyPlugins(), Exception);
}

TEST_F(Categories, AUniqueNameIsNeverTheBareOne) {
  EXPECT_EQ(lst.MakeUniqueName(u"Neu"), u"Neu 1");
  EXPECT_EQ(lst.MakeUniqueName(u""), u" 1");
}

TEST_F(Categories, AUniqueNameCountsPastThoseAtAllLevels) {
  AddCategory(lst, u"Neu 1");
  AddCategory(a1.LstCategory(), u"neu 2");
  AddCategory(lst, u"Neu 4");
  EXPECT_EQ(lst.MakeUniqueName(u"Neu"), u"Neu 3");
  EXPECT_EQ(lst.MakeUniqueName(u"NEU"), u"NEU 3");
  // The search spans what lies below the list that is asked.
  EXPECT_EQ(a.LstCategory().MakeUniqueName(u"Neu"), u"Neu 1");
  EXPECT_EQ(b.LstCategory().MakeUniqueName(u"Neu"), u"Neu 1");
}

TEST_F(Categories, DeleteACategoryWithItsSubtreeByTheObject) {
  AddItem(AddGroup(a1.LstPlugin(), source).LstItem(), u"X");
  const TGuid id = a1.Id();
  EXPECT_TRUE(lst.DeleteCategory(a1));
  EXPECT_EQ(NamesOf(a.LstCategory()), "A2");
  EXPECT_EQ(root.Notes().back(), "delete X");
  EXPECT_EQ(lst.FindCategoryById(id), nullptr);
  EXPECT_TRUE(lst.DeleteCategory(a));
  EXPECT_EQ(NamesOf(lst), "B");
}

TEST_F(Categories, DeleteACategoryOfAnotherTreeNever) {
  TWatchlistCategory loose;
  EXPECT_FALSE(lst.DeleteCategory(loose));
  EXPECT_FALSE(a.LstCategory().DeleteCategory(b));
  EXPECT_FALSE(a.LstCategory().DeleteCategory(a));
  EXPECT_EQ(NamesOf(lst), "A,B");
}

TEST_F(Categories, ABorrowedListDropsACategoryOfItsLevelAndDeletesDeeperOnes) {
  Borrow();
  EXPECT_TRUE(work.DeleteCategory(b));
  EXPECT_EQ(NamesOf(work), "A");
  EXPECT_EQ(NamesOf(lst), "A,B");
  EXPECT_TRUE(work.DeleteCategory(a2));
  EXPECT_EQ(NamesOf(a.LstCategory()), "A1");
  TWatchlistCategory loose;
  EXPECT_FALSE(work.DeleteCategory(loose));
}

TEST_F(Categories, HandOverARemovedSubtree) {
  TWatchlistItem& item = AddItem(AddGroup(a1.LstPlugin(), source).LstItem(), u"X");
  root.Notes().clear();
  std::unique_ptr<TWatchlistCategory> removed = lst.RemoveCategoryById(a.Id());
  EXPECT_EQ(removed.get(), &a);
  EXPECT_EQ(NamesOf(a.LstCategory()), "A1,A2");
  EXPECT_EQ(lst.FindItemById(item.SearchResultId()), nullptr);
  EXPECT_EQ(a.FindItemById(item.SearchResultId()), &item);
  EXPECT_TRUE(root.Notes().empty());
  b.LstCategory().Add(std::move(removed));
  EXPECT_EQ(lst.FindItemById(item.SearchResultId()), &item);
  EXPECT_EQ(lst.FindCategoryByItemId(item.SearchResultId()), &a1);
  EXPECT_EQ(lst.RemoveCategoryById(NewGuid()), nullptr);
}

TEST_F(Categories, RemoveTheShallowerOfTwoWithOneId) {
  TWatchlistCategory& deep = AddCategory(a1.LstCategory(), u"X", b.Id());
  EXPECT_EQ(lst.RemoveCategoryById(b.Id()).get(), &b);
  EXPECT_EQ(lst.FindCategoryById(deep.Id()), &deep);
}

TEST_F(Categories, ABorrowedListHandsOverDeeperOnesOnly) {
  Borrow();
  EXPECT_EQ(work.RemoveCategoryById(a1.Id()).get(), &a1);
  EXPECT_THROW(work.RemoveCategoryById(b.Id()), EInvalidCast);
}

TEST_F(Categories, ClearingWithoutFreeLeavesTheSubtreesWhole) {
  TWatchlistItem& item = AddItem(AddGroup(b.LstPlugin(), source).LstItem(), u"X");
  const std::unique_ptr<TWatchlistCategory> guardA(&a);
  const std::unique_ptr<TWatchlistCategory> guardB(&b);
  lst.ClearWithoutFree();
  EXPECT_EQ(lst.FindItemById(item.SearchResultId()), nullptr);
  EXPECT_EQ(lst.FindCategoryById(b.Id()), nullptr);
  EXPECT_EQ(b.FindItemById(item.SearchResultId()), &item);
  EXPECT_THAT(root.Notes(), ElementsAre("add X"));
}

TEST(TLstWatchlistCategory, DeepTreesAreSearchedAndFreed) {
  TTestModelRoot root;
  TLstWatchlistCategory* lst = &root.RootCategories();
  for (int i = 0; i < TWatchlistCategory::cMaxDepth; ++i) {
    lst = &AddCategory(*lst, u"K").LstCategory();
  }
  TWatchlistPlugin& group =
      AddGroup(AddCategory(*lst, u"tief").LstPlugin(), MakeIntf<TFakeSource>(u"Q"));
  TWatchlistItem& item = AddItem(group.LstItem(), u"X");
  EXPECT_EQ(root.RootCategories().FindItemById(item.SearchResultId()), &item);
  EXPECT_EQ(root.RootCategories().FindCategoryByName(u"TIEF"), group.List()->Category());
  EXPECT_EQ(root.RootCategories().GetItems(0).GetItemCount(true), 1);
  root.RootCategories().Clear();
  EXPECT_EQ(root.Notes().back(), "delete X");
}

}  // namespace
}  // namespace kk
