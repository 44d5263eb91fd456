#include "apps/cli/TCliFormHost.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "TFakeConsole.h"
#include "host/base/Exception.h"
#include "host/controls/TCheckBox.h"
#include "host/controls/TComboBox.h"
#include "host/controls/TEdit.h"
#include "host/controls/TGauge.h"
#include "host/controls/TLabel.h"
#include "host/controls/TMemo.h"
#include "host/controls/TRadioButton.h"
#include "host/controls/TfrmKKCommonMessageDlg.h"
#include "host/controls/TfrmKKCommonWait.h"
#include "host/controls/TfrmMessageDlg.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

/// A window with one of each thing to fill in.
class TFullForm : public TForm {
 public:
  TFullForm() : TForm(nullptr, u"TfrmFull", u"Alles auf einmal") {
    SetDefaultButton(&btnOK);
    SetCancelButton(&btnCancel);
    SetOnCloseQuery(TCloseQueryEvent::Of<&TFullForm::FormCloseQuery>(this));
    edtName.SetText(u"Neu");
    rchedtText.SetLines({u"alt"});
    cmbxKind.AddItem(u"Rot");
    cmbxKind.AddItem(u"Blau");
    cmbxKind.SetItemIndex(0);
    rdbtnFirst.SetChecked(true);
    hidden.SetVisible(false);
    disabled.SetEnabled(false);
  }
  void FormCloseQuery(TObject*, bool& ioCanClose) {
    if (ModalResult() != cModalOK && RefusedName.empty()) return;
    if (edtName.Text() == RefusedName) ioCanClose = false;
    ++Queries;
  }

  TLabel lblName{this, u"lblName", u"Name:\r\nin einer Zeile"};
  TEdit edtName{this, u"edtName"};
  TMemo rchedtText{this, u"rchedtText"};
  TComboBox cmbxKind{this, u"cmbxKind"};
  TCheckBox chckbxAgain{this, u"chckbxAgain", u"Noch &einmal"};
  TPanel pnlChoice{this, u"pnlChoice"};
  TRadioButton rdbtnFirst{&pnlChoice, u"rdbtnFirst", u"Erstes"};
  TRadioButton rdbtnSecond{&pnlChoice, u"rdbtnSecond", u"Zweites"};
  TEdit hidden{this, u"hidden"};
  TEdit disabled{this, u"disabled"};
  TButton btnOK{this, u"btnOK", u"&OK", cModalOK};
  TButton btnCancel{this, u"btnCancel", u"&Abbrechen", cModalCancel};
  TString RefusedName;
  int Queries = 0;
};

class TCliFormHostTest : public testing::Test {
 protected:
  TCliFormHostTest() : Before(SetFormHost(&Host)) {}
  ~TCliFormHostTest() override { SetFormHost(Before); }

  TTestMainLoop Loop;
  TFakeConsole Console;
  TCliFormHost Host{Console};
  IFormHost* Before;
};

bool AskToDelete() {
  return TfrmKKCommonMessageDlg::Display(nullptr, u"Wirklich löschen?\r\nEs ist viel.",
                                         u"&Ja, löschen", u"Die Einträge werden gelöscht.",
                                         u"&Nein, abbrechen", u"Der Vorgang wird abgebrochen.");
}

TEST_F(TCliFormHostTest, EmptyLinesKeepEverythingAndPressTheDefaultButton) {
  TFullForm form;
  Console.Answer({u"", u"", u"", u"", u"", u""});
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_EQ(form.edtName.Text(), u"Neu");
  EXPECT_EQ(form.rchedtText.Lines().Lines(), std::vector<TString>{u"alt"});
  EXPECT_EQ(form.cmbxKind.Text(), u"Rot");
  EXPECT_FALSE(form.chckbxAgain.Checked());
  EXPECT_TRUE(form.rdbtnFirst.Checked());
  EXPECT_EQ(Console.AnswersLeft(), 0u);
}

TEST_F(TCliFormHostTest, TheWindowIsReadFromTopToBottom) {
  TFullForm form;
  Console.Answer({u"", u"", u"", u"", u"", u""});
  form.ShowModal();
  EXPECT_THAT(Console.Complained(),
              ElementsAre("", "Alles auf einmal", "Name:", "in einer Zeile", "  alt",
                          HasSubstr("am Ende ein Punkt"), "  1  Rot", "  2  Blau", "  1  Erstes",
                          "  2  Zweites", "  1  OK", "  2  Abbrechen"));
  EXPECT_THAT(Console.Prompts(),
              ElementsAre("[Neu] ", "> ", "Nummer oder neuer Name [Rot] ", "Noch einmal (j/n) [n] ",
                          "Nummer [1] ", "Auswahl [1] "));
}

TEST_F(TCliFormHostTest, WhatIsEnteredComesInByTheUsersDoor) {
  TFullForm form;
  Console.Answer({u"Haus", u"eins", u"zwei", u".", u"2", u"ja", u"2", u"ok"});
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_EQ(form.edtName.Text(), u"Haus");
  EXPECT_EQ(form.rchedtText.Lines().Lines(), (std::vector<TString>{u"eins", u"zwei"}));
  EXPECT_EQ(form.cmbxKind.ItemIndex(), 1);
  EXPECT_TRUE(form.chckbxAgain.Checked());
  EXPECT_TRUE(form.rdbtnSecond.Checked());
}

TEST_F(TCliFormHostTest, AListTakesANameANumberOrANewText) {
  TFullForm form;
  form.cmbxKind.AddItem(u"1");
  Console.Answer({u"", u"", u"1", u"", u"", u"1"});
  form.ShowModal();
  EXPECT_EQ(form.cmbxKind.ItemIndex(), 2) << "a name goes before a number";
  Console.Answer({u"", u"", u"Gelb", u"", u"", u"1"});
  form.ShowModal();
  EXPECT_EQ(form.cmbxKind.ItemIndex(), -1);
  EXPECT_EQ(form.cmbxKind.Text(), u"Gelb");
}

TEST_F(TCliFormHostTest, ANumberThatNoEntryHasIsAskedAgainAndMakesNoNewEntry) {
  TFullForm form;
  Console.Answer({u"", u"", u"9", u"2", u"", u"", u"1"});
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_EQ(form.cmbxKind.Text(), u"Blau");
  EXPECT_THAT(Console.Complained(), testing::Contains("Die Auswahl 9 gibt es nicht."));
}

TEST_F(TCliFormHostTest, ReturnPressesTheFirstButtonWhereTheUserTypesAndNoneIsTheDefault) {
  TFullForm form;
  form.SetDefaultButton(nullptr);
  Console.Answer({u"", u"", u"", u"", u"", u""});
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_EQ(Console.Prompts().back(), "Auswahl [1] ");
}

TEST_F(TCliFormHostTest, AListThatIsNotEditableAsksAgainForAnUnknownText) {
  TFullForm form;
  form.cmbxKind.SetEditable(false);
  Console.Answer({u"", u"", u"Gelb", u"7", u"2", u"", u"", u"1"});
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_EQ(form.cmbxKind.Text(), u"Blau");
}

TEST_F(TCliFormHostTest, AnswersThatAreNoneAreAskedForAgain) {
  TFullForm form;
  Console.Answer({u"", u"", u"", u"vielleicht", u"n", u"9", u"0", u"1", u"x", u"3", u"A"});
  EXPECT_EQ(form.ShowModal(), cModalCancel);
  EXPECT_EQ(Console.AnswersLeft(), 0u);
}

TEST_F(TCliFormHostTest, AWindowThatRefusesToCloseIsAskedOnceMore) {
  TFullForm form;
  form.RefusedName = u"Neu";
  Console.Answer({u"", u"", u"", u"", u"", u"1", u"Anders", u"", u"", u"", u"", u"1"});
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_EQ(form.Queries, 2);
}

TEST_F(TCliFormHostTest, TheEndOfTheInputIsCancel) {
  for (const auto& answers : {std::vector<TString>{},
                              {u"a"},
                              {u"a", u""},
                              {u"a", u"b"},
                              {u"a", u"", u""},
                              {u"a", u"", u"", u""},
                              {u"a", u"", u"", u"", u""}}) {
    TFullForm form;
    Console.Answer({});
    for (const TString& answer : answers) Console.Answer({answer});
    EXPECT_EQ(form.ShowModal(), cModalCancel) << answers.size();
    EXPECT_EQ(Console.AnswersLeft(), 0u);
  }
}

TEST_F(TCliFormHostTest, ADisabledButtonCanNotBePressed) {
  TFullForm form;
  form.btnOK.SetEnabled(false);
  Console.Answer({u"", u"", u"", u"", u"", u"ok", u"1"});
  EXPECT_EQ(form.ShowModal(), cModalCancel);
}

TEST_F(TCliFormHostTest, AQuestionShowsBothButtonsWithWhatTheyDo) {
  Console.Answer({u"j"});
  EXPECT_TRUE(AskToDelete());
  EXPECT_THAT(Console.Complained(),
              ElementsAre("", "Wirklich löschen?", "Es ist viel.",
                          "  1  Ja, löschen - Die Einträge werden gelöscht.",
                          "  2  Nein, abbrechen - Der Vorgang wird abgebrochen."));
  EXPECT_THAT(Console.Prompts(), ElementsAre("Auswahl [2] "));
}

TEST_F(TCliFormHostTest, AQuestionIsAnsweredByNumberLetterTextOrReturn) {
  for (const TString answer : {u"1", u"J", u"ja, löschen"}) {
    Console.Answer({answer});
    EXPECT_TRUE(AskToDelete()) << ToUtf8(answer);
  }
  for (const TString answer : {u"2", u"n", u""}) {
    Console.Answer({answer});
    EXPECT_FALSE(AskToDelete()) << ToUtf8(answer);
  }
}

TEST_F(TCliFormHostTest, YesToAllAnswersQuestionsAlone) {
  Host.SetYesToAll(true);
  EXPECT_TRUE(AskToDelete());
  TFullForm form;
  EXPECT_EQ(form.ShowModal(), cModalOK) << "a window to fill in takes its default button";
  EXPECT_EQ(MessageDlg(u"Text", TMsgDlgType::mtError, {TMsgDlgBtn::mbOK}), cModalOK);
}

TEST_F(TCliFormHostTest, YesIsTheButtonThatMeansItWhereverItStands) {
  Host.SetYesToAll(true);
  TForm form(nullptr, u"TfrmAsk", u"Frage");
  TButton btnNo(&form, u"btnNo", u"Nein", cModalNo);
  TButton btnYes(&form, u"btnYes", u"Ja", cModalYes);
  EXPECT_EQ(form.ShowModal(), cModalYes);
}

TEST_F(TCliFormHostTest, WithoutAUserTheDefaultButtonIsTaken) {
  EXPECT_FALSE(AskToDelete());
  TFullForm form;
  EXPECT_EQ(form.ShowModal(), cModalOK);
}

TEST_F(TCliFormHostTest, WithoutAUserAMessageIsShownAndGone) {
  ShowMessage(u"Etwas ist\r\ngeschehen.");
  EXPECT_THAT(Console.Complained(), ElementsAre("Information", "Etwas ist", "geschehen."));
}

TEST_F(TCliFormHostTest, WithoutADefaultButtonTheOnlyOneIsPressedOrTheWindowIsLeft) {
  TForm one(nullptr, u"TfrmOne", u"Einer");
  TButton btnDone(&one, u"btnDone", u"Fertig", cModalAll);
  EXPECT_EQ(one.ShowModal(), cModalAll);
  TForm two(nullptr, u"TfrmTwo", u"Zwei");
  TButton btnFirst(&two, u"btnFirst", u"Eins", cModalYes);
  TButton btnSecond(&two, u"btnSecond", u"Zwei", cModalNo);
  EXPECT_EQ(two.ShowModal(), cModalCancel);
}

TEST_F(TCliFormHostTest, ReturnIsPressedWhereTheWindowTakesIt) {
  struct TKeyForm : TForm {
    TKeyForm() : TForm(nullptr, u"TfrmKey", u"Taste") {
      edtName.SetOnKeyPress(TKeyPressEvent::Of<&TKeyForm::edtNameKeyPress>(this));
    }
    void edtNameKeyPress(TObject*, char16_t& ioKey) {
      if (std::exchange(ioKey, u'\0') == cKeyReturn) SetModalResult(cModalAll);
    }
    TEdit edtName{this, u"edtName"};
    TButton btnA{this, u"btnA", u"A", cModalYes};
    TButton btnB{this, u"btnB", u"B", cModalNo};
  } form;
  EXPECT_EQ(form.ShowModal(), cModalAll);
}

TEST_F(TCliFormHostTest, AWindowThatNobodyCanEndRaises) {
  struct TStubborn : TForm {
    TStubborn() : TForm(nullptr, u"TfrmStubborn", u"Starrsinn") {
      SetOnCloseQuery(TCloseQueryEvent::Of<&TStubborn::FormCloseQuery>(this));
    }
    void FormCloseQuery(TObject*, bool& ioCanClose) { ioCanClose = false; }
    TButton btnOK{this, u"btnOK", u"OK", cModalOK};
  } form;
  EXPECT_THROW(form.ShowModal(), Exception);
  Console.Answer({u"1"});
  EXPECT_THROW(form.ShowModal(), Exception) << "also when the input ends";
}

TEST_F(TCliFormHostTest, AWaitWindowKeepsTheLoopAliveUntilItEnds) {
  TForm form(nullptr, u"TfrmWait", u"Warten");
  TLabel lblInfo(&form, u"lblInfo", u"Gleich.");
  TGauge gauge(&form, u"gauge");
  Loop.Post([&] { Loop.Post([&] { form.SetModalResult(cModalOK); }); });
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_THAT(Console.Progressed(), ElementsAre("Warten ...", ""));
  EXPECT_THAT(Console.Prompts(), testing::IsEmpty());
}

TEST_F(TCliFormHostTest, WorkThatIsWaitedForIsShownByWhatItDoes) {
  TfrmKKCommonWait::Run(u"Die SMS wird übergeben", [](std::stop_token) {});
  EXPECT_THAT(Console.Progressed(), ElementsAre("Die SMS wird übergeben ...", ""));
  TfrmKKCommonWait::Run(u"Die SMS wird übergeben...", [](std::stop_token) {});
  EXPECT_THAT(Console.Progressed(), testing::Contains("Die SMS wird übergeben..."));
}

TEST_F(TCliFormHostTest, CtrlCGivesUpTheWaitForWork) {
  bool stopped = false;
  Console.Interrupt();
  TfrmKKCommonWait::Run(u"Warten", [&stopped](std::stop_token iStop) {
    while (!iStop.stop_requested()) std::this_thread::yield();
    stopped = true;
  });
  EXPECT_TRUE(stopped);
  EXPECT_FALSE(Console.TakeInterrupt()) << "it was for this wait";
}

TEST_F(TCliFormHostTest, CtrlCInAWaitWithoutACancelButtonIsKeptForTheCommand) {
  TForm form(nullptr, u"TfrmWait", u"Warten");
  Console.Interrupt();
  Loop.Post([&] { Loop.Post([&] { form.SetModalResult(cModalOK); }); });
  form.ShowModal();
  EXPECT_TRUE(Console.TakeInterrupt());
}

TEST_F(TCliFormHostTest, TellsHowTheLastWindowEnded) {
  EXPECT_EQ(Host.TakeLastResult(), cModalNone);
  Host.SetYesToAll(true);
  AskToDelete();
  EXPECT_EQ(Host.TakeLastResult(), cModalYes);
  EXPECT_EQ(Host.TakeLastResult(), cModalNone);
}

TEST_F(TCliFormHostTest, AnAnswerThatIsSetComesFirstForAsLongAsItLives) {
  Console.Answer({});
  {
    const TCliFormHost::TAnswering outer(Host, [](TForm& form) {
      form.SetModalResult(cModalYes);
      return true;
    });
    EXPECT_TRUE(AskToDelete());
    {
      const TCliFormHost::TAnswering inner(Host, [](TForm&) { return false; });
      EXPECT_FALSE(AskToDelete());
    }
    EXPECT_TRUE(AskToDelete());
  }
  EXPECT_FALSE(AskToDelete());
}

TEST_F(TCliFormHostTest, WhatAnAnswerRaisesPassesToTheOneWhoAsked) {
  const TCliFormHost::TAnswering answering(Host, [](TForm&) -> bool { throw Exception(u"nein"); });
  EXPECT_THROW(AskToDelete(), Exception);
}

TEST_F(TCliFormHostTest, TextsLoseWhatATerminalWouldObey) {
  Console.Answer({u""});
  MessageDlg(u"\u001B[2JText", TMsgDlgType::mtError, {TMsgDlgBtn::mbOK});
  EXPECT_THAT(Console.Complained(), Contains("Text"));
}

}  // namespace
}  // namespace kk
