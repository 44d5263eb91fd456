#include "host/controls/TStatusBar.h"

#include <gtest/gtest.h>

#include "ControlsFixture.h"
#include "host/base/Exception.h"
#include "host/controls/TGauge.h"

namespace kk {
namespace {

TEST(TStatusBar, ShowsItsPanelsSideBySide) {
  TStatusBar bar(nullptr, u"stsbr");
  EXPECT_TRUE(bar.Panels().empty());
  bar.AddPanel(u"Zeitpunkt: ");
  bar.AddPanel();
  bar.SetPanelText(1, u"morgen");
  EXPECT_EQ(bar.Panels(), (std::vector<TString>{u"Zeitpunkt: ", u"morgen"}));
  EXPECT_EQ(bar.PanelText(1), u"morgen");
  EXPECT_FALSE(bar.AcceptsFocus());
}

TEST(TStatusBar, APanelThatIsNotThereRaises) {
  TStatusBar bar(nullptr);
  bar.AddPanel();
  EXPECT_THROW(bar.PanelText(1), EListError);
  EXPECT_THROW(bar.SetPanelText(1, u"x"), EListError);
  EXPECT_THROW(bar.SetPanelText(-1, u"x"), EListError);
}

TEST(TStatusBar, TellsTheSkinOnlyWhatChanges) {
  TSkinRecorder skin;
  TShownForm form;
  TStatusBar bar(&form, u"stsbr");
  form.SetObserver(&skin);
  bar.AddPanel(u"a");
  EXPECT_EQ(skin.Take(), TNotes{"changed stsbr"});
  bar.SetPanelText(0, u"b");
  EXPECT_EQ(skin.Take(), TNotes{"changed stsbr"});
  bar.SetPanelText(0, u"b");
  EXPECT_EQ(skin.Take(), TNotes{});
  form.SetObserver(nullptr);
}

TEST(TStatusBar, AControlCanFillAPanel) {
  TSkinRecorder skin;
  TStatusBar bar(nullptr, u"stsbr");
  bar.AddPanel();
  bar.AddPanel();
  TGauge gauge(&bar, u"gauge");
  bar.SetObserver(&skin);
  bar.SetPanelControl(1, &gauge);
  EXPECT_EQ(skin.Take(), TNotes{"changed stsbr"});
  EXPECT_EQ(bar.PanelControl(1), &gauge);
  EXPECT_EQ(bar.PanelControl(0), nullptr);
  EXPECT_THROW(bar.PanelControl(2), EListError);
  EXPECT_THROW(bar.SetPanelControl(2, nullptr), EListError);
  bar.Invalidate();
  EXPECT_EQ(skin.Take(), TNotes{"changed stsbr"});
  bar.SetObserver(nullptr);
}

}  // namespace
}  // namespace kk
