#pragma once

#include "host/contract/TPlugins.h"
#include "host/program/THostPlugins.h"
#include "tests/support/TFakeApplication.h"
#include "tests/support/TFakeSourcePlugin.h"
#include "tests/support/TFakeWatchlistPlugin.h"
#include "tests/support/TLogRecorder.h"
#include "tests/support/TTestMainLoop.h"

namespace kk {

/// A host with a fake watch list, which was loaded first, and the plug-in of a fake source.
class THostWorld {
 public:
  THostWorld()
      : FShop(MakeIntf<TFakeSourcePlugin>(u"Fakeshop")), FList(MakeIntf<TFakeWatchlistPlugin>()) {
    kk::Plugins().Add(FList);
    kk::Plugins().Add(FShop);
  }
  ~THostWorld() {
    Plugins.Uninitialize();
    kk::Plugins().Clear();
  }

  /// Finds the list and initialises the plug-ins.
  void Start() {
    Plugins.Find();
    Plugins.Initialize(Application);
  }

  TFakeWatchlistPlugin& List() { return *FList; }
  TFakeSourcePlugin& Shop() { return *FShop; }

  TLogRecorder Log;
  TTestMainLoop Loop;
  TIntf<IApplication> Application = MakeIntf<TFakeApplication>();
  THostPlugins Plugins;

 private:
  TIntf<TFakeSourcePlugin> FShop;
  TIntf<TFakeWatchlistPlugin> FList;
};

}  // namespace kk
