#include "host/controls/TControl.h"

#include <algorithm>

#include "host/base/TMainLoop.h"
#include "host/controls/TForm.h"

namespace kk {

TControl::TControl(TControl* iParent, TStringView iName) : FName(iName) { SetParent(iParent); }

TControl::~TControl() {
  if (IControlObserver* observer = Observer()) observer->ControlGone(*this);
  SetParent(nullptr);
  for (TControl* child : FChildren) child->FParent = nullptr;
}

TForm* TControl::Form() {
  for (TControl* control = this; control != nullptr; control = control->FParent) {
    if (auto* form = dynamic_cast<TForm*>(control)) return form;
  }
  return nullptr;
}

bool TControl::CanUse() const {
  for (const TControl* control = this; control != nullptr; control = control->FParent) {
    if (!control->TakesInput()) return false;
  }
  return true;
}

bool TControl::TakeFocus() {
  return AsUser([this] {
    TForm* form = Form();
    return form != nullptr && form->SetFocusedControl(this);
  });
}

bool TControl::PressKey(char16_t iKey) {
  return AsUser([this, iKey] {
    char16_t key = iKey;
    if (FOnKeyPress) FOnKeyPress(this, key);
    if (key == 0 || UseKey(key)) return true;
    TForm* form = Form();
    return form != nullptr && form->PressDialogKey(key);
  });
}

bool TControl::EnterMouse() {
  return AsUser([this] {
    if (FOnMouseEnter) FOnMouseEnter(this);
    return true;
  });
}

bool TControl::LeaveMouse() {
  return AsUser([this] {
    if (FOnMouseLeave) FOnMouseLeave(this);
    return true;
  });
}

void TControl::Changed() {
  AssertMainThread();
  FHasChanged = IsUpdating();
  if (FHasChanged) return;
  if (IControlObserver* observer = Observer()) observer->ControlChanged(*this);
}

void TControl::EndUpdate() {
  if (--FUpdates == 0) TellChanges();
}

bool TControl::IsUpdating() const {
  for (const TControl* control = this; control != nullptr; control = control->FParent) {
    if (control->FUpdates > 0) return true;
  }
  return false;
}

void TControl::TellChanges() {
  if (FHasChanged) Changed();
  for (TControl* child : FChildren) child->TellChanges();
}

void TControl::SetParent(TControl* iParent, const TControl* iBefore) {
  if (FParent != nullptr) {
    if (TForm* form = FParent->Form()) form->Forget(*this);
    std::erase(FParent->FChildren, this);
    FParent->Changed();
  }
  FParent = iParent;
  if (FParent == nullptr) return;
  auto& siblings = FParent->FChildren;
  siblings.insert(std::find(siblings.begin(), siblings.end(), iBefore), this);
  FParent->Changed();
}

void TControl::RaiseAmongSiblings() {
  if (FParent == nullptr || FParent->FChildren.back() == this) return;
  auto& siblings = FParent->FChildren;
  const auto place = std::find(siblings.begin(), siblings.end(), this);
  std::rotate(place, place + 1, siblings.end());
  FParent->Changed();
}

IControlObserver* TControl::Observer() const {
  for (const TControl* control = this; control != nullptr; control = control->FParent) {
    if (control->FObserver != nullptr) return control->FObserver;
  }
  return nullptr;
}

TControl::TUserAction::TUserAction(TForm* iForm) : FForm(iForm) {
  if (FForm == nullptr) return;
  FResultBefore = FForm->FModalResult;
  ++FForm->FUserActions;
}

TControl::TUserAction::~TUserAction() {
  if (FForm == nullptr || !FOpen) return;
  FForm->FModalResult = FResultBefore;
  --FForm->FUserActions;
}

void TControl::TUserAction::Finish() {
  FOpen = false;
  if (FForm != nullptr && --FForm->FUserActions == 0) FForm->EndModalIfDone();
}

}  // namespace kk
