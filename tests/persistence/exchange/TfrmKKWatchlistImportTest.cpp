#include "persistence/exchange/TfrmKKWatchlistImport.h"

#include "TExchangeWorld.h"
#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"
#include "host/common/TIniFileSectionBase.h"
#include "host/controls/TfrmKKCommonWait.h"
#include "persistence/exchange/TfrmKKWatchlistImportAskForCategory.h"
#include "persistence/exchange/TfrmWatchlistImportProgress.h"

namespace kk {
namespace {

constexpr TDateTime cLater = TDateTime::FromMs(60000 * TDateTime::cMsPerDay);
constexpr TDateTime cEarlier = TDateTime::FromMs(45000 * TDateTime::cMsPerDay);

class TfrmKKWatchlistImportTest : public TExchangeTest {
 protected:
  using TForm = TfrmKKWatchlistImport;
  /// The user chooses the file and does this in the dialog.
  bool Import(std::function<void(TForm&)> iStep) {
    User.ExpectOpenDialog(_resImportCaption, ExportFile());
    User.Expect<TForm>(std::move(iStep));
    return TForm::Display(nullptr);
  }
  bool ImportAll() {
    return Import([this](TForm& form) { Run(form); });
  }
  void ExpectRun() {
    User.Expect<TfrmWatchlistImportProgress>([this](TfrmWatchlistImportProgress& form) {
      Loop.ProcessMessages();
      Progress = form.prgrsbarAdd.Progress();
      Maximum = form.prgrsbarAdd.Maximum();
    });
  }
  void ExpectCategory(TStringView iName) {
    User.Expect<TfrmKKWatchlistImportAskForCategory>(
        [name = TString(iName)](TfrmKKWatchlistImportAskForCategory& form) {
          form.cmbxCategoryChoice.EnterText(name);
          if (name.empty()) {
            EXPECT_FALSE(form.btnOK.Enabled());
            EXPECT_TRUE(form.cmbxCategoryChoice.PressKey(cKeyReturn));
          } else {
            EXPECT_TRUE(form.btnOK.Click());
          }
        });
  }
  void Run(TForm& ioForm) {
    ExpectRun();
    EXPECT_TRUE(ioForm.btnOK.Click());
  }
  /// Without the categories of the file, into this one.
  bool ImportInto(TStringView iName) {
    return Import([this, name = TString(iName)](TForm& form) {
      EXPECT_TRUE(form.chckbxCategories.Click());
      ExpectCategory(name);
      Run(form);
    });
  }
  static TVirtualNode& Row(TForm& ioForm, int iIndex) {
    return ioForm.vstIntegrations.Root().GetItems(iIndex);
  }
  static TString Text(TForm& ioForm, int iIndex) {
    return ioForm.vstIntegrations.Text(Row(ioForm, iIndex));
  }
  void RemindLater(const TWatchlistItem& iItem) { RemindBySound(iItem, u"ton.wav", cLater); }

  int Progress = 0;
  int Maximum = 0;
  TString Told;
};

TEST_F(TfrmKKWatchlistImportTest, ShowsWhatTheFileHolds) {
  TWatchlistItem& lamp = Item(Category(u"Küche"), Shop, u"Lampe");
  Item(Unassigned(), Shop, u"Sieb");
  RemindLater(lamp);
  ExportAll();
  StartElsewhere();
  EXPECT_TRUE(Import([this](TForm& form) {
    EXPECT_EQ(form.Caption(), u"Beobachten (Import)");
    EXPECT_EQ(form.lblQuestion.Caption(), u"Welche Daten sollen importiert werden?");
    EXPECT_EQ(form.vstIntegrations.Root().GetCount(), 1);
    EXPECT_EQ(Text(form, 0), u"Laden [2 Einträge vorhanden]");
    EXPECT_TRUE(Row(form, 0).Checked());
    EXPECT_EQ(form.chckbxRemindItems.Caption(), u"Erinnerungen (1 vorhanden)");
    EXPECT_TRUE(form.chckbxRemindItems.Checked());
    EXPECT_EQ(form.chckbxCategories.Caption(), u"Kategorien (2 vorhanden)");
    EXPECT_TRUE(form.chckbxCategories.Checked() && form.chckbxCategories.Enabled());
    Run(form);
  }));
}

TEST_F(TfrmKKWatchlistImportTest, TakesCategoriesItemsAndRemindersOver) {
  TWatchlistItem& lamp = Item(Category(u"Regal", &Category(u"Küche")), Shop, u"Lampe");
  lamp.Description().Add(u"schön");
  lamp.SetLastUpdateDate(cEarlier);
  const TGuid id = lamp.SearchResultId();
  RemindLater(lamp);
  ExportAll();
  StartElsewhere();
  EXPECT_TRUE(ImportAll());
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen> Küche(Regal(Laden: Lampe))");
  const TWatchlistItem& live = *Tree().FindItemById(id);
  EXPECT_EQ(live.Description().Lines(), std::vector<TString>{u"schön"});
  EXPECT_EQ(live.LastUpdateDate(), cEarlier);
  EXPECT_EQ(live.ParentCategoryId(), Tree().FindCategoryByName(u"Regal")->Id());
  EXPECT_TRUE(HasReminder(id));
  EXPECT_EQ(Flags(Shop), "RI");
  EXPECT_EQ(Progress, Maximum);
  EXPECT_EQ(Maximum, 5);  // three categories, an item, a reminder
}

TEST_F(TfrmKKWatchlistImportTest, IntoItselfChangesNothingButTheFlags) {
  Item(Category(u"Küche"), Shop, u"Lampe").Description().Add(u"schön");
  Item(Unassigned(), Auction, u"Uhr");
  ExportAll();
  Forget();
  const std::string before = Outline();
  EXPECT_TRUE(ImportAll());
  EXPECT_EQ(Outline(), before);
  EXPECT_EQ(Flags(Shop) + Flags(Auction), "RIRI");
}

TEST_F(TfrmKKWatchlistImportTest, WhatIsThereAlreadyStaysWhereAndAsItIs) {
  Item(Category(u"Küche"), Shop, u"Lampe").Description().Add(u"aus der Datei");
  ExportAll();
  StartElsewhere();
  TWatchlistItem& live = Item(Category(u"Flur"), Shop, u"Lampe");
  live.Description().Add(u"meine");
  EXPECT_TRUE(ImportAll());
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen> Flur(Laden: Lampe) Küche");
  EXPECT_EQ(live.Description().Lines(), std::vector<TString>{u"meine"});
}

TEST_F(TfrmKKWatchlistImportTest, ItemsJoinALiveCategoryOfTheNameDeepInTheTree) {
  Item(Category(u"REGAL"), Shop, u"Lampe");
  ExportAll();
  StartElsewhere();
  Category(u"Regal", &Category(u"Flur"));
  EXPECT_TRUE(ImportAll());
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen> Flur(Regal(Laden: Lampe))");
}

TEST_F(TfrmKKWatchlistImportTest, OnlyTheTickedSourcesComeIn) {
  Item(Category(u"Küche"), Shop, u"Lampe");
  Item(Unassigned(), Auction, u"Uhr");
  ExportAll();
  StartElsewhere();
  Forget();
  EXPECT_TRUE(Import([this](TForm& form) {
    EXPECT_TRUE(form.vstIntegrations.CheckNode(Row(form, 0)));
    Run(form);
  }));
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen> Küche(Laden: Lampe)");
  EXPECT_EQ(Flags(Auction), "-");
}

TEST_F(TfrmKKWatchlistImportTest, WithoutCategoriesAllGoIntoTheOneThatIsNamed) {
  Item(Category(u"Regal", &Category(u"Küche")), Shop, u"Lampe");
  Item(Unassigned(), Auction, u"Uhr");
  ExportAll();
  StartElsewhere();
  Clock.Set(TDateTime::FromMs(45000 * TDateTime::cMsPerDay));
  EXPECT_TRUE(ImportInto(u" Neues "));
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen> Neues(Auktion: Uhr; Laden: Lampe)");
  const TWatchlistCategory& made = *Tree().FindCategoryByName(u"Neues");
  EXPECT_EQ(made.Description().Lines(),
            std::vector<TString>{Format(u"Erstellt durch Import am %s um %s",
                                        {ShortDateToStr(cEarlier), LongTimeToStr(cEarlier)})});
  EXPECT_NE(made.Id(), cEmptyGuid);
  EXPECT_EQ(Maximum, 5);  // a category, and each item twice
  EXPECT_EQ(Progress, Maximum);
}

TEST_F(TfrmKKWatchlistImportTest, ANamedCategoryThatIsThereIsJoinedAtAnyDepth) {
  Item(Unassigned(), Shop, u"Lampe");
  ExportAll();
  StartElsewhere();
  TWatchlistCategory& live = Category(u"Regal", &Category(u"Flur"));
  EXPECT_TRUE(ImportInto(u"regal"));
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen> Flur(Regal(Laden: Lampe))");
  EXPECT_EQ(live.Description().GetCount(), 0);
}

TEST_F(TfrmKKWatchlistImportTest, AnEmptyNameByReturnKeepsTheStructureOfTheFile) {
  Item(Category(u"Küche"), Shop, u"Lampe");
  ExportAll();
  StartElsewhere();
  EXPECT_TRUE(ImportInto({}));
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen> Küche(Laden: Lampe)");
}

TEST_F(TfrmKKWatchlistImportTest, ProposesTheDateAndOffersTheNamesOfTheTreeOnce) {
  Item(Unassigned(), Shop, u"Lampe");
  ExportAll();
  Category(u"Zelt");
  Category(u"Äpfel", &Category(u"Buch"));
  Category(u"buch");
  EXPECT_FALSE(Import([this](TForm& form) {
    EXPECT_TRUE(form.chckbxCategories.Click());
    User.Expect<TfrmKKWatchlistImportAskForCategory>(
        [](TfrmKKWatchlistImportAskForCategory& question) {
          const TComboBox& choice = question.cmbxCategoryChoice;
          EXPECT_EQ(choice.Text(), u"Import " + ShortDateToStr(Now()));
          EXPECT_EQ(choice.Items(), (std::vector<TString>{TString(_resEmptyCategoryName), u"Äpfel",
                                                          u"Buch", u"Zelt"}));
          EXPECT_TRUE(question.btnCancel.Click());
        });
    EXPECT_TRUE(form.btnOK.Click());
    EXPECT_TRUE(form.btnCancel.Click());
  }));
}

TEST_F(TfrmKKWatchlistImportTest, AnElapsedReminderStaysOut) {
  const TWatchlistItem& lamp = Item(Unassigned(), Shop, u"Lampe");
  RemindBySound(lamp, u"ton.wav", Now().PlusMs(-1));
  const TGuid id = lamp.SearchResultId();
  ExportAll();
  StartElsewhere();
  EXPECT_TRUE(ImportAll());
  EXPECT_FALSE(HasReminder(id));
}

TEST_F(TfrmKKWatchlistImportTest, AReminderOfASourceThatIsNotTickedStaysOut) {
  RemindLater(Item(Unassigned(), Auction, u"Uhr"));
  Item(Unassigned(), Shop, u"Lampe");
  ExportAll();
  StartElsewhere();
  EXPECT_TRUE(Import([this](TForm& form) {
    EXPECT_TRUE(form.vstIntegrations.CheckNode(Row(form, 0)));
    Run(form);
  }));
  EXPECT_EQ(Handler()->LstRemind().GetCount(), 0);
}

TEST_F(TfrmKKWatchlistImportTest, AReminderOfADuplicateGoesToTheLiveItem) {
  RemindLater(Item(Unassigned(), Shop, u"Lampe"));
  ExportAll();
  StartElsewhere();
  const TWatchlistItem& live = Item(Unassigned(), Shop, u"Lampe");
  EXPECT_TRUE(ImportAll());
  EXPECT_TRUE(HasReminder(live.SearchResultId()));
}

TEST_F(TfrmKKWatchlistImportTest, AnItemWithAReminderGetsASecondOne) {
  RemindLater(Item(Unassigned(), Shop, u"Lampe"));
  ExportAll();
  EXPECT_TRUE(ImportAll());
  EXPECT_EQ(Handler()->LstRemind().GetCount(), 2);
}

TEST_F(TfrmKKWatchlistImportTest, OfTwoGoodRemindersTheFirstIsTakenAndTheStepFails) {
  RemindLater(Item(Unassigned(), Shop, u"Lampe"));
  RemindLater(Item(Unassigned(), Shop, u"Sieb"));
  ExportAll();
  StartElsewhere();
  EXPECT_FALSE(Import([this](TForm& form) {
    User.Expect<TfrmWatchlistImportProgress>([this](TfrmWatchlistImportProgress&) {
      User.Expect<TfrmMessageDlg>([this](TfrmMessageDlg& box) {
        EXPECT_EQ(box.Type(), TMsgDlgType::mtError);
        Told = box.Text();
        box.Button(TMsgDlgBtn::mbOK)->Click();
      });
      Loop.ProcessMessages();
    });
    EXPECT_TRUE(form.btnOK.Click());
  }));
  EXPECT_FALSE(Told.empty());
  EXPECT_EQ(Handler()->LstRemind().GetCount(), 1);
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen>(Laden: Sieb Lampe)");
}

TEST_F(TfrmKKWatchlistImportTest, InTheBackgroundAllComesInWithoutAWindow) {
  Item(Category(u"Küche"), Shop, u"Lampe");
  ExportAll();
  StartElsewhere();
  EXPECT_TRUE(TForm::ExecuteInBackground(ExportFile()));
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen> Küche(Laden: Lampe)");
  EXPECT_EQ(User.ShownCount(), 0);
}

TEST_F(TfrmKKWatchlistImportTest, InTheBackgroundTheLoopTurnsOnceAlone) {
  Item(Category(u"Küche"), Shop, u"Lampe");
  ExportAll();
  StartElsewhere();
  const int before = Loop.Turns();
  EXPECT_TRUE(TForm::ExecuteInBackground(ExportFile()));
  EXPECT_EQ(Loop.Turns() - before, 1);
}

TEST_F(TfrmKKWatchlistImportTest, InTheBackgroundAFileWithoutCategoriesAsksAllTheSame) {
  Item(Category(u"Küche"), Shop, u"Lampe");
  ExportAll(false, false);
  StartElsewhere();
  ExpectCategory(u"Neues");
  EXPECT_TRUE(TForm::ExecuteInBackground(ExportFile()));
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen> Neues(Laden: Lampe)");
}

TEST_F(TfrmKKWatchlistImportTest, InTheBackgroundACancelledQuestionImportsNothing) {
  Item(Category(u"Küche"), Shop, u"Lampe");
  ExportAll(false, false);
  StartElsewhere();
  User.Expect<TfrmKKWatchlistImportAskForCategory>(
      [](TfrmKKWatchlistImportAskForCategory& form) { EXPECT_TRUE(form.btnCancel.Click()); });
  EXPECT_FALSE(TForm::ExecuteInBackground(ExportFile()));
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen>");
}

TEST_F(TfrmKKWatchlistImportTest, AFileWithoutCategoriesDisablesTheirBox) {
  Item(Category(u"Küche"), Shop, u"Lampe");
  ExportAll(false, false);
  StartElsewhere();
  EXPECT_FALSE(Import([](TForm& form) {
    EXPECT_EQ(form.chckbxCategories.Caption(), u"Kategorien (0 vorhanden)");
    EXPECT_FALSE(form.chckbxCategories.Checked() || form.chckbxCategories.Enabled());
    EXPECT_FALSE(form.chckbxRemindItems.Checked() || form.chckbxRemindItems.Enabled());
    EXPECT_TRUE(form.btnCancel.Click());
  }));
}

TEST_F(TfrmKKWatchlistImportTest, AnItemWithoutAResultEndsItWithAMessage) {
  LostItem(Unassigned(), Shop);
  ExportAll();
  StartElsewhere();
  EXPECT_FALSE(Import([this](TForm& form) {
    User.Expect<TfrmWatchlistImportProgress>([this](TfrmWatchlistImportProgress&) {
      User.Expect<TfrmMessageDlg>(
          [](TfrmMessageDlg& box) { box.Button(TMsgDlgBtn::mbOK)->Click(); });
      Loop.ProcessMessages();
    });
    EXPECT_TRUE(form.btnOK.Click());
  }));
  EXPECT_EQ(Unassigned().FindItemById(cEmptyGuid), nullptr);
}

TEST_F(TfrmKKWatchlistImportTest, AMobileDocumentBringsItsCategories) {
  TMemoryStream stream(
      "<watchlist><version>1</"
      "version><categories><category><guid>abcdef01-2222-3333-4444-555555555555</guid><name>Küche</"
      "name></category>"
      "</categories></watchlist>");
  EXPECT_TRUE(TForm::ExecuteInBackgroundFromKKMobileStream(stream));
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen> Küche");
  EXPECT_EQ(User.ShownCount(), 0);
}

TEST_F(TfrmKKWatchlistImportTest, AMobileDocumentOfAnotherVersionImportsNothingWithoutAMessage) {
  TMemoryStream stream(
      "<watchlist><version>2</"
      "version><categories><category><guid>abcdef01-2222-3333-4444-555555555555</guid><name>Küche</"
      "name></category>"
      "</categories></watchlist>");
  EXPECT_TRUE(TForm::ExecuteInBackgroundFromKKMobileStream(stream));
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen>");
}

TEST_F(TfrmKKWatchlistImportTest, WhatIsNoMobileDocumentIsToldAndImportsNothing) {
  TMemoryStream stream("kein XML");
  User.Expect<TfrmMessageDlg>([](TfrmMessageDlg& box) {
    EXPECT_EQ(box.Type(), TMsgDlgType::mtError);
    EXPECT_TRUE(box.Button(TMsgDlgBtn::mbOK)->Click());
  });
  EXPECT_FALSE(TForm::ExecuteInBackgroundFromKKMobileStream(stream));
}

TEST_F(TfrmKKWatchlistImportTest, AFileThatCantBeReadBringsNoDialog) {
  WriteFileAtomically(ExportFile(), "kein Archiv");
  User.ExpectOpenDialog(_resImportCaption, ExportFile());
  Item(Unassigned(), Shop, u"Sieb");
  EXPECT_FALSE(TForm::Display(nullptr));
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen>(Laden: Sieb)");
  EXPECT_TRUE(std::ranges::any_of(
      Log.Lines(), [](const std::string& iLine) { return iLine.starts_with("error"); }));
}

TEST_F(TfrmKKWatchlistImportTest, ACancelledFileDialogEndsIt) {
  User.ExpectOpenDialog(_resImportCaption, {});
  EXPECT_FALSE(TForm::Display(nullptr));
}

TEST_F(TfrmKKWatchlistImportTest, AsksForTheFileAndRemembersItsFolder) {
  User.ExpectOpenDialog(_resImportCaption, ExportFile());
  EXPECT_FALSE(TForm::Display(nullptr));  // there is no such file
  const TOpenDialog asked = User.LastOpenDialog();
  EXPECT_EQ(asked.Filter, u"Beobachten-Dateien (*.wch)|*.wch|Alle Dateien (*.*)|*.*");
  EXPECT_TRUE(asked.FileMustExist);
  EXPECT_FALSE(asked.ForSaving);
  EXPECT_EQ(asked.FileName, GetSpecialFolder(cSpecialFolderDocuments, false) + u"/Beobachten.wch");
  EXPECT_EQ(TIniFileSectionCommon().PathToLastImExport() + u"/Liste.wch", ExportFile());
  User.ExpectOpenDialog(_resImportCaption, {});
  EXPECT_FALSE(TForm::Display(nullptr));
  EXPECT_EQ(User.LastOpenDialog().FileName,
            TIniFileSectionCommon().PathToLastImExport() + u"/Beobachten.wch");
}

TEST_F(TfrmKKWatchlistImportTest, ItemsOfASourceThatIsNotRegisteredStayOut) {
  Item(Unassigned(), Auction, u"Uhr");
  Item(Unassigned(), Shop, u"Lampe");
  ExportAll();
  StartElsewhere();
  TLstWatchlistIntegration& sources = Handler()->LstIntegration();
  sources.Delete(sources.IndexOfId(Auction->GetId()));
  EXPECT_TRUE(Import([this](TForm& form) {
    EXPECT_EQ(form.vstIntegrations.Root().GetCount(), 1);
    EXPECT_EQ(Text(form, 0), u"Laden [1 Einträge vorhanden]");
    Run(form);
  }));
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen>(Laden: Lampe)");
}

TEST_F(TfrmKKWatchlistImportTest, WithoutATickedSourceRemindersAreDisabledAndKeepTheirTick) {
  RemindLater(Item(Unassigned(), Shop, u"Lampe"));
  ExportAll();
  StartElsewhere();
  EXPECT_TRUE(Import([this](TForm& form) {
    EXPECT_TRUE(form.vstIntegrations.CheckNode(Row(form, 0)));
    EXPECT_TRUE(form.chckbxRemindItems.Checked());
    EXPECT_FALSE(form.chckbxRemindItems.Enabled());
    EXPECT_TRUE(form.btnOK.Enabled());
    EXPECT_TRUE(form.vstIntegrations.CheckNode(Row(form, 0)));
    EXPECT_TRUE(form.chckbxRemindItems.Enabled());
    EXPECT_TRUE(form.vstIntegrations.CheckNode(Row(form, 0)));
    Run(form);
  }));
  EXPECT_EQ(Handler()->LstRemind().GetCount(), 0);
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen>");
}

TEST_F(TfrmKKWatchlistImportTest, TheQuestionForTheCategoryIsAskedInItsOwnWords) {
  Item(Unassigned(), Shop, u"Lampe");
  ExportAll(false, false);
  User.Expect<TfrmKKWatchlistImportAskForCategory>([](TfrmKKWatchlistImportAskForCategory& form) {
    EXPECT_EQ(form.Caption(), u"Beobachten - Kategorie");
    EXPECT_EQ(form.lblQuestion.Caption(),
              u"Bitte wählen Sie eine Kategorie aus, in die die importierten Einträge eingefügt "
              u"werden sollen:");
    EXPECT_TRUE(form.cmbxCategoryChoice.Editable());
    EXPECT_TRUE(form.btnOK.Enabled());
    form.cmbxCategoryChoice.EnterText(u"  ");
    EXPECT_FALSE(form.btnOK.Enabled());
    EXPECT_TRUE(form.btnCancel.Click());
  });
  EXPECT_FALSE(TForm::ExecuteInBackground(ExportFile()));
}

TEST_F(TfrmKKWatchlistImportTest, AReminderOfThisVeryMomentComesAlong) {
  Clock.Set(cEarlier);
  const TWatchlistItem& lamp = Item(Unassigned(), Shop, u"Lampe");
  RemindBySound(lamp, u"ton.wav", cEarlier);
  const TGuid id = lamp.SearchResultId();
  ExportAll();
  StartElsewhere();
  EXPECT_TRUE(ImportAll());
  EXPECT_TRUE(HasReminder(id));
}

TEST_F(TfrmKKWatchlistImportTest, AMobileDocumentFindsItsCategoriesWhereverTheyStand) {
  Category(u"B", &Category(u"A"));
  TMemoryStream stream(
      "<watchlist><version>1</version><categories><category><name>A</name></category><category>"
      "<name>b</name></category></categories></watchlist>");
  EXPECT_TRUE(TForm::ExecuteInBackgroundFromKKMobileStream(stream));
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen> A(B)");
}

TEST_F(TfrmKKWatchlistImportTest, InTheBackgroundAllCanGoIntoOneCategoryWithoutAQuestion) {
  Item(Category(u"Küche"), Auction, u"Lampe");
  for (const bool withCategories : {true, false}) {
    ExportAll(withCategories);
    StartElsewhere();
    EXPECT_TRUE(TForm::ExecuteInBackground(ExportFile(), u"Geerbt"));
    EXPECT_EQ(Tree().FindCategoryByName(u"Küche"), nullptr);
    EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen> Geerbt(Auktion: Lampe)");
    StartElsewhere();
    Item(Category(u"Küche"), Auction, u"Lampe");
  }
}

TEST_F(TfrmKKWatchlistImportTest, AFileThatIsGivenIsNotAskedFor) {
  Item(Category(u"Küche"), Auction, u"Lampe");
  ExportAll();
  StartElsewhere();
  User.Expect<TForm>([this](TForm& form) {
    EXPECT_EQ(Text(form, 0), u"Auktion [1 Einträge vorhanden]");
    Run(form);
  });
  EXPECT_TRUE(TForm::Display(nullptr, ExportFile()));
  EXPECT_EQ(Outline(), "<Keiner Kategorie zugewiesen> Küche(Auktion: Lampe)");
  EXPECT_EQ(TIniFileSectionCommon().PathToLastImExport(), u"");
}

TEST_F(TfrmKKWatchlistImportTest, AFileDialogThatFailsIsTold) {
  struct TFailingHost : TScriptedFormHost {
    bool ShowOpenDialog(TOpenDialog&) override { throw Exception(u"Es gibt keinen Dialog."); }
  } user;
  user.ExpectMessage(u"Es gibt keinen Dialog.");
  EXPECT_FALSE(TForm::Display(nullptr));
}

TEST_F(TfrmKKWatchlistImportTest, OfAFileThatIsGivenTheUserHearsThatItCanNotBeRead) {
  Folder.Write(u"Liste.wch", "nichts");
  User.ExpectMessage(u"Diese Datei ist keine Beobachtenliste oder beschädigt: " + ExportFile());
  EXPECT_FALSE(TForm::Display(nullptr, ExportFile()));
}

/// A file so large that it is read behind a window.
class ImportOfALargeFile : public TfrmKKWatchlistImportTest {
 protected:
  ImportOfALargeFile() {
    Item(Category(u"Küche"), Auction, u"Lampe");
    Item(Unassigned(), Shop, u"Sieb");
    ExportAll();
    auto streams = TFileCompression::ReadPacked(ExportFile());
    std::vector<TStreamForCompression*> all;
    for (const auto& stream : streams) all.push_back(stream.get());
    TMemoryStream padding(std::string(200'000, 'x'));
    TStreamForCompression entry(u"Füllung", &padding, false);
    all.push_back(&entry);
    TFileCompression::CompressStreams(all, ExportFile(), 0, true);
    StartElsewhere();
  }
  bool Display() { return TForm::Display(nullptr, ExportFile()); }
  void ExpectWait(std::function<void(TfrmKKCommonWait&)> iStep) {
    User.Expect<TfrmKKCommonWait>(std::move(iStep));
  }
  const std::string Whole = "<Keiner Kategorie zugewiesen>(Laden: Sieb) Küche(Auktion: Lampe)";
};

/// Each look at it takes long enough for a turn of the main loop.
class TSlowClock : public IClock {
 public:
  TSlowClock() : FBefore(SetClock(this)) {}
  ~TSlowClock() override { SetClock(FBefore); }
  TDateTime Now() const override { return FBefore->Now(); }
  int64_t SteadyMs() const override { return FSteady += 10; }

 private:
  mutable int64_t FSteady = 0;
  IClock* FBefore;
};

TEST_F(ImportOfALargeFile, IsReadBehindAWindowWhileTheLoopTurns) {
  const TSlowClock clock;
  int turns = 0;
  std::function<void()> turn = [&] {
    if (++turns < 10) Loop.Post(turn);
  };
  ExpectWait([&](TfrmKKCommonWait& wait) {
    EXPECT_EQ(wait.lblText.Caption(), u"Die Datei wird gelesen...");
    EXPECT_EQ(wait.btnCancel.Caption(), u"&Abbrechen");
    Loop.Post(turn);
  });
  User.Expect<TForm>([&](TForm& form) {
    EXPECT_EQ(turns, 10);
    EXPECT_EQ(Text(form, 0), u"Auktion [1 Einträge vorhanden]");
    EXPECT_EQ(form.chckbxCategories.Caption(), u"Kategorien (2 vorhanden)");
    Run(form);
  });
  EXPECT_TRUE(Display());
  EXPECT_EQ(Outline(), Whole);
}

TEST_F(ImportOfALargeFile, CanBeGivenUpWithoutAWordAndWithoutAChange) {
  const std::string before = Outline();
  ExpectWait([this](TfrmKKCommonWait& wait) {
    Loop.Post([this, &wait] { Loop.Post([&wait] { EXPECT_TRUE(wait.btnCancel.Click()); }); });
  });
  EXPECT_FALSE(Display());
  ExpectWait([](TfrmKKCommonWait& wait) { EXPECT_TRUE(wait.btnCancel.Click()); });
  EXPECT_FALSE(Display());
  EXPECT_EQ(Outline(), before);
}

TEST_F(ImportOfALargeFile, ThatCanNotBeReadIsToldOnce) {
  Auction->SetLoadFailure(u"kaputt");
  User.ExpectMessage(u"Diese Datei ist keine Beobachtenliste oder beschädigt: " + ExportFile());
  EXPECT_FALSE(Display());
}

TEST_F(ImportOfALargeFile, InTheBackgroundIsReadWithoutAWindow) {
  EXPECT_TRUE(TForm::ExecuteInBackground(ExportFile()));
  EXPECT_EQ(Outline(), Whole);
  EXPECT_EQ(User.ShownCount(), 0);
}

TEST_F(ImportOfALargeFile, WhatChangesWhileItIsReadIsSavedLater) {
  Forget();
  ExpectWait([this](TfrmKKCommonWait&) {
    Loop.Post([this] { Loop.Post([this] { Record(Shop).SetChangedItems(true); }); });
  });
  User.Expect<TForm>([](TForm& form) { EXPECT_TRUE(form.btnCancel.Click()); });
  EXPECT_FALSE(Display());
  EXPECT_EQ(Flags(Shop) + Flags(Auction), "I-");
}

}  // namespace
}  // namespace kk
