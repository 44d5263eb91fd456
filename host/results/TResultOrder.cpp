#include "host/results/TResultOrder.h"

#include <algorithm>

#include "host/base/Guard.h"

namespace kk {

TResultOrder::TEntry TResultOrder::EntryOf(const TIntf<ISearchResult>& iResult,
                                           size_t iIndex) const {
  TEntry entry{iResult, {}, iIndex};
  if (FColumn.Content) {
    Guarded(u"TResultOrder.GetSortKey", [&] { entry.Key = FColumn.Content->GetSortKey(iResult); });
  }
  return entry;
}

bool TResultOrder::IsBefore(const TEntry& iA, const TEntry& iB) const {
  int result = 0;
  if (FColumn.Additional) {
    Guarded(u"TResultOrder.CompareNodes",
            [&] { result = FColumn.Additional->CompareNodes(FPlace, iA.Result, iB.Result); });
  } else {
    if (iA.Key.IsEmpty() || iB.Key.IsEmpty()) return !iA.Key.IsEmpty() && iB.Key.IsEmpty();
    result = iA.Key.Compare(iB.Key);
  }
  return FDescending ? result > 0 : result < 0;
}

void TResultOrder::Sort(std::vector<TEntry>& ioEntries) const {
  // By merging alone: it stays inside of the list whatever a comparison answers, which the sorts of
  // the library do not promise.
  const auto isBefore = [this](const TEntry& iA, const TEntry& iB) { return IsBefore(iA, iB); };
  const size_t count = ioEntries.size();
  std::vector<TEntry> merged(count);
  for (size_t width = 1; width < count; width *= 2) {
    for (size_t first = 0; first < count; first += 2 * width) {
      const auto at = [&](size_t iIndex) {
        return std::make_move_iterator(ioEntries.begin() +
                                       static_cast<ptrdiff_t>(std::min(iIndex, count)));
      };
      std::merge(at(first), at(first + width), at(first + width), at(first + 2 * width),
                 merged.begin() + static_cast<ptrdiff_t>(first), isBefore);
    }
    std::swap(ioEntries, merged);
  }
}

}  // namespace kk
