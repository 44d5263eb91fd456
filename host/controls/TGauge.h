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

 private:
  int FMaximum = 100;
  int FProgress = 0;
};

using TKK5SkinGauge = TGauge;

}  // namespace kk
