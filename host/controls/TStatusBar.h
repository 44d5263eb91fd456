#pragma once

#include "host/controls/TControl.h"

namespace kk {

/// The line at the foot of a window: texts side by side that only the program writes.
class TStatusBar : public TControl {
 public:
  using TControl::TControl;

  /// The texts of the panels, from left to right.
  const std::vector<TString>& Panels() const { return FPanels; }
  /// Appends a panel.
  void AddPanel(TStringView iText = {});
  /// An index out of range raises EListError.
  const TString& PanelText(int iIndex) const;
  void SetPanelText(int iIndex, TStringView iText);

 private:
  std::vector<TString> FPanels;
};

}  // namespace kk
