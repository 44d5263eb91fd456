#pragma once

#include <vector>

#include "host/base/THashedStringList.h"
#include "model/TWatchlistItem.h"

namespace kk {

/// A look-up table from the id of a search result to its item, by the id that the result itself
/// gives. It stands by itself: nothing of the model keeps it up to date, and it owns no items. Main
/// thread.
class THashedListWatchlistItem : public TObject {
 public:
  /// The item has a search result. Duplicate keys are kept; the first is found.
  void Add(TWatchlistItem& iItem);
  int IndexOf(const TGuid& iId) const;
  TWatchlistItem* GetItem(const TGuid& iId) const;
  /// Takes the entry out, if there is one; the item stays alive.
  void Remove(const TWatchlistItem& iItem);

 private:
  THashedStringList FList;
  std::vector<TWatchlistItem*> FItems;  // beside the lines of FList
};

}  // namespace kk
