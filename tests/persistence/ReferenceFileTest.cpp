#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TFileWorld.h"
#include "host/common/TFileHelper.h"
#include "reminders/TRemindDetailsSound.h"
#include "reminders/TRemindDetailsWindow.h"

// Files as they lie with users. Whatever changes in the code, they are read, and what is written
// has their form: tests/persistence/fixtures holds one of the present version and one each as an
// older and as a newer program would have written it.
namespace kk {
namespace {

constexpr TGuid cBooks = GuidLiteral("{00000000-0000-0000-0000-0000000000A1}");
constexpr TGuid cOldBooks = GuidLiteral("{00000000-0000-0000-0000-0000000000A2}");
constexpr TGuid cClocks = GuidLiteral("{00000000-0000-0000-0000-0000000000A3}");
constexpr TGuid cFaust = GuidLiteral("{00000000-0000-0000-0000-0000000000C1}");
constexpr TGuid cAtlas = GuidLiteral("{00000000-0000-0000-0000-0000000000C2}");
constexpr TGuid cClock = GuidLiteral("{00000000-0000-0000-0000-0000000000C3}");
constexpr TGuid cAuctions = GuidLiteral("{5E000000-0000-0000-0000-000000000001}");
constexpr TGuid cShop = GuidLiteral("{5E000000-0000-0000-0000-000000000002}");

// What version2.dat holds of others: a source that is absent here, and something unknown.
constexpr const char* cForeignEntries[] = {"items{5E000000-0000-0000-0000-000000000003}",
                                           "{5E000000-0000-0000-0000-000000000003}", "zukunft"};

class ReferenceFile : public testing::Test {
 protected:
  void UseFixture(const std::string& iName) {
    const std::string path = std::string(KK_TEST_SOURCE_DIR) + "/persistence/fixtures/" + iName;
    World.Folder.Write(cWatchlistFileName, ReadFileBytes(FromUtf8(path)));
  }

  TWatchlistItem& AddFixedItem(TWatchlistCategory& ioCategory, const TIntf<TFakeSource>& iSource,
                               TStringView iName, const TGuid& iId) {
    TWatchlistItem& item = AddItem(ioCategory, iSource, iName);
    const auto result = MakeIntf<TFakeSearchResult>(iName, iId);
    result->SetEndTime(EncodeDateTime({2026, 12, 24, 18, 0, 0, 0}));
    item.SetSearchResult(result);
    return item;
  }

  // The list of which version2.dat is the file.
  void BuildList() {
    AddCategory(World.Tree(), u"<Keiner Kategorie zugewiesen>", cEmptyGuid);
    TWatchlistCategory& books = AddCategory(World.Tree(), u" Bücher & <Noten>\r\nalle", cBooks);
    books.SetDescription({u"eins", u"", u" drei\t"});
    books.SetExpanded(true);
    TWatchlistCategory& old = AddCategory(books.LstCategory(), u"Antiquariat 😀", cOldBooks);
    TWatchlistItem& faust = AddFixedItem(old, Auctions, u"Faust", cFaust);
    faust.SetDescription({u"für Oma", u"nicht über 20 €"});
    faust.SetLastUpdateDate(EncodeDateTime({2026, 11, 20, 18, 30, 0, 250}));
    AddFixedItem(old, Auctions, u"Atlas", cAtlas).SetDescription({u"  "});
    TWatchlistCategory& clocks = AddCategory(World.Tree(), u"Uhren", cClocks);
    AddFixedItem(clocks, Shop, u"Standuhr", cClock)
        .SetLastUpdateDate(EncodeDateTime({2026, 11, 19, 0, 0, 0, 0}));

    auto reminder = SoundReminder(cFaust, EncodeDateTime({2026, 12, 24, 17, 45, 0, 0}));
    reminder->SetRemindTypes({rtSound, rtWindow});
    reminder->LstDetails().Add(std::make_unique<TRemindDetailsWindow>(
        u"Faust", u"endet\r\ngleich", u"https://example.de/?a=1&b=2"));
    World.Reminders.Add(std::move(reminder));
  }

  // What version2.dat means, with the order of each group turned round by the load.
  void ExpectList() {
    EXPECT_EQ(Outline(World.Tree()),
              "<Keiner Kategorie zugewiesen>\n"
              " Bücher & <Noten>\r\nalle\n"
              "  Antiquariat 😀\n"
              "    [Auktionen]\n"
              "      Atlas\n"
              "      Faust\n"
              "Uhren\n"
              "  [Laden]\n"
              "    Standuhr\n");
    const TWatchlistCategory& books = World.Tree().GetItems(1);
    EXPECT_EQ(books.Id(), cBooks);
    EXPECT_TRUE(books.Expanded());
    EXPECT_EQ(books.Description().Lines(), (std::vector<TString>{u"eins", u"", u" drei\t"}));
    const TWatchlistItem& faust = *World.Tree().FindItemById(cFaust);
    EXPECT_EQ(faust.Description().Lines(), (std::vector<TString>{u"für Oma", u"nicht über 20 €"}));
    EXPECT_EQ(faust.LastUpdateDate(), EncodeDateTime({2026, 11, 20, 18, 30, 0, 250}));
    EXPECT_EQ(faust.ParentCategoryId(), cOldBooks);
    EXPECT_EQ(World.Tree().FindItemById(cAtlas)->Description().GetCount(), 0);
    ASSERT_EQ(World.Reminders.GetCount(), 1);
    const TRemindItem& reminder = World.Reminders.First();
    EXPECT_EQ(reminder.Id(), cFaust);
    EXPECT_EQ(reminder.RemindTime(), EncodeDateTime({2026, 12, 24, 17, 45, 0, 0}));
    EXPECT_EQ(reminder.RemindTypes(), (TRemindTypes{rtSound, rtWindow}));
    EXPECT_EQ(reminder.LstDetails().GetCount(), 2);
  }

  TFileWorld World;
  TIntf<TFakeSource> Auctions = World.AddSource(u"Auktionen", cAuctions);
  TIntf<TFakeSource> Shop = World.AddSource(u"Laden", cShop);
};

TEST_F(ReferenceFile, ThePresentVersionIsReadAsItWasMeant) {
  UseFixture("version2.dat");
  EXPECT_TRUE(World.Load());
  ExpectList();
  EXPECT_THAT(World.Log.Lines(), testing::IsEmpty());
}

TEST_F(ReferenceFile, WhatIsWrittenTodayIsWhatWasWrittenThen) {
  UseFixture("version2.dat");
  auto then = ReadArchive(World.FileName());
  for (const char* name : cForeignEntries) then.erase(name);
  DeleteFile(World.FileName());
  BuildList();
  World.SaveAll();
  EXPECT_EQ(ReadArchive(World.FileName()), then);
}

TEST_F(ReferenceFile, AnAbsentSourceAndAnUnknownEntryOutliveASave) {
  UseFixture("version2.dat");
  const auto then = ReadArchive(World.FileName());
  World.Load();
  World.SaveAll();
  const auto now = ReadArchive(World.FileName());
  for (const char* name : cForeignEntries) EXPECT_EQ(now.at(name), then.at(name)) << name;
}

TEST_F(ReferenceFile, AFileOfTheFirstProgramIsRead) {
  // No version, UTF-8 whatever the declaration says, no mark, other text forms.
  UseFixture("version0.dat");
  EXPECT_TRUE(World.Load());
  EXPECT_THAT(World.Log.Lines(),
              testing::ElementsAre("info WatchlistHandler: Datei-Version ist älter: 2, 0"));
  ExpectList();
  EXPECT_TRUE(Shop->LastDecodeUTF8());
}

TEST_F(ReferenceFile, AFileOfALaterProgramIsReadAndKeepsItsFurtherEntries) {
  UseFixture("version3.dat");
  EXPECT_TRUE(World.Load());
  EXPECT_THAT(World.Log.Lines(),
              testing::ElementsAre("info WatchlistHandler: Datei-Version ist neuer: 2, 3"));
  ExpectList();
  EXPECT_FALSE(Shop->LastDecodeUTF8());
  EXPECT_TRUE(World.SaveChanges());
  const auto entries = ReadArchive(World.FileName());
  EXPECT_EQ(entries.at("version"), "2");
  EXPECT_EQ(entries.at("farben"), "rot, grün, blau");
}

}  // namespace
}  // namespace kk
