#include "host/controls/TfrmMSNPopUpBase.h"

#include <gtest/gtest.h>

#include <memory>

#include "ControlsFixture.h"
#include "host/controls/TImage.h"
#include "host/controls/TLabel.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

// A pop-up that may refuse to go, as the plug-ins' ones do.
class TTestPopUp : public TfrmMSNPopUpBase {
 public:
  TTestPopUp() : TfrmMSNPopUpBase(nullptr, u"TTestPopUp") {}

  bool CanClose() override { return TfrmMSNPopUpBase::CanClose() && Closes; }
  void MakeInvisible() override {
    ++Asked;
    if (OnAsked) OnAsked();
    TfrmMSNPopUpBase::MakeInvisible();
  }
  using TfrmMSNPopUpBase::RestartWait;

  bool Closes = true;
  int Asked = 0;
  std::function<void()> OnAsked;
};

class TfrmMSNPopUpBaseTest : public testing::Test {
 protected:
  static constexpr int cPeriod = TfrmMSNPopUpBase::cDisplayPeriodMs;

  TTestMainLoop FLoop;
  TTestPopUp FForm;
};

TEST_F(TfrmMSNPopUpBaseTest, IsUnseenUntilItPopsUp) {
  EXPECT_FALSE(FForm.Visible());
  FForm.Prepare();
  EXPECT_FALSE(FForm.Visible());
  EXPECT_TRUE(FForm.StaysOnTop());
  FLoop.Advance(2 * cPeriod);
  EXPECT_EQ(FForm.Asked, 0);
  FForm.PopUp();
  EXPECT_TRUE(FForm.Visible());
  EXPECT_EQ(FForm.Link(), u"");
}

TEST_F(TfrmMSNPopUpBaseTest, StandsForTheDisplayPeriodAndTellsItsHost) {
  TEventCounter onClose;
  FForm.SetOnClose(onClose.Event());
  FForm.PopUp();
  FLoop.Advance(cPeriod - 1);
  EXPECT_EQ(FForm.Asked, 0);
  FLoop.Advance(1);
  EXPECT_EQ(FForm.Asked, 1);
  EXPECT_FALSE(FForm.Visible());
  EXPECT_EQ(onClose.Count, 1);
  EXPECT_EQ(FLoop.TimerCount(), 0);
}

TEST_F(TfrmMSNPopUpBaseTest, ASkinThatSlidesItInBeginsTheWaitWhenItStands) {
  FForm.Prepare();
  FLoop.Advance(cPeriod);
  FForm.MakeVisible();
  FLoop.Advance(cPeriod - 1);
  EXPECT_TRUE(FForm.Visible());
  FForm.MakeVisible();  // stands already
  FLoop.Advance(1);
  EXPECT_FALSE(FForm.Visible());
}

TEST_F(TfrmMSNPopUpBaseTest, OneThatMayNotGoIsAskedAgainAfterEachPeriod) {
  FForm.Closes = false;
  FForm.PopUp();
  FLoop.Advance(3 * cPeriod);
  EXPECT_EQ(FForm.Asked, 3);
  EXPECT_TRUE(FForm.Visible());
  FForm.Closes = true;
  FLoop.Advance(cPeriod);
  EXPECT_FALSE(FForm.Visible());
}

TEST_F(TfrmMSNPopUpBaseTest, TheWaitCanStartOverFromZero) {
  FForm.PopUp();
  FLoop.Advance(cPeriod - 1);
  FForm.RestartWait();
  FLoop.Advance(cPeriod - 1);
  EXPECT_TRUE(FForm.Visible());
  FLoop.Advance(1);
  EXPECT_FALSE(FForm.Visible());
}

TEST_F(TfrmMSNPopUpBaseTest, EveryWayOfClosingAsksWhetherItMay) {
  FForm.PopUp();
  FForm.Closes = false;
  FForm.Close();
  FForm.CloseByUser();
  FForm.MakeInvisible();
  EXPECT_TRUE(FForm.Visible());
  EXPECT_EQ(FLoop.TimerCount(), 1);
  FForm.Closes = true;
  FForm.Close();
  EXPECT_FALSE(FForm.Visible());
  EXPECT_EQ(FLoop.TimerCount(), 0);
}

TEST_F(TfrmMSNPopUpBaseTest, KnowsWhetherThePointerIsInside) {
  EXPECT_FALSE(FForm.EnterMouse()) << "it is not on the screen";
  FForm.PopUp();
  EXPECT_FALSE(FForm.IsMouseInside());
  EXPECT_TRUE(FForm.EnterMouse());
  EXPECT_TRUE(FForm.IsMouseInside());
  EXPECT_TRUE(FForm.LeaveMouse());
  EXPECT_FALSE(FForm.IsMouseInside());
}

TEST_F(TfrmMSNPopUpBaseTest, OneThatPopsUpAgainKnowsNothingOfThePointerOfLastTime) {
  FForm.PopUp();
  FForm.EnterMouse();
  FForm.Close();
  FForm.Prepare();
  FForm.PopUp();
  EXPECT_FALSE(FForm.IsMouseInside());
  FLoop.Advance(cPeriod);
  EXPECT_FALSE(FForm.Visible());
}

TEST_F(TfrmMSNPopUpBaseTest, AHostMayFreeItAtAnyTimeAndInTheTurnBehindItsEnd) {
  auto form = std::make_unique<TTestPopUp>();
  form->PopUp();
  form = nullptr;
  EXPECT_EQ(FLoop.TimerCount(), 0);

  form = std::make_unique<TTestPopUp>();
  TEventCounter onClose;
  onClose.OnEvent = [&] { FLoop.Post([&] { form = nullptr; }); };
  form->SetOnClose(onClose.Event());
  form->PopUp();
  FLoop.Advance(cPeriod);
  FLoop.ProcessMessages();
  EXPECT_EQ(form, nullptr);
}

TEST(TfrmMSNPopUpBase, OneThatIsFreedBehindTheLoopTouchesItNoMore) {
  TTestPopUp form;
  {
    const TTestMainLoop loop;
    form.PopUp();
  }
  EXPECT_FALSE(HasMainLoop());
}

TEST(TLabel, TellsItsSkinHowItLooks) {
  TShownForm form;
  TLabel label(&form, u"lbl", u"Text");
  TSkinRecorder skin;
  label.SetObserver(&skin);
  EXPECT_FALSE(label.Bold() || label.Underline() || label.LooksLikeLink() || label.Centered() ||
               label.SingleLine());
  label.SetBold(true);
  label.SetUnderline(true);
  label.SetLooksLikeLink(true);
  label.SetCentered(true);
  label.SetSingleLine(true);
  EXPECT_EQ(skin.Take(), TNotes(5, "changed lbl"));
  EXPECT_TRUE(label.Bold() && label.Underline() && label.LooksLikeLink() && label.Centered() &&
              label.SingleLine());
  label.SetBold(true);
  EXPECT_EQ(skin.Take(), TNotes());
  label.SetObserver(nullptr);
}

TEST(TLabel, CanBeClickedAndHasNoFocus) {
  TShownForm form;
  TLabel label(&form, u"lbl");
  TEventCounter onClick;
  label.SetOnClick(onClick.Event());
  EXPECT_TRUE(label.Click());
  EXPECT_EQ(onClick.LastSender, &label);
  EXPECT_FALSE(label.TakeFocus());
}

TEST(TImage, HasAPictureCanBeClickedAndHasNoFocus) {
  TShownForm form;
  TImage image(&form, u"img", {u"CLOSE"});
  TEventCounter onClick;
  image.SetOnClick(onClick.Event());
  EXPECT_EQ(image.Picture(), TBitmap{u"CLOSE"});
  EXPECT_TRUE(image.Click());
  EXPECT_EQ(onClick.Count, 1);
  EXPECT_FALSE(image.TakeFocus());
  image.SetVisible(false);
  EXPECT_FALSE(image.Click());
}

}  // namespace
}  // namespace kk
