#include "model/TLstWatchlistPlugin.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ModelWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Groups : public testing::TestWithParam<bool> {
 protected:
  // The list under test: the tree's own, or a work list of the same groups.
  TLstWatchlistPlugin& Lst() { return GetParam() ? owner : work; }

  TTestModelRoot root;
  TIntf<TFakeSource> first = MakeIntf<TFakeSource>(u"Erste");
  TIntf<TFakeSource> second = MakeIntf<TFakeSource>(u"Zweite");
  TLstWatchlistPlugin owner{true};
  TLstWatchlistPlugin work{false};
  TWatchlistPlugin& a = work.Add(AddGroup(owner, first));
  TWatchlistPlugin& b = work.Add(AddGroup(owner, second));
};

TEST_P(Groups, AreFoundByTheIdOfTheirSource) {
  EXPECT_EQ(Lst().GetCount(), 2);
  EXPECT_EQ(Lst().IndexOfId(first->GetId()), 0);
  EXPECT_EQ(Lst().IndexOfId(second->GetId()), 1);
  EXPECT_EQ(Lst().IndexOfId(NewGuid()), -1);
  EXPECT_EQ(Lst().FindById(second->GetId()), &b);
  EXPECT_EQ(Lst().FindById(NewGuid()), nullptr);
}

TEST_P(Groups, FindAnItemInTheFirstThatHasItsId) {
  const TGuid id = NewGuid();
  TWatchlistItem& inB = AddItem(b.LstItem(), id);
  EXPECT_EQ(Lst().FindItemById(id), &inB);
  TWatchlistItem& inA = AddItem(a.LstItem(), id);
  EXPECT_EQ(Lst().FindItemById(id), &inA);
  EXPECT_EQ(Lst().FindItemById(NewGuid()), nullptr);
}

TEST_P(Groups, HandOverARemovedItemAndStay) {
  TWatchlistItem& item = AddItem(b.LstItem(), u"Lampe");
  const TGuid id = item.SearchResultId();
  root.Notes().clear();
  EXPECT_EQ(Lst().RemoveItemById(NewGuid()), nullptr);
  const std::unique_ptr<TWatchlistItem> removed = Lst().RemoveItemById(id);
  EXPECT_EQ(removed.get(), &item);
  EXPECT_EQ(b.LstItem().GetCount(), 0);
  EXPECT_EQ(Lst().GetCount(), 2);
  EXPECT_EQ(Lst().RemoveItemById(id), nullptr);
  EXPECT_THAT(root.Notes(), IsEmpty());
}

TEST_P(Groups, FreeADeletedItem) {
  const TGuid id = AddItem(a.LstItem(), u"Lampe").SearchResultId();
  root.Notes().clear();
  EXPECT_TRUE(Lst().DeleteItemById(id));
  EXPECT_THAT(root.Notes(), ElementsAre("delete Lampe"));
  EXPECT_FALSE(Lst().DeleteItemById(id));
}

TEST_P(Groups, WithoutItemsAreFoundInOrder) {
  TWatchlistPlugin& third = AddGroup(owner, MakeIntf<TFakeSource>(u"Dritte"));
  work.Add(third);
  AddItem(b.LstItem());
  AddItem(b.LstItem());
  TLstWatchlistPlugin empty(false);
  Lst().FindEmptyPlugins(empty);
  EXPECT_EQ(NamesOf(empty), "Erste,Dritte");
}

INSTANTIATE_TEST_SUITE_P(OfTheTreeAndBorrowed, Groups, testing::Bool());

TEST(TLstWatchlistPlugin, AnswersTheGroupItAdds) {
  TLstWatchlistPlugin lst(true);
  auto group = std::make_unique<TWatchlistPlugin>(MakeIntf<TFakeSource>(u"Q"));
  TWatchlistPlugin* made = group.get();
  EXPECT_EQ(&lst.Add(std::move(group)), made);
  EXPECT_EQ(&lst.GetItems(0), made);
  EXPECT_EQ(made->List(), &lst);
  EXPECT_THROW(lst.GetItems(1), EListError);
}

TEST(TWatchlistPlugin, AsksItsIntegrationForIdAndNameOnEveryCall) {
  class TRenaming : public TFakeSource {
   public:
    TRenaming() : TFakeSource(u"") {}
    TString GetName() const override { return Name; }
    TGuid GetId() const override { return Id; }
    TString Name = u"Alt";
    TGuid Id = NewGuid();
  };
  const auto source = MakeIntf<TRenaming>();
  const TWatchlistPlugin group(source);
  EXPECT_EQ(group.GetName(), u"Alt");
  source->Name = u"Neu";
  source->Id = NewGuid();
  EXPECT_EQ(group.GetName(), u"Neu");
  EXPECT_EQ(group.GetId(), source->Id);
  EXPECT_EQ(group.Integration(), TIntf<IWatchlistIntegration>(source));
}

TEST(TWatchlistPlugin, IsCollapsedAtFirst) {
  TWatchlistPlugin group(MakeIntf<TFakeSource>(u"Q"));
  EXPECT_FALSE(group.Expanded());
  group.SetExpanded(true);
  EXPECT_TRUE(group.Expanded());
  EXPECT_EQ(group.LstItem().Group(), &group);
  EXPECT_TRUE(group.LstItem().OwnsObjects());
}

TEST(TWatchlistPlugin, FreesItsItemsWhileItIsWhole) {
  TTestModelRoot root;
  auto group = std::make_unique<TWatchlistPlugin>(MakeIntf<TFakeSource>(u"Quelle"));
  AddItem(group->LstItem(), u"A");
  AddItem(group->LstItem(), u"B");
  root.Notes().clear();
  const TWatchlistPlugin& dying = *group;
  root.SetOnDelete([&](TWatchlistItem&) { EXPECT_EQ(dying.GetName(), u"Quelle"); });
  group.reset();
  EXPECT_THAT(root.Notes(), ElementsAre("delete A", "delete B"));
}

}  // namespace
}  // namespace kk
