#include "views/tree/TWatchlistStatus.h"

#include <algorithm>

#include "persistence/TWatchlistHandler.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

namespace {

constexpr int cPanels = 2;
constexpr int cGaugePanel = 0;

int OpenUpdates() {
  int count = 0;
  for (const TWatchlistIntegration* integration : Handler()->LstIntegration()) {
    count += integration->Updater().GetCount();
  }
  return count;
}

}  // namespace

TWatchlistStatus::TWatchlistStatus(TControl* iParent) : sttsbar(iParent, u"sttsbar") {
  for (int i = 0; i < cPanels; ++i) sttsbar.AddPanel();
  Gauge.SetVisible(false);
  sttsbar.SetPanelControl(cGaugePanel, &Gauge);
}

void TWatchlistStatus::DoUpdaterProgress(TObject*) {
  const int open = OpenUpdates();
  Gauge.SetText(Format(_resStatusUpdate, {open}));
  // The one that runs counts as done.
  Gauge.SetProgress(std::max(0, Gauge.Maximum() - (open - 1)));
  Gauge.SetVisible(open > 0);
  if (!Gauge.Visible()) sttsbar.Invalidate();
}

void TWatchlistStatus::DoUpdaterAfterAdd(TObject* Sender, int iAddCount) {
  // The end of a run leaves the maximum; the next one sets it.
  Gauge.SetMaximum(Gauge.Visible() ? Gauge.Maximum() + iAddCount : std::max(0, iAddCount));
  DoUpdaterProgress(Sender);
}

void TWatchlistStatus::UpdateTakenOut() { Gauge.SetMaximum(std::max(0, Gauge.Maximum() - 1)); }

}  // namespace kk
