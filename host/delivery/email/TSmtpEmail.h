#pragma once

#include <stop_token>

#include "host/common/TKKCommonEmail.h"
#include "host/delivery/email/TMailOutbox.h"

namespace kk {

/// The host's way of sending mail: one attempt at the server of the settings, and the outbox for
/// what the server does not take for now.
///
/// On the main thread the work runs elsewhere while a window with "Abbrechen" stands
/// (TfrmKKCommonWait). Subject, sender and recipient lose their control characters; a sender or a
/// recipient that isn't one address is refused before anything is sent. Any thread.
class TSmtpEmail : public IEmailSender {
 public:
  /// The outbox is borrowed and may be null. Without iSend: a TSmtpClient.
  explicit TSmtpEmail(TMailOutbox* iOutbox, TMailOutbox::TSend iSend = nullptr);

  /// Tries once. False with the reason otherwise; if the failure is one for now, or the program
  /// ends, the message is in the outbox then and the text tells when it is tried again. A message
  /// that the user has given up is not kept.
  bool Send(const TEmail& iEmail, TString& oError) override;
  /// The same without the outbox, for mails that are of no use later.
  bool SendNow(const TEmail& iEmail, TString& oError) override;

  /// Ends for ever: what is under way ends at once, what comes later goes to the outbox without an
  /// attempt. Both answer false. Returns at once. Any thread.
  void Stop();

 private:
  bool Deliver(const TEmail& iEmail, TMailOutbox* ioOutbox, TString& oError) const;
  TString Attempt(const TEmail& iEmail, TMailOutbox* ioOutbox, std::stop_token iCancel) const;
  TSmtpResult AttemptOnce(const TMailMessage& iMessage, std::stop_token iCancel) const;

  TMailOutbox* FOutbox;
  TMailOutbox::TSend FSend;
  std::stop_source FStop;
};

}  // namespace kk
