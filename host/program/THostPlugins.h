#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "host/contract/IApplication.h"
#include "host/contract/IPlugin.h"
#include "host/contract/ISearchLocationIntegration.h"
#include "host/contract/ISearchSource.h"
#include "host/contract/ISettingsExtender.h"
#include "host/contract/ISettingsKeys.h"
#include "host/contract/ISettingsPublisher.h"
#include "host/contract/IToolbarExtender.h"
#include "host/contract/IWatchlist.h"
#include "host/contract/IWatchlistAccess.h"
#include "host/contract/IWatchlistIntegration.h"

namespace kk {

/// The plug-ins of this process and the life that the host leads them through, from the moment when
/// their packages are loaded. It reaches them through interfaces alone. Main thread.
class THostPlugins {
 public:
  THostPlugins() = default;
  /// Uninitialises what is still initialised.
  ~THostPlugins();
  THostPlugins(const THostPlugins&) = delete;
  THostPlugins& operator=(const THostPlugins&) = delete;

  /// Looks for the watch list among Plugins().
  void Find();
  /// Whether it is there.
  bool HasWatchlist() const { return FWatchlistPlugin != nullptr; }
  /// Gives each plug-in what the others offer it, and starts them with the host as they shall see
  /// it: the sources first, the watch list last, which must be there. A source that fails is logged
  /// as an error and left out of all that follows; if the watch list fails, the exception passes.
  void Initialize(const TIntf<IApplication>& iApplication);
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
  /// Uninitialises the watch list, which saves, and then the sources. A failure is logged and the
  /// rest goes on. Whoever holds something of theirs has let go of it.
  void Uninitialize();

  /// Whether the host that they were started with delivers reminders (IReminderHost).
  bool DeliversReminders() const { return FDeliversReminders; }

  /// From Initialize to Uninitialize; whether the watch list lets itself be worked with.
  bool HasList() const { return FAccess != nullptr; }
  IWatchlistAccess& List() const { return *FAccess; }
  IWatchlist& Adding() const { return *FWatchlist; }
  /// What the sources offer to the watch list, in the order of loading.
  const std::vector<TIntf<IWatchlistIntegration>>& Sources() const { return FSources; }

  // For a host with a screen, between Initialize and Uninitialize.
  /// A source that searches, and what each of the other plug-ins adds to its view.
  struct TSearch {
    TIntf<ISearchSource> Source;
    std::vector<TIntf<IInterfaceList>> Extensions;
  };
  /// In the order of loading, with new extensions at each call; a host's section "Suchen" is made
  /// of them, which takes the extensions in and releases the sources. A plug-in that fails to add
  /// something is logged as an error and adds nothing.
  std::vector<TSearch> Searches() const;
  /// The buttons of all plug-ins for the host's toolbar, in ascending order.
  std::vector<TIntf<IToolbarButton>> ToolbarButtons() const;
  /// The pages that plug-ins bring for the settings dialog: new objects at each call, for one
  /// dialog.
  std::vector<TIntf<ISettingsExtender>> SettingsPages() const;
  /// Asks all plug-ins whether the program may go to the tray; a single no is a no.
  bool MayMinimizeToTray() const;
  /// Tells all. A failure is nobody else's.
  void MinimizeToTray();
  void RestoreFromTray();

  /// Titles and values that the source of this id tells of a result, in its order; a value may be
  /// empty. Nothing if it tells nothing.
  std::vector<std::pair<TString, TString>> Details(const TGuid& iSource,
                                                   const TIntf<ISearchResult>& iResult) const;
  /// All settings that plug-ins describe. Needs no Initialize.
  std::vector<TSettingsKeyInfo> SettingsKeys() const;
  /// The plug-ins that exchange their settings as text, in the order of loading. Needs no
  /// Initialize.
  std::vector<TIntf<ISettingsPublisher>> SettingsPublishers() const;

 private:
  void Exchange();
  std::vector<TIntf<IInterfaceList>> ExtensionsFor(const TIntf<IPlugin>& iOwner,
                                                   const ISearchSource& iSource) const;

  TIntf<IPlugin> FWatchlistPlugin;
  TIntf<IWatchlist> FWatchlist;
  TIntf<IWatchlistAccess> FAccess;
  std::vector<TIntf<IWatchlistIntegration>> FSources;
  std::vector<TIntf<IPlugin>> FInitialized;
  bool FDeliversReminders = false;
};

}  // namespace kk
