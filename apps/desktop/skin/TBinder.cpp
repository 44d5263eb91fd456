#include "apps/desktop/skin/TBinder.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <utility>

#include "apps/desktop/skin/ControlNames.h"
#include "apps/desktop/skin/QtText.h"
#include "host/controls/TMemo.h"
#include "host/controls/TMenuItem.h"

namespace kk {

namespace {

// The key as forms know it; 0 for one that they don't.
char16_t CharOf(const QKeyEvent& iEvent) {
  const Qt::KeyboardModifiers modifiers = iEvent.modifiers() & ~Qt::KeypadModifier;
  if (iEvent.key() == Qt::Key_Return || iEvent.key() == Qt::Key_Enter) {
    if (modifiers == Qt::ControlModifier) return cKeyCtrlReturn;
    // In a memo it begins a new line, whatever Return alone does there.
    if (modifiers == Qt::ShiftModifier) return 0;
  }
  if (modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return 0;
  switch (iEvent.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return cKeyReturn;
    case Qt::Key_Escape:
      return cKeyEscape;
    default:
      return iEvent.text().size() == 1 ? iEvent.text().front().unicode() : u'\0';
  }
}

// The entry with these keys that a user could click; null if there is none.
TMenuItem* FindShortCut(const TMenuItem& iMenu, const QKeySequence& iKeys) {
  for (int i = 0; i < iMenu.GetCount(); ++i) {
    TMenuItem& item = iMenu.GetItems(i);
    const TString& keys = item.ShortCut();
    if (!keys.empty() && QKeySequence::fromString(ToQt(keys)) == iKeys) return &item;
    if (TMenuItem* const found = FindShortCut(item, iKeys)) return found;
  }
  return nullptr;
}

// The toolkit itself knows the Menu key alone, which many keyboards don't have.
bool AskForMenu(QWidget* iWidget, const QKeyEvent& iEvent) {
  if (iWidget == nullptr || iEvent.key() != Qt::Key_F10) return false;
  if (iEvent.modifiers() != Qt::ShiftModifier) return false;
  const QPoint middle = iWidget->rect().center();
  QContextMenuEvent event(QContextMenuEvent::Keyboard, middle, iWidget->mapToGlobal(middle));
  QCoreApplication::sendEvent(iWidget, &event);
  return true;
}

QKeySequence KeysOf(const QKeyEvent& iEvent) {
  return QKeySequence(QKeyCombination(iEvent.modifiers() & ~Qt::KeypadModifier,
                                      static_cast<Qt::Key>(iEvent.key())));
}

}  // namespace

TBinder::TBinder(TSkin& ioSkin, TControl& ioControl, QWidget* iWidget)
    : FSkin(ioSkin), FControl(ioControl), FWidget(iWidget), FFocusPart(iWidget) {
  FWidget->installEventFilter(this);
  FWidget->setObjectName(ToQt(ioControl.Name()));
}

TBinder::~TBinder() {
  if (!FWidget) return;
  FWidget->removeEventFilter(this);
  FWidget->hide();
  FWidget->deleteLater();
}

void TBinder::SetFocusPart(QWidget* iPart) {
  FFocusPart = iPart;
  if (iPart != FWidget) iPart->installEventFilter(this);
}

void TBinder::Refresh() {
  FMarked = false;
  if (!FWidget) return;
  RenderCommon();
  Render();
  FTold = false;
}

bool TBinder::Grows(Qt::Orientation iDirection) const {
  if (FControl.Stretches()) return true;
  const QSizePolicy policy = FWidget ? FWidget->sizePolicy() : QSizePolicy();
  return (policy.expandingDirections() & iDirection) != 0;
}

QString TBinder::AccessibleName() const { return ToQt(NameForReader(FControl)); }

void TBinder::RenderCommon() {
  // A window is shown and hidden by the one who has opened it.
  if (!FWidget->isWindow()) FWidget->setVisible(FControl.Visible());
  FWidget->setEnabled(FControl.Enabled());
  const QString name = AccessibleName();
  if (FWidget->accessibleName() != name) FWidget->setAccessibleName(name);
  if (FFocusPart && FFocusPart->accessibleName() != name) FFocusPart->setAccessibleName(name);
  if (std::exchange(FVisible, FControl.Visible()) != FVisible) TellLayout();
  if (std::exchange(FStretches, FControl.Stretches()) != FStretches) TellLayout();
}

void TBinder::TellLayout() {
  if (FControl.Parent() != nullptr) FSkin.Mark(*FControl.Parent());
}

bool TBinder::eventFilter(QObject* iObject, QEvent* iEvent) {
  switch (iEvent->type()) {
    case QEvent::FocusIn:
      if (iObject == FFocusPart && IsUser()) TakeFocus();
      return false;
    case QEvent::Enter:
      if (iObject == FWidget && IsUser()) AsUser([this] { FControl.EnterMouse(); });
      return false;
    case QEvent::Leave:
      if (iObject == FWidget && IsUser()) AsUser([this] { FControl.LeaveMouse(); });
      return false;
    case QEvent::ShortcutOverride: {
      auto& key = *static_cast<QKeyEvent*>(iEvent);
      if (FSkin.FocusedBinder() != this || !UseShortCut(key, false)) return false;
      key.accept();
      return true;
    }
    case QEvent::KeyPress: {
      auto& key = *static_cast<QKeyEvent*>(iEvent);
      if (FSkin.FocusedBinder() != this) return false;
      return UseShortCut(key, true) || AskForMenu(FFocusPart, key) || PressKey(key);
    }
    case QEvent::FontChange:
    case QEvent::StyleChange:
    case QEvent::PaletteChange:
      if (iObject == FWidget && IsUser()) FSkin.Mark(FControl);
      return false;
    default:
      return false;
  }
}

void TBinder::TakeFocus() {
  if (Enter([this] { FControl.TakeFocus(); })) FSkin.NoteFocus();
}

bool TBinder::PressKey(QKeyEvent& iEvent) {
  const char16_t key = CharOf(iEvent);
  if (key == 0) return false;
  const bool shares = SharesKey(key);
  // A key that is held down does not press the buttons of the windows that it has opened.
  const bool presses = key == cKeyReturn || key == cKeyEscape ||
                       (key == cKeySpace && dynamic_cast<TClickControl*>(&FControl) != nullptr);
  if (iEvent.isAutoRepeat() && presses && !shares) return true;
  bool used = true;  // also by who fails
  const bool alive = Enter([&] { used = FControl.PressKey(key); });
  return !alive || (used && !(shares && LeavesKey()));
}

bool TBinder::UseShortCut(const QKeyEvent& iEvent, bool iPress) {
  const QKeySequence keys = KeysOf(iEvent);
  for (TControl* control = &FControl; control != nullptr; control = control->Parent()) {
    TBinder* const binder = FSkin.FindBinder(*control);
    const TMenuItem* const menu = binder != nullptr ? binder->PopupMenu() : nullptr;
    if (menu == nullptr || FindShortCut(*menu, keys) == nullptr) continue;
    if (!iPress) return true;
    binder->Enter([&] {
      if (!binder->OpenPopupMenu()) return;
      // Only what the menu shows now; its preparation may have changed it.
      TMenuItem* const item = FindShortCut(*binder->PopupMenu(), keys);
      if (item != nullptr) item->Click();
    });
    return true;
  }
  return false;
}

}  // namespace kk
