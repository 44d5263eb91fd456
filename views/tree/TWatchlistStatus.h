#pragma once

#include "host/controls/TGauge.h"
#include "host/controls/TStatusBar.h"

namespace kk {

/// The section's status bar of two panels, the first of them filled by the gauge that shows how far
/// the refreshes of all sources have come. Hidden while nothing waits. Main thread.
class TWatchlistStatus : public TObject {
 public:
  explicit TWatchlistStatus(TControl* iParent);

  /// Bound to the updaters; Sender may be absent.
  void DoUpdaterProgress(TObject* Sender);
  /// Begins a run, or lengthens the one that is under way.
  void DoUpdaterAfterAdd(TObject* Sender, int iAddCount);
  /// A queued result was taken out: the run is shorter by one. DoUpdaterProgress follows.
  void UpdateTakenOut();

  const TKK5SkinGauge& Gauge() const { return FGauge; }

  TStatusBar sttsbar;

 private:
  TKK5SkinGauge FGauge{&sttsbar, u"FGauge"};
};

}  // namespace kk
