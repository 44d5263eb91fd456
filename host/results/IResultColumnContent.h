#pragma once

#include "host/contract/ISearchResult.h"
#include "host/contract/TBitmap.h"
#include "host/results/TResultSortKey.h"

namespace kk {

/// What one cell shows.
struct TResultCell {
  TString Text;
  /// In front of the text; none as a rule.
  TBitmap Image;
  /// What is told where the mouse rests on the cell; empty for the text itself where it is cut off.
  TString Hint;

  friend bool operator==(const TResultCell&, const TResultCell&) = default;
};

/// What stands in the cells of a view's own column. A failure concerns the cell alone, which is
/// empty then. Main thread.
class IResultColumnContent {
 public:
  virtual ~IResultColumnContent() = default;
  /// Asked each time that the cell is painted.
  virtual TResultCell GetCell(const TIntf<ISearchResult>& iResult) const = 0;
  /// Asked once for each row when the table is sorted by the column.
  virtual TResultSortKey GetSortKey(const TIntf<ISearchResult>& iResult) const = 0;
};

}  // namespace kk
