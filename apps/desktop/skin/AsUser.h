#pragma once

#include <exception>
#include <utility>

namespace kk {

/// Tells the user, in a message box, and the log what was raised. While such a box stands, further
/// failures go to the log alone. Raises nothing. Main thread.
void ShowFailure(const std::exception& iException) noexcept;

/// The edge between Qt and the system: every event of Qt's that leads into the system runs in it,
/// so that no exception ever passes through Qt. Answers whether the function went through; what it
/// raised has been shown to the user. What only paints uses Guarded instead: a box for each repaint
/// would help nobody.
template <class Function>
bool AsUser(Function&& iFunction) noexcept {
  try {
    std::forward<Function>(iFunction)();
    return true;
  } catch (const std::exception& e) {
    ShowFailure(e);
    return false;
  }
}

}  // namespace kk
