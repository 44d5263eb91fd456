#include "views/TWatchlistUpdateCommands.h"

#include "TSectionWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TWatchlistUpdateCommandsTest : public testing::Test, public TSectionWorld {
 public:
  void DoAfterAdd(TObject*, int iCount) { Adds.push_back(iCount); }

 protected:
  TWatchlistUpdateCommandsTest() { Handler()->LstIntegration().Add(Mute); }
  ~TWatchlistUpdateCommandsTest() override {
    Handler()->TerminateThreads();
    for (const auto& source : {Auction, Shop}) {
      while (!source->Requests().empty()) source->Finish(false);
    }
  }
  TWatchlistUpdateCommands& Commands() { return Recorded->Updates; }
  int Queued(const TIntf<TFakeSource>& iSource) { return Record(iSource).Updater().GetCount(); }
  // An auction that has ended and was refreshed after its end.
  TWatchlistItem& EndedItem(TWatchlistCategory& iCategory) {
    TWatchlistItem& item = Item(iCategory, Auction, u"Vorbei", Now().PlusMs(-2000));
    item.SetLastUpdateDate(Now());
    return item;
  }

  std::vector<int> Adds;
  TWatchlistCategory& Books = Category(u"Bücher");
  TWatchlistCategory& Novels = Category(u"Romane", &Books);
  TWatchlistCategory& Clocks = Category(u"Uhren");
  // A source that can't refresh.
  TIntf<TFakeSource> Mute = MakeIntf<TFakeSource>(u"Stumm", NewGuid(), TFakeAbilities{false, true});
};

TEST_F(TWatchlistUpdateCommandsTest, UpdateAllQueuesWhatCanBeRefreshed) {
  Item(Books, Auction, u"Faust");
  EndedItem(Books);
  Item(Novels, Auction, u"Emma");
  Item(Clocks, Shop, u"Wecker");
  Item(Clocks, Mute, u"Sanduhr");
  LostItem(Clocks, Shop);
  EXPECT_EQ(Commands().UpdateAll(), 3);
  EXPECT_EQ(Queued(Auction), 2);
  EXPECT_EQ(Queued(Shop), 1);
  EXPECT_EQ(Queued(Mute), 0);
  EXPECT_EQ(Auction->Requests().front().Clone->GetName(), u"Faust");
}

TEST_F(TWatchlistUpdateCommandsTest, WaitingResultsDoNotCountAgain) {
  Item(Books, Auction, u"Faust");
  EXPECT_EQ(Commands().UpdateAll(), 1);
  EXPECT_EQ(Commands().UpdateAll(), 0);
  EXPECT_EQ(Queued(Auction), 1);
}

TEST_F(TWatchlistUpdateCommandsTest, NothingToRefreshStillCallsTheUpdatersThatCan) {
  using TSelf = TWatchlistUpdateCommandsTest;
  EndedItem(Books);
  for (TWatchlistIntegration* source : Handler()->LstIntegration()) {
    source->Updater().SetOnAfterAdd(TNotifyEventAfterAdd::Of<&TSelf::DoAfterAdd>(this));
  }
  EXPECT_EQ(Commands().UpdateAll(), 0);
  EXPECT_THAT(Adds, ElementsAre(0, 0)) << "not for the mute source";
  EXPECT_EQ(Commands().UpdateCategory(Books), 0);
  EXPECT_THAT(Adds, ElementsAre(0, 0, 0, 0));
}

TEST_F(TWatchlistUpdateCommandsTest, CategoryIsRefreshedWithItsSubtree) {
  Item(Books, Auction, u"Faust");
  Item(Novels, Shop, u"Emma");
  Item(Clocks, Auction, u"Wecker");
  EXPECT_EQ(Commands().UpdateCategory(Books), 2);
  EXPECT_EQ(Queued(Auction), 1);
  EXPECT_EQ(Queued(Shop), 1);
}

TEST_F(TWatchlistUpdateCommandsTest, GroupIsRefreshedAlone) {
  Item(Books, Auction, u"Faust");
  EndedItem(Books);
  Item(Novels, Auction, u"Emma");
  Item(Clocks, Mute, u"Sanduhr");
  EXPECT_EQ(Commands().UpdateGroup(Group(Books, Auction)), 1);
  EXPECT_EQ(Commands().UpdateGroup(Group(Clocks, Mute)), 0);
  EXPECT_EQ(Commands().UpdateGroup(Group(Books, MakeIntf<TFakeSource>(u"Fremd"))), 0);
  EXPECT_EQ(Queued(Mute), 0);
}

TEST_F(TWatchlistUpdateCommandsTest, ItemIsRefreshedIfItAndItsSourceCan) {
  EXPECT_EQ(Commands().UpdateItem(Item(Books, Auction, u"Faust")), 1);
  EXPECT_EQ(Commands().UpdateItem(EndedItem(Books)), 0);
  EXPECT_EQ(Commands().UpdateItem(Item(Books, Mute, u"Sanduhr")), 0);
  EXPECT_EQ(Commands().UpdateItem(Item(Books, MakeIntf<TFakeSource>(u"Fremd"), u"Emma")), 0);
}

TEST_F(TWatchlistUpdateCommandsTest, WaitingItemIsNotQueuedAgain) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  EXPECT_EQ(Commands().UpdateItem(faust), 1);
  EXPECT_EQ(Commands().UpdateItem(faust), 0);
}

TEST_F(TWatchlistUpdateCommandsTest, SeveralItemsGoAsOneBlockToEachSource) {
  TLstWatchlistItem items(false);
  items.Add(Item(Books, Auction, u"Faust"));
  items.Add(Item(Clocks, Shop, u"Wecker"));
  items.Add(Item(Novels, Auction, u"Emma"));
  items.Add(Item(Clocks, Mute, u"Sanduhr"));
  items.Add(EndedItem(Books));
  EXPECT_EQ(Commands().UpdateItems(items), 3);
  EXPECT_EQ(Record(Auction).Updater().GetCount(), 2);
  EXPECT_EQ(Record(Shop).Updater().GetCount(), 1);
  EXPECT_EQ(Form->Status().Gauge().Maximum(), 3);
}

TEST_F(TWatchlistUpdateCommandsTest, ResultsOfAListAreQueuedIfTheirItemsCanBeRefreshed) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  TWatchlistItem& ended = EndedItem(Books);
  const auto results = Results({&faust, &ended});
  results->Add(FakeResult(u"Unbekannt"));
  results->Add({});
  EXPECT_EQ(Commands().DoTabUpdate(Auction, results), 1);
  EXPECT_EQ(Commands().DoTabUpdate(MakeIntf<TFakeSource>(u"Fremd"), results), 0);
}

TEST_F(TWatchlistUpdateCommandsTest, SourceThatCantRefreshEndsAListsUpdateAtOnce) {
  TWatchlistItem& item = Item(Books, Mute, u"Sanduhr");
  EXPECT_EQ(Commands().DoTabUpdate(Mute, Results({&item})), 1);
  EXPECT_EQ(Queued(Mute), 0);
}

TEST_F(TWatchlistUpdateCommandsTest, CanUpdateNeedsASourceThatCanAndAnItemThatCan) {
  EXPECT_FALSE(Commands().CanUpdate(Item(Clocks, Mute, u"Sanduhr")));
  EXPECT_FALSE(Commands().CanUpdate(EndedItem(Novels)));
  EXPECT_TRUE(Commands().CanUpdate(Item(Novels, Auction, u"Emma")));
}

TEST_F(TWatchlistUpdateCommandsTest, EndTimeEqualToTheLastUpdateCanBeRefreshed) {
  TWatchlistItem& item = Item(Books, Auction, u"Faust", Now());
  item.SetLastUpdateDate(Now());
  EXPECT_TRUE(Commands().CanUpdate(item));
}

}  // namespace
}  // namespace kk
