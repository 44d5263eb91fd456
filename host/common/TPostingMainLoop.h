#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <thread>

#include "host/base/TMainLoop.h"

namespace kk {

/// What every main loop has: the queue of what is posted, and the wait for one's own function in
/// it. How the loop turns, and its timers, are up to the descendant. The thread that makes it is
/// the main thread. When the loop goes, what is still posted is dropped, and a Synchronize that
/// waits raises Exception.
class TPostingMainLoop : public TMainLoop {
 public:
  ~TPostingMainLoop() override;

  void Post(TFunction iFunction) override;
  void Synchronize(TFunction iFunction) override;
  bool IsMainThread() const override { return std::this_thread::get_id() == FThread; }
  /// How much waits to be run. Any thread.
  size_t PostedCount() const;

 protected:
  /// Called when something was posted, on the thread that did it, and on the main thread before
  /// one is run while others are left. The queue is locked meanwhile, so it must not be used.
  virtual void Wake() {}
  /// Runs a function of the queue. Main thread.
  virtual void Run(const TFunction& iFunction) = 0;

  /// Runs what is posted by now; what is posted meanwhile waits for the next call. Main thread.
  void RunPosted();
  /// Waits, on what Wake notifies, until something is posted, but no longer than so long.
  void WaitForPosted(std::condition_variable& ioWoken, std::chrono::nanoseconds iAtMost);

 private:
  bool TakePosted(TFunction& oFunction);

  const std::thread::id FThread = std::this_thread::get_id();
  mutable std::mutex FMutex;
  std::deque<TFunction> FPosted;
};

}  // namespace kk
