#include "apps/desktop/shell/TDesktopApplication.h"

#include "host/base/Exception.h"

namespace kk {

void TDesktopApplication::SectionClosed() {
  if (FDesktop != nullptr) FDesktop->SectionClosed();
}

bool TDesktopApplication::ShowNotificationWindow(TForm* iForm) {
  if (FDesktop == nullptr || iForm == nullptr) return false;
  FDesktop->ShowPopUp(*iForm);
  return true;
}

void TDesktopApplication::AddSection(TfrmKKCommonSectionBase& ioForm) {
  if (FDesktop != nullptr) FDesktop->AddSection(ioForm);
}

void TDesktopApplication::RemoveSection(TfrmKKCommonSectionBase& ioForm) {
  if (FDesktop != nullptr) FDesktop->RemoveSection(ioForm);
}

void TDesktopApplication::ShowSection(TfrmKKCommonSectionBase& ioForm) {
  if (FDesktop != nullptr) FDesktop->ShowSection(ioForm);
}

TIntf<IToolbarButton> TDesktopApplication::GetItems(int iIndex) const {
  const auto buttons = Buttons();
  return buttons[CheckedIndex(iIndex, buttons.size())];
}

std::vector<TIntf<IToolbarButton>> TDesktopApplication::Buttons() const {
  std::vector<TIntf<IToolbarButton>> result;
  if (FDesktop == nullptr) return result;
  result = FDesktop->ToolbarButtons();
  result.insert(result.end(), FAdded.begin(), FAdded.end());
  return result;
}

}  // namespace kk
