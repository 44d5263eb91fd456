#include "host/delivery/notifier/TDesktopNotifier.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "host/base/Exception.h"
#include "host/common/OpenURL.h"
#include "host/common/TQueueMainLoop.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TServerProcess.h"
#include "tests/support/TSessionBus.h"

namespace kk {
namespace {

using nlohmann::json;
using std::chrono::milliseconds;
using testing::ElementsAre;
using TSteady = std::chrono::steady_clock;

constexpr milliseconds cShort{400};

class TRecordingOpener : public IUrlOpener {
 public:
  bool Open(const std::string& iUrl) override {
    Opened.push_back(iUrl);
    return true;
  }
  std::vector<std::string> Opened;
};

class TClicks : public TObject {
 public:
  void DoClick(TObject* Sender, const TGuid& iId) {
    EXPECT_EQ(Sender, nullptr);
    Ids.push_back(iId);
  }
  std::vector<TGuid> Ids;
};

class TDesktopNotifierTest : public testing::Test {
 protected:
  TDesktopNotifierTest()
      : FLoopBefore(SetMainLoop(&FLoop)), FOpenerBefore(SetUrlOpener(&FOpener)) {}
  ~TDesktopNotifierTest() override {
    FNotifier.reset();
    SetUrlOpener(FOpenerBefore);
    SetMainLoop(FLoopBefore);
  }

  void StartService(const std::vector<std::string>& iArguments = {}) {
    FService = std::make_unique<TServerProcess>(
        TServerProcess::Python("host/delivery/notifier/servers/notifications.py", iArguments),
        FBus.Environment());
    FService->WaitForLine("ready");
  }

  void MakeNotifier(milliseconds iLimit = milliseconds(2000),
                    milliseconds iMaxWait = milliseconds(10000)) {
    MakeNotifier({.Address = FBus.Address(), .Limit = iLimit, .MaxWait = iMaxWait});
  }
  void MakeNotifier(const TDesktopNotifierOptions& iOptions) {
    FNotifier = std::make_unique<TDesktopNotifier>(
        [this](const TNotification& iNotification) {
          EXPECT_TRUE(FLoop.IsMainThread());
          FFallen.push_back(ToUtf8(iNotification.Caption));
        },
        iOptions);
  }

  static TNotification Lamp() {
    TNotification notification;
    notification.Id = GuidLiteral("{FC3B5C09-B3C7-43DF-BBFE-DFE2158FFCE2}");
    notification.Title = u"Erinnerung";
    notification.Link = u"https://example.test/lampe?a=1&b=2";
    notification.LinkText = u"Jetzt besuchen";
    notification.Caption = u"Lampe";
    return notification;
  }
  static TNotification Named(TStringView iCaption) {
    TNotification notification = Lamp();
    notification.Id = NewGuid();
    notification.Caption = iCaption;
    return notification;
  }

  void Show(const TNotification& iNotification) {
    const auto begin = TSteady::now();
    FNotifier->Display(iNotification);
    Measure(begin);
  }

  // Returns when the service has answered, which a service started with "--act" lets one see.
  void ShowAndWait(const TNotification& iNotification) {
    const size_t before = FOpener.Opened.size();
    Show(iNotification);
    EXPECT_TRUE(RunUntil([&] { return FOpener.Opened.size() > before; }));
    NextCall();
  }

  // What the service was asked to show; the lines before it are passed over.
  json NextCall() {
    const std::string line = FService->WaitForLine("notify ");
    return line.empty() ? json() : json::parse(line.substr(7));
  }

  // Runs the main loop until it holds, or some seconds have passed.
  template <class Condition>
  bool RunUntil(Condition&& iCondition) {
    const auto last = TSteady::now() + std::chrono::seconds(20);
    while (!iCondition() && TSteady::now() < last) {
      FLoop.WaitForMessage(20);
      Turn();
    }
    return iCondition();
  }
  bool WaitForFallback(size_t iCount) {
    return RunUntil([&] { return FFallen.size() >= iCount; });
  }
  void Turn() {
    const auto begin = TSteady::now();
    FLoop.ProcessMessages();
    Measure(begin);
  }
  void Measure(TSteady::time_point iBegin) {
    FLongestTurn = std::max<TSteady::duration>(FLongestTurn, TSteady::now() - iBegin);
  }

  TSessionBus FBus;
  TLogRecorder FLog;
  TQueueMainLoop FLoop;
  TMainLoop* FLoopBefore;
  TRecordingOpener FOpener;
  IUrlOpener* FOpenerBefore;
  TClicks FClicks;
  std::unique_ptr<TServerProcess> FService;
  std::unique_ptr<TDesktopNotifier> FNotifier;
  std::vector<std::string> FFallen;
  TSteady::duration FLongestTurn{};
};

TEST_F(TDesktopNotifierTest, ANotificationReachesTheServiceOfTheDesktop) {
  StartService();
  MakeNotifier();
  TNotification notification = Lamp();
  notification.Text = u"Endet um 18 Uhr <heute>";
  Show(notification);
  EXPECT_EQ(NextCall(), json({{"app", "Kaufkobolde"},
                              {"replaces", 0},
                              {"icon", ""},
                              {"summary", "Erinnerung: Lampe"},
                              {"body", "Endet um 18 Uhr &lt;heute&gt;"},
                              {"actions", {"default", "Jetzt besuchen", "visit", "Jetzt besuchen"}},
                              {"urgency", 1},
                              {"expire", -1}}));
}

TEST_F(TDesktopNotifierTest, ALastingNotificationStaysUntilItIsDismissed) {
  StartService();
  MakeNotifier();
  TNotification notification = Lamp();
  notification.Position = TWindowPosition::wpDesktopLasting;
  Show(notification);
  const json call = NextCall();
  EXPECT_EQ(call["expire"], 0);
  EXPECT_EQ(call["urgency"], 2);
}

TEST_F(TDesktopNotifierTest, AServiceWithoutMarkupAndActionsGetsPlainTextAndTheAddress) {
  StartService({"--capabilities", "body"});
  MakeNotifier();
  TNotification notification = Lamp();
  notification.Text = u"a < b";
  Show(notification);
  EXPECT_EQ(NextCall()["body"], "a < b\nhttps://example.test/lampe?a=1&b=2");
}

TEST_F(TDesktopNotifierTest, WithoutLinkAndCallbackThereIsNoAction) {
  StartService();
  MakeNotifier();
  TNotification notification = Lamp();
  notification.Link.clear();
  Show(notification);
  EXPECT_EQ(NextCall()["actions"], json::array());
  notification.OnClick = TNotifyNotifierCallback::Of<&TClicks::DoClick>(&FClicks);
  Show(notification);
  EXPECT_EQ(NextCall()["actions"], json({"default", "Jetzt besuchen"}));
}

TEST_F(TDesktopNotifierTest, ALinkThatCantBeOpenedIsNotOffered) {
  StartService({"--capabilities", "body"});
  MakeNotifier();
  TNotification notification = Lamp();
  notification.Link = TString(u"https://") + TString(32 * 1024, u'x');
  Show(notification);
  const json call = NextCall();
  EXPECT_EQ(call["actions"], json::array());
  EXPECT_EQ(call["body"], "");
}

TEST_F(TDesktopNotifierTest, ALaterNotificationOfTheSameIdTakesThePlaceOfTheFirst) {
  StartService();
  MakeNotifier();
  Show(Named(u"Vase"));
  Show(Lamp());
  Show(Lamp());
  EXPECT_EQ(NextCall()["replaces"], 0);
  EXPECT_EQ(NextCall()["replaces"], 0);
  EXPECT_EQ(NextCall()["replaces"], 2);
}

TEST_F(TDesktopNotifierTest, AClosedNotificationIsForgotten) {
  StartService({"--close-others"});
  MakeNotifier();
  Show(Lamp());
  Show(Named(u"Vase"));
  Show(Lamp());
  NextCall();
  NextCall();
  EXPECT_EQ(NextCall()["replaces"], 0);
}

TEST_F(TDesktopNotifierTest, AnotherServiceIsAskedAnewAndGetsNoNumbersOfTheOldOne) {
  StartService({"--act", "visit"});
  MakeNotifier();
  ShowAndWait(Lamp());
  FService->Stop();
  StartService({"--capabilities", "body"});
  Show(Lamp());
  const json call = NextCall();
  EXPECT_EQ(call["replaces"], 0);
  EXPECT_THAT(call["body"].get<std::string>(), testing::HasSubstr("https://example.test/lampe"));
}

TEST_F(TDesktopNotifierTest, TheActionOpensTheLinkAndTellsWhoAskedForIt) {
  StartService({"--act", "visit"});
  MakeNotifier();
  TNotification notification = Lamp();
  notification.OnClick = TNotifyNotifierCallback::Of<&TClicks::DoClick>(&FClicks);
  Show(notification);
  EXPECT_TRUE(RunUntil([&] { return !FClicks.Ids.empty(); }));
  EXPECT_THAT(FOpener.Opened, ElementsAre("https://example.test/lampe?a=1&b=2"));
  EXPECT_THAT(FClicks.Ids, ElementsAre(notification.Id));
}

TEST_F(TDesktopNotifierTest, AClickWithoutALinkOpensNothing) {
  StartService({"--act", "default"});
  MakeNotifier();
  TNotification notification = Lamp();
  notification.Link.clear();
  notification.OnClick = TNotifyNotifierCallback::Of<&TClicks::DoClick>(&FClicks);
  Show(notification);
  EXPECT_TRUE(RunUntil([&] { return !FClicks.Ids.empty(); }));
  EXPECT_TRUE(FOpener.Opened.empty());
}

TEST_F(TDesktopNotifierTest, ManyNotificationsAreAllShownOnceAndInOrder) {
  StartService();
  MakeNotifier();
  for (int i = 0; i < 200; ++i) Show(Named(IntToStr(i)));
  for (int i = 0; i < 200; ++i) {
    ASSERT_EQ(NextCall()["summary"], "Erinnerung: " + std::to_string(i));
  }
  EXPECT_TRUE(FFallen.empty());
  EXPECT_LT(FLongestTurn, milliseconds(500));
}

TEST_F(TDesktopNotifierTest, HostileTextsReachTheServiceCleanedAndBounded) {
  StartService();
  MakeNotifier();
  TNotification notification = Lamp();
  notification.Caption = TString(u"a") + u'\0' + u"b\u001B[31m" + u'\xFFFF' + u'\xD800' + u"c";
  notification.Title = TString(1 << 20, u'<');
  notification.Text = u"<img src=\"file:///etc/passwd\"/>" + TString(1 << 20, u'&');
  notification.LinkText = TString(1 << 20, u'"');
  Show(notification);
  const json call = NextCall();
  EXPECT_EQ(call["summary"].get<std::string>().substr(0, 20), std::string(20, '<'));
  const std::string body = call["body"];
  const std::string begin =
      "ab[31m\uFFFD\uFFFDc\n&lt;img src=\"file:///etc/passwd\"/&gt;&amp;&amp;";
  EXPECT_EQ(body.substr(0, begin.size()), begin);
  EXPECT_LT(body.size(), 20000u);
  EXPECT_TRUE(FFallen.empty());
}

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
  EXPECT_EQ(FLog.Lines().front(),
            "info Host: Der Desktop zeigt die Meldung nicht: "
            "Der Desktop ist nicht erreichbar (No such file or directory)");
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

TEST_F(TDesktopNotifierTest, TheBusOfTheEnvironmentIsTheDefault) {
  StartService();
  const TTestEnvironment environment(FBus.Environment());
  MakeNotifier(TDesktopNotifierOptions{});
  Show(Lamp());
  EXPECT_EQ(NextCall()["summary"], "Erinnerung: Lampe");
}

TEST_F(TDesktopNotifierTest, WithoutAnAddressTheSocketInTheRuntimeFolderIsTheBus) {
  StartService();
  const TTempFolder folder;
  const std::string runtime = folder.Path() + "/ein Ordner, mit ä";
  std::filesystem::create_directory(runtime);
  const std::string address = FBus.Address();
  const size_t begin = address.find('=') + 1;
  const std::string socket = address.substr(begin, address.find(',') - begin);
  ASSERT_EQ(symlink(socket.c_str(), (runtime + "/bus").c_str()), 0);
  const TTestEnvironment environment(
      {{"DBUS_SESSION_BUS_ADDRESS", ""}, {"XDG_RUNTIME_DIR", runtime}});
  MakeNotifier(TDesktopNotifierOptions{});
  Show(Lamp());
  EXPECT_EQ(NextCall()["summary"], "Erinnerung: Lampe");
}

TEST_F(TDesktopNotifierTest, WithoutASessionTheFallbackShowsIt) {
  const TTestEnvironment environment({{"DBUS_SESSION_BUS_ADDRESS", ""}, {"XDG_RUNTIME_DIR", ""}});
  MakeNotifier(TDesktopNotifierOptions{});
  Show(Lamp());
  EXPECT_TRUE(WaitForFallback(1));
}

TEST_F(TDesktopNotifierTest, WhoAsksIsToldOnTheMainThreadHowItWasShown) {
  MakeNotifier();
  std::vector<std::string> told;
  const auto tell = [&](TStringView iCaption) {
    TNotification notification = Named(iCaption);
    notification.OnShown = [this, &told, name = ToUtf8(iCaption)](bool iByDesktop) {
      EXPECT_TRUE(FLoop.IsMainThread());
      told.push_back(name + (iByDesktop ? " by the desktop" : " in another way"));
    };
    return notification;
  };
  Show(tell(u"Vase"));
  EXPECT_TRUE(RunUntil([&] { return told.size() == 1; }));
  StartService();
  Show(tell(u"Krug"));
  EXPECT_TRUE(RunUntil([&] { return told.size() == 2; }));
  Show(tell(u"Lampe"));
  FLoop.WaitForMessage(20000);
  FNotifier->Stop();
  Turn();
  EXPECT_THAT(told, ElementsAre("Vase in another way", "Krug by the desktop"));
  EXPECT_THAT(FFallen, ElementsAre("Vase"));
}

TEST_F(TDesktopNotifierTest, InstalledItIsBehindTheDoorOfTheHost) {
  StartService();
  MakeNotifier();
  INotifier* before = SetNotifier(FNotifier.get());
  TfrmKKCommonNotifier::Display(TWindowPosition::wpDesktop, NewGuid(), u"Erinnerung",
                                u"https://example.test/", u"Jetzt besuchen", u"", u"Lampe", {});
  SetNotifier(before);
  const json call = NextCall();
  EXPECT_EQ(call["summary"], "Erinnerung: Lampe");
  EXPECT_EQ(call["body"], "");
}

TEST_F(TDesktopNotifierTest, WhoAskedIsToldOnTheMainThreadHowItWasShown) {
  StartService();
  MakeNotifier();
  std::vector<bool> told;
  TNotification lamp = Lamp();
  lamp.OnShown = [&](bool iByDesktop) {
    EXPECT_TRUE(FLoop.IsMainThread());
    told.push_back(iByDesktop);
  };
  Show(lamp);
  EXPECT_TRUE(RunUntil([&] { return told.size() == 1; }));
  FService->Stop();
  Show(lamp);
  EXPECT_TRUE(RunUntil([&] { return told.size() == 2; }));
  EXPECT_THAT(told, ElementsAre(true, false));
}

}  // namespace
}  // namespace kk
