#include "host/controls/TStatusBar.h"

#include "host/base/Exception.h"

namespace kk {

void TStatusBar::AddPanel(TStringView iText) {
  FPanels.emplace_back(iText);
  Changed();
}

const TString& TStatusBar::PanelText(int iIndex) const {
  return FPanels[CheckedIndex(iIndex, FPanels.size())];
}

void TStatusBar::SetPanelText(int iIndex, TStringView iText) {
  SetValue(FPanels[CheckedIndex(iIndex, FPanels.size())], iText);
}

}  // namespace kk
