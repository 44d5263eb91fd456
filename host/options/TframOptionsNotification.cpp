#include "host/options/TframOptionsNotification.h"

#include <cerrno>

#include "host/base/Exception.h"
#include "host/common/PlaySound.h"
#include "host/common/TFileHelper.h"
#include "host/common/TFileWriter.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/controls/TfrmKKCommonNotifier.h"
#include "host/controls/TfrmKKCommonWait.h"
#include "host/controls/TfrmMSNPopUpBase.h"
#include "host/delivery/TDeliveryTrial.h"

namespace kk {

namespace {

/// The pop-up of a trial.
class TfrmTrialPopUp final : public TfrmMSNPopUpBase {
 public:
  explicit TfrmTrialPopUp(const TNotification& iNotification)
      : TfrmMSNPopUpBase(nullptr, u"TfrmTrialPopUp") {
    SetCaption(iNotification.Title);
    FText.SetCaption(iNotification.Caption);
  }

 private:
  TLabel FText{this, u"lblText"};
};

// As the notifier numbers them; what it does not know is the program's own window.
int PositionOf(int iSetting) {
  const int own = static_cast<int>(TWindowPosition::wpPopUp);
  return iSetting >= 0 && iSetting < own ? iSetting : own;
}

}  // namespace

TframOptionsNotification::TframOptionsNotification(const TIntf<IApplication>& iApplication)
    : TframOptionsBase(u"framOptionsNotification"), FApplication(iApplication) {
  using TSelf = TframOptionsNotification;
  cmbxPosition.SetEditable(false);
  cmbxPosition.AddItem(u"Benachrichtigung des Desktops");
  cmbxPosition.AddItem(u"Benachrichtigung des Desktops, die stehen bleibt");
  cmbxPosition.AddItem(u"eigenes Fenster");
  pnlTest.SetArrangement(TArrangement::arRow);
  btnTestWindow.SetOnClick(TNotifyEvent::Of<&TSelf::btnTestWindowClick>(this));
  btnTestSound.SetOnClick(TNotifyEvent::Of<&TSelf::btnTestSoundClick>(this));
}

void TframOptionsNotification::LoadSettings() {
  cmbxPosition.SetItemIndex(PositionOf(TIniFileSectionCommunication().GetNotifierPosition()));
}

void TframOptionsNotification::SaveSettings() {
  TIniFileSectionCommunication settings;
  const int position = cmbxPosition.ItemIndex();
  // A number that means the same as what is chosen stays.
  if (position == PositionOf(settings.GetNotifierPosition())) return;
  settings.SetNotifierPosition(position);
}

void TframOptionsNotification::btnTestWindowClick(TObject*) {
  if (!SaveForTrial()) return;
  const TNotification notification =
      TDeliveryTrial::Notification(static_cast<TWindowPosition>(cmbxPosition.ItemIndex()));
  if (notification.Position != TWindowPosition::wpPopUp || !FApplication) {
    return Notifier().Display(notification);
  }
  auto form = std::make_unique<TfrmTrialPopUp>(notification);
  if (!FApplication->ShowNotificationWindow(form.get())) {
    throw Exception(u"Das Fenster ließ sich nicht zeigen.");
  }
  (void)form.release();  // NOLINT(bugprone-unused-return-value): the host frees it from now on
}

void TframOptionsNotification::btnTestSoundClick(TObject*) {
  const TString file = TDeliveryTrial::SoundFile();
  if (!FileExists(file)) throw Exception(Format(u"Die Tondatei gibt es nicht: %s", {file}));
  TString failure;
  TfrmKKCommonWait::Run(u"Der Ton wird abgespielt", [&](const std::stop_token&) {
    if (!PlaySound(file)) failure = ErrorText(errno);
  });
  if (failure.empty()) return;
  throw Exception(Format(u"Der Ton %s wurde nicht abgespielt: %s", {file, failure}));
}

}  // namespace kk
