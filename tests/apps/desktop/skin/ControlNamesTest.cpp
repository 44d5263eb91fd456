#include "apps/desktop/skin/ControlNames.h"

#include <gtest/gtest.h>

#include "host/base/TInstalled.h"
#include "host/base/TMainLoop.h"
#include "host/controls/TCheckBox.h"
#include "host/controls/TComboBox.h"
#include "host/controls/TEdit.h"
#include "host/controls/TForm.h"
#include "host/controls/TLabel.h"
#include "host/controls/TRadioButton.h"
#include "host/controls/TSpinEdit.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

class ControlNames : public testing::Test {
 protected:
  TTestMainLoop FLoop;
  TForm FForm{nullptr, u"frm", u"Fenster"};
};

TEST_F(ControlNames, TheCaptionWithoutTheMarkOfItsKey) {
  TButton button(&FForm, u"btn", u"&Ja && &Amen&");
  EXPECT_EQ(NameForReader(button), u"Ja & Amen");
  TLabel label(&FForm, u"lbl", u"Müller & Söhne");
  EXPECT_EQ(NameForReader(label), u"Müller & Söhne");
}

TEST_F(ControlNames, TheLabelBeforeTheControl) {
  TLabel label(&FForm, u"lbl", u"Name:");
  TEdit edit(&FForm, u"edt");
  EXPECT_EQ(NameForReader(edit), u"Name:");
  label.SetVisible(false);
  EXPECT_EQ(NameForReader(edit), u"Fenster");
}

TEST_F(ControlNames, InARowThatBeginsWithAControlTheLabelBehindIt) {
  TPanel row(&FForm, u"pnl");
  row.SetArrangement(TArrangement::arRow);
  TSpinEdit hours(&row, u"spnedtHours");
  TLabel lblHours(&row, u"lblHours", u"Stunden");
  TSpinEdit minutes(&row, u"spnedtMinutes");
  TLabel lblMinutes(&row, u"lblMinutes", u"Minuten");
  EXPECT_EQ(NameForReader(hours), u"Stunden");
  EXPECT_EQ(NameForReader(minutes), u"Minuten");
}

TEST_F(ControlNames, ABoxWithoutACaptionMeansWhatFollowsIt) {
  TPanel row(&FForm, u"pnl");
  row.SetArrangement(TArrangement::arRow);
  TCheckBox box(&row, u"chckbx");
  TLabel label(&row, u"lbl", u"Sounddatei:");
  TEdit edit(&row, u"edt");
  EXPECT_EQ(NameForReader(box), u"Sounddatei:");
  EXPECT_EQ(NameForReader(edit), u"Sounddatei:");

  TRadioButton choice(&FForm, u"rdbtn");
  TPanel behind(&FForm, u"pnlBehind");
  behind.SetArrangement(TArrangement::arRow);
  TComboBox list(&behind, u"cmbx");
  TLabel end(&behind, u"lblEnd", u"vor dem Ende");
  EXPECT_EQ(NameForReader(choice), u"vor dem Ende");
  EXPECT_EQ(NameForReader(list), u"vor dem Ende");
}

TEST_F(ControlNames, TheGroupOrTheWindowWhereNoLabelIs) {
  TPanel group(&FForm, u"grp", u"&Anzeige");
  TEdit inside(&group, u"edt");
  EXPECT_EQ(NameForReader(inside), u"Anzeige");
  TPanel bare(&FForm, u"pnl");
  EXPECT_EQ(NameForReader(bare), u"");
  EXPECT_EQ(NameForReader(TEdit(nullptr)), u"");
}

}  // namespace
}  // namespace kk
