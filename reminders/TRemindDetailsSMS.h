#pragma once

#include <tuple>

#include "reminders/TRemindDetailsBase.h"

namespace kk {

/// A reminder by text message. The message itself is with the service since the set-up.
class TRemindDetailsSMS final : public TRemindDetails<TRemindDetailsSMS> {
 public:
  static constexpr const char16_t* cClassName = u"TRemindDetailsSMS";

  TRemindDetailsSMS() = default;
  explicit TRemindDetailsSMS(TStringView iText) : FText(iText) {}

  const TString& Text() const { return FText; }
  void SetText(TStringView iText) { FText = iText; }

  auto Strings() { return std::tie(FText); }
  auto Strings() const { return std::tie(FText); }

 private:
  TString FText;
};

}  // namespace kk
