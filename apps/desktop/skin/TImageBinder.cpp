#include "apps/desktop/skin/TImageBinder.h"

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/TDrawings.h"

namespace kk {

TImageBinder::TImageBinder(TSkin& ioSkin, TImage& ioImage)
    : TBinderOf(ioSkin, ioImage, QtOwned<QToolButton>()) {
  View().setAutoRaise(true);
  View().setFocusPolicy(Qt::NoFocus);
  View().setStyleSheet(QStringLiteral("QToolButton { border: none; padding: 0; }"));
  OnUser(&View(), &QToolButton::clicked, [this](auto&&...) { Control().Click(); });
}

void TImageBinder::Render() {
  View().setIconSize(TDrawings::NaturalSize(Control().Picture()));
  View().setIcon(TDrawings::Icon(Control().Picture()));
}

}  // namespace kk
