#include "host/program/THostServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <ctime>
#include <filesystem>
#include <thread>

#include "host/base/Exception.h"
#include "tests/support/THostServerWorld.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

constexpr auto cDeadline = std::chrono::seconds(30);

class THostServerTest : public testing::Test, protected THostServerWorld {
 protected:
  /// Returns when the other side has hung up.
  bool IsHungUp(const THostSocket& iSocket) {
    std::string bytes;
    return TurnUntil(Loop, [&] { return iSocket.Receive(bytes) == THostSocket::TEnd::Closed; });
  }
  THostClient Client() const { return THostClient(FromUtf8(Data.Path())); }
  /// All messages up to the end.
  std::vector<THostMessage> ReceiveAll(THostClient& ioClient) {
    std::vector<THostMessage> result;
    EXPECT_TRUE(TurnUntil(Loop, [&] { return !ioClient.Receive(1, result); }));
    return result;
  }
};

/// What the system lets this process open, for as long as it lives.
class TNoMoreFiles {
 public:
  TNoMoreFiles() {
    getrlimit(RLIMIT_NOFILE, &FBefore);
    const int next = dup(STDERR_FILENO);
    close(next);
    rlimit limit = FBefore;
    limit.rlim_cur = static_cast<rlim_t>(next);
    setrlimit(RLIMIT_NOFILE, &limit);
  }
  ~TNoMoreFiles() { setrlimit(RLIMIT_NOFILE, &FBefore); }
  TNoMoreFiles(const TNoMoreFiles&) = delete;
  TNoMoreFiles& operator=(const TNoMoreFiles&) = delete;

 private:
  rlimit FBefore = {};
};

bool ConnectTo(const std::string& iName, int iSocket) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, iName.c_str(), sizeof address.sun_path - 1);
  return connect(iSocket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

std::chrono::nanoseconds ProcessorTime() {
  timespec time = {};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

std::vector<THostMessage::TKind> KindsOf(const std::vector<THostMessage>& iMessages) {
  std::vector<THostMessage::TKind> result;
  for (const THostMessage& message : iMessages) result.push_back(message.Kind);
  return result;
}

TEST_F(THostServerTest, ACallComesWithItsWordsAndGetsItsAnswer) {
  THostClient client = Client();
  ASSERT_TRUE(client.Send(THostClient::First(THostMessage::TKind::Call, {u"list", u"--json"})));
  const auto peer = NextCaller();
  EXPECT_EQ(peer->Call().Words, (std::vector<TString>{u"list", u"--json"}));
  EXPECT_EQ(peer->Call().Folder, FromUtf8(std::filesystem::current_path().string()));
  EXPECT_EQ(peer->Call().Version, THostMessage::cVersion);
  EXPECT_TRUE(TurnUntil(Loop, [&] { return Calls > 0; })) << "the loop was told";
  peer->Complain(u"nein \u00fc");
  peer->SendExit(3);
  const auto messages = ReceiveAll(client);
  EXPECT_THAT(KindsOf(messages),
              ElementsAre(THostMessage::TKind::Complain, THostMessage::TKind::Exit));
  EXPECT_EQ(messages[0].Text, u"nein \u00fc");
  EXPECT_EQ(messages[1].ExitCode, 3);
}

TEST_F(THostServerTest, MuchOutputComesWhole) {
  THostClient client = Client();
  client.Send(THostClient::First(THostMessage::TKind::Call, {}));
  const auto peer = NextCaller();
  const TString line(3'000'000, u'x');
  for (int i = 0; i < 4; ++i) peer->Complain(line);
  peer->SendExit(0);
  const auto messages = ReceiveAll(client);
  ASSERT_THAT(messages, SizeIs(5));
  for (size_t i = 0; i < 4; ++i) EXPECT_EQ(messages[i].Text, line);
}

TEST_F(THostServerTest, CallersComeInTheOrderOfTheirCalls) {
  const THostSocket first = Connect();
  SendText(first, CallLine());
  const auto one = NextCaller();
  const THostSocket second = Connect();
  SendText(second, CallLine());
  const auto two = NextCaller();
  EXPECT_NE(one, two);
  EXPECT_EQ(Server->TakeCaller(), nullptr);
}

TEST_F(THostServerTest, TheEndOfTheServerBringsTheLastWordsOut) {
  THostClient client = Client();
  client.Send(THostClient::First(THostMessage::TKind::Call, {}));
  const auto peer = NextCaller();
  peer->Complain(u"Abgebrochen.");
  peer->SendExit(1);
  Server.reset();
  EXPECT_THAT(KindsOf(ReceiveAll(client)),
              ElementsAre(THostMessage::TKind::Complain, THostMessage::TKind::Exit));
}

TEST_F(THostServerTest, TheEndOfTheServerIsTheEndOfItsCalls) {
  THostClient client = Client();
  client.Send(THostClient::First(THostMessage::TKind::Call, {}));
  ASSERT_TRUE(TurnUntil(Loop, [&] { return Calls > 0; }));
  const auto hasPosted = [&] { return Loop.PostedCount() > 0; };
  const THostSocket another = Connect();
  SendText(another, CallLine());
  const auto last = std::chrono::steady_clock::now() + cDeadline;
  while (!hasPosted() && std::chrono::steady_clock::now() < last) Loop.WaitForMessage(1);
  ASSERT_TRUE(hasPosted());
  Server.reset();
  const int calls = Calls;
  Loop.ProcessMessages();
  EXPECT_EQ(Calls, calls) << "whom it would tell may be gone, too";
}

// A spinning thread would use all of the time.
TEST_F(THostServerTest, WhoCantBeLetInWaitsAndKeepsNoProcessorBusy) {
  constexpr auto cLook = std::chrono::milliseconds(600);
  const THostSocket outside(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0));
  const std::chrono::nanoseconds before = ProcessorTime();
  {
    const TNoMoreFiles none;
    ASSERT_TRUE(ConnectTo(Data.Path() + "/kaufkobolde.socket", outside.Descriptor()));
    pollfd file = {outside.Descriptor(), POLLIN, 0};
    EXPECT_EQ(poll(&file, 1, static_cast<int>(cLook.count())), 0) << "nobody hangs up";
  }
  EXPECT_LT(ProcessorTime() - before, cLook / 2);
  SendText(outside, CallLine());
  EXPECT_NE(NextCaller(), nullptr) << "later there is room";
}

TEST_F(THostServerTest, ASecondStartHandsItsWordsOver) {
  THostClient::THandOver result;
  std::thread start([&] {
    result = THostClient::HandOver(FromUtf8(Data.Path()), {u"-rem", u"http://shop"}, u"token",
                                   static_cast<int>(cDeadline.count()) * 1000);
  });
  const auto peer = NextCaller();
  EXPECT_EQ(peer->Call().Kind, THostMessage::TKind::Start);
  EXPECT_EQ(peer->Call().Words, (std::vector<TString>{u"-rem", u"http://shop"}));
  EXPECT_EQ(peer->Call().Text, u"token");
  peer->SendExit(0);
  start.join();
  EXPECT_EQ(result.End, THostClient::THandOver::TEnd::Done);
}

TEST_F(THostServerTest, ASecondStartHearsWhyNot) {
  THostClient::THandOver result;
  std::thread start([&] {
    result = THostClient::HandOver(FromUtf8(Data.Path()), {}, {},
                                   static_cast<int>(cDeadline.count()) * 1000);
  });
  const auto peer = NextCaller();
  peer->Complain(u"Kein Fenster.");
  peer->SendExit(1);
  start.join();
  EXPECT_EQ(result.End, THostClient::THandOver::TEnd::Refused);
  EXPECT_EQ(result.Text, u"Kein Fenster.");
}

TEST_F(THostServerTest, ASecondStartDoesNotWaitForEver) {
  const auto result = THostClient::HandOver(FromUtf8(Data.Path()), {}, {}, 20);
  EXPECT_EQ(result.End, THostClient::THandOver::TEnd::Silent);
}

TEST_F(THostServerTest, ASecondStartWhoseServerGoesHasFoundNobody) {
  THostClient::THandOver result;
  std::thread start([&] {
    result = THostClient::HandOver(FromUtf8(Data.Path()), {}, {},
                                   static_cast<int>(cDeadline.count()) * 1000);
  });
  NextCaller();
  Server.reset();
  start.join();
  EXPECT_EQ(result.End, THostClient::THandOver::TEnd::Nobody);
  EXPECT_EQ(THostClient::HandOver(FromUtf8(Data.Path()), {}, {}, 1000).End,
            THostClient::THandOver::TEnd::Nobody);
}

TEST_F(THostServerTest, ACallThatIsTooLongIsToldBeforeItIsMade) {
  THostClient client = Client();
  const auto call =
      THostClient::First(THostMessage::TKind::Call, {TString(THostMessage::cMaxLine, u'x')});
  EXPECT_THROW(client.Send(call), Exception);
}

TEST_F(THostServerTest, AnswersThatAreNoneEndTheLine) {
  int ends[2];
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends), 0);
  const THostSocket other(ends[1]);
  THostClient client{THostSocket(ends[0])};
  SendText(other, "{\"kind\":\"print\"}\nunfug\n");
  std::vector<THostMessage> messages;
  EXPECT_FALSE(client.Receive(1000, messages));
  EXPECT_THAT(messages, SizeIs(1)) << "what came before counts";
}

TEST_F(THostServerTest, WhoTalksNonsenseIsHungUpOn) {
  const std::string call = CallLine();
  for (const std::string& text :
       {std::string("kein JSON\n"), std::string("{\"kind\":\"print\"}\n"), std::string("[]\n"),
        std::string("{\"kind\":\"call\",\"words\":[1]}\n"), std::string("{\"kind\":\"unfug\"}\n"),
        std::string("{\"kind\":\"line\"}\n"), call + call, call + "{\"kind\":\"start\"}\n",
        call + "{\"kind\":\"exit\"}\n", std::string(5'000'000, 'x')}) {
    const THostSocket socket = Connect();
    ASSERT_TRUE(socket.IsOpen());
    SendText(socket, text);
    EXPECT_TRUE(IsHungUp(socket)) << text.substr(0, 60);
  }
}

TEST_F(THostServerTest, TooManyAnswersAreNonsense) {
  const THostSocket socket = Connect();
  std::string text = CallLine();
  for (int i = 0; i < 1001; ++i) text += "{\"kind\":\"line\"}\n";
  SendText(socket, text);
  EXPECT_TRUE(IsHungUp(socket));
}

TEST_F(THostServerTest, ASilentCallerIsLateAfterSomeSeconds) {
  int ends[2];
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends), 0);
  const THostSocket other(ends[1]);
  THostPeer peer{THostSocket(ends[0]), [] {}};
  const auto now = std::chrono::steady_clock::now();
  EXPECT_FALSE(peer.IsLate(now));
  EXPECT_TRUE(peer.IsLate(now + std::chrono::seconds(11)));
  SendText(other, CallLine());
  bool called = false;
  EXPECT_TRUE(peer.Move(true, false, called));
  EXPECT_TRUE(called);
  EXPECT_FALSE(peer.IsLate(now + std::chrono::seconds(11))) << "it has called";
}

TEST_F(THostServerTest, WhoDoesNotBeginWithACallIsDoneWithAtOnce) {
  int ends[2];
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends), 0);
  const THostSocket other(ends[1]);
  THostPeer peer{THostSocket(ends[0]), [] {}};
  SendText(other, "{\"kind\":\"line\"}\n");
  bool called = false;
  EXPECT_FALSE(peer.Move(true, false, called));
  EXPECT_FALSE(called);
}

TEST_F(THostServerTest, TheSocketIsForThisUserAloneAndGoesWithTheServer) {
  struct stat status = {};
  const std::string name = Data.Path() + "/kaufkobolde.socket";
  ASSERT_EQ(stat(name.c_str(), &status), 0);
  EXPECT_TRUE(S_ISSOCK(status.st_mode));
  EXPECT_EQ(status.st_mode & 0777, 0600u);
  Server.reset();
  EXPECT_NE(stat(name.c_str(), &status), 0);
}

TEST_F(THostServerTest, AnotherUserIsHungUpOnAndCallsNobodyElse) {
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
    const int line = socket(AF_UNIX, SOCK_STREAM, 0);
    if (!ConnectTo(name, line)) _exit(3);
    // Sooner than the server loses its patience with the silent.
    const timeval patience = {5, 0};
    setsockopt(line, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    char byte = 0;
    _exit(read(line, &byte, 1) == 0 ? 0 : 4);
  }
  int status = 0;
  EXPECT_TRUE(TurnUntil(Loop, [&] { return waitpid(child, &status, WNOHANG) == child; }));
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST_F(THostServerTest, WhatLiesThereFromBeforeIsNoHindrance) {
  Server.reset();
  EXPECT_FALSE(Connect().IsOpen());
  Data.Write(u"kaufkobolde.socket", "x");
  EXPECT_FALSE(Connect().IsOpen());
  Server = std::make_unique<THostServer>(FromUtf8(Data.Path()), Loop, [] {});
  EXPECT_TRUE(Connect().IsOpen());
}

TEST_F(THostServerTest, APathMayBeLongerThanAnAddress) {
  const std::string folder = Data.Path() + "/" + std::string(200, 'x');
  std::filesystem::create_directory(folder);
  THostServer server(FromUtf8(folder), Loop);
  EXPECT_TRUE(THostSocket::Connect(FromUtf8(folder)).IsOpen());
}

TEST_F(THostServerTest, AFolderThatIsNoneIsTold) {
  EXPECT_THROW(THostServer(FromUtf8(Data.Path() + "/weg"), Loop), EInOutError);
}

}  // namespace
}  // namespace kk
