#include "reminders/TRemindDelivery.h"

#include <cerrno>

#include "host/base/Guard.h"
#include "host/base/TClock.h"
#include "host/base/TMainLoop.h"
#include "host/common/KKDat.h"
#include "host/common/PlaySound.h"
#include "host/common/TFileWriter.h"
#include "host/common/TIniFileSectionCommunication.h"
#include "host/common/TKKCommonEmail.h"
#include "host/controls/TfrmKKCommonNotifier.h"
#include "reminders/RemindTemplates.h"
#include "reminders/TfrmNotification.h"

namespace kk {

namespace {

// The message of an exception as it enters the one line of a log entry.
TString LineOf(const std::exception& iException) { return ToSingleLine(MessageOf(iException)); }

TWindowPosition WindowPosition() {
  switch (TIniFileSectionCommunication().GetNotifierPosition()) {
    case 0:
      return TWindowPosition::wpDesktop;
    case 1:
      return TWindowPosition::wpDesktopLasting;
    default:
      return TWindowPosition::wpPopUp;
  }
}

// The address is that of this moment, whatever it was when the reminder was set up.
void SendEMail(TStringView iSubject, TStringView iBody) {
  constexpr TStringView cSender = _resLoggingSenderRemindEMail;
  TString address;
  if (!TIniFileSectionCommunication().GetEMail(address)) {
    return LogError(cSender, _resLoggingRemindEMailNotConfirmed, {address});
  }
  if (Trim(address).empty()) return LogError(cSender, _resLoggingRemindEMailNoAddress);
  TString error;
  if (TKKCommonEmail::Send(iSubject, iBody, address, KKDat().SenderAddress(),
                           _resRemindEMailSenderName, error)) {
    LogInfo(cSender, _resLoggingRemindEMailSent, {address});
  } else {
    LogError(cSender, _resLoggingRemindEMailFailed, {ToSingleLine(error)});
  }
}

// Calls the method if the details are of the class.
template <class Details, class Delivery>
bool ProcessAs(Delivery& ioDelivery, void (Delivery::*iProcess)(const Details&),
               const TRemindDetailsBase& iDetails) {
  const auto* details = dynamic_cast<const Details*>(&iDetails);
  if (details != nullptr) (ioDelivery.*iProcess)(*details);
  return details != nullptr;
}

}  // namespace

void TRemindDelivery::ProcessElapsedItem(TRemindItem& iItem) {
  struct TCurrent {
    TRemindItem*& Current;
    ~TCurrent() { Current = nullptr; }
  } const current{FCurrentItem};
  FCurrentItem = &iItem;
  LogInfo(_resLoggingSenderRemind, _resLoggingRemindProcessItem);
  MainLoop().Synchronize([this] { SyncProcessItem(); });
  const TLstRemindDetails& details = iItem.LstDetails();
  const int count = details.GetCount();
  for (int i = 0; i < count && !Terminated(); ++i) {
    Guarded(u"TThreadRemind.ProcessElapsedItem", [&] { ProcessDetails(details.GetItems(i)); });
  }
}

void TRemindDelivery::ProcessElapsedItems(TLstRemindItem& ioLst) {
  while (ioLst.GetCount() > 0 && !Terminated()) {
    Guarded(u"TThreadRemind.ProcessElapsedItems", [&] { ProcessElapsedItem(ioLst.First()); });
    ioLst.Delete(0);
  }
}

void TRemindDelivery::SyncProcessItem() {
  Guarded(u"TThreadRemind.SyncProcessItem", [this] {
    if (FOnProcessItem) FOnProcessItem(this, *FCurrentItem);
  });
}

void TRemindDelivery::ProcessDetails(const TRemindDetailsBase& iDetails) {
  using TThis = TRemindDelivery;
  const bool done = ProcessAs(*this, &TThis::ProcessSound, iDetails) ||
                    ProcessAs(*this, &TThis::ProcessWindow, iDetails) ||
                    ProcessAs(*this, &TThis::ProcessSMS, iDetails) ||
                    ProcessAs(*this, &TThis::ProcessOutlook, iDetails) ||
                    ProcessAs(*this, &TThis::ProcessEMail, iDetails);
  if (!done) {
    LogError(_resLoggingSenderRemind, _resLoggingRemindUnknownType, {iDetails.ClassName()});
  }
}

void TRemindDelivery::ProcessSound(const TRemindDetailsSound& iDetails) {
  constexpr TStringView cSender = _resLoggingSenderRemindSound;
  LogInfo(cSender, _resLoggingRemindProcess);
  try {
    if (!FileExists(iDetails.SoundFile())) {
      LogError(cSender, _resLoggingRemindSoundFileNotFound, {iDetails.SoundFile()});
    } else if (!PlaySound(iDetails.SoundFile())) {
      throw Exception(ErrorText(errno));
    }
  } catch (const std::exception& e) {
    LogException(cSender, Exception(LineOf(e)));
  }
}

void TRemindDelivery::ProcessWindow(const TRemindDetailsWindow& /*iDetails*/) {
  LogInfo(_resLoggingSenderRemindWindow, _resLoggingRemindProcess);
  MainLoop().Synchronize([this] { SyncProcessWindow(); });
}

void TRemindDelivery::SyncProcessWindow() {
  constexpr TStringView cSender = _resLoggingSenderRemindWindow;
  if (!FApplication) return LogError(cSender, _resLoggingRemindNoApplication);
  if (FCurrentItem == nullptr) return LogError(cSender, _resLoggingRemindNoItem);
  // Looks like a slip and is required: the first window of the reminder, whichever it is about.
  const TRemindDetailsBase* details = FCurrentItem->LstDetails().ItemByType(rtWindow);
  if (details == nullptr) return LogError(cSender, _resLoggingRemindNoDetails);
  try {
    ShowWindow(static_cast<const TRemindDetailsWindow&>(*details));
  } catch (const std::exception& e) {
    LogError(cSender, _resLoggingRemindWindowFailed, {LineOf(e)});
  }
}

void TRemindDelivery::ShowWindow(const TRemindDetailsWindow& iDetails) {
  const TWindowPosition position = WindowPosition();
  if (position != TWindowPosition::wpPopUp) {
    // Looks like a slip and is required: the host's own notifier never gets the text.
    TfrmKKCommonNotifier::Display(position, FCurrentItem->Id(), _resRemindNotifierTitle,
                                  iDetails.Link(), _resRemindNotifierLink, {}, iDetails.Caption(),
                                  {});
    return;
  }
  auto form = std::make_unique<TfrmNotification>();
  form->SetInfo(iDetails.Caption(), iDetails.Text(), iDetails.Link());
  // NOLINTNEXTLINE(bugprone-unused-return-value): the host frees it from now on
  if (FApplication->ShowNotificationWindow(form.get())) (void)form.release();
}

void TRemindDelivery::ProcessSMS(const TRemindDetailsSMS& /*iDetails*/) {
  // The message is with the service since the reminder was set up.
  LogInfo(_resLoggingSenderRemindSMS, _resLoggingRemindProcessExternal);
}

void TRemindDelivery::ProcessOutlook(const TRemindDetailsOutlook& /*iDetails*/) {
  // The calendar reminds by itself.
  LogInfo(_resLoggingSenderRemindOutlook, _resLoggingRemindProcessExternal);
}

void TRemindDelivery::ProcessEMail(const TRemindDetailsEMail& iDetails) {
  LogInfo(_resLoggingSenderRemindEMail, _resLoggingRemindProcess);
  const TString body = RemindEMailBody(iDetails.Caption(), iDetails.Text(), iDetails.Link(), Now());
  const TString subject = RemindEMailSubject(iDetails.Caption());
  try {
    SendEMail(subject, body);
  } catch (const std::exception& e) {
    LogError(_resLoggingSenderRemindEMail, _resLoggingRemindEMailFailed, {LineOf(e)});
  }
}

}  // namespace kk
