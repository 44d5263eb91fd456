#pragma once

#include "reminders/TRemindDetailsTexts.h"

namespace kk {

/// A reminder by an appointment in the calendar, entered at the set-up.
class TRemindDetailsOutlook final : public TRemindDetailsTexts<TRemindDetailsOutlook> {
 public:
  static constexpr const char16_t* cClassName = u"TRemindDetailsOutlook";
  /// The entry id stays empty.
  using TRemindDetailsTexts::TRemindDetailsTexts;

  /// The id under which the calendar knows the appointment; empty while there is none.
  const TString& EntryId() const { return FEntryId; }
  void SetEntryId(TStringView iEntryId) { FEntryId = iEntryId; }

  auto Strings() { return std::tuple_cat(TRemindDetailsTexts::Strings(), std::tie(FEntryId)); }
  auto Strings() const {
    return std::tuple_cat(TRemindDetailsTexts::Strings(), std::tie(FEntryId));
  }

 private:
  TString FEntryId;
};

}  // namespace kk
