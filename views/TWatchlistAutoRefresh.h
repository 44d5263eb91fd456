#pragma once

#include "host/base/TMainLoop.h"
#include "views/TWatchlistUpdateCommands.h"

namespace kk {

/// Refreshes everything by itself, at the start or when the user's interval has passed, as the
/// settings say. Its timer looks every five minutes for as long as it lives. Main thread.
class TWatchlistAutoRefresh : public TObject {
 public:
  static constexpr int cIntervalMs = 300000;

  /// Borrowed.
  explicit TWatchlistAutoRefresh(TWatchlistUpdateCommands& ioUpdates);
  ~TWatchlistAutoRefresh() override;

  /// With the flag off nothing comes of a look; on at first.
  void SetEnabled(bool iEnabled) { FEnabled = iEnabled; }
  /// No sender: the look at the start, which the interval does not concern. What fails is
  /// swallowed, and nothing is refreshed then.
  void tmrAutoRefreshTimer(TObject* Sender);

 private:
  void Look(bool iAtStart);

  TWatchlistUpdateCommands& FUpdates;
  bool FEnabled = true;
  TMainLoop::TTimerId FTimer;
};

}  // namespace kk
