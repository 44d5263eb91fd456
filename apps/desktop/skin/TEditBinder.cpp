#include "apps/desktop/skin/TEditBinder.h"

#include <algorithm>

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"

namespace kk {

TEditBinder::TEditBinder(TSkin& ioSkin, TEdit& ioEdit)
    : TBinderOf(ioSkin, ioEdit, QtOwned<QLineEdit>()) {
  OnUser(&View(), &QLineEdit::textEdited,
         [this](const QString& iText) { Control().EnterText(FromQt(iText)); });
}

void TEditBinder::Render() {
  View().setEchoMode(Control().Password() ? QLineEdit::Password : QLineEdit::Normal);
  const QString text = ToQt(Control().Text());
  if (View().text() != text) {
    const int caret = View().cursorPosition();
    View().setText(text);
    View().setCursorPosition(std::min(caret, static_cast<int>(text.size())));
  }
  if (Control().AllSelected() && WasTold()) View().selectAll();
}

}  // namespace kk
