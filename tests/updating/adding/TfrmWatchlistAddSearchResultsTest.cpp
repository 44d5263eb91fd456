#include "updating/adding/TfrmWatchlistAddSearchResults.h"

#include <gtest/gtest.h>

#include "tests/support/TScriptedFormHost.h"

namespace kk {
namespace {

using TDialog = TfrmWatchlistAddSearchResults;

class TfrmWatchlistAddSearchResultsTest : public testing::Test {
 protected:
  TfrmWatchlistAddSearchResultsTest() {
    Add(Nowhere, cEmptyGuid, u"<Keiner Kategorie zugewiesen>");
    Add(Books, NewGuid(), u"Bücher");
    Add(Clocks, NewGuid(), u"Uhren");
    PresetId = Books.Id();
  }
  void Add(TWatchlistCategory& ioCategory, const TGuid& iId, TStringView iName) {
    ioCategory.SetId(iId);
    ioCategory.SetName(iName);
    Categories.Add(ioCategory);
  }
  TAddResult Display(std::function<void(TDialog&)> iUser) {
    User.Expect<TDialog>(std::move(iUser));
    return TDialog::Display(Categories, PresetId, Name, NotAgain, Preset);
  }

  TScriptedFormHost User;
  TWatchlistCategory Nowhere;
  TWatchlistCategory Books;
  TWatchlistCategory Clocks;
  TLstWatchlistCategory Categories{false};
  TGuid PresetId;
  TString Name = u"von vorher";
  bool NotAgain = true;
  bool Preset = false;
};

TEST_F(TfrmWatchlistAddSearchResultsTest, HasItsTexts) {
  Display([](TDialog& form) {
    EXPECT_EQ(form.Caption(), u"Zu Beobachtenliste hinzufügen");
    EXPECT_EQ(form.Label1.Caption(),
              u"Kategorie, in die die Suchergebnisse eingefügt werden sollen:");
    EXPECT_EQ(form.chckbxPreset.Caption(), u"Kategorie als Voreinstellung übernehmen");
    EXPECT_EQ(form.chckbxNotAgain.Caption(),
              u"Diesen Dialog nicht mehr anzeigen (weitere Suchergebnisse werden automatisch in "
              u"die voreingestellte Kategorie übernommen).");
    EXPECT_EQ(form.btnOnlyNew.Caption(), u"Nur neue zuordnen");
    EXPECT_EQ(form.btnAll.Caption(), u"Alle zuordnen");
    EXPECT_EQ(form.btnCancel.Caption(), u"Abbrechen");
    EXPECT_EQ(form.btnOnlyNew.ModalResult(), 1);
    EXPECT_EQ(form.btnAll.ModalResult(), 12);
    EXPECT_EQ(form.btnCancel.ModalResult(), 2);
    form.btnCancel.Click();
  });
}

TEST_F(TfrmWatchlistAddSearchResultsTest, StaysOnTopInTheMiddleOfTheScreen) {
  Display([](TDialog& form) {
    EXPECT_TRUE(form.StaysOnTop());
    EXPECT_TRUE(form.WhiteBackground());
    EXPECT_EQ(form.Position(), TPosition::poScreenCenter);
    EXPECT_EQ(form.pnlButtons.Arrangement(), TArrangement::arRow);
    EXPECT_EQ(form.FocusedControl(), &form.cmbxCategory);
    form.btnCancel.Click();
  });
}

TEST_F(TfrmWatchlistAddSearchResultsTest, ListsTheCategoriesAndSelectsThePreset) {
  Display([this](TDialog& form) {
    const auto& items = form.cmbxCategory.Items();
    ASSERT_EQ(items.size(), 3u);
    EXPECT_EQ(items[2], u"Uhren");
    EXPECT_EQ(form.cmbxCategory.ItemIndex(), 1);
    EXPECT_EQ(form.cmbxCategory.Text(), u"Bücher");
    form.btnCancel.Click();
  });
}

TEST_F(TfrmWatchlistAddSearchResultsTest, EachButtonHasItsAnswer) {
  EXPECT_EQ(Display([](TDialog& form) { form.btnOnlyNew.Click(); }), TAddResult::arOnlyNew);
  EXPECT_EQ(Display([](TDialog& form) { form.btnAll.Click(); }), TAddResult::arAll);
  EXPECT_EQ(Display([](TDialog& form) { form.btnCancel.Click(); }), TAddResult::arCancel);
  EXPECT_EQ(Display([](TDialog& form) { form.CloseByUser(); }), TAddResult::arCancel);
  EXPECT_EQ(Display([](TDialog& form) { form.PressKey(cKeyEscape); }), TAddResult::arCancel);
}

TEST_F(TfrmWatchlistAddSearchResultsTest, AChosenCategoryIsToldByItsId) {
  Display([](TDialog& form) {
    form.cmbxCategory.Select(2);
    form.btnOnlyNew.Click();
  });
  EXPECT_EQ(PresetId, Clocks.Id());
  EXPECT_EQ(Name, u"");
  EXPECT_FALSE(NotAgain);
}

TEST_F(TfrmWatchlistAddSearchResultsTest, ATypedNameIsToldAsItStands) {
  Display([](TDialog& form) {
    form.cmbxCategory.EnterText(u" Münzen ");
    form.btnAll.Click();
  });
  EXPECT_EQ(Name, u" Münzen ");
  EXPECT_EQ(PresetId, Books.Id()) << "left as it was";
}

TEST_F(TfrmWatchlistAddSearchResultsTest, ATypedNameOfTheListIsThatCategory) {
  Display([](TDialog& form) {
    form.cmbxCategory.EnterText(u"uhren");
    form.btnAll.Click();
  });
  EXPECT_EQ(Name, u"");
  EXPECT_EQ(PresetId, Clocks.Id());
}

TEST_F(TfrmWatchlistAddSearchResultsTest, CategoriesOfOneNameAreToldApart) {
  TWatchlistCategory moreBooks;
  Add(moreBooks, NewGuid(), u"Bücher");
  PresetId = moreBooks.Id();
  Display([&](TDialog& form) {
    EXPECT_EQ(form.cmbxCategory.ItemIndex(), 3);
    form.btnAll.Click();
  });
  EXPECT_EQ(PresetId, moreBooks.Id());
}

TEST_F(TfrmWatchlistAddSearchResultsTest, CategoryThatGoesWhileItIsChosenIsToldAllTheSame) {
  auto category = std::make_unique<TWatchlistCategory>();
  const TGuid id = NewGuid();
  Add(*category, id, u"Münzen");
  Display([&](TDialog& form) {
    form.cmbxCategory.Select(3);
    category.reset();
    form.btnAll.Click();
  });
  EXPECT_EQ(PresetId, id);
  EXPECT_EQ(Name, u"");
}

TEST_F(TfrmWatchlistAddSearchResultsTest, BothBoxesAreToldOnACancelToo) {
  EXPECT_EQ(Display([](TDialog& form) {
              EXPECT_FALSE(form.chckbxNotAgain.Checked());
              EXPECT_FALSE(form.chckbxPreset.Checked());
              form.chckbxNotAgain.Click();
              form.chckbxPreset.Click();
              form.btnCancel.Click();
            }),
            TAddResult::arCancel);
  EXPECT_TRUE(NotAgain);
  EXPECT_TRUE(Preset);
}

TEST_F(TfrmWatchlistAddSearchResultsTest, ThePresetLosesItsTickAwayFromThePresetCategory) {
  Preset = true;
  Display([](TDialog& form) {
    EXPECT_TRUE(form.chckbxPreset.Checked());
    form.cmbxCategory.Select(2);
    EXPECT_FALSE(form.chckbxPreset.Checked());
    form.cmbxCategory.Select(1);
    EXPECT_TRUE(form.chckbxPreset.Checked());
    form.cmbxCategory.EnterText(u"Münzen");
    EXPECT_FALSE(form.chckbxPreset.Checked());
    form.btnAll.Click();
  });
  EXPECT_FALSE(Preset);
}

TEST_F(TfrmWatchlistAddSearchResultsTest, ABoxThatWasNotTickedOnEntryIsClearedByAChange) {
  Display([](TDialog& form) {
    form.chckbxPreset.Click();
    form.cmbxCategory.Select(2);
    form.cmbxCategory.Select(1);
    EXPECT_FALSE(form.chckbxPreset.Checked());
    form.btnAll.Click();
  });
}

TEST_F(TfrmWatchlistAddSearchResultsTest, APresetThatIsGoneShowsTheCatchAllCategory) {
  PresetId = NewGuid();
  Preset = true;
  Display([this](TDialog& form) {
    EXPECT_EQ(form.cmbxCategory.ItemIndex(), 0);
    EXPECT_TRUE(form.chckbxPreset.Checked());
    form.cmbxCategory.Select(1);
    EXPECT_FALSE(form.chckbxPreset.Checked());
    form.cmbxCategory.Select(0);
    EXPECT_FALSE(form.chckbxPreset.Checked()) << "the place of the preset is none";
    // Looks like a mistake and is required: a typed name has no place either, so it ticks the box.
    form.cmbxCategory.EnterText(u"Münzen");
    EXPECT_TRUE(form.chckbxPreset.Checked());
    form.btnAll.Click();
  });
}

TEST_F(TfrmWatchlistAddSearchResultsTest, WithoutACatchAllCategoryNothingIsSelected) {
  Categories.Delete(0);
  PresetId = NewGuid();
  EXPECT_EQ(Display([](TDialog& form) {
              EXPECT_EQ(form.cmbxCategory.ItemIndex(), -1);
              EXPECT_EQ(form.cmbxCategory.Text(), u"");
              EXPECT_TRUE(form.btnAll.Enabled()) << "only a change looks at the text";
              form.btnOnlyNew.Click();
            }),
            TAddResult::arOnlyNew);
  EXPECT_EQ(Name, u"");
}

TEST_F(TfrmWatchlistAddSearchResultsTest, WithoutANameOnlyTheCancelButtonIsLeft) {
  EXPECT_EQ(Display([](TDialog& form) {
              for (const TStringView text : {u"", u"   "}) {
                form.cmbxCategory.EnterText(text);
                EXPECT_FALSE(form.btnOnlyNew.Enabled());
                EXPECT_FALSE(form.btnAll.Enabled());
                EXPECT_TRUE(form.btnCancel.Enabled());
                EXPECT_FALSE(form.btnAll.Click());
              }
              form.cmbxCategory.EnterText(u"M");
              EXPECT_TRUE(form.btnOnlyNew.Enabled());
              EXPECT_TRUE(form.btnAll.Enabled());
              form.btnCancel.Click();
            }),
            TAddResult::arCancel);
}

TEST_F(TfrmWatchlistAddSearchResultsTest, ReturnInTheBoxIsAClickOnOnlyNew) {
  EXPECT_EQ(Display([](TDialog& form) { EXPECT_TRUE(form.cmbxCategory.PressKey(cKeyReturn)); }),
            TAddResult::arOnlyNew);
}

TEST_F(TfrmWatchlistAddSearchResultsTest, ReturnWithADisabledButtonKeepsTheDialog) {
  EXPECT_EQ(Display([](TDialog& form) {
              form.cmbxCategory.EnterText(u" ");
              EXPECT_TRUE(form.cmbxCategory.PressKey(cKeyReturn)) << "swallowed all the same";
              EXPECT_TRUE(form.IsModal());
              EXPECT_FALSE(form.cmbxCategory.PressKey(u'x')) << "other keys are left alone";
              form.btnCancel.Click();
            }),
            TAddResult::arCancel);
}

TEST_F(TfrmWatchlistAddSearchResultsTest, TheMouseTakesTheFocusAlong) {
  Display([](TDialog& form) {
    for (TButton* button : {&form.btnOnlyNew, &form.btnAll, &form.btnCancel}) {
      EXPECT_TRUE(button->EnterMouse());
      EXPECT_EQ(form.FocusedControl(), button);
      EXPECT_TRUE(button->LeaveMouse());
      EXPECT_EQ(form.FocusedControl(), &form.chckbxPreset);
    }
    form.btnCancel.Click();
  });
}

}  // namespace
}  // namespace kk
