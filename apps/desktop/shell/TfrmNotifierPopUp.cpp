#include "apps/desktop/shell/TfrmNotifierPopUp.h"

#include "host/common/OpenURL.h"

namespace kk {

TfrmNotifierPopUp::TfrmNotifierPopUp(const TNotification& iNotification)
    : TfrmMSNPopUpBase(nullptr, u"TfrmNotifierPopUp"),
      FId(iNotification.Id),
      FIsLasting(iNotification.Position == TWindowPosition::wpDesktopLasting),
      FLink(iNotification.Link),
      FOnClick(iNotification.OnClick) {
  using TThis = TfrmNotifierPopUp;
  SetCaption(iNotification.Title);
  pnlCaption.SetArrangement(TArrangement::arRow);
  lblTitle.SetCaption(iNotification.Title);
  lblTitle.SetBold(true);
  lblTitle.SetSingleLine(true);
  lblTitle.SetStretches(true);
  lblClose.SetLooksLikeLink(true);
  lblClose.SetOnClick(TNotifyEvent::Of<&TThis::lblCloseClick>(this));
  lblCaption.SetCaption(iNotification.Caption);
  lblCaption.SetOnClick(TNotifyEvent::Of<&TThis::lblCaptionClick>(this));
  lblText.SetCaption(iNotification.Text);
  lblText.SetVisible(!iNotification.Text.empty());
  lblLink.SetCaption(iNotification.LinkText);
  lblLink.SetLooksLikeLink(true);
  lblLink.SetVisible(!FLink.empty());
  lblLink.SetOnClick(TNotifyEvent::Of<&TThis::lblLinkClick>(this));
}

void TfrmNotifierPopUp::MakeInvisible() {
  CanClose() ? TfrmMSNPopUpBase::MakeInvisible() : RestartWait();
}

void TfrmNotifierPopUp::lblCloseClick(TObject* /*Sender*/) {
  FForcedClose = true;  // the pointer is on the window
  Close();
}

void TfrmNotifierPopUp::lblCaptionClick(TObject* /*Sender*/) {
  if (FOnClick) FOnClick(this, FId);
  FForcedClose = true;
  Close();
}

void TfrmNotifierPopUp::lblLinkClick(TObject* /*Sender*/) { OpenURL(FLink, true); }

}  // namespace kk
