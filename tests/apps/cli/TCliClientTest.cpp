#include "apps/cli/TCliClient.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>

#include "TTestCaller.h"
#include "apps/cli/TCliPeerConsole.h"
#include "host/base/Exception.h"
#include "tests/support/THostServerWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class TCliClientTest : public testing::Test, protected THostServerWorld {
 protected:
  TFakeConsole Host;
};

TEST_F(TCliClientTest, ACallComesWithItsArgumentsAndGetsItsOutput) {
  TTestCaller caller(Data.Path(), {u"list", u"--json"});
  const auto peer = NextCaller();
  EXPECT_EQ(peer->Call().Words, (std::vector<TString>{u"list", u"--json"}));
  EXPECT_EQ(peer->Call().Folder, FromUtf8(std::filesystem::current_path().string()));
  EXPECT_EQ(peer->Call().Version, THostMessage::cVersion);
  TCliPeerConsole console(*peer, Host);
  EXPECT_FALSE(console.IsInteractive());
  console.Print(u"Zeile \u00fc\u0007");
  console.Complain(u"Hinweis");
  console.Progress(u"1 von 2");
  console.Progress(u"1 von 2");
  peer->SendExit(3);
  EXPECT_EQ(caller.Wait(), 3);
  EXPECT_THAT(caller.Console().Printed(), ElementsAre("Zeile \u00fc\a"));
  EXPECT_THAT(caller.Console().Complained(), ElementsAre("Hinweis"));
  EXPECT_THAT(caller.Console().Progressed(), ElementsAre("1 von 2", "")) << "each once";
}

TEST_F(TCliClientTest, MuchOutputComesWhole) {
  TTestCaller caller(Data.Path(), {u"list"});
  const auto peer = NextCaller();
  TCliPeerConsole console(*peer, Host);
  const TString line(3'000'000, u'x');
  for (int i = 0; i < 4; ++i) console.Print(line);
  peer->SendExit(0);
  EXPECT_EQ(caller.Wait(), 0);
  ASSERT_THAT(caller.Console().Printed(), SizeIs(4));
  for (const std::string& printed : caller.Console().Printed()) EXPECT_EQ(printed.size(), 3000000u);
}

TEST_F(TCliClientTest, QuestionsAreAnsweredByTheCallerWhileTheLoopGoesOn) {
  TTestCaller caller(Data.Path(), {u"add"}, {u"K\u00fcche", u"geheim"});
  const auto peer = NextCaller();
  TCliPeerConsole console(*peer, Host);
  EXPECT_TRUE(console.IsInteractive());
  bool ran = false;
  Loop.Post([&] { ran = true; });
  EXPECT_EQ(console.ReadLine(u"Kategorie? "), u"K\u00fcche");
  EXPECT_TRUE(ran);
  EXPECT_EQ(console.ReadSecret(u"Kennwort? "), u"geheim");
  EXPECT_EQ(console.ReadLine(u"Noch etwas? "), std::nullopt) << "the end of the input";
  EXPECT_FALSE(console.TakeInterrupt());
  peer->SendExit(0);
  caller.Wait();
  EXPECT_THAT(caller.Console().Prompts(), ElementsAre("Kategorie? ", "Kennwort? ", "Noch etwas? "));
  EXPECT_THAT(caller.Console().SecretPrompts(), ElementsAre("Kennwort? "));
}

TEST_F(TCliClientTest, CallersWaitForTheirTurn) {
  TTestCaller first(Data.Path(), {u"eins"});
  const auto one = NextCaller();
  TTestCaller second(Data.Path(), {u"zwei"});
  const auto two = NextCaller();
  EXPECT_EQ(Server->TakeCaller(), nullptr);
  one->SendExit(1);
  EXPECT_EQ(first.Wait(), 1);
  EXPECT_FALSE(second.HasEnded());
  two->SendExit(2);
  EXPECT_EQ(second.Wait(), 2);
}

TEST_F(TCliClientTest, ACallerThatHasGoneInterruptsForGood) {
  THostSocket socket = Connect();
  SendText(socket, CallLine());
  const auto peer = NextCaller();
  TCliPeerConsole console(*peer, Host);
  EXPECT_TRUE(console.Flush());
  socket = THostSocket();
  EXPECT_EQ(console.ReadLine(u"? "), std::nullopt);
  EXPECT_TRUE(console.TakeInterrupt());
  EXPECT_TRUE(console.TakeInterrupt());
  EXPECT_FALSE(console.HostEnds());
  EXPECT_FALSE(console.Flush());
  console.Print(u"ins Leere");
}

TEST_F(TCliClientTest, AnInterruptOfTheCallerIsTakenOnce) {
  const THostSocket socket = Connect();
  THostMessage interrupt;
  interrupt.Kind = THostMessage::TKind::Interrupt;
  SendText(socket, CallLine());
  const auto peer = BeginNext();
  SendText(socket, interrupt.ToLine());
  TCliPeerConsole console(*peer, Host);
  ASSERT_TRUE(TurnUntil(Loop, [&] { return peer->IsInterrupted(); }));
  EXPECT_EQ(console.ReadLine(u"? "), std::nullopt);
  EXPECT_TRUE(console.TakeInterrupt());
  EXPECT_FALSE(console.TakeInterrupt());
}

TEST_F(TCliClientTest, ARequestToEndTheProcessEndsTheCommandToo) {
  const THostSocket socket = Connect();
  SendText(socket, CallLine());
  const auto peer = NextCaller();
  TCliPeerConsole console(*peer, Host);
  Host.Interrupt();
  EXPECT_EQ(console.ReadLine(u"? "), std::nullopt);
  EXPECT_TRUE(console.TakeInterrupt());
  EXPECT_TRUE(console.HostEnds());
}

TEST_F(TCliClientTest, AnAnswerBeforeTheQuestionIsNone) {
  const THostSocket socket = Connect();
  THostMessage line;
  line.Kind = THostMessage::TKind::Line;
  line.Text = u"zu früh";
  THostMessage interrupt;
  interrupt.Kind = THostMessage::TKind::Interrupt;
  SendText(socket, CallLine());
  const auto peer = BeginNext();
  SendText(socket, line.ToLine() + interrupt.ToLine());
  ASSERT_TRUE(TurnUntil(Loop, [&] { return peer->TakeInterrupt(); }));
  TCliPeerConsole console(*peer, Host);
  Host.Interrupt();
  console.ReadLine(u"? ");
  EXPECT_FALSE(peer->TakeAnswer());
}

TEST_F(TCliClientTest, ACallerWhoseServerGoesIsTold) {
  TTestCaller caller(Data.Path(), {u"list"});
  NextCaller();
  Server.reset();
  EXPECT_EQ(caller.Wait(), 1);
  EXPECT_THAT(caller.Console().Complained(), ElementsAre(HasSubstr("ist nicht mehr da")));
}

TEST_F(TCliClientTest, TheLastWordsAreBroughtOut) {
  TTestCaller caller(Data.Path(), {u"list"});
  const auto peer = NextCaller();
  TCliPeerConsole(*peer, Host).Complain(u"Abgebrochen.");
  peer->SendExit(1);
  Server.reset();
  EXPECT_EQ(caller.Wait(), 1);
  EXPECT_THAT(caller.Console().Complained(), ElementsAre("Abgebrochen."));
}

/// Interrupts once, when the test says so.
class TLateConsole : public TFakeConsole {
 public:
  bool TakeInterrupt() override { return Interrupts.exchange(false); }
  std::atomic<bool> Interrupts{false};
};

TEST_F(TCliClientTest, CtrlCReachesTheCommand) {
  TLateConsole console;
  TCliClient client(console, FromUtf8(Data.Path()));
  int exit = 0;
  std::thread caller([&] { exit = client.Run({u"list"}); });
  const auto peer = BeginNext();
  console.Interrupts = true;
  EXPECT_TRUE(TurnUntil(Loop, [&] { return peer->TakeInterrupt(); }));
  peer->SendExit(0);
  caller.join();
  EXPECT_EQ(exit, 0);
}

TEST_F(TCliClientTest, CtrlCBeforeItsTurnLeavesTheCallAtOnceAndNothingOfItIsDone) {
  TFakeConsole console;
  console.Interrupt();
  TCliClient client(console, FromUtf8(Data.Path()));
  EXPECT_EQ(client.Run({u"delete", u"Lampe", u"--yes"}), 1) << "though nobody has looked at it";
  EXPECT_THAT(console.Complained(), ElementsAre("Abgebrochen."));
  EXPECT_FALSE(NextCaller()->Begin());
}

TEST_F(TCliClientTest, ACallThatIsTooLongIsToldBeforeItIsMade) {
  TFakeConsole console;
  TCliClient client(console, FromUtf8(Data.Path()));
  try {
    client.Run({u"note", TString(THostMessage::cMaxLine, u'x')});
    ADD_FAILURE() << "it went out";
  } catch (const Exception& e) {
    EXPECT_THAT(ToUtf8(e.Message()), HasSubstr("zu lang"));
  }
}

/// Interrupts at each look.
class TImpatientConsole : public TFakeConsole {
 public:
  bool TakeInterrupt() override { return true; }
};

TEST_F(TCliClientTest, WhoInterruptsTwiceDoesNotWait) {
  TImpatientConsole console;
  TCliClient client(console, FromUtf8(Data.Path()));
  EXPECT_EQ(client.Run({u"list"}), 1);
  EXPECT_THAT(console.Complained(), ElementsAre("Abgebrochen."));
}

}  // namespace
}  // namespace kk
