#pragma once

#include <string>
#include <vector>

#include "host/base/Exception.h"
#include "host/contract/IAdditionalColumns.h"

namespace kk {

/// Notes what is painted on it, one line a call: "Colors", "Text 0,0,60,18 <text>",
/// "Bitmap 7,1,23,17 <name>". Every image has 16 by 16.
class TRecordingCanvas : public ICanvas {
 public:
  void SetRowColors() override { Calls.emplace_back("Colors"); }
  void DrawText(const TRect& iRect, TStringView iText) override {
    Calls.push_back("Text " + Of(iRect) + " " + ToUtf8(iText));
  }
  TSize GetBitmapSize(const TBitmap& /*iBitmap*/) const override { return Size; }
  void DrawBitmap(const TRect& iRect, const TBitmap& iBitmap) override {
    if (Fails) throw Exception(u"Leinwand kaputt");
    Calls.push_back("Bitmap " + Of(iRect) + " " + ToUtf8(iBitmap.ResourceName));
  }

  std::vector<std::string> Calls;
  TSize Size{16, 16};
  bool Fails = false;

 private:
  static std::string Of(const TRect& iRect) {
    return std::to_string(iRect.Left) + "," + std::to_string(iRect.Top) + "," +
           std::to_string(iRect.Right) + "," + std::to_string(iRect.Bottom);
  }
};

/// A cell of 30 by 18 with this result.
class TFakeCellPaintInfo : public TInterfaced<ICellPaintInfo> {
 public:
  TFakeCellPaintInfo(ICanvas& ioCanvas, const TIntf<ISearchResult>& iResult)
      : FCanvas(ioCanvas), FResult(iResult) {}
  ICanvas& GetCanvas() const override { return FCanvas; }
  TRect GetCellRect() const override { return {0, 0, 30, 18}; }
  TIntf<ISearchResult> GetSearchResult() const override { return FResult; }

 private:
  ICanvas& FCanvas;
  TIntf<ISearchResult> FResult;
};

/// The mouse over such a cell, at first over the middle, where an image stands.
class TFakeCellMouseInfo : public TInterfaced<ICellMouseInfo> {
 public:
  explicit TFakeCellMouseInfo(const TIntf<ISearchResult>& iResult, TPoint iMousePos = {15, 9})
      : FResult(iResult), FMousePos(iMousePos) {}
  TPoint GetMousePos() const override { return FMousePos; }
  TIntf<ISearchResult> GetSearchResult() const override {
    if (Fails) throw Exception(u"Zeile kaputt");
    return FResult;
  }
  void SetCursor(TCursor iCursor) override {
    if (CursorFails) throw Exception(u"Mauszeiger kaputt");
    Cursors.push_back(iCursor);
  }

  std::vector<TCursor> Cursors;  ///< in the order in which they were set
  bool Fails = false;
  bool CursorFails = false;

 private:
  TIntf<ISearchResult> FResult;
  TPoint FMousePos;
};

/// A column with short ways to what a view does with it.
class TFakeColumnView {
 public:
  explicit TFakeColumnView(const IAdditionalColumns& iColumns, int iIndex = 0)
      : Column(GetAs<IAdditionalColumn>(*iColumns.GetColumns(), iIndex)) {}

  /// Paints one cell and answers what was drawn.
  std::vector<std::string> Paint(const TIntf<ISearchResult>& iResult) {
    Canvas.Calls.clear();
    Column->GetCellPainter().Paint(MakeIntf<TFakeCellPaintInfo>(Canvas, iResult));
    return Canvas.Calls;
  }
  void Click(const TIntf<ISearchResult>& iResult, TPoint iAt = {15, 9}) {
    Column->Click(MakeIntf<TFakeCellMouseInfo>(iResult, iAt));
  }
  /// The pointers that were set one after the other.
  std::vector<TCursor> Move(const TIntf<ISearchResult>& iResult, TPoint iAt = {15, 9}) {
    const auto info = MakeIntf<TFakeCellMouseInfo>(iResult, iAt);
    Column->MouseMove(info);
    return info->Cursors;
  }

  TRecordingCanvas Canvas;
  TIntf<IAdditionalColumn> Column;
};

}  // namespace kk
