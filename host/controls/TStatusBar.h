#pragma once

#include "host/controls/TControl.h"

namespace kk {

/// The line at the foot of a window: panels side by side, each with a text that only the program
/// writes, or filled by a control.
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
  /// One of the bar's children that fills the panel while it is visible; null for none. Borrowed.
  /// An index out of range raises EListError.
  TControl* PanelControl(int iIndex) const;
  void SetPanelControl(int iIndex, TControl* iControl);
  /// The bar is to be painted anew.
  void Invalidate() { Changed(); }

 private:
  std::vector<TString> FPanels;
  std::vector<TControl*> FPanelControls;  // beside FPanels
};

}  // namespace kk
