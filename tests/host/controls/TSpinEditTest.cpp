#include "host/controls/TSpinEdit.h"

#include <gtest/gtest.h>

#include <limits>

#include "ControlsFixture.h"

namespace kk {
namespace {

class TSpinEditTest : public testing::Test {
 protected:
  TSpinEditTest() { Spin.SetOnChange(OnChange.Event()); }

  TShownForm Form;
  TSpinEdit Spin{&Form, u"spnedt"};
  TEventCounter OnChange;
};

TEST_F(TSpinEditTest, TheUsersNumberIsThereBeforeTheEvent) {
  int seen = 0;
  OnChange.OnEvent = [&] { seen = Spin.Value(); };
  EXPECT_TRUE(Spin.EnterValue(7));
  EXPECT_EQ(seen, 7);
  EXPECT_EQ(OnChange.Count, 1);
  EXPECT_EQ(OnChange.LastSender, &Spin);
}

TEST_F(TSpinEditTest, AnEqualNumberIsNoChange) {
  EXPECT_FALSE(Spin.EnterValue(0));
  EXPECT_FALSE(Spin.EnterText(u"0"));
  EXPECT_EQ(OnChange.Count, 0);
}

TEST_F(TSpinEditTest, HasNoBoundsButThoseOfItsType) {
  using TLimits = std::numeric_limits<int>;
  EXPECT_TRUE(Spin.EnterValue(TLimits::min()));
  EXPECT_EQ(Spin.Value(), TLimits::min());
  EXPECT_TRUE(Spin.EnterText(u"2147483647"));
  EXPECT_EQ(Spin.Value(), TLimits::max());
  EXPECT_TRUE(Spin.EnterText(u"-2147483648"));
  EXPECT_EQ(Spin.Value(), TLimits::min());
}

TEST_F(TSpinEditTest, ANumberBeyondABoundBecomesTheBound) {
  TSkinRecorder skin;
  Form.SetObserver(&skin);
  Spin.SetBounds(1, 1000);
  EXPECT_EQ(skin.Take(), (TNotes{"changed spnedt", "changed spnedt", "changed spnedt"}));
  Form.SetObserver(nullptr);
  EXPECT_EQ(Spin.MinValue(), 1);
  EXPECT_EQ(Spin.MaxValue(), 1000);
  EXPECT_EQ(Spin.Value(), 1) << "what stood there before, too";
  EXPECT_FALSE(Spin.EnterValue(0)) << "it is the bound already";
  EXPECT_EQ(OnChange.Count, 0);
  EXPECT_TRUE(Spin.EnterText(u"1001"));
  EXPECT_EQ(Spin.Value(), 1000);
  Spin.SetValue(-5);
  EXPECT_EQ(Spin.Value(), 1);
  EXPECT_TRUE(Spin.EnterValue(999));
  EXPECT_EQ(Spin.Value(), 999);
}

TEST_F(TSpinEditTest, WhatIsTypedIsReadAsANumber) {
  EXPECT_TRUE(Spin.EnterText(u" 12 "));
  EXPECT_EQ(Spin.Value(), 12);
  EXPECT_TRUE(Spin.EnterText(u"-3"));
  EXPECT_EQ(Spin.Value(), -3);
}

TEST_F(TSpinEditTest, ATextThatIsNoNumberChangesNothing) {
  Spin.SetValue(5);
  for (const TString text :
       {u"", u"zwei", u"1,5", u"1 2", u"2147483648", u"-2147483649", u"99999999999999999999"}) {
    EXPECT_FALSE(Spin.EnterText(text)) << ToUtf8(text);
    EXPECT_EQ(Spin.Value(), 5);
  }
  EXPECT_EQ(OnChange.Count, 0);
}

TEST_F(TSpinEditTest, TheProgramsDoorTellsTheSkinAndRaisesNoEvent) {
  TSkinRecorder skin;
  Form.SetObserver(&skin);
  Spin.SetValue(5);
  EXPECT_EQ(skin.Take(), TNotes{"changed spnedt"});
  Spin.SetValue(5);
  EXPECT_EQ(skin.Take(), TNotes{});
  EXPECT_EQ(OnChange.Count, 0);
  Form.SetObserver(nullptr);
}

TEST_F(TSpinEditTest, ADisabledOneIsLeftAlone) {
  Spin.SetEnabled(false);
  EXPECT_FALSE(Spin.EnterValue(1));
  EXPECT_FALSE(Spin.EnterText(u"1"));
  EXPECT_EQ(Spin.Value(), 0);
}

TEST_F(TSpinEditTest, TakesTheFocusAndNeedsNoListener) {
  EXPECT_TRUE(Spin.TakeFocus());
  Spin.SetOnChange({});
  EXPECT_TRUE(Spin.EnterValue(1));
}

}  // namespace
}  // namespace kk
