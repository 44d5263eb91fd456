#include "apps/desktop/skin/TTabStripBinder.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QResizeEvent>
#include <QShortcut>

#include "apps/desktop/skin/QtOwned.h"
#include "apps/desktop/skin/QtText.h"
#include "apps/desktop/skin/TDrawings.h"
#include "apps/desktop/skin/TPopupMenu.h"
#include "apps/desktop/skin/ToHint.h"

namespace kk {

TTabStripBinder::TTabStripBinder(TSkin& ioSkin, TTabStrip& ioStrip)
    : TBinderOf(ioSkin, ioStrip, QtOwned<QWidget>()) {
  FBar = QtOwned<QTabBar>(&View());  // the filter hears of it already while it is made
  FChevron = QtOwned<QToolButton>(&View());
  FBar->setExpanding(false);
  FBar->setMovable(true);
  FBar->setUsesScrollButtons(true);
  FBar->setElideMode(Qt::ElideNone);
  FBar->setMouseTracking(true);
  FBar->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  FBar->installEventFilter(this);
  FChevron->setAutoRaise(true);
  FChevron->setArrowType(Qt::DownArrow);
  FChevron->setFocusPolicy(Qt::NoFocus);
  FChevron->setAccessibleName(QStringLiteral("Alle Reiter"));
  FChevron->setToolTip(FChevron->accessibleName());
  auto* row = QtOwned<QHBoxLayout>(&View());
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  row->addWidget(FBar, 1);
  row->addWidget(FChevron);
  SetFocusPart(FBar);

  OnUser(FBar, &QTabBar::currentChanged, [this](int iPlace) {
    if (iPlace >= 0 && iPlace < Control().GetCount()) Control().GetItems(iPlace).Click();
  });
  OnUser(FBar, &QTabBar::tabMoved, [this](int iFrom, int iTo) {
    const auto from = FShown.begin() + iFrom;
    const auto to = FShown.begin() + iTo;
    if (iFrom < iTo) std::rotate(from, from + 1, to + 1);
    if (iTo < iFrom) std::rotate(to, from, from + 1);
    Control().DragItem(Control().GetItems(iFrom), iTo);
  });
  connect(FChevron, &QToolButton::clicked, this, [this] {
    bool opens = false;
    if (!Enter([&] { opens = Control().OpenChevronMenu(); }) || !opens) return;
    const QPoint place = FChevron->mapToGlobal(FChevron->rect().bottomLeft());
    TPopupMenu::Open(View(), *Control().ChevronMenu(), place);
  });
  ConnectKeys();
}

// From wherever the focus stands in the window; the strip asks whether it may.
void TTabStripBinder::ConnectKeys() {
  const auto connectKeys = [this](const QKeySequence& iKeys, bool iForward) {
    auto* keys = QtOwned<QShortcut>(iKeys, &View());
    OnUser(keys, &QShortcut::activated, [this, iForward] { Control().ChangeTab(iForward); });
  };
  connectKeys(Qt::CTRL | Qt::Key_Tab, true);
  connectKeys(Qt::CTRL | Qt::Key_PageDown, true);
  connectKeys(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, false);
  connectKeys(Qt::CTRL | Qt::Key_PageUp, false);
}

void TTabStripBinder::Render() {
  const int count = Control().GetCount();
  while (FBar->count() > count) FBar->removeTab(FBar->count() - 1);
  while (FBar->count() < count) FBar->addTab(QString());
  FShown.resize(static_cast<size_t>(count));
  for (int place = 0; place < count; ++place) RenderHead(place);
  for (int place = 0; place < count; ++place) {
    if (Control().GetItems(place).Selected()) FBar->setCurrentIndex(place);
  }
  FBar->setToolTip(ToHint(Control().Hint()));
  bool isAnyVisible = false;
  for (int place = 0; place < count; ++place) isAnyVisible |= Control().GetItems(place).Visible();
  FChevron->setVisible(Control().ChevronMenu() != nullptr && isAnyVisible);
  if (Control().TakeHeadToShow() == nullptr) return;
  // The bar brings the selected tab into view as often as its room is another one, and no other tab
  // ever has to come.
  QResizeEvent resized(FBar->size(), FBar->size());
  QCoreApplication::sendEvent(FBar, &resized);
}

void TTabStripBinder::RenderHead(int iPlace) {
  const TKK5SkinHeaderItemTabExt& head = Control().GetItems(iPlace);
  TShown& shown = FShown[static_cast<size_t>(iPlace)];
  const TBitmap& image =
      head.Selected() && !head.ImageSelected().IsEmpty() ? head.ImageSelected() : head.Image();
  if (shown.Head == nullptr || shown.Caption != head.Caption()) {
    FBar->setTabText(iPlace, ToQtVerbatim(head.Caption()));
    FBar->setAccessibleTabName(iPlace, ToQt(head.Caption()));
  }
  if (shown.Head == nullptr || shown.Image != image) {
    FBar->setTabIcon(iPlace, TDrawings::Icon(image));
  }
  if (FBar->isTabVisible(iPlace) != head.Visible()) FBar->setTabVisible(iPlace, head.Visible());
  if (FBar->isTabEnabled(iPlace) != head.Enabled()) FBar->setTabEnabled(iPlace, head.Enabled());
  shown = {&head, head.Caption(), image};
}

bool TTabStripBinder::eventFilter(QObject* iObject, QEvent* iEvent) {
  if (iObject == FBar) {
    switch (iEvent->type()) {
      case QEvent::KeyPress:
        if (PressKey(static_cast<const QKeyEvent&>(*iEvent))) return true;
        break;
      case QEvent::MouseMove:
        Hover(FBar->tabAt(static_cast<const QMouseEvent&>(*iEvent).pos()));
        return false;  // it may be gone
      case QEvent::Leave:
        Hover(-1);
        return false;
      // Who scrolls over the tabs has not asked for another one.
      case QEvent::Wheel:
        iEvent->ignore();
        return true;
      default:
        break;
    }
  }
  return TBinder::eventFilter(iObject, iEvent);
}

bool TTabStripBinder::PressKey(const QKeyEvent& iEvent) {
  const bool isForward = iEvent.key() == Qt::Key_Right;
  if (!isForward && iEvent.key() != Qt::Key_Left) return false;
  Enter([&] { Control().ChangeTab(isForward); });
  return true;
}

void TTabStripBinder::Hover(int iPlace) {
  TControl* hovered =
      iPlace >= 0 && iPlace < Control().GetCount() ? &Control().GetItems(iPlace) : nullptr;
  if (hovered == FHovered) return;
  const TControl* before = std::exchange(FHovered, hovered);
  for (TControl* head : std::vector<TControl*>(Control().Children())) {
    if (head == before && !Enter([head] { head->LeaveMouse(); })) return;
  }
  if (hovered != nullptr) Enter([hovered] { hovered->EnterMouse(); });
}

}  // namespace kk
