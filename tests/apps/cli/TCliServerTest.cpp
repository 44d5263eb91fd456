#include "apps/cli/TCliServer.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstring>
#include <filesystem>

#include "TTestCaller.h"
#include "apps/cli/TCliPeerConsole.h"
#include "host/base/Exception.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr auto cDeadline = std::chrono::seconds(30);

/// The process that stays, as far as its callers see it.
class TCliServerTest : public testing::Test {
 protected:
  /// Turns the loop until the condition holds; fails the test after the deadline.
  template <class TCondition>
  bool TurnUntil(TCondition iCondition) {
    const auto last = std::chrono::steady_clock::now() + cDeadline;
    while (!iCondition()) {
      if (std::chrono::steady_clock::now() > last) return false;
      Loop.ProcessMessages();
      Loop.WaitForMessage(1);
    }
    return true;
  }
  std::shared_ptr<TCliPeer> NextCaller() {
    std::shared_ptr<TCliPeer> peer;
    EXPECT_TRUE(TurnUntil([&] { return (peer = Server->TakeCaller()) != nullptr; }));
    return peer;
  }
  /// The same, and his turn has come.
  std::shared_ptr<TCliPeer> BeginNext() {
    auto peer = NextCaller();
    EXPECT_TRUE(peer->Begin());
    return peer;
  }
  TCliSocket Connect() const { return TCliSocket::Connect(FromUtf8(Data.Path())); }
  /// Returns when the other side has hung up.
  bool IsHungUp(const TCliSocket& iSocket) {
    std::string bytes;
    return TurnUntil([&] { return iSocket.Receive(bytes) == TCliSocket::TEnd::Closed; });
  }
  static void SendText(const TCliSocket& iSocket, std::string_view iText) {
    while (!iText.empty()) {
      size_t sent = 0;
      if (iSocket.Send(iText, sent) == TCliSocket::TEnd::Closed) return;
      iText.remove_prefix(sent);
    }
  }
  static std::string CallLine() {
    TCliMessage call;
    call.Kind = TCliMessage::TKind::Call;
    call.Words = {u"list"};
    return call.ToLine();
  }

  TLogRecorder Log;
  TTestMainLoop Loop;
  TTempFolder Data;
  TFakeConsole Host;
  std::unique_ptr<TCliServer> Server =
      std::make_unique<TCliServer>(FromUtf8(Data.Path()), static_cast<TMainLoop&>(Loop));
};

TEST_F(TCliServerTest, ACallComesWithItsArgumentsAndGetsItsOutput) {
  TTestCaller caller(Data.Path(), {u"list", u"--json"});
  const auto peer = NextCaller();
  EXPECT_EQ(peer->Call().Words, (std::vector<TString>{u"list", u"--json"}));
  EXPECT_EQ(peer->Call().Folder, FromUtf8(std::filesystem::current_path().string()));
  EXPECT_EQ(peer->Call().Version, TCliMessage::cVersion);
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

TEST_F(TCliServerTest, MuchOutputComesWhole) {
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

TEST_F(TCliServerTest, QuestionsAreAnsweredByTheCallerWhileTheLoopGoesOn) {
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

TEST_F(TCliServerTest, CallersWaitForTheirTurn) {
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

TEST_F(TCliServerTest, ACallerThatHasGoneInterruptsForGood) {
  TCliSocket socket = Connect();
  SendText(socket, CallLine());
  const auto peer = NextCaller();
  TCliPeerConsole console(*peer, Host);
  EXPECT_TRUE(console.Flush());
  socket = TCliSocket();
  EXPECT_EQ(console.ReadLine(u"? "), std::nullopt);
  EXPECT_TRUE(console.TakeInterrupt());
  EXPECT_TRUE(console.TakeInterrupt());
  EXPECT_FALSE(console.HostEnds());
  EXPECT_FALSE(console.Flush());
  console.Print(u"ins Leere");
}

TEST_F(TCliServerTest, AnInterruptOfTheCallerIsTakenOnce) {
  const TCliSocket socket = Connect();
  TCliMessage interrupt;
  interrupt.Kind = TCliMessage::TKind::Interrupt;
  SendText(socket, CallLine());
  const auto peer = BeginNext();
  SendText(socket, interrupt.ToLine());
  TCliPeerConsole console(*peer, Host);
  ASSERT_TRUE(TurnUntil([&] { return peer->IsInterrupted(); }));
  EXPECT_EQ(console.ReadLine(u"? "), std::nullopt);
  EXPECT_TRUE(console.TakeInterrupt());
  EXPECT_FALSE(console.TakeInterrupt());
}

TEST_F(TCliServerTest, ARequestToEndTheProcessEndsTheCommandToo) {
  const TCliSocket socket = Connect();
  SendText(socket, CallLine());
  const auto peer = NextCaller();
  TCliPeerConsole console(*peer, Host);
  Host.Interrupt();
  EXPECT_EQ(console.ReadLine(u"? "), std::nullopt);
  EXPECT_TRUE(console.TakeInterrupt());
  EXPECT_TRUE(console.HostEnds());
}

TEST_F(TCliServerTest, AnAnswerBeforeTheQuestionIsNone) {
  const TCliSocket socket = Connect();
  TCliMessage line;
  line.Kind = TCliMessage::TKind::Line;
  line.Text = u"zu früh";
  TCliMessage interrupt;
  interrupt.Kind = TCliMessage::TKind::Interrupt;
  SendText(socket, CallLine());
  const auto peer = BeginNext();
  SendText(socket, line.ToLine() + interrupt.ToLine());
  ASSERT_TRUE(TurnUntil([&] { return peer->TakeInterrupt(); }));
  TCliPeerConsole console(*peer, Host);
  Host.Interrupt();
  console.ReadLine(u"? ");
  EXPECT_FALSE(peer->TakeAnswer());
}

TEST_F(TCliServerTest, WhoTalksNonsenseIsHungUpOn) {
  const std::string call = CallLine();
  for (const std::string& text :
       {std::string("kein JSON\n"), std::string("{\"kind\":\"print\"}\n"), std::string("[]\n"),
        std::string("{\"kind\":\"call\",\"words\":[1]}\n"), std::string("{\"kind\":\"unfug\"}\n"),
        std::string("{\"kind\":\"line\"}\n"), call + call, call + "{\"kind\":\"exit\"}\n",
        std::string(5'000'000, 'x')}) {
    const TCliSocket socket = Connect();
    ASSERT_TRUE(socket.IsOpen());
    SendText(socket, text);
    EXPECT_TRUE(IsHungUp(socket)) << text.substr(0, 60);
  }
}

TEST_F(TCliServerTest, TooManyAnswersAreNonsense) {
  const TCliSocket socket = Connect();
  std::string text = CallLine();
  for (int i = 0; i < 1001; ++i) text += "{\"kind\":\"line\"}\n";
  SendText(socket, text);
  EXPECT_TRUE(IsHungUp(socket));
}

TEST_F(TCliServerTest, ASilentCallerIsLateAfterSomeSeconds) {
  int ends[2];
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends), 0);
  const TCliSocket other(ends[1]);
  TCliPeer peer{TCliSocket(ends[0]), [] {}};
  const auto now = std::chrono::steady_clock::now();
  EXPECT_FALSE(peer.IsLate(now));
  EXPECT_TRUE(peer.IsLate(now + std::chrono::seconds(11)));
  SendText(other, CallLine());
  bool called = false;
  EXPECT_TRUE(peer.Move(true, false, called));
  EXPECT_TRUE(called);
  EXPECT_FALSE(peer.IsLate(now + std::chrono::seconds(11))) << "it has called";
}

TEST_F(TCliServerTest, WhoDoesNotBeginWithACallIsDoneWithAtOnce) {
  int ends[2];
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends), 0);
  const TCliSocket other(ends[1]);
  TCliPeer peer{TCliSocket(ends[0]), [] {}};
  SendText(other, "{\"kind\":\"line\"}\n");
  bool called = false;
  EXPECT_FALSE(peer.Move(true, false, called));
  EXPECT_FALSE(called);
}

TEST_F(TCliServerTest, TheSocketIsForThisUserAloneAndGoesWithTheServer) {
  struct stat status = {};
  const std::string name = Data.Path() + "/kaufkobolde.socket";
  ASSERT_EQ(stat(name.c_str(), &status), 0);
  EXPECT_TRUE(S_ISSOCK(status.st_mode));
  EXPECT_EQ(status.st_mode & 0777, 0600u);
  Server.reset();
  EXPECT_NE(stat(name.c_str(), &status), 0);
}

TEST_F(TCliServerTest, AnotherUserIsHungUpOnAndCallsNobodyElse) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can be somebody else";
  constexpr uid_t cNobody = 65534;
  const std::string name = Data.Path() + "/kaufkobolde.socket";
  // As if the modes of folder and socket let everybody in.
  ASSERT_EQ(chmod(Data.Path().c_str(), 0755), 0);
  ASSERT_EQ(chmod(name.c_str(), 0666), 0);
  const pid_t child = fork();
  if (child == 0) {
    if (seteuid(cNobody) != 0) _exit(1);
    if (Connect().IsOpen()) _exit(2);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, name.c_str(), sizeof address.sun_path - 1);
    const int line = socket(AF_UNIX, SOCK_STREAM, 0);
    if (connect(line, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) _exit(3);
    // Sooner than the server loses its patience with the silent.
    const timeval patience = {5, 0};
    setsockopt(line, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    char byte = 0;
    _exit(read(line, &byte, 1) == 0 ? 0 : 4);
  }
  int status = 0;
  EXPECT_TRUE(TurnUntil([&] { return waitpid(child, &status, WNOHANG) == child; }));
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST_F(TCliServerTest, WhatLiesThereFromBeforeIsNoHindrance) {
  Server.reset();
  EXPECT_FALSE(Connect().IsOpen());
  Data.Write(u"kaufkobolde.socket", "x");
  EXPECT_FALSE(Connect().IsOpen());
  Server = std::make_unique<TCliServer>(FromUtf8(Data.Path()), static_cast<TMainLoop&>(Loop));
  EXPECT_TRUE(Connect().IsOpen());
}

TEST_F(TCliServerTest, APathMayBeLongerThanAnAddress) {
  const std::string folder = Data.Path() + "/" + std::string(200, 'x');
  std::filesystem::create_directory(folder);
  TCliServer server(FromUtf8(folder), Loop);
  EXPECT_TRUE(TCliSocket::Connect(FromUtf8(folder)).IsOpen());
}

TEST_F(TCliServerTest, AFolderThatIsNoneIsTold) {
  EXPECT_THROW(TCliServer(FromUtf8(Data.Path() + "/weg"), Loop), EInOutError);
}

TEST_F(TCliServerTest, ACallerWhoseServerGoesIsTold) {
  TTestCaller caller(Data.Path(), {u"list"});
  NextCaller();
  Server.reset();
  EXPECT_EQ(caller.Wait(), 1);
  EXPECT_THAT(caller.Console().Complained(), ElementsAre(HasSubstr("ist nicht mehr da")));
}

TEST_F(TCliServerTest, TheLastWordsAreBroughtOut) {
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

TEST_F(TCliServerTest, CtrlCReachesTheCommand) {
  TLateConsole console;
  TCliClient client(console, FromUtf8(Data.Path()));
  int exit = 0;
  std::thread caller([&] { exit = client.Run({u"list"}); });
  const auto peer = BeginNext();
  console.Interrupts = true;
  EXPECT_TRUE(TurnUntil([&] { return peer->TakeInterrupt(); }));
  peer->SendExit(0);
  caller.join();
  EXPECT_EQ(exit, 0);
}

TEST_F(TCliServerTest, CtrlCBeforeItsTurnLeavesTheCallAtOnceAndNothingOfItIsDone) {
  TFakeConsole console;
  console.Interrupt();
  TCliClient client(console, FromUtf8(Data.Path()));
  EXPECT_EQ(client.Run({u"delete", u"Lampe", u"--yes"}), 1) << "though nobody has looked at it";
  EXPECT_THAT(console.Complained(), ElementsAre("Abgebrochen."));
  EXPECT_FALSE(NextCaller()->Begin());
}

TEST_F(TCliServerTest, ACallThatIsTooLongIsToldBeforeItIsMade) {
  TFakeConsole console;
  TCliClient client(console, FromUtf8(Data.Path()));
  try {
    client.Run({u"note", TString(TCliMessage::cMaxLine, u'x')});
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

TEST_F(TCliServerTest, WhoInterruptsTwiceDoesNotWait) {
  TImpatientConsole console;
  TCliClient client(console, FromUtf8(Data.Path()));
  EXPECT_EQ(client.Run({u"list"}), 1);
  EXPECT_THAT(console.Complained(), ElementsAre("Abgebrochen."));
}

TEST(TCliMessage, ReadsBackWhatItWrites) {
  TCliMessage call;
  call.Kind = TCliMessage::TKind::Call;
  call.Words = {u"note", u"Lampe", u"eins\nzwei", u"\u00e4\U0001F600"};
  call.Folder = u"/tmp";
  call.IsInteractive = true;
  const std::string line = call.ToLine();
  EXPECT_EQ(line.find('\n'), line.size() - 1);
  const auto read = TCliMessage::FromLine(line.substr(0, line.size() - 1));
  ASSERT_TRUE(read);
  EXPECT_EQ(read->Kind, TCliMessage::TKind::Call);
  EXPECT_EQ(read->Words, call.Words);
  EXPECT_EQ(read->Folder, u"/tmp");
  EXPECT_TRUE(read->IsInteractive);
  EXPECT_EQ(read->Version, TCliMessage::cVersion);
}

TEST(TCliMessage, EveryKindReadsBack) {
  TLogRecorder log;
  for (int kind = 0; kind <= static_cast<int>(TCliMessage::TKind::Exit); ++kind) {
    TCliMessage message;
    message.Kind = static_cast<TCliMessage::TKind>(kind);
    message.Text = u"Text";
    message.ExitCode = 2;
    const std::string line = message.ToLine();
    const auto read = TCliMessage::FromLine(line);
    ASSERT_TRUE(read) << line;
    EXPECT_EQ(read->Kind, message.Kind);
    EXPECT_EQ(read->Text, u"Text");
  }
  EXPECT_FALSE(TCliMessage::FromLine("{\"kind\":7}"));
  EXPECT_FALSE(TCliMessage::FromLine(""));
}

}  // namespace
}  // namespace kk
