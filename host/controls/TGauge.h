#pragma once

#include "host/controls/TControl.h"

namespace kk {

/// How far a piece of work has come.
class TGauge : public TControl {
 public:
  using TControl::TControl;

  /// At least 0; 0 shows nothing.
  int Maximum() const { return FMaximum; }
  void SetMaximum(int iMaximum) { SetValue(FMaximum, iMaximum); }
  int Progress() const { return FProgress; }
  void SetProgress(int iProgress) { SetValue(FProgress, iProgress); }
  /// Stands in the gauge; empty for none.
  const TString& Text() const { return FText; }
  void SetText(TStringView iText) { SetValue(FText, iText); }

 private:
  int FMaximum = 100;
  int FProgress = 0;
  TString FText;
};

using TKK5SkinGauge = TGauge;

}  // namespace kk
