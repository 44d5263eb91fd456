#pragma once

#include "host/contract/ICanvas.h"
#include "host/contract/ISearchResult.h"

namespace kk {

/// The pointers of the mouse that a column asks for.
using TCursor = int;
inline constexpr TCursor cCursorDefault = 0;
inline constexpr TCursor cCursorHandPoint = -21;

// The coordinates of both interfaces begin at the upper left corner of the cell. One painter serves
// every row, and its column may serve several views: so the place where it last drew is the place
// in each of them.

/// A cell that the mouse is over, handed to a column's mouse operations. Main thread.
class ICellMouseInfo : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{B97C3140-DB33-4921-AF2E-8E8C4EDA28A1}");

  virtual TPoint GetMousePos() const = 0;
  /// The result of the row; may be empty.
  virtual TIntf<ISearchResult> GetSearchResult() const = 0;
  virtual void SetCursor(TCursor iCursor) = 0;
};

/// A cell that is to be painted. Main thread.
class ICellPaintInfo : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{6021E28A-A539-47FC-865F-1427F3D4EF53}");

  virtual ICanvas& GetCanvas() const = 0;
  virtual TRect GetCellRect() const = 0;
  /// The result of the row; may be empty.
  virtual TIntf<ISearchResult> GetSearchResult() const = 0;
};

}  // namespace kk
