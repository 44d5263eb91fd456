#pragma once

#include <vector>

#include "host/results/TResultColumn.h"

namespace kk {

/// The order of results by one column, in one direction. Results without a sort key stand behind
/// the others in both directions. A foreign column that fails at a pair, or contradicts itself,
/// spoils nothing but the order. Main thread.
class TResultOrder {
 public:
  struct TEntry {
    TIntf<ISearchResult> Result;
    /// Of a view's own column; asked once.
    TResultSortKey Key;
    /// The caller's.
    size_t Index = 0;
  };

  /// The column is borrowed; iPlace: where it stands in the view.
  TResultOrder(const TResultColumn& iColumn, int iPlace, bool iDescending)
      : FColumn(iColumn), FPlace(iPlace), FDescending(iDescending) {}

  TEntry EntryOf(const TIntf<ISearchResult>& iResult, size_t iIndex = 0) const;
  bool IsBefore(const TEntry& iA, const TEntry& iB) const;
  /// Stable; n log n comparisons.
  void Sort(std::vector<TEntry>& ioEntries) const;

 private:
  const TResultColumn& FColumn;
  int FPlace;
  bool FDescending;
};

}  // namespace kk
