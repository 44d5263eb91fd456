#pragma once

#include <optional>
#include <vector>

#include "sources/page/TPageFacts.h"
#include "sources/page/TProduct.h"
#include "sources/page/TSchemaGraph.h"

namespace kk {

/// What sort of thing was taken for the product, the surest first.
enum class TChosenKind { ckProduct, ckEvent, ckOther, ckTags };

/// What one syntax says about the product of a page.
struct TChosenProduct {
  TProduct Product;
  TChosenKind Kind = TChosenKind::ckProduct;
  /// Whether it says what it costs, or that there is no price at the moment.
  bool HasAnswer = false;
};

/// Chooses the product that a page is about among all that it mentions: related ones, other
/// variants, lists. It is the one whose address is the page's, or that the page is headed with, or
/// that stands alone. Variants that share its name are one article with it. Where several
/// products stand beside each other and nothing tells which is meant, as on the page of a
/// category, none is.
///
/// Products come first, then events, then everything else that is offered for a price.
class TProductChooser {
 public:
  TProductChooser(const TSchemaGraph& iGraph, const TPageFacts& iFacts)
      : FGraph(iGraph), FFacts(iFacts) {}

  std::optional<TChosenProduct> Choose();
  /// Whether the last Choose found products but could not tell which one is meant.
  bool WasAmbiguous() const { return FAmbiguous; }

 private:
  struct TCandidate {
    const TSchemaItem* Item;
    TString Name;  // reduced
    bool IsMain;   // not an entry of a list, a related product or the like
    int AddressMatch;
    int NameMatch;
    int Score;
  };
  void FindListed();
  bool IsOfKind(const TSchemaItem& iItem, TChosenKind iKind) const;
  bool HasPrice(const TSchemaItem& iItem) const;
  int AddressMatchOf(const TSchemaItem& iItem) const;
  TCandidate CandidateOf(const TSchemaItem& iItem) const;
  std::optional<TChosenProduct> Choose(TChosenKind iKind);
  bool IsAmbiguous(const std::vector<TCandidate>& iCandidates, const TCandidate& iBest) const;
  TChosenProduct Read(const std::vector<TCandidate>& iCandidates, const TCandidate& iBest) const;
  std::optional<TChosenProduct> ReadLoneOffer() const;
  TString ImageOf(const TSchemaItem& iItem) const;

  const TSchemaGraph& FGraph;
  const TPageFacts& FFacts;
  std::vector<const TSchemaItem*> FListed;  // sorted
  bool FAmbiguous = false;
};

}  // namespace kk
