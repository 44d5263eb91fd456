#pragma once

#include "host/options/TOptionsTrial.h"
#include "host/options/TframOptionsBase.h"

namespace kk {

/// The page "E-Mail": where reminders go, the server that sends them, and the code by which the
/// address is confirmed (TEmailConfirmation). What fails behind a button raises Exception.
class TframOptionsEmail final : public TframOptionsBase {
 public:
  TframOptionsEmail();

  void LoadSettings() override;
  void SaveSettings() override;

  TOptionsField EMail{*this, u"EMail", u"&E-Mail-Adresse", u"EMail",
                      u"Die E-Mail-Adresse muss eine wie name@example.org sein."};
  TLabel lblConfirmed{this, u"lblConfirmed"};
  TOptionsField From{*this, u"EMailFrom", u"Abse&nder, wenn ein anderer", u"EMailFrom",
                     u"Der Absender muss eine Adresse wie name@example.org sein."};
  TOptionsField Server{
      *this, u"SmtpUrl", u"&Postausgang (smtps://...)", u"SmtpUrl",
      u"Der Postausgang muss mit smtps:// oder smtp:// beginnen und nur Server und "
      u"Port nennen. Benutzer und Kennwort haben eigene Felder."};
  TOptionsField User{*this, u"SmtpUser", u"Ben&utzer", u"SmtpUser"};
  TOptionsSecret Password{*this, u"SmtpPassword", u"&Kennwort", u"Entfe&rnen", u"SmtpPassword"};
  TPanel pnlCode{this, u"pnlCode", u"Adresse bestätigen"};
  TButton btnSendCode{&pnlCode, u"btnSendCode", u"&Code schicken"};
  TLabel lblCode{&pnlCode, u"lblCode", u"Co&de"};
  TEdit edtCode{&pnlCode, u"edtCode"};
  TButton btnConfirm{&pnlCode, u"btnConfirm", u"Bestät&igen"};
  TOptionsTrial Trial{*this, TNotifyEvent::Of<&TframOptionsEmail::btnTestClick>(this)};

 private:
  void ShowConfirmed();
  void edtEMailChange(TObject* Sender);
  void btnSendCodeClick(TObject* Sender);
  void btnConfirmClick(TObject* Sender);
  /// Return stands for "Bestätigen" here, not for the dialog's OK.
  void edtCodeKeyPress(TObject* Sender, char16_t& ioKey);
  void btnTestClick(TObject* Sender);
};

}  // namespace kk
