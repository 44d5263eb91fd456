#include "apps/cli/TCliApplication.h"

#include <gtest/gtest.h>

#include "TCliWorld.h"
#include "host/base/Exception.h"

namespace kk {
namespace {

struct TTestPopUp : public TForm {
  explicit TTestPopUp(bool& oGone) : TForm(nullptr, u"TTestPopUp"), Gone(oGone) {}
  ~TTestPopUp() override { Gone = true; }
  bool& Gone;
};

TEST(TCliApplication, AHostThatComesAndGoesDeliversNoReminders) {
  TCliWorld world;
  world.Start();
  EXPECT_FALSE(world.Plugins.DeliversReminders());
  EXPECT_FALSE(Supports<IReminderHost>(world.List().Host())->DeliversReminders());
  bool gone = false;
  TTestPopUp popUp(gone);
  EXPECT_FALSE(world.List().Host()->ShowNotificationWindow(&popUp)) << "it stays the caller's";
}

TEST(TCliApplication, AHostThatDeliversTakesPopUpsOver) {
  TCliWorld world;
  bool gone = false;
  int shown = 0;
  world.Show = [&](const TForm& iForm) {
    EXPECT_EQ(iForm.Name(), u"TTestPopUp");
    EXPECT_FALSE(gone);
    ++shown;
  };
  world.Start();
  EXPECT_TRUE(world.Plugins.DeliversReminders());
  EXPECT_TRUE(Supports<IReminderHost>(world.List().Host())->DeliversReminders());
  EXPECT_TRUE(
      world.List().Host()->ShowNotificationWindow(std::make_unique<TTestPopUp>(gone).release()));
  EXPECT_TRUE(gone);
  EXPECT_FALSE(world.List().Host()->ShowNotificationWindow(nullptr));
  EXPECT_EQ(shown, 1);
}

TEST(TCliApplication, APopUpThatCantBeShownStaysTheCallers) {
  TCliWorld world;
  world.Show = [](const TForm&) { throw Exception(u"kein Terminal"); };
  world.Start();
  bool gone = false;
  TTestPopUp popUp(gone);
  EXPECT_THROW(world.List().Host()->ShowNotificationWindow(&popUp), Exception);
  EXPECT_FALSE(gone);
}

}  // namespace
}  // namespace kk
