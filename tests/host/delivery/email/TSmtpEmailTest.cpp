#include "host/delivery/email/TSmtpEmail.h"

#include <filesystem>

#include "TMailWorld.h"
#include "host/base/Exception.h"
#include "host/common/TQueueMainLoop.h"
#include "host/controls/TfrmKKCommonWait.h"
#include "tests/support/TFaultyFileLayer.h"
#include "tests/support/TScriptedFormHost.h"

namespace kk {
namespace {

using enum TSmtpOutcome;
using testing::EndsWith;

class TSmtpEmailTest : public TMailWorld {
 protected:
  TSmtpEmailTest() : FLoopBefore(SetMainLoop(&FLoop)) {}
  ~TSmtpEmailTest() override { SetMainLoop(FLoopBefore); }

  size_t Kept() const {
    size_t count = 0;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(FFolder.Path() + "/out", error)) {
      count += entry.path().extension() == ".mail" ? 1 : 0;
    }
    return count;
  }
  /// Sends on a thread of its own, as the reminders do.
  bool SendElsewhere(TSmtpEmail& ioEmail, const TEmail& iMail = Mail()) {
    bool sent = false;
    std::thread([&] { sent = ioEmail.Send(iMail, FError); }).join();
    return sent;
  }
  static TMailOutbox::TSend Answers(TSmtpResult iResult) {
    return [iResult](const TMailMessage&, std::stop_token) { return iResult; };
  }
  /// A server that answers nothing until the stop.
  TMailOutbox::TSend Hangs() {
    return [this](const TMailMessage&, std::stop_token stop) {
      FHangs = true;
      EXPECT_TRUE(Eventually([&] { return stop.stop_requested(); }));
      return TSmtpResult{soCancelled, u"Abgebrochen"};
    };
  }

  TQueueMainLoop FLoop;
  TMainLoop* FLoopBefore;
  TScriptedFormHost FForms;
  TMailOutbox FOutbox{FFolder.File(u"out")};
  TString FError = u"old";
  std::atomic<bool> FHangs{false};
};

TEST_F(TSmtpEmailTest, AServerThatTakesTheMailMakesItTrue) {
  TMailServer server;
  SetServer(server.Port());
  TSmtpEmail email(&FOutbox);
  EXPECT_TRUE(SendElsewhere(email));
  EXPECT_EQ(FError, u"");
  EXPECT_EQ(server.WaitForMessage()["subject"], "Erinnerung");
  EXPECT_EQ(Kept(), 0u);
}

TEST_F(TSmtpEmailTest, IsReachedThroughTheDoorOfTheHost) {
  TMailServer server;
  SetServer(server.Port());
  TSmtpEmail email(nullptr);
  IEmailSender* const before = SetEmailSender(&email);
  EXPECT_TRUE(
      TKKCommonEmail::Send(u"S", u"B", u" to@example.org ", u"from@example.org", u"N", FError));
  SetEmailSender(before);
  EXPECT_EQ(server.WaitForMessage()["recipients"][0], "to@example.org");
}

TEST_F(TSmtpEmailTest, OnTheMainThreadTheLoopGoesOnBehindTheWindow) {
  TMailServer server;
  SetServer(server.Port());
  TSmtpEmail email(&FOutbox);
  bool ran = false;
  FLoop.Post([&] { ran = true; });
  FForms.Expect<TfrmKKCommonWait>([](TfrmKKCommonWait& form) {
    EXPECT_EQ(form.lblText.Caption(), u"Die E-Mail wird verschickt...");
  });
  EXPECT_TRUE(email.Send(Mail(), FError));
  EXPECT_TRUE(ran);
}

TEST_F(TSmtpEmailTest, AbbrechenEndsItAtASilentServerAndKeepsNothing) {
  TMailServer server({"--hang", "DOT"});
  SetServer(server.Port());
  TSmtpEmail email(&FOutbox);
  FForms.Expect<TfrmKKCommonWait>([&](TfrmKKCommonWait& form) {
    server.WaitFor("hangs");
    EXPECT_TRUE(form.btnCancel.Click());
  });
  EXPECT_FALSE(email.Send(Mail(), FError));
  EXPECT_EQ(FError, u"Abgebrochen");
  EXPECT_EQ(Kept(), 0u);
}

TEST_F(TSmtpEmailTest, ARefusalForNowGoesToTheOutboxAndTheTextTellsWhenItIsTriedAgain) {
  TMailServer server({"--refuse", "RCPT:450 4.2.1 Mailbox busy"});
  SetServer(server.Port());
  TSmtpEmail email(&FOutbox);
  EXPECT_FALSE(SendElsewhere(email));
  EXPECT_EQ(
      FError,
      u"Der Mailserver nimmt die E-Mail zurzeit nicht an (450 4.2.1 Mailbox busy). Die E-Mail "
      u"liegt im Postausgang und wird beim nächsten Start des Programms erneut verschickt");
  EXPECT_EQ(Kept(), 1u);
  FOutbox.Start();
  EXPECT_FALSE(SendElsewhere(email));
  EXPECT_EQ(
      FError,
      u"Der Mailserver nimmt die E-Mail zurzeit nicht an (450 4.2.1 Mailbox busy). Die E-Mail "
      u"liegt im Postausgang und wird in 5 Sekunden erneut verschickt, bei Misserfolg 24 "
      u"Stunden lang immer wieder");
  EXPECT_EQ(Kept(), 2u);
}

TEST_F(TSmtpEmailTest, TheOutboxGetsTheMessageThatTheServerHasSeen) {
  TMailServer server({"--refuse", "DOT:451 4.3.0 Try later"});
  SetServer(server.Port());
  TSmtpEmail email(&FOutbox);
  EXPECT_FALSE(SendElsewhere(email));
  const std::string id = server.WaitForMessage()["id"];
  EXPECT_THAT(FLog.Lines(), testing::Contains(testing::HasSubstr("(Message-ID " + id + ")")));
}

TEST_F(TSmtpEmailTest, WithoutAnOutboxARefusalForNowIsJustThat) {
  TSmtpEmail email(nullptr, Answers({soForNow, u"später"}));
  EXPECT_FALSE(SendElsewhere(email));
  EXPECT_EQ(FError, u"später");
}

TEST_F(TSmtpEmailTest, SendNowKeepsNothing) {
  TSmtpEmail email(&FOutbox, Answers({soForNow, u"später"}));
  EXPECT_FALSE(email.SendNow(Mail(), FError));
  EXPECT_EQ(FError, u"später");
  EXPECT_EQ(Kept(), 0u);
  TSmtpEmail good(&FOutbox, Answers({soSent, {}}));
  EXPECT_TRUE(good.SendNow(Mail(), FError));
  EXPECT_EQ(FError, u"");
}

TEST_F(TSmtpEmailTest, ARefusalForGoodIsNotKept) {
  TSmtpEmail email(&FOutbox, Answers({soForGood, u"niemals"}));
  EXPECT_FALSE(SendElsewhere(email));
  EXPECT_EQ(FError, u"niemals");
  EXPECT_EQ(Kept(), 0u);
}

TEST_F(TSmtpEmailTest, WhatTheWayRaisesIsAFailureForNow) {
  TSmtpEmail email(&FOutbox, [](const TMailMessage&, std::stop_token) -> TSmtpResult {
    throw Exception(u"kaputt");
  });
  EXPECT_FALSE(SendElsewhere(email));
  EXPECT_EQ(FError.substr(0, 8), u"kaputt. ");
  EXPECT_EQ(Kept(), 1u);
}

TEST_F(TSmtpEmailTest, TwoAddressesAreRefusedBeforeAnythingIsSentOrKept) {
  TMailServer server;
  SetServer(server.Port());
  TSmtpEmail email(&FOutbox);
  TEmail mail = Mail();
  mail.Recipient = u"a@example.org, b@example.org";
  EXPECT_FALSE(SendElsewhere(email, mail));
  EXPECT_EQ(FError,
            u"Die Adresse des Empfängers kann nicht verwendet werden: \"a@example.org, "
            u"b@example.org\" ist nicht eine einzelne, gültige E-Mail-Adresse");
  EXPECT_EQ(Kept(), 0u);
  EXPECT_TRUE(server.All("command").empty());
}

TEST_F(TSmtpEmailTest, WithoutASetUpTheTextSaysSo) {
  TSmtpEmail email(&FOutbox);
  EXPECT_FALSE(SendElsewhere(email));
  EXPECT_EQ(FError, u"Es ist kein Postausgang eingerichtet: Die Einstellung SmtpUrl ist leer");
  EXPECT_EQ(Kept(), 0u);
}

TEST_F(TSmtpEmailTest, AnOutboxThatCanNotTakeItIsToldOfBesideTheReason) {
  TSmtpEmail email(&FOutbox, Answers({soForNow, u"später"}));
  TFaultyFileLayer layer;
  layer.FailAll("write", ENOSPC);
  EXPECT_FALSE(SendElsewhere(email));
  EXPECT_EQ(FError.substr(0, 65),
            u"später. Sie konnte auch nicht in den Postausgang gelegt werden: D");
  EXPECT_THAT(ToUtf8(FError), EndsWith("Der Datenträger ist voll"));
}

TEST_F(TSmtpEmailTest, AStopEndsASendAtASilentServerWithinASecondAndKeepsTheMail) {
  TMailServer server({"--hang", "DOT"});
  SetServer(server.Port());
  FOutbox.Start();
  TSmtpEmail email(&FOutbox);
  bool sent = true;
  std::jthread sender([&] { sent = email.Send(Mail(), FError); });
  server.WaitFor("hangs");
  EXPECT_LT(MsOf([&] {
              email.Stop();
              sender.join();
            }),
            1000);
  EXPECT_FALSE(sent);
  EXPECT_EQ(FError,
            u"Abgebrochen, das Programm wird beendet. Die E-Mail liegt im Postausgang und wird "
            u"beim nächsten Start des Programms erneut verschickt");
  EXPECT_EQ(Kept(), 1u);
}

TEST_F(TSmtpEmailTest, AStopFromAnotherThreadEndsTheWindowOnTheMainThread) {
  TSmtpEmail email(nullptr, Hangs());
  std::jthread stopper([&] {
    EXPECT_TRUE(Eventually([&] { return FHangs.load(); }));
    email.Stop();
  });
  EXPECT_FALSE(email.SendNow(Mail(), FError));
  stopper.join();
  EXPECT_EQ(FError, u"Abgebrochen, das Programm wird beendet");
}

TEST_F(TSmtpEmailTest, AfterTheStopNothingIsTried) {
  bool tried = false;
  TSmtpEmail email(nullptr, [&](const TMailMessage&, std::stop_token) {
    tried = true;
    return TSmtpResult{soSent, {}};
  });
  email.Stop();
  EXPECT_FALSE(SendElsewhere(email));
  EXPECT_FALSE(email.SendNow(Mail(), FError));
  EXPECT_FALSE(tried);
}

TEST_F(TSmtpEmailTest, WhatIsAskedAfterTheStopIsKeptWithoutAnAttempt) {
  TMailServer server;
  SetServer(server.Port());
  TSmtpEmail email(&FOutbox);
  email.Stop();
  email.Stop();  // no effect
  EXPECT_FALSE(SendElsewhere(email));
  EXPECT_EQ(FError,
            u"Abgebrochen, das Programm wird beendet. Die E-Mail liegt im Postausgang und wird "
            u"beim nächsten Start des Programms erneut verschickt");
  EXPECT_EQ(Kept(), 1u);
  EXPECT_FALSE(email.SendNow(Mail(), FError));
  EXPECT_EQ(FError, u"Abgebrochen, das Programm wird beendet");
  EXPECT_TRUE(server.All("command").empty());
}

}  // namespace
}  // namespace kk
