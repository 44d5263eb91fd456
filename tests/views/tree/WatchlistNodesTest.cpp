#include "views/tree/WatchlistNodes.h"

#include "TTreeWorld.h"
#include "reminders/TRemindDetailsWindow.h"

namespace kk {
namespace {

class WatchlistNodesTest : public TTreeTest {
 protected:
  /// A reminder of these kinds, with so many details.
  void AddReminder(const TWatchlistItem& iItem, TRemindTypes iTypes, int iDetails) {
    auto reminder = std::make_unique<TRemindItem>(iItem.SearchResultId());
    reminder->SetRemindTypes(iTypes);
    reminder->SetRemindTime(EncodeDateTime({2026, 11, 20, 18, 30, 0, 0}));
    for (int i = 0; i < iDetails; ++i) {
      reminder->LstDetails().Add(std::make_unique<TRemindDetailsSound>(u"ton.wav"));
    }
    Handler()->LstRemind().Add(std::move(reminder));
  }
  /// The hint of an item with such a reminder, without what is the same for all.
  TString TypeLine(TRemindTypes iTypes, int iDetails) {
    TWatchlistItem& item = Item(Unassigned(), Shop, u"Uhr");
    AddReminder(item, iTypes, iDetails);
    Build();
    const TString hint = Hint(item);
    const TString before = u"Uhr\r\n\r\nErinnerung:\r\n";
    const TString behind = u"\r\nam Freitag, 20. November 2026 um 18:30:00";
    EXPECT_EQ(hint.substr(0, before.size()), before);
    EXPECT_EQ(hint.substr(hint.size() - behind.size()), behind);
    return hint.substr(before.size(), hint.size() - before.size() - behind.size());
  }
  int Compare(const TObject& iA, const TObject& iB) { return CompareNodes(Node(iA), Node(iB)); }
};

TEST_F(WatchlistNodesTest, WithBothSettingsOffNoCountIsShown) {
  TWatchlistCategory& books = Category(u"Bücher");
  Item(books, Shop, u"Roman");
  Build();
  ShowCounts(false, false);
  EXPECT_EQ(Text(books), u"Bücher");
  EXPECT_EQ(Text(Group(books, Shop)), u"Laden");
}

TEST_F(WatchlistNodesTest, WithTheOwnCountACategoryTellsItsOwnItems) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistCategory& novels = Category(u"Romane", &books);
  Item(books, Shop, u"A");
  Item(books, Auction, u"B");
  Item(novels, Shop, u"C");
  Build();
  ShowCounts(true, false);
  EXPECT_EQ(Text(books), u"Bücher (2)");
  EXPECT_EQ(Text(novels), u"Romane (1)");
  EXPECT_EQ(Text(Group(books, Shop)), u"Laden (1)");
  ShowCounts(true, true);
  EXPECT_EQ(Text(books), u"Bücher (3)");
}

TEST_F(WatchlistNodesTest, WithOnlyTheRecursiveCountGroupsTellTheirItems) {
  TWatchlistCategory& books = Category(u"Bücher");
  Item(Category(u"Romane", &books), Shop, u"A");
  Item(books, Shop, u"B");
  Build();
  ShowCounts(false, true);
  EXPECT_EQ(Text(books), u"Bücher (2)");
  EXPECT_EQ(Text(Group(books, Shop)), u"Laden (1)");
}

TEST_F(WatchlistNodesTest, ACountOfZeroIsNeverShown) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistPlugin& group = Group(books, Shop);
  Build();
  ShowCounts(true, true);
  EXPECT_EQ(Text(books), u"Bücher");
  EXPECT_EQ(Text(group), u"Laden");
}

TEST_F(WatchlistNodesTest, TheUnassignedCategoryShowsACountLikeAny) {
  Item(Unassigned(), Shop, u"A");
  Build();
  ShowCounts(true, false);
  EXPECT_EQ(Text(Unassigned()), u"<Keiner Kategorie zugewiesen> (1)");
}

TEST_F(WatchlistNodesTest, AnItemShowsItsNameAlone) {
  TWatchlistItem& item = Item(Unassigned(), Shop, u"Uhr 50%d");
  TWatchlistItem& lost = LostItem(Unassigned(), Shop);
  Unassigned().SetName(u"100 %s");
  Build();
  ShowCounts(true, true);
  EXPECT_EQ(Text(item), u"Uhr 50%d");
  EXPECT_EQ(Text(lost), u"");
  EXPECT_EQ(Text(Unassigned()), u"100 %s (2)");
}

TEST_F(WatchlistNodesTest, AnEmptyNodeIsTheTopLevel) {
  Build();
  TVirtualNode& empty = View().AddChild(nullptr, nullptr);
  EXPECT_EQ(View().Text(empty), u"oberste Ebene");
  EXPECT_EQ(View().Hint(empty), u"");
  EXPECT_EQ(View().ImageIndex(empty), 0);
}

TEST_F(WatchlistNodesTest, CategoriesHaveAFolderThatIsOpenOrClosed) {
  TWatchlistItem& item = Item(Unassigned(), Shop, u"Uhr");
  Build();
  EXPECT_EQ(View().ImageIndex(Node(Unassigned())), 0);
  GoTo(item);
  EXPECT_EQ(View().ImageIndex(Node(Unassigned())), 1);
  EXPECT_EQ(View().ImageIndex(Node(Group(Unassigned(), Shop))), -1);
  EXPECT_EQ(View().ImageIndex(Node(item)), -1);
  ASSERT_EQ(View().Images().size(), 2u);
  EXPECT_EQ(View().Images()[0].ResourceName, u"CATEGORYCLOSED");
  EXPECT_EQ(View().Images()[1].ResourceName, u"CATEGORYOPEN");
}

TEST_F(WatchlistNodesTest, TheHintOfACategoryIsItsNameAndTheDescription) {
  TWatchlistCategory& books = Category(u"Bücher");
  Build();
  EXPECT_EQ(Hint(books), u"Bücher");
  books.SetDescription({u"eins", u"zwei", u"drei"});
  EXPECT_EQ(Hint(books), u"Bücher\r\n\r\neins\r\nzwei\r\ndrei");
}

TEST_F(WatchlistNodesTest, OfALongDescriptionTheHintShowsThreeLines) {
  TWatchlistCategory& books = Category(u"Bücher");
  books.SetDescription({u"eins", u"zwei", u"drei", u"vier"});
  Build();
  EXPECT_EQ(Hint(books), u"Bücher\r\n\r\neins\r\nzwei\r\ndrei\r\n...");
  books.SetDescription({u"eins", u"zwei", u"drei", u"vier", u"fünf"});
  EXPECT_EQ(Hint(books), u"Bücher\r\n\r\neins\r\nzwei\r\ndrei\r\n...");
}

TEST_F(WatchlistNodesTest, TheHintOfAGroupCountsItsItems) {
  TWatchlistPlugin& group = Group(Unassigned(), Shop);
  Build();
  EXPECT_EQ(Hint(group), u"Laden\r\n\r\nEnthält 0 Einträge");
  Item(Unassigned(), Shop, u"A");
  EXPECT_EQ(Hint(group), u"Laden\r\n\r\nEnthält 1 Eintrag");
  Item(Unassigned(), Shop, u"B");
  EXPECT_EQ(Hint(group), u"Laden\r\n\r\nEnthält 2 Einträge");
}

TEST_F(WatchlistNodesTest, TheHintOfAnItemHoldsReminderAndNote) {
  TWatchlistItem& item = Item(Unassigned(), Shop, u"Uhr");
  Build();
  EXPECT_EQ(Hint(item), u"Uhr");
  item.SetDescription({u"Notiz"});
  EXPECT_EQ(Hint(item), u"Uhr\r\n\r\nNotiz");
  AddReminder(item, {rtEmail}, 1);
  EXPECT_EQ(Hint(item),
            u"Uhr\r\n\r\nErinnerung:\r\nE-Mail\r\n"
            u"am Freitag, 20. November 2026 um 18:30:00\r\n\r\nNotiz");
}

TEST_F(WatchlistNodesTest, TheHintOfAnItemWithoutANameHasNoBlankLineInFront) {
  TWatchlistItem& item = LostItem(Unassigned(), Shop);
  item.SetDescription({u"Notiz"});
  Build();
  EXPECT_EQ(Hint(item), u"Notiz");
}

TEST_F(WatchlistNodesTest, AReminderBySoundAndWindowReadsSo) {
  EXPECT_EQ(TypeLine({rtSound, rtWindow}, 2), u"Meldungsfenster + Sound");
}

TEST_F(WatchlistNodesTest, AReminderBySoundAloneReadsSo) {
  EXPECT_EQ(TypeLine({rtSound}, 1), u"Sound");
}

TEST_F(WatchlistNodesTest, WithOneDetailTheSoundIsNotNamedBesideAnother) {
  EXPECT_EQ(TypeLine({rtSound, rtEmail}, 1), u"E-Mail");
}

TEST_F(WatchlistNodesTest, SeveralDetailsWithoutASoundReadAsTheHighestKind) {
  EXPECT_EQ(TypeLine({rtWindow, rtOutlook}, 2), u"Outlook");
}

TEST_F(WatchlistNodesTest, AReminderOfNoKindHasAnEmptyLine) { EXPECT_EQ(TypeLine({}, 0), u""); }

TEST_F(WatchlistNodesTest, KindsStandInTheirOrder) {
  TWatchlistCategory& books = Category(u"zzz");
  TWatchlistItem& item = Item(books, Shop, u"aaa");
  Build();
  TVirtualNode& empty = View().AddChild(nullptr, nullptr);
  EXPECT_LT(CompareNodes(empty, Node(Unassigned())), 0);
  EXPECT_LT(Compare(Unassigned(), books), 0);
  EXPECT_LT(Compare(books, Group(books, Shop)), 0);
  EXPECT_LT(Compare(Group(books, Shop), item), 0);
  EXPECT_GT(Compare(item, books), 0);
}

TEST_F(WatchlistNodesTest, WithinAKindNamesAreComparedWithoutCase) {
  TWatchlistCategory& small = Category(u"abc");
  TWatchlistCategory& large = Category(u"ABC");
  TWatchlistCategory& umlaut = Category(u"äbd");
  TWatchlistCategory& last = Category(u"b");
  Build();
  EXPECT_EQ(Compare(small, large), 0);
  EXPECT_LT(Compare(large, umlaut), 0);
  EXPECT_LT(Compare(umlaut, last), 0);
}

TEST_F(WatchlistNodesTest, FindTheCategoryOfEachKind) {
  TWatchlistCategory& books = Category(u"Bücher");
  TWatchlistItem& item = Item(books, Shop, u"Roman");
  Build();
  EXPECT_EQ(CategoryOfNode(&Node(item)), &books);
  EXPECT_EQ(CategoryOfNode(&Node(Group(books, Shop))), &books);
  EXPECT_EQ(CategoryOfNode(&Node(books)), &books);
  EXPECT_EQ(CategoryOfNode(nullptr), nullptr);
}

}  // namespace
}  // namespace kk
