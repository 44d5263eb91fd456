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
  FGauge.SetVisible(false);
  sttsbar.SetPanelControl(cGaugePanel, &FGauge);
}

void TWatchlistStatus::DoUpdaterProgress(TObject*) {
  const int open = OpenUpdates();
  FGauge.SetText(Format(_resStatusUpdate, {open}));
  // The one that runs counts as done.
  FGauge.SetProgress(std::max(0, FGauge.Maximum() - (open - 1)));
  FGauge.SetVisible(open > 0);
  if (!FGauge.Visible()) sttsbar.Invalidate();
}

void TWatchlistStatus::DoUpdaterAfterAdd(TObject* Sender, int iAddCount) {
  // The end of a run leaves the maximum; the next one sets it.
  FGauge.SetMaximum(FGauge.Visible() ? FGauge.Maximum() + iAddCount : std::max(0, iAddCount));
  DoUpdaterProgress(Sender);
}

void TWatchlistStatus::UpdateTakenOut() { FGauge.SetMaximum(std::max(0, FGauge.Maximum() - 1)); }

}  // namespace kk
