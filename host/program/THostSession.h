#pragma once

#include "host/common/TPackageLoader.h"
#include "host/delivery/TDeliveries.h"
#include "host/program/THostPlugins.h"

namespace kk {

/// The packages and ways out of a host, from the loading to a safe end. THostServices, the host's
/// main loop and its form host stand before it and outlive it. There is one at a time. Main thread.
class THostSession {
 public:
  /// iFallback: shows a notification where the desktop does not. Loads the packages of
  /// PackagesFolder and looks for the watch list.
  explicit THostSession(TDeliveries::TFallback iFallback);
  /// Ends what was not ended.
  ~THostSession();
  THostSession(const THostSession&) = delete;
  THostSession& operator=(const THostSession&) = delete;

  /// Where packages lie: KAUFKOBOLDE_PLUGINS if it is set, else ../lib/kaufkobolde beside the
  /// program.
  static TString PackagesFolder();
  /// Packages that were not loaded, for the user.
  const std::vector<TRefusedPackage>& RefusedPackages() const { return FLoader.Refused(); }

  /// Starts the plug-ins with the host as they shall see it. Once. Raises Exception if the watch
  /// list is missing or can't be started; End is safe all the same.
  void Start(const TIntf<IApplication>& iApplication);

  /// All three steps of the end, in their order. A step that is done is passed over.
  void End();
  /// First: asks all work to end, cuts off what is being delivered, and turns the main loop until
  /// nothing is under way, for ten seconds at most.
  void EndWork();
  /// Second: uninitialises the plug-ins, which saves the list, and runs what still waits in the
  /// main loop. Nothing of the plug-ins may be used from here on.
  void Uninitialize();
  /// Last: takes the packages out of memory. Whoever holds something of theirs has let go of it.
  void Unload();

  THostPlugins& Plugins() { return FPlugins; }
  TDeliveries& Deliveries() { return FDeliveries; }
  /// Start has begun; from here on an end saves.
  bool HasStarted() const { return FHasStarted; }

 private:
  enum class TStep { seRunning, seWorkEnded, seUninitialized, seUnloaded };

  TDeliveries FDeliveries;
  TPackageLoader FLoader;
  THostPlugins FPlugins;
  bool FHasStarted = false;
  TStep FStep = TStep::seRunning;
};

}  // namespace kk
