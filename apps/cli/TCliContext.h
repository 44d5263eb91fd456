#pragma once

#include "apps/cli/ICliConsole.h"
#include "apps/cli/TCliFormHost.h"
#include "host/program/THostPlugins.h"

namespace kk {

class TDeliveries;

/// What a command works with. All is borrowed.
struct TCliContext {
  ICliConsole& Console;
  TCliFormHost& Forms;
  THostPlugins& Plugins;
  TDeliveries* Deliveries = nullptr;  ///< null: what stands behind the doors is somebody else's
};

}  // namespace kk
