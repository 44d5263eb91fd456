#include "reminders/TfrmNotification.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/TFakeOpener.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

using testing::ElementsAre;

class TfrmNotificationTest : public testing::Test {
 protected:
  static constexpr int cPeriod = TfrmMSNPopUpBase::cDisplayPeriodMs;

  TfrmNotificationTest() {
    FForm.SetInfo(u"Uhr", u"endet bald", u"https://shop/1");
    FForm.Prepare();
    FForm.PopUp();
  }

  TTestMainLoop FLoop;
  TfrmNotification FForm;
};

TEST_F(TfrmNotificationTest, ShowsCaptionTextAndTheFixedLabelOfTheLink) {
  EXPECT_EQ(FForm.lblCaption.Caption(), u"Uhr");
  EXPECT_TRUE(FForm.lblCaption.Bold());
  EXPECT_TRUE(FForm.lblCaption.SingleLine());
  EXPECT_EQ(FForm.lblMessage.Caption(), u"endet bald");
  EXPECT_FALSE(FForm.lblMessage.Bold());
  EXPECT_EQ(FForm.lblOpenLink.Caption(), u"Link in Browser öffnen");
  EXPECT_TRUE(FForm.lblOpenLink.LooksLikeLink());
  EXPECT_TRUE(FForm.lblOpenLink.Centered());
  EXPECT_FALSE(FForm.lblOpenLink.Underline());
  EXPECT_EQ(FForm.Link(), u"https://shop/1");
}

TEST_F(TfrmNotificationTest, TakesTextsAsTheyAre) {
  FForm.SetInfo(u"a & b %s\n", u" <b>x</b> ", u"");
  EXPECT_EQ(FForm.lblCaption.Caption(), u"a & b %s\n");
  EXPECT_EQ(FForm.lblMessage.Caption(), u" <b>x</b> ");
  EXPECT_EQ(FForm.Link(), u"");
  EXPECT_EQ(FForm.Caption(), u"") << "the window itself has no caption";
}

TEST_F(TfrmNotificationTest, StandsFromTopToBottomWithTheCloseButtonAtTheRightOfTheCaption) {
  EXPECT_THAT(FForm.Children(),
              ElementsAre(&FForm.pnlCaption, &FForm.lblMessage, &FForm.lblOpenLink));
  EXPECT_THAT(FForm.pnlCaption.Children(), ElementsAre(&FForm.lblCaption, &FForm.pnlClose));
  EXPECT_EQ(FForm.pnlCaption.Arrangement(), TArrangement::arRow);
  EXPECT_THAT(FForm.pnlClose.Children(), ElementsAre(&FForm.imgClose, &FForm.imgCloseOver));
  EXPECT_EQ(FForm.pnlClose.Arrangement(), TArrangement::arStack);
}

TEST_F(TfrmNotificationTest, ClosesByItselfBehindTheDisplayPeriod) {
  FLoop.Advance(cPeriod - 1);
  EXPECT_TRUE(FForm.Visible());
  FLoop.Advance(1);
  EXPECT_FALSE(FForm.Visible());
}

TEST_F(TfrmNotificationTest, StaysWhileThePointerRestsOnItAndLeavesAtTheNextPeriod) {
  EXPECT_TRUE(FForm.EnterMouse());
  EXPECT_FALSE(FForm.CanClose());
  FLoop.Advance(3 * cPeriod);
  EXPECT_TRUE(FForm.Visible());
  FLoop.Advance(cPeriod / 2);
  EXPECT_TRUE(FForm.LeaveMouse());
  EXPECT_TRUE(FForm.CanClose());
  FLoop.Advance(cPeriod / 2 - 1);
  EXPECT_TRUE(FForm.Visible());
  FLoop.Advance(1);
  EXPECT_FALSE(FForm.Visible());
}

TEST_F(TfrmNotificationTest, AHostThatEndsItTooSoonStartsTheWaitOverFromZero) {
  FForm.EnterMouse();
  FLoop.Advance(cPeriod / 2);
  FForm.MakeInvisible();
  FForm.LeaveMouse();
  FLoop.Advance(cPeriod - 1);
  EXPECT_TRUE(FForm.Visible());
  FLoop.Advance(1);
  EXPECT_FALSE(FForm.Visible());
}

TEST_F(TfrmNotificationTest, ThePointerKeepsItFromBeingClosedByItsFrame) {
  FForm.EnterMouse();
  FForm.CloseByUser();
  EXPECT_TRUE(FForm.Visible());
}

TEST_F(TfrmNotificationTest, AClickOnEitherCloseImageClosesAtOnceWithThePointerOnIt) {
  FForm.EnterMouse();
  EXPECT_TRUE(FForm.imgCloseOver.Click());
  EXPECT_FALSE(FForm.Visible());
  EXPECT_EQ(FLoop.TimerCount(), 0);

  TfrmNotification other;
  other.PopUp();
  other.EnterMouse();
  EXPECT_TRUE(other.imgClose.Click());
  EXPECT_TRUE(other.CanClose()) << "though the pointer is inside";
  EXPECT_FALSE(other.Visible());
}

TEST_F(TfrmNotificationTest, TheCloseImagesAreBothVisibleAtFirstAndSwapUnderThePointer) {
  EXPECT_TRUE(FForm.imgClose.Visible());
  EXPECT_TRUE(FForm.imgCloseOver.Visible());
  EXPECT_NE(FForm.imgClose.Picture(), FForm.imgCloseOver.Picture());
  FForm.imgCloseOver.LeaveMouse();
  EXPECT_TRUE(FForm.imgClose.Visible());
  EXPECT_FALSE(FForm.imgCloseOver.Visible());
  FForm.imgClose.EnterMouse();
  EXPECT_FALSE(FForm.imgClose.Visible());
  EXPECT_TRUE(FForm.imgCloseOver.Visible());
  EXPECT_FALSE(FForm.imgClose.Click()) << "what is hidden is out of reach";
}

TEST_F(TfrmNotificationTest, TheLinkIsUnderlinedUnderThePointer) {
  FForm.lblOpenLink.EnterMouse();
  EXPECT_TRUE(FForm.lblOpenLink.Underline());
  FForm.lblOpenLink.LeaveMouse();
  EXPECT_FALSE(FForm.lblOpenLink.Underline());
}

TEST_F(TfrmNotificationTest, AClickOnTheLinkOpensItAndTheWindowStays) {
  TFakeOpener opener;
  EXPECT_TRUE(FForm.lblOpenLink.Click());
  EXPECT_THAT(opener.Urls, ElementsAre("https://shop/1"));
  EXPECT_TRUE(FForm.Visible());
}

TEST_F(TfrmNotificationTest, AnEmptyLinkStillShowsTheLabelAndAClickPassesItOn) {
  TFakeOpener opener;
  const TLogRecorder log;
  FForm.SetInfo(u"Uhr", u"endet", u"");
  EXPECT_TRUE(FForm.lblOpenLink.Visible());
  EXPECT_TRUE(FForm.lblOpenLink.Click());
  EXPECT_TRUE(opener.Urls.empty());
  ASSERT_EQ(log.Lines().size(), 1u) << "the host's door has refused the empty address";
  EXPECT_THAT(log.Lines()[0], testing::StartsWith("error Host: Die Adresse wird nicht geöffnet"));
}

}  // namespace
}  // namespace kk
