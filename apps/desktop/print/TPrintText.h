#pragma once

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QString>
#include <map>
#include <utility>

class QTextLine;

namespace kk {

/// A kind of text on paper: its font, and the one height that all its lines have, so that a line is
/// as high as any other whatever characters are in it. Lengths are in units of TPrintLayout. Main
/// thread.
class TPrintText {
 public:
  TPrintText(double iPoints, bool iBold, const QColor& iColor);

  double LineHeight() const { return FLineHeight; }
  /// Of the text on one line.
  double WidthOf(const QString& iText) const;
  /// How many lines the text takes in that width: at least 1. Words break where they must.
  int LineCount(const QString& iText, double iWidth) const;
  /// The text on one line, with "…" at its end where there is no room for it.
  QString Elided(const QString& iText, double iWidth) const;

  /// Some of the text's lines as they stand in that width; lines that aren't there are passed over.
  struct TLines {
    int First = 0;
    int Count = 1;
  };
  void Paint(QPainter& ioPainter, QPointF iTopLeft, const QString& iText, double iWidth,
             TLines iLines, Qt::Alignment iAlignment = Qt::AlignLeft) const;

 private:
  // A PDF takes over outlines alone. Where a font has pictures instead, as that of the emojis has,
  // they are put there; each is kept, so that a file has it once.
  void PaintPictures(QPainter& ioPainter, const QTextLine& iLine, QPointF iTopLeft) const;

  QFont FFont;
  QColor FColor;
  double FAscent;
  double FLineHeight;
  mutable std::map<std::pair<QString, quint32>, QImage> FPictures;  ///< by font and glyph
};

}  // namespace kk
