#include "host/options/TframOptionsCalendar.h"

#include "host/base/Exception.h"
#include "host/base/TClock.h"
#include "host/common/TOutlook.h"
#include "host/common/TVersionHelper.h"
#include "host/controls/TfrmMessageDlg.h"

namespace kk {

namespace {

constexpr int64_t cAppointmentAheadMs = 15 * TDateTime::cMsPerMinute;

// Empty if it is gone.
TString DeleteTrial(TOutlook& ioCalendar, TStringView iId) {
  try {
    if (ioCalendar.DeleteAppointment(iId)) return {};
  } catch (const Exception& e) {
    return e.Message();
  }
  return u"Er ist nicht mehr da";
}

}  // namespace

TframOptionsCalendar::TframOptionsCalendar() : TframOptionsBase(u"framOptionsCalendar") {
  Hold({&Url, &User, &Folder}, {&Password});
  pnlTest.SetArrangement(TArrangement::arRow);
  btnTest.SetOnClick(TNotifyEvent::Of<&TframOptionsCalendar::btnTestClick>(this));
}

void TframOptionsCalendar::btnTestClick(TObject*) {
  if (!SaveForTrial()) return;
  const std::unique_ptr<TOutlook> calendar = CreateOutlook();
  const TString id =
      calendar->AddAppointment(TVersionHelper::ReplaceVersionParams(u"Kaufkobolde %MV%SV"),
                               u"Ein Test, der gleich wieder gelöscht wird.",
                               u"Test von Kaufkobolde", 0, Now().PlusMs(cAppointmentAheadMs), 1);
  const TString reason = DeleteTrial(*calendar, id);
  if (!reason.empty()) {
    throw Exception(
        Format(u"Der Termin ließ sich nicht wieder löschen: %s. Bitte sehen Sie im "
               u"Kalender nach.",
               {reason}));
  }
  ShowMessage(u"Ein Termin wurde eingetragen und wieder gelöscht. Der Kalender funktioniert.");
}

}  // namespace kk
