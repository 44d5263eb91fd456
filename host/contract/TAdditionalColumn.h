#pragma once

#include <memory>
#include <utility>

#include "host/contract/TCommonTreeViewCellPainterKK.h"

namespace kk {

/// How a column stands in a view.
struct TAdditionalColumnLook {
  TGuid Id;
  TString Caption;
  int Width = 0;
  int SortOrder = 0;
  TAdditionalColumnInitialPosition InitialPosition = TAdditionalColumnInitialPosition::BehindName;
};

/// The base of additional columns: the mouse does nothing, and all rows are equal in order. Main
/// thread.
class TAdditionalColumn : public TInterfaced<IAdditionalColumn>, public TObject {
 public:
  TGuid GetId() const override { return FLook.Id; }
  TString GetCaption() const override { return FLook.Caption; }
  int GetWidth() const override { return FLook.Width; }
  int GetSortOrder() const override { return FLook.SortOrder; }
  TAdditionalColumnInitialPosition GetInitialPosition() const override {
    return FLook.InitialPosition;
  }

  void Click(const TIntf<ICellMouseInfo>& /*iCellMouseInfo*/) override {}
  void MouseMove(const TIntf<ICellMouseInfo>& /*iCellMouseInfo*/) override {}
  bool IsMouseOverBitmap(const TIntf<ICellMouseInfo>& /*iCellMouseInfo*/) const override {
    return false;
  }
  int CompareNodes(int /*iSortColumn*/, const TIntf<ISearchResult>& /*iSearchResult1*/,
                   const TIntf<ISearchResult>& /*iSearchResult2*/) const override {
    return 0;
  }

 protected:
  explicit TAdditionalColumn(TAdditionalColumnLook iLook) : FLook(std::move(iLook)) {}

 private:
  TAdditionalColumnLook FLook;
};

/// A column of text. A descendant makes the painter on first use.
class TAdditionalColumnText : public TAdditionalColumn {
 public:
  ITreeViewCellPainter& GetCellPainter() override {
    if (!FCellPainter) FCellPainter = CreateCellPainter();
    return *FCellPainter;
  }

 protected:
  using TAdditionalColumn::TAdditionalColumn;
  virtual std::unique_ptr<ITreeViewCellPainter> CreateCellPainter() const = 0;

 private:
  std::unique_ptr<ITreeViewCellPainter> FCellPainter;
};

/// A column of images.
class TAdditionalColumnTransparentBitmap : public TAdditionalColumn {
 public:
  TCommonTreeViewCellPainterTransparentBitmapKK& GetCellPainter() override { return *FCellPainter; }
  /// Whether the mouse is where the painter last drew.
  bool IsMouseOverBitmap(const TIntf<ICellMouseInfo>& iCellMouseInfo) const override {
    return FCellPainter->BitmapRect().Contains(iCellMouseInfo->GetMousePos());
  }

 protected:
  TAdditionalColumnTransparentBitmap(
      TAdditionalColumnLook iLook,
      std::unique_ptr<TCommonTreeViewCellPainterTransparentBitmapKK> iCellPainter)
      : TAdditionalColumn(std::move(iLook)), FCellPainter(std::move(iCellPainter)) {}

  const TCommonTreeViewCellPainterTransparentBitmapKK& CellPainter() const { return *FCellPainter; }

 private:
  std::unique_ptr<TCommonTreeViewCellPainterTransparentBitmapKK> FCellPainter;
};

}  // namespace kk
