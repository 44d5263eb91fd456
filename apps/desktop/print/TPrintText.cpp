#include "apps/desktop/print/TPrintText.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QRawFont>
#include <QTextLayout>
#include <algorithm>
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

// Below it there are letters, digits and signs of money, no pictures.
constexpr char16_t cFirstPicture = 0x2100;

bool MayHavePictures(const QString& iText) {
  return std::ranges::any_of(iText, [](QChar iChar) { return iChar >= cFirstPicture; });
}

// A line's pixels in a place of it.
QImage PixelsOf(const QTextLine& iLine, const QRectF& iPlace) {
  QImage image(iPlace.size().toSize(), QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return image;
  image.fill(Qt::transparent);
  QPainter painter(&image);
  iLine.draw(&painter, -iPlace.topLeft());
  painter.end();
  return image;
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
  const bool mayHavePictures = MayHavePictures(iText);
  const int end = std::min(iLines.First + iLines.Count, layout.lineCount());
  for (int i = iLines.First; i < end; ++i) {
    QTextLine line = layout.lineAt(i);
    // On one base line, whatever fonts have stepped in.
    line.setPosition({0, 0});
    const double top = (i - iLines.First) * FLineHeight + FAscent - line.ascent();
    line.draw(&ioPainter, iTopLeft + QPointF(0, top));
    if (mayHavePictures) PaintPictures(ioPainter, line, iTopLeft + QPointF(0, top));
  }
}

void TPrintText::PaintPictures(QPainter& ioPainter, const QTextLine& iLine,
                               QPointF iTopLeft) const {
  ioPainter.setRenderHint(QPainter::LosslessImageRendering);
  for (const QGlyphRun& run : iLine.glyphRuns()) {
    const QRawFont font = run.rawFont();
    if (font.fontTable("CBLC").isEmpty()) continue;  // OpenType: where its bitmaps lie
    const QList<quint32> glyphs = run.glyphIndexes();
    const QList<QPointF> places = run.positions();
    const QList<QPointF> advances = font.advancesForGlyphIndexes(glyphs);
    for (qsizetype i = 0; i < glyphs.size(); ++i) {
      const QRectF place(places[i] - QPointF(0, font.ascent()),
                         QSizeF(advances[i].x(), font.ascent() + font.descent()));
      QImage& picture = FPictures[{font.familyName(), glyphs[i]}];
      if (picture.isNull()) picture = PixelsOf(iLine, place);
      ioPainter.drawImage(iTopLeft + place.topLeft(), picture);
    }
  }
}

}  // namespace kk
