#pragma once

#include <QObject>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

#include "host/base/TMainLoop.h"

class QTimer;

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
  /// What is posted meanwhile waits for the next call, or for Qt. The events of Qt's that are there
  /// are handled, too, the user's included.
  void ProcessMessages() override;
  void WaitForMessage(int iMilliseconds) override;
  TTimerId StartTimer(int iMilliseconds, TFunction iFunction) override;
  void StopTimer(TTimerId iTimer) override;
  bool IsMainThread() const override { return std::this_thread::get_id() == FThread; }

 private:
  class TWaker;

  void RunPosted();
  bool TakePosted(TFunction& oFunction);

  const std::thread::id FThread = std::this_thread::get_id();
  std::unique_ptr<TWaker> FWaker;  // an event for it is on its way while something is posted
  std::mutex FMutex;
  std::deque<TFunction> FPosted;
  std::map<TTimerId, std::unique_ptr<QTimer>> FTimers;  // main thread only
  TTimerId FNextTimer = 1;
};

}  // namespace kk
