#pragma once

#include <unordered_map>
#include <variant>

#include "host/contract/IWatchlistAccess.h"

namespace kk {

/// Finds what a user names: an item or a category by its id, or by its name if it is the only one
/// of that name without regard to case. An id goes before a name. What is not there, or there more
/// than once, raises ECliUsage with the candidates as hint.
class TCliLookup {
 public:
  /// Borrowed.
  explicit TCliLookup(const TWatchlistInfo& iTree);

  const TWatchlistItemInfo& Item(TStringView iName) const;
  const TWatchlistCategoryInfo& Category(TStringView iName) const;
  /// An item or a category; a name that both bear is ambiguous.
  using TEntry = std::variant<const TWatchlistItemInfo*, const TWatchlistCategoryInfo*>;
  TEntry ItemOrCategory(TStringView iName) const;

  /// Null if there is none.
  const TWatchlistItemInfo* FindItem(const TGuid& iId) const;
  /// How many categories bear the name.
  size_t CountCategories(TStringView iName) const;
  /// The group that holds the item; null if there is none.
  const TWatchlistGroupInfo* GroupOf(const TWatchlistItemInfo& iItem) const;
  /// The names from the top level to the item's category, " > " between them.
  TString PathOf(const TWatchlistItemInfo& iItem) const;

  /// In the order of the tree.
  std::vector<const TWatchlistItemInfo*> Items() const;
  size_t ItemCount() const { return FItems.size(); }

 private:
  struct TPlace {
    TEntry Entry;
    const TWatchlistGroupInfo* Group;
    TString Path;  ///< of the category that it stands in
  };
  using TPlaces = std::vector<TPlace>;

  void Collect(const std::vector<TWatchlistCategoryInfo>& iCategories, const TString& iPath);
  /// Null if there is none.
  const TPlace* PlaceOf(const TGuid& iItem) const;
  static const TPlace& Only(TStringView iKind, TStringView iName, const TPlaces& iPlaces);

  TPlaces FItems;
  TPlaces FCategories;
  std::unordered_map<TGuid, size_t> FIndexById;  ///< in FItems
};

}  // namespace kk
