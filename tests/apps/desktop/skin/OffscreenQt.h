#pragma once

#include <QCoreApplication>
#include <functional>

namespace kk {

/// Makes the one QApplication of these tests, on a screen that is none, if there is none yet.
void NeedQt();

/// Turns Qt's loop until the condition holds; false if that takes longer than ten seconds.
bool CrankUntil(const std::function<bool()>& iCondition);

}  // namespace kk
