#include "apps/desktop/skin/TCellCanvas.h"

#include <QApplication>
#include <QStyle>
#include <cmath>

#include "apps/desktop/skin/QtText.h"
#include "apps/desktop/skin/TDrawings.h"

namespace kk {

namespace {

QRect ToQtRect(const TRect& iRect) {
  return {iRect.Left, iRect.Top, iRect.Width(), iRect.Height()};
}

bool IsSelected(const QStyleOptionViewItem& iOption) {
  return iOption.state.testFlag(QStyle::State_Selected);
}

QColor TextColor(const QStyleOptionViewItem& iOption) {
  const auto group = !iOption.state.testFlag(QStyle::State_Enabled)  ? QPalette::Disabled
                     : !iOption.state.testFlag(QStyle::State_Active) ? QPalette::Inactive
                                                                     : QPalette::Normal;
  return iOption.palette.color(group,
                               IsSelected(iOption) ? QPalette::HighlightedText : QPalette::Text);
}

}  // namespace

TCellCanvas::TCellCanvas(QPainter& ioPainter, const QStyleOptionViewItem& iOption)
    : FPainter(ioPainter), FOption(iOption) {
  FPainter.setFont(iOption.font);
}

void TCellCanvas::SetRowColors() { FPainter.setPen(TextColor(FOption)); }

void TCellCanvas::DrawText(const TRect& iRect, TStringView iText) {
  const QFontMetrics& font = FOption.fontMetrics;
  const int margin = TextMargin(FOption);
  const int width = iRect.Width() - 2 * margin;
  // Whole pixels, as the plain cells beside it.
  const int top = iRect.Top + (iRect.Height() - font.height()) / 2;
  FPainter.drawText(QRect(iRect.Left + margin, top, width, font.height()),
                    Qt::AlignLeft | Qt::TextSingleLine,
                    font.elidedText(ToQt(iText).simplified(), Qt::ElideRight, width));
}

TSize TCellCanvas::GetBitmapSize(const TBitmap& iBitmap) const {
  const QSize size = TDrawings::NaturalSize(iBitmap);
  return {size.width(), size.height()};
}

void TCellCanvas::DrawBitmap(const TRect& iRect, const TBitmap& iBitmap) {
  const QRect rect = ToQtRect(iRect);
  if (rect.isEmpty()) return;
  const QIcon::Mode mode = IsSelected(FOption) ? QIcon::Selected : QIcon::Normal;
  const qreal ratio = FPainter.device()->devicePixelRatioF();
  FPainter.drawPixmap(rect.topLeft(), TDrawings::Pixmap(iBitmap, rect.size(), ratio, mode));
}

int TCellCanvas::TextMargin(const QStyleOptionViewItem& iOption) {
  const QStyle* style = iOption.widget != nullptr ? iOption.widget->style() : QApplication::style();
  return style->pixelMetric(QStyle::PM_FocusFrameHMargin, &iOption, iOption.widget) + 1;
}

}  // namespace kk
