#include "apps/desktop/skin/TSkin.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <memory>
#include <optional>

#include "TQtWorld.h"
#include "apps/desktop/skin/AsUser.h"
#include "host/base/Exception.h"
#include "host/controls/TCheckBox.h"
#include "host/controls/TEdit.h"
#include "host/controls/TLabel.h"
#include "host/controls/TMenuItem.h"
#include "host/controls/TPanel.h"
#include "host/controls/TUpdating.h"
#include "host/controls/TVirtualStringTree.h"
#include "tests/support/TScriptedFormHost.h"

namespace kk {
namespace {

using testing::ElementsAre;

struct TSkinForm : TForm {
  TSkinForm() : TForm(nullptr, u"frmSkin", u"Titel") {}

  TEdit edtFirst{this, u"edtFirst"};
  TPanel pnlRow{this, u"pnlRow"};
  TEdit edtSecond{&pnlRow, u"edtSecond"};
  TButton btnDo{&pnlRow, u"btnDo", u"&Tu"};
};

// Counts what reaches a method, and raises where told.
struct TListener {
  void Heard(TObject*) {
    ++Count;
    if (Then) Then();
  }
  void HeardKey(TObject*, char16_t& ioKey) {
    Keys += ioKey;
    if (Swallow) ioKey = 0;
  }
  TNotifyEvent Event() { return TNotifyEvent::Of<&TListener::Heard>(this); }
  TKeyPressEvent KeyEvent() { return TKeyPressEvent::Of<&TListener::HeardKey>(this); }

  int Count = 0;
  TString Keys = {};
  bool Swallow = false;
  std::function<void()> Then = nullptr;
};

class TSkinTest : public TQtWorld {};

TEST_F(TSkinTest, ManyChangesAreRenderedOnceAtTheEndOfTheTurn) {
  TSkinForm form;
  TShownForm shown(form);
  auto& line = shown.Of<QLineEdit>(form.edtFirst);
  int renderings = 0;
  QObject::connect(&line, &QLineEdit::textChanged, [&] { ++renderings; });
  for (const TStringView text : {u"a", u"b", u"c"}) form.edtFirst.SetText(text);
  EXPECT_EQ(line.text(), u"");
  EXPECT_TRUE(CrankUntil([&] { return line.text() == u"c"; }));
  EXPECT_EQ(renderings, 1);
}

TEST_F(TSkinTest, FindsTheSkinThatShowsAControl) {
  TSkinForm form;
  EXPECT_EQ(TSkin::Of(form.edtSecond), nullptr);
  {
    TSkin skin(form);
    EXPECT_EQ(TSkin::Of(form.edtSecond), &skin);
  }
  EXPECT_EQ(TSkin::Of(form), nullptr);
}

TEST_F(TSkinTest, AnEmbeddedFormIsShownAndHiddenByItself) {
  TSkinForm form;
  QWidget window;
  window.show();
  TSkin skin(form, &window);
  EXPECT_EQ(skin.Widget()->parentWidget(), &window);
  EXPECT_FALSE(skin.Widget()->isVisible());
  form.Show();
  skin.Flush();
  EXPECT_TRUE(skin.Widget()->isVisible());
  EXPECT_TRUE(window.windowTitle().isEmpty());  // the window has its own
  form.Close();
  skin.Flush();
  EXPECT_FALSE(skin.Widget()->isVisible());
}

TEST_F(TSkinTest, AControlThatComesGetsItsPlaceAndOneThatDiesLosesItsWidget) {
  TSkinForm form;
  TShownForm shown(form);
  auto extra = std::make_unique<TCheckBox>(&form.pnlRow, u"chckbxExtra", u"Dazu");
  QPointer<QWidget> box = &shown.Of<QCheckBox>(*extra);
  EXPECT_TRUE(box->isVisible());
  EXPECT_EQ(box->parentWidget(), shown.Skin().WidgetOf(form.pnlRow));
  extra.reset();
  ASSERT_TRUE(box);  // it may be in the middle of an event
  EXPECT_FALSE(box->isVisible());
  shown.Skin().Flush();
  FreeDropped();
  EXPECT_FALSE(box);
}

TEST_F(TSkinTest, AControlMayDieInItsOwnClick) {
  TSkinForm form;
  TShownForm shown(form);
  auto doomed = std::make_unique<TButton>(&form.pnlRow, u"btnDoomed", u"Weg");
  TListener listener{.Then = [&] { doomed.reset(); }};
  doomed->SetOnClick(listener.Event());
  QPointer<QPushButton> button = &shown.Of<QPushButton>(*doomed);
  button->click();
  EXPECT_EQ(listener.Count, 1);
  shown.Skin().Flush();
  FreeDropped();
  EXPECT_FALSE(button);
}

TEST_F(TSkinTest, AControlMayDieInAKeyOfItsOwn) {
  TSkinForm form;
  TShownForm shown(form);
  auto doomed = std::make_unique<TButton>(&form.pnlRow, u"btnDoomed", u"Weg");
  TListener listener{.Then = [&] { doomed.reset(); }};
  doomed->SetOnClick(listener.Event());
  auto& button = shown.Of<QPushButton>(*doomed);
  button.setFocus();
  Key(button, Qt::Key_Return, {}, QStringLiteral("\r"));
  EXPECT_EQ(listener.Count, 1);
  EXPECT_EQ(doomed, nullptr);
}

TEST_F(TSkinTest, TheWholeFormMayDieUnderItsSkin) {
  auto form = std::make_unique<TSkinForm>();
  TSkin skin(*form);
  QPointer<QWidget> window = skin.Widget();
  window->show();
  form.reset();
  EXPECT_EQ(skin.Widget(), nullptr);
  skin.Flush();
  FreeDropped();
  EXPECT_FALSE(window);
}

TEST_F(TSkinTest, TheSkinMayGoBeforeItsForm) {
  TSkinForm form;
  { TSkin skin(form); }
  form.edtFirst.SetText(u"niemand sieht es");
  EXPECT_EQ(form.edtFirst.Text(), u"niemand sieht es");
}

TEST_F(TSkinTest, TheWindowMayDieWithItsWidgetsUnderTheSkin) {
  TSkinForm form;
  auto window = std::make_unique<QWidget>();
  TSkin skin(form, window.get());
  window.reset();
  EXPECT_EQ(skin.Widget(), nullptr);
  form.edtFirst.SetText(u"niemand sieht es");
  form.pnlRow.SetEnabled(false);
  skin.Flush();
  EXPECT_EQ(skin.FocusedBinder(), nullptr);
}

TEST_F(TSkinTest, AControlThatLeavesTakesItsWidgetAlongBeforeItDiesUnseen) {
  struct TGuest : TLabel {
    explicit TGuest(TControl* iParent) : TLabel(iParent, u"lblGuest", u"Gast") {}
    using TControl::SetParent;
  };
  TSkinForm form;
  TShownForm shown(form);
  auto guest = std::make_unique<TGuest>(&form.pnlRow);
  QPointer<QWidget> widget = shown.Skin().WidgetOf(*guest);
  shown.Skin().Flush();
  guest->SetParent(nullptr);
  EXPECT_EQ(shown.Skin().FindBinder(*guest), nullptr);
  EXPECT_FALSE(widget->isVisible());
  guest.reset();
  shown.Skin().Flush();
  FreeDropped();
  EXPECT_FALSE(widget);
  auto other = std::make_unique<TGuest>(&form.pnlRow);
  other->SetParent(&form, &form.edtFirst);  // it is in another place, and still seen
  EXPECT_TRUE(shown.Of<QWidget>(*other).isVisible());
  EXPECT_EQ(shown.Skin().WidgetOf(*other)->parentWidget(), shown.Skin().Widget());
}

TEST_F(TSkinTest, AKindWithoutAPictureIsPartOfTheOneAbove) {
  struct TOdd : TControl {
    using TControl::Changed;
    using TControl::TControl;
  };
  TSkinForm form;
  TOdd odd(&form, u"odd");
  TShownForm shown(form);
  EXPECT_EQ(shown.Skin().WidgetOf(odd), nullptr);
  odd.Changed();
  shown.Skin().Flush();
  EXPECT_TRUE(shown.Of<QLineEdit>(form.edtFirst).isVisible());
}

TEST_F(TSkinTest, AnUpdateIsTakenInAtItsEnd) {
  TSkinForm form;
  TShownForm shown(form);
  auto& line = shown.Of<QLineEdit>(form.edtSecond);
  {
    const TUpdating updating(form);
    form.edtSecond.SetText(u"neu");
    shown.Skin().Flush();
    EXPECT_EQ(line.text(), u"");
  }
  shown.Skin().Flush();
  EXPECT_EQ(line.text(), u"neu");
}

TEST_F(TSkinTest, TheFocusGoesBothWays) {
  TSkinForm form;
  TShownForm shown(form);
  auto& second = shown.Of<QLineEdit>(form.edtSecond);
  second.setFocus();
  EXPECT_EQ(form.FocusedControl(), &form.edtSecond);
  form.SetFocusedControl(&form.edtFirst);
  shown.Skin().Flush();
  EXPECT_TRUE(shown.Of<QLineEdit>(form.edtFirst).hasFocus());
}

TEST_F(TSkinTest, AFocusThatQtHasToMoveIsTakenOver) {
  TSkinForm form;
  TShownForm shown(form);
  shown.Of<QLineEdit>(form.edtFirst).setFocus();
  form.edtFirst.SetEnabled(false);
  shown.Skin().Flush();
  EXPECT_TRUE(shown.Of<QLineEdit>(form.edtSecond).hasFocus());
  EXPECT_EQ(form.FocusedControl(), &form.edtSecond);
}

TEST_F(TSkinTest, TheFocusIsWhereTheFormWantsItWhenItShowsAgain) {
  TSkinForm form;
  QWidget window;
  TSkin skin(form, &window);
  form.SetFocusedControl(&form.edtSecond);
  window.show();
  form.Show();
  skin.Flush();
  EXPECT_EQ(window.focusWidget(), skin.WidgetOf(form.edtSecond));
}

TEST_F(TSkinTest, TabGoesAsOneReadsAlsoToWhatCameLater) {
  struct TGuest : TEdit {
    explicit TGuest(TControl* iParent) : TEdit(iParent, u"edtGuest") {}
    using TControl::SetParent;
  };
  TSkinForm form;
  TShownForm shown(form);
  TGuest guest(&form);
  guest.SetParent(&form, &form.pnlRow);
  shown.Skin().Flush();
  std::vector<TControl*> order;
  shown.Of<QLineEdit>(form.edtFirst).setFocus();
  for (int i = 0; i < 4; ++i) {
    order.push_back(form.FocusedControl());
    Key(*QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_THAT(order, ElementsAre(&form.edtFirst, &guest, &form.edtSecond, &form.btnDo));
}

TEST_F(TSkinTest, ReturnAndEscapePressTheFormsButtons) {
  TSkinForm form;
  TListener ok;
  TListener cancel;
  TButton btnOK(&form, u"btnOK", u"&OK");
  TButton btnCancel(&form, u"btnCancel", u"&Abbrechen");
  btnOK.SetOnClick(ok.Event());
  btnCancel.SetOnClick(cancel.Event());
  form.SetDefaultButton(&btnOK);
  form.SetCancelButton(&btnCancel);
  TShownForm shown(form);
  auto& line = shown.Of<QLineEdit>(form.edtSecond);
  line.setFocus();
  Key(line, Qt::Key_Return, {}, QStringLiteral("\r"));
  Key(line, Qt::Key_Enter, Qt::KeypadModifier, QStringLiteral("\r"));
  EXPECT_EQ(ok.Count, 2);
  Key(line, Qt::Key_Escape, {}, QStringLiteral("\x1b"));
  EXPECT_EQ(cancel.Count, 1);
  Key(line, Qt::Key_Return, Qt::ControlModifier, QStringLiteral("\r"));
  Key(line, Qt::Key_Return, {}, QStringLiteral("\r"), true);  // still held from elsewhere
  EXPECT_EQ(ok.Count, 2);
  // The button with the focus is the default one.
  auto& button = shown.Of<QPushButton>(btnCancel);
  button.setFocus();
  Key(button, Qt::Key_Return, {}, QStringLiteral("\r"));
  Key(button, Qt::Key_Space, {}, QStringLiteral(" "));
  Key(button, Qt::Key_Space, {}, QStringLiteral(" "), true);
  EXPECT_EQ(cancel.Count, 3);
  EXPECT_EQ(ok.Count, 2);
}

TEST_F(TSkinTest, KeysWithNothingInFocusAreTheForms) {
  struct TBare : TForm {
    TBare() : TForm(nullptr, u"frmBare") {}
    TLabel lblText{this, u"lblText", u"Nur Text"};
    TButton btnHidden{this, u"btnHidden"};
  } form;
  TListener cancel;
  form.btnHidden.SetOnClick(cancel.Event());
  form.SetCancelButton(&form.btnHidden);
  TShownForm shown(form);
  if (QWidget* focus = QApplication::focusWidget()) focus->clearFocus();
  Key(*shown.Skin().Widget(), Qt::Key_Escape, {}, QStringLiteral("\x1b"));
  EXPECT_EQ(cancel.Count, 1);
}

TEST_F(TSkinTest, AKeyIsSwallowedByTheControlsEventAndElseTyped) {
  TSkinForm form;
  TListener keys;
  form.edtFirst.SetOnKeyPress(keys.KeyEvent());
  TShownForm shown(form);
  auto& line = shown.Of<QLineEdit>(form.edtFirst);
  line.setFocus();
  Type(line, QStringLiteral("a"));
  keys.Swallow = true;
  Type(line, QStringLiteral("b"));
  EXPECT_EQ(keys.Keys, u"ab");
  EXPECT_EQ(line.text(), u"a");
}

TEST_F(TSkinTest, TheMouseComesAndGoes) {
  TSkinForm form;
  TListener enter;
  TListener leave;
  form.SetOnMouseEnter(enter.Event());
  form.SetOnMouseLeave(leave.Event());
  TShownForm shown(form);
  const auto send = [&](QEvent&& iEvent) {
    QApplication::sendEvent(shown.Skin().Widget(), &iEvent);
  };
  const int before = enter.Count;
  send(QEnterEvent({}, {}, {}));
  EXPECT_EQ(enter.Count, before + 1);
  send(QEvent(QEvent::Leave));
  EXPECT_EQ(leave.Count, 1);
  EXPECT_EQ(enter.Count, before + 1);
}

// The menu of a tree, reached from the tree.
class TShortCutTest : public TSkinTest {
 protected:
  TShortCutTest() {
    FTree.SetPopupMenu(&FMenu);
    FTree.SetOnContextPopup(FPrepared.Event());
    FMenu.Add(u"Bearbeiten", FEdit.Event()).SetShortCut(u"F2");
    FMenu.Add(u"Mehr").Add(u"Löschen", FDelete.Event()).SetShortCut(u"Shift+Ctrl+Del");
    FShown.emplace(FForm);
    View().setFocus();
  }
  QWidget& View() { return FShown->Of<QWidget>(FTree); }

  TSkinForm FForm;
  TVirtualStringTree FTree{&FForm, u"vstTree"};
  TMenuItem FMenu;
  TListener FPrepared;
  TListener FEdit;
  TListener FDelete;
  std::optional<TShownForm> FShown;
};

TEST_F(TShortCutTest, AShortCutClicksItsEntryBehindTheMenusPreparation) {
  FPrepared.Then = [this] { EXPECT_EQ(FEdit.Count + 1, FPrepared.Count); };
  Key(View(), Qt::Key_F2);
  EXPECT_EQ(FPrepared.Count, 1);
  EXPECT_EQ(FEdit.Count, 1);
  Key(View(), Qt::Key_Delete, Qt::ShiftModifier | Qt::ControlModifier);
  EXPECT_EQ(FDelete.Count, 1);
  Key(View(), Qt::Key_Delete, Qt::ControlModifier);
  EXPECT_EQ(FDelete.Count, 1);
}

TEST_F(TShortCutTest, OtherKeysDoNotPrepareTheMenu) {
  Key(View(), Qt::Key_F3);
  Type(View(), QStringLiteral("x"));
  EXPECT_EQ(FPrepared.Count, 0);
}

TEST_F(TShortCutTest, AnEntryThatIsOffOrGoneDoesNothing) {
  FMenu.GetItems(0).SetEnabled(false);
  Key(View(), Qt::Key_F2);
  EXPECT_EQ(FEdit.Count, 0);
  FPrepared.Then = [this] { FMenu.Clear(); };
  Key(View(), Qt::Key_Delete, Qt::ShiftModifier | Qt::ControlModifier);
  EXPECT_EQ(FDelete.Count, 0);
}

TEST_F(TShortCutTest, ItIsSilentWhileTheFocusIsElsewhere) {
  auto& line = FShown->Of<QLineEdit>(FForm.edtFirst);
  line.setFocus();
  Key(line, Qt::Key_F2);
  EXPECT_EQ(FEdit.Count, 0);
}

TEST_F(TShortCutTest, ItGoesBeforeTheSameKeyOfTheWindow) {
  QKeyEvent own(QEvent::ShortcutOverride, Qt::Key_F2, Qt::NoModifier);
  own.ignore();
  QApplication::sendEvent(&View(), &own);
  EXPECT_TRUE(own.isAccepted());
  QKeyEvent other(QEvent::ShortcutOverride, Qt::Key_F3, Qt::NoModifier);
  other.ignore();
  QApplication::sendEvent(&View(), &other);
  EXPECT_FALSE(other.isAccepted());
  EXPECT_EQ(FEdit.Count + FPrepared.Count, 0);
}

TEST_F(TSkinTest, WhatAHandlerRaisesIsShownAndLoggedAndStaysHere) {
  TScriptedFormHost forms;
  TSkinForm form;
  TListener listener{.Then = [] { throw Exception(u"geht nicht"); }};
  form.btnDo.SetOnClick(listener.Event());
  TShownForm shown(form);
  forms.ExpectMessage(u"geht nicht");
  shown.Of<QPushButton>(form.btnDo).click();
  EXPECT_THAT(FLog.Lines(), ElementsAre("exception Host: geht nicht"));
  // A key that fails goes no further.
  forms.ExpectMessage(u"geht nicht");
  shown.Of<QPushButton>(form.btnDo).setFocus();
  Key(shown.Of<QPushButton>(form.btnDo), Qt::Key_Space, {}, QStringLiteral(" "));
  EXPECT_EQ(listener.Count, 2);
}

TEST_F(TSkinTest, OneBoxAtATimeTellsOfFailures) {
  TScriptedFormHost forms;
  forms.Expect<TfrmMessageDlg>([](TfrmMessageDlg& box) {
    EXPECT_EQ(box.Type(), TMsgDlgType::mtError);
    EXPECT_FALSE(AsUser([] { throw Exception(u"zweitens"); }));
    box.Button(TMsgDlgBtn::mbOK)->Click();
  });
  EXPECT_FALSE(AsUser([] { throw Exception(u"erstens"); }));
  EXPECT_THAT(FLog.Lines(), ElementsAre("exception Host: erstens", "exception Host: zweitens"));
  EXPECT_TRUE(AsUser([] {}));
}

TEST_F(TSkinTest, WithoutAHostForWindowsAFailureIsLogged) {
  ASSERT_EQ(SetFormHost(nullptr), nullptr);
  EXPECT_FALSE(AsUser([] { throw Exception(u"niemand sieht es"); }));
  EXPECT_THAT(FLog.Lines(), ElementsAre("exception Host: niemand sieht es"));
}

}  // namespace
}  // namespace kk
