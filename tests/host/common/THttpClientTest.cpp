#include "host/common/THttpClient.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>

#include "tests/support/THttpTestServer.h"
#include "tests/support/TRawTestServer.h"

namespace kk {
namespace {

// Starts a request whose end can be waited for.
std::future<THttpResponse> Start(THttpClient& ioClient, THttpRequest iRequest,
                                 THttpClient::TRequestId* oId = nullptr) {
  auto promise = std::make_shared<std::promise<THttpResponse>>();
  std::future<THttpResponse> future = promise->get_future();
  const auto id = ioClient.Send(std::move(iRequest), [promise](THttpResponse iResponse) {
    promise->set_value(std::move(iResponse));
  });
  if (oId != nullptr) *oId = id;
  return future;
}

THttpRequest Request(const std::string& iAddress, const THttpLimits& iLimits = {}) {
  THttpRequest request;
  request.Address = iAddress;
  request.Limits = iLimits;
  return request;
}

THttpResponse Get(const std::string& iAddress, const THttpLimits& iLimits = {}) {
  THttpClient client;
  return Start(client, Request(iAddress, iLimits)).get();
}

std::string Failure(const std::string& iAddress, const THttpLimits& iLimits = {}) {
  return ToUtf8(Get(iAddress, iLimits).Failure);
}

TEST(THttpClient, AnswersWithBodyAndHeaders) {
  THttpTestServer server;
  server.Routes().Get("/p", [](const httplib::Request& iRequest, httplib::Response& oResponse) {
    oResponse.set_header("ETag", "\"v1\"");
    oResponse.set_header("Last-Modified", "Fri, 20 Nov 2026 18:30:00 GMT");
    oResponse.set_content("Hallo " + iRequest.get_header_value("User-Agent"), "text/html");
  });
  server.Start();
  const THttpResponse response = Get(server.Address("/p"));
  EXPECT_TRUE(response.Received());
  EXPECT_FALSE(response.Cancelled);
  EXPECT_EQ(response.Status, 200);
  EXPECT_EQ(response.ETag, "\"v1\"");
  EXPECT_EQ(response.LastModified, "Fri, 20 Nov 2026 18:30:00 GMT");
  EXPECT_EQ(response.ContentType, "text/html");
  EXPECT_EQ(response.FinalAddress, server.Address("/p"));
  EXPECT_EQ(response.Body, "Hallo Mozilla/5.0 (compatible; Kaufkobolde/7.0)");
}

TEST(THttpClient, AsksWhetherSomethingChanged) {
  THttpTestServer server;
  server.Routes().Get("/p", [](const httplib::Request& iRequest, httplib::Response& oResponse) {
    const bool known = iRequest.get_header_value("If-None-Match") == "\"v1\"" &&
                       iRequest.get_header_value("If-Modified-Since") == "gestern X: y" &&
                       iRequest.get_header_value("Accept") == "text/html";
    oResponse.status = known ? 304 : 500;
  });
  server.Start();
  THttpClient client;
  THttpRequest request = Request(server.Address("/p"));
  request.Accept = "text/html";
  request.ETag = "\"v1\"";
  request.LastModified = "gestern\r\n X: y";  // no further header comes of it
  EXPECT_EQ(Start(client, request).get().Status, 304);
}

TEST(THttpClient, FollowsRedirectsAndForgetsTheirHeaders) {
  THttpTestServer server;
  server.Routes().Get("/a", [](const httplib::Request&, httplib::Response& oResponse) {
    oResponse.set_header("ETag", "\"a\"");
    oResponse.set_redirect("/b");
  });
  server.Routes().Get("/b", [](const httplib::Request&, httplib::Response& oResponse) {
    oResponse.set_content("b", "text/plain");
  });
  server.Start();
  const THttpResponse response = Get(server.Address("/a"));
  EXPECT_EQ(response.Body, "b");
  EXPECT_EQ(response.ETag, "");
  EXPECT_EQ(response.FinalAddress, server.Address("/b"));
}

TEST(THttpClient, BringsBackACookieThatARedirectSets) {
  THttpTestServer server;
  server.Routes().Get("/p", [](const httplib::Request& iRequest, httplib::Response& oResponse) {
    if (iRequest.get_header_value("Cookie") == "seen=1") {
      oResponse.set_content("da", "text/plain");
      return;
    }
    oResponse.set_header("Set-Cookie", "seen=1");
    oResponse.set_redirect("/p");
  });
  server.Start();
  EXPECT_EQ(Get(server.Address("/p")).Body, "da");
}

TEST(THttpClient, RedirectsForEverEnd) {
  THttpTestServer server;
  std::atomic<int> count{0};
  server.Routes().Get("/p", [&](const httplib::Request&, httplib::Response& oResponse) {
    ++count;
    oResponse.set_redirect("/p");
  });
  server.Start();
  THttpLimits limits;
  limits.MaxRedirects = 3;
  EXPECT_EQ(Failure(server.Address("/p"), limits), "Zu viele Weiterleitungen");
  EXPECT_EQ(count, 4);
}

TEST(THttpClient, OnlyHttpAndHttpsAlsoAcrossRedirects) {
  THttpTestServer server;
  server.Routes().Get("/p", [](const httplib::Request&, httplib::Response& oResponse) {
    oResponse.set_redirect("file:///etc/passwd");
  });
  server.Start();
  EXPECT_EQ(Failure(server.Address("/p")), "Nur Adressen mit http und https sind erlaubt");
  EXPECT_EQ(Failure("ftp://127.0.0.1/"), "Nur Adressen mit http und https sind erlaubt");
  EXPECT_EQ(Failure("http://"), "Die Adresse ist ungültig");
}

TEST(THttpClient, UnpacksTheBody) {
  THttpTestServer server;
  server.Routes().Get("/p", [](const httplib::Request&, httplib::Response& oResponse) {
    oResponse.set_content(std::string(100000, 'x'), "text/html");
  });
  server.Start();
  EXPECT_EQ(Get(server.Address("/p")).Body, std::string(100000, 'x'));
}

TEST(THttpClient, AnswerBeyondTheSizeLimitEndsWhereverItGrows) {
  THttpTestServer server;
  std::atomic<size_t> sent{0};
  server.Routes().Get("/stream", [&](const httplib::Request&, httplib::Response& oResponse) {
    oResponse.set_chunked_content_provider("text/html", [&](size_t, httplib::DataSink& ioSink) {
      const std::string chunk(65536, 'x');
      sent += chunk.size();
      if (sent > (100u << 20)) ioSink.done();
      return ioSink.write(chunk.data(), chunk.size());
    });
  });
  // Packed it is small.
  server.Routes().Get("/packed", [](const httplib::Request&, httplib::Response& oResponse) {
    oResponse.set_content(std::string(3 << 20, 'x'), "text/html");
  });
  server.Start();
  EXPECT_EQ(Failure(server.Address("/stream")), "Die Antwort ist größer als 10 MB");
  EXPECT_LT(sent, 100u << 20);
  THttpLimits limits;
  limits.MaxBytes = 1000;
  const THttpResponse packed = Get(server.Address("/packed"), limits);
  EXPECT_EQ(packed.Failure, u"Die Antwort ist größer als 1000 Bytes");
  EXPECT_EQ(packed.Body, "");
}

TEST(THttpClient, HeadersWithoutEndEnd) {
  std::string answer = "HTTP/1.1 200 OK\r\n";
  for (int i = 0; i < 20000; ++i) answer += "X-Filler: aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa\r\n";
  const TRawTestServer server(answer + "\r\n");
  EXPECT_EQ(Failure(server.Address("/")), "Die Antwort ist größer als 10 MB");
}

TEST(THttpClient, RefusedConnectionIsSaid) {
  EXPECT_EQ(Failure(RefusedAddress()), "Die Verbindung wurde abgelehnt");
}

TEST(THttpClient, ServerThatNeverAnswersTimesOut) {
  const TRawTestServer server("", TRawTestServer::TMode::moSilent);
  THttpLimits limits;
  limits.TotalMs = 50;
  EXPECT_EQ(Failure(server.Address("/"), limits), "Zeitüberschreitung");
}

TEST(THttpClient, BrokenAnswersAreSaid) {
  const TRawTestServer nothing("");
  EXPECT_EQ(Failure(nothing.Address("/")), "Der Server hat nicht geantwortet");
  const TRawTestServer cut("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nabc");
  EXPECT_EQ(Failure(cut.Address("/")), "Die Verbindung wurde unterbrochen");
  const TRawTestServer packed("HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\n\r\nkein gzip");
  EXPECT_EQ(Failure(packed.Address("/")), "Die Antwort ist nicht lesbar gepackt");
  const TRawTestServer strange("FTP ready\r\n\r\n");
  EXPECT_EQ(Failure(strange.Address("/")), "Die Antwort ist nicht verständlich");
  const TRawTestServer plain("HTTP/1.1 400 Bad Request\r\n\r\n");
  std::string address = plain.Address("/");
  EXPECT_EQ(Failure(address.replace(0, 4, "https")),
            "Die verschlüsselte Verbindung ist fehlgeschlagen");
  EXPECT_EQ(Failure("http://" + std::string(64, 'x') + ".example/"),
            "Der Rechner wurde nicht gefunden");
}

TEST(THttpClient, CancelEndsOneRequestAtOnceAndLeavesOthers) {
  const TRawTestServer silent("", TRawTestServer::TMode::moSilent);
  THttpTestServer server;
  server.Routes().Get("/p", [](const httplib::Request&, httplib::Response& oResponse) {
    oResponse.set_content("da", "text/plain");
  });
  server.Start();
  THttpClient client;
  THttpClient::TRequestId id = 0;
  auto waiting = Start(client, Request(silent.Address("/")), &id);
  auto other = Start(client, Request(server.Address("/p")));
  EXPECT_EQ(other.get().Body, "da");
  client.Cancel(id);
  const THttpResponse response = waiting.get();
  EXPECT_TRUE(response.Cancelled);
  EXPECT_EQ(response.Failure, u"Abgebrochen");
  client.Cancel(id);
  EXPECT_EQ(Start(client, Request(server.Address("/p"))).get().Body, "da");
}

TEST(THttpClient, CancelAllAndDestructionEndEverything) {
  const TRawTestServer silent("", TRawTestServer::TMode::moSilent);
  std::future<THttpResponse> last;
  {
    THttpClient client;
    auto first = Start(client, Request(silent.Address("/")));
    auto second = Start(client, Request(silent.Address("/")));
    client.CancelAll();
    EXPECT_TRUE(first.get().Cancelled);
    EXPECT_TRUE(second.get().Cancelled);
    last = Start(client, Request(silent.Address("/")));
  }
  EXPECT_TRUE(last.get().Cancelled);
  const THttpClient unused;
}

TEST(THttpClient, SeveralRequestsRunSideBySide) {
  THttpTestServer server;
  server.Routes().Get(R"(/(\d+))",
                      [](const httplib::Request& iRequest, httplib::Response& oResponse) {
                        oResponse.set_content(iRequest.matches[1].str(), "text/plain");
                      });
  server.Start();
  THttpClient client;
  std::vector<std::future<THttpResponse>> answers;
  for (int i = 0; i < 5; ++i) {
    answers.push_back(Start(client, Request(server.Address("/" + std::to_string(i)))));
  }
  for (int i = 0; i < 5; ++i)
    EXPECT_EQ(answers[static_cast<size_t>(i)].get().Body, std::to_string(i));
}

}  // namespace
}  // namespace kk
