#include "reminders/TfrmNotification.h"

#include "host/common/OpenURL.h"

namespace kk {

TfrmNotification::TfrmNotification() : TfrmMSNPopUpBase(nullptr, u"TfrmNotification") {
  using TThis = TfrmNotification;
  pnlCaption.SetArrangement(TArrangement::arRow);
  lblCaption.SetBold(true);
  lblCaption.SetSingleLine(true);
  lblCaption.SetStretches(true);
  pnlClose.SetArrangement(TArrangement::arStack);
  lblOpenLink.SetCentered(true);
  lblOpenLink.SetLooksLikeLink(true);
  imgClose.SetOnMouseEnter(TNotifyEvent::Of<&TThis::imgCloseMouseEnter>(this));
  imgCloseOver.SetOnMouseLeave(TNotifyEvent::Of<&TThis::imgCloseOverMouseLeave>(this));
  imgClose.SetOnClick(TNotifyEvent::Of<&TThis::imgCloseClick>(this));
  imgCloseOver.SetOnClick(TNotifyEvent::Of<&TThis::imgCloseClick>(this));
  lblOpenLink.SetOnMouseEnter(TNotifyEvent::Of<&TThis::lblOpenLinkMouseEnter>(this));
  lblOpenLink.SetOnMouseLeave(TNotifyEvent::Of<&TThis::lblOpenLinkMouseLeave>(this));
  lblOpenLink.SetOnClick(TNotifyEvent::Of<&TThis::lblOpenLinkClick>(this));
}

void TfrmNotification::SetInfo(TStringView iCaption, TStringView iText, TStringView iLink) {
  lblCaption.SetCaption(iCaption);
  lblMessage.SetCaption(iText);
  FLink = iLink;
}

bool TfrmNotification::CanClose() {
  if (!TfrmMSNPopUpBase::CanClose()) return false;
  return FForcedClose || !IsMouseInside();
}

void TfrmNotification::MakeInvisible() {
  if (CanClose()) {
    TfrmMSNPopUpBase::MakeInvisible();
  } else {
    RestartWait();
  }
}

void TfrmNotification::imgCloseMouseEnter(TObject* /*Sender*/) {
  imgCloseOver.SetVisible(true);
  imgClose.SetVisible(false);
}

void TfrmNotification::imgCloseOverMouseLeave(TObject* /*Sender*/) {
  imgClose.SetVisible(true);
  imgCloseOver.SetVisible(false);
}

void TfrmNotification::imgCloseClick(TObject* /*Sender*/) {
  FForcedClose = true;  // the pointer is on the window
  Close();
}

void TfrmNotification::lblOpenLinkMouseEnter(TObject* /*Sender*/) {
  lblOpenLink.SetUnderline(true);
}

void TfrmNotification::lblOpenLinkMouseLeave(TObject* /*Sender*/) {
  lblOpenLink.SetUnderline(false);
}

void TfrmNotification::lblOpenLinkClick(TObject* /*Sender*/) { OpenURL(FLink, true); }

}  // namespace kk
