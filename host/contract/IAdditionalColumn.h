#pragma once

#include "host/contract/ICellInfo.h"

namespace kk {

/// Draws the cells of a column. Main thread.
class ITreeViewCellPainter {
 public:
  virtual ~ITreeViewCellPainter() = default;
  /// Draws one cell. What it raises concerns this cell alone: the view leaves it empty and goes on.
  virtual void Paint(const TIntf<ICellPaintInfo>& iPaintInfo) = 0;
};

/// Where a view puts a column at first; files and settings of views may hold the number.
enum class TAdditionalColumnInitialPosition : int {
  BeforeOwn = 0,   ///< in front of the view's own columns
  BehindName = 1,  ///< behind the first of them, which names the row: there they are in sight
};

/// One column that an extension adds to a result view. Main thread.
class IAdditionalColumn : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{1CE7FD90-878B-4609-B7D7-9298FCC32372}");

  /// The identity of the column, the same in each run; views keep widths and orders under it.
  virtual TGuid GetId() const = 0;
  virtual TString GetCaption() const = 0;
  /// At first, for text of the small size (11 pixels); a view whose text is larger gives it more.
  virtual int GetWidth() const = 0;
  /// Among the additional columns of one position: smaller ones stand to the left.
  virtual int GetSortOrder() const = 0;
  virtual TAdditionalColumnInitialPosition GetInitialPosition() const = 0;
  /// Owned by the column.
  virtual ITreeViewCellPainter& GetCellPainter() = 0;

  /// The user has clicked a cell of the column. The view has focused its row by then.
  virtual void Click(const TIntf<ICellMouseInfo>& iCellMouseInfo) = 0;
  /// The mouse is over a cell of the column.
  virtual void MouseMove(const TIntf<ICellMouseInfo>& iCellMouseInfo) = 0;
  /// Whether the mouse is over an image of the cell that takes clicks.
  virtual bool IsMouseOverBitmap(const TIntf<ICellMouseInfo>& iCellMouseInfo) const = 0;
  /// The ascending order of two rows, of which either may be empty: below, equal to or above zero.
  /// iSortColumn: the column's place in the view.
  virtual int CompareNodes(int iSortColumn, const TIntf<ISearchResult>& iSearchResult1,
                           const TIntf<ISearchResult>& iSearchResult2) const = 0;
};

}  // namespace kk
