#include "bench/desktop/TStartWatch.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QMainWindow>
#include <QTimerEvent>
#include <QTreeView>
#include <cstdio>
#include <cstdlib>

namespace kk {
namespace {

constexpr int cLookMs = 100;
constexpr double cQuietMs = 1500;

}  // namespace

TStartWatch::TStartWatch(double iCalledMs) : FCalledMs(iCalledMs), FLoopMs(WallMs()) {
  qApp->installEventFilter(this);
  FTimer.start(cLookMs, this);
}

bool TStartWatch::eventFilter(QObject* iObject, QEvent* iEvent) {
  if (iEvent->type() == QEvent::Paint && iObject->isWidgetType()) {
    Painted(static_cast<QWidget&>(*iObject));
  }
  return false;
}

// The filter comes before the painting: the end of the turn is what counts.
void TStartWatch::Painted(const QWidget& iWidget) {
  const auto note = [this](std::optional<double>& oTime) {
    if (oTime) return;
    oTime = 0;
    QMetaObject::invokeMethod(
        this, [&oTime] { oTime = WallMs(); }, Qt::QueuedConnection);
  };
  if (qobject_cast<const QMainWindow*>(&iWidget) != nullptr) note(FWindowMs);
  const auto* const view = qobject_cast<const QTreeView*>(iWidget.parentWidget());
  if (view == nullptr || view->isHeaderHidden() || view->viewport() != &iWidget) return;
  if (view->model() == nullptr || view->model()->rowCount() == 0) return;
  note(FListMs);
  if (FWorkMs == 0) FWorkMs = WorkMs();
}

void TStartWatch::timerEvent(QTimerEvent* /*iEvent*/) {
  if (!FListMs || *FListMs == 0 || WallMs() - *FListMs < cQuietMs) return;
  const double usable = std::max(*FListMs, FWatchdog.LastLongTurnEnd());
  if (WallMs() - usable < cQuietMs) return;
  std::printf("%.0f %.0f %.0f %.0f %.0f %.0f\n", FLoopMs - FCalledMs, *FWindowMs - FCalledMs,
              *FListMs - FCalledMs, usable - FCalledMs, FWatchdog.LongestMs(), FWorkMs);
  std::fflush(stdout);
  std::_Exit(0);
}

}  // namespace kk
