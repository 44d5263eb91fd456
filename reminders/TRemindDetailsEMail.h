#pragma once

#include "reminders/TRemindDetailsTexts.h"

namespace kk {

/// A reminder by e-mail, sent when it is due.
class TRemindDetailsEMail final : public TRemindDetailsTexts<TRemindDetailsEMail> {
 public:
  static constexpr const char16_t* cClassName = u"TRemindDetailsEMail";
  using TRemindDetailsTexts::TRemindDetailsTexts;
};

}  // namespace kk
