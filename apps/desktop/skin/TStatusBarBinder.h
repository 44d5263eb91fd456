#pragma once

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>

#include "apps/desktop/skin/TBinder.h"
#include "host/controls/TStatusBar.h"

namespace kk {

/// The line at the foot of a window: its panels side by side, the first ones as wide as what they
/// show needs, the last with the rest.
class TStatusBarBinder final : public TBinderOf<TStatusBar, QFrame> {
 public:
  TStatusBarBinder(TSkin& ioSkin, TStatusBar& ioBar);

 protected:
  void Render() override;

 private:
  /// A panel: a place with its text, or with the widget of the control that fills it.
  struct TPlace {
    QWidget* Widget;
    QLabel* Text;
    QWidget* Filling = nullptr;
  };

  void AddPlace();
  void RenderPlace(int iPanel);

  QHBoxLayout* FRow;            // the widget's
  std::vector<TPlace> FPlaces;  // their widgets, too
};

}  // namespace kk
