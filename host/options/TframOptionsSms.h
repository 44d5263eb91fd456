#pragma once

#include "host/options/TOptionsTrial.h"
#include "host/options/TframOptionsBase.h"

namespace kk {

/// The page "SMS": the number for reminders and the service that sends them. What fails behind a
/// button raises Exception.
class TframOptionsSms final : public TframOptionsBase {
 public:
  TframOptionsSms();

  TOptionsField Number{*this, u"SMS", u"&Rufnummer", u"SMS",
                       u"Die Rufnummer muss eine wie +4915112345678 sein."};
  TOptionsField Service{*this, u"SmsUrl", u"A&dresse des Dienstes", u"SmsUrl",
                        u"Die Adresse des SMS-Dienstes muss mit https:// oder http:// beginnen, "
                        u"ohne Benutzer und Kennwort darin."};
  TOptionsSecret Token{*this, u"SmsToken", u"&Zugangsschlüssel", u"&Entfernen", u"SmsToken"};
  TOptionsTrial Trial{*this, TNotifyEvent::Of<&TframOptionsSms::btnTestClick>(this)};

 private:
  void btnTestClick(TObject* Sender);
};

}  // namespace kk
