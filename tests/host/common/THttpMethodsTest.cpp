#include <gtest/gtest.h>

#include <cstdlib>

#include "host/common/THttpSession.h"
#include "tests/support/THttpTestServer.h"
#include "tests/support/TRawTestServer.h"

namespace kk {
namespace {

using enum THttpMethod;
using TRoute = httplib::Server::Handler;

THttpRequest Request(THttpMethod iMethod, const std::string& iAddress) {
  THttpRequest request;
  request.Method = iMethod;
  request.Address = iAddress;
  return request;
}

THttpResponse Ask(const THttpRequest& iRequest) {
  THttpClient client;
  return THttpSession(client, 30000, {}).Fetch(iRequest);
}

// Answers every method with what the route does, and keeps the last request.
class THttpMethods : public testing::Test {
 protected:
  void Serve(const TRoute& iRoute) {
    const TRoute route = [this, iRoute](const httplib::Request& iRequest,
                                        httplib::Response& oResponse) {
      FLast = iRequest;
      ++FCount;
      iRoute(iRequest, oResponse);
    };
    FServer.Routes().Get("/p", route);
    FServer.Routes().Post("/p", route);
    FServer.Routes().Put("/p", route);
    FServer.Routes().Delete("/p", route);
    FServer.Start();
  }
  std::string Address() const { return FServer.Address("/p"); }

  httplib::Request FLast;
  std::atomic<int> FCount{0};
  THttpTestServer FServer;  // its thread ends before the rest goes
};

TEST_F(THttpMethods, PostAndPutCarryBodyTypeAndHeaders) {
  Serve([](const httplib::Request&, httplib::Response& oResponse) { oResponse.status = 201; });
  for (const auto& [method, name] : {std::pair(hmPost, "POST"), std::pair(hmPut, "PUT")}) {
    THttpRequest request = Request(method, Address());
    request.Body = std::string("a\0b", 3);
    request.ContentType = "application/json";
    request.Headers = {{"X-One", "1; ö"}, {"If-None-Match", "*"}};
    EXPECT_EQ(Ask(request).Status, 201);
    EXPECT_EQ(FLast.method, name);
    EXPECT_EQ(FLast.body, std::string("a\0b", 3));
    EXPECT_EQ(FLast.get_header_value("Content-Type"), "application/json");
    EXPECT_EQ(FLast.get_header_value("X-One"), "1; ö");
    EXPECT_EQ(FLast.get_header_value("If-None-Match"), "*");
  }
}

TEST_F(THttpMethods, ABodyWithoutATypeGetsNone) {
  Serve([](const httplib::Request&, httplib::Response&) {});
  THttpRequest request = Request(hmPost, Address());
  request.Body = "x";
  Ask(request);
  EXPECT_FALSE(FLast.has_header("Content-Type"));
}

TEST_F(THttpMethods, DeleteCarriesNoBody) {
  Serve([](const httplib::Request&, httplib::Response& oResponse) { oResponse.status = 204; });
  THttpRequest request = Request(hmDelete, Address());
  request.Body = "x";
  EXPECT_EQ(Ask(request).Status, 204);
  EXPECT_EQ(FLast.method, "DELETE");
  EXPECT_EQ(FLast.body, "");
}

TEST_F(THttpMethods, ALargeBodyGoesOutWithoutAskingBefore) {
  Serve([](const httplib::Request&, httplib::Response&) {});
  THttpRequest request = Request(hmPost, Address());
  request.Body = std::string(3 << 20, 'x');
  EXPECT_EQ(Ask(request).Status, 200);
  EXPECT_EQ(FLast.body.size(), size_t{3} << 20);
  EXPECT_FALSE(FLast.has_header("Expect"));
}

TEST_F(THttpMethods, HeadersThatAreNoneFailBeforeAnythingIsSent) {
  Serve([](const httplib::Request&, httplib::Response&) {});
  for (const THttpHeader& header :
       {THttpHeader{"X", "a\r\nY: b"}, THttpHeader{"X", std::string("a\0b", 3)},
        THttpHeader{"X", "a\x7F"}, THttpHeader{"X", "a\n"}, THttpHeader{"X\r\nY", "b"},
        THttpHeader{"X Y", "b"}, THttpHeader{"X:Y", "b"}, THttpHeader{"", "b"}}) {
    THttpRequest request = Request(hmPost, Address());
    request.Headers = {{"Fine", "1"}, header};
    const THttpResponse response = Ask(request);
    EXPECT_EQ(response.Failure, u"Eine Kopfzeile der Anfrage ist ungültig");
    EXPECT_FALSE(response.Lost || response.TimedOut || response.Cancelled);
  }
  EXPECT_EQ(FCount, 0);
}

TEST_F(THttpMethods, OnlyGetFollowsARedirect) {
  Serve([](const httplib::Request&, httplib::Response& oResponse) {
    oResponse.set_redirect("http://woanders.example/", 308);
  });
  for (const THttpMethod method : {hmPost, hmPut, hmDelete}) {
    const THttpResponse response = Ask(Request(method, Address()));
    EXPECT_TRUE(response.Received());
    EXPECT_EQ(response.Status, 308);
    EXPECT_EQ(response.Location, "http://woanders.example/");
  }
  EXPECT_EQ(FCount, 3);
}

TEST_F(THttpMethods, PasswordGoesOutAtOnceAndNeverToAnotherHost) {
  THttpTestServer other;
  std::string seen = "nothing came";
  other.Routes().Get("/q", [&](const httplib::Request& iRequest, httplib::Response&) {
    seen = iRequest.get_header_value("Authorization");
  });
  other.Start();
  Serve([&](const httplib::Request&, httplib::Response& oResponse) {
    oResponse.set_redirect(other.Address("/q"));
  });
  THttpRequest request = Request(hmGet, Address());
  request.User = "anna";
  request.Password = "ge:heim";
  const THttpResponse response = Ask(request);
  EXPECT_EQ(response.Status, 200);
  EXPECT_EQ(response.Location, "");
  EXPECT_EQ(FLast.get_header_value("Authorization"), "Basic YW5uYTpnZTpoZWlt");
  EXPECT_EQ(seen, "");
  request.User.clear();
  request.Password.clear();
  request.Headers = {{"Authorization", "Bearer geheim"}};
  Ask(request);
  EXPECT_EQ(FLast.get_header_value("Authorization"), "Bearer geheim");
  EXPECT_EQ(seen, "");
}

TEST_F(THttpMethods, KindsOfFailureAreToldApart) {
  const TRawTestServer silent("", TRawTestServer::TMode::moSilent);
  THttpRequest request = Request(hmPost, silent.Address("/"));
  request.Limits.TotalMs = 50;
  const THttpResponse timedOut = Ask(request);
  EXPECT_TRUE(timedOut.TimedOut);
  EXPECT_FALSE(timedOut.Lost);
  const TRawTestServer nothing("");
  EXPECT_TRUE(Ask(Request(hmPost, nothing.Address("/"))).Lost);
  const TRawTestServer cut("HTTP/1.1 202 Accepted\r\nContent-Length: 100\r\n\r\nabc");
  const THttpResponse broken = Ask(Request(hmPost, cut.Address("/")));
  EXPECT_FALSE(broken.Received());
  EXPECT_FALSE(broken.Lost);
  EXPECT_EQ(broken.Status, 202);
  const THttpResponse refused = Ask(Request(hmPost, RefusedAddress()));
  EXPECT_FALSE(refused.Lost);
  EXPECT_EQ(refused.Status, 0);
}

// "100 Continue" and "103 Early Hints" say nothing of how it ends.
TEST_F(THttpMethods, AnInterimAnswerIsNone) {
  for (const char* interim :
       {"HTTP/1.1 100 Continue\r\n\r\n", "HTTP/1.1 103 Early Hints\r\nLocation: /x\r\n\r\n"}) {
    const TRawTestServer server(interim);
    const THttpResponse response = Ask(Request(hmPost, server.Address("/")));
    EXPECT_FALSE(response.Received());
    EXPECT_EQ(response.Status, 0);
    EXPECT_TRUE(response.Lost);
  }
}

class TProxySetting {
 public:
  explicit TProxySetting(const char* iExceptions) {
    setenv("http_proxy", RefusedAddress().c_str(), 1);
    if (iExceptions != nullptr) setenv("no_proxy", iExceptions, 1);
  }
  ~TProxySetting() {
    unsetenv("http_proxy");
    unsetenv("no_proxy");
  }
};

TEST_F(THttpMethods, WhatGoesToThisMachineGoesThroughNoProxy) {
  Serve([](const httplib::Request&, httplib::Response&) {});
  for (const char* exceptions : {static_cast<const char*>(nullptr), "a.example", "*"}) {
    const TProxySetting proxy(exceptions);
    EXPECT_EQ(Ask(Request(hmGet, Address())).Status, 200);
  }
  // All else asks the proxy; this one refuses.
  const TProxySetting proxy("b.example");
  EXPECT_EQ(Ask(Request(hmGet, "http://a.example/")).Failure, u"Die Verbindung wurde abgelehnt");
}

}  // namespace
}  // namespace kk
