#pragma once

#include <memory>

#include "host/base/TMainLoop.h"

class QSocketNotifier;

namespace kk {

/// Tells the main loop when the system wants the program to end: SIGTERM, SIGINT (Ctrl+C) and
/// SIGHUP. The first one is told once, so that the list can be saved; a second one ends the program
/// as if nobody caught it. There is one at a time. Main thread.
class TSystemEnd {
 public:
  explicit TSystemEnd(TMainLoop::TFunction iOnEnd);
  ~TSystemEnd();
  TSystemEnd(const TSystemEnd&) = delete;
  TSystemEnd& operator=(const TSystemEnd&) = delete;

 private:
  void Take();

  const TMainLoop::TFunction FOnEnd;
  int FPipe[2] = {-1, -1};
  std::unique_ptr<QSocketNotifier> FNotifier;
};

}  // namespace kk
