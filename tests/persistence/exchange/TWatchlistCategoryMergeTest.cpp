#include "persistence/exchange/TWatchlistCategoryMerge.h"

#include "TExchangeWorld.h"
#include "host/base/Exception.h"

namespace kk {
namespace {

class TWatchlistCategoryMergeTest : public TExchangeTest {
 protected:
  TWatchlistCategory& Import(TStringView iName, TWatchlistCategory* iParent = nullptr) {
    auto category = std::make_unique<TWatchlistCategory>();
    category->SetName(iName);
    category->SetId(NewGuid());
    return (iParent != nullptr ? iParent->LstCategory() : Imported).Add(std::move(category));
  }
  void Execute() { Merge.Execute(Tree(), Imported, 0); }
  TLstWatchlistCategory Imported{true};
  TWatchlistCategoryMerge Merge;
};

class TStepCounter {
 public:
  void DoProgress(TObject*) { ++Steps; }
  int Steps = 0;
};

TEST_F(TWatchlistCategoryMergeTest, ANewCategoryComesWithAllThatItIs) {
  TWatchlistCategory& kitchen = Import(u"Küche");
  kitchen.Description().Add(u"Töpfe");
  kitchen.SetExpanded(true);
  Import(u"Regal", &kitchen);
  Execute();
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen> Küche(Regal)");
  const TWatchlistCategory& live = *Tree().FindCategoryByName(u"Küche");
  EXPECT_EQ(live.Id(), kitchen.Id());
  EXPECT_EQ(live.Description().Lines(), std::vector<TString>{u"Töpfe"});
  EXPECT_TRUE(live.Expanded());
  EXPECT_EQ(Merge.GetNewId(kitchen.Id()), kitchen.Id());
}

TEST_F(TWatchlistCategoryMergeTest, ALiveCategoryOfTheNameIsFoundAnywhereWithoutRegardToCase) {
  TWatchlistCategory& shelf = Category(u"Regal", &Category(u"Küche"));
  TWatchlistCategory& imported = Import(u"REGAL");
  Import(u"Oben", &imported);
  Execute();
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen> Küche(Regal(Oben))");
  EXPECT_EQ(Merge.GetNewId(imported.Id()), shelf.Id());
}

TEST_F(TWatchlistCategoryMergeTest, AFoundCategoryStaysAsItIs) {
  TWatchlistCategory& live = Category(u"Küche");
  live.Description().Add(u"alt");
  TWatchlistCategory& imported = Import(u"Küche");
  imported.Description().Add(u"neu");
  imported.SetExpanded(true);
  Execute();
  EXPECT_EQ(live.Description().Lines(), std::vector<TString>{u"alt"});
  EXPECT_FALSE(live.Expanded());
}

TEST_F(TWatchlistCategoryMergeTest, AChildWhoseNameIsElsewhereJoinsThatOne) {
  Category(u"Regal");
  Import(u"Regal", &Import(u"Küche"));
  Execute();
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen> Regal Küche");
}

TEST_F(TWatchlistCategoryMergeTest, TwoImportedOnesOfOneNewNameBothComeIn) {
  Import(u"Küche");
  Import(u"Küche");
  Execute();
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen> Küche Küche");
}

TEST_F(TWatchlistCategoryMergeTest, TheCatchAllCategoryJoinsTheLiveOne) {
  TWatchlistCategory& catchAll = Import(_resEmptyCategoryName);
  catchAll.SetId(cEmptyGuid);
  Execute();
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen>");
  EXPECT_EQ(Merge.GetNewId(cEmptyGuid), cEmptyGuid);
}

TEST_F(TWatchlistCategoryMergeTest, TellsOfEachImportedCategory) {
  Import(u"Regal", &Import(u"Küche"));
  TStepCounter counter;
  Merge.SetOnProgress(TNotifyEvent::Of<&TStepCounter::DoProgress>(&counter));
  Execute();
  EXPECT_EQ(counter.Steps, 2);
}

TEST_F(TWatchlistCategoryMergeTest, AnIdThatWasNeverTranslatedIsAFailure) {
  EXPECT_THROW(Merge.GetNewId(NewGuid()), EConvertError);
}

TEST_F(TWatchlistCategoryMergeTest, NothingGetsDeeperThanTheTreeMayBe) {
  TWatchlistCategory* live = nullptr;
  for (int i = 0; i < TWatchlistCategory::cMaxDepth; ++i) {
    live = &Category(u"Ebene " + IntToStr(i), live);
  }
  Import(u"zu tief", &Import(live->Name()));
  EXPECT_THROW(Execute(), Exception);
  EXPECT_EQ(live->LstCategory().GetCount(), 0);
}

}  // namespace
}  // namespace kk
