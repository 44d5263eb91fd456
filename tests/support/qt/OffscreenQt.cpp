#include "tests/support/qt/OffscreenQt.h"

#include <QApplication>
#include <chrono>
#include <memory>

namespace kk {

void NeedQt() {
  if (QCoreApplication::instance() != nullptr) return;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
  static int count = 1;
  static char name[] = "tests";
  static char* arguments[] = {name, nullptr};
  // It stays to the end of the process: what Qt keeps for it in statics of its own goes earlier.
  static const QApplication* const application =
      std::make_unique<QApplication>(count, arguments).release();
  (void)application;
}

bool CrankUntil(const std::function<bool()>& iCondition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (!iCondition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    // Waits for an event in the system, not for time to go by.
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    // As a loop that runs does at the end of each turn.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  return true;
}

}  // namespace kk
