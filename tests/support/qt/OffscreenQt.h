#pragma once

#include <QCoreApplication>
#include <functional>

namespace kk {

/// Makes the one QApplication of these tests, on a screen that is none and without the desktop's
/// session bus, if there is none yet. A test calls it before it makes its first widget.
void NeedQt();

/// Turns Qt's loop until the condition holds; false if that takes longer than half a minute.
bool CrankUntil(const std::function<bool()>& iCondition);

}  // namespace kk
