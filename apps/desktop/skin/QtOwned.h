#pragma once

#include <memory>
#include <utility>

namespace kk {

/// A new object for one of Qt's places that take it over: a parent, a layout or a binder.
template <class T, class... Args>
T* QtOwned(Args&&... iArgs) {
  return std::make_unique<T>(std::forward<Args>(iArgs)...).release();
}

}  // namespace kk
