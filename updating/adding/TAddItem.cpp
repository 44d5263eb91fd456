#include "updating/adding/TAddItem.h"

namespace kk {

int TAddItem::IndexOfId(const TGuid& iId) const {
  for (int i = 0; i < FList->GetCount(); ++i) {
    const auto result = GetAs<ISearchResult>(*FList, i);
    if (result != nullptr && SameGuid(result->GetId(), iId)) return i;
  }
  return -1;
}

}  // namespace kk
