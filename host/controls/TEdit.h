#pragma once

#include "host/controls/TControl.h"

namespace kk {

/// One line of text.
class TEdit : public TControl {
 public:
  using TControl::TControl;

  const TString& Text() const { return FText; }
  void SetText(TStringView iText) { SetValue(FText, iText); }
  /// The user has changed the text to this one.
  bool EnterText(TStringView iText);
  void SetOnChange(TNotifyEvent iEvent) { FOnChange = iEvent; }

  bool AcceptsFocus() const override { return true; }

 private:
  TString FText;
  TNotifyEvent FOnChange;
};

}  // namespace kk
