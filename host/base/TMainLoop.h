#pragma once

#include <cstdint>
#include <functional>

#include "host/base/TObject.h"

namespace kk {

/// The one loop of the main thread. The desktop runs it on its toolkit, the terminal on a plain
/// queue, tests crank it by hand. Model, views and the callbacks of sources run in it.
class TMainLoop : public TObject {
 public:
  using TFunction = std::function<void()>;
  using TTimerId = int64_t;

  /// Runs the function later on the main thread, in the order of posting. Any thread.
  virtual void Post(TFunction iFunction) = 0;
  /// Runs the function on the main thread and returns when it is through; on the main thread itself
  /// at once. An exception passes to the caller. No lock may be held over this call. Any thread.
  virtual void Synchronize(TFunction iFunction) = 0;
  /// Runs what is posted and due by now, and returns. It may be called from inside such a function.
  /// Main thread.
  virtual void ProcessMessages() = 0;
  /// Returns when there is something to run, or after so many milliseconds. Main thread.
  virtual void WaitForMessage(int iMilliseconds) = 0;

  /// Runs the function every so many milliseconds until StopTimer. Main thread.
  virtual TTimerId StartTimer(int iMilliseconds, TFunction iFunction) = 0;
  /// A timer that is stopped does not fire any more, not even if it was due. Main thread.
  virtual void StopTimer(TTimerId iTimer) = 0;

  virtual bool IsMainThread() const = 0;
};

/// The loop of this process; there must be one before anything else of the system runs.
TMainLoop& MainLoop();
/// Installs the loop, which is borrowed, and answers the one before. Main thread.
TMainLoop* SetMainLoop(TMainLoop* iLoop);
bool HasMainLoop();

/// In debug builds ends the program if called on another thread than the main one.
void AssertMainThread();

}  // namespace kk
