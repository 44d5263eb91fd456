#include "host/options/TframOptionsCalendar.h"

#include "host/controls/TfrmMessageDlg.h"
#include "host/delivery/TDeliveryTrial.h"

namespace kk {

TframOptionsCalendar::TframOptionsCalendar() : TframOptionsBase(u"framOptionsCalendar") {
  Hold({&Url, &User, &Folder}, {&Password});
}

void TframOptionsCalendar::btnTestClick(TObject*) {
  if (!SaveForTrial()) return;
  TDeliveryTrial::TryCalendar();
  ShowMessage(u"Ein Termin wurde eingetragen und wieder gelöscht. Der Kalender funktioniert.");
}

}  // namespace kk
