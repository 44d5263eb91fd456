#pragma once

#include "TShownWindow.h"
#include "apps/desktop/skin/TResultItemModel.h"
#include "host/contract/TAdditionalColumn.h"
#include "host/results/TResultTable.h"
#include "tests/support/TFakeSource.h"

namespace kk {

/// The name of a result, or how many letters it has.
class TNameContent : public IResultColumnContent {
 public:
  explicit TNameContent(bool iLength = false) : FLength(iLength) {}
  TResultCell GetCell(const TIntf<ISearchResult>& iResult) const override {
    ++Asked;
    TResultCell cell;
    cell.Text =
        FLength ? IntToStr(static_cast<int64_t>(iResult->GetName().size())) : iResult->GetName();
    if (!FLength && iResult->GetName() == u"mit Bild") cell.Image = {u"SOURCE_PAGE"};
    if (!FLength && iResult->GetName() == u"mit Hinweis") cell.Hint = u"Hinweis";
    return cell;
  }
  TResultSortKey GetSortKey(const TIntf<ISearchResult>& iResult) const override {
    return TResultSortKey::OfText(iResult->GetName());
  }
  mutable int Asked = 0;

 private:
  bool FLength;
};

/// Paints an image in the middle and the name beside it, and notes what the mouse does.
class TPaintedColumn : public TAdditionalColumn {
 public:
  explicit TPaintedColumn(TNotebook& ioBook)
      : TAdditionalColumn({NewGuid(), u"Beobachten", 80, 0, {}}), FBook(ioBook) {}
  ITreeViewCellPainter& GetCellPainter() override { return FPainter; }
  void Click(const TIntf<ICellMouseInfo>& iInfo) override {
    FBook.Note("click " + ToUtf8(iInfo->GetSearchResult()->GetName()));
  }
  void MouseMove(const TIntf<ICellMouseInfo>& iInfo) override {
    iInfo->SetCursor(iInfo->GetMousePos().X < 40 ? cCursorHandPoint : cCursorDefault);
  }

 private:
  class TPainter : public ITreeViewCellPainter {
   public:
    void Paint(const TIntf<ICellPaintInfo>& iInfo) override {
      ICanvas& canvas = iInfo->GetCanvas();
      canvas.SetRowColors();
      const TRect rect = iInfo->GetCellRect();
      canvas.DrawBitmap({0, 0, 16, 16}, {u"ADDITIONALCOLUMNYES"});
      canvas.DrawText({16, rect.Top, rect.Right, rect.Bottom}, u"ja");
    }
  };
  TNotebook& FBook;
  TPainter FPainter;
};

inline TIntf<IInterfaceList> NamedResults(const std::vector<TString>& iNames) {
  const TIntf<IInterfaceList> list = NewInterfaceList();
  for (const TString& name : iNames) list->Add(FakeResult(name));
  return list;
}

}  // namespace kk
