#include "apps/desktop/print/TPrintText.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <cmath>

#include "apps/desktop/print/TPrintLayout.h"

namespace kk {
namespace {

constexpr double cLineSpacing = 1.08;
constexpr double cNoLigatures = 1.0 / 32;

QFont FontOf(double iPoints, bool iBold) {
  QFont font;
  font.setFamilies({QStringLiteral("Noto Sans"), QStringLiteral("Liberation Sans"),
                    QStringLiteral("DejaVu Sans"), QStringLiteral("sans-serif")});
  font.setStyleHint(QFont::SansSerif);
  font.setPixelSize(static_cast<int>(std::lround(iPoints * TPrintLayout::cUnitsPerPoint)));
  font.setBold(iBold);
  // The same widths on the screen, on a printer and in a file.
  font.setHintingPreference(QFont::PreferNoHinting);
  // Too little to be seen, and enough to keep letters from being joined: a PDF is searched for
  // "Kaffee", and an address is copied from it.
  font.setLetterSpacing(QFont::AbsoluteSpacing, cNoLigatures);
  return font;
}

void Break(QTextLayout& ioLayout, double iWidth, Qt::Alignment iAlignment) {
  QTextOption option(iAlignment);
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  option.setUseDesignMetrics(true);
  ioLayout.setTextOption(option);
  ioLayout.beginLayout();
  for (QTextLine line = ioLayout.createLine(); line.isValid(); line = ioLayout.createLine()) {
    line.setLineWidth(iWidth);
  }
  ioLayout.endLayout();
}

}  // namespace

TPrintText::TPrintText(double iPoints, bool iBold, const QColor& iColor)
    : FFont(FontOf(iPoints, iBold)), FColor(iColor) {
  const QFontMetricsF metrics(FFont);
  FAscent = metrics.ascent();
  FLineHeight = metrics.height() * cLineSpacing;
}

double TPrintText::WidthOf(const QString& iText) const {
  return QFontMetricsF(FFont).horizontalAdvance(iText);
}

int TPrintText::LineCount(const QString& iText, double iWidth) const {
  if (iText.isEmpty()) return 1;
  QTextLayout layout(iText, FFont);
  Break(layout, iWidth, Qt::AlignLeft);
  return std::max(1, layout.lineCount());
}

QString TPrintText::Elided(const QString& iText, double iWidth) const {
  return QFontMetricsF(FFont).elidedText(iText, Qt::ElideRight, iWidth);
}

void TPrintText::Paint(QPainter& ioPainter, QPointF iTopLeft, const QString& iText, double iWidth,
                       TLines iLines, Qt::Alignment iAlignment) const {
  QTextLayout layout(iText, FFont);
  Break(layout, iWidth, iAlignment);
  ioPainter.setPen(FColor);
  const int end = std::min(iLines.First + iLines.Count, layout.lineCount());
  for (int i = iLines.First; i < end; ++i) {
    QTextLine line = layout.lineAt(i);
    // On one base line, whatever fonts have stepped in.
    line.setPosition({0, 0});
    const double top = (i - iLines.First) * FLineHeight + FAscent - line.ascent();
    line.draw(&ioPainter, iTopLeft + QPointF(0, top));
  }
}

}  // namespace kk
