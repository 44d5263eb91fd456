#pragma once

#include "host/controls/TClickControl.h"

namespace kk {

/// The results with which a modal form ends; 0 while it lasts.
inline constexpr int cModalNone = 0;
inline constexpr int cModalOK = 1;
inline constexpr int cModalCancel = 2;
inline constexpr int cModalYes = 6;
inline constexpr int cModalNo = 7;
inline constexpr int cModalAll = 12;

/// A push button. With a modal result, a click gives it to the form before the event is raised, so
/// that the handler can take it back.
class TButton : public TClickControl {
 public:
  explicit TButton(TControl* iParent, TStringView iName = {}, TStringView iCaption = {},
                   int iModalResult = cModalNone)
      : TClickControl(iParent, iName, iCaption), FModalResult(iModalResult) {}

  int ModalResult() const { return FModalResult; }
  /// A second line that says what the button will do; empty for a plain button.
  const TString& Description() const { return FDescription; }
  void SetDescription(TStringView iDescription) { SetValue(FDescription, iDescription); }

 protected:
  bool Clicked() override;
  /// Return clicks, too: the button with the focus is the default one.
  bool UseKey(char16_t iKey) override;

 private:
  int FModalResult;
  TString FDescription;
};

}  // namespace kk
