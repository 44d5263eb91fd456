#include "host/delivery/email/TSmtpClient.h"

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <thread>

#include "host/base/Exception.h"

#include "TMailWorld.h"

namespace kk {
namespace {

using enum TSmtpOutcome;
using nlohmann::json;
using testing::ElementsAre;
using testing::StartsWith;

class TSmtpClientTest : public TMailWorld {
 protected:
  TSmtpResult Send(const TMailServer& iServer, const TEmail& iMail = Mail(),
                   const std::string& iScheme = "smtp") {
    SetServer(iServer.Port(), iScheme);
    return TSmtpClient(FOptions).Send(TMailMessage::Build(iMail), FStop.get_token());
  }

  void ExpectFailure(const TSmtpResult& iResult, TSmtpOutcome iOutcome,
                     const std::string& iReason) {
    EXPECT_EQ(iResult.Outcome, iOutcome);
    EXPECT_EQ(ToUtf8(iResult.Reason), iReason);
  }

  /// What the server does with the message, at a stage, ends like this within the limit.
  void ExpectOutcome(const std::vector<std::string>& iOptions, TSmtpOutcome iOutcome,
                     const std::string& iReason) {
    const TMailServer server(iOptions);
    SCOPED_TRACE(iOptions.back());
    ExpectFailure(Send(server), iOutcome, iReason);
  }

  TSmtpOptions FOptions;
  std::stop_source FStop;
};

TEST_F(TSmtpClientTest, TheServerGetsTheMessageAsItWasWritten) {
  TMailServer server;
  const TMailMessage message = TMailMessage::Build(
      Mail(u"Kaufkobolde 7.0 - Erinnerung an „Größe €“ \U0001F4A1",
           u"Grüße\r\n.\r\n..\r\n.x\n\nFrom here\n" + TString(2000, u'ö') + u" \n\tx\t\nEnde"));
  SetServer(server.Port());
  EXPECT_EQ(TSmtpClient().Send(message, {}).Outcome, soSent);

  const json seen = server.WaitForMessage();
  EXPECT_EQ(seen["sender"], "from@example.org");
  EXPECT_EQ(seen["recipients"], json({"to@example.org"}));
  EXPECT_EQ(seen["subject"], "Kaufkobolde 7.0 - Erinnerung an „Größe €“ \U0001F4A1");
  EXPECT_EQ(seen["from"], json::parse(R"([["Kaufkobolde", "from@example.org"]])"));
  EXPECT_EQ(seen["to"], json::parse(R"([["", "to@example.org"]])"));
  std::string body = "Grüße\n.\n..\n.x\n\nFrom here\n";
  for (int i = 0; i < 2000; ++i) body += "ö";
  ExpectSameText(seen["body"], body + " \n\tx\t\nEnde\n");
  EXPECT_EQ(seen["id"], message.MessageId);
  EXPECT_EQ(seen["type"], "text/plain");
  EXPECT_EQ(seen["charset"], "utf-8");
  EXPECT_EQ(seen["defects"], json::array());
  EXPECT_LE(seen["longest"], 76);
  EXPECT_EQ(seen["bare"], false);
  EXPECT_EQ(seen["ascii"], true);
}

TEST_F(TSmtpClientTest, AMegabyteOfDotsAndUmlautsArrivesWhole) {
  TMailServer server;
  TString body;
  while (body.size() < 1 << 20) body += u".\n..\nü.\n" + TString(body.size() % 97, u'.') + u"\n";
  EXPECT_EQ(Send(server, Mail(u"x", body)).Outcome, soSent);
  ExpectSameText(server.WaitForMessage()["body"], ToUtf8(body));
}

TEST_F(TSmtpClientTest, LinesThatBeginWithADotArriveAsTheyAre) {
  TMailServer server;
  TMailMessage message = TMailMessage::Build(Mail(u"x", u"y"));
  std::string lines = ".\r\n..\r\n...\r\n.x\r\n\r\n";
  for (int i = 0; i < 12; ++i) lines += lines + std::string(static_cast<size_t>(i), '.') + "\r\n";
  message.Text += lines;
  SetServer(server.Port());
  EXPECT_EQ(TSmtpClient().Send(message, {}).Outcome, soSent);
  std::erase(lines, '\r');
  ExpectSameText(server.WaitForMessage()["body"], "y\n" + lines);
}

TEST_F(TSmtpClientTest, TheServerIsBidFarewell) {
  TMailServer server;
  EXPECT_EQ(Send(server).Outcome, soSent);
  EXPECT_EQ(server.WaitFor("command"), "EHLO");
  server.WaitForMessage();
  EXPECT_EQ(server.WaitFor("command"), "QUIT");
}

// --- encryption and log-in

TEST_F(TSmtpClientTest, StartTlsComesBeforeLogInAndMessage) {
  const TMailCertificate certificate(FFolder);
  FOptions.CaFile = certificate.Certificate;
  TMailServer server(certificate.Options("starttls", {"--user", "erika:ge heim"}));
  SetLogin("erika", "ge heim");
  EXPECT_EQ(Send(server).Reason, u"");
  server.WaitForMessage();
  const std::vector<json> commands = server.All("command");
  ASSERT_GE(commands.size(), 4u);
  EXPECT_EQ(commands[0], "EHLO");
  EXPECT_EQ(commands[1], "STARTTLS");
  EXPECT_EQ(commands[2], "EHLO");
  EXPECT_EQ(commands[3], "AUTH");
  EXPECT_THAT(server.All("login"), ElementsAre("erika"));
  EXPECT_THAT(server.All("good"), ElementsAre(true));
}

TEST_F(TSmtpClientTest, SmtpsIsEncryptedFromTheStart) {
  const TMailCertificate certificate(FFolder);
  FOptions.CaFile = certificate.Certificate;
  TMailServer server(certificate.Options("smtps", {"--user", "erika:geheim"}));
  SetLogin("erika", "geheim");
  EXPECT_EQ(Send(server, Mail(), "smtps").Reason, u"");
  EXPECT_EQ(server.WaitForMessage()["recipients"], json({"to@example.org"}));
  EXPECT_THAT(server.All("tls"), ElementsAre(true));
}

TEST_F(TSmtpClientTest, ACertificateThatNobodyVouchesForEndsItBeforeTheLogIn) {
  const TMailCertificate certificate(FFolder);
  SetLogin("erika", "geheim");
  for (const std::string tls : {"starttls", "smtps"}) {
    TMailServer server(certificate.Options(tls, {"--user", "erika:geheim"}));
    ExpectFailure(Send(server, Mail(), tls == "smtps" ? "smtps" : "smtp"), soForGood,
                  "Das Zertifikat des Mailservers ist ungültig");
    EXPECT_TRUE(server.All("login").empty());
  }
}

TEST_F(TSmtpClientTest, ACertificateForAnotherHostIsRefused) {
  const TMailCertificate certificate(FFolder, "DNS:other.test");
  FOptions.CaFile = certificate.Certificate;
  TMailServer server(certificate.Options("smtps"));
  ExpectFailure(Send(server, Mail(), "smtps"), soForGood,
                "Das Zertifikat des Mailservers ist ungültig");
}

TEST_F(TSmtpClientTest, APasswordNeverGoesOutInClearText) {
  TMailServer server({"--user", "erika:geheim"});  // offers AUTH without STARTTLS
  SetLogin("erika", "geheim");
  ExpectFailure(Send(server), soForGood,
                "Der Mailserver bietet keine verschlüsselte Verbindung (STARTTLS) an, und "
                "unverschlüsselt wird nichts verschickt");
  EXPECT_TRUE(server.All("login").empty());
  EXPECT_THAT(server.All("command"), testing::Each(testing::AnyOf("EHLO", "QUIT")));
}

TEST_F(TSmtpClientTest, ARefusedStartTlsIsNotPassedOver) {
  const TMailCertificate certificate(FFolder);
  FOptions.CaFile = certificate.Certificate;
  SetLogin("erika", "geheim");
  ExpectOutcome(
      certificate.Options("starttls",
                          {"--user", "erika:geheim", "--refuse", "STARTTLS:454 4.7.0 TLS not now"}),
      soForNow, "Der Mailserver nimmt die E-Mail zurzeit nicht an (454 4.7.0 TLS not now)");
  ExpectOutcome(certificate.Options("starttls", {"--user", "erika:geheim", "--refuse",
                                                 "STARTTLS:502 5.5.1 no TLS"}),
                soForGood,
                "Der Mailserver bietet keine verschlüsselte Verbindung (STARTTLS) an, und "
                "unverschlüsselt wird nichts verschickt");
}

TEST_F(TSmtpClientTest, AServerWithoutEncryptionAtTheSmtpsPortCountsAsBroken) {
  const TMailServer server;
  ExpectFailure(Send(server, Mail(), "smtps"), soForNow,
                "Mit dem Mailserver kommt keine verschlüsselte Verbindung zustande");
}

TEST_F(TSmtpClientTest, AnUnreadableFileOfCertificatesIsToldOf) {
  const TMailCertificate certificate(FFolder);
  FOptions.CaFile = FFolder.Path() + "/none.pem";
  const TMailServer server(certificate.Options("smtps"));
  ExpectFailure(Send(server, Mail(), "smtps"), soForGood,
                "Die Zertifikate, denen vertraut wird, sind nicht lesbar");
}

TEST_F(TSmtpClientTest, AWrongPasswordIsForGoodAndABusyLogInForNow) {
  const TMailCertificate certificate(FFolder);
  FOptions.CaFile = certificate.Certificate;
  SetLogin("erika", "falsch");
  ExpectOutcome(certificate.Options("starttls", {"--user", "erika:geheim", "--auth-reply",
                                                 "535 5.7.8 Wrong password"}),
                soForGood, "Der Mailserver hat die Anmeldung abgelehnt (535 5.7.8 Wrong password)");
  ExpectOutcome(
      certificate.Options("starttls", {"--user", "erika:geheim", "--auth-reply", "454 4.7.0 Busy"}),
      soForNow, "Der Mailserver nimmt die Anmeldung zurzeit nicht an (454 4.7.0 Busy)");
  TMailServer server(certificate.Options("starttls", {"--user", "erika:geheim"}));
  EXPECT_EQ(Send(server).Outcome, soForGood);
  EXPECT_THAT(server.All("good"), testing::Each(false));
}

// --- what a server may answer

TEST_F(TSmtpClientTest, ARefusalAtAnyStageIsToldAndClassedByItsCode) {
  for (const std::string stage : {"MAIL", "RCPT", "DATA", "DOT"}) {
    ExpectOutcome({"--refuse", stage + ":451 4.3.0 Try later"}, soForNow,
                  "Der Mailserver nimmt die E-Mail zurzeit nicht an (451 4.3.0 Try later)");
    ExpectOutcome({"--refuse", stage + ":550 5.1.1 No such user"}, soForGood,
                  "Der Mailserver hat die E-Mail abgelehnt (550 5.1.1 No such user)");
  }
}

TEST_F(TSmtpClientTest, ARefusalInPlaceOfAGreetingIsClassedByItsCode) {
  ExpectOutcome({"--greeting", "421 4.3.2 Closing"}, soForNow,
                "Der Mailserver nimmt die E-Mail zurzeit nicht an (421 4.3.2 Closing)");
  ExpectOutcome({"--greeting", "554 5.3.2 No service"}, soForGood,
                "Der Mailserver hat die E-Mail abgelehnt (554 5.3.2 No service)");
}

TEST_F(TSmtpClientTest, AnAnswerToTheMessageThatMeansNothingIsNoSuccess) {
  ExpectOutcome({"--refuse", "DOT:354 once more"}, soForNow,
                "Die Antwort des Mailservers ist nicht verständlich");
  ExpectOutcome({"--refuse", "DOT:999 ?"}, soForNow,
                "Die Antwort des Mailservers ist nicht verständlich");
}

TEST_F(TSmtpClientTest, EveryKindOfYesToTheMessageIsSuccess) {
  for (const std::string reply : {"250 ok", "251 forwarded", "200 fine"}) {
    const TMailServer server({"--refuse", "DOT:" + reply});
    EXPECT_EQ(Send(server).Outcome, soSent) << reply;
  }
}

TEST_F(TSmtpClientTest, ADroppedLineIsNeverASuccess) {
  for (const std::string stage : {"EHLO", "MAIL", "RCPT", "DATA", "354", "DOT"}) {
    ExpectOutcome({"--drop", stage}, soForNow, "Die Verbindung zum Mailserver wurde unterbrochen");
  }
}

TEST_F(TSmtpClientTest, ALineThatDropsUnderAnEncryptedMessageKillsNothing) {
  const TMailCertificate certificate(FFolder);
  FOptions.CaFile = certificate.Certificate;
  const TMailServer server(certificate.Options("smtps", {"--drop", "354"}));
  const TSmtpResult result = Send(server, Mail(u"x", TString(4 << 20, u'x')), "smtps");
  ExpectFailure(result, soForNow, "Die Verbindung zum Mailserver wurde unterbrochen");
}

TEST_F(TSmtpClientTest, ARefusalThatWasOvercomeIsNotTheReasonOfADroppedLine) {
  TMailServer server({"--refuse", "EHLO:502 5.5.1 Only HELO", "--drop", "354"});
  ExpectFailure(Send(server, Mail(u"x", TString(4 << 20, u'x'))), soForNow,
                "Die Verbindung zum Mailserver wurde unterbrochen");
  EXPECT_THAT(server.All("command"), testing::Contains("DATA"));
}

TEST_F(TSmtpClientTest, ADroppedLineAfterTheYesChangesNothing) {
  const TMailServer server({"--drop", "QUIT"});
  EXPECT_EQ(Send(server).Outcome, soSent);
}

TEST_F(TSmtpClientTest, NobodyAtThePortIsAFailureForNow) {
  SetServer(FreePort());
  ExpectFailure(TSmtpClient().Send(TMailMessage::Build(Mail()), {}), soForNow,
                "Der Mailserver ist nicht erreichbar");
}

TEST_F(TSmtpClientTest, WithoutASetUpItFailsForGood) {
  ExpectFailure(TSmtpClient().Send(TMailMessage::Build(Mail()), {}), soForGood,
                "Es ist kein Postausgang eingerichtet: Die Einstellung SmtpUrl ist leer");
}

TEST_F(TSmtpClientTest, AServerThatNeverEndsToTalkIsCutOff) {
  FOptions.ConnectMs = 10000;
  const TMailServer server({"--garbage"});
  ExpectFailure(Send(server), soForNow, "Die Antwort des Mailservers ist nicht verständlich");
}

// --- time

TEST_F(TSmtpClientTest, ASilentServerCostsNoMoreThanTheLimit) {
  FOptions.ConnectMs = 200;
  FOptions.TotalMs = 400;
  for (const std::string stage : {"GREETING", "EHLO", "MAIL", "RCPT", "DATA", "354", "DOT"}) {
    const TMailServer server({"--hang", stage});
    TSmtpResult result;
    const int64_t ms = MsOf([&] { result = Send(server); });
    SCOPED_TRACE(stage);
    ExpectFailure(result, soForNow, "Der Mailserver hat nicht rechtzeitig geantwortet");
    EXPECT_LT(ms, 2500);
  }
}

TEST_F(TSmtpClientTest, AFrozenServerCostsNoMoreThanTheLimit) {
  FOptions.TotalMs = 400;
  for (const std::string stage : {"MAIL", "DOT"}) {
    const TMailServer server({"--freeze", stage});
    TSmtpResult result;
    const int64_t ms = MsOf([&] { result = Send(server); });
    SCOPED_TRACE(stage);
    ExpectFailure(result, soForNow, "Der Mailserver hat nicht rechtzeitig geantwortet");
    EXPECT_LT(ms, 2500);
  }
}

TEST_F(TSmtpClientTest, AServerFrozenFromTheStartCostsNoMoreThanTheLimit) {
  FOptions.ConnectMs = 200;
  TMailServer server;
  server.Process().Signal(SIGSTOP);
  const int64_t ms = MsOf([&] { EXPECT_EQ(Send(server).Outcome, soForNow); });
  EXPECT_LT(ms, 2500);
}

// A port of loopback at which nobody takes connections: its queue is full.
class TDeafPort {
 public:
  TDeafPort() {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    FSockets.push_back(socket(AF_INET, SOCK_STREAM, 0));
    auto* const plain = reinterpret_cast<sockaddr*>(&address);
    EXPECT_EQ(bind(FSockets[0], plain, length), 0);
    EXPECT_EQ(listen(FSockets[0], 0), 0);
    EXPECT_EQ(getsockname(FSockets[0], plain, &length), 0);
    Port = ntohs(address.sin_port);
    for (int i = 0; i < 4; ++i) {
      FSockets.push_back(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0));
      connect(FSockets.back(), plain, length);
    }
  }
  ~TDeafPort() {
    for (const int opened : FSockets) close(opened);
  }

  /// How many connections to it are being made in this machine.
  int Attempts() const {
    char remote[32];
    std::snprintf(remote, sizeof remote, " 0100007F:%04X 02 ", static_cast<unsigned>(Port));
    std::ifstream table("/proc/net/tcp");
    int count = 0;
    for (std::string line; std::getline(table, line);) {
      count += line.find(remote) != std::string::npos ? 1 : 0;
    }
    return count;
  }

  int Port = 0;

 private:
  std::vector<int> FSockets;
};

TEST_F(TSmtpClientTest, AServerThatTakesNoConnectionCostsNoMoreThanTheLimit) {
  const TDeafPort deaf;
  SetServer(deaf.Port);
  FOptions.ConnectMs = 200;
  TSmtpResult result;
  const int64_t ms =
      MsOf([&] { result = TSmtpClient(FOptions).Send(TMailMessage::Build(Mail()), {}); });
  ExpectFailure(result, soForNow, "Der Mailserver hat nicht rechtzeitig geantwortet");
  EXPECT_LT(ms, 2500);
}

TEST_F(TSmtpClientTest, AStopEndsAConnectionThatDoesNotComeAbout) {
  const TDeafPort deaf;
  SetServer(deaf.Port);
  TSmtpResult result;
  const int before = deaf.Attempts();
  std::jthread sender(
      [&] { result = TSmtpClient().Send(TMailMessage::Build(Mail()), FStop.get_token()); });
  EXPECT_TRUE(Eventually([&] { return deaf.Attempts() > before; }));
  const int64_t ms = MsOf([&] {
    FStop.request_stop();
    sender.join();
  });
  EXPECT_LT(ms, 1500);
  ExpectFailure(result, soCancelled, "Abgebrochen");
}

TEST_F(TSmtpClientTest, AFarewellWithoutAnAnswerIsCutShort) {
  const TMailServer server({"--hang", "QUIT"});
  const int64_t ms = MsOf([&] { EXPECT_EQ(Send(server).Outcome, soSent); });
  EXPECT_LT(ms, 4000);
}

TEST_F(TSmtpClientTest, AStopEndsItWithinASecondWhereverItIs) {
  for (const std::string option : {"--hang", "--freeze"}) {
    for (const std::string stage : {"EHLO", "MAIL", "354", "DOT"}) {
      if (option == "--freeze" && stage == "354") continue;
      TMailServer server({option, stage});
      SetServer(server.Port());
      std::stop_source stop;
      TSmtpResult result;
      std::jthread sender(
          [&] { result = TSmtpClient().Send(TMailMessage::Build(Mail()), stop.get_token()); });
      EXPECT_EQ(server.WaitFor(option == "--hang" ? "hangs" : "frozen"), stage);
      const int64_t ms = MsOf([&] {
        stop.request_stop();
        sender.join();
      });
      EXPECT_LT(ms, 1000) << option << stage;
      ExpectFailure(result, soCancelled, "Abgebrochen");
    }
  }
}

TEST_F(TSmtpClientTest, AStopThatWasThereBeforeReachesNoServer) {
  TMailServer server;
  FStop.request_stop();
  ExpectFailure(Send(server), soCancelled, "Abgebrochen");
  EXPECT_TRUE(server.All("command").empty());
}

// --- hostile texts

struct THostile {
  const char* Name;
  TString Text;
};

std::vector<THostile> HostileTexts() {
  return {{"CR LF", u"x\r\nBcc: evil@example.org\r\n\r\n.\r\nRCPT TO:<evil@example.org>\r\n"},
          {"bare LF", u"x\nBcc: evil@example.org\n\n.\nMAIL FROM:<evil@example.org>\n"},
          {"bare CR", u"x\rBcc: evil@example.org\r\r.\rQUIT\r"},
          {"other line ends", u"x\u2028Bcc: evil@example.org\u2029\u0085.\u000B\u000C"},
          {"NUL", TString(u"x\0Bcc: evil@example.org\0", 24)},
          {"quotes", u"\"x\" <evil@example.org>, 'y'; \\\"\\"},
          {"encoded", u"=?UTF-8?Q?=0D=0ABcc:_evil@example.org?= =0D=0A"},
          {"calendar", u"BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nEND:VEVENT\r\n"},
          {"MIME", u"--x\r\nContent-Type: multipart/mixed; boundary=x\r\n\r\n--x--\r\n"},
          {"smuggling", u"x\n.\r\nMAIL FROM:<evil@example.org>\r\n\r\n.\nx\r.\r\n"},
          {"half characters", u"\xD800x\xDC00"},
          {"1 MB", TString(1 << 20, u'ö') + u"\r\nBcc: evil@example.org"}};
}

class THostileMailTest : public TSmtpClientTest {
 protected:
  /// One recipient, the headers of every mail, no part, no command beside those of one mail.
  void ExpectOneOrdinaryMail(TMailServer& ioServer, const char* iName) {
    SCOPED_TRACE(iName);
    const json seen = ioServer.WaitForMessage();
    EXPECT_EQ(seen["recipients"], json({"to@example.org"}));
    EXPECT_EQ(seen["sender"], "from@example.org");
    EXPECT_EQ(seen["headers"],
              json({"From", "To", "Subject", "Date", "Message-ID", "MIME-Version", "Content-Type",
                    "Content-Transfer-Encoding", "Auto-Submitted"}));
    EXPECT_EQ(seen["to"], json::parse(R"([["", "to@example.org"]])"));
    EXPECT_EQ(seen["from"].size(), 1u);
    EXPECT_EQ(seen["from"][0][1], "from@example.org");
    EXPECT_EQ(seen["parts"], false);
    EXPECT_EQ(seen["type"], "text/plain");
    EXPECT_EQ(seen["defects"], json::array());
    EXPECT_EQ(seen["bare"], false);
    EXPECT_LE(seen["longest"], 76);
    const std::vector<json> commands = ioServer.All("command");
    ASSERT_GE(commands.size(), 4u);
    EXPECT_THAT(commands[1].get<std::string>(), StartsWith("MAIL FROM:<from@example.org>"));
    EXPECT_EQ(commands[2], "RCPT TO:<to@example.org>");
    EXPECT_EQ(commands[3], "DATA");
    for (size_t i = 4; i < commands.size(); ++i) EXPECT_EQ(commands[i], "QUIT");
    EXPECT_EQ(ioServer.All("message").size(), 1u);
  }
};

TEST_F(THostileMailTest, InSubjectBodyAndNameAddsNoRecipientHeaderPartOrCommand) {
  for (const THostile& hostile : HostileTexts()) {
    TMailServer server;
    TEmail mail = Mail(hostile.Text, hostile.Text);
    mail.SenderName = hostile.Text;
    EXPECT_EQ(Send(server, mail).Outcome, soSent) << hostile.Name;
    ExpectOneOrdinaryMail(server, hostile.Name);
  }
}

TEST_F(THostileMailTest, BehindAnAddressIsRefusedBeforeAnythingIsSent) {
  for (const THostile& hostile : HostileTexts()) {
    for (const bool asSender : {false, true}) {
      TEmail mail = Mail();
      (asSender ? mail.SenderAddress : mail.Recipient) += hostile.Text;
      TString refusal;
      try {
        TMailMessage::Build(mail);
      } catch (const Exception& e) {
        refusal = e.Message();
      }
      EXPECT_THAT(ToUtf8(refusal), StartsWith(asSender ? "Die Adresse des Absenders kann nicht"
                                                       : "Die Adresse des Empfängers kann nicht"))
          << hostile.Name;
      EXPECT_LT(refusal.size(), 400u);
    }
  }
}

}  // namespace
}  // namespace kk
