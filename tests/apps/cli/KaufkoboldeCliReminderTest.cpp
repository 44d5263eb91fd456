#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <thread>

#include "TCliProcess.h"
#include "TTestShop.h"
#include "host/base/TClock.h"
#include "tests/support/TRawTestServer.h"
#include "tests/support/TTempFolder.h"

// Reminders from the terminal, through the built program and its packages: set up in one call, kept
// by the others, delivered by the one that stays.

namespace kk {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;
using TJson = nlohmann::json;
using TSteady = std::chrono::steady_clock;

/// A local server that lets callers come and never says a word.
class TFrozenServer {
 public:
  explicit TFrozenServer(const std::string& iPath) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, iPath.c_str(), sizeof address.sun_path - 1);
    EXPECT_EQ(bind(FSocket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(listen(FSocket, 8), 0);
  }
  ~TFrozenServer() { close(FSocket); }
  TFrozenServer(const TFrozenServer&) = delete;
  TFrozenServer& operator=(const TFrozenServer&) = delete;

  bool WaitForCaller() const {
    constexpr int cDeadlineMs = 30000;
    pollfd file = {FSocket, POLLIN, 0};
    return poll(&file, 1, cDeadlineMs) == 1;
  }

 private:
  const int FSocket = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

class TKaufkoboldeCliReminders : public testing::Test {
 protected:
  /// Without a session: no keyring, no desktop and no sound, whatever the machine has.
  TKaufkoboldeCliReminders() {
    Environment = {{"DBUS_SESSION_BUS_ADDRESS", ""},
                   {"XDG_RUNTIME_DIR", Data.Path()},
                   {"PULSE_SERVER", "unix:" + Data.Path() + "/pulse"}};
    Do({"settings", "set", "Communication", "NotifierPosition", "2"});
    Do({"add", PutAuction("/uhr", "Uhr", Now().PlusMs(2 * TDateTime::cMsPerDay))});
  }
  /// Whatever a run did, nothing of a package may outlive it.
  void TearDown() override {
    EXPECT_THAT(Data.Read(u"kaufkobolde.log"), Not(HasSubstr("Es leben noch")));
  }

  std::string PutAuction(const std::string& iPath, const std::string& iName, TDateTime iEnd) {
    return Shop.PutPage(
        iPath, R"(<html><head><title>x</title><script type="application/ld+json">
{"@context": "https://schema.org", "@type": "Product", "name": ")" +
                   iName +
                   R"(", "offers": {"@type": "Offer", "price": "12.50", "priceCurrency": "EUR",
 "availabilityEnds": ")" +
                   ToUtf8(DateTimeToIso(iEnd)) + R"("}}</script></head></html>)");
  }
  std::vector<std::string> WithData(const std::vector<std::string>& iArguments) const {
    std::vector<std::string> words = {"--data", Data.Path()};
    words.insert(words.end(), iArguments.begin(), iArguments.end());
    return words;
  }
  TCliProcess::TOptions Options() const {
    TCliProcess::TOptions options;
    options.Environment = Environment;
    return options;
  }
  TCliProcess::TOptions OnTerminal() const {
    TCliProcess::TOptions options = Options();
    options.Terminal = true;
    return options;
  }
  TCliOutcome Run(const std::vector<std::string>& iArguments) const {
    return RunCli(WithData(iArguments), Options());
  }
  /// A call that has to go well; answers what it printed.
  std::string Do(const std::vector<std::string>& iArguments) const {
    const TCliOutcome outcome = Run(iArguments);
    EXPECT_EQ(outcome.Exit, 0) << iArguments[0] << ": " << outcome.Error;
    return outcome.Out;
  }
  TJson Reminders() const { return TJson::parse(Do({"reminders", "--json"})); }
  /// The process that stays, when it is ready.
  std::unique_ptr<TCliProcess> Stay() const {
    auto process = std::make_unique<TCliProcess>(WithData({"run"}), Options());
    if (!process->WaitForOutput("Strg+C beendet.")) {
      const TCliOutcome outcome = process->Wait();
      ADD_FAILURE() << "it has ended with " << outcome.Exit << ": " << outcome.Error;
    }
    return process;
  }
  /// Asks for the end and waits; fails the test if that takes longer than it may.
  static TCliOutcome EndInTime(TCliProcess& ioProcess, int iSignal = SIGTERM) {
    const auto start = TSteady::now();
    ioProcess.Signal(iSignal);
    TCliOutcome outcome = ioProcess.Wait();
    EXPECT_LE(TSteady::now() - start, std::chrono::seconds(3));
    return outcome;
  }
  /// Returns when the condition holds; false if it does not within some seconds.
  template <class TCondition>
  static bool HoldsSoon(TCondition iCondition) {
    const auto last = TSteady::now() + std::chrono::seconds(20);
    while (!iCondition()) {
      if (TSteady::now() > last) return false;
      std::this_thread::yield();
    }
    return true;
  }
  std::filesystem::file_time_type LastWrite() const {
    return std::filesystem::last_write_time(Data.Path() + "/watchlist.dat");
  }
  /// A second of silence (WAV: PCM, 16 bit, one channel, 8000 Hz).
  std::string WriteSound(const std::string& iName) const {
    const auto number = [](uint32_t iValue, int iBytes) {
      std::string bytes;
      for (int i = 0; i < iBytes; ++i) bytes += static_cast<char>(iValue >> (8 * i) & 0xFF);
      return bytes;
    };
    constexpr uint32_t cBytes = 16000;
    const std::string format = number(1, 2) + number(1, 2) + number(8000, 4) + number(16000, 4) +
                               number(2, 2) + number(16, 2);
    Data.Write(FromUtf8(iName), "RIFF" + number(36 + cBytes, 4) + "WAVEfmt " + number(16, 4) +
                                    format + "data" + number(cBytes, 4) +
                                    std::string(cBytes, '\0'));
    return Data.Path() + "/" + iName;
  }

  TTempFolder Data;
  TTestShop Shop;
  std::map<std::string, std::string> Environment;
};

TEST_F(TKaufkoboldeCliReminders, AReminderIsSetUpAtThatVerySecond) {
  const std::string at = ToUtf8(
      DateTimeToIso(TDateTime::FromMs(Now().PlusMs(TDateTime::cMsPerHour).Ms() / 1000 * 1000)));
  EXPECT_THAT(
      Do({"remind", "Uhr", "--at", at, "--kind", "window"}),
      AllOf(StartsWith("Erinnerung eingerichtet: Uhr am "), EndsWith("(Meldungsfenster)\n")));
  const TJson reminders = Reminders();
  ASSERT_EQ(reminders.size(), 1u);
  EXPECT_EQ(reminders[0]["time"], at);
  EXPECT_EQ(reminders[0]["name"], "Uhr");
  EXPECT_EQ(reminders[0]["types"], TJson({"window"}));
  EXPECT_EQ(reminders[0]["overdue"], false);
}

TEST_F(TKaufkoboldeCliReminders, BeforeEndCountsBackFromTheEnd) {
  Do({"remind", "Uhr", "--before-end", "15m"});
  const TJson item = TJson::parse(Do({"show", "Uhr", "--json"}));
  TDateTime end;
  ASSERT_TRUE(TryIsoToDateTime(FromUtf8(item["endTime"].get<std::string>()), end));
  const TDateTime time = end.PlusMs(-15 * TDateTime::cMsPerMinute);
  EXPECT_EQ(Reminders()[0]["time"],
            ToUtf8(DateTimeToIso(TDateTime::FromMs(time.Ms() / 1000 * 1000))));
}

TEST_F(TKaufkoboldeCliReminders, AnotherCallTakesThePlaceOfTheFirst) {
  const std::string sound = WriteSound("ton.wav");
  Do({"remind", "Uhr", "--in", "1h"});
  Do({"remind", "Uhr", "--in", "2h", "--kind", "sound", "--sound", sound});
  const TJson reminders = Reminders();
  ASSERT_EQ(reminders.size(), 1u);
  EXPECT_EQ(reminders[0]["types"], TJson({"sound"}));
  EXPECT_EQ(reminders[0]["soundFile"], sound);
}

TEST_F(TKaufkoboldeCliReminders, WhatTheRulesRefuseIsTold) {
  const TCliOutcome missing = Run({"remind", "Uhr", "--in", "1h", "--sound", "/gibt/es/nicht.wav"});
  EXPECT_EQ(missing.Exit, 1);
  EXPECT_THAT(missing.Error, HasSubstr("Fehler: Ungültige Sounddatei! Die Datei "
                                       "/gibt/es/nicht.wav konnte nicht gefunden werden."));
  const TCliOutcome past = Run({"remind", "Uhr", "--at", "01.01.2026 10:00"});
  EXPECT_EQ(past.Exit, 1);
  EXPECT_THAT(past.Error, HasSubstr("darf nicht in der Vergangenheit liegen!"));
  EXPECT_EQ(Run({"remind", "Uhr", "--in", "1h", "--kind", "email"}).Exit, 1);
  EXPECT_EQ(Run({"remind", "Uhr", "--in", "1h", "--kind", "sms"}).Exit, 1);
  EXPECT_EQ(Run({"remind", "Uhr"}).Exit, 2) << "without a time and without a terminal";
  EXPECT_EQ(Run({"remind", "Uhr", "--before-end", "7m"}).Exit, 2);
  EXPECT_EQ(Reminders(), TJson::array());
}

TEST_F(TKaufkoboldeCliReminders, AnArticleWithoutAnEndHasNoReminder) {
  Do({"add", Shop.Put("/lampe", "Lampe", "19.90")});
  const TCliOutcome outcome = Run({"remind", "Lampe", "--in", "1h"});
  EXPECT_EQ(outcome.Exit, 1);
  EXPECT_THAT(outcome.Error, HasSubstr("Der Artikel hat kein Ende."));
}

TEST_F(TKaufkoboldeCliReminders, ADeletedReminderIsGone) {
  Do({"remind", "Uhr", "--in", "1h"});
  EXPECT_EQ(Run({"remind", "Uhr", "--delete"}).Exit, 1) << "it is asked for first";
  EXPECT_EQ(Do({"remind", "Uhr", "--delete", "--yes"}), "Erinnerung gelöscht: Uhr\n");
  EXPECT_EQ(Reminders(), TJson::array());
  EXPECT_EQ(Run({"remind", "Uhr", "--delete", "--yes"}).Exit, 1);
}

TEST_F(TKaufkoboldeCliReminders, OnATerminalTheEditorIsAsked) {
  TCliProcess process(WithData({"remind", "Uhr", "--kind", "window"}), OnTerminal());
  for (int i = 0; i < 6; ++i) process.Type("\n");
  const TCliOutcome outcome = process.Wait();
  EXPECT_EQ(outcome.Exit, 0) << outcome.Error;
  EXPECT_THAT(outcome.Error, HasSubstr("ausgewählter Zeitpunkt"));
  EXPECT_EQ(Reminders().size(), 1u);
}

TEST_F(TKaufkoboldeCliReminders, CallsThatComeAndGoKeepAnOverdueReminder) {
  Do({"remind", "Uhr", "--in", "1s"});
  ASSERT_TRUE(HoldsSoon([&] { return Reminders()[0]["overdue"] == true; }));
  for (int i = 0; i < 3; ++i) {
    const auto start = TSteady::now();
    Do({"list"});
    EXPECT_LT(TSteady::now() - start, std::chrono::milliseconds(900))
        << "nobody waits for a thread";
  }
  EXPECT_EQ(Reminders().size(), 1u);
  EXPECT_THAT(Run({"reminders"}).Error, HasSubstr("\"kaufkobolde-cli run\""));
}

TEST_F(TKaufkoboldeCliReminders, RunPrintsThePopUpAndForgetsTheReminder) {
  Do({"remind", "Uhr", "--in", "1s", "--kind", "window"});
  TCliProcess process(WithData({"run"}), Options());
  ASSERT_TRUE(process.WaitForOutput(Shop.Address("/uhr")));
  const TCliOutcome outcome = EndInTime(process);
  EXPECT_EQ(outcome.Exit, 0);
  EXPECT_THAT(outcome.Out, AllOf(HasSubstr("Bereit: 1 Erinnerung."), HasSubstr(" Erinnerung: "),
                                 HasSubstr("Uhr"), EndsWith("Wird beendet.\n")));
  EXPECT_THAT(outcome.Out, HasSubstr("Fällig: Uhr (Meldungsfenster)")) << "due from the start";
  EXPECT_THAT(outcome.Out, Not(HasSubstr("Link in Browser")));
  EXPECT_THAT(outcome.Error, HasSubstr("Watchlist-Reminder: Melde Erinnerung"));
  EXPECT_EQ(Reminders(), TJson::array());
}

TEST_F(TKaufkoboldeCliReminders, RunTellsOfEachReminderThatCameDue) {
  const auto process = Stay();
  Do({"remind", "Uhr", "--in", "1s", "--kind", "window"});
  EXPECT_TRUE(process->WaitForOutput("Fällig: Uhr (Meldungsfenster)"));
  EXPECT_EQ(EndInTime(*process).Exit, 0);
}

TEST_F(TKaufkoboldeCliReminders, WhatWasDeliveredIsWrittenSoon) {
  Do({"remind", "Uhr", "--in", "1s", "--kind", "window"});
  const auto before = LastWrite();
  const auto process = Stay();
  ASSERT_TRUE(process->WaitForOutput(Shop.Address("/uhr")));
  EXPECT_TRUE(HoldsSoon([&] { return LastWrite() != before; }));
  process->Signal(SIGKILL);
  process->Wait();
  EXPECT_EQ(Reminders(), TJson::array());
}

TEST_F(TKaufkoboldeCliReminders, AMissingSoundIsToldAndTheRestIsDelivered) {
  const std::string sound = WriteSound("ton.wav");
  Do({"remind", "Uhr", "--in", "1s", "--kind", "window", "--sound", sound});
  std::filesystem::remove(sound);
  const auto process = Stay();
  EXPECT_TRUE(process->WaitForOutput(Shop.Address("/uhr")));
  const TCliOutcome outcome = EndInTime(*process);
  EXPECT_EQ(outcome.Exit, 0) << "a delivery that fails is no failure of the program";
  EXPECT_THAT(outcome.Error, HasSubstr("Fehler: Datei nicht gefunden: " + sound));
  EXPECT_THAT(Data.Read(u"kaufkobolde.log"), HasSubstr("Datei nicht gefunden: " + sound));
}

TEST_F(TKaufkoboldeCliReminders, RunEndsInTimeOnEachSignal) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    const auto process = Stay();
    const TCliOutcome outcome = EndInTime(*process, signal);
    EXPECT_EQ(outcome.Exit, 0) << signal << outcome.Error;
  }
}

TEST_F(TKaufkoboldeCliReminders, RunTwiceIsRefused) {
  const auto process = Stay();
  const TCliOutcome second = Run({"run"});
  EXPECT_EQ(second.Exit, 1);
  EXPECT_EQ(second.Error,
            "Fehler: \"kaufkobolde-cli run\" läuft für \"" + Data.Path() + "\" schon.\n");
  EXPECT_EQ(EndInTime(*process).Exit, 0);
}

TEST_F(TKaufkoboldeCliReminders, OtherCallsAreAnsweredMeanwhile) {
  const auto process = Stay();
  Do({"category", "add", "Haus"});
  Do({"move", "Uhr", "Haus"});
  EXPECT_THAT(Do({"list"}), AllOf(HasSubstr("Haus"), HasSubstr("Uhr")));
  Do({"settings", "set", "Watchlist", "CategoryTreeWidth", "300"});
  EXPECT_EQ(Do({"settings", "get", "Watchlist", "CategoryTreeWidth"}), "300\n");
  const TCliOutcome wrong = Run({"show", "Lampe"});
  EXPECT_EQ(wrong.Exit, 2);
  EXPECT_THAT(wrong.Error, HasSubstr("Den Artikel gibt es nicht: Lampe"));
  EXPECT_THAT(wrong.Out, IsEmpty());
  process->Signal(SIGKILL);
  process->Wait();
  EXPECT_THAT(Do({"list"}), HasSubstr("Haus")) << "each change was written at once";
}

TEST_F(TKaufkoboldeCliReminders, PathsAreThoseOfTheCaller) {
  WriteSound("ton.wav");
  const auto process = Stay();
  TCliProcess::TOptions options = Options();
  options.Folder = Data.Path();
  const auto outcome =
      RunCli(WithData({"remind", "Uhr", "--in", "1h", "--sound", "ton.wav"}), options);
  EXPECT_EQ(outcome.Exit, 0) << outcome.Error;
  EXPECT_EQ(Reminders()[0]["soundFile"], Data.Path() + "/ton.wav");
  EXPECT_EQ(EndInTime(*process).Exit, 0);
}

TEST_F(TKaufkoboldeCliReminders, QuestionsAreAskedWhereTheCallWasMade) {
  const auto process = Stay();
  TCliProcess caller(WithData({"delete", "Uhr"}), OnTerminal());
  ASSERT_TRUE(caller.WaitForOutput("Auswahl [2] "));
  caller.Type("j\n");
  EXPECT_EQ(caller.Wait().Exit, 0);
  EXPECT_THAT(Do({"list"}), Not(HasSubstr("Uhr")));
  EXPECT_EQ(EndInTime(*process).Exit, 0);
}

TEST_F(TKaufkoboldeCliReminders, RemindersAreDeliveredWhileACallerThinks) {
  Do({"add", PutAuction("/vase", "Vase", Now().PlusMs(TDateTime::cMsPerDay))});
  const auto process = Stay();
  Do({"remind", "Uhr", "--in", "2s", "--kind", "window"});
  TCliProcess caller(WithData({"delete", "Vase"}), OnTerminal());
  ASSERT_TRUE(caller.WaitForOutput("Auswahl [2] "));
  EXPECT_TRUE(process->WaitForOutput(Shop.Address("/uhr")));
  caller.Type("\n");
  EXPECT_EQ(caller.Wait().Exit, 1);
  EXPECT_EQ(EndInTime(*process).Exit, 0);
}

TEST_F(TKaufkoboldeCliReminders, CtrlCInAQuestionLeavesTheCommandAlone) {
  const auto process = Stay();
  TCliProcess caller(WithData({"delete", "Uhr"}), OnTerminal());
  ASSERT_TRUE(caller.WaitForOutput("Auswahl [2] "));
  caller.Type("\x03");
  const TCliOutcome outcome = caller.Wait();
  EXPECT_EQ(outcome.Exit, 1);
  EXPECT_THAT(outcome.Error, HasSubstr("Abgebrochen."));
  EXPECT_THAT(Do({"list"}), HasSubstr("Uhr")) << "and the other side goes on";
  EXPECT_EQ(EndInTime(*process).Exit, 0);
}

TEST_F(TKaufkoboldeCliReminders, ACallerThatIsKilledCancelsItsCommand) {
  const auto process = Stay();
  TCliProcess caller(WithData({"delete", "Uhr"}), OnTerminal());
  ASSERT_TRUE(caller.WaitForOutput("Auswahl [2] "));
  caller.Signal(SIGKILL);
  caller.Wait();
  EXPECT_THAT(Do({"list"}), HasSubstr("Uhr"));
  EXPECT_EQ(EndInTime(*process).Exit, 0);
}

TEST_F(TKaufkoboldeCliReminders, AQuestionEndsWithTheProcessThatAskedIt) {
  const auto process = Stay();
  TCliProcess caller(WithData({"delete", "Uhr"}), OnTerminal());
  ASSERT_TRUE(caller.WaitForOutput("Auswahl [2] "));
  EXPECT_EQ(EndInTime(*process).Exit, 0);
  const TCliOutcome outcome = caller.Wait();
  EXPECT_EQ(outcome.Exit, 1) << "though nobody has typed anything";
  EXPECT_THAT(outcome.Error, HasSubstr("Abgebrochen."));
}

TEST_F(TKaufkoboldeCliReminders, AFailureAtSetUpIsToldOnce) {
  const std::string failure = "Es ist kein Kalender eingerichtet.";
  const auto isToldOnce = [&](const std::string& iText) {
    const size_t first = iText.find(failure);
    return first != std::string::npos && iText.find(failure, first + 1) == std::string::npos;
  };
  const TCliOutcome alone = Run({"remind", "Uhr", "--in", "1h", "--kind", "calendar"});
  EXPECT_EQ(alone.Exit, 1);
  EXPECT_TRUE(isToldOnce(alone.Error)) << alone.Error;
  const TCliOutcome sound = Run({"test", "sound", "--sound", WriteSound("ton.wav")});
  EXPECT_EQ(sound.Exit, 1);
  EXPECT_THAT(sound.Error, MatchesRegex("Fehler: Der Ton [^\n]* wurde nicht abgespielt[^\n]*\n"));
  const auto process = Stay();
  const TCliOutcome asked = Run({"remind", "Uhr", "--in", "1h", "--kind", "calendar"});
  EXPECT_EQ(asked.Exit, 1);
  EXPECT_TRUE(isToldOnce(asked.Error)) << asked.Error;
  EXPECT_EQ(EndInTime(*process).Exit, 0);
}

TEST_F(TKaufkoboldeCliReminders, RunEndsInTimeWhileACallerThinks) {
  const auto process = Stay();
  TCliProcess caller(WithData({"delete", "Uhr"}), OnTerminal());
  ASSERT_TRUE(caller.WaitForOutput("Auswahl [2] "));
  EXPECT_EQ(EndInTime(*process).Exit, 0);
  caller.Type("j\n");
  EXPECT_EQ(caller.Wait().Exit, 1);
  EXPECT_THAT(Do({"list"}), HasSubstr("Uhr"));
}

TEST_F(TKaufkoboldeCliReminders, RunEndsInTimeWhileAShopNeverAnswers) {
  const auto process = Stay();
  Shop.Hang("/uhr");
  const int requests = Shop.Requests("/uhr");
  TCliProcess caller(WithData({"refresh"}), Options());
  ASSERT_TRUE(Shop.WaitForRequests("/uhr", requests + 1));
  const TCliOutcome outcome = EndInTime(*process);
  EXPECT_EQ(outcome.Exit, 0) << outcome.Error;
  const TCliOutcome refresh = caller.Wait();
  EXPECT_EQ(refresh.Exit, 1);
  EXPECT_THAT(refresh.Error, HasSubstr("Abgebrochen."));
}

TEST_F(TKaufkoboldeCliReminders, RunEndsInTimeWhileTheMailServerIsSilentAndKeepsTheMail) {
  const TRawTestServer server("", TRawTestServer::TMode::moSilent);
  // "http://127.0.0.1:port" but for the scheme.
  const std::string address = "smtp" + server.Address("").substr(4);
  Data.Write(u"kaufkobolde.ini",
             "[Communication]\nEMail=a@b.example\nEMailConfirmed=1\nSmtpUrl=" + address + "\n");
  Do({"remind", "Uhr", "--in", "1s", "--kind", "email"});
  const auto process = Stay();
  ASSERT_TRUE(process->WaitForOutput("Watchlist-Reminder (E-Mail): Melde..."));
  const TCliOutcome outcome = EndInTime(*process);
  EXPECT_EQ(outcome.Exit, 0) << outcome.Error;
  EXPECT_THAT(outcome.Error, HasSubstr("E-Mail konnte nicht verschickt werden"));
  size_t mails = 0;
  for (const auto& entry : std::filesystem::directory_iterator(Data.Path() + "/outbox")) {
    if (entry.path().extension() == ".mail") ++mails;
  }
  EXPECT_EQ(mails, 1u);
}

TEST_F(TKaufkoboldeCliReminders, RunEndsInTimeWhileTheSoundServerIsFrozen) {
  const TFrozenServer frozen(Data.Path() + "/pulse");
  const std::string sound = WriteSound("ton.wav");
  Do({"remind", "Uhr", "--in", "1s", "--kind", "sound", "--sound", sound});
  const auto process = Stay();
  ASSERT_TRUE(process->WaitForOutput("Watchlist-Reminder (Sound): Melde..."));
  ASSERT_TRUE(frozen.WaitForCaller());
  const TCliOutcome outcome = EndInTime(*process);
  EXPECT_EQ(outcome.Exit, 0) << outcome.Error;
}

TEST_F(TKaufkoboldeCliReminders, AReminderBehindAFrozenSoundServerIsKeptAtTheEnd) {
  Do({"add", PutAuction("/vase", "Vase", Now().PlusMs(TDateTime::cMsPerDay))});
  const TFrozenServer frozen(Data.Path() + "/pulse");
  Do({"remind", "Uhr", "--in", "1s", "--kind", "sound", "--sound", WriteSound("ton.wav")});
  Do({"remind", "Vase", "--in", "1s", "--kind", "window"});
  ASSERT_TRUE(HoldsSoon([&] { return Reminders()[1]["overdue"] == true; }));
  const auto process = Stay();
  ASSERT_TRUE(frozen.WaitForCaller());
  const TCliOutcome outcome = EndInTime(*process);
  EXPECT_THAT(outcome.Error, HasSubstr("Abgebrochen, das Programm wird beendet"));
  const TJson left = Reminders();
  ASSERT_EQ(left.size(), 1u) << "nothing that has not begun is lost";
  EXPECT_EQ(left[0]["name"], "Vase");
}

TEST_F(TKaufkoboldeCliReminders, ACallerThatLeavesARefreshDoesNotEndTheReminders) {
  const auto process = Stay();
  Shop.Hang("/uhr");
  const int requests = Shop.Requests("/uhr");
  TCliProcess caller(WithData({"refresh"}), Options());
  ASSERT_TRUE(Shop.WaitForRequests("/uhr", requests + 1));
  caller.Signal(SIGINT);
  EXPECT_EQ(caller.Wait().Exit, 1);
  Do({"remind", "Uhr", "--in", "1s", "--kind", "window"});
  EXPECT_TRUE(process->WaitForOutput(" Erinnerung: "));
  EXPECT_EQ(EndInTime(*process).Exit, 0);
}

TEST_F(TKaufkoboldeCliReminders, ASocketThatWasLeftBehindIsNoHindrance) {
  {
    const auto process = Stay();
    process->Signal(SIGKILL);
    process->Wait();
  }
  ASSERT_TRUE(std::filesystem::exists(Data.Path() + "/kaufkobolde.socket"));
  Do({"list"});
  const auto process = Stay();
  Do({"list"});
  EXPECT_EQ(EndInTime(*process).Exit, 0);
  EXPECT_FALSE(std::filesystem::exists(Data.Path() + "/kaufkobolde.socket"));
}

}  // namespace
}  // namespace kk
