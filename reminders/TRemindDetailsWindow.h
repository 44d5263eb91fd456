#pragma once

#include "reminders/TRemindDetailsTexts.h"

namespace kk {

/// A reminder by a window on the screen.
class TRemindDetailsWindow final : public TRemindDetailsTexts<TRemindDetailsWindow> {
 public:
  static constexpr const char16_t* cClassName = u"TRemindDetailsWindow";
  using TRemindDetailsTexts::TRemindDetailsTexts;
};

}  // namespace kk
