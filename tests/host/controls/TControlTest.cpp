#include "host/controls/TControl.h"

#include <gtest/gtest.h>

#include <memory>

#include "ControlsFixture.h"
#include "host/base/Exception.h"
#include "host/controls/TCheckBox.h"
#include "host/controls/TEdit.h"
#include "host/controls/TGauge.h"
#include "host/controls/TLabel.h"
#include "host/controls/TMemo.h"

namespace kk {
namespace {

TEST(TControl, StandsInItsParentAndItsForm) {
  TShownForm form;
  TPanel panel(&form, u"pnl");
  TButton button(&panel, u"btn");
  EXPECT_EQ(button.Parent(), &panel);
  EXPECT_EQ(button.Form(), &form);
  EXPECT_EQ(form.Form(), &form);
  EXPECT_EQ(panel.Children(), std::vector<TControl*>{&button});
  EXPECT_EQ(button.Name(), u"btn");
}

TEST(TControl, WithoutAWindowHasNoForm) {
  TPanel panel(nullptr);
  EXPECT_EQ(panel.Form(), nullptr);
  EXPECT_FALSE(panel.TakeFocus());
  EXPECT_FALSE(panel.PressKey(cKeyReturn));
}

TEST(TControl, CanBeUsedOnlyIfAllItStandsInCan) {
  TShownForm form;
  TPanel panel(&form);
  TButton button(&panel);
  EXPECT_TRUE(button.CanUse());
  panel.SetEnabled(false);
  EXPECT_FALSE(button.CanUse());
  panel.SetEnabled(true);
  form.SetVisible(false);
  EXPECT_FALSE(button.CanUse());
  form.SetVisible(true);
  button.SetVisible(false);
  EXPECT_FALSE(button.CanUse());
}

TEST(TControl, TheUsersDoorIsShutOnADisabledControl) {
  TShownForm form;
  TButton button(&form);
  TEventCounter events;
  button.SetOnClick(events.Event());
  button.SetOnKeyPress(events.KeyEvent());
  button.SetOnMouseEnter(events.Event());
  button.SetOnMouseLeave(events.Event());
  button.SetEnabled(false);
  EXPECT_FALSE(button.Click());
  EXPECT_FALSE(button.PressKey(cKeySpace));
  EXPECT_FALSE(button.EnterMouse());
  EXPECT_FALSE(button.LeaveMouse());
  EXPECT_FALSE(button.TakeFocus());
  EXPECT_EQ(events.Count, 0);
  EXPECT_EQ(form.FocusedControl(), nullptr);
}

TEST(TControl, ReportsChangesToTheNearestSkinAboveIt) {
  TSkinRecorder skin;
  TShownForm form;
  form.SetObserver(&skin);
  TPanel panel(&form, u"pnl");
  TButton button(&panel, u"btn");
  EXPECT_EQ(skin.Take(), (TNotes{"changed TShownForm", "changed pnl"}));
  button.SetEnabled(false);
  button.SetCaption(u"&OK");
  button.SetStretches(true);
  button.SetDescription(u"Schließt das Fenster");
  panel.SetArrangement(TArrangement::arRow);
  panel.SetPosition(TPosition::poScreenCenter);
  EXPECT_EQ(skin.Take(), (TNotes{"changed btn", "changed btn", "changed btn", "changed btn",
                                 "changed pnl", "changed pnl"}));
  EXPECT_TRUE(button.Stretches());
  EXPECT_EQ(button.Description(), u"Schließt das Fenster");
  EXPECT_EQ(panel.Arrangement(), TArrangement::arRow);
  EXPECT_EQ(panel.Position(), TPosition::poScreenCenter);
}

TEST(TControl, AnEqualValueIsNoChange) {
  TSkinRecorder skin;
  TShownForm form;
  TGauge gauge(&form, u"prgrsbar");
  gauge.SetObserver(&skin);
  gauge.SetMaximum(3);
  gauge.SetProgress(2);
  skin.Take();
  gauge.SetMaximum(3);
  gauge.SetProgress(2);
  gauge.SetEnabled(true);
  EXPECT_EQ(skin.Take(), TNotes{});
  EXPECT_EQ(gauge.Maximum(), 3);
  EXPECT_EQ(gauge.Progress(), 2);
}

TEST(TControl, TellsTheSkinWhenItDies) {
  TSkinRecorder skin;
  TShownForm form;
  form.SetObserver(&skin);
  auto label = std::make_unique<TLabel>(&form, u"lbl", u"Text");
  EXPECT_EQ(label->Caption(), u"Text");
  skin.Take();
  label.reset();
  EXPECT_EQ(skin.Take(), (TNotes{"gone", "changed TShownForm"}));
  EXPECT_TRUE(form.Children().empty());
}

TEST(TControl, OutlivesItsParent) {
  auto panel = std::make_unique<TPanel>(nullptr);
  TButton button(panel.get());
  panel.reset();
  EXPECT_EQ(button.Parent(), nullptr);
  EXPECT_EQ(button.Form(), nullptr);
}

TEST(TControl, MouseAndKeyEventsTellTheControl) {
  TShownForm form;
  TEdit edit(&form);
  TEventCounter events;
  edit.SetOnMouseEnter(events.Event());
  edit.SetOnMouseLeave(events.Event());
  edit.SetOnKeyPress(events.KeyEvent());
  EXPECT_TRUE(edit.EnterMouse());
  EXPECT_TRUE(edit.LeaveMouse());
  EXPECT_EQ(events.Count, 2);
  EXPECT_FALSE(edit.PressKey(u'x'));
  EXPECT_EQ(events.LastKey, u'x');
  EXPECT_EQ(events.LastSender, &edit);
  TButton silent(&form);
  EXPECT_TRUE(silent.EnterMouse());
  EXPECT_TRUE(silent.LeaveMouse());
}

TEST(TControl, ReturnAndEscapeReachTheButtonsOfTheForm) {
  TShownForm form;
  TEdit edit(&form);
  TButton ok(&form);
  TButton cancel(&form);
  TEventCounter onOK;
  TEventCounter onCancel;
  ok.SetOnClick(onOK.Event());
  cancel.SetOnClick(onCancel.Event());
  EXPECT_FALSE(edit.PressKey(cKeyReturn));
  form.SetDefaultButton(&ok);
  form.SetCancelButton(&cancel);
  EXPECT_TRUE(edit.PressKey(cKeyReturn));
  EXPECT_EQ(onOK.Count, 1);
  EXPECT_TRUE(edit.PressKey(cKeyEscape));
  EXPECT_EQ(onCancel.Count, 1);
  ok.SetEnabled(false);
  EXPECT_FALSE(edit.PressKey(cKeyReturn));
  EXPECT_EQ(onOK.Count, 1);
}

TEST(TControl, AKeyThatIsSwallowedGoesNoFurther) {
  TShownForm form;
  TEdit edit(&form);
  TButton ok(&form);
  TEventCounter onOK;
  TEventCounter onKey;
  ok.SetOnClick(onOK.Event());
  form.SetDefaultButton(&ok);
  onKey.Swallows = true;
  edit.SetOnKeyPress(onKey.KeyEvent());
  EXPECT_TRUE(edit.PressKey(cKeyReturn));
  EXPECT_EQ(onKey.Count, 1);
  EXPECT_EQ(onOK.Count, 0);
}

TEST(TControl, ReturnIsANewLineInAMemo) {
  TShownForm form;
  TMemo memo(&form);
  TButton ok(&form);
  TEventCounter onOK;
  ok.SetOnClick(onOK.Event());
  form.SetDefaultButton(&ok);
  EXPECT_TRUE(memo.PressKey(cKeyReturn));
  EXPECT_EQ(onOK.Count, 0);
}

TEST(TControl, AButtonWithTheFocusTakesReturnAndSpace) {
  TShownForm form;
  TButton ok(&form);
  TButton cancel(&form);
  TEventCounter onOK;
  TEventCounter onCancel;
  ok.SetOnClick(onOK.Event());
  cancel.SetOnClick(onCancel.Event());
  form.SetDefaultButton(&ok);
  EXPECT_TRUE(cancel.PressKey(cKeyReturn));
  EXPECT_TRUE(cancel.PressKey(cKeySpace));
  EXPECT_EQ(onCancel.Count, 2);
  EXPECT_EQ(onOK.Count, 0);
}

TEST(TControl, SpaceTicksABoxAndReturnPassesIt) {
  TShownForm form;
  TCheckBox box(&form);
  TButton ok(&form);
  TEventCounter onOK;
  ok.SetOnClick(onOK.Event());
  form.SetDefaultButton(&ok);
  EXPECT_TRUE(box.PressKey(cKeySpace));
  EXPECT_TRUE(box.Checked());
  EXPECT_TRUE(box.PressKey(cKeyReturn));
  EXPECT_EQ(onOK.Count, 1);
  EXPECT_TRUE(box.Checked());
}

}  // namespace
}  // namespace kk
