#include "host/delivery/TDeliveries.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>

#include "host/base/Exception.h"
#include "host/base/TClock.h"
#include "host/common/TFileHelper.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/common/TKKIniFile.h"
#include "host/common/TQueueMainLoop.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TScriptedFormHost.h"
#include "tests/support/TSessionBus.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestClock.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A machine without a session, a mail server or anything else.
class TDeliveriesTest : public testing::Test {
 protected:
  TDeliveriesTest() { Section().SetEMail(u"a@b.example"); }

  static TIniFileSectionCommunication Section() { return {}; }
  void Set(TStringView iKey, TStringView iValue) {
    File.WriteString(u"Communication", iKey, iValue);
  }
  /// Nobody listens there.
  static TString DeadPort() { return IntToStr(FreePort()); }
  std::unique_ptr<TDeliveries> Make() {
    return std::make_unique<TDeliveries>([this](const TNotification& iNotification) {
      Shown.push_back(ToUtf8(iNotification.Caption));
    });
  }
  static bool SendMail(TString& oError) {
    return TKKCommonEmail::Send(u"Betreff", u"Text", u"a@b.example", u"a@b.example", u"A", oError);
  }
  size_t MailsKept() const {
    size_t count = 0;
    const std::string folder = Folder.Path() + "/outbox";
    if (!std::filesystem::exists(folder)) return 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (entry.path().extension() == ".mail") ++count;
    }
    return count;
  }
  /// Runs it beside the main thread, where no window waits.
  static void Beside(const std::function<void()>& iWork) { std::thread(iWork).join(); }
  bool WaitForShown() {
    const auto last = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (Shown.empty() && std::chrono::steady_clock::now() < last) {
      Loop.WaitForMessage(50);
      Loop.ProcessMessages();
    }
    return !Shown.empty();
  }

  TTempFolder Folder{true};
  TTestEnvironment Environment{
      {{"DBUS_SESSION_BUS_ADDRESS", ""}, {"XDG_RUNTIME_DIR", Folder.Path()}}};
  TLogRecorder Log;
  TKKIniFile File{Folder.File(u"test.ini")};
  TInstalled<TKKIniFile> FileInstalled{&SetIniFile, &File};
  TQueueMainLoop Loop;
  TInstalled<TMainLoop> LoopInstalled{&SetMainLoop, &Loop};
  std::vector<std::string> Shown;
};

TEST_F(TDeliveriesTest, EveryWayOutStandsBehindItsDoorAndGoesWithTheObject) {
  auto deliveries = Make();
  TString error;
  TSMSResult result = TSMSResult::srOk;
  Beside([&] {
    EXPECT_FALSE(SendMail(error));
    EXPECT_THAT(ToUtf8(error), HasSubstr("kein Postausgang eingerichtet"));
    EXPECT_FALSE(TKKCommonSms::Send(u"x", u"+491701234567", result, error, Now()));
    EXPECT_EQ(result, TSMSResult::srNotSetUp);
    EXPECT_FALSE(PlaySound(Folder.File(u"gone.wav")));
    EXPECT_EQ(errno, ENOENT);
  });
  EXPECT_THROW(CreateOutlook(), Exception);
  Notifier().Display({});
  EXPECT_NE(&SecretStore(), &FileSecretStore());
  deliveries.reset();

  EXPECT_FALSE(SendMail(error));
  EXPECT_EQ(error, u"Es ist kein Versand von E-Mails eingerichtet");
  EXPECT_FALSE(TKKCommonSms::Send(u"x", u"1", result, error, Now()));
  EXPECT_EQ(error, u"Es ist kein Versand von SMS eingerichtet");
  EXPECT_FALSE(PlaySound(u"x"));
  EXPECT_EQ(errno, ENODEV);
  EXPECT_THROW(Notifier(), Exception);
  EXPECT_EQ(&SecretStore(), &FileSecretStore());
}

TEST_F(TDeliveriesTest, ANotificationWithoutADesktopGoesToTheFallbackAndTellsSo) {
  const auto deliveries = Make();
  TNotification notification;
  notification.Caption = u"Lampe";
  std::vector<bool> told;
  notification.OnShown = [&](bool iByDesktop) { told.push_back(iByDesktop); };
  Notifier().Display(notification);
  ASSERT_TRUE(WaitForShown());
  EXPECT_THAT(Shown, ElementsAre("Lampe"));
  EXPECT_THAT(told, ElementsAre(false));
}

TEST_F(TDeliveriesTest, AMailThatTheServerDoesNotTakeIsKeptForAHostThatStays) {
  Set(u"SmtpUrl", u"smtp://127.0.0.1:" + DeadPort());
  const auto deliveries = Make();
  TString error;
  Beside([&] { EXPECT_FALSE(SendMail(error)); });
  EXPECT_THAT(ToUtf8(error), HasSubstr("beim nächsten Start"));
  EXPECT_EQ(MailsKept(), 1u);
}

TEST_F(TDeliveriesTest, WithTheOutboxAtWorkItIsTriedAgain) {
  Set(u"SmtpUrl", u"smtp://127.0.0.1:" + DeadPort());
  const auto deliveries = Make();
  deliveries->StartOutbox();
  TString error;
  Beside([&] { EXPECT_FALSE(SendMail(error)); });
  EXPECT_THAT(ToUtf8(error), HasSubstr("in 5 Sekunden erneut"));
}

TEST_F(TDeliveriesTest, AMailOfNoUseLaterIsNotKept) {
  Set(u"SmtpUrl", u"smtp://127.0.0.1:" + DeadPort());
  const auto deliveries = Make();
  TString error;
  Beside([&] {
    EXPECT_FALSE(
        TKKCommonEmail::SendNow({u"B", u"T", u"a@b.example", u"a@b.example", u"A"}, error));
  });
  EXPECT_NE(error, u"");
  EXPECT_EQ(MailsKept(), 0u);
}

TEST_F(TDeliveriesTest, AfterStopNothingIsDeliveredAndMailIsKept) {
  Set(u"SmtpUrl", u"smtp://127.0.0.1:" + DeadPort());
  Set(u"SmsUrl", u"http://127.0.0.1:" + DeadPort());
  Set(u"CalendarFolder", FromUtf8(Folder.Path()));
  Folder.Write(u"x.wav", "RIFF");
  const auto deliveries = Make();
  deliveries->StartOutbox();
  const auto start = std::chrono::steady_clock::now();
  deliveries->Stop();
  Beside([&] {
    TString error;
    TSMSResult result = TSMSResult::srOk;
    EXPECT_FALSE(SendMail(error));
    EXPECT_THAT(ToUtf8(error), HasSubstr("Programm wird beendet"));
    EXPECT_FALSE(TKKCommonSms::Send(u"x", u"+491701234567", result, error, Now()));
    EXPECT_EQ(result, TSMSResult::srCancelled);
    EXPECT_FALSE(PlaySound(Folder.File(u"x.wav")));
    EXPECT_EQ(errno, ECANCELED);
  });
  EXPECT_THROW(Notifier().Display({}), Exception);
  try {
    CreateOutlook()->AddAppointment(u"s", u"b", u"l", 0, Now(), 1);
    ADD_FAILURE() << "entered";
  } catch (const Exception& e) {
    EXPECT_THAT(ToUtf8(e.Message()), HasSubstr("Programm wird beendet"));
  }
  EXPECT_EQ(MailsKept(), 1u);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
  EXPECT_THAT(Shown, IsEmpty());
}

TEST_F(TDeliveriesTest, AfterStopTheKeyringIsNotAskedAnyMore) {
  TSessionBus bus;
  const TTestEnvironment session(bus.Environment());
  const auto deliveries = Make();
  EXPECT_EQ(SecretStore().Read(u"Communication", u"SmtpPassword"), u"");
  EXPECT_THAT(Log.Lines(), IsEmpty());
  deliveries->Stop();
  EXPECT_EQ(SecretStore().Read(u"Communication", u"SmtpPassword"), u"");
  EXPECT_THAT(Log.Lines(), ElementsAre(HasSubstr("Das Programm wird beendet")));
}

/// A server that takes connections and never says a word.
class TSilentServer {
 public:
  TSilentServer() {
    bind(FSocket, reinterpret_cast<sockaddr*>(&FAddress), sizeof FAddress);
    socklen_t size = sizeof FAddress;
    getsockname(FSocket, reinterpret_cast<sockaddr*>(&FAddress), &size);
    listen(FSocket, 1);
  }
  ~TSilentServer() {
    if (FClient >= 0) close(FClient);
    close(FSocket);
  }
  int Port() const { return ntohs(FAddress.sin_port); }
  bool HasClient() {
    if (!IsReadable(FSocket)) return false;
    FClient = accept(FSocket, nullptr, nullptr);
    return FClient >= 0;
  }
  bool ClientLeaves() const {
    char byte = 0;
    return IsReadable(FClient) && recv(FClient, &byte, 1, 0) <= 0;
  }

 private:
  static bool IsReadable(int iSocket) {
    pollfd wait = {iSocket, POLLIN, 0};
    return poll(&wait, 1, 8000) == 1;  // below the mailer's own limit
  }
  const int FSocket = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  int FClient = -1;
  sockaddr_in FAddress = {AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
};

TEST_F(TDeliveriesTest, StopEndsWhatTheOutboxHasUnderWay) {
  TTestClock clock;
  Set(u"SmtpUrl", u"smtp://127.0.0.1:" + DeadPort());
  TString error;
  auto deliveries = Make();
  Beside([&] { EXPECT_FALSE(SendMail(error)); });
  deliveries.reset();

  TSilentServer server;
  Set(u"SmtpUrl", u"smtp://127.0.0.1:" + IntToStr(server.Port()));
  clock.Advance(TDateTime::cMsPerMinute);
  deliveries = Make();
  deliveries->StartOutbox();
  ASSERT_TRUE(server.HasClient());
  deliveries->Stop();
  EXPECT_TRUE(server.ClientLeaves());
  EXPECT_EQ(MailsKept(), 1u);
}

}  // namespace
}  // namespace kk
