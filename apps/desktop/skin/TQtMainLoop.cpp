#include "apps/desktop/skin/TQtMainLoop.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QTimerEvent>
#include <algorithm>
#include <exception>
#include <future>
#include <limits>
#include <utility>

#include "apps/desktop/skin/AsUser.h"
#include "host/base/Exception.h"

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

void TQtMainLoop::Post(TFunction iFunction) {
  const bool isMain = IsMainThread();
  {
    const std::lock_guard lock(FMutex);
    FPosted.push_back(std::move(iFunction));
    if (!isMain) QCoreApplication::postEvent(FWaker.get(), new QEvent(QEvent::User));
  }
  if (isMain) FWaker->WakeInTurn();
}

void TQtMainLoop::Synchronize(TFunction iFunction) {
  if (IsMainThread()) {
    iFunction();
    return;
  }
  auto promise = std::make_shared<std::promise<void>>();
  const auto failure = std::make_shared<std::exception_ptr>();
  std::future<void> done = promise->get_future();
  // The queue alone holds the promise from here on, so that dropping it ends the wait. It is kept
  // only behind the handler, when this thread has let go of the exception.
  Post([promise = std::move(promise), failure, &iFunction] {
    try {
      iFunction();
    } catch (...) {  // handed to the thread that waits
      *failure = std::current_exception();
    }
    promise->set_value();
  });
  try {
    done.get();
  } catch (const std::future_error&) {
    throw Exception(u"Die Hauptschleife ist beendet");
  }
  if (*failure) std::rethrow_exception(std::exchange(*failure, nullptr));
}

void TQtMainLoop::ProcessMessages() {
  AssertMainThread();
  QCoreApplication::processEvents();
  RunPosted();
}

void TQtMainLoop::RunPosted() {
  size_t count = 0;
  {
    const std::lock_guard lock(FMutex);
    count = FPosted.size();
  }
  for (; count > 0; --count) {
    TFunction function;  // dies, with all it holds, before the next one and outside of the lock
    if (!TakePosted(function)) return;
    AsUser(function);
  }
}

// What is left is run by a loop inside of the function, too, if there is one.
bool TQtMainLoop::TakePosted(TFunction& oFunction) {
  const std::lock_guard lock(FMutex);
  if (FPosted.empty()) return false;
  oFunction = std::move(FPosted.front());
  FPosted.pop_front();
  if (!FPosted.empty()) FWaker->WakeInTurn();
  return true;
}

void TQtMainLoop::WaitForMessage(int iMilliseconds) {
  AssertMainThread();
  {
    const std::lock_guard lock(FMutex);
    if (!FPosted.empty()) return;
  }
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
  AsUser(*function);
}

}  // namespace kk
