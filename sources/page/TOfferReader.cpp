#include "sources/page/TOfferReader.h"

#include <algorithm>

#include "sources/page/TSchemaTime.h"

namespace kk {

namespace {

constexpr int cMaxDepth = 6;
constexpr size_t cMaxOffers = 5000;
constexpr size_t cMaxTextLength = 1000;

bool IsAddress(std::string_view iText) {
  return iText.starts_with("http://") || iText.starts_with("https://") || iText.starts_with("//");
}

// Struck-out and recommended prices are not what it costs.
bool IsPriceForComparison(const TSchemaItem& iSpecification) {
  const std::string type = SchemaName(iSpecification.Text("pricetype"));
  return type == "listprice" || type == "strikethroughprice" || type == "srp" || type == "msrp" ||
         type == "regularprice" || type == "invoiceprice" || type == "minimumadvertisedprice";
}

bool IsChargeBesidePrice(const TSchemaItem& iSpecification) {
  return iSpecification.HasType("deliverychargespecification") ||
         iSpecification.HasType("paymentchargespecification");
}

bool IsForRent(const TSchemaItem& iOffer) {
  const std::string_view function = iOffer.Text("businessfunction");
  return function.find("LeaseOut") != std::string_view::npos;
}

// 0 for what can be had, 1 for what isn't known, 2 for what is gone.
int Rank(TAvailability iAvailability) {
  if (iAvailability == TAvailability::avUnknown) return 1;
  return IsGone(iAvailability) ? 2 : 0;
}

bool IsBetter(const TOffer& iA, const TOffer& iB) {
  if (iA.Price.has_value() != iB.Price.has_value()) return iA.Price.has_value();
  const bool goneA = IsGone(iA.Availability);
  const bool goneB = IsGone(iB.Availability);
  if (goneA != goneB) return goneB;
  if (iA.Price && *iA.Price != *iB.Price) return *iA.Price < *iB.Price;
  return Rank(iA.Availability) < Rank(iB.Availability);
}

}  // namespace

TString CleanText(std::string_view iUtf8) {
  // An entity is longer than what it stands for, so nothing that is kept is cut here.
  const std::string head = CollapseBlanks(iUtf8.substr(0, cMaxTextLength * 16));
  const std::string decoded = DecodeEntities(ToUtf8(WithoutControlCharacters(FromUtf8(head))));
  TString text = WithoutControlCharacters(FromUtf8(CollapseBlanks(decoded)));
  if (text.size() <= cMaxTextLength) return text;
  const bool cutsPair = text[cMaxTextLength - 1] >= 0xD800 && text[cMaxTextLength - 1] < 0xDC00;
  text.resize(cutsPair ? cMaxTextLength - 1 : cMaxTextLength);
  return text;
}

void TOfferReader::Add(const TSchemaItem& iProduct) {
  TOffer inherited;
  inherited.Seller = SellerOf(iProduct);
  inherited.EndTime = EndOf(iProduct);
  const size_t before = FFound.size();
  AddOffersOf(iProduct, inherited);
  // What varies in size or colour is often offered by its variants alone.
  if (FFound.size() == before) {
    for (const TSchemaValue* variant : iProduct.Values("hasvariant")) {
      if (variant->Item == nullptr) continue;
      const TSchemaItem& item = FGraph.Resolve(*variant->Item);
      const size_t first = FFound.size();
      AddOffersOf(item, inherited);
      const int match = FFacts.MatchOf(item.Text("url"));
      for (size_t i = first; i < FFound.size(); ++i) {
        FFound[i].AddressMatch = std::max(FFound[i].AddressMatch, match);
      }
    }
  }
  // An offer may point at its product instead of the other way round.
  if (FFound.size() > before) return;
  for (const TSchemaItem* offer : FGraph.OffersOf(iProduct)) AddOffer(*offer, inherited, 0);
}

void TOfferReader::AddOffer(const TSchemaItem& iOffer) { AddOffer(iOffer, {}, 0); }

void TOfferReader::AddOffersOf(const TSchemaItem& iProduct, const TOffer& iInherited) {
  bool hasOffers = false;
  for (const TSchemaValue* value : iProduct.Values("offers")) {
    if (value->Item == nullptr) continue;
    hasOffers = true;
    AddOffer(FGraph.Resolve(*value->Item), iInherited, 0);
  }
  if (hasOffers) return;
  // Some leave the offer out and say its properties of the product.
  if (!iProduct.Values("price").empty() || !iProduct.Values("lowprice").empty()) {
    AddOffer(iProduct, iInherited, cMaxDepth);
  }
}

void TOfferReader::AddOffer(const TSchemaItem& iOffer, const TOffer& iInherited, int iDepth) {
  if (FFound.size() >= cMaxOffers || IsForRent(iOffer)) return;
  TOffer offer = iInherited;
  const std::string currency = CurrencyFromText(iOffer.Text("pricecurrency"));
  if (!currency.empty()) offer.Currency = FromUtf8(currency);
  const TAvailability availability = AvailabilityFromText(iOffer.Text("availability"));
  if (availability != TAvailability::avUnknown) offer.Availability = availability;
  if (const TString seller = SellerOf(iOffer); !seller.empty()) offer.Seller = seller;
  if (const TDateTime end = EndOf(iOffer); !end.IsZero()) offer.EndTime = end;
  const TOffer forInner = offer;
  ReadPrice(iOffer, offer);
  const size_t before = FFound.size();
  if (iDepth < cMaxDepth) {
    for (const TSchemaValue* inner : iOffer.Values("offers")) {
      if (inner->Item != nullptr) AddOffer(FGraph.Resolve(*inner->Item), forInner, iDepth + 1);
    }
  }
  if (!offer.Price && FFound.size() > before) return;
  // Shops write zero where they have no price to tell.
  if (offer.Price && offer.Price->IsZero() && Rank(offer.Availability) != 0) {
    offer.Price = std::nullopt;
    FSawZero = true;
  }
  FFound.push_back({offer, FFacts.MatchOf(iOffer.Text("url"))});
}

void TOfferReader::ReadPrice(const TSchemaItem& iOffer, TOffer& ioOffer) const {
  if (ReadAmount(iOffer, "price", ioOffer) || ReadAmount(iOffer, "lowprice", ioOffer)) return;
  // The first one for the whole article; one for a quantity, such as a litre, only without it.
  for (const bool forQuantity : {false, true}) {
    for (const TSchemaValue* value : iOffer.Values("pricespecification")) {
      if (value->Item == nullptr) continue;
      const TSchemaItem& specification = FGraph.Resolve(*value->Item);
      if (specification.Values("referencequantity").empty() == forQuantity) continue;
      if (ReadSpecification(specification, ioOffer)) return;
    }
  }
}

bool TOfferReader::ReadSpecification(const TSchemaItem& iSpecification, TOffer& ioOffer) const {
  if (IsPriceForComparison(iSpecification) || IsChargeBesidePrice(iSpecification)) return false;
  for (const char* property : {"pricecurrency", "currency"}) {
    const std::string currency = CurrencyFromText(iSpecification.Text(property));
    if (!currency.empty()) ioOffer.Currency = FromUtf8(currency);
  }
  return ReadAmount(iSpecification, "price", ioOffer) ||
         ReadAmount(iSpecification, "minprice", ioOffer) ||
         ReadAmount(iSpecification, "value", ioOffer);
}

bool TOfferReader::ReadAmount(const TSchemaItem& iItem, std::string_view iProperty,
                              TOffer& ioOffer) const {
  // What is written for machines counts before what a reader sees.
  for (const bool forMachines : {true, false}) {
    for (const TSchemaValue* value : iItem.Values(iProperty)) {
      if (value->IsMachine != forMachines) continue;
      if (value->Item != nullptr) {
        if (iProperty == "price" && ReadSpecification(*value->Item, ioOffer)) return true;
        continue;
      }
      std::string currency = ToUtf8(ioOffer.Currency);
      if (currency.empty()) currency = CurrencyBeside(value->Text);
      ioOffer.Price = value->IsNumber ? TPrice::FromNumber(value->Text)
                                      : TPrice::FromText(value->Text, currency);
      if (!ioOffer.Price) continue;
      ioOffer.Currency = FromUtf8(currency);
      return true;
    }
  }
  return false;
}

TString TOfferReader::SellerOf(const TSchemaItem& iItem) const {
  for (const char* property : {"seller", "offeredby", "merchant"}) {
    for (const TSchemaValue* value : iItem.Values(property)) {
      const std::string_view name =
          value->Item != nullptr ? FGraph.Resolve(*value->Item).Text("name") : value->Text;
      if (name.empty() || IsAddress(name)) continue;
      return CleanText(name);
    }
  }
  return {};
}

// "priceValidUntil" says when a price ends, not the offer, and is never looked at.
TDateTime TOfferReader::EndOf(const TSchemaItem& iItem) const {
  for (const char* property : {"availabilityends", "validthrough"}) {
    const TDateTime end = EndTimeFromText(iItem.Text(property));
    if (!end.IsZero()) return end;
  }
  if (iItem.IsEvent()) return EndTimeFromText(iItem.Text("enddate"));
  for (const TSchemaValue* value : iItem.Values("event")) {
    if (value->Item == nullptr) continue;
    const TDateTime end = EndTimeFromText(FGraph.Resolve(*value->Item).Text("enddate"));
    if (!end.IsZero()) return end;
  }
  return {};
}

bool TOfferReader::HasAnswer() const {
  return FSawZero || std::any_of(FFound.begin(), FFound.end(), [](const TFound& iFound) {
           return iFound.Offer.Price || IsGone(iFound.Offer.Availability);
         });
}

std::optional<TOffer> TOfferReader::Best() const {
  if (FFound.empty()) return std::nullopt;
  std::vector<const TFound*> left;
  int best = 0;
  for (const TFound& found : FFound) best = std::max(best, found.AddressMatch);
  for (const TFound& found : FFound) {
    if (found.AddressMatch == best) left.push_back(&found);
  }
  // Amounts in several currencies can't be compared.
  TString currency;
  for (const TFound* found : left) {
    const bool isFirst = currency.empty();
    if (isFirst || found->Offer.Currency == u"EUR") currency = found->Offer.Currency;
  }
  const TOffer* chosen = nullptr;
  for (const TFound* found : left) {
    if (found->Offer.Currency != currency) continue;
    if (chosen == nullptr || IsBetter(found->Offer, *chosen)) chosen = &found->Offer;
  }
  return *chosen;
}

}  // namespace kk
