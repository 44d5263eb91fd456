#pragma once

#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

#include "host/base/TMainLoop.h"

namespace kk {

/// The main loop on Qt's. There is a QApplication before it, and who runs that one's exec (or any
/// other loop of Qt's) drives it. The thread that makes it is the main thread.
///
/// What a function of the queue or of a timer raises is shown to the user and goes to the log. A
/// timer that is late fires once, and it does not fire again while its own function runs. When the
/// loop goes, what is still posted is dropped, and a Synchronize that waits raises Exception.
class TQtMainLoop : public TMainLoop {
 public:
  TQtMainLoop();
  ~TQtMainLoop() override;

  void Post(TFunction iFunction) override;
  void Synchronize(TFunction iFunction) override;
  /// Qt's events that are there are handled, too, the user's included; some of what is posted
  /// meanwhile may run as well, but who posts himself again and again does not keep it from
  /// returning.
  void ProcessMessages() override;
  /// Handles the events that end the wait.
  void WaitForMessage(int iMilliseconds) override;
  TTimerId StartTimer(int iMilliseconds, TFunction iFunction) override;
  void StopTimer(TTimerId iTimer) override;
  bool IsMainThread() const override { return std::this_thread::get_id() == FThread; }

 private:
  class TWaker;
  struct TTimer {
    int QtId = 0;
    std::shared_ptr<TFunction> Function;
  };

  void RunPosted();
  bool TakePosted(TFunction& oFunction);
  void RunTimer(int iQtId);

  const std::thread::id FThread = std::this_thread::get_id();
  std::unique_ptr<TWaker> FWaker;
  std::mutex FMutex;
  std::deque<TFunction> FPosted;
  std::map<TTimerId, TTimer> FTimers;  // main thread only
  TTimerId FNextTimer = 1;
};

}  // namespace kk
