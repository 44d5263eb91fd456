#include "views/dialogs/TfrmKKWatchlistEditItemDescription.h"

#include <gtest/gtest.h>

#include "tests/support/TScriptedFormHost.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

using TEditor = TfrmKKWatchlistEditItemDescription;

struct TfrmKKWatchlistEditItemDescriptionTest : testing::Test {
  TTestMainLoop Loop;
  TScriptedFormHost User;
  TForm Owner{nullptr, u"TForm"};
  TStringList Lines{u"eins"};
};

TEST_F(TfrmKKWatchlistEditItemDescriptionTest, ShowsTheNote) {
  User.Expect<TEditor>([this](TEditor& form) {
    EXPECT_EQ(form.Caption(), u"Notiz");
    EXPECT_EQ(form.Owner(), &Owner);
    EXPECT_EQ(form.Position(), TPosition::poOwnerFormCenter);
    EXPECT_EQ(form.rchedtDescription.Lines().Lines(), std::vector<TString>{u"eins"});
    EXPECT_EQ(form.FocusedControl(), &form.rchedtDescription);
    EXPECT_EQ(form.btnOK.Caption(), u"&OK");
    EXPECT_EQ(form.btnCancel.Caption(), u"&Abbrechen");
    form.rchedtDescription.PressKey(cKeyEscape);
  });
  EXPECT_FALSE(TEditor::Display(&Owner, Lines));
}

TEST_F(TfrmKKWatchlistEditItemDescriptionTest, TwoLinesComeBackAsTwoLines) {
  User.Expect<TEditor>([](TEditor& form) {
    form.rchedtDescription.EnterText(u"zwei\ndrei");
    form.btnOK.Click();
  });
  EXPECT_TRUE(TEditor::Display(&Owner, Lines));
  EXPECT_EQ(Lines.Lines(), (std::vector<TString>{u"zwei", u"drei"}));
}

TEST_F(TfrmKKWatchlistEditItemDescriptionTest, CancelLeavesTheNote) {
  User.Expect<TEditor>([](TEditor& form) {
    form.rchedtDescription.EnterText(u"zwei");
    form.btnCancel.Click();
  });
  EXPECT_FALSE(TEditor::Display(&Owner, Lines));
  EXPECT_EQ(Lines.Lines(), std::vector<TString>{u"eins"});
}

}  // namespace
}  // namespace kk
