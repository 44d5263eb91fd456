#include "views/TWatchlistAutoRefresh.h"

#include "host/base/Guard.h"
#include "host/base/TClock.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"
#include "settings/TIniFileSectionWatchlist.h"

namespace kk {

namespace {

bool IsIntervalOver(const TIniFileSectionWatchlist& iSettings) {
  const int64_t interval = iSettings.GetUpdateIntervalInHrs() * TDateTime::cMsPerHour;
  return Now() >= iSettings.GetUpdateLastDate().PlusMs(interval);
}

}  // namespace

TWatchlistAutoRefresh::TWatchlistAutoRefresh(TWatchlistUpdateCommands& ioUpdates)
    : FUpdates(ioUpdates),
      FTimer(MainLoop().StartTimer(cIntervalMs, [this] { tmrAutoRefreshTimer(this); })) {}

TWatchlistAutoRefresh::~TWatchlistAutoRefresh() { MainLoop().StopTimer(FTimer); }

void TWatchlistAutoRefresh::tmrAutoRefreshTimer(TObject* Sender) {
  if (!FEnabled) return;
  Guarded(u"tmrAutoRefreshTimer", [&] { Look(Sender == nullptr); });
}

void TWatchlistAutoRefresh::Look(bool iAtStart) {
  TIniFileSectionWatchlist settings;
  if (iAtStart && !settings.GetUpdateOnStartup()) return;
  if (!iAtStart && (!settings.GetUpdateOnInterval() || !IsIntervalOver(settings))) return;
  settings.SetUpdateLastDate(Now());
  LogInfo(_resLoggingSenderForm,
          iAtStart ? _resLoggingAutoUpdateOnStartup : _resLoggingAutoUpdateOnInterval);
  FUpdates.UpdateAll();
}

}  // namespace kk
