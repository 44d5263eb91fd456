#include "host/common/TQueueMainLoop.h"

#include <algorithm>
#include <exception>
#include <future>
#include <utility>

#include "host/base/Exception.h"
#include "host/base/Log.h"

namespace kk {

namespace {

// The edge of the loop: nobody is behind it who could take an exception.
void RunAtEdge(const TMainLoop::TFunction& iFunction) {
  try {
    iFunction();
  } catch (const std::exception& e) {
    LogException(u"Host", e);
  }
}

}  // namespace

TQueueMainLoop::TQueueMainLoop(std::function<TTime()> iClock) : FClock(std::move(iClock)) {}

void TQueueMainLoop::Post(TFunction iFunction) {
  const std::lock_guard lock(FMutex);
  FPosted.push_back(std::move(iFunction));
  FWake.notify_one();
}

void TQueueMainLoop::Synchronize(TFunction iFunction) {
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

void TQueueMainLoop::ProcessMessages() {
  AssertMainThread();
  RunPosted();
  RunTimers();
}

void TQueueMainLoop::RunPosted() {
  size_t count = 0;
  {
    const std::lock_guard lock(FMutex);
    count = FPosted.size();
  }
  for (; count > 0; --count) {
    TFunction function;  // dies, with all it holds, before the next one and outside of the lock
    if (!TakePosted(function)) return;
    RunAtEdge(function);
  }
}

// A function that calls ProcessMessages itself may have taken what was counted.
bool TQueueMainLoop::TakePosted(TFunction& oFunction) {
  const std::lock_guard lock(FMutex);
  if (FPosted.empty()) return false;
  oFunction = std::move(FPosted.front());
  FPosted.pop_front();
  return true;
}

void TQueueMainLoop::RunTimers() {
  const TTime now = FClock();
  while (const std::shared_ptr<TTimer> timer = NextTimer()) {
    if (timer->Due > now) return;
    timer->Due = now + timer->Interval;
    timer->IsRunning = true;
    RunAtEdge(timer->Function);
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
  std::unique_lock lock(FMutex);
  FWake.wait_for(lock, end - now, [this] { return !FPosted.empty(); });
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
