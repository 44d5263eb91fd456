#include "host/controls/TTabStrip.h"

#include <gtest/gtest.h>

#include "ControlsFixture.h"
#include "host/base/Exception.h"
#include "host/controls/TEdit.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

using THead = TKK5SkinHeaderItemTabExt;

class TTabStripTest : public testing::Test {
 protected:
  TTabStripTest() {
    for (THead* head : {&A, &B, &C}) head->SetOnClick(OnClick.Event());
    Strip.SetOnBeforeChange(TTabStripQueryEvent::Of<&TTabStripTest::BeforeChange>(this));
  }
  void BeforeChange(TObject* Sender, bool& oResult) {
    EXPECT_EQ(Sender, &Strip);
    ++Asked;
    oResult = MayChange;
  }
  std::string Order() const {
    std::string order;
    for (int i = 0; i < Strip.GetCount(); ++i) order += ToUtf8(Strip.GetItems(i).Caption());
    return order;
  }
  std::string Selected() const {
    const THead* head = Strip.SelectedItem();
    return head != nullptr ? ToUtf8(head->Caption()) : "";
  }

  TTestMainLoop Loop;
  TShownForm Form;
  TTabStrip Strip{&Form, u"strip"};
  TEdit Beside{&Form, u"beside"};
  TPanel Panel{&Form, u"panel"};
  TEventCounter OnClick;
  THead A{Strip, u"A"};
  THead B{Strip, u"B"};
  THead C{Strip, u"C"};
  bool MayChange = true;
  int Asked = 0;
};

TEST_F(TTabStripTest, HoldsItsHeadsInOrder) {
  EXPECT_EQ(Order(), "ABC");
  EXPECT_EQ(Selected(), "");
  EXPECT_THROW(Strip.GetItems(3), EListError);
  {
    const THead d(Strip, u"D");
    EXPECT_EQ(Order(), "ABCD");
  }
  EXPECT_EQ(Order(), "ABC");
}

TEST_F(TTabStripTest, AHeadHasTwoImages) {
  A.SetImage({u"PLAIN"});
  A.SetImageSelected({u"BRIGHT"});
  EXPECT_EQ(A.Image(), (TBitmap{u"PLAIN"}));
  EXPECT_EQ(A.ImageSelected(), (TBitmap{u"BRIGHT"}));
}

TEST_F(TTabStripTest, AtMostOneHeadIsSelected) {
  A.SetSelected(true);
  B.SetSelected(true);
  EXPECT_EQ(Selected(), "B");
  EXPECT_FALSE(A.Selected());
  B.SetVisible(false);
  EXPECT_EQ(Selected(), "B");
  B.SetSelected(false);
  EXPECT_EQ(Selected(), "");
  EXPECT_EQ(OnClick.Count, 0);
}

TEST_F(TTabStripTest, AClickSelectsTheHeadAndThenTells) {
  bool selectedInClick = false;
  OnClick.OnEvent = [&] { selectedInClick = B.Selected(); };
  EXPECT_TRUE(B.Click());
  EXPECT_TRUE(selectedInClick);
  EXPECT_EQ(OnClick.LastSender, &B);
  EXPECT_EQ(Form.FocusedControl(), &Strip);
  EXPECT_EQ(Asked, 0);
}

TEST_F(TTabStripTest, AClickOnTheSelectedHeadDoesNothing) {
  B.Click();
  EXPECT_FALSE(B.Click());
  EXPECT_EQ(OnClick.Count, 1);
}

TEST_F(TTabStripTest, AHeadThatIsHiddenOrInAStripThatIsOffCannotBeClicked) {
  A.SetVisible(false);
  EXPECT_FALSE(A.Click());
  Strip.SetEnabled(false);
  EXPECT_FALSE(B.Click());
  EXPECT_EQ(Selected(), "");
  EXPECT_FALSE(Strip.ChangeTab(true));
  EXPECT_FALSE(Strip.DragItem(B, 0));
  EXPECT_FALSE(Strip.OpenChevronMenu());
}

TEST_F(TTabStripTest, AHeadTakesNoFocusOfItsOwn) {
  EXPECT_FALSE(A.TakeFocus());
  EXPECT_TRUE(Strip.TakeFocus());
}

TEST_F(TTabStripTest, TheKeyboardGoesAroundTheVisibleHeads) {
  B.SetVisible(false);
  EXPECT_TRUE(Strip.ChangeTab(true));
  EXPECT_EQ(Selected(), "A");
  EXPECT_TRUE(Strip.ChangeTab(true));
  EXPECT_EQ(Selected(), "C");
  EXPECT_TRUE(Strip.ChangeTab(true));
  EXPECT_EQ(Selected(), "A");
  EXPECT_TRUE(Strip.ChangeTab(false));
  EXPECT_EQ(Selected(), "C");
  EXPECT_EQ(OnClick.Count, 4);
  EXPECT_EQ(Asked, 4);
}

TEST_F(TTabStripTest, WithNoHeadSelectedTheKeyboardStartsAtTheEnds) {
  EXPECT_TRUE(Strip.ChangeTab(false));
  EXPECT_EQ(Selected(), "C");
}

TEST_F(TTabStripTest, TheKeyboardAsksBefore) {
  MayChange = false;
  EXPECT_FALSE(Strip.ChangeTab(true));
  EXPECT_EQ(Selected(), "");
  Strip.SetOnBeforeChange({});
  EXPECT_TRUE(Strip.ChangeTab(true));
}

TEST_F(TTabStripTest, WithoutAnotherVisibleHeadTheKeyboardDoesNothing) {
  A.Click();
  B.SetVisible(false);
  C.SetVisible(false);
  EXPECT_FALSE(Strip.ChangeTab(true));
  EXPECT_FALSE(Strip.ChangeTab(false));
  TTabStrip empty(&Form);
  EXPECT_FALSE(empty.ChangeTab(true));
  EXPECT_EQ(empty.SelectedItem(), nullptr);
}

TEST_F(TTabStripTest, HeadsCanBeDragged) {
  EXPECT_TRUE(Strip.DragItem(A, 2));
  EXPECT_EQ(Order(), "BCA");
  EXPECT_TRUE(Strip.DragItem(A, 0));
  EXPECT_EQ(Order(), "ABC");
  EXPECT_TRUE(Strip.DragItem(A, 1));
  EXPECT_EQ(Order(), "BAC");
  EXPECT_TRUE(Strip.DragItem(C, 1));
  EXPECT_EQ(Order(), "BCA");
  EXPECT_EQ(OnClick.Count, 0);
}

TEST_F(TTabStripTest, AHeadIsNotDraggedOutOfTheStripNorWhereItIs) {
  EXPECT_FALSE(Strip.DragItem(A, 0));
  EXPECT_FALSE(Strip.DragItem(A, -1));
  EXPECT_FALSE(Strip.DragItem(A, 3));
  B.SetVisible(false);
  EXPECT_FALSE(Strip.DragItem(B, 0));
  TTabStrip other(&Form);
  const THead d(other, u"D");
  EXPECT_FALSE(other.DragItem(A, 0));
  EXPECT_EQ(Order(), "ABC");
}

TEST_F(TTabStripTest, TheSkinHearsOfManyChangesAtTheEndOfTheUpdate) {
  TSkinRecorder skin;
  Form.SetObserver(&skin);
  Strip.BeginUpdate();
  A.SetVisible(false);
  B.SetSelected(true);
  Strip.Repaint();
  EXPECT_EQ(skin.Take(), TNotes{});
  Strip.EndUpdate();
  EXPECT_EQ(skin.Take(), (TNotes{"changed strip", "changed ", "changed "}));
  Form.SetObserver(nullptr);
}

TEST_F(TTabStripTest, TheSkinScrollsOnceForEachRequest) {
  TSkinRecorder skin;
  EXPECT_EQ(Strip.TakeHeadToShow(), nullptr);
  Form.SetObserver(&skin);
  Strip.ScrollIntoView(B);
  EXPECT_EQ(skin.Take(), TNotes{"changed strip"});
  EXPECT_EQ(Strip.TakeHeadToShow(), &B);
  EXPECT_EQ(Strip.TakeHeadToShow(), nullptr);
  {
    THead d(Strip, u"D");
    Strip.ScrollIntoView(d);
  }
  EXPECT_EQ(Strip.TakeHeadToShow(), nullptr);
  Form.SetObserver(nullptr);
}

TEST_F(TTabStripTest, GivesTheFocusToTheFirstThatCanHaveIt) {
  TPanel inner(&Panel);
  TEdit hidden(&inner);
  hidden.SetVisible(false);
  TEdit first(&inner);
  const TEdit second(&Panel);
  Strip.FocusFirstChild(Panel);
  EXPECT_EQ(Form.FocusedControl(), &first);
}

TEST_F(TTabStripTest, AFocusElsewhereMovesOnlyIfThatIsAllowed) {
  TEdit first(&Panel);
  Beside.TakeFocus();
  MayChange = false;
  Strip.FocusFirstChild(Panel);
  EXPECT_EQ(Form.FocusedControl(), &Beside);
  MayChange = true;
  Strip.FocusFirstChild(Panel);
  EXPECT_EQ(Form.FocusedControl(), &first);
}

TEST_F(TTabStripTest, WithoutAFocusNobodyIsAsked) {
  TEdit first(&Panel);
  MayChange = false;
  Strip.FocusFirstChild(Panel);
  EXPECT_EQ(Form.FocusedControl(), &first);
  EXPECT_EQ(Asked, 0);
}

TEST_F(TTabStripTest, OutsideOfAWindowThereIsNoFocus) {
  TTabStrip strip(nullptr);
  TPanel panel(nullptr);
  const TEdit edit(&panel);
  strip.FocusFirstChild(panel);
  EXPECT_EQ(Form.FocusedControl(), nullptr);
}

TEST_F(TTabStripTest, TheChevronsMenuIsFilledBeforeItIsShown) {
  TMenuItem menu;
  EXPECT_FALSE(Strip.OpenChevronMenu());
  Strip.SetChevronMenu(&menu);
  EXPECT_EQ(Strip.ChevronMenu(), &menu);
  EXPECT_TRUE(Strip.OpenChevronMenu());
  TEventCounter onPopup;
  Strip.SetOnChevronPopup(onPopup.Event());
  EXPECT_TRUE(Strip.OpenChevronMenu());
  EXPECT_EQ(onPopup.LastSender, &Strip);
}

TEST_F(TTabStripTest, HasAHint) {
  Strip.SetHint(u"Laden");
  EXPECT_EQ(Strip.Hint(), u"Laden");
}

TEST_F(TTabStripTest, AHeadOutlivesItsStrip) {
  auto strip = std::make_unique<TTabStrip>(&Form);
  THead head(*strip, u"D");
  strip.reset();
  head.SetSelected(true);
  EXPECT_TRUE(head.Selected());
  head.SetSelected(false);
  EXPECT_TRUE(head.Click());
}

}  // namespace
}  // namespace kk
