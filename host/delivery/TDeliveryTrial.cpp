#include "host/delivery/TDeliveryTrial.h"

#include "host/base/Exception.h"
#include "host/base/TClock.h"
#include "host/common/KKDat.h"
#include "host/common/TFileHelper.h"
#include "host/common/TKKCommonEmail.h"
#include "host/common/TKKCommonSms.h"
#include "host/common/TKKIniFile.h"
#include "host/common/TOutlook.h"
#include "host/common/TVersionHelper.h"
#include "host/controls/TfrmKKCommonMessageDlg.h"

namespace kk {

namespace {

constexpr TStringView cCaption = u"Kaufkobolde %MV%SV - Test";
constexpr int64_t cAppointmentAheadMs = 15 * TDateTime::cMsPerMinute;

TString WithVersion(TStringView iText) { return TVersionHelper::ReplaceVersionParams(iText); }

// Why it is still there; empty if it is gone.
TString DeleteAppointment(TOutlook& ioCalendar, TStringView iId) {
  try {
    if (ioCalendar.DeleteAppointment(iId)) return {};
  } catch (const Exception& e) {
    return e.Message();
  }
  return u"Er ist nicht mehr da";
}

}  // namespace

void TDeliveryTrial::SendMail(TStringView iAddress) {
  TString error;
  const TEmail email{WithVersion(cCaption),
                     WithVersion(u"Der Versand von E-Mails funktioniert.\r\n\r\nGesendet am ") +
                         DateTimeToStr(Now()) + WithVersion(u" mit Kaufkobolde %MV%SV"),
                     TString(iAddress), KKDat().SenderAddress(), u"Kaufkobolde"};
  if (TKKCommonEmail::SendNow(email, error)) return;
  throw Exception(Format(u"Die E-Mail wurde nicht verschickt: %s", {error}));
}

bool TDeliveryTrial::AskForSms(TForm* iOwner, TStringView iNumber) {
  const TString question =
      Format(u"Jetzt eine SMS an %s schicken? Das kann Geld kosten.", {iNumber});
  return TfrmKKCommonMessageDlg::Display(iOwner, question, u"&Ja, schicken",
                                         u"Die SMS wird verschickt.", u"&Nein, abbrechen",
                                         u"Es wird nichts verschickt.");
}

void TDeliveryTrial::SendSms(TStringView iNumber) {
  TSMSResult result = TSMSResult::srOk;
  TString error;
  if (TKKCommonSms::Send(WithVersion(cCaption), iNumber, result, error, Now())) return;
  throw Exception(
      Format(u"Die SMS wurde nicht verschickt: (%d) %s", {static_cast<int>(result), error}));
}

void TDeliveryTrial::TryCalendar(const TEntered& iEntered) {
  const TDateTime start = Now().PlusMs(cAppointmentAheadMs);
  const std::unique_ptr<TOutlook> calendar = CreateOutlook();
  const TString id = calendar->AddAppointment(WithVersion(u"Kaufkobolde %MV%SV"),
                                              u"Ein Test, der gleich wieder gelöscht wird.",
                                              u"Test von Kaufkobolde", 0, start, 1);
  if (iEntered) iEntered(start, id);
  const TString reason = DeleteAppointment(*calendar, id);
  if (reason.empty()) return;
  throw Exception(
      Format(u"Der Termin ließ sich nicht wieder löschen: %s. Bitte sehen Sie im "
             u"Kalender nach.",
             {reason}));
}

TNotification TDeliveryTrial::Notification(TWindowPosition iPosition) {
  TNotification notification;
  notification.Position = iPosition;
  notification.Id = NewGuid();
  notification.Title = u"Erinnerung";
  notification.Caption = WithVersion(cCaption);
  return notification;
}

TString TDeliveryTrial::SoundFile() {
  return IniFile().ReadString(u"Watchlist", u"SoundFile",
                              TFileHelper::GetLocalFileName(u"remind.wav"));
}

}  // namespace kk
