#pragma once

#include <exception>
#include <utility>

#include "host/base/Exception.h"
#include "host/base/Log.h"

namespace kk {

/// The one place where exceptions are swallowed, so that each can be found by searching for this
/// name. Runs the function and answers whether it went through; what it threw goes to the log at
/// debug level under the place's name.
template <class Function>
bool Guarded(TStringView iPlace, Function&& iFunction) {
  try {
    std::forward<Function>(iFunction)();
    return true;
  } catch (const std::exception& e) {
    LogDebug(iPlace, MessageOf(e));
    return false;
  }
}

}  // namespace kk
