#include "apps/desktop/skin/TFormBinder.h"

#include <QEvent>
#include <QScreen>
#include <utility>

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"
#include "host/controls/TfrmKKCommonBase.h"
#include "host/controls/TfrmKKCommonSectionBase.h"

namespace kk {

namespace {

// Frame, menu, toolbar and status bar of the window in which sections stand.
constexpr QSize cAroundSection{40, 180};

}  // namespace

TFormBinder::TFormBinder(TSkin& ioSkin, TForm& ioForm)
    : TPanelBinder(ioSkin, ioForm, QtOwned<TWindow>(ioForm)), FForm(ioForm) {}

TFormBinder::~TFormBinder() {
  if (auto* const window = dynamic_cast<TWindow*>(BoundWidget())) window->Forget();
}

bool TFormBinder::eventFilter(QObject* iObject, QEvent* iEvent) {
  // What is hidden keeps no keyboard; the focus is given anew where it stands.
  if (iEvent->type() == QEvent::Show && iObject == BoundWidget()) {
    Skin().ForgetFocus();
    Skin().Mark(FForm);
  }
  return TPanelBinder::eventFilter(iObject, iEvent);
}

// A dialog can be scrolled. A section on a small screen does with what the screen has for it.
QSize TFormBinder::MinSize() const {
  const QSize wanted = TPanelBinder::MinSize();
  if (dynamic_cast<const TfrmKKCommonSectionBase*>(&FForm) == nullptr) return wanted;
  return wanted.boundedTo(View().screen()->availableGeometry().size() - cAroundSection);
}

void TFormBinder::Render() {
  TPanelBinder::Render();
  View().setWindowTitle(ToQt(FForm.Caption()));
  if (const auto* const common = dynamic_cast<const TfrmKKCommonBase*>(&FForm)) {
    // The ground of texts and lists, which is white on a light desktop alone.
    const bool white = common->WhiteBackground();
    View().setBackgroundRole(white ? QPalette::Base : QPalette::NoRole);
    View().setAutoFillBackground(white);
  }
  RenderDefaultButton();
  Skin().ShowFocus(FForm);
}

// The buttons look so.
void TFormBinder::RenderDefaultButton() {
  const TButton* const button = FForm.DefaultButton();
  const TButton* const before = std::exchange(FDefault, button);
  if (before == button) return;
  Skin().MarkBound(before);  // it may be gone
  Skin().MarkBound(button);
}

}  // namespace kk
