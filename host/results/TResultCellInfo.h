#pragma once

#include <utility>

#include "host/contract/ICellInfo.h"

namespace kk {

/// The mouse over a cell, as an additional column sees it.
class TResultCellMouseInfo : public TInterfaced<ICellMouseInfo> {
 public:
  TResultCellMouseInfo(TIntf<ISearchResult> iResult, const TPoint& iMousePos)
      : FResult(std::move(iResult)), FMousePos(iMousePos) {}

  TPoint GetMousePos() const override { return FMousePos; }
  TIntf<ISearchResult> GetSearchResult() const override { return FResult; }
  void SetCursor(TCursor iCursor) override { FCursor = iCursor; }
  /// The last one that was set.
  TCursor Cursor() const { return FCursor; }

 private:
  TIntf<ISearchResult> FResult;
  TPoint FMousePos;
  TCursor FCursor = cCursorDefault;
};

/// A cell that is painted, as an additional column's painter sees it. The canvas is borrowed.
class TResultCellPaintInfo : public TInterfaced<ICellPaintInfo> {
 public:
  TResultCellPaintInfo(TIntf<ISearchResult> iResult, ICanvas& ioCanvas, const TRect& iRect)
      : FResult(std::move(iResult)), FCanvas(ioCanvas), FRect(iRect) {}

  ICanvas& GetCanvas() const override { return FCanvas; }
  TRect GetCellRect() const override { return FRect; }
  TIntf<ISearchResult> GetSearchResult() const override { return FResult; }

 private:
  TIntf<ISearchResult> FResult;
  ICanvas& FCanvas;
  TRect FRect;
};

}  // namespace kk
