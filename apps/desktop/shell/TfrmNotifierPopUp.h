#pragma once

#include "host/controls/TLabel.h"
#include "host/controls/TfrmKKCommonNotifier.h"
#include "host/controls/TfrmMSNPopUpBase.h"

namespace kk {

/// A notification in a window of the program's own, where the desktop shows none. It closes by
/// itself, unless it is to last, and not while the pointer rests on it; a click on the link opens
/// it, a click on the caption closes the window. Main thread.
class TfrmNotifierPopUp final : public TfrmMSNPopUpBase {
 public:
  explicit TfrmNotifierPopUp(const TNotification& iNotification);

  const TGuid& Id() const { return FId; }
  bool CanClose() override { return FForcedClose || !(FIsLasting || IsMouseInside()); }
  /// A window that may not close waits for another display period.
  void MakeInvisible() override;
  TString Link() const override { return FLink; }

  TPanel pnlCaption{this, u"pnlCaption"};
  TLabel lblTitle{&pnlCaption, u"lblTitle"};
  TLabel lblClose{&pnlCaption, u"lblClose", u"Schließen"};
  TLabel lblCaption{this, u"lblCaption"};
  TLabel lblText{this, u"lblText"};
  TLabel lblLink{this, u"lblLink"};

 private:
  void lblCloseClick(TObject* Sender);
  void lblCaptionClick(TObject* Sender);
  void lblLinkClick(TObject* Sender);

  const TGuid FId;
  const bool FIsLasting;
  const TString FLink;
  const TNotifyNotifierCallback FOnClick;
  bool FForcedClose = false;
};

}  // namespace kk
