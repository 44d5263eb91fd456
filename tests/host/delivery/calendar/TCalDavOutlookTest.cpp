#include "host/delivery/calendar/TCalDavOutlook.h"

#include "TCalendarTest.h"
#include "host/controls/TfrmKKCommonWait.h"
#include "tests/support/THttpTestServer.h"
#include "tests/support/TRawTestServer.h"

namespace kk {
namespace {

using testing::HasSubstr;

// A calendar server that answers every method with the status that it is told to.
class TDavServer {
 public:
  TDavServer() {
    const auto route = [this](const httplib::Request& iRequest, httplib::Response& oResponse) {
      Last = iRequest;
      ++Count;
      oResponse.status = iRequest.method == "GET" ? GetStatus : Status;
      oResponse.set_content(GetBody, "text/calendar");
      if (oResponse.status >= 300 && oResponse.status < 400)
        oResponse.set_header("Location", Location);
    };
    FServer.Routes().Put("/.*", route);
    FServer.Routes().Delete("/.*", route);
    FServer.Routes().Get("/.*", route);
    FServer.Start();
  }
  std::string Address(const std::string& iPath = "/kal/") const { return FServer.Address(iPath); }

  int Status = 201;
  int GetStatus = 404;
  std::string GetBody;
  std::string Location;
  httplib::Request Last;
  std::atomic<int> Count{0};

 private:
  THttpTestServer FServer;
};

class TCalDavOutlookTest : public TCalendarTest {
 protected:
  TCalDavOutlookTest() {
    FWorld.Set(u"CalendarUrl", FServer.Address());
    FWorld.Set(u"CalendarUser", u"anna");
    FWorld.Set(u"CalendarPassword", u"geheim");
  }
  std::string AddFailureAt(int iStatus) {
    FServer.Status = iStatus;
    return AddFailure();
  }
  TString SomeEntryId() const { return FromUtf8(FServer.Address()) + cSomeFile; }

  TDavServer FServer;
};

TEST_F(TCalDavOutlookTest, PutsAResourceThatMustNotBeThereYet) {
  const TString entryId = Add();
  EXPECT_EQ(FServer.Last.method, "PUT");
  EXPECT_EQ(FServer.Last.get_header_value("If-None-Match"), "*");
  EXPECT_EQ(FServer.Last.get_header_value("Content-Type"), "text/calendar; charset=utf-8");
  EXPECT_EQ(FServer.Last.get_header_value("Authorization"), "Basic YW5uYTpnZWhlaW0=");
  EXPECT_THAT(FServer.Last.body, testing::StartsWith("BEGIN:VCALENDAR\r\n"));
  EXPECT_EQ(ToUtf8(entryId), FServer.Address(FServer.Last.path));
  const TString collection = FromUtf8(FServer.Address());
  ASSERT_TRUE(StartsWith(entryId, collection));
  EXPECT_TRUE(TAppointment::IsFileName(entryId.substr(collection.size())));
}

TEST_F(TCalDavOutlookTest, CollectionMayBeWrittenWithoutItsSlashAndWithBlanks) {
  FWorld.Set(u"CalendarUrl", FServer.Address("/Mein Kalender "));
  const TString entryId = Add();
  EXPECT_THAT(ToUtf8(entryId), testing::StartsWith(FServer.Address("/Mein%20Kalender/")));
  EXPECT_THAT(FServer.Last.path, testing::StartsWith("/Mein Kalender/"));
  FServer.Status = 204;
  EXPECT_TRUE(Delete(entryId));
}

TEST_F(TCalDavOutlookTest, EveryAppointmentIsAnother) { EXPECT_NE(Add(), Add()); }

TEST_F(TCalDavOutlookTest, WithoutUserAndPasswordNoneAreSent) {
  FWorld.Set(u"CalendarUser", u"");
  FWorld.Set(u"CalendarPassword", u"");
  Add();
  EXPECT_FALSE(FServer.Last.has_header("Authorization"));
}

TEST_F(TCalDavOutlookTest, RefusalsAreSaidInWordsThatHelp) {
  const std::string nothing = "Unter der eingestellten Adresse gibt es keinen Kalender";
  EXPECT_EQ(AddFailureAt(401), "Benutzer oder Kennwort für den Kalender sind falsch");
  EXPECT_EQ(AddFailureAt(403), "Der Benutzer darf in diesem Kalender nichts ändern");
  for (const int status : {404, 405, 409, 410}) EXPECT_EQ(AddFailureAt(status), nothing);
  for (const int status : {413, 507}) {
    EXPECT_EQ(AddFailureAt(status), "Der Kalender hat keinen Platz für den Termin");
  }
  EXPECT_EQ(AddFailureAt(429), "Der Kalender nimmt zur Zeit nicht so viele Anfragen an");
  EXPECT_EQ(AddFailureAt(415), "Der Kalender lehnt die Anfrage ab (HTTP 415)");
  EXPECT_EQ(AddFailureAt(500), "Der Kalender ist zur Zeit gestört (HTTP 500)");
}

TEST_F(TCalDavOutlookTest, RedirectIsShownAndNotFollowed) {
  FServer.Location = "https://neu.example/\x1B[2J" + std::string(1000, 'x');
  for (const int status : {301, 302, 303, 307, 308}) {
    const std::string failure = AddFailureAt(status);
    EXPECT_THAT(failure,
                testing::StartsWith("Der Kalender ist umgezogen. Bitte tragen Sie seine neue "
                                    "Adresse ein: https://neu.example/[2Jxxx"));
    EXPECT_LT(failure.size(), 400u);
  }
}

TEST_F(TCalDavOutlookTest, AnotherAppointmentInItsPlaceIsAFailure) {
  FServer.GetStatus = 200;
  FServer.GetBody = TAppointment(u"a", u"b", u"c", cStart).Ical();
  EXPECT_EQ(AddFailureAt(412), "Im Kalender steht unter dieser Kennung schon etwas anderes");
  FServer.GetStatus = 404;
  EXPECT_EQ(AddFailureAt(412), "Im Kalender steht unter dieser Kennung schon etwas anderes");
  FServer.GetStatus = 401;
  EXPECT_EQ(AddFailureAt(412), "Benutzer oder Kennwort für den Kalender sind falsch");
  FServer.GetStatus = 200;
  FServer.GetBody = std::string(1 << 20, 'x');
  EXPECT_EQ(AddFailureAt(412),
            "Der Kalender ist nicht erreichbar: Die Antwort ist größer als 262144 Bytes");
}

TEST_F(TCalDavOutlookTest, LookingForItGoesNowhereElseEither) {
  TDavServer foreign;
  FServer.GetStatus = 302;
  FServer.Location = foreign.Address();
  EXPECT_EQ(AddFailureAt(412), "Der Kalender ist nicht erreichbar: Zu viele Weiterleitungen");
  EXPECT_EQ(foreign.Count, 0);
}

TEST_F(TCalDavOutlookTest, DeletedIsTrueAndNotThereIsFalse) {
  for (const int status : {200, 204}) {
    FServer.Status = status;
    EXPECT_TRUE(Delete(SomeEntryId()));
  }
  EXPECT_EQ(FServer.Last.method, "DELETE");
  EXPECT_EQ(FServer.Address(FServer.Last.path), ToUtf8(SomeEntryId()));
  EXPECT_EQ(FServer.Last.get_header_value("Authorization"), "Basic YW5uYTpnZWhlaW0=");
  for (const int status : {404, 410}) {
    FServer.Status = status;
    EXPECT_FALSE(Delete(SomeEntryId()));
  }
}

TEST_F(TCalDavOutlookTest, DeleteThatTheServerRefusesIsAFailure) {
  FServer.Status = 401;
  EXPECT_EQ(DeleteFailure(SomeEntryId()), "Benutzer oder Kennwort für den Kalender sind falsch");
  FServer.Status = 503;
  EXPECT_EQ(DeleteFailure(SomeEntryId()), "Der Kalender ist zur Zeit gestört (HTTP 503)");
}

TEST_F(TCalDavOutlookTest, EntryIdFromElsewhereNeverMakesARequest) {
  const TNoWindows noWindows;
  TDavServer foreign;
  const TString own = FromUtf8(FServer.Address());
  const TString file = cSomeFile;
  for (const TString& entryId :
       {TString(), own, file, FromUtf8(foreign.Address()) + file, u"../" + file, own + u"x.ics",
        own + u"../" + file, own + u"unter/" + file, own + file + u"?x", own + file + u"\r\nX: y",
        FromUtf8(FServer.Address("/")) + file, u"https" + own.substr(4) + file,
        own + TString(1 << 20, u'a'), u"file:///etc/" + file,
        own.substr(0, own.size() - 1) + file}) {
    EXPECT_FALSE(Delete(entryId)) << ToUtf8(entryId.substr(0, 80));
  }
  EXPECT_EQ(FServer.Count, 0);
  EXPECT_EQ(foreign.Count, 0);
}

TEST_F(TCalDavOutlookTest, PasswordNeverLeavesTheMachineInClear) {
  const std::string refused =
      "Die Adresse des Kalenders (CalendarUrl) muss mit https:// beginnen, sonst könnten andere "
      "das Kennwort mitlesen";
  FWorld.Set(u"CalendarUrl", u"http://a.example/kal/");
  EXPECT_EQ(AddFailure(), refused);
  EXPECT_EQ(DeleteFailure(TString(u"http://a.example/kal/") + cSomeFile), refused);
  FWorld.Set(u"CalendarUser", u"");
  EXPECT_EQ(AddFailure(), refused);
  FWorld.Set(u"CalendarUser", u"anna");
  FWorld.Set(u"CalendarPassword", u"");
  EXPECT_EQ(AddFailure(), refused);
}

TEST_F(TCalDavOutlookTest, WithoutAPasswordPlainHttpWillDo) {
  FWorld.Set(u"CalendarUser", u"");
  FWorld.Set(u"CalendarPassword", u"");
  FWorld.Set(u"CalendarUrl", FromUtf8("http://" + std::string(64, 'x') + ".example/kal/"));
  EXPECT_EQ(AddFailure(), "Der Kalender ist nicht erreichbar: Der Rechner wurde nicht gefunden");
}

TEST_F(TCalDavOutlookTest, NobodyThereIsSaid) {
  FWorld.Set(u"CalendarUrl", RefusedAddress());
  EXPECT_EQ(AddFailure(), "Der Kalender ist nicht erreichbar: Die Verbindung wurde abgelehnt");
}

TEST_F(TCalDavOutlookTest, LostAnswersAreAskedForOnceMoreUnderTheSameId) {
  const TRawTestServer server("");
  FWorld.Set(u"CalendarUrl", server.Address("/kal/"));
  EXPECT_EQ(AddFailure(), "Der Kalender ist nicht erreichbar: Der Server hat nicht geantwortet");
  const auto received = server.Received();
  ASSERT_EQ(received.size(), 2u);
  EXPECT_EQ(received[0], received[1]);
}

TEST_F(TCalDavOutlookTest, EnteredAgainAfterAnUnknownEndItKeepsItsId) {
  FServer.Status = 503;
  AddFailure();
  const std::string path = FServer.Last.path;
  AddFailure();
  EXPECT_EQ(FServer.Last.path, path);
  FServer.Status = 201;
  Add(u"Ein anderer");
  EXPECT_NE(FServer.Last.path, path);
  AddFailureAt(503);
  const std::string second = FServer.Last.path;
  FServer.Status = 201;
  Add();
  EXPECT_EQ(FServer.Last.path, second);
  Add();
  EXPECT_NE(FServer.Last.path, second);
}

TEST_F(TCalDavOutlookTest, SeveralUnknownEndsAreKeptApartWhateverIsEnteredBetween) {
  FServer.Status = 503;
  std::vector<std::string> paths;
  for (const char16_t* body : {u"Eins", u"Zwei"}) {
    FailureOf([&] { Add(u"Kaufkobolde 7.0", body); });
    paths.push_back(FServer.Last.path);
  }
  FServer.Status = 201;
  Add();
  Add(u"Kaufkobolde 7.0", u"Eins");
  EXPECT_EQ(FServer.Last.path, paths[0]);
  Add(u"Kaufkobolde 7.0", u"Zwei");
  EXPECT_EQ(FServer.Last.path, paths[1]);
}

TEST_F(TCalDavOutlookTest, NoMoreUnknownEndsAreKeptThanTheBound) {
  FServer.Status = 503;
  AddFailure();
  const std::string first = FServer.Last.path;
  for (size_t i = 0; i < TCalendarService::cMaxUnanswered; ++i) {
    FailureOf([&] { Add(u"Kaufkobolde 7.0", IntToStr(static_cast<int64_t>(i))); });
  }
  AddFailure();
  EXPECT_NE(FServer.Last.path, first);
}

// Else whoever has moved the one appointment in the calendar could never enter it again.
TEST_F(TCalDavOutlookTest, EnteredAgainAfterARefusalItHasAnotherId) {
  FServer.Status = 503;
  AddFailure();
  const std::string path = FServer.Last.path;
  FServer.GetStatus = 200;
  AddFailureAt(412);
  EXPECT_EQ(FServer.Last.path, path);
  FServer.Status = 201;
  Add();
  EXPECT_NE(FServer.Last.path, path);
}

TEST_F(TCalDavOutlookTest, PasswordThatCannotBeHadIsNotSentAsAnEmptyOne) {
  FWorld.Set(u"CalendarPassword", u"");
  const std::string missing =
      "Das Kennwort für den Kalender (CalendarPassword) ist nicht hinterlegt oder zurzeit nicht "
      "zugänglich";
  EXPECT_EQ(AddFailure(), missing);
  EXPECT_EQ(DeleteFailure(SomeEntryId()), missing);
  EXPECT_EQ(FServer.Count, 0);
}

TEST_F(TCalDavOutlookTest, LoopGoesOnWhileTheUserWaitsAndMayGiveUp) {
  const TRawTestServer silent("", TRawTestServer::TMode::moSilent);
  FWorld.Set(u"CalendarUrl", silent.Address("/kal/"));
  int turns = 0;
  TfrmKKCommonWait* window = nullptr;
  const auto tick = FWorld.Loop().StartTimer(1, [&] {
    if (++turns % 5 == 0 && window != nullptr) window->btnCancel.Click();
  });
  const auto expect = [&](TStringView iText) {
    FWorld.Forms().Expect<TfrmKKCommonWait>([&, text = TString(iText)](TfrmKKCommonWait& form) {
      EXPECT_EQ(form.lblText.Caption(), text);
      window = &form;
    });
  };
  expect(u"Der Termin wird eingetragen...");
  EXPECT_EQ(AddFailure(), "Abgebrochen");
  window = nullptr;
  expect(u"Der Termin wird gelöscht...");
  EXPECT_EQ(DeleteFailure(FromUtf8(silent.Address("/kal/")) + cSomeFile), "Abgebrochen");
  FWorld.Loop().StopTimer(tick);
  EXPECT_GE(turns, 10);
}

TEST_F(TCalDavOutlookTest, StopEndsWhatIsUnderWayAndAllThatComesLater) {
  const TRawTestServer silent("", TRawTestServer::TMode::moSilent);
  const std::string ended = "Abgebrochen, das Programm wird beendet";
  const auto outlook = CreateOutlook();
  FWorld.Set(u"CalendarUrl", silent.Address("/kal/"));
  FWorld.Forms().Expect<TfrmKKCommonWait>([&](TfrmKKCommonWait&) { FFactory.Stop(); });
  EXPECT_EQ(AddFailure(), ended);
  const TNoWindows noWindows;
  EXPECT_EQ(AddFailure(), ended);
  EXPECT_EQ(FailureOf([&] { outlook->AddAppointment(u"a", u"b", u"c", 0, cStart, 1); }), ended);
  EXPECT_EQ(FailureOf([&] { outlook->DeleteAppointment(SomeEntryId()); }), ended);
  EXPECT_EQ(FServer.Count, 0);
}

}  // namespace
}  // namespace kk
