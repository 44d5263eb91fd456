#pragma once

#include <QBasicTimer>
#include <optional>

#include "bench/desktop/TWatchdog.h"

namespace kk {

/// Watches the start of the real program in this process from its first event on, and ends the
/// process when tree and list have stood for a while and the loop has been free: then it prints
/// when, counted from the call, the loop ran, the window was first painted, the list was, and the
/// user could work without waiting; then the longest turn, and the work of the main thread up to
/// the list.
class TStartWatch : public QObject {
 public:
  /// iCalledMs: when the program was called (WallMs).
  explicit TStartWatch(double iCalledMs);

 protected:
  bool eventFilter(QObject* iObject, QEvent* iEvent) override;
  void timerEvent(QTimerEvent* iEvent) override;

 private:
  void Painted(const QWidget& iWidget);

  double FCalledMs;
  double FLoopMs;
  std::optional<double> FWindowMs;
  std::optional<double> FListMs;
  double FWorkMs = 0;
  TWatchdog FWatchdog;
  QBasicTimer FTimer;
};

}  // namespace kk
