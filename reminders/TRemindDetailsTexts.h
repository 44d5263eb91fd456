#pragma once

#include <tuple>

#include "reminders/TRemindDetailsBase.h"

namespace kk {

/// What the kinds that tell about an article have in common: a caption, a text and a link.
template <class Details>
class TRemindDetailsTexts : public TRemindDetails<Details> {
 public:
  TRemindDetailsTexts() = default;
  TRemindDetailsTexts(TStringView iCaption, TStringView iText, TStringView iLink)
      : FCaption(iCaption), FText(iText), FLink(iLink) {}

  const TString& Caption() const { return FCaption; }
  void SetCaption(TStringView iCaption) { FCaption = iCaption; }
  const TString& Text() const { return FText; }
  void SetText(TStringView iText) { FText = iText; }
  const TString& Link() const { return FLink; }
  void SetLink(TStringView iLink) { FLink = iLink; }

  auto Strings() { return std::tie(FCaption, FText, FLink); }
  auto Strings() const { return std::tie(FCaption, FText, FLink); }

 private:
  TString FCaption;
  TString FText;
  TString FLink;
};

}  // namespace kk
