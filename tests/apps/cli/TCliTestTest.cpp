#include "apps/cli/TCliTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <thread>

#include "TCliWorld.h"
#include "apps/cli/TCliLog.h"
#include "host/base/Exception.h"
#include "host/base/TInstalled.h"
#include "host/common/PlaySound.h"
#include "host/common/TFileHelper.h"
#include "host/controls/TfrmKKCommonNotifier.h"
#include "host/delivery/TDeliveries.h"
#include "tests/support/TFakeWays.h"
#include "tests/support/TSessionBus.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"
#include "tests/support/TTestIniFile.h"

namespace kk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class TCliTestTest : public testing::Test {
 protected:
  void Set(TStringView iKey, TStringView iValue) {
    File.WriteString(u"Communication", iKey, iValue);
  }
  bool Run(std::initializer_list<TString> iWords) {
    return TCliTest(World.Context).Run(TCliArguments::Parse(std::vector<TString>(iWords)));
  }
  std::string Failure(std::initializer_list<TString> iWords) {
    try {
      return Run(iWords) ? "done" : "given up";
    } catch (const Exception& e) {
      return ToUtf8(e.Message());
    }
  }
  const std::vector<std::string>& Printed() { return World.Console.Printed(); }

  TTempFolder Folder{true};
  TTestIniFile File{Folder.File(u"test.ini")};
  TTestClock Clock;
  TCliWorld World;
  TFakeWays Ways;
};

TEST_F(TCliTestTest, OnlyItsOwnCommandsAreKnown) {
  for (const TCliCommandInfo& command : CliCommands()) {
    EXPECT_EQ(TCliTest::Knows(command), command.Name.find(u"test ") == 0);
  }
}

TEST_F(TCliTestTest, TheSoundOfTheSettingsIsPlayed) {
  Folder.Write(u"ton.wav", "x");
  File.WriteString(u"Watchlist", u"SoundFile", Folder.File(u"ton.wav"));
  EXPECT_TRUE(Run({u"test", u"sound"}));
  EXPECT_THAT(Ways.Calls, ElementsAre("play " + Folder.Path() + "/ton.wav"));
  EXPECT_THAT(Printed(), ElementsAre("Der Ton ist abgespielt: " + Folder.Path() + "/ton.wav"));
}

TEST_F(TCliTestTest, WithoutASettingTheSoundIsTheProgramsOwn) {
  EXPECT_EQ(Failure({u"test", u"sound"}),
            "Die Tondatei gibt es nicht: " + ToUtf8(TFileHelper::GetLocalFileName(u"remind.wav")));
  EXPECT_THAT(Ways.Calls, IsEmpty());
}

TEST_F(TCliTestTest, AnotherSoundMayBeNamed) {
  Folder.Write(u"neu.wav", "x");
  EXPECT_TRUE(Run({u"test", u"sound", u"--sound", Folder.File(u"neu.wav")}));
  EXPECT_THAT(Ways.Calls, ElementsAre("play " + Folder.Path() + "/neu.wav"));
}

TEST_F(TCliTestTest, ASoundThatIsNotPlayedIsToldWithTheReason) {
  Folder.Write(u"neu.wav", "x");
  Ways.PlayError = EACCES;
  EXPECT_EQ(Failure({u"test", u"sound", u"--sound", Folder.File(u"neu.wav")}),
            "Der Ton " + Folder.Path() + "/neu.wav wurde nicht abgespielt: Zugriff verweigert");
  EXPECT_THAT(Printed(), IsEmpty());
}

TEST_F(TCliTestTest, WhatThePlayerLogsIsTheReasonAndIsToldOnce) {
  Folder.Write(u"neu.wav", "x");
  const TInstalled<ISoundPlayer> nobody(&SetSoundPlayer, nullptr);
  TCliLog log(World.Console);
  EXPECT_EQ(Failure({u"test", u"sound", u"--sound", Folder.File(u"neu.wav")}),
            "Es ist keine Tonausgabe eingerichtet");
  EXPECT_THAT(World.Console.Complained(), IsEmpty()) << "who takes the exception tells it";
  EXPECT_TRUE(log.HasErrors());
}

/// With the real ways out, but for a sound that lasts until the test ends it.
class TCliGiveUpTest : public TCliTestTest {
 protected:
  class TLongSound : public ISoundPlayer {
   public:
    bool Play(TStringView) override {
      Begun = true;
      while (!Ends) std::this_thread::yield();
      errno = ECANCELED;
      return false;
    }
    std::atomic<bool> Begun = false;
    std::atomic<bool> Ends = false;
  };

  TCliGiveUpTest() {
    Folder.Write(u"ton.wav", "x");
    World.Context.Deliveries = &Deliveries;
  }
  /// Ctrl+C while the sound is played, which ends some turns of the loop later.
  std::string GiveUp() {
    World.Loop.Post([this] { Step(); });
    return Failure({u"test", u"sound", u"--sound", Folder.File(u"ton.wav")});
  }
  bool AreStopped() {
    try {
      Notifier().Display({});
    } catch (const Exception&) {
      return true;
    }
    return false;
  }

  TTestEnvironment Environment{
      {{"DBUS_SESSION_BUS_ADDRESS", ""}, {"XDG_RUNTIME_DIR", Folder.Path()}}};
  TDeliveries Deliveries{[](const TNotification&) {}};
  TLongSound Sound;
  TInstalled<ISoundPlayer> LongInstalled{&SetSoundPlayer, &Sound};

 private:
  void Step() {
    if (Sound.Begun && FTurns++ == 0) World.Console.Interrupt();
    if (FTurns > 5) {
      Sound.Ends = true;
    } else {
      World.Loop.Post([this] { Step(); });
    }
  }
  int FTurns = 0;
};

TEST_F(TCliGiveUpTest, CtrlCStopsTheWaysOutOfAProgramThatEndsAnyway) {
  EXPECT_THAT(GiveUp(), HasSubstr("ton.wav wurde nicht abgespielt"));
  EXPECT_TRUE(AreStopped());
}

TEST_F(TCliGiveUpTest, AProgramThatStaysKeepsItsWaysOut) {
  World.Show = [](const TForm&) {};
  World.Start();
  EXPECT_THAT(GiveUp(), HasSubstr("ton.wav wurde nicht abgespielt"));
  EXPECT_FALSE(AreStopped());
}

TEST_F(TCliTestTest, AMailGoesToTheConfirmedAddress) {
  Set(u"EMail", u"a@b.example");
  Set(u"EMailConfirmed", u"1");
  EXPECT_TRUE(Run({u"test", u"email"}));
  EXPECT_THAT(Ways.Calls, ElementsAre("mail a@b.example: Kaufkobolde 7.0 - Test"));
  EXPECT_EQ(Ways.Mail.SenderAddress, u"a@b.example");
  EXPECT_THAT(ToUtf8(Ways.Mail.Body), HasSubstr("mit Kaufkobolde 7.0"));
  EXPECT_THAT(Printed(), ElementsAre("Der Postausgang hat die E-Mail an a@b.example angenommen."));
}

TEST_F(TCliTestTest, AMailToAnAddressThatIsNotConfirmedGoesOutAndSaysSo) {
  Set(u"EMail", u"a@b.example");
  EXPECT_TRUE(Run({u"test", u"email"}));
  EXPECT_EQ(Ways.Calls.size(), 1u);
  EXPECT_EQ(Printed().back(),
            "Die Adresse ist noch nicht bestätigt; vorher gehen keine Erinnerungen dorthin. "
            "\"kaufkobolde-cli settings confirm-email\" schickt einen Code.");
}

TEST_F(TCliTestTest, AMailThatFailsIsToldWithTheReason) {
  Set(u"EMail", u"a@b.example");
  Ways.Failure = u"Der Server schweigt";
  EXPECT_EQ(Failure({u"test", u"email"}), "Die E-Mail wurde nicht verschickt: Der Server schweigt");
  EXPECT_THAT(Printed(), IsEmpty());
}

TEST_F(TCliTestTest, WithoutAnAddressOrANumberTheWayToOneIsTold) {
  EXPECT_EQ(Failure({u"test", u"email"}),
            "Es ist noch keine E-Mail-Adresse eingestellt. Das geht mit \"kaufkobolde-cli settings "
            "set Communication EMail ...\".");
  EXPECT_EQ(Failure({u"test", u"sms", u"--yes"}),
            "Es ist noch keine Rufnummer eingestellt. Das geht mit \"kaufkobolde-cli settings set "
            "Communication SMS ...\".");
  EXPECT_THAT(Ways.Calls, IsEmpty());
}

TEST_F(TCliTestTest, AnSmsIsAskedForBecauseItMayCostMoney) {
  Set(u"SMS", u"+49170");
  World.Console.Answer({u"2"});
  EXPECT_EQ(Failure({u"test", u"sms"}), "given up");
  EXPECT_THAT(World.Console.Complained(),
              Contains("Jetzt eine SMS an +49170 schicken? Das kann Geld kosten."));
  EXPECT_EQ(World.Console.Complained().back(),
            "Es wurde keine SMS verschickt. Mit --yes wird nicht gefragt.");
  EXPECT_THAT(Ways.Calls, IsEmpty());
  World.Console.Answer({u"1"});
  EXPECT_TRUE(Run({u"test", u"sms"}));
  EXPECT_THAT(Ways.Calls, ElementsAre("sms +49170: Kaufkobolde 7.0 - Test at 2026-11-20T18:30:00"));
}

TEST_F(TCliTestTest, WhereNobodyCanAnswerNoSmsIsSent) {
  Set(u"SMS", u"+49170");
  EXPECT_EQ(Failure({u"test", u"sms"}), "given up");
  EXPECT_THAT(Ways.Calls, IsEmpty());
}

TEST_F(TCliTestTest, WithYesAnSmsIsSentAndItsFailureTold) {
  Set(u"SMS", u"+49170");
  World.Forms.SetYesToAll(true);
  EXPECT_TRUE(Run({u"test", u"sms", u"--yes"}));
  EXPECT_THAT(Printed(), ElementsAre("Der SMS-Dienst hat die SMS an +49170 angenommen."));
  Ways.Failure = u"Kein Guthaben";
  EXPECT_EQ(Failure({u"test", u"sms", u"--yes"}),
            "Die SMS wurde nicht verschickt: (4) Kein Guthaben");
}

TEST_F(TCliTestTest, AnAppointmentIsEnteredAheadAndDeletedAgain) {
  EXPECT_TRUE(Run({u"test", u"calendar"}));
  EXPECT_THAT(Ways.Calls,
              ElementsAre("enter Kaufkobolde 7.0 at 2026-11-20T18:45:00 01", "delete id-1"));
  EXPECT_EQ(Printed().back(), "Und wieder gelöscht. Der Kalender funktioniert.");
  EXPECT_THAT(Printed().front(), HasSubstr("Eingetragen für "));
}

TEST_F(TCliTestTest, AnAppointmentThatStaysIsTold) {
  Ways.Deletes = false;
  EXPECT_EQ(Failure({u"test", u"calendar"}),
            "Der Termin ließ sich nicht wieder löschen: Er ist nicht mehr da. Bitte sehen Sie im "
            "Kalender nach.");
  Ways.DeleteFailure = u"Der Kalender schweigt";
  EXPECT_EQ(Failure({u"test", u"calendar"}),
            "Der Termin ließ sich nicht wieder löschen: Der Kalender schweigt. Bitte sehen Sie im "
            "Kalender nach.");
}

TEST_F(TCliTestTest, ACalendarThatRefusesIsTold) {
  Ways.Failure = u"Kein Kalender";
  EXPECT_EQ(Failure({u"test", u"calendar"}), "Kein Kalender");
}

TEST_F(TCliTestTest, ANotificationIsWaitedForUntilItIsShown) {
  Set(u"NotifierPosition", u"1");
  Ways.ByDesktop = true;
  EXPECT_TRUE(Run({u"test", u"notifier"}));
  EXPECT_THAT(Ways.Calls, ElementsAre("show 1 Kaufkobolde 7.0 - Test"));
  EXPECT_THAT(Printed(), ElementsAre("Der Desktop hat die Benachrichtigung gezeigt."));
}

TEST_F(TCliTestTest, ANotificationThatTheDesktopDoesNotShowIsTold) {
  Ways.ByDesktop = false;
  EXPECT_TRUE(Run({u"test", u"notifier"}));
  EXPECT_THAT(Ways.Calls, ElementsAre("show 0 Kaufkobolde 7.0 - Test"));
  EXPECT_THAT(Printed(),
              ElementsAre("Der Desktop zeigt keine Benachrichtigungen; sie steht im Terminal."));
}

TEST_F(TCliTestTest, AnyOtherPositionIsTheTerminal) {
  for (const TStringView position : {u"2", u"7", u"-1"}) {
    Set(u"NotifierPosition", position);
    EXPECT_TRUE(Run({u"test", u"notifier"}));
    EXPECT_THAT(Printed(), Contains(HasSubstr("Erinnerung: Kaufkobolde 7.0 - Test")));
    EXPECT_EQ(Printed().back(),
              "Das Meldungsfenster ist im Terminal gezeigt (NotifierPosition 2).");
  }
  EXPECT_THAT(Ways.Calls, IsEmpty());
}

TEST_F(TCliTestTest, TheWaitForANotificationCanBeGivenUp) {
  World.Console.Interrupt();
  EXPECT_EQ(Failure({u"test", u"notifier"}), "Abgebrochen.");
  Ways.Failure = u"Kein Bus";
  EXPECT_EQ(Failure({u"test", u"notifier"}), "Kein Bus");
}

}  // namespace
}  // namespace kk
