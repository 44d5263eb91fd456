#pragma once

#include "host/options/TOptionsTrial.h"
#include "host/options/TframOptionsBase.h"

namespace kk {

/// The page "Kalender": where appointments go. What fails behind a button raises Exception.
class TframOptionsCalendar final : public TframOptionsBase {
 public:
  TframOptionsCalendar();

  TOptionsField Url{*this, u"CalendarUrl", u"A&dresse (CalDAV)", u"CalendarUrl",
                    u"Die Adresse des Kalenders muss mit https:// oder http:// beginnen, ohne "
                    u"Benutzer und Kennwort darin."};
  TOptionsField User{*this, u"CalendarUser", u"Ben&utzer", u"CalendarUser"};
  TOptionsSecret Password{*this, u"CalendarPassword", u"&Kennwort", u"&Entfernen",
                          u"CalendarPassword"};
  TOptionsField Folder{*this, u"CalendarFolder", u"O&rdner, wenn ohne Adresse", u"CalendarFolder"};
  TOptionsTrial Trial{*this, TNotifyEvent::Of<&TframOptionsCalendar::btnTestClick>(this)};

 private:
  void btnTestClick(TObject* Sender);
};

}  // namespace kk
