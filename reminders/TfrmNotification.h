#pragma once

#include "host/controls/TImage.h"
#include "host/controls/TLabel.h"
#include "host/controls/TfrmMSNPopUpBase.h"
#include "plugin/texts/UnitKKPluginWatchlistConsts.h"
#include "plugin/texts/UnitKKPluginWatchlistResourceStrings.h"

namespace kk {

/// The pop-up window of a reminder that is due: a caption, a text and a link. It closes by itself,
/// but not while the pointer rests on it. IApplication::ShowNotificationWindow takes it over. Main
/// thread.
class TfrmNotification final : public TfrmMSNPopUpBase {
 public:
  TfrmNotification();

  /// The texts as they are to be shown, and the address that the link opens; it may be empty.
  void SetInfo(TStringView iCaption, TStringView iText, TStringView iLink);

  /// Not while the pointer is inside, unless the user has pressed the close button.
  bool CanClose() override;
  /// A window that may not close waits for another display period.
  void MakeInvisible() override;
  TString Link() const override { return FLink; }

  TPanel pnlCaption{this, u"pnlCaption"};
  TLabel lblCaption{&pnlCaption, u"lblCaption"};
  TPanel pnlClose{&pnlCaption, u"pnlClose"};
  TImage imgClose{&pnlClose, u"imgClose", {TString(cNotificationImageClose)}};
  /// In the same place, in front. Both are visible at first.
  TImage imgCloseOver{&pnlClose, u"imgCloseOver", {TString(cNotificationImageCloseOver)}};
  TLabel lblMessage{this, u"lblMessage"};
  TLabel lblOpenLink{this, u"lblOpenLink", _resNotificationOpenLink};

 private:
  void imgCloseMouseEnter(TObject* Sender);
  void imgCloseOverMouseLeave(TObject* Sender);
  void imgCloseClick(TObject* Sender);
  void lblOpenLinkMouseEnter(TObject* Sender);
  void lblOpenLinkMouseLeave(TObject* Sender);
  void lblOpenLinkClick(TObject* Sender);

  TString FLink;
  bool FForcedClose = false;
};

}  // namespace kk
