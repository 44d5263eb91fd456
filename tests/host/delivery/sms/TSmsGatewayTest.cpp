#include "host/delivery/sms/TSmsGateway.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>
#include <mutex>
#include <nlohmann/json.hpp>

#include "host/controls/TfrmKKCommonWait.h"
#include "tests/support/TDeliveryWorld.h"
#include "tests/support/THttpTestServer.h"
#include "tests/support/TRawTestServer.h"

namespace kk {
namespace {

using enum TSMSResult;
using testing::HasSubstr;

const TDateTime cWhen = EncodeDateTime({2026, 11, 20, 18, 30, 0, 0});

// The gateway at the other end: keeps what comes and answers what it is told.
class TGateway {
 public:
  TGateway() {
    FServer.Routes().Post("/sms",
                          [this](const httplib::Request& iRequest, httplib::Response& oResponse) {
                            const std::lock_guard lock(FMutex);
                            FRequests.push_back(iRequest);
                            oResponse.status = Status;
                            oResponse.set_content(Body, "application/json");
                          });
    FServer.Start();
  }
  std::string Address() const { return FServer.Address("/sms"); }
  std::vector<httplib::Request> Requests() {
    const std::lock_guard lock(FMutex);
    return FRequests;
  }

  int Status = 202;
  std::string Body = R"({"id":"1"})";

 private:
  std::mutex FMutex;
  std::vector<httplib::Request> FRequests;
  THttpTestServer FServer;
};

struct TAnswer {
  bool Sent;
  TSMSResult Result;
  std::string Error;
};

class TSmsGatewayTest : public testing::Test {
 protected:
  TSmsGatewayTest() {
    FWorld.Set(u"SmsUrl", FAtService.Address());
    FWorld.Set(u"SmsToken", u"t0ken-1");
  }
  TAnswer Send(TStringView iText = u"Text", TStringView iNumber = u"+49 170 1234567") {
    return SendBy(FGateway, iText, iNumber);
  }
  static TAnswer SendBy(TSmsGateway& ioGateway, TStringView iText = u"Text",
                        TStringView iNumber = u"+49 170 1234567") {
    TAnswer answer{};
    TString error = u"old";
    answer.Sent = ioGateway.Send(iText, iNumber, cWhen, answer.Result, error);
    answer.Error = ToUtf8(error);
    EXPECT_EQ(answer.Sent, answer.Result == srOk);
    EXPECT_EQ(answer.Sent, answer.Error.empty());
    return answer;
  }
  TAnswer Answered(int iStatus, const std::string& iBody = {}) {
    FAtService.Status = iStatus;
    FAtService.Body = iBody;
    return Send();
  }
  void ExpectNotSetUp(const std::string& iError) {
    const TAnswer answer = Send();
    EXPECT_EQ(answer.Result, srNotSetUp);
    EXPECT_THAT(answer.Error, HasSubstr(iError));
    EXPECT_TRUE(FAtService.Requests().empty());
  }

  TDeliveryWorld FWorld;
  TGateway FAtService;
  TSmsGateway FGateway;
};

TEST_F(TSmsGatewayTest, GatewayGetsNumberTextAndTimeOnceWithTheToken) {
  EXPECT_EQ(Send(u"Größe M").Result, srOk);
  const auto requests = FAtService.Requests();
  ASSERT_EQ(requests.size(), 1u);
  EXPECT_EQ(requests[0].get_header_value("Authorization"), "Bearer t0ken-1");
  EXPECT_EQ(requests[0].get_header_value("Content-Type"), "application/json");
  EXPECT_EQ(requests[0].get_header_value("Idempotency-Key").size(), 36u);
  const auto json = nlohmann::json::parse(requests[0].body);
  EXPECT_EQ(json["to"], "+491701234567");
  EXPECT_EQ(json["text"], "Größe M");
  EXPECT_EQ(json["sendAt"], "2026-11-20T17:30:00Z");  // the tests are at home in Berlin
}

TEST_F(TSmsGatewayTest, SameMessageAgainHasTheSameKeyAndAnotherOneHasNot) {
  Send(u"Eins");
  Send(u"Eins");
  Send(u"Zwei");
  const auto requests = FAtService.Requests();
  ASSERT_EQ(requests.size(), 3u);
  const auto key = [&](size_t i) { return requests[i].get_header_value("Idempotency-Key"); };
  EXPECT_EQ(key(0), key(1));
  EXPECT_NE(key(0), key(2));
}

TEST_F(TSmsGatewayTest, EveryAnswerOfTheGatewayHasItsResult) {
  for (const int status : {200, 201, 202, 204}) EXPECT_EQ(Answered(status).Result, srOk);
  for (const int status : {401, 403}) EXPECT_EQ(Answered(status).Result, srUnauthorized);
  EXPECT_EQ(Answered(402).Result, srNoCredit);
  for (const int status : {400, 405, 413, 415, 422}) {
    EXPECT_EQ(Answered(status).Result, srRejected) << status;
  }
  for (const int status : {301, 308, 404, 409, 429, 500, 502, 503}) {
    EXPECT_EQ(Answered(status).Result, srUnavailable) << status;
  }
}

TEST_F(TSmsGatewayTest, RefusedNumberIsKnownByTheCodeOfTheAnswer) {
  for (const char* code :
       {"invalid_number", "invalid_phone_number", "invalid_recipient", "invalid_to"}) {
    const std::string body = R"({"code":")" + std::string(code) + R"("})";
    EXPECT_EQ(Answered(400, body).Result, srInvalidNumber);
    EXPECT_EQ(Answered(422, R"({"error":)" + body + "}").Result, srInvalidNumber);
  }
  EXPECT_EQ(Answered(422, R"({"error":"invalid_number"})").Result, srInvalidNumber);
  EXPECT_EQ(Answered(422, R"({"code":"text_too_long"})").Result, srRejected);
  EXPECT_EQ(Answered(422, R"({"code":5})").Result, srRejected);
  EXPECT_EQ(Answered(403, R"({"code":"invalid_number"})").Result, srUnauthorized);
}

TEST_F(TSmsGatewayTest, UserReadsWhatWentWrong) {
  EXPECT_EQ(Answered(401).Error, "Der SMS-Dienst erkennt den Zugangsschlüssel nicht an");
  EXPECT_EQ(Answered(402).Error, "Das Guthaben beim SMS-Dienst ist aufgebraucht");
  EXPECT_EQ(Answered(400).Error, "Der SMS-Dienst lehnt die Nachricht ab");
  EXPECT_EQ(Answered(422, R"({"code":"invalid_to"})").Error,
            "Der SMS-Dienst kann an diese Rufnummer nichts senden");
  EXPECT_EQ(Answered(404).Error, "Unter der Adresse in SmsUrl gibt es keinen SMS-Dienst");
  EXPECT_EQ(Answered(409).Error, "Der SMS-Dienst bearbeitet diese Nachricht noch");
  EXPECT_EQ(Answered(429).Error, "Der SMS-Dienst nimmt zur Zeit nicht so viele Nachrichten an");
  EXPECT_EQ(Answered(503).Error, "Der SMS-Dienst ist zur Zeit gestört (HTTP 503)");
}

TEST_F(TSmsGatewayTest, WordsOfTheGatewayAreShownWhereverItPutsThem) {
  const std::string before = "Der SMS-Dienst lehnt die Nachricht ab";
  EXPECT_EQ(Answered(400, R"({"message":"zu lang"})").Error, before + ": zu lang");
  EXPECT_EQ(Answered(400, R"({"error":{"code":"x","message":"zu lang"}})").Error,
            before + ": zu lang");
  EXPECT_EQ(Answered(400, R"({"title":"Falsch","detail":"zu lang"})").Error, before + ": zu lang");
  EXPECT_EQ(Answered(400, R"({"error":"zu lang"})").Error, before + ": zu lang");
  for (const char* body : {"", "zu lang", "[1]", "{\"message\":", "{\"message\":5}", "null"}) {
    EXPECT_EQ(Answered(400, body).Error, before) << body;
  }
}

TEST_F(TSmsGatewayTest, HostileWordsOfTheGatewayBecomeOneShortLine) {
  const TAnswer lines = Answered(400, R"({"message":"a\r\nb\u0000\u001b[2Jc\u009b"})");
  EXPECT_EQ(lines.Error, "Der SMS-Dienst lehnt die Nachricht ab: a b[2Jc");
  const TAnswer lengthy = Answered(400, R"({"message":")" + std::string(60000, 'x') + R"("})");
  EXPECT_EQ(lengthy.Error, "Der SMS-Dienst lehnt die Nachricht ab: " + std::string(200, 'x') + "…");
  const std::string x(199, 'x');
  EXPECT_EQ(Answered(400, R"({"message":")" + x + R"(\ud83d\ude00y"})").Error,
            "Der SMS-Dienst lehnt die Nachricht ab: " + x + "…");  // no half of a character
  const TAnswer deep = Answered(400, std::string(30000, '[') + std::string(30000, ']'));
  EXPECT_EQ(deep.Error, "Der SMS-Dienst lehnt die Nachricht ab");
  // What is beyond all measure isn't read, but its first line has said enough.
  const std::string filler(1 << 20, 'x');
  const TAnswer large = Answered(402, R"({"message":"leer","x":")" + filler + R"("})");
  EXPECT_EQ(large.Result, srNoCredit);
  EXPECT_EQ(large.Error, "Das Guthaben beim SMS-Dienst ist aufgebraucht");
  EXPECT_EQ(Answered(200, std::string(1 << 20, 'x')).Result, srOk);
}

TEST_F(TSmsGatewayTest, HostileTextsStayOneText) {
  const TString large(1 << 20, u'ä');
  for (const TString& text : {TString(u"a\r\nIdempotency-Key: x\r\n\r\nb"), TString(u"a\0b", 3),
                              TString(u"\",\"to\":\"0190\",\"x\":\""), TString(u"BEGIN:VEVENT\r\n"),
                              TString(1, u'\xD800'), large}) {
    EXPECT_EQ(Send(text).Result, srOk);
    const httplib::Request request = FAtService.Requests().back();
    const auto json = nlohmann::json::parse(request.body);
    EXPECT_EQ(json.size(), 3u);
    EXPECT_TRUE(json["text"] == ToUtf8(text));  // whole, whatever its length
    EXPECT_EQ(json["to"], "+491701234567");
    EXPECT_EQ(request.get_header_value_count("Idempotency-Key"), 1u);
  }
}

TEST_F(TSmsGatewayTest, WhatIsNoNumberIsRefusedBeforeAnythingIsSent) {
  for (const TString& number : {TString(), TString(u"anna"), TString(u"0170\r\nX: y"),
                                TString(u"0170\0"
                                        u"123456",
                                        11),
                                TString(1 << 20, u'1')}) {
    const TAnswer answer = Send(u"Text", number);
    EXPECT_EQ(answer.Result, srInvalidNumber);
    EXPECT_EQ(answer.Error, "Die Rufnummer ist ungültig");
  }
  EXPECT_TRUE(FAtService.Requests().empty());
}

TEST_F(TSmsGatewayTest, WithoutAnAddressOrATokenNothingIsSetUp) {
  FWorld.Set(u"SmsToken", u" ");
  ExpectNotSetUp("SmsToken ist leer");
  FWorld.Set(u"SmsUrl", u" ");
  ExpectNotSetUp("SmsUrl ist leer");
}

TEST_F(TSmsGatewayTest, AddressesThatAreNoneAreRefused) {
  for (const char16_t* url : {u"a.example/sms", u"ftp://a.example/", u"file:///etc/passwd",
                              u"http://", u"https://user:pw@a.example/"}) {
    FWorld.Set(u"SmsUrl", url);
    ExpectNotSetUp("Die Adresse des SMS-Dienstes (SmsUrl) ist ungültig");
  }
}

TEST_F(TSmsGatewayTest, TokenNeverLeavesTheMachineInClear) {
  FWorld.Set(u"SmsUrl", u"http://a.example/sms");
  ExpectNotSetUp("muss mit https:// beginnen");
}

TEST_F(TSmsGatewayTest, TokenOfSeveralLinesIsRefused) {
  for (const TString& token : {TString(u"a\r\nX: y"), TString(u"a b"), TString(u"ä")}) {
    FWorld.Set(u"SmsToken", token);
    ExpectNotSetUp("enthält ungültige Zeichen");
  }
}

TEST_F(TSmsGatewayTest, RedirectDoesNotTakeTheMessageElsewhere) {
  THttpTestServer other;
  std::atomic<int> count{0};
  const auto handler = [&](const httplib::Request&, httplib::Response&) { ++count; };
  other.Routes().Post("/", handler);
  other.Routes().Get("/", handler);
  other.Start();
  THttpTestServer moved;
  moved.Routes().Post("/", [&](const httplib::Request&, httplib::Response& oResponse) {
    oResponse.set_redirect(other.Address("/"), 307);
  });
  moved.Start();
  FWorld.Set(u"SmsUrl", moved.Address("/"));
  EXPECT_EQ(Send().Result, srUnavailable);
  EXPECT_EQ(count, 0);
}

TEST_F(TSmsGatewayTest, NobodyThereIsUnavailable) {
  FWorld.Set(u"SmsUrl", RefusedAddress());
  const TAnswer answer = Send();
  EXPECT_EQ(answer.Result, srUnavailable);
  EXPECT_EQ(answer.Error, "Der SMS-Dienst ist nicht erreichbar: Die Verbindung wurde abgelehnt");
}

TEST_F(TSmsGatewayTest, LostAnswerIsAskedForOnceMoreUnderTheSameKey) {
  const TRawTestServer server("");
  FWorld.Set(u"SmsUrl", server.Address("/"));
  const TAnswer answer = Send();
  EXPECT_EQ(answer.Result, srUnavailable);
  EXPECT_EQ(answer.Error, "Der SMS-Dienst ist nicht erreichbar: Der Server hat nicht geantwortet");
  const auto received = server.Received();
  ASSERT_EQ(received.size(), 2u);
  EXPECT_EQ(received[0], received[1]);
  EXPECT_THAT(received[0], HasSubstr("Idempotency-Key: "));
}

TEST_F(TSmsGatewayTest, FirstLineOfAnAnswerThatBreaksOffDecides) {
  const TRawTestServer accepted("HTTP/1.1 202 Accepted\r\nContent-Length: 100\r\n\r\nabc");
  FWorld.Set(u"SmsUrl", accepted.Address("/"));
  EXPECT_EQ(Send().Result, srOk);
  const TRawTestServer refused("HTTP/1.1 402 Payment\r\nContent-Length: 100\r\n\r\nabc");
  FWorld.Set(u"SmsUrl", refused.Address("/"));
  EXPECT_EQ(Send().Result, srNoCredit);
}

TEST_F(TSmsGatewayTest, InterimAnswerIsNone) {
  const TRawTestServer server("HTTP/1.1 100 Continue\r\n\r\n");
  FWorld.Set(u"SmsUrl", server.Address("/"));
  const TAnswer answer = Send();
  EXPECT_EQ(answer.Result, srUnavailable);
  EXPECT_THAT(answer.Error, HasSubstr("nicht erreichbar"));
  EXPECT_EQ(server.Received().size(), 2u);
}

TEST_F(TSmsGatewayTest, HungGatewayEndsAtTheLimit) {
  const TRawTestServer silent("", TRawTestServer::TMode::moSilent);
  FWorld.Set(u"SmsUrl", silent.Address("/"));
  TSmsGateway gateway(100);
  const TAnswer answer = SendBy(gateway);
  EXPECT_EQ(answer.Result, srTimeout);
  EXPECT_THAT(answer.Error, HasSubstr("nicht rechtzeitig geantwortet"));
}

TEST_F(TSmsGatewayTest, LoopGoesOnWhileTheUserWaitsAndMayGiveUp) {
  const TRawTestServer silent("", TRawTestServer::TMode::moSilent);
  FWorld.Set(u"SmsUrl", silent.Address("/"));
  int turns = 0;
  TfrmKKCommonWait* window = nullptr;
  const auto tick = FWorld.Loop().StartTimer(1, [&] {
    if (++turns == 5 && window != nullptr) window->btnCancel.Click();
  });
  FWorld.Forms().Expect<TfrmKKCommonWait>([&](TfrmKKCommonWait& form) {
    EXPECT_EQ(form.lblText.Caption(), u"Die SMS wird dem SMS-Dienst übergeben...");
    window = &form;
  });
  const TAnswer answer = Send();
  FWorld.Loop().StopTimer(tick);
  EXPECT_EQ(answer.Result, srCancelled);
  EXPECT_EQ(answer.Error, "Abgebrochen");
  EXPECT_GE(turns, 5);
}

TEST_F(TSmsGatewayTest, StopEndsWhatIsUnderWayAndAllThatComesLater) {
  const TRawTestServer silent("", TRawTestServer::TMode::moSilent);
  FWorld.Set(u"SmsUrl", silent.Address("/"));
  FWorld.Forms().Expect<TfrmKKCommonWait>([&](TfrmKKCommonWait&) { FGateway.Stop(); });
  const TAnswer under = Send();
  EXPECT_EQ(under.Result, srCancelled);
  EXPECT_EQ(under.Error, "Abgebrochen, das Programm wird beendet");
  FWorld.Set(u"SmsUrl", FAtService.Address());
  const TNoWindows noWindows;
  const TAnswer later = Send();
  EXPECT_EQ(later.Result, srCancelled);
  EXPECT_EQ(later.Error, "Abgebrochen, das Programm wird beendet");
  EXPECT_TRUE(FAtService.Requests().empty());
}

TEST_F(TSmsGatewayTest, OnAnotherThreadItSendsWithoutAWindow) {
  const TNoWindows noWindows;
  auto answer = std::async(std::launch::async, [this] { return Send(); });
  EXPECT_EQ(answer.get().Result, srOk);
}

TEST_F(TSmsGatewayTest, IsReachedThroughTheDoor) {
  ISmsSender* const before = SetSmsSender(&FGateway);
  TSMSResult result = srRejected;
  TString error;
  EXPECT_TRUE(TKKCommonSms::Send(u"Text", u"0170 123456", result, error, cWhen));
  SetSmsSender(before);
  EXPECT_EQ(result, srOk);
  EXPECT_EQ(FAtService.Requests().size(), 1u);
}

}  // namespace
}  // namespace kk
