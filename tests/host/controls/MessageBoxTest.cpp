#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "ControlsFixture.h"
#include "tests/support/TScriptedFormHost.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

using enum TMsgDlgBtn;

TEST(ShowMessage, ShowsTheTextWithAnOKButton) {
  TScriptedFormHost user;
  user.Expect<TfrmMessageDlg>([](TfrmMessageDlg& box) {
    EXPECT_EQ(box.Text(), u"Fertig.");
    EXPECT_EQ(box.Type(), TMsgDlgType::mtInformation);
    EXPECT_EQ(box.Caption(), u"Information");
    EXPECT_EQ(box.pnlButtons.Children().size(), 1u);
    EXPECT_EQ(box.FocusedControl(), box.Button(mbOK));
    EXPECT_TRUE(box.PressKey(cKeyEscape));
  });
  ShowMessage(u"Fertig.");
}

TEST(MessageDlg, AnswersTheModalResultOfTheButton) {
  TScriptedFormHost user;
  user.ExpectMessage(u"Wirklich?", mbYes);
  user.ExpectMessage(u"Wirklich?", mbNo);
  user.ExpectMessage(u"Wirklich?", mbCancel);
  user.ExpectMessage(u"Wirklich?", mbOK);
  const auto ask = [] {
    return MessageDlg(u"Wirklich?", TMsgDlgType::mtConfirmation, {mbYes, mbNo, mbOK, mbCancel}, 0);
  };
  EXPECT_EQ(ask(), 6);
  EXPECT_EQ(ask(), 7);
  EXPECT_EQ(ask(), 2);
  EXPECT_EQ(ask(), 1);
}

TEST(MessageDlg, ClosedWithoutAButtonIsACancel) {
  TScriptedFormHost user;
  user.Expect<TfrmMessageDlg>([](TfrmMessageDlg& box) {
    EXPECT_EQ(box.Caption(), u"Fehler");
    box.CloseByUser();
  });
  EXPECT_EQ(MessageDlg(u"Kein Platz", TMsgDlgType::mtError, {mbOK}), 2);
}

TEST(MessageDlg, EscapeMeansTheRefusal) {
  const TfrmMessageDlg yesNo(u"?", TMsgDlgType::mtWarning, {mbYes, mbNo});
  EXPECT_EQ(yesNo.DefaultButton(), yesNo.Button(mbYes));
  EXPECT_EQ(yesNo.CancelButton(), yesNo.Button(mbNo));
  const TfrmMessageDlg okCancel(u"?", TMsgDlgType::mtWarning, {mbOK, mbCancel});
  EXPECT_EQ(okCancel.CancelButton(), okCancel.Button(mbCancel));
  const TfrmMessageDlg yesOK(u"?", TMsgDlgType::mtWarning, {mbYes, mbOK});
  EXPECT_EQ(yesOK.CancelButton(), nullptr);
  EXPECT_EQ(yesOK.Button(mbCancel), nullptr);
  const TfrmMessageDlg none(u"?", TMsgDlgType::mtWarning, {});
  EXPECT_EQ(none.DefaultButton(), nullptr);
}

bool Ask() {
  return TfrmKKCommonMessageDlg::Display(nullptr, u"Löschen?", u"&Ja", u"Die Einträge gehen.",
                                         u"&Nein", u"Alles bleibt.");
}

TEST(TfrmKKCommonMessageDlg, DescribesBothButtons) {
  TScriptedFormHost user;
  user.Expect<TfrmKKCommonMessageDlg>([](TfrmKKCommonMessageDlg& form) {
    EXPECT_EQ(form.lblText.Caption(), u"Löschen?");
    EXPECT_EQ(form.btnYes.Caption(), u"&Ja");
    EXPECT_EQ(form.btnYes.Description(), u"Die Einträge gehen.");
    EXPECT_EQ(form.btnNo.Caption(), u"&Nein");
    EXPECT_EQ(form.btnNo.Description(), u"Alles bleibt.");
    EXPECT_TRUE(form.WhiteBackground());
    form.btnYes.Click();
  });
  EXPECT_TRUE(Ask());
}

TEST(TfrmKKCommonMessageDlg, NoIsWhatReturnEscapeAndClosingMean) {
  TScriptedFormHost user;
  user.Expect<TfrmKKCommonMessageDlg>([](TfrmKKCommonMessageDlg& form) {
    EXPECT_EQ(form.FocusedControl(), &form.btnNo);
    form.PressKey(cKeyReturn);
  });
  user.Expect<TfrmKKCommonMessageDlg>([](auto& form) { form.PressKey(cKeyEscape); });
  user.Expect<TfrmKKCommonMessageDlg>([](auto& form) { form.CloseByUser(); });
  user.ExpectQuestion(u"Löschen?", false);
  for (int i = 0; i < 4; ++i) EXPECT_FALSE(Ask());
}

TEST(TfrmKKCommonMessageDlg, YesIsTrue) {
  TScriptedFormHost user;
  user.ExpectQuestion(u"Löschen?", true);
  EXPECT_TRUE(Ask());
}

// The host that plays the user must itself not hide a fault.
TEST(TScriptedFormHost, FailsOnAWindowThatNobodyExpected) {
  EXPECT_NONFATAL_FAILURE(
      {
        TScriptedFormHost user;
        EXPECT_FALSE(Ask());
      },
      "nobody expected TfrmKKCommonMessageDlg \"\": Löschen?");
}

TEST(TScriptedFormHost, FailsOnAnotherWindowThanExpected) {
  EXPECT_NONFATAL_FAILURE(
      {
        TScriptedFormHost user;
        user.ExpectMessage(u"Fertig.");
        Ask();
      },
      "expected the message Fertig., got TfrmKKCommonMessageDlg");
  EXPECT_NONFATAL_FAILURE(
      {
        TScriptedFormHost user;
        user.ExpectQuestion(u"Verschieben?", true);
        Ask();
      },
      "expected the question Verschieben?");
  EXPECT_NONFATAL_FAILURE(
      {
        TScriptedFormHost user;
        user.ExpectCaption(u"Notiz", [](TForm&) {});
        Ask();
      },
      "expected Notiz");
  EXPECT_NONFATAL_FAILURE(
      {
        TScriptedFormHost user;
        user.Expect<TfrmMessageDlg>([](TfrmMessageDlg&) {});
        Ask();
      },
      "got TfrmKKCommonMessageDlg");
}

TEST(TScriptedFormHost, FailsOnAWindowThatStaysOpen) {
  TTestMainLoop loop;
  EXPECT_NONFATAL_FAILURE(
      {
        TScriptedFormHost user;
        user.Expect<TfrmKKCommonMessageDlg>([](TfrmKKCommonMessageDlg&) {});
        Ask();
      },
      "it stays open");
}

TEST(TScriptedFormHost, FailsOnAWindowThatDidNotCome) {
  EXPECT_NONFATAL_FAILURE(
      {
        TScriptedFormHost user;
        user.ExpectQuestion(u"Löschen?", true);
      },
      "a window did not come: the question Löschen?");
}

}  // namespace
}  // namespace kk
