#include "host/contract/TAdditionalColumn.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/contract/TAdditionalColumns.h"
#include "tests/support/TFakeCells.h"
#include "tests/support/TFakeSource.h"

namespace kk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Draws the image of this number, and whose cell it is.
class TPainter : public TCommonTreeViewCellPainterTransparentBitmapKK {
 public:
  TPainter() : TCommonTreeViewCellPainterTransparentBitmapKK({{u"NO"}, {u"YES"}}) {}
  void Paint(const TIntf<ICellPaintInfo>& iPaintInfo) override {
    SetColors(iPaintInfo);
    PaintText(iPaintInfo->GetCanvas(), u"Text", iPaintInfo->GetCellRect());
    PaintBitmap(iPaintInfo->GetCanvas(), iPaintInfo->GetCellRect(), Index);
  }
  int Index = 1;
};

class TImageColumn : public TAdditionalColumnTransparentBitmap {
 public:
  TImageColumn()
      : TAdditionalColumnTransparentBitmap(
            {.Id = IAdditionalColumn::cIid, .Caption = u"Bild", .Width = 20, .SortOrder = 7},
            std::make_unique<TPainter>()) {}
};

class TTextColumn : public TAdditionalColumnText {
 public:
  TTextColumn()
      : TAdditionalColumnText({{}, u"Text", 40, 0, TAdditionalColumnInitialPosition::BeforeOwn}) {}
  mutable int Made = 0;

 protected:
  std::unique_ptr<ITreeViewCellPainter> CreateCellPainter() const override {
    ++Made;
    return std::make_unique<TPainter>();
  }
};

class TColumns : public TAdditionalColumns {
 public:
  TColumns() {
    GetColumns()->Add(MakeIntf<TImageColumn>());
    GetColumns()->Add(MakeIntf<TTextColumn>());
  }
};

TEST(TRect, HoldsItsLeftAndUpperEdgeAlone) {
  constexpr TRect rect{2, 3, 5, 7};
  EXPECT_EQ(rect.Width(), 3);
  EXPECT_EQ(rect.Height(), 4);
  for (const TPoint inside : {TPoint{2, 3}, TPoint{4, 6}}) EXPECT_TRUE(rect.Contains(inside));
  for (const TPoint outside : {TPoint{1, 3}, TPoint{2, 2}, TPoint{5, 6}, TPoint{4, 7}}) {
    EXPECT_FALSE(rect.Contains(outside));
  }
  EXPECT_FALSE(TRect().Contains({}));
}

TEST(TAdditionalColumn, SaysWhatItWasMadeWith) {
  const auto column = MakeIntf<TImageColumn>();
  EXPECT_EQ(column->GetId(), IAdditionalColumn::cIid);
  EXPECT_EQ(column->GetCaption(), u"Bild");
  EXPECT_EQ(column->GetWidth(), 20);
  EXPECT_EQ(column->GetSortOrder(), 7);
  EXPECT_EQ(column->GetInitialPosition(), TAdditionalColumnInitialPosition::BehindName);
  EXPECT_EQ(MakeIntf<TTextColumn>()->GetInitialPosition(),
            TAdditionalColumnInitialPosition::BeforeOwn);
}

TEST(TAdditionalColumn, DoesNothingByItself) {
  const auto column = MakeIntf<TTextColumn>();
  const auto info = MakeIntf<TFakeCellMouseInfo>(FakeResult(u"Faust"));
  column->Click(info);
  column->MouseMove(info);
  EXPECT_THAT(info->Cursors, IsEmpty());
  EXPECT_FALSE(column->IsMouseOverBitmap(info));
  EXPECT_EQ(column->CompareNodes(0, FakeResult(u"A"), FakeResult(u"B")), 0);
}

TEST(TAdditionalColumns, HoldsItsColumnsInOrder) {
  const auto columns = MakeIntf<TColumns>()->GetColumns();
  ASSERT_EQ(columns->GetCount(), 2);
  EXPECT_EQ(GetAs<IAdditionalColumn>(*columns, 0)->GetCaption(), u"Bild");
  EXPECT_EQ(GetAs<IAdditionalColumn>(*columns, 1)->GetCaption(), u"Text");
}

TEST(TAdditionalColumnText, MakesItsPainterOnce) {
  const auto column = MakeIntf<TTextColumn>();
  EXPECT_EQ(column->Made, 0);
  EXPECT_EQ(&column->GetCellPainter(), &column->GetCellPainter());
  EXPECT_EQ(column->Made, 1);
}

TEST(TCommonTreeViewCellPainter, PutsTheImageInTheMiddleOfTheCell) {
  TFakeColumnView view(*MakeIntf<TColumns>());
  EXPECT_THAT(view.Paint({}), ElementsAre("Colors", "Text 0,0,30,18 Text", "Bitmap 7,1,23,17 YES"));
}

TEST(TCommonTreeViewCellPainter, FitsALargeImageIntoTheCell) {
  TFakeColumnView view(*MakeIntf<TColumns>());
  view.Canvas.Size = {64, 10};
  EXPECT_THAT(view.Paint({}).back(), "Bitmap 0,4,30,14 YES");
}

TEST(TCommonTreeViewCellPainter, RemembersWhereItLastDrew) {
  const auto column = MakeIntf<TImageColumn>();
  auto& painter = dynamic_cast<TPainter&>(column->GetCellPainter());
  EXPECT_THAT(painter.Images(), ElementsAre(TBitmap{u"NO"}, TBitmap{u"YES"}));
  const auto middle = MakeIntf<TFakeCellMouseInfo>(FakeResult(u"Faust"));
  EXPECT_FALSE(column->IsMouseOverBitmap(middle)) << "nothing was drawn";
  TRecordingCanvas canvas;
  painter.Paint(MakeIntf<TFakeCellPaintInfo>(canvas, FakeResult(u"Faust")));
  EXPECT_EQ(painter.BitmapRect(), (TRect{7, 1, 23, 17}));
  EXPECT_TRUE(column->IsMouseOverBitmap(middle));
  EXPECT_FALSE(
      column->IsMouseOverBitmap(MakeIntf<TFakeCellMouseInfo>(FakeResult(u"Faust"), TPoint{23, 9})));
}

TEST(TCommonTreeViewCellPainter, HasNoOtherImagesThanItsOwn) {
  TPainter painter;
  TRecordingCanvas canvas;
  for (const int index : {-1, 2}) {
    painter.Index = index;
    EXPECT_THROW(painter.Paint(MakeIntf<TFakeCellPaintInfo>(canvas, FakeResult(u"Faust"))),
                 EListError);
  }
  EXPECT_EQ(painter.BitmapRect(), TRect());
}

TEST(Contract, CellsHaveIdsOfTheirOwn) {
  const TIntf<ICellMouseInfo> mouse = MakeIntf<TFakeCellMouseInfo>(TIntf<ISearchResult>());
  EXPECT_TRUE(Supports<ICellMouseInfo>(mouse));
  EXPECT_FALSE(Supports<ICellPaintInfo>(mouse));
  EXPECT_FALSE(Supports<IAdditionalColumn>(mouse));
  EXPECT_EQ(cCursorDefault, 0);
  EXPECT_EQ(cCursorHandPoint, -21);
}

}  // namespace
}  // namespace kk
