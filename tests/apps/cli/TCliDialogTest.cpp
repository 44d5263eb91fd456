#include "apps/cli/TCliDialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TFakeConsole.h"
#include "apps/cli/TCliFormHost.h"
#include "host/controls/TCheckBox.h"
#include "host/controls/TComboBox.h"
#include "host/controls/TEdit.h"
#include "host/controls/TLabel.h"
#include "host/controls/TRadioButton.h"
#include "host/controls/TSpinEdit.h"
#include "host/controls/TStatusBar.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

/// A window with rows, whose labels stand behind what they name: when to be told, and by what.
class TRowsForm : public TForm {
 public:
  TRowsForm() : TForm(nullptr, u"TfrmRows", u"Wann?") {
    for (TPanel* row : {&pnlSound, &pnlSpan, &pnlRelative}) {
      row->SetArrangement(TArrangement::arRow);
    }
    chckbxSound.SetOnClick(TNotifyEvent::Of<&TRowsForm::Update>(this));
    rdbtnSpan.SetOnClick(TNotifyEvent::Of<&TRowsForm::Update>(this));
    rdbtnRelative.SetOnClick(TNotifyEvent::Of<&TRowsForm::Update>(this));
    cmbxRelative.SetEditable(false);
    cmbxRelative.AddItem(u"1 Minute");
    cmbxRelative.AddItem(u"1 Tag");
    cmbxRelative.SetItemIndex(0);
    edtSound.SetText(u"/a.wav");
    spnedtHours.SetValue(1);
    stsbrTime.AddPanel(u"Zeitpunkt: ");
    stsbrTime.AddPanel(u"morgen");
    rdbtnSpan.SetChecked(true);
    SetDefaultButton(&btnOK);
    SetCancelButton(&btnCancel);
    Update(nullptr);
  }
  void Update(TObject*) {
    edtSound.SetVisible(chckbxSound.Checked());
    btnSound.SetVisible(chckbxSound.Checked());
    for (TControl* control : std::initializer_list<TControl*>{&spnedtHours, &lblHours}) {
      control->SetEnabled(rdbtnSpan.Checked());
    }
    for (TControl* control : std::initializer_list<TControl*>{&cmbxRelative, &lblRelative}) {
      control->SetEnabled(rdbtnRelative.Checked());
    }
  }

  TPanel pnlSound{this, u"pnlSound"};
  TCheckBox chckbxSound{&pnlSound, u"chckbxSound"};
  TLabel lblSound{&pnlSound, u"lblSound", u"Sounddatei"};
  TEdit edtSound{&pnlSound, u"edtSound"};
  TButton btnSound{&pnlSound, u"btnSound", u"..."};
  TPanel pnlTime{this, u"pnlTime"};
  TRadioButton rdbtnSpan{&pnlTime, u"rdbtnSpan", u"Nach Ablauf von"};
  TPanel pnlSpan{&pnlTime, u"pnlSpan"};
  TSpinEdit spnedtHours{&pnlSpan, u"spnedtHours"};
  TLabel lblHours{&pnlSpan, u"lblHours", u"Stunden"};
  TRadioButton rdbtnRelative{&pnlTime, u"rdbtnRelative"};
  TPanel pnlRelative{&pnlTime, u"pnlRelative"};
  TComboBox cmbxRelative{&pnlRelative, u"cmbxRelative"};
  TLabel lblRelative{&pnlRelative, u"lblRelative", u"vor Ablauf der Auktion"};
  TButton btnOK{this, u"btnOK", u"&OK", cModalOK};
  TButton btnCancel{this, u"btnCancel", u"&Abbrechen", cModalCancel};
  TStatusBar stsbrTime{this, u"stsbrTime"};
};

class TCliDialogTest : public testing::Test {
 protected:
  TCliDialogTest() : Before(SetFormHost(&Host)) {}
  ~TCliDialogTest() override { SetFormHost(Before); }

  TTestMainLoop Loop;
  TFakeConsole Console;
  TCliFormHost Host{Console};
  IFormHost* Before;
};

TEST_F(TCliDialogTest, ALabelBehindWhatItNamesIsReadTogetherWithIt) {
  TRowsForm form;
  Console.Answer({u"", u"", u"", u""});
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_THAT(Console.Complained(),
              ElementsAre("", "Wann?", "  1  Nach Ablauf von", "  2  vor Ablauf der Auktion",
                          "Zeitpunkt: morgen", "  1  OK", "  2  Abbrechen"));
  EXPECT_THAT(Console.Prompts(),
              ElementsAre("Sounddatei (j/n) [n] ", "Nummer [1] ", "Stunden [1] ", "Auswahl [1] "));
}

TEST_F(TCliDialogTest, WhatAnAnswerBringsUpIsAskedAndWhatItTakesAwayIsNot) {
  TRowsForm form;
  Console.Answer({u"j", u"/b.wav", u"2", u"2", u""});
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_EQ(form.edtSound.Text(), u"/b.wav");
  EXPECT_TRUE(form.rdbtnRelative.Checked());
  EXPECT_EQ(form.cmbxRelative.ItemIndex(), 1);
  EXPECT_THAT(Console.Complained(),
              ElementsAre("", "Wann?", "  1  Nach Ablauf von", "  2  vor Ablauf der Auktion",
                          "vor Ablauf der Auktion", "  1  1 Minute", "  2  1 Tag",
                          "Zeitpunkt: morgen", "  1  OK", "  2  Abbrechen"));
  EXPECT_THAT(Console.Prompts(), ElementsAre("Sounddatei (j/n) [n] ", "[/a.wav] ", "Nummer [1] ",
                                             "Nummer [1 Minute] ", "Auswahl [1] "));
}

TEST_F(TCliDialogTest, AnEntryIsChosenByItsTextInAnyCase) {
  TRowsForm form;
  Console.Answer({u"", u"2", u"1 Jahr", u"1 tag", u""});
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_EQ(form.cmbxRelative.ItemIndex(), 1);
  EXPECT_THAT(Console.Complained(), Contains("Die Auswahl 1 Jahr gibt es nicht."));
}

TEST_F(TCliDialogTest, ALabelWithoutWhatItNamesStandsForItself) {
  TRowsForm form;
  form.chckbxSound.SetVisible(false);
  Console.Answer({u"", u"", u""});
  form.ShowModal();
  EXPECT_THAT(Console.Complained(), Contains("Sounddatei"));
}

TEST_F(TCliDialogTest, ANumberIsAskedForUntilItIsOne) {
  TRowsForm form;
  Console.Answer({u"", u"", u"eins", u"99999999999", u" 12 ", u""});
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_EQ(form.spnedtHours.Value(), 12);
  EXPECT_THAT(Console.Complained(), Contains("Das ist keine ganze Zahl: eins"));
  EXPECT_THAT(Console.Complained(), Contains("Das ist keine ganze Zahl: 99999999999"));
}

TEST_F(TCliDialogTest, TheSameNumberAgainIsAnAnswer) {
  TRowsForm form;
  Console.Answer({u"", u"", u"1", u""});
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_EQ(Console.AnswersLeft(), 0u);
}

TEST_F(TCliDialogTest, TheEndOfTheInputInANumberIsCancel) {
  TRowsForm form;
  Console.Answer({u"", u""});
  EXPECT_EQ(form.ShowModal(), cModalCancel);
}

TEST_F(TCliDialogTest, AButtonThatOnlyOpensAChooserIsLeftOut) {
  TRowsForm form;
  form.chckbxSound.SetChecked(true);
  form.Update(nullptr);
  Console.Answer({u"", u"", u"", u"", u"1"});
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_THAT(Console.Complained(), Not(Contains("  1  ...")));
}

TEST_F(TCliDialogTest, WithoutAUserTheStatusBarIsShownAndTheDefaultTaken) {
  TRowsForm form;
  EXPECT_EQ(form.ShowModal(), cModalOK);
  EXPECT_THAT(Console.Complained(), ElementsAre("Wann?", "Zeitpunkt: morgen"));
}

TEST_F(TCliDialogTest, ReturnPressesTheFirstButtonWhereANumberIsTyped) {
  TForm form(nullptr, u"TfrmNumber", u"Zahl");
  TSpinEdit spin(&form, u"spnedt");
  TButton first(&form, u"btnFirst", u"Eins", cModalYes);
  TButton second(&form, u"btnSecond", u"Zwei", cModalNo);
  Console.Answer({u"5", u""});
  EXPECT_EQ(form.ShowModal(), cModalYes);
  EXPECT_EQ(spin.Value(), 5);
  EXPECT_THAT(Console.Prompts(), ElementsAre("[0] ", "Auswahl [1] "));
}

}  // namespace
}  // namespace kk
