#pragma once

#include <QWidget>

namespace kk {

/// The widget of a panel, as wide as the panel wants to be where there is room.
class TPanelWidget : public QWidget {
 public:
  /// In device-independent pixels; 0 for what the content needs.
  void SetWantedWidth(int iWidth);
  QSize sizeHint() const override;

 private:
  int FWantedWidth = 0;
};

}  // namespace kk
