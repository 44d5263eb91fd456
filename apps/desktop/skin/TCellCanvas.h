#pragma once

#include <QPainter>
#include <QStyleOptionViewItem>

#include "host/contract/ICanvas.h"

namespace kk {

/// One cell of a result table, as foreign columns paint it: the widget's fonts, the colours of the
/// row as it is, and the program's drawings. Main thread, for the time of one Paint.
class TCellCanvas final : public ICanvas {
 public:
  /// Painter and option are borrowed. The painter's origin is the upper left corner of the cell.
  TCellCanvas(QPainter& ioPainter, const QStyleOptionViewItem& iOption);

  void SetRowColors() override;
  void DrawText(const TRect& iRect, TStringView iText) override;
  TSize GetBitmapSize(const TBitmap& iBitmap) const override;
  void DrawBitmap(const TRect& iRect, const TBitmap& iBitmap) override;

  /// What stands free at both sides of a cell's text.
  static int TextMargin(const QStyleOptionViewItem& iOption);

 private:
  QPainter& FPainter;
  const QStyleOptionViewItem& FOption;
};

}  // namespace kk
