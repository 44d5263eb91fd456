#include "host/controls/TfrmMSNPopUpBase.h"

namespace kk {

TfrmMSNPopUpBase::TfrmMSNPopUpBase(TForm* iOwner, TStringView iName) : TForm(iOwner, iName) {
  SetOnCloseQuery(TCloseQueryEvent::Of<&TfrmMSNPopUpBase::FormCloseQuery>(this));
  SetOnMouseEnter(TNotifyEvent::Of<&TfrmMSNPopUpBase::FormMouseEnter>(this));
  SetOnMouseLeave(TNotifyEvent::Of<&TfrmMSNPopUpBase::FormMouseLeave>(this));
}

TfrmMSNPopUpBase::~TfrmMSNPopUpBase() { StopWait(); }

void TfrmMSNPopUpBase::Prepare() {
  FMouseInside = false;
  SetStaysOnTop(true);
}

void TfrmMSNPopUpBase::PopUp() { MakeVisible(); }

void TfrmMSNPopUpBase::MakeVisible() {
  if (FWait) return;
  Show();
  RestartWait();
}

void TfrmMSNPopUpBase::MakeInvisible() { Close(); }

void TfrmMSNPopUpBase::Close() {
  TForm::Close();
  if (!Visible()) StopWait();
}

void TfrmMSNPopUpBase::RestartWait() {
  StopWait();
  FWait = MainLoop().StartTimer(cDisplayPeriodMs, [this] { MakeInvisible(); });
}

void TfrmMSNPopUpBase::FormCloseQuery(TObject* /*Sender*/, bool& ioCanClose) {
  ioCanClose = CanClose();
}

void TfrmMSNPopUpBase::FormMouseEnter(TObject* /*Sender*/) { FMouseInside = true; }

void TfrmMSNPopUpBase::FormMouseLeave(TObject* /*Sender*/) { FMouseInside = false; }

void TfrmMSNPopUpBase::StopWait() {
  if (!FWait) return;
  if (HasMainLoop()) MainLoop().StopTimer(*FWait);
  FWait.reset();
}

}  // namespace kk
