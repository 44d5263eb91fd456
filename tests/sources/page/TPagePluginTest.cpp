#include "sources/page/TPagePlugin.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

#include "host/base/Exception.h"
#include "host/contract/INotifications.h"
#include "host/contract/TPluginIntegration.h"
#include "host/contract/TPlugins.h"
#include "host/controls/TPanel.h"
#include "sources/page/PageConsts.h"
#include "sources/page/TPageSearchResult.h"
#include "tests/support/TFakeSource.h"
#include "tests/support/THttpTestServer.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TRawTestServer.h"
#include "tests/support/TTestClock.h"
#include "tests/support/TTestMainLoop.h"
#include "tests/support/TurnUntil.h"

namespace kk {
namespace {

std::string Fixture(const std::string& iName) {
  std::ifstream file(std::string(KK_TEST_SOURCE_DIR) + "/sources/page/fixtures/" + iName);
  std::stringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

/// The plug-in as a host has it, and the ends of its refreshes.
class PagePlugin : public testing::Test {
 protected:
  ~PagePlugin() override {
    FPlugin->Uninitialize();
    FLoop.ProcessMessages();
  }

  TPageVisualization& View() { return FPlugin->Integration()->Visualization(); }
  TIntf<IWatchlistIntegration> Source() { return FPlugin->Integration(); }
  TIntf<ISearchResult> Result(const std::string& iAddress) {
    return View().CreateSearchResultFromCmdLine(FromUtf8(iAddress));
  }
  static const TPageData& Data(const TIntf<ISearchResult>& iResult) {
    return Supports<IPageSearchResult>(iResult)->Data();
  }

  void Start(const TIntf<ISearchResult>& iResult) {
    Supports<ISearchResultUpdate>(Source())->UpdateSearchResult(
        iResult, TNotifyEventSearchResult::Of<&PagePlugin::DoFinished>(this));
  }
  /// Refreshes and turns the loop until the end is told; the refreshed result, or none if it
  /// failed.
  TIntf<ISearchResult> Refresh(const TIntf<ISearchResult>& iResult) {
    const size_t before = FEnds.size();
    Start(iResult);
    EXPECT_EQ(FEnds.size(), before);
    const auto hasEnded = [&] { return FEnds.size() != before; };
    if (!TurnUntil(FLoop, hasEnded, std::chrono::seconds(60))) return {};
    return FEnds.back().Succeeded ? FEnds.back().Result : TIntf<ISearchResult>();
  }
  void DoFinished(TObject*, const TIntf<ISearchResult>& iResult, bool iSucceeded) {
    EXPECT_TRUE(FLoop.IsMainThread());
    FEnds.push_back({iResult, iSucceeded});
    if (FNext) Start(std::exchange(FNext, {}));
  }
  /// The reason in the one line that a failed refresh writes.
  std::string ReasonFor(const std::string& iAddress) {
    FLog.Clear();
    const TIntf<ISearchResult> result = Result(iAddress);
    EXPECT_FALSE(Refresh(result));
    EXPECT_EQ(FEnds.back().Result, result);  // with the data that it had
    const std::vector<std::string> lines = FLog.Lines();
    const std::string begin =
        "error Produktseiten: Die Seite " + iAddress + " konnte nicht aktualisiert werden: ";
    if (lines.size() != 1 || lines[0].rfind(begin, 0) != 0) return testing::PrintToString(lines);
    return lines[0].substr(begin.size());
  }
  void Serve(const std::string& iPath, const std::string& iBody,
             const std::string& iType = "text/html; charset=utf-8") {
    FServer.Routes().Get(iPath, [=](const httplib::Request&, httplib::Response& oResponse) {
      oResponse.set_content(iBody, iType);
    });
  }

  struct TEnd {
    TIntf<ISearchResult> Result;
    bool Succeeded;
  };
  TTestMainLoop FLoop;
  TTestClock FClock;
  TLogRecorder FLog;
  THttpTestServer FServer;
  TIntf<TPagePlugin> FPlugin = MakeIntf<TPagePlugin>(THttpLimits{1000, 5000, 10 << 20, 10});
  std::vector<TEnd> FEnds;
  TIntf<ISearchResult> FNext;
};

TEST_F(PagePlugin, AddressOnTheCommandLineGivesAProvisionalResult) {
  const auto result = Result(" HTTPS://Shop.example/p?id=1 ");
  ASSERT_TRUE(result);
  EXPECT_EQ(result->GetName(), u"HTTPS://Shop.example/p?id=1");
  EXPECT_EQ(Data(result).Address.Text(), "https://shop.example/p?id=1");
  EXPECT_FALSE(result->HasEndTime());
  EXPECT_FALSE(result->GetId() == cEmptyGuid);
  EXPECT_FALSE(Result("4711"));
  EXPECT_FALSE(Result("ftp://shop.example/"));
  EXPECT_FALSE(Result(""));
}

TEST_F(PagePlugin, FirstRefreshMakesTheResultReal) {
  Serve("/p", Fixture("shop.html"));
  FServer.Start();
  const auto result = Result(FServer.Address("/p"));
  const auto refreshed = Refresh(result->Clone());
  ASSERT_TRUE(refreshed);
  EXPECT_EQ(refreshed->GetName(), u"Gartenhacke „Erle“");
  EXPECT_EQ(refreshed->GetId(), result->GetId());
  EXPECT_EQ(Data(refreshed).Product.Offer.Price, TPrice(1239, 0));
  EXPECT_EQ(Data(refreshed).Changed, FClock.Now());
  EXPECT_EQ(Data(result).Product.Offer.Price, std::nullopt);
  EXPECT_TRUE(refreshed->IsSame(result));
  EXPECT_EQ(FLog.Lines(), std::vector<std::string>());
}

TEST_F(PagePlugin, AuctionHasItsEndTime) {
  Serve("/los", Fixture("auktion.html"));
  FServer.Start();
  const auto refreshed = Refresh(Result(FServer.Address("/los")));
  ASSERT_TRUE(refreshed);
  EXPECT_TRUE(refreshed->HasEndTime());
  EXPECT_EQ(refreshed->GetEndTime(), UtcMsToLocal(1796587200000));
}

TEST_F(PagePlugin, PageThatHasNotChangedIsNotFetchedAgain) {
  int full = 0;
  FServer.Routes().Get("/p", [&](const httplib::Request& iRequest, httplib::Response& oResponse) {
    if (iRequest.get_header_value("If-None-Match") == "\"1\"") {
      oResponse.status = 304;
      return;
    }
    ++full;
    oResponse.set_header("ETag", "\"1\"");
    oResponse.set_header("Last-Modified", "gestern");
    oResponse.set_content(Fixture("shop.html"), "text/html");
  });
  FServer.Start();
  const auto first = Refresh(Result(FServer.Address("/p")));
  ASSERT_TRUE(first);
  FClock.Advance(60000);
  const auto second = Refresh(first->Clone());
  ASSERT_TRUE(second);
  EXPECT_EQ(full, 1);
  EXPECT_EQ(Data(second).Product, Data(first).Product);
  EXPECT_EQ(Data(second).Changed, Data(first).Changed);
  // Data that another version of the reader made are read anew.
  TPageData old = Data(first);
  old.ReaderVersion = 0;
  EXPECT_TRUE(Refresh(MakeIntf<TPageSearchResult>(old)));
  EXPECT_EQ(full, 2);
}

TEST_F(PagePlugin, LastChangeIsWhenTheProductReadDifferently) {
  std::string body = Fixture("shop.html");
  FServer.Routes().Get("/p", [&](const httplib::Request&, httplib::Response& oResponse) {
    oResponse.set_content(body, "text/html");
  });
  FServer.Start();
  const TDateTime begin = FClock.Now();
  auto result = Refresh(Result(FServer.Address("/p")));
  FClock.Advance(60000);
  result = Refresh(result);
  EXPECT_EQ(Data(result).Changed, begin);
  body.replace(body.find("1.239,00"), 8, "1.199,00");
  result = Refresh(result);
  EXPECT_EQ(Data(result).Changed, begin.PlusMs(60000));
  EXPECT_EQ(Data(result).Product.Offer.Price, TPrice(1199, 0));
}

TEST_F(PagePlugin, FailedRefreshSaysWhyAndKeepsTheData) {
  for (const int status : {404, 410, 403, 401, 429, 503, 402, 304}) {
    FServer.Routes().Get("/" + std::to_string(status),
                         [status](const httplib::Request&, httplib::Response& oResponse) {
                           oResponse.status = status;
                           oResponse.set_content(Fixture("shop.html"), "text/html");
                         });
  }
  Serve("/leer", "");
  Serve("/nichts", "<html><h1>Willkommen</h1></html>");
  Serve("/pdf", "%PDF-1.7 ...", "application/pdf");
  Serve("/bild", "\x89PNG\r\n\x1A\n", "text/html");
  Serve("/kaputt", "<script type='application/ld+json'>{\"@type\":\"Product\",\"name\":</script>");
  FServer.Routes().Get("/ring", [](const httplib::Request&, httplib::Response& oResponse) {
    oResponse.set_redirect("/ring");
  });
  FServer.Routes().Get("/gross", [](const httplib::Request&, httplib::Response& oResponse) {
    oResponse.set_chunked_content_provider("text/html",
                                           [](size_t iOffset, httplib::DataSink& ioSink) {
                                             const std::string chunk(1 << 16, 'x');
                                             if (iOffset > (100u << 20)) ioSink.done();
                                             return ioSink.write(chunk.data(), chunk.size());
                                           });
  });
  FServer.Start();
  EXPECT_EQ(ReasonFor(FServer.Address("/404")), "Die Seite gibt es nicht mehr (404)");
  EXPECT_EQ(ReasonFor(FServer.Address("/410")), "Die Seite gibt es nicht mehr (410)");
  EXPECT_EQ(ReasonFor(FServer.Address("/401")), "Der Zugriff wurde verweigert (401)");
  EXPECT_EQ(ReasonFor(FServer.Address("/403")), "Der Zugriff wurde verweigert (403)");
  EXPECT_EQ(ReasonFor(FServer.Address("/429")), "Der Server lässt zurzeit keine Anfragen zu (429)");
  EXPECT_EQ(ReasonFor(FServer.Address("/503")), "Der Server meldet einen Fehler (503)");
  EXPECT_EQ(ReasonFor(FServer.Address("/402")), "Der Server antwortet unerwartet (402)");
  EXPECT_EQ(ReasonFor(FServer.Address("/304")), "Der Server antwortet unerwartet (304)");
  EXPECT_EQ(ReasonFor(FServer.Address("/leer")), "Die Seite ist leer");
  EXPECT_EQ(ReasonFor(FServer.Address("/nichts")), "Die Seite enthält keine Produktdaten");
  EXPECT_EQ(ReasonFor(FServer.Address("/pdf")),
            "Die Adresse liefert keine Webseite (application/pdf)");
  EXPECT_EQ(ReasonFor(FServer.Address("/bild")), "Die Adresse liefert keine Webseite (image/png)");
  EXPECT_EQ(ReasonFor(FServer.Address("/kaputt")), "Die Seite enthält keine Produktdaten");
  EXPECT_EQ(ReasonFor(FServer.Address("/ring")), "Zu viele Weiterleitungen");
  EXPECT_EQ(ReasonFor(FServer.Address("/gross")), "Die Antwort ist größer als 10 MB");
  EXPECT_EQ(ReasonFor(RefusedAddress()), "Die Verbindung wurde abgelehnt");
}

TEST_F(PagePlugin, ServerThatNeverAnswersTimesOut) {
  const TRawTestServer silent("", TRawTestServer::TMode::moSilent);
  FPlugin = MakeIntf<TPagePlugin>(THttpLimits{50, 50, 1000, 10});
  EXPECT_EQ(ReasonFor(silent.Address("/")), "Zeitüberschreitung");
}

TEST_F(PagePlugin, PageInAnotherCharacterSetIsRead) {
  Serve("/p",
        "<meta property=og:title content='Gr\xFCner Hammer \x80'>"
        "<meta property=product:price:amount content=5>",
        "text/html; charset=ISO-8859-1");
  FServer.Start();
  EXPECT_EQ(Refresh(Result(FServer.Address("/p")))->GetName(), u"Grüner Hammer €");
}

TEST_F(PagePlugin, ProductIsChosenByTheAddressBehindARedirect) {
  FServer.Routes().Get("/alt", [](const httplib::Request&, httplib::Response& oResponse) {
    oResponse.set_redirect("/neu/2");
  });
  Serve("/neu/2", R"(<script type="application/ld+json">[
      {"@type":"Product","name":"A","image":"a.jpg","offers":{"price":1}},
      {"@type":"Product","name":"B","image":"b.jpg","url":"/neu/2","offers":{"price":2}}]</script>)");
  FServer.Start();
  const auto refreshed = Refresh(Result(FServer.Address("/alt")));
  ASSERT_TRUE(refreshed);
  EXPECT_EQ(refreshed->GetName(), u"B");
  EXPECT_EQ(ToUtf8(Data(refreshed).Product.Image), FServer.Address("/neu/b.jpg"));
  EXPECT_EQ(Data(refreshed).Address.Text(), FServer.Address("/alt"));
}

TEST_F(PagePlugin, ForeignResultFailsLater) {
  const auto foreign = FakeResult(u"fremd");
  EXPECT_FALSE(Refresh(foreign));
  EXPECT_EQ(FEnds.back().Result, foreign);
  EXPECT_TRUE(
      FLog.Contains("error Produktseiten: Die Seite  konnte nicht aktualisiert werden: "
                    "Der Artikel gehört nicht zu dieser Quelle"));
}

TEST_F(PagePlugin, TerminateThreadsEndsRequestsAtOnceAndOnce) {
  const TRawTestServer silent("", TRawTestServer::TMode::moSilent);
  Start(Result(silent.Address("/1")));
  Start(Result(silent.Address("/2")));
  EXPECT_EQ(FPlugin->ThreadCount(), 2);
  FPlugin->TerminateThreads();
  EXPECT_TRUE(FEnds.empty());
  FLoop.ProcessMessages();
  ASSERT_EQ(FEnds.size(), 2u);
  EXPECT_FALSE(FEnds[0].Succeeded || FEnds[1].Succeeded);
  EXPECT_EQ(FPlugin->ThreadCount(), 0);
  // Later ones fail without trying.
  Start(Result(silent.Address("/3")));
  FLoop.ProcessMessages();
  EXPECT_EQ(FEnds.size(), 3u);
  FPlugin->Uninitialize();
  FLoop.ProcessMessages();
  EXPECT_EQ(FEnds.size(), 3u);
  EXPECT_EQ(FLog.Lines(), std::vector<std::string>());
}

TEST_F(PagePlugin, UninitializeEndsRequestsBeforeItReturnsEvenThoseThatFollow) {
  const TRawTestServer silent("", TRawTestServer::TMode::moSilent);
  Start(Result(silent.Address("/1")));
  FNext = Result(silent.Address("/2"));
  FPlugin->Uninitialize();
  EXPECT_EQ(FEnds.size(), 2u);
  FLoop.ProcessMessages();
  EXPECT_EQ(FEnds.size(), 2u);
}

TEST_F(PagePlugin, NothingIsCalledBackWhenThePluginIsGone) {
  const TRawTestServer silent("", TRawTestServer::TMode::moSilent);
  const TIntf<TPagePlugin> kept = FPlugin;
  {
    const auto plugin = MakeIntf<TPagePlugin>();
    FPlugin = plugin;
    Start(Result(silent.Address("/1")));
    FPlugin = kept;
  }
  FLoop.ProcessMessages();
  EXPECT_TRUE(FEnds.empty());
}

TEST_F(PagePlugin, LeavesNoObjectsBehind) {
  FPlugin->Uninitialize();
  FPlugin = nullptr;
  const int64_t before = LiveObjectCount();
  Serve("/p", Fixture("shop.html"));
  FServer.Start();
  {
    FPlugin = MakeIntf<TPagePlugin>();
    Refresh(Result(FServer.Address("/p")));
    FPlugin->Uninitialize();
    FLoop.ProcessMessages();
    FEnds.clear();
    FPlugin = nullptr;
  }
  EXPECT_EQ(LiveObjectCount(), before);
  FPlugin = MakeIntf<TPagePlugin>();
}

TEST_F(PagePlugin, SameArticleIsTheSameAddressOfThisSource) {
  const auto result = Result("https://shop.example/p?id=1");
  EXPECT_TRUE(result->IsSame(Result("HTTPS://SHOP.example:443/p?id=1#oben")));
  EXPECT_TRUE(result->IsSame(Result("https://shop.example/p?utm_source=mail&id=1")));
  EXPECT_FALSE(result->IsSame(Result("https://shop.example/p?id=2")));
  EXPECT_FALSE(result->IsSame(FakeResult(u"https://shop.example/p?id=1")));
  EXPECT_FALSE(result->IsSame(nullptr));
}

TEST_F(PagePlugin, CloneIsASeparateCopyWithItsId) {
  const auto result = Result("https://shop.example/");
  const auto clone = result->Clone();
  EXPECT_EQ(clone->GetId(), result->GetId());
  clone->SetId(NewGuid());
  EXPECT_FALSE(clone->GetId() == result->GetId());
}

TEST_F(PagePlugin, ResultsAreSavedAndLoadedInTheirOrder) {
  const auto list = NewInterfaceList();
  for (const char* address : {"http://a.example/", "http://b.example/"}) {
    list->Add(Result(address));
    list->Add(nullptr);
  }
  list->Add(FakeResult(u"fremd"));
  TMemoryStream stream;
  Source()->SaveSearchResults(*list, stream);
  stream.SetPosition(0);
  const auto loaded = Source()->LoadSearchResults(stream, true);
  ASSERT_EQ(loaded->GetCount(), 2);
  EXPECT_EQ(GetAs<ISearchResult>(*loaded, 0)->GetName(), u"http://a.example/");
  EXPECT_EQ(GetAs<ISearchResult>(*loaded, 1)->GetId(), GetAs<ISearchResult>(*list, 2)->GetId());
  TMemoryStream damaged("KKPAGE");
  EXPECT_THROW(Source()->LoadSearchResults(damaged, false), Exception);
}

TEST_F(PagePlugin, MobileRecordsGoOutAndComeBack) {
  TPageData data = NewPageData(TPageAddress::Parse("https://shop.example/p").value(), u"Am\nboss");
  data.Product.Offer.Price = TPrice(1239, 0);
  data.Product.Offer.Currency = u"EUR";
  data.Product.Offer.Seller = u"Bob";
  data.Changed = EncodeDateTime({2026, 11, 20, 18, 30, 0, 0});
  const auto list = NewInterfaceList();
  list->Add(TIntf<ISearchResult>(MakeIntf<TPageSearchResult>(data)));
  list->Add(nullptr);
  TStringList lines;
  Source()->ExportSearchResults(*list, {u"categoryguid=abc"}, lines);
  ASSERT_EQ(lines.GetCount(), 10);
  EXPECT_EQ(lines.Get(0), u"[searchresult]");
  EXPECT_EQ(lines.GetValue(u"pluginguid"), u"8b7f2d64-3e95-4c0a-a1b8-52e6d9047c31");
  EXPECT_EQ(lines.GetValue(u"categoryguid"), u"abc");
  EXPECT_EQ(lines.GetValue(u"name"), u"Am boss");
  EXPECT_EQ(lines.GetValue(u"url"), u"https://shop.example/p");
  EXPECT_EQ(lines.GetValue(u"price"), u"1239");
  EXPECT_EQ(lines.GetValue(u"currency"), u"EUR");
  EXPECT_EQ(lines.GetValue(u"seller"), u"Bob");
  const TDateTime utc = DateTimeStrEval(u"yyyy-mm-dd hh:nn:ss", lines.GetValue(u"offerdateutc"));
  EXPECT_EQ(UtcMsToLocal(utc.Ms() - 25569 * TDateTime::cMsPerDay), data.Changed);
  EXPECT_EQ(lines.Get(9), u"[/searchresult]");

  const auto made = Source()->CreateSearchResults(lines);
  ASSERT_EQ(made->GetCount(), 1);
  EXPECT_EQ(GetAs<ISearchResult>(*made, 0)->GetName(), u"Am boss");
  EXPECT_EQ(Source()->CreateSearchResults({u"url=https://a.example/x"})->GetCount(), 1);
  EXPECT_EQ(Source()->CreateSearchResults({u"name=x"})->GetCount(), 0);
  EXPECT_TRUE(Source()->SupportsMobileExport());
  EXPECT_TRUE(Source()->HandlesPluginGuid(lines.GetValue(u"pluginguid")));
  EXPECT_TRUE(Source()->HandlesPluginGuid(GUIDToString(FPlugin->GetId())));
  EXPECT_FALSE(Source()->HandlesPluginGuid(u""));
}

TEST_F(PagePlugin, ConverterGivesAValueForEachTitle) {
  TPageData data =
      NewPageData(TPageAddress::Parse("https://shop.example/p").value(), u"Am\r\nboss");
  data.Product.Image = u"https://shop.example/a.jpg";
  data.Product.Offer = {TPrice(1239, 0), u"EUR", TAvailability::avInStock, u"Bob",
                        EncodeDateTime({2026, 12, 6, 20, 5, 0, 0})};
  data.Changed = EncodeDateTime({2026, 11, 20, 18, 30, 0, 0});
  const auto converter = Supports<ISearchResultConverter>(FPlugin);
  ASSERT_TRUE(converter);
  TStringList titles, values;
  const auto result = MakeIntf<TPageSearchResult>(data);
  converter->Convert(true, result, titles);
  converter->Convert(false, result, values);
  EXPECT_EQ(titles.Lines(),
            (std::vector<TString>{u"Name", u"Preis", u"Verfügbarkeit", u"Verkäufer", u"Ende",
                                  u"Adresse", u"Bild", u"Letzte Änderung"}));
  EXPECT_EQ(values.Lines(),
            (std::vector<TString>{u"Am boss", u"1.239,00 EUR", u"Auf Lager", u"Bob",
                                  u"06.12.2026 20:05", u"https://shop.example/p",
                                  u"https://shop.example/a.jpg", u"20.11.2026 18:30"}));
  TStringList none;
  converter->Convert(false, FakeResult(u"fremd"), none);
  EXPECT_EQ(none.GetCount(), 0);
  TStringList fresh;
  converter->Convert(false, Result("http://a.example/"), fresh);
  EXPECT_EQ(fresh.GetCount(), 8);
}

TEST_F(PagePlugin, ReminderTextsTellWhatIsKnown) {
  TPageData data = NewPageData(TPageAddress::Parse("https://shop.example/p").value(), u"");
  data.Product.Name = TString(57, u'x') + u"y😀zzz";
  data.Product.Offer = {TPrice(1239, 0), u"EUR", TAvailability::avInStock, u"Bob",
                        EncodeDateTime({2026, 12, 6, 20, 5, 0, 0})};
  const auto result = MakeIntf<TPageSearchResult>(data);
  const auto sms = View().GetReminderText(0, result);
  EXPECT_EQ(sms->GetCaption(), TString(57, u'x') + u"y…");
  EXPECT_EQ(
      sms->GetText(),
      TString(57, u'x') + u"y…, Preis: 1.239,00 EUR, Verkäufer: Bob, Endet am 06.12.2026 20:05");
  for (const uint8_t kind : {1, 2, 3}) {
    const auto text = View().GetReminderText(kind, result);
    EXPECT_EQ(text->GetCaption(), data.Product.Name);
    EXPECT_EQ(text->GetText(), data.Product.Name +
                                   u"\r\nPreis: 1.239,00 EUR\r\nVerkäufer: Bob\r\n"
                                   u"Endet am 06.12.2026 20:05");
    EXPECT_EQ(text->GetLink(), u"https://shop.example/p");
  }
  EXPECT_EQ(View().GetReminderText(0, Result("http://a.example/"))->GetText(),
            u"http://a.example/");
  EXPECT_FALSE(View().GetReminderText(0, FakeResult(u"fremd")));
}

class TFakeNotifications : public TInterfaced<INotifications> {
 public:
  TIntf<ISearchResults> GetSearchResults() const override { return FResults; }
  void SetSearchResults(const TIntf<ISearchResults>& iResults) override { FResults = iResults; }
  void SelectionChanged() override { Calls += "s"; }
  void Close() override { Calls += "c"; }
  void WaitFor() override { Calls += "w"; }

  std::string Calls;

 private:
  TIntf<ISearchResults> FResults;
};

TIntf<IInterfaceList> ListOf(std::initializer_list<TIntf<ISearchResult>> iResults) {
  const auto list = NewInterfaceList();
  for (const auto& result : iResults) list->Add(result);
  return list;
}

TEST_F(PagePlugin, ViewKeepsResultsAndSelectionAndTellsTheExtensions) {
  const auto a = Result("http://a.example/");
  const auto b = Result("http://b.example/");
  const auto notifications = MakeIntf<TFakeNotifications>();
  View().AddExtension(notifications);
  const auto results = notifications->GetSearchResults();
  ASSERT_TRUE(results);
  EXPECT_EQ(results->GetSelectedCount(), 0);
  EXPECT_FALSE(results->GetFocused());
  EXPECT_THROW(results->GetSelectedItems(0), EListError);

  View().SetResults(ListOf({a, nullptr, b}));
  EXPECT_EQ(results->GetCount(), 2);
  EXPECT_EQ(notifications->Calls, "");
  View().SelectResults(ListOf({b, Result("http://c.example/")}));
  View().SelectResults(ListOf({b}));
  EXPECT_EQ(notifications->Calls, "s");
  EXPECT_EQ(results->GetSelectedCount(), 1);
  EXPECT_EQ(results->GetFocused(), b);
  EXPECT_EQ(results->GetSelectedItems(0), b);

  const auto refreshed = b->Clone();
  View().RefreshResult(refreshed);
  View().RefreshResult(Result("http://c.example/"));
  View().RefreshResult(nullptr);
  EXPECT_EQ(results->GetItems(1), refreshed);
  EXPECT_EQ(results->GetFocused(), refreshed);

  View().RemoveResults(ListOf({b}));
  EXPECT_EQ(notifications->Calls, "ss");
  EXPECT_EQ(results->GetCount(), 1);
  EXPECT_THROW(results->GetItems(1), EListError);
  View().SelectResults(ListOf({a}));
  View().SetResults(ListOf({b}));
  EXPECT_EQ(notifications->Calls, "ssss");
}

TEST_F(PagePlugin, ReleasingTheListDropsTheTabsExtensionsAndKeepsTheLastingOnes) {
  const auto lasting = MakeIntf<TFakeNotifications>();
  const auto ofTab = MakeIntf<TFakeNotifications>();
  const auto extensions = NewInterfaceList();
  extensions->Add(lasting);
  extensions->Add(nullptr);
  View().AddExtensions(extensions);
  View().AddExtensions(nullptr);
  TPanel panel(nullptr);
  View().SetContainer(&panel);
  EXPECT_EQ(panel.Children(), std::vector<TControl*>{&View().List().Table()});
  View().AddExtension(ofTab);
  View().SetContainer(nullptr);
  View().ShowList();
  EXPECT_TRUE(View().IsVisible());
  View().SetResults(ListOf({Result("http://a.example/")}));
  View().ReleaseList();
  View().ReleaseListData();
  EXPECT_FALSE(View().IsVisible());
  EXPECT_EQ(ofTab->Calls, "cw");
  EXPECT_FALSE(ofTab->GetSearchResults());
  EXPECT_EQ(View().List().Extensions().size(), 1u);
  EXPECT_EQ(lasting->GetSearchResults()->GetCount(), 0);
  View().Close();
  EXPECT_FALSE(lasting->GetSearchResults());
  EXPECT_TRUE(View().List().Extensions().empty());
}

TEST_F(PagePlugin, ViewTellsWhatATabNeeds) {
  const auto view = Supports<IWatchlistVisualization>(Source());
  ASSERT_TRUE(view);
  EXPECT_EQ(view->GetCaption(), u"Produktseiten");
  EXPECT_EQ(view->GetMenuCaption(), u"Produktseiten");
  EXPECT_FALSE(view->GetImage().IsEmpty());
  EXPECT_FALSE(view->GetImageSelected().IsEmpty());
  EXPECT_FALSE(view->GetSubVisualizations());
  EXPECT_EQ(view->GetIntegrationInfo()->GetId(), FPlugin->GetId());
  view->ShowList();
  view->HideList();
  EXPECT_FALSE(View().IsVisible());
}

TEST_F(PagePlugin, ViewAnswersForItsResultsAndForTheRefresh) {
  const auto view = Supports<IWatchlistVisualization>(Source());
  const auto results = Supports<ISearchResults>(view);
  ASSERT_TRUE(results);
  View().SetResults(ListOf({Result("http://a.example/")}));
  EXPECT_EQ(results->GetCount(), 1);
  EXPECT_EQ(Supports<ISearchResultUpdate>(view), Supports<ISearchResultUpdate>(Source()));
  EXPECT_FALSE(Supports<ISearchSource>(view));
}

TEST_F(PagePlugin, OffersItsSourceToTheWatchListAlone) {
  const auto door = Supports<IPluginIntegration>(FPlugin);
  ASSERT_TRUE(door);
  EXPECT_EQ(door->GetIntegrationInfo()->GetId(), FPlugin->GetId());
  const auto offered = door->GetIntegrations(
      MakeIntf<TPluginIntegrationInfo>(cWatchlistPluginId, TGroupIdentification{0}));
  ASSERT_EQ(offered->GetCount(), 1);
  const auto source = GetAs<IWatchlistIntegration>(*offered, 0);
  ASSERT_TRUE(source);
  EXPECT_EQ(source->GetId(), FPlugin->GetId());
  EXPECT_EQ(source->GetAffiliateId(), FPlugin->GetId());
  EXPECT_EQ(source->GetName(), u"Produktseiten");
  EXPECT_EQ(
      door->GetIntegrations(MakeIntf<TPluginIntegrationInfo>(NewGuid(), TGroupIdentification{0}))
          ->GetCount(),
      0);
  EXPECT_EQ(door->GetIntegrations(nullptr)->GetCount(), 0);
  EXPECT_TRUE(Supports<IPluginIntegrations>(FPlugin));
}

TEST_F(PagePlugin, PluginTellsWhatItIs) {
  const TIntf<IPlugin> plugin = FPlugin;
  EXPECT_TRUE(Supports<IMultiThreadPlugin>(plugin));
  EXPECT_EQ(plugin->GetDescription(), u"Produktseiten");
  EXPECT_FALSE(plugin->GetLongDescription().empty());
  EXPECT_FALSE(plugin->GetSignature().empty());
  EXPECT_EQ(plugin->GetAttributes(), 0u);
  EXPECT_EQ(plugin->GetGroup(), cPagePluginGroup);
  plugin->Uninitialize();
  EXPECT_FALSE(Supports<IPluginIntegration>(plugin));
}

TEST_F(PagePlugin, RegistersItselfOnce) {
  RegisterPagePlugin();
  RegisterPagePlugin();
  EXPECT_EQ(Plugins().GetCount(), 1);
  EXPECT_EQ(Plugins().GetItems(0)->GetId(), cPagePluginId);
  Plugins().Clear();
}

}  // namespace
}  // namespace kk
