#include "OffscreenQt.h"

#include <QApplication>
#include <chrono>
#include <memory>

namespace kk {

void NeedQt() {
  if (QCoreApplication::instance() != nullptr) return;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static int count = 1;
  static char name[] = "tests";
  static char* arguments[] = {name, nullptr};
  static const auto application = std::make_unique<QApplication>(count, arguments);
}

bool CrankUntil(const std::function<bool()>& iCondition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!iCondition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    // Waits for an event in the system, not for time to go by.
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  }
  return true;
}

}  // namespace kk
