#include "apps/desktop/skin/TWindow.h"

#include <QCloseEvent>

#include "apps/desktop/skin/AsUser.h"
#include "host/controls/TForm.h"

namespace kk {

// The form makes the window disappear, if it agrees.
void TWindow::closeEvent(QCloseEvent* iEvent) {
  iEvent->ignore();
  if (FForm != nullptr) AsUser([this] { FForm->CloseByUser(); });
}

}  // namespace kk
