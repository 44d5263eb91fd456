#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <mutex>
#include <nlohmann/json.hpp>

#include "TCliProcess.h"
#include "host/base/TString.h"
#include "tests/support/THttpTestServer.h"
#include "tests/support/TSessionBus.h"
#include "tests/support/TTempFolder.h"

// The program's ways out, as a user sets them up and tries them: in a process of its own, with real
// servers on the loopback address and, where a test has one, on a D-Bus session of the test's own.

namespace kk {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using TJson = nlohmann::json;
using TSteady = std::chrono::steady_clock;

constexpr char cMailServer[] = "host/delivery/email/servers/smtp.py";
constexpr char cKeyring[] = "host/delivery/secrets/servers/secret_service.py";
constexpr char cDesktop[] = "host/delivery/notifier/servers/notifications.py";

class TKaufkoboldeWays : public testing::Test {
 protected:
  /// Without a session: no keyring and no desktop, whatever the machine has.
  TKaufkoboldeWays() {
    Options.Environment = {{"DBUS_SESSION_BUS_ADDRESS", ""},
                           {"XDG_RUNTIME_DIR", Data.Path()},
                           {"PULSE_SERVER", "unix:" + Data.Path() + "/no-sound-server"}};
  }

  void UseBus() {
    Bus.emplace();
    for (const auto& [name, value] : Bus->Environment()) Options.Environment[name] = value;
  }
  std::vector<std::string> WithData(const std::vector<std::string>& iWords) const {
    std::vector<std::string> words = {"--data", Data.Path()};
    words.insert(words.end(), iWords.begin(), iWords.end());
    return words;
  }
  TCliOutcome Run(const std::vector<std::string>& iWords) const {
    return RunCli(WithData(iWords), Options);
  }
  std::string Do(const std::vector<std::string>& iWords) const {
    const TCliOutcome outcome = Run(iWords);
    EXPECT_EQ(outcome.Exit, 0) << iWords.back() << ": " << outcome.Error;
    EXPECT_THAT(outcome.Error, IsEmpty()) << iWords.back();
    return outcome.Out;
  }
  std::string Refused(const std::vector<std::string>& iWords, int iExit = 1) const {
    const TCliOutcome outcome = Run(iWords);
    EXPECT_EQ(outcome.Exit, iExit) << iWords.back();
    EXPECT_THAT(outcome.Out, IsEmpty()) << iWords.back();
    return outcome.Error;
  }
  void Set(const std::string& iKey, const std::string& iValue) const {
    Do({"settings", "set", "Communication", iKey, iValue});
  }
  std::string Get(const std::string& iKey) const {
    return Do({"settings", "get", "Communication", iKey});
  }
  std::string Settings() const { return Data.Read(u"kaufkobolde.ini"); }

  void StartMailServer(const std::vector<std::string>& iOptions = {}) {
    MailServer.emplace(TServerProcess::Python(cMailServer, iOptions));
    Set("EMail", "a@b.example");
    Set("SmtpUrl", "smtp://127.0.0.1:" + MailServer->WaitForLine("PORT ").substr(5));
  }
  TJson NextMail() { return TJson::parse(MailServer->WaitForLine("{\"message\""))["message"]; }

  TTempFolder Data;
  TCliProcess::TOptions Options;
  std::optional<TSessionBus> Bus;
  std::optional<TServerProcess> MailServer;
};

TEST_F(TKaufkoboldeWays, AnAddressIsConfirmedByTheCodeThatTheMailServerGot) {
  StartMailServer();
  EXPECT_THAT(Do({"settings", "confirm-email"}),
              HasSubstr("Ein Code ist an a@b.example unterwegs. Er gilt 24 Stunden."));
  const std::string body = NextMail()["body"];
  const size_t start = body.find("confirm-email ") + 14;
  const std::string code = body.substr(start, 8);
  EXPECT_THAT(Settings(), Not(HasSubstr(code)));
  EXPECT_EQ(Get("EMailConfirmed"), "0\n");

  EXPECT_EQ(Refused({"settings", "confirm-email", "0"}),
            "Fehler: Der Code stimmt nicht. Sie haben noch 4 Versuche.\n");
  EXPECT_EQ(Do({"settings", "confirm-email", code}),
            "a@b.example ist bestätigt. Erinnerungen per E-Mail gehen jetzt dorthin.\n");
  EXPECT_EQ(Get("EMailConfirmed"), "1\n");
  EXPECT_EQ(Do({"settings", "confirm-email"}), "a@b.example ist schon bestätigt.\n");
  EXPECT_THAT(Settings(), Not(HasSubstr("EMailCode")));

  EXPECT_THAT(Do({"settings", "set", "Communication", "EMail", "c@d.example"}),
              HasSubstr("c@d.example ist noch nicht bestätigt."));
  EXPECT_EQ(Get("EMailConfirmed"), "0\n");
  EXPECT_THAT(Data.Read(u"kaufkobolde.log"), Not(HasSubstr(code)));
}

TEST_F(TKaufkoboldeWays, WhatKeepsTheCodeFromGoingOutIsTold) {
  EXPECT_THAT(Refused({"settings", "confirm-email"}),
              StartsWith("Fehler: Es ist noch keine E-Mail-Adresse eingestellt."));
  Set("EMail", "a@b.example");
  EXPECT_THAT(Refused({"settings", "confirm-email"}),
              AllOf(HasSubstr("Der Code konnte nicht an a@b.example geschickt werden"),
                    HasSubstr("SmtpUrl ist leer")));
  StartMailServer({"--refuse", "RCPT:450 4.2.1 spaeter"});
  EXPECT_THAT(Refused({"settings", "confirm-email"}), HasSubstr("spaeter"));
  EXPECT_FALSE(Data.Has(u"outbox")) << "a code is of no use later";
}

TEST_F(TKaufkoboldeWays, APasswordIsAskedForOnATerminalAndLiesInAFileForTheUserAlone) {
  Data.Write(u"kaufkobolde.ini", "[Communication]\nSmtpUser=otto\n");
  ASSERT_EQ(chmod((Data.Path() + "/kaufkobolde.ini").c_str(), 0644), 0);
  Options.Terminal = true;
  TCliProcess process(WithData({"settings", "set", "Communication", "SmtpPassword"}), Options);
  ASSERT_TRUE(process.WaitForOutput("Kennwort am Postausgang: "));
  process.Type("p4=ss w\n");
  const TCliOutcome outcome = process.Wait();
  EXPECT_EQ(outcome.Exit, 0) << outcome.Error;
  EXPECT_EQ(outcome.Out,
            "SmtpPassword steht jetzt in der Einstellungsdatei, die nur Sie lesen "
            "können: " +
                Data.Path() + "/kaufkobolde.ini\n");
  struct stat info {};
  ASSERT_EQ(stat((Data.Path() + "/kaufkobolde.ini").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0600u);
  EXPECT_THAT(Settings(), HasSubstr("SmtpPassword=p4=ss w\n"));

  Options.Terminal = false;
  EXPECT_EQ(Get("SmtpPassword"), "(gesetzt)\n");
  EXPECT_THAT(Do({"settings", "list"}), Not(HasSubstr("p4=ss")));
  EXPECT_THAT(Do({"settings", "list", "--json"}), Not(HasSubstr("p4=ss")));
  EXPECT_THAT(Data.Read(u"kaufkobolde.log"), Not(HasSubstr("p4=ss")));
}

TEST_F(TKaufkoboldeWays, CtrlCAtAPasswordChangesNothing) {
  Options.Terminal = true;
  TCliProcess process(WithData({"settings", "set", "Communication", "SmtpPassword"}), Options);
  ASSERT_TRUE(process.WaitForOutput("Kennwort am Postausgang: "));
  process.Type("p4\x03");
  const TCliOutcome outcome = process.Wait();
  EXPECT_EQ(outcome.Exit, 1);
  EXPECT_THAT(outcome.Error, HasSubstr("SmtpPassword bleibt, wie es ist"));
  EXPECT_FALSE(Data.Has(u"kaufkobolde.ini"));
}

TEST_F(TKaufkoboldeWays, WithoutAPasswordOnTheInputNothingChanges) {
  EXPECT_THAT(Refused({"settings", "set", "Communication", "SmtpPassword"}),
              StartsWith("Fehler: Es wurde nichts eingegeben. SmtpPassword bleibt, wie es ist"));
  EXPECT_FALSE(Data.Has(u"kaufkobolde.ini"));
}

TEST_F(TKaufkoboldeWays, WithAKeyringOnTheBusAPasswordLiesThereAlone) {
  UseBus();
  TServerProcess keyring(TServerProcess::Python(cKeyring), Bus->Environment());
  keyring.WaitForLine("ready");
  const TCliOutcome set = Run({"settings", "set", "Communication", "SmtpPassword", "p4ss"});
  EXPECT_EQ(set.Out, "SmtpPassword liegt jetzt im Schlüsselbund.\n");
  EXPECT_THAT(set.Error, HasSubstr("Was auf der Befehlszeile steht, können andere sehen."));
  EXPECT_THAT(keyring.WaitForLine("stored"), HasSubstr("Communication SmtpPassword p4ss"));
  EXPECT_FALSE(Data.Has(u"kaufkobolde.ini"));
  EXPECT_EQ(Get("SmtpPassword"), "(gesetzt)\n");
  EXPECT_EQ(Do({"settings", "set", "Communication", "SmtpPassword", ""}),
            "SmtpPassword ist entfernt.\n");
  EXPECT_EQ(Get("SmtpPassword"), "(leer)\n");
}

TEST_F(TKaufkoboldeWays, ValuesThatAreNoAddressesAreRefused) {
  for (const auto& [key, value] : std::vector<std::pair<std::string, std::string>>{
           {"EMail", "otto"}, {"SmtpUrl", "mail.example"}, {"SmsUrl", "x"}, {"CalendarUrl", "x"}}) {
    EXPECT_THAT(Refused({"settings", "set", "Communication", key, value}, 2),
                StartsWith("Fehler: " + key + " nimmt "));
  }
}

TEST_F(TKaufkoboldeWays, ATestMailReachesTheServerAndSaysThatTheAddressIsNotConfirmed) {
  StartMailServer();
  EXPECT_THAT(Do({"test", "email"}),
              AllOf(StartsWith("Der Postausgang hat die E-Mail an a@b.example angenommen.\n"),
                    HasSubstr("noch nicht bestätigt")));
  const TJson mail = NextMail();
  EXPECT_EQ(mail["subject"], "Kaufkobolde 7.0 - Test");
  EXPECT_EQ(mail["recipients"], TJson::array({"a@b.example"}));
}

TEST_F(TKaufkoboldeWays, CtrlCEndsTheWaitForAMailServerThatIsSilent) {
  StartMailServer({"--hang", "GREETING"});
  TCliProcess process(WithData({"test", "email"}), Options);
  MailServer->WaitForLine("{\"connected\"");
  const auto start = TSteady::now();
  process.Signal(SIGINT);
  const TCliOutcome outcome = process.Wait();
  EXPECT_LT(TSteady::now() - start, std::chrono::seconds(3));
  EXPECT_EQ(outcome.Exit, 1);
  EXPECT_THAT(outcome.Error, StartsWith("Fehler: Die E-Mail wurde nicht verschickt: "));
  EXPECT_FALSE(Data.Has(u"outbox"));
}

TEST_F(TKaufkoboldeWays, ATestSmsReachesTheGatewayOnlyWithYes) {
  THttpTestServer gateway;
  std::mutex mutex;
  std::vector<std::string> bodies;
  gateway.Routes().Post("/sms",
                        [&](const httplib::Request& iRequest, httplib::Response& oResponse) {
                          const std::lock_guard lock(mutex);
                          bodies.push_back(iRequest.body);
                          oResponse.status = 202;
                        });
  gateway.Start();
  Run({"settings", "set", "Communication", "SmsToken", "t0ken"});
  Set("SMS", "+49 170 1234567");
  Set("SmsUrl", gateway.Address("/sms"));
  const std::string refusal = Refused({"test", "sms"});
  EXPECT_THAT(refusal, AllOf(HasSubstr("Jetzt eine SMS an +49 170 1234567 schicken? Das kann Geld "
                                       "kosten."),
                             HasSubstr("Es wurde keine SMS verschickt.")));
  EXPECT_THAT(bodies, IsEmpty());
  EXPECT_EQ(Do({"test", "sms", "--yes"}),
            "Der SMS-Dienst hat die SMS an +49 170 1234567 angenommen.\n");
  ASSERT_EQ(bodies.size(), 1u);
  const TJson sms = TJson::parse(bodies[0]);
  EXPECT_EQ(sms["to"], "+491701234567");
  EXPECT_EQ(sms["text"], "Kaufkobolde 7.0 - Test");
}

TEST_F(TKaufkoboldeWays, ATestAppointmentLeavesTheFolderAsItWas) {
  EXPECT_THAT(Refused({"test", "calendar"}), StartsWith("Fehler: "));
  const TTempFolder calendar;
  Set("CalendarFolder", calendar.Path());
  EXPECT_THAT(Do({"test", "calendar"}),
              AllOf(StartsWith("Eingetragen für "), HasSubstr("Und wieder gelöscht.")));
  EXPECT_THAT(calendar.Names(), IsEmpty());
}

TEST_F(TKaufkoboldeWays, ASoundThatCannotBePlayedIsAFailure) {
  EXPECT_EQ(Refused({"test", "sound", "--sound", Data.Path() + "/gone.wav"}),
            "Fehler: Die Tondatei gibt es nicht: " + Data.Path() + "/gone.wav\n");
  Data.Write(u"kein.wav", "kein Ton");
  EXPECT_THAT(Refused({"test", "sound", "--sound", Data.Path() + "/kein.wav"}),
              AllOf(StartsWith("Fehler: Der Ton " + Data.Path() +
                               "/kein.wav wurde nicht "
                               "abgespielt: Die Datei ist keine WAV-Datei"),
                    EndsWith("\n"), Not(HasSubstr("\nFehler"))));
}

TEST_F(TKaufkoboldeWays, ATestNotificationWithoutADesktopStandsInTheTerminal) {
  EXPECT_THAT(Do({"test", "notifier"}),
              AllOf(HasSubstr("Erinnerung: Kaufkobolde 7.0 - Test\n"),
                    HasSubstr("Der Desktop zeigt keine Benachrichtigungen; sie steht im "
                              "Terminal.\n")));
  Set("NotifierPosition", "2");
  EXPECT_THAT(Do({"test", "notifier"}),
              AllOf(HasSubstr("Erinnerung: Kaufkobolde 7.0 - Test\n"),
                    HasSubstr("Das Meldungsfenster ist im Terminal gezeigt")));
}

TEST_F(TKaufkoboldeWays, ATestNotificationReachesTheDesktopOnTheBus) {
  UseBus();
  TServerProcess desktop(TServerProcess::Python(cDesktop), Bus->Environment());
  desktop.WaitForLine("ready");
  EXPECT_EQ(Do({"test", "notifier"}), "Der Desktop hat die Benachrichtigung gezeigt.\n");
  EXPECT_THAT(desktop.WaitForLine("notify"), HasSubstr("Kaufkobolde 7.0 - Test"));
}

TEST_F(TKaufkoboldeWays, ADesktopThatIsFrozenHoldsTheTestUpForTwoSeconds) {
  UseBus();
  TServerProcess desktop(TServerProcess::Python(cDesktop), Bus->Environment());
  desktop.WaitForLine("ready");
  desktop.Signal(SIGSTOP);
  const auto start = TSteady::now();
  EXPECT_THAT(Do({"test", "notifier"}), HasSubstr("sie steht im Terminal"));
  EXPECT_LT(TSteady::now() - start, std::chrono::seconds(5));
  desktop.Signal(SIGCONT);
}

}  // namespace
}  // namespace kk
