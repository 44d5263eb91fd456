#include "apps/desktop/skin/TPanelBinder.h"

#include <gmock/gmock.h>

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include "TQtWorld.h"
#include "apps/desktop/skin/TSplitterBar.h"
#include "apps/desktop/skin/TTextLabel.h"
#include "host/controls/TEdit.h"
#include "host/controls/TLabel.h"
#include "host/controls/TMemo.h"
#include "host/controls/TRadioButton.h"
#include "host/controls/TfrmKKCommonBase.h"

namespace kk {
namespace {

struct TPanelForm : TfrmKKCommonBase {
  TPanelForm() : TfrmKKCommonBase(nullptr, u"frmPanels", u"Fenster") {
    for (TPanel* row : {&pnlName, &pnlStreet, &pnlButtons}) {
      row->SetArrangement(TArrangement::arRow);
    }
  }
  using TfrmKKCommonBase::SetWhiteBackground;

  TPanel pnlName{this, u"pnlName"};
  TLabel lblName{&pnlName, u"lblName", u"Name:"};
  TEdit edtName{&pnlName, u"edtName"};
  TPanel pnlStreet{this, u"pnlStreet"};
  TLabel lblStreet{&pnlStreet, u"lblStreet", u"Straße und Hausnummer:"};
  TEdit edtStreet{&pnlStreet, u"edtStreet"};
  TPanel pnlButtons{this, u"pnlButtons"};
  TButton btnOK{&pnlButtons, u"btnOK", u"&OK"};
  TButton btnCancel{&pnlButtons, u"btnCancel", u"&Abbrechen"};
};

class TPanelBinderTest : public TQtWorld {
 protected:
  // A control's place in the window.
  static QRect PlaceOf(TShownForm& ioShown, TControl& ioControl) {
    auto& widget = ioShown.Of<QWidget>(ioControl);
    return {widget.mapTo(ioShown.Skin().Widget(), QPoint(0, 0)), widget.size()};
  }
  // The bars of splitters, the newest last.
  static std::vector<TSplitterBar*> BarsOf(TShownForm& ioShown) {
    std::vector<TSplitterBar*> bars;
    for (QWidget* widget : ioShown.Skin().Widget()->findChildren<QWidget*>()) {
      if (auto* bar = dynamic_cast<TSplitterBar*>(widget)) bars.push_back(bar);
    }
    return bars;
  }
  static void Resize(TShownForm& ioShown, QSize iSize) {
    ioShown.Skin().Flush();
    ioShown.Skin().Widget()->resize(iSize);
    QCoreApplication::processEvents();
  }
};

TEST_F(TPanelBinderTest, AColumnStandsBelowEachOtherAndARowSideBySide) {
  TPanelForm form;
  TShownForm shown(form);
  Resize(shown, {600, 400});
  EXPECT_GE(PlaceOf(shown, form.edtStreet).top(), PlaceOf(shown, form.edtName).bottom());
  EXPECT_GE(PlaceOf(shown, form.edtName).left(), PlaceOf(shown, form.lblName).right());
}

TEST_F(TPanelBinderTest, AChoiceWithoutWordsStandsBesideWhatFollowsIt) {
  TfrmKKCommonBase form(nullptr, u"frmChoice", u"Fenster");
  TRadioButton bare(&form, u"rdbtnBare");
  TPanel pnlChosen(&form, u"pnlChosen");
  TEdit edtChosen(&pnlChosen, u"edtChosen");
  TRadioButton named(&form, u"rdbtnNamed", u"Nach Ablauf von");
  TEdit edtNamed(&form, u"edtNamed");
  TShownForm shown(form);
  Resize(shown, {600, 400});
  EXPECT_GE(PlaceOf(shown, pnlChosen).left(), PlaceOf(shown, bare).right());
  EXPECT_LT(PlaceOf(shown, pnlChosen).top(), PlaceOf(shown, bare).bottom());
  EXPECT_GE(PlaceOf(shown, edtNamed).top(), PlaceOf(shown, named).bottom());
}

TEST_F(TPanelBinderTest, TheFieldsOfAFormStandInLine) {
  TPanelForm form;
  TShownForm shown(form);
  Resize(shown, {600, 400});
  EXPECT_EQ(PlaceOf(shown, form.edtName).left(), PlaceOf(shown, form.edtStreet).left());
  EXPECT_EQ(PlaceOf(shown, form.edtName).right(), PlaceOf(shown, form.edtStreet).right());
  form.lblName.SetCaption(u"Ein Name, der viel länger ist als alle anderen:");
  Resize(shown, {700, 400});
  EXPECT_EQ(PlaceOf(shown, form.edtName).left(), PlaceOf(shown, form.edtStreet).left());
}

TEST_F(TPanelBinderTest, ButtonsStandAtTheLowerRight) {
  TPanelForm form;
  TShownForm shown(form);
  Resize(shown, {600, 400});
  const QRect window = shown.Skin().Widget()->rect();
  EXPECT_LT(window.right() - PlaceOf(shown, form.btnCancel).right(), 20);
  EXPECT_LT(window.bottom() - PlaceOf(shown, form.btnCancel).bottom(), 20);
  EXPECT_LT(PlaceOf(shown, form.edtStreet).bottom(), 150);
}

TEST_F(TPanelBinderTest, WhatStretchesTakesTheRoom) {
  TPanelForm form;
  TMemo memo(&form, u"mem");
  memo.SetStretches(true);
  TShownForm shown(form);
  Resize(shown, {600, 400});
  EXPECT_GT(PlaceOf(shown, memo).height(), 200);
  memo.SetStretches(false);
  form.edtName.SetStretches(true);
  memo.SetVisible(false);
  Resize(shown, {600, 401});
  EXPECT_GT(PlaceOf(shown, form.edtName).width(), 300);
}

TEST_F(TPanelBinderTest, AStackIsInOnePlaceWithTheLastInFront) {
  TForm form(nullptr, u"frm");
  TPanel stack(&form, u"pnlStack");
  stack.SetArrangement(TArrangement::arStack);
  stack.SetStretches(true);
  TPanel first(&stack, u"pnlFirst");
  TPanel second(&stack, u"pnlSecond");
  TShownForm shown(form);
  Resize(shown, {300, 300});
  EXPECT_EQ(PlaceOf(shown, first), PlaceOf(shown, second));
  const auto front = [&] { return shown.Of<QWidget>(stack).childAt(50, 50); };
  EXPECT_EQ(front(), &shown.Of<QWidget>(second));
  first.BringToFront();
  shown.Skin().Flush();
  EXPECT_EQ(front(), &shown.Of<QWidget>(first));
}

TEST_F(TPanelBinderTest, AStackIsAsLargeAsItsLargestWhicheverIsOnShow) {
  TPanelForm form;
  TPanel stack(&form, u"pnlStack");
  stack.SetArrangement(TArrangement::arStack);
  TPanel small(&stack, u"pnlSmall");
  TPanel large(&stack, u"pnlLarge");
  TEdit edit(&large, u"edt");
  TButton button(&large, u"btn", u"&Eine Schaltfläche, die sehr viel breiter als die anderen ist");
  large.SetVisible(false);
  TShownForm shown(form);
  const auto size = [&] {
    shown.Skin().Flush();
    QCoreApplication::processEvents();
    return shown.Skin().Widget()->size();
  };
  const QSize before = size();
  small.SetVisible(false);
  large.SetVisible(true);
  EXPECT_EQ(size(), before) << "nothing moves under the mouse";
  large.SetVisible(false);
  small.SetVisible(true);
  EXPECT_EQ(size(), before);
}

TEST_F(TPanelBinderTest, ACaptionIsAHeadingAboveTheContent) {
  TForm form(nullptr, u"frm");
  TPanel group(&form, u"grp", u"Gruppe");
  TEdit edit(&group, u"edt");
  TShownForm shown(form);
  Resize(shown, {300, 200});
  const auto headings = [&] {
    QStringList texts;
    for (const QLabel* label : shown.Of<QWidget>(group).findChildren<QLabel*>()) {
      if (label->isVisible()) texts << label->text();
    }
    return texts;
  };
  EXPECT_EQ(headings(), QStringList{QStringLiteral("Gruppe")});
  EXPECT_GT(PlaceOf(shown, edit).left(), PlaceOf(shown, group).left());
  group.SetCaption({});
  shown.Skin().Flush();
  FreeDropped();
  EXPECT_TRUE(headings().isEmpty());
}

TEST_F(TPanelBinderTest, TheBarBesideAPanelDrawsItWider) {
  TForm form(nullptr, u"frm");
  form.SetArrangement(TArrangement::arRow);
  TPanel left(&form, u"pnlLeft");
  left.SetWidth(150);
  left.SetMinSize(100, 0);
  left.SetHasSplitter(true);
  TPanel rest(&form, u"pnlRest");
  rest.SetStretches(true);
  TShownForm shown(form);
  Resize(shown, {600, 300});
  EXPECT_EQ(PlaceOf(shown, left).width(), 150);
  FreeDropped();
  ASSERT_EQ(BarsOf(shown).size(), 1u);
  TSplitterBar* const bar = BarsOf(shown).front();
  const auto draw = [&](int iBy) {
    Mouse(*bar, QEvent::MouseButtonPress, QPoint(2, 10));
    Mouse(*bar, QEvent::MouseMove, QPoint(2 + iBy, 10));
    Mouse(*bar, QEvent::MouseButtonRelease, QPoint(2 + iBy, 10));
    Resize(shown, {600, 300});
    QCoreApplication::processEvents();
  };
  draw(50);
  EXPECT_EQ(left.Width(), 200);
  EXPECT_EQ(PlaceOf(shown, left).width(), 200);
  draw(-500);
  EXPECT_EQ(left.Width(), 100);
  draw(5000);
  EXPECT_LT(left.Width(), 550);
  EXPECT_GT(PlaceOf(shown, rest).width(), 50);
  left.SetEnabled(false);
  const int width = left.Width();
  draw(-50);
  EXPECT_EQ(left.Width(), width);
  left.SetVisible(false);
  shown.Skin().Flush();
  FreeDropped();
  ASSERT_EQ(BarsOf(shown).size(), 1u);
  EXPECT_FALSE(BarsOf(shown).front()->isVisible());
}

TEST_F(TPanelBinderTest, ABarAtTheRightGoesTheOtherWay) {
  TForm form(nullptr, u"frm");
  form.SetArrangement(TArrangement::arRow);
  TPanel rest(&form, u"pnlRest");
  rest.SetStretches(true);
  TPanel right(&form, u"pnlRight");
  right.SetWidth(150);
  TShownForm shown(form);
  right.SetHasSplitter(true);
  Resize(shown, {600, 300});
  FreeDropped();
  ASSERT_EQ(BarsOf(shown).size(), 1u);
  TSplitterBar* const bar = BarsOf(shown).front();
  Mouse(*bar, QEvent::MouseButtonPress, QPoint(2, 10));
  Mouse(*bar, QEvent::MouseMove, QPoint(-38, 10));
  EXPECT_EQ(right.Width(), 190);
}

TEST_F(TPanelBinderTest, WhatIsRebuiltKeepsWhatTheUserHasDoneInIt) {
  TPanelForm form;
  TShownForm shown(form);
  auto& line = shown.Of<QLineEdit>(form.edtName);
  line.setFocus();
  Type(line, QStringLiteral("abc"));
  line.setCursorPosition(1);
  TLabel extra(&form, u"lblExtra", u"Dazu");
  shown.Skin().Flush();
  EXPECT_TRUE(line.hasFocus());
  EXPECT_EQ(line.cursorPosition(), 1);
}

TEST_F(TPanelBinderTest, AWhiteFormTakesThePalettesGroundOfTexts) {
  TPanelForm form;
  TShownForm shown(form);
  QWidget& window = *shown.Skin().Widget();
  EXPECT_FALSE(window.autoFillBackground());
  form.SetWhiteBackground(true);
  shown.Skin().Flush();
  EXPECT_TRUE(window.autoFillBackground());
  EXPECT_EQ(window.backgroundRole(), QPalette::Base);
}

TEST_F(TPanelBinderTest, AnAccessKeyOfALabelLeadsToWhatIsBehindIt) {
  TPanelForm form;
  form.lblName.SetCaption(u"&Name:");
  form.lblStreet.SetCaption(u"Müller & Söhne");
  TLabel lblLast(&form, u"lblLast", u"A & B");
  TShownForm shown(form);
  EXPECT_EQ(shown.Of<TTextLabel>(form.lblName).buddy(), &shown.Of<QWidget>(form.edtName));
  EXPECT_EQ(shown.Of<TTextLabel>(lblLast).buddy(), nullptr);
  EXPECT_EQ(shown.Of<QLineEdit>(form.edtName).accessibleName(), u"Name:");
}

class TTextLabelTest : public TQtWorld {
 protected:
  TTextLabel FLabel;
};

TEST_F(TTextLabelTest, ALongTextTakesSeveralLines) {
  TTextLabel::TLook look;
  look.Wrapped = true;
  FLabel.SetLook(look);
  FLabel.setText(QStringLiteral("Ein Wort "));
  const int line = FLabel.sizeHint().height();
  FLabel.setText(QStringLiteral("Ein Wort ").repeated(100));
  EXPECT_GT(FLabel.sizeHint().height(), 5 * line);
  EXPECT_LT(FLabel.sizeHint().width(), 1000);
  EXPECT_GT(FLabel.heightForWidth(100), FLabel.heightForWidth(400));
  EXPECT_TRUE(FLabel.hasHeightForWidth());
}

TEST_F(TTextLabelTest, AWordThatIsWiderThanTheRoomIsBroken) {
  TTextLabel::TLook look;
  look.Wrapped = true;
  FLabel.SetLook(look);
  FLabel.setText(QStringLiteral("https://example.com/") + QString(500, QLatin1Char('x')));
  EXPECT_LT(FLabel.sizeHint().width(), 1000);
  EXPECT_GT(FLabel.heightForWidth(300), 3 * FLabel.fontMetrics().height());
}

TEST_F(TTextLabelTest, OneLineIsCutOffAndToldInFull) {
  FLabel.setText(QStringLiteral("Ein ziemlich langer Titel eines Artikels, der nicht hineinpasst"));
  EXPECT_FALSE(FLabel.hasHeightForWidth());
  EXPECT_EQ(FLabel.heightForWidth(50), -1);
  EXPECT_LT(FLabel.minimumSizeHint().width(), FLabel.sizeHint().width());
  EXPECT_EQ(FLabel.minimumSizeHint().height(), FLabel.sizeHint().height());
}

}  // namespace
}  // namespace kk
