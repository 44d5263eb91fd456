#include "host/controls/TStatusBar.h"

#include "host/base/Exception.h"

namespace kk {

void TStatusBar::AddPanel(TStringView iText) {
  FPanels.emplace_back(iText);
  FPanelControls.push_back(nullptr);
  Changed();
}

const TString& TStatusBar::PanelText(int iIndex) const {
  return FPanels[CheckedIndex(iIndex, FPanels.size())];
}

void TStatusBar::SetPanelText(int iIndex, TStringView iText) {
  SetValue(FPanels[CheckedIndex(iIndex, FPanels.size())], iText);
}

TControl* TStatusBar::PanelControl(int iIndex) const {
  return FPanelControls[CheckedIndex(iIndex, FPanelControls.size())];
}

void TStatusBar::SetPanelControl(int iIndex, TControl* iControl) {
  SetValue(FPanelControls[CheckedIndex(iIndex, FPanelControls.size())], iControl);
}

}  // namespace kk
