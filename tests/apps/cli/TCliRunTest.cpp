#include "apps/cli/TCliRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TCliWorld.h"
#include "apps/cli/TCliPopUps.h"
#include "host/controls/TLabel.h"
#include "host/controls/TfrmMSNPopUpBase.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"

namespace kk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class TCliRunTest : public testing::Test {
 protected:
  TCliRunTest() { World.Start(); }
  /// Runs until the function, called in a later turn, has interrupted.
  void RunWith(const std::function<void()>& iMeanwhile) {
    World.Loop.Post([this, iMeanwhile] {
      iMeanwhile();
      World.Loop.Post([this] { World.Console.Interrupt(); });
    });
    TCliLog log(World.Console);
    TCliRun(World.Context, log, FromUtf8(Data.Path())).Run();
  }
  std::string Now() { return ToUtf8(DateTimeToStr(Clock.Now())); }

  TTestClock Clock;
  TTempFolder Data;
  TCliWorld World;
};

TEST_F(TCliRunTest, TellsWhatStandsAndStaysUntilTheInterrupt) {
  World.List().Reminder(World.List().Item(u"Haus", u"Uhr").Id, Clock.Now().PlusMs(9000));
  World.List().Reminder(World.List().Item(u"Haus", u"Lampe").Id, Clock.Now().PlusMs(5000));
  RunWith([] {});
  EXPECT_THAT(
      World.Console.Printed(),
      ElementsAre("Bereit: 2 Erinnerungen. Strg+C beendet.",
                  "Die nächste: Lampe am " + ToUtf8(DateTimeToStr(Clock.Now().PlusMs(5000))) +
                      " (Meldungsfenster)",
                  "Wird beendet."));
}

TEST_F(TCliRunTest, EachReminderThatCameDueIsALine) {
  World.List().Reminder(World.List().Item(u"Haus", u"Lampe").Id, Clock.Now().PlusMs(1000));
  World.List().Reminder(NewGuid(), Clock.Now().PlusMs(9000));
  RunWith([this] {
    Clock.Advance(1000);
    World.List().DeliverFirst();
  });
  EXPECT_THAT(World.Console.Printed(), Contains(Now() + " Fällig: Lampe (Meldungsfenster)"));
  EXPECT_THAT(World.Console.Complained(),
              ElementsAre(Now() + " Watchlist-Reminder: Melde Erinnerung"));
}

TEST_F(TCliRunTest, AReminderThatIsTakenBackIsNoDelivery) {
  World.List().Reminder(World.List().Item(u"Haus", u"Lampe").Id, Clock.Now().PlusMs(1000));
  RunWith([this] { World.List().DeliverFirst(); });
  EXPECT_THAT(World.Console.Printed(), Not(Contains(HasSubstr("Fällig"))));
}

TEST_F(TCliRunTest, OneOfTwoEqualRemindersIsOneLine) {
  const TGuid id = World.List().Item(u"Haus", u"Lampe").Id;
  World.List().Reminder(id, Clock.Now());
  World.List().Reminder(id, Clock.Now());
  RunWith([this] { World.List().DeliverFirst(); });
  EXPECT_EQ(std::ranges::count(World.Console.Printed(), Now() + " Fällig: Lampe (Meldungsfenster)"),
            1);
}

TEST_F(TCliRunTest, TheFileIsWrittenSoonAfterADelivery) {
  World.List().Reminder(World.List().Item(u"Haus", u"Lampe").Id, Clock.Now());
  World.List().UnsavedReminders = false;
  RunWith([this] {
    EXPECT_THAT(World.List().Calls, IsEmpty()) << "nothing has changed";
    World.List().DeliverFirst();
  });
  EXPECT_THAT(World.List().Calls, ElementsAre("Save"));
}

TEST_F(TCliRunTest, ManyDeliveriesAreOneWrite) {
  for (int i = 0; i < 20; ++i) World.List().Reminder(NewGuid(), Clock.Now());
  RunWith([this] {
    for (int i = 0; i < 10; ++i) World.List().DeliverFirst();
    World.Loop.Post([this] {
      for (int i = 0; i < 10; ++i) World.List().DeliverFirst();
    });
  });
  EXPECT_THAT(World.List().Calls, ElementsAre("Save"));
}

class TTestPopUp : public TfrmMSNPopUpBase {
 public:
  TTestPopUp() : TfrmMSNPopUpBase(nullptr, u"TTestPopUp") {}
  TString Link() const override { return u"http://shop.example/lampe"; }

  TPanel pnlTexts{this, u"pnlTexts"};
  TLabel lblCaption{&pnlTexts, u"lblCaption", u"Lampe\u001B[2J"};
  TLabel lblMessage{this, u"lblMessage", u"Noch eine\r\nStunde"};
  TLabel lblOpenLink{this, u"lblOpenLink", u"Link in Browser öffnen"};
};

TEST(TCliPopUps, APopUpIsPrintedWithItsLink) {
  TTestMainLoop loop;
  TTestClock clock;
  TFakeConsole console;
  TCliPopUps(console).Show(TTestPopUp());
  EXPECT_THAT(console.Printed(),
              ElementsAre(ToUtf8(DateTimeToStr(clock.Now())) + " Erinnerung: Lampe",
                          "    Noch eine", "    Stunde", "    http://shop.example/lampe"));
}

TEST(TCliPopUps, AWindowOfAnotherKindHasNoLink) {
  TTestMainLoop loop;
  TFakeConsole console;
  TCliPopUps(console).Show(TForm(nullptr, u"TForm"));
  EXPECT_THAT(console.Printed(), ElementsAre(HasSubstr(" Erinnerung: ")));
}

TEST(TCliPopUps, ANotificationIsPrintedTheSameWay) {
  TTestClock clock;
  TFakeConsole console;
  TNotification notification;
  notification.Caption = u"Lampe";
  notification.Link = u"http://shop.example/lampe";
  TCliPopUps(console).Show(notification);
  EXPECT_THAT(console.Printed(),
              ElementsAre(ToUtf8(DateTimeToStr(clock.Now())) + " Erinnerung: Lampe",
                          "    http://shop.example/lampe"));
}

}  // namespace
}  // namespace kk
