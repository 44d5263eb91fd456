#include "apps/desktop/skin/TToolbarBinder.h"

#include <gmock/gmock.h>

#include "TShownWindow.h"
#include "apps/desktop/skin/TImageBinder.h"
#include "apps/desktop/skin/TStatusBarBinder.h"
#include "host/controls/TGauge.h"

namespace kk {
namespace {

class TRowsWindow : public TShownWindow {
 public:
  TRowsWindow() {
    const TNotifyEvent event = TNotifyEvent::Of<&TRowsWindow::Clicked>(this);
    Search.SetOnClick(event);
    Picture.SetOnClick(event);
    Status.AddPanel(u"links");
    Status.AddPanel(u"rechts");
    Status.SetPanelControl(0, &Gauge);
    Gauge.SetVisible(false);
    ShowSkin();
  }
  std::vector<QString> StatusTexts() {
    std::vector<QString> texts;
    for (QLabel* label : WidgetOf<QFrame>(Status).findChildren<QLabel*>()) {
      if (label->isVisible()) texts.push_back(label->text());
    }
    return texts;
  }

  TToolbar Toolbar{this, u"tlbrNavigation"};
  TToolButton Search{&Toolbar, u"btnSearch", u"Suchen"};
  TImage Picture{this, u"img", {u"SOURCE_PAGE"}};
  TStatusBar Status{this, u"sttsbar"};
  TGauge Gauge{&Status, u"gg"};
  int Clicks = 0;

 private:
  void Clicked(TObject*) { ++Clicks; }
};

TEST(TToolbarBinder, ShowsImageAboveCaptionAndWhichIsSelected) {
  TRowsWindow window;
  auto& button = window.WidgetOf<QToolButton>(window.Search);
  EXPECT_EQ(button.text(), QStringLiteral("Suchen"));
  EXPECT_EQ(button.toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
  EXPECT_FALSE(button.isChecked());
  window.Search.SetImages({u"SEARCHTOOLBARBUTTONIMAGE"}, {u"SEARCHTOOLBARBUTTONIMAGESELECTED"});
  window.Search.SetHint(u"Findet Angebote");
  window.Search.SetSelected(true);
  window.Turn();
  EXPECT_FALSE(button.icon().isNull());
  EXPECT_TRUE(button.isChecked());
  EXPECT_TRUE(button.toolTip().contains(QStringLiteral("Findet Angebote")));
}

TEST(TToolbarBinder, ClicksAndLeavesItToTheLogicWhatIsSelected) {
  TRowsWindow window;
  auto& button = window.WidgetOf<QToolButton>(window.Search);
  button.click();
  window.Turn();
  EXPECT_EQ(window.Clicks, 1);
  EXPECT_FALSE(button.isChecked());
  window.Toolbar.SetEnabled(false);
  window.Turn();
  button.click();
  EXPECT_EQ(window.Clicks, 1);
}

TEST(TToolbarBinder, KeepsTheOrderOfItsButtons) {
  TRowsWindow window;
  TToolButton more(&window.Toolbar, u"btnMore", u"Beobachten");
  window.Turn();
  EXPECT_GT(window.WidgetOf<QToolButton>(more).x(),
            window.WidgetOf<QToolButton>(window.Search).x());
}

TEST(TImageBinder, ShowsThePictureAndClicks) {
  TRowsWindow window;
  auto& image = window.WidgetOf<QToolButton>(window.Picture);
  EXPECT_FALSE(image.icon().isNull());
  EXPECT_EQ(image.focusPolicy(), Qt::NoFocus);
  image.click();
  EXPECT_EQ(window.Clicks, 1);
}

TEST(TStatusBarBinder, ShowsTextsOrTheControlThatFillsAPanel) {
  TRowsWindow window;
  EXPECT_THAT(window.StatusTexts(), testing::ElementsAre(u"links", u"rechts"));
  QWidget& gauge = window.WidgetOf<QWidget>(window.Gauge);
  EXPECT_FALSE(gauge.isVisible());
  window.Gauge.SetVisible(true);
  window.Status.SetPanelText(1, u"fertig");
  window.Turn();
  EXPECT_TRUE(gauge.isVisible());
  EXPECT_THAT(window.StatusTexts(), testing::ElementsAre(u"fertig"));
  window.Gauge.SetVisible(false);
  window.Status.SetPanelControl(0, nullptr);
  window.Turn();
  EXPECT_THAT(window.StatusTexts(), testing::ElementsAre(u"links", u"fertig"));
}

TEST(TStatusBarBinder, StaysAsHighWhenAControlComesIntoAPanelAndGoes) {
  TRowsWindow window;
  const QWidget& bar = window.WidgetOf<QFrame>(window.Status);
  const QRect before = bar.geometry();
  window.Gauge.SetText(u"3 Artikel");
  window.Gauge.SetVisible(true);
  window.Turn();
  EXPECT_TRUE(window.WidgetOf<QWidget>(window.Gauge).isVisible());
  EXPECT_GT(window.WidgetOf<QWidget>(window.Gauge).height(), bar.fontMetrics().height());
  EXPECT_EQ(bar.geometry(), before);
  EXPECT_EQ(bar.sizeHint().height(), before.height());
}

}  // namespace
}  // namespace kk
