#pragma once

#include <QProxyStyle>

namespace kk {

/// Fusion with edges that are seen on a dark ground: its own are shades of the window's colour, and
/// there an empty check box, list or gauge is hardly told from what is around it. On a light ground
/// it is Fusion, with some more air around the headings of columns.
class TOutlineStyle : public QProxyStyle {
 public:
  TOutlineStyle();

  void drawControl(ControlElement iElement, const QStyleOption* iOption, QPainter* ioPainter,
                   const QWidget* iWidget = nullptr) const override;
  void drawPrimitive(PrimitiveElement iElement, const QStyleOption* iOption, QPainter* ioPainter,
                     const QWidget* iWidget = nullptr) const override;
  int pixelMetric(PixelMetric iMetric, const QStyleOption* iOption = nullptr,
                  const QWidget* iWidget = nullptr) const override;
};

}  // namespace kk
