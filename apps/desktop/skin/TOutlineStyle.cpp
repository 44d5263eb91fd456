#include "apps/desktop/skin/TOutlineStyle.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QStyleOption>

namespace kk {
namespace {

constexpr qreal cRound = 2;
constexpr int cHeaderMargin = 5;

bool IsDark(const QPalette& iPalette) {
  return iPalette.color(QPalette::Window).lightness() <
         iPalette.color(QPalette::WindowText).lightness();
}

// Somewhat more than half way from the ground to the text is 3 to 1 or more in the program's
// palettes, also where Fusion has darkened the ground.
QColor Edge(const QStyleOption& iOption) {
  QColor edge = iOption.palette.color(QPalette::WindowText);
  edge.setAlphaF((iOption.state & QStyle::State_Enabled) != 0 ? 0.55F : 0.25F);
  return edge;
}

void DrawEdge(const QStyleOption& iOption, bool iIsRound, QPainter& ioPainter) {
  if (!IsDark(iOption.palette)) return;
  ioPainter.save();
  ioPainter.setRenderHint(QPainter::Antialiasing);
  ioPainter.setPen(Edge(iOption));
  ioPainter.setBrush(Qt::NoBrush);
  const QRectF rect = QRectF(iOption.rect).adjusted(0.5, 0.5, -0.5, -0.5);
  if (iIsRound) {
    ioPainter.drawEllipse(rect);
  } else {
    ioPainter.drawRoundedRect(rect, cRound, cRound);
  }
  ioPainter.restore();
}

}  // namespace

TOutlineStyle::TOutlineStyle() : QProxyStyle(QStringLiteral("fusion")) {}

int TOutlineStyle::pixelMetric(PixelMetric iMetric, const QStyleOption* iOption,
                               const QWidget* iWidget) const {
  if (iMetric == PM_HeaderMargin) return cHeaderMargin;
  // The views add one pixel to it: texts of cells begin where their headings do.
  if (iMetric == PM_FocusFrameHMargin &&
      qobject_cast<const QAbstractItemView*>(iWidget) != nullptr) {
    return cHeaderMargin - 1;
  }
  return QProxyStyle::pixelMetric(iMetric, iOption, iWidget);
}

void TOutlineStyle::drawControl(ControlElement iElement, const QStyleOption* iOption,
                                QPainter* ioPainter, const QWidget* iWidget) const {
  QProxyStyle::drawControl(iElement, iOption, ioPainter, iWidget);
  if (iElement == CE_ProgressBarGroove) DrawEdge(*iOption, false, *ioPainter);
}

void TOutlineStyle::drawPrimitive(PrimitiveElement iElement, const QStyleOption* iOption,
                                  QPainter* ioPainter, const QWidget* iWidget) const {
  QProxyStyle::drawPrimitive(iElement, iOption, ioPainter, iWidget);
  const bool isRound = iElement == PE_IndicatorRadioButton;
  const bool isBox = iElement == PE_IndicatorCheckBox || iElement == PE_IndicatorItemViewItemCheck;
  const bool isList =
      iElement == PE_Frame && qobject_cast<const QAbstractItemView*>(iWidget) != nullptr;
  const bool isFocused = (iOption->state & State_HasFocus) != 0;
  const bool isField = iElement == PE_FrameLineEdit && !isFocused;  // the focus has a colour
  if (isRound || isBox || isList || isField) DrawEdge(*iOption, isRound, *ioPainter);
}

}  // namespace kk
