#include "apps/desktop/skin/TDialog.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QLayout>
#include <QLineEdit>
#include <QScreen>
#include <QStyle>
#include <QWindow>
#include <algorithm>

#include "apps/desktop/skin/AsUser.h"
#include "apps/desktop/skin/TRowView.h"

namespace kk {

namespace {

// What a frame of the window manager takes of a screen, as a rule, in device-independent pixels.
constexpr QSize cFrame{16, 48};
// In average characters: room for the title, and as much as a list gets for what stands in it.
constexpr int cNarrowest = 60;
constexpr int cWidestList = 130;

// The columns of a table have widths of their own.
void WidenLists(const QWidget& iContent) {
  for (QTreeView* const view : iContent.findChildren<QTreeView*>()) {
    auto* const list = dynamic_cast<TRowView*>(view);
    if (list == nullptr || !list->isHeaderHidden()) continue;
    list->WidenUpTo(cWidestList * list->fontMetrics().averageCharWidth());
  }
}

// What is typed first takes the place of what a field suggests.
void SelectText(QWidget* iField) {
  auto* line = qobject_cast<QLineEdit*>(iField);
  if (const auto* const list = qobject_cast<QComboBox*>(iField)) line = list->lineEdit();
  if (line != nullptr) line->selectAll();
}

}  // namespace

TDialog::TDialog(TForm& ioForm, QWidget* iOwner) : FForm(ioForm), FOwner(iOwner), FSkin(ioForm) {
  setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                 Qt::WindowCloseButtonHint);
  setWindowFlag(Qt::WindowStaysOnTopHint, FForm.StaysOnTop());
  setWindowModality(Qt::ApplicationModal);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setWidgetResizable(true);
  QWidget* const content = FSkin.Widget();
  const bool fills = content->autoFillBackground();
  setWidget(content);
  content->setAutoFillBackground(fills);
  content->installEventFilter(this);
  content->show();
  setWindowTitle(content->windowTitle());
  connect(content, &QWidget::windowTitleChanged, this, &QWidget::setWindowTitle);
}

TDialog::~TDialog() { hide(); }

QScreen& TDialog::Screen() const {
  QScreen* const screen = FOwner ? FOwner->screen() : QWidget::screen();
  return screen != nullptr ? *screen : *QGuiApplication::primaryScreen();
}

QSize TDialog::WantedSize() const {
  const QWidget* const content = FSkin.Widget();
  if (content == nullptr) return size();
  const int narrowest = cNarrowest * fontMetrics().averageCharWidth();
  QSize wanted =
      content->sizeHint().expandedTo({std::max(FForm.MinWidth(), narrowest), FForm.MinHeight()});
  if (content->layout() != nullptr && content->layout()->hasHeightForWidth()) {
    wanted.setHeight(std::max(content->heightForWidth(wanted.width()), FForm.MinHeight()));
  }
  const QSize most = Screen().availableGeometry().size() - cFrame;
  if (wanted.height() > most.height()) {
    wanted += QSize(style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this), 0);
  }
  return wanted.boundedTo(most);
}

void TDialog::Open() {
  FSkin.ForgetFocus();  // it has got lost on the way into this window
  FSkin.Mark(FForm);
  FSkin.Flush();
  WidenLists(*FSkin.Widget());
  FSkin.Widget()->layout()->activate();
  resize(WantedSize());
  setMinimumSize(FSkin.Widget()->minimumSizeHint().boundedTo(size()));
  if (FOwner && FOwner->windowHandle() != nullptr) {
    winId();  // makes the window, so that its owner can be told
    windowHandle()->setTransientParent(FOwner->windowHandle());
  }
  Place();
  show();
  raise();
  activateWindow();
  if (focusWidget() == nullptr) focusNextPrevChild(true);  // the form has named none
  SelectText(focusWidget());
}

void TDialog::Place() {
  QRect around = Screen().availableGeometry();
  const QRect screen = around;
  if (FForm.Position() == TPosition::poOwnerFormCenter && FOwner && FOwner->isVisible()) {
    around = FOwner->frameGeometry();
  }
  QRect place(QPoint(), size());
  place.moveCenter(around.center());
  // An owner at the edge does not push it out of the screen.
  const QPoint last = screen.bottomRight() - QPoint(width(), height());
  move(std::max(std::min(place.x(), last.x()), screen.x()),
       std::max(std::min(place.y(), last.y()), screen.y()));
}

void TDialog::Grow() {
  const QSize wanted = WantedSize();
  if (wanted.height() <= height() && wanted.width() <= width()) return;
  resize(wanted.expandedTo(size()));
  // A bar that stood for a moment took width, made the text higher, and so would stay.
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

bool TDialog::eventFilter(QObject* iObject, QEvent* iEvent) {
  if (iEvent->type() == QEvent::LayoutRequest && iObject == widget() && isVisible()) Grow();
  return QScrollArea::eventFilter(iObject, iEvent);
}

// The form ends when it agrees.
void TDialog::closeEvent(QCloseEvent* iEvent) {
  iEvent->ignore();
  AsUser([this] { FForm.CloseByUser(); });
}

}  // namespace kk
