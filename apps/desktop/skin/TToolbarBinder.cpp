#include "apps/desktop/skin/TToolbarBinder.h"

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"
#include "apps/desktop/skin/TDrawings.h"
#include "apps/desktop/skin/ToHint.h"

namespace kk {

TToolbarBinder::TToolbarBinder(TSkin& ioSkin, TToolbar& ioToolbar)
    : TBinderOf(ioSkin, ioToolbar, QtOwned<QWidget>()), FRow(QtOwned<QHBoxLayout>(&View())) {
  FRow->setContentsMargins(0, 0, 0, 0);
  FRow->setSpacing(2);
  FRow->addStretch(1);
  View().setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void TToolbarBinder::Render() {
  int place = 0;
  for (TControl* child : Control().Children()) {
    QWidget* button = Skin().WidgetOf(*child);
    if (button == nullptr) continue;
    if (FRow->indexOf(button) != place) FRow->insertWidget(place, button);
    ++place;
  }
}

TToolButtonBinder::TToolButtonBinder(TSkin& ioSkin, TToolButton& ioButton)
    : TBinderOf(ioSkin, ioButton, QtOwned<QToolButton>()) {
  View().setAutoRaise(true);
  View().setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  View().setFocusPolicy(Qt::TabFocus);
  View().setCheckable(true);
  OnUser(&View(), &QToolButton::clicked, [this](auto&&...) { Control().Click(); });
}

void TToolButtonBinder::Render() {
  const int size = View().fontMetrics().height() * 2;
  View().setIconSize({size, size});
  View().setText(ToQt(Control().Caption()));
  View().setIcon(TDrawings::Icon(Control().Image()));
  View().setToolTip(ToHint(Control().Hint()));
  View().setChecked(Control().Selected());
}

}  // namespace kk
