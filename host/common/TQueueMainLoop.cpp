#include "host/common/TQueueMainLoop.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "host/base/Log.h"

namespace kk {

TQueueMainLoop::TQueueMainLoop(std::function<TTime()> iClock) : FClock(std::move(iClock)) {}

void TQueueMainLoop::ProcessMessages() {
  AssertMainThread();
  RunPosted();
  RunTimers();
}

// The edge of the loop: nobody is behind it who could take an exception.
void TQueueMainLoop::Run(const TFunction& iFunction) {
  try {
    iFunction();
  } catch (const std::exception& e) {
    LogException(u"Host", e);
  }
}

void TQueueMainLoop::RunTimers() {
  const TTime now = FClock();
  while (const std::shared_ptr<TTimer> timer = NextTimer()) {
    if (timer->Due > now) return;
    timer->Due = now + timer->Interval;
    timer->IsRunning = true;
    Run(timer->Function);
    timer->IsRunning = false;
  }
}

// The one that is due first, of those that are not running.
std::shared_ptr<TQueueMainLoop::TTimer> TQueueMainLoop::NextTimer() const {
  std::shared_ptr<TTimer> next;
  for (const auto& [id, timer] : FTimers) {
    if (timer->IsRunning) continue;
    if (!next || timer->Due < next->Due) next = timer;
  }
  return next;
}

void TQueueMainLoop::WaitForMessage(int iMilliseconds) {
  AssertMainThread();
  using std::chrono::milliseconds;
  const TTime now = FClock();
  TTime end = now + milliseconds(std::max(iMilliseconds, 0));
  if (const std::shared_ptr<TTimer> timer = NextTimer()) end = std::min(end, timer->Due);
  WaitForPosted(FWake, end - now);
}

TMainLoop::TTimerId TQueueMainLoop::StartTimer(int iMilliseconds, TFunction iFunction) {
  AssertMainThread();
  const auto timer = std::make_shared<TTimer>();
  timer->Interval = std::chrono::milliseconds(std::max(iMilliseconds, 1));
  timer->Due = FClock() + timer->Interval;
  timer->Function = std::move(iFunction);
  FTimers.emplace(FNextTimer, timer);
  return FNextTimer++;
}

void TQueueMainLoop::StopTimer(TTimerId iTimer) {
  AssertMainThread();
  FTimers.erase(iTimer);
}

}  // namespace kk
