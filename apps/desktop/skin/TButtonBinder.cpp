#include "apps/desktop/skin/TButtonBinder.h"

#include <QCommandLinkButton>
#include <QPainter>
#include <QStyleOptionFocusRect>

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"
#include "host/controls/TForm.h"

namespace kk {

namespace {

// The style shows a button that looks flat no focus, and one of them is what Return presses.
class TDescribedButton : public QCommandLinkButton {
 protected:
  void paintEvent(QPaintEvent* iEvent) override {
    QCommandLinkButton::paintEvent(iEvent);
    if (!hasFocus()) return;
    QPainter painter(this);
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.state |= QStyle::State_KeyboardFocusChange;
    option.backgroundColor = palette().color(backgroundRole());
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
  }
};

QPushButton* MakeView(const TButton& iButton) {
  if (iButton.Description().empty()) return QtOwned<QPushButton>();
  return QtOwned<TDescribedButton>();
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
