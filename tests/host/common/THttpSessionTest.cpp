#include "host/common/THttpSession.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <netdb.h>

#include <condition_variable>
#include <future>
#include <mutex>

#include "tests/support/THttpTestServer.h"
#include "tests/support/TRawTestServer.h"

namespace kk {
namespace {

constexpr char cHostThatHangs[] = "namensdienst-haengt.example";

// A name server that says nothing until it is released.
class TFrozenNameServer {
 public:
  static TFrozenNameServer& Get() {
    static auto* const server = new TFrozenNameServer;  // threads may be in it to the very end
    return *server;
  }
  void Freeze() {
    const std::lock_guard lock(FMutex);
    FAsked = false;
    FReleased = false;
  }
  void Answer() {
    std::unique_lock lock(FMutex);
    FAsked = true;
    FChanged.notify_all();
    // Whoever waits for it until it gives up, waits too long.
    FChanged.wait_for(lock, std::chrono::seconds(20), [this] { return FReleased; });
    FReleased = true;
  }
  bool WaitUntilAsked() {
    std::unique_lock lock(FMutex);
    return FChanged.wait_for(lock, std::chrono::seconds(30), [this] { return FAsked; });
  }
  bool IsReleased() {
    const std::lock_guard lock(FMutex);
    return FReleased;
  }
  void Release() {
    const std::lock_guard lock(FMutex);
    FReleased = true;
    FChanged.notify_all();
  }

 private:
  std::mutex FMutex;
  std::condition_variable FChanged;
  bool FAsked = false;
  bool FReleased = false;
};

THttpRequest Request(const std::string& iAddress) {
  THttpRequest request;
  request.Address = iAddress;
  return request;
}

class THttpSessionTest : public testing::Test {
 protected:
  THttpClient FClient;
  std::stop_source FStop;
  std::stop_source FOther;
};

TEST_F(THttpSessionTest, AsksAndWaits) {
  THttpTestServer server;
  server.Routes().Get("/p", [](const httplib::Request&, httplib::Response& oResponse) {
    oResponse.set_content("da", "text/plain");
  });
  server.Start();
  THttpSession session(FClient, 30000, FStop.get_token(), FOther.get_token());
  EXPECT_EQ(session.Fetch(Request(server.Address("/p"))).Body, "da");
  EXPECT_EQ(session.Fetch(Request(server.Address("/p"))).Body, "da");
}

TEST_F(THttpSessionTest, EitherStopEndsWhatIsUnderWay) {
  for (std::stop_source* stop : {&FStop, &FOther}) {
    std::promise<void> asked;
    std::promise<void> over;
    THttpTestServer server;
    server.Routes().Get("/p", [&](const httplib::Request&, httplib::Response&) {
      asked.set_value();
      over.get_future().wait_for(std::chrono::seconds(20));
    });
    server.Start();
    auto answer = std::async(std::launch::async, [&] {
      return THttpSession(FClient, 60000, FStop.get_token(), FOther.get_token())
          .Fetch(Request(server.Address("/p")));
    });
    asked.get_future().wait();
    stop->request_stop();
    const THttpResponse response = answer.get();
    over.set_value();
    EXPECT_TRUE(response.Cancelled);
    EXPECT_EQ(response.Failure, u"Abgebrochen");
    *stop = std::stop_source();
  }
}

TEST_F(THttpSessionTest, AfterAStopNothingIsAskedAnyMore) {
  THttpTestServer server;
  std::atomic<int> count{0};
  server.Routes().Get("/p", [&](const httplib::Request&, httplib::Response&) { ++count; });
  server.Start();
  FOther.request_stop();
  THttpSession session(FClient, 30000, FStop.get_token(), FOther.get_token());
  EXPECT_TRUE(session.Fetch(Request(server.Address("/p"))).Cancelled);
  EXPECT_EQ(count, 0);
}

TEST_F(THttpSessionTest, OneTimeLimitHoldsForAllRequests) {
  const TRawTestServer silent("", TRawTestServer::TMode::moSilent);
  THttpSession session(FClient, 50, FStop.get_token());
  EXPECT_TRUE(session.Fetch(Request(silent.Address("/"))).TimedOut);
  THttpTestServer server;
  std::atomic<int> count{0};
  server.Routes().Get("/p", [&](const httplib::Request&, httplib::Response&) { ++count; });
  server.Start();
  const THttpResponse response = session.Fetch(Request(server.Address("/p")));
  EXPECT_TRUE(response.TimedOut);
  EXPECT_EQ(response.Failure, u"Zeitüberschreitung");
  EXPECT_EQ(count, 0);
}

TEST_F(THttpSessionTest, TheLimitOfOneRequestHoldsAsWell) {
  const TRawTestServer silent("", TRawTestServer::TMode::moSilent);
  THttpRequest request = Request(silent.Address("/"));
  request.Limits.TotalMs = 50;
  EXPECT_TRUE(THttpSession(FClient, 600000, FStop.get_token()).Fetch(request).TimedOut);
}

TEST_F(THttpSessionTest, ALostAnswerIsAskedForOnceMoreAndOnlyOnce) {
  const TRawTestServer nothing("");
  THttpSession session(FClient, 30000, FStop.get_token());
  bool repeated = false;
  EXPECT_TRUE(session.FetchRepeatable(Request(nothing.Address("/")), &repeated).Lost);
  EXPECT_TRUE(repeated);
  EXPECT_EQ(nothing.Received().size(), 2u);
}

TEST_F(THttpSessionTest, AllOtherEndsAreNotRepeated) {
  THttpSession session(FClient, 30000, FStop.get_token());
  const TRawTestServer failing("HTTP/1.1 500 Oh\r\nContent-Length: 0\r\n\r\n");
  const TRawTestServer cut("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nabc");
  for (const TRawTestServer* server : {&failing, &cut}) {
    bool repeated = true;
    session.FetchRepeatable(Request(server->Address("/")), &repeated);
    EXPECT_FALSE(repeated);
    EXPECT_EQ(server->Received().size(), 1u);
  }
  EXPECT_EQ(session.FetchRepeatable(Request(RefusedAddress())).Failure,
            u"Die Verbindung wurde abgelehnt");
}

TEST_F(THttpSessionTest, AStopAndTheEndOfTheClientDoNotWaitForANameServer) {
  TFrozenNameServer::Get().Freeze();
  auto client = std::make_unique<THttpClient>();
  auto answer = std::async(std::launch::async, [&] {
    return THttpSession(*client, 60000, FStop.get_token())
        .Fetch(Request(std::string("http://") + cHostThatHangs + "/"));
  });
  ASSERT_TRUE(TFrozenNameServer::Get().WaitUntilAsked());
  FStop.request_stop();
  EXPECT_TRUE(answer.get().Cancelled);
  client.reset();
  EXPECT_FALSE(TFrozenNameServer::Get().IsReleased());
  TFrozenNameServer::Get().Release();
}

}  // namespace
}  // namespace kk

// Stands before the C library's: one name hangs, all others are looked up.
extern "C" __attribute__((visibility("default"))) int getaddrinfo(
    const char* iNode, const char* iService, const addrinfo* iHints,
    addrinfo** oResult) noexcept(false) {
  if (iNode != nullptr && std::string(iNode) == kk::cHostThatHangs) {
    kk::TFrozenNameServer::Get().Answer();
    return EAI_FAIL;
  }
  static const auto next =
      reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
  return next(iNode, iService, iHints, oResult);
}
