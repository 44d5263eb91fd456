#include "sources/page/TOpenGraphReader.h"

#include "sources/page/TOfferReader.h"

namespace kk {

namespace {

std::string_view FirstMeta(const TPageFacts& iFacts,
                           std::initializer_list<std::string_view> iNames) {
  for (const std::string_view name : iNames) {
    const std::string_view content = iFacts.Meta(name);
    if (!content.empty()) return content;
  }
  return {};
}

}  // namespace

std::optional<TChosenProduct> ReadOpenGraph(const TPageFacts& iFacts) {
  const std::string_view amount =
      FirstMeta(iFacts, {"product:sale_price:amount", "product:price:amount", "og:price:amount"});
  if (amount.empty()) return std::nullopt;
  TChosenProduct chosen;
  chosen.Kind = TChosenKind::ckTags;
  TOffer& offer = chosen.Product.Offer;
  std::string currency = CurrencyFromText(FirstMeta(
      iFacts, {"product:sale_price:currency", "product:price:currency", "og:price:currency"}));
  if (currency.empty()) currency = CurrencyBeside(amount);
  offer.Price = TPrice::FromText(amount, currency);
  offer.Currency = FromUtf8(currency);
  offer.Availability =
      AvailabilityFromText(FirstMeta(iFacts, {"product:availability", "og:availability"}));
  const bool canBeHad =
      offer.Availability != TAvailability::avUnknown && !IsGone(offer.Availability);
  if (!offer.Price || (offer.Price->IsZero() && !canBeHad)) return std::nullopt;
  chosen.HasAnswer = true;
  chosen.Product.Name = CleanText(iFacts.Title());
  chosen.Product.Image = OpenGraphImage(iFacts);
  offer.Seller = CleanText(iFacts.Meta("og:site_name"));
  return chosen;
}

TString OpenGraphImage(const TPageFacts& iFacts) {
  const auto image =
      iFacts.Base().Resolve(FirstMeta(iFacts, {"og:image:secure_url", "og:image", "og:image:url"}));
  return image ? FromUtf8(image->Text()) : TString();
}

}  // namespace kk
