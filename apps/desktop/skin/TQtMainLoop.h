#pragma once

#include <map>
#include <memory>

#include "host/common/TPostingMainLoop.h"

namespace kk {

/// The main loop on Qt's. There is a QApplication before it, and who runs that one's exec (or any
/// other loop of Qt's) drives it.
///
/// What a function of the queue or of a timer raises is shown to the user and goes to the log. A
/// timer that is late fires once, and it does not fire again while its own function runs.
class TQtMainLoop : public TPostingMainLoop {
 public:
  TQtMainLoop();
  ~TQtMainLoop() override;

  /// Qt's events that are there are handled, too, the user's included; some of what is posted
  /// meanwhile may run as well, but who posts himself again and again does not keep it from
  /// returning.
  void ProcessMessages() override;
  /// Handles the events that end the wait.
  void WaitForMessage(int iMilliseconds) override;
  TTimerId StartTimer(int iMilliseconds, TFunction iFunction) override;
  void StopTimer(TTimerId iTimer) override;

 private:
  class TWaker;
  struct TTimer {
    int QtId = 0;
    std::shared_ptr<TFunction> Function;
  };

  void Wake() override;
  void Run(const TFunction& iFunction) override;
  void RunTimer(int iQtId);

  std::unique_ptr<TWaker> FWaker;
  std::map<TTimerId, TTimer> FTimers;  // main thread only
  TTimerId FNextTimer = 1;
};

}  // namespace kk
