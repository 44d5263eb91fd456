#pragma once

#include <chrono>

#include "host/base/TMainLoop.h"

namespace kk {

/// Turns the loop until the condition holds, which other threads or processes bring about; false if
/// that takes longer than so long.
template <class TCondition>
[[nodiscard]] bool TurnUntil(TMainLoop& ioLoop, TCondition iCondition,
                             std::chrono::seconds iAtMost = std::chrono::seconds(30)) {
  const auto last = std::chrono::steady_clock::now() + iAtMost;
  while (!iCondition()) {
    if (std::chrono::steady_clock::now() > last) return false;
    ioLoop.WaitForMessage(1);
    ioLoop.ProcessMessages();
  }
  return true;
}

}  // namespace kk
