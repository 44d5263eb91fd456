#include "apps/desktop/skin/TQtMainLoop.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QTimerEvent>
#include <algorithm>
#include <limits>
#include <utility>

#include "apps/desktop/skin/AsUser.h"

namespace kk {

// Where Qt's loop calls the queue. While something is posted, an event for it is on its way, or its
// turn is due.
class TQtMainLoop::TWaker : public QObject {
 public:
  explicit TWaker(TQtMainLoop& ioLoop) : FLoop(ioLoop) {
    FTurn.setSingleShot(true);
    FTurn.callOnTimeout([this] { FLoop.RunPosted(); });
  }
  /// In a turn of its own: what posts itself again and again must not keep the user's events out.
  void WakeInTurn() {
    if (!FTurn.isActive()) FTurn.start(0);
  }

  bool event(QEvent* iEvent) override {
    if (iEvent->type() == QEvent::User) {
      FLoop.RunPosted();
      return true;
    }
    return QObject::event(iEvent);
  }

 protected:
  void timerEvent(QTimerEvent* iEvent) override { FLoop.RunTimer(iEvent->timerId()); }

 private:
  TQtMainLoop& FLoop;
  QTimer FTurn;
};

TQtMainLoop::TQtMainLoop() : FWaker(std::make_unique<TWaker>(*this)) {}

TQtMainLoop::~TQtMainLoop() = default;

void TQtMainLoop::Wake() {
  if (IsMainThread()) return FWaker->WakeInTurn();
  QCoreApplication::postEvent(FWaker.get(), new QEvent(QEvent::User));
}

void TQtMainLoop::Run(const TFunction& iFunction) { AsUser(iFunction); }

void TQtMainLoop::ProcessMessages() {
  AssertMainThread();
  QCoreApplication::processEvents();
  RunPosted();
}

void TQtMainLoop::WaitForMessage(int iMilliseconds) {
  AssertMainThread();
  if (PostedCount() > 0) return;
  QTimer end;
  end.setSingleShot(true);
  end.start(std::max(iMilliseconds, 0));
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

TMainLoop::TTimerId TQtMainLoop::StartTimer(int iMilliseconds, TFunction iFunction) {
  AssertMainThread();
  const int qtId = FWaker->startTimer(std::max(iMilliseconds, 1));
  FTimers[FNextTimer] = {qtId, std::make_shared<TFunction>(std::move(iFunction))};
  return FNextTimer++;
}

void TQtMainLoop::StopTimer(TTimerId iTimer) {
  AssertMainThread();
  const auto found = FTimers.find(iTimer);
  if (found == FTimers.end()) return;
  FWaker->killTimer(found->second.QtId);
  FTimers.erase(found);
}

// Qt does not fire a timer inside of its own event.
void TQtMainLoop::RunTimer(int iQtId) {
  const auto found = std::find_if(FTimers.begin(), FTimers.end(), [iQtId](const auto& iTimer) {
    return iTimer.second.QtId == iQtId;
  });
  if (found == FTimers.end()) return;
  const std::shared_ptr<TFunction> function = found->second.Function;  // it may stop itself
  Run(*function);
}

}  // namespace kk
