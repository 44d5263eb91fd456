#include "apps/desktop/skin/TCheckBoxBinder.h"

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"

namespace kk {

TCheckBoxBinder::TCheckBoxBinder(TSkin& ioSkin, TCheckBox& ioBox)
    : TBinderOf(ioSkin, ioBox, QtOwned<QCheckBox>()) {
  OnUser(&View(), &QCheckBox::clicked, [this](bool) { Control().Click(); });
}

void TCheckBoxBinder::Render() {
  View().setText(ToQt(Control().Caption()));
  View().setChecked(Control().Checked());
}

}  // namespace kk
