#pragma once

#include <QByteArray>
#include <QColor>
#include <QIcon>
#include <QPalette>
#include <array>

namespace kk {

/// The colours that drawings are made of, and what each becomes with a palette. In the files they
/// stand as seven colours that suit a light ground, so that any viewer shows them; other colours
/// stay as they are.
class TDrawingColors {
 public:
  /// Ink and ground are the palette's text and base, the accent its highlight; the paler two stand
  /// between them. Accent, good and bad keep a contrast of 4.5 to 1 with the ground, which the Web
  /// Content Accessibility Guidelines 2.1 (1.4.3) ask of text. Selected: all in the colour of
  /// highlighted text; disabled: all in that of disabled text.
  TDrawingColors(const QPalette& iPalette, QIcon::Mode iMode);

  /// The text of a drawing with its colours replaced.
  QByteArray Apply(const QByteArray& iSvg) const;

  /// The contrast of two colours, 1 to 21, as the guidelines define it.
  static double Contrast(const QColor& iOne, const QColor& iOther);

  /// As the files write them.
  static constexpr std::array<const char*, 7> cNames = {"#2e3440",   // ink
                                                        "#c9d3df",   // pale ink
                                                        "#2f6fb5",   // accent
                                                        "#cfe0f2",   // pale accent
                                                        "#ffffff",   // ground
                                                        "#2e8b57",   // good
                                                        "#c8453b"};  // bad

 private:
  std::array<QColor, 7> FColors;
};

}  // namespace kk
