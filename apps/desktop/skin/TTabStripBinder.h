#pragma once

#include <QTabBar>
#include <QToolButton>

#include "apps/desktop/skin/TBinder.h"
#include "host/controls/TTabStrip.h"

namespace kk {

/// A strip of tabs: the heads in a bar that scrolls where they do not fit, and beside it the
/// chevron button, whose menu reaches them all.
class TTabStripBinder final : public TBinderOf<TTabStrip> {
 public:
  TTabStripBinder(TSkin& ioSkin, TTabStrip& ioStrip);

  bool eventFilter(QObject* iObject, QEvent* iEvent) override;

 protected:
  void Render() override;

 private:
  /// What the bar shows of a head by now.
  struct TShown {
    const TKK5SkinHeaderItemTabExt* Head = nullptr;
    TString Caption;
    TBitmap Image;
  };

  void RenderHead(int iPlace);
  void ConnectKeys();
  bool PressKey(const QKeyEvent& iEvent);
  void Hover(int iPlace);

  QTabBar* FBar = nullptr;          // the widget's
  QToolButton* FChevron = nullptr;  // the widget's
  std::vector<TShown> FShown;
  const TControl* FHovered = nullptr;  // may be gone
};

}  // namespace kk
