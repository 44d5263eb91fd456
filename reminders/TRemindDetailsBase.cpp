#include "reminders/TRemindDetailsBase.h"

#include "reminders/TRemindDetailsEMail.h"
#include "reminders/TRemindDetailsOutlook.h"
#include "reminders/TRemindDetailsSMS.h"
#include "reminders/TRemindDetailsSound.h"
#include "reminders/TRemindDetailsWindow.h"

namespace kk {

const TRemindDetailsBaseClass& RemindTypeDetailsClass(TRemindType iType) {
  static constexpr std::array cClasses = {
      TRemindDetailsSound::Class(), TRemindDetailsWindow::Class(), TRemindDetailsSMS::Class(),
      TRemindDetailsOutlook::Class(), TRemindDetailsEMail::Class()};
  static_assert(cClasses.size() == cRemindTypes.size());
  return cClasses[static_cast<size_t>(iType)];
}

}  // namespace kk
