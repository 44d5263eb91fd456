#pragma once

#include "TFakeConsole.h"
#include "apps/cli/TCliApplication.h"
#include "apps/cli/TCliContext.h"
#include "host/contract/TPlugins.h"
#include "tests/support/TFakeSourcePlugin.h"
#include "tests/support/TFakeWatchlistPlugin.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {

/// The host with a fake list and a fake source, for tests of commands.
class TCliWorld {
 public:
  TCliWorld();
  ~TCliWorld();

  /// Finds the list and initialises the plug-ins.
  void Start();

  TFakeWatchlistPlugin& List() { return *FList; }
  TFakeSourcePlugin& Shop() { return *FShop; }
  TGuid ShopId() const { return FShop->GetId(); }

  /// Before Start: shows pop-ups, in a host that delivers reminders.
  TCliApplication::TShowPopUp Show;

  TLogRecorder Log;
  TTestMainLoop Loop;
  TFakeConsole Console;
  TCliFormHost Forms{Console};
  THostPlugins Plugins;
  TCliContext Context{Console, Forms, Plugins};

 private:
  IFormHost* FFormsBefore;
  TIntf<TFakeSourcePlugin> FShop;
  TIntf<TFakeWatchlistPlugin> FList;
};

}  // namespace kk
