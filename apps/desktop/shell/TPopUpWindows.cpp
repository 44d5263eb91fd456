#include "apps/desktop/shell/TPopUpWindows.h"

#include <QFrame>
#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "apps/desktop/shell/TfrmNotifierPopUp.h"
#include "host/base/TMainLoop.h"

namespace kk {
namespace {

constexpr int cGap = 8;
constexpr int cWidth = 320;
constexpr int cMaxHeight = 240;
constexpr int cMargin = 8;
constexpr double cOpacity = 0.95;

std::unique_ptr<QFrame> NewWindow() {
  auto window = std::make_unique<QFrame>();
  window->setWindowFlags(Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                         Qt::WindowDoesNotAcceptFocus);
  window->setAttribute(Qt::WA_ShowWithoutActivating);
  window->setFrameStyle(QFrame::Box | QFrame::Plain);
  window->setWindowOpacity(cOpacity);
  window->setFixedWidth(cWidth);
  auto* const layout = new QVBoxLayout(window.get());  // the window's
  layout->setContentsMargins(cMargin, cMargin, cMargin, cMargin);
  return window;
}

}  // namespace

TPopUpWindows::TPopUp::~TPopUp() {
  Skin.reset();
  if (Form) Form->SetOnClose({});
}

TPopUpWindows::~TPopUpWindows() = default;

void TPopUpWindows::Take(TForm& ioForm) {
  struct TRefused {
    TForm* Form;
    ~TRefused() {
      if (Form != nullptr) Form->SetOnClose({});
    }
  } refused{&ioForm};
  Add(ioForm);
  refused.Form = nullptr;
}

void TPopUpWindows::Add(TForm& ioForm) {
  auto popUp = std::make_unique<TPopUp>();
  popUp->Window = NewWindow();
  auto* const base = dynamic_cast<TfrmMSNPopUpBase*>(&ioForm);
  if (base != nullptr) base->Prepare();
  ioForm.SetOnClose(TNotifyEvent::Of<&TPopUpWindows::DoClose>(this));
  base != nullptr ? base->PopUp() : ioForm.Show();
  popUp->Skin = std::make_unique<TSkin>(ioForm, popUp->Window.get());
  popUp->Window->layout()->addWidget(popUp->Skin->Widget());
  FPopUps.push_back(std::move(popUp));
  FPopUps.back()->Form.reset(&ioForm);  // not before: what failed is freed by the caller
  Arrange();
  FPopUps.back()->Window->show();
}

void TPopUpWindows::Show(const TNotification& iNotification) {
  for (const auto& popUp : FPopUps) {
    auto* const same = dynamic_cast<TfrmNotifierPopUp*>(popUp->Form.get());
    if (same == nullptr || same->Id() != iNotification.Id || popUp->IsClosed) continue;
    same->SetOnClose({});
    DoClose(same);
  }
  auto form = std::make_unique<TfrmNotifierPopUp>(iNotification);
  Take(*form);
  (void)form.release();
}

std::vector<const QWidget*> TPopUpWindows::Windows() const {
  std::vector<const QWidget*> result;
  for (const auto& popUp : FPopUps) {
    if (!popUp->IsClosed) result.push_back(popUp->Window.get());
  }
  return result;
}

std::vector<QPoint> TPopUpWindows::Places(const QRect& iArea, const std::vector<QSize>& iSizes) {
  std::vector<QPoint> result;
  const QPoint corner(iArea.right() + 1 - cGap, iArea.bottom() + 1 - cGap);
  QPoint at = corner;
  int width = 0;
  for (const QSize& size : iSizes) {
    if (at.y() - size.height() < iArea.top() && at.y() != corner.y()) {
      at = QPoint(at.x() - width - cGap, corner.y());
      width = 0;
    }
    if (at.x() - size.width() < iArea.left()) at = corner;
    width = std::max(width, size.width());
    result.emplace_back(at.x() - size.width(), at.y() - size.height());
    at.ry() -= size.height() + cGap;
  }
  return result;
}

void TPopUpWindows::Arrange() {
  const QScreen* const screen = QGuiApplication::primaryScreen();
  if (screen == nullptr) return;
  std::vector<QWidget*> windows;
  std::vector<QSize> sizes;
  for (const auto& popUp : FPopUps) {
    if (popUp->IsClosed) continue;
    QWidget* const window = popUp->Window.get();
    const int height = window->layout()->hasHeightForWidth()
                           ? window->layout()->totalHeightForWidth(cWidth)
                           : window->sizeHint().height();
    window->setFixedHeight(std::min(height, cMaxHeight));
    windows.push_back(window);
    sizes.push_back(window->size());
  }
  const auto places = Places(screen->availableGeometry(), sizes);
  for (size_t i = 0; i < windows.size(); ++i) windows[i]->move(places[i]);
}

void TPopUpWindows::DoClose(TObject* Sender) {
  for (const auto& popUp : FPopUps) {
    if (popUp->Form.get() != Sender) continue;
    popUp->IsClosed = true;
    popUp->Window->hide();
  }
  Arrange();
  MainLoop().Post([this, alive = std::weak_ptr<int>(FAlive)] {
    if (!alive.expired()) FreeClosed();
  });
}

void TPopUpWindows::FreeClosed() {
  std::erase_if(FPopUps, [](const auto& iPopUp) { return iPopUp->IsClosed; });
}

}  // namespace kk
