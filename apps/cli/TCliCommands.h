#pragma once

#include <functional>

#include "apps/cli/ECliUsage.h"
#include "apps/cli/TCliArguments.h"
#include "apps/cli/TCliContext.h"

namespace kk {

/// The commands that come to an end by themselves, whoever asks for them.
struct TCliCommands {
  /// Whether a call works with the list, which has to be started first.
  static bool NeedsList(const TCliArguments& iCall);
  /// Whether it may change the list.
  static bool ChangesList(const TCliArguments& iCall);
  /// False if it failed and said so. What was called wrongly raises ECliUsage, all else Exception.
  static bool Run(TCliContext& ioContext, const TCliArguments& iCall);
};

/// Runs the function; what it raises becomes lines for the user and an exit code.
TCliExit Answered(ICliConsole& ioConsole, const std::function<TCliExit()>& iFunction);

}  // namespace kk
