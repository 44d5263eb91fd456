#pragma once

#include <cstdint>

namespace kk {

/// One change of a table's rows or columns.
struct TResultTableChange {
  enum class TKind : uint8_t {
    rcInsert,  ///< Count rows come in, the first of them at Row
    rcRemove,  ///< Count rows go, from Row on
    rcSort,    ///< the same rows in another order
    rcReset    ///< all rows and columns may be others
  };

  TKind Kind = TKind::rcReset;
  int Row = 0;
  int Count = 0;

  friend bool operator==(const TResultTableChange&, const TResultTableChange&) = default;
};

/// What an item model hears of a table's rows, so that one adapter can serve every table: each
/// change before and after it is made. Before, the table is as it was; between the two, it may not
/// be touched. Selection, focus, sort column, and order, width and visibility of columns come by
/// IControlObserver. Main thread.
class IResultTableObserver {
 public:
  virtual ~IResultTableObserver() = default;
  virtual void BeforeTableChange(const TResultTableChange& iChange) = 0;
  virtual void AfterTableChange(const TResultTableChange& iChange) = 0;
  /// The cells of this one row may show something else.
  virtual void RowChanged(int iRow) = 0;
  virtual void ScrollIntoView(int iRow) = 0;
  /// The table begins to die, with all its rows, and asks no more of the observer.
  virtual void TableGone() {}
};

}  // namespace kk
