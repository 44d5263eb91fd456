#include "apps/desktop/shell/TPopUpWindows.h"

#include <QApplication>

#include "TDesktopWorld.h"
#include "apps/desktop/shell/TfrmNotifierPopUp.h"
#include "tests/support/TFakeOpener.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST(TPopUpWindowsPlaces, EachStandsAboveTheOneBeforeInTheLowerRightCorner) {
  const QRect area(0, 0, 1000, 500);
  EXPECT_THAT(TPopUpWindows::Places(area, {{300, 100}, {300, 80}}),
              ElementsAre(QPoint(692, 392), QPoint(692, 304)));
}

TEST(TPopUpWindowsPlaces, WhereThereIsNoRoomAboveTheyGoOnBeside) {
  const QRect area(0, 0, 700, 150);
  EXPECT_THAT(TPopUpWindows::Places(area, {{300, 100}, {300, 100}, {300, 100}}),
              ElementsAre(QPoint(392, 42), QPoint(84, 42), QPoint(392, 42)));
}

class TPopUpWindowsTest : public testing::Test {
 protected:
  TPopUpWindowsTest() {
    NeedQt();
    Loop = std::make_unique<TQtMainLoop>();
    SetMainLoop(Loop.get());
    PopUps = std::make_unique<TPopUpWindows>();
  }
  ~TPopUpWindowsTest() override {
    PopUps.reset();
    SetMainLoop(nullptr);
  }
  TNotification Reminder(TStringView iCaption) {
    TNotification result;
    result.Id = NewGuid();
    result.Title = u"Erinnerung";
    result.Caption = iCaption;
    result.Text = u"Endet in 5 Minuten";
    result.Link = u"https://shop.example/";
    result.LinkText = u"Jetzt besuchen";
    return result;
  }

  std::unique_ptr<TQtMainLoop> Loop;
  std::unique_ptr<TPopUpWindows> PopUps;
};

class TCountedForm : public TfrmMSNPopUpBase {
 public:
  explicit TCountedForm(int& ioAlive) : TfrmMSNPopUpBase(nullptr, u"counted"), FAlive(ioAlive) {
    ++FAlive;
  }
  ~TCountedForm() override { --FAlive; }

 private:
  int& FAlive;
};

TEST_F(TPopUpWindowsTest, WindowsHaveNoFrameAndTakeNoFocus) {
  PopUps->Show(Reminder(u"Lampe"));
  ASSERT_THAT(PopUps->Windows(), SizeIs(1));
  const QWidget& window = *PopUps->Windows()[0];
  EXPECT_TRUE(window.isVisible());
  EXPECT_TRUE(window.windowFlags() & Qt::FramelessWindowHint);
  EXPECT_TRUE(window.windowFlags() & Qt::WindowStaysOnTopHint);
  EXPECT_TRUE(window.testAttribute(Qt::WA_ShowWithoutActivating));
}

TEST_F(TPopUpWindowsTest, FormIsFreedInALaterTurnOnceItHasClosed) {
  int alive = 0;
  auto* const form = new TCountedForm(alive);
  PopUps->Take(*form);
  form->Close();
  EXPECT_EQ(alive, 1);
  EXPECT_THAT(PopUps->Windows(), IsEmpty());
  EXPECT_TRUE(CrankUntil([&] { return alive == 0; }));
}

TEST_F(TPopUpWindowsTest, ClearFreesAllAtOnce) {
  int alive = 0;
  PopUps->Take(*new TCountedForm(alive));
  PopUps->Take(*new TCountedForm(alive));
  EXPECT_EQ(alive, 2);
  PopUps->Clear();
  EXPECT_EQ(alive, 0);
}

TEST_F(TPopUpWindowsTest, ClosedOneThatIsFreedByTheEndDoesNoHarm) {
  int alive = 0;
  auto* const form = new TCountedForm(alive);
  PopUps->Take(*form);
  form->Close();
  PopUps.reset();
  EXPECT_EQ(alive, 0);
  QCoreApplication::processEvents();
}

TEST_F(TPopUpWindowsTest, LaterOneOfTheSameIdTakesThePlace) {
  TNotification reminder = Reminder(u"Lampe");
  PopUps->Show(reminder);
  PopUps->Show(Reminder(u"Uhr"));
  reminder.Caption = u"Lampe, neu";
  PopUps->Show(reminder);
  EXPECT_THAT(PopUps->Windows(), SizeIs(2));
}

class TfrmNotifierPopUpTest : public TPopUpWindowsTest {
 public:
  void DoClick(TObject*, const TGuid& iId) { Clicked.push_back(iId); }
  std::vector<TGuid> Clicked;
};

TEST_F(TfrmNotifierPopUpTest, StaysWhileThePointerRestsOnIt) {
  TfrmNotifierPopUp form(Reminder(u"Lampe"));
  form.Prepare();
  form.PopUp();
  form.EnterMouse();
  form.MakeInvisible();
  EXPECT_TRUE(form.Visible());
  form.LeaveMouse();
  form.MakeInvisible();
  EXPECT_FALSE(form.Visible());
}

TEST_F(TfrmNotifierPopUpTest, LastingOneStaysUntilTheUserClosesIt) {
  TNotification reminder = Reminder(u"Lampe");
  reminder.Position = TWindowPosition::wpDesktopLasting;
  TfrmNotifierPopUp form(reminder);
  form.Prepare();
  form.PopUp();
  form.MakeInvisible();
  EXPECT_TRUE(form.Visible());
  EXPECT_TRUE(form.lblClose.Click());
  EXPECT_FALSE(form.Visible());
}

TEST_F(TfrmNotifierPopUpTest, ClosesUnderThePointerByItsLink) {
  TfrmNotifierPopUp form(Reminder(u"Lampe"));
  form.Prepare();
  form.PopUp();
  form.EnterMouse();
  EXPECT_TRUE(form.lblClose.Click());
  EXPECT_FALSE(form.Visible());
}

TEST_F(TfrmNotifierPopUpTest, ClickOnTheCaptionTellsAndCloses) {
  TNotification reminder = Reminder(u"Lampe");
  reminder.OnClick = TNotifyNotifierCallback::Of<&TfrmNotifierPopUpTest::DoClick>(this);
  TfrmNotifierPopUp form(reminder);
  form.Prepare();
  form.PopUp();
  form.EnterMouse();
  EXPECT_TRUE(form.lblCaption.Click());
  EXPECT_THAT(Clicked, ElementsAre(reminder.Id));
  EXPECT_FALSE(form.Visible());
}

TEST_F(TfrmNotifierPopUpTest, LinkOpensTheBrowser) {
  TFakeOpener opener;
  TfrmNotifierPopUp form(Reminder(u"Lampe"));
  form.Prepare();
  form.PopUp();
  EXPECT_TRUE(form.lblLink.Click());
  EXPECT_THAT(opener.Urls, ElementsAre("https://shop.example/"));
  EXPECT_EQ(form.Link(), u"https://shop.example/");
}

}  // namespace
}  // namespace kk
