#pragma once

#include "host/controls/TControl.h"

namespace kk {

/// One line of text.
class TEdit : public TControl {
 public:
  using TControl::TControl;

  const TString& Text() const { return FText; }
  void SetText(TStringView iText);
  /// The user has changed the text to this one.
  bool EnterText(TStringView iText);
  void SetOnChange(TNotifyEvent iEvent) { FOnChange = iEvent; }
  /// Marks the whole text, so that the user's next key replaces it.
  void SelectAll();
  /// From then on until the text is another one.
  bool AllSelected() const { return FAllSelected; }
  /// What is typed shows as dots, and can't be copied out of it.
  bool Password() const { return FPassword; }
  void SetPassword(bool iPassword) { SetValue(FPassword, iPassword); }

  bool AcceptsFocus() const override { return true; }

 private:
  TString FText;
  bool FAllSelected = false;
  bool FPassword = false;
  TNotifyEvent FOnChange;
};

}  // namespace kk
