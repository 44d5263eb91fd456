#pragma once

#include <QObject>
#include <QTimer>

namespace kk {

/// Wall clock in milliseconds, from any beginning.
double WallMs();
/// What this thread has worked so far, in milliseconds; a machine that is busy does not add to it.
double WorkMs();

/// Asks for a turn of the main loop each millisecond and notes how long it was kept waiting: that
/// is how long a click of the user would have waited.
class TWatchdog : public QObject {
 public:
  static constexpr double cLongTurnMs = 50;

  TWatchdog();
  void Restart();
  /// The longest stretch without a turn: by the wall clock, and how much of one was this thread's
  /// work.
  double LongestMs() const { return FLongestMs; }
  double LongestWorkMs() const { return FLongestWorkMs; }
  /// Of work; how many were longer than cLongTurnMs.
  int LongTurns() const { return FLongTurns; }
  /// When the last turn longer than that was over (WallMs); 0 if there was none.
  double LastLongTurnEnd() const { return FLastLongTurnEnd; }

 private:
  void Turn();

  QTimer FTimer;
  double FLastMs = 0;
  double FLastWorkMs = 0;
  double FLongestMs = 0;
  double FLongestWorkMs = 0;
  double FLastLongTurnEnd = 0;
  int FLongTurns = 0;
};

}  // namespace kk
