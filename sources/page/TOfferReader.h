#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "sources/page/TPageFacts.h"
#include "sources/page/TProduct.h"
#include "sources/page/TSchemaGraph.h"

namespace kk {

/// Reads Offer and AggregateOffer of schema.org, in all the shapes in which pages have them.
///
/// Of several offers the one counts whose address is the page's own, if that singles some out; of
/// what is left those in euros, or else in the first one's currency, then those that can be had,
/// then the lowest price. A price of zero counts only for what can be had; otherwise it means that
/// there is no price at the moment.
class TOfferReader {
 public:
  TOfferReader(const TSchemaGraph& iGraph, const TPageFacts& iFacts)
      : FGraph(iGraph), FFacts(iFacts) {}

  /// Takes in the offers of a product or an event; those of several products add up.
  void Add(const TSchemaItem& iProduct);
  /// Takes in an offer that stands alone.
  void AddOffer(const TSchemaItem& iOffer);
  /// Nothing if there was no offer at all.
  std::optional<TOffer> Best() const;
  /// Whether the offers say what it costs, or that there is no price at the moment.
  bool HasAnswer() const;

 private:
  struct TFound {
    TOffer Offer;
    int AddressMatch = 0;
  };
  void AddOffer(const TSchemaItem& iOffer, const TOffer& iInherited, int iDepth);
  void AddOffersOf(const TSchemaItem& iProduct, const TOffer& iInherited);
  void ReadPrice(const TSchemaItem& iOffer, TOffer& ioOffer) const;
  bool ReadSpecification(const TSchemaItem& iSpecification, TOffer& ioOffer) const;
  bool ReadAmount(const TSchemaItem& iItem, std::string_view iProperty, TOffer& ioOffer) const;
  TString SellerOf(const TSchemaItem& iItem) const;
  TDateTime EndOf(const TSchemaItem& iProduct) const;

  const TSchemaGraph& FGraph;
  const TPageFacts& FFacts;
  std::vector<TFound> FFound;
  bool FSawZero = false;
};

/// A text of a page as it is shown: entities decoded, blanks collapsed, without control characters,
/// at most 1000 characters.
TString CleanText(std::string_view iUtf8);

}  // namespace kk
