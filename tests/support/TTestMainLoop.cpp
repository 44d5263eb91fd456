#include "tests/support/TTestMainLoop.h"

#include <thread>
#include <utility>

namespace kk {

TTestMainLoop::TTestMainLoop() : FBefore(SetMainLoop(this)) {}

TTestMainLoop::~TTestMainLoop() { SetMainLoop(FBefore); }

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
