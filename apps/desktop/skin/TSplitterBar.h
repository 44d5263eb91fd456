#pragma once

#include <QPointer>
#include <QWidget>

#include "host/controls/TPanel.h"

namespace kk {

/// The bar beside a panel by which the user draws it wider or narrower.
class TSplitterBar : public QWidget {
 public:
  /// iLeft: the panel is at its left. Both are borrowed; the bar goes when the row is laid out
  /// anew, and is not used behind the panel's death.
  TSplitterBar(TPanel& ioPanel, QWidget& ioPanelWidget, bool iLeft);

 protected:
  void mousePressEvent(QMouseEvent* iEvent) override;
  void mouseMoveEvent(QMouseEvent* iEvent) override;
  void paintEvent(QPaintEvent* iEvent) override;

 private:
  TPanel& FPanel;
  QPointer<QWidget> FPanelWidget;
  bool FLeft;
  int FGrip = 0;  // the panel's width when it is taken, less the way to the right
};

}  // namespace kk
