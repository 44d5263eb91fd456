#include "apps/desktop/skin/TDrawingColors.h"

#include <algorithm>
#include <cmath>

namespace kk {
namespace {

constexpr double cMinContrast = 4.5;
constexpr qsizetype cLength = 7;  // "#rrggbb"

double Linear(double iPart) {
  return iPart <= 0.03928 ? iPart / 12.92 : std::pow((iPart + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& iColor) {
  return 0.2126 * Linear(iColor.redF()) + 0.7152 * Linear(iColor.greenF()) +
         0.0722 * Linear(iColor.blueF());
}

QColor Mix(const QColor& iOne, const QColor& iOther, float iShareOfOne) {
  const auto part = [&](float iA, float iB) { return iA * iShareOfOne + iB * (1 - iShareOfOne); };
  return QColor::fromRgbF(part(iOne.redF(), iOther.redF()), part(iOne.greenF(), iOther.greenF()),
                          part(iOne.blueF(), iOther.blueF()));
}

// The colour, moved towards the text as far as it has to be seen on the ground.
QColor Seen(const QColor& iColor, const QColor& iText, const QColor& iGround) {
  QColor color = iColor;
  for (float share = 0.9F; share > 0; share -= 0.1F) {
    if (TDrawingColors::Contrast(color, iGround) >= cMinContrast) break;
    color = Mix(iColor, iText, share);
  }
  return color;
}

}  // namespace

TDrawingColors::TDrawingColors(const QPalette& iPalette, QIcon::Mode iMode) {
  using enum QPalette::ColorGroup;
  if (iMode == QIcon::Selected || iMode == QIcon::Disabled) {
    const bool isSelected = iMode == QIcon::Selected;
    const QColor ground = isSelected ? iPalette.color(Active, QPalette::Highlight)
                                     : iPalette.color(Disabled, QPalette::Base);
    const QColor ink = isSelected ? iPalette.color(Active, QPalette::HighlightedText)
                                  : iPalette.color(Disabled, QPalette::WindowText);
    const QColor pale = Mix(ink, ground, 0.25F);
    FColors = {ink, pale, ink, pale, ground, ink, ink};
    return;
  }
  const QColor ground = iPalette.color(Active, QPalette::Base);
  const QColor ink = iPalette.color(Active, QPalette::WindowText);
  const QColor accent = Seen(iPalette.color(Active, QPalette::Highlight), ink, ground);
  FColors = {ink,
             Mix(ink, ground, 0.22F),
             accent,
             Mix(accent, ground, 0.22F),
             ground,
             Seen(QColor(cNames[5]), ink, ground),
             Seen(QColor(cNames[6]), ink, ground)};
}

// In one pass: what a colour becomes may be how the files write another.
QByteArray TDrawingColors::Apply(const QByteArray& iSvg) const {
  QByteArray svg = iSvg;
  for (qsizetype at = svg.indexOf('#'); at >= 0; at = svg.indexOf('#', at + 1)) {
    const QByteArray name = svg.mid(at, cLength);
    const auto* found = std::ranges::find_if(cNames, [&](auto* iKnown) { return name == iKnown; });
    if (found == cNames.end()) continue;
    const auto index = static_cast<size_t>(found - cNames.begin());
    svg.replace(at, cLength, FColors[index].name(QColor::HexRgb).toLatin1());
  }
  return svg;
}

double TDrawingColors::Contrast(const QColor& iOne, const QColor& iOther) {
  const double one = Luminance(iOne);
  const double other = Luminance(iOther);
  return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

}  // namespace kk
