#include "apps/desktop/skin/TButtonBinder.h"

#include <QCommandLinkButton>

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"
#include "host/controls/TForm.h"

namespace kk {

namespace {

QPushButton* MakeView(const TButton& iButton) {
  if (iButton.Description().empty()) return QtOwned<QPushButton>();
  return QtOwned<QCommandLinkButton>();
}

}  // namespace

TButtonBinder::TButtonBinder(TSkin& ioSkin, TButton& ioButton)
    : TBinderOf(ioSkin, ioButton, MakeView(ioButton)) {
  View().setAutoDefault(false);  // which button Return presses is the form's matter
  OnUser(&View(), &QPushButton::clicked, [this](bool) { Control().Click(); });
}

void TButtonBinder::Render() {
  View().setText(ToQt(Control().Caption()));
  const TForm* const form = Control().Form();
  View().setDefault(form != nullptr && form->DefaultButton() == &Control());
  View().setAccessibleDescription(ToQt(Control().Description()));
  if (auto* const large = dynamic_cast<QCommandLinkButton*>(&View())) {
    large->setDescription(ToQtVerbatim(Control().Description()));
  } else {
    View().setToolTip(ToQt(Control().Description()));
  }
}

}  // namespace kk
