#include "views/TWatchlistAccess.h"

#include <filesystem>

#include "TSectionWorld.h"
#include "host/common/TFileCompression.h"
#include "host/contract/TPlugins.h"
#include "persistence/exchange/TfrmKKWatchlistImport.h"
#include "persistence/exchange/TfrmWatchlistImportProgress.h"
#include "reminders/TRemindHandler.h"
#include "reminders/editor/TfrmKKWatchlistEditItemRemind.h"
#include "tests/support/TFakePrinting.h"
#include "tests/support/TFakeSourcePlugin.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char16_t cDeleteTwo[] = u"Sollen die 2 markierten Einträge wirklich gelöscht werden?";

class TWatchlistAccessTest : public testing::Test, public TSectionWorld {
 public:
  void DoUpdateFinished(TObject*, const TIntf<ISearchResult>& iResult, bool) {
    Ends.push_back(ToUtf8(iResult->GetName()));
  }
  void DoReminderDue(TObject*, const TWatchlistReminderInfo& iReminder) {
    Ends.push_back("due " + ToUtf8(GUIDToString(iReminder.Id)));
  }
  static std::string NoCategory(const TGuid& iId) {
    return "Es gibt keine Kategorie mit der Id " + ToUtf8(GUIDToString(iId)) + ".";
  }
  static std::string NoItem(const TGuid& iId) {
    return "Es gibt keinen Eintrag mit der Id " + ToUtf8(GUIDToString(iId)) + ".";
  }

  TLines Ends;
  TWatchlistCategory& Books = Category(u"Bücher");
  TWatchlistCategory& Clocks = Category(u"Uhren");
  TIntf<TWatchlistAccess> Access = MakeIntf<TWatchlistAccess>(*Form);
};

TEST_F(TWatchlistAccessTest, TreeIsToldAsValues) {
  TWatchlistCategory& novels = Category(u"Romane", &Books);
  Books.SetDescription({u"alt", u"neu"});
  Books.SetExpanded(true);
  TWatchlistItem& faust = Item(novels, Auction, u"Faust", Now().PlusMs(1000));
  faust.SetDescription({u"Notiz"});
  faust.SetLastUpdateDate(Now());
  TWatchlistItem& lost = LostItem(novels, Auction);
  Remind(faust, u"E1");

  const TWatchlistInfo info = Access->GetTree();
  ASSERT_THAT(info.Categories, SizeIs(3));
  EXPECT_EQ(info.Categories[0].Id, cEmptyGuid);
  EXPECT_EQ(info.Categories[0].Name, u"<Keiner Kategorie zugewiesen>");
  const TWatchlistCategoryInfo& books = info.Categories[1];
  EXPECT_EQ(books.Id, Books.Id());
  EXPECT_EQ(books.Description, (std::vector<TString>{u"alt", u"neu"}));
  EXPECT_TRUE(books.Expanded);
  EXPECT_THAT(books.Groups, IsEmpty());
  ASSERT_THAT(books.Categories, SizeIs(1));
  ASSERT_THAT(books.Categories[0].Groups, SizeIs(1));
  const TWatchlistGroupInfo& group = books.Categories[0].Groups[0];
  EXPECT_EQ(group.PluginId, Auction->GetId());
  EXPECT_EQ(group.Name, u"Auktion");
  ASSERT_THAT(group.Items, SizeIs(2));
  EXPECT_EQ(group.Items[0].Id, faust.SearchResultId());
  EXPECT_EQ(group.Items[0].Name, u"Faust");
  EXPECT_EQ(group.Items[0].LastUpdate, Now());
  EXPECT_EQ(group.Items[0].EndTime, Now().PlusMs(1000));
  EXPECT_EQ(group.Items[0].Note, std::vector<TString>{u"Notiz"});
  EXPECT_EQ(group.Items[0].SearchResult, faust.SearchResult());
  EXPECT_EQ(group.Items[1].Id, lost.SearchResultId());
  EXPECT_EQ(group.Items[1].Name, u"");
  EXPECT_TRUE(group.Items[1].EndTime.IsZero());
  ASSERT_THAT(info.Reminders, SizeIs(1));
  EXPECT_EQ(info.Reminders[0].Id, faust.SearchResultId());
  EXPECT_EQ(info.Reminders[0].Time, Now());
  EXPECT_THAT(info.Reminders[0].Types, ElementsAre(3));
  EXPECT_EQ(info.Reminders[0].SoundFile, u"");
}

TEST_F(TWatchlistAccessTest, SoundOfAReminderIsToldAlsoIfItsKindsDoNotNameIt) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  TWatchlistItem& emma = Item(Books, Auction, u"Emma");
  RemindBySound(faust, u"gong.wav", Now());
  RemindBySound(emma, u"ton.wav", Now());
  Handler()->LstRemind().GetItems(1).SetRemindTypes({rtWindow});
  const std::vector<TWatchlistReminderInfo> reminders = Access->GetTree().Reminders;
  ASSERT_THAT(reminders, SizeIs(2));
  EXPECT_THAT(reminders[0].Types, ElementsAre(0));
  EXPECT_EQ(reminders[0].SoundFile, u"gong.wav");
  EXPECT_THAT(reminders[1].Types, ElementsAre(1));
  EXPECT_EQ(reminders[1].SoundFile, u"ton.wav");
}

TEST_F(TWatchlistAccessTest, OfferWithoutAnEndHasNoEndTime) {
  Item(Books, Auction, u"Faust");
  EXPECT_TRUE(Access->GetTree().Categories[1].Groups[0].Items[0].EndTime.IsZero());
}

TEST_F(TWatchlistAccessTest, CategoriesAreMadeAndChangedByTheirIds) {
  const TGuid top = Access->AddCategory({}, u"Möbel", {u"Zeile"});
  const TGuid child = Access->AddCategory(top, u"Stühle", {});
  EXPECT_EQ(Tree().FindCategoryById(child)->List()->Parent(), Tree().FindCategoryById(top));
  EXPECT_EQ(Tree().FindCategoryById(top)->Description().Lines(), std::vector<TString>{u"Zeile"});
  Access->RenameCategory(child, u"Sessel");
  Access->DescribeCategory(child, {u"weich"});
  EXPECT_EQ(Tree().FindCategoryById(child)->Name(), u"Sessel");
  EXPECT_EQ(Tree().FindCategoryById(child)->Description().Lines(), std::vector<TString>{u"weich"});
  Access->MoveCategory(child, Books.Id());
  EXPECT_EQ(Tree().FindCategoryById(child)->List()->Parent(), &Books);
  Access->MoveCategory(child, {});
  EXPECT_EQ(Tree().FindCategoryById(child)->List(), &Tree());
  User.ExpectQuestion(u"Soll die markierte Kategorie wirklich gelöscht werden?", false);
  EXPECT_FALSE(Access->DeleteCategory(child));
  User.ExpectQuestion(u"Soll die markierte Kategorie wirklich gelöscht werden?", true);
  EXPECT_TRUE(Access->DeleteCategory(child));
  EXPECT_EQ(Tree().FindCategoryById(child), nullptr);
}

TEST_F(TWatchlistAccessTest, UnknownIdsAreRefusedAndNothingHappens) {
  const TGuid id = NewGuid();
  const TGuid faust = Item(Books, Auction, u"Faust").SearchResultId();
  EXPECT_EQ(Refusal([&] { Access->AddCategory(id, u"Möbel", {}); }), NoCategory(id));
  EXPECT_EQ(Refusal([&] { Access->RenameCategory(id, u"Möbel"); }), NoCategory(id));
  EXPECT_EQ(Refusal([&] { Access->DescribeCategory(id, {}); }), NoCategory(id));
  EXPECT_EQ(Refusal([&] { Access->MoveCategory(id, {}); }), NoCategory(id));
  EXPECT_EQ(Refusal([&] { Access->MoveCategory(Books.Id(), id); }), NoCategory(id));
  EXPECT_EQ(Refusal([&] { Access->DeleteCategory(id); }), NoCategory(id));
  EXPECT_EQ(Refusal([&] { Access->RefreshCategory(id); }), NoCategory(id));
  EXPECT_EQ(Refusal([&] { Access->MoveItems({faust}, id); }), NoCategory(id));
  EXPECT_EQ(Refusal([&] { Access->MoveItems({faust, id}, Clocks.Id()); }), NoItem(id));
  EXPECT_EQ(Refusal([&] { Access->DeleteItems({faust, id}); }), NoItem(id));
  EXPECT_EQ(Refusal([&] { Access->SetNote({faust, id}, {}); }), NoItem(id));
  EXPECT_EQ(Refusal([&] { Access->EditReminders({faust, id}); }), NoItem(id));
  EXPECT_EQ(Refusal([&] { Access->DeleteReminders({faust, id}); }), NoItem(id));
  EXPECT_EQ(Refusal([&] { Access->RefreshItems({faust, id}); }), NoItem(id));
  EXPECT_EQ(Books.GetItemCount(true), 1);
  EXPECT_EQ(Access->OpenUpdates(), 0);
}

TEST_F(TWatchlistAccessTest, CategoryIsNotMovedIntoItself) {
  EXPECT_EQ(Refusal([&] { Access->MoveCategory(Books.Id(), Books.Id()); }),
            "Eine Kategorie kann nicht in sich selbst oder eine ihrer Unterkategorien verschoben "
            "werden.");
}

TEST_F(TWatchlistAccessTest, NamesLoseJustWhatTheFileCannotHold) {
  const TString stored = u" M\u00F6bel\r\n\talt \U0001F4FA ";
  TString typed = stored;
  typed.insert(3, u"\x1B");
  typed += static_cast<char16_t>(0xD800);
  const TGuid id = Access->AddCategory({}, typed, {});
  EXPECT_EQ(Tree().FindCategoryById(id)->Name(), stored);
  EXPECT_NE(Refusal([&] { Access->AddCategory({}, stored + u"\x01", {}); }), "nothing raised");
  EXPECT_NE(Refusal([&] { Access->AddCategory({}, u"\x1B", {}); }), "nothing raised");
  Access->RenameCategory(id, TString(u" neu\x07 "));
  EXPECT_EQ(Tree().FindCategoryById(id)->Name(), u" neu ");
}

TEST_F(TWatchlistAccessTest, RulesOfTheSectionHold) {
  EXPECT_NE(Refusal([&] { Access->AddCategory({}, u"BÜCHER", {}); }), "nothing raised");
  EXPECT_NE(Refusal([&] { Access->DeleteCategory(cEmptyGuid); }), "nothing raised");
  EXPECT_NE(Refusal([&] { Access->AddCategory(cEmptyGuid, u"Kind", {}); }), "nothing raised");
}

TEST_F(TWatchlistAccessTest, ItemsOfSeveralSourcesAreMoved) {
  const auto mute = MakeIntf<TFakeSource>(u"Stumm", NewGuid(), TFakeAbilities{false, false});
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  TWatchlistItem& there = Item(Clocks, Auction, u"Wecker");
  TWatchlistItem& emma = Item(Books, Shop, u"Emma");
  TWatchlistItem& sand = Item(Books, mute, u"Sanduhr");
  TWatchlistItem& lost = LostItem(Books, Shop);
  Access->MoveItems({there.SearchResultId(), faust.SearchResultId(), emma.SearchResultId(),
                     sand.SearchResultId(), lost.SearchResultId(), faust.SearchResultId()},
                    Clocks.Id());
  EXPECT_EQ(Books.LstPlugin().GetCount(), 0);
  EXPECT_THAT(Names(Group(Clocks, Auction).LstItem()), ElementsAre("Wecker", "Faust"));
  EXPECT_THAT(Names(Group(Clocks, Shop).LstItem()), ElementsAre("Emma", ""));
  EXPECT_THAT(Names(Group(Clocks, mute).LstItem()), ElementsAre("Sanduhr"));
  EXPECT_EQ(lost.ParentCategoryId(), Clocks.Id());
  EXPECT_EQ(Flags(Auction), "I");
  EXPECT_EQ(Flags(Shop), "I");
}

TEST_F(TWatchlistAccessTest, ItemsOfSeveralSourcesAreDeletedAfterOneQuestion) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  TWatchlistItem& lost = LostItem(Clocks, Shop);
  Remind(faust, u"E1");
  Remind(lost);
  const std::vector<TGuid> ids = {faust.SearchResultId(), lost.SearchResultId(),
                                  faust.SearchResultId()};
  User.ExpectQuestion(cDeleteTwo, false);
  EXPECT_FALSE(Access->DeleteItems(ids));
  EXPECT_EQ(Books.GetItemCount(true), 1);
  User.ExpectQuestion(cDeleteTwo, true);
  EXPECT_TRUE(Access->DeleteItems(ids));
  EXPECT_EQ(Books.GetItemCount(true) + Clocks.GetItemCount(true), 0);
  EXPECT_EQ(Handler()->LstRemind().GetCount(), 0);
  EXPECT_THAT(Calendar.Calls, ElementsAre("Delete E1"));
  EXPECT_EQ(Flags(Auction), "RI");
  EXPECT_EQ(Flags(Shop), "RI");
  EXPECT_FALSE(Access->DeleteItems({}));
}

TEST_F(TWatchlistAccessTest, OneNoteAsksNothing) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  EXPECT_TRUE(Access->SetNote({faust.SearchResultId()}, {u"eins", u"zwei"}));
  EXPECT_EQ(faust.Description().GetCount(), 2);
  EXPECT_FALSE(Access->SetNote({}, {}));
}

TEST_F(TWatchlistAccessTest, NoteForSeveralAsksAndMarksEverySource) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  TWatchlistItem& emma = Item(Books, Shop, u"Emma");
  const std::vector<TGuid> ids = {faust.SearchResultId(), emma.SearchResultId()};
  User.Expect<TfrmKKCommonMessageDlg>([](TfrmKKCommonMessageDlg& form) {
    EXPECT_EQ(form.lblText.Caption(),
              u"Sie haben mehrere Einträge markiert!\r\n"
              u"Möchten Sie die Beschreibung für alle 2 Einträge bearbeiten?");
    EXPECT_EQ(form.btnYes.Caption(), u"&Ja, alle bearbeiten");
    EXPECT_EQ(form.btnYes.Description(), u"Alle Einträge werden bearbeitet.");
    EXPECT_EQ(form.btnNo.Caption(), u"&Nein, abbrechen");
    EXPECT_EQ(form.btnNo.Description(), u"Der Vorgang wird abgebrochen.");
    form.btnNo.Click();
  });
  EXPECT_FALSE(Access->SetNote(ids, {u"eins"}));
  EXPECT_EQ(faust.Description().GetCount(), 0);
  User.ExpectQuestion(
      u"Sie haben mehrere Einträge markiert!\r\n"
      u"Möchten Sie die Beschreibung für alle 2 Einträge bearbeiten?",
      true);
  EXPECT_TRUE(Access->SetNote(ids, {u"eins"}));
  EXPECT_EQ(emma.Description().GetCount(), 1);
  EXPECT_EQ(Flags(Auction), "I");
  EXPECT_EQ(Flags(Shop), "I");
}

TEST_F(TWatchlistAccessTest, RemindersOfSeveralSourcesAreEditedAtOnce) {
  TWatchlistItem& lost = LostItem(Books, Shop);
  TWatchlistItem& ended = Item(Books, Auction, u"Vorbei", Now());
  TWatchlistItem& emma = Item(Clocks, Shop, u"Emma", Now().PlusMs(TDateTime::cMsPerHour));
  TWatchlistItem& faust = Item(Books, Auction, u"Faust", Now().PlusMs(TDateTime::cMsPerDay));
  Folder.Write(u"ton.wav", "RIFF");
  RemindBySound(emma, Folder.File(u"ton.wav"), Now());
  RemindBySound(faust, u"fehlt.wav", Now());
  User.ExpectQuestion(
      u"Sie haben mehrere Einträge markiert!\r\n"
      u"Möchten Sie die Erinnerungen für alle 2 Einträge bearbeiten?\r\n",
      true);
  User.Expect<TfrmKKWatchlistEditItemRemind>([&](TfrmKKWatchlistEditItemRemind& form) {
    EXPECT_EQ(form.edtSoundFile.Text(), Folder.File(u"ton.wav")) << "the first is the pattern";
    form.btnOK.Click();
  });
  Access->EditReminders({lost.SearchResultId(), ended.SearchResultId(), emma.SearchResultId(),
                         faust.SearchResultId(), emma.SearchResultId()});
  ASSERT_EQ(Handler()->LstRemind().GetCount(), 2);
  EXPECT_EQ(Handler()->LstRemind().GetItems(0).Id(), emma.SearchResultId());
  EXPECT_EQ(Handler()->LstRemind().GetItems(1).Id(), faust.SearchResultId());
  Access->EditReminders({lost.SearchResultId(), ended.SearchResultId()});
  Access->EditReminders({});
}

TEST_F(TWatchlistAccessTest, RemindersAreDeletedAfterOneQuestion) {
  constexpr char16_t cQuestion[] =
      u"Soll die Erinnerung für den markierten Eintrag wirklich gelöscht werden?";
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  TWatchlistItem& lost = LostItem(Clocks, Shop);
  Remind(faust);
  Remind(lost, u"E1");
  const std::vector<TGuid> ids = {faust.SearchResultId(), lost.SearchResultId()};
  User.ExpectQuestion(cQuestion, false);
  EXPECT_FALSE(Access->DeleteReminders(ids));
  EXPECT_EQ(Handler()->LstRemind().GetCount(), 2);
  User.ExpectQuestion(cQuestion, true);
  EXPECT_TRUE(Access->DeleteReminders(ids));
  EXPECT_EQ(Handler()->LstRemind().GetCount(), 0);
  EXPECT_THAT(Calendar.Calls, ElementsAre("Delete E1"));
  EXPECT_EQ(Books.GetItemCount(true) + Clocks.GetItemCount(true), 2);
  EXPECT_FALSE(Access->DeleteReminders({}));
}

TEST_F(TWatchlistAccessTest, AReminderThatIsDueIsToldUntilTheEventIsTakenBack) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  Remind(faust);
  TRemindItem& reminder = Handler()->LstRemind().GetItems(0);
  const auto elapse = [&] {
    const auto event = Handler()->RemindHandler().OnProcessElapsedItem();
    event(nullptr, reminder);
  };
  elapse();
  Access->SetOnReminderDue(TNotifyEventReminder::Of<&TWatchlistAccessTest::DoReminderDue>(this));
  elapse();
  Access->SetOnReminderDue({});
  elapse();
  EXPECT_THAT(Ends, ElementsAre("due " + ToUtf8(GUIDToString(faust.SearchResultId()))));
  Access->SetOnReminderDue(TNotifyEventReminder::Of<&TWatchlistAccessTest::DoReminderDue>(this));
  Access->Detach();
  elapse();
  EXPECT_THAT(Ends, SizeIs(1));
  Access->SetOnReminderDue({});
}

TEST_F(TWatchlistAccessTest, ChangedRemindersAreUnsavedUntilTheNextSave) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  EXPECT_FALSE(Access->HasUnsavedReminders());
  Remind(faust);
  EXPECT_TRUE(Access->HasUnsavedReminders());
  Access->Save();
  EXPECT_FALSE(Access->HasUnsavedReminders());
}

TEST_F(TWatchlistAccessTest, RefreshesAreQueuedCountedAndTold) {
  Access->SetOnUpdateFinished(
      TNotifyEventSearchResult::Of<&TWatchlistAccessTest::DoUpdateFinished>(this));
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  TWatchlistItem& wecker = Item(Clocks, Shop, u"Wecker");
  EXPECT_EQ(Access->RefreshItems({faust.SearchResultId(), faust.SearchResultId()}), 1);
  EXPECT_EQ(Access->RefreshCategory(Clocks.Id()), 1);
  EXPECT_EQ(Access->RefreshAll(), 0);
  EXPECT_EQ(Access->OpenUpdates(), 2);
  Auction->Finish(true);
  Shop->Finish(true);
  EXPECT_EQ(Access->OpenUpdates(), 0);
  EXPECT_THAT(Ends, ElementsAre("Faust", "Wecker"));
  Access->SetOnUpdateFinished({});
  EXPECT_EQ(Access->RefreshAll(), 2);
  Auction->Finish(true);
  Shop->Finish(true);
  EXPECT_THAT(Ends, SizeIs(2));
  (void)wecker;
}

TEST_F(TWatchlistAccessTest, WhatWaitsInTheQueuesCanBeTakenBack) {
  Item(Books, Auction, u"Faust");
  Item(Books, Auction, u"Urfaust");
  EXPECT_EQ(Access->RefreshAll(), 2);
  Access->CancelUpdates();
  EXPECT_EQ(Access->OpenUpdates(), 1);
  Auction->Finish(true);
  EXPECT_EQ(Access->OpenUpdates(), 0);
  EXPECT_TRUE(Auction->Requests().empty());
}

TEST_F(TWatchlistAccessTest, CommandsDoNotWaitForTheDelayedStart) {
  TfrmKKWatchlist form;
  form.Initialize(MakeIntf<TFakeApplication>());
  const auto access = MakeIntf<TWatchlistAccess>(form);
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  Auction->SetAnswersAtOnce(true);
  EXPECT_EQ(access->RefreshAll(), 1);
  EXPECT_EQ(faust.LastUpdateDate(), Clock.Now());
  form.Uninitialize();
}

TEST_F(TWatchlistAccessTest, SaveAnswersWhetherItWentThrough) {
  EXPECT_TRUE(Access->Save());
  EXPECT_TRUE(Folder.Has(cWatchlistFileName));
  std::filesystem::remove(Folder.Path() + "/watchlist.dat");
  std::filesystem::remove(Folder.Path() + "/watchlist.da~");
  std::filesystem::create_directories(Folder.Path() + "/watchlist.dat.tmp/full");
  EXPECT_FALSE(Access->Save());
}

TEST_F(TWatchlistAccessTest, PrintGoesByTheIdOfTheCategory) {
  TFakePrinting printing;
  const auto plugin = MakeIntf<TFakeSourcePlugin>(u"Druckerei");
  Plugins().Add(plugin);
  const TIntf<TFakeSource> source = plugin->SourceIntf();
  Item(Books, source, u"Faust");
  Item(Clocks, source, u"Wecker");
  Access->PrintCategory(Books.Id());
  ASSERT_EQ(printing.Contents.size(), 1u);
  EXPECT_EQ(printing.Contents[0].Rows.at(0).at(0), u"Faust");
  const TGuid unknown = NewGuid();
  EXPECT_EQ(Refusal([&] { Access->PrintCategory(unknown); }), NoCategory(unknown));
  Plugins().Remove(plugin);
}

TEST_F(TWatchlistAccessTest, DetachedAccessRefusesEverything) {
  Access->Detach();
  const std::string refused = "Die Beobachtenliste ist nicht bereit.";
  EXPECT_EQ(Refusal([&] { Access->GetTree(); }), refused);
  EXPECT_EQ(Refusal([&] { Access->AddCategory({}, u"Neu", {}); }), refused);
  EXPECT_EQ(Refusal([&] { Access->DeleteItems({}); }), refused);
  EXPECT_EQ(Refusal([&] { Access->EditReminders({}); }), refused);
  EXPECT_EQ(Refusal([&] { Access->DeleteReminders({}); }), refused);
  EXPECT_EQ(Refusal([&] { Access->HasUnsavedReminders(); }), refused);
  EXPECT_EQ(Refusal([&] { Access->RefreshAll(); }), refused);
  EXPECT_EQ(Refusal([&] { Access->OpenUpdates(); }), refused);
  EXPECT_EQ(Refusal([&] { Access->CancelUpdates(); }), refused);
  EXPECT_EQ(Refusal([&] { Access->Save(); }), refused);
  EXPECT_EQ(Refusal([&] { Access->PrintCategory(Books.Id()); }), refused);
  EXPECT_EQ(Refusal([&] {
              Access->SetOnUpdateFinished(
                  TNotifyEventSearchResult::Of<&TWatchlistAccessTest::DoUpdateFinished>(this));
            }),
            refused);
  EXPECT_EQ(Refusal([&] { Access->SetOnUpdateFinished({}); }), "nothing raised");
}

// A section on the screen follows.

TEST_F(TWatchlistAccessTest, SectionOnTheScreenShowsWhatIsCommandedByIds) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  TWatchlistItem& emma = Item(Books, Auction, u"Emma");
  Form->BuildCategoriesTree(false);
  Form->Show();
  TWatchlistCategoryTree& tree = Form->Panes().Tree;
  tree.SelectNode(*tree.GetNodeByObj(&Books));
  Auction->Results().Select({faust.SearchResult()});
  Form->Panes().SetCurrentSearchResult(faust.SearchResult());
  const auto shows = [this](TStringView iText) {
    for (const TKK5SkinExplorerGroup* group : Form->Panes().explrbr.Groups()) {
      for (const auto& item : group->VisibleItems()) {
        if (item->GetCaption() == iText || item->GetValue() == iText) return true;
      }
    }
    return false;
  };
  Access->SetNote({faust.SearchResultId()}, {u"Für Oma"});
  EXPECT_TRUE(shows(u"Für Oma"));
  Access->RenameCategory(Books.Id(), u"Romane");
  EXPECT_TRUE(shows(u"Romane"));
  Access->RenameCategory(Clocks.Id(), u"Wecker");
  EXPECT_TRUE(shows(u"Romane")) << "the other one stays";
  EXPECT_TRUE(shows(u"2"));
  Access->MoveItems({emma.SearchResultId(), faust.SearchResultId()}, Clocks.Id());
  EXPECT_TRUE(shows(u"-"));
  const TVirtualNode& group = *tree.GetNodeByObj(&Clocks)->FirstChild();
  EXPECT_EQ(group.GetItems(0).Object(), &emma) << "sorted";
  const TGuid early = Access->AddCategory(Clocks.Id(), u"Zeit", {});
  Access->MoveCategory(early, {});
  Access->MoveCategory(Books.Id(), {});
  EXPECT_EQ(tree.vstCategories.First()->NextSibling()->Object(), &Books) << "sorted";
}

class TWatchlistAccessExchange : public TWatchlistAccessTest {
 public:
  void Delete(const TWatchlistItem& iItem) {
    User.ExpectQuestion(u"Soll der markierte Eintrag wirklich gelöscht werden?", true);
    EXPECT_TRUE(Access->DeleteItems({iItem.SearchResultId()}));
  }
  static TLines NamesIn(TStringView iCategory) {
    TLstWatchlistItem items(false);
    const TWatchlistCategory* const category = Tree().FindCategoryByName(iCategory);
    if (category == nullptr) return {"no category"};
    for (const TWatchlistPlugin* group : category->LstPlugin()) {
      for (TWatchlistItem* item : group->LstItem()) items.Add(*item);
    }
    return Names(items);
  }

  const TString File = Folder.File(u"teil.wch");
};

TEST_F(TWatchlistAccessExchange, ChosenCategoriesAndSourcesAreExported) {
  TWatchlistCategory& novels = Category(u"Romane", &Books);
  TWatchlistItem& faust = Item(novels, Auction, u"Faust");
  TWatchlistItem& ilias = Item(novels, Shop, u"Ilias");
  TWatchlistItem& clock = Item(Clocks, Auction, u"Wanduhr");
  EXPECT_TRUE(Access->ExportToFile(File, {{Books.Id()}, {Auction->GetId()}}));
  for (const TWatchlistItem* item : {&faust, &ilias, &clock}) Delete(*item);
  EXPECT_TRUE(Access->ImportFromFile(File, {}));
  EXPECT_THAT(NamesIn(u"Romane"), ElementsAre("Faust"));
  EXPECT_EQ(Handler()->GetItemCount(), 1);
}

TEST_F(TWatchlistAccessExchange, UnknownIdsAreRefused) {
  const TGuid id = NewGuid();
  Item(Books, Auction, u"Faust");
  EXPECT_EQ(Refusal([&] { Access->ExportToFile(File, {{id}, {}}); }), NoCategory(id));
  EXPECT_EQ(Refusal([&] {
              Access->ExportToFile(File, {{}, {id}});
            }),
            "Es gibt keine Quelle mit der Id " + ToUtf8(GUIDToString(id)) + ".");
  EXPECT_FALSE(Folder.Has(u"teil.wch"));
}

TEST_F(TWatchlistAccessExchange, AnImportIntoACategoryAsksNothingAndIsSaved) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  EXPECT_TRUE(Access->ExportToFile(File, {}));
  Delete(faust);
  EXPECT_TRUE(Access->ImportFromFile(File, u" Geerbt\x01 "));
  EXPECT_THAT(NamesIn(u"Geerbt"), ElementsAre("Faust"));
  EXPECT_EQ(Flags(Auction), "-");
  EXPECT_TRUE(Folder.Has(u"watchlist.dat"));
}

TEST_F(TWatchlistAccessExchange, WhatCanNotBeReadIsNotImported) {
  Folder.Write(u"kaputt.wch", "nichts");
  EXPECT_FALSE(Access->ImportFromFile(Folder.File(u"kaputt.wch"), {}));
  EXPECT_FALSE(Access->ImportFromFile(Folder.File(u"weg.wch"), u"Geerbt"));
  EXPECT_THROW(Access->ImportFromMobile(Folder.File(u"weg.xml")), Exception);
  EXPECT_EQ(Tree().FindCategoryByName(u"Geerbt"), nullptr);
}

TEST_F(TWatchlistAccessExchange, OfAnOfferedFileTheUserChoosesAndSeesWhatCame) {
  TWatchlistItem& faust = Item(Books, Auction, u"Faust");
  EXPECT_TRUE(Access->ExportToFile(File, {}));
  Delete(faust);
  User.Expect<TfrmKKWatchlistImport>(
      [](TfrmKKWatchlistImport& form) { EXPECT_TRUE(form.btnCancel.Click()); });
  EXPECT_FALSE(Access->OfferImport(File));
  EXPECT_EQ(Handler()->GetItemCount(), 0);
  User.Expect<TfrmKKWatchlistImport>([this](TfrmKKWatchlistImport& form) {
    User.Expect<TfrmWatchlistImportProgress>(
        [this](TfrmWatchlistImportProgress&) { Loop.ProcessMessages(); });
    EXPECT_TRUE(form.btnOK.Click());
  });
  EXPECT_TRUE(Access->OfferImport(File));
  EXPECT_THAT(NamesIn(u"Bücher"), ElementsAre("Faust"));
  EXPECT_TRUE(Form->Visible());
}

TEST_F(TWatchlistAccessExchange, WhatWasNotSavedIsSavedBeforeAFileIsRead) {
  Item(Books, Auction, u"Faust");
  EXPECT_TRUE(Access->ExportToFile(File, {}));
  Item(Books, Auction, u"Ilias");
  Record(Auction).SetChangedItems(true);
  Record(Auction).SetChangedSearchResults(true);
  User.Expect<TfrmKKWatchlistImport>(
      [](TfrmKKWatchlistImport& form) { EXPECT_TRUE(form.btnCancel.Click()); });
  EXPECT_FALSE(Access->OfferImport(File));
  EXPECT_EQ(Flags(Auction), "-");
  TMemoryStream results;
  EXPECT_TRUE(TFileCompression::DecompressFile(Folder.File(u"watchlist.dat"),
                                               GUIDToString(Auction->GetId()), results));
  EXPECT_THAT(std::string(results.Bytes()), testing::HasSubstr("Ilias"));
}

TEST_F(TWatchlistAccessExchange, OfAnOfferedFileTheUserHearsThatItIsNone) {
  Folder.Write(u"kaputt.wch", "nichts");
  const TString file = Folder.File(u"kaputt.wch");
  User.ExpectMessage(u"Diese Datei ist keine Beobachtenliste oder beschädigt: " + file);
  EXPECT_FALSE(Access->OfferImport(file));
}

TEST_F(TWatchlistAccessExchange, TheMobileDocumentGoesOutAndComesBack) {
  const TString file = Folder.File(u"mobil.xml");
  Access->ExportToMobile(file);
  EXPECT_THAT(Folder.Read(u"mobil.xml"), testing::HasSubstr("<name>Uhren</name>"));
  User.ExpectQuestion(u"Soll die markierte Kategorie wirklich gelöscht werden?", true);
  EXPECT_TRUE(Access->DeleteCategory(Clocks.Id()));
  EXPECT_TRUE(Access->ImportFromMobile(file));
  EXPECT_NE(Tree().FindCategoryByName(u"Uhren"), nullptr);
  Folder.Write(u"neuer.xml", "<watchlist><version>2</version></watchlist>");
  EXPECT_TRUE(Access->ImportFromMobile(Folder.File(u"neuer.xml")));
}

TEST_F(TWatchlistAccessExchange, TheOwnFileIsNotWrittenOver) {
  Item(Books, Auction, u"Faust");
  EXPECT_TRUE(Access->Save());
  const std::string before = Folder.Read(u"watchlist.dat");
  for (const TStringView name : {u"watchlist.dat", u"./watchlist.dat", u"watchlist.da~"}) {
    const TString file = Folder.File(name);
    const std::string refusal = "In " + ToUtf8(file) +
                                " steht die Beobachtenliste selbst. Bitte geben Sie eine andere "
                                "Datei an.";
    EXPECT_EQ(Refusal([&] { Access->ExportToFile(file, {}); }), refusal);
    EXPECT_EQ(Refusal([&] { Access->ExportToMobile(file); }), refusal);
  }
  EXPECT_EQ(Folder.Read(u"watchlist.dat"), before);
}

}  // namespace
}  // namespace kk
