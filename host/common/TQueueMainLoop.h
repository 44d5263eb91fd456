#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <memory>

#include "host/common/TPostingMainLoop.h"

namespace kk {

/// The main loop of a program without a screen: a queue and timers. It is driven by ProcessMessages
/// and WaitForMessage.
///
/// What a function of the queue or of a timer raises goes to the log and ends nothing. A timer that
/// is late fires once (intervals are a millisecond at least), and it does not fire again while its
/// own function runs.
class TQueueMainLoop : public TPostingMainLoop {
 public:
  using TTime = std::chrono::steady_clock::time_point;
  /// A clock of one's own; the machine's steady clock if none is given.
  explicit TQueueMainLoop(std::function<TTime()> iClock = std::chrono::steady_clock::now);

  /// What is posted meanwhile waits for the next call.
  void ProcessMessages() override;
  void WaitForMessage(int iMilliseconds) override;
  TTimerId StartTimer(int iMilliseconds, TFunction iFunction) override;
  void StopTimer(TTimerId iTimer) override;

 private:
  struct TTimer {
    std::chrono::milliseconds Interval;
    TTime Due;
    TFunction Function;
    bool IsRunning = false;
  };

  void Wake() override { FWake.notify_one(); }
  void Run(const TFunction& iFunction) override;
  void RunTimers();
  std::shared_ptr<TTimer> NextTimer() const;

  const std::function<TTime()> FClock;
  std::condition_variable FWake;
  std::map<TTimerId, std::shared_ptr<TTimer>> FTimers;  // main thread only
  TTimerId FNextTimer = 1;
};

}  // namespace kk
