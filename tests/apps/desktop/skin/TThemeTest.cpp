#include "apps/desktop/skin/TTheme.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QStyle>
#include <QStyleFactory>
#include <QToolTip>
#include <QTreeView>
#include <QWidget>
#include <algorithm>
#include <chrono>
#include <memory>

#include "apps/desktop/skin/TColorScheme.h"
#include "apps/desktop/skin/TDrawingColors.h"
#include "tests/support/TServerProcess.h"
#include "tests/support/TSessionBus.h"
#include "tests/support/qt/OffscreenQt.h"

namespace kk {
namespace {

class TThemeTest : public testing::Test {
 protected:
  TThemeTest() {
    NeedQt();
    QApplication::setPalette(QPalette());
  }
  ~TThemeTest() override { QApplication::setPalette(QPalette()); }

  void StartPortal(const std::vector<std::string>& iArguments) {
    FPortal = std::make_unique<TServerProcess>(
        TServerProcess::Python("apps/desktop/skin/servers/settings_portal.py", iArguments),
        FBus.Environment());
    FPortal->WaitForLine("ready");
  }

  TSessionBus FBus;
  std::unique_ptr<TServerProcess> FPortal;
};

// Another asks, and has an answer: what the portal sent before has arrived, too.
void WaitForThePortal(const std::string& iAddress) {
  TColorScheme scheme(iAddress, [](bool) {});
  scheme.Wait(std::chrono::seconds(10));
  for (int i = 0; i < 3; ++i) QApplication::processEvents();
}

bool IsOurDark() {
  return QApplication::palette().color(QPalette::Window) ==
         TTheme::DarkPalette().color(QPalette::Window);
}

TEST_F(TThemeTest, DarkAndLightAreTakenWhateverTheDesktopSays) {
  StartPortal({"1"});
  {
    const TTheme theme(TThemeChoice::tcLight, FBus.Address());
    EXPECT_FALSE(TTheme::IsDark());
  }
  FPortal->Signal(SIGUSR2);
  const TTheme theme(TThemeChoice::tcDark, FBus.Address());
  EXPECT_TRUE(TTheme::IsDark());
  EXPECT_TRUE(IsOurDark());
  EXPECT_EQ(QToolTip::palette().color(QPalette::ToolTipBase),
            TTheme::DarkPalette().color(QPalette::ToolTipBase));
}

TEST_F(TThemeTest, DarkDesktopGivesDarkColoursBeforeTheFirstWindow) {
  StartPortal({"1"});
  const TTheme theme(TThemeChoice::tcSystem, FBus.Address());
  EXPECT_TRUE(CrankUntil(&TTheme::IsDark));  // at once, unless the machine is very busy
  EXPECT_TRUE(IsOurDark());
  EXPECT_NE(FPortal->Output().find("read org.freedesktop.appearance color-scheme"),
            std::string::npos);
}

TEST_F(TThemeTest, WithoutAPreferenceOrWithALightOneTheDesktopsColoursStay) {
  const QColor before = QApplication::palette().color(QPalette::Window);
  for (const char* scheme : {"0", "2", "7"}) {
    StartPortal({scheme});
    const TTheme theme(TThemeChoice::tcSystem, FBus.Address());
    FPortal->WaitForLine("read");
    QApplication::processEvents();
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), before) << scheme;
    FPortal->Stop();
  }
}

TEST_F(TThemeTest, AChangeOfTheSettingShowsAtOnceInTheWindowsThatStand) {
  StartPortal({"0"});
  const TTheme theme(TThemeChoice::tcSystem, FBus.Address());
  FPortal->WaitForLine("read");
  QWidget window;
  window.show();
  FPortal->Signal(SIGUSR1);
  EXPECT_TRUE(CrankUntil(&TTheme::IsDark));
  EXPECT_EQ(window.palette().color(QPalette::Window),
            TTheme::DarkPalette().color(QPalette::Window));
  WaitForThePortal(FBus.Address());
  EXPECT_TRUE(TTheme::IsDark());  // other settings that changed behind it are not taken for it
  FPortal->Signal(SIGUSR2);
  EXPECT_TRUE(CrankUntil([] { return !TTheme::IsDark(); }));
}

TEST_F(TThemeTest, DarkColoursOfThePlatformsThemeAreNotReplaced) {
  QPalette platform = TTheme::DarkPalette();
  platform.setColor(QPalette::Window, QColor("#001020"));
  QApplication::setPalette(platform);
  StartPortal({"1"});
  {
    const TTheme theme(TThemeChoice::tcSystem, FBus.Address());
    FPortal->WaitForLine("read");
    FPortal->Signal(SIGUSR2);
    FPortal->WaitForLine("changed 0");
    FPortal->Signal(SIGUSR1);
    FPortal->WaitForLine("changed 1");
    WaitForThePortal(FBus.Address());
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor("#001020"));
  }
  EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor("#001020"));
}

TEST_F(TThemeTest, TheDesktopsColoursComeBackWithTheEndOfTheTheme) {
  const QColor before = QApplication::palette().color(QPalette::Window);
  for (const auto choice : {TThemeChoice::tcLight, TThemeChoice::tcDark}) {
    { const TTheme theme(choice, FBus.Address()); }
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), before);
  }
}

TEST_F(TThemeTest, AnAnswerOfAnotherKindOrAnErrorChangesNothing) {
  for (const char* way : {"--text", "--refuse"}) {
    StartPortal({way});
    const auto begin = std::chrono::steady_clock::now();
    const TTheme theme(TThemeChoice::tcSystem, FBus.Address());
    FPortal->WaitForLine("read");
    QApplication::processEvents();
    EXPECT_FALSE(TTheme::IsDark()) << way;
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
    FPortal->Stop();
  }
}

TEST_F(TThemeTest, AMuteServiceHoldsTheStartForAMomentOnly) {
  StartPortal({"--mute"});
  const auto begin = std::chrono::steady_clock::now();
  const TTheme theme(TThemeChoice::tcSystem, FBus.Address());
  const auto took = std::chrono::steady_clock::now() - begin;
  EXPECT_GE(took, std::chrono::milliseconds(140));
  EXPECT_LT(took, std::chrono::seconds(2));
  EXPECT_FALSE(TTheme::IsDark());
}

TEST_F(TThemeTest, AFrozenBusHoldsTheStartForAMomentOnly) {
  FBus.Signal(SIGSTOP);
  const auto begin = std::chrono::steady_clock::now();
  {
    const TTheme theme(TThemeChoice::tcSystem, FBus.Address());
    EXPECT_FALSE(TTheme::IsDark());
  }
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
  FBus.Signal(SIGCONT);
}

TEST_F(TThemeTest, WithoutABusOrAServiceThereIsNothingToFollow) {
  {
    const TTheme theme(TThemeChoice::tcSystem, FBus.Address());  // nobody answers on it
    EXPECT_FALSE(TTheme::IsDark());
  }
  {
    const TTheme theme(TThemeChoice::tcSystem, "unix:path=/no/such/socket");
    EXPECT_FALSE(TTheme::IsDark());
  }
  const TTheme theme(TThemeChoice::tcSystem, "no address");
  EXPECT_FALSE(TTheme::IsDark());
}

TEST_F(TThemeTest, TheEndOfTheBusLeavesTheColoursAsTheyAre) {
  StartPortal({"1"});
  const TTheme theme(TThemeChoice::tcSystem, FBus.Address());
  EXPECT_TRUE(CrankUntil(&TTheme::IsDark));
  FPortal->Stop();
  FBus.Stop();
  for (int i = 0; i < 20; ++i) QApplication::processEvents();
  EXPECT_TRUE(TTheme::IsDark());
}

TEST_F(TThemeTest, WithoutAnAddressTheBusOfTheEnvironmentIsAsked) {
  StartPortal({"1"});
  const TTestEnvironment environment(FBus.Environment());
  const TTheme theme(TThemeChoice::tcSystem);
  EXPECT_TRUE(CrankUntil(&TTheme::IsDark));
}

// The strongest contrast to the window's ground along the left edge of the widget's picture.
double EdgeOf(QWidget& ioWidget) {
  const QImage image = ioWidget.grab().toImage();
  const QColor ground = ioWidget.palette().color(QPalette::Window);
  double contrast = 0;
  for (int x = 0; x < 6; ++x)
    contrast = std::max(contrast,
                        TDrawingColors::Contrast(image.pixelColor(x, image.height() / 2), ground));
  return contrast;
}

TEST_F(TThemeTest, EdgesOfEmptyBoxesAreSeenOnTheDarkGround) {
  const TTheme theme(TThemeChoice::tcDark, FBus.Address());
  QCheckBox box;
  QRadioButton button;
  QLineEdit edit;
  for (QWidget* widget : std::initializer_list<QWidget*>{&box, &button, &edit}) {
    widget->resize(100, 30);
    EXPECT_GE(EdgeOf(*widget), 3) << widget->metaObject()->className();
    widget->setEnabled(false);
    EXPECT_LT(EdgeOf(*widget), 3) << widget->metaObject()->className();
  }
}

TEST_F(TThemeTest, EdgesOfEmptyListsAndGaugesAreSeenOnTheDarkGround) {
  const TTheme theme(TThemeChoice::tcDark, FBus.Address());
  QTreeView list;
  QProgressBar gauge;
  for (QWidget* widget : std::initializer_list<QWidget*>{&list, &gauge}) {
    widget->resize(100, 30);
    EXPECT_GE(EdgeOf(*widget), 3) << widget->metaObject()->className();
  }
  list.show();
  QApplication::setActiveWindow(&list);
  list.setFocus();
  QCoreApplication::processEvents();
  ASSERT_TRUE(list.hasFocus());
  EXPECT_GE(EdgeOf(list), 3);
}

TEST_F(TThemeTest, OnALightGroundTheStyleIsFusion) {
  const TTheme theme(TThemeChoice::tcLight, FBus.Address());
  QCheckBox box;
  box.resize(100, 30);
  const QImage ours = box.grab().toImage();
  const std::unique_ptr<QStyle> fusion(QStyleFactory::create(QStringLiteral("fusion")));
  box.setStyle(fusion.get());
  EXPECT_EQ(ours, box.grab().toImage());
}

TEST_F(TThemeTest, TextCanBeReadInBothPalettes) {
  for (const QPalette& palette : {TTheme::LightPalette(), TTheme::DarkPalette()}) {
    const auto contrast = [&](QPalette::ColorRole iText, QPalette::ColorRole iGround) {
      return TDrawingColors::Contrast(palette.color(iText), palette.color(iGround));
    };
    EXPECT_GE(contrast(QPalette::WindowText, QPalette::Window), 7);
    EXPECT_GE(contrast(QPalette::Text, QPalette::Base), 7);
    EXPECT_GE(contrast(QPalette::Text, QPalette::AlternateBase), 7);
    EXPECT_GE(contrast(QPalette::ButtonText, QPalette::Button), 7);
    EXPECT_GE(contrast(QPalette::ToolTipText, QPalette::ToolTipBase), 7);
    EXPECT_GE(contrast(QPalette::HighlightedText, QPalette::Highlight), 4.5);
    EXPECT_GE(contrast(QPalette::Link, QPalette::Base), 4.5);
    EXPECT_GE(contrast(QPalette::Link, QPalette::Window), 4.5);
  }
}

}  // namespace
}  // namespace kk
