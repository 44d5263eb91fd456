#include "host/controls/TTabStrip.h"

#include <algorithm>

#include "host/base/Exception.h"
#include "host/controls/TForm.h"

namespace kk {

namespace {

bool FocusFirst(TForm& ioForm, TControl& iControl) {
  for (TControl* child : iControl.Children()) {
    if (ioForm.SetFocusedControl(child) || FocusFirst(ioForm, *child)) return true;
  }
  return false;
}

}  // namespace

TKK5SkinHeaderItemTabExt& TTabStrip::GetItems(int iIndex) const {
  return static_cast<TKK5SkinHeaderItemTabExt&>(
      *Children()[CheckedIndex(iIndex, Children().size())]);
}

TKK5SkinHeaderItemTabExt* TTabStrip::SelectedItem() const {
  for (int i = 0; i < GetCount(); ++i) {
    if (GetItems(i).Selected()) return &GetItems(i);
  }
  return nullptr;
}

void TTabStrip::ScrollIntoView(TKK5SkinHeaderItemTabExt& iHead) {
  FHeadToShow = &iHead;
  Changed();
}

TKK5SkinHeaderItemTabExt* TTabStrip::TakeHeadToShow() {
  TKK5SkinHeaderItemTabExt* head = std::exchange(FHeadToShow, nullptr);
  const bool isThere = std::find(Children().begin(), Children().end(), head) != Children().end();
  return isThere ? head : nullptr;
}

void TTabStrip::FocusFirstChild(TControl& iPanel) {
  TForm* form = Form();
  if (form == nullptr) return;
  // Who walks through the window by the keyboard must not be carried off.
  if (form->FocusedControl() != nullptr && !MayChange()) return;
  FocusFirst(*form, iPanel);
}

bool TTabStrip::OpenChevronMenu() {
  return AsUser([this] {
    if (FChevronMenu == nullptr) return false;
    if (FOnChevronPopup) FOnChevronPopup(this);
    return true;
  });
}

bool TTabStrip::ChangeTab(bool iForward) {
  return AsUser([this, iForward] {
    const auto& heads = Children();
    const auto selected = std::find(heads.begin(), heads.end(), SelectedItem());
    const int count = GetCount();
    int place = static_cast<int>(selected - heads.begin());
    if (place == count) place = iForward ? -1 : 0;
    if (count == 0 || !MayChange()) return false;
    for (int i = 0; i < count; ++i) {
      place = (place + (iForward ? 1 : count - 1)) % count;
      if (GetItems(place).Click()) return true;
    }
    return false;
  });
}

bool TTabStrip::DragItem(TKK5SkinHeaderItemTabExt& iHead, int iPlace) {
  return AsUser([&] {
    if (iHead.Parent() != this || !iHead.CanUse()) return false;
    if (iPlace < 0 || iPlace >= GetCount()) return false;
    const auto& heads = Children();
    const auto from = std::find(heads.begin(), heads.end(), &iHead) - heads.begin();
    if (from == iPlace) return false;
    const int before = from < iPlace ? iPlace + 1 : iPlace;
    iHead.SetParent(this, before < GetCount() ? &GetItems(before) : nullptr);
    return true;
  });
}

bool TTabStrip::MayChange() {
  bool result = true;
  if (FOnBeforeChange) FOnBeforeChange(this, result);
  return result;
}

}  // namespace kk
