#include <gtest/gtest.h>

#include "ControlsFixture.h"
#include "host/base/Exception.h"
#include "host/controls/TCheckBox.h"
#include "host/controls/TComboBox.h"
#include "host/controls/TEdit.h"
#include "host/controls/TGauge.h"
#include "host/controls/TLabel.h"
#include "host/controls/TMemo.h"
#include "host/controls/TMenuItem.h"
#include "host/controls/TRadioButton.h"

namespace kk {
namespace {

TEST(TButton, RaisesItsClickWithItselfAsTheSender) {
  TShownForm form;
  TButton button(&form, u"btnOK", u"&OK");
  TEventCounter onClick;
  EXPECT_TRUE(button.Click());
  button.SetOnClick(onClick.Event());
  EXPECT_TRUE(button.Click());
  EXPECT_EQ(onClick.Count, 1);
  EXPECT_EQ(onClick.LastSender, &button);
  EXPECT_EQ(button.Caption(), u"&OK");
}

TEST(TCheckBox, AClickTurnsItBeforeTheEvent) {
  TShownForm form;
  TCheckBox box(&form);
  TEventCounter onClick;
  bool seen = false;
  onClick.OnEvent = [&] { seen = box.Checked(); };
  box.SetOnClick(onClick.Event());
  EXPECT_TRUE(box.Click());
  EXPECT_TRUE(seen);
  EXPECT_TRUE(box.Click());
  EXPECT_FALSE(seen);
  EXPECT_EQ(onClick.Count, 2);
}

TEST(TCheckBox, TheProgramsDoorRaisesNoEvent) {
  TShownForm form;
  TCheckBox box(&form);
  TEventCounter onClick;
  box.SetOnClick(onClick.Event());
  box.SetChecked(true);
  EXPECT_TRUE(box.Checked());
  EXPECT_EQ(onClick.Count, 0);
}

TEST(TCheckBox, ADisabledOneKeepsItsTick) {
  TShownForm form;
  TCheckBox box(&form);
  box.SetChecked(true);
  box.SetEnabled(false);
  EXPECT_FALSE(box.Click());
  EXPECT_TRUE(box.Checked());
}

TEST(TRadioButton, OneOfItsSiblingsIsChosen) {
  TShownForm form;
  TPanel otherGroup(&form);
  TRadioButton first(&form);
  TRadioButton second(&form);
  TRadioButton elsewhere(&otherGroup);
  TEventCounter onClick;
  second.SetOnClick(onClick.Event());
  first.SetChecked(true);
  elsewhere.SetChecked(true);
  EXPECT_TRUE(second.Click());
  EXPECT_FALSE(first.Checked());
  EXPECT_TRUE(second.Checked());
  EXPECT_TRUE(elsewhere.Checked());
  EXPECT_FALSE(second.Click());
  EXPECT_EQ(onClick.Count, 1);
  first.SetChecked(true);
  EXPECT_FALSE(second.Checked());
  first.SetChecked(false);
  EXPECT_FALSE(first.Checked());
}

TEST(TRadioButton, StandsAloneWithoutAParent) {
  TRadioButton alone(nullptr);
  EXPECT_TRUE(alone.Click());
  EXPECT_TRUE(alone.Checked());
}

TEST(TEdit, AChangeByTheUserRaisesTheEventOnce) {
  TShownForm form;
  TEdit edit(&form);
  TEventCounter onChange;
  edit.SetOnChange(onChange.Event());
  edit.SetText(u"alt");
  EXPECT_EQ(onChange.Count, 0);
  EXPECT_TRUE(edit.EnterText(u"neu"));
  EXPECT_FALSE(edit.EnterText(u"neu"));
  EXPECT_EQ(onChange.Count, 1);
  EXPECT_EQ(edit.Text(), u"neu");
  edit.SetEnabled(false);
  EXPECT_FALSE(edit.EnterText(u"anders"));
  EXPECT_EQ(edit.Text(), u"neu");
  edit.SetEnabled(true);
  edit.SetOnChange({});
  EXPECT_TRUE(edit.EnterText(u"anders"));
}

TEST(TMemo, HoldsLines) {
  TSkinRecorder skin;
  TShownForm form;
  TMemo memo(&form, u"rched");
  memo.SetObserver(&skin);
  memo.SetLines({u"eins", u"zwei"});
  memo.SetLines({u"eins", u"zwei"});
  EXPECT_EQ(skin.Take(), TNotes{"changed rched"});
  EXPECT_FALSE(memo.EnterText(u"eins\nzwei"));
  EXPECT_TRUE(memo.EnterText(u"eins\r\ndrei\nvier"));
  EXPECT_EQ(memo.Lines().Lines(), (std::vector<TString>{u"eins", u"drei", u"vier"}));
  EXPECT_TRUE(memo.AcceptsFocus());
}

TEST(TMemo, ThatIsThereToBeReadTakesNoText) {
  TShownForm form;
  TMemo memo(&form, u"rched");
  memo.SetLines({u"eins"});
  memo.SetReadOnly(true);
  EXPECT_FALSE(memo.EnterText(u"zwei"));
  EXPECT_EQ(memo.Lines().Lines(), (std::vector<TString>{u"eins"}));
  memo.SetReadOnly(false);
  EXPECT_TRUE(memo.EnterText(u"zwei"));
}

TEST(TMemo, LeavesReturnWithCtrlToItsForm) {
  TShownForm form;
  TMemo memo(&form, u"rched");
  EXPECT_TRUE(memo.PressKey(cKeyReturn));
  EXPECT_FALSE(memo.PressKey(cKeyCtrlReturn));
}

TEST(TEdit, MayHideWhatIsTyped) {
  TSkinRecorder skin;
  TShownForm form;
  TEdit edit(&form, u"edt");
  edit.SetObserver(&skin);
  EXPECT_FALSE(edit.Password());
  edit.SetPassword(true);
  EXPECT_TRUE(edit.Password());
  EXPECT_EQ(skin.Take(), TNotes{"changed edt"});
}

TEST(TPanel, MovesFromOneContainerToAnother) {
  TShownForm form;
  TPanel place(&form, u"place");
  TPanel page(nullptr, u"page");
  TEdit edit(&page, u"edt");
  EXPECT_EQ(edit.Form(), nullptr);
  page.PutInto(&place);
  EXPECT_EQ(edit.Form(), &form);
  EXPECT_TRUE(edit.TakeFocus());
  page.PutInto(nullptr);
  EXPECT_EQ(page.Parent(), nullptr);
  EXPECT_TRUE(place.Children().empty());
  EXPECT_EQ(form.FocusedControl(), nullptr);
}

class TComboBoxTest : public testing::Test {
 protected:
  TComboBoxTest() {
    Combo.AddItem(u"Bücher");
    Combo.AddItem(u"Uhren");
    Combo.AddItem(u"Bücher");
    Combo.SetOnChange(OnChange.Event());
  }

  TShownForm Form;
  TComboBox Combo{&Form, u"cmbx"};
  TEventCounter OnChange;
};

TEST_F(TComboBoxTest, NothingIsSelectedAtFirst) {
  EXPECT_EQ(Combo.ItemIndex(), -1);
  EXPECT_EQ(Combo.Text(), u"");
  EXPECT_TRUE(Combo.Editable());
  EXPECT_TRUE(Combo.AcceptsFocus());
}

TEST_F(TComboBoxTest, ASelectionTakesTheEntrysText) {
  EXPECT_TRUE(Combo.Select(1));
  EXPECT_EQ(Combo.Text(), u"Uhren");
  EXPECT_EQ(Combo.ItemIndex(), 1);
  EXPECT_FALSE(Combo.Select(1));
  EXPECT_FALSE(Combo.Select(3));
  EXPECT_FALSE(Combo.Select(-1));
  EXPECT_EQ(OnChange.Count, 1);
}

TEST_F(TComboBoxTest, TypingATextThatIsNoEntryDeselects) {
  Combo.SetItemIndex(1);
  EXPECT_TRUE(Combo.EnterText(u"Uhre"));
  EXPECT_EQ(Combo.ItemIndex(), -1);
  EXPECT_EQ(Combo.Text(), u"Uhre");
  EXPECT_EQ(OnChange.Count, 1);
}

TEST_F(TComboBoxTest, TypingAnEntrySelectsItWithoutRegardToCase) {
  EXPECT_TRUE(Combo.EnterText(u"uhren"));
  EXPECT_EQ(Combo.ItemIndex(), 1);
  EXPECT_EQ(Combo.Text(), u"uhren");
}

TEST_F(TComboBoxTest, TheSameLettersWinOverOtherOnes) {
  Combo.AddItem(u"uhren");
  EXPECT_TRUE(Combo.EnterText(u"uhren"));
  EXPECT_EQ(Combo.ItemIndex(), 3);
}

TEST_F(TComboBoxTest, OfEqualEntriesTheSelectedOneStays) {
  Combo.SetItemIndex(2);
  EXPECT_TRUE(Combo.EnterText(u"bücher"));
  EXPECT_EQ(Combo.ItemIndex(), 2);
  EXPECT_TRUE(Combo.EnterText(u"Büche"));
  EXPECT_TRUE(Combo.EnterText(u"Bücher"));
  EXPECT_EQ(Combo.ItemIndex(), 0);
}

TEST_F(TComboBoxTest, TheProgramsDoorRaisesNoEvent) {
  Combo.SetItemIndex(2);
  EXPECT_EQ(Combo.ItemIndex(), 2);
  Combo.SetText(u"Uhren");
  EXPECT_EQ(Combo.ItemIndex(), 1);
  Combo.SetItemIndex(-1);
  EXPECT_EQ(Combo.Text(), u"");
  EXPECT_THROW(Combo.SetItemIndex(3), EListError);
  EXPECT_EQ(OnChange.Count, 0);
}

TEST_F(TComboBoxTest, OneThatIsNotEditableIsOnlyChosenFrom) {
  Combo.SetEditable(false);
  EXPECT_FALSE(Combo.EnterText(u"Uhren"));
  EXPECT_TRUE(Combo.Select(1));
}

TEST_F(TComboBoxTest, ClearForgetsEverything) {
  Combo.SetItemIndex(1);
  Combo.Clear();
  EXPECT_TRUE(Combo.Items().empty());
  EXPECT_EQ(Combo.ItemIndex(), -1);
  EXPECT_EQ(Combo.Text(), u"");
  TSkinRecorder skin;
  Combo.SetObserver(&skin);
  Combo.Clear();
  EXPECT_EQ(skin.Take(), TNotes{});
  Combo.SetObserver(nullptr);
}

TEST_F(TComboBoxTest, ADisabledOneIsLeftAlone) {
  Combo.SetEnabled(false);
  EXPECT_FALSE(Combo.Select(1));
  EXPECT_FALSE(Combo.EnterText(u"Uhren"));
  EXPECT_EQ(Combo.ItemIndex(), -1);
}

TEST(TMenuItem, OwnsItsEntriesAndClicksThem) {
  TMenuItem menu;
  TEventCounter onClick;
  TMenuItem& entry = menu.Add(u"Löschen", onClick.Event());
  menu.Add(TMenuItem::cSeparator);
  EXPECT_EQ(menu.GetCount(), 2);
  EXPECT_EQ(&menu.GetItems(0), &entry);
  EXPECT_EQ(entry.Parent(), &menu);
  EXPECT_THROW(menu.GetItems(2), EListError);
  EXPECT_TRUE(entry.Click());
  EXPECT_EQ(onClick.LastSender, &entry);
  EXPECT_TRUE(menu.GetItems(1).IsSeparator());
  EXPECT_FALSE(menu.GetItems(1).Click());
  EXPECT_FALSE(entry.AcceptsFocus());
}

TEST(TMenuItem, AnEntryWithASubMenuDoesNothingByItself) {
  TEventCounter onClick;
  TMenuItem menu;
  TMenuItem& move = menu.Add(u"Verschieben nach ...", onClick.Event());
  move.Add(u"Bücher");
  EXPECT_FALSE(move.Click());
  EXPECT_EQ(onClick.Count, 0);
  move.Clear();
  EXPECT_TRUE(move.Click());
}

TEST(TMenuItem, ADisabledMenuDisablesItsEntries) {
  TMenuItem menu;
  TMenuItem& entry = menu.Add(u"Löschen");
  entry.SetChecked(true);
  entry.SetDefault(true);
  EXPECT_TRUE(entry.Checked());
  EXPECT_TRUE(entry.Default());
  menu.SetEnabled(false);
  EXPECT_FALSE(entry.Click());
}

TEST(TMenuItem, TellsTheSkinWhatItShowsAndKeepsWhatItStandsFor) {
  TSkinRecorder skin;
  TMenuItem entry(u"Löschen");
  entry.SetObserver(&skin);
  entry.SetShortCut(u"Shift+Ctrl+Del");
  entry.SetShortCut(u"Shift+Ctrl+Del");
  entry.SetHint(u"Alles geht");
  entry.SetRadio(true);
  EXPECT_EQ(skin.Take().size(), 3U);
  entry.SetTag(&entry);
  EXPECT_EQ(entry.ShortCut(), u"Shift+Ctrl+Del");
  EXPECT_EQ(entry.Hint(), u"Alles geht");
  EXPECT_TRUE(entry.Radio());
  EXPECT_EQ(entry.Tag(), &entry);
  EXPECT_EQ(skin.Take(), TNotes{});
  entry.SetObserver(nullptr);
}

TEST(TMenuItem, MayBeFreedInItsOwnClick) {
  TMenuItem menu;
  TEventCounter onClick;
  onClick.OnEvent = [&] { menu.Clear(); };
  EXPECT_TRUE(menu.Add(u"Bücher", onClick.Event()).Click());
  EXPECT_EQ(menu.GetCount(), 0);
  EXPECT_TRUE(menu.Children().empty());
}

TEST(TPanel, ComesAndGoesWithOneEventEach) {
  TShownForm form;
  TPanel panel(&form);
  TEventCounter onShow;
  TEventCounter onClose;
  panel.SetOnShow(onShow.Event());
  panel.SetOnClose(onClose.Event());
  panel.SetVisible(false);
  panel.Close();
  EXPECT_EQ(onClose.Count, 0);
  panel.Show();
  panel.Show();
  EXPECT_EQ(onShow.Count, 1);
  bool visibleInClose = true;
  onClose.OnEvent = [&] { visibleInClose = panel.Visible(); };
  panel.Close();
  panel.Close();
  EXPECT_EQ(onClose.Count, 1);
  EXPECT_FALSE(visibleInClose);
}

TEST(TPanel, WithoutListenersComesAndGoesToo) {
  TPanel panel(nullptr);
  panel.Close();
  EXPECT_FALSE(panel.Visible());
  panel.Show();
  EXPECT_TRUE(panel.Visible());
  panel.BringToFront();
}

TEST(TPanel, IsTheLastOfItsSiblingsWhenBroughtToFront) {
  TSkinRecorder skin;
  TShownForm form;
  TPanel first(&form, u"first");
  TPanel second(&form, u"second");
  TPanel third(&form, u"third");
  form.SetObserver(&skin);
  first.BringToFront();
  EXPECT_EQ(form.Children(), (std::vector<TControl*>{&second, &third, &first}));
  EXPECT_EQ(skin.Take(), TNotes{"changed TShownForm"});
  first.BringToFront();
  EXPECT_EQ(skin.Take(), TNotes{});
}

TEST(TEdit, AllOfItIsSelectedUntilTheTextIsAnother) {
  TSkinRecorder skin;
  TShownForm form;
  TEdit edit(&form, u"edt");
  edit.SetText(u"alt");
  form.SetObserver(&skin);
  EXPECT_FALSE(edit.AllSelected());
  edit.SelectAll();
  edit.SelectAll();
  EXPECT_EQ(skin.Take(), (TNotes{"changed edt", "changed edt"})) << "the caret may have been moved";
  EXPECT_TRUE(edit.AllSelected());
  edit.SetText(u"alt");
  EXPECT_TRUE(edit.AllSelected());
  EXPECT_TRUE(edit.EnterText(u"neu"));
  EXPECT_FALSE(edit.AllSelected());
  form.SetObserver(nullptr);
}

TEST(TGauge, ShowsATextBesideItsProgress) {
  TGauge gauge(nullptr, u"gauge");
  EXPECT_EQ(gauge.Text(), u"");
  gauge.SetText(u"Aktualisierung: 3");
  EXPECT_EQ(gauge.Text(), u"Aktualisierung: 3");
}

TEST(TPanel, TheUserDrawsASplitterNotBelowTheMinimum) {
  TShownForm form;
  TPanel panel(&form, u"pnl");
  panel.SetMinSize(100, 50);
  panel.SetWidth(220);
  EXPECT_FALSE(panel.DragWidth(300)) << "it has no splitter";
  panel.SetHasSplitter(true);
  EXPECT_TRUE(panel.HasSplitter());
  EXPECT_TRUE(panel.DragWidth(300));
  EXPECT_EQ(panel.Width(), 300);
  EXPECT_FALSE(panel.DragWidth(300));
  EXPECT_TRUE(panel.DragWidth(20));
  EXPECT_EQ(panel.Width(), 100);
  EXPECT_EQ(panel.MinWidth(), 100);
  EXPECT_EQ(panel.MinHeight(), 50);
  panel.SetEnabled(false);
  EXPECT_FALSE(panel.DragWidth(300));
}

}  // namespace
}  // namespace kk
