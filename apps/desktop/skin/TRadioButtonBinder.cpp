#include "apps/desktop/skin/TRadioButtonBinder.h"

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"

namespace kk {

TRadioButtonBinder::TRadioButtonBinder(TSkin& ioSkin, TRadioButton& ioButton)
    : TBinderOf(ioSkin, ioButton, QtOwned<QRadioButton>()) {
  OnUser(&View(), &QRadioButton::clicked, [this](bool) { Control().Click(); });
}

void TRadioButtonBinder::Render() {
  View().setText(ToQt(Control().Caption()));
  // The control knows who excludes whom; Qt would keep the last checked one checked.
  View().setAutoExclusive(false);
  View().setChecked(Control().Checked());
  View().setAutoExclusive(true);
}

}  // namespace kk
