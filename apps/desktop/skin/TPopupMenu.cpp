#include "apps/desktop/skin/TPopupMenu.h"

#include <QActionGroup>
#include <QApplication>
#include <QPointer>
#include <QTimer>

#include "apps/desktop/skin/AsUser.h"
#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"
#include "apps/desktop/skin/ToHint.h"

namespace kk {

namespace {

// Names of users may be as long as they like.
constexpr int cMaxCaptionLetters = 80;

std::vector<TMenuItem*> EntriesOf(const TMenuItem& iMenu) {
  std::vector<TMenuItem*> entries;
  for (int i = 0; i < iMenu.GetCount(); ++i) entries.push_back(&iMenu.GetItems(i));
  return entries;
}

// Menus draw it bold, and measure it bold only if they are told.
void SetDefault(QMenu& ioMenu, QAction& ioAction) {
  ioMenu.setDefaultAction(&ioAction);
  QFont font = ioMenu.font();
  font.setBold(true);
  ioAction.setFont(font);
}

}  // namespace

void TPopupMenu::Open(QWidget& ioParent, const TMenuItem& iMenu, const QPoint& iGlobalPos) {
  Open(ioParent, EntriesOf(iMenu), iGlobalPos);
}

void TPopupMenu::Open(QWidget& ioParent, const std::vector<TMenuItem*>& iEntries,
                      const QPoint& iGlobalPos) {
  // Entries have one observer, and the user has one menu.
  if (auto* open = dynamic_cast<TPopupMenu*>(QApplication::activePopupWidget())) open->close();
  if (iEntries.empty()) return;
  QtOwned<TPopupMenu>(ioParent, iEntries)->popup(iGlobalPos);  // its parent's, until it has closed
}

TPopupMenu::TPopupMenu(QWidget& ioParent, const std::vector<TMenuItem*>& iEntries)
    : QMenu(&ioParent), FEntries(iEntries) {
  Fill(*this, FEntries);
  for (TMenuItem* entry : FEntries) entry->SetObserver(this);
}

TPopupMenu::~TPopupMenu() { Release(); }

void TPopupMenu::hideEvent(QHideEvent* iEvent) {
  Release();
  QMenu::hideEvent(iEvent);
  QTimer::singleShot(0, this, [this] { DieUnlessClicking(); });
}

// A menu closes first and clicks then. The click may show a window with a loop of its own, and when
// that is over, the toolkit still works on the menu.
void TPopupMenu::Click(TMenuItem& ioEntry) {
  const QPointer<TPopupMenu> self(this);
  FIsClicking = true;
  AsUser([&] { ioEntry.Click(); });
  if (!self) return;  // its parent has died meanwhile
  FIsClicking = false;
  if (FDiesAfterClick) deleteLater();
}

void TPopupMenu::DieUnlessClicking() {
  if (FIsClicking) {
    FDiesAfterClick = true;
  } else {
    deleteLater();
  }
}

// It dies later than it closes, and by then another one may show the same entries.
void TPopupMenu::Release() {
  for (TMenuItem* entry : std::exchange(FEntries, {})) entry->SetObserver(nullptr);
}

void TPopupMenu::Fill(QMenu& ioMenu, const std::vector<TMenuItem*>& iEntries) {
  ioMenu.setToolTipsVisible(true);
  QActionGroup* choice = nullptr;
  for (TMenuItem* entry : iEntries) {
    QAction& action = Add(ioMenu, *entry);
    action.setVisible(entry->Visible());
    action.setEnabled(entry->Enabled());
    action.setToolTip(ToHint(entry->Hint()));
    action.setCheckable(entry->Checked() || entry->Radio());
    if (entry->Radio()) {
      if (choice == nullptr) choice = QtOwned<QActionGroup>(&ioMenu);
      choice->addAction(&action);
    }
    action.setChecked(entry->Checked());
    if (entry->Default()) SetDefault(ioMenu, action);
    FActions[entry] = &action;
  }
}

QAction& TPopupMenu::Add(QMenu& ioMenu, TMenuItem& iEntry) {
  if (iEntry.IsSeparator()) return *ioMenu.addSeparator();
  if (iEntry.GetCount() > 0) {
    QMenu* subMenu = ioMenu.addMenu(CaptionOf(iEntry));
    Fill(*subMenu, EntriesOf(iEntry));
    return *subMenu->menuAction();
  }
  QAction* action = ioMenu.addAction(CaptionOf(iEntry));
  // Shown only: a menu that nothing leads to but the mouse listens to no keys outside.
  action->setShortcut(QKeySequence(ToQt(iEntry.ShortCut()), QKeySequence::PortableText));
  action->setShortcutVisibleInContextMenu(true);
  QObject::connect(action, &QAction::triggered, this, [this, &iEntry] {
    if (FActions.contains(&iEntry)) Click(iEntry);
  });
  return *action;
}

// What users typed has no letters that mean something to a menu.
QString TPopupMenu::CaptionOf(const TMenuItem& iEntry) const {
  QString caption = ToQt(iEntry.Caption()).simplified();
  const int width = cMaxCaptionLetters * fontMetrics().averageCharWidth();
  return ToQtVerbatim(FromQt(fontMetrics().elidedText(caption, Qt::ElideRight, width)));
}

void TPopupMenu::ControlChanged(TControl& iControl) {
  const auto action = FActions.find(&iControl);
  if (action == FActions.end()) return;
  action->second->setEnabled(iControl.Enabled());
  action->second->setVisible(iControl.Visible());
}

void TPopupMenu::ControlGone(TControl& iControl) {
  const auto action = FActions.find(&iControl);
  if (action == FActions.end()) return;
  action->second->setEnabled(false);
  FActions.erase(action);
  const auto gone =
      std::erase_if(FEntries, [&](const TControl* iEntry) { return iEntry == &iControl; });
  if (gone > 0 && FEntries.empty()) close();
}

}  // namespace kk
