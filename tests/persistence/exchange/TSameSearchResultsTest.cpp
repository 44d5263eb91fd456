#include "persistence/exchange/TSameSearchResults.h"

#include "TExchangeWorld.h"
#include "host/contract/ISearchResultSameKey.h"

namespace kk {
namespace {

/// Results that are the same if their keys are.
class TKeyedResult : public TInterfaced<ISearchResult, ISearchResultSameKey> {
 public:
  TKeyedResult(TString iKey, int* ioAsked) : FKey(std::move(iKey)), FAsked(ioAsked) {}

  TGuid GetId() const override { return FId; }
  TString GetName() const override { return FKey; }
  bool HasEndTime() const override { return false; }
  TDateTime GetEndTime() const override { return {}; }
  void SetId(const TGuid& iId) override { FId = iId; }
  bool IsSame(const TIntf<ISearchResult>& iOther) const override {
    ++*FAsked;
    return iOther && iOther->GetName() == FKey;
  }
  TIntf<ISearchResult> Clone() const override { return MakeIntf<TKeyedResult>(FKey, FAsked); }
  TString GetSameKey() const override { return FKey; }

 private:
  TGuid FId = NewGuid();
  TString FKey;
  int* FAsked;
};

class TSameSearchResultsTest : public TExchangeTest {
 protected:
  TIntf<ISearchResult> Keyed(TStringView iKey) {
    return MakeIntf<TKeyedResult>(TString(iKey), &Asked);
  }
  TWatchlistItem& Keep(TWatchlistCategory& iCategory, TStringView iKey) {
    TWatchlistItem& item = Group(iCategory, Shop).LstItem().Add(std::make_unique<TWatchlistItem>());
    item.SetSearchResult(Keyed(iKey));
    return item;
  }

  int Asked = 0;
};

TEST_F(TSameSearchResultsTest, FindsByTheKeyWithoutAskingAnyResult) {
  const TWatchlistItem& lamp = Keep(Unassigned(), u"Lampe");
  TSameSearchResults same;
  EXPECT_EQ(same.Find(Shop->GetId(), Keyed(u"Lampe")), lamp.SearchResultId());
  EXPECT_EQ(same.Find(Shop->GetId(), Keyed(u"Sieb")), std::nullopt);
  EXPECT_EQ(same.Find(Auction->GetId(), Keyed(u"Lampe")), std::nullopt);
  EXPECT_EQ(Asked, 0);
}

TEST_F(TSameSearchResultsTest, OfSeveralThatAreTheSameTheFirstOfTheScanIsTheAnswer) {
  TWatchlistCategory& kitchen = Category(u"Küche");
  Keep(kitchen, u"Lampe");
  const TWatchlistItem& first = Keep(Unassigned(), u"Lampe");
  TSameSearchResults same;
  EXPECT_EQ(same.Find(Shop->GetId(), Keyed(u"Lampe")), first.SearchResultId());
}

TEST_F(TSameSearchResultsTest, HearsOfItemsThatComeAndGo) {
  const TWatchlistItem& lamp = Keep(Unassigned(), u"Lampe");
  TSameSearchResults same;
  ASSERT_TRUE(same.Find(Shop->GetId(), Keyed(u"Lampe")));
  const TWatchlistItem& sieve = Keep(Unassigned(), u"Sieb");
  EXPECT_EQ(same.Find(Shop->GetId(), Keyed(u"Sieb")), sieve.SearchResultId());
  Tree().DeleteItemById(lamp.SearchResultId());
  EXPECT_EQ(same.Find(Shop->GetId(), Keyed(u"Lampe")), std::nullopt);
}

TEST_F(TSameSearchResultsTest, HearsOfAnItemThatIsAnotherArticleAfterARefresh) {
  TWatchlistItem& lamp = Keep(Unassigned(), u"Lampe");
  TSameSearchResults same;
  ASSERT_TRUE(same.Find(Shop->GetId(), Keyed(u"Lampe")));
  const TIntf<ISearchResult> refreshed = Keyed(u"Sieb");
  refreshed->SetId(lamp.SearchResultId());
  lamp.SetSearchResult(refreshed);
  EXPECT_EQ(same.Find(Shop->GetId(), Keyed(u"Lampe")), std::nullopt);
  EXPECT_EQ(same.Find(Shop->GetId(), Keyed(u"Sieb")), lamp.SearchResultId());
}

/// What else happens while a source is looked through.
class TStepper {
 public:
  void DoStep(TObject*) {
    ++Steps;
    if (OnStep) std::exchange(OnStep, nullptr)();
  }
  int Steps = 0;
  std::function<void()> OnStep;
};

TEST_F(TSameSearchResultsTest, LooksThroughAgainWhereItemsComeAndGoMeanwhile) {
  for (int i = 0; i < 2500; ++i) Keep(Unassigned(), u"Lampe " + IntToStr(i));
  TStepper stepper;
  TSameSearchResults same;
  same.SetOnStep(TNotifyEvent::Of<&TStepper::DoStep>(&stepper));
  EXPECT_EQ(same.Find(Shop->GetId(), Keyed(u"Sieb")), std::nullopt);
  EXPECT_EQ(stepper.Steps, 2);

  TSameSearchResults again;
  again.SetOnStep(TNotifyEvent::Of<&TStepper::DoStep>(&stepper));
  stepper.OnStep = [this] {
    Keep(Unassigned(), u"Sieb");
    Tree().DeleteItemById(
        Unassigned().LstPlugin().GetItems(0).LstItem().GetItems(1500).SearchResultId());
  };
  EXPECT_NE(again.Find(Shop->GetId(), Keyed(u"Sieb")), std::nullopt);
  EXPECT_EQ(again.Find(Shop->GetId(), Keyed(u"Lampe 1500")), std::nullopt);
  EXPECT_NE(again.Find(Shop->GetId(), Keyed(u"Lampe 2499")), std::nullopt);
  EXPECT_EQ(stepper.Steps, 3);
}

TEST_F(TSameSearchResultsTest, ASourceWithoutKeysIsAskedResultByResult) {
  const TWatchlistItem& lamp = Item(Unassigned(), Auction, u"Lampe");
  LostItem(Unassigned(), Auction);
  TSameSearchResults same;
  EXPECT_EQ(same.Find(Auction->GetId(), FakeResult(u"Lampe")), lamp.SearchResultId());
  EXPECT_EQ(same.Find(Auction->GetId(), FakeResult(u"Sieb")), std::nullopt);
}

}  // namespace
}  // namespace kk
