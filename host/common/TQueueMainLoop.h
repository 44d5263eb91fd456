#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

#include "host/base/TMainLoop.h"

namespace kk {

/// The main loop of a program without a screen: a queue and timers. The thread that makes it is the
/// main thread; the loop is driven by ProcessMessages and WaitForMessage.
///
/// What a function of the queue or of a timer raises goes to the log and ends nothing. A timer that
/// is late fires once (intervals are a millisecond at least), and it does not fire again while its
/// own function runs. When the loop goes, what is still posted is dropped, and a Synchronize that
/// waits raises Exception.
class TQueueMainLoop : public TMainLoop {
 public:
  using TTime = std::chrono::steady_clock::time_point;
  /// A clock of one's own; the machine's steady clock if none is given.
  explicit TQueueMainLoop(std::function<TTime()> iClock = std::chrono::steady_clock::now);

  void Post(TFunction iFunction) override;
  void Synchronize(TFunction iFunction) override;
  /// What is posted meanwhile waits for the next call.
  void ProcessMessages() override;
  void WaitForMessage(int iMilliseconds) override;
  TTimerId StartTimer(int iMilliseconds, TFunction iFunction) override;
  void StopTimer(TTimerId iTimer) override;
  bool IsMainThread() const override { return std::this_thread::get_id() == FThread; }

 private:
  struct TTimer {
    std::chrono::milliseconds Interval;
    TTime Due;
    TFunction Function;
    bool IsRunning = false;
  };
  void RunPosted();
  void RunTimers();
  bool TakePosted(TFunction& oFunction);
  std::shared_ptr<TTimer> NextTimer() const;

  const std::thread::id FThread = std::this_thread::get_id();
  const std::function<TTime()> FClock;
  std::mutex FMutex;
  std::condition_variable FWake;
  std::deque<TFunction> FPosted;
  std::map<TTimerId, std::shared_ptr<TTimer>> FTimers;  // main thread only
  TTimerId FNextTimer = 1;
};

}  // namespace kk
