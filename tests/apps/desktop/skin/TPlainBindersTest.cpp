// The contract of controls and skin, kind by kind: what the program sets is shown, what the user
// does comes in by his door, nothing comes back as an echo, and nothing comes from a control that
// is disabled.

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QCommandLinkButton>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QWheelEvent>
#include <limits>

#include "TQtWorld.h"
#include "apps/desktop/skin/TTextLabel.h"
#include "host/controls/TCheckBox.h"
#include "host/controls/TComboBox.h"
#include "host/controls/TEdit.h"
#include "host/controls/TGauge.h"
#include "host/controls/TLabel.h"
#include "host/controls/TMemo.h"
#include "host/controls/TRadioButton.h"
#include "host/controls/TSpinEdit.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct TPlainForm : TForm {
  TPlainForm() : TForm(nullptr, u"frmPlain", u"Fenster") {
    const TNotifyEvent note = TNotifyEvent::Of<&TPlainForm::Note>(this);
    for (TClickControl* clicked : std::initializer_list<TClickControl*>{
             &btnPlain, &chckbxTick, &rdbtnOne, &rdbtnTwo, &lblText}) {
      clicked->SetOnClick(note);
    }
    edtLine.SetOnChange(note);
    spnedtNumber.SetOnChange(note);
    cmbxList.SetOnChange(note);
    for (const TStringView text : {u"Äpfel", u"Birnen", u"Birnen"}) cmbxList.AddItem(text);
  }
  void Note(TObject* iSender) { Notes.push_back(ToUtf8(dynamic_cast<TControl&>(*iSender).Name())); }
  std::vector<std::string> Take() { return std::exchange(Notes, {}); }

  TButton btnPlain{this, u"btnPlain", u"&Los"};
  TCheckBox chckbxTick{this, u"chckbxTick", u"&Haken"};
  TRadioButton rdbtnOne{this, u"rdbtnOne", u"&Eins"};
  TRadioButton rdbtnTwo{this, u"rdbtnTwo", u"&Zwei"};
  TEdit edtLine{this, u"edtLine"};
  TMemo memLines{this, u"memLines"};
  TSpinEdit spnedtNumber{this, u"spnedtNumber"};
  TComboBox cmbxList{this, u"cmbxList"};
  TLabel lblText{this, u"lblText", u"Text"};
  TGauge ggProgress{this, u"ggProgress"};
  std::vector<std::string> Notes;
};

class TPlainBindersTest : public TQtWorld {
 protected:
  template <class Widget>
  Widget& Of(TControl& ioControl) {
    return FShown.Of<Widget>(ioControl);
  }

  TPlainForm FForm;
  TShownForm FShown{FForm};
};

TEST_F(TPlainBindersTest, EveryControlIsShownAndHiddenAndEnabledAndDisabled) {
  for (TControl* control : FForm.Children()) {
    SCOPED_TRACE(ToUtf8(control->Name()));
    auto& widget = Of<QWidget>(*control);
    EXPECT_TRUE(widget.isVisible());
    EXPECT_TRUE(widget.isEnabled());
    EXPECT_EQ(widget.objectName(), ToQt(control->Name()));
    control->SetEnabled(false);
    control->SetVisible(false);
    FShown.Skin().Flush();
    EXPECT_FALSE(widget.isVisible());
    EXPECT_FALSE(widget.isEnabled());
    control->SetVisible(true);
    control->SetEnabled(true);
    FShown.Skin().Flush();
    EXPECT_TRUE(widget.isVisible());
    EXPECT_TRUE(widget.isEnabled());
  }
  EXPECT_THAT(FForm.Take(), IsEmpty());
}

TEST_F(TPlainBindersTest, AButtonShowsItsCaptionAndIsClicked) {
  auto& button = Of<QPushButton>(FForm.btnPlain);
  EXPECT_EQ(button.text(), u"&Los");
  EXPECT_FALSE(button.isDefault());
  button.click();
  EXPECT_THAT(FForm.Take(), ElementsAre("btnPlain"));
  FForm.btnPlain.SetCaption(u"Weiter");
  FForm.btnPlain.SetDescription(u"Sagt, was es tut");
  FForm.SetDefaultButton(&FForm.btnPlain);
  FShown.Skin().Flush();
  EXPECT_EQ(button.text(), u"Weiter");
  EXPECT_EQ(button.toolTip(), u"Sagt, was es tut");
  EXPECT_TRUE(button.isDefault());
  FForm.SetDefaultButton(nullptr);
  FShown.Skin().Flush();
  EXPECT_FALSE(button.isDefault());
  EXPECT_THAT(FForm.Take(), IsEmpty());
}

TEST_F(TPlainBindersTest, AButtonWithADescriptionIsALargeOneWithBothTexts) {
  struct TLargeForm : TForm {
    TLargeForm() : TForm(nullptr, u"frmLarge") { btnYes.SetDescription(u"Löscht A & B"); }
    TButton btnYes{this, u"btnYes", u"&Ja, löschen"};
  } form;
  TShownForm shown(form);
  auto& button = shown.Of<QCommandLinkButton>(form.btnYes);
  EXPECT_EQ(button.text(), u"&Ja, löschen");
  EXPECT_EQ(button.description(), u"Löscht A && B");  // drawn as one
  EXPECT_EQ(button.accessibleName(), u"Ja, löschen");
  EXPECT_EQ(button.accessibleDescription(), u"Löscht A & B");
}

TEST_F(TPlainBindersTest, AButtonWithADescriptionShowsWhetherItHasTheFocus) {
  struct TLargeForm : TForm {
    TLargeForm() : TForm(nullptr, u"frmLarge") {
      for (TButton* button : {&btnYes, &btnNo}) button->SetDescription(u"Was dann geschieht");
      SetFocusedControl(&btnNo);
    }
    TButton btnYes{this, u"btnYes", u"&Ja"};
    TButton btnNo{this, u"btnNo", u"&Nein"};
  } form;
  TShownForm shown(form);
  auto& no = shown.Of<QCommandLinkButton>(form.btnNo);
  ASSERT_TRUE(no.hasFocus());
  const QImage with = no.grab().toImage();
  form.SetFocusedControl(&form.btnYes);
  shown.Skin().Flush();
  ASSERT_FALSE(no.hasFocus());
  EXPECT_NE(no.grab().toImage(), with);
}

TEST_F(TPlainBindersTest, ABoxIsTickedByBothDoors) {
  auto& box = Of<QCheckBox>(FForm.chckbxTick);
  EXPECT_EQ(box.text(), u"&Haken");
  FForm.chckbxTick.SetChecked(true);
  FShown.Skin().Flush();
  EXPECT_TRUE(box.isChecked());
  EXPECT_THAT(FForm.Take(), IsEmpty());
  box.click();
  EXPECT_FALSE(FForm.chckbxTick.Checked());
  EXPECT_THAT(FForm.Take(), ElementsAre("chckbxTick"));
}

TEST_F(TPlainBindersTest, AWidgetGoesBackToItsControlWhereTheDoorRefuses) {
  auto& box = Of<QCheckBox>(FForm.chckbxTick);
  FForm.chckbxTick.SetEnabled(false);  // and the skin has not rendered that yet
  box.click();
  EXPECT_TRUE(box.isChecked());
  FShown.Skin().Flush();
  EXPECT_FALSE(box.isChecked());
  EXPECT_FALSE(box.isEnabled());
  EXPECT_THAT(FForm.Take(), IsEmpty());
}

TEST_F(TPlainBindersTest, OneOfTheChoicesIsCheckedOrNone) {
  auto& one = Of<QRadioButton>(FForm.rdbtnOne);
  auto& two = Of<QRadioButton>(FForm.rdbtnTwo);
  EXPECT_FALSE(one.isChecked() || two.isChecked());
  one.click();
  FShown.Skin().Flush();
  EXPECT_TRUE(FForm.rdbtnOne.Checked());
  two.click();
  FShown.Skin().Flush();
  EXPECT_FALSE(one.isChecked());
  EXPECT_TRUE(two.isChecked());
  EXPECT_TRUE(FForm.rdbtnTwo.Checked());
  EXPECT_FALSE(FForm.rdbtnOne.Checked());
  EXPECT_THAT(FForm.Take(), ElementsAre("rdbtnOne", "rdbtnTwo"));
  two.click();  // the checked one stays so
  FForm.rdbtnTwo.SetChecked(true);
  FShown.Skin().Flush();
  EXPECT_TRUE(two.isChecked());
  FForm.rdbtnTwo.SetChecked(false);
  FShown.Skin().Flush();
  EXPECT_FALSE(one.isChecked() || two.isChecked());
  EXPECT_THAT(FForm.Take(), IsEmpty());
}

TEST_F(TPlainBindersTest, TheArrowKeysGoThroughTheChoices) {
  auto& one = Of<QRadioButton>(FForm.rdbtnOne);
  one.click();
  one.setFocus();
  Key(one, Qt::Key_Down);
  EXPECT_TRUE(FForm.rdbtnTwo.Checked());
  EXPECT_EQ(FForm.FocusedControl(), &FForm.rdbtnTwo);
}

TEST_F(TPlainBindersTest, ALineIsTypedAndSet) {
  auto& line = Of<QLineEdit>(FForm.edtLine);
  line.setFocus();
  Type(line, QStringLiteral("Tür"));
  EXPECT_EQ(FForm.edtLine.Text(), u"Tür");
  EXPECT_THAT(FForm.Take(), ElementsAre("edtLine", "edtLine", "edtLine"));
  FForm.edtLine.SetText(u"Fenster");
  FShown.Skin().Flush();
  EXPECT_EQ(line.text(), u"Fenster");
  EXPECT_THAT(FForm.Take(), IsEmpty());
}

TEST_F(TPlainBindersTest, TheCaretStaysWhereTheUserHasPutIt) {
  auto& line = Of<QLineEdit>(FForm.edtLine);
  FForm.edtLine.SetText(u"abcdef");
  FShown.Skin().Flush();
  line.setFocus();
  line.setCursorPosition(2);
  Type(line, QStringLiteral("x"));
  FShown.Skin().Flush();
  EXPECT_EQ(line.text(), u"abxcdef");
  EXPECT_EQ(line.cursorPosition(), 3);
  FForm.edtLine.SetText(u"ab");
  FShown.Skin().Flush();
  EXPECT_EQ(line.cursorPosition(), 2);
}

TEST_F(TPlainBindersTest, TheWholeTextIsMarkedWhenTheProgramSaysSoAndNotAgainAndAgain) {
  auto& line = Of<QLineEdit>(FForm.edtLine);
  FForm.edtLine.SetText(u"abc");
  FForm.edtLine.SelectAll();
  FShown.Skin().Flush();
  EXPECT_EQ(line.selectedText(), u"abc");
  line.deselect();
  line.setFocus();
  line.setCursorPosition(1);
  FShown.Skin().Flush();  // the user was here, and that is no reason
  EXPECT_TRUE(line.selectedText().isEmpty());
  FForm.edtLine.SelectAll();
  FShown.Skin().Flush();
  EXPECT_EQ(line.selectedText(), u"abc");
}

TEST_F(TPlainBindersTest, LinesAreTypedAndSet) {
  auto& memo = Of<QPlainTextEdit>(FForm.memLines);
  memo.setFocus();
  Type(memo, QStringLiteral("ab"));
  Key(memo, Qt::Key_Return, {}, QStringLiteral("\r"));
  FShown.Skin().Flush();
  EXPECT_EQ(memo.toPlainText(), u"ab\n");  // a break at the end makes no line, and stays
  Type(memo, QStringLiteral("c"));
  EXPECT_THAT(FForm.memLines.Lines().Lines(), ElementsAre(u"ab", u"c"));
  TStringList lines;
  lines.SetText(u"\nzwei\n\nvier");
  FForm.memLines.SetLines(lines);
  FShown.Skin().Flush();
  EXPECT_EQ(memo.toPlainText(), u"\nzwei\n\nvier");
  EXPECT_THAT(FForm.memLines.Lines().Lines(), ElementsAre(u"", u"zwei", u"", u"vier"));
}

TEST_F(TPlainBindersTest, AReturnThatSomebodyUsesMakesNoLine) {
  struct TUser {
    void OnKey(TObject*, char16_t& ioKey) {
      if (std::exchange(Uses, false)) ioKey = 0;
    }
    bool Uses = false;
  } user;
  FForm.memLines.SetOnKeyPress(TKeyPressEvent::Of<&TUser::OnKey>(&user));
  auto& memo = Of<QPlainTextEdit>(FForm.memLines);
  memo.setFocus();
  Type(memo, QStringLiteral("ab"));
  Key(memo, Qt::Key_Return, {}, QStringLiteral("\r"));
  EXPECT_EQ(memo.toPlainText(), u"ab\n");
  user.Uses = true;
  Key(memo, Qt::Key_Return, {}, QStringLiteral("\r"));
  EXPECT_EQ(memo.toPlainText(), u"ab\n");
  Key(memo, Qt::Key_Return, {}, QStringLiteral("\r"));
  EXPECT_EQ(memo.toPlainText(), u"ab\n\n");
}

TEST_F(TPlainBindersTest, ANumberIsTypedSteppedAndSet) {
  auto& number = Of<QSpinBox>(FForm.spnedtNumber);
  number.setFocus();
  number.selectAll();
  Type(number, QStringLiteral("42"));
  EXPECT_EQ(FForm.spnedtNumber.Value(), 42);
  Key(number, Qt::Key_Up);
  EXPECT_EQ(FForm.spnedtNumber.Value(), 43);
  EXPECT_THAT(FForm.Take(), ElementsAre("spnedtNumber", "spnedtNumber", "spnedtNumber"));
  FForm.spnedtNumber.SetValue(std::numeric_limits<int>::min());
  FShown.Skin().Flush();
  EXPECT_EQ(number.value(), std::numeric_limits<int>::min());
  EXPECT_THAT(FForm.Take(), IsEmpty());
}

TEST_F(TPlainBindersTest, ANumberBelowZeroCanBeTyped) {
  FForm.spnedtNumber.SetValue(45);
  FShown.Skin().Flush();
  auto& number = Of<QSpinBox>(FForm.spnedtNumber);
  number.setFocus();
  number.selectAll();
  for (const QChar letter : QStringLiteral("-37")) {
    Type(number, letter);
    FShown.Skin().Flush();
    QCoreApplication::processEvents();
  }
  EXPECT_EQ(FForm.spnedtNumber.Value(), -37);
  number.selectAll();
  Type(number, QStringLiteral("-"));
  Of<QPushButton>(FForm.btnPlain).setFocus();
  EXPECT_EQ(number.text(), QStringLiteral("-37")) << "what is no number is the one before";
}

TEST_F(TPlainBindersTest, ANumberHasTheBoundsOfItsControlAndAlwaysTheSameWidth) {
  auto& number = Of<QSpinBox>(FForm.spnedtNumber);
  EXPECT_EQ(number.minimum(), std::numeric_limits<int>::min());
  EXPECT_EQ(number.maximum(), std::numeric_limits<int>::max());
  const int width = number.sizeHint().width();
  EXPECT_LT(width, 2 * number.fontMetrics().horizontalAdvance(QStringLiteral("-9999")));
  FForm.spnedtNumber.SetBounds(1, 1000);
  FForm.spnedtNumber.SetValue(1000);
  FShown.Skin().Flush();
  EXPECT_EQ(number.minimum(), 1);
  EXPECT_EQ(number.maximum(), 1000);
  EXPECT_EQ(number.value(), 1000);
  EXPECT_NEAR(number.sizeHint().width(), width, 1) << "parts of pixels are rounded";
  EXPECT_EQ(FForm.spnedtNumber.Value(), 1000) << "it is the program that has set it";
  number.stepBy(1);
  EXPECT_EQ(FForm.spnedtNumber.Value(), 1000);
}

TEST_F(TPlainBindersTest, TheWheelTurnsOnlyWhatHasTheFocus) {
  const auto turn = [](QWidget& ioWidget) {
    QWheelEvent event(QPointF(2, 2), ioWidget.mapToGlobal(QPointF(2, 2)), {}, QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&ioWidget, &event);
  };
  auto& number = Of<QSpinBox>(FForm.spnedtNumber);
  auto& list = Of<QComboBox>(FForm.cmbxList);
  Of<QPushButton>(FForm.btnPlain).setFocus();
  turn(number);
  turn(list);
  EXPECT_THAT(FForm.Take(), IsEmpty());
  number.setFocus();
  turn(number);
  EXPECT_EQ(FForm.spnedtNumber.Value(), -1);
  list.setFocus();
  turn(list);
  EXPECT_EQ(FForm.cmbxList.ItemIndex(), 0);
}

TEST_F(TPlainBindersTest, AListIsChosenFromAndTypedInto) {
  auto& list = Of<QComboBox>(FForm.cmbxList);
  EXPECT_EQ(list.count(), 3);
  EXPECT_EQ(list.currentIndex(), -1);
  list.setFocus();
  Type(*list.lineEdit(), QStringLiteral("b"));
  EXPECT_EQ(FForm.cmbxList.Text(), u"b");
  EXPECT_EQ(FForm.cmbxList.ItemIndex(), -1);
  Q_EMIT list.activated(2);
  FShown.Skin().Flush();
  EXPECT_EQ(FForm.cmbxList.ItemIndex(), 2);
  EXPECT_EQ(list.currentIndex(), 2);
  EXPECT_EQ(list.lineEdit()->text(), u"Birnen");
  EXPECT_THAT(FForm.Take(), ElementsAre("cmbxList", "cmbxList"));
  FForm.cmbxList.SetText(u"ganz was anderes");
  FForm.cmbxList.AddItem(u"Quitten");
  FShown.Skin().Flush();
  EXPECT_EQ(list.count(), 4);
  EXPECT_EQ(list.currentIndex(), -1);
  EXPECT_EQ(list.currentText(), u"ganz was anderes");
  FForm.cmbxList.Clear();
  FShown.Skin().Flush();
  EXPECT_EQ(list.count(), 0);
  EXPECT_TRUE(list.currentText().isEmpty());
  EXPECT_THAT(FForm.Take(), IsEmpty());
}

TEST_F(TPlainBindersTest, WhatIsTypedStaysAsItIsThoughItChoosesAnEntry) {
  auto& list = Of<QComboBox>(FForm.cmbxList);
  list.setFocus();
  Type(*list.lineEdit(), QStringLiteral("äpfel"));
  list.lineEdit()->setCursorPosition(2);
  FShown.Skin().Flush();
  EXPECT_EQ(FForm.cmbxList.ItemIndex(), 0);
  EXPECT_EQ(list.currentIndex(), 0);
  EXPECT_EQ(list.lineEdit()->text(), u"äpfel");
  EXPECT_EQ(list.lineEdit()->cursorPosition(), 2);
}

TEST_F(TPlainBindersTest, AListIsNoWiderThanAWindowForAllThatANameMayBeLong) {
  struct TListForm : TForm {
    TListForm() : TForm(nullptr, u"frmLists") {
      cmbxShort.AddItem(u"kurz");
      cmbxWide.AddItem(TString(40, u'x'));
      cmbxEndless.AddItem(TString(10000, u'x'));
    }
    TComboBox cmbxShort{this, u"cmbxShort"};
    TComboBox cmbxWide{this, u"cmbxWide"};
    TComboBox cmbxEndless{this, u"cmbxEndless"};
  } form;
  TShownForm shown(form);
  const int wide = shown.Of<QComboBox>(form.cmbxWide).sizeHint().width();
  EXPECT_GT(wide, shown.Of<QComboBox>(form.cmbxShort).sizeHint().width());
  const auto& endless = shown.Of<QComboBox>(form.cmbxEndless);
  EXPECT_LT(endless.sizeHint().width(), 2 * wide);
  EXPECT_LT(endless.minimumSizeHint().width(), 2 * wide);
}

TEST_F(TPlainBindersTest, AListThatIsNoLineCanOnlyBeChosenFrom) {
  auto& list = Of<QComboBox>(FForm.cmbxList);
  FForm.cmbxList.SetEditable(false);
  FForm.cmbxList.SetText(u"unbekannt");
  FShown.Skin().Flush();
  EXPECT_EQ(list.lineEdit(), nullptr);
  EXPECT_EQ(list.placeholderText(), u"unbekannt");
  list.setFocus();
  Key(list, Qt::Key_Down);
  EXPECT_EQ(FForm.cmbxList.ItemIndex(), 0);
  FForm.cmbxList.SetEditable(true);
  FShown.Skin().Flush();
  Type(*list.lineEdit(), QStringLiteral("x"));
  EXPECT_EQ(FForm.cmbxList.Text(), u"Äpfelx");
}

TEST_F(TPlainBindersTest, ALabelShowsItsTextAndIsClickedByTheMouse) {
  auto& label = Of<TTextLabel>(FForm.lblText);
  EXPECT_EQ(label.text(), u"Text");
  EXPECT_EQ(label.focusPolicy(), Qt::NoFocus);
  ClickAt(label, QPoint(1, 1));
  EXPECT_THAT(FForm.Take(), ElementsAre("lblText"));
  Mouse(label, QEvent::MouseButtonPress, QPoint(1, 1));
  Mouse(label, QEvent::MouseButtonRelease, QPoint(-5, 1));  // let go elsewhere
  EXPECT_THAT(FForm.Take(), IsEmpty());
  FForm.lblText.SetCaption(u"Müller & Söhne");
  FForm.lblText.SetBold(true);
  FForm.lblText.SetUnderline(true);
  FShown.Skin().Flush();
  EXPECT_EQ(label.text(), u"Müller & Söhne");
  EXPECT_TRUE(label.font().bold());
  EXPECT_TRUE(label.font().underline());
  FForm.lblText.SetBold(false);
  FForm.lblText.SetUnderline(false);
  FShown.Skin().Flush();
  EXPECT_FALSE(label.font().bold());
  EXPECT_FALSE(label.font().underline());
}

TEST_F(TPlainBindersTest, ALinkIsReachedAndClickedByTheKeyboard) {
  FForm.lblText.SetLooksLikeLink(true);
  auto& label = Of<TTextLabel>(FForm.lblText);
  EXPECT_EQ(label.focusPolicy(), Qt::StrongFocus);
  EXPECT_EQ(label.cursor().shape(), Qt::PointingHandCursor);
  label.setFocus();
  Key(label, Qt::Key_Return, {}, QStringLiteral("\r"));
  Key(label, Qt::Key_Space, {}, QStringLiteral(" "));
  Key(label, Qt::Key_Return, {}, QStringLiteral("\r"), true);
  EXPECT_THAT(FForm.Take(), ElementsAre("lblText", "lblText"));
  FForm.lblText.SetLooksLikeLink(false);
  FShown.Skin().Flush();
  EXPECT_EQ(label.focusPolicy(), Qt::NoFocus);
}

TEST_F(TPlainBindersTest, AGaugeFillsAndStaysEmptyWithoutAMaximum) {
  auto& gauge = Of<QProgressBar>(FForm.ggProgress);
  EXPECT_FALSE(gauge.isTextVisible());
  FForm.ggProgress.SetMaximum(200);
  FForm.ggProgress.SetProgress(50);
  FForm.ggProgress.SetText(u"50 %p von 200");
  FShown.Skin().Flush();
  EXPECT_EQ(gauge.maximum(), 200);
  EXPECT_EQ(gauge.value(), 50);
  EXPECT_EQ(gauge.text(), u"50 %p von 200");
  EXPECT_TRUE(gauge.isTextVisible());
  FForm.ggProgress.SetProgress(999);
  FShown.Skin().Flush();
  EXPECT_EQ(gauge.value(), 200);
  FForm.ggProgress.SetMaximum(0);
  FShown.Skin().Flush();
  EXPECT_EQ(gauge.value(), 0);
  EXPECT_GT(gauge.maximum(), 0);
}

TEST_F(TPlainBindersTest, NothingComesFromADisabledForm) {
  FForm.SetEnabled(false);
  Of<QPushButton>(FForm.btnPlain).click();
  Of<QCheckBox>(FForm.chckbxTick).click();
  Of<QRadioButton>(FForm.rdbtnOne).click();
  Q_EMIT Of<QLineEdit>(FForm.edtLine).textEdited(QStringLiteral("x"));
  Of<QPlainTextEdit>(FForm.memLines).setPlainText(QStringLiteral("x"));
  Of<QSpinBox>(FForm.spnedtNumber).setValue(7);
  Q_EMIT Of<QComboBox>(FForm.cmbxList).activated(1);
  ClickAt(Of<QWidget>(FForm.lblText), QPoint(1, 1));
  EXPECT_THAT(FForm.Take(), IsEmpty());
  FShown.Skin().Flush();
  EXPECT_TRUE(FForm.memLines.Lines().Lines().empty());
  EXPECT_TRUE(Of<QPlainTextEdit>(FForm.memLines).toPlainText().isEmpty());
  EXPECT_EQ(Of<QSpinBox>(FForm.spnedtNumber).value(), 0);
}

}  // namespace
}  // namespace kk
