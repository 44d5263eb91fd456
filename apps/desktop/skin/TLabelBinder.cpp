#include "apps/desktop/skin/TLabelBinder.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"
#include "host/controls/TPanel.h"

namespace kk {

TLabelBinder::TLabelBinder(TSkin& ioSkin, TLabel& ioLabel)
    : TBinderOf(ioSkin, ioLabel, QtOwned<TTextLabel>()) {}

bool TLabelBinder::eventFilter(QObject* iObject, QEvent* iEvent) {
  if (iEvent->type() == QEvent::MouseButtonRelease) {
    const auto& mouse = *static_cast<QMouseEvent*>(iEvent);
    if (mouse.button() != Qt::LeftButton || !View().rect().contains(mouse.position().toPoint())) {
      return false;
    }
    return !Enter([this] { Control().Click(); });
  }
  if (iEvent->type() == QEvent::KeyPress && Control().LooksLikeLink()) {
    const auto& key = *static_cast<QKeyEvent*>(iEvent);
    if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
      if (!key.isAutoRepeat()) Enter([this] { Control().Click(); });
      return true;
    }
  }
  return TBinder::eventFilter(iObject, iEvent);
}

void TLabelBinder::Render() {
  QWidget* const buddy = Buddy();
  View().SetLook({Control().Bold(), Control().Underline(), Control().LooksLikeLink(),
                  Control().Centered(), IsWrapped(), buddy != nullptr});
  View().setText(ToQt(Control().Caption()));
  View().setBuddy(buddy);
  // A column makes the labels of its rows equally wide.
  if (Control().Parent() != nullptr && Control().Parent()->Parent() != nullptr) {
    Skin().Mark(*Control().Parent()->Parent());
  }
}

QWidget* TLabelBinder::Buddy() const {
  if (Control().Parent() == nullptr) return nullptr;
  const auto& siblings = Control().Parent()->Children();
  const auto place = std::find(siblings.begin(), siblings.end(), &Control());
  if (place == siblings.end() || place + 1 == siblings.end()) return nullptr;
  TControl& next = *place[1];
  const bool isFilledIn =
      next.AcceptsFocus() && dynamic_cast<const TClickControl*>(&next) == nullptr;
  return isFilledIn ? Skin().WidgetOf(next) : nullptr;
}

// Beside others in a row a text keeps to its line, unless it has the room that is left.
bool TLabelBinder::IsWrapped() const {
  if (Control().SingleLine()) return false;
  const auto* const panel = dynamic_cast<const TPanel*>(Control().Parent());
  return panel == nullptr || panel->Arrangement() != TArrangement::arRow || Control().Stretches();
}

}  // namespace kk
