#include "sources/page/TPageReader.h"

#include <algorithm>
#include <array>
#include <utility>

#include "host/base/Exception.h"
#include "sources/page/TCharsetDecoder.h"
#include "sources/page/TJsonLdReader.h"
#include "sources/page/TMicrodataReader.h"
#include "sources/page/TOfferReader.h"
#include "sources/page/TOpenGraphReader.h"
#include "sources/page/TPageFacts.h"
#include "sources/page/TProductChooser.h"

namespace kk {

namespace {

std::string LowerAscii(std::string_view iText) {
  std::string text(iText);
  for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  return text;
}

// "text/html" of "Text/HTML; charset=utf-8".
std::string MediaType(std::string_view iContentType) {
  return LowerAscii(CollapseBlanks(iContentType.substr(0, iContentType.find(';'))));
}

// The first bytes of what is no page, whatever its content type says.
std::string_view KindOfBytes(std::string_view iBytes) {
  struct TMagic {
    std::string_view Bytes;
    std::string_view Kind;
  };
  using namespace std::literals;
  constexpr std::array cMagics = {
      TMagic{"%PDF-", "application/pdf"},      TMagic{"\x89PNG\r\n", "image/png"},
      TMagic{"\xFF\xD8\xFF", "image/jpeg"},    TMagic{"GIF8", "image/gif"},
      TMagic{"PK\x03\x04", "application/zip"}, TMagic{"\x1F\x8B", "application/gzip"},
      TMagic{"\0\0\1\0"sv, "image/x-icon"}};
  for (const TMagic& magic : cMagics) {
    if (iBytes.starts_with(magic.Bytes)) return magic.Kind;
  }
  return {};
}

bool LooksLikeHtml(std::string_view iBytes) {
  const std::string head = LowerAscii(iBytes.substr(0, 1024));
  for (const char* mark : {"<!doctype html", "<html", "<head", "<body", "<script", "<title"}) {
    if (head.find(mark) != std::string::npos) return true;
  }
  return false;
}

// Empty for a page; otherwise why it is none.
TString WhyNoPage(const TPageBytes& iPage) {
  if (iPage.Body.empty()) return u"Die Seite ist leer";
  std::string kind(KindOfBytes(iPage.Body));
  if (kind.empty()) {
    const std::string type = MediaType(iPage.ContentType);
    const bool isHtml = type == "text/html" || type == "application/xhtml+xml";
    if (isHtml || LooksLikeHtml(iPage.Body)) return {};
    kind = type.empty() ? "unbekannter Inhalt" : type;
  }
  return u"Die Adresse liefert keine Webseite (" + CleanText(kind) + u")";
}

void ReadScripts(const THtmlTree& iTree, TSchemaGraph& ioGraph) {
  TJsonLdReader reader(ioGraph);
  for (int node = 0; node < iTree.GetCount(); ++node) {
    if (iTree.Name(node) != "script") continue;
    if (MediaType(iTree.Attribute(node, "type")) != "application/ld+json") continue;
    reader.Read(iTree.RawText(node));
  }
  ioGraph.Index();
}

bool MeanSameOffer(const TProduct& iA, const TProduct& iB) {
  const bool sameName = ReducedName(ToUtf8(iA.Name)) == ReducedName(ToUtf8(iB.Name));
  const bool samePrice = iA.Offer.Price && iA.Offer.Price == iB.Offer.Price;
  return (sameName && (samePrice || !iA.Offer.Price || !iB.Offer.Price)) || samePrice;
}

// Takes over what an offer leaves open.
void CompleteOffer(TOffer& ioOffer, const TOffer& iOther) {
  if (ioOffer.Availability == TAvailability::avUnknown) ioOffer.Availability = iOther.Availability;
  if (ioOffer.Seller.empty()) ioOffer.Seller = iOther.Seller;
  if (ioOffer.EndTime.IsZero()) ioOffer.EndTime = iOther.EndTime;
  if (ioOffer.Price && ioOffer.Currency.empty()) ioOffer.Currency = iOther.Currency;
}

void Complete(TChosenProduct& ioChosen, const TChosenProduct& iOther) {
  TProduct& product = ioChosen.Product;
  const bool meanSame = MeanSameOffer(product, iOther.Product);
  if (product.Name.empty()) product.Name = iOther.Product.Name;
  if (product.Image.empty()) product.Image = iOther.Product.Image;
  if (!ioChosen.HasAnswer && iOther.HasAnswer) {
    const TOffer own = std::exchange(product.Offer, iOther.Product.Offer);
    CompleteOffer(product.Offer, own);
    ioChosen.HasAnswer = true;
  } else if (meanSame) {
    CompleteOffer(product.Offer, iOther.Product.Offer);
  }
}

TPageReading ReadTree(const THtmlTree& iTree, const TPageBytes& iPage) {
  const TPageFacts facts(iTree, {iPage.Requested, iPage.Final});
  TSchemaGraph scripts;
  ReadScripts(iTree, scripts);
  TSchemaGraph microdata;
  TMicrodataReader(iTree, microdata).Read();
  microdata.Index();

  TProductChooser byScripts(scripts, facts);
  TProductChooser byMicrodata(microdata, facts);
  std::vector<TChosenProduct> found;
  for (const std::optional<TChosenProduct>& next :
       {byScripts.Choose(), byMicrodata.Choose(), ReadOpenGraph(facts)}) {
    if (next) found.push_back(*next);
  }
  if (found.empty()) {
    const bool several = byScripts.WasAmbiguous() || byMicrodata.WasAmbiguous();
    return {std::nullopt, several ? u"Die Seite zeigt mehrere Artikel und keinen für sich allein"
                                  : u"Die Seite enthält keine Produktdaten"};
  }
  // A product of one syntax before an event of another; else in the order of the syntaxes.
  std::stable_sort(found.begin(), found.end(),
                   [](const auto& iA, const auto& iB) { return iA.Kind < iB.Kind; });
  for (size_t i = 1; i < found.size(); ++i) Complete(found[0], found[i]);
  TProduct product = std::move(found[0].Product);
  if (product.Name.empty()) product.Name = CleanText(facts.Title());
  if (product.Name.empty()) product.Name = FromUtf8(iPage.Requested.Text());
  if (product.Image.empty()) product.Image = OpenGraphImage(facts);
  return {std::move(product), {}};
}

}  // namespace

TPageReading ReadPage(const TPageBytes& iPage, const THtmlLimits& iLimits) {
  if (TString reason = WhyNoPage(iPage); !reason.empty()) return {std::nullopt, std::move(reason)};
  try {
    const std::string text = DecodePage(iPage.Body, iPage.ContentType);
    const THtmlTree tree(text, iLimits);
    return ReadTree(tree, iPage);
  } catch (const std::exception& e) {
    return {std::nullopt, MessageOf(e)};  // told to the user as the reason
  }
}

}  // namespace kk
