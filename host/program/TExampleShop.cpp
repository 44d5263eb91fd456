#include "host/program/TExampleShop.h"

#include <httplib.h>

#include <array>
#include <atomic>
#include <string_view>
#include <thread>

#include "host/base/Exception.h"
#include "host/base/TClock.h"

namespace kk {
namespace {

constexpr char cHost[] = "127.0.0.1";
constexpr char cHtml[] = "text/html; charset=utf-8";
constexpr int64_t cAuctionMs = 45 * TDateTime::cMsPerMinute;

// How a page says what it sells.
enum class TMarkup { OpenGraph, Microdata, JsonLd };

struct TArticle {
  std::string_view Path;
  std::string_view Name;
  TMarkup Markup;
  std::array<std::string_view, 4> Prices;  ///< one after the other, and round again
};

constexpr std::array<TArticle, 3> cArticles = {{
    {"/tischlampe", "Tischlampe Luna", TMarkup::OpenGraph, {"49.90", "44.90", "39.90", "46.50"}},
    {"/kaffeemuehle",
     "Kaffeemühle Mokka",
     TMarkup::Microdata,
     {"89.00", "79.00", "69.00", "84.00"}},
    {"/wanduhr", "Wanduhr, um 1960", TMarkup::JsonLd, {"12.50", "15.00", "18.50", "23.00"}},
}};

void Replace(std::string& ioText, std::string_view iMark, std::string_view iValue) {
  for (size_t at = ioText.find(iMark); at != std::string::npos;
       at = ioText.find(iMark, at + iValue.size())) {
    ioText.replace(at, iMark.size(), iValue);
  }
}

std::string_view Template(TMarkup iMarkup) {
  switch (iMarkup) {
    case TMarkup::OpenGraph:
      return R"(<!DOCTYPE html><html lang="de"><head><title>$NAME</title>
<meta property="og:type" content="product"><meta property="og:title" content="$NAME">
<meta property="product:price:amount" content="$PRICE">
<meta property="product:price:currency" content="EUR">
<meta property="product:availability" content="in stock">
</head><body><h1>$NAME</h1><p>$PRICE EUR</p></body></html>
)";
    case TMarkup::Microdata:
      return R"(<!DOCTYPE html><html lang="de"><head><title>$NAME</title></head><body>
<div itemscope itemtype="https://schema.org/Product"><h1 itemprop="name">$NAME</h1>
<p>statt <del>99,00 EUR</del></p>
<div itemprop="offers" itemscope itemtype="https://schema.org/Offer">
<meta itemprop="priceCurrency" content="EUR"><span itemprop="price" content="$PRICE">$PRICE</span>
<link itemprop="availability" href="https://schema.org/InStock">
</div></div></body></html>
)";
    case TMarkup::JsonLd:
      break;
  }
  return R"(<!DOCTYPE html><html lang="de"><head><title>$NAME</title>
<script type="application/ld+json">
{"@context": "https://schema.org", "@type": "Product", "name": "$NAME",
 "offers": {"@type": "Offer", "price": "$PRICE", "priceCurrency": "EUR",
            "availability": "https://schema.org/InStock", "availabilityEnds": "$END",
            "seller": {"@type": "Person", "name": "uhrenfreund"}}}
</script></head><body><h1>$NAME</h1></body></html>
)";
}

}  // namespace

class TExampleShop::TServer {
 public:
  TServer() : FEnd(ToUtf8(DateTimeToIso(Now().PlusMs(cAuctionMs)))) {
    for (size_t i = 0; i < cArticles.size(); ++i) {
      FServer.Get(std::string(cArticles[i].Path), [this, i](const auto&, auto& ioResponse) {
        ioResponse.set_header("Cache-Control", "no-store");
        ioResponse.set_content(Page(i), cHtml);
      });
    }
    // Connections that are kept would hold up the end of the shop.
    FServer.set_keep_alive_max_count(1);
    FPort = FServer.bind_to_any_port(cHost);
    if (FPort <= 0) throw Exception(u"Der Beispielshop bekommt keinen freien Port");
    FThread = std::thread([this] {
      FServer.listen_after_bind();
      FEnded = true;
    });
  }

  ~TServer() {
    // A stop before the start would be lost.
    while (!FServer.is_running() && !FEnded) std::this_thread::yield();
    FServer.stop();
    FThread.join();
  }

  int Port() const { return FPort; }

 private:
  std::string Page(size_t iIndex) {
    const TArticle& article = cArticles[iIndex];
    std::string page(Template(article.Markup));
    Replace(page, "$NAME", article.Name);
    Replace(page, "$PRICE", article.Prices[FVisits[iIndex]++ % article.Prices.size()]);
    Replace(page, "$END", FEnd);
    return page;
  }

  std::string FEnd;
  std::array<std::atomic<size_t>, cArticles.size()> FVisits{};
  httplib::Server FServer;
  int FPort = 0;
  std::atomic<bool> FEnded{false};
  std::thread FThread;
};

TExampleShop::TExampleShop() : FServer(std::make_unique<TServer>()) {}
TExampleShop::~TExampleShop() = default;

TString TExampleShop::Address() const {
  return Format(u"http://%s:%d", {FromUtf8(cHost), FServer->Port()});
}

std::vector<TString> TExampleShop::Articles() const {
  std::vector<TString> result;
  for (const TArticle& article : cArticles) result.push_back(Address() + FromUtf8(article.Path));
  return result;
}

}  // namespace kk
