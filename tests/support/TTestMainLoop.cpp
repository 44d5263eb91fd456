#include "tests/support/TTestMainLoop.h"

#include <exception>
#include <future>
#include <memory>
#include <utility>

#include "host/base/Exception.h"

namespace kk {

TTestMainLoop::TTestMainLoop() : FBefore(SetMainLoop(this)) {}

TTestMainLoop::~TTestMainLoop() { SetMainLoop(FBefore); }

void TTestMainLoop::Post(TFunction iFunction) {
  const std::lock_guard lock(FMutex);
  FPosted.push_back(std::move(iFunction));
}

void TTestMainLoop::Synchronize(TFunction iFunction) {
  if (IsMainThread()) {
    iFunction();
    return;
  }
  auto promise = std::make_shared<std::promise<void>>();
  const auto failure = std::make_shared<std::exception_ptr>();
  std::future<void> done = promise->get_future();
  // The queue alone holds the promise from here on: a loop that goes ends the wait. The promise is
  // kept behind the handler, when this thread has let go of the exception.
  Post([promise = std::move(promise), failure, &iFunction] {
    try {
      iFunction();
    } catch (...) {  // handed to the waiting thread
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

size_t TTestMainLoop::PostedCount() {
  const std::lock_guard lock(FMutex);
  return FPosted.size();
}

void TTestMainLoop::RunPosted() {
  // What is posted meanwhile waits for the next turn.
  for (size_t count = PostedCount(); count > 0; --count) {
    TFunction function;
    {
      const std::lock_guard lock(FMutex);
      if (FPosted.empty()) return;
      function = std::move(FPosted.front());
      FPosted.pop_front();
    }
    function();
  }
}

void TTestMainLoop::ProcessMessages() {
  ++FTurns;
  RunPosted();
}

void TTestMainLoop::WaitForMessage(int iMilliseconds) {
  ++FTurns;
  if (PostedCount() > 0) return;
  std::this_thread::yield();
  if (PostedCount() == 0) Advance(iMilliseconds);
}

TMainLoop::TTimerId TTestMainLoop::StartTimer(int iMilliseconds, TFunction iFunction) {
  FTimers.emplace(FNextTimer, TTimer{iMilliseconds, FNow + iMilliseconds, std::move(iFunction)});
  return FNextTimer++;
}

void TTestMainLoop::StopTimer(TTimerId iTimer) { FTimers.erase(iTimer); }

void TTestMainLoop::Advance(int iMilliseconds) {
  const int64_t end = FNow + iMilliseconds;
  for (;;) {
    auto next = FTimers.end();
    for (auto timer = FTimers.begin(); timer != FTimers.end(); ++timer) {
      if (timer->second.Due > end) continue;
      if (next == FTimers.end() || timer->second.Due < next->second.Due) next = timer;
    }
    if (next == FTimers.end()) break;
    FNow = next->second.Due;
    next->second.Due += next->second.Interval;
    const TFunction function = next->second.Function;
    function();
    RunPosted();
  }
  FNow = end;
}

}  // namespace kk
