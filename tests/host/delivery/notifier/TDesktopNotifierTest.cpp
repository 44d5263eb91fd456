#include "TDesktopNotifierTest.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>

namespace kk {
namespace {

using nlohmann::json;
using std::chrono::milliseconds;
using testing::ElementsAre;

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
  EXPECT_TRUE(FLog.Lines().empty()) << "and nobody was asked to";
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
  ASSERT_EQ(symlink(SocketOf(FBus).c_str(), (runtime + "/bus").c_str()), 0);
  const TTestEnvironment environment(
      {{"DBUS_SESSION_BUS_ADDRESS", ""}, {"XDG_RUNTIME_DIR", runtime}});
  MakeNotifier(TDesktopNotifierOptions{});
  Show(Lamp());
  EXPECT_EQ(NextCall()["summary"], "Erinnerung: Lampe");
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

}  // namespace
}  // namespace kk
