#include "sources/page/TPageSearch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>

#include "host/contract/INotifications.h"
#include "host/controls/TPanel.h"
#include "sources/page/PageConsts.h"
#include "sources/page/TPagePlugin.h"
#include "tests/support/THttpTestServer.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TRawTestServer.h"
#include "tests/support/TTestClock.h"
#include "tests/support/TTestMainLoop.h"
#include "tests/support/TurnUntil.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

/// A search of the plug-in, as the section "Suchen" has it, and a shop on this machine.
class PageSearch : public testing::Test {
 public:
  PageSearch() {
    FServer.Routes().Get(
        R"(/p/(\w+))", [](const httplib::Request& iRequest, httplib::Response& oResponse) {
          oResponse.set_content(
              "<script type='application/ld+json'>{\"@type\":\"Product\",\"name\":\"" +
                  iRequest.matches[1].str() +
                  "\",\"offers\":{\"price\":5,\"priceCurrency\":\"EUR\"}}</script>",
              "text/html");
        });
    FSource = Supports<ISearchSource>(FPlugin);
  }
  ~PageSearch() override {
    FPlugin->Uninitialize();
    FLoop.ProcessMessages();
  }

  std::string At(const std::string& iPath) { return FServer.Address(iPath); }
  void Search(const std::string& iText) {
    FSource->Search(FromUtf8(iText), TNotifySearchFinished::Of<&PageSearch::DoFinished>(this));
  }
  template <class Condition>
  void TurnUntil(Condition iCondition) {
    EXPECT_TRUE(kk::TurnUntil(FLoop, iCondition, std::chrono::seconds(60)));
  }
  /// Searches to the end and answers the sentences of the problem.
  std::vector<std::string> ProblemsOf(const std::string& iText) {
    const size_t before = FEnds.size();
    Search(iText);
    TurnUntil([&] { return FEnds.size() > before; });
    std::vector<std::string> problems;
    for (const TString& line : Split(FEnds.back(), u'\n')) problems.push_back(ToUtf8(line));
    return problems;
  }
  std::vector<std::string> Names() {
    std::vector<std::string> names;
    const auto results = FSource->GetSearchResults();
    for (int i = 0; i < results->GetCount(); ++i) {
      names.push_back(ToUtf8(results->GetItems(i)->GetName()));
    }
    return names;
  }
  void DoFinished(TObject* Sender, TStringView iProblem) {
    EXPECT_TRUE(FLoop.IsMainThread());
    EXPECT_EQ(Sender, static_cast<TObject*>(&FPlugin->Search()));
    FEnds.emplace_back(iProblem);
    if (!FNextText.empty()) Search(std::exchange(FNextText, {}));
  }
  void DoSelectionChanged(TObject*) { ++FSelections; }

  TTestMainLoop FLoop;
  TTestClock FClock;
  TLogRecorder FLog;
  THttpTestServer FServer;
  TIntf<TPagePlugin> FPlugin = MakeIntf<TPagePlugin>(THttpLimits{1000, 5000, 10 << 20, 10});
  TIntf<ISearchSource> FSource;
  std::vector<TString> FEnds;
  std::string FNextText;
  int FSelections = 0;
};

TEST_F(PageSearch, TellsWhatItIs) {
  ASSERT_TRUE(FSource);
  EXPECT_EQ(FSource->GetCaption(), u"Produktseiten");
  EXPECT_EQ(FSource->GetPrompt(), u"Adressen von Produktseiten, eine je Zeile:");
  EXPECT_EQ(FSource->GetImage(), TBitmap{cPageImage});
  EXPECT_EQ(FSource->GetImageSelected(), TBitmap{cPageImageSelected});
  // The id under which the watch list knows the source: so it offers its extensions here.
  EXPECT_EQ(FSource->GetIntegrationInfo()->GetId(), FPlugin->Integration()->GetId());
  EXPECT_EQ(FSource->GetSearchResults(), FSource->GetSearchResults());
}

TEST_F(PageSearch, EachAddressGivesTheProductOfItsPage) {
  FServer.Start();
  TPanel panel(nullptr);
  FSource->SetContainer(&panel);
  EXPECT_THAT(ProblemsOf("Ein Titel\n" + At("/p/Hacke") + "\n" + At("/p/Amboss") + "\n"),
              IsEmpty());
  EXPECT_THAT(Names(), UnorderedElementsAre("Hacke", "Amboss"));
  const auto results = FSource->GetSearchResults();
  const auto page = Supports<IPageSearchResult>(results->GetItems(0));
  EXPECT_EQ(page->Data().Product.Offer.Price, TPrice(5, 0));
  EXPECT_EQ(page->Data().Changed, FClock.Now());
  EXPECT_EQ(FPlugin->ThreadCount(), 0);
  EXPECT_EQ(panel.Children().size(), 1u);
  // The next search begins with an empty list.
  FSource->SetOnSelectionChanged(TNotifyEvent::Of<&PageSearch::DoSelectionChanged>(this));
  FPlugin->Search().List().Table().SelectRows({0}, 0);
  EXPECT_EQ(FSelections, 1);
  Search(At("/p/Zange"));
  EXPECT_THAT(Names(), IsEmpty());
  EXPECT_EQ(FSelections, 2);
  TurnUntil([&] { return FEnds.size() == 2; });
  EXPECT_THAT(Names(), ElementsAre("Zange"));
  EXPECT_EQ(FLog.Lines(), std::vector<std::string>());
}

TEST_F(PageSearch, TellsEachBadLineInASentenceInTheOrderOfTheText) {
  FServer.Start();
  const std::string gone = At("/weg");
  EXPECT_THAT(
      ProblemsOf("Unsinn\nwww.\n" + gone + "\n" + At("/p/Hacke") + "\nftp://x/"),
      ElementsAre(
          "„Unsinn“ ist keine Adresse einer Webseite.", "„www.“ ist keine Adresse einer Webseite.",
          "Die Seite " + gone + " konnte nicht gelesen werden: Die Seite gibt es nicht mehr (404).",
          "„ftp://x/“ ist keine Adresse einer Webseite."));
  EXPECT_THAT(Names(), ElementsAre("Hacke"));
  const std::string longLine(300, 'x');
  EXPECT_THAT(ProblemsOf(longLine),
              ElementsAre("„" + longLine.substr(0, 80) + "…“ ist keine Adresse einer Webseite."));
  EXPECT_EQ(FLog.Lines(), std::vector<std::string>());  // the user was told
}

TEST_F(PageSearch, TextWithoutAnythingEndsAtOnce) {
  Search(" \n#\n");
  ASSERT_EQ(FEnds.size(), 1u);
  EXPECT_EQ(FEnds[0], u"Geben Sie mindestens eine Adresse einer Produktseite ein.");
  FSource->Search(u"Unsinn", {});
  EXPECT_EQ(FEnds.size(), 1u);
}

/// Requests that wait until they are let go, and how many of them were there at most.
class TGate {
 public:
  void Pass() {
    std::unique_lock lock(FMutex);
    FMost = std::max(FMost, ++FInside);
    FChanged.notify_all();
    FChanged.wait(lock, [this] { return FOpen; });
    --FInside;
  }
  void AwaitInside(int iCount) {
    std::unique_lock lock(FMutex);
    EXPECT_TRUE(
        FChanged.wait_for(lock, std::chrono::seconds(60), [&] { return FInside >= iCount; }));
  }
  void Open() {
    const std::unique_lock lock(FMutex);
    FOpen = true;
    FChanged.notify_all();
  }
  int Most() {
    const std::unique_lock lock(FMutex);
    return FMost;
  }

 private:
  std::mutex FMutex;
  std::condition_variable FChanged;
  bool FOpen = false;
  int FInside = 0;
  int FMost = 0;
};

TEST_F(PageSearch, ReadsAFewPagesAtATime) {
  TGate gate;
  FServer.Routes().Get(R"(/warte/(\w+))",
                       [&](const httplib::Request& iRequest, httplib::Response& oResponse) {
                         gate.Pass();
                         oResponse.set_redirect("/p/" + iRequest.matches[1].str());
                       });
  FServer.Start();
  std::string text;
  for (int i = 0; i < 10; ++i) text += At("/warte/" + std::to_string(i)) + "\n";
  Search(text);
  EXPECT_EQ(FPlugin->ThreadCount(), 10);
  gate.AwaitInside(TPageSearch::cAtOnce);
  gate.Open();
  TurnUntil([&] { return !FEnds.empty(); });
  EXPECT_EQ(FEnds[0], u"");
  EXPECT_EQ(Names().size(), 10u);
  EXPECT_EQ(gate.Most(), TPageSearch::cAtOnce);
  EXPECT_EQ(FPlugin->ThreadCount(), 0);
}

TEST_F(PageSearch, CancelEndsItWithoutItsCallbackAndKeepsWhatWasFound) {
  const TRawTestServer silent("", TRawTestServer::TMode::moSilent);
  FServer.Start();
  Search(At("/p/Hacke") + "\n" + silent.Address("/1") + "\n" + silent.Address("/2"));
  TurnUntil([&] { return !Names().empty(); });
  EXPECT_GT(FPlugin->ThreadCount(), 0);
  FSource->Cancel();
  FSource->Cancel();
  EXPECT_EQ(FPlugin->ThreadCount(), 0);
  FLoop.ProcessMessages();
  EXPECT_THAT(Names(), ElementsAre("Hacke"));
  EXPECT_THAT(FEnds, IsEmpty());
}

TEST_F(PageSearch, NewSearchGivesTheOldOneUp) {
  const TRawTestServer silent("", TRawTestServer::TMode::moSilent);
  FServer.Start();
  Search(silent.Address("/1"));
  EXPECT_THAT(ProblemsOf(At("/p/Hacke")), IsEmpty());
  EXPECT_EQ(FEnds.size(), 1u);
  // And one that is begun by the end of another.
  FNextText = At("/p/Amboss");
  Search(At("/p/Zange"));
  TurnUntil([&] { return FEnds.size() == 3; });
  EXPECT_THAT(Names(), ElementsAre("Amboss"));
}

TEST_F(PageSearch, CancelLeavesTheRefreshesOfTheWatchListAlone) {
  FServer.Start();
  struct TEnd {
    void Finished(TObject*, const TIntf<ISearchResult>&, bool iSucceeded) {
      Succeeded = iSucceeded;
    }
    bool Succeeded = false;
  } end;
  const auto page = MakeIntf<TPageSearchResult>(
      NewPageData(TPageAddress::Parse(At("/p/Hacke")).value(), u"Hacke"));
  Supports<ISearchResultUpdate>(FPlugin)->UpdateSearchResult(
      page, TNotifyEventSearchResult::Of<&TEnd::Finished>(&end));
  Search(At("/p/Amboss"));
  FSource->Cancel();
  TurnUntil([&] { return end.Succeeded; });
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(PageSearch, EndOfTheProgramEndsItAtOnce) {
  const TRawTestServer silent("", TRawTestServer::TMode::moSilent);
  std::string text;
  for (int i = 0; i < 9; ++i) text += silent.Address("/" + std::to_string(i)) + "\n";
  Search(text);
  FPlugin->TerminateThreads();
  TurnUntil([&] { return FPlugin->ThreadCount() == 0; });
  ASSERT_EQ(FEnds.size(), 1u);
  EXPECT_EQ(Split(FEnds[0], u'\n').size(), 9u);
  Search(silent.Address("/"));
  FPlugin->Uninitialize();
  EXPECT_EQ(FPlugin->ThreadCount(), 0);
  FLoop.ProcessMessages();
  EXPECT_EQ(FEnds.size(), 1u);
}

TEST_F(PageSearch, TooManyPagesAreNotReadAndTold) {
  FPlugin->TerminateThreads();  // no page is read
  std::string text;
  for (size_t i = 0; i < TPageSearch::cMaxPages + 3; ++i) {
    text += "https://shop.example/" + std::to_string(i) + "\n";
  }
  const std::vector<std::string> problems = ProblemsOf(text);
  ASSERT_EQ(problems.size(), TPageSearch::cMaxPages + 1);
  EXPECT_EQ(problems.back(),
            "Auf einmal werden höchstens 1000 Seiten gelesen, 3 weitere wurden übergangen.");
  EXPECT_EQ(problems[1],
            "Die Seite https://shop.example/1 konnte nicht gelesen werden: Abgebrochen.");
}

class TListening : public TInterfaced<INotifications> {
 public:
  TIntf<ISearchResults> GetSearchResults() const override { return FResults; }
  void SetSearchResults(const TIntf<ISearchResults>& iResults) override { FResults = iResults; }
  void SelectionChanged() override {}
  void Close() override {}
  void WaitFor() override {}

 private:
  TIntf<ISearchResults> FResults;
};

TEST_F(PageSearch, ReleaseDropsListResultsAndExtensions) {
  FServer.Start();
  TPanel panel(nullptr);
  const auto listening = MakeIntf<TListening>();
  const auto extensions = NewInterfaceList();
  extensions->Add(listening);
  FSource->SetContainer(&panel);
  FSource->AddExtensions(extensions);
  EXPECT_EQ(listening->GetSearchResults(), FSource->GetSearchResults());
  EXPECT_THAT(ProblemsOf(At("/p/Hacke")), IsEmpty());
  FSource->ReleaseSearch();
  EXPECT_FALSE(listening->GetSearchResults());
  EXPECT_THAT(Names(), IsEmpty());
  EXPECT_THAT(panel.Children(), IsEmpty());
}

TEST_F(PageSearch, DiesWithRequestsUnderWay) {
  const TRawTestServer silent("", TRawTestServer::TMode::moSilent);
  const auto update = MakeIntf<TPageUpdate>();
  {
    const auto search = MakeIntf<TPageSearch>(update);
    search->Search(FromUtf8(silent.Address("/")),
                   TNotifySearchFinished::Of<&PageSearch::DoFinished>(this));
    EXPECT_EQ(update->Count(), 1);
  }
  EXPECT_EQ(update->Count(), 0);
  FLoop.ProcessMessages();
  EXPECT_THAT(FEnds, IsEmpty());
}

}  // namespace
}  // namespace kk
