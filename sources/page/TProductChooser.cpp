#include "sources/page/TProductChooser.h"

#include <algorithm>
#include <array>

#include "sources/page/TOfferReader.h"

namespace kk {

namespace {

constexpr std::array cProductTypes = {
    "product", "productgroup", "productmodel", "individualproduct", "someproducts",
    "vehicle", "car",          "motorcycle",   "motorizedbicycle"};

// Properties that lead from a thing to the very product that a page is about. All others lead to
// what is only mentioned: lists, related products, variants, accessories.
constexpr std::array cLeadsToMain = {
    "mainentity", "mainentityofpage", "itemreviewed", "itemoffered", "about", "subjectof"};

// How much each sign counts. An address outweighs what stands around it; the others add up.
constexpr int cScoreAddress = 8;
constexpr int cScoreAddressWithoutQuery = 5;
constexpr int cScoreName = 5;
constexpr int cScoreNameInPart = 4;
constexpr int cScoreMain = 6;
constexpr int cScorePrice = 2;

bool LeadsToMain(std::string_view iProperty) {
  return std::find(cLeadsToMain.begin(), cLeadsToMain.end(), iProperty) != cLeadsToMain.end();
}

}  // namespace

std::optional<TChosenProduct> TProductChooser::Choose() {
  FAmbiguous = false;
  FindListed();
  for (const TChosenKind kind :
       {TChosenKind::ckProduct, TChosenKind::ckEvent, TChosenKind::ckOther}) {
    std::optional<TChosenProduct> chosen = Choose(kind);
    if (chosen) chosen->Kind = kind;
    if (chosen || FAmbiguous) return chosen;
  }
  return ReadLoneOffer();
}

// All that is the value of a property which only mentions, referred to by "@id" or not.
void TProductChooser::FindListed() {
  FListed.clear();
  for (const TSchemaItem& item : FGraph.Items()) {
    for (const auto& [property, value] : item.Properties) {
      if (value.Item != nullptr && !LeadsToMain(property)) {
        FListed.push_back(&FGraph.Resolve(*value.Item));
      }
    }
  }
  std::sort(FListed.begin(), FListed.end());
}

bool TProductChooser::IsOfKind(const TSchemaItem& iItem, TChosenKind iKind) const {
  const bool isProduct = std::any_of(cProductTypes.begin(), cProductTypes.end(),
                                     [&](std::string_view iType) { return iItem.HasType(iType); });
  if (iKind == TChosenKind::ckProduct) return isProduct;
  if (iKind == TChosenKind::ckEvent) return iItem.IsEvent();
  const bool isOffer = iItem.HasType("offer") || iItem.HasType("aggregateoffer");
  return !isProduct && !isOffer && !iItem.IsEvent() && !iItem.Types.empty() && HasPrice(iItem);
}

bool TProductChooser::HasPrice(const TSchemaItem& iItem) const {
  TOfferReader offers(FGraph, FFacts);
  offers.Add(iItem);
  const std::optional<TOffer> best = offers.Best();
  return best && best->Price;
}

int TProductChooser::AddressMatchOf(const TSchemaItem& iItem) const {
  int match = FFacts.MatchOf(iItem.Id);
  for (const char* property : {"url", "mainentityofpage"}) {
    for (const TSchemaValue* value : iItem.Values(property)) {
      const std::string_view reference = value->Item != nullptr ? value->Item->Id : value->Text;
      match = std::max(match, FFacts.MatchOf(reference));
    }
  }
  for (const TSchemaValue* offer : iItem.Values("offers")) {
    if (offer->Item == nullptr) continue;
    match = std::max(match, FFacts.MatchOf(FGraph.Resolve(*offer->Item).Text("url")));
  }
  return match;
}

TProductChooser::TCandidate TProductChooser::CandidateOf(const TSchemaItem& iItem) const {
  TCandidate candidate;
  candidate.Item = &iItem;
  const std::string_view name = iItem.Text("name");
  candidate.Name = ReducedName(DecodeEntities(name.substr(0, 4096)));
  candidate.IsMain = !std::binary_search(FListed.begin(), FListed.end(), &iItem);
  candidate.AddressMatch = AddressMatchOf(iItem);
  candidate.NameMatch = FFacts.NameMatch(DecodeEntities(name.substr(0, 4096)));
  constexpr std::array cByAddress = {0, cScoreAddressWithoutQuery, cScoreAddress};
  constexpr std::array cByName = {0, cScoreNameInPart, cScoreName};
  candidate.Score = cByAddress[static_cast<size_t>(candidate.AddressMatch)] +
                    cByName[static_cast<size_t>(candidate.NameMatch)] +
                    (candidate.IsMain ? cScoreMain : 0) + (HasPrice(iItem) ? cScorePrice : 0);
  return candidate;
}

std::optional<TChosenProduct> TProductChooser::Choose(TChosenKind iKind) {
  constexpr size_t cMaxCandidates = 2000;
  std::vector<TCandidate> candidates;
  for (const TSchemaItem& item : FGraph.Items()) {
    if (!IsOfKind(item, iKind) || candidates.size() >= cMaxCandidates) continue;
    // Without a name and an offer it is a reference or a left-over.
    if (item.Text("name").empty() && !HasPrice(item)) continue;
    candidates.push_back(CandidateOf(item));
  }
  // The first of the best.
  const auto best = std::max_element(
      candidates.begin(), candidates.end(),
      [](const TCandidate& iA, const TCandidate& iB) { return iA.Score < iB.Score; });
  if (best == candidates.end()) return std::nullopt;
  if (IsAmbiguous(candidates, *best)) {
    FAmbiguous = true;
    return std::nullopt;
  }
  return Read(candidates, *best);
}

bool TProductChooser::IsAmbiguous(const std::vector<TCandidate>& iCandidates,
                                  const TCandidate& iBest) const {
  if (iBest.AddressMatch > 0 || iBest.NameMatch == 2) return false;
  // A name in part is shared by all of a category ("Stiefel": "Stiefel Anna", "Stiefel Berta").
  if (!iBest.IsMain) return true;
  return std::any_of(iCandidates.begin(), iCandidates.end(), [&](const TCandidate& iOther) {
    return iOther.Score == iBest.Score && iOther.Name != iBest.Name;
  });
}

TChosenProduct TProductChooser::Read(const std::vector<TCandidate>& iCandidates,
                                     const TCandidate& iBest) const {
  TChosenProduct chosen;
  TOfferReader offers(FGraph, FFacts);
  for (const TCandidate& candidate : iCandidates) {
    const bool isVariant = !iBest.Name.empty() && candidate.Name == iBest.Name &&
                           candidate.IsMain == iBest.IsMain &&
                           candidate.AddressMatch == iBest.AddressMatch;
    if (candidate.Item == iBest.Item || isVariant) offers.Add(*candidate.Item);
  }
  const std::optional<TOffer> offer = offers.Best();
  chosen.HasAnswer = offers.HasAnswer();
  chosen.Product.Name = CleanText(iBest.Item->Text("name"));
  chosen.Product.Image = ImageOf(*iBest.Item);
  if (offer) chosen.Product.Offer = *offer;
  return chosen;
}

// A page with one offer and nothing that it is for: the page itself is what is offered.
std::optional<TChosenProduct> TProductChooser::ReadLoneOffer() const {
  const TSchemaItem* lone = nullptr;
  for (const TSchemaItem& item : FGraph.Items()) {
    const bool isOffer = item.HasType("offer") || item.HasType("aggregateoffer");
    if (!isOffer || !item.IsTopLevel) continue;
    if (lone != nullptr) return std::nullopt;
    lone = &item;
  }
  if (lone == nullptr) return std::nullopt;
  TOfferReader offers(FGraph, FFacts);
  offers.AddOffer(*lone);
  const std::optional<TOffer> offer = offers.Best();
  if (!offer || !offer->Price) return std::nullopt;
  TChosenProduct chosen;
  chosen.Kind = TChosenKind::ckOther;
  chosen.HasAnswer = true;
  chosen.Product.Name = CleanText(lone->Text("name"));
  chosen.Product.Image = ImageOf(*lone);
  chosen.Product.Offer = *offer;
  return chosen;
}

TString TProductChooser::ImageOf(const TSchemaItem& iItem) const {
  for (const TSchemaValue* value : iItem.Values("image")) {
    std::string_view reference = value->Text;
    if (value->Item != nullptr) {
      const TSchemaItem& image = FGraph.Resolve(*value->Item);
      reference = image.Text("contenturl");
      if (reference.empty()) reference = image.Text("url");
      if (reference.empty()) reference = image.Id;
    }
    const auto address = FFacts.Base().Resolve(reference);
    if (address) return FromUtf8(address->Text());
  }
  return {};
}

}  // namespace kk
