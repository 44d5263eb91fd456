#include "views/print/TfrmKKWatchlistPrint.h"

#include <gtest/gtest.h>

#include "host/contract/ISearchResultConverter.h"
#include "host/contract/TPlugins.h"
#include "tests/support/TFakePlugin.h"
#include "tests/support/TFakePrinting.h"
#include "tests/support/TWatchlistWorld.h"

namespace kk {
namespace {

/// A plug-in that only converts, under an id of the test's choice.
class TConverterPlugin : public TFakePluginOf<IPlugin, ISearchResultConverter> {
 public:
  TConverterPlugin(const TGuid& iId, std::vector<TString> iTitles)
      : TFakePluginOf(iId), FTitles(std::move(iTitles)) {}
  void Convert(bool iHeader, const TIntf<ISearchResult>& iResult, TStringList& ioLines) override {
    if (!ConvertFailure.empty() && !iHeader) throw Exception(ConvertFailure);
    if (iHeader) HeaderResults.push_back(iResult);
    for (const TString& title : FTitles) {
      if (iHeader) ioLines.Add(title);
      if (!iHeader && iResult) ioLines.Add(title + u" von " + iResult->GetName());
    }
  }

  TString ConvertFailure;
  std::vector<TIntf<ISearchResult>> HeaderResults;  ///< of which a header was asked for

 private:
  const std::vector<TString> FTitles;
};

class TfrmKKWatchlistPrintTest : public TWatchlistWorld, public testing::Test {
 protected:
  using TForm = TfrmKKWatchlistPrint;
  using TNames = std::vector<std::string>;

  TfrmKKWatchlistPrintTest() {
    CreateHandler(nullptr);
    AddConverter(Auction, {u"Name", u"Gebot", u"Ende", u"Anbieter"});
    AddConverter(Shop, {u"Name", u"Preis", u"Lager", u"Laden", u"Adresse"});
  }
  ~TfrmKKWatchlistPrintTest() override {
    Plugins().Clear();
    FreeHandler();
    FreeBuriedCategories();
  }

  static void AddConverter(const TIntf<TFakeSource>& iSource, std::vector<TString> iTitles) {
    Plugins().Add(MakeIntf<TConverterPlugin>(iSource->GetId(), std::move(iTitles)));
  }
  static TVirtualNode& Node(const TForm& iForm, TStringView iName) {
    for (TVirtualNode* node = iForm.vst.First(); node != nullptr; node = node->Next()) {
      if (dynamic_cast<TWatchlistCategory&>(*node->Object()).Name() == iName) return *node;
    }
    throw Exception(u"kein Knoten");
  }
  /// The command, in which the user ticks these and presses OK.
  void Print(std::vector<TString> iNames) {
    User.Expect<TForm>([names = std::move(iNames)](TForm& form) {
      for (const TString& name : names) {
        TVirtualNode& node = Node(form, name);
        if (node.Parent() != nullptr) form.vst.ExpandNode(*node.Parent());
        EXPECT_TRUE(form.vst.CheckNode(node));
      }
      EXPECT_TRUE(form.btnOK.Click());
    });
    TForm::Display(nullptr);
  }
  /// The user takes the dialog as it is, or with a choice.
  void PressOk(std::function<void(TPrintDialog&)> iChoice = [](TPrintDialog&) {}) {
    Printing.Expect([choice = std::move(iChoice)](TPrintDialog& dialog) {
      choice(dialog);
      return true;
    });
  }
  void Cancel() {
    Printing.Expect([](TPrintDialog&) { return false; });
  }

  TFakePrinting Printing;
};

TEST_F(TfrmKKWatchlistPrintTest, WithoutAnyItemThereIsAMessageAndNoDialog) {
  Category(u"Leer");
  User.ExpectMessage(
      u"Es existiert keine Beobachten-Kategorie, die mindestens einen Artikel beinhaltet.");
  TForm::Display(nullptr);
  EXPECT_EQ(User.ShownCount(), 1);
}

TEST_F(TfrmKKWatchlistPrintTest, ShowsTheTreeCollapsedAndUnticked) {
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(kitchen, Shop, u"Sieb");
  Item(Category(u"Regal", &kitchen), Shop, u"Topf");
  kk::TForm owner{nullptr, u"TForm"};
  User.Expect<TForm>([&](TForm& form) {
    EXPECT_EQ(form.Caption(), u"Beobachten Kategorien Drucken");
    EXPECT_EQ(form.Owner(), &owner);
    EXPECT_EQ(form.Position(), TPosition::poOwnerFormCenter);
    EXPECT_EQ(form.lblQuestion.Caption(), u"Bitte wählen Sie die Kategorien aus:");
    EXPECT_EQ(form.btnOK.Caption(), u"&OK");
    EXPECT_EQ(form.btnCancel.Caption(), u"&Abbrechen");
    ASSERT_EQ(form.vst.Root().GetCount(), 1);
    TVirtualNode& node = *form.vst.First();
    EXPECT_FALSE(node.Expanded());
    EXPECT_TRUE(node.HasCheckBox());
    EXPECT_FALSE(node.Checked());
    ASSERT_EQ(node.GetCount(), 1);
    EXPECT_TRUE(node.GetItems(0).HasCheckBox());
    EXPECT_EQ(form.vst.Text(node.GetItems(0)), u"Regal (1)");
    EXPECT_TRUE(form.btnCancel.Click());
  });
  TForm::Display(&owner);
  EXPECT_TRUE(Printing.Contents.empty());
}

TEST_F(TfrmKKWatchlistPrintTest, ACategoryWithItemsBelowItAloneHasNoCheckBox) {
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(Category(u"Regal", &kitchen), Shop, u"Topf");
  User.Expect<TForm>([](TForm& form) {
    TVirtualNode& node = *form.vst.First();
    EXPECT_EQ(form.vst.Text(node), u"Küche (1)");
    EXPECT_FALSE(node.HasCheckBox());
    EXPECT_FALSE(form.vst.CheckNode(node));
    EXPECT_TRUE(form.btnOK.Click());
  });
  TForm::Display(nullptr);
  EXPECT_TRUE(Printing.Contents.empty());
}

TEST_F(TfrmKKWatchlistPrintTest, TheCountIsThatOfAllBelowAlsoWhereItsOwnAloneArePrinted) {
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(kitchen, Shop, u"Sieb");
  Item(Category(u"Regal", &kitchen), Shop, u"Topf");
  User.Expect<TForm>([](TForm& form) {
    EXPECT_EQ(form.vst.Text(*form.vst.First()), u"Küche (2)");
    EXPECT_TRUE(form.btnCancel.Click());
  });
  TForm::Display(nullptr);
}

TEST_F(TfrmKKWatchlistPrintTest, SubtreesWithoutItemsDoNotAppear) {
  Item(Category(u"Küche"), Shop, u"Sieb");
  Category(u"Ecke", &Category(u"Leer"));
  Category(u"Fach", Tree().FindCategoryByName(u"Küche"));
  User.Expect<TForm>([](TForm& form) {
    ASSERT_EQ(form.vst.Root().GetCount(), 1);
    EXPECT_EQ(form.vst.First()->GetCount(), 0);
    EXPECT_TRUE(form.btnCancel.Click());
  });
  TForm::Display(nullptr);
}

TEST_F(TfrmKKWatchlistPrintTest, TheFirstCategoryIsInViewAndEverythingIsReachedByKeys) {
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(kitchen, Shop, u"Sieb");
  PressOk();
  User.Expect<TForm>([&](TForm& form) {
    EXPECT_EQ(form.FocusedControl(), &form.vst);
    EXPECT_TRUE(form.vst.CheckNode(*form.vst.First()));
    EXPECT_TRUE(form.vst.PressKey(cKeyReturn));
    EXPECT_EQ(form.ModalResult(), cModalOK);
  });
  TForm::Display(nullptr);
  EXPECT_EQ(Printing.Printed, (TNames{"1: 1-3"}));
}

TEST_F(TfrmKKWatchlistPrintTest, EscapeIsCancel) {
  Item(Category(u"Küche"), Shop, u"Sieb");
  User.Expect<TForm>([](TForm& form) {
    EXPECT_TRUE(form.vst.CheckNode(*form.vst.First()));
    form.vst.PressKey(cKeyEscape);
  });
  TForm::Display(nullptr);
  EXPECT_TRUE(Printing.Contents.empty());
}

TEST_F(TfrmKKWatchlistPrintTest, WithoutATickNothingIsPrintedWithoutAWord) {
  Item(Category(u"Küche"), Shop, u"Sieb");
  Print({});
  EXPECT_EQ(User.ShownCount(), 1);
  EXPECT_TRUE(Printing.Contents.empty());
  EXPECT_TRUE(Printing.Dialogs.empty());
}

TEST_F(TfrmKKWatchlistPrintTest, TheJobHasTitleDateSourceColumnsAndRows) {
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(kitchen, Shop, u"Sieb");
  Item(kitchen, Shop, u"Topf");
  Clock.Set(EncodeDateTime({2026, 11, 20, 8, 5, 0, 0}));
  PressOk();
  Print({u"Küche"});
  ASSERT_EQ(Printing.Contents.size(), 1u);
  const TPrintContent& content = Printing.Contents[0];
  EXPECT_EQ(content.Title, u"Kaufkobolde 7 -> Beobachten -> Küche");
  EXPECT_EQ(content.Date, u"Gedruckt am: 20.11.2026 08:05");
  EXPECT_EQ(content.Source, u"Laden");
  EXPECT_EQ(content.Headers, (std::array<TString, 4>{u"Name", u"Preis", u"Lager", u"Laden"}));
  EXPECT_EQ(content.Titles,
            (std::vector<TString>{u"Name", u"Preis", u"Lager", u"Laden", u"Adresse"}));
  ASSERT_EQ(content.Rows.size(), 2u);
  EXPECT_EQ(content.Rows[0][0], u"Name von Sieb");
  EXPECT_EQ(content.Rows[1],
            (std::vector<TString>{u"Name von Topf", u"Preis von Topf", u"Lager von Topf",
                                  u"Laden von Topf", u"Adresse von Topf"}));
  EXPECT_EQ(Printing.Printed, (TNames{"1: 1-3"}));
  EXPECT_EQ(Printing.LivingJobs, 0);
}

TEST_F(TfrmKKWatchlistPrintTest, TheHeaderIsThatOfTheFirstItemAskedForOnce) {
  Plugins().Clear();
  const auto plugin = MakeIntf<TConverterPlugin>(
      Shop->GetId(), std::vector<TString>{u"Name", u"Preis", u"Lager", u"Laden"});
  Plugins().Add(plugin);
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(kitchen, Shop, u"Sieb");
  Item(kitchen, Shop, u"Topf");
  Print({u"Küche"});
  ASSERT_EQ(plugin->HeaderResults.size(), 1u);
  EXPECT_EQ(plugin->HeaderResults[0]->GetName(), u"Sieb");
}

TEST_F(TfrmKKWatchlistPrintTest, TheDialogOffersAllPages) {
  Item(Category(u"Küche"), Shop, u"Sieb");
  PressOk([](TPrintDialog& dialog) { EXPECT_NE(dialog.Job, nullptr); });
  Print({u"Küche"});
  ASSERT_EQ(Printing.Dialogs.size(), 1u);
  const TPrintDialog& dialog = Printing.Dialogs[0];
  EXPECT_TRUE(dialog.AllowsPageNums);
  EXPECT_EQ(dialog.MinPage, 1);
  EXPECT_EQ(dialog.FromPage, 1);
  EXPECT_EQ(dialog.MaxPage, 3);
  EXPECT_EQ(dialog.ToPage, 3);
}

TEST_F(TfrmKKWatchlistPrintTest, ATickDoesNotPrintTheChildren) {
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(kitchen, Shop, u"Sieb");
  Item(Category(u"Regal", &kitchen), Shop, u"Topf");
  PressOk();
  Print({u"Küche"});
  ASSERT_EQ(Printing.Contents.size(), 1u);
  ASSERT_EQ(Printing.Contents[0].Rows.size(), 1u);
  EXPECT_EQ(Printing.Contents[0].Rows[0][0], u"Name von Sieb");
}

TEST_F(TfrmKKWatchlistPrintTest, TickedCategoriesComeInTheOrderOfTheTree) {
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(kitchen, Shop, u"Sieb");
  Item(Category(u"Regal", &kitchen), Shop, u"Topf");
  Item(Category(u"Bad"), Shop, u"Seife");
  Print({u"Bad", u"Regal", u"Küche"});
  ASSERT_EQ(Printing.Contents.size(), 3u);
  EXPECT_EQ(Printing.Contents[0].Title, u"Kaufkobolde 7 -> Beobachten -> Küche");
  EXPECT_EQ(Printing.Contents[1].Title, u"Kaufkobolde 7 -> Beobachten -> Regal");
  EXPECT_EQ(Printing.Contents[2].Title, u"Kaufkobolde 7 -> Beobachten -> Bad");
}

TEST_F(TfrmKKWatchlistPrintTest, TwoSourcesAreTwoDialogsAndTwoJobsWithColumnsOfTheirOwn) {
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(kitchen, Auction, u"Uhr");
  Item(kitchen, Shop, u"Sieb");
  PressOk();
  PressOk();
  Print({u"Küche"});
  ASSERT_EQ(Printing.Contents.size(), 2u);
  EXPECT_EQ(Printing.Dialogs.size(), 2u);
  EXPECT_EQ(Printing.Contents[0].Source, u"Auktion");
  EXPECT_EQ(Printing.Contents[0].Headers[1], u"Gebot");
  EXPECT_EQ(Printing.Contents[1].Source, u"Laden");
  EXPECT_EQ(Printing.Contents[1].Headers[1], u"Preis");
  EXPECT_EQ(Printing.Printed, (TNames{"1: 1-3", "2: 1-3"}));
}

TEST_F(TfrmKKWatchlistPrintTest, ACancelOfTheFirstDialogStillOpensTheSecond) {
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(kitchen, Auction, u"Uhr");
  Item(kitchen, Shop, u"Sieb");
  Cancel();
  PressOk();
  Print({u"Küche"});
  EXPECT_EQ(Printing.Dialogs.size(), 2u);
  EXPECT_EQ(Printing.Printed, (TNames{"2: 1-3"}));
}

TEST_F(TfrmKKWatchlistPrintTest, AGroupThatComesInBehindADialogIsPrintedToo) {
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(kitchen, Auction, u"Uhr");
  PressOk([&](TPrintDialog&) { Item(kitchen, Shop, u"Sieb"); });
  PressOk();
  Print({u"Küche"});
  EXPECT_EQ(Printing.Printed, (TNames{"1: 1-3", "2: 1-3"}));
}

TEST_F(TfrmKKWatchlistPrintTest, OneDialogKeepsTheChoiceOfCopiesForTheNextList) {
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(kitchen, Auction, u"Uhr");
  Item(kitchen, Shop, u"Sieb");
  PressOk([](TPrintDialog& dialog) {
    dialog.Copies = 2;
    dialog.Collate = true;
    dialog.FromPage = 2;
  });
  Print({u"Küche"});
  ASSERT_EQ(Printing.Dialogs.size(), 2u);
  EXPECT_EQ(Printing.Dialogs[1].Copies, 2);
  EXPECT_TRUE(Printing.Dialogs[1].Collate);
  EXPECT_EQ(Printing.Dialogs[1].FromPage, 1);
}

TEST_F(TfrmKKWatchlistPrintTest, ThreeCopiesNotCollatedPrintPageByPage) {
  Item(Category(u"Küche"), Shop, u"Sieb");
  PressOk([](TPrintDialog& dialog) {
    dialog.PrintRange = TPrintRange::prPageNums;
    dialog.FromPage = 1;
    dialog.ToPage = 2;
    dialog.Copies = 3;
  });
  Print({u"Küche"});
  EXPECT_EQ(Printing.Printed, (TNames{"1: 1-1", "1: 1-1", "1: 1-1", "1: 2-2", "1: 2-2", "1: 2-2"}));
}

TEST_F(TfrmKKWatchlistPrintTest, ThreeCopiesCollatedPrintAllPagesThreeTimes) {
  Item(Category(u"Küche"), Shop, u"Sieb");
  PressOk([](TPrintDialog& dialog) {
    dialog.PrintRange = TPrintRange::prPageNums;
    dialog.FromPage = 1;
    dialog.ToPage = 2;
    dialog.Copies = 3;
    dialog.Collate = true;
  });
  Print({u"Küche"});
  EXPECT_EQ(Printing.Printed, (TNames{"1: 1-2", "1: 1-2", "1: 1-2"}));
}

TEST_F(TfrmKKWatchlistPrintTest, OneCopyOfSomePagesIsPrintedAtOnceWhateverTheOrderOfCopies) {
  Item(Category(u"Küche"), Shop, u"Sieb");
  PressOk([](TPrintDialog& dialog) {
    dialog.PrintRange = TPrintRange::prPageNums;
    dialog.FromPage = 2;
  });
  Print({u"Küche"});
  EXPECT_EQ(Printing.Printed, (TNames{"1: 2-3"}));
}

TEST_F(TfrmKKWatchlistPrintTest, CopiesOfAllPagesAreCopiesOfEachPage) {
  Item(Category(u"Küche"), Shop, u"Sieb");
  Printing.PageCount = 2;
  PressOk([](TPrintDialog& dialog) { dialog.Copies = 2; });
  Print({u"Küche"});
  EXPECT_EQ(Printing.Printed, (TNames{"1: 1-1", "1: 1-1", "1: 2-2", "1: 2-2"}));
}

TEST_F(TfrmKKWatchlistPrintTest, AnotherPaperMayHaveMorePages) {
  Item(Category(u"Küche"), Shop, u"Sieb");
  PressOk([](TPrintDialog& dialog) { dialog.MaxPage = 5; });
  Print({u"Küche"});
  EXPECT_EQ(Printing.Printed, (TNames{"1: 1-5"}));
}

TEST_F(TfrmKKWatchlistPrintTest, AllPagesDoNotAskForTheNumbers) {
  Item(Category(u"Küche"), Shop, u"Sieb");
  PressOk([](TPrintDialog& dialog) {
    dialog.FromPage = 2;
    dialog.ToPage = 2;
    dialog.Copies = 0;
  });
  Print({u"Küche"});
  EXPECT_EQ(Printing.Printed, (TNames{"1: 1-3"}));
}

TEST_F(TfrmKKWatchlistPrintTest, FewerThanFourHeadersEndTheRun) {
  Plugins().Clear();
  AddConverter(Auction, {u"Name", u"Gebot", u"Ende"});
  AddConverter(Shop, {u"Name", u"Preis", u"Lager", u"Laden"});
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(kitchen, Auction, u"Uhr");
  Item(kitchen, Shop, u"Sieb");
  EXPECT_THROW(Print({u"Küche"}), EListError);
  EXPECT_TRUE(Printing.Contents.empty());
}

TEST_F(TfrmKKWatchlistPrintTest, WhatWasPrintedBeforeAConverterWithTooFewHeadersStaysPrinted) {
  Plugins().Clear();
  AddConverter(Auction, {u"Name", u"Gebot", u"Ende", u"Anbieter"});
  AddConverter(Shop, {u"Name"});
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(kitchen, Auction, u"Uhr");
  Item(kitchen, Shop, u"Sieb");
  PressOk();
  EXPECT_THROW(Print({u"Küche"}), EListError);
  EXPECT_EQ(Printing.Printed, (TNames{"1: 1-3"}));
  EXPECT_EQ(Printing.LivingJobs, 0);
}

TEST_F(TfrmKKWatchlistPrintTest, FewHeadersOfASourceWithoutRowsAreNoFailure) {
  Plugins().Clear();
  AddConverter(Shop, {u"Name"});
  TWatchlistCategory& kitchen = Category(u"Küche");
  LostItem(kitchen, Shop);
  Print({u"Küche"});
  EXPECT_TRUE(Printing.Contents.empty());
}

TEST_F(TfrmKKWatchlistPrintTest, ASourceWithoutAConverterPrintsNothingWithoutAWord) {
  Plugins().Clear();
  Plugins().Add(MakeIntf<TFakePlugin>(Auction->GetId()));
  AddConverter(Shop, {u"Name", u"Preis", u"Lager", u"Laden"});
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(kitchen, Auction, u"Uhr");
  Item(kitchen, Shop, u"Sieb");
  Print({u"Küche"});
  ASSERT_EQ(Printing.Contents.size(), 1u);
  EXPECT_EQ(Printing.Contents[0].Source, u"Laden");
  EXPECT_EQ(User.ShownCount(), 1);
}

TEST_F(TfrmKKWatchlistPrintTest, AllPlugInsOfTheIdAreAsked) {
  AddConverter(Shop, {u"1", u"2", u"3", u"4"});
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(kitchen, Shop, u"Sieb");
  Item(kitchen, Shop, u"Topf");
  Print({u"Küche"});
  ASSERT_EQ(Printing.Contents.size(), 1u);
  const auto& rows = Printing.Contents[0].Rows;
  ASSERT_EQ(rows.size(), 4u);
  EXPECT_EQ(rows[1][0], u"Name von Topf");
  EXPECT_EQ(rows[2][0], u"1 von Sieb");
  EXPECT_EQ(rows[3][3], u"4 von Topf");
  EXPECT_EQ(Printing.Contents[0].Titles.size(), 9u);
}

TEST_F(TfrmKKWatchlistPrintTest, ItemsWithoutAResultHaveNoRow) {
  TWatchlistCategory& kitchen = Category(u"Küche");
  LostItem(kitchen, Shop);
  Item(kitchen, Shop, u"Sieb");
  LostItem(kitchen, Auction);
  Print({u"Küche"});
  ASSERT_EQ(Printing.Contents.size(), 1u);
  EXPECT_EQ(Printing.Contents[0].Rows.size(), 1u);
}

TEST_F(TfrmKKWatchlistPrintTest, AnEmptyGroupIsPassedOver) {
  TWatchlistCategory& kitchen = Category(u"Küche");
  Group(kitchen, Auction);
  Item(kitchen, Shop, u"Sieb");
  Print({u"Küche"});
  ASSERT_EQ(Printing.Contents.size(), 1u);
  EXPECT_EQ(Printing.Contents[0].Source, u"Laden");
}

TEST_F(TfrmKKWatchlistPrintTest, AFailureOfTheConverterGoesThrough) {
  Plugins().Clear();
  const auto plugin = MakeIntf<TConverterPlugin>(Shop->GetId(), std::vector<TString>{});
  plugin->ConvertFailure = u"defekt";
  Plugins().Add(plugin);
  Item(Category(u"Küche"), Shop, u"Sieb");
  Item(Category(u"Bad"), Auction, u"Uhr");
  try {
    Print({u"Küche", u"Bad"});
    ADD_FAILURE();
  } catch (const Exception& e) {
    EXPECT_EQ(e.Message(), u"defekt");
  }
  EXPECT_TRUE(Printing.Contents.empty()) << "the run is over";
}

TEST_F(TfrmKKWatchlistPrintTest, AFailureOfThePrinterGoesThroughAndLeavesNoJob) {
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(kitchen, Auction, u"Uhr");
  Item(kitchen, Shop, u"Sieb");
  Printing.PrintFailure = u"Kein Papier";
  PressOk();
  EXPECT_THROW(Print({u"Küche"}), Exception);
  EXPECT_EQ(Printing.Dialogs.size(), 1u);
  EXPECT_EQ(Printing.LivingJobs, 0);
}

TEST_F(TfrmKKWatchlistPrintTest, ACancelledJobIsFreedBeforeTheNextDialog) {
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(kitchen, Auction, u"Uhr");
  Item(kitchen, Shop, u"Sieb");
  Cancel();
  Printing.Expect([this](TPrintDialog&) {
    EXPECT_EQ(Printing.LivingJobs, 1);
    return false;
  });
  Print({u"Küche"});
  EXPECT_EQ(Printing.Dialogs.size(), 2u);
  EXPECT_EQ(Printing.LivingJobs, 0);
}

TEST_F(TfrmKKWatchlistPrintTest, OneCategoryIsPrintedWithoutTheTree) {
  TWatchlistCategory& kitchen = Category(u"Küche");
  Item(kitchen, Shop, u"Sieb");
  PressOk();
  TForm::PrintCategory(kitchen);
  EXPECT_EQ(Printing.Printed, (TNames{"1: 1-3"}));
}

}  // namespace
}  // namespace kk
