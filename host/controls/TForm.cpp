#include "host/controls/TForm.h"

#include <utility>

#include "host/base/TMainLoop.h"

namespace kk {

namespace {

// The one in front: modal windows end in the reverse order of their start.
TForm* frontModal = nullptr;

}  // namespace

TForm::TForm(TForm* iOwner, TStringView iName, TStringView iCaption)
    : TPanel(nullptr, iName, iCaption), FOwner(iOwner), FSelf(std::make_shared<TForm*>(this)) {
  SetVisible(false);
}

TForm::~TForm() = default;

bool TForm::SetFocusedControl(TControl* iControl) {
  if (iControl == nullptr || !iControl->AcceptsFocus() || iControl->Form() != this) return false;
  for (const TControl* control = iControl; control != this; control = control->Parent()) {
    if (!control->Enabled() || !control->Visible()) return false;
  }
  SetValue(FFocusedControl, iControl);
  return true;
}

int TForm::ShowModal() {
  struct TModal {
    TForm& Form;
    TForm* Behind;
    explicit TModal(TForm& ioForm) : Form(ioForm), Behind(std::exchange(frontModal, &ioForm)) {
      Form.FModal = true;
    }
    ~TModal() {
      frontModal = Behind;
      Form.FModal = false;
      Form.SetVisible(false);
    }
  } modal(*this);
  FModalResult = cModalNone;
  Show();
  if (!EndModalIfDone()) FormHost().ShowModal(*this);
  return FModalResult;
}

bool TForm::TakesInput() const { return TControl::TakesInput() && (!FModal || frontModal == this); }

bool TForm::EndModalIfDone() {
  if (!FModal) return true;
  if (FModalResult == cModalNone || FUserActions > 0 || !CloseQuery()) return false;
  FModal = false;
  Disappear();
  return true;
}

void TForm::Close() {
  if (FModal) {
    SetModalResult(cModalCancel);
  } else if (Visible() && CloseQuery()) {
    Disappear();
  }
}

bool TForm::CloseByUser() {
  return AsUser([this] {
    Close();
    return true;
  });
}

void TForm::PostUserMessage(int iMessage) {
  MainLoop().Post([self = std::weak_ptr<TForm*>(FSelf), iMessage] {
    if (const auto form = self.lock()) (*form)->UserMessage(iMessage);
  });
}

bool TForm::CloseQuery() {
  struct TQuestion {
    TForm& Form;
    bool CanClose = false;
    explicit TQuestion(TForm& ioForm) : Form(ioForm) { ++Form.FUserActions; }
    ~TQuestion() {
      --Form.FUserActions;
      if (!CanClose) Form.FModalResult = cModalNone;
    }
  } question(*this);
  bool canClose = true;
  if (FOnCloseQuery) FOnCloseQuery(this, canClose);
  return question.CanClose = canClose;
}

bool TForm::PressDialogKey(char16_t iKey) {
  if (iKey == cKeyReturn && FDefaultButton != nullptr) return FDefaultButton->Click();
  if (iKey == cKeyEscape && FCancelButton != nullptr) return FCancelButton->Click();
  return false;
}

void TForm::Forget(TControl& iControl) {
  const auto isPartOf = [&iControl](const TControl* iPart) {
    for (; iPart != nullptr; iPart = iPart->Parent()) {
      if (iPart == &iControl) return true;
    }
    return false;
  };
  if (isPartOf(FFocusedControl)) FFocusedControl = nullptr;
  if (isPartOf(FDefaultButton)) FDefaultButton = nullptr;
  if (isPartOf(FCancelButton)) FCancelButton = nullptr;
}

}  // namespace kk
