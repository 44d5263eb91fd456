#include "persistence/TWatchlistFileLoader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TFileWorld.h"
#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr TGuid cSource = GuidLiteral("{5E000000-0000-0000-0000-000000000001}");
constexpr TGuid cOther = GuidLiteral("{5E000000-0000-0000-0000-000000000002}");
constexpr char cSourceText[] = "{5E000000-0000-0000-0000-000000000001}";
constexpr char cCatchAll[] = "<Keiner Kategorie zugewiesen>\n";

std::string Id(int iNumber) {
  const std::string digits = std::to_string(iNumber);
  return "{00000000-0000-0000-0000-" + std::string(12 - digits.size(), '0') + digits + "}";
}
std::string Category(int iId, const std::string& iName) {
  return "<Category><Id>" + Id(iId) + "</Id><Name>" + iName + "</Name></Category>";
}
std::string Item(int iCategory, int iResult) {
  return "<Item><Category>" + Id(iCategory) + "</Category><SearchResult>" + Id(iResult) +
         "</SearchResult></Item>";
}
// A result in the fake source's own form.
std::string Result(int iId, const std::string& iName) {
  return Id(iId) + "\n" + iName + "\n" + iName + "\n0\n";
}
std::string Reminder(int iId) {
  return "<Item><Id>" + Id(iId) +
         "</Id><Time>2026-11-21T10:00:00</Time><Types>0</Types><Details><Sound><SoundFile>a.wav"
         "</SoundFile></Sound></Details></Item>";
}

class TWatchlistFileLoaderTest : public testing::Test {
 protected:
  void Write(TEntries iEntries) { WriteArchive(World.FileName(), iEntries); }
  // A whole file: category 1 "A" with result 11, category 2 "B" with result 12.
  TEntries Whole() const {
    return {
        {"version", "2"},
        {"categories", "<CategoryRoot>" + Category(1, "A") + Category(2, "B") + "</CategoryRoot>"},
        {std::string("items") + cSourceText, "<Items>" + Item(1, 11) + Item(2, 12) + "</Items>"},
        {cSourceText, Result(11, "Uhr") + Result(12, "Lampe")}};
  }
  TEntries WholeWith(const std::string& iName, const std::string& iBytes) const {
    TEntries entries = Whole();
    for (auto& entry : entries) {
      if (entry.first == iName) {
        entry.second = iBytes;
        return entries;
      }
    }
    entries.emplace_back(iName, iBytes);
    return entries;
  }
  TEntries WholeWithout(const std::string& iName) const {
    TEntries entries = Whole();
    std::erase_if(entries, [&](const auto& entry) { return entry.first == iName; });
    return entries;
  }
  std::string Error(const std::string& iMessage) const {
    return "error WatchlistHandler: Datei konnte nicht geladen werden (" +
           ToUtf8(World.FileName()) + "). Fehlermeldung: " + iMessage;
  }

  TFileWorld World;
  TIntf<TFakeSource> Source = World.AddSource(u"Quelle", cSource);
};

TEST_F(TWatchlistFileLoaderTest, WithoutAFileThereIsTheCatchAllCategoryAlone) {
  EXPECT_FALSE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), cCatchAll);
  EXPECT_EQ(World.Tree().GetItems(0).Id(), cEmptyGuid);
  EXPECT_THAT(World.Log.Lines(), ElementsAre("info WatchlistHandler: Datei nicht vorhanden: " +
                                             ToUtf8(World.FileName())));
}

TEST_F(TWatchlistFileLoaderTest, AFolderOfThisNameCountsAsNoFile) {
  MakeHostFolder(World.FileName());
  EXPECT_FALSE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), cCatchAll);
}

TEST_F(TWatchlistFileLoaderTest, ReadsAWholeFile) {
  Write(WholeWith("remind", "<Items>" + Reminder(11) + "</Items>"));
  World.Record(0).SetChangedItems(true);
  World.Record(0).SetChangedSearchResults(true);
  EXPECT_TRUE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), "A\n  [Quelle]\n    Uhr\nB\n  [Quelle]\n    Lampe\n");
  EXPECT_EQ(World.Reminders.GetCount(), 1);
  EXPECT_FALSE(World.Record(0).IsChanged());
  EXPECT_FALSE(Source->LastDecodeUTF8());
  EXPECT_THAT(World.Log.Lines(), IsEmpty());
}

TEST_F(TWatchlistFileLoaderTest, EachItemThatGetsItsResultIsTold) {
  Write(Whole());
  World.Load();
  EXPECT_THAT(World.Root.Notes(), ElementsAre("add Uhr", "add Lampe"));
}

TEST_F(TWatchlistFileLoaderTest, WithoutAVersionTheFileIsOfVersionZero) {
  Write(WholeWithout("version"));
  EXPECT_TRUE(World.Load());
  EXPECT_TRUE(World.Log.Contains("info WatchlistHandler: Datei-Version ist älter: 2, 0"));
  EXPECT_TRUE(Source->LastDecodeUTF8());
  EXPECT_EQ(Outline(World.Tree()), "A\n  [Quelle]\n    Uhr\nB\n  [Quelle]\n    Lampe\n");
}

TEST_F(TWatchlistFileLoaderTest, AnOlderVersionIsDecodedByTheReaders) {
  // The declaration is wrong for what older writers made: UTF-8 all the same.
  TEntries entries = WholeWith("version", "1");
  entries[1].second = "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><CategoryRoot>" +
                      Category(1, "Bücher") + "</CategoryRoot>";
  Write(entries);
  EXPECT_TRUE(World.Load());
  EXPECT_TRUE(World.Log.Contains("info WatchlistHandler: Datei-Version ist älter: 2, 1"));
  EXPECT_TRUE(Source->LastDecodeUTF8());
  EXPECT_EQ(World.Tree().GetItems(0).Name(), u"Bücher");
}

TEST_F(TWatchlistFileLoaderTest, ANewerVersionIsReadAllTheSame) {
  Write(WholeWith("version", "3"));
  EXPECT_TRUE(World.Load());
  EXPECT_THAT(World.Log.Lines(),
              ElementsAre("info WatchlistHandler: Datei-Version ist neuer: 2, 3"));
  EXPECT_FALSE(Source->LastDecodeUTF8());
  EXPECT_EQ(World.Tree().GetCount(), 2);
}

TEST_F(TWatchlistFileLoaderTest, AVersionThatIsNoNumberIsAFailure) {
  const std::string texts[] = {
      "zwei", "", "2.0", "99999999999", "-99999999999", std::string(100'000, '2')};
  for (const std::string& text : texts) {
    World.ForgetTree();
    World.Log.Clear();
    Write(WholeWith("version", text));
    EXPECT_FALSE(World.Load()) << text.substr(0, 20);
    EXPECT_EQ(Outline(World.Tree()), cCatchAll);
    ASSERT_EQ(World.Log.Lines().size(), 1u);
    EXPECT_THAT(World.Log.Lines()[0], HasSubstr("Datei konnte nicht geladen werden"));
    EXPECT_LT(World.Log.Lines()[0].size(), 300u);
  }
}

TEST_F(TWatchlistFileLoaderTest, ReadsTheWholeRangeOfVersions) {
  Write(WholeWith("version", "2147483647"));
  EXPECT_TRUE(World.Load());
  World.ForgetTree();
  Write(WholeWith("version", "-2147483648"));
  EXPECT_TRUE(World.Load());
  EXPECT_TRUE(World.Log.Contains("info WatchlistHandler: Datei-Version ist älter: 2, -2147483648"));
}

TEST_F(TWatchlistFileLoaderTest, WithoutRemindersThereAreNone) {
  Write(Whole());
  EXPECT_TRUE(World.Load());
  EXPECT_EQ(World.Reminders.GetCount(), 0);
}

TEST_F(TWatchlistFileLoaderTest, AnEmptyReminderStreamIsNoFault) {
  Write(WholeWith("remind", ""));
  EXPECT_TRUE(World.Load());
  EXPECT_EQ(World.Reminders.GetCount(), 0);
}

TEST_F(TWatchlistFileLoaderTest, WithoutCategoriesTheLoadFails) {
  Write(WholeWithout("categories"));
  EXPECT_FALSE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), cCatchAll);
  EXPECT_THAT(World.Log.Lines(), ElementsAre(Error("Datei nicht in ZIP gefunden: categories")));
}

TEST_F(TWatchlistFileLoaderTest, WhereNoCategoryIsInTheFileTheCatchAllIsAdded) {
  for (const char* text : {"", "<CategoryRoot/>"}) {
    World.ForgetTree();
    Write(WholeWith("categories", text));
    EXPECT_TRUE(World.Load());
    // Its items have no category, and every load turns their order round.
    EXPECT_EQ(Outline(World.Tree()), std::string(cCatchAll) + "  [Quelle]\n    Lampe\n    Uhr\n");
  }
}

TEST_F(TWatchlistFileLoaderTest, AGroupHoldsItsItemsInTheReverseOrderOfTheStream) {
  TEntries entries = Whole();
  entries[2].second = "<Items>" + Item(1, 11) + Item(1, 12) + Item(1, 13) + "</Items>";
  entries[3].second = Result(13, "C") + Result(12, "B") + Result(11, "A");
  Write(entries);
  World.Load();
  EXPECT_EQ(Outline(World.Tree()), "A\n  [Quelle]\n    C\n    B\n    A\nB\n");
}

TEST_F(TWatchlistFileLoaderTest, ASourceWithOnlyOneOfItsTwoEntriesIsPassedOver) {
  for (const std::string& missing :
       {std::string("items") + cSourceText, std::string(cSourceText)}) {
    World.ForgetTree();
    World.Record(0).SetChangedItems(true);
    Write(WholeWithout(missing));
    EXPECT_TRUE(World.Load());
    EXPECT_EQ(Outline(World.Tree()), "A\nB\n");
    EXPECT_TRUE(World.Record(0).ChangedItems());
  }
}

TEST_F(TWatchlistFileLoaderTest, ItemsWhoseCategoryIsGoneFallIntoTheCatchAllAndKeepTheirId) {
  TEntries entries = Whole();
  entries[1].second = "<CategoryRoot>" + Category(1, "A") + Category(0, "Rest") + "</CategoryRoot>";
  Write(entries);
  EXPECT_TRUE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), "A\n  [Quelle]\n    Uhr\nRest\n  [Quelle]\n    Lampe\n");
  const TWatchlistItem& fallen =
      World.Tree().GetItems(1).LstPlugin().GetItems(0).LstItem().GetItems(0);
  EXPECT_EQ(ToUtf8(GUIDToString(fallen.ParentCategoryId())), Id(2));
}

TEST_F(TWatchlistFileLoaderTest, TheCatchAllIsFoundAtAnyDepth) {
  TEntries entries = Whole();
  entries[1].second = "<CategoryRoot><Category><Id>" + Id(1) + "</Id><Name>A</Name><Categories>" +
                      Category(0, "Rest") + "</Categories></Category></CategoryRoot>";
  Write(entries);
  EXPECT_TRUE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), "A\n  [Quelle]\n    Uhr\n  Rest\n    [Quelle]\n      Lampe\n");
}

TEST_F(TWatchlistFileLoaderTest, WithoutEvenACatchAllTheRestOfTheItemsIsGivenUp) {
  TEntries entries = Whole();
  entries[1].second = "<CategoryRoot>" + Category(1, "A") + "</CategoryRoot>";
  entries[2].second = "<Items>" + Item(1, 11) + Item(2, 12) + Item(1, 13) + "</Items>";
  entries[3].second += Result(13, "Buch");
  Write(entries);
  EXPECT_TRUE(World.Load());
  // From the end: the one behind the lost one is placed, the one before it goes, too.
  EXPECT_EQ(Outline(World.Tree()), "A\n  [Quelle]\n    Buch\n");
  EXPECT_THAT(World.Root.Notes(),
              ElementsAre("add Uhr", "add Lampe", "add Buch", "delete Uhr", "delete Lampe"));
}

TEST_F(TWatchlistFileLoaderTest, OfCategoriesWithOneIdTheShallowestGetsTheItems) {
  TEntries entries = Whole();
  entries[1].second = "<CategoryRoot><Category><Id>" + Id(7) +
                      "</Id><Name>Erste</Name><Categories>" + Category(1, "Tief") +
                      "</Categories></Category>" + Category(1, "Flach") + Category(1, "Dritte") +
                      Category(2, "B") + "</CategoryRoot>";
  Write(entries);
  EXPECT_TRUE(World.Load());
  EXPECT_EQ(Outline(World.Tree()),
            "Erste\n  Tief\nFlach\n  [Quelle]\n    Uhr\nDritte\nB\n  [Quelle]\n    Lampe\n");
}

TEST_F(TWatchlistFileLoaderTest, ARecordWithoutAResultStaysWithoutOne) {
  TEntries entries = Whole();
  entries[3].second = Result(11, "Uhr");
  Write(entries);
  EXPECT_TRUE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), "A\n  [Quelle]\n    Uhr\nB\n  [Quelle]\n    ?\n");
}

TEST_F(TWatchlistFileLoaderTest, AResultWithoutARecordIsPassedOver) {
  TEntries entries = Whole();
  entries[3].second += Result(99, "Fremd");
  Write(entries);
  EXPECT_TRUE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), "A\n  [Quelle]\n    Uhr\nB\n  [Quelle]\n    Lampe\n");
}

TEST_F(TWatchlistFileLoaderTest, OfRecordsWithOneIdTheFirstGetsTheResult) {
  TEntries entries = Whole();
  entries[2].second = "<Items>" + Item(1, 11) + Item(2, 11) + "</Items>";
  Write(entries);
  EXPECT_TRUE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), "A\n  [Quelle]\n    Uhr\nB\n  [Quelle]\n    ?\n");
}

TEST_F(TWatchlistFileLoaderTest, ASourceThatFailsSpoilsTheWholeLoadButNotTheReminders) {
  Write(WholeWith("remind", "<Items>" + Reminder(11) + "</Items>"));
  Source->SetLoadFailure(u"  Quelle ist\r\nkaputt ");
  EXPECT_FALSE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), cCatchAll);
  EXPECT_EQ(World.Reminders.GetCount(), 1);
  EXPECT_THAT(World.Log.Lines(), ElementsAre(Error("Quelle ist kaputt")));
}

TEST_F(TWatchlistFileLoaderTest, ItemsThatWereLoadedBeforeAFailureAreToldAsDeleted) {
  const auto second = World.AddSource(u"Zweite", cOther);
  TEntries entries = Whole();
  entries.emplace_back("items{5E000000-0000-0000-0000-000000000002}", "<Items/>");
  entries.emplace_back("{5E000000-0000-0000-0000-000000000002}", "");
  Write(entries);
  second->SetLoadFailure(u"kaputt");
  EXPECT_FALSE(World.Load());
  EXPECT_THAT(World.Root.Notes(),
              ElementsAre("add Uhr", "add Lampe", "delete Uhr", "delete Lampe"));
}

TEST_F(TWatchlistFileLoaderTest, EachDamagedDocumentSpoilsTheLoad) {
  for (const std::string& name :
       {std::string("remind"), std::string("categories"), std::string("items") + cSourceText}) {
    World.ForgetTree();
    World.Log.Clear();
    Write(WholeWith(name, "<Items><Item>"));
    EXPECT_FALSE(World.Load()) << name;
    EXPECT_EQ(Outline(World.Tree()), cCatchAll);
    EXPECT_EQ(World.Log.Lines().size(), 1u);
  }
}

TEST_F(TWatchlistFileLoaderTest, NamesOfEntriesAreAskedForWithoutRegardToCase) {
  // The entry is found and can't be read under that name: its source is passed over, not failed.
  TEntries entries = WholeWithout(cSourceText);
  entries.emplace_back("{5e000000-0000-0000-0000-000000000001}", Result(11, "Uhr"));
  Write(entries);
  EXPECT_TRUE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), "A\nB\n");
  EXPECT_THAT(World.Root.Notes(), ElementsAre("delete " + Id(11), "delete " + Id(12)));
}

// A source whose stream gives no list, or a list with a gap.
class TOddSource : public TFakeSource {
 public:
  using TFakeSource::TFakeSource;
  TIntf<IInterfaceList> LoadSearchResults(TStream&, bool) override { return List; }
  TIntf<IInterfaceList> List;
};

TEST_F(TWatchlistFileLoaderTest, ASourceMayAnswerNothingOrGaps) {
  World.Integrations.Clear();
  const auto odd = MakeIntf<TOddSource>(u"Quelle", cSource);
  World.Integrations.Add(odd);
  Write(Whole());
  EXPECT_TRUE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), "A\n  [Quelle]\n    ?\nB\n  [Quelle]\n    ?\n");

  World.ForgetTree();
  odd->List = NewInterfaceList();
  odd->List->Add({});
  EXPECT_TRUE(World.Load());
  EXPECT_EQ(Outline(World.Tree()), "A\n  [Quelle]\n    ?\nB\n  [Quelle]\n    ?\n");
}

// Writes down which of its virtual operations are called.
class TNotingLoader : public TWatchlistFileLoader {
 public:
  using TWatchlistFileLoader::TWatchlistFileLoader;
  std::vector<std::string> Calls;
  bool NeedsCategories = true;

 protected:
  void FoundCategories(bool iFound) override {
    Calls.push_back(iFound ? "FoundCategories" : "FoundCategories not");
    if (NeedsCategories) TWatchlistFileLoader::FoundCategories(iFound);
  }
  void FoundRemindItems() override {
    Calls.emplace_back("FoundRemindItems");
    TWatchlistFileLoader::FoundRemindItems();
  }
  void FoundIntegration(const TGuid& iId) override {
    Calls.push_back("FoundIntegration " + ToUtf8(GUIDToString(iId)));
    TWatchlistFileLoader::FoundIntegration(iId);
  }
  void AddEmptyCategory(TLstWatchlistCategory& ioLst) override {
    Calls.emplace_back("AddEmptyCategory");
    TWatchlistFileLoader::AddEmptyCategory(ioLst);
  }
  int LoadFileVersion() override {
    Calls.emplace_back("LoadFileVersion");
    return TWatchlistFileLoader::LoadFileVersion();
  }
  void LoadRemindItems(TLstRemindItem& ioLst, bool iDecodeUTF8) override {
    Calls.emplace_back("LoadRemindItems");
    TWatchlistFileLoader::LoadRemindItems(ioLst, iDecodeUTF8);
  }
  void LoadCategories(TLstWatchlistCategory& ioLst, bool iDecodeUTF8) override {
    Calls.emplace_back("LoadCategories");
    TWatchlistFileLoader::LoadCategories(ioLst, iDecodeUTF8);
  }
  void LoadIntegration(const TIntf<IWatchlistIntegration>& iIntegration,
                       TLstWatchlistCategory& ioLstCategory, bool iDecodeUTF8) override {
    Calls.emplace_back("LoadIntegration");
    TWatchlistFileLoader::LoadIntegration(iIntegration, ioLstCategory, iDecodeUTF8);
  }
};

TEST_F(TWatchlistFileLoaderTest, DescendantsHearOfEachStep) {
  Write(WholeWith("remind", ""));
  TNotingLoader loader(World.FileName());
  EXPECT_EQ(loader.FileName(), World.FileName());
  EXPECT_TRUE(loader.LoadFromFile(World.Tree(), World.Reminders, World.Integrations));
  EXPECT_THAT(loader.Calls, ElementsAre("LoadFileVersion", "LoadRemindItems", "FoundRemindItems",
                                        "LoadCategories", "FoundCategories", "LoadIntegration",
                                        std::string("FoundIntegration ") + cSourceText));
}

TEST_F(TWatchlistFileLoaderTest, ADescendantMayDoWithoutCategories) {
  Write(WholeWithout("categories"));
  TNotingLoader loader(World.FileName());
  loader.NeedsCategories = false;
  EXPECT_TRUE(loader.LoadFromFile(World.Tree(), World.Reminders, World.Integrations));
  EXPECT_EQ(Outline(World.Tree()), std::string(cCatchAll) + "  [Quelle]\n    Lampe\n    Uhr\n");
  EXPECT_THAT(loader.Calls, testing::Contains("FoundCategories not"));
}

TEST_F(TWatchlistFileLoaderTest, ALoadLeavesTheFileAlone) {
  Write(Whole());
  const std::string before = World.Folder.Read(cWatchlistFileName);
  World.Load();
  Source->SetLoadFailure(u"kaputt");
  World.Load();
  EXPECT_EQ(World.Folder.Read(cWatchlistFileName), before);
  EXPECT_THAT(World.Folder.Names(), ElementsAre("watchlist.dat"));
}

TEST_F(TWatchlistFileLoaderTest, ManyItemsWithOneIdAreReadInNoTime) {
  constexpr int cCount = 20'000;
  std::string items, results;
  for (int i = 0; i < cCount; ++i) {
    items += Item(1, 11);
    results += Result(11, "x");
  }
  TEntries entries = Whole();
  entries[2].second = "<Items>" + items + "</Items>";
  entries[3].second = results;
  Write(entries);
  EXPECT_TRUE(World.Load());
  EXPECT_EQ(World.Tree().GetItems(0).GetItemCount(true), cCount);
}

/// What else happens while a file is read.
class TStepper {
 public:
  void DoStep(TObject*) {
    ++Steps;
    if (OnStep) OnStep();
  }
  int Steps = 0;
  std::function<void()> OnStep;
};

class TWatchlistFileLoaderStepTest : public TWatchlistFileLoaderTest {
 protected:
  TWatchlistFileLoaderStepTest() {
    Write(WholeWith("remind", "<Items>" + Reminder(11) + "</Items>"));
  }
  bool Load() {
    TWatchlistFileLoader loader(World.FileName());
    loader.SetOnStep(TNotifyEvent::Of<&TStepper::DoStep>(&Stepper));
    return loader.LoadFromFile(World.Tree(), World.Reminders, World.Integrations);
  }
  TStepper Stepper;
};

TEST_F(TWatchlistFileLoaderStepTest, TellsOfEachRecordAndOfWhatTakesItsTime) {
  EXPECT_TRUE(Load());
  EXPECT_EQ(Outline(World.Tree()), "A\n  [Quelle]\n    Uhr\nB\n  [Quelle]\n    Lampe\n");
  // Before and behind the unpacking of each entry; a reminder, two categories, two items; the
  // results that the source has read, attached and placed.
  EXPECT_EQ(Stepper.Steps, (2 + 1) + (2 + 2) + (2 + 2) + (2 + 1 + 2 + 2));
}

TEST_F(TWatchlistFileLoaderStepTest, WhatASourceChangesMeanwhileIsNotForgotten) {
  World.Record(0).SetChangedSearchResults(true);  // before, as ever: that is
  bool done = false;
  Stepper.OnStep = [&] {
    if (!std::exchange(done, true)) World.Record(0).SetChangedItems(true);
  };
  EXPECT_TRUE(Load());
  EXPECT_TRUE(World.Record(0).ChangedItems());
  World.Record(0).SetUnchanged();
  World.ForgetTree();
  World.Record(0).SetChangedItems(true);
  EXPECT_TRUE(Load());
  EXPECT_FALSE(World.Record(0).IsChanged());
}

TEST_F(TWatchlistFileLoaderStepTest, AFailureAtAStepIsOneOfTheLoad) {
  for (int last = 1; last <= 18; ++last) {
    World.ForgetTree();
    World.Log.Clear();
    Stepper.Steps = 0;
    Stepper.OnStep = [&] {
      if (Stepper.Steps == last) throw Exception(u"genug");
    };
    EXPECT_FALSE(Load()) << last;
    EXPECT_EQ(Outline(World.Tree()), cCatchAll) << last;
    EXPECT_THAT(World.Log.Lines(), testing::Contains(Error("genug"))) << last;
  }
}

}  // namespace
}  // namespace kk
