#pragma once

#include <map>

#include "host/common/TPostingMainLoop.h"

namespace kk {

/// A main loop that the test cranks by hand: nothing runs but in ProcessMessages, and time passes
/// only in Advance and, so that loops which wait come to an end, in WaitForMessage. When it goes,
/// what is still posted is dropped, and a Synchronize that waits raises Exception.
class TTestMainLoop : public TPostingMainLoop {
 public:
  TTestMainLoop();
  ~TTestMainLoop() override;

  void ProcessMessages() override;
  /// With nothing to run, the time of the timers passes at once; real threads get a chance to post.
  void WaitForMessage(int iMilliseconds) override;
  TTimerId StartTimer(int iMilliseconds, TFunction iFunction) override;
  void StopTimer(TTimerId iTimer) override;

  /// Lets the time of the timers pass and runs what comes due, in order of time.
  void Advance(int iMilliseconds);
  /// How often ProcessMessages and WaitForMessage were called.
  int Turns() const { return FTurns; }
  int TimerCount() const { return static_cast<int>(FTimers.size()); }

 private:
  struct TTimer {
    int Interval;
    int64_t Due;
    TFunction Function;
  };
  void Run(const TFunction& iFunction) override { iFunction(); }

  std::map<TTimerId, TTimer> FTimers;
  TTimerId FNextTimer = 1;
  int64_t FNow = 0;
  int FTurns = 0;
  TMainLoop* FBefore;
};

}  // namespace kk
