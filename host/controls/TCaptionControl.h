#pragma once

#include "host/controls/TControl.h"

namespace kk {

/// A control with a text that only the program writes. "&" stands before the letter by which the
/// keyboard reaches it.
class TCaptionControl : public TControl {
 public:
  explicit TCaptionControl(TControl* iParent, TStringView iName = {}, TStringView iCaption = {})
      : TControl(iParent, iName), FCaption(iCaption) {}

  const TString& Caption() const { return FCaption; }
  void SetCaption(TStringView iCaption) { SetValue(FCaption, iCaption); }

 private:
  TString FCaption;
};

}  // namespace kk
