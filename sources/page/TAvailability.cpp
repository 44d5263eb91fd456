#include "sources/page/TAvailability.h"

#include <array>

namespace kk {

namespace {

using enum TAvailability;

struct TKind {
  TAvailability Value;
  std::string_view Name;
  const char16_t* Display;
};

constexpr std::array cKinds = {
    TKind{avInStock, "InStock", u"Auf Lager"},
    TKind{avLimited, "LimitedAvailability", u"Begrenzt verfügbar"},
    TKind{avOnlineOnly, "OnlineOnly", u"Nur online"},
    TKind{avInStoreOnly, "InStoreOnly", u"Nur im Geschäft"},
    TKind{avPreOrder, "PreOrder", u"Vorbestellbar"},
    TKind{avPreSale, "PreSale", u"Im Vorverkauf"},
    TKind{avBackOrder, "BackOrder", u"Bestellbar, zurzeit nicht auf Lager"},
    TKind{avMadeToOrder, "MadeToOrder", u"Wird auf Bestellung gefertigt"},
    TKind{avReserved, "Reserved", u"Reserviert"},
    TKind{avOutOfStock, "OutOfStock", u"Nicht auf Lager"},
    TKind{avSoldOut, "SoldOut", u"Ausverkauft"},
    TKind{avDiscontinued, "Discontinued", u"Nicht mehr im Sortiment"},
};

struct TSynonym {
  std::string_view Text;
  TAvailability Value;
};

// In lower case and without blanks, hyphens and underscores.
constexpr std::array cSynonyms = {
    TSynonym{"available", avInStock},         TSynonym{"auflager", avInStock},
    TSynonym{"verfügbar", avInStock},         TSynonym{"lieferbar", avInStock},
    TSynonym{"sofortlieferbar", avInStock},   TSynonym{"availablefororder", avBackOrder},
    TSynonym{"backordered", avBackOrder},     TSynonym{"preorderable", avPreOrder},
    TSynonym{"vorbestellbar", avPreOrder},    TSynonym{"limited", avLimited},
    TSynonym{"instoreonly", avInStoreOnly},   TSynonym{"oos", avOutOfStock},
    TSynonym{"unavailable", avOutOfStock},    TSynonym{"notavailable", avOutOfStock},
    TSynonym{"nichtverfügbar", avOutOfStock}, TSynonym{"nichtauflager", avOutOfStock},
    TSynonym{"nichtlieferbar", avOutOfStock}, TSynonym{"ausverkauft", avSoldOut},
};

// Lower case in ASCII, without what parts words and without the address of schema.org.
std::string Reduced(std::string_view iText) {
  const size_t slash = iText.find_last_of("/#");
  if (slash != std::string_view::npos) iText.remove_prefix(slash + 1);
  if (iText.starts_with("schema:")) iText.remove_prefix(7);
  std::string text;
  for (const char c : iText) {
    if (c <= ' ' && c >= 0) continue;
    if (c == '-' || c == '_') continue;
    text += c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  }
  return text;
}

const TKind* KindOf(TAvailability iAvailability) {
  for (const TKind& kind : cKinds) {
    if (kind.Value == iAvailability) return &kind;
  }
  return nullptr;
}

}  // namespace

TAvailability AvailabilityFromText(std::string_view iText) {
  while (!iText.empty() && (iText.back() == '/' || (iText.back() >= 0 && iText.back() <= ' '))) {
    iText.remove_suffix(1);
  }
  const std::string text = Reduced(iText);
  for (const TKind& kind : cKinds) {
    if (Reduced(kind.Name) == text) return kind.Value;
  }
  for (const TSynonym& synonym : cSynonyms) {
    if (synonym.Text == text) return synonym.Value;
  }
  return avUnknown;
}

std::string AvailabilityName(TAvailability iAvailability) {
  const TKind* kind = KindOf(iAvailability);
  return kind == nullptr ? std::string() : std::string(kind->Name);
}

TString AvailabilityDisplay(TAvailability iAvailability) {
  const TKind* kind = KindOf(iAvailability);
  return kind == nullptr ? TString() : TString(kind->Display);
}

bool IsGone(TAvailability iAvailability) {
  return iAvailability == avOutOfStock || iAvailability == avSoldOut ||
         iAvailability == avDiscontinued;
}

}  // namespace kk
