#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "host/contract/IApplication.h"
#include "host/contract/IPlugin.h"
#include "host/contract/ISettingsKeys.h"
#include "host/contract/IWatchlist.h"
#include "host/contract/IWatchlistAccess.h"
#include "host/contract/IWatchlistIntegration.h"
#include "host/controls/TForm.h"

namespace kk {

/// The plug-ins of this process and the life that the host leads them through, from the moment when
/// their packages are loaded. It reaches them through interfaces alone. Main thread.
class TCliPlugins {
 public:
  TCliPlugins() = default;
  /// Uninitialises what is still initialised.
  ~TCliPlugins();
  TCliPlugins(const TCliPlugins&) = delete;
  TCliPlugins& operator=(const TCliPlugins&) = delete;

  /// Before Initialize: reminders are delivered from then on, and the function shows their pop-ups,
  /// each of which dies behind it. A host that doesn't say so leaves reminders alone.
  using TShowPopUp = std::function<void(const TForm& iForm)>;
  void DeliverReminders(TShowPopUp iShow) { FShowPopUp = std::move(iShow); }
  bool DeliversReminders() const { return FShowPopUp != nullptr; }

  /// Looks for the watch list among Plugins().
  void Find();
  /// Whether it is there.
  bool HasWatchlist() const { return FWatchlistPlugin != nullptr; }
  /// Gives each plug-in what the others offer it, and starts them: the sources first, the watch
  /// list last. A source that fails is logged as an error and left out; if the watch list fails,
  /// the exception passes.
  void Initialize();
  /// Hands the host's command line to all of them, in the order of loading.
  void ProcessCommandLine(TStringView iLine);
  /// Tells all work to end: the watch list first, so that its queues begin nothing new.
  void TerminateThreads();
  /// The user has left a command that had work under way. A host that comes and goes ends it; where
  /// reminders are delivered only what still waits is taken back, because to terminate would end
  /// those, too.
  void LeaveWork();
  /// How many pieces of work are under way.
  int ThreadCount() const;
  /// The watch list first, which saves; then the sources. A failure is logged and the rest goes on.
  void Uninitialize();

  /// From Initialize to Uninitialize.
  IWatchlistAccess& List() const { return *FAccess; }
  IWatchlist& Adding() const { return *FWatchlist; }
  /// What the sources offer to the watch list, in the order of loading.
  const std::vector<TIntf<IWatchlistIntegration>>& Sources() const { return FSources; }

  /// Titles and values that the source of this id tells of a result, in its order; a value may be
  /// empty. Nothing if it tells nothing.
  std::vector<std::pair<TString, TString>> Details(const TGuid& iSource,
                                                   const TIntf<ISearchResult>& iResult) const;
  /// All settings that plug-ins describe. Needs no Initialize.
  std::vector<TSettingsKeyInfo> SettingsKeys() const;

 private:
  void Exchange();

  TShowPopUp FShowPopUp;
  TIntf<IPlugin> FWatchlistPlugin;
  TIntf<IWatchlist> FWatchlist;
  TIntf<IWatchlistAccess> FAccess;
  std::vector<TIntf<IWatchlistIntegration>> FSources;
  std::vector<TIntf<IPlugin>> FInitialized;
};

}  // namespace kk
