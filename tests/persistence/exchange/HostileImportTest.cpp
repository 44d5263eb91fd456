#include <gmock/gmock.h>

#include "THostileImportTest.h"

// Files that are damaged or made to harm, imported into a list that somebody needs: whatever
// becomes of the import, what was there stays, and it ends.
namespace kk {
namespace {

std::string Id(int iNumber) {
  const std::string digits = std::to_string(iNumber);
  return "{00000000-0000-0000-0000-" + std::string(12 - digits.size(), '0') + digits + "}";
}
std::string Categories(const std::string& iInside) {
  return "<CategoryRoot>" + iInside + "</CategoryRoot>";
}
std::string CategoryXml(const std::string& iId, const std::string& iName) {
  return "<Category><Id>" + iId + "</Id><Name>" + iName + "</Name></Category>";
}
std::string ItemXml(const std::string& iCategory, const std::string& iResult,
                    const std::string& iMore = {}) {
  return "<Item><Category>" + iCategory + "</Category><SearchResult>" + iResult +
         "</SearchResult>" + iMore + "</Item>";
}
std::string ReminderXml(const std::string& iId, const std::string& iTime) {
  return "<Item><Id>" + iId + "</Id><Time>" + iTime +
         "</Time><Types>0</Types><Details><Sound><SoundFile>a.wav</SoundFile></Sound></Details>"
         "</Item>";
}
// A result in the fake source's own form.
std::string ResultText(const std::string& iId, const std::string& iName) {
  return iId + "\n" + iName + "\n" + iName + "\n0\n";
}

using HostileImport = THostileImportTest;

TEST_F(HostileImport, CutOffAtAnyByteImportsNothing) {
  const std::string whole = ForeignFile();
  for (size_t size = 0; size < whole.size(); ++size) {
    EXPECT_FALSE(Import(whole.substr(0, size))) << size;
  }
  EXPECT_EQ(Outline(), Live);
  EXPECT_TRUE(Closing.Messages.empty());
}

TEST_F(HostileImport, WithBitsFlippedWhatIsThereStays) {
  const std::string whole = ForeignFile();
  for (size_t bit = 0; bit < whole.size() * 8; bit += 7) {  // of each byte one or two
    std::string bytes = whole;
    bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << (bit % 8)));
    Import(bytes);
  }
  EXPECT_EQ(Tree().FindCategoryByName(u"Regal")->GetItemCount(true), 1);
}

TEST_F(HostileImport, AnyVersionIsRead) {
  for (const char* version : {"0", "1", "2", "3", "99"}) {
    TRawZip zip;
    zip.AddStored("version", version);
    zip.AddStored("categories", Categories(CategoryXml(Id(1), std::string("Version ") + version)));
    EXPECT_TRUE(Import(zip));
    EXPECT_NE(Tree().FindCategoryByName(FromUtf8(std::string("Version ") + version)), nullptr);
  }
}

TEST_F(HostileImport, AVersionThatIsNoNumberImportsNothing) {
  for (const std::string& version : {std::string(), std::string("zwei"), std::string("99999999999"),
                                     std::string(1 << 20, '2')}) {
    TRawZip zip;
    zip.AddStored("version", version);
    zip.AddStored("categories", Categories(CategoryXml(Id(1), "Regal")));
    EXPECT_FALSE(Import(zip)) << version.substr(0, 20);
  }
  EXPECT_EQ(Outline(), Live);
}

TEST_F(HostileImport, AHundredThousandNestedCategoriesAreRefused) {
  std::string text;
  for (int i = 0; i < 100'000; ++i) text += "<Category><Id>" + Id(1) + "</Id><Categories>";
  for (int i = 0; i < 100'000; ++i) text += "</Categories></Category>";
  EXPECT_FALSE(Import(Zip(Categories(text))));
  EXPECT_EQ(Outline(), Live);
  EXPECT_NE(LastError(), "");
}

TEST_F(HostileImport, ManyFlatCategoriesWithOneIdComeInInNoTime) {
  constexpr int cCount = 20'000;
  std::string text;
  for (int i = 0; i < cCount; ++i) text += CategoryXml(Id(1), "Nummer " + std::to_string(i));
  std::string items;
  std::string results;
  for (int i = 0; i < 100; ++i) {
    items += ItemXml(Id(1), Id(100 + i));
    results += ResultText(Id(100 + i), "Lampe " + std::to_string(i));
  }
  EXPECT_TRUE(Import(Zip(Categories(text), items, results)));
  EXPECT_EQ(Tree().GetCount(), cCount + 2);
  EXPECT_EQ(Tree().FindCategoryByName(u"Nummer 0")->GetItemCount(true), 100);
}

TEST_F(HostileImport, AnEntryThatUnpacksBeyondAllBoundsIsRefused) {
  struct TLimit {
    size_t Before = TFileCompression::MaxEntrySize();
    ~TLimit() { TFileCompression::SetMaxEntrySize(Before); }
  } const limit;
  Item(Category(TString(100'000, u'x')), Shop, u"Lampe");
  ExportAll();
  const std::string bytes = ReadFileBytes(ExportFile());
  StartElsewhere();
  FillLive();
  TFileCompression::SetMaxEntrySize(1000);
  EXPECT_FALSE(Import(bytes));
  EXPECT_EQ(Outline(), Live);
  EXPECT_THAT(LastError(), testing::HasSubstr("größer als erlaubt"));
}

TEST_F(HostileImport, NamesOfAMegabyteComeInWhole) {
  const std::string name(1 << 20, 'n');
  EXPECT_TRUE(Import(
      Zip(Categories(CategoryXml(Id(1), name)), ItemXml(Id(1), Id(2)), ResultText(Id(2), name))));
  const TWatchlistItem* item = Tree().FindItemById(StringToGUID(FromUtf8(Id(2))));
  ASSERT_NE(item, nullptr);
  EXPECT_EQ(item->GetName(), FromUtf8(name));
  EXPECT_EQ(item->List()->Group()->List()->Category()->Name(), FromUtf8(name));
}

TEST_F(HostileImport, ACategoryWhoseIdIsNoneSpoilsTheFile) {
  EXPECT_FALSE(Import(Zip(Categories(CategoryXml("keine", "Regal")))));
  EXPECT_EQ(Outline(), Live);
}

TEST_F(HostileImport, AnItemWhoseIdIsNoneCostsThatItemAlone) {
  EXPECT_TRUE(Import(Zip(Categories(CategoryXml(Id(1), "Regal")),
                         ItemXml(Id(1), "keine") + ItemXml("keine", Id(2)) + ItemXml(Id(1), Id(3)),
                         ResultText(Id(3), "Lampe"))));
  EXPECT_EQ(Outline(), Live + " Regal(Laden: Lampe)");
}

TEST_F(HostileImport, DatesOutsideOfAllCalendarsCountAsNever) {
  std::string items;
  std::string results;
  int id = 2;
  for (const char* date : {"0000-01-01T00:00:00", "99999-01-01T00:00:00", "2026-02-30T00:00:00"}) {
    items += ItemXml(Id(1), Id(id), std::string("<LastUpdateDate>") + date + "</LastUpdateDate>");
    results += ResultText(Id(id), date);
    ++id;
  }
  EXPECT_TRUE(Import(Zip(Categories(CategoryXml(Id(1), "Regal")), items, results)));
  const TWatchlistCategory& shelf = *Tree().FindCategoryByName(u"Regal");
  ASSERT_EQ(shelf.GetItemCount(true), 3);
  for (const TWatchlistItem* item : shelf.LstPlugin().GetItems(0).LstItem()) {
    EXPECT_TRUE(item->LastUpdateDate().IsZero()) << ToUtf8(item->GetName());
  }
}

TEST_F(HostileImport, EntriesOfAnUnknownSourceStayOut) {
  TRawZip zip = Zip(Categories(CategoryXml(Id(1), "Regal")));
  zip.AddStored("items" + Id(9), "<Items>" + ItemXml(Id(1), Id(2)) + "</Items>");
  zip.AddStored(Id(9), ResultText(Id(2), "Lampe"));
  EXPECT_TRUE(Import(zip));
  EXPECT_EQ(Outline(), Live + " Regal");
}

TEST_F(HostileImport, OfCategoriesWithOneIdTheLastTellsWhereTheItemsGo) {
  // The first is new, the second is there: each name is translated, and the later line stays.
  EXPECT_TRUE(Import(Zip(Categories(CategoryXml(Id(1), "Regal") + CategoryXml(Id(1), "Küche")),
                         ItemXml(Id(1), Id(2)), ResultText(Id(2), "Lampe"))));
  EXPECT_EQ(Outline(),
            "<Keiner Kategorie zugewiesen>(Auktion: Uhr) Küche(Laden: Sieb Lampe) Regal");
}

TEST_F(HostileImport, AnItemWhoseCategoryWasNeverTranslatedEndsItWithAMessage) {
  // The catch-all category takes the item in, but its stored category stays what it was.
  EXPECT_FALSE(Import(Zip(Categories(CategoryXml(Id(1), "Regal") +
                                     CategoryXml(Id(0), "&lt;Keiner Kategorie zugewiesen&gt;")),
                          ItemXml(Id(7), Id(2)) + ItemXml(Id(1), Id(3)),
                          ResultText(Id(2), "Sessel") + ResultText(Id(3), "Lampe"))));
  EXPECT_EQ(Closing.Messages.size(), 1u);
  // What was taken over by then stays.
  EXPECT_EQ(Outline(), Live + " Regal(Laden: Lampe)");
}

TEST_F(HostileImport, RemindersOfNobodyOrOfNoTimeStayOut) {
  TRawZip zip = Zip(Categories(CategoryXml(Id(1), "Regal")), ItemXml(Id(1), Id(2)),
                    ResultText(Id(2), "Lampe"));
  constexpr char cTime[] = "2064-04-08T00:00:00";
  zip.AddStored("remind",
                "<Items>" + ReminderXml("keine", cTime) + ReminderXml("", cTime) +
                    ReminderXml(Id(9), cTime) + ReminderXml(Id(2), "0000-01-01T00:00:00") +
                    ReminderXml(Id(2), "99999-01-01T00:00:00") + ReminderXml(Id(2), "gestern") +
                    ReminderXml(Id(2), cTime) + "</Items>");
  EXPECT_TRUE(Import(zip));
  ASSERT_EQ(Handler()->LstRemind().GetCount(), 2);
  EXPECT_EQ(Handler()->LstRemind().GetItems(1).Id(), StringToGUID(FromUtf8(Id(2))));
  EXPECT_EQ(Handler()->LstRemind().GetItems(1).RemindTime(),
            EncodeDateTime({2064, 4, 8, 0, 0, 0, 0}));
}

TEST_F(HostileImport, ManyRemindersEndInNoTime) {
  constexpr int cCount = 20'000;
  TRawZip zip = Zip(Categories(CategoryXml(Id(1), "Regal")), ItemXml(Id(1), Id(2)),
                    ResultText(Id(2), "Lampe"));
  std::string reminders;
  for (int i = 0; i < cCount; ++i) reminders += ReminderXml(Id(2), "2064-04-08T00:00:00");
  zip.AddStored("remind", "<Items>" + reminders + "</Items>");
  EXPECT_FALSE(Import(zip));
  EXPECT_EQ(Closing.Messages.size(), 1u);
  EXPECT_EQ(Handler()->LstRemind().GetCount(), 1 + cCount / 2);
}

}  // namespace
}  // namespace kk
