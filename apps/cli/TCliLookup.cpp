#include "apps/cli/TCliLookup.h"

#include <algorithm>

#include "apps/cli/ECliUsage.h"
#include "apps/cli/TerminalText.h"

namespace kk {
namespace {

constexpr TStringView cPathSeparator = u" > ";

const TGuid& IdOf(const TCliLookup::TEntry& iEntry) {
  return std::visit([](const auto* iInfo) -> const TGuid& { return iInfo->Id; }, iEntry);
}

const TString& NameOf(const TCliLookup::TEntry& iEntry) {
  return std::visit([](const auto* iInfo) -> const TString& { return iInfo->Name; }, iEntry);
}

// Shells make it hard to write braces, so they may be left out.
bool TryId(TStringView iText, TGuid& oId) {
  constexpr size_t cWithoutBraces = 36;
  if (iText.size() != cWithoutBraces) return TryStringToGuid(iText, oId);
  return TryStringToGuid(u"{" + TString(iText) + u"}", oId);
}

}  // namespace

TCliLookup::TCliLookup(const TWatchlistInfo& iTree) {
  Collect(iTree.Categories, {});
  for (size_t i = 0; i < FItems.size(); ++i) FIndexById.try_emplace(IdOf(FItems[i].Entry), i);
}

void TCliLookup::Collect(const std::vector<TWatchlistCategoryInfo>& iCategories,
                         const TString& iPath) {
  for (const TWatchlistCategoryInfo& category : iCategories) {
    FCategories.push_back({&category, nullptr, iPath});
    TString path = iPath;
    if (!path.empty()) path += cPathSeparator;
    path += category.Name;
    for (const TWatchlistGroupInfo& group : category.Groups) {
      for (const TWatchlistItemInfo& item : group.Items) FItems.push_back({&item, &group, path});
    }
    Collect(category.Categories, path);
  }
}

const TCliLookup::TPlace& TCliLookup::Only(TStringView iKind, TStringView iName,
                                           const TPlaces& iPlaces) {
  TGuid id;
  const bool isId = TryId(iName, id);
  std::vector<const TPlace*> hits;
  for (const TPlace& place : iPlaces) {
    if (isId && IdOf(place.Entry) == id) return place;
    if (SameText(NameOf(place.Entry), iName)) hits.push_back(&place);
  }
  if (hits.size() == 1) return *hits[0];
  if (hits.empty()) {
    throw ECliUsage(Format(u"%s gibt es nicht: %s", {iKind, ForTerminal(iName)}),
                    u"Namen und Ids zeigt: kaufkobolde-cli list");
  }
  TString hint = u"Gemeint sein kann:";
  for (const TPlace* hit : hits) {
    hint +=
        Format(u"\n  %s  %s", {GUIDToString(IdOf(hit->Entry)), ForTerminal(NameOf(hit->Entry))});
    if (!hit->Path.empty()) hint += Format(u" (in %s)", {ForTerminal(hit->Path)});
  }
  throw ECliUsage(Format(u"Den Namen gibt es %d-mal: %s", {hits.size(), ForTerminal(iName)}), hint);
}

const TWatchlistItemInfo& TCliLookup::Item(TStringView iName) const {
  return *std::get<const TWatchlistItemInfo*>(Only(u"Den Artikel", iName, FItems).Entry);
}

const TWatchlistCategoryInfo& TCliLookup::Category(TStringView iName) const {
  return *std::get<const TWatchlistCategoryInfo*>(Only(u"Die Kategorie", iName, FCategories).Entry);
}

TCliLookup::TEntry TCliLookup::ItemOrCategory(TStringView iName) const {
  TPlaces all = FCategories;
  all.insert(all.end(), FItems.begin(), FItems.end());
  return Only(u"Den Artikel oder die Kategorie", iName, all).Entry;
}

const TCliLookup::TPlace* TCliLookup::PlaceOf(const TGuid& iItem) const {
  const auto found = FIndexById.find(iItem);
  return found == FIndexById.end() ? nullptr : &FItems[found->second];
}

const TWatchlistItemInfo* TCliLookup::FindItem(const TGuid& iId) const {
  const TPlace* const place = PlaceOf(iId);
  return place == nullptr ? nullptr : std::get<const TWatchlistItemInfo*>(place->Entry);
}

std::vector<const TWatchlistItemInfo*> TCliLookup::Items() const {
  std::vector<const TWatchlistItemInfo*> result;
  for (const TPlace& place : FItems) {
    result.push_back(std::get<const TWatchlistItemInfo*>(place.Entry));
  }
  return result;
}

size_t TCliLookup::CountCategories(TStringView iName) const {
  return static_cast<size_t>(std::ranges::count_if(FCategories, [iName](const TPlace& iPlace) {
    return SameText(NameOf(iPlace.Entry), iName);
  }));
}

const TWatchlistGroupInfo* TCliLookup::GroupOf(const TWatchlistItemInfo& iItem) const {
  const TPlace* const place = PlaceOf(iItem.Id);
  return place == nullptr ? nullptr : place->Group;
}

TString TCliLookup::PathOf(const TWatchlistItemInfo& iItem) const {
  const TPlace* const place = PlaceOf(iItem.Id);
  return place == nullptr ? TString() : place->Path;
}

}  // namespace kk
