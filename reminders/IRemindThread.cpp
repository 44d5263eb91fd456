#include "reminders/IRemindThread.h"

#include <utility>

namespace kk {

namespace {

IRemindThreadFactory* installedFactory = nullptr;

}  // namespace

IRemindThreadFactory* SetRemindThreadFactory(IRemindThreadFactory* iFactory) {
  return std::exchange(installedFactory, iFactory);
}

IRemindThreadFactory* RemindThreadFactory() { return installedFactory; }

}  // namespace kk
