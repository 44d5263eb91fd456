#include "apps/cli/TCliRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TCliWorld.h"
#include "TTestCaller.h"
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
    RunWithout([this, iMeanwhile] {
      iMeanwhile();
      World.Loop.Post([this] { World.Console.Interrupt(); });
    });
  }
  /// The same for a function that sees to the interrupt itself.
  void RunWithout(const std::function<void()>& iMeanwhile) {
    World.Loop.Post(iMeanwhile);
    TCliLog log(World.Console);
    TCliRun(World.Context, log, FromUtf8(Data.Path())).Run();
  }
  std::string Now() { return ToUtf8(DateTimeToStr(Clock.Now())); }

  TTestClock Clock;
  TTempFolder Data;
  TCliWorld World;
  std::string Answer;                   ///< what a caller was sent
  std::vector<std::string> WhileAsked;  ///< calls of the list up to then
  std::vector<std::string> Told;        ///< lines up to then
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

TEST_F(TCliRunTest, AReminderThatLeftTheListBeforeItWasLookedAtIsALineToo) {
  World.List().Reminder(World.List().Item(u"Haus", u"Lampe").Id, Clock.Now());
  const TWatchlistReminderInfo first = World.List().ExtractFirst();
  RunWith([&] { World.List().Deliver(first); });
  EXPECT_THAT(World.Console.Printed(),
              ElementsAre("Bereit: 0 Erinnerungen. Strg+C beendet.",
                          Now() + " Fällig: Lampe (Meldungsfenster)", "Wird beendet."));
}

TEST_F(TCliRunTest, AReminderOfAnItemThatHasGoneIsALineWithItsId) {
  const TGuid id = World.List().Reminder(NewGuid(), Clock.Now()).Id;
  RunWith([this] { World.List().DeliverFirst(); });
  EXPECT_THAT(World.Console.Printed(),
              Contains(Now() + " Fällig: " + ToUtf8(GUIDToString(id)) + " (Meldungsfenster)"));
}

TEST_F(TCliRunTest, AReminderThatIsTakenBackIsNoDelivery) {
  World.List().Reminder(World.List().Item(u"Haus", u"Lampe").Id, Clock.Now());
  RunWith([this] { World.List().ExtractFirst(); });
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

TEST_F(TCliRunTest, DeliveriesAreWrittenAlsoBehindAnAnsweredCall) {
  World.List().Reminder(World.List().Item(u"Haus", u"Lampe").Id, Clock.Now());
  World.List().UnsavedReminders = false;
  std::optional<TTestCaller> caller;
  std::function<void()> step = [&] {
    if (!caller->HasEnded()) return World.Loop.Post(step);
    World.List().DeliverFirst();
    World.Loop.Post([this] { World.Loop.Post([this] { World.Console.Interrupt(); }); });
  };
  RunWithout([&] {
    caller.emplace(Data.Path(), std::vector<TString>{u"list"});
    step();
  });
  EXPECT_EQ(caller->Wait(), 0);
  EXPECT_THAT(World.List().Calls, ElementsAre("Save"));
  EXPECT_THAT(World.Console.Printed(), Contains(Now() + " Fällig: Lampe (Meldungsfenster)"));
}

TEST_F(TCliRunTest, ACallThatAsksHoldsUpNeitherLinesNorWrites) {
  World.List().Reminder(World.List().Item(u"Haus", u"Lampe").Id, Clock.Now());
  World.List().Item(u"Haus", u"Uhr");
  World.List().UnsavedReminders = false;
  const THostSocket* line = nullptr;
  std::function<void()> step = [&] {
    std::string bytes;
    line->Receive(bytes);
    Answer += bytes;
    if (Answer.find("\"ask\"") == std::string::npos) return World.Loop.Post(step);
    World.List().DeliverFirst();
    World.Loop.StartTimer(1000, [&] {
      WhileAsked = World.List().Calls;
      Told = World.Console.Printed();
      World.Console.Interrupt();
    });
  };
  THostSocket socket;
  RunWithout([&] {
    socket = THostSocket::Connect(FromUtf8(Data.Path()));
    THostMessage call;
    call.Kind = THostMessage::TKind::Call;
    call.Words = {u"delete", u"Uhr"};
    call.IsInteractive = true;
    size_t sent = 0;
    socket.Send(call.ToLine(), sent);
    line = &socket;
    step();
  });
  EXPECT_THAT(WhileAsked, Contains("Save"));
  EXPECT_THAT(Told, Contains(Now() + " Fällig: Lampe (Meldungsfenster)"));
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
