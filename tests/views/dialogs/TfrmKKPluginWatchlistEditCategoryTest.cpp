#include "views/dialogs/TfrmKKPluginWatchlistEditCategory.h"

#include <gtest/gtest.h>

#include "tests/support/TWatchlistWorld.h"

namespace kk {
namespace {

using TEditor = TfrmKKPluginWatchlistEditCategory;

class TfrmKKPluginWatchlistEditCategoryTest : public testing::Test, public TWatchlistWorld {
 protected:
  TfrmKKPluginWatchlistEditCategoryTest() { CreateHandler(nullptr); }
  ~TfrmKKPluginWatchlistEditCategoryTest() override {
    FreeHandler();
    FreeBuriedCategories();
  }
  /// Opens the editor on Name and Description and lets the user do this in it.
  bool Edit(std::function<void(TEditor&)> iStep) {
    User.Expect<TEditor>(std::move(iStep));
    return TEditor::DisplayEdit(&Owner, Description, Name);
  }
  /// The user types this name and presses OK.
  bool Rename(TStringView iName) {
    return Edit([name = TString(iName)](TEditor& form) {
      form.edtName.EnterText(name);
      EXPECT_TRUE(form.btnOK.Click());
    });
  }
  /// As above, but the name is refused, and the user gives up.
  void ExpectRefused(TStringView iName) {
    const bool changed = Edit([this, name = TString(iName)](TEditor& form) {
      User.ExpectMessage(u"Der angegebene Kategoriename (" + name + u") existiert bereits!\r\n" +
                         u"Bitte geben sie einen anderen Namen an.");
      form.rchedtDescription.TakeFocus();
      form.edtName.EnterText(name);
      form.btnOK.Click();
      form.EndModalIfDone();
      EXPECT_TRUE(form.IsModal()) << "it stays open";
      EXPECT_TRUE(form.edtName.AllSelected());
      EXPECT_EQ(form.FocusedControl(), &form.edtName);
      EXPECT_EQ(form.edtName.Text(), name);
      form.btnCancel.Click();
    });
    EXPECT_FALSE(changed);
    EXPECT_EQ(User.ShownCount(), 2);
  }

  TForm Owner{nullptr, u"TForm"};
  TString Name = u"Bücher";
  TStringList Description{u"eins", u"zwei"};
};

TEST_F(TfrmKKPluginWatchlistEditCategoryTest, ShowsWhatItWasGiven) {
  EXPECT_FALSE(Edit([this](TEditor& form) {
    EXPECT_EQ(form.Caption(), u"Kategorie bearbeiten");
    EXPECT_EQ(form.Owner(), &Owner);
    EXPECT_EQ(form.Position(), TPosition::poOwnerFormCenter);
    EXPECT_EQ(form.lblName.Caption(), u"Name");
    EXPECT_EQ(form.lblDescription.Caption(), u"Beschreibung");
    EXPECT_EQ(form.btnOK.Caption(), u"&OK");
    EXPECT_EQ(form.btnCancel.Caption(), u"&Abbrechen");
    EXPECT_EQ(form.edtName.Text(), u"Bücher");
    EXPECT_EQ(form.rchedtDescription.Lines().Lines(), Description.Lines());
    EXPECT_EQ(form.FocusedControl(), &form.edtName);
    EXPECT_TRUE(form.btnOK.Enabled());
    form.edtName.PressKey(cKeyEscape);
  }));
}

TEST_F(TfrmKKPluginWatchlistEditCategoryTest, HasACaptionForNewCategoriesThatNothingUses) {
  User.ExpectCaption(u"Kategorie anlegen", [](TForm& form) { form.CloseByUser(); });
  EXPECT_FALSE(TEditor::DisplayNew(&Owner, Description, Name));
}

TEST_F(TfrmKKPluginWatchlistEditCategoryTest, OkWritesNameAndDescriptionBack) {
  EXPECT_TRUE(Edit([](TEditor& form) {
    form.edtName.EnterText(u"Alben");
    form.rchedtDescription.EnterText(u"drei\r\nvier");
    form.btnOK.Click();
  }));
  EXPECT_EQ(Name, u"Alben");
  EXPECT_EQ(Description.Lines(), (std::vector<TString>{u"drei", u"vier"}));
}

TEST_F(TfrmKKPluginWatchlistEditCategoryTest, CancelLeavesBothAsTheyWere) {
  EXPECT_FALSE(Edit([](TEditor& form) {
    form.edtName.EnterText(u"Alben");
    form.rchedtDescription.EnterText(u"drei");
    form.btnCancel.Click();
  }));
  EXPECT_EQ(Name, u"Bücher");
  EXPECT_EQ(Description.Lines(), (std::vector<TString>{u"eins", u"zwei"}));
}

TEST_F(TfrmKKPluginWatchlistEditCategoryTest, ABlankNameLeavesOkDisabledAndReturnDoesNothing) {
  for (const TStringView name : {u"", u" \t "}) {
    EXPECT_FALSE(Edit([name](TEditor& form) {
      form.edtName.EnterText(name);
      EXPECT_FALSE(form.btnOK.Enabled());
      EXPECT_FALSE(form.btnOK.Click());
      EXPECT_FALSE(form.edtName.PressKey(cKeyReturn));
      EXPECT_TRUE(form.IsModal());
      form.btnCancel.Click();
    }));
  }
}

TEST_F(TfrmKKPluginWatchlistEditCategoryTest, WithoutANameItStartsWithOkDisabled) {
  Name.clear();
  EXPECT_TRUE(Edit([](TEditor& form) {
    EXPECT_FALSE(form.btnOK.Enabled());
    form.edtName.EnterText(u"x");
    EXPECT_TRUE(form.btnOK.Click());
  }));
}

TEST_F(TfrmKKPluginWatchlistEditCategoryTest, ReturnInTheNameClicksOk) {
  EXPECT_TRUE(Edit([](TEditor& form) {
    form.edtName.EnterText(u"Alben");
    EXPECT_FALSE(form.edtName.PressKey(u'x')) << "other keys go on as usual";
    EXPECT_TRUE(form.edtName.PressKey(cKeyReturn));
  }));
  EXPECT_EQ(Name, u"Alben");
}

TEST_F(TfrmKKPluginWatchlistEditCategoryTest, ReturnInTheDescriptionIsANewLine) {
  EXPECT_FALSE(Edit([](TEditor& form) {
    form.rchedtDescription.PressKey(cKeyReturn);
    EXPECT_EQ(form.ModalResult(), cModalNone);
    form.btnCancel.Click();
  }));
}

TEST_F(TfrmKKPluginWatchlistEditCategoryTest, BlanksAroundANameAreKept) {
  EXPECT_TRUE(Rename(u"  Alben "));
  EXPECT_EQ(Name, u"  Alben ");
}

TEST_F(TfrmKKPluginWatchlistEditCategoryTest, TheUnchangedNameIsNotChecked) {
  Category(u"Bücher");
  EXPECT_TRUE(Edit([](TEditor& form) { form.btnOK.Click(); }));
  EXPECT_EQ(User.ShownCount(), 1);
}

TEST_F(TfrmKKPluginWatchlistEditCategoryTest, TheProposalForANewCategoryPassesAsUnchanged) {
  Name = Tree().MakeUniqueName(u"Neu");
  EXPECT_EQ(Name, u"Neu 1");
  Category(u"Neu 1");
  EXPECT_TRUE(Edit([](TEditor& form) { form.btnOK.Click(); }));
}

TEST_F(TfrmKKPluginWatchlistEditCategoryTest, ANameOfTheTopLevelIsRefusedInAnyCase) {
  Category(u"Neu");
  ExpectRefused(u"neu");
}

// Looks like a mistake and is required: the search finds the category itself.
TEST_F(TfrmKKPluginWatchlistEditCategoryTest, AChangeOfCaseAloneIsRefusedAtTheTopLevel) {
  Category(u"Bücher");
  ExpectRefused(u"bücher");
}

// Looks like a mistake and is required: siblings below the top level do not count.
TEST_F(TfrmKKPluginWatchlistEditCategoryTest, ANameOfAChildCategoryIsAccepted) {
  Category(u"Romane", &Category(u"Neu"));
  EXPECT_TRUE(Rename(u"Romane"));
}

TEST_F(TfrmKKPluginWatchlistEditCategoryTest, ARefusedNameCanBeCorrected) {
  Category(u"Neu");
  User.Expect<TEditor>([this](TEditor& form) {
    User.ExpectMessage(Format(_resCategoryNameExists, {u"Neu"}));
    form.edtName.EnterText(u"Neu");
    form.btnOK.Click();
    form.edtName.EnterText(u"Neuer");
    form.btnOK.Click();
  });
  EXPECT_TRUE(TEditor::DisplayEdit(nullptr, Description, Name));
  EXPECT_EQ(Name, u"Neuer");
}

TEST_F(TfrmKKPluginWatchlistEditCategoryTest, CancelIsNotChecked) {
  Category(u"Neu");
  EXPECT_FALSE(Edit([](TEditor& form) {
    form.edtName.EnterText(u"Neu");
    form.btnCancel.Click();
  }));
  EXPECT_EQ(User.ShownCount(), 1);
}

}  // namespace
}  // namespace kk
