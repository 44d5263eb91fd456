#pragma once

#include "apps/cli/ICliConsole.h"
#include "apps/cli/TCliFormHost.h"
#include "apps/cli/TCliPlugins.h"

namespace kk {

/// What a command works with. All is borrowed.
struct TCliContext {
  ICliConsole& Console;
  TCliFormHost& Forms;
  TCliPlugins& Plugins;
};

}  // namespace kk
