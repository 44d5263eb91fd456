#include "apps/cli/TCliReminders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "TCliWorld.h"
#include "tests/support/TTestClock.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using TJson = nlohmann::json;

class TCliRemindersTest : public testing::Test {
 protected:
  TCliRemindersTest() { World.Start(); }
  std::string Time(TDateTime iTime) { return ToUtf8(DateTimeToStr(iTime)); }

  TTestClock Clock;
  TCliWorld World;
};

TEST_F(TCliRemindersTest, NothingIsTold) {
  TCliReminders(World.Context).List(false);
  EXPECT_THAT(World.Console.Printed(), ElementsAre("Es sind keine Erinnerungen eingerichtet."));
}

TEST_F(TCliRemindersTest, TheNextComesFirstWithAllThatIsKnown) {
  const TGuid lamp = World.List().Item(u"Haus", u"Lampe").Id;
  const TGuid gone = NewGuid();
  const TDateTime soon = Clock.Now().PlusMs(1000);
  const TDateTime late = Clock.Now().PlusMs(2000);
  World.List().Reminder(lamp, late).SoundFile = u"/ton.wav";
  World.List().Reminder(gone, soon).Types = {};
  TCliReminders(World.Context).List(false);
  EXPECT_THAT(World.Console.Printed(),
              ElementsAre(Time(soon) + "  (nicht mehr in der Beobachtenliste)  " +
                              ToUtf8(GUIDToString(gone)),
                          "    ohne Meldung", Time(late) + "  Lampe  " + ToUtf8(GUIDToString(lamp)),
                          "    Meldungsfenster, Sounddatei /ton.wav"));
  EXPECT_THAT(World.Console.Complained(), IsEmpty());
}

TEST_F(TCliRemindersTest, OverdueOnesAreMarked) {
  World.List().Reminder(World.List().Item(u"Haus", u"Lampe").Id, Clock.Now());
  TCliReminders(World.Context).List(false);
  EXPECT_EQ(World.Console.Printed().at(1), "    Meldungsfenster · überfällig");
  EXPECT_THAT(World.Console.Complained(), ElementsAre(HasSubstr("\"kaufkobolde-cli run\"")));
}

TEST_F(TCliRemindersTest, ProgramsGetJson) {
  const TGuid lamp = World.List().Item(u"Haus", u"Lampe").Id;
  World.List().Reminder(lamp, Clock.Now()).SoundFile = u"/ton.wav";
  World.List().Reminder(NewGuid(), Clock.Now().PlusMs(1000));
  TCliReminders(World.Context).List(true);
  const TJson json = TJson::parse(World.Console.Printed().at(0));
  ASSERT_EQ(json.size(), 2u);
  EXPECT_EQ(json[0]["id"], ToUtf8(GUIDToString(lamp)));
  EXPECT_EQ(json[0]["name"], "Lampe");
  EXPECT_EQ(json[0]["time"], "2026-11-20T18:30:00");
  EXPECT_EQ(json[0]["types"], TJson({"window"}));
  EXPECT_EQ(json[0]["soundFile"], "/ton.wav");
  EXPECT_EQ(json[0]["overdue"], true);
  EXPECT_EQ(json[1]["name"], nullptr);
  EXPECT_EQ(json[1]["soundFile"], nullptr);
  EXPECT_EQ(json[1]["overdue"], false);
}

}  // namespace
}  // namespace kk
