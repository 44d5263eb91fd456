#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <ctime>
#include <filesystem>
#include <iterator>

#include "TDesktopNotifierTest.h"
#include "host/base/Exception.h"

namespace kk {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;

constexpr milliseconds cShort{400};

TEST_F(TDesktopNotifierTest, WithoutAServiceTheFallbackShowsItAtOnceAndOnlyOnce) {
  MakeNotifier();
  const auto begin = TSteady::now();
  Show(Lamp());
  EXPECT_TRUE(FFallen.empty());  // never while Display runs
  EXPECT_TRUE(WaitForFallback(1));
  EXPECT_LT(TSteady::now() - begin, milliseconds(1900));
  FNotifier->Stop();
  Turn();
  EXPECT_THAT(FFallen, ElementsAre("Lampe"));
  EXPECT_TRUE(FLog.Contains(
      "info Host: Der Desktop zeigt die Meldung nicht: Es läuft kein Benachrichtigungsdienst"));
}

TEST_F(TDesktopNotifierTest, AServiceThatComesLaterIsUsed) {
  MakeNotifier();
  Show(Lamp());
  EXPECT_TRUE(WaitForFallback(1));
  StartService();
  Show(Named(u"Vase"));
  EXPECT_EQ(NextCall()["summary"], "Erinnerung: Vase");
}

TEST_F(TDesktopNotifierTest, WithoutABusTheFallbackShowsIt) {
  for (const char* address : {"unix:path=/nothing/bus", "tcp:host=localhost,port=1",
                              "unix:path=/nothing/bus;tcp:host=localhost,port=1",
                              "unixexec:path=/bin/true", "nonsense"}) {
    FFallen.clear();
    MakeNotifier({.Address = address});
    Show(Lamp());
    EXPECT_TRUE(WaitForFallback(1)) << address;
  }
  EXPECT_THAT(FLog.Lines(),
              testing::Each("info Host: Der Desktop zeigt die Meldung nicht: Der Desktop ist nicht "
                            "erreichbar (No such file or directory)"))
      << "nothing but sockets of this machine is even tried";
}

TEST_F(TDesktopNotifierTest, AServiceThatRefusesHasItsReasonInTheLogAndTheFallbackShowsIt) {
  StartService({"--refuse"});
  MakeNotifier();
  Show(Lamp());
  EXPECT_TRUE(WaitForFallback(1));
  EXPECT_TRUE(
      FLog.Contains("info Host: Der Desktop zeigt die Meldung nicht: "
                    "Der Benachrichtigungsdienst meldet einen Fehler (keineLust)"))
      << FLog.Lines().back();
}

TEST_F(TDesktopNotifierTest, AnAnswerThatMakesNoSenseIsAFailure) {
  StartService({"--garble"});
  MakeNotifier();
  Show(Lamp());
  EXPECT_TRUE(WaitForFallback(1));
}

TEST_F(TDesktopNotifierTest, AFrozenServiceEndsInTheFallbackWithinTheLimitForAllThatWait) {
  StartService();
  MakeNotifier(cShort);
  FService->Signal(SIGSTOP);
  const auto begin = TSteady::now();
  for (const TStringView name : {u"1", u"2", u"3"}) Show(Named(name));
  EXPECT_TRUE(WaitForFallback(3));
  EXPECT_GE(TSteady::now() - begin, cShort);
  EXPECT_LT(TSteady::now() - begin, milliseconds(2000));
  EXPECT_LT(FLongestTurn, milliseconds(300));
  EXPECT_THAT(FFallen, ElementsAre("1", "2", "3"));
  EXPECT_TRUE(
      FLog.Contains("info Host: Der Desktop zeigt die Meldung nicht: Der Benachrichtigungsdienst "
                    "antwortet nicht"));

  FService->Signal(SIGCONT);
  Show(Named(u"4"));
  EXPECT_EQ(NextCall()["summary"], "Erinnerung: 4");
}

TEST_F(TDesktopNotifierTest, WhatAServiceShowsTooLateIsTakenBack) {
  StartService({"--act", "visit"});
  MakeNotifier(cShort);
  ShowAndWait(Named(u"Vase"));
  FService->Signal(SIGSTOP);
  Show(Lamp());
  EXPECT_TRUE(WaitForFallback(1));
  FService->Signal(SIGCONT);
  EXPECT_EQ(NextCall()["summary"], "Erinnerung: Lampe");
  EXPECT_EQ(FService->WaitForLine("close "), "close 2");
  EXPECT_THAT(FFallen, ElementsAre("Lampe"));
}

TEST_F(TDesktopNotifierTest, AFrozenBusEndsInTheFallbackWithinTheLimit) {
  StartService();
  MakeNotifier(cShort);
  FBus.Signal(SIGSTOP);
  const auto begin = TSteady::now();
  Show(Lamp());
  EXPECT_TRUE(WaitForFallback(1));
  EXPECT_GE(TSteady::now() - begin, cShort);
  EXPECT_LT(TSteady::now() - begin, milliseconds(2000));
  EXPECT_LT(FLongestTurn, milliseconds(300));

  FBus.Signal(SIGCONT);
  Show(Named(u"Vase"));
  EXPECT_EQ(NextCall()["summary"], "Erinnerung: Vase");
}

TEST_F(TDesktopNotifierTest, AConnectionThatNeverCameAboutIsBegunAnew) {
  StartService();
  const TTempFolder folder;
  const std::string silent = folder.Path() + "/silent";
  const std::string path = folder.Path() + "/bus";
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  silent.copy(address.sun_path, sizeof address.sun_path - 1);
  const int server = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  ASSERT_EQ(bind(server, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(listen(server, 5), 0);
  ASSERT_EQ(symlink(silent.c_str(), path.c_str()), 0);
  MakeNotifier({.Address = "unix:path=" + path, .Limit = cShort});
  Show(Lamp());
  EXPECT_TRUE(WaitForFallback(1));

  ASSERT_EQ(unlink(path.c_str()), 0);
  ASSERT_EQ(symlink(SocketOf(FBus).c_str(), path.c_str()), 0);
  Show(Named(u"Vase"));
  EXPECT_EQ(NextCall()["summary"], "Erinnerung: Vase");
  close(server);
}

TEST_F(TDesktopNotifierTest, OfAThousandThatNobodyClosesTheOldestIsForgotten) {
  StartService();
  MakeNotifier();
  std::vector<TNotification> notifications;
  for (int i = 0; i < 1001; ++i) notifications.push_back(Named(IntToStr(i)));
  for (const TNotification& notification : notifications) Show(notification);
  Show(notifications[0]);
  Show(notifications[5]);
  for (int i = 0; i < 1001; ++i) NextCall();
  EXPECT_EQ(NextCall()["replaces"], 0);
  EXPECT_EQ(NextCall()["replaces"], 6);
}

TEST_F(TDesktopNotifierTest, ABusThatFreezesWhileConnectedEndsInTheFallbackToo) {
  StartService({"--act", "visit"});
  MakeNotifier(cShort);
  ShowAndWait(Lamp());
  FBus.Signal(SIGSTOP);
  Show(Named(u"Vase"));
  EXPECT_TRUE(WaitForFallback(1));
  FBus.Signal(SIGCONT);
  EXPECT_THAT(FFallen, ElementsAre("Vase"));
}

TEST_F(TDesktopNotifierTest, ABusThatIsGoneEndsInTheFallback) {
  StartService({"--act", "visit"});
  MakeNotifier();
  ShowAndWait(Lamp());
  FBus.Stop();
  Show(Named(u"Vase"));
  Show(Named(u"Krug"));
  EXPECT_TRUE(WaitForFallback(2));
  EXPECT_THAT(FFallen, ElementsAre("Vase", "Krug"));
}

TEST_F(TDesktopNotifierTest, AnotherBusGetsNoNumbersOfTheOldOne) {
  const TTempFolder folder;
  const std::string path = folder.Path() + "/bus";
  ASSERT_EQ(symlink(SocketOf(FBus).c_str(), path.c_str()), 0);
  StartService({"--act", "visit"});
  MakeNotifier({.Address = "unix:path=" + path});
  ShowAndWait(Lamp());

  TSessionBus other;
  ASSERT_EQ(unlink(path.c_str()), 0);
  ASSERT_EQ(symlink(SocketOf(other).c_str(), path.c_str()), 0);
  FBus.Stop();
  StartService(other, {});
  Show(Named(u"Vase"));  // goes to the fallback if it is this that finds the old one gone
  Show(Lamp());
  nlohmann::json call = NextCall();
  if (call["summary"] == "Erinnerung: Vase") call = NextCall();
  EXPECT_EQ(call["summary"], "Erinnerung: Lampe");
  EXPECT_EQ(call["replaces"], 0);
}

TEST_F(TDesktopNotifierTest, WhatHasWaitedTooLongBehindOthersGoesToTheFallbackUnsent) {
  StartService();
  MakeNotifier(milliseconds(2000), milliseconds(0));
  Show(Lamp());
  EXPECT_TRUE(WaitForFallback(1));
  EXPECT_EQ(FService->Output().find("notify"), std::string::npos);
  EXPECT_TRUE(
      FLog.Contains("info Host: Der Desktop zeigt die Meldung nicht: Der Benachrichtigungsdienst "
                    "ist zu langsam"));
}

TEST_F(TDesktopNotifierTest, StopEndsAtOnceThoughTheBusIsFrozenAndNothingRunsAfterwards) {
  MakeNotifier();
  FBus.Signal(SIGSTOP);
  Show(Lamp());
  Show(Named(u"Vase"));
  const auto begin = TSteady::now();
  FNotifier->Stop();
  EXPECT_LT(TSteady::now() - begin, milliseconds(1000));
  Turn();
  EXPECT_TRUE(FFallen.empty());
  EXPECT_TRUE(
      FLog.Contains("error Host: Das Programm wird beendet, eine Meldung wurde nicht mehr "
                    "gezeigt: Lampe"));
  EXPECT_TRUE(
      FLog.Contains("error Host: Das Programm wird beendet, eine Meldung wurde nicht mehr "
                    "gezeigt: Vase"));
  FNotifier.reset();
  Turn();
}

TEST_F(TDesktopNotifierTest, WhatIsOnItsWayToTheFallbackAtStopIsInTheLog) {
  MakeNotifier();
  Show(Lamp());
  // The loop has got it when the wait returns, and is not turned before Stop.
  FLoop.WaitForMessage(20000);
  FNotifier->Stop();
  Turn();
  EXPECT_TRUE(FFallen.empty());
  EXPECT_EQ(FLog.Lines().back(),
            "error Host: Das Programm wird beendet, eine Meldung wurde nicht mehr gezeigt: Lampe");
}

TEST_F(TDesktopNotifierTest, WhatTheServiceHasNotAnsweredAtStopIsInTheLogInABoundedLine) {
  StartService({"--mute"});
  MakeNotifier();
  Show(Named(TString(300, u'x')));
  NextCall();
  FNotifier->Stop();
  EXPECT_THAT(FLog.Lines(), ElementsAre("error Host: Das Programm wird beendet, eine Meldung wurde "
                                        "nicht mehr gezeigt: " +
                                        std::string(200, 'x')));
}

TEST_F(TDesktopNotifierTest, NothingTurnsWhileThereIsNothingToDo) {
  const auto used = [] { return std::clock() * 1000 / CLOCKS_PER_SEC; };
  StartService({"--act", "visit"});
  MakeNotifier(cShort);
  ShowAndWait(Lamp());
  auto before = used();
  FLoop.WaitForMessage(1000);
  EXPECT_LT(used() - before, 200) << "behind one that was shown";
  FService->Stop();
  Show(Named(u"Vase"));
  EXPECT_TRUE(WaitForFallback(1));
  before = used();
  FLoop.WaitForMessage(1000);
  EXPECT_LT(used() - before, 200) << "behind one that was not";
}

TEST_F(TDesktopNotifierTest, NoHandleIsLeftBehind) {
  const auto handles = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  };
  StartService({"--act", "visit"});
  const auto before = handles();
  for (const std::string& address : {FBus.Address(), std::string("unix:path=/nothing/bus")}) {
    MakeNotifier({.Address = address});
    const size_t settled = FFallen.size() + FOpener.Opened.size();
    Show(Lamp());
    EXPECT_TRUE(RunUntil([&] { return FFallen.size() + FOpener.Opened.size() > settled; }));
    FNotifier.reset();
  }
  EXPECT_EQ(handles(), before);
}

TEST_F(TDesktopNotifierTest, AClickThatIsOnItsWayAtStopOpensNothing) {
  StartService({"--act", "visit"});
  MakeNotifier();
  Show(Lamp());
  FLoop.WaitForMessage(20000);
  FNotifier->Stop();
  Turn();
  EXPECT_TRUE(FOpener.Opened.empty());
  EXPECT_TRUE(FLog.Lines().empty());
}

TEST_F(TDesktopNotifierTest, AfterStopDisplayRaises) {
  MakeNotifier();
  FNotifier->Stop();
  FNotifier->Stop();
  EXPECT_THROW(Show(Lamp()), Exception);
}

TEST_F(TDesktopNotifierTest, WithoutASessionTheFallbackShowsIt) {
  const TTestEnvironment environment({{"DBUS_SESSION_BUS_ADDRESS", ""}, {"XDG_RUNTIME_DIR", ""}});
  MakeNotifier(TDesktopNotifierOptions{});
  Show(Lamp());
  EXPECT_TRUE(WaitForFallback(1));
}

}  // namespace
}  // namespace kk
